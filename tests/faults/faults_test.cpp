#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "platform/ansi.h"
#include "platform/files/output_diary.h"
#include "platform/files/set_healing.h"
#include "platform/layer_texts.h"
#include "tests/faults/fault_plan.h"
#include "tests/faults/folder_dialog.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

// Small runs of all translations in which, one after another, each call to the system fails, once
// or for good, each allocation finds no memory, and the process is killed before each call. Looked
// at are the bytes of the outputs, the boxes and what is left in the folder.

namespace fs = std::filesystem;

namespace {

using Que = CPlanDeFallos::Que;
using Alcance = CPlanDeFallos::Alcance;
using sistema::Llamada;
using Contenidos = std::map<std::string, std::string>;

// The runs wait for the disk some thousand times; where there is one in memory they use that.
const bool kEnMemoria = fs::is_directory("/dev/shm") && setenv("TMPDIR", "/dev/shm", 1) == 0;

/// One kind of run: the files that it begins with, and those that it writes as a set.
struct CEscenario {
    const char* nombre;
    std::vector<std::string> salidas;
    std::function<void(const CCarpetaPrueba&)> prepara;
    std::function<void(const CCarpetaPrueba&)> corre;
};

void TraduceA(const CString& entrada, const std::function<CString(const char*)>& tabla)
{
    CCampivaAVexaDlg dialogo;
    dialogo.EjecutaLote(entrada, tabla("Modulos.txt"), tabla("Titulares.txt"),
                        tabla("Parcelas.txt"), tabla("Subparcelas.txt"), tabla("Parajes.txt"),
                        tabla("Cotitulares.txt"), nullptr);
}

void Traduce(const CCarpetaPrueba& c)
{
    TraduceA(c.En("entrada.txt"), [&](const char* tabla) { return c.En(tabla); });
}

/// The same by names without a folder.
void TraduceAhi(const CCarpetaPrueba& c)
{
    const CEnCarpeta ahi(c.Ruta());
    TraduceA("entrada.txt", [](const char* tabla) { return CString(tabla); });
}

void PonEntrada(const CCarpetaPrueba& c, const std::vector<std::string>& lineas)
{
    sintetico::GrabaLineas(c.En("entrada.txt"), lineas);
    PonTablasDeAntes(c);
}

void PonTablasYDibujos(const CCarpetaPrueba& c)
{
    CAplicacionPrueba aplicacion;
    sintetico::GrabaLineas(c.En("entrada.txt"), sintetico::LineasCatastro(Municipio()).Todas());
    Traduce(c);
    sintetico::GrabaDibujos(c.Ruta().string(), Municipio());
}

void Vuelve(const CCarpetaPrueba& c)
{
    CVexaACampiva2Dlg dialogo;
    dialogo.EjecutaLote(c.En("Modulos.txt"), c.En("Titulares.txt"), c.En("Parcelas.txt"),
                        c.En("Subparcelas.txt"), c.En("Parajes.txt"), c.En("Cotitulares.txt"),
                        c.En("poligonos.txt"), c.En("ortos.TOP"), 1, 1, 1, nullptr);
}

using CIda = CDialogoDe<CCampivaAVexaDlg>;
using CInfograf = CDialogoDe<CVexaAInfografDlg>;

const std::vector<CEscenario>& Escenarios()
{
    static const std::vector<std::string> tablas(std::begin(kTablas), std::end(kTablas));
    static const std::vector<CEscenario> escenarios = {
        {"exchange file", tablas,
         [](const auto& c) { PonEntrada(c, sintetico::LineasCatastro(Municipio()).Todas()); },
         Traduce},
        {"list", tablas,
         [](const auto& c) {
             PonEntrada(c, sintetico::LineasLista(Municipio()));
             CAplicacionPrueba().WriteProfileInt("CampivaAVexa", "TipoEntrada", 1);
         },
         Traduce},
        {"exchange file, nothing there before, names without a folder", tablas,
         [](const auto& c) {
             sintetico::GrabaLineas(c.En("entrada.txt"),
                                    sintetico::LineasCatastro(Municipio()).Todas());
         },
         TraduceAhi},
        {"back, with tables rewritten",
         {"045127.R", "045127.M", "Parcelas.txt", "Subparcelas.txt"},
         [](const auto& c) {
             PonTablasYDibujos(c);
             c.Pon("045127.R", "antes\r\n");
             c.Pon("045127.M", "antes\r\n");
         },
         Vuelve},
        {"Infograf",
         {"045127.CSP"},
         [](const auto& c) {
             PonTablasYDibujos(c);
             c.Pon("045127.CSP", "antes\r\n");
         },
         [](const auto& c) { CInfograf(c, IDD_VEXA_A_INFOGRAF).Corre(); }},
        {"the settings of a dialog",
         {"config/VexaSoft/Campiva.ini"},
         [](const auto& c) {
             PonTablasYDibujos(c);
             CAplicacionPrueba().WriteProfileInt("Otra", "Clave", 1);
         },
         [](const auto& c) { CInfograf(c, IDD_VEXA_A_INFOGRAF).Corre(IDCANCEL); }},
    };
    return escenarios;
}

/// How a run came out.
struct CResultado {
    bool error = false;   ///< it told one
    bool soloLog = true;  ///< and of the log alone
    bool ajustes = false; ///< it told that the settings can't be read or stored, and went on
    bool nombra = false;  ///< it named outputs that couldn't be given back what they held
    Contenidos salidas;
};

/// A folder in which a run can begin again and again from the same files.
class CBanco {
public:
    explicit CBanco(const CEscenario& escenario) : m_escenario(escenario)
    {
        SCOPED_TRACE(testing::Message() << "in memory: " << kEnMemoria);
        escenario.prepara(m_carpeta);
        for (const auto& fichero : fs::recursive_directory_iterator(m_carpeta.Ruta()))
            if (fichero.is_regular_file())
                m_principio[fs::relative(fichero.path(), m_carpeta.Ruta()).string()] = {};
        for (auto& [nombre, bytes] : m_principio)
            bytes = m_carpeta.Lee(nombre);
        m_antes = Salidas();
        m_limpio = Corre({}).salidas;
    }

