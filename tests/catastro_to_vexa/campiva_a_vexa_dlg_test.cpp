#include <filesystem>

#include "tests/catastro_to_vexa/run_fixture.h"

namespace {

/// The dialog with its protected parts open to a test.
class CDialogoAbierto : public CCampivaAVexaDlg {
public:
    void Abre() { Create(IDD_CAMPIVA_A_VEXA, nullptr); }
    void Pulsa(int boton) { SendMessage(WM_COMMAND, static_cast<WPARAM>(boton), 0); }
    CString Texto(UINT id) { return GetDlgItem(id)->GetWindowText(); }
    void Escribe(UINT id, const CString& texto) { GetDlgItem(id)->SetWindowText(texto); }
    /// Names the input and the tables by their fields' defaults, in the folder.
    void Rellena(const CCarpetaPrueba& carpeta)
    {
        for (const UINT id : {IDC_MODULOS, IDC_TITULARES, IDC_PARCELAS, IDC_SUBPARCELAS,
                              IDC_PARAJES, IDC_COTITULARES})
            Escribe(id, carpeta.En(std::string(std::string_view(Texto(id)))));
        Escribe(IDC_ENTRADA, carpeta.En("entrada.txt"));
    }
};

std::string Ajuste(CWinApp& aplicacion, const char* clave)
{
    return std::string(
        std::string_view(aplicacion.GetProfileString("CampivaAVexa", clave, "(none)")));
}

} // namespace

TEST_F(Traduccion, TellsWhichFilesItCannotUse)
{
    const std::string en(std::string_view(carpeta.En("")));
    const struct {
        const char* motivo;
        const char* carpetaEnMedio; ///< a folder that stands where a file should
        const char* entrada;
        Textos cajas;
    } casos[] = {
        {"no input", "", "falta.txt", {"El archivo " + en + "falta.txt no existe"}},
        {"a folder for an input",
         "entra",
         "entra",
         {"El archivo " + en + "entra no existe\nEs un directorio"}},
        {"a folder for a log", "a.ERR", "a.txt", {"Imposible crear el archivo " + en + "a.ERR"}},
        {"the log would be the input", "", "b.ERR", {"Imposible crear el archivo " + en + "b.ERR"}},
        {"a folder for a table",
         "Modulos.txt",
         "c.txt",
         {"El archivo " + en + "Modulos.txt no se puede crear"}},
    };
    carpeta.Pon("Parajes.txt", "antes");
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        for (const char* nombre : {"a.txt", "b.ERR", "c.txt"})
            carpeta.Pon(nombre, Paraje("00001", "LA ERA"));
        if (*caso.carpetaEnMedio != '\0')
            std::filesystem::create_directory(carpeta.Ruta() / caso.carpetaEnMedio);
        aplicacion.guion.cajas.clear();
        EjecutaLote(caso.entrada);
        Textos errores;
        for (const CCajaVista& caja : aplicacion.guion.cajas)
            if (caja.flags == MB_ICONERROR && caja.titulo == "Error")
                errores.push_back(caja.texto);
        EXPECT_EQ(errores, caso.cajas);
    }
    EXPECT_NE(carpeta.Lee("b.ERR"), "") << "the input that the log would have emptied";
    EXPECT_EQ(carpeta.Lee("Parajes.txt.anterior"), "antes") << "they are of two runs";
    EXPECT_EQ(Filas("Parajes.txt"), 1) << "a table behind the one that can't be created";
    EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
}

TEST_F(Traduccion, NoTableFallsOnTheInput)
{
    carpeta.Pon("Parajes.txt", Paraje("00001", "LA ERA"));
    EjecutaLote("Parajes.txt");
    EXPECT_EQ(carpeta.Lee("Parajes.txt"), Paraje("00001", "LA ERA"));
    EXPECT_EQ(aplicacion.guion.cajas.front().texto,
              "El archivo " + std::string(carpeta.En("Parajes.txt")) + " no se puede crear");
    EXPECT_EQ(Filas("Modulos.txt"), 0) << "the others are written";
}

