#include "tests/vexa_to_catastro/run_fixture.h"

TEST_F(Cruce, TellsEachFaultOfTheTables)
{
    const auto parcela = [](std::string_view polig, std::string_view numero,
                            std::string_view numImputa, std::string_view tit,
                            std::string_view paraje) {
        return FilaParcela({.numero = numero,
                            .polig = polig,
                            .superficie = "0",
                            .titular = numImputa,
                            .tit = tit,
                            .paraje = paraje});
    };
    const std::string buena = parcela("1", "7", "1", "PR", "1");
    const struct {
        const char* motivo;
        std::map<std::string, Textos> filas;
        Textos mensajes; ///< of the reading alone
        int parcelas;
    } casos[] = {
        {"nothing is wrong", {{"Parcelas", {buena}}}, {}, 1},
        {"no such holder: stored, with a main link to nobody",
         {{"Parcelas", {parcela("1", "7", "9", "PR", "1")}}},
         {"E101: Titular      9 no encontrado en parcela    1      7"},
         1},
        {"no such place: stored",
         {{"Parcelas", {parcela("1", "7", "1", "PR", "")}}},
         {"E102: Paraje    0 no encontrado en parcela    1      7"},
         1},
        {"polygon 0",
         {{"Parcelas", {parcela("0", "7", "1", "PR", "1")}}},
         {"E213: La parcela    0      7 no pudo ser insertada."},
         0},
        {"without a title the row is dropped in silence",
         {{"Parcelas", {parcela("1", "7", "1", "", "1")}}},
         {},
         0},
        {"a title of blanks is one", {{"Parcelas", {parcela("1", "7", "1", "  ", "1")}}}, {}, 1},
        {"without a number it is dropped, but its holder was told",
         {{"Parcelas", {parcela("1", "", "9", "PR", "1")}}},
         {"E101: Titular      9 no encontrado en parcela    1      0"},
         0},
        {"twice", {{"Parcelas", {buena, buena}}}, {}, 1},
        {"of another municipality", {{"Parcelas", {"045\t099" + buena.substr(7)}}}, {}, 0},
        {"a subparcel of no parcel",
         {{"Subparcelas", {Fila({"045", "127", "0", "1", "8", "   a"})}}},
         {"E103: Parcela    1      8 inexistente en subparcela    a"},
         0},
        {"a letter three times",
         {{"Parcelas", {buena}},
          {"Subparcelas", Textos(3, Fila({"045", "127", "0", "1", "7", "   a"}))}},
         Textos(2, "W301: La subparcela    1      7    a está duplicada"),
         1},
        {"a co-holder of no parcel",
         {{"Cotitulares", {Fila({"045", "127", "0", "1", "8", "2", "PR", "50"})}}},
         {"E104: Parcela    1      8 no encontrada en el fichero de cotitulares."},
         0},
        {"a co-holder whom nobody knows, then one without a share",
         {{"Parcelas", {buena}},
          {"Cotitulares",
           {Fila({"045", "127", "0", "1", "7", "9", "PR", "50"}),
            Fila({"045", "127", "0", "1", "7", "2", "PR"})}}},
         {"E105: Titular      9 no encontrado en el fichero de cotitulares."},
         1},
        {"holders in conflict",
         {{"Titulares",
           {Fila({"045", "127", "1", "ANA", " ", "1"}), Fila({"045", "127", "2", "ANA", " ", "2"}),
            Fila({"045", "127", "3", "EVA", " ", "1"})}}},
         {"E204: Ya existe otro titular con el mismo nombre y distinto DNI para ANA",
          "E205: Ya existe otro titular con el mismo DNI y distinto nombre que 1"},
         0},
    };
    const auto antes = tablas;
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        tablas = antes;
        for (const auto& [tabla, filas] : caso.filas)
            tablas[tabla] = filas;
        Ejecuta(0, 1, 0); // the parcels stay, so that their records can be counted
        Textos lectura = Mensajes();
        lectura.erase(std::remove_if(lectura.begin(), lectura.end(),
                                     [](const std::string& m) { return m.starts_with("E111"); }),
                      lectura.end());
        EXPECT_EQ(lectura, caso.mensajes);
        EXPECT_EQ(static_cast<int>(Registros("PR").size()), caso.parcelas);
    }
}

TEST_F(Cruce, MakesTheLinksAgain)
{
    Parcela("7", "0");
    tablas["Cotitulares"] = {Fila({"045", "127", "0", "1", "7", "2", "XX", "30"}),
                             Fila({"045", "127", "0", "1", "7", "2", "YY", "5"}),
                             Fila({"045", "127", "0", "1", "7", "1", "ZZ", "20"})};
    Ejecuta(0, 1, 0);
    ASSERT_EQ(Registros("PR").size(), 1U);
    EXPECT_EQ(Registros("PR")[0].substr(30, 19), "0000001PR0012000201") << "a second share adds up";
    ASSERT_EQ(Registros("CT").size(), 1U);
    EXPECT_EQ(Registros("CT")[0].substr(21, 30), "010000002XX000350000000  00000");
}

TEST_F(Cruce, PassesOverAHeaderOfMunicipalityZero)
{
    lista = "TREN 045000\r\n";
    for (auto& [tabla, filas] : tablas)
        for (std::string& fila : filas)
            fila.replace(4, 3, "000");
    Ejecuta(0, 0, 0);
    EXPECT_EQ(Lineas("045000.R").size(), 3U) << "two holders and a place";
}

TEST_F(Cruce, EveryTableMustBeThere)
{
    for (const char* tabla :
         {"Parajes", "Modulos", "Titulares", "Parcelas", "Subparcelas", "Cotitulares"}) {
        SCOPED_TRACE(tabla);
        Ejecuta();
        std::filesystem::remove(carpeta.Ruta() / (std::string(tabla) + ".txt"));
        std::filesystem::remove(carpeta.Ruta() / "045127.R");
        EjecutaLote(1, 1, 1);
        EXPECT_EQ(Errores(), Textos{"El archivo " + std::string(tabla) + ".txt no existe"});
        EXPECT_EQ(aplicacion.guion.cajas.size(), 1U) << "no closing box";
        EXPECT_EQ(carpeta.Lee("045127.R"), "(no file)");
    }
}
