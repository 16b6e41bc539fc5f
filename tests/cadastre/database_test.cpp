#include "cadastre/database.h"

#include <algorithm>
#include <random>

#include "platform/ansi.h"
#include "tests/cadastre/record_tools.h"

namespace {

struct CAsignacion {
    int asignados;
    std::string log;
};

CAsignacion Asigna(CBaseCatastro& base)
{
    CAsignacion asignacion{};
    asignacion.log =
        Grabado([&](CStdioFile& log) { asignacion.asignados = base.AsignaNumOrden(log); });
    return asignacion;
}

std::string Linea(const char* nombre, const char* numero)
{
    return "E214: El cotitular "_ansi + std::string(nombre) +
           " no tiene asignado número imputación. Se le asigna el número "_ansi + numero + ".\r\n";
}

} // namespace

TEST(BaseCatastro, KnowsAMunicipalityByItsCodeAlone)
{
    CBaseCatastro base(28);
    EXPECT_EQ(base.BuscaMunicipio(79), -3);
    for (short mun = 1; mun <= 30; ++mun)
        EXPECT_EQ(base.InsertaMunicipio(CMunicipio(mun, 3)), mun - 1);
    for (short mun = 1; mun <= 30; ++mun) {
        EXPECT_EQ(base.InsertaMunicipio(CMunicipio(mun, 5)), mun - 1); // dropped
        EXPECT_EQ(base.RegistraMunicipio(mun), mun - 1);
        EXPECT_EQ(base.DameMunicipio(mun - 1).EMenor, 3);
    }
    EXPECT_EQ(base.RegistraMunicipio(-1), 30);
    EXPECT_EQ(base.DameMunicipio(30).Mun, -1);
    EXPECT_EQ(base.DameMunicipio(30).EMenor, 0);
    EXPECT_EQ(base.BuscaMunicipio(31), -3);
}

TEST(BaseCatastro, SortsItsMunicipalitiesByCodeAsSignedNumbers)
{
    for (const int cuantos : {3, 30}) {
        CBaseCatastro base(28);
        for (int mun = cuantos - 2; mun >= -1; --mun)
            base.RegistraMunicipio(static_cast<short>(mun));
        base.Ordena();
        for (int i = 0; i < cuantos; ++i) {
            EXPECT_EQ(base.DameMunicipio(i).Mun, i - 1);
            EXPECT_EQ(base.BuscaMunicipio(static_cast<short>(i - 1)), i);
        }
    }
}

TEST(BaseCatastro, NumbersHoldersBehindTheHighestNumberOfAllMunicipalities)
{
    CBaseCatastro base(28);
    const int uno = base.RegistraMunicipio(79);
    const int dos = base.RegistraMunicipio(80);
    base.DameMunicipio(uno).InsertaTitular(Titular("JOSÉ"_ansi, "1", -1));
    base.DameMunicipio(uno).InsertaTitular(Titular("ANA", "2", 7));
    base.DameMunicipio(uno).InsertaTitular(Titular("EVA", "3", -2)); // negative, and a number
    base.DameMunicipio(dos).InsertaTitular(Titular("LUIS", "1", -1));
    base.DameMunicipio(dos).InsertaTitular(Titular("RAUL", "2", 9));
    base.DameMunicipio(dos).InsertaTitular(Titular("", "3", -1));

    const CAsignacion asignacion = Asigna(base);
    EXPECT_EQ(asignacion.asignados, 3);
    EXPECT_EQ(asignacion.log, Linea("JOSÉ"_ansi, "10") + Linea("LUIS", "11") + Linea("", "12"));
    EXPECT_EQ(base.DameMunicipio(uno).BuscaTitularNumOrden(10), 0);
    EXPECT_EQ(base.DameMunicipio(uno).BuscaTitularNumOrden(-1), -3);
    EXPECT_EQ(base.DameMunicipio(uno).BuscaTitularNumOrden(-2), 2);
    EXPECT_EQ(base.DameMunicipio(dos).BuscaTitularNumOrden(11), 0);
    EXPECT_EQ(base.DameMunicipio(dos).BuscaTitularNumOrden(12), 2);

    EXPECT_EQ(Asigna(base).log, ""); // nothing is left to do
}

