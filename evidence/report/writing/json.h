#pragma once

#include <concepts>
#include <optional>
#include <string>
#include <string_view>

#include "evidence/report/reading/text.h"

namespace informe {

/// A value of GeoJSON as it grows: features are too many to be held as values. Commas and the
/// escapes of texts, which are UTF-8, come by themselves.
class CJson {
public:
    CJson& Objeto(std::invocable auto dentro) { return Entre('{', dentro, '}'); }
    CJson& Lista(std::invocable auto dentro) { return Entre('[', dentro, ']'); }
    /// The name of an object's member; its value comes next.
    CJson& Campo(std::string_view nombre)
    {
        Valor(nombre);
        m_texto += ':';
        m_primero = true;
        return *this;
    }
    CJson& Valor(std::string_view utf8)
    {
        Separa();
        m_texto += '"';
        for (const char c : utf8) {
            if (c == '"' || c == '\\') {
                m_texto += '\\';
                m_texto += c;
            } else if (static_cast<unsigned char>(c) < 0x20) {
                m_texto += "\\u" + Hexadecimal(static_cast<unsigned char>(c), 4);
            } else {
                m_texto += c;
            }
        }
        m_texto += '"';
        return *this;
    }
    CJson& Valor(std::integral auto numero) { return Crudo(std::to_string(numero)); }
    /// A number with two decimals.
    CJson& Valor(double numero) { return Crudo(Fijo(numero)); }
    CJson& Nulo() { return Crudo("null"); }

    CJson& Campo(std::string_view nombre, const auto& valor) { return Campo(nombre).Valor(valor); }
    /// One that may have no value.
    template <class T>
    CJson& Campo(std::string_view nombre, const std::optional<T>& valor)
    {
        return valor ? Campo(nombre).Valor(*valor) : Campo(nombre).Nulo();
    }

    std::string_view Texto() const { return m_texto; }

private:
    CJson& Entre(char abre, std::invocable auto& dentro, char cierra)
    {
        Separa();
        m_texto += abre;
        m_primero = true;
        dentro();
        m_texto += cierra;
        m_primero = false;
        return *this;
    }
    CJson& Crudo(std::string_view valor)
    {
        Separa();
        m_texto += valor;
        return *this;
    }
    void Separa()
    {
        if (!m_primero)
            m_texto += ',';
        m_primero = false;
    }

    std::string m_texto;
    bool m_primero = true; // nothing stands in front that a comma would part the next value from
};

} // namespace informe
