#include "evidence/report/report.h"

#include <memory>
#include <optional>
#include <utility>

#include "cadastre/file_extensions.h"
#include "evidence/paths.h"
#include "evidence/report/page_names.h"
#include "evidence/report/reading/polygon_entries.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/trial/trial_run.h"
#include "evidence/report/writing/csv.h"
#include "evidence/report/writing/geojson.h"
#include "evidence/report/writing/output_file.h"
#include "evidence/report/writing/page_content.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/report/writing/run_json.h"
#include "evidence/report/writing/watched_signals.h"
#include "platform/ansi.h"
#include "platform/files/set_healing.h"
#include "platform/files/side_names.h"
#include "platform/files/system_files.h"
#include "platform/system.h"

namespace informe {
namespace {

constexpr const char* kPaginaEnsayo = "_ensayo.html";

/// The report of one log, stage by stage.
class CElaboracion {
public:
    CElaboracion(const CFicheros& ficheros, const COpciones& opciones)
        : m_opciones(opciones), m_proceso(ficheros), m_lineas(m_proceso.registro),
          m_anclas(m_proceso.registro, m_lineas), m_indice(m_proceso.registro), m_lugares(m_indice)
    {
        if (!opciones.ensayo) // else the whole trial is watched
            m_vigilancia.emplace();
        if (!opciones.geojson.IsEmpty())
            m_geojson = std::make_unique<CGeoJson>(opciones.geojson, m_salidas);
    }

    /// Holds what the run left against another state. Gives why that can't be done; empty for
    /// nothing.
    std::string Contrasta()
    {
        if (m_opciones.contra.IsEmpty())
            return {};
        m_contraste =
            std::make_unique<CContraste>(LeeEstado(m_opciones.contra), EstadoDeProceso(m_proceso));
        return m_contraste->reparo;
    }

    /// What the trial would make of the tables, where no other state is named. Files of the trial
    /// are told without the folder that nobody will find.
    /// \param antes  the tables, or that other state
    std::string Contrasta(const CEnsayo& ensayo, CEstadoLeido antes)
    {
        CFicheros& ficheros = m_proceso.ficheros;
        if (!m_opciones.contra.IsEmpty()) {
            CEstadoLeido ahora = EstadoDeProceso(m_proceso);
            ahora.nombre = "lo que saldría de la vuelta"_ansi;
            m_contraste = std::make_unique<CContraste>(std::move(antes), std::move(ahora));
        } else {
            m_contraste = std::make_unique<CContraste>(
                std::move(antes), LeeEstado(ensayo.Tablas(), "lo que dejaría Modificar"_ansi),
                Municipios::Todos);
        }
        for (CFicheroVisto& visto : m_proceso.vistos)
            visto.nombre = ensayo.SinCarpeta(visto.nombre);
        ficheros.registro = ensayo.SinCarpeta(ficheros.registro);
        m_proceso.observado = ensayo.LoObservado();
        return m_contraste->reparo;
    }

    void Hace(const CString& pagina, const CFirma& firma, CResultado& resultado)
    {
        CContenido contenido{
            firma, Texto(m_opciones.csv), m_proceso,        m_lineas, m_anclas, {}, {},
            {},    m_opciones.ensayo,     m_contraste.get()};
        if (HayDibujos())
            RecorreDibujos(contenido);
        contenido.asuntos =
            ReuneAsuntos(m_proceso, Lugares(), contenido.dibujo ? &*contenido.dibujo : nullptr);
        resultado.cifras = contenido.Cifras(); // whether or not it can be written
        EscribeMensajes();
        EscribeTodo(contenido, pagina);
        // While nothing has changed yet.
        std::string resumen = m_opciones.PorLaSalida() == 0 ? Resumen(contenido, pagina) : "";
        Coloca(m_salidas, resultado.quejas);
        resultado.hayPerdidas = resultado.cifras->hayPerdidas;
        resultado.leido = std::move(m_proceso.balance.leido);
        resultado.resumen = std::move(resumen);
    }

private:
    bool HayDibujos() const { return m_proceso.ficheros.sentido == Sentido::Vuelta; }
    const CLugaresDeAvisos* Lugares() const { return HayDibujos() ? &m_lugares : nullptr; }

