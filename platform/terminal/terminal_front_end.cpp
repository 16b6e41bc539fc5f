#include "platform/terminal/terminal_front_end.h"

#include <algorithm>
#include <iostream>
#include <string_view>

#include "platform/ansi.h"
#include "platform/dialog.h"
#include "platform/system.h"

namespace {

constexpr std::size_t kPintadasPorSegundo = 10;
constexpr std::chrono::milliseconds kEntreAvances{200}; // leaves drawings for changes of phase
constexpr int kAnchoBarra = 24;

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

void CFrontalTerminal::MuestraModal(CDialog& dialogo)
{
    Escribe(stderr, ansi::AUtf8(dialogo.Plantilla().titulo));
    Escribe(stderr, ": este programa todavía no muestra diálogos; escriba los nombres de los "
                    "ficheros en la línea de mandatos.\n");
    dialogo.EndDialog(IDCANCEL);
}

void CFrontalTerminal::AtiendeUno(CDialog& dialogo)
{
    const auto ahora = Reloj::now();
    if (!m_enRun) {
        m_enRun = true;
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
    if (m_entradaPersona)
        std::getline(std::cin, respuesta);
    return IDOK;
}

int CFrontalTerminal::PreguntaSiNo() const
{
    std::string respuesta = "s";
    Escribe(stdout, " (s/n) ");
    if (m_entradaPersona) {
        do {
            respuesta.clear();
            std::cin.clear();
        } while (std::getline(std::cin, respuesta) && respuesta.empty());
        // An input that was closed on the question can't be asked again; the run goes on.
    }
    Escribe(stdout, m_entradaPersona ? "\n" : "\n\n");
    const bool si = !respuesta.empty() && (respuesta.front() == 's' || respuesta.front() == 'S');
    return si ? IDYES : IDNO;
}

bool CFrontalTerminal::EligeFichero(CFileDialog& /*dialogo*/)
{
    return false; // on a terminal the name is typed into its field
}

void CFrontalTerminal::Refleja(const CDialog& /*dialogo*/, const CControl& control)
{
    if (!m_enRun || !m_avanceVisible)
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

void CFrontalTerminal::Cierra(const CDialog& /*dialogo*/)
{
    BorraAvance();
    if (m_enRun)
        sistema::OlvidaInterrupcion();
    m_enRun = false;
}

void CFrontalTerminal::MuestraAyuda(const CString& ficheroAyuda)
{
    Escribe(stdout, ansi::AUtf8(ficheroAyuda + "\n"));
}

void CFrontalTerminal::MuestraAyudaControl(const CString& ficheroAyuda, const CDialog& /*dialogo*/,
                                           UINT /*id*/)
{
    MuestraAyuda(ficheroAyuda);
}