    /// Puts all files back, carries out the run under the plan, and looks at it.
    CResultado Corre(const CPlanDeFallos& plan)
    {
        Repon();
        return Sigue(plan);
    }
    /// The same on what the last run left.
    CResultado Sigue(const CPlanDeFallos& plan)
    {
        CAplicacionPrueba aplicacion;
        CResultado resultado;
        Plan() = plan;
        try {
            m_escenario.corre(m_carpeta);
        } catch (const CFileException&) { // as the start of the program tells it
            resultado.error = true;
            resultado.soloLog = false;
        } catch (const std::bad_alloc&) {
            resultado.error = true;
            resultado.soloLog = false;
        }
        m_visto = Plan();
        Plan() = {};
        resultado.error = resultado.error || aplicacion.HuboCajaDeError();
        for (const auto& [titulo, texto, flags] : aplicacion.guion.cajas) {
            const auto dice = [&](const std::string& algo) {
                return texto.find(algo) != texto.npos;
            };
            resultado.ajustes |= titulo == "Ajustes";
            resultado.nombra |= dice(ansi::AUtf8(textos::kSinDevolver));
            resultado.soloLog &= flags != MB_ICONERROR || dice(".ERR\n");
        }
        resultado.salidas = Salidas();
        return resultado;
    }
    /// The same in a process of its own, which the plan may kill. False where it came to its end.
    bool Mata(const CPlanDeFallos& plan)
    {
        Repon();
        const pid_t hijo = fork();
        if (hijo == 0) {
            Sigue(plan);
            _exit(0);
        }
        int estado = 0;
        waitpid(hijo, &estado, 0);
        return WIFSIGNALED(estado);
    }

