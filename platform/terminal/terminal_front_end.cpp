#include "platform/terminal/terminal_front_end.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "platform/ansi.h"
#include "platform/cfile.h"
#include "platform/cwinapp.h"
#include "platform/dialog.h"
#include "platform/html_help.h"
#include "platform/system.h"

namespace {

constexpr std::size_t kPintadasPorSegundo = 10;
constexpr std::chrono::milliseconds kEntreAvances{200}; // leaves drawings for changes of phase
constexpr int kAnchoBarra = 24;

constexpr const char* kSinAyuda = "No se encuentra la ayuda en \"%s\".\n";
constexpr const char* kSinTema = "La ayuda no dice nada del control %d.\n";
constexpr const char* kPideFichero = "Fichero (ahora \"%s\"): ";
constexpr const char* kNoExiste = "El archivo %s no existe; el campo queda como estaba.\n";

std::size_t Columnas(std::string_view utf8)
{
    return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0U) != 0x80;
    }));
}

void Escribe(std::FILE* donde, std::string_view texto)
{
    std::fwrite(texto.data(), 1, texto.size(), donde);
    std::fflush(donde);
}

template <class... T>
void EscribeForma(std::FILE* donde, const char* forma, const T&... argumentos)
{
    std::string texto;
    AnexaFormato(texto, forma, {CArgumento(argumentos)...});
    Escribe(donde, texto);
}

/// The whole file, from the help's folder. Nothing where it can't be opened.
std::optional<std::string> LeeFichero(const CString& nombre)
{
    CFile fichero;
    if (!fichero.Open(nombre, CFile::modeRead | CFile::typeBinary))
        return {};
    std::string texto;
    char trozo[4096];
    while (const UINT n = fichero.Read(trozo, sizeof trozo))
        texto.append(trozo, n);
    return texto;
}

std::string Barra(int porcentaje)
{
    std::string barra;
    for (int i = 0; i < kAnchoBarra; ++i)
        barra += i * 100 < porcentaje * kAnchoBarra ? "█" : "░";
    return barra;
}

} // namespace

CFrontalTerminal::CFrontalTerminal()
    : m_entradaPersona(sistema::EsTerminal(stdin)), m_avanceVisible(sistema::EsTerminal(stderr))
{
}

CFrontalTerminal::~CFrontalTerminal()
{
    BorraAvance();
}

bool CFrontalTerminal::LeeLinea(std::string& linea)
{
    constexpr std::size_t kMasLarga = 32767; // no path of any system is longer
    linea.clear();
    int c = std::getc(stdin);
    if (c == EOF)
        return false;
    for (; c != EOF && c != '\n'; c = std::getc(stdin))
        if (linea.size() < kMasLarga)
            linea += static_cast<char>(c);
    if (linea.ends_with('\r'))
        linea.pop_back();
    return true;
}

void CFrontalTerminal::MuestraModal(CDialog& dialogo)
{
    CDialogoTexto texto(dialogo);
    Escribe(stdout, texto.Pinta());
    std::string linea;
    while (!dialogo.Terminado()) {
        if (m_entradaPersona)
            Escribe(stdout, "> ");
        if (LeeLinea(linea)) {
            Responde(dialogo, texto.Ejecuta(linea));
        } else {
            dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
            if (!dialogo.Terminado())
                dialogo.EndDialog(IDCANCEL);
        }
        AcabaProceso();
    }
}

void CFrontalTerminal::Responde(CDialog& dialogo, const CDialogoTexto::CRespuesta& respuesta)
{
    Escribe(respuesta.queja ? stderr : stdout, respuesta.texto);
    if (respuesta.ayuda == 0)
        return;
    const HELPINFO pregunta{static_cast<int>(respuesta.ayuda)};
    if (dialogo.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta)) == 0) {
        const HH_POPUP popup{respuesta.ayuda, {}, 0};
        MuestraAyudaControl(AfxGetApp()->m_pszHelpFilePath + kTextosDeControles, popup);
    }
}

void CFrontalTerminal::AtiendeUno(CDialog& dialogo)
{
    const auto ahora = Reloj::now();
    if (!m_enProceso) {
        m_enProceso = true;
        m_inicio = ahora;
        sistema::VigilaInterrupcion();
    }
    if (m_avanceVisible && (m_pintadas.empty() || ahora - m_pintadas.back() >= kEntreAvances))
        PintaAvance(ahora);
    if (sistema::HuboInterrupcion())
        dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
}

bool CFrontalTerminal::PuedePintar(Reloj::time_point ahora)
{
    while (!m_pintadas.empty() && ahora - m_pintadas.front() >= std::chrono::seconds(1))
        m_pintadas.pop_front();
    return m_pintadas.size() < kPintadasPorSegundo;
}

