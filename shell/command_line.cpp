#include "shell/command_line.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "vexa_libs/ccadena.h"

namespace {

/// What stands for a tab inside an argument while the arguments are one text: the one character
/// that no argument can hold.
constexpr std::string_view kTabEnArgumento("\0", 1);

bool HayVacios(const CTokens& tokens, std::size_t desde, std::size_t hasta)
{
    return std::ranges::any_of(std::span(tokens).subspan(desde, hasta - desde + 1),
                               &CString::IsEmpty);
}

} // namespace

CString UneArgumentos(std::span<const std::string> argumentos)
{
    CString mandato;
    for (const char* separador = ""; const std::string& argumento : argumentos) {
        CString token = argumento;
        token.Replace("\t", kTabEnArgumento);
        mandato += separador;
        mandato += token;
        separador = "\t";
    }
    return mandato;
}

CTokens ParteMandato(const CString& mandato)
{
    CTokens tokens;
    CCadena(mandato).Leetira(kTokens, tokens.data());
    for (CString& token : tokens)
        token.Replace(kTabEnArgumento, "\t");
    return tokens;
}

Ruta EligeRuta(const CTokens& tokens)
{
    if (HayVacios(tokens, 1, 7))
        return Ruta::Dialogos;
    const int selector = LeeEntero(tokens[0]);
    if (selector == 1 && !HayVacios(tokens, 8, 11))
        return Ruta::VexaACatastro;
    return selector == 0 ? Ruta::CatastroAVexa : Ruta::Ninguna;
}