    Contenidos Salidas() const
    {
        Contenidos salidas;
        for (const std::string& nombre : m_escenario.salidas)
            salidas[nombre] = m_carpeta.Lee(nombre);
        return salidas;
    }
    /// The calls of some kinds that a clean run makes, from 1.
    std::vector<long> LlamadasDe(const std::set<Llamada>& cuales)
    {
        Corre({.que = Que::Nada, .anota = true});
        std::vector<long> vistas;
        for (std::size_t i = 0; i < m_visto.hechas.size(); ++i)
            if (cuales.contains(m_visto.hechas[i]))
                vistas.push_back(static_cast<long>(i + 1));
        return vistas;
    }
    const Contenidos& Antes() const { return m_antes; }
    const Contenidos& Limpio() const { return m_limpio; }
    const CPlanDeFallos& Visto() const { return m_visto; }
    std::vector<CString> Nombres() const
    {
        std::vector<CString> nombres;
        for (const std::string& nombre : m_escenario.salidas)
            nombres.push_back(m_carpeta.En(nombre));
        return nombres;
    }
    std::string Restos() const
    {
        std::string restos;
        for (const auto& fichero : fs::recursive_directory_iterator(m_carpeta.Ruta()))
            if (fichero.path().string().find(".~") != std::string::npos)
                restos += fichero.path().filename().string() + " ";
        return restos;
    }

private:
    void Repon()
    {
        for (const auto& fichero : fs::recursive_directory_iterator(m_carpeta.Ruta()))
            if (fichero.is_regular_file())
                fs::remove(fichero.path());
        for (const auto& [nombre, bytes] : m_principio)
            m_carpeta.Pon(nombre, bytes);
    }

    const CEscenario& m_escenario;
    CCarpetaPrueba m_carpeta;
    Contenidos m_principio;
    Contenidos m_antes;
    Contenidos m_limpio;
    CPlanDeFallos m_visto;
};

/// A run told no error, has the outputs of a clean one and leaves no trace.
void AcabaLimpio(const CBanco& banco, const CResultado& resultado)
{
    EXPECT_FALSE(resultado.error);
    EXPECT_TRUE(resultado.salidas == banco.Limpio());
    EXPECT_EQ(banco.Restos(), "");
}

/// Either all outputs are those of a clean run, and no error was told but of the log, or all are
/// what they were and an error was told. After that a clean run has its clean outputs and leaves no
/// trace.
void EsTodoONada(CBanco& banco, const CResultado& resultado)
{
    const bool hecho = resultado.salidas == banco.Limpio();
    const bool nada = resultado.salidas == banco.Antes();
    EXPECT_TRUE(hecho || nada) << "a mixture of old and new outputs";
    EXPECT_TRUE(nada || !resultado.error || resultado.soloLog) << "outputs under an error";
    EXPECT_TRUE(resultado.error || resultado.ajustes || hecho)
        << "nothing was done, and nothing told";
    AcabaLimpio(banco, banco.Sigue({}));
}

/// Kills the run as the plan says. What it left is healed by whatever next run begins in the
/// folder.
/// \return whether it was killed before its end
bool MuereYSana(CBanco& banco, const CPlanDeFallos& plan)
{
    if (!banco.Mata(plan))
        return false;
    SanaConjuntos(banco.Nombres());
    const Contenidos sanadas = banco.Salidas();
    EXPECT_TRUE(sanadas == banco.Antes() || sanadas == banco.Limpio());
    AcabaLimpio(banco, banco.Sigue({}));
    return true;
}

/// Where no call at all succeeds any more nothing can be given back either: an error is told, and
/// the next run in the folder heals what it finds.
void EsTodoONadaALaLarga(CBanco& banco, CResultado resultado)
{
    if ((resultado.error || resultado.ajustes) && resultado.salidas != banco.Antes()) {
        EXPECT_TRUE(resultado.nombra || resultado.salidas == banco.Limpio() ||
                    banco.Visto().que == Que::FaltaMemoria)
            << "what couldn't be given back has no name";
        SanaConjuntos(banco.Nombres());
        resultado.salidas = banco.Salidas();
    }
    // What stands whole stands, though the last call failed and couldn't be undone.
    resultado.soloLog = resultado.soloLog || resultado.salidas == banco.Limpio();
    EsTodoONada(banco, resultado);
}

class Fallos : public testing::TestWithParam<std::size_t> {
protected:
    CBanco banco{Escenarios()[GetParam()]};
};

} // namespace

TEST(Ajustes, ADialogReadsThemOnce)
{
    const CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    aplicacion.WriteProfileInt("VexaAInfograf", "TipoEntrada", 1);
    Plan() = {};
    aplicacion.GetProfileInt("VexaAInfograf", "TipoEntrada", 0);
    const long unaVez = Plan().llamadas;
    ASSERT_GT(unaVez, 0);
    Plan() = {};
    const CInfograf dialogo(carpeta, IDD_VEXA_A_INFOGRAF);
    EXPECT_EQ(Plan().llamadas, unaVez);
}

