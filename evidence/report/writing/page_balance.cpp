#include <algorithm>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "evidence/report/writing/page.h"

// What was run, and its balance.

namespace informe {
namespace {

constexpr std::size_t kFicheros = 40; // that are named; further ones are counted

std::string Fila(const CFicheroVisto& visto)
{
    std::string html = "<tr" + std::string(visto.hay && !visto.viejo ? "" : " class=\"mal\"") +
                       "><td>" + Html(visto.papel) + "</td><td class=\"nombre\">" +
                       Html(Texto(visto.nombre)) + "</td>";
    if (!visto.hay)
        return html + "<td colspan=\"3\">no está</td></tr>\n";
    html += "<td class=\"n\">" + Miles(static_cast<std::int64_t>(visto.largo)) + "</td><td>" +
            (visto.fecha ? Fecha(*visto.fecha) : "") +
            (visto.viejo ? " <b>más viejo que el registro</b>" : "") + "</td><td class=\"suma\">" +
            Hexadecimal(visto.crc) + "</td></tr>\n";
    return html;
}

std::string TablaFicheros(const CInforme& informe, bool salidas)
{
    std::string filas;
    std::size_t dichas = 0;
    std::int64_t calladas = 0;
    for (const CFicheroVisto& visto : informe.vistos) {
        if (visto.salida != salidas)
            continue;
        if (visto.hay && dichas >= kFicheros) {
            ++calladas;
            continue;
        }
        filas += Fila(visto);
        ++dichas;
    }
    if (filas.empty())
        return {};
    return std::string("<h3>") + (salidas ? "Escribe" : "Lee") +
           "</h3>\n<div class=\"ancha\"><table><thead><tr><th>Qué es</th><th>Fichero</th><th "
           "class=\"n\">Bytes</th><th>Fecha</th><th>CRC-32</th></tr></thead><tbody>\n" +
           filas + "</tbody></table></div>\n" +
           (calladas > 0 ? "<p class=\"nota\">y " + Miles(calladas) + " más, que están.</p>\n"
                         : std::string());
}

std::string Renglon(const CPartida::CRenglon& renglon)
{
    return std::string("<tr") +
           (renglon.callado && renglon.cuantos > 0 ? " class=\"callado\"" : "") + "><td>" +
           Html(renglon.texto) + "</td><td class=\"n\">" + Miles(renglon.cuantos) + "</td></tr>\n";
}

std::string Columna(const char* titulo, const std::vector<CPartida::CRenglon>& renglones,
                    std::int64_t suma)
{
    std::string html =
        std::string("<table class=\"partida\"><caption>") + titulo + "</caption><tbody>\n";
    std::size_t dichos = 0;
    for (const CPartida::CRenglon& renglon : renglones) {
        if (dichos > 0 && renglon.cuantos == 0)
            continue; // what didn't happen needs no line
        html += Renglon(renglon);
        ++dichos;
    }
    if (dichos > 1)
        html += R"(<tr class="suma"><td>suma</td><td class="n">)" + Miles(suma) + "</td></tr>\n";
    return html + "</tbody></table>\n";
}

std::string Partida(const CPartida& partida)
{
    std::string html = "<article class=\"partidas\"><h3>" + Html(partida.titulo) + "</h3>\n<div>" +
                       Columna("Entra", partida.entra, partida.SumaEntra());
    if (!partida.SePuedeDecir())
        return html +
               "</div><p class=\"alarma\">No se puede comprobar: " + Html(partida.noSePuede) +
               ".</p></article>\n";
    html += Columna("Sale", partida.sale, partida.SumaSale()) + "</div>";
    const std::int64_t sinExplicar = partida.SinExplicar();
    if (sinExplicar == 0)
        return html + "<p class=\"cuadra\">✓ Cuadra: sin explicar, 0.</p></article>\n";
    html += "<p class=\"alarma\">✕ sin explicar: " + Miles(sinExplicar);
    for (std::size_t i = 0; i < partida.ejemplos.size(); ++i)
        html += (i == 0 ? ": " : ", ") + Html(partida.ejemplos[i]);
    if (static_cast<std::size_t>(partida.faltan + partida.sobran) > partida.ejemplos.size() &&
        !partida.ejemplos.empty())
        html += " …";
    return html + "</p></article>\n";
}

} // namespace

std::string SeccionFicheros(const CInforme& informe)
{
    return "<section id=\"ficheros\">\n<h2>Ficheros</h2>\n" + TablaFicheros(informe, false) +
           TablaFicheros(informe, true) + "</section>\n";
}

std::string SeccionBalance(const CInforme& informe)
{
    std::string html = "<section id=\"balance\">\n<h2>Balance</h2>\n";
    for (const std::string& nota : informe.balance.notas)
        html += "<p class=\"nota\">" + Html(nota) + "</p>\n";
    for (const CPartida& partida : informe.balance.partidas)
        html += Partida(partida);
    const bool perdidos = std::any_of(
        informe.balance.partidas.begin(), informe.balance.partidas.end(), [](const CPartida& p) {
            return std::any_of(p.sale.begin(), p.sale.end(), [](const CPartida::CRenglon& r) {
                return r.callado && r.cuantos > 0;
            });
        });
    if (perdidos)
        html += "<p class=\"nota\">Con <b>▸</b>, lo que se perdió sin que ningún mensaje lo "
                "diga.</p>\n";
    return html + SeccionDibujo(informe) + "</section>\n";
}

} // namespace informe
