#include "platform/files/cstdio_file.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::string_view kFinLinea = "\r\n";

/// Copies characters, and blanks for those that would end a text.
void CopiaSinCeros(std::string_view texto, char* destino)
{
    std::memcpy(destino, texto.data(), texto.size());
    if (texto.find('\0') != std::string_view::npos)
        std::replace(destino, destino + texto.size(), '\0', ' ');
}

} // namespace

char* CStdioFile::ReadString(char* bufer, UINT n)
{
    const std::size_t cabe = n - 1U;
    const std::string_view resto =
        Lector().Resto(cabe + 1); // one more: a CR must see what follows it
    std::size_t largo = std::min(cabe, resto.size());
    std::size_t consumo = largo;
    bool entera = false;
    if (const auto fin = resto.substr(0, cabe + 1).find('\n'); fin != std::string_view::npos) {
        const std::size_t sinFin = fin > 0 && resto[fin - 1] == '\r' ? fin - 1 : fin;
        entera =
            sinFin < cabe; // else the characters fill the buffer and the end waits for its turn
        largo = entera ? sinFin : largo;
        consumo = entera ? fin + 1 : largo;
    }
    if (consumo == 0)
        return nullptr;
    CopiaSinCeros(resto.substr(0, largo), bufer);
    if (entera)
        bufer[largo++] = '\n';
    bufer[largo] = '\0';
    Lector().Consume(consumo);
    return bufer;
}

bool CStdioFile::ReadString(CString& linea)
{
    m_linea.clear();
    bool hubo = false;
    for (bool entera = false; !entera;) {
        const std::string_view resto = Lector().Resto(2); // a CR must see what follows it
        if (resto.empty())
            break;
        hubo = true;
        const auto fin = resto.find('\n');
        entera = fin != std::string_view::npos;
        std::size_t largo = entera ? fin : resto.size() - (Lector().AlFinal() ? 0U : 1U);
        Lector().Consume(entera ? fin + 1 : largo);
        if (entera && fin > 0 && resto[fin - 1] == '\r')
            --largo;
        const std::string_view trozo = resto.substr(0, largo);
        if (entera && m_linea.empty() && trozo.find('\0') == std::string_view::npos) {
            linea = trozo; // as nearly all come
            return true;
        }
        m_linea.append(trozo);
    }
    std::replace(m_linea.begin(), m_linea.end(), '\0', ' ');
    linea = std::string_view(m_linea);
    return hubo;
}

char* CStdioFile::EmpiezaLinea(std::size_t cota)
{
    m_compuesta = Escritor().Sitio(cota + kFinLinea.size());
    return m_compuesta;
}

void CStdioFile::AcabaLinea(const char* fin)
{
    const std::string_view linea(m_compuesta, static_cast<std::size_t>(fin - m_compuesta));
    if (linea.find('\n') == std::string_view::npos) {
        std::memcpy(m_compuesta + linea.size(), kFinLinea.data(), kFinLinea.size());
        Escritor().Escrito(linea.size() + kFinLinea.size());
        ++m_lineas;
        return;
    }
    Borrador().append(linea) += '\n'; // a line end among its characters is one like any other
    WriteString(m_borrador);
}

void CStdioFile::WriteString(std::string_view texto)
{
    while (!texto.empty()) {
        const auto fin = texto.find('\n');
        Escritor().Escribe(texto.substr(0, fin));
        if (fin == std::string_view::npos)
            return;
        Escritor().Escribe(kFinLinea);
        ++m_lineas;
        texto.remove_prefix(fin + 1);
    }
}
