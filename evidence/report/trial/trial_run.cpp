#include "evidence/report/trial/trial_run.h"

#include "batch/job_command.h"
#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "evidence/drawn_polygon.h"
#include "evidence/paths.h"
#include "evidence/report/reading/run_words.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/watched_signals.h"
#include "platform/files/any_case_name.h"
#include "platform/plain_texts.h"
#include "platform/settings.h"
#include "platform/system.h"

namespace informe {
namespace {

namespace fs = std::filesystem;

constexpr const char* kPrograma = "campiva";

constexpr std::size_t kTramo = std::size_t{1} << 16U; // bytes of a copy at a time

// A list may have any name, so it has a folder with what stands beside it, and the tables another.
constexpr const char* kCarpetaLista = "lista";
constexpr const char* kCarpetaTablas = "tablas";

/// What fails is told of the file that it befell: the one that is read, or its copy.
void Copia(const CString& nombre, const fs::path& hasta)
{
    CFile fuente;
    if (!AbreSiHay(fuente, nombre))
        throw CFileException(nombre, std::make_error_code(std::errc::no_such_file_or_directory),
                             true);
    CConjuntoSalidas sola;
    CFile copia;
    CreaSalida(copia, sistema::Nombre(hasta), sola);
    for (std::string_view tramo = fuente.Tramo(kTramo); !tramo.empty();
         tramo = fuente.Tramo(kTramo)) {
        CVigilancia::Mira();
        copia.Write(tramo.data(), static_cast<UINT>(tramo.size()));
    }
    copia.Close();
    sola.Confirma();
}

/// Drawings are large: a link does as well, where the system has them for everybody.
void Enlaza(const CString& nombre, const fs::path& hasta)
{
    std::error_code error;
    fs::create_symlink(sistema::Entera(sistema::Ruta(nombre)), hasta, error);
    if (error)
        Copia(nombre, hasta);
}

std::string Entera(const CString& nombre)
{
    return nombre.IsEmpty() ? std::string()
                            : sistema::Nombre(sistema::Entera(sistema::Ruta(nombre)));
}

/// What the program said, in a line.
std::string EnUnaLinea(const std::string& dicho)
{
    std::string linea;
    for (const char c : SinBlancos(dicho))
        if (c != '\r' && (c != '\n' || (!linea.empty() && linea.back() != ' ')))
            linea += c == '\n' ? ' ' : c;
    return linea;
}

} // namespace

CEnsayo::CEnsayo(const CFicheros& ficheros, const COpciones& opciones)
    : m_opciones(opciones), m_dicho(m_carpeta.Ruta() / "dicho.txt"), m_suyos(ficheros),
      m_tablas(ficheros.tablas)
{
    const CString& base = ficheros.lista.cabecera.nombreSalida;
    for (const char* suya : {kCarpetaLista, kCarpetaTablas}) {
        sistema::Error error;
        sistema::CreaCarpeta(m_carpeta.Ruta() / suya, error);
        CFileException::Exige(error, sistema::Nombre(m_carpeta.Ruta() / suya));
    }
    m_lista = sistema::Nombre(m_carpeta.Ruta() / kCarpetaLista /
                              sistema::Ruta(ficheros.lista.nombre).filename());
    const CString carpeta = CCadena(m_lista).DamePath();
    m_suyos.registro = FicheroDeLista(carpeta, base, kExtensionRegistro);
    m_suyos.ficheroR = FicheroDeLista(carpeta, base, kExtensionR);
    m_suyos.ficheroM = FicheroDeLista(carpeta, base, kExtensionM);
    Copia(ficheros.lista.nombre, sistema::Ruta(m_lista));
    for (const Tabla tabla : {kParcelas, kSubparcelas})
        if (HayFichero(ficheros.tablas[tabla])) { // else the program says so
            const fs::path copia =
                m_carpeta.Ruta() / kCarpetaTablas / sistema::Ruta(NombreTabla(tabla));
            m_tablas[tabla] = sistema::Nombre(copia);
            Copia(ficheros.tablas[tabla], copia);
        }
    TraeDibujos(ficheros);
}

void CEnsayo::TraeDibujos(const CFicheros& ficheros)
{
    CNombresEnDisco nombres;
    using enum ClaseTopologia;
    for (const CString& entrada : ficheros.lista.entradas)
        for (const char* extension :
             {kExtensionDibujo, ExtensionDe(Parcelas), ExtensionDe(Subparcelas)}) {
            const CString nombre =
                CFile::EnDisco(FicheroDeLista(ficheros.lista.carpeta, entrada, extension), nombres);
            const fs::path hasta =
                m_carpeta.Ruta() / kCarpetaLista / sistema::Ruta(nombre).filename();
            std::error_code error;
            if (HayFichero(nombre) && !fs::exists(fs::symlink_status(hasta, error)))
                Enlaza(nombre, hasta);
        }
}

/// The way back as a batch has it, with "Modificar".
lote::CTrabajo CEnsayo::Trabajo() const
{
    const auto si = [](bool marcada) { return std::string(marcada ? "1" : "0"); };
    // The program's line needs a name for the sheets; without them it names one that isn't there.
    const std::string ortos =
        m_suyos.ortos.IsEmpty()
            ? sistema::Nombre(m_carpeta.Ruta() / kCarpetaLista / "ortos") + "." + kExtensionHojas
            : Entera(m_suyos.ortos);
    lote::CTrabajo trabajo;
    trabajo.traduccion = lote::Traduccion::Vuelta;
    trabajo.carpeta = sistema::Nombre(m_carpeta.Ruta());
    trabajo.campos = {{"lista", std::string(m_lista)},
                      {"ortos", ortos},
                      {"modificar", si(true)},
                      {"no_en_grafico", si(m_opciones.conserva)},
                      {"no_en_bd", si(m_opciones.crea)},
                      {"concentradas", si(m_opciones.concentradas)},
                      {"tipo", ""}};
    for (const Tabla tabla :
         {kModulos, kTitulares, kParcelas, kSubparcelas, kParajes, kCotitulares})
        trabajo.campos.emplace(lote::kCamposDeTablas[tabla], Entera(m_tablas[tabla]));
    return trabajo;
}

std::string CEnsayo::Corre()
{
    const lote::CTrabajo trabajo = Trabajo();
    COrden orden = lote::OrdenDe(trabajo);
    orden.programa = sistema::BuscaPrograma(kPrograma);
    orden.dicho = m_dicho;
    CAlmacenAparte ajustes(lote::kEmpresa, lote::kPrograma,
                           m_carpeta.Ruta() / m_carpeta.Ruta().filename());
    ajustes.Escribe(lote::AjustesDe(trabajo));
    orden.entorno = {ajustes.Variable()};
    if (orden.programa.empty())
        return "No se halla el programa campiva, que hace el ensayo";
    sistema::Error error;
    lote::Corre(orden, error);
    if (error)
        throw CFileException(sistema::Nombre(orden.programa), error, true);
    CVigilancia::Mira();
    if (HayFichero(m_suyos.ficheroR))
        return {};
    const std::string dicho = EnUnaLinea(lote::LoDicho(orden.dicho));
    return "El ensayo no llegó a su fin" + (dicho.empty() ? std::string() : ": " + dicho);
}

std::vector<std::string> CEnsayo::LoObservado() const
{
    std::vector<std::string> observado = Observado(lote::LoDicho(m_dicho));
    for (std::string& frase : observado)
        for (const char* suya : {kCarpetaLista, kCarpetaTablas}) {
            const std::string carpeta =
                Texto(EnCarpeta(sistema::Nombre(m_carpeta.Ruta() / suya), ""));
            for (std::size_t i = frase.find(carpeta); i != std::string::npos;
                 i = frase.find(carpeta))
                frase.erase(i, carpeta.size());
        }
    return observado;
}

CString CEnsayo::SinCarpeta(const CString& nombre) const
{
    const CString carpeta = EnCarpeta(sistema::Nombre(m_carpeta.Ruta() / kCarpetaLista), "");
    return std::string_view(nombre).starts_with(carpeta) ? nombre.Mid(carpeta.GetLength()) : nombre;
}

} // namespace informe
