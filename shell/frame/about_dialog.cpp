#include "shell/frame/about_dialog.h"

#include "platform/cwinapp.h"
#include "resources/resource_ids.h"
#include "vexa_libs/cversion_app.h"

CAcercaDeDlg::CAcercaDeDlg() : CDialog(IDD_ACERCA_DE) {}

BOOL CAcercaDeDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    CenterWindow();
    SetIcon(IDR_ICONO);
    const auto& aplicacion = dynamic_cast<const CVersionApp&>(*AfxGetApp());
    const struct {
        UINT control;
        CString valor;
    } valores[] = {
        {IDC_NOMBRE, aplicacion.GetAppProductName()},
        {IDC_DESCRIPCION, aplicacion.GetAppDescription()},
        {IDC_VERSION, aplicacion.GetAppVersion()},
        {IDC_COPYRIGHT, aplicacion.GetAppCopyright()},
        {IDC_AUTOR, aplicacion.GetAppCompany()},
    };
    for (const auto& [control, valor] : valores)
        if (CControl* destino = GetDlgItem(control))
            destino->SetWindowText(valor);
    return 1;
}
