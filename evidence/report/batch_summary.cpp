#include <algorithm>
#include <cstdint>
#include <utility>

#include "cadastre/messages.h"
#include "evidence/paths.h"
#include "evidence/report/reading/batch_jobs.h"
#include "evidence/report/reading/run_words.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/report.h"
#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/output_file.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/report/writing/run_json.h"
#include "evidence/report/writing/watched_signals.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

/// Where the summary is written; an empty name is nowhere.
struct CSalidasLote {
    /// Beside the results what nobody named, unless something else is to go down a pipe.
    CSalidasLote(const COpciones& opciones, const lote::CEstados& estados)
        : pagina(opciones.html), hoja(opciones.csv), json(opciones.json)
    {
        if (opciones.PorLaSalida() > 0)
            return;
        if (pagina.IsEmpty())
            pagina = sistema::Nombre(estados.Pagina());
        if (hoja.IsEmpty())
            hoja = sistema::Nombre(estados.Hoja());
    }

    CString pagina;
    CString hoja;
    CString json;
};

// The reports of the jobs, beside the results.

void CreaCarpeta(const std::filesystem::path& informes)
{
    sistema::Error error;
    sistema::CreaCarpetas(informes, error);
    CFileException::Exige(error, sistema::Nombre(informes));
}

/// Tells whether a job's report is there, as new as its log.
bool Vale(const CString& informe, const CString& registro)
{
    const auto delRegistro = FechaDe(registro);
    return delRegistro && HayFichero(informe) && FechaDe(informe) >= delRegistro;
}

/// Those of a longer table, which go once nothing leads to them any more.
std::vector<std::filesystem::path> Sobrantes(const std::filesystem::path& informes,
                                             std::size_t cuantos)
{
    std::vector<std::filesystem::path> sobran;
    const std::string ultimo = std::to_string(cuantos);
    sistema::Error error;
    for (const std::filesystem::path& nombre : sistema::Lista(informes, error)) {
        const std::string numero = sistema::Nombre(nombre.stem());
        if (lote::TieneNumero(nombre, ".html") && // what else is there is somebody's
            std::pair(numero.size(), numero) > std::pair(ultimo.size(), ultimo))
            sobran.push_back(informes / nombre);
    }
    return sobran;
}

/// What the log said while the batch counted it, where it says something else by now.
std::string OtroRegistro(const lote::CTrabajo& trabajo, const CTrabajoVisto& visto)
{
    const auto& cuenta = visto.hecho->cuenta;
    if (trabajo.traduccion == lote::Traduccion::Infograf || !visto.cifras ||
        (cuenta && visto.cifras->lineasE == cuenta->errores &&
         visto.cifras->lineasW == cuenta->warnings))
        return {};
    if (!cuenta)
        return "El registro es otro: el trabajo no dejó ninguno.";
    return "El registro es otro: el lote contó " + Cuantos(cuenta->errores, "error", "errores") +
           " y " + Cuantos(cuenta->warnings, "warning", "warnings") + ".";
}

/// Reads a job that was done, and makes its report.
/// \param informe  the name of its report
void Lee(const lote::CTrabajo& trabajo, const CString& informe, bool sinInformes,
         const CFirma& firma, CTrabajoVisto& visto)
{
    const CString registro = sistema::Nombre(lote::RutaDelRegistro(trabajo));
    if (registro.IsEmpty()) {
        visto.conQuejas = true;
        visto.reparos.emplace_back("La lista, que da nombre al registro, no se puede leer.");
        return;
    }
    COpciones opciones = OpcionesDe(trabajo, *visto.hecho);
    opciones.sinInformes = sinInformes;
    opciones.html = informe;
    CResultado resultado = HazInforme(registro, opciones, firma);
    visto.cifras = std::move(resultado.cifras);
    visto.conQuejas = !resultado.quejas.empty();
    for (const std::string& queja : resultado.quejas)
        visto.reparos.push_back(queja + ".");
    if (std::string otro = OtroRegistro(trabajo, visto); !otro.empty()) {
        if (!visto.hecho->cuenta) // of an older run nothing says how this one came out
            visto.cifras->hayPerdidas = true;
        visto.reparos.push_back(std::move(otro));
    }
    // Another one that is there may be of another job.
    if (sinInformes ? Vale(informe, registro) : !resultado.resumen.empty())
        visto.informe = informe;
}

