#include "platform/terminal/terminal_front_end.h"

#include <algorithm>
#include <string_view>

#include "platform/ansi.h"
#include "platform/cwinapp.h"
#include "platform/dialog.h"
#include "platform/files/cfile.h"
#include "platform/files/system_files.h"
#include "platform/html_help.h"
#include "platform/layer_texts.h"
#include "platform/system.h"

namespace {

constexpr std::size_t kPintadasPorSegundo = 10;
constexpr std::chrono::milliseconds kEntreAvances{200}; // leaves drawings for changes of phase
constexpr std::size_t kAnchoFase = 34;
constexpr std::size_t kAnchoBarra = 24;
constexpr std::size_t kAnchoDesconocido = 80;

std::size_t Columnas(std::string_view utf8)
{
    return static_cast<std::size_t>(std::ranges::count_if(
        utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80; }));
}

/// Opens a file to be read. One that a fault keeps from it is told in a box.
bool Abre(CFile& fichero, const CString& nombre)
{
    try {
        return fichero.Open(nombre, CFile::modeRead);
    } catch (const CFileException& fallo) {
        AfxGetApp()->Caja(fallo.Mensaje(), textos::kError, MB_ICONERROR);
        return false;
    }
}

/// The text in so many columns: cut, or filled with blanks.
std::string Ajusta(std::string_view utf8, std::size_t columnas)
{
    std::string texto(utf8);
    while (Columnas(texto) > columnas)
        texto.pop_back();
    return texto.append(columnas - Columnas(texto), ' ');
}

std::string Barra(int porcentaje, std::size_t columnas)
{
    std::string barra;
    for (std::size_t i = 0; i < columnas; ++i)
        barra += i * 100 < static_cast<std::size_t>(porcentaje) * columnas ? "█" : "░";
    return barra;
}

} // namespace

CFrontalTerminal::CFrontalTerminal()
    : m_entradaPersona(sistema::EsTerminal(stdin)),
      m_conversa(m_entradaPersona && sistema::EsTerminal(stdout)),
      m_avanceVisible(sistema::EsTerminal(stderr))
{
    m_guion.hay = !m_entradaPersona;
}

CFrontalTerminal::~CFrontalTerminal()
{
    BorraAvance();
}

bool CFrontalTerminal::EsperaLinea(std::string& linea)
{
    return sistema::EsperaLinea() && LeeLinea(linea);
}

bool CFrontalTerminal::LeeLinea(std::string& linea)
{
    constexpr std::size_t kMasLarga = 32767; // no path of any system is longer
    linea.clear();
    int c = sistema::LeeByte();
    if (c == EOF)
        return false;
    for (; c != EOF && c != '\n'; c = sistema::LeeByte())
        if (linea.size() < kMasLarga)
            linea += static_cast<char>(c);
    if (linea.ends_with('\r'))
        linea.pop_back();
    return true;
}

void CFrontalTerminal::MuestraModal(CDialog& dialogo)
{
    sistema::Imprime(stdout, PintaDialogo(dialogo));
    if (const char* const programa = AfxGetApp()->Recursos().ficheros.informe;
        m_conversa && dialogo.SeEnsaya() && !sistema::BuscaPrograma(programa).empty())
        sistema::Imprime(stdout, Formatea(textos::kSeEnsaya, programa));
    while (!dialogo.Terminado()) {
        if (m_entradaPersona)
            sistema::Imprime(stdout, "> ");
        // What a script meant to follow hangs on what couldn't be done: its pipe ends there.
        const bool roto = m_guion.hay && m_guion.fallidos > 0;
        if (roto || !AtiendeMandato(dialogo)) {
            if (m_guion.hay && m_guion.leidos == 0)
                sistema::Imprime(stderr, textos::kSinMandatos);
            dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
            if (!dialogo.Terminado())
                dialogo.EndDialog(IDCANCEL);
        }
        AcabaProceso();
    }
}

bool CFrontalTerminal::AtiendeMandato(CDialog& dialogo)
{
    std::string linea;
    if (!LeeLinea(linea))
        return false;
    if (!linea.empty())
        ++m_guion.leidos;
    Responde(dialogo, EjecutaMandato(dialogo, linea));
    return true;
}

template <class... T>
void CFrontalTerminal::Falla(const char* forma, const T&... argumentos)
{
    ++m_guion.fallidos;
    sistema::Imprime(stderr, Formatea(forma, argumentos...));
}

