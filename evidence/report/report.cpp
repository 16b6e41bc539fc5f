#include "evidence/report/report.h"

#include <memory>
#include <utility>

#include "evidence/paths.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/csv.h"
#include "evidence/report/writing/geojson.h"
#include "evidence/report/writing/output_file.h"
#include "evidence/report/writing/page_content.h"
#include "evidence/report/writing/run_json.h"
#include "platform/files/set_healing.h"

namespace informe {
namespace {

constexpr const char* kPaginaInfograf = "_infograf.html";

/// The report of one log, stage by stage.
class CElaboracion {
public:
    CElaboracion(const CFicheros& ficheros, const COpciones& opciones)
        : m_opciones(opciones), m_proceso(ficheros), m_lineas(m_proceso.registro),
          m_anclas(m_proceso.registro, m_lineas), m_indice(m_proceso.registro), m_lugares(m_indice)
    {
        if (!opciones.geojson.IsEmpty())
            m_geojson = std::make_unique<CGeoJson>(opciones.geojson, m_salidas);
    }

    void Hace(const CString& pagina, const std::string& version, std::time_t hecho,
              CResultado& resultado)
    {
        CContenido contenido{
            version, hecho, Texto(m_opciones.csv), m_proceso, m_lineas, m_anclas, {}, {}, {}};
        if (HayDibujos())
            RecorreDibujos(contenido);
        contenido.asuntos = m_proceso.ficheros.sentido == Sentido::Infograf
                                ? AsuntosDeInfograf(m_proceso)
                                : ReuneAsuntos({m_proceso, Lugares(),
                                                contenido.dibujo ? &*contenido.dibujo : nullptr});
        resultado.cifras = contenido.Cifras(); // whether or not it can be written
        EscribeMensajes();
        EscribeTodo(contenido, pagina);
        const bool hayPerdidas = contenido.HayPerdidas(); // both while nothing has changed yet
        std::string resumen = m_opciones.PorLaSalida() == 0 ? Resumen(contenido, pagina) : "";
        m_salidas.Confirma();
        resultado.hayPerdidas = hayPerdidas;
        resultado.resumen = std::move(resumen);
    }

private:
    bool HayDibujos() const { return m_proceso.ficheros.sentido == Sentido::Vuelta; }
    const CLugaresDeAvisos* Lugares() const { return HayDibujos() ? &m_lugares : nullptr; }

    /// Each polygon is read once, shown to all who want to see it, and forgotten.
    void RecorreDibujos(CContenido& contenido)
    {
        const CSuperficies& superficies = m_proceso.superficies;
        const CListaPoligonos& lista = m_proceso.ficheros.lista;
        const CHayParcela hay = [&](int polig, int parcela) {
            return superficies.empty() || superficies.contains({polig, parcela});
        };
        CBalanceDibujo& dibujo = contenido.dibujo.emplace(superficies, m_proceso.registro);
        CMapas mapas(m_indice, dibujo.perdidas, dibujo.DeTablaSinEscribir(), m_anclas);
        for (const CString& entrada : lista.entradas) {
            const CPoligonoDibujado poligono = LeePoligonoDibujado(lista.carpeta, entrada, hay);
            dibujo.Toma(poligono);
            m_lugares.Toma(poligono);
            if (m_geojson)
                m_geojson->Toma(poligono, m_indice);
            if (!m_opciones.sinInformes)
                mapas.Toma(poligono);
        }
        contenido.mapas = mapas.Acaba();
    }

    void EscribeMensajes()
    {
        if (m_geojson) {
            m_geojson->TomaMensajes(m_proceso.registro, Lugares());
            m_geojson->Cierra();
        }
        if (m_opciones.csv.IsEmpty())
            return;
        CSalida hoja(m_opciones.csv, m_salidas);
        EscribeCsv(hoja, m_proceso.registro, Lugares());
        hoja.Cierra();
    }

    void EscribeTodo(const CContenido& contenido, const CString& pagina)
    {
        if (!m_opciones.json.IsEmpty()) {
            CSalida salida(m_opciones.json, m_salidas);
            salida.Escribe(ProcesoEnJson(contenido));
            salida.Cierra();
        }
        if (pagina.IsEmpty())
            return;
        CSalida salida(pagina, m_salidas);
        EscribePagina(contenido, [&](std::string_view html) { salida.Escribe(html); });
        salida.Cierra();
    }

    const COpciones& m_opciones;
    CProceso m_proceso;
    CLineasMostradas m_lineas;
    CAnclas m_anclas;
    CIndiceAvisos m_indice;
    CLugaresDeAvisos m_lugares;
    CConjuntoSalidas m_salidas;
    std::unique_ptr<CGeoJson> m_geojson;
};

/// The page's name where nobody says one; empty for no page, where something else is to go down a
/// pipe. The log of Infograf is the way back's as well, so its page has a name of its own.
CString PaginaDe(const COpciones& opciones, const CFicheros& ficheros)
{
    if (opciones.sinInformes || !opciones.html.IsEmpty())
        return opciones.sinInformes ? CString() : opciones.html;
    for (const CString& otra : opciones.Otras())
        if (otra == kEstandar)
            return {};
    const bool infograf = ficheros.sentido == Sentido::Infograf;
    return EnCarpeta(ficheros.carpeta, ficheros.base + (infograf ? kPaginaInfograf : ".html"));
}

void Elabora(const CString& registro, const COpciones& opciones, const std::string& version,
             std::time_t hecho, CResultado& resultado)
{
    CFicheros ficheros = BuscaFicheros(registro, opciones);
    const CString pagina = PaginaDe(opciones, ficheros);
    SanaConjuntos(Leidos(ficheros));
    for (const CString& nombre : Ausentes(ficheros, opciones))
        resultado.quejas.push_back("El archivo " + Texto(nombre) + " no existe");
    if (std::optional<CListaPoligonos> lista = LeeLista(ficheros.lista.nombre))
        ficheros.lista = std::move(*lista);
    std::vector<CString> salidas = opciones.Otras();
    salidas.push_back(pagina);
    if (const CString* ocupada = BuscaOcupada(salidas, Leidos(ficheros)))
        resultado.quejas.push_back(NoSePisa(*ocupada));
    else if (!opciones.json.IsEmpty() && !kHayJson)
        resultado.quejas.emplace_back(kSinJson);
    else
        CElaboracion(ficheros, opciones).Hace(pagina, version, hecho, resultado);
}

} // namespace

CResultado HazInforme(const CString& registro, const COpciones& opciones,
                      const std::string& version, std::time_t hecho)
{
    CResultado resultado;
    try {
        Elabora(registro, opciones, version, hecho, resultado);
    } catch (const CFileException& fallo) {
        resultado.quejas.push_back(Texto(EnUnaLinea(fallo)));
    }
    return resultado;
}

} // namespace informe
