#include "shell/translation_choice_dialog.h"

#include "platform/cwinapp.h"
#include "resources/resource_ids.h"

namespace {

constexpr const char* kSeccion = "Campiva";
constexpr const char* kClave = "TipoTraduccion";

} // namespace

CTipoTraduccionDlg::CTipoTraduccionDlg() : CDialog(IDD_TIPO_TRADUCCION) {}

BOOL CTipoTraduccionDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    CenterWindow();
    SetIcon(IDR_ICONO);
    TipoTraduccion = AfxGetApp()->GetProfileInt(kSeccion, kClave, 0);
    UpdateData(false);
    return 1;
}

void CTipoTraduccionDlg::DoDataExchange(CDataExchange* dx)
{
    DDX_Radio(dx, IDC_DE_CATASTRO_A_VEXA, TipoTraduccion);
}

void CTipoTraduccionDlg::OnOK()
{
    UpdateData(true);
    AfxGetApp()->WriteProfileInt(kSeccion, kClave, TipoTraduccion);
    CDialog::OnOK();
}
