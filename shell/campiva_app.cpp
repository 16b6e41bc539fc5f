#include "shell/campiva_app.h"

#include <algorithm>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "platform/dialog.h"
#include "shell/translation_choice_dialog.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

namespace {

/// What stands for a tab inside an argument while the arguments are one text: the one character
/// that no argument can hold.
constexpr std::string_view kTabEnArgumento("\0", 1);

bool HayVacios(const CTokens& tokens, std::size_t desde, std::size_t hasta)
{
    return std::any_of(tokens.begin() + static_cast<std::ptrdiff_t>(desde),
                       tokens.begin() + static_cast<std::ptrdiff_t>(hasta) + 1,
                       [](const CString& token) { return token.IsEmpty(); });
}

} // namespace

CString UneArgumentos(std::span<const std::string> argumentos)
{
    CString mandato;
    for (const char* separador = ""; const std::string& argumento : argumentos) {
        CString token = argumento;
        token.Replace("\t", kTabEnArgumento);
        mandato += separador;
        mandato += token;
        separador = "\t";
    }
    return mandato;
}

CTokens ParteMandato(const CString& mandato)
{
    CTokens tokens;
    CCadena(mandato).Leetira(kTokens, tokens.data());
    for (CString& token : tokens)
        token.Replace(kTabEnArgumento, "\t");
    return tokens;
}

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
    ReadFileTime();
    m_pszHelpFilePath.Replace(".HLP", ".chm");
    const CTokens tokens = ParteMandato(m_lpCmdLine);
    m_ruta = EligeRuta(tokens);
    switch (m_ruta) {
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
        break;
    }
    return 0;
}

int CCampivaApp::EstadoSalida() const
{
    if (Interrumpida())
        return kHuboError;
    const CGuionMandatos guion = Frontal().Guion();
    const bool dialogos = m_ruta == Ruta::Dialogos;
    if (dialogos && !guion.hay)
        return kHecho;
    if (m_ruta == Ruta::Ninguna || (dialogos && guion.leidos == 0))
        return kNadaPedido;
    if (m_detenido)
        return kDetenido;
    return HuboCajaDeError() || guion.fallidos > 0 ? kHuboError : kHecho;
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
}

void CCampivaApp::EjecutaVexaACatastro(const CTokens& t)
{
    ConDialogo<CVexaACampiva2Dlg>([&](CVexaACampiva2Dlg& dialogo) {
        dialogo.EjecutaLote(t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], LeeEntero(t[9]),
                            LeeEntero(t[10]), LeeEntero(t[11]), nullptr);
    });
}

template <class D, class F>
void CCampivaApp::ConDialogo(F accion)
{
    D dialogo;
    m_pMainWnd = &dialogo;
    accion(dialogo);
    m_detenido = dialogo.Detenido();
    m_pMainWnd = nullptr;
}
