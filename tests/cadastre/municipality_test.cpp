#include "cadastre/municipality.h"

#include <random>

#include "tests/cadastre/record_tools.h"

namespace {

CParaje Paraje(const std::string& nombre, int numOrden)
{
    CParaje paraje(nombre);
    paraje.NumOrden = static_cast<short>(numOrden);
    return paraje;
}

CModulo Modulo(const char* denominacion, const char* cal, int inten, int tipo = 0)
{
    CModulo modulo;
    modulo.Denominacion = denominacion;
    modulo.Cal = cal;
    modulo.Inten = inten;
    modulo.TipoEvalua = tipo;
    return modulo;
}

struct CPersonaPrueba {
    const char* nombre;
    const char* DNI;
};

/// The look-up as it is told: a walk over the holders that doesn't stop at a conflict.
int BuscaAndando(const std::vector<CTitular>& titulares, const CTitular& t)
{
    int resultado = -3;
    for (std::size_t i = 0; i < titulares.size(); ++i) {
        const CTitular& h = titulares[i];
        if (h.Nombre == t.Nombre) {
            if (h.DNI.IsEmpty() || t.DNI == h.DNI)
                return static_cast<int>(i);
            resultado = -2;
        }
        if (!h.DNI.IsEmpty() && h.DNI == t.DNI)
            resultado = -1;
    }
    return resultado;
}

int BuscaNumeroAndando(const std::vector<CTitular>& titulares, int numero)
{
    for (std::size_t i = 0; i < titulares.size(); ++i)
        if (titulares[i].NumOrden == numero)
            return static_cast<int>(i);
    return -3;
}

int InsertaAndando(std::vector<CTitular>& titulares, CTitular t)
{
    if (const int i = BuscaAndando(titulares, t); i >= 0) {
        CTitular& h = titulares[static_cast<std::size_t>(i)];
        if (h.NumOrden == -1)
            h.NumOrden = t.NumOrden;
        return i;
    }
    if (BuscaNumeroAndando(titulares, t.NumOrden) >= 0)
        t.NumOrden = -1;
    titulares.push_back(t);
    return static_cast<int>(titulares.size()) - 1;
}

/// As many holders as make a short array a long one; they meet nobody.
void Rellena(CMunicipio& municipio, int cuantos)
{
    for (int i = 0; i < cuantos; ++i)
        municipio.InsertaTitular(
            Titular("RELLENO " + std::to_string(i), "R" + std::to_string(i), 100000 + i));
}

constexpr int kCortoYLargo[] = {0, 20};

std::vector<int> Numeros(const CMunicipio& municipio)
{
    std::vector<int> numeros;
    for (const CTitular& titular : municipio.Titulares())
        numeros.push_back(titular.NumOrden);
    return numeros;
}

std::vector<int> TitularesDe(const CParcela& parcela)
{
    std::vector<int> titulares;
    for (const CCotitular& vinculo : parcela.Cotitulares())
        titulares.push_back(vinculo.titular);
    return titulares;
}

} // namespace

