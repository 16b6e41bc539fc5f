#include <map>

#include "evidence/message_advice.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "evidence/report/writing/page.h"

// The messages: by matter, by number, and one by one.

namespace informe {
namespace {

std::string Cuentas(const CAsunto& asunto)
{
    std::string html;
    for (const auto& [mensaje, cuantos] : asunto.cuentas) {
        const std::string codigo(CodigoMensaje(*mensaje));
        html.append(R"(<a class="codigo" href="#)").append(codigo).append("\">");
        html.append(codigo).append("</a>");
        if (cuantos > 1)
            html += "<small>×" + Miles(cuantos) + "</small>";
        html += " ";
    }
    return html;
}

std::string Sitio(const CInforme& informe, const CAsunto& asunto)
{
    const std::string ancla =
        "p" + std::to_string(asunto.polig) + "-" + std::to_string(asunto.parcela);
    return informe.anclas.contains(ancla) ? " <a href=\"#" + ancla + "\">en el mapa</a>" : "";
}

std::string Lineas(const CInforme& informe, const CAsunto& asunto)
{
    constexpr std::size_t kTope = 12;
    std::string html;
    std::size_t dichas = 0;
    for (const std::uint32_t posicion : asunto.primeros) {
        if (dichas++ == kTope)
            break;
        const std::string linea = std::to_string(informe.registro.avisos[posicion].linea);
        const std::string ancla = informe.Ancla(posicion);
        html += dichas == 1 ? (asunto.mensajes == 1 ? "línea " : "líneas ") : ", ";
        if (ancla.empty())
            html += linea;
        else
            html.append("<a href=\"#").append(ancla).append("\">").append(linea).append("</a>");
    }
    return html + (static_cast<std::size_t>(asunto.mensajes) > kTope ? " …" : "");
}

/// The map that shows where a message lies, empty for none.
std::string Mapa(const CInforme& informe, const CAviso& aviso)
{
    std::string ancla = "s" + std::to_string(aviso.linea);
    if (!informe.anclas.contains(ancla))
        ancla = "p" + std::to_string(aviso.polig) + "-" + std::to_string(aviso.parcela);
    return informe.anclas.contains(ancla) ? "<a href=\"#" + ancla + "\">mapa</a>" : "";
}

std::string Numero(int numero)
{
    return numero == CAviso::kNada ? "" : std::to_string(numero);
}

std::string FilaMensaje(const CInforme& informe, const CLineaMostrada& linea)
{
    const CAviso& aviso = informe.registro.avisos[linea.posicion];
    const std::string numero = std::to_string(aviso.linea);
    const char* const clase = aviso.mensaje == nullptr    ? "ajena"
                              : EsWarning(*aviso.mensaje) ? "avi"
                                                          : "err";
    return "<tr id=\"m" + numero + "\" class=\"" + clase + R"("><td class="n">)" + numero +
           "</td><td>" + Codigo(aviso) + "</td><td class=\"n\">" + Numero(aviso.polig) +
           "</td><td class=\"n\">" + Numero(aviso.parcela) + "</td><td>" +
           Html(Texto(aviso.letra)) + "</td><td class=\"texto\">" + Html(linea.texto) +
           "</td><td>" + Mapa(informe, aviso) + "</td></tr>\n";
}

/// A number with its cause and its remedy.
std::string Articulo(const CMensaje& mensaje, std::int64_t cuantos)
{
    const std::string codigo(CodigoMensaje(mensaje));
    const CConsejo consejo = DameConsejo(codigo);
    std::string html =
        "<article class=\"numero " + std::string(EsWarning(mensaje) ? "avi" : "err") + "\" id=\"" +
        codigo + R"("><h3><span class="codigo">)" + codigo + "</span> " + Html(Enunciado(mensaje)) +
        " <span class=\"cuantos\">" + Miles(cuantos) + "</span></h3>\n";
    if (!consejo.causa.empty())
        html += "<p><b>Causa.</b> " + Html(consejo.causa) + "</p>\n";
    if (!consejo.remedio.empty())
        html += "<p><b>Remedio.</b> " + Html(consejo.remedio) + "</p>\n";
    return html + "</article>\n";
}

constexpr const char* kFiltro =
    "<form id=\"filtro\" hidden><label>Código <select name=\"codigo\"><option "
    "value=\"\">todos</option></select></label> <label>Polígono <input name=\"polig\" size=\"4\" "
    "inputmode=\"numeric\"></label> <label>Parcela <input name=\"parcela\" size=\"6\" "
    "inputmode=\"numeric\"></label> <label>Texto <input name=\"texto\" size=\"18\"></label> "
    "<output "
    "name=\"cuantos\"></output></form>\n";

constexpr const char* kCabeceraMensajes =
    "<div class=\"ancha\"><table id=\"lista\"><thead><tr><th "
    "class=\"n\">Línea</th><th>Código</th><th "
    "class=\"n\">Polígono</th><th class=\"n\">Parcela</th><th>Letra</th><th>Mensaje</th><th>Mapa"
    "</th></tr></thead><tbody>\n";

} // namespace

