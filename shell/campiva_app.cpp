#include "shell/campiva_app.h"

#include <algorithm>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "platform/dialog.h"
#include "shell/translation_choice_dialog.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

namespace {

constexpr int kHuboError = 1;
constexpr int kNoHayRuta = 2;

bool HayVacios(const CTokens& tokens, std::size_t desde, std::size_t hasta)
{
    return std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(desde),
                       tokens.begin() + static_cast<std::ptrdiff_t>(hasta) + 1,
                       [](const CString& token) { return token.IsEmpty(); });
}

} // namespace

Ruta EligeRuta(const CTokens& tokens)
{
    if (HayVacios(tokens, 1, 7))
        return Ruta::Dialogos;
    const int selector = LeeEntero(tokens[0]);
    if (selector == 1 && !HayVacios(tokens, 8, 11))
        return Ruta::VexaACatastro;
    return selector == 0 ? Ruta::CatastroAVexa : Ruta::Ninguna;
}

BOOL CCampivaApp::InitInstance()
{
    InitCommonControls();
    CVersionApp::InitInstance();
    SetRegistryKey("VexaSoft");
    ReadResourceInformation();
    m_pszHelpFilePath.Replace(".HLP", ".chm");
    CTokens tokens;
    CCadena(m_lpCmdLine).Leetira(kTokens, tokens.data());
    switch (EligeRuta(tokens)) {
    case Ruta::CatastroAVexa:
        EjecutaCatastroAVexa(tokens);
        break;
    case Ruta::VexaACatastro:
        EjecutaVexaACatastro(tokens);
        break;
    case Ruta::Dialogos:
        MuestraDialogos();
        break;
    case Ruta::Ninguna:
        m_estadoSalida = kNoHayRuta;
        break;
    }
    return 0;
}

void CCampivaApp::OnCommand(UINT mandato)
{
    if (mandato == ID_HELP)
        OnHelp();
}

void CCampivaApp::MuestraDialogos()
{
    CTipoTraduccionDlg eleccion;
    if (eleccion.DoModal() != IDOK)
        return;
    switch (eleccion.TipoTraduccion) {
    case 0:
        return ConDialogo<CCampivaAVexaDlg>([](auto& dialogo) { dialogo.DoModal(); });
    case 1:
        return ConDialogo<CVexaACampiva2Dlg>([](auto& dialogo) { dialogo.DoModal(); });
    case 2:
        return ConDialogo<CVexaAInfografDlg>([](auto& dialogo) { dialogo.DoModal(); });
    default:
        return; // no button was marked
    }
}

void CCampivaApp::EjecutaCatastroAVexa(const CTokens& t)
{
    ConDialogo<CCampivaAVexaDlg>([&](CCampivaAVexaDlg& dialogo) {
        dialogo.EjecutaLote(t[1], t[2], t[3], t[4], t[5], t[6], t[7], nullptr);
    });
    m_estadoSalida = HuboCajaDeError() ? kHuboError : 0;
}

void CCampivaApp::EjecutaVexaACatastro(const CTokens& t)
{
    ConDialogo<CVexaACampiva2Dlg>([&](CVexaACampiva2Dlg& dialogo) {
        dialogo.EjecutaLote(t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], LeeEntero(t[9]),
                            LeeEntero(t[10]), LeeEntero(t[11]), nullptr);
    });
    m_estadoSalida = HuboCajaDeError() ? kHuboError : 0;
}

template <class D, class F>
void CCampivaApp::ConDialogo(F accion)
{
    D dialogo;
    m_pMainWnd = &dialogo;
    accion(dialogo);
    m_pMainWnd = nullptr;
}
