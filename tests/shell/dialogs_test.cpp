#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cadastre/message_catalogue.h"
#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "platform/ansi.h"
#include "platform/html_help.h"
#include "resources/program_resources.h"
#include "shell/campiva_app.h"
#include "shell/exit_status.h"
#include "shell/translation_choice_dialog.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

namespace {

std::string LeeAyuda(const char* nombre)
{
    std::ifstream fichero(std::string(HELP_SOURCES) + "/" + nombre, std::ios::binary);
    std::ostringstream texto;
    texto << fichero.rdbuf();
    return texto.str();
}

bool SeTocan(const CPlantillaControl& a, const CPlantillaControl& b)
{
    return a.x < b.x + b.ancho && b.x < a.x + a.ancho && a.y < b.y + b.alto && b.y < a.y + a.alto;
}

/// The place of a control; of a list, without what drops down.
CPlantillaControl Cerrado(CPlantillaControl control)
{
    constexpr short kAltoLista = 14;
    if (control.clase == ClaseControl::Lista)
        control.alto = kAltoLista;
    return control;
}

} // namespace

TEST(Plantillas, NothingIsCutAndNothingOverlaps)
{
    for (const CPlantillaDialogo& dialogo : RecursosDelPrograma().dialogos) {
        SCOPED_TRACE(dialogo.titulo);
        for (std::size_t i = 0; i < dialogo.controles.size(); ++i) {
            const CPlantillaControl a = Cerrado(dialogo.controles[i]);
            EXPECT_TRUE(a.x >= 7 && a.x + a.ancho <= dialogo.ancho - 5) << a.texto << a.id;
            EXPECT_TRUE(a.y >= 3 && a.y + a.alto <= dialogo.alto - 5) << a.texto << a.id;
            for (std::size_t k = i + 1; k < dialogo.controles.size(); ++k) {
                const CPlantillaControl b = Cerrado(dialogo.controles[k]);
                const bool grupo = a.clase == ClaseControl::Grupo || b.clase == ClaseControl::Grupo;
                EXPECT_FALSE(!grupo && SeTocan(a, b))
                    << a.id << a.texto << " and " << b.id << b.texto;
            }
        }
    }
}

TEST(Plantillas, AMnemonicAndAnIdLeadToOneControl)
{
    for (const CPlantillaDialogo& dialogo : RecursosDelPrograma().dialogos) {
        SCOPED_TRACE(dialogo.titulo);
        std::set<char> letras;
        std::set<UINT> ids;
        for (const CPlantillaControl& control : dialogo.controles) {
            const std::string_view texto = control.texto;
            if (const auto marca = texto.find('&'); marca != std::string_view::npos) {
                EXPECT_TRUE(letras.insert(static_cast<char>(texto[marca + 1] | 0x20)).second)
                    << texto;
            }
            EXPECT_TRUE(control.id == kSinId || ids.insert(control.id).second) << control.id;
        }
    }
}

TEST(Ayuda, TellsOfEveryControlAndEveryMessage)
{
    const std::string textos = LeeAyuda("Ayuda IDC.txt");
    for (const CPlantillaDialogo& dialogo : RecursosDelPrograma().dialogos) {
        for (const CPlantillaControl& control : dialogo.controles) {
            const bool pide = dialogo.id != IDD_ACERCA_DE && control.id != kSinId &&
                              control.clase != ClaseControl::Imagen;
            EXPECT_TRUE(!pide || !TextoDeTema(textos, control.id).empty()) << control.id;
        }
    }
    // The words of a message, some of which no run raises, with their values left out.
    std::string mensajes =
        std::regex_replace(LeeAyuda("mensajes.html"), std::regex("<i>[^<]*</i>"), "%");
    std::replace(mensajes.begin(), mensajes.end(), '\n', ' ');
    const std::regex formas("% ?[0-9.]*(lf|[dsc])");
    for (const CMensaje& mensaje : Catalogo()) {
        const std::string texto = mensaje.texto;
        if (texto.find_first_of("0123456789") != 1)
            continue;
        EXPECT_THAT(mensajes, testing::HasSubstr("<a name=\"" + texto.substr(0, 4) + "\">"));
        std::string palabras = std::regex_replace(ansi::AUtf8(texto), formas, "%");
        palabras.resize(palabras.find_last_not_of('\n') + 1);
        EXPECT_THAT(mensajes, testing::HasSubstr("<p><tt>" + palabras + "</tt></p>"));
    }
}

