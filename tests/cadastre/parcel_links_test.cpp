#include <random>
#include <tuple>

#include "cadastre/parcel.h"
#include "tests/cadastre/record_tools.h"

namespace {

using CVinculos = std::vector<std::tuple<int, int, int, std::string>>;

CParcela Con(const CVinculos& vinculos)
{
    CParcela parcela(12, 345, 1, "");
    for (const auto& [titular, orden, partici, tit] : vinculos)
        EXPECT_EQ(parcela.InsertaCotitular(titular, orden, partici, tit), 1);
    return parcela;
}

CVinculos De(const CParcela& parcela)
{
    CVinculos vinculos;
    for (const CCotitular& c : parcela.Cotitulares())
        vinculos.emplace_back(c.titular, c.orden, c.partici, std::string_view(c.Tit));
    return vinculos;
}

std::vector<int> Ordenes(const CParcela& parcela)
{
    std::vector<int> ordenes;
    for (const CCotitular& c : parcela.Cotitulares())
        ordenes.push_back(c.orden);
    return ordenes;
}

CParcela ConParticipaciones(const std::vector<int>& participaciones)
{
    CParcela parcela(12, 345, 1, "");
    for (std::size_t i = 0; i < participaciones.size(); ++i)
        parcela.InsertaCotitular(static_cast<int>(i), -1, participaciones[i], "");
    return parcela;
}

/// Parcel with a main link, at `principal`, and others; holder i has the number 100 + i.
CParcela ConVinculos(int cuantos, int principal)
{
    CParcela parcela(12, 345, 1, "");
    for (int i = 0; i < cuantos; ++i)
        parcela.InsertaCotitular(i, i == principal ? 0 : i + 1, 10 + i, "PR");
    return parcela;
}

std::string Graba(const CParcela& parcela, bool fijo)
{
    std::vector<CTitular> titulares(40);
    for (std::size_t i = 0; i < titulares.size(); ++i)
        titulares[i].NumOrden = 100 + static_cast<int>(i);
    return Grabado([&](CStdioFile& f) { parcela.GrabaCotitulares(f, 28, 79, 0, titulares, fijo); });
}

constexpr const char* kVacio = "0000000  00000";

/// The insert as it is told: a walk over the links.
int InsertaAndando(CVinculos& vinculos, int titular, int orden, int partici)
{
    for (auto& [suTitular, suOrden, suPartici, suTit] : vinculos) {
        if (orden >= 0 && suOrden == orden)
            return -9;
        if (suTitular != titular)
            continue;
        if (orden >= 0)
            return -8;
        suPartici += partici;
        return 1;
    }
    vinculos.emplace_back(titular, orden, partici, "PR");
    return 1;
}

} // namespace

TEST(Cotitulares, RefuseATakenNumberOrHolderByWhatIsMetFirst)
{
    const struct {
        const char* motivo;
        int titular, orden, codigo;
    } kCasos[] = {
        {"new holder, new number", 9, 9, 1},
        {"new holder, taken number", 9, 2, -9},
        {"holder linked, new number", 2, 9, -8},
        {"one link has both: the number is looked at first", 2, 2, -9},
        {"number met before the holder", 3, 1, -9},
        {"holder met before the number", 1, 3, -8},
        {"holder met before the main link's number", 1, 0, -8},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        const CVinculos antes = {
            {1, 1, 10, "A"}, {2, 2, 20, "B"}, {3, 3, 30, "C"}, {4, 0, 40, "D"}};
        CParcela parcela = Con(antes);
        EXPECT_EQ(parcela.InsertaCotitular(caso.titular, caso.orden, 50, "E"), caso.codigo);
        CVinculos despues = antes;
        if (caso.codigo == 1)
            despues.emplace_back(caso.titular, caso.orden, 50, "E");
        EXPECT_EQ(De(parcela), despues);
    }
}

TEST(Cotitulares, WithoutANumberAddTheirShareToTheHoldersLink)
{
    CParcela parcela = Con({{1, 0, 10, "A"}, {2, -1, 20, "B"}, {-3, -1, 5, "C"}});
    EXPECT_EQ(parcela.InsertaCotitular(1, -1, 7, "X"), 1); // the main one's
    EXPECT_EQ(parcela.InsertaCotitular(2, -1, 2147483647, "X"), 1);
    EXPECT_EQ(parcela.InsertaCotitular(-3, -1, 1, "X"), 1);
    EXPECT_EQ(parcela.InsertaCotitular(3, -1, 0, "X"), 1);
    EXPECT_EQ(De(parcela), (CVinculos{{1, 0, 17, "A"},
                                      {2, -1, -2147483629, "B"}, // wraps
                                      {-3, -1, 6, "C"},
                                      {3, -1, 0, "X"}}));
}