TEST(BuscaTitular, AnswersByNameAndDNI)
{
    const struct {
        const char* motivo;
        std::vector<CPersonaPrueba> guardados;
        CPersonaPrueba nuevo;
        int resultado;
    } kCasos[] = {
        {"nobody there", {}, {"ANA", "1"}, -3},
        {"the same person", {{"LUIS", "2"}, {"ANA", "1"}}, {"ANA", "1"}, 1},
        {"neither name nor DNI", {{"LUIS", "2"}}, {"ANA", "1"}, -3},
        {"a stored one without DNI matches by name", {{"ANA", ""}}, {"ANA", "1"}, 0},
        {"both without DNI", {{"ANA", ""}}, {"ANA", ""}, 0},
        {"the new one without DNI", {{"ANA", "1"}}, {"ANA", ""}, -2},
        {"same name, other DNI", {{"ANA", "1"}}, {"ANA", "2"}, -2},
        {"same DNI, other name", {{"ANA", "1"}}, {"LUIS", "1"}, -1},
        {"no DNI is nobody's DNI", {{"ANA", ""}}, {"LUIS", ""}, -3},
        {"eight blanks are a DNI", {{"ANA", "        "}}, {"LUIS", "        "}, -1},
        {"blanks count in the name", {{"ANA", "1"}}, {"ANA ", "2"}, -3},
        {"an exact one behind a conflict of names", {{"ANA", "2"}, {"ANA", "1"}}, {"ANA", "1"}, 1},
        {"an exact one behind a conflict of DNI", {{"LUIS", "1"}, {"ANA", "1"}}, {"ANA", "1"}, 1},
        {"one without DNI behind a conflict", {{"ANA", "2"}, {"ANA", ""}}, {"ANA", "1"}, 1},
        {"an exact one before one without DNI", {{"ANA", "1"}, {"ANA", ""}}, {"ANA", "1"}, 0},
        {"the last conflict tells: DNI", {{"ANA", "2"}, {"LUIS", "1"}}, {"ANA", "1"}, -1},
        {"the last conflict tells: name", {{"LUIS", "1"}, {"ANA", "2"}}, {"ANA", "1"}, -2},
        {"and not the one seen most often",
         {{"LUIS", "1"}, {"EVA", "1"}, {"ANA", "2"}},
         {"ANA", "1"},
         -2},
    };
    for (const auto& caso : kCasos) {
        for (const int relleno : kCortoYLargo) {
            SCOPED_TRACE(caso.motivo);
            CMunicipio municipio(79, 0);
            Rellena(municipio, relleno);
            for (const auto& p : caso.guardados)
                municipio.InsertaTitular(Titular(p.nombre, p.DNI, 0));
            EXPECT_EQ(municipio.BuscaTitular(Titular(caso.nuevo.nombre, caso.nuevo.DNI, 1)),
                      caso.resultado < 0 ? caso.resultado : caso.resultado + relleno);
        }
    }
}

TEST(BuscaTitular, AnswersAsAWalkDoesInAnyPopulation)
{
    std::mt19937 azar(17);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    for (int vez = 0; vez < 4000; ++vez) {
        SCOPED_TRACE(vez);
        CMunicipio municipio(79, 0);
        std::vector<CTitular> titulares;
        const int nombres = 1 + hasta(8);
        const int dnis = 1 + hasta(8);
        const auto alguien = [&] {
            const int dni = hasta(dnis);
            return Titular("NOMBRE " + std::to_string(hasta(nombres)),
                           dni == 0 ? "" : std::to_string(dni), hasta(30) - 1);
        };
        const int cuantos = hasta(60);
        for (int i = 0; i < cuantos; ++i) {
            const CTitular nuevo = alguien();
            ASSERT_EQ(municipio.BuscaTitular(nuevo), BuscaAndando(titulares, nuevo));
            ASSERT_EQ(municipio.InsertaTitular(nuevo), InsertaAndando(titulares, nuevo));
            const int numero = hasta(30) - 1;
            ASSERT_EQ(municipio.BuscaTitularNumOrden(numero),
                      BuscaNumeroAndando(titulares, numero));
            ASSERT_EQ(municipio.BuscaTitularNumOrden(-1), BuscaNumeroAndando(titulares, -1));
        }
        ASSERT_EQ(municipio.Titulares().size(), titulares.size());
        for (std::size_t i = 0; i < titulares.size(); ++i)
            ASSERT_EQ(municipio.Titulares()[i].NumOrden, titulares[i].NumOrden);
    }
}

