#include "platform/files/any_case_name.h"

#include <string>
#include <system_error>

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

/// One file, or the knowledge that there are several.
struct CCandidato {
    std::filesystem::path nombre;
    bool varios = false;

    void Pon(const std::filesystem::path& otro)
    {
        varios = varios || !nombre.empty();
        nombre = otro;
    }
    bool Sirve() const { return !nombre.empty() && !varios; }
};

} // namespace

std::filesystem::path SinMayusculas(const std::filesystem::path& ruta, sistema::Error& error)
{
    if (sistema::Mira(ruta, error).tipo != sistema::CEstado::Tipo::NoHay || error)
        return ruta;
    const std::string mismas = ansi::AUtf8(sistema::Nombre(ruta.filename()));
    const std::string parecidas = EnMinusculas(mismas);
    CCandidato igual;
    CCandidato parecido;
    for (const std::filesystem::path& otro : sistema::Lista(ruta.parent_path(), error)) {
        const std::string letras = ansi::AUtf8(sistema::Nombre(otro));
        if (letras == mismas)
            igual.Pon(otro);
        else if (EnMinusculas(letras) == parecidas)
            parecido.Pon(otro);
    }
    if (error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied ||
        error == std::errc::not_a_directory)
        error.clear(); // opening it will tell
    const CCandidato& mejor = igual.nombre.empty() ? parecido : igual;
    return mejor.Sirve() ? ruta.parent_path() / mejor.nombre : ruta;
}