TEST_F(Traduccion, ShowsTheDefaultsThenWhatIsStored)
{
    {
        CDialogoAbierto nuevo;
        nuevo.Abre();
        EXPECT_EQ(nuevo.Texto(IDC_ENTRADA), CString(""));
        EXPECT_EQ(nuevo.Texto(IDC_COTITULARES), CString("Cotitulares.txt"));
        EXPECT_EQ(nuevo.GetDlgItem(IDC_TIPO_ENTRADA)->GetCurSel(), 0);
        EXPECT_EQ(nuevo.Texto(IDCANCEL), CString("&Salir"));
        EXPECT_FALSE(nuevo.EnMarcha);
    }
    aplicacion.WriteProfileString("CampivaAVexa", "ArchivoCotitulares", "");
    aplicacion.WriteProfileString("CampivaAVexa", "ArchivoParajes", "otro.txt");
    aplicacion.WriteProfileInt("CampivaAVexa", "TipoEntrada", 7);
    CDialogoAbierto otro;
    otro.Abre();
    EXPECT_EQ(otro.Texto(IDC_COTITULARES), CString("")) << "an empty text is stored too";
    EXPECT_EQ(otro.Texto(IDC_PARAJES), CString("otro.txt"));
    EXPECT_EQ(otro.GetDlgItem(IDC_TIPO_ENTRADA)->GetCurSel(), -1) << "an item that isn't there";
}

