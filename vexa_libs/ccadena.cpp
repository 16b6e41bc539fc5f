#include "vexa_libs/ccadena.h"

#include "platform/files/system_files.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view kBlancos = " \t\n\v\f\r";

/// Where the file's name begins.
int InicioNombre(std::string_view ruta)
{
    return static_cast<int>(ruta.find_last_of(sistema::kSeparadores) + 1);
}

std::string_view SinBlancosDelante(std::string_view texto)
{
    texto.remove_prefix(std::min(texto.find_first_not_of(kBlancos), texto.size()));
    return texto;
}

/// Takes the first field from the row. `sigue` tells whether another one follows it; behind the
/// last one there is nothing but empty text.
std::string_view TomaCampo(std::string_view& tira, bool& sigue)
{
    // Fields have a few characters, for which the library's search takes longer than they do.
    std::size_t fin = 0;
    while (fin < tira.size() && tira[fin] != '\t')
        ++fin;
    const std::string_view campo = tira.substr(0, fin);
    sigue = fin < tira.size();
    tira.remove_prefix(sigue ? fin + 1 : tira.size());
    return campo;
}

} // namespace

CString CCadena::DamePath() const
{
    return Left(InicioNombre(*this));
}

void CCadena::CambiaPath(const CString& path)
{
    *this = path + Mid(InicioNombre(*this));
}

void CCadena::CambiaExtension(const CString& extension)
{
    const int punto = ReverseFind('.');
    const bool tiene = punto >= InicioNombre(*this);
    *this = (tiene ? Left(punto) : CString(*this)) + "." + extension;
}

unsigned CCadena::Leetira(unsigned n, CString* campos) const
{
    std::string_view resto = *this;
    bool sigue = true;
    unsigned i = 0;
    for (; i < n && sigue; ++i)
        campos[i] = TomaCampo(resto, sigue);
    return i;
}

void Leetira(std::string_view tira, std::span<std::string_view> campos)
{
    bool sigue = true;
    for (std::string_view& campo : campos)
        campo = TomaCampo(tira, sigue);
}

std::int64_t LeeEnteroConSigno(std::string_view texto, bool* resto)
{
    const char* c = texto.data();
    const char* const fin = c + texto.size();
    const auto saltaBlancos = [&] {
        while (c != fin && (*c == ' ' || (*c >= '\t' && *c <= '\r')))
            ++c;
    };
    saltaBlancos();
    const bool negativo = c != fin && *c == '-';
    if (negativo || (c != fin && *c == '+'))
        ++c;
    std::uint64_t valor = 0;
    for (; c != fin && *c >= '0' && *c <= '9'; ++c)
        valor = valor * 10U + static_cast<std::uint64_t>(*c - '0');
    if (c != fin && resto != nullptr) {
        saltaBlancos();
        *resto |= c != fin;
    }
    return static_cast<std::int64_t>(negativo ? 0U - valor : valor);
}

double LeeReal(std::string_view texto, bool* resto)
{
    texto = SinBlancosDelante(texto);
    if (texto.starts_with('+') && !texto.starts_with("+-"))
        texto.remove_prefix(1);
    double valor = 0;
    const char* const fin = texto.data() + texto.size();
    const char* const hasta = std::from_chars(texto.data(), fin, valor).ptr;
    if (resto != nullptr)
        *resto |=
            std::string_view(hasta, fin).find_first_not_of(kBlancos) != std::string_view::npos;
    return valor;
}