    /// Each polygon is read once, with all of its drawings, shown to all who want to see it, and
    /// forgotten.
    void RecorreDibujos(CContenido& contenido)
    {
        const CSuperficies& superficies = m_proceso.superficies;
        const CListaPoligonos& lista = m_proceso.ficheros.lista;
        const CHayParcela hay = [&](int polig, int parcela) {
            return superficies.empty() || superficies.contains({polig, parcela});
        };
        CBalanceDibujo& dibujo = contenido.dibujo.emplace(m_proceso);
        const CMarcasDeCambio cambios =
            m_contraste == nullptr ? CMarcasDeCambio()
                                   : CMarcasDeCambio(m_contraste->cambios, lista.cabecera.Mun);
        CMapas mapas({m_indice, dibujo.perdidas, cambios, m_anclas}, dibujo.DeTablaSinEscribir());
        for (const std::vector<CString>& entradas : EntradasPorPoligono(lista)) {
            std::vector<CPoligonoDibujado> dibujos;
            for (const CString& entrada : entradas) {
                CVigilancia::Mira();
                dibujos.push_back(LeePoligonoDibujado(lista.carpeta, entrada, hay));
            }
            CuentaPiezas(dibujos);
            dibujo.Toma(dibujos);
            for (const CPoligonoDibujado& poligono : dibujos)
                Enseña(poligono, mapas);
        }
        contenido.mapas = mapas.Acaba();
    }

    void Enseña(const CPoligonoDibujado& poligono, CMapas& mapas)
    {
        m_lugares.Toma(poligono);
        if (m_geojson)
            m_geojson->Toma(poligono, m_indice);
        if (!m_opciones.sinInformes)
            mapas.Toma(poligono);
    }

    void EscribeMensajes()
    {
        if (m_geojson) {
            m_geojson->TomaMensajes(m_proceso.registro, Lugares());
            m_geojson->Cierra();
        }
        EscribeSalida(m_opciones.csv, kPrincipioMensajes, m_salidas,
                      [&](const CEscribe& en) { EscribeCsv(en, m_proceso.registro, Lugares()); });
    }

    void EscribeTodo(const CContenido& contenido, const CString& pagina)
    {
        EscribeSalida(m_opciones.cambios, kPrincipioCambios, m_salidas,
                      [&](const CEscribe& en) { EscribeCambiosCsv(en, *m_contraste); });
        EscribeSalida(m_opciones.json, kPrincipioJson, m_salidas,
                      [&](const CEscribe& en) { en(ProcesoEnJson(contenido)); });
        EscribeSalidaPagina(pagina, m_salidas,
                            [&](const CEscribe& en) { EscribePagina(contenido, en); });
    }