TEST_P(Fallos, ACallThatFailsCostsNoOutput)
{
    const long cuantas = banco.Visto().llamadas;
    ASSERT_GT(cuantas, 20);
    for (const Alcance alcance : {Alcance::EsaSola, Alcance::YTodas})
        for (const int error : {EIO, ENOSPC}) {
            for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
                const bool siempre = alcance == Alcance::YTodas;
                SCOPED_TRACE(testing::Message()
                             << "call " << en << (siempre ? " and all behind" : "") << ", error "
                             << error);
                const CResultado resultado = banco.Corre({Que::FallaLlamada, en, alcance, error});
                siempre ? EsTodoONadaALaLarga(banco, resultado) : EsTodoONada(banco, resultado);
            }
        }
}

TEST_P(Fallos, AnInterruptedCallIsMadeAgain)
{
    const long cuantas = banco.Visto().llamadas;
    for (long en = 1; en <= cuantas; ++en) {
        SCOPED_TRACE(testing::Message() << "call " << en);
        const CResultado resultado = banco.Corre({Que::FallaLlamada, en, Alcance::EsaSola, EINTR});
        EXPECT_FALSE(resultado.error);
        EXPECT_TRUE(resultado.salidas == banco.Limpio());
    }
}

TEST_P(Fallos, WithoutMemoryNothingIsReplaced)
{
    banco.Corre({Que::FaltaMemoria, -1});
    const long cuantas = banco.Visto().reservas;
    ASSERT_GT(cuantas, 50);
    for (const Alcance alcance : {Alcance::EsaSola, Alcance::YTodas})
        for (long en = 1; en <= cuantas && !HasFailure(); en += 1 + en / 400) {
            const bool siempre = alcance == Alcance::YTodas;
            SCOPED_TRACE(testing::Message() << "allocation " << en << " of " << cuantas
                                            << (siempre ? " and all behind" : ""));
            const CResultado resultado = banco.Corre({Que::FaltaMemoria, en, alcance});
            siempre ? EsTodoONadaALaLarga(banco, resultado) : EsTodoONada(banco, resultado);
        }
}

TEST_P(Fallos, WhatAKilledRunLeftIsHealed)
{
    const long cuantas = banco.Visto().llamadas;
    long matados = 0;
    for (long en = 1; en <= cuantas && !HasFailure(); en += kPasoDeMuertes) {
        SCOPED_TRACE(testing::Message() << "before call " << en);
        matados += MuereYSana(banco, {Que::MataEnLlamada, en}) ? 1 : 0;
    }
    EXPECT_GT(matados, 20 / kPasoDeMuertes);
}

TEST_P(Fallos, WhatIsOverwrittenInItsPlaceIsAsSafe)
{
    AcabaLimpio(banco, banco.Corre({.sinDerechos = true}));
    const long cuantas = banco.Visto().llamadas;
    for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
        SCOPED_TRACE(testing::Message() << "call " << en);
        if (en % kPasoDeMuertes == 0)
            MuereYSana(banco, {.que = Que::MataEnLlamada, .en = en, .sinDerechos = true});
        CPlanDeFallos falla = {
            .que = Que::FallaLlamada, .en = en, .error = ENOSPC, .sinDerechos = true};
        EsTodoONada(banco, banco.Corre(falla));
        falla.alcance = Alcance::YTodas;
        EsTodoONadaALaLarga(banco, banco.Corre(falla));
    }
}

TEST_P(Fallos, NoFailedWriteRenameOrSyncIsPassedOver)
{
    for (const long en :
         banco.LlamadasDe({Llamada::Escribir, Llamada::Asegurar, Llamada::Renombrar})) {
        SCOPED_TRACE(testing::Message() << "call " << en);
        const CResultado resultado = banco.Corre({Que::FallaLlamada, en, Alcance::EsaSola, EIO});
        EXPECT_TRUE(resultado.error || resultado.ajustes);
    }
}

TEST_P(Fallos, NoNameGoesWhereNothingCanBeRenamedAnyMore)
{
    for (const long en : banco.LlamadasDe({Llamada::Renombrar})) {
        SCOPED_TRACE(testing::Message() << "call " << en);
        EsTodoONada(banco, banco.Corre({Que::FallaLlamada, en, Alcance::YLasDeSuClase, EIO}));
    }
}

