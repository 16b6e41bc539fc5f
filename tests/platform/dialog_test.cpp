#include "platform/dialog.h"

#include <climits>

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
    Dialogo() { aplicacion.Arranca(guion, {.dialogos = kPlantillas}, {}, {}); }

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
}

TEST_F(Dialogo, ARadioGroupIsCountedFromItsFirstButtonToTheNextGroup)
{
    CDialogoPrueba dialogo;
    dialogo.Create(7, nullptr);
    const auto marcas = [&] {
        std::string texto;
        for (const UINT id : {20U, 21U, 22U, 30U})
            texto += std::to_string(dialogo.GetDlgItem(id)->GetCheck());
        return texto;
    };
    constexpr struct {
        int valor;
        const char* marcas; ///< the fourth button stands in the group behind it
    } kCasos[] = {{0, "1001"}, {2, "0011"}, {1, "0101"}, {3, "0001"}, {-1, "0001"}};
    dialogo.GetDlgItem(30)->SetCheck(1);
    for (const auto& caso : kCasos) {
        dialogo.radio = caso.valor;
        dialogo.UpdateData(false);
        EXPECT_EQ(marcas(), caso.marcas);
        dialogo.UpdateData(true);
        EXPECT_EQ(dialogo.radio, caso.valor < 3 ? caso.valor : -1);
    }
}

TEST_F(Dialogo, AListTakesNoItemThatItDoesNotHave)
{
    CDialogoPrueba dialogo;
    dialogo.Create(7, nullptr);
    for (const auto& [pedido, queda] :
         {std::pair{0, 0}, {1, 1}, {2, -1}, {INT_MAX, -1}, {-1, -1}, {INT_MIN, -1}}) {
        dialogo.lista = pedido;
        dialogo.UpdateData(false);
        EXPECT_EQ(dialogo.GetDlgItem(11)->GetCurSel(), queda) << pedido;
    }
    dialogo.GetDlgItem(10)->SetCurSel(0);
    EXPECT_EQ(dialogo.GetDlgItem(10)->GetCurSel(), -1) << "no list at all";
}

TEST_F(Dialogo, AFieldWithoutItsControlStaysAsItWas)
{
    CDialogoPrueba dialogo;
    dialogo.Create(7, nullptr);
    for (const bool guarda : {true, false}) {
        CDataExchange dx(dialogo, guarda);
        CString texto = "antes";
        int marca = 5;
        int seleccion = 6;
        CProgressCtrl barra;
        DDX_Text(&dx, 99, texto);
        DDX_Check(&dx, 99, marca);
        DDX_CBIndex(&dx, 99, seleccion);
        DDX_Control(&dx, 99, barra);
        EXPECT_EQ(texto, CString("antes"));
        EXPECT_EQ(marca, 5);
        EXPECT_EQ(seleccion, 6);
        EXPECT_EQ(barra.SendMessage(PBM_SETPOS, 50, 0), 0);
    }
}

TEST_F(Dialogo, TellsTheFrontEndWhatWasSet)
{
    CDialogoPrueba dialogo;
    dialogo.Create(7, nullptr);
    std::vector<UINT> vistos;
    guion.alReflejar = [&](const CDialog& de, const CControl& control) {
        EXPECT_EQ(&de, &dialogo);
        vistos.push_back(control.Id());
    };
    dialogo.GetDlgItem(10)->SetWindowText("Eva");
    dialogo.GetDlgItem(10)->SetWindowText("Eva"); // a text that stays is not shown again
    dialogo.GetDlgItem(11)->SetCurSel(0);
    dialogo.GetDlgItem(12)->SetCheck(1);
    dialogo.GetDlgItem(1)->EnableWindow(false);
    EXPECT_EQ(dialogo.barra.SendMessage(PBM_SETPOS, 40, 0), 0);
    EXPECT_EQ(dialogo.barra.SendMessage(PBM_SETPOS, 50, 0), 40) << "where it was";
    EXPECT_EQ(dialogo.barra.SendMessage(PBM_SETPOS + 1, 90, 0), 0) << "another message";
    dialogo.GotoDlgCtrl(22);
    dialogo.GotoDlgCtrl(99);
    EXPECT_EQ(vistos, (std::vector<UINT>{10, 11, 12, 1, 40, 40, 22}));
    EXPECT_EQ(dialogo.GetDlgItem(40)->GetPos(), 50);
}