std::string SeccionAsuntos(const CInforme& informe)
{
    std::string html = "<section id=\"asuntos\">\n<h2>Asuntos</h2>\n";
    if (informe.asuntos.cuantos == 0)
        return html + "<p class=\"cuadra\">✓ El registro está vacío: ni errores ni warnings.</p>\n"
                      "</section>\n";
    html += "<p class=\"nota\">Los mensajes que tienen una misma causa, juntos; los que más dan, "
            "primero.</p>\n<ol class=\"asuntos\">\n";
    for (const CAsunto& asunto : informe.asuntos.mayores)
        html += "<li class=\"" + std::string(asunto.errores > 0 ? "err" : "avi") + "\"><b>" +
                Html(asunto.titulo) + "</b>" + Sitio(informe, asunto) + "<br>" +
                (asunto.mensajes > 1 ? Miles(asunto.mensajes) + " mensajes: " : std::string()) +
                Cuentas(asunto) + "<span class=\"lineas\">" + Lineas(informe, asunto) +
                "</span></li>\n";
    html += "</ol>\n";
    const auto resto =
        informe.asuntos.cuantos - static_cast<std::int64_t>(informe.asuntos.mayores.size());
    return html +
           (resto > 0 ? "<p class=\"nota\">y " + Miles(resto) + " más, de menos mensajes.</p>\n"
                      : std::string()) +
           "</section>\n";
}

std::string SeccionNumeros(const CInforme& informe)
{
    std::string html = "<section id=\"numeros\">\n<h2>Por número de mensaje</h2>\n";
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = informe.registro.Cuenta(mensaje.numero); cuantos > 0)
            html += Articulo(mensaje, cuantos);
    if (informe.registro.Ajenas() > 0)
        html += "<article class=\"numero\"><h3>" +
                Cuantos(informe.registro.Ajenas(), "línea que no es", "líneas que no son") +
                " ningún mensaje</h3>\n<p>El registro fue escrito o cambiado por otro, o está a "
                "medias.</p></article>\n";
    return html + "</section>\n";
}

void SeccionMensajes(const CInforme& informe, const CEscribe& escribe)
{
    escribe("<section id=\"mensajes\">\n<h2>Mensajes</h2>\n");
    if (informe.lineas.empty()) {
        escribe("<p class=\"cuadra\">✓ Ninguno.</p>\n</section>\n");
        return;
    }
    const auto total = static_cast<std::int64_t>(informe.registro.avisos.size());
    const auto dichas = static_cast<std::int64_t>(informe.lineas.size());
    if (dichas < total)
        escribe("<p class=\"nota\">" + Miles(dichas) + " de " + Miles(total) +
                ": los primeros de cada número.</p>\n");
    escribe(kFiltro);
    escribe(kCabeceraMensajes);
    for (const CLineaMostrada& linea : informe.lineas)
        escribe(FilaMensaje(informe, linea));
    escribe("</tbody></table></div>\n" + YMas(informe, total - dichas) + "</section>\n");
}

} // namespace informe