TEST(BaseCatastro, NumbersHoldersFromOneOnOrBehindThoseWithANumber)
{
    constexpr struct {
        int numerados, sinNumero;
    } kCasos[] = {{0, 1}, {0, 2}, {0, 30}, {30, 1}}; // short arrays and long ones
    for (const auto& [numerados, sinNumero] : kCasos) {
        CBaseCatastro base(28);
        CMunicipio& municipio = base.DameMunicipio(base.RegistraMunicipio(79));
        municipio.InsertaTitular(Titular("NEGATIVO", "N", -5));
        const int todos = numerados + sinNumero;
        for (int i = 1; i <= todos; ++i)
            municipio.InsertaTitular(
                Titular("X" + std::to_string(i), std::to_string(i), i <= numerados ? i : -1));
        EXPECT_EQ(municipio.BuscaTitularNumOrden(-5), 0); // what it remembers must go
        EXPECT_EQ(Asigna(base).asignados, sinNumero);
        for (int i = 1; i <= todos; ++i)
            EXPECT_EQ(municipio.BuscaTitularNumOrden(i), i);
    }
}

TEST(BaseCatastro, SharesOutAndChoosesMainHoldersInEachParcelOfEachMunicipality)
{
    CBaseCatastro base(28);
    for (const short mun : {short{79}, short{80}}) {
        CMunicipio& municipio = base.DameMunicipio(base.RegistraMunicipio(mun));
        for (const int numero : {1, 2}) {
            CParcela parcela(1, numero, 1, "");
            bool repetida = false;
            CSubparcela sub("A");
            sub.superfic = 10;
            parcela.InsertaSubparcela(CSubparcela(sub), repetida);
            parcela.InsertaCotitular(0, -1, 3, "");
            parcela.InsertaCotitular(1, -1, 7, "");
            municipio.InsertaParcela(parcela);
        }
    }
    base.EligeTitularPrincipal();
    EXPECT_EQ(base.DameMunicipio(1).DameParcela(1).TitularPrincipal(), 1);
    base.ReparteParticipaciones();
    EXPECT_EQ(base.NumParcelas(), 4);
    for (int i = 0; i < 4; ++i) {
        const CParcela& parcela = base.DameMunicipio(i / 2).DameParcela(i % 2);
        EXPECT_EQ(parcela.Cotitulares()[0].partici, 30);
        EXPECT_EQ(parcela.Cotitulares()[1].partici, 70);
        EXPECT_EQ(parcela.TitularPrincipal(), 1);
    }
}

namespace {

/// What a record's positions stand for, in words that no sort changes.
/// Of a copy, so that the back links of the base itself wait on.
std::vector<std::string> EnPalabras(CBaseCatastro base)
{
    std::vector<std::string> frases;
    for (CMunicipio& m : base.Municipios()) {
        const auto dice = [&](const CParcela& p, const std::string& que) {
            frases.push_back(std::to_string(m.Mun) + " " + std::to_string(p.Polig) + "/" +
                             std::to_string(p.Parcela) + " " + que);
        };
        const auto en = [](const auto& array, int i) { return array[static_cast<std::size_t>(i)]; };
        for (const CParcela& p : m.Parcelas()) {
            if (p.paraje >= 0)
                dice(p, "in " + std::string(en(m.Parajes(), p.paraje).Nombre.GetString()));
            for (const CCotitular& c : p.Cotitulares())
                dice(p, "of " + std::string(en(m.Titulares(), c.titular).Nombre.GetString()));
            for (const CSubparcela& s : p.Subparcelas())
                dice(p, "with " + std::string(s.letra.GetString()));
        }
        for (int t = 0; t < static_cast<int>(m.Titulares().size()); ++t)
            for (const CPropiedad& propiedad : m.Propiedades(t))
                dice(m.DameParcela(propiedad.parcela),
                     "held by " + std::string(m.DameTitular(t).Nombre.GetString()));
    }
    std::sort(frases.begin(), frases.end());
    return frases;
}

} // namespace

