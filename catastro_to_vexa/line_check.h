#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/ansi.h"

/// What speaks against the lines of an input, one by one: deliveries that were joined, cut short or
/// converted on their way hold lines of which nothing is read, or something else than they say.
class CMiraLineas {
public:
    /// \param tipoEntrada  0 an exchange file, any other a list of subparcels with holders
    explicit CMiraLineas(int tipoEntrada) : m_esLista(tipoEntrada != 0) {}

    /// \param linea  as its reader takes it: with its line end, or a piece of one that is too long
    void Toma(std::string_view linea);

    int ConTabulador() const { return m_conTabulador; }
    int SinTipo() const { return m_sinTipo; }   ///< begin as no record does
    int ConFines() const { return m_conFines; } ///< have ends of lines, or of files, within
    int Dobles() const { return m_dobles; }     ///< have a record behind the first one
    /// Tells that the last line has no end, and is shorter than those of its type in front of it.
    bool Cortada() const { return m_cortada; }
    const ansi::CMiraUtf8& Utf8() const { return m_utf8; }

private:
    void TomaControles(std::string_view linea, bool tieneTipo);
    void TomaLargo(std::string_view linea, bool acaba);

    bool m_esLista;
    int m_conTabulador = 0;
    int m_sinTipo = 0;
    int m_conFines = 0;
    int m_dobles = 0;
    bool m_cortada = false;
    std::string m_tipo;         // of the last line
    std::size_t m_masCorta = 0; // of the last ones of that type
    ansi::CMiraUtf8 m_utf8;
};
