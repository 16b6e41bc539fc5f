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

class CSeccionCambios {
public:
    CSeccionCambios(const CContraste& contraste, const CAnclas* anclas, CMarcas& marcas)
        : m_contraste(contraste), m_cambios(contraste.cambios), m_anclas(anclas), m_marcas(marcas)
    {
    }

    void Pon();

private:
    using CElegidas = std::vector<const CCambioParcela*>;

    void PonEstados();
    void PonBalance();
    void PonEnQue();
    void PonRepartos();
    void PonParcelas(CCambioParcela::Que que, const char* ancla, const char* titulo);
    void PonPersonas();
    CElegidas Elige(CCambioParcela::Que que) const;
    void FilaDeParcela(const CCambioParcela& cambio);
    void FilaDeCambiada(const CCambioParcela& cambio);
    void QueCambia(const CCambioParcela& cambio);
    void FilaDePersona(const CCambioPersona& cambio);
    void Callan(std::size_t hay);
    CCelda Parcela(const CClaveParcela& clave) const
    {
        return {NombreDe(clave, m_contraste), nullptr,
                m_anclas == nullptr ? std::string()
                                    : m_anclas->AParcela(clave.polig, clave.parcela)};
    }

    const CContraste& m_contraste;
    const CCambios& m_cambios;
    const CAnclas* m_anclas; // null where there are no maps
    CMarcas& m_marcas;
};

void CSeccionCambios::PonEstados()
{
    m_marcas.Bloque("p", {{"class", kNota}}, [&] {
        m_marcas.Texto("De ")
            .Elemento("b", {}, Texto(m_contraste.antes.nombre))
            .Texto(std::string(" (") + NombreDe(m_contraste.antes.clase) + ") a ")
            .Elemento("b", {}, Texto(m_contraste.ahora.nombre))
            .Texto(std::string(" (") + NombreDe(m_contraste.ahora.clase) + ").");
    });
    if (m_cambios.deOtroMunicipio > 0)
        Parrafo(m_marcas, kNota,
                "No se miran " + Cuantos(m_cambios.deOtroMunicipio, "parcela", "parcelas") +
                    " de otro municipio.");
}

/// Adds up from the older state to the newer one, in parcels and in hectares.
void CSeccionCambios::PonBalance()
{
    const auto fila = [&](const char* que, const char* signo, const CCambios::CSuma& suma,
                          const char* clase, bool cuentan) {
        const char* const suyo = suma.parcelas == 0 ? "" : signo;
        const std::string parcelas = Miles(suma.parcelas);
        Fila(m_marcas, {{"class", clase}},
             {{que},
              {cuentan ? suyo + parcelas : "(" + parcelas + ")", kNumero},
              {suyo + Hectareas(suma.metros), kNumero}});
    };
    Tabla(m_marcas, "sumas", {{"Superficie"}, {"Parcelas", true}, {"Hectáreas", true}}, [&] {
        fila("Antes", "", m_cambios.antes, nullptr, true);
        fila("desaparecen", "−", m_cambios.desaparecidas, nullptr, true);
        fila("nuevas", "+", m_cambios.nuevas, nullptr, true);
        fila("crecen", "+", m_cambios.crecen, nullptr, false);
        fila("menguan", "−", m_cambios.menguan, nullptr, false);
        fila("Ahora", "", m_cambios.ahora, "suma", true);
    });
}

void CSeccionCambios::PonEnQue()
{
    std::string texto;
    for (std::size_t i = 0; i < kDifiere; ++i)
        if (const std::int64_t cuantas = m_cambios.porDifiere[i]; cuantas > 0)
            texto += (texto.empty() ? "Cambian de " : ", de ") +
                     std::string(NombreDe(static_cast<Difiere>(i))) + " " + Miles(cuantas);
    if (!texto.empty())
        Parrafo(m_marcas, nullptr,
                texto + "; " + Cuantos(m_cambios.iguales, "parcela queda", "parcelas quedan") +
                    " como estaba" + (m_cambios.iguales == 1 ? "." : "n."));
}

void CSeccionCambios::Callan(std::size_t hay)
{
    PonResto(m_marcas, topes::kFilasCambios, hay, "; --cambios las da todas en una hoja.");
}

void CSeccionCambios::PonRepartos()
{
    const std::vector<CReparto>& repartos = m_cambios.repartos;
    if (repartos.empty() && !m_cambios.repartosSinBuscar)
        return;
    m_marcas.Bloque("h3", {}, "Divisiones y agrupaciones");
    Parrafo(m_marcas, kNota, "Por lo que suman sus superficies.");
    if (m_cambios.repartosSinBuscar)
        Parrafo(m_marcas, kNota, "Son tantas las parcelas que cambian, que no se buscaron todas.");
    m_marcas.Bloque("ul", {{"class", "repartos"}}, [&] {
        for (const CReparto& reparto : Primeros(repartos, topes::kFilasCambios))
            m_marcas.Bloque("li", {}, [&] {
                m_marcas.Texto(EnPalabras(reparto, m_contraste, topes::kParcelasDeReparto) + " ");
                m_marcas.Elemento("small", {}, Superficie(reparto.metros));
            });
    });
    Callan(repartos.size());
}

/// Those with the greatest surface, or difference of it, first.
CSeccionCambios::CElegidas CSeccionCambios::Elige(CCambioParcela::Que que) const
{
    CElegidas elegidas;
    for (const CCambioParcela& cambio : m_cambios.parcelas)
        if (cambio.que == que)
            elegidas.push_back(&cambio);
    std::ranges::stable_sort(elegidas, std::greater(),
                             [](const auto* una) { return std::abs(una->Diferencia()); });
    return elegidas;
}

