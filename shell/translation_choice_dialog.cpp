#include "shell/translation_choice_dialog.h"

#include "platform/cwinapp.h"
#include "platform/files/cfile_exception.h"
#include "resources/resource_ids.h"
#include "shell/frame/box_texts.h"

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
    try {
        TipoTraduccion = AfxGetApp()->GetProfileInt(kSeccion, kClave, 0);
    } catch (const CFileException& fallo) {
        TipoTraduccion = 0;
        AfxGetApp()->CajaDeAjustes(cajas::kNoSeLeenAjustes, fallo);
    }
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