    const COpciones& m_opciones;
    CProceso m_proceso;
    CLineasMostradas m_lineas;
    CAnclas m_anclas;
    CIndiceAvisos m_indice;
    CLugaresDeAvisos m_lugares;
    std::optional<CVigilancia> m_vigilancia; // from when all but the drawings is read
    CConjuntoSalidas m_salidas;
    std::unique_ptr<CGeoJson> m_geojson;
    std::unique_ptr<CContraste> m_contraste; // null where nothing is compared with the run
};

/// The report of two states without a run.
void HazCambios(const CContenidoCambios& contenido, const COpciones& opciones,
                const CString& pagina, CResultado& resultado)
{
    const CVigilancia vigilancia;
    CConjuntoSalidas todas;
    // Without a log there is one sheet, whatever it is called.
    for (const CString& hoja : {opciones.cambios, opciones.csv})
        EscribeSalida(hoja, kPrincipioCambios, todas,
                      [&](const CEscribe& en) { EscribeCambiosCsv(en, contenido.contraste); });
    EscribeSalida(opciones.json, kPrincipioJson, todas,
                  [&](const CEscribe& en) { en(CambiosEnJson(contenido)); });
    EscribeSalidaPagina(pagina, todas, [&](const CEscribe& en) { EscribePagina(contenido, en); });
    std::string resumen = opciones.PorLaSalida() == 0 ? Resumen(contenido.contraste, pagina) : "";
    Coloca(todas, resultado.quejas);
    resultado.resumen = std::move(resumen);
}

/// Why what the options name can't be written; empty for nothing.
std::string ReparoDeSalidas(const COpciones& opciones, const CString& pagina,
                            std::vector<CString> leidos)
{
    std::vector<CString> salidas = opciones.Otras();
    salidas.push_back(pagina);
    if (const CString* ocupada = BuscaOcupada(salidas, std::move(leidos)))
        return NoSePisa(*ocupada);
    if (const auto suya = std::ranges::find_if(salidas, EsDeUnMunicipio); suya != salidas.end())
        return NoSePisa(*suya);
    if (!opciones.json.IsEmpty() && !kHayJson)
        return kSinJson;
    return {};
}

/// With those of the state that it is held against.
std::vector<CString> ConLosDelOtro(std::vector<CString> leidos, const COpciones& opciones)
{
    if (!opciones.contra.IsEmpty()) {
        const std::vector<CString> suyos = FicherosDeEstado(opciones.contra);
        leidos.insert(leidos.end(), suyos.begin(), suyos.end());
    }
    return leidos;
}

/// Heals what is read; what somebody works on stays, and is told.
void Sana(const std::vector<CString>& leidos, CResultado& resultado)
{
    for (const CTocado& tocado : SanaConjuntos(leidos))
        resultado.quejas.push_back(Texto(tocado.Frase()));
}

// Each of the reports gives why there is none; empty for nothing.

std::string ElaboraCambios(const CString& estado, ClaseEstado clase, const COpciones& opciones,
                           const CFirma& firma, CResultado& resultado)
{
    const CString pagina = PaginaDe(opciones, PaginaUsualDeCambios(estado, clase));
    const std::vector<CString> leidos = ConLosDelOtro(FicherosDeEstado(estado), opciones);
    Sana(leidos, resultado);
    std::string reparo = ReparoDeSalidas(opciones, pagina, leidos);
    if (opciones.DicenDeUnProceso())
        reparo =
            Texto(estado) + " no es un registro: no caben las opciones que dicen de un proceso";
    if (!reparo.empty())
        return reparo;
    const CContraste contraste(LeeEstado(opciones.contra), LeeEstado(estado));
    if (contraste.reparo.empty())
        HazCambios({firma, Texto(NombreSinCarpeta(estado)), contraste}, opciones, pagina,
                   resultado);
    return contraste.reparo;
}

/// Heals what is read, complains of what isn't there, and reads the list of drawings.
void Prepara(CFicheros& ficheros, const COpciones& opciones, CResultado& resultado)
{
    Sana(ConLosDelOtro(Leidos(ficheros), opciones), resultado);
    for (const CString& nombre : Ausentes(ficheros, opciones))
        resultado.quejas.push_back("El archivo " + Texto(nombre) + " no existe");
    for (const CString& nombre : ficheros.sinReconocer)
        resultado.quejas.push_back("De " + Texto(nombre) +
                                   " no se sabe qué es, y no cuenta para el informe");
    if (std::optional<CListaPoligonos> lista = LeeLista(ficheros.lista.nombre))
        ficheros.lista = std::move(*lista);
}

/// Tells whether a file that is no state may be a log: by its name, else by what it says.
bool PuedeSerRegistro(const CString& nombre)
{
    if (ExtensionDe(nombre) == kExtensionRegistro ||
        std::string_view(nombre).ends_with(lado::kAnterior))
        return true;
    const CRegistroLeido leido(nombre);
    return leido.Ajenas() < static_cast<std::int64_t>(leido.avisos.size());
}

std::string Elabora(const CString& registro, const COpciones& opciones, const CFirma& firma,
                    CResultado& resultado)
{
    if (!opciones.contra.IsEmpty() && registro != kEstandar) {
        if (const ClaseEstado clase = ClaseDeEstado(registro); clase != ClaseEstado::NoEs)
            return ElaboraCambios(registro, clase, opciones, firma, resultado);
        if (!opciones.DicenDeUnProceso() && !PuedeSerRegistro(registro))
            return Texto(registro) + " no es un registro, ni otro estado";
    }
    CFicheros ficheros = BuscaFicheros(registro, opciones);
    const CString pagina = PaginaDe(opciones, PaginaUsual(ficheros));
    Prepara(ficheros, opciones, resultado);
    std::string reparo =
        ReparoDeSalidas(opciones, pagina, ConLosDelOtro(Leidos(ficheros), opciones));
    if (!reparo.empty())
        return reparo;
    CElaboracion elaboracion(ficheros, opciones);
    reparo = elaboracion.Contrasta();
    if (reparo.empty())
        elaboracion.Hace(pagina, firma, resultado);
    return reparo;
}

/// As long as it is there, a pipe that nobody reads any more is a failed write.
struct CSinTuberiaRota {
    CSinTuberiaRota() { sistema::AguantaTuberiaRota(); }
    CSinTuberiaRota(const CSinTuberiaRota&) = delete;
    CSinTuberiaRota& operator=(const CSinTuberiaRota&) = delete;
    ~CSinTuberiaRota() { sistema::SueltaTuberiaRota(); }
};

/// The trial itself. Gives why it came to nothing; empty for nothing.
std::string Ensaya(const CFicheros& ficheros, const COpciones& opciones, const CString& pagina,
                   const CFirma& firma, CResultado& resultado)
{
    CEnsayo ensayo(ficheros, opciones);
    // Before the trial, which takes a while: a real run may write the tables meanwhile.
    CEstadoLeido antes =
        opciones.contra.IsEmpty()
            ? LeeEstado(ficheros.tablas, CCadena(ficheros.tablas[kParcelas]).DamePath())
            : LeeEstado(opciones.contra);
    if (std::string reparo = ensayo.Corre(); !reparo.empty())
        return reparo;
    CElaboracion elaboracion(ensayo.Suyos(), opciones);
    std::string reparo = elaboracion.Contrasta(ensayo, std::move(antes));
    if (reparo.empty())
        elaboracion.Hace(pagina, firma, resultado);
    return reparo;
}

/// The report of a way back that is only tried.
std::string ElaboraEnsayo(const CString& lista, COpciones opciones, const CFirma& firma,
                          CResultado& resultado)
{
    opciones.lista = lista;
    CFicheros ficheros = BuscaFicheros(kEstandar, opciones);
    const CString pagina =
        PaginaDe(opciones, EnCarpeta(ficheros.lista.carpeta,
                                     ficheros.lista.cabecera.nombreSalida + kPaginaEnsayo));
    Prepara(ficheros, opciones, resultado);
    std::vector<CString> intocables = ConLosDelOtro(Leidos(ficheros), opciones);
    const CListaPoligonos& deVerdad = ficheros.lista;
    for (const char* extension :
         {kExtensionRegistro, kExtensionR, kExtensionM}) // what the last real run left
        intocables.push_back(
            FicheroDeLista(deVerdad.carpeta, deVerdad.cabecera.nombreSalida, extension));
    std::string reparo = ReparoDeSalidas(opciones, pagina, std::move(intocables));
    if (!reparo.empty() || !resultado.quejas.empty())
        return reparo;
    const CVigilancia vigilancia; // of the folder, too
    const CSinTuberiaRota tuberia;
    try {
        return Ensaya(ficheros, opciones, pagina, firma, resultado);
    } catch (const CInterrumpido&) { // the signal has its way behind the folder's end
        return "El ensayo se detuvo";
    }
}

/// Why one of two states can't be looked at; empty for nothing, and where there is only one.
std::string ReparoDeEstados(const CString& registro, const COpciones& opciones)
{
    if (opciones.contra.IsEmpty())
        return {};
    std::string reparo = registro == kEstandar ? std::string() : ReparoDeTipo(registro);
    return reparo.empty() ? ReparoDeTipo(opciones.contra) : reparo;
}

} // namespace

CResultado HazInforme(const CString& registro, const COpciones& opciones, const CFirma& firma)
{
    CResultado resultado;
    try {
        std::string reparo = ReparoDeEstados(registro, opciones);
        if (reparo.empty())
            reparo = opciones.ensayo ? ElaboraEnsayo(registro, opciones, firma, resultado)
                                     : Elabora(registro, opciones, firma, resultado);
        if (!reparo.empty())
            resultado.quejas.push_back(std::move(reparo));
    } catch (const CFileException& fallo) {
        resultado.quejas.push_back(Texto(EnUnaLinea(fallo)));
    } catch (const CInterrumpido&) { // the signal has had its way, unless it can't end the process
        resultado.quejas.emplace_back("El informe se detuvo");
    }
    return resultado;
}

} // namespace informe
