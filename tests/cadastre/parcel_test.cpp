#include "cadastre/parcel.h"

#include <random>

#include "platform/ansi.h"
#include "tests/cadastre/record_lines.h"
#include "tests/cadastre/record_tools.h"

namespace {

CParcela DeFila(std::string_view conBarras)
{
    return DeFila(CParcela(0, 0, 0, ""), conBarras);
}

/// Holders or places with these numbers.
template <class R>
std::vector<R> ConNumeros(std::initializer_list<short> numeros)
{
    std::vector<R> registros;
    for (const short numero : numeros)
        registros.emplace_back().NumOrden = numero;
    return registros;
}

std::string Graba(const CParcela& parcela, bool fijo)
{
    return Grabado([&](CStdioFile& f) {
        parcela.Graba(f, 28, 79, 0, ConNumeros<CTitular>({11, 7654}), ConNumeros<CParaje>({9, 42}),
                      fijo);
    });
}

struct CSub {
    const char* letra;
    int superfic;
    char tipo = ' ';
    bool salvar = true;
};

CParcela ConSubparcelas(const std::vector<CSub>& subs)
{
    CParcela parcela(12, 345, 1, "");
    for (const CSub& s : subs) {
        CSubparcela sub(s.letra);
        sub.superfic = s.superfic;
        sub.tipo = s.tipo;
        sub.salvar = s.salvar;
        bool repetida = false;
        parcela.InsertaSubparcela(CSubparcela(sub), repetida);
    }
    return parcela;
}

std::vector<int> Superficies(const CParcela& parcela)
{
    std::vector<int> superficies;
    for (const CSubparcela& sub : parcela.Subparcelas())
        superficies.push_back(sub.superfic);
    return superficies;
}

} // namespace

TEST(Parcela, WrapsNumbersThatPassTheirBits)
{
    CParcela parcela = DeFila("||65537|-32769|4294967297|2147483648");
    EXPECT_EQ(parcela.Zona, 1);
    EXPECT_EQ(parcela.Polig, 32767);
    EXPECT_EQ(parcela.Parcela, 1);
    EXPECT_EQ(parcela.Superficie, -2147483647 - 1);

    std::string linea = kLineaPR;
    linea.replace(30, 12, "004294967299");
    parcela.Lee(linea, kModoCatastro);
    EXPECT_EQ(parcela.valorCatastral, 3);
}

TEST(Parcela, WritesItsMainLinkAndItsPlaceByTheirNumbers)
{
    CParcela parcela = DeFila("||1|12|345|123456|98765|1994||||0559-12-SUR|7|45||C");
    parcela.InsertaCotitular(0, 1, 40, "US");
    parcela.InsertaCotitular(1, 0, 60, "PRX");
    parcela.paraje = 1;
    EXPECT_EQ(
        Graba(parcela, true),
        "028079000PR01012003450001234560007654PR0006000201         0559-12-SU007045            "
        "        00042         R00C                                      \r\n");
    EXPECT_EQ(Graba(parcela, false), // the row leaves the title whole
              Fila("028|079|   1|  12|   345|    123456|        98765| 1994|    7654|PRX|    60|"
                   "0559-12-SU|   7|  45|    42|C\r\n"));
}

TEST(Parcela, WritesMinusOneWithoutAMainHolder)
{
    CParcela parcela = DeFila("||1|12|345|1");
    parcela.InsertaCotitular(0, 1, 40, "US");
    parcela.paraje = -3; // a place that wasn't found
    EXPECT_EQ(
        Graba(parcela, true),
        "028079000PR0101200345000000001-000001  0000000100                   000000            "
        "        00000         R00                                       \r\n");
    EXPECT_EQ(Graba(parcela, false),
              Fila("028|079|   1|  12|   345|         1|            0|    0|      -1|  |     0|"
                   "          |   0|   0|     0| \r\n"));
}

TEST(Parcela, WritesMinusOneWithTitleAndShareForAMainLinkWhoseHolderWasNotFound)
{
    CParcela parcela = DeFila("||1|12|345|1");
    parcela.InsertaCotitular(-3, 0, 40, "US");
    EXPECT_EQ(Graba(parcela, false),
              Fila("028|079|   1|  12|   345|         1|            0|    0|      -1|US|    40|"
                   "          |   0|   0|     0| \r\n"));
}

TEST(Parcela, CountsItsLinksAndTheirGroupsByTens)
{
    constexpr struct {
        int vinculos;
        const char* columnas; // 44 to 48
    } kCasos[] = {{0, "00000"},  {1, "00100"},  {2, "00201"},  {10, "01001"},
                  {11, "01102"}, {20, "02002"}, {21, "02103"}, {999, "999100"}};
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.vinculos);
        CParcela parcela(12, 345, 1, "");
        for (int i = 0; i < caso.vinculos; ++i)
            parcela.InsertaCotitular(-10 - i, i + 1, 0, "");
        const std::string registro = Graba(parcela, true);
        EXPECT_EQ(registro.substr(44, registro.size() - 2 - 145), caso.columnas);
    }
}

