#include <algorithm>
#include <iterator>
#include <string_view>

#include "cadastre/file_extensions.h"
#include "cadastre/polygon_list.h"
#include "platform/ansi.h"
#include "platform/cwinapp.h"
#include "platform/files/set_healing.h"
#include "platform/files/system_files.h"
#include "platform/plain_texts.h"
#include "platform/system.h"
#include "shell/frame/box_texts.h"
#include "shell/frame/translation_dialog.h"
#include "vexa_libs/ccadena.h"

// The files of a run: opened with their boxes, kept for it, and put in their places together.

namespace {

constexpr UINT kCrea = CFile::modeCreate | CFile::modeWrite;

/// Tells whether what can't be opened for this reason is there; where a name is none that a file
/// could have, as a damaged list may have them, nothing is.
bool EstaAhi(const sistema::Error& error)
{
    constexpr std::errc kEsta[] = {std::errc::permission_denied, std::errc::operation_not_permitted,
                                   std::errc::is_a_directory, std::errc::device_or_resource_busy};
    return std::ranges::any_of(kEsta, [&](std::errc razon) { return error == razon; });
}

/// Tells whether a text begins with the mark that editors put before UTF-8 and UTF-16, which shifts
/// all columns.
bool TieneMarca(std::string_view texto)
{
    constexpr std::string_view kMarcas[] = {ansi::kMarcaUtf8, "\xFF\xFE", "\xFE\xFF"};
    return std::ranges::any_of(kMarcas, [&](auto marca) { return texto.starts_with(marca); });
}

} // namespace

CTraduccionDlg::CProceso::CProceso() = default;

void CTraduccionDlg::EmpiezaProceso(const std::vector<CString>& ficheros)
{
    m_proceso.emplace();
    // From here on there is something to clear away.
    sistema::VigilaSenales(AfxGetApp()->Frontal().AlguienContesta());
    Sana(ficheros);
}

void CTraduccionDlg::Sana(const std::vector<CString>& ficheros)
{
    for (const CTocado& tocado : SanaConjuntos(ficheros))
        Observa("%s", tocado.Frase());
}

bool CTraduccionDlg::AbreEntrada(CStdioFile& fichero, const CString& nombre)
{
    CFileException fallo;
    if (!fichero.Open(nombre, CFile::modeRead, &fallo)) {
        CajaError(cajas::kNoExiste, fallo);
        return false;
    }
    if (!CFile::EsAlguno(nombre, m_proceso->escritos.leidos)) {
        m_proceso->escritos.leidos.push_back(nombre);
        AnotaLeida(fichero, nombre);
    }
    return true;
}

void CTraduccionDlg::AnotaLeida(const CFile& fichero, const CString& nombre)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(fichero.GetFilePath()), error);
    if (!error && estado.EsRegular())
        m_proceso->leidas.push_back({nombre, estado});
}

/// What was being saved while the run read it may have been read by half. Of an input that is an
/// output as well the outputs tell it (CConjuntoSalidas), but others may lack what it lacked.
void CTraduccionDlg::ObservaCambiadas()
{
    for (const CLeida& leida : m_proceso->leidas) {
        sistema::Error error;
        const sistema::CEstado ahora = sistema::Mira(sistema::Ruta(leida.nombre), error);
        if (!error && ahora.largo == leida.estado.largo && ahora.escrito == leida.estado.escrito)
            continue;
        if (CFile::EsAlguno(leida.nombre, m_proceso->escritos.salidas))
            ConservaAnteriores();
        else
            Sospecha(observaciones::kEntradaCambiada, leida.nombre);
    }
}

bool CTraduccionDlg::AbreDibujo(CFile& fichero, const CString& nombre)
{
    constexpr UINT kModo = CFile::modeRead | CFile::anyCase | CFile::modeWhole;
    CFileException fallo;
    const bool abierto = fichero.Open(nombre, kModo, &fallo, m_proceso->nombres);
    if (!abierto) {
        CajaError(cajas::kNoExiste, fallo);
        if (EstaAhi(fallo.m_causa)) // its parcels are missing for now, and those of an older output
                                    // aren't
            Sospecha(observaciones::kDibujoSinLeer, nombre);
    } else {
        AnotaLeida(fichero, fichero.GetFilePath());
    }
    return abierto;
}

bool CTraduccionDlg::AbreOrtos(CFile& bin, CFile& top, const CString& nombre)
{
    CCadena nombreBin = nombre;
    nombreBin.CambiaExtension(kExtensionDibujo);
    CCadena nombreTop = nombre;
    nombreTop.CambiaExtension(kExtensionHojas);
    const bool hayBin = AbreDibujo(bin, nombreBin);
    return AbreDibujo(top, nombreTop) && hayBin;
}

/// Tells that two of the files that a run writes are one. What is no regular file takes them all.
bool CTraduccionDlg::HayRepetidas(const CString& log, const std::vector<CString>& salidas)
{
    std::vector<CString> todas = salidas;
    todas.insert(todas.begin(), log);
    const CString repetida = CFile::Repetida(todas);
    if (!repetida.IsEmpty())
        CajaError(cajas::kSalidaRepetida, repetida);
    return !repetida.IsEmpty();
}

