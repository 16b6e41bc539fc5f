#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/units.h"

// What went on to Infograf, by kind, and what nothing holds.

namespace informe {
namespace {

void Clases(CMarcas& marcas, const CEvidenciaInfograf& infograf)
{
    constexpr std::array<const char*, kClasesInfograf> kNombres = {
        "parcelas (12)", "polígonos (13)", "subparcelas (11)"};
    marcas.Bloque("h3", {}, "Registros por clase");
    Tabla(marcas, nullptr,
          {{"Clase"},
           {"Recintos", true},
           {"Sin padre", true},
           {"Registros", true},
           {"Dibujadas, ha", true},
           {"Escritas, ha", true}},
          [&] {
              for (std::size_t i = 0; i < kNombres.size(); ++i) {
                  const CEvidenciaInfograf::CClase& clase = infograf.clases[i];
                  Fila(marcas, {},
                       {{kNombres[i]},
                        {Miles(clase.recintos), kNumero},
                        {Miles(clase.huerfanos), kNumero},
                        {Miles(clase.registros), kNumero},
                        {Hectareas(EnMetrosCuadrados(clase.dibujada)), kNumero},
                        {Hectareas(EnMetrosCuadrados(clase.escrita)), kNumero}});
              }
          });
}

void SinPadre(CMarcas& marcas, const CEvidenciaInfograf& infograf)
{
    marcas.Bloque("h3", {}, "Lo que no tiene padre");
    if (infograf.sinPadre.empty())
        return Parrafo(marcas, kCuadra, "✓ Nada.");
    Tabla(marcas, nullptr, {{"Polígono"}, {"Recinto"}, {"Por qué"}, {"Sitio, m", true}}, [&] {
        for (const CEvidenciaInfograf::CSinPadre& uno :
             Primeros(infograf.sinPadre, topes::kFilasDibujo))
            Fila(marcas, {},
                 {{Texto(uno.entrada)},
                  {uno.que},
                  {uno.porque},
                  {SitioEnMetros(uno.sitio), kNumero}});
    });
    PonResto(marcas, topes::kFilasDibujo, infograf.sinPadre.size());
}

} // namespace

void PonInfograf(const CContenido& contenido, CMarcas& marcas)
{
    if (contenido.proceso.ficheros.sentido != Sentido::Infograf)
        return;
    marcas.Bloque("article", {}, [&] {
        Clases(marcas, contenido.proceso.infograf);
        SinPadre(marcas, contenido.proceso.infograf);
    });
}

} // namespace informe
