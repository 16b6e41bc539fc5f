#include <filesystem>
#include <map>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "tests/faults/fault_plan.h"
#include "tests/faults/folder_dialog.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

// A dialog may run again after any end of a run: a fault, a stop, no memory. What it does then, on
// other files, is compared with what a new dialog does on them.

namespace fs = std::filesystem;

namespace {

using Que = CPlanDeFallos::Que;

template <class D, UINT kPlantilla>
std::unique_ptr<CDialogoDeCarpeta> Nuevo(const CCarpetaPrueba& c)
{
    return std::make_unique<CDialogoDe<D>>(c, kPlantilla);
}

const struct CTraduccion {
    const char* nombre;
    std::unique_ptr<CDialogoDeCarpeta> (*nuevo)(const CCarpetaPrueba& c);
    const char* lista; ///< the input that is read first

    friend void PrintTo(const CTraduccion& traduccion, std::ostream* donde)
    {
        *donde << traduccion.nombre;
    }
} kTraducciones[] = {
    {"CatastroToVexa", Nuevo<CCampivaAVexaDlg, IDD_CAMPIVA_A_VEXA>, "entrada.txt"},
    {"VexaToCatastro", Nuevo<CVexaACampiva2Dlg, IDD_VEXA_A_CAMPIVA2>, "poligonos.txt"},
    {"VexaToInfograf", Nuevo<CVexaAInfografDlg, IDD_VEXA_A_INFOGRAF>, "poligonos.txt"},
};

class NextRun : public testing::TestWithParam<CTraduccion> {
protected:
    NextRun()
    {
        PonTablasDeAntes(m_carpeta);
        sintetico::GrabaLineas(m_carpeta.En("entrada.txt"),
                               sintetico::LineasCatastro(Municipio(7)).Todas());
        CAplicacionPrueba aplicacion;
        CDialogoDe<CCampivaAVexaDlg>(m_carpeta, IDD_CAMPIVA_A_VEXA).Corre();
        auto dibujado = Municipio(7);
        for (auto& hoja : dibujado.hojas)
            hoja.nombre = "OTRA"; // than the tables say
        sintetico::GrabaDibujos(m_carpeta.Ruta().string(), dibujado);
        m_principio = Ficheros();
        for (const bool ilegible : {false, true})
            m_deNuevo[ilegible ? 1 : 0] = VistoDeNuevo(ilegible);
    }
    std::map<std::string, std::string> Ficheros() const
    {
        std::map<std::string, std::string> ficheros;
        for (const auto& fichero : fs::directory_iterator(m_carpeta.Ruta()))
            if (fichero.is_regular_file() && !fichero.is_symlink())
                ficheros[fichero.path().filename().string()] =
                    m_carpeta.Lee(fichero.path().filename().string());
        return ficheros;
    }
    void Repon()
    {
        for (const auto& fichero : fs::directory_iterator(m_carpeta.Ruta()))
            if (fichero.is_regular_file() || fichero.is_symlink())
                fs::remove(fichero.path());
        for (const auto& [nombre, bytes] : m_principio)
            m_carpeta.Pon(nombre, bytes);
    }
    /// Other files for the next run: another exchange file, no sheets; or a list that can't be
    /// read.
    void PonOtros(bool ilegible)
    {
        fs::remove(m_carpeta.Ruta() / "ortos.TOP");
        fs::remove(m_carpeta.Ruta() / "ortos.BIN");
        sintetico::GrabaLineas(m_carpeta.En("entrada.txt"),
                               sintetico::LineasCatastro(Municipio(8)).Todas());
        if (!ilegible)
            return;
        fs::remove(m_carpeta.Ruta() / GetParam().lista);
        fs::create_symlink("/proc/self/mem", m_carpeta.Ruta() / GetParam().lista);
    }
    /// What a run came to, in files and in words.
    std::string Visto(CDialogoDeCarpeta& dialogo, CGuion& guion)
    {
        guion.cajas.clear();
        guion.estados.clear();
        guion.alAtender = {};
        dialogo.Dialogo().GotoDlgCtrl(IDOK);
        dialogo.Corre();
        std::string visto;
        for (const CCajaVista& caja : guion.cajas)
            visto += "[" + caja.titulo + "] " + caja.texto + "\n";
        for (const std::string& estado : guion.estados)
            if (estado != " ") // with which a run ends: seen only where something stood there
                visto += estado + "\n";
        visto += "focus " + std::to_string(dialogo.Dialogo().Foco()) + ", log " +
                 std::string(guion.escritos.log) + "\n";
        for (const CString& salida : guion.escritos.salidas)
            visto += std::string(salida) + "\n";
        for (const auto& [nombre, bytes] : Ficheros())
            visto += nombre + ": " + bytes;
        return visto;
    }
    std::string VistoDeNuevo(bool ilegible)
    {
        Repon();
        PonOtros(ilegible);
        CAplicacionPrueba aplicacion;
        return Visto(*GetParam().nuevo(m_carpeta), aplicacion.guion);
    }
    /// Ends a first run by the plan or, with `parada`, by a stop at the n-th look for events; then
    /// compares the next run of the dialog with the run of a new one.
    /// \return false where the run came to its end before that
    bool EsComoNuevo(const CPlanDeFallos& plan, int parada = 0)
    {
        bool llego = true;
        for (const bool ilegible : {false, true}) {
            Repon();
            CAplicacionPrueba aplicacion;
            const auto usado = GetParam().nuevo(m_carpeta);
            aplicacion.guion.alAtender = [&](CDialog& dialogo, int vez) {
                if (vez == parada)
                    dialogo.SendMessage(WM_COMMAND, IDCANCEL, 0);
            };
            Plan() = plan;
            usado->Corre();
            llego = plan.que == Que::Nada           ? aplicacion.guion.atendidos >= parada
                    : plan.que == Que::FaltaMemoria ? Plan().reservas >= plan.en
                                                    : Plan().llamadas >= plan.en;
            Plan() = {};
            Repon();
            PonOtros(ilegible);
            EXPECT_EQ(Visto(*usado, aplicacion.guion), m_deNuevo[ilegible ? 1 : 0]);
        }
        return llego;
    }

private:
    CCarpetaPrueba m_carpeta;
    std::map<std::string, std::string> m_principio;
    std::string m_deNuevo[2];
};

} // namespace

TEST_P(NextRun, IsThatOfANewDialogAfterACallThatFailed)
{
    long en = 1;
    for (; !HasFailure() && EsComoNuevo({.que = Que::FallaLlamada, .en = en, .error = EIO}); ++en)
        SCOPED_TRACE(testing::Message() << "call " << en);
    EXPECT_GT(en, 20);
}

TEST_P(NextRun, IsThatOfANewDialogAfterMemoryRanOut)
{
    long en = 1;
    for (; !HasFailure() && EsComoNuevo({.que = Que::FaltaMemoria, .en = en}); en += 1 + en / 8)
        SCOPED_TRACE(testing::Message() << "allocation " << en);
    EXPECT_GT(en, 50);
}

TEST_P(NextRun, IsThatOfANewDialogAfterAStop)
{
    int vez = 1;
    for (; !HasFailure() && EsComoNuevo({}, vez); ++vez)
        SCOPED_TRACE(testing::Message() << "look " << vez);
    EXPECT_GT(vez, 5);
}

INSTANTIATE_TEST_SUITE_P(Cada, NextRun, testing::ValuesIn(kTraducciones),
                         [](const auto& cual) { return cual.param.nombre; });