TEST_F(Dialogo, BeginsAnewEachTimeItIsShown)
{
    CDialogoPrueba dialogo;
    int vez = 0;
    guion.alMostrar = [&](CDialog& d) {
        EXPECT_FALSE(d.Terminado());
        EXPECT_TRUE(d.GetDlgItem(1)->IsWindowEnabled());
        d.GetDlgItem(1)->EnableWindow(false);
        dialogo.barra.SendMessage(PBM_SETPOS, 30, 0);
        EXPECT_EQ(d.GetDlgItem(40)->GetPos(), 30) << "the bar of this time";
        if (++vez == 1)
            d.EndDialog(7);
    };
    EXPECT_EQ(dialogo.DoModal(), 7);
    EXPECT_EQ(dialogo.DoModal(), IDCANCEL) << "the front end came back without a result";
    EXPECT_EQ(vez, 2);
}

namespace {

class CVentanaConMapa : public CDialog {
public:
    CVentanaConMapa() : CDialog(7) {}

    std::string visto;

private:
    void OnUno() { visto += "uno "; }
    void OnOtro() { visto += "otro "; }
    void OnFalla() { throw CString("falla"); }
    void WinHelp(WPARAM /*dato*/, UINT /*mandato*/) override { visto += "ayuda "; }
    LRESULT OnMensaje(WPARAM wParam, LPARAM lParam)
    {
        visto += std::to_string(wParam) + "," + std::to_string(lParam) + " ";
        return -5;
    }
    std::span<const CEntradaMensaje> GetMessageMap() const override
    {
        using D = CVentanaConMapa;
        static constexpr CEntradaMensaje kMapa[] = {
            EnMandato<&D::OnUno>(100),      EnMandato<&D::OnOtro>(100),
            EnMandato<&D::OnOtro>(101),     EnMandato<&D::OnFalla>(102),
            EnMandato<&D::OnHelp>(ID_HELP), EnMensaje<&D::OnMensaje>(23001),
        };
        return kMapa;
    }
};

} // namespace

TEST_F(Dialogo, AMessageGoesToTheFirstLineOfTheMapThatFits)
{
    constexpr struct {
        const char* motivo;
        UINT mensaje;
        WPARAM wParam;
        LPARAM lParam;
        LRESULT resultado;
        const char* visto;
    } kCasos[] = {
        {"two lines for one command", WM_COMMAND, 100, 0, 0, "uno "},
        {"the command tells the lines apart", WM_COMMAND, 101, 0, 0, "otro "},
        {"a command of nobody", WM_COMMAND, 7, 0, 0, ""},
        {"the button of a map that names none", WM_COMMAND, IDOK, 0, 0, ""},
        {"help", WM_COMMAND, ID_HELP, 0, 0, "ayuda "},
        {"a message with its values and its result", 23001, 100, -2, -5, "100,-2 "},
        {"a message of nobody", 23002, 100, 0, 0, ""},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CVentanaConMapa ventana;
        EXPECT_EQ(ventana.SendMessage(caso.mensaje, caso.wParam, caso.lParam), caso.resultado);
        EXPECT_EQ(ventana.visto, caso.visto);
    }
    CVentanaConMapa ventana;
    EXPECT_THROW(ventana.SendMessage(WM_COMMAND, 102, 0), CString) << "the sender hears of it";
}

TEST_F(Dialogo, ItsOwnMapReachesTheHandlerOfTheDerivedClass)
{
    struct CAceptaOtraCosa : CDialog {
        using CDialog::CDialog;
        void OnOK() override { EndDialog(9); }
    };
    guion.alMostrar = [](CDialog& d) { d.SendMessage(WM_COMMAND, IDOK, 0); };
    EXPECT_EQ(CAceptaOtraCosa(7).DoModal(), 9);
}

