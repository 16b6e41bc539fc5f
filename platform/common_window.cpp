#include "platform/common_window.h"

#include <chrono>
#include <utility>

#include "platform/ansi.h"
#include "platform/cwinapp.h"

namespace {

// A tick of a run costs less than a microsecond, a look for events about one and a redrawn bar
// thousands. So both are done as often as a person can tell, and no more.
constexpr std::chrono::milliseconds kEntreMiradas{10}; // when none was pending
constexpr std::chrono::milliseconds kEntrePintadas{100};

} // namespace

bool TomaLoEscrito(CControl& campo, std::string_view texto)
{
    const bool enComillas = texto.size() > 1 && texto.starts_with('"') && texto.ends_with('"');
    campo.SetWindowText(enComillas ? texto.substr(1, texto.size() - 2) : texto);
    return enComillas;
}

CVentanaComun::CVentanaComun(CDialog& dialogo)
    : m_dialogo(dialogo), m_avance(dialogo.Avance()),
      m_relato(AfxGetApp()->Recursos().ficheros.informe, dialogo.SeEnsaya())
{
}

void CVentanaComun::Muestra()
{
    Aparece();
    SirveAlUsuario();
    Esconde();
    LanzaLoGuardado();
}

bool CVentanaComun::HayQueSalir() const
{
    return m_despachos == 0 && (m_dialogo.Terminado() || m_lanzado != nullptr);
}

void CVentanaComun::Despacha(const std::function<void()>& trabajo)
{
    ++m_despachos;
    try {
        trabajo();
    } catch (...) {
        m_lanzado = std::current_exception();
    }
    --m_despachos;
    if (m_dialogo.Terminado())
        Esconde();
    if (HayQueSalir())
        DejaDeServir();
}

void CVentanaComun::Cancela()
{
    Despacha([this] { m_dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0); });
}

void CVentanaComun::LanzaLoGuardado()
{
    if (const std::exception_ptr lanzado = std::exchange(m_lanzado, nullptr))
        std::rethrow_exception(lanzado);
}

void CVentanaComun::AtiendeUno()
{
    const auto ahora = Reloj::now();
    if (ahora < m_calma)
        return;
    if (ahora >= m_pintada + kEntrePintadas) {
        m_pintada = ahora;
        PonAvanceAlDia();
    }
    if (!TomaUno())
        m_calma = ahora + kEntreMiradas;
    LanzaLoGuardado();
}

void CVentanaComun::Refleja(const CControl& control)
{
    if (&control != m_avance)
        PonControl(control);
    else if (control.GetPos() == 0)
        PonBarra(0);
}

/// Bar, title and times lag behind a run; this brings them there.
void CVentanaComun::PonAvanceAlDia()
{
    if (m_avance == nullptr)
        return;
    const int hecho = m_avance->GetPos();
    PonBarra(hecho);
    PonTitulo(TituloEnProceso(hecho, m_dialogo.Plantilla().titulo));
    m_relato.Avanza(Reloj::now(), hecho);
    PonPie();
}

void CVentanaComun::PonSuTitulo()
{
    PonTitulo(ansi::AUtf8(m_dialogo.Plantilla().titulo));
}

int CVentanaComun::Espera(const std::function<int()>& caja)
{
    const bool enProceso = m_relato.EnProceso();
    if (enProceso) {
        PonAvanceAlDia();
        PonSuTitulo(); // the run stands still
    }
    const auto antes = Reloj::now();
    const int respuesta = caja();
    if (enProceso)
        m_relato.Descuenta(Reloj::now() - antes);
    return respuesta;
}

void CVentanaComun::InicioDeProceso()
{
    if (m_avance == nullptr)
        return;
    m_relato.Olvida();
    PonPie();
}

void CVentanaComun::FinDeProceso(const CEscritos& escritos)
{
    PonSuTitulo();
    if (m_avance == nullptr)
        return;
    m_relato.Termina(Reloj::now(), escritos);
    PonPie();
}
