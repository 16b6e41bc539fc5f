#include "evidence/report/writing/json.h"

#include "evidence/report/reading/text.h"

namespace informe {

void CJson::Separa()
{
    if (!m_primero)
        m_texto += ',';
    m_primero = false;
}

CJson& CJson::Crudo(std::string_view valor)
{
    Separa();
    m_texto += valor;
    return *this;
}

CJson& CJson::Campo(std::string_view nombre)
{
    Valor(nombre);
    m_texto += ':';
    m_primero = true;
    return *this;
}

CJson& CJson::Valor(std::string_view utf8)
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

CJson& CJson::Valor(double numero)
{
    return Crudo(Fijo(numero));
}

} // namespace informe
