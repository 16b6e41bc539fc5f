#include "platform/html_help.h"

#include <algorithm>
#include <charconv>

#include "platform/front_end.h"
#include "platform/plain_texts.h"

namespace {

constexpr std::string_view kCorteTemas = "::";
constexpr std::string_view kMarcaTema = ".topic ";

/// The topic that a line opens, 0 for any other line.
UINT TemaDe(std::string_view linea)
{
    UINT id = 0;
    if (linea.starts_with(kMarcaTema)) {
        linea.remove_prefix(kMarcaTema.size());
        std::from_chars(linea.data(), linea.data() + linea.size(), id);
    }
    return id;
}

} // namespace

BOOL HtmlHelp(const CWnd* /*ventana*/, const CString& fichero, UINT mandato, const HH_POPUP* popup)
{
    CFrontal& frontal = FrontalDeLaAplicacion();
    if (mandato == HH_DISPLAY_TOPIC)
        return frontal.MuestraAyuda(fichero) ? 1 : 0;
    if (mandato == HH_DISPLAY_TEXT_POPUP && popup != nullptr)
        return frontal.MuestraAyudaControl(fichero, *popup) ? 1 : 0;
    return 0;
}

CString UneTemas(const CString& ayuda, const CString& interior)
{
    return ayuda + CString(kCorteTemas) + interior;
}

std::pair<CString, CString> ParteTemas(const CString& temas)
{
    const std::string_view texto = temas;
    const std::size_t corte = texto.rfind(kCorteTemas);
    if (corte == std::string_view::npos)
        return {temas, CString()};
    return {texto.substr(0, corte), texto.substr(corte + kCorteTemas.size())};
}

std::string_view TextoDeTema(std::string_view textos, UINT id)
{
    std::size_t desde = std::string_view::npos; // of the text, once its topic was met
    for (std::size_t i = 0; i < textos.size();) {
        const std::size_t fin = std::min(textos.find('\n', i), textos.size() - 1) + 1;
        if (const UINT tema = TemaDe(textos.substr(i, fin - i)); tema != 0) {
            if (desde != std::string_view::npos)
                return SinBlancos(textos.substr(desde, i - desde));
            if (tema == id)
                desde = fin;
        }
        i = fin;
    }
    return SinBlancos(textos.substr(std::min(desde, textos.size())));
}