/// Of a parcel that only one state has.
void CSeccionCambios::FilaDeParcela(const CCambioParcela& cambio)
{
    const bool nueva = cambio.que == CCambioParcela::Que::Nueva;
    const CEstadoMunicipio& estado = (nueva ? m_contraste.ahora : m_contraste.antes).estado;
    const CEstadoMunicipio::CParcela& parcela = nueva ? *cambio.ahora : *cambio.antes;
    Fila(m_marcas, {},
         {Parcela(cambio.clave),
          {Miles(parcela.superficie), kNumero},
          {Titulares(estado, parcela, kTitularesDichos)},
          {Texto(estado.Paraje(parcela))},
          {PorQue(cambio, m_contraste, topes::kParcelasDeReparto)}});
}

void CSeccionCambios::FilaDeCambiada(const CCambioParcela& cambio)
{
    const bool mide = cambio.Hay(Difiere::Superficie);
    m_marcas.Bloque("tr", {}, [&] {
        m_marcas.Elemento("td", {}, [&] {
            const CCelda celda = Parcela(cambio.clave);
            Enlace(m_marcas, celda.destino, celda.texto);
        });
        for (const std::string& cifra :
             {Miles(cambio.Antes()), mide ? Miles(cambio.Ahora()) : std::string(),
              mide ? ConSigno(cambio.Diferencia()) : std::string()})
            m_marcas.Elemento("td", {{"class", kNumero}}, cifra);
        m_marcas.Elemento("td", {}, [&] { QueCambia(cambio); });
    });
}

/// A line for each difference but that of the surface, which has columns of its own.
void CSeccionCambios::QueCambia(const CCambioParcela& cambio)
{
    const char* entre = "";
    for (const CDiferencia& una : Diferencias(cambio, m_contraste, kTitularesDichos)) {
        if (una.deSuperficie)
            continue;
        m_marcas.Hecho(std::exchange(entre, "<br>"))
            .Elemento("b", {}, una.que + (una.letra.empty() ? "" : " " + una.letra))
            .Texto(": " + (una.antes.empty() ? "no estaba" : una.antes) + " → " +
                   (una.ahora.empty() ? "ya no está" : una.ahora));
    }
}

void CSeccionCambios::PonParcelas(CCambioParcela::Que que, const char* ancla, const char* titulo)
{
    const CElegidas elegidas = Elige(que);
    if (elegidas.empty())
        return;
    m_marcas.Bloque("h3", {}, titulo + (" (" + Miles(elegidas.size()) + ")"));
    const auto filas = [&] {
        for (const CCambioParcela* cambio : Primeros(elegidas, topes::kFilasCambios))
            if (que == CCambioParcela::Que::Cambiada)
                FilaDeCambiada(*cambio);
            else
                FilaDeParcela(*cambio);
    };
    if (que == CCambioParcela::Que::Cambiada)
        Tabla(
            m_marcas, ancla,
            {{"Parcela"}, {"Antes, m²", true}, {"Ahora, m²", true}, {"Diferencia", true}, {"Qué"}},
            filas);
    else
        Tabla(m_marcas, ancla,
              {{"Parcela"},
               {"m²", true},
               {"Titulares"},
               {"Paraje"},
               {m_cambios.repartos.empty() ? "" : "Por qué"}},
              filas);
    Callan(elegidas.size());
}

void CSeccionCambios::FilaDePersona(const CCambioPersona& cambio)
{
    Fila(m_marcas, {},
         {{NombreDe(cambio.que)},
          {NombreDe(m_contraste.antes.estado, cambio.antes)},
          {NombreDe(m_contraste.ahora.estado, cambio.ahora)},
          {Miles(cambio.parcelas), kNumero},
          {Hectareas(cambio.metros), kNumero}});
}

void CSeccionCambios::PonPersonas()
{
    const std::vector<CCambioPersona>& personas = m_cambios.personas;
    if (personas.empty())
        return;
    m_marcas.Bloque("h3", {}, "Titulares (" + Miles(personas.size()) + ")");
    Tabla(m_marcas, "personas",
          {{"Qué"}, {"Antes"}, {"Ahora"}, {"Parcelas", true}, {"Hectáreas", true}}, [&] {
              for (const CCambioPersona& cambio : Primeros(personas, topes::kFilasCambios))
                  FilaDePersona(cambio);
          });
    Callan(personas.size());
}

void CSeccionCambios::Pon()
{
    PonEstados();
    if (!m_cambios.HayAlguno())
        return Parrafo(m_marcas, kCuadra,
                       "✓ Sin cambios: " + Cuantos(m_cambios.iguales, "parcela", "parcelas") +
                           ", " + Hectareas(m_cambios.ahora.metros) + " ha.");
    PonBalance();
    PonEnQue();
    PonRepartos();
    PonParcelas(CCambioParcela::Que::Desaparecida, "desaparecen", "Parcelas que desaparecen");
    PonParcelas(CCambioParcela::Que::Nueva, "nuevas", "Parcelas nuevas");
    PonParcelas(CCambioParcela::Que::Cambiada, "cambian", "Parcelas que cambian");
    PonPersonas();
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
                           [&] { CSeccionCambios(contenido.contraste, nullptr, marcas).Pon(); });
            });
            PonPie(marcas, contenido.firma);
        });
}

void SeccionCambios(const CContenido& contenido, CMarcas& marcas)
{
    CSeccionCambios(*contenido.contraste, &contenido.anclas, marcas).Pon();
}

} // namespace informe
