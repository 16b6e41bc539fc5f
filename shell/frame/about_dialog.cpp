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
    GetDlgItem(IDC_NOMBRE)->SetWindowText(aplicacion.GetAppProductName());
    GetDlgItem(IDC_DESCRIPCION)->SetWindowText(aplicacion.GetAppDescription());
    GetDlgItem(IDC_VERSION)->SetWindowText(aplicacion.GetAppVersion());
    GetDlgItem(IDC_COPYRIGHT)->SetWindowText(aplicacion.GetAppCopyright());
    GetDlgItem(IDC_AUTOR)->SetWindowText(aplicacion.GetAppCompany());
    return 1;
}
