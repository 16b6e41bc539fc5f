#include "cadastre/table_files.h"

#include "cadastre/database.h"
#include "tests/cadastre/record_tools.h"

namespace {

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
        m.InsertaTitular(Titular("ANA", "1", 7));
        m.InsertaTitular(Titular("LUIS", "2", 8));
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

/// The rows of a table file, without the line that heads it.
std::string Filas(const std::string& tabla)
{
    EXPECT_TRUE(tabla.starts_with("Ger"));
    return tabla.substr(tabla.find('\n') + 1);
}

} // namespace

TEST(FicherosTabla, HoldTheRowsOfAllMunicipalitiesInTheirOrder)
{
    CBaseCatastro base = DosMunicipios();
    const auto dos = [](const std::string& filas) {
        std::string segunda = filas;
        if (const auto i = segunda.find("028\t080\t   3"); i != std::string::npos)
            segunda[i + 11] = '0';
        for (std::size_t i = 0; (i = segunda.find("028\t080", i)) != std::string::npos; ++i)
            segunda.replace(i, 7, "028\t079");
        return filas + segunda;
    };
    EXPECT_EQ(
        Filas(Grabado([&](CStdioFile& f) { base.GrabaTitulares(f, false); })),
        dos(Fila(
            "028|080|       7|ANA                                                         | |"
            "1       | | |000|000|  |                         |    0|  |  |  |   |00000\r\n"
            "028|080|       8|LUIS                                                        | |"
            "2       | | |000|000|  |                         |    0|  |  |  |   |00000\r\n")));
    EXPECT_EQ(Filas(Grabado([&](CStdioFile& f) { base.GrabaParcelas(f, false); })),
              dos(Fila("028|080|   1|  12|   345|         0|            0|    0|       7|PR|    60|"
                       "0559      |   0|   0|    42| \r\n")));
    EXPECT_EQ(
        Filas(Grabado([&](CStdioFile& f) { base.GrabaModulos(f, false); })),
        dos(Fila("028|080|LR|  0|Labor                                   |      0|       0.00|"
                 "    0|      0|    0|      0|    0|      0| | | \r\n")));
    EXPECT_EQ(Filas(Grabado([&](CStdioFile& f) { base.GrabaSubparcelas(f, false); })),
              dos(Fila("028|080|   1|  12|   345|   A| |S |         0|  |  0|    0|  |  0|       |"
                       "       |   0|              |   0|   0|  0|       0|  0| 0| 0| 0| 0| |    0|"
                       "    0| | | | |    0\r\n")));
    EXPECT_EQ(Filas(Grabado([&](CStdioFile& f) { base.GrabaParajes(f, false); })),
              dos(Fila("028|080|   3|    42|Eras                          \r\n")));
    EXPECT_EQ(Filas(Grabado([&](CStdioFile& f) { base.GrabaCotitulares(f, false); })),
              dos(Fila("028|080|   1|  12|   345|       8|US|    40\r\n")));
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