/// The file with what a job said; empty where it said nothing.
CString LoQueDijo(const std::filesystem::path& ruta)
{
    sistema::Error error;
    const std::uint64_t largo = sistema::Mira(ruta, error).largo;
    const CString nombre = sistema::Nombre(ruta);
    return !NoSeHalla(nombre, error) && largo > 0 ? nombre : CString();
}

CTrabajoVisto Mira(const CLoteLeido& leido, std::size_t i, bool sinInformes, const CFirma& firma)
{
    const lote::CTrabajo& trabajo = leido.trabajos[i];
    const lote::CEstados& estados = leido.estados;
    CTrabajoVisto visto;
    visto.numero = trabajo.numero;
    visto.traduccion = lote::NombreDe(trabajo.traduccion);
    visto.carpeta = Texto(leido.carpetas[i]);
    if (const lote::CHecho* const hecho = estados.De(trabajo))
        visto.hecho = *hecho;
    try {
        visto.dicho = LoQueDijo(estados.Dicho(trabajo.numero));
        for (const std::string& frase : Observado(lote::LoDicho(estados.Dicho(trabajo.numero))))
            visto.reparos.push_back(frase + ".");
        if (visto.hecho)
            Lee(trabajo, sistema::Nombre(estados.Informe(trabajo.numero)), sinInformes, firma,
                visto);
    } catch (const CFileException& fallo) {
        visto.conQuejas = true;
        visto.reparos.push_back(Texto(EnUnaLinea(fallo)) + ".");
    }
    return visto;
}

void Escribe(const CResumenLote& resumen, const CFirma& firma, const CSalidasLote& nombres,
             CResultado& resultado)
{
    const CVigilancia vigilancia;
    CConjuntoSalidas todas;
    EscribeSalida(nombres.json, kPrincipioJson, todas,
                  [&](const CEscribe& en) { en(LoteEnJson(resumen, firma)); });
    EscribeSalida(nombres.hoja, kPrincipioHojaLote, todas,
                  [&](const CEscribe& en) { EscribeHojaLote(resumen, nombres.hoja, en); });
    EscribeSalidaPagina(nombres.pagina, todas, [&](const CEscribe& en) {
        EscribePaginaLote(resumen, firma, nombres.pagina, en);
    });
    Coloca(todas, resultado.quejas);
}

/// What the program is told, while nothing has changed yet.
CResultado LoQueResulta(const CResumenLote& resumen, const COpciones& opciones,
                        const CString& pagina)
{
    CResultado resultado;
    resultado.hayPerdidas = resumen.HayPerdidas();
    if (opciones.PorLaSalida() == 0)
        resultado.resumen = ResumenLote(resumen, pagina);
    const auto conQuejas = std::ranges::count_if(resumen.trabajos, [](const CTrabajoVisto& uno) {
        // of others it was told before
        return uno.conQuejas && uno.hecho && uno.hecho->estado == 0;
    });
    if (conQuejas > 0)
        resultado.quejas.push_back("De " + Cuantos(conQuejas, "trabajo hecho", "trabajos hechos") +
                                   " no se pudo leer o escribir algo, que dice su nota");
    return resultado;
}

/// Tells whether two of the names may be one file, with a look at each.
bool PuedeRepetirse(const std::vector<CString>& nombres)
{
    try {
        return !CFile::Repetida(nombres).IsEmpty();
    } catch (const CFileException&) {
        return true; // which of them can't be looked at isn't told
    }
}

