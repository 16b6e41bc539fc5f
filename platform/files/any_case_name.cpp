#include "platform/files/any_case_name.h"

#include <string>
#include <system_error>
#include <utility>

#include "platform/ansi.h"

namespace {

/// The name with its letters small: those of ASCII, and those of the code page in UTF-8.
std::string EnMinusculas(std::string texto)
{
    bool trasC3 = false;
    for (char& c : texto) {
        const auto byte = static_cast<unsigned char>(c);
        const bool mayuscula =
            (c >= 'A' && c <= 'Z') || (trasC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97);
        trasC3 = byte == 0xC3;
        if (mayuscula)
            c = static_cast<char>(byte + 0x20U);
    }
    return texto;
}

std::string Letras(const std::filesystem::path& nombre)
{
    return ansi::AUtf8(sistema::Nombre(nombre));
}

} // namespace

std::filesystem::path CNombresEnDisco::Busca(const std::filesystem::path& ruta,
                                             sistema::Error& error)
{
    if (sistema::Mira(ruta, error).tipo != sistema::CEstado::Tipo::NoHay || error)
        return ruta;
    const std::string letras = Letras(ruta.filename());
    const CListado& listado = Listado(ruta.parent_path(), error);
    const auto parecidos = listado.find(EnMinusculas(letras));
    if (parecidos == listado.end())
        return ruta;
    std::vector<std::filesystem::path> candidatos;
    for (const std::filesystem::path& nombre : parecidos->second)
        if (Letras(nombre) == letras)
            candidatos.push_back(nombre);
    if (candidatos.empty())
        candidatos = parecidos->second;
    return candidatos.size() == 1 ? ruta.parent_path() / candidatos.front() : ruta;
}

const CNombresEnDisco::CListado& CNombresEnDisco::Listado(const std::filesystem::path& carpeta,
                                                          sistema::Error& error)
{
    if (const auto vista = m_carpetas.find(carpeta); vista != m_carpetas.end())
        return vista->second;
    const std::vector<std::filesystem::path> nombres = sistema::Lista(carpeta, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied ||
        error == std::errc::not_a_directory)
        error.clear(); // opening it will tell
    CListado listado;
    if (!error)
        for (const std::filesystem::path& nombre : nombres)
            listado[EnMinusculas(Letras(nombre))].push_back(nombre);
    return m_carpetas[carpeta] = std::move(listado);
}
