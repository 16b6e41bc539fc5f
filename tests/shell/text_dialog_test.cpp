#include "platform/terminal/text_dialog.h"

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

TEST(DialogoTexto, CarriesOutItsCommands)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    CVexaACampiva2Dlg dialogo;
    dialogo.Create(IDD_VEXA_A_CAMPIVA2, nullptr);
    dialogo.GetDlgItem(IDC_ORTOS)->EnableWindow(false);
    const struct {
        const char* mandato;
        UINT control; ///< whose value is looked at then
        const char* valor;
        int marca;
        bool queja;
    } casos[] = {
        {"1013=a b.txt", IDC_MODULOS, "a b.txt", 0, false},
        {"  1013 =  dos =2 ", IDC_MODULOS, "  dos =2 ", 0, false},
        {"1013=", IDC_MODULOS, "", 0, false},
        {"1013", IDC_MODULOS, "", 0, true},
        {"1005=x", IDC_ORTOS, "", 0, true},
        {"1028", IDC_MODIFICAR, "", 1, false},
        {" 1028 ", IDC_MODIFICAR, "", 0, false},
        {"1028=1", IDC_MODIFICAR, "", 1, false},
        {"1028=1", IDC_MODIFICAR, "", 1, false},
        {"1028= 0", IDC_MODIFICAR, "", 0, false},
        {"1028=sí", IDC_MODIFICAR, "", 0, true},
        {"1008=x", IDC_ESTADO, "", 0, true},
        {"1=x", IDOK, "", 0, true},
        {"99", IDC_ESTADO, "", 0, true},
        {"65535=x", IDC_ESTADO, "", 0, true},
        {"4294967299=x", IDC_TREN, "", 0, true},
        {"-1", IDC_ESTADO, "", 0, true},
        {"hola", IDC_ESTADO, "", 0, true},
        {"=", IDC_ESTADO, "", 0, true},
        {"? x", IDC_ESTADO, "", 0, true},
        {"", IDC_ESTADO, "", 0, false},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.mandato);
        const auto respuesta = EjecutaMandato(dialogo, caso.mandato);
        EXPECT_EQ(respuesta.queja, caso.queja);
        EXPECT_EQ(respuesta.texto.empty(), !caso.queja);
        const CControl& control = *dialogo.GetDlgItem(caso.control);
        if (control.Plantilla().clase == ClaseControl::Edicion) {
            EXPECT_EQ(control.GetWindowText(), CString(caso.valor));
        }
        EXPECT_EQ(control.GetCheck(), caso.marca);
    }
    EXPECT_EQ(EjecutaMandato(dialogo, "?").texto, PintaDialogo(dialogo));
    EXPECT_EQ(EjecutaMandato(dialogo, "?1003").ayuda, IDC_TREN);
    EXPECT_TRUE(aplicacion.guion.cajas.empty());
    EjecutaMandato(dialogo, "2");
    EXPECT_TRUE(dialogo.Terminado());
}
