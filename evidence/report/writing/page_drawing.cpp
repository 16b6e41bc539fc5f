#include <algorithm>
#include <tuple>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/units.h"

// The drawings' side of the balance: surfaces, and what no message tells.

namespace informe {
namespace {

void FilaDesajuste(CMarcas& marcas, const CAnclas& anclas, const CDesajuste& uno)
{
    const bool seExplica = !uno.motivo.empty();
    Fila(marcas, {{"class", seExplica ? nullptr : "mal"}},
         {{std::to_string(uno.polig) + "-" + std::to_string(uno.parcela), nullptr,
           anclas.AParcela(uno.polig, uno.parcela)},
          {Miles(uno.recintos), kNumero},
          {Miles(uno.dibujada), kNumero},
          {Miles(uno.escrita), kNumero},
          {(uno.Diferencia() > 0 ? "+" : "") + Miles(uno.Diferencia()), kNumero},
          {uno.Perdida() > 0 ? Miles(uno.Perdida()) : "", kNumero},
          {uno.motivo, nullptr, {}, seExplica ? nullptr : "✕ sin explicar"}});
}

/// Those that nothing explains first, then those that lose most, and the greater differences before
/// the smaller.
void TablaDesajustes(CMarcas& marcas, const CAnclas& anclas, const CBalanceDibujo& dibujo)
{
    std::vector<CDesajuste> orden = dibujo.desajustes;
    std::ranges::stable_sort(orden, {}, [](const CDesajuste& uno) {
        return std::tuple(!uno.motivo.empty(), -uno.Perdida(), -std::abs(uno.Diferencia()));
    });
    Tabla(marcas, nullptr,
          {{"Parcela"},
           {"Recintos", true},
           {"Dibujada, m²", true},
           {"Escrita, m²", true},
           {"Diferencia", true},
           {"No cuenta, m²", true},
           {"Por qué"}},
          [&] {
              for (const CDesajuste& uno : Primeros(orden, topes::kFilasDibujo))
                  FilaDesajuste(marcas, anclas, uno);
          });
    PonResto(marcas, topes::kFilasDibujo, orden.size(), ", de menos diferencia.");
}

/// The surfaces of the drawings and those of the file R, by hectare.
void Sumas(CMarcas& marcas, const CBalanceDibujo& dibujo)
{
    const auto fila = [&](const char* que, std::int64_t metros, std::size_t parcelas) {
        Fila(marcas, {}, {{que}, {Hectareas(metros), kNumero}, {Miles(parcelas), kNumero}});
    };
    const auto siHay = [&](const char* que, const CPerdidas& metros) {
        if (!metros.empty())
            fila(que, SumaMetros(metros), metros.size());
    };
    Tabla(marcas, nullptr, {{"Superficie"}, {"Hectáreas", true}, {"Parcelas", true}}, [&] {
        const auto comparadas = static_cast<std::size_t>(dibujo.comparadas);
        fila("dibujada, de las parcelas que están también en el fichero R", dibujo.dibujada,
             comparadas);
        fila("escrita de ellas en el fichero R", dibujo.escrita, comparadas);
        siHay("que no cuenta, por estar en varios recintos", dibujo.perdidas);
        siHay("dibujada, de parcelas que no están en el fichero R", dibujo.sinEscribir);
        siHay("de la tabla, de parcelas que no están en el fichero R", dibujo.DeTablaSinEscribir());
    });
}

void Superficies(CMarcas& marcas, const CAnclas& anclas, const CBalanceDibujo& dibujo)
{
    marcas.Bloque("h3", {}, "Superficie dibujada y superficie escrita");
    if (!dibujo.HayEscritas()) {
        marcas.Elemento("p", {{"class", kNota}}, "Sin fichero R no hay con qué compararla.");
        return;
    }
    Sumas(marcas, dibujo);
    if (const std::int64_t perdida = dibujo.Perdida(); perdida > 0)
        marcas.Bloque("p", {}, [&] {
            marcas.Elemento("b", {}, Miles(perdida) + " m² no cuentan")
                .Texto(", por estar en parcelas de varios recintos, de las que la "
                       "vuelta toma el último.");
        });
    if (dibujo.desajustes.empty())
        marcas.Elemento("p", {{"class", kCuadra}}, "✓ Todas tienen la superficie de su recinto.");
    else
        TablaDesajustes(marcas, anclas, dibujo);
}

void Hallazgos(CMarcas& marcas, const CBalanceDibujo& dibujo)
{
    marcas.Bloque("h3", {}, "Lo que ningún mensaje dice del dibujo");
    if (dibujo.hallazgos.empty() && dibujo.rotos.empty()) {
        marcas.Elemento("p", {{"class", kCuadra}}, "✓ Nada.");
        return;
    }
    Tabla(marcas, nullptr, {{"Polígono"}, {"Dónde"}, {"Qué"}, {"Sitio, m", true}}, [&] {
        for (const CPoligonoRoto& roto : dibujo.rotos)
            Fila(marcas, {{"class", "mal"}},
                 {{Texto(roto.entrada)}, {"todo él"}, {roto.que}, {""}});
        for (const CHallazgo& uno : Primeros(dibujo.hallazgos, topes::kFilasDibujo))
            Fila(marcas, {},
                 {{std::to_string(uno.polig)},
                  {uno.donde},
                  {uno.que},
                  {SitioEnMetros(uno.sitio), kNumero}});
    });
    PonResto(marcas, topes::kFilasDibujo, dibujo.hallazgos.size());
}

} // namespace

void PonDibujo(const CContenido& contenido, CMarcas& marcas)
{
    if (!contenido.dibujo)
        return;
    const CBalanceDibujo& dibujo = *contenido.dibujo;
    marcas.Bloque("h2", {}, "Balance del dibujo");
    Parrafo(marcas, kNota,
            Cuantos(dibujo.poligonos, "polígono", "polígonos") + ", " +
                Cuantos(dibujo.recintosParcela, "recinto de parcela", "recintos de parcela") +
                " y " + Cuantos(dibujo.recintosSubparcela, "de subparcela", "de subparcela") + ".");
    marcas.Bloque("article", {}, [&] { Superficies(marcas, contenido.anclas, dibujo); });
    marcas.Bloque("article", {}, [&] { Hallazgos(marcas, dibujo); });
}

} // namespace informe