void CFrontalTerminal::Responde(CDialog& dialogo, const CRespuesta& respuesta)
{
    if (respuesta.queja)
        Falla("%s", respuesta.texto);
    else
        sistema::Imprime(stdout, respuesta.texto);
    if (respuesta.ayuda == 0)
        return;
    const HELPINFO pregunta{static_cast<int>(respuesta.ayuda)};
    if (dialogo.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta)) == 0) {
        const HH_POPUP popup{respuesta.ayuda, {}, 0};
        MuestraAyudaControl(AfxGetApp()->TemasDeControles(), popup);
    }
}

void CFrontalTerminal::AtiendeUno(CDialog& /*dialogo*/)
{
    if (!m_enProceso) {
        m_enProceso = true;
        m_inicio = Reloj::now();
    }
    if (!m_avanceVisible)
        return;
    if (const auto ahora = Reloj::now();
        m_pintadas.empty() || ahora - m_pintadas.back() >= kEntreAvances)
        PintaAvance(ahora);
    if (sistema::HayQueAcabar())
        BorraAvance();
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
    std::string linea = LineaAvance(ahora);
    const std::size_t ancho = Columnas(linea);
    if (m_anchoPintado > ancho)
        linea.append(m_anchoPintado - ancho, ' ');
    sistema::Imprime(stderr, "\r");
    sistema::Imprime(stderr, linea);
    m_anchoPintado = ancho;
}

std::string CFrontalTerminal::LineaAvance(Reloj::time_point ahora) const
{
    const auto segundos =
        std::chrono::duration_cast<std::chrono::seconds>(ahora - m_inicio).count();
    const std::string cola =
        Formatea(" % 3d %%  %d:%02d", m_porcentaje, static_cast<int>(segundos / 60),
                 static_cast<int>(segundos % 60));
    // A line that reaches the last column would go on in the next one, and stay there. Where there
    // is less room, the bar is the first to give way and then the phase.
    const std::size_t ancho = sistema::AnchoTerminal(stderr).value_or(kAnchoDesconocido) - 1;
    const std::size_t sitio = ancho - std::min(ancho, Columnas(cola));
    const std::size_t fase = std::min(kAnchoFase, sitio);
    const std::string linea =
        Ajusta(m_fase, fase) + Barra(m_porcentaje, std::min(kAnchoBarra, sitio - fase)) + cola;
    return Ajusta(linea, std::min(ancho, Columnas(linea)));
}

void CFrontalTerminal::BorraAvance()
{
    if (m_anchoPintado > 0) {
        // Also where there is no memory for a text.
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(m_anchoPintado), "");
        std::fflush(stderr);
    }
    m_anchoPintado = 0;
}

int CFrontalTerminal::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    BorraAvance();
    std::FILE* salida = (flags & MB_ICONMASK) == MB_ICONERROR ? stderr : stdout;
    CString cuerpo = texto;
    cuerpo.TrimRight("\n");
    sistema::Imprime(salida, ansi::AUtf8(CString("[") + titulo + "]\n" + cuerpo));
    if ((flags & MB_TYPEMASK) == MB_YESNO)
        return PreguntaSiNo() ? IDYES : IDNO;
    if ((flags & MB_TYPEMASK) == MB_RETRYCANCEL)
        return PreguntaSiNo() ? IDRETRY : IDCANCEL;
    sistema::Imprime(salida, "\n\n");
    if ((flags & MB_ICONMASK) == 0)
        m_fase.clear(); // the summary: no phase goes on behind it
    std::string respuesta;
    if (m_conversa) {
        EsperaLinea(respuesta);
        OlvidaTeclas();
    }
    return IDOK;
}

void CFrontalTerminal::OlvidaTeclas()
{
    std::clearerr(stdin);
    sistema::HuboInterrupcion();
}

bool CFrontalTerminal::PreguntaSiNo() const
{
    std::string respuesta = "s";
    sistema::Imprime(stdout, textos::kSiNo);
    if (m_conversa) {
        for (;;) {
            std::clearerr(stdin);
            if (!EsperaLinea(respuesta) || !respuesta.empty())
                break;
            sistema::Imprime(stdout, textos::kSiNo); // Enter alone is no answer
        }
        // An input that was closed on the question can't be asked again; the run goes on.
    }
    OlvidaTeclas();
    sistema::Imprime(stdout, m_conversa ? "\n" : "\n\n");
    return !respuesta.empty() && (respuesta.front() == 's' || respuesta.front() == 'S');
}

