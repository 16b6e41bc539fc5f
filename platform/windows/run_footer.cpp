#include "platform/windows/run_footer.h"

#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/dialog.h"
#include "platform/front_end.h"
#include "platform/layer_texts.h"
#include "platform/windows/accessible_name.h"
#include "platform/windows/dialog_font.h"
#include "platform/windows/open_file.h"
#include "platform/windows/text.h"

namespace {

constexpr short kMargen = 7; // dialog units, as the templates have it
constexpr short kBoton = 56;
constexpr short kAltoBoton = 14;
constexpr short kHueco = 7;
constexpr short kRenglon = 8; // of the text, above the buttons
constexpr short kTrasRenglon = 4;

} // namespace

CPieProceso::CPieProceso(HWND ventana, const CRelatoProceso& relato,
                         std::function<std::vector<CString>()> orden)
    : m_ventana(ventana), m_relato(relato), m_orden(std::move(orden)),
      m_texto(Crea(L"STATIC", m_relato.Texto().c_str(),
                   SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS | WS_VISIBLE | WS_GROUP)),
      m_haceEnsayo(Crea(L"BUTTON", textos::kHazEnsayo, BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP)),
      m_haceInforme(Crea(L"BUTTON", textos::kHazInforme, BS_PUSHBUTTON | WS_TABSTOP)),
      m_abreLog(Crea(L"BUTTON", textos::kAbreLog, BS_PUSHBUTTON | WS_TABSTOP)),
      m_abreCarpeta(Crea(L"BUTTON", textos::kAbreCarpeta, BS_PUSHBUTTON | WS_TABSTOP))
{
}

HWND CPieProceso::Crea(const wchar_t* clase, const char* texto, DWORD estilo)
{
    HWND hijo = CreateWindowExW(0, clase, AAncho(texto).c_str(), estilo | WS_CHILD, 0, 0, 0, 0,
                                m_ventana, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(hijo, GWLP_ID, -1);
    SendMessageW(hijo, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_ventana, WM_GETFONT, 0, 0)),
                 FALSE);
    return hijo;
}

int CPieProceso::Alto() const
{
    return EnPixeles(m_ventana, {0, 0, 0, kRenglon + kTrasRenglon + kAltoBoton + kMargen}).bottom;
}

void CPieProceso::Coloca(const RECT& sitio)
{
    m_sitio = sitio;
    // The text has a line of its own, as long as the window is wide. The last two buttons stand
    // below the last two of the template.
    const RECT renglon = EnPixeles(m_ventana, {kMargen, kTrasRenglon, 0, kRenglon});
    MoveWindow(m_texto, sitio.left + renglon.left, sitio.top,
               sitio.right - sitio.left - 2 * renglon.left, renglon.bottom, TRUE);
    const int arriba = sitio.top + renglon.bottom + renglon.top;
    const RECT boton = EnPixeles(m_ventana, {kMargen, kHueco, kBoton, kAltoBoton});
    int derecha = sitio.right - boton.left;
    for (const auto& [cual, ofrecido] : {std::pair(m_abreCarpeta, !m_relato.Carpeta().IsEmpty()),
                                         std::pair(m_abreLog, !m_relato.Log().IsEmpty()),
                                         std::pair(m_haceInforme, !m_relato.DeInforme().IsEmpty()),
                                         std::pair(m_haceEnsayo, m_relato.OfreceEnsayo())}) {
        if (!ofrecido)
            continue;
        MoveWindow(cual, derecha - boton.right, arriba, boton.right, boton.bottom, TRUE);
        derecha -= boton.right + boton.top;
    }
}

void CPieProceso::PonAlDia()
{
    PonTexto(m_texto, AAncho(m_relato.Texto()));
    Coloca(m_sitio);
    const bool seEnsaya = m_relato.OfreceEnsayo();
    if (seEnsaya)
        PonNombreAccesible(m_haceEnsayo, AAncho(textos::kNombreHazEnsayo));
    ShowWindow(m_haceEnsayo, seEnsaya ? SW_SHOWNA : SW_HIDE);
    Ofrece(m_haceInforme, textos::kNombreHazInforme, m_relato.DeInforme());
    Ofrece(m_abreLog, textos::kNombreAbreLog, m_relato.Log());
    Ofrece(m_abreCarpeta, textos::kNombreAbreCarpeta, m_relato.Carpeta());
    if (m_hayInforme && !m_relato.EnProceso())
        PostMessageW(m_ventana, kHayInforme, 0, 0);
}

void CPieProceso::Ofrece(HWND boton, const char* nombre, const CString& ruta)
{
    const bool seVe = (GetWindowLongW(boton, GWL_STYLE) & WS_VISIBLE) != 0;
    if (!ruta.IsEmpty() && !seVe)
        PonNombreAccesible(boton, AAncho(nombre) + AAncho(ruta));
    ShowWindow(boton, ruta.IsEmpty() ? SW_HIDE : SW_SHOWNA);
}

bool CPieProceso::AlPulsar(HWND boton)
{
    if (boton == m_haceInforme)
        Haz(m_relato.Informe());
    else if (boton == m_haceEnsayo)
        Haz(m_relato.Ensayo(m_orden()));
    else if (boton == m_abreLog || boton == m_abreCarpeta)
        Abre(boton == m_abreLog ? m_relato.Log() : m_relato.Carpeta());
    else
        return false;
    return true;
}

void CPieProceso::Haz(CPaginaPedida pedida)
{
    if (m_informe != nullptr)
        return;
    Deja(false);
    m_informe = std::make_shared<CInforme>(CInforme{std::move(pedida.queja), {}});
    PonTexto(m_texto, AAncho(pedida.mientras));
    const auto trabajo = [hace = std::move(pedida.hace), informe = m_informe, ventana = m_ventana] {
        try {
            informe->pagina = hace();
        } catch (const std::bad_alloc&) { // then there is none
        }
        PostMessageW(ventana, kHayInforme, 0, 0);
    };
    try {
        std::thread(trabajo).detach();
    } catch (const std::system_error&) { // the system has no thread to give: the window waits
        trabajo();
    }
}

/// Lets the user ask for a page, or for none while one is being made.
void CPieProceso::Deja(bool pedir)
{
    for (HWND boton : {m_haceEnsayo, m_haceInforme}) {
        if (!pedir && GetFocus() == boton) // which else nobody would have
            SendMessageW(m_ventana, WM_NEXTDLGCTL, FALSE, FALSE);
        EnableWindow(boton, pedir);
    }
}

void CPieProceso::AbreInformeHecho()
{
    m_hayInforme = m_relato.EnProceso(); // which would stand still behind a box
    if (m_hayInforme)
        return;
    const std::shared_ptr<CInforme> informe = std::exchange(m_informe, nullptr);
    if (informe == nullptr)
        return;
    Deja(true);
    PonTexto(m_texto, AAncho(m_relato.Texto()));
    if (informe->pagina.IsEmpty())
        Quejate(informe->queja);
    else
        Abre(informe->pagina);
}

void CPieProceso::Abre(const CString& ruta) const
{
    if (!AbreConElSistema(m_ventana, AAncho(ruta), ruta == m_relato.Log()))
        Quejate(NoSeAbre(ruta));
}

void CPieProceso::Quejate(const std::string& queja) const
{
    MessageBoxW(m_ventana, AAncho(queja).c_str(), AAncho(textos::kError).c_str(), MB_ICONERROR);
}