/// The first of the outputs that is one of a job's files; empty for none.
CString OcupadaPor(const std::vector<CString>& suyos, const std::vector<CString>& salidas)
{
    std::vector<CString> todos = suyos;
    todos.insert(todos.end(), salidas.begin(), salidas.end());
    if (!PuedeRepetirse(todos))
        return {};
    for (const CString& suyo : suyos) // a job may name one of its own twice
        try {
            if (const CString* const ocupada = BuscaOcupada(salidas, {suyo}))
                return *ocupada;
        } catch (const CFileException&) {
            continue; // what can't be looked at stands in the job's note
        }
    return {};
}

/// The first of the summary's files that would fall on another, or on one of the batch or of its
/// jobs; empty for none.
CString Ocupada(const CSalidasLote& nombres, const CLoteLeido& leido)
{
    std::vector<CString> salidas = {nombres.pagina, nombres.hoja, nombres.json};
    std::erase(salidas, CString(kEstandar));
    if (const CString* const ocupada = BuscaOcupada(salidas, leido.Suyos()))
        return *ocupada;
    const auto esDelLote = [&](const CString& salida) {
        const std::filesystem::path ruta = sistema::EnteraSinPuntos(sistema::Ruta(salida));
        return leido.estados.Tiene(ruta) &&
               ruta != sistema::EnteraSinPuntos(leido.estados.Pagina()) &&
               ruta != sistema::EnteraSinPuntos(leido.estados.Hoja());
    };
    if (const auto suya = std::ranges::find_if(salidas, esDelLote); suya != salidas.end())
        return *suya;
    if (const auto suya = std::ranges::find_if(salidas, EsDeUnMunicipio); suya != salidas.end())
        return *suya;
    for (const lote::CTrabajo& trabajo : leido.trabajos)
        if (CString ocupada = OcupadaPor(FicherosDe(trabajo, leido.estados), salidas);
            !ocupada.IsEmpty())
            return ocupada;
    return {};
}

CResultado Resume(const COpciones& opciones, const CFirma& firma)
{
    const CLoteLeido leido(opciones.resumen);
    const lote::CEstados& estados = leido.estados;
    const CSalidasLote nombres(opciones, estados);
    if (const CString ocupada = Ocupada(nombres, leido); !ocupada.IsEmpty())
        return {.quejas = {NoSePisa(ocupada)}};
    if (!opciones.sinInformes)
        CreaCarpeta(estados.Informes());
    CResumenLote resumen;
    resumen.nombre = Texto(opciones.resumen);
    resumen.carpeta = opciones.resumen;
    resumen.reparos = leido.Reparos();
    for (std::size_t i = 0; i < leido.trabajos.size(); ++i)
        resumen.trabajos.push_back(Mira(leido, i, opciones.sinInformes, firma));
    resumen.Ordena();
    CResultado resultado = LoQueResulta(resumen, opciones, nombres.pagina);
    std::vector<std::filesystem::path> sobrantes;
    if (!opciones.sinInformes)
        sobrantes = Sobrantes(estados.Informes(), leido.trabajos.size());
    Escribe(resumen, firma, nombres, resultado);
    // From here on nothing asks for memory: the summary stands.
    sistema::Error error;
    for (const std::filesystem::path& sobrante : sobrantes)
        sistema::Borra(sobrante, error);
    return resultado;
}

} // namespace

CResultado HazResumen(const COpciones& opciones, const CFirma& firma)
{
    try {
        if (!opciones.json.IsEmpty() && !kHayJson)
            return {.quejas = {kSinJson}};
        return Resume(opciones, firma);
    } catch (const CFileException& fallo) {
        return {.quejas = {Texto(EnUnaLinea(fallo))}};
    } catch (const CInterrumpido&) { // the signal has had its way, unless it can't end the process
        return {.quejas = {"El resumen se detuvo"}};
    } catch (const lote::CLineaMala& mala) {
        return {.quejas = {mala.what()}};
    }
}

} // namespace informe