TEST(Cotitulares, InsertAsAWalkDoesInShortAndLongParcels)
{
    std::mt19937 azar(11);
    const auto hasta = [&](int n) { return static_cast<int>(azar() % static_cast<unsigned>(n)); };
    for (int vez = 0; vez < 600; ++vez) {
        CParcela parcela(12, 345, 1, "");
        CVinculos vinculos;
        const int titulares = 1 + hasta(40);
        for (int i = 0; i < 60; ++i) {
            const int que = hasta(30);
            if (que == 0) {
                parcela.OrdenaCotitulares();
                vinculos = De(parcela);
            } else if (que == 1) {
                parcela.EligeTitularPrincipal();
                vinculos = De(parcela);
            } else if (que == 2) {
                parcela = CParcela(parcela); // a copy knows its links too
            } else {
                const int titular = hasta(titulares) - 3;
                const int orden = hasta(titulares + 5) - 3;
                const int partici = hasta(5);
                ASSERT_EQ(parcela.InsertaCotitular(titular, orden, partici, "PR"),
                          InsertaAndando(vinculos, titular, orden, partici));
            }
            ASSERT_EQ(De(parcela), vinculos);
        }
    }
}

TEST(Cotitulares, TheGreatestShareAboveZeroBecomesTheMainOne)
{
    const struct {
        const char* motivo;
        std::vector<int> participaciones;
        std::vector<int> ordenes;
    } kCasos[] = {
        {"no links", {}, {}},
        {"the only one", {1}, {0}},
        {"in the middle", {10, 60, 30}, {1, 0, 2}},
        {"the first of equals", {50, 50}, {0, 1}},
        {"the first of equals, further on", {0, 7, 7, 7}, {1, 0, 2, 3}},
        {"all 0: nothing changes", {0, 0}, {-1, -1}},
        {"none above 0: nothing changes", {-5, 0, -1}, {-1, -1, -1}},
        {"negative ones get their number", {-5, 1}, {1, 0}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParcela parcela = ConParticipaciones(caso.participaciones);
        parcela.EligeTitularPrincipal();
        EXPECT_EQ(Ordenes(parcela), caso.ordenes);
    }
}

TEST(Cotitulares, SortByHolderShareNumberAndTitleAndGetAMainLink)
{
    const struct {
        const char* motivo;
        CVinculos antes, despues;
    } kCasos[] = {
        {"none", {}, {}},
        {"by holder, below 0 first",
         {{2, 0, 1, ""}, {-3, 1, 9, ""}},
         {{-3, 1, 9, ""}, {2, 0, 1, ""}}},
        {"the main one may stand anywhere",
         {{3, 0, 1, ""}, {1, 2, 5, ""}, {2, 1, 3, ""}},
         {{1, 2, 5, ""}, {2, 1, 3, ""}, {3, 0, 1, ""}}},
        {"without a main one the first becomes it",
         {{3, -1, 1, "A"}, {1, -1, 5, "B"}},
         {{1, 0, 5, "B"}, {3, -1, 1, "A"}}},
        {"even one whose holder wasn't found",
         {{3, 4, 1, "A"}, {-3, 5, 5, "B"}},
         {{-3, 0, 5, "B"}, {3, 4, 1, "A"}}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParcela parcela = Con(caso.antes);
        parcela.OrdenaCotitulares();
        EXPECT_EQ(De(parcela), caso.despues);
    }
}

TEST(Cotitulares, OfOneHolderSortByShareThenNumberThenTitle)
{
    CParcela parcela = Con({{0, 0, 5, "B"},
                            {1, -1, 5, "B"},
                            {2, 2, 5, "A"},
                            {3, 1, 5, "A"},
                            {4, -1, 5, "A"},
                            {5, 9, 4, "Z"}});
    parcela.RenumeraTitulares({7, 7, 7, 7, 7, 7}); // as holders that share a number come to be one
    parcela.OrdenaCotitulares();
    EXPECT_EQ(De(parcela), (CVinculos{{7, 9, 4, "Z"},
                                      {7, -1, 5, "A"},
                                      {7, -1, 5, "B"},
                                      {7, 0, 5, "B"},
                                      {7, 1, 5, "A"},
                                      {7, 2, 5, "A"}}));
}

TEST(Cotitulares, SharesBecomePercentagesOfTheSubparcels)
{
    const struct {
        const char* motivo;
        std::vector<int> superficies, participaciones, porcentajes, ordenes;
    } kCasos[] = {
        {"30 and 70", {30, 70}, {30, 70}, {30, 70}, {1, 0}},
        {"thirds", {1, 2}, {1, 2}, {33, 67}, {1, 0}},
        {"half goes up", {8}, {1}, {13}, {0}},
        {"half of one goes up", {200}, {1}, {1}, {0}},
        {"below it goes down", {201}, {1}, {0}, {-1}},
        {"no subparcels", {}, {1, 5}, {100, 100}, {0, 1}},
        {"all surfaces 0", {0, 0}, {0, 0}, {100, 100}, {0, 1}},
        {"the sum wraps to 0", {2147483647, 2147483647, 2}, {2147483647}, {100}, {0}},
        {"the sum wraps below 0", {2147483647, 1}, {1073741824}, {-49}, {-1}},
        {"no links", {10}, {}, {}, {}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CParcela parcela = ConParticipaciones(caso.participaciones);
        for (const int superficie : caso.superficies) {
            CSubparcela sub("A"); // a repeated letter counts each time
            sub.superfic = superficie;
            bool repetida = false;
            parcela.InsertaSubparcela(CSubparcela(sub), repetida);
        }
        parcela.ReparteParticipaciones();
        std::vector<int> porcentajes;
        for (const CCotitular& c : parcela.Cotitulares())
            porcentajes.push_back(c.partici);
        EXPECT_EQ(porcentajes, caso.porcentajes);
        EXPECT_EQ(Ordenes(parcela), caso.ordenes);
    }
}

TEST(RegistroCT, AParcelWithOneLinkHasNone)
{
    EXPECT_EQ(Graba(ConVinculos(0, -1), true), "");
    EXPECT_EQ(Graba(ConVinculos(1, 0), true), "");
    EXPECT_EQ(Graba(ConVinculos(1, -1), true), ""); // though the one isn't the main one
}

TEST(RegistroCT, FillsAnUnusedGroupUpToNine)
{
    EXPECT_EQ(Graba(ConVinculos(2, 0), true),
              "028079000CT0101200345010000101PR00011" + Veces(8, kVacio) + " \r\n");
    EXPECT_EQ(Graba(ConVinculos(3, 1), true), // the main link in the middle is passed over
              "028079000CT0101200345010000100PR000100000102PR00012" + Veces(7, kVacio) + " \r\n");
}

TEST(RegistroCT, TenLinksFillOneRecordAndElevenBeginASecond)
{
    const std::string nueve =
        "0000100PR000100000101PR000110000102PR000120000103PR000130000104PR00014"
        "0000105PR000150000106PR000160000107PR000170000108PR00018";
    EXPECT_EQ(Graba(ConVinculos(10, 9), true), "028079000CT010120034501" + nueve + " \r\n");
    EXPECT_EQ(Graba(ConVinculos(11, 10), true), "028079000CT010120034501" + nueve +
                                                    " \r\n028079000CT0101200345020000109PR00019" +
                                                    Veces(8, kVacio) + " \r\n");
}

TEST(RegistroCT, WithoutAMainLinkTheFillersAreStillCountedFromTheLinks)
{
    EXPECT_EQ(Graba(ConVinculos(2, -1), true),
              "028079000CT0101200345010000100PR000100000101PR00011" + Veces(8, kVacio) + " \r\n");
}

TEST(RegistroCT, WidensForWideValuesAndKeepsTheSignInsideTheWidth)
{
    CParcela parcela(1234, 123456, -1, "");
    parcela.salvar = false; // plays no part
    parcela.InsertaCotitular(0, 0, 0, "");
    parcela.InsertaCotitular(-3, -1, 123456, "TIT");
    parcela.InsertaCotitular(2, -1, -1, "");
    EXPECT_EQ(Graba(parcela, true), "028079000CT-1123412345601-000001TIT1234560000102  -0001" +
                                        Veces(7, kVacio) + " \r\n");
}

TEST(FilaCotitular, EachLinkButTheMainOneHasARow)
{
    CParcela parcela = Con({{3, -1, 40, "US"}, {0, 0, 50, "PR"}, {-3, 7, -1, "TIT"}});
    parcela.salvar = false; // plays no part
    EXPECT_EQ(Graba(parcela, false), Fila("028|079|   1|  12|   345|     103|US|    40\r\n"
                                          "028|079|   1|  12|   345|      -1|TIT|    -1\r\n"));
    EXPECT_EQ(Graba(Con({{3, 0, 40, "US"}}), false), "");
    EXPECT_EQ(Graba(Con({{3, -1, 40, "US"}}), false), // one link, not the main one
              Fila("028|079|   1|  12|   345|     103|US|    40\r\n"));
}