TEST_P(Fallos, WhatWasThereComesBackWhereNothingCanBeLookedAtAnyMore)
{
    const bool habia = banco.Antes().begin()->second != "(no file)";
    const long primera = banco.LlamadasDe({Llamada::Renombrar}).front();
    for (const long en : banco.LlamadasDe({Llamada::Mirar})) {
        if (en < primera)
            continue;
        SCOPED_TRACE(testing::Message() << "call " << en);
        const CResultado resultado =
            banco.Corre({Que::FallaLlamada, en, Alcance::YLasDeSuClase, EIO});
        // What wasn't there before can't be told from what somebody else has put there.
        habia ? EsTodoONada(banco, resultado) : EsTodoONadaALaLarga(banco, resultado);
    }
}

TEST(Entradas, ThatAreHalfDoneAreNotRead)
{
    const CCarpetaPrueba carpeta;
    PonTablasYDibujos(carpeta);
    carpeta.Pon("045127.R", "antes");
    carpeta.Pon("Parajes.txt.~0123456789ab.~antes", "antes");
    const CString diario =
        carpeta.Pon("Parajes.txt.~0123456789ab.~conjunto",
                    EscribeDiario({}, {{"Parajes.txt", CEntradaDiario::Antes::Fichero, 1}}));
    fs::permissions(std::string(diario), fs::perms{0666}); // so that nobody believes it
    CAplicacionPrueba aplicacion;
    Vuelve(carpeta);
    ASSERT_EQ(aplicacion.guion.cajas.size(), 1U);
    EXPECT_NE(aplicacion.guion.cajas[0].texto.find("Parajes.txt.~0123456789ab.~conjunto"),
              std::string::npos);
    EXPECT_EQ(carpeta.Lee("045127.R"), "antes");
}

// Such a disk may number its files anew whenever it is there: only the time tells then that
// somebody has worked on one.
TEST(Salidas, AreGivenBackWhereADiskWithoutSecondNamesNumbersThemAnew)
{
    const auto ahora = fs::file_time_type::clock::now();
    const struct {
        const char* motivo;
        fs::file_time_type escrito;
        const char *enSitio, *anterior;
    } casos[] = {{"nobody's work", ahora - std::chrono::hours(1), "vieja", "(no file)"},
                 {"somebody's", ahora + std::chrono::hours(1), "nueva", "vieja"}};
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        const CCarpetaPrueba carpeta;
        carpeta.Pon("a.txt", "nueva");
        fs::last_write_time(carpeta.Ruta() / "a.txt", caso.escrito);
        carpeta.Pon("a.txt.~0123456789ab.~antes", "vieja");
        constexpr const char* kDiario = "a.txt.~0123456789ab.~conjunto";
        carpeta.Pon(kDiario, EscribeDiario({}, {{"a.txt", CEntradaDiario::Antes::Fichero, 0}}));
        fs::permissions(carpeta.Ruta() / kDiario, fs::perms{0644});
        Plan() = {.que = Que::FallaLlamada, .error = EPERM, .clase = Llamada::Enlazar};
        SanaConjuntos({carpeta.En("a.txt")});
        Plan() = {};
        EXPECT_EQ(carpeta.Lee("a.txt"), caso.enSitio);
        EXPECT_EQ(carpeta.Lee("a.txt.anterior"), caso.anterior);
        EXPECT_FALSE(fs::exists(carpeta.Ruta() / kDiario));
    }
}

