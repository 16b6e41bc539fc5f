#include <algorithm>

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
          {uno.motivo, nullptr, {}, seExplica ? nullptr : "✕ sin explicar"}});
}

/// Those that nothing explains first, and the greater ones before the smaller.
std::vector<CDesajuste> EnOrden(std::vector<CDesajuste> desajustes)
{
    std::stable_sort(desajustes.begin(), desajustes.end(),
                     [](const CDesajuste& a, const CDesajuste& b) {
                         return std::pair(!a.motivo.empty(), -std::abs(a.Diferencia())) <
                                std::pair(!b.motivo.empty(), -std::abs(b.Diferencia()));
                     });
    return desajustes;
}

void TablaDesajustes(CMarcas& marcas, const CAnclas& anclas, const CBalanceDibujo& dibujo)
{
    const std::vector<CDesajuste> orden = EnOrden(dibujo.desajustes);
    Tabla(marcas, nullptr,
          {{"Parcela"},
           {"Recintos", true},
           {"Dibujada, m²", true},
           {"Escrita, m²", true},
           {"Diferencia", true},
           {"Por qué"}},
          [&] {
              for (std::size_t i = 0; i < std::min(orden.size(), topes::kFilasDibujo); ++i)
                  FilaDesajuste(marcas, anclas, orden[i]);
          });
    if (orden.size() > topes::kFilasDibujo)
        Parrafo(marcas, kNota,
                "y " + Miles(static_cast<std::int64_t>(orden.size() - topes::kFilasDibujo)) +
                    " más, de menos diferencia.");
}

void Superficies(CMarcas& marcas, const CAnclas& anclas, const CBalanceDibujo& dibujo)
{
    marcas.Bloque("h3", {}, "Superficie dibujada y superficie escrita");
    if (dibujo.escrita == 0 && dibujo.dibujada == 0) {
        marcas.Elemento("p", {{"class", kNota}}, "Sin fichero R no hay con qué compararla.");
        return;
    }
    marcas.Bloque("p", {}, [&] {
        marcas.Texto("Las parcelas que están en el dibujo y en el fichero R tienen " +
                     Miles(dibujo.dibujada) + " m² en el uno y " + Miles(dibujo.escrita) +
                     " m² en el otro.");
        if (dibujo.perdida != 0)
            marcas.Texto(" ")
                .Elemento("b", {}, Miles(dibujo.perdida) + " m² no cuentan")
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
    const std::size_t dichos = std::min(dibujo.hallazgos.size(), topes::kFilasDibujo);
    Tabla(marcas, nullptr, {{"Polígono"}, {"Dónde"}, {"Qué"}, {"Sitio, m", true}}, [&] {
        for (const CPoligonoRoto& roto : dibujo.rotos)
            Fila(marcas, {{"class", "mal"}},
                 {{Texto(roto.entrada)}, {"todo él"}, {roto.que}, {""}});
        for (std::size_t i = 0; i < dichos; ++i) {
            const CHallazgo& uno = dibujo.hallazgos[i];
            Fila(marcas, {},
                 {{std::to_string(uno.polig)},
                  {uno.donde},
                  {uno.que},
                  {Decimal(EnMetros(uno.sitio.X), 2) + " " + Decimal(EnMetros(uno.sitio.Y), 2),
                   kNumero}});
        }
    });
    if (dichos < dibujo.hallazgos.size())
        Parrafo(marcas, kNota,
                "y " + Miles(static_cast<std::int64_t>(dibujo.hallazgos.size() - dichos)) +
                    " más.");
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