TEST(InsertaTitular, SettlesTheNumberOfTheNewAndOfTheStoredHolder)
{
    const struct {
        const char* motivo;
        int guardado; // number of ANA, with the DNI 1; LUIS has 7
        CTitular nuevo;
        int indice;
        std::vector<int> numeros;
    } kCasos[] = {
        {"the same person keeps its number", 5, Titular("ANA", "1", 9), 0, {5, 7}},
        {"or takes one if it had none", -1, Titular("ANA", "1", 9), 0, {9, 7}},
        {"even one that another has", -1, Titular("ANA", "1", 7), 0, {7, 7}},
        {"or still has none", -1, Titular("ANA", "1", -1), 0, {-1, 7}},
        {"a new one keeps a free number", 5, Titular("EVA", "3", 9), 2, {5, 7, 9}},
        {"and loses a taken one", 5, Titular("EVA", "3", 7), 2, {5, 7, -1}},
        {"0 can be taken too", 0, Titular("EVA", "3", 0), 2, {0, 7, -1}},
        {"and stays without one", -1, Titular("EVA", "3", -1), 2, {-1, 7, -1}},
        {"a conflict doesn't stop it", 5, Titular("ANA", "2", 9), 2, {5, 7, 9}},
        {"of DNI neither", 5, Titular("EVA", "1", 5), 2, {5, 7, -1}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CMunicipio municipio(79, 0);
        municipio.InsertaTitular(Titular("ANA", "1", caso.guardado));
        municipio.InsertaTitular(Titular("LUIS", "9", 7));
        EXPECT_EQ(municipio.InsertaTitular(caso.nuevo), caso.indice);
        EXPECT_EQ(Numeros(municipio), caso.numeros);
    }
}

TEST(InsertaTitular, DropsTheOtherFieldsOfAPersonThatIsThere)
{
    CMunicipio municipio(79, 0);
    municipio.InsertaTitular(Titular("ANA", "", -1));
    CTitular otra = Titular("ANA", "1", 5);
    otra.CP = 28001;
    municipio.InsertaTitular(otra);
    EXPECT_EQ(municipio.Titulares()[0].DNI, "");
    EXPECT_EQ(municipio.Titulares()[0].CP, 0);
}

TEST(InsertaParcela, KnowsAParcelByPolygonAndNumberAlone)
{
    for (const int relleno : kCortoYLargo) {
        CMunicipio municipio(79, 0);
        for (int i = 0; i < relleno; ++i)
            municipio.InsertaParcela(CParcela(900, 1 + i, 1, ""));
        EXPECT_EQ(municipio.InsertaParcela(CParcela(12, 345, 1, "A")), relleno);
        EXPECT_EQ(municipio.InsertaParcela(CParcela(345, 12, 1, "B")), relleno + 1);
        EXPECT_EQ(municipio.InsertaParcela(CParcela(12, 345, 2, "C")), relleno);
        EXPECT_EQ(municipio.DameParcela(relleno).numOrtofoto, "A"); // the other one is dropped
        EXPECT_EQ(municipio.InsertaParcela(CParcela(0, 345, 1, "")), -7);
        EXPECT_EQ(municipio.InsertaParcela(CParcela(12, 0, 1, "")), -7);
        EXPECT_EQ(municipio.InsertaParcela(CParcela(-1, -1, 1, "")), -7);
        EXPECT_EQ(municipio.InsertaParcela(CParcela(1, 1, 1, "")), relleno + 2);

        int i = 99;
        EXPECT_TRUE(municipio.BuscaParcela(345, 12, i));
        EXPECT_EQ(i, relleno + 1);
        EXPECT_FALSE(municipio.BuscaParcela(345, 13, i));
        EXPECT_FALSE(municipio.BuscaParcela(65536 + 345, 12, i)); // numbers don't wrap here
        EXPECT_EQ(i, relleno + 1);
        EXPECT_EQ(municipio.BuscaParcela(CParcela(12, 345, 7, "")), relleno);
        EXPECT_EQ(municipio.BuscaParcela(CParcela(12, 346, 1, "")), -3);
    }
}

TEST(InsertaParaje, KnowsAPlaceByItsNameAndFindsANumbersFirst)
{
    for (const int relleno : kCortoYLargo) {
        CMunicipio municipio(79, 0);
        for (int i = 0; i < relleno; ++i)
            municipio.InsertaParaje(Paraje("Relleno " + std::to_string(i), 1000 + i));
        EXPECT_EQ(municipio.InsertaParaje(Paraje("Eras", 5)), relleno);
        EXPECT_EQ(municipio.InsertaParaje(Paraje("Eras ", 5)), relleno + 1); // padding counts
        EXPECT_EQ(municipio.InsertaParaje(Paraje("Eras", 6)), relleno);
        EXPECT_EQ(municipio.InsertaParaje(Paraje("", 7)), relleno + 2);
        EXPECT_EQ(municipio.InsertaParaje(Paraje("", 8)), relleno + 2);
        EXPECT_EQ(municipio.BuscaParaje(5), relleno);
        EXPECT_EQ(municipio.BuscaParaje(6), -3); // went with its record
        EXPECT_EQ(municipio.BuscaParajeNombre(Paraje("eras", 5)), -3);
    }
}

TEST(InsertaModulo, KnowsAModuleByDenominationClassAndIntensity)
{
    for (const int relleno : kCortoYLargo) {
        CMunicipio municipio(79, 0);
        for (int i = 0; i < relleno; ++i)
            municipio.InsertaModulo(Modulo("Relleno", "RR", i));
        EXPECT_EQ(municipio.InsertaModulo(Modulo("Labor", "LR", 1, 10)), relleno);
        EXPECT_EQ(municipio.InsertaModulo(Modulo("Labor", "LR", 2)), relleno + 1);
        EXPECT_EQ(municipio.InsertaModulo(Modulo("Labor", "LS", 1)), relleno + 2);
        EXPECT_EQ(municipio.InsertaModulo(Modulo("Prado", "LR", 1)), relleno + 3);
        EXPECT_EQ(municipio.InsertaModulo(Modulo("Labor", "LR", 1, 20)), relleno);
        EXPECT_EQ(municipio.Modulos()[static_cast<std::size_t>(relleno)].TipoEvalua, 10);
        EXPECT_EQ(municipio.BuscaModulo(Modulo("LR", "Labor", 1)), -3);
    }
}

TEST(OrdenaTitulares, LinksFollowTheirHoldersByNumber)
{
    CMunicipio municipio(79, 0);
    for (const int numero : {30, -1, 10, 20, -1})
        municipio.InsertaTitular(
            Titular("N" + std::to_string(municipio.Titulares().size()), "", numero));
    CParcela parcela(12, 345, 1, "");
    for (const int titular : {0, 1, 2, 3, 4, -3})
        parcela.InsertaCotitular(titular, -1, 0, "");
    municipio.InsertaParcela(parcela);
    municipio.OrdenaTitulares();

    std::string nombres;
    for (const CTitular& titular : municipio.Titulares())
        nombres += titular.Nombre;
    EXPECT_EQ(nombres, "N1N4N2N3N0"); // those without a number keep their order
    // The first one without a number stands for both; a link without a holder stays.
    EXPECT_EQ(TitularesDe(municipio.DameParcela(0)), (std::vector<int>{4, 0, 2, 3, 0, -3}));
}

TEST(OrdenaParajes, ParcelsFollowTheirPlaceByNumber)
{
    CMunicipio municipio(79, 0);
    for (const auto& [nombre, numero] :
         {std::pair{"Vega", 1}, {"Soto", 2}, {"Eras", 3}, {"Alto", 2}, {"\xD1ora", 4}})
        municipio.InsertaParaje(Paraje(nombre, numero));
    for (const int paraje : {0, 1, 2, 3, 4, -1, -3}) {
        CParcela parcela(1, 10 + paraje, 1, "");
        parcela.paraje = paraje;
        municipio.InsertaParcela(parcela);
    }
    municipio.OrdenaParajes();
    std::string nombres;
    for (const CParaje& paraje : municipio.Parajes())
        nombres += paraje.Nombre;
    EXPECT_EQ(nombres, "AltoErasSotoVega\xD1ora"); // as bytes
    std::vector<int> parajes;
    for (const CParcela& parcela : municipio.Parcelas())
        parajes.push_back(parcela.paraje);
    EXPECT_EQ(parajes, (std::vector<int>{3, 0, 1, 0, 4, -1, -3})); // Soto's 2 is Alto's too
}

TEST(OrdenaParcelas, SortsByZonePolygonAndNumberAndBackLinksFollow)
{
    CMunicipio municipio(79, 0);
    const short kNumeros[][3] = {{2, 1, 1}, {1, 2, 1}, {1, 1, 9}, {-1, 9, 9}, {1, 1, 2}};
    municipio.InsertaTitular(Titular("ANA", "1", 1));
    for (const auto& [zona, polig, parcela] : kNumeros) {
        const int i = municipio.InsertaParcela(CParcela(polig, parcela, zona, ""));
        municipio.InsertaPropiedad(0, i, zona * 100 + polig * 10 + parcela, "");
    }
    municipio.OrdenaParcelas();
    std::vector<int> claves;
    for (const CParcela& p : municipio.Parcelas())
        claves.push_back(p.Zona * 100 + p.Polig * 10 + p.Parcela);
    EXPECT_EQ(claves, (std::vector<int>{-1, 112, 119, 121, 211}));
    for (const CPropiedad& propiedad : municipio.Propiedades(0))
        EXPECT_EQ(claves[static_cast<std::size_t>(propiedad.parcela)], propiedad.partici);
}

TEST(OrdenaModulos, SortsByDenominationAndKeepsTheOrderOfEqualOnes)
{
    CMunicipio municipio(79, 0);
    for (const auto& [nombre, inten] : {std::pair{"Prado", 3}, {"Labor", 2}, {"Prado", 1}, {"", 4}})
        municipio.InsertaModulo(Modulo(nombre, "LR", inten));
    municipio.OrdenaModulos();
    std::string orden;
    for (const CModulo& modulo : municipio.Modulos())
        orden += std::to_string(modulo.Inten);
    EXPECT_EQ(orden, "4231");
}

TEST(Municipio, LookUpsKnowTheNewOrderAfterTheSorts)
{
    for (const int cuantos : {5, 50}) {
        CMunicipio municipio(79, 0);
        for (int i = 0; i < cuantos; ++i) {
            const int j = cuantos - i; // the sorts turn all arrays round
            municipio.InsertaTitular(Titular("N" + std::to_string(j), std::to_string(j), j));
            municipio.InsertaParaje(Paraje(std::string(static_cast<std::size_t>(j), 'P'), j));
            municipio.InsertaModulo(
                Modulo(std::string(static_cast<std::size_t>(j), 'M').c_str(), "LR", j));
            municipio.InsertaParcela(CParcela(1, j, 1, ""));
        }
        // Asked before, so that what was remembered has to be forgotten.
        EXPECT_EQ(municipio.BuscaTitular(Titular("N1", "9999", 0)), -2);
        EXPECT_EQ(municipio.BuscaTitular(Titular("X", "1", 0)), -1);
        EXPECT_EQ(municipio.BuscaParaje(1), cuantos - 1);
        municipio.OrdenaTitulares();
        municipio.OrdenaParajes();
        municipio.OrdenaParcelas();
        municipio.OrdenaModulos();
        EXPECT_EQ(municipio.BuscaTitular(Titular("N1", "1", 0)), 0);
        EXPECT_EQ(municipio.BuscaTitular(Titular("N1", "2", 0)), -1); // N2 with the DNI 2 is later
        EXPECT_EQ(municipio.BuscaTitular(Titular("N2", "1", 0)), -2);
        EXPECT_EQ(municipio.BuscaTitularNumOrden(2), 1);
        EXPECT_EQ(municipio.BuscaParaje(2), 1);
        EXPECT_EQ(municipio.BuscaParajeNombre(Paraje("PP", 0)), 1);
        EXPECT_EQ(municipio.BuscaModulo(Modulo("MM", "LR", 2)), 1);
        EXPECT_EQ(municipio.BuscaParcela(CParcela(1, 2, 1, "")), 1);
    }
}
