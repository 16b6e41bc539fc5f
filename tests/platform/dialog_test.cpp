#include "platform/dialog.h"

#include <gtest/gtest.h>

#include "platform/ansi.h"
#include "tests/support/scripted_front_end.h"

namespace {

using enum ClaseControl;

constexpr const char* kElementos[] = {"uno", "dos"};
constexpr CPlantillaControl kControles[] = {
    {Texto, kSinId, "Nombre", 0, 0, 1, 1},
    {Edicion, 10, "", 0, 0, 1, 1},
    {Lista, 11, "", 0, 0, 1, 1, kElementos},
    {Casilla, 12, "&Sí"_ansi, 0, 0, 1, 1},
    {Radio, 20, "a", 0, 0, 1, 1, {}, true},
    {Radio, 21, "b", 0, 0, 1, 1},
    {Radio, 22, "c", 0, 0, 1, 1},
    {Radio, 30, "otro grupo", 0, 0, 1, 1, {}, true},
    {Progreso, 40, "", 0, 0, 1, 1},
    {BotonPorDefecto, 1, "&Aceptar", 0, 0, 1, 1},
};
constexpr CPlantillaDialogo kPlantillas[] = {{7, "Prueba", 10, 10, kControles}};

class CDialogoPrueba : public CDialog {
public:
    explicit CDialogoPrueba(UINT plantilla = 7) : CDialog(plantilla) {}

    CString nombre = "Ana";
    int lista = 1;
    int casilla = 1;
    int radio = 2;
    CProgressCtrl barra;

protected:
    void DoDataExchange(CDataExchange* dx) override
    {
        DDX_Control(dx, 40, barra);
        DDX_Text(dx, 10, nombre);
        DDX_CBIndex(dx, 11, lista);
        DDX_Check(dx, 12, casilla);
        DDX_Radio(dx, 20, radio);
    }
};

class Dialogo : public testing::Test {
protected:
    Dialogo() { aplicacion.Arranca(guion, CRecursos({}, kPlantillas, {}), {}, {}); }

    CGuion guion;
    CWinApp aplicacion;
};

} // namespace

TEST_F(Dialogo, CarriesValuesToItsControlsAndBack)
{
    CDialogoPrueba dialogo;
    ASSERT_TRUE(dialogo.Create(7, nullptr));
    EXPECT_EQ(dialogo.GetDlgItem(10)->GetWindowText(), CString("Ana"));
    EXPECT_EQ(dialogo.GetDlgItem(11)->GetCurSel(), 1);
    EXPECT_EQ(dialogo.GetDlgItem(22)->GetCheck(), 1);
    dialogo.GetDlgItem(10)->SetWindowText("Eva");
    dialogo.GetDlgItem(11)->SetCurSel(0);
    dialogo.GetDlgItem(12)->SetCheck(0);
    dialogo.GetDlgItem(22)->SetCheck(0);
    dialogo.GetDlgItem(30)->SetCheck(1);
    dialogo.UpdateData(true);
    EXPECT_EQ(dialogo.nombre, CString("Eva"));
    EXPECT_EQ(dialogo.lista, 0);
    EXPECT_EQ(dialogo.casilla, 0);
    EXPECT_EQ(dialogo.radio, -1) << "none of its group; the other group doesn't count";
    dialogo.radio = 7;
    dialogo.lista = 2;
    dialogo.casilla = -3;
    dialogo.UpdateData(false);
    dialogo.UpdateData(true);
    EXPECT_EQ(dialogo.radio, -1);
    EXPECT_EQ(dialogo.lista, -1) << "an item that isn't there";
    EXPECT_EQ(dialogo.casilla, 1) << "anything but 0 is a mark";
}

TEST_F(Dialogo, TheBarCutsWhatIsOutside)
{
    CDialogoPrueba dialogo;
    dialogo.Create(7, nullptr);
    for (const auto& [posicion, queda] : {std::pair{50, 50}, {101, 100}, {-1, 0}}) {
        dialogo.barra.SendMessage(PBM_SETPOS, static_cast<WPARAM>(posicion), 0);
        EXPECT_EQ(dialogo.GetDlgItem(40)->GetPos(), queda);
    }
}

TEST_F(Dialogo, EndsAsItsButtonsSay)
{
    const struct {
        const char* motivo;
        WPARAM boton;
        int resultado;
        const char* nombre;
    } casos[] = {
        {"accepted: the controls are read", IDOK, IDOK, "tecleado"},
        {"cancelled: they aren't", IDCANCEL, IDCANCEL, "Ana"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        guion.alMostrar = [&](CDialog& d) {
            d.GetDlgItem(10)->SetWindowText("tecleado");
            EXPECT_EQ(d.SendMessage(WM_COMMAND, 99, 0), 0) << "a command of nobody";
            EXPECT_FALSE(d.Terminado());
            d.SendMessage(WM_COMMAND, caso.boton, 0);
            EXPECT_TRUE(d.Terminado());
        };
        CDialogoPrueba dialogo;
        EXPECT_EQ(dialogo.DoModal(), caso.resultado);
        EXPECT_EQ(dialogo.nombre, CString(caso.nombre));
    }
    CDialogoPrueba ninguna(8);
    EXPECT_EQ(ninguna.DoModal(), -1) << "no such template";
}