TEST(RutaDeDialogos, TheChoiceLeadsToItsDialogAndIsRemembered)
{
    const struct {
        const char* motivo;
        int guardado; ///< -9: nothing is stored
        int marcado;  ///< button marked at first, -1 for none
        UINT elige;   ///< 0: nobody touches the buttons
        int cierra;
        const char* titulo; ///< of the dialog shown then, empty for none
        int queda;          ///< stored then
    } casos[] = {
        {"nothing stored", -9, 0, 0, IDOK, "Catastro campiva a Vexa", 0},
        {"the second", -9, 0, IDC_DE_VEXA_A_CATASTRO, IDOK, "Vexa a Catastro campiva", 1},
        {"the third", 1, 1, IDC_DE_VEXA_A_INFOGRAF, IDOK, "Vexa a Infograf", 2},
        {"what was accepted last", 2, 2, 0, IDOK, "Vexa a Infograf", 2},
        {"given up", 0, 0, IDC_DE_VEXA_A_INFOGRAF, IDCANCEL, "", 0},
        {"out of range: none is marked, and nothing is shown", 7, -1, 0, IDOK, "", -1},
        {"below it, and one chosen", -3, -1, IDC_DE_CATASTRO_A_VEXA, IDOK,
         "Catastro campiva a Vexa", 0},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        if (caso.guardado != -9)
            CAplicacionPrueba().WriteProfileInt("Campiva", "TipoTraduccion", caso.guardado);
        CCampivaApp aplicacion;
        CGuion guion;
        std::vector<std::string> titulos;
        guion.alMostrar = [&](CDialog& dialogo) {
            titulos.push_back(ansi::AUtf8(dialogo.Plantilla().titulo));
            EXPECT_EQ(dialogo.Icono(), IDR_ICONO);
            if (auto* eleccion = dynamic_cast<CTipoTraduccionDlg*>(&dialogo)) {
                EXPECT_EQ(aplicacion.m_pMainWnd, nullptr);
                EXPECT_EQ(eleccion->TipoTraduccion,
                          caso.marcado == -1 ? caso.guardado : caso.marcado);
                for (int i = 0; i < 3; ++i) {
                    const UINT id = IDC_DE_CATASTRO_A_VEXA + static_cast<UINT>(i);
                    EXPECT_EQ(dialogo.GetDlgItem(id)->GetCheck(), i == caso.marcado ? 1 : 0);
                }
                dialogo.SendMessage(WM_COMMAND, ID_HELP, 0); // the application's to answer
                if (caso.elige != 0)
                    dialogo.Pulsa(*dialogo.GetDlgItem(caso.elige));
                dialogo.Pulsa(*dialogo.GetDlgItem(static_cast<UINT>(caso.cierra)));
            } else {
                EXPECT_EQ(aplicacion.m_pMainWnd, &dialogo);
                dialogo.Pulsa(*dialogo.GetDlgItem(IDCANCEL));
            }
            EXPECT_TRUE(dialogo.Terminado());
        };
        aplicacion.Arranca(guion, RecursosDelPrograma(), {}, "campiva.HLP");
        EXPECT_EQ(guion.ayudas, std::vector<std::string>{"campiva.chm"});
        ASSERT_FALSE(titulos.empty());
        EXPECT_EQ(titulos.front(), "Campiva");
        EXPECT_EQ(titulos.size() > 1 ? titulos[1] : "", caso.titulo);
        EXPECT_EQ(EstadoSalida(aplicacion), estado::kHecho);
        EXPECT_EQ(aplicacion.GetProfileInt("Campiva", "TipoTraduccion", -9), caso.queda);
        EXPECT_EQ(aplicacion.m_pMainWnd, nullptr);
    }
}