TEST(Salidas, ThatAnotherProgramHasOpenCanBeClosedBeforeTheRun)
{
    const auto lineas = sintetico::LineasCatastro(Municipio()).Todas();
    int preguntas[2] = {};
    for (const int respuesta : {IDRETRY, IDCANCEL})
        for (long en = 1; en < 120; ++en) {
            SCOPED_TRACE(testing::Message() << "answer " << respuesta << ", call " << en);
            const CCarpetaPrueba
                carpeta; // a new one: what a run before left is healed by other calls
            PonEntrada(carpeta, lineas);
            CAplicacionPrueba aplicacion;
            aplicacion.guion.respuestas = {respuesta};
            CIda dialogo(carpeta, IDD_CAMPIVA_A_VEXA);
            Plan() = {.que = Que::FallaLlamada, .en = en, .error = EBUSY};
            dialogo.Corre();
            Plan() = {};
            const auto& cajas = aplicacion.guion.cajas;
            if (cajas.front().flags != (MB_RETRYCANCEL | MB_ICONWARNING))
                continue; // another call than those by which an output is kept for the run
            ++preguntas[respuesta == IDRETRY ? 0 : 1];
            EXPECT_NE(cajas.front().texto.find("lo tiene abierto otro programa"),
                      std::string::npos);
            EXPECT_EQ(aplicacion.HuboCajaDeError(), false);
            EXPECT_EQ(carpeta.Lee("Parcelas.txt") == "antes\r\n", respuesta == IDCANCEL);
            EXPECT_EQ(carpeta.Lee("entrada.ERR") == "(no file)", respuesta == IDCANCEL);
        }
    EXPECT_GT(preguntas[0], 5);
    EXPECT_EQ(preguntas[1], preguntas[0]);
}

namespace {

/// Writes two files as a set, which takes its places under the plan.
void GrabaConjunto(CConjuntoSalidas& conjunto, const CCarpetaPrueba& carpeta,
                   const CPlanDeFallos& plan)
{
    for (const char* nombre : {"a.txt", "b.txt"}) {
        CFile fichero;
        fichero.Open(carpeta.En(nombre), CFile::modeCreate | CFile::modeWrite, nullptr, &conjunto);
        fichero.Write("ahora", 5);
        fichero.Close();
    }
    Plan() = plan;
    conjunto.Confirma();
}

} // namespace

