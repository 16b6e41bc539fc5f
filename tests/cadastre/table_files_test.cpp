#include "cadastre/table_files.h"

#include "cadastre/database.h"
#include "tests/cadastre/record_tools.h"

namespace {

constexpr const char* kTitulares =
    "Ger Mun NumOrden    Nombre                                                      "
    "CJurid  DNI      letra Exen Del Mun sig nombreVia                  numPol bloq    "
    "esc plant puert  CP\r\n";
constexpr const char* kParcelas =
    "Ger\tMun\tZona\tPolig\tParcela\tSuperficie\tvalorCatastral\tañoVal\tnumImputa\tTit\t"
    "partici\tnumOrtofoto\t   x\t   y\tparaje\tclaveConc\r\n"_ansi;
constexpr const char* kModulos =
    "Ger Mun Cal Inten Denominacion                           TipoEvalua    Jornadas "
    "EConce1 VConce1 EConce2 VConce2 EConce3 VConce3 Exen ConIBI ConJornadas\r\n";
constexpr const char* kSubparcelas =
    "Ger Mun Zona   Polig   Parcela letra tipo cFiscal superfic cE   iE   ejer   cA   "
    "iA  ref1  ref2 compCons descComponente    largo   ancho   alto  volumen   uso  cl "
    "mod tipo usoP cSing añoC  añoR iC iR estC exencion añoEx\r\n"_ansi;
constexpr const char* kParajes = "Ger Mun EMenor NumOrden Nombre\r\n";
constexpr const char* kCotitulares = "Ger Mun  Zona  Polig   Parcela  numOrden Titul partici\r\n";

/// Two municipalities, the later one first, each with one record of each kind; that one is a part
/// of a municipality, with the number 3.
CBaseCatastro DosMunicipios()
{
    CBaseCatastro base(28);
    for (const auto& [mun, emenor] : {std::pair<short, short>{80, 3}, {79, 0}}) {
        CMunicipio& m = base.DameMunicipio(base.InsertaMunicipio(CMunicipio(mun, emenor)));
        CParaje paraje("Eras");
        paraje.NumOrden = 42;
        m.InsertaParaje(paraje);
        CModulo modulo;
        modulo.Cal = "LR";
        modulo.Denominacion = "Labor";
        m.InsertaModulo(modulo);
        for (const int numero : {7, 8}) {
            CTitular titular;
            titular.Nombre = numero == 7 ? "ANA" : "LUIS";
            titular.DNI = numero == 7 ? "1" : "2";
            titular.NumOrden = numero;
            m.InsertaTitular(titular);
        }
        CParcela parcela(12, 345, 1, "0559");
        parcela.paraje = 0;
        parcela.InsertaCotitular(0, 0, 60, "PR");
        parcela.InsertaCotitular(1, 1, 40, "US");
        bool repetida = false;
        parcela.InsertaSubparcela(CSubparcela("A"), repetida);
        m.InsertaParcela(parcela);
    }
    return base;
}

} // namespace

TEST(FicherosTabla, BeginWithTheirHeaderLineThoughNothingFollows)
{
    CBaseCatastro base(28);
    const std::pair<std::string, const char*> kCasos[] = {
        {Grabado([&](CStdioFile& f) { base.GrabaTitulares(f, false); }), kTitulares},
        {Grabado([&](CStdioFile& f) { base.GrabaParcelas(f, false); }), kParcelas},
        {Grabado([&](CStdioFile& f) { base.GrabaModulos(f, false); }), kModulos},
        {Grabado([&](CStdioFile& f) { base.GrabaSubparcelas(f, false); }), kSubparcelas},
        {Grabado([&](CStdioFile& f) { base.GrabaParajes(f, false); }), kParajes},
        {Grabado([&](CStdioFile& f) { base.GrabaCotitulares(f, false); }), kCotitulares},
    };
    for (const auto& [escrito, cabecera] : kCasos)
        EXPECT_EQ(escrito, cabecera);
}

TEST(FicherosTabla, HoldTheRowsOfAllMunicipalitiesInTheirOrder)
{
    CBaseCatastro base = DosMunicipios();
    const auto dos = [](std::string_view cabecera, const std::string& filas) {
        std::string segunda = filas;
        if (const auto i = segunda.find("028\t080\t   3"); i != std::string::npos)
            segunda[i + 11] = '0';
        for (std::size_t i = 0; (i = segunda.find("028\t080", i)) != std::string::npos; ++i)
            segunda.replace(i, 7, "028\t079");
        return std::string(cabecera) + filas + segunda;
    };
    EXPECT_EQ(
        Grabado([&](CStdioFile& f) { base.GrabaTitulares(f, false); }),
        dos(kTitulares,
            Fila(
                "028|080|       7|ANA                                                         | |"
                "1       | | |000|000|  |                         |    0|  |  |  |   |00000\r\n"
                "028|080|       8|LUIS                                                        | |"
                "2       | | |000|000|  |                         |    0|  |  |  |   |00000\r\n")));
    EXPECT_EQ(Grabado([&](CStdioFile& f) { base.GrabaParcelas(f, false); }),
              dos(kParcelas,
                  Fila("028|080|   1|  12|   345|         0|            0|    0|       7|PR|    60|"
                       "0559      |   0|   0|    42| \r\n")));
    EXPECT_EQ(
        Grabado([&](CStdioFile& f) { base.GrabaModulos(f, false); }),
        dos(kModulos,
            Fila("028|080|LR|  0|Labor                                   |      0|       0.00|"
                 "    0|      0|    0|      0|    0|      0| | | \r\n")));
    EXPECT_EQ(Grabado([&](CStdioFile& f) { base.GrabaSubparcelas(f, false); }),
              dos(kSubparcelas,
                  Fila("028|080|   1|  12|   345|   A| |S |         0|  |  0|    0|  |  0|       |"
                       "       |   0|              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|"
                       "    0| | | | |    0\r\n")));
    EXPECT_EQ(Grabado([&](CStdioFile& f) { base.GrabaParajes(f, false); }),
              dos(kParajes, Fila("028|080|   3|    42|Eras                          \r\n")));
    EXPECT_EQ(Grabado([&](CStdioFile& f) { base.GrabaCotitulares(f, false); }),
              dos(kCotitulares, Fila("028|080|   1|  12|   345|       8|US|    40\r\n")));
}

TEST(FicherosTabla, TheExchangeFormIsTheRecordsOfAllMunicipalitiesAlone)
{
    CBaseCatastro base = DosMunicipios();
    const std::pair<std::string, std::size_t> kCasos[] = {
        {Grabado([&](CStdioFile& f) { base.GrabaTitulares(f, true); }), 4 * 152},
        {Grabado([&](CStdioFile& f) { base.GrabaParcelas(f, true); }), 2 * 152},
        {Grabado([&](CStdioFile& f) { base.GrabaCotitulares(f, true); }), 2 * 152},
        {Grabado([&](CStdioFile& f) { base.GrabaSubparcelas(f, true); }), 2 * 152},
        {Grabado([&](CStdioFile& f) { base.GrabaParajes(f, true); }), 2 * 152},
        {Grabado([&](CStdioFile& f) { base.GrabaModulos(f, true); }), 2 * 82},
    };
    for (const auto& [escrito, bytes] : kCasos) {
        EXPECT_EQ(escrito.size(), bytes);
        EXPECT_TRUE(escrito.starts_with("028080003")) << escrito;
        EXPECT_EQ(escrito.substr(bytes / 2, 9), "028079000");
    }
}