TEST_F(Traduccion, StoresWhatTheLastReadingOfTheControlsLeft)
{
    const struct {
        const char* motivo;
        void (*antes)(CDialogoAbierto& dialogo);
        const char* guardado;
    } casos[] = {
        {"typed and left at once", [](CDialogoAbierto&) {}, ""},
        {"typed, then a browse that was given up",
         [](CDialogoAbierto& d) { d.Pulsa(IDC_BUSCAR_ENTRADA); }, "escrito.txt"},
        {"typed, then a run", [](CDialogoAbierto& d) { d.Pulsa(IDOK); }, "escrito.txt"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        aplicacion.WriteProfileString("CampivaAVexa", "ArchivoEntrada", "");
        CDialogoAbierto dialogo;
        dialogo.Abre();
        dialogo.Escribe(IDC_ENTRADA, "escrito.txt");
        caso.antes(dialogo);
        dialogo.Pulsa(IDCANCEL);
        EXPECT_TRUE(dialogo.Terminado());
        EXPECT_EQ(Ajuste(aplicacion, "ArchivoEntrada"), caso.guardado);
    }
    EXPECT_EQ(Ajuste(aplicacion, "ArchivoModulos"), "Modulos.txt");
    EXPECT_EQ(Ajuste(aplicacion, "TipoEntrada"), "0");
}

TEST_F(Traduccion, SwitchesItsControlsForTheTimeOfARun)
{
    carpeta.Pon("entrada.txt", Paraje("00001", "LA ERA"));
    CDialogoAbierto dialogo;
    dialogo.Abre();
    dialogo.Rellena(carpeta);
    std::vector<UINT> activos;
    aplicacion.guion.alAtender = [&](CDialog& d, int vez) {
        if (vez != 2)
            return;
        for (CControl& control : d.Controles())
            if (control.IsWindowEnabled() && control.Id() != kSinId)
                activos.push_back(control.Id());
        EXPECT_EQ(d.GetDlgItem(IDCANCEL)->GetWindowText(), CString("Detener"));
        EXPECT_EQ(d.Foco(), UINT{IDCANCEL});
        EXPECT_EQ(d.GetDlgItem(IDC_ESTADO)->GetWindowText(), CString("Leyendo Base de datos"));
    };
    dialogo.Pulsa(IDOK);
    EXPECT_EQ(activos, (std::vector<UINT>{IDC_ESTADO, IDC_PROGRESO, UINT{IDCANCEL}}));
    for (CControl& control : dialogo.Controles())
        EXPECT_TRUE(control.IsWindowEnabled()) << control.Id();
    EXPECT_EQ(dialogo.Texto(IDCANCEL), CString("Salir"))
        << "without its mnemonic after the first run";
    EXPECT_EQ(dialogo.Texto(IDC_ESTADO), CString(" "));
    EXPECT_FALSE(dialogo.Terminado());
}

TEST_F(Traduccion, TellsEachPhaseInItsStatusLine)
{
    const Textos lecturas[] = {{"Leyendo Base de datos", "Registrando parcelas",
                                "Registrando subparcelas", "Registrando titulares"},
                               {"Leyendo Base de datos", "Asignando titularidad"}};
    for (const int tipo : {0, 1}) {
        aplicacion.guion.estados.clear();
        Ejecuta(Paraje("00001", "LA ERA"), tipo);
        Textos fases = lecturas[tipo];
        for (const char* tabla :
             {"titulares", "parcelas", "módulos", "subparcelas", "parajes", "cotitulares"})
            fases.push_back(std::string("Grabando fichero de ") + tabla);
        fases.emplace_back(" ");
        EXPECT_EQ(aplicacion.guion.estados, fases);
    }
}

TEST_F(Traduccion, AsksBeforeItStops)
{
    const std::string entrada = Paraje("00001", "A") + Paraje("00002", "B") + Paraje("00003", "C");
    const struct {
        const char* motivo;
        std::vector<int> clics; ///< pumps at which button 2 is pressed
        std::vector<int> respuestas;
        int parajes;
        int preguntas;
        bool cerrado; ///< the dialog closed behind the run
    } casos[] = {
        {"no, go on", {2}, {IDNO}, 3, 1, false},
        {"yes", {3}, {IDYES}, 1, 1, false},
        {"no, then yes", {2, 4}, {IDNO, IDYES}, 2, 2, false},
        {"yes, and once more while it stops: stored and closed, the run ends all the same",
         {3, 4},
         {IDYES},
         1,
         1,
         true},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon("entrada.txt", entrada);
        carpeta.Pon("Parajes.txt", "antes");
        std::filesystem::remove(carpeta.Ruta() / "Parajes.txt.anterior");
        aplicacion.WriteProfileString("CampivaAVexa", "ArchivoEntrada", "antes");
        CGuion& guion = aplicacion.guion;
        guion.cajas.clear();
        guion.atendidos = 0;
        guion.respuestas = caso.respuestas;
        guion.alAtender = [&](CDialog& dialogo, int vez) {
            if (std::find(caso.clics.begin(), caso.clics.end(), vez) != caso.clics.end())
                dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
        };
        CDialogoAbierto dialogo;
        dialogo.Abre();
        dialogo.Rellena(carpeta);
        dialogo.Pulsa(IDOK);
        EXPECT_EQ(Filas("Parajes.txt"), caso.parajes);
        int preguntas = 0;
        for (const CCajaVista& caja : guion.cajas)
            if (caja.titulo == "Pausa de usuario") {
                ++preguntas;
                EXPECT_EQ(caja.texto, "¿ Quiere detener el proceso ?");
                EXPECT_EQ(caja.flags, 36U);
            }
        EXPECT_EQ(preguntas, caso.preguntas);
        const bool parado = caso.respuestas.back() == IDYES;
        const auto& dicho = guion.escritos.observaciones;
        EXPECT_EQ(dicho.empty() ? "" : ansi::AUtf8(dicho[0]),
                  parado ? "El proceso se detuvo: lo escrito no está completo" : "");
        EXPECT_EQ(carpeta.Lee("Parajes.txt.anterior"), parado ? "antes" : "(no file)");
        EXPECT_EQ(guion.cajas.back().titulo, "Fin del proceso");
        EXPECT_EQ(dialogo.Terminado(), caso.cerrado);
        EXPECT_EQ(Ajuste(aplicacion, "ArchivoEntrada") == "antes", !caso.cerrado);
        guion.alAtender = nullptr;
    }
}

TEST_F(Traduccion, StoresNothingOfABatchRunEvenWhenItIsStoppedTwice)
{
    aplicacion.WriteProfileString("CampivaAVexa", "ArchivoParajes", "antes");
    aplicacion.guion.alAtender = [](CDialog& dialogo, int) {
        dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
    };
    Ejecuta(Paraje("00001", "A"));
    EXPECT_EQ(Ajuste(aplicacion, "ArchivoParajes"), "antes");
    EXPECT_EQ(Filas("Parajes.txt"), 0);
}

TEST_F(Traduccion, AnswersTheProgressMessages)
{
    CDialogoAbierto dialogo;
    dialogo.Abre();
    const auto barra = [&] { return dialogo.GetDlgItem(IDC_PROGRESO)->GetPos(); };
    const struct {
        const char* motivo;
        WPARAM posicion;
        LPARAM total;
        int barra;
    } casos[] = {
        {"truncated", 2, 3, 66},
        {"whole", 9, 9, 100},
        {"nothing of nothing", 0, 0, 0},
        {"something of nothing", 5, 0, 0},
        {"past the end", 9, 3, 100},
        {"a negative total", 5, -10, 0},
        {"a large unsigned position", 3000000000U, 2000000000, 100},
        {"half of a large one", 4000000000U, 2147483647, 100},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(dialogo.SendMessage(WM_AVANCE, caso.posicion, caso.total), 0)
            << "idle means stop";
        EXPECT_EQ(barra(), caso.barra);
    }
    dialogo.EnMarcha = true;
    EXPECT_EQ(dialogo.SendMessage(WM_AVANCE, 1, 2), 1);
    CString texto = "propio";
    EXPECT_EQ(dialogo.SendMessage(WM_ESTADO_TEXTO, reinterpret_cast<WPARAM>(&texto), 0), 1);
    EXPECT_EQ(dialogo.Texto(IDC_ESTADO), texto);
    EXPECT_EQ(barra(), 50) << "a text leaves the bar";
    EXPECT_EQ(dialogo.SendMessage(WM_ESTADO_ID, IDS_GRABANDO_PARAJES, 0), 1);
    EXPECT_EQ(dialogo.Texto(IDC_ESTADO), CString("Grabando fichero de parajes"));
    EXPECT_EQ(barra(), 0) << "a phase empties it";
    const int antes = aplicacion.guion.atendidos;
    EXPECT_EQ(dialogo.SendMessage(WM_LATIDO, 0, 0), 1);
    EXPECT_EQ(aplicacion.guion.atendidos, antes + 1) << "one event is taken, never more";
}

#ifdef __linux__
TEST_F(Traduccion, KeepsAllTablesWhereOneCannotBeWrittenAndIsUsableAgain)
{
    carpeta.Pon("entrada.txt", Paraje("00001", "LA ERA"));
    std::filesystem::create_symlink("/dev/full", carpeta.Ruta() / "Parcelas.txt");
    carpeta.Pon("Titulares.txt", "antes");
    CDialogoAbierto dialogo;
    dialogo.Abre();
    dialogo.Rellena(carpeta);
    dialogo.Pulsa(IDOK);
    ASSERT_EQ(aplicacion.guion.cajas.size(), 1U) << "no summary tells of a success";
    EXPECT_EQ(aplicacion.guion.cajas[0].titulo, "Error");
    EXPECT_EQ(aplicacion.guion.cajas[0].flags, 16U);
    EXPECT_EQ(carpeta.SinRuta(aplicacion.guion.cajas[0].texto),
              "Imposible escribir el archivo Parcelas.txt\nNo queda espacio en el dispositivo");
    EXPECT_EQ(carpeta.Lee("Titulares.txt"), "antes") << "which was whole by then";
    EXPECT_EQ(aplicacion.guion.escritos.log, carpeta.En("entrada.ERR"));
    EXPECT_TRUE(aplicacion.guion.escritos.salidas.empty());
    EXPECT_EQ(carpeta.Cuantos(), 4) << "input, log, a table and the link; no temporary file";
    std::filesystem::remove(carpeta.Ruta() / "Parcelas.txt");
    dialogo.Pulsa(IDOK);
    dialogo.Pulsa(IDOK);
    EXPECT_EQ(aplicacion.guion.cajas.back().titulo, "Fin del proceso");
    EXPECT_EQ(aplicacion.guion.escritos.salidas.size(), 6U);
    EXPECT_EQ(Filas("Parajes.txt"), 1);
}

TEST_F(Traduccion, RefusesTwoOutputsThatAreOneFile)
{
    const struct {
        const char* motivo;
        const char *titulares, *parajes;
    } casos[] = {
        {"two tables of one name", "T.txt", "./T.txt"},
        {"a table that is the log", "T.txt", "entrada.ERR"},
        {"by a link to it", "T.txt", "enlace"},
        {"new ones, by two ways to one folder", "N.txt", "otra/N.txt"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        carpeta.Pon("entrada.txt", Paraje("00001", "LA ERA"));
        carpeta.Pon("entrada.ERR", "antes");
        carpeta.Pon("T.txt", "antes");
        std::error_code hay;
        std::filesystem::create_symlink("T.txt", carpeta.Ruta() / "enlace", hay);
        std::filesystem::create_symlink(".", carpeta.Ruta() / "otra", hay);
        aplicacion.guion.cajas.clear();
        CCampivaAVexaDlg dialogo;
        dialogo.EjecutaLote(carpeta.En("entrada.txt"), carpeta.En("M"), carpeta.En(caso.titulares),
                            carpeta.En("P"), carpeta.En("S"), carpeta.En(caso.parajes),
                            carpeta.En("C"), nullptr);
        ASSERT_EQ(aplicacion.guion.cajas.size(), 1U);
        EXPECT_EQ(aplicacion.guion.cajas[0].flags, 16U);
        EXPECT_EQ(carpeta.Lee("T.txt") + carpeta.Lee("entrada.ERR"), "antesantes");
        EXPECT_EQ(carpeta.Cuantos(), 5);
    }
}
#endif