TEST(BaseCatastro, AfterTheSortsEachRecordStillPointsToItsOwn)
{
    for (unsigned semilla = 1; semilla <= 60; ++semilla) {
        SCOPED_TRACE(semilla);
        std::mt19937 azar(semilla);
        const auto hasta = [&](int n) {
            return static_cast<int>(azar() % static_cast<unsigned>(n));
        };
        CBaseCatastro base(28);
        for (int k = 0; k < 3; ++k) {
            CMunicipio& m =
                base.DameMunicipio(base.RegistraMunicipio(static_cast<short>(hasta(900))));
            const int cuantos = 1 + hasta(40);
            for (int i = 0; i < cuantos; ++i) {
                const int numero = hasta(30000);
                if (m.BuscaTitularNumOrden(numero) < 0)
                    m.InsertaTitular(
                        Titular("N" + std::to_string(numero), std::to_string(numero), numero));
                CParaje paraje("P" + std::to_string(numero));
                paraje.NumOrden = static_cast<short>(numero);
                m.InsertaParaje(paraje);
                CParcela parcela(static_cast<short>(1 + hasta(5)), 1 + hasta(30),
                                 static_cast<short>(hasta(3)), "");
                if (m.BuscaParcela(parcela) >= 0)
                    continue;
                parcela.paraje = hasta(static_cast<int>(m.Parajes().size()));
                bool repetida = false;
                for (const char* letra : {"C", "A", "B", "A"})
                    parcela.InsertaSubparcela(CSubparcela(letra), repetida);
                const int nueva = m.InsertaParcela(parcela);
                for (int v = hasta(5); v >= 0; --v) {
                    const int titular = hasta(static_cast<int>(m.Titulares().size()));
                    if (m.DameParcela(nueva).InsertaCotitular(titular, v, v, "") == 1)
                        m.InsertaPropiedad(titular, nueva, v, "");
                }
            }
        }
        const std::vector<std::string> antes = EnPalabras(base);
        base.Ordena();
        ASSERT_EQ(EnPalabras(base), antes);
        for (const CMunicipio& m : base.Municipios()) {
            EXPECT_TRUE(std::is_sorted(
                m.Titulares().begin(), m.Titulares().end(),
                [](const CTitular& a, const CTitular& b) { return a.NumOrden < b.NumOrden; }));
            for (const CParcela& p : m.Parcelas()) {
                EXPECT_GE(p.IndicePrincipal(), 0);
                EXPECT_EQ(p.Subparcelas()[0].letra, "A");
                EXPECT_EQ(p.Subparcelas()[3].letra, "C");
                EXPECT_TRUE(std::is_sorted(p.Cotitulares().begin(), p.Cotitulares().end(),
                                           [](const CCotitular& a, const CCotitular& b) {
                                               return a.titular < b.titular;
                                           }));
            }
        }
    }
}

TEST(RegistraTitular, RaisesOneMessageByTheLastConflictAndNoneForAKnownPerson)
{
    CMunicipio dos(79, 0);
    dos.InsertaTitular(Titular("ANA", "1", 1));
    dos.InsertaTitular(Titular("LUIS", "2", 2));
    int errores = 0;
    int warnings = 0;
    const std::string log = Grabado([&](CStdioFile& f) {
        for (const auto& [nombre, DNI, indice] : {std::tuple{"EVA", "3", 2},
                                                  {"ANA", "1", 0},
                                                  {"ANA", "3", 2},
                                                  {"EVA", "2", 2},
                                                  {"LUIS", "1", 2}}) {
            CMunicipio municipio = dos;
            EXPECT_EQ(RegistraTitular({f, errores, warnings}, municipio, Titular(nombre, DNI, 3)),
                      indice);
        }
    });
    EXPECT_EQ(log, "E204: Ya existe otro titular con el mismo nombre y distinto DNI para ANA\r\n"
                   "E205: Ya existe otro titular con el mismo DNI y distinto nombre que 2\r\n"
                   "E204: Ya existe otro titular con el mismo nombre y distinto DNI para LUIS\r\n");
    EXPECT_EQ(errores, 3);
    EXPECT_EQ(warnings, 0);
}
