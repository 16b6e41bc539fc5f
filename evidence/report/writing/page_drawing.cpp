#include <algorithm>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "evidence/report/writing/page.h"

// The drawings' side of the balance: surfaces, and what no message tells.

namespace informe {
namespace {

constexpr std::size_t kFilas = 60; // of each list
constexpr double kMetro = 0.01;    // in a hundredth of a metre

std::string FilaDesajuste(const CInforme& informe, const CDesajuste& uno)
{
    const std::string nombre = std::to_string(uno.polig) + "-" + std::to_string(uno.parcela);
    const std::string ancla = "p" + nombre;
    return std::string("<tr") + (uno.motivo.empty() ? " class=\"mal\"" : "") + "><td>" +
           (informe.anclas.contains(ancla) ? "<a href=\"#" + ancla + "\">" + nombre + "</a>"
                                           : nombre) +
           "</td><td class=\"n\">" + Miles(uno.recintos) + "</td><td class=\"n\">" +
           Miles(uno.dibujada) + "</td><td class=\"n\">" + Miles(uno.escrita) +
           "</td><td class=\"n\">" + (uno.Diferencia() > 0 ? "+" : "") + Miles(uno.Diferencia()) +
           "</td><td>" + (uno.motivo.empty() ? "<b>✕ sin explicar</b>" : Html(uno.motivo)) +
           "</td></tr>\n";
}

std::string Superficies(const CInforme& informe, const CBalanceDibujo& dibujo)
{
    std::string html = "<article><h3>Superficie dibujada y superficie escrita</h3>\n";
    if (dibujo.escrita == 0 && dibujo.dibujada == 0)
        return html + "<p class=\"nota\">Sin fichero R no hay con qué compararla.</p></article>\n";
    html += "<p>Las parcelas que están en el dibujo y en el fichero R tienen " +
            Miles(dibujo.dibujada) + " m² en el uno y " + Miles(dibujo.escrita) + " m² en el otro.";
    if (dibujo.perdida != 0)
        html +=
            " <b>" + Miles(dibujo.perdida) +
            " m² no cuentan</b>, por estar en parcelas de varios recintos, de las que la vuelta "
            "toma el último.";
    html += "</p>\n";
    if (dibujo.desajustes.empty())
        return html +
               "<p class=\"cuadra\">✓ Todas tienen la superficie de su recinto.</p></article>\n";
    std::vector<CDesajuste> orden = dibujo.desajustes;
    std::stable_sort(orden.begin(), orden.end(), [](const CDesajuste& a, const CDesajuste& b) {
        return std::pair(!a.motivo.empty(), -std::abs(a.Diferencia())) <
               std::pair(!b.motivo.empty(), -std::abs(b.Diferencia()));
    });
    html += "<div class=\"ancha\"><table><thead><tr><th>Parcela</th><th "
            "class=\"n\">Recintos</th><th class=\"n\">Dibujada, m²</th><th class=\"n\">Escrita, "
            "m²</th><th class=\"n\">Diferencia</th><th>Por qué</th></tr></thead><tbody>\n";
    for (std::size_t i = 0; i < std::min(orden.size(), kFilas); ++i)
        html += FilaDesajuste(informe, orden[i]);
    html += "</tbody></table></div>\n";
    if (orden.size() > kFilas)
        html += "<p class=\"nota\">y " + Miles(static_cast<std::int64_t>(orden.size() - kFilas)) +
                " más, de menos diferencia.</p>\n";
    return html + "</article>\n";
}

std::string Hallazgos(const CBalanceDibujo& dibujo)
{
    std::string html = "<article><h3>Lo que ningún mensaje dice del dibujo</h3>\n";
    if (dibujo.hallazgos.empty() && dibujo.rotos.empty())
        return html + "<p class=\"cuadra\">✓ Nada.</p></article>\n";
    html += "<div class=\"ancha\"><table><thead><tr><th>Polígono</th><th>Dónde</th><th>Qué"
            "</th><th class=\"n\">Sitio, m</th></tr></thead><tbody>\n";
    for (const CPoligonoRoto& roto : dibujo.rotos)
        html += "<tr class=\"mal\"><td>" + Html(Texto(roto.entrada)) + "</td><td>todo él</td><td>" +
                Html(roto.que) + "</td><td></td></tr>\n";
    std::size_t dichos = 0;
    for (const CHallazgo& uno : dibujo.hallazgos) {
        if (++dichos > kFilas)
            break;
        html += "<tr><td>" + std::to_string(uno.polig) + "</td><td>" + Html(uno.donde) +
                "</td><td>" + Html(uno.que) + "</td><td class=\"n\">" +
                Decimal(uno.sitio.X * kMetro, 2) + " " + Decimal(uno.sitio.Y * kMetro, 2) +
                "</td></tr>\n";
    }
    html += "</tbody></table></div>\n";
    if (dibujo.hallazgos.size() > kFilas)
        html += "<p class=\"nota\">y " +
                Miles(static_cast<std::int64_t>(dibujo.hallazgos.size() - kFilas)) + " más.</p>\n";
    return html + "</article>\n";
}

} // namespace

std::string SeccionDibujo(const CInforme& informe)
{
    if (!informe.dibujo)
        return {};
    return "<h2>Balance del dibujo</h2>\n<p class=\"nota\">" +
           Cuantos(informe.dibujo->poligonos, "polígono", "polígonos") + ", " +
           Cuantos(informe.dibujo->recintosParcela, "recinto de parcela", "recintos de parcela") +
           " y " + Cuantos(informe.dibujo->recintosSubparcela, "de subparcela", "de subparcela") +
           ".</p>\n" + Superficies(informe, *informe.dibujo) + Hallazgos(*informe.dibujo);
}

} // namespace informe