void CFrontalTerminal::PintaAvance(Reloj::time_point ahora)
{
    if (m_fase.empty() || !PuedePintar(ahora))
        return;
    m_faseNueva = false;
    m_pintadas.push_back(ahora);
    const auto segundos =
        std::chrono::duration_cast<std::chrono::seconds>(ahora - m_inicio).count();
    std::string cola;
    AnexaFormato(cola, " % 3d %%  %d:%02d",
                 {m_porcentaje, static_cast<int>(segundos / 60), static_cast<int>(segundos % 60)});
    constexpr std::size_t kAnchoFase = 34;
    const std::size_t relleno = kAnchoFase - std::min(kAnchoFase, Columnas(m_fase));
    std::string linea = m_fase;
    linea.append(relleno, ' ').append(Barra(m_porcentaje)).append(cola);
    const std::size_t ancho = Columnas(linea);
    if (m_anchoPintado > ancho)
        linea.append(m_anchoPintado - ancho, ' ');
    Escribe(stderr, "\r");
    Escribe(stderr, linea);
    m_anchoPintado = ancho;
}

void CFrontalTerminal::BorraAvance()
{
    if (m_anchoPintado > 0) {
        Escribe(stderr, "\r");
        Escribe(stderr, std::string(m_anchoPintado, ' '));
        Escribe(stderr, "\r");
    }
    m_anchoPintado = 0;
}

int CFrontalTerminal::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    BorraAvance();
    std::FILE* salida = (flags & MB_ICONMASK) == MB_ICONERROR ? stderr : stdout;
    CString cuerpo = texto;
    cuerpo.TrimRight("\n");
    Escribe(salida, ansi::AUtf8(CString("[") + titulo + "]\n" + cuerpo));
    if ((flags & MB_TYPEMASK) == MB_YESNO)
        return PreguntaSiNo();
    Escribe(salida, "\n\n");
    std::string respuesta;
    if (m_entradaPersona) {
        LeeLinea(respuesta);
        OlvidaTeclas();
    }
    return IDOK;
}

void CFrontalTerminal::OlvidaTeclas()
{
    std::clearerr(stdin);
    sistema::HuboInterrupcion();
}

int CFrontalTerminal::PreguntaSiNo() const
{
    std::string respuesta = "s";
    Escribe(stdout, " (s/n) ");
    if (m_entradaPersona) {
        do {
            std::clearerr(stdin);
        } while (LeeLinea(respuesta) && respuesta.empty());
        // An input that was closed on the question can't be asked again; the run goes on.
    }
    OlvidaTeclas();
    Escribe(stdout, m_entradaPersona ? "\n" : "\n\n");
    const bool si = !respuesta.empty() && (respuesta.front() == 's' || respuesta.front() == 'S');
    return si ? IDYES : IDNO;
}

bool CFrontalTerminal::EligeFichero(CFileDialog& dialogo)
{
    EscribeForma(stdout, kPideFichero, ansi::AUtf8(dialogo.GetPathName()));
    std::string nombre;
    const bool hay = LeeLinea(nombre);
    if (!m_entradaPersona || !hay)
        Escribe(stdout, "\n");
    if (m_entradaPersona)
        OlvidaTeclas();
    if (nombre.empty())
        return false;
    CFile fichero;
    if ((dialogo.Flags() & OFN_FILEMUSTEXIST) != 0 &&
        !fichero.Open(nombre, CFile::modeRead | CFile::typeBinary)) {
        EscribeForma(stderr, kNoExiste, nombre);
        return false;
    }
    dialogo.SetPathName(nombre);
    return true;
}

void CFrontalTerminal::Refleja(const CDialog& /*dialogo*/, const CControl& control)
{
    if (!m_enProceso || !m_avanceVisible)
        return;
    if (control.Plantilla().clase == ClaseControl::Progreso) {
        m_porcentaje = control.GetPos();
        // A phase sets its text, then its bar; one that sends no ticks is drawn here or never.
        if (m_faseNueva)
            PintaAvance(Reloj::now());
    } else if (control.Plantilla().clase == ClaseControl::Texto && control.Id() != kSinId) {
        CString fase = control.GetWindowText();
        m_fase = ansi::AUtf8(fase.TrimRight());
        m_faseNueva = !m_fase.empty();
        if (m_fase.empty())
            BorraAvance();
    }
}

void CFrontalTerminal::AcabaProceso()
{
    BorraAvance();
    if (m_enProceso)
        sistema::OlvidaInterrupcion();
    m_enProceso = false;
}

void CFrontalTerminal::Cierra(const CDialog& /*dialogo*/)
{
    AcabaProceso();
}

void CFrontalTerminal::MuestraAyuda(const CString& ficheroAyuda)
{
    const CString nombre = sistema::Nombre(sistema::Ruta(ficheroAyuda).replace_extension("txt"));
    if (const auto texto = LeeFichero(nombre))
        Escribe(stdout, ansi::AUtf8(*texto));
    else
        EscribeForma(stderr, kSinAyuda, ansi::AUtf8(nombre));
}

void CFrontalTerminal::MuestraAyudaControl(const CString& temas, const HH_POPUP& popup)
{
    const auto [fichero, interior] = ParteTemas(temas);
    const CString nombre =
        sistema::Nombre(sistema::Ruta(fichero).replace_filename(sistema::Ruta(interior)));
    const auto textos = LeeFichero(nombre);
    if (!textos)
        return EscribeForma(stderr, kSinAyuda, ansi::AUtf8(nombre));
    const std::string_view tema = TextoDeTema(*textos, popup.idString);
    if (tema.empty())
        return EscribeForma(stderr, kSinTema, static_cast<int>(popup.idString));
    Escribe(stdout, ansi::AUtf8(tema) + "\n");
}
