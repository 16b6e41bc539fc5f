#include <algorithm>
#include <cstdlib>
#include <utility>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/change_texts.h"
#include "evidence/report/writing/page_files.h"
#include "evidence/report/writing/page_parts.h"

// What changed against another state.

namespace informe {
namespace {

constexpr std::size_t kTitularesDichos = 3;

std::string ConSigno(std::int64_t metros)
{
    return (metros > 0 ? "+" : "") + Miles(metros);
}

CCelda CeldaDe(const CClaveParcela& clave, const CContraste& contraste, const CAnclas* anclas)
{
    // Of several municipalities the maps are one's alone.
    const bool enlaza = anclas != nullptr && contraste.cambios.municipios == 1;
    return {NombreDe(clave, contraste), nullptr,
            enlaza ? anclas->AParcela(clave.polig, clave.parcela) : std::string()};
}

void PonEstados(CMarcas& marcas, const CContraste& contraste)
{
    marcas.Bloque("p", {{"class", kNota}}, [&] {
        marcas.Texto("De ")
            .Elemento("b", {}, Texto(contraste.antes.nombre))
            .Texto(std::string(" (") + NombreDe(contraste.antes.clase) + ") a ")
            .Elemento("b", {}, Texto(contraste.ahora.nombre))
            .Texto(std::string(" (") + NombreDe(contraste.ahora.clase) + ").");
    });
    if (contraste.cambios.deOtroMunicipio > 0)
        Parrafo(marcas, kNota,
                "No se miran " + Cuantos(contraste.cambios.deOtroMunicipio, "parcela", "parcelas") +
                    " de otro municipio.");
    if (const std::string sueltas = SinSuParcela(contraste); !sueltas.empty())
        Parrafo(marcas, kAlarma, "Hay " + sueltas + ".");
    if (const std::string cual = EnUtf8(contraste); !cual.empty())
        Parrafo(marcas, kAlarma, "Ojo: " + cual + ".");
}

/// Adds up from the older state to the newer one, in parcels and in hectares.
void PonBalance(CMarcas& marcas, const CCambios& cambios)
{
    const auto fila = [&](const char* que, const char* signo, const CCambios::CSuma& suma,
                          const char* clase, bool cuentan) {
        const char* const suyo = suma.parcelas == 0 ? "" : signo;
        const std::string parcelas = Miles(suma.parcelas);
        Fila(marcas, {{"class", clase}},
             {{que},
              {cuentan ? suyo + parcelas : "(" + parcelas + ")", kNumero},
              {suyo + Hectareas(suma.metros), kNumero}});
    };
    Tabla(marcas, "sumas", {{"Superficie"}, {"Parcelas", true}, {"Hectáreas", true}}, [&] {
        fila("Antes", "", cambios.antes, nullptr, true);
        fila("desaparecen", "−", cambios.desaparecidas, nullptr, true);
        fila("nuevas", "+", cambios.nuevas, nullptr, true);
        fila("crecen", "+", cambios.crecen, nullptr, false);
        fila("menguan", "−", cambios.menguan, nullptr, false);
        fila("Ahora", "", cambios.ahora, "suma", true);
    });
}

void PonEnQue(CMarcas& marcas, const CCambios& cambios)
{
    std::string texto;
    for (std::size_t i = 0; i < kDifiere; ++i)
        if (const std::int64_t cuantas = cambios.porDifiere[i]; cuantas > 0)
            texto += (texto.empty() ? "Cambian de " : ", de ") +
                     std::string(NombreDe(static_cast<Difiere>(i))) + " " + Miles(cuantas);
    if (!texto.empty())
        Parrafo(marcas, nullptr,
                texto + "; " + Cuantos(cambios.iguales, "parcela queda", "parcelas quedan") +
                    " como estaba" + (cambios.iguales == 1 ? "." : "n."));
}

void Callan(CMarcas& marcas, std::size_t hay)
{
    PonResto(marcas, topes::kFilasCambios, hay, "; --cambios las da todas en una hoja.");
}

void PonRepartos(CMarcas& marcas, const CContraste& contraste)
{
    const CCambios& cambios = contraste.cambios;
    const std::vector<CReparto>& repartos = cambios.repartos;
    if (repartos.empty() && !cambios.repartosSinBuscar)
        return;
    marcas.Bloque("h3", {}, "Divisiones y agrupaciones");
    Parrafo(marcas, kNota, "Por lo que suman sus superficies.");
    if (cambios.repartosSinBuscar)
        Parrafo(marcas, kNota, "Son tantas las parcelas que cambian, que no se buscaron todas.");
    marcas.Bloque("ul", {{"class", "repartos"}}, [&] {
        for (const CReparto& reparto : Primeros(repartos, topes::kFilasCambios))
            marcas.Bloque("li", {}, [&] {
                marcas.Texto(EnPalabras(reparto, contraste, topes::kParcelasDeReparto) + " ");
                marcas.Elemento("small", {}, Superficie(reparto.metros));
            });
    });
    Callan(marcas, repartos.size());
}

/// Those with the greatest surface, or difference of it, first.
std::vector<const CCambioParcela*> Elige(const CCambios& cambios, CCambioParcela::Que que)
{
    std::vector<const CCambioParcela*> elegidas;
    for (const CCambioParcela& cambio : cambios.parcelas)
        if (cambio.que == que)
            elegidas.push_back(&cambio);
    std::ranges::stable_sort(elegidas, std::greater(),
                             [](const auto* una) { return std::abs(una->Diferencia()); });
    return elegidas;
}

/// Of a parcel that only one state has.
void FilaDeParcela(CMarcas& marcas, const CContraste& contraste, const CAnclas* anclas,
                   const CCambioParcela& cambio)
{
    const bool nueva = cambio.que == CCambioParcela::Que::Nueva;
    const CEstadoMunicipio& estado = (nueva ? contraste.ahora : contraste.antes).estado;
    const CEstadoMunicipio::CParcela& parcela = nueva ? *cambio.ahora : *cambio.antes;
    Fila(marcas, {},
         {CeldaDe(cambio.clave, contraste, anclas),
          {Miles(parcela.superficie), kNumero},
          {Titulares(estado, parcela, kTitularesDichos)},
          {Texto(estado.Paraje(parcela))},
          {PorQue(cambio, contraste, topes::kParcelasDeReparto)}});
}

/// A line for each difference but that of the surface, which has columns of its own.
std::string QueCambia(const CContraste& contraste, const CCambioParcela& cambio)
{
    CMarcas lineas;
    const char* entre = "";
    for (const CDiferencia& una : Diferencias(cambio, contraste, kTitularesDichos)) {
        if (una.deSuperficie)
            continue;
        lineas.Hecho(std::exchange(entre, "<br>"))
            .Elemento("b", {}, una.que + (una.letra.empty() ? "" : " " + una.letra))
            .Texto(": " + (una.antes.empty() ? "no estaba" : una.antes) + " → " +
                   (una.ahora.empty() ? "ya no está" : una.ahora));
    }
    return lineas.Toma();
}

void FilaDeCambiada(CMarcas& marcas, const CContraste& contraste, const CAnclas* anclas,
                    const CCambioParcela& cambio)
{
    const bool mide = cambio.Hay(Difiere::Superficie);
    Fila(marcas, {},
         {CeldaDe(cambio.clave, contraste, anclas),
          {Miles(cambio.Antes()), kNumero},
          {mide ? Miles(cambio.Ahora()) : "", kNumero},
          {mide ? ConSigno(cambio.Diferencia()) : "", kNumero},
          {.marcas = QueCambia(contraste, cambio)}});
}

void PonParcelas(CMarcas& marcas, const CContraste& contraste, const CAnclas* anclas,
                 CCambioParcela::Que que, const char* ancla, const char* titulo)
{
    const std::vector<const CCambioParcela*> elegidas = Elige(contraste.cambios, que);
    if (elegidas.empty())
        return;
    const bool cambian = que == CCambioParcela::Que::Cambiada;
    const auto fila = cambian ? FilaDeCambiada : FilaDeParcela;
    std::vector<CColumnaPagina> columnas = {
        {"Parcela"}, {"Antes, m²", true}, {"Ahora, m²", true}, {"Diferencia", true}, {"Qué"}};
    if (!cambian)
        columnas = {{"Parcela"},
                    {"m²", true},
                    {"Titulares"},
                    {"Paraje"},
                    {contraste.cambios.repartos.empty() ? "" : "Por qué"}};
    marcas.Bloque("h3", {}, titulo + (" (" + Miles(elegidas.size()) + ")"));
    Tabla(marcas, ancla, columnas, [&] {
        for (const CCambioParcela* cambio : Primeros(elegidas, topes::kFilasCambios))
            fila(marcas, contraste, anclas, *cambio);
    });
    Callan(marcas, elegidas.size());
}

void PonPersonas(CMarcas& marcas, const CContraste& contraste)
{
    const std::vector<CCambioPersona>& personas = contraste.cambios.personas;
    if (personas.empty())
        return;
    marcas.Bloque("h3", {}, "Titulares (" + Miles(personas.size()) + ")");
    Tabla(marcas, "personas",
          {{"Qué"}, {"Antes"}, {"Ahora"}, {"Parcelas", true}, {"Hectáreas", true}}, [&] {
              for (const CCambioPersona& cambio : Primeros(personas, topes::kFilasCambios))
                  Fila(marcas, {},
                       {{NombreDe(cambio.que)},
                        {NombreDe(contraste.antes.estado, cambio.antes)},
                        {NombreDe(contraste.ahora.estado, cambio.ahora)},
                        {Miles(cambio.parcelas), kNumero},
                        {Hectareas(cambio.metros), kNumero}});
          });
    Callan(marcas, personas.size());
}

/// \param anclas  null where there are no maps
void PonCambios(CMarcas& marcas, const CContraste& contraste, const CAnclas* anclas)
{
    using enum CCambioParcela::Que;
    const CCambios& cambios = contraste.cambios;
    PonEstados(marcas, contraste);
    if (!cambios.HayAlguno())
        return Parrafo(marcas, kCuadra,
                       std::string("✓ Sin cambios en ") + kLoComparado + ": " +
                           Cuantos(cambios.iguales, "parcela", "parcelas") + ", " +
                           Hectareas(cambios.ahora.metros) + " ha. Lo demás no se compara.");
    PonBalance(marcas, cambios);
    PonEnQue(marcas, cambios);
    PonRepartos(marcas, contraste);
    PonParcelas(marcas, contraste, anclas, Desaparecida, "desaparecen", "Parcelas que desaparecen");
    PonParcelas(marcas, contraste, anclas, Nueva, "nuevas", "Parcelas nuevas");
    PonParcelas(marcas, contraste, anclas, Cambiada, "cambian", "Parcelas que cambian");
    PonPersonas(marcas, contraste);
}

void PonCifrasDeCambios(const CContraste& contraste, CMarcas& marcas)
{
    const CCambios& cambios = contraste.cambios;
    const auto cifra = [&](std::int64_t cuantos, const char* que) {
        Cifra(marcas, cuantos, que, que, "");
    };
    const std::int64_t metros = cambios.ahora.metros - cambios.antes.metros;
    marcas.Bloque("ul", {{"class", "cifras"}}, [&] {
        marcas.Linea();
        cifra(cambios.desaparecidas.parcelas, "desaparecen");
        cifra(cambios.nuevas.parcelas, "nuevas");
        cifra(cambios.Cuantas(CCambioParcela::Que::Cambiada), "cambian");
        cifra(cambios.porDifiere[0], "de titular");
        Cifra(marcas, metros == 0, (metros > 0 ? "+" : "") + Superficie(metros), "de superficie",
              "");
    });
}

} // namespace

void EscribePagina(const CContenidoCambios& contenido, const CEscribe& escribe)
{
    EscribeDocumento(
        escribe, "Cambios de " + contenido.nombre, kEstiloCambios, [&](CMarcas& marcas) {
            marcas.Linea().Bloque("header", {}, [&] {
                marcas.Linea().Bloque("p", {{"class", "sobre"}}, "Cambios");
                marcas.Bloque("h1", {}, contenido.nombre);
                Parrafo(marcas, "sentido", "contra " + Texto(contenido.contraste.antes.nombre));
                PonCifrasDeCambios(contenido.contraste, marcas);
            });
            marcas.Bloque("main", {}, [&] {
                marcas.Linea();
                PonSeccion(marcas, "cambios", "Cambios",
                           [&] { PonCambios(marcas, contenido.contraste, nullptr); });
            });
            PonPie(marcas, contenido.firma);
        });
}

void SeccionCambios(const CContenido& contenido, CMarcas& marcas)
{
    PonCambios(marcas, *contenido.contraste, &contenido.anclas);
}

} // namespace informe