bool CFrontalTerminal::EligeFichero(CFileDialog& dialogo)
{
    sistema::Imprime(stdout, Formatea(textos::kPideFichero, ansi::AUtf8(dialogo.GetPathName())));
    std::string nombre;
    const bool hay = LeeLinea(nombre);
    if (!m_entradaPersona || !hay)
        sistema::Imprime(stdout, "\n");
    if (m_entradaPersona)
        OlvidaTeclas();
    if (nombre.empty())
        return false;
    CFile fichero;
    if ((dialogo.Flags() & OFN_FILEMUSTEXIST) != 0 && !Abre(fichero, nombre)) {
        Falla(textos::kNoExiste, nombre);
        return false;
    }
    dialogo.SetPathName(nombre);
    return true;
}

void CFrontalTerminal::Refleja(const CDialog& /*dialogo*/, const CControl& control)
{
    if (!m_enProceso || !m_avanceVisible)
        return;
    if (control.Clase() == ClaseControl::Progreso) {
        m_porcentaje = control.GetPos();
        // A phase sets its text, then its bar; one that sends no ticks is drawn here or never.
        if (m_faseNueva)
            PintaAvance(Reloj::now());
    } else if (control.Clase() == ClaseControl::Texto && control.Id() != kSinId) {
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
    m_enProceso = false;
}

void CFrontalTerminal::FinDeProceso(const CDialog& /*dialogo*/, const CEscritos& escritos)
{
    BorraAvance();
    for (const CString& observacion : escritos.observaciones)
        sistema::Imprime(stderr, ansi::AUtf8(observacion) + "\n");
    if (!m_conversa)
        return;
    if (CFile log; !escritos.log.IsEmpty() && Abre(log, escritos.log))
        sistema::Imprime(
            stdout,
            Formatea(textos::kAvisos, ansi::AUtf8(escritos.log),
                     log.GetLength() == 0 && !escritos.huboErrores ? textos::kNingunAviso : ""));
    std::filesystem::path carpeta; // those of one folder, nearly always all, stand in one line
    for (const CString& salida : escritos.salidas) {
        const std::filesystem::path ruta = sistema::EnteraSinPuntos(sistema::Ruta(salida));
        if (ruta.parent_path() != carpeta) {
            sistema::Imprime(stdout, carpeta.empty() ? "" : "\n");
            carpeta = ruta.parent_path();
            sistema::Imprime(stdout,
                             Formatea(textos::kEscritos, ansi::AUtf8(sistema::Nombre(carpeta))));
        }
        sistema::Imprime(stdout, " " + ansi::AUtf8(sistema::Nombre(ruta.filename())));
    }
    sistema::Imprime(stdout, carpeta.empty() ? "" : "\n");
}

std::optional<std::string> CFrontalTerminal::LeeDeLaAyuda(const std::filesystem::path& fichero)
{
    const CString nombre = sistema::Nombre(fichero);
    try {
        CFile abierto;
        if (abierto.Open(nombre, CFile::modeRead)) {
            std::string texto;
            char trozo[4096];
            while (const UINT n = abierto.Read(trozo, sizeof trozo))
                texto.append(trozo, n);
            return texto;
        }
    } catch (const CFileException& fallo) {
        AfxGetApp()->Caja(fallo.Mensaje(), textos::kError, MB_ICONERROR);
    }
    Falla(textos::kNoEstaLaAyuda, ansi::AUtf8(nombre));
    return {};
}

bool CFrontalTerminal::MuestraAyuda(const CString& ficheroAyuda)
{
    const auto texto = LeeDeLaAyuda(sistema::Ruta(ficheroAyuda).replace_extension("txt"));
    if (!texto)
        return false;
    const std::string legible = ansi::AUtf8(*texto);
    if (!m_conversa || !sistema::Pagina(legible))
        sistema::Imprime(stdout, legible);
    return true;
}

bool CFrontalTerminal::MuestraAyudaControl(const CString& temas, const HH_POPUP& popup)
{
    const auto [fichero, interior] = ParteTemas(temas);
    const auto textos =
        LeeDeLaAyuda(sistema::Ruta(fichero).replace_filename(sistema::Ruta(interior)));
    if (!textos)
        return false;
    const std::string_view tema = TextoDeTema(*textos, popup.idString);
    if (tema.empty()) {
        Falla(textos::kSinTema, static_cast<int>(popup.idString));
        return false;
    }
    sistema::Imprime(stdout, ansi::AUtf8(tema) + "\n");
    return true;
}