#ifndef _WIN32 // where the settings are a file
TEST(RutaDeDialogos, TheFirstIsMarkedWhereNothingCanBeRead)
{
    const CCarpetaPrueba carpeta;
    std::filesystem::create_directories(carpeta.Ruta() / "config/VexaSoft/Campiva.ini");
    CCampivaApp aplicacion;
    CGuion guion;
    std::vector<std::string> titulos;
    guion.alMostrar = [&](CDialog& dialogo) {
        titulos.push_back(ansi::AUtf8(dialogo.Plantilla().titulo));
        dialogo.Pulsa(*dialogo.GetDlgItem(titulos.size() == 1 ? IDOK : IDCANCEL));
    };
    aplicacion.Arranca(guion, RecursosDelPrograma(), {}, "campiva.HLP");
    EXPECT_EQ(titulos, (std::vector<std::string>{"Campiva", "Catastro campiva a Vexa"}));
    ASSERT_FALSE(guion.cajas.empty());
    EXPECT_EQ(guion.cajas[0].titulo, "Ajustes");
}
#endif

namespace {

/// What each translation's dialog is to have in common, tried on all three.
template <class D>
class Marco : public testing::Test {
};

template <class D>
class CAbierto : public D {
public:
    using D::Describe;
};

template <class D>
constexpr UINT kPlantilla = 0;
template <>
constexpr UINT kPlantilla<CCampivaAVexaDlg> = IDD_CAMPIVA_A_VEXA;
template <>
constexpr UINT kPlantilla<CVexaACampiva2Dlg> = IDD_VEXA_A_CAMPIVA2;
template <>
constexpr UINT kPlantilla<CVexaAInfografDlg> = IDD_VEXA_A_INFOGRAF;

using Traducciones = testing::Types<CCampivaAVexaDlg, CVexaACampiva2Dlg, CVexaAInfografDlg>;
TYPED_TEST_SUITE(Marco, Traducciones);

} // namespace

TYPED_TEST(Marco, KeepsAllItsFieldsFromOneUseToTheNext)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    const auto valores = [&](CDialog& dialogo) {
        std::string texto;
        for (const CControl& control : dialogo.Controles())
            if (control.Plantilla().clase == ClaseControl::Edicion ||
                control.Plantilla().clase == ClaseControl::Casilla ||
                control.Plantilla().clase == ClaseControl::Lista)
                texto += ansi::AUtf8(control.GetWindowText()) + std::to_string(control.GetCheck()) +
                         std::to_string(control.GetCurSel()) + "|";
        return texto;
    };
    std::string antes;
    {
        TypeParam dialogo;
        dialogo.Create(kPlantilla<TypeParam>, nullptr);
        for (CControl& control : dialogo.Controles()) {
            if (control.Plantilla().clase == ClaseControl::Edicion)
                control.SetWindowText(std::to_string(control.Id()) + " ñ=[x]");
            if (control.Plantilla().clase == ClaseControl::Casilla)
                dialogo.Pulsa(control);
            control.SetCurSel(1);
        }
        antes = valores(dialogo);
        dialogo.UpdateData(true); // as a run does at its start
        dialogo.Pulsa(*dialogo.GetDlgItem(IDCANCEL));
        EXPECT_TRUE(dialogo.Terminado());
    }
    TypeParam otro;
    otro.Create(kPlantilla<TypeParam>, nullptr);
    EXPECT_EQ(valores(otro), antes);
}

