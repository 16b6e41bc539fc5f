#include "evidence/message_advice.h"

#include <algorithm>
#include <utility>

#include "evidence/messages_page.h"
#include "platform/plain_texts.h"

// The page has a section for each message, with a paragraph each for cause and remedy.

namespace {

/// The part of a text between two others; empty where one of them isn't there.
std::string_view Entre(std::string_view texto, std::string_view desde, std::string_view hasta)
{
    const std::size_t principio = texto.find(desde);
    if (principio == std::string_view::npos)
        return {};
    texto.remove_prefix(principio + desde.size());
    return texto.substr(0, texto.find(hasta));
}

/// The text without its marks, and with a blank where a line ends.
std::string SinMarcas(std::string_view html)
{
    constexpr std::pair<std::string_view, char> kEntidades[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}};
    std::string texto;
    while (!html.empty()) {
        if (html.front() == '<') {
            html.remove_prefix(std::min(html.find('>'), html.size() - 1) + 1);
            continue;
        }
        char c = html.front() == '\n' ? ' ' : html.front();
        std::size_t largo = 1;
        for (const auto& [entidad, suyo] : kEntidades)
            if (html.starts_with(entidad)) {
                c = suyo;
                largo = entidad.size();
            }
        texto += c;
        html.remove_prefix(largo);
    }
    return std::string(SinBlancos(texto));
}

} // namespace

CConsejo DameConsejo(std::string_view codigo)
{
    const std::string titulo = "<h3><a name=\"" + std::string(codigo) + "\">";
    const std::string_view seccion = Entre(kPaginaMensajes, titulo, "<h");
    const auto parrafo = [&](std::string_view nombre) {
        return SinMarcas(Entre(seccion, "<b>" + std::string(nombre) + ".</b>", "</p>"));
    };
    return {parrafo("Causa"), parrafo("Remedio")};
}
