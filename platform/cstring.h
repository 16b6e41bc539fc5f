#pragma once

#include <compare>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include "platform/format.h"
#include "platform/types.h"

/// The framework's text: bytes in code page 1252, compared as bytes.
///
/// A record of the cadastre holds up to eight of these and a run holds millions of records, nearly
/// all with texts of a few characters. So an object has 8 bytes and keeps up to 7 characters in
/// itself; a longer text has a block of its own.
class CString {
public:
    CString() noexcept { PonLargoCorto(0); }
    CString(const char* texto) : CString(std::string_view(texto)) {}
    CString(std::string_view texto) : CString() { Asigna(texto); }
    CString(const std::string& texto) : CString(std::string_view(texto)) {}
    CString(const CString& otro) : CString() { Asigna(otro); }
    CString(CString&& otro) noexcept : CString() { Toma(otro); }
    ~CString() { Libera(); }

    CString& operator=(const CString& otro)
    {
        if (this != &otro)
            Asigna(otro);
        return *this;
    }
    CString& operator=(CString&& otro) noexcept
    {
        if (this != &otro) {
            Libera();
            Toma(otro);
        }
        return *this;
    }
    /// Keeps the block that is there when the new text fits into it.
    CString& operator=(std::string_view texto)
    {
        Asigna(texto);
        return *this;
    }
    CString& operator=(const std::string& texto) { return *this = std::string_view(texto); }
    CString& operator=(const char* texto) { return *this = std::string_view(texto); }

    int GetLength() const { return static_cast<int>(Largo()); }
    bool IsEmpty() const { return Largo() == 0; }
    const char* GetString() const { return EsLargo() ? Bloque() : m_bytes; }
    operator std::string_view() const { return {GetString(), Largo()}; }

    /// Up to `cuantos` characters from position `desde`; positions outside the text give what is
    /// inside it.
    CString Mid(int desde, int cuantos) const;
    CString Mid(int desde) const { return Mid(desde, GetLength()); }
    CString Left(int cuantos) const { return Mid(0, cuantos); }
    /// Position of the first, or last, such character, -1 if there is none.
    int Find(char c) const { return static_cast<int>(std::string_view(*this).find(c)); }
    int ReverseFind(char c) const { return static_cast<int>(std::string_view(*this).rfind(c)); }
    /// Cuts the characters of `cuales`, blanks by default, from the end, or from the start.
    CString& TrimRight(std::string_view cuales = " ");
    CString& TrimLeft(std::string_view cuales = " ");
    /// Replaces every `antes` by `ahora`; gives how many there were.
    int Replace(std::string_view antes, std::string_view ahora);

    /// Replaces the text by a printf text with its arguments (see format.h).
    template <class... T>
    void Format(std::string_view forma, const T&... argumentos)
    {
        Asigna(Formatea(forma, argumentos...));
    }
    /// The same with the form of a number of the string table.
    template <class... T>
    void Format(UINT numero, const T&... argumentos)
    {
        CString forma;
        forma.LoadString(numero);
        Format(std::string_view(forma), argumentos...);
    }
    /// Takes the text from the application's string table. False, and an empty text, for a number
    /// that it doesn't hold.
    bool LoadString(UINT numero);

    CString& operator+=(std::string_view texto) { return *this = Suma(*this, texto); }

    friend CString operator+(const CString& a, const CString& b) { return Suma(a, b); }
    friend bool operator==(const CString& a, const CString& b)
    {
        return std::string_view(a) == std::string_view(b);
    }
    friend auto operator<=>(const CString& a, const CString& b)
    {
        return std::string_view(a) <=> std::string_view(b);
    }

private:
    static constexpr std::size_t kMasCorto = 7; // characters that fit into the object
    static constexpr unsigned char kMarcaLargo = 0x80;

    static CString Suma(std::string_view a, std::string_view b);

    // The last byte tells the form: up to 7, the room that is left in the object (0 closes a text
    // of 7 characters); with the mark, the highest byte of a block's address, which no system uses.
    unsigned char Marca() const { return static_cast<unsigned char>(m_bytes[kMasCorto]); }
    bool EsLargo() const { return (Marca() & kMarcaLargo) != 0; }
    std::size_t Largo() const { return EsLargo() ? LargoBloque() : kMasCorto - Marca(); }
    void PonLargoCorto(std::size_t largo)
    {
        m_bytes[largo] = '\0';
        m_bytes[kMasCorto] = static_cast<char>(kMasCorto - largo);
    }
    char* Bloque() const;
    std::size_t LargoBloque() const;
    void PonBloque(char* bloque);
    void Asigna(std::string_view texto)
    {
        if (EsLargo() || texto.size() > kMasCorto) {
            AsignaLargo(texto);
            return;
        }
        // The text may be a part of this one.
        std::char_traits<char>::move(m_bytes, texto.data(), texto.size());
        PonLargoCorto(texto.size());
    }
    void AsignaLargo(std::string_view texto);
    void Toma(CString& otro) noexcept
    {
        std::memcpy(m_bytes, otro.m_bytes, sizeof m_bytes);
        otro.PonLargoCorto(0);
    }
    void Libera() noexcept
    {
        if (EsLargo())
            LiberaBloque();
    }
    void LiberaBloque() noexcept;

    alignas(int) char m_bytes[kMasCorto + 1];
};
static_assert(sizeof(CString) == 8);

template <>
struct std::hash<CString> {
    std::size_t operator()(const CString& texto) const noexcept
    {
        return std::hash<std::string_view>()(texto);
    }
};