TEST(ParcelaSubparcelas, FindsAsAWalkDoesInShortAndLongParcels)
{
    std::mt19937 azar(5);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    for (int vez = 0; vez < 300; ++vez) {
        CParcela parcela(12, 345, 1, "");
        std::vector<std::string> letras;
        const auto busca = [&](const std::string& letra, int desde) {
            for (int i = std::max(desde, 0); i < static_cast<int>(letras.size()); ++i)
                if (letras[static_cast<std::size_t>(i)] == letra)
                    return i;
            return kNoEncontrado;
        };
        const int distintas = 1 + hasta(30);
        const int cuantas = hasta(40);
        for (int i = 0; i < cuantas; ++i) {
            const std::string letra(1, static_cast<char>('A' + hasta(distintas)));
            bool repetida = false;
            const bool estaba = busca(letra, 0) >= 0;
            ASSERT_EQ(parcela.InsertaSubparcela(CSubparcela(letra), repetida), i);
            ASSERT_EQ(repetida, estaba);
            letras.push_back(letra);
            const std::string otra(1, static_cast<char>('A' + hasta(distintas)));
            for (const int desde : {-5, 0, 1, hasta(i + 3)})
                ASSERT_EQ(parcela.BuscaSubparcela(otra, desde), busca(otra, desde));
        }
        for (int i = 0; (i = busca("A", i)) >= 0; ++i) // from one to the next, as callers go
            ASSERT_EQ(parcela.BuscaSubparcela("A", i + 1), busca("A", i + 1));
        parcela.OrdenaSubparcelas();
        std::sort(letras.begin(), letras.end());
        for (const std::string& letra : letras)
            ASSERT_EQ(parcela.BuscaSubparcela(letra, 0), busca(letra, 0));
    }
}

TEST(ParcelaSubparcelas, SortsByLetterAsBytesAndKeepsTheOrderOfEqualOnes)
{
    CParcela parcela = ConSubparcelas(
        {{"Ñ"_ansi, 1}, {"B", 2}, {"a", 3}, {"AB", 4}, {"B", 5}, {"A", 6}, {"", 7}, {"B", 8}});
    parcela.OrdenaSubparcelas();
    EXPECT_EQ(Superficies(parcela), (std::vector<int>{7, 6, 4, 2, 5, 8, 3, 1}));
}

TEST(ParcelaSubparcelas, MendsAMissingSurfaceForGoodFromTheFirstOneWithItsLetter)
{
    const struct {
        const char* motivo;
        std::vector<CSub> subs;
        std::vector<int> mendadas;
    } kCasos[] = {
        {"land before construction", {{"A", 500}, {"A", 0}}, {500, 500}},
        {"construction before land", {{"A", 0}, {"A", 500}}, {500, 500}},
        {"the first surface above 0", {{"A", 0}, {"A", -1}, {"A", 7}, {"A", 9}}, {7, -1, 7, 9}},
        {"other letters give nothing", {{"A", 0}, {"B", 500}, {"a", 3}}, {0, 500, 3}},
        {"a negative one isn't missing", {{"A", -5}, {"A", 500}}, {-5, 500}},
        {"one that isn't saved gives and takes",
         {{"A", 5, ' ', false}, {"A", 0}, {"A", 0, ' ', false}},
         {5, 5, 5}},
        {"none has one", {{"A", 0}, {"A", 0}}, {0, 0}},
    };
    for (const auto& caso : kCasos) {
        for (const std::size_t otras : {0, 40}) { // of another letter, in a long parcel
            SCOPED_TRACE(std::string(caso.motivo) + ", " + std::to_string(otras));
            std::vector<CSub> subs = caso.subs;
            subs.insert(subs.end(), otras, {"Z", 1});
            std::vector<int> mendadas = caso.mendadas;
            mendadas.insert(mendadas.end(), otras, 1);
            CParcela parcela = ConSubparcelas(subs);
            Grabado([&](CStdioFile& f) { parcela.GrabaSubparcelas(f, 28, 79, 0, otras == 0); });
            EXPECT_EQ(Superficies(parcela), mendadas);
        }
    }
}

TEST(ParcelaSubparcelas, WritesThemInOrderWithTheParcelsNumbers)
{
    CParcela parcela = ConSubparcelas({{"B", 0}, {"C", 9, ' ', false}, {"B", 123456}});
    const std::string linea = "028079000SP0101200345   B S 000123456  000000  00" + Veces(35, " ") +
                              "000              000000000000000000000 00000000    0000" +
                              Veces(11, " ") + "\r\n";
    EXPECT_EQ(Grabado([&](CStdioFile& f) { parcela.GrabaSubparcelas(f, 28, 79, 0, true); }),
              linea + linea);
}

TEST(ParcelaSubparcelas, AddsUpEachLetterOnceAndAbstractOnesAlways)
{
    const struct {
        const char* motivo;
        std::vector<CSub> subs;
        int suma;
    } kCasos[] = {
        {"none", {}, 0},
        {"different letters", {{"A", 1}, {"B", 2}}, 3},
        {"a repeated letter counts by its first", {{"A", 1}, {"A", 2}}, 1},
        {"abstract ones count always", {{"A", 1, 'A'}, {"A", 2, 'A'}}, 3},
        {"an abstract one counts behind its letter", {{"A", 1}, {"A", 2, 'A'}}, 3},
        {"and notes its letter", {{"A", 1, 'A'}, {"A", 2}}, 1},
        {"not saved, not counted", {{"A", 1, ' ', false}, {"B", 2, 'A', false}}, 0},
        {"not saved, letter not noted", {{"A", 1, ' ', false}, {"A", 2}}, 2},
        {"another kind isn't abstract", {{"A", 1, 'a'}, {"A", 2, 'B'}}, 1},
        {"wraps", {{"A", 2147483647}, {"B", 2}}, -2147483647},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParcela parcela = ConSubparcelas(caso.subs);
        parcela.Superficie = 77;
        int superficie = -1;
        int suma = -1;
        parcela.SumaSuperficies(superficie, suma);
        EXPECT_EQ(superficie, 77);
        EXPECT_EQ(suma, caso.suma);
    }
}