TEST(Salidas, WhatIsOnlyReservedIsNobodyElsesUntilAllAreInTheirPlaces)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("lista.txt", "antes");
    sistema::Error error;
    const auto graba = [&](const CPlanDeFallos& plan) {
        CConjuntoSalidas conjunto;
        ASSERT_EQ(conjunto.Reserva(carpeta.En("lista.txt"), error), CReemplazo::Apertura::Abierto);
        GrabaConjunto(conjunto, carpeta, plan);
    };
    graba({.que = Que::Nada, .anota = true});
    const std::vector<Llamada> hechas = std::exchange(Plan(), {}).hechas;
    const auto ultima = std::find(hechas.rbegin(), hechas.rend(), Llamada::Renombrar);
    int ocupadas = 0;
    graba({.que = Que::Nada,
           .entretanto =
               [&] {
                   CConjuntoSalidas otro;
                   if (otro.Reserva(carpeta.En("lista.txt"), error) ==
                       CReemplazo::Apertura::Ocupado)
                       ++ocupadas;
               },
           .entretantoEn = hechas.rend() - ultima});
    Plan() = {};
    EXPECT_EQ(ocupadas, 1);
    EXPECT_EQ(carpeta.Lee("lista.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 3) << "it was let go of";
}

TEST(Salidas, AnUndoLeavesWhatSomebodyElseHasPlaced)
{
    const CCarpetaPrueba carpeta;
    const auto graba = [&](const CPlanDeFallos& plan) {
        for (const char* nombre : {"a.txt", "b.txt"})
            carpeta.Pon(nombre, "antes");
        CConjuntoSalidas conjunto;
        GrabaConjunto(conjunto, carpeta, plan);
    };
    graba({.que = Que::Nada, .anota = true});
    const std::vector<Llamada>& hechas = Plan().hechas;
    const auto primera = std::find(hechas.begin(), hechas.end(), Llamada::Renombrar);
    const auto segunda = std::find(primera + 1, hechas.end(), Llamada::Renombrar);
    ASSERT_NE(segunda, hechas.end());
    CPlanDeFallos plan = {Que::FallaLlamada, segunda - hechas.begin() + 1, Alcance::EsaSola, EIO};
    plan.entretantoEn = plan.en;
    plan.entretanto = [&] {
        carpeta.Pon("x", "de otro");
        fs::rename(carpeta.Ruta() / "x", carpeta.Ruta() / "a.txt");
    };
    EXPECT_THROW(graba(plan), CFileException);
    Plan() = {};
    EXPECT_EQ(carpeta.Lee("a.txt"), "de otro");
    EXPECT_EQ(carpeta.Lee("b.txt"), "antes");
    EXPECT_EQ(carpeta.Cuantos(), 2);
}

TEST(Salidas, KeepWhatWasWrittenBesideTheirLockAndNotWhatWasPlacedBeforeIt)
{
    const CCarpetaPrueba carpeta;
    const auto abre = [&](CPlanDeFallos plan) {
        carpeta.Pon("a.txt", "antes");
        fs::remove(carpeta.Ruta() / "a.txt.anterior");
        plan.anota = true;
        plan.entretanto = [&] {
            carpeta.Pon("x", "de otro");
            fs::rename(carpeta.Ruta() / "x", carpeta.Ruta() / "a.txt");
        };
        CConjuntoSalidas conjunto;
        CFile fichero;
        Plan() = plan;
        fichero.Open(carpeta.En("a.txt"), CFile::modeCreate | CFile::modeWrite, nullptr, &conjunto);
        const std::vector<Llamada> hechas = std::exchange(Plan(), {}).hechas;
        fichero.Close();
        conjunto.Confirma();
        return hechas;
    };
    const std::vector<Llamada> hechas = abre({});
    const auto bloqueo = std::find(hechas.begin(), hechas.end(), Llamada::Bloquear);
    ASSERT_NE(bloqueo, hechas.end());
    const auto cuantas = static_cast<long>(hechas.size());
    for (long en = 1; en <= cuantas; ++en) {
        SCOPED_TRACE(testing::Message() << "the other before call " << en << " of " << cuantas);
        abre({.entretantoEn = en});
        const std::string queda = carpeta.Lee("a.txt.anterior");
        if (en <= bloqueo - hechas.begin() + 1) {
            EXPECT_EQ(queda, "(no file)") << "an output like any older one";
        } else if (en == cuantas) {
            EXPECT_EQ(queda, "de otro");
        }
    }
}

TEST(Salidas, AreOnTheDiskBeforeWhatHangsOnThem)
{
    CBanco banco(Escenarios()[0]);
    banco.Corre({.que = Que::Nada, .anota = true});
    std::string orden; // from the first output that is brought to the disk
    for (const Llamada llamada : banco.Visto().hechas)
        switch (llamada) {
        case Llamada::Asegurar:
            orden += 'a';
            break;
        case Llamada::Enlazar:
            orden += 'e';
            break;
        case Llamada::Renombrar:
            orden += 'r';
            break;
        case Llamada::Borrar:
            orden += 'b';
            break;
        default:
            break;
        }
    // Six outputs and the diary; second names, and their folder; places, and their folder; the
    // diary goes, and their folder; then each second name and lock.
    EXPECT_EQ(orden, "aaaaaaa"
                     "eeeeee"
                     "a"
                     "rrrrrr"
                     "a"
                     "b"
                     "a"
                     "bbbbbbbbbbbb");
}

namespace {

enum class Vecino { ConCandados, SinCandados, OtroUsuario };

/// Two runs at the same tables, of inputs that differ; the second comes and goes before a call of
/// the first.
class DosProcesos : public testing::TestWithParam<Vecino> {
protected:
    void SetUp() override
    {
        if (GetParam() == Vecino::OtroUsuario && geteuid() != 0)
            GTEST_SKIP() << "only an administrator can be two users";
        fs::permissions(carpeta.Ruta(), fs::perms{0777});
        carpeta.Pon("otra.txt", "");
        sintetico::GrabaLineas(
            carpeta.En("otra.txt"),
            sintetico::LineasCatastro(
                sintetico::Genera({.parcelas = 3, .poligonos = 1, .subparcelas = 1}, 8))
                .Todas());
        sintetico::GrabaLineas(carpeta.En("entrada.txt"),
                               sintetico::LineasCatastro(Municipio()).Todas());
        deUno = Limpias("entrada.txt");
        deOtro = Limpias("otra.txt");
    }

    Contenidos Tablas() const
    {
        Contenidos tablas;
        for (const char* tabla : kTablas)
            tablas[tabla] = carpeta.Lee(tabla);
        return tablas;
    }
    /// A run without a dialog's user. Tells whether it told an error.
    bool Corre(const char* entrada, const CPlanDeFallos& plan) const
    {
        CAplicacionPrueba aplicacion;
        Plan() = plan;
        Plan().sinCandados = GetParam() == Vecino::SinCandados;
        TraduceA(carpeta.En(entrada), [&](const char* tabla) { return carpeta.En(tabla); });
        visto = Plan();
        Plan() = {};
        return aplicacion.HuboCajaDeError();
    }
    /// The same in a process of its own.
    bool CorreAparte(const char* entrada) const
    {
        constexpr uid_t kOtro = 65533;
        const pid_t hijo = fork();
        if (hijo == 0) {
            if (GetParam() == Vecino::OtroUsuario && setuid(kOtro) != 0)
                _exit(2);
            _exit(Corre(entrada, {.entretanto = [] {}}) ? 1 : 0);
        }
        int estado = 0;
        waitpid(hijo, &estado, 0);
        return !WIFEXITED(estado) || WEXITSTATUS(estado) != 0;
    }
    /// Tables that anybody may write.
    void PonTablas() const
    {
        PonTablasDeAntes(carpeta);
        for (const char* tabla : kTablas)
            fs::permissions(carpeta.Ruta() / tabla, fs::perms{0666});
        fs::remove(carpeta.Ruta() / "otra.ERR"); // of whoever ran last
    }
    Contenidos Limpias(const char* entrada) const
    {
        PonTablas();
        EXPECT_FALSE(Corre(entrada, {}));
        return Tablas();
    }
    /// The first run, in which a call may fail, with the second before another one.
    void Cruza(long entretanto, long falla)
    {
        SCOPED_TRACE(testing::Message()
                     << "the other before call " << entretanto << ", call " << falla << " fails");
        PonTablasDeAntes(carpeta);
        const Contenidos antes = Tablas();
        bool tocado = false;
        CPlanDeFallos plan = {falla > 0 ? Que::FallaLlamada : Que::Nada, falla, Alcance::EsaSola,
                              EIO};
        plan.entretantoEn = entretanto;
        plan.entretanto = [&] {
            tocado = true;
            otroAvisa = CorreAparte("otra.txt");
        };
        const bool unoAvisa = Corre("entrada.txt", plan);
        ASSERT_TRUE(tocado || falla > 0);
        const Contenidos ahora = Tablas();
        for (const auto& [tabla, bytes] : ahora)
            EXPECT_NE(bytes, "(no file)") << tabla << " is gone";
        const bool entera = ahora == deUno || ahora == deOtro || (unoAvisa && ahora == antes);
        EXPECT_TRUE(entera || unoAvisa || otroAvisa) << "a mixture that nobody is told of";
        EXPECT_TRUE(entera || GetParam() == Vecino::SinCandados) << "locks keep them apart";
    }

    CCarpetaPrueba carpeta;
    Contenidos deUno;
    Contenidos deOtro;
    bool otroAvisa = false;
    mutable CPlanDeFallos visto;
};

} // namespace

TEST_P(DosProcesos, EndWithTheWholeSetOfOneOrAreTold)
{
#ifdef __SANITIZE_ADDRESS__ // under which another process costs much
    constexpr long kPaso = 7;
#else
    constexpr long kPaso = 1;
#endif
    Corre("entrada.txt", {});
    const long cuantas = visto.llamadas;
    long apartados = 0;
    for (long en = 1; en <= cuantas && !HasFailure(); en += kPaso) {
        Cruza(en, 0);
        apartados += otroAvisa ? 1 : 0;
    }
    // All through the first run's time, but for its first steps and its last.
    EXPECT_TRUE(GetParam() == Vecino::SinCandados || apartados > cuantas / kPaso / 2)
        << apartados << " of " << cuantas;
    for (long en = cuantas / 3; en <= cuantas && !HasFailure(); en += 3 * kPaso)
        for (long falla = en; falla <= cuantas && !HasFailure(); falla += 5 * kPaso)
            Cruza(en, falla);
}

INSTANTIATE_TEST_SUITE_P(WithLocks, DosProcesos, testing::Values(Vecino::ConCandados));
INSTANTIATE_TEST_SUITE_P(WithoutLocks, DosProcesos, testing::Values(Vecino::SinCandados));
INSTANTIATE_TEST_SUITE_P(AnotherUser, DosProcesos, testing::Values(Vecino::OtroUsuario));

INSTANTIATE_TEST_SUITE_P(Cada, Fallos, testing::Range<std::size_t>(0, Escenarios().size()),
                         [](const auto& cual) { return "Run" + std::to_string(cual.param); });
