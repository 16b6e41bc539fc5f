#include "platform/windows/windows_front_end.h"

#include "platform/windows/win32.h"

#include <algorithm>
#include <optional>

#include "platform/cwinapp.h"
#include "platform/files/cfile.h"
#include "platform/html_help.h"
#include "platform/layer_texts.h"
#include "platform/windows/dialog_window.h"
#include "platform/windows/help_popup.h"
#include "platform/windows/help_viewer.h"
#include "platform/windows/open_file.h"
#include "platform/windows/text.h"

namespace {

/// The filters as the system takes them: with a zero where the program has a bar.
std::wstring Filtros(const CString& filtros)
{
    std::wstring texto = AAncho(filtros);
    std::replace(texto.begin(), texto.end(), L'|', L'\0');
    return texto;
}

/// Has the user choose a file. The system refuses to begin with a text that can be no name, and
/// leaves the process in the folder of the file, where what is relative would become another file.
bool Pregunta(OPENFILENAMEW& caja)
{
    std::error_code error;
    const std::filesystem::path carpeta = std::filesystem::current_path(error);
    BOOL elegido = GetOpenFileNameW(&caja);
    if (elegido == 0 && CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        *caja.lpstrFile = L'\0';
        elegido = GetOpenFileNameW(&caja);
    }
    std::filesystem::current_path(carpeta, error);
    return elegido != 0;
}

HWND ManijaDe(const CVentanaDialogo* ventana)
{
    return ventana != nullptr ? ventana->Manija() : nullptr;
}

bool EsFichero(const std::filesystem::path& ruta)
{
    sistema::Error error;
    return sistema::Mira(ruta, error).EsRegular();
}

/// The text of a control, from the file that stands beside the help file too. Empty where it has
/// none, nothing where there is no such file.
std::optional<std::wstring> TextoDeControl(const CString& fichero, const CString& interior, UINT id)
{
    const auto ruta = sistema::Ruta(fichero).replace_filename(sistema::Ruta(interior));
    std::string textos;
    try {
        CFile abierto;
        if (!abierto.Open(sistema::Nombre(ruta), CFile::modeRead))
            return {};
        textos.resize(static_cast<std::size_t>(abierto.GetLength()));
        textos.resize(abierto.Read(textos.data(), static_cast<UINT>(textos.size())));
    } catch (const CFileException&) {
        return {};
    }
    std::wstring texto = AAncho(TextoDeTema(textos, id));
    std::erase(texto, L'\r');
    std::replace(texto.begin(), texto.end(), L'\n', L' '); // the popup breaks its lines by itself
    return texto;
}

} // namespace

CFrontalWindows::CFrontalWindows() : m_visor(std::make_unique<CVisorAyuda>()) {}

CFrontalWindows::~CFrontalWindows() = default;

void CFrontalWindows::IniciaControles()
{
    INITCOMMONCONTROLSEX cuales = {sizeof cuales,
                                   ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS | ICC_BAR_CLASSES};
    InitCommonControlsEx(&cuales);
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
}

const CVentanaDialogo* CFrontalWindows::DeDelante() const
{
    return static_cast<const CVentanaDialogo*>(Delante());
}

void CFrontalWindows::MuestraModal(CDialog& dialogo)
{
    CVentanaDialogo ventana(dialogo, ManijaDe(DeDelante()));
    Muestra(ventana);
}

int CFrontalWindows::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    const std::wstring cuerpo = AAncho(texto);
    const std::wstring rotulo = AAncho(titulo);
    return Espera(
        [&] { return MessageBoxW(ManijaDe(DeDelante()), cuerpo.c_str(), rotulo.c_str(), flags); });
}

bool CFrontalWindows::EligeFichero(CFileDialog& dialogo)
{
    constexpr std::size_t kMasLarga = 32768; // no path of the system is longer
    const std::wstring filtros = Filtros(dialogo.Filtros());
    const std::wstring carpeta = CarpetaInicial(dialogo).native();
    std::wstring ruta = sistema::Ruta(dialogo.GetPathName()).filename().native();
    ruta.resize(kMasLarga);
    OPENFILENAMEW caja = {};
    caja.lStructSize = sizeof caja;
    caja.hwndOwner = ManijaDe(DeDelante());
    caja.lpstrFilter = filtros.c_str();
    caja.lpstrFile = ruta.data();
    caja.nMaxFile = static_cast<DWORD>(ruta.size());
    caja.lpstrInitialDir = carpeta.c_str();
    caja.Flags = dialogo.Flags() | OFN_EXPLORER;
    if (!Pregunta(caja))
        return false;
    Elige(dialogo, sistema::Nombre(ruta.c_str()));
    return true;
}

bool CFrontalWindows::MuestraAyuda(const CString& ficheroAyuda)
{
    HWND ventana = ManijaDe(DeDelante());
    const std::filesystem::path fichero = sistema::Ruta(ficheroAyuda);
    if (EsFichero(fichero) && !EstaBloqueado(fichero) &&
        m_visor->MuestraTema(ventana, fichero.native()))
        return true;
    const std::string manual = AfxGetApp()->Recursos().ficheros.manual;
    const std::filesystem::path paginas = fichero.parent_path() / sistema::Ruta(manual);
    if (!manual.empty() && EsFichero(paginas) && AbreConElSistema(ventana, paginas.native(), false))
        return true;
    DiQueNoSeVeLaAyuda(ficheroAyuda);
    return false;
}

bool CFrontalWindows::MuestraAyudaControl(const CString& temas, const HH_POPUP& popup)
{
    const auto [fichero, interior] = ParteTemas(temas);
    const CVentanaDialogo* ventana = DeDelante();
    HWND control = ventana != nullptr ? ventana->ControlCon(popup.idString) : nullptr;
    if (m_visor->MuestraGlobo(control, AAncho(fichero), AAncho(interior), popup))
        return true;
    const auto texto = TextoDeControl(fichero, interior, popup.idString);
    if (!texto)
        DiQueNoSeVeLaAyuda(fichero);
    if (ventana == nullptr || !texto || texto->empty())
        return false; // of a control that has none, a key that gives nothing is answer enough
    MuestraGlobo(ventana->Manija(), *texto, {popup.pt.x, popup.pt.y}, popup.clrBackground);
    return true;
}