TYPED_TEST(Marco, BrowsesForEachFieldWithItsFilter)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    CAbierto<TypeParam> dialogo;
    dialogo.Create(kPlantilla<TypeParam>, nullptr);
    const auto campos = dialogo.Describe().campos;
    for (const auto& busqueda : dialogo.Describe().busquedas) {
        SCOPED_TRACE(busqueda.boton);
        const auto campo = std::find_if(campos.begin(), campos.end(), [&](const auto& c) {
            auto* const* texto = std::get_if<CString*>(&c.valor);
            return texto != nullptr && *texto == busqueda.campo;
        });
        ASSERT_NE(campo, campos.end());
        CControl& edicion = *dialogo.GetDlgItem(campo->control);
        edicion.SetWindowText("tecleado");
        aplicacion.guion.fichero = "";
        dialogo.Pulsa(*dialogo.GetDlgItem(busqueda.boton));
        EXPECT_EQ(edicion.GetWindowText(), CString("tecleado"));
        EXPECT_EQ(*busqueda.campo, CString("tecleado")) << "a browse reads the controls";
        aplicacion.guion.fichero = "elegido";
        dialogo.Pulsa(*dialogo.GetDlgItem(busqueda.boton));
        EXPECT_EQ(edicion.GetWindowText(), CString("elegido"));
        EXPECT_EQ(aplicacion.guion.flagsFichero, 4100U);
        const std::string todos = "Todos los ficheros (*.*)|*.*||";
        EXPECT_EQ(aplicacion.guion.filtros, campo->control == IDC_ORTOS
                                                ? "Archivos topológicos (*.top)|*.top|" + todos
                                                : todos);
    }
}

TYPED_TEST(Marco, TellsOfNoRunBeforeWhereItsOwnCannotBegin)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    TypeParam dialogo;
    dialogo.Create(kPlantilla<TypeParam>, nullptr);
    aplicacion.guion.escritos.log = "del proceso anterior";
    dialogo.Pulsa(*dialogo.GetDlgItem(IDC_ACERCA_DE));
    EXPECT_EQ(aplicacion.guion.escritos.log, CString("del proceso anterior"));
    dialogo.Pulsa(*dialogo.GetDlgItem(IDOK)); // its files aren't named
    ASSERT_FALSE(aplicacion.guion.cajas.empty());
    EXPECT_EQ(aplicacion.guion.cajas[0].titulo, "Error");
    EXPECT_EQ(aplicacion.guion.escritos.log, CString());
}

TYPED_TEST(Marco, TellsWhoAsksAboutTheProgramAndItsHelp)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    TypeParam dialogo;
    dialogo.Create(kPlantilla<TypeParam>, nullptr);
    std::map<UINT, std::string> valores;
    aplicacion.guion.alMostrar = [&](CDialog& acerca) {
        for (const CControl& control : acerca.Controles())
            valores[control.Id()] = ansi::AUtf8(control.GetWindowText());
        acerca.Pulsa(*acerca.GetDlgItem(IDOK));
    };
    dialogo.Pulsa(*dialogo.GetDlgItem(IDC_ACERCA_DE));
    EXPECT_EQ(valores[IDC_NOMBRE], "Campiva");
    EXPECT_EQ(valores[IDC_VERSION], "1, 6, 6, 0");
    EXPECT_EQ(valores[IDC_DESCRIPCION], "Genera y lee base de datos de campiva");
    dialogo.Pulsa(*dialogo.GetDlgItem(ID_HELP));
    HELPINFO pregunta{static_cast<int>(IDC_ESTADO), {3, 4}};
    const bool deControles = !std::is_same_v<TypeParam, CVexaAInfografDlg>;
    EXPECT_EQ(dialogo.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta)),
              deControles ? 1 : 0);
    pregunta.iCtrlId = -1; // a label, which has none
    EXPECT_EQ(dialogo.SendMessage(WM_HELP, 0, reinterpret_cast<LPARAM>(&pregunta)),
              deControles ? 1 : 0);
    std::vector<std::string> ayudas = {"campiva.chm"};
    if (deControles)
        ayudas.emplace_back("campiva.chm::Ayuda IDC.txt#1008 at 3,4 on 13697023");
    EXPECT_EQ(aplicacion.guion.ayudas, ayudas);
}