/// Keeps an output for the run, before anything is read. What another program has open a person can
/// close now; where nobody is there to do it, the output is told when it would be created.
/// \return false where the person gives up
bool CTraduccionDlg::Reserva(const CString& salida)
{
    for (;;) {
        sistema::Error error;
        const auto apertura = m_proceso->salidas.Reserva(salida, error);
        if (apertura == CReemplazo::Apertura::Ocupado)
            throw CFileException(salida, sistema::kDeOtro);
        if (apertura == CReemplazo::Apertura::Abierto ||
            error != std::errc::device_or_resource_busy || m_enLote ||
            !AfxGetApp()->Frontal().AlguienContesta())
            return true;
        const CString quien = sistema::ProgramasQueTienen(sistema::Ruta(salida));
        if (MessageBox(Formatea(cajas::kLoTieneOtro, salida,
                                quien.IsEmpty() ? cajas::kOtroPrograma : quien),
                       cajas::kError, MB_RETRYCANCEL | MB_ICONWARNING) != IDRETRY)
            return false;
    }
}

bool CTraduccionDlg::CreaLog(const CString& nombre, const std::vector<CString>& entradas,
                             const std::vector<CString>& salidas, Registro que)
{
    if (HayRepetidas(nombre, salidas))
        return false;
    Sana(salidas);
    for (const CString& salida : salidas)
        if (!Reserva(salida)) {
            m_proceso->salidas.Desecha();
            return false;
        }
    CFileException fallo(nombre, {});
    const bool esEntrada = CFile::EsAlguno(nombre, entradas);
    const CString anterior =
        que == Registro::SiempreVacio && !esEntrada ? CFile::GuardaAnterior(nombre) : CString();
    if (!anterior.IsEmpty())
        Observa("%s", CConservada{nombre, anterior}.Frase());
    if (!esEntrada && m_proceso->log.Open(nombre, kCrea | CFile::modeInPlace, &fallo)) {
        m_proceso->escritos.log = CFile::RutaCompleta(nombre);
        return true;
    }
    m_proceso->salidas.Desecha();
    CajaError(cajas::kNoSeCrea, fallo);
    return false;
}

bool CTraduccionDlg::CreaSalida(CStdioFile& fichero, const CString& nombre, const char* queja,
                                const std::vector<CString>& entradas)
{
    CFileException fallo(nombre, {});
    if (!CFile::EsAlguno(nombre, entradas) &&
        fichero.Open(nombre, kCrea, &fallo, &m_proceso->salidas)) {
        m_proceso->escritos.salidas.push_back(nombre);
        return true;
    }
    CajaError(queja, fallo);
    ConservaAnteriores(); // the others change without it
    return false;
}

void CTraduccionDlg::ObservaDesbordes(const CStdioFile& salida, const CString& nombre)
{
    if (const auto& [cuantos, primero] = salida.Desbordes(); cuantos > 0)
        Observa(observaciones::kDesbordes, nombre, cuantos, primero);
}

void CTraduccionDlg::SospechaCuentas(std::initializer_list<CCuenta> cuentas, const CString& archivo)
{
    for (const auto& [cuantas, forma] : cuentas)
        if (cuantas > 0)
            Sospecha(forma, archivo, cuantas);
}

void CTraduccionDlg::SospechaPagina(const ansi::CMiraPagina& pagina, const CString& archivo)
{
    if (pagina.TodasEnUtf8())
        Sospecha(observaciones::kParecenUtf8, archivo);
    else
        SospechaCuentas({{pagina.EnUtf8(), observaciones::kLineasEnUtf8}}, archivo);
    SospechaCuentas({{pagina.DeDos(), observaciones::kLineasDeDos}}, archivo);
}

void CTraduccionDlg::ObservaDibujo(const CFile& topologia, bool dañada, const CFile& dibujo,
                                   int partidos)
{
    if (topologia.GetLength() == 0)
        Sospecha(observaciones::kTopologiaVacia, topologia.GetFilePath());
    if (dañada)
        Sospecha(observaciones::kDibujoAMedias, topologia.GetFilePath());
    SospechaCuentas({{partidos, observaciones::kRotulosPartidos}}, dibujo.GetFilePath());
}

bool CTraduccionDlg::ObservaLista(const CString& lista, const CString& primera, int poligonos)
{
    const bool marca = TieneMarca(primera);
    const bool vacia = primera.IsEmpty() && poligonos == 0;
    if (marca)
        Sospecha(observaciones::kConMarca, lista);
    else if (SonVariasLineas(primera))
        Sospecha(observaciones::kSoloRetornos, lista);
    else if (vacia)
        Sospecha(observaciones::kVacia, lista);
    else if (poligonos == 0)
        Sospecha(observaciones::kSinPoligonos, lista);
    return !marca && !vacia;
}

void CTraduccionDlg::ObservaEntradaConPunto(const CString& carpeta, const CString& entrada)
{
    if (entrada.Find('.') < 0)
        return;
    const CString leido = FicheroDeLista(carpeta, entrada, kExtensionDibujo);
    const CString suyo =
        CFile::EnDisco(carpeta + entrada + "." + kExtensionDibujo, m_proceso->nombres);
    sistema::Error error;
    if (suyo != leido && sistema::Mira(sistema::Ruta(suyo), error).EsRegular())
        Sospecha(observaciones::kOtroDibujo, entrada, leido);
}

void CTraduccionDlg::ConfirmaSalidas()
{
    if (m_proceso->detenido)
        Sospecha(observaciones::kDetenido);
    ObservaCambiadas();
    m_proceso->salidas.Confirma();
    for (const CConservada& una : m_proceso->salidas.Conservadas())
        Observa("%s", una.Frase());
}