TEST_F(Dialogo, ShowsNothingWithoutATemplate)
{
    guion.alMostrar = [](CDialog&) { ADD_FAILURE() << "nothing to show"; };
    CDialogoPrueba sinPlantilla(8);
    EXPECT_EQ(sinPlantilla.DoModal(), -1);
    EXPECT_FALSE(sinPlantilla.Create(8, nullptr));
    EXPECT_EQ(sinPlantilla.GetDlgItem(10), nullptr);
}

TEST_F(Dialogo, TheFileBoxKeepsItsPathUnlessOneIsPicked)
{
    constexpr const char* kFiltros = "Todos los ficheros (*.*)|*.*||";
    CFileDialog caja("antes.txt", OFN_FILEMUSTEXIST, kFiltros);
    EXPECT_EQ(caja.DoModal(), IDCANCEL);
    EXPECT_EQ(caja.GetPathName(), CString("antes.txt"));
    guion.fichero = "/a/ahora.txt";
    EXPECT_EQ(caja.DoModal(), IDOK);
    EXPECT_EQ(caja.GetPathName(), CString("/a/ahora.txt"));
    EXPECT_EQ(guion.filtros, kFiltros);
}

TEST_F(Dialogo, AClickDoesWhatItDoesToTheControl)
{
    CDialogoPrueba dialogo;
    ASSERT_TRUE(dialogo.Create(7, nullptr));
    const auto marcas = [&] {
        std::string texto;
        for (const CControl& control : dialogo.Controles())
            texto += control.GetCheck() != 0 ? 'x' : '.';
        return texto;
    };
    const struct {
        const char* motivo;
        UINT id;
        bool activo;
        const char* marcas; ///< of all controls, in order
    } casos[] = {
        {"a mark goes", 12, true, "......x..."},
        {"and comes", 12, true, "...x..x..."},
        {"not on one that is switched off", 12, false, "...x..x..."},
        {"a radio button takes it from its group", 20, true, "...xx....."},
        {"and keeps it", 20, true, "...xx....."},
        {"another group has its own", 30, true, "...xx..x.."},
        {"nothing to a field", 10, true, "...xx..x.."},
        {"nor to the bar", 40, true, "...xx..x.."},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CControl& control = *dialogo.GetDlgItem(caso.id);
        control.EnableWindow(caso.activo);
        dialogo.Pulsa(control);
        control.EnableWindow(true);
        EXPECT_EQ(marcas(), caso.marcas);
        EXPECT_FALSE(dialogo.Terminado());
    }
    dialogo.Pulsa(*dialogo.GetDlgItem(1));
    EXPECT_TRUE(dialogo.Terminado()) << "a button sends its command";
}

TEST_F(Dialogo, ItsControlsHaveNamesForWhoDoesNotSeeIt)
{
    static constexpr CPlantillaControl kNombrados[] = {
        {Grupo, kSinId, "Entradas", 0, 0, 100, 30}, {Edicion, 1, "", 5, 5, 50, 10},
        {Boton, 2, "&Buscar...", 60, 5, 30, 10},    {Texto, kSinId, "Parajes", 5, 40, 20, 10},
        {Edicion, 3, "", 30, 40, 20, 10},           {Boton, 4, "&Buscar...", 60, 40, 30, 10},
        {Casilla, 5, "&Modificar", 5, 60, 50, 10},  {Progreso, 6, "Avance", 5, 80, 50, 10},
    };
    static constexpr CPlantillaDialogo kPlantilla[] = {{8, "Nombres", 100, 100, kNombrados}};
    aplicacion.Arranca(guion, {.dialogos = kPlantilla}, {}, {});
    CDialogoPrueba dialogo(8);
    ASSERT_TRUE(dialogo.Create(8, nullptr));
    const struct {
        UINT id;
        const char* nombre;
    } casos[] = {
        {1, "Entradas"},          {2, "Buscar... Entradas"}, {3, "Parajes"},
        {4, "Buscar... Parajes"}, {5, "Modificar"},          {6, "Avance"},
    };
    for (const auto& [id, nombre] : casos)
        EXPECT_EQ(dialogo.NombreDe(*dialogo.GetDlgItem(id)), CString(nombre)) << id;
}
