#include "shell/campiva_app.h"

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "shell/command_line.h"
#include "shell/translation_choice_dialog.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

BOOL CCampivaApp::InitInstance()
{
    InitCommonControls();
    CVersionApp::InitInstance();
    SetRegistryKey("VexaSoft");
    ReadResourceInformation();
    ReadFileTime();
    m_pszHelpFilePath.Replace(".HLP", ".chm");
    const CTokens t = ParteMandato(m_lpCmdLine);
    switch (EligeRuta(t)) {
    case Ruta::CatastroAVexa:
        ConDialogo<CCampivaAVexaDlg>([&](auto& dialogo) {
            dialogo.EjecutaLote(t[1], t[2], t[3], t[4], t[5], t[6], t[7], nullptr);
        });
        break;
    case Ruta::VexaACatastro:
        ConDialogo<CVexaACampiva2Dlg>([&](auto& dialogo) {
            dialogo.EjecutaLote(t[1], t[2], t[3], t[4], t[5], t[6], t[7], t[8], LeeEntero(t[9]),
                                LeeEntero(t[10]), LeeEntero(t[11]), nullptr);
        });
        break;
    case Ruta::Dialogos:
        MuestraDialogos();
        break;
    case Ruta::Ninguna:
        break;
    }
    return 0;
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

template <class D, class F>
void CCampivaApp::ConDialogo(F accion)
{
    D dialogo;
    m_pMainWnd = &dialogo;
    accion(dialogo);
    m_pMainWnd = nullptr;
}
