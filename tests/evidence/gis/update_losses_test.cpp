#include "tests/evidence/gis/update_in_tests.h"

// What a source brings by mistake: no drawing loses anything by it.

TEST_F(Update, LeavesDrawingsAloneThatTheListDoesntHave)
{
    const CElementos parcelas = Elementos("parcelas");
    const struct {
        const char* motivo;
        std::function<void()> prepara;
        const char* fichero; ///< that is told
    } casos[] = {
        {"an empty list", [&] { carpeta.Pon("lista.txt", ""); }, "1.BIN"},
        {"a list without the polygon", [&] { carpeta.Pon("lista.txt", "TREN 045127\r\nP2\r\n"); },
         "1.BIN"},
        {"no list", [&] { std::filesystem::remove(carpeta.Ruta() / "lista.txt"); }, "1.BIN"},
        {"a topology alone, in small letters",
         [&] {
             carpeta.Pon("lista.txt", "");
             std::filesystem::rename(carpeta.Ruta() / "1.SUB", carpeta.Ruta() / "1.sub");
             for (const char* fichero : {"1.BIN", "1.PAR", "1.POL"})
                 std::filesystem::remove(carpeta.Ruta() / fichero);
         },
         "1.SUB"},
    };
    const auto todo = [&] {
        std::map<std::string, std::string> bytes;
        for (const auto& cada : std::filesystem::directory_iterator(carpeta.Ruta()))
            bytes[cada.path().filename().string()] =
                carpeta.Lee(cada.path().filename().string().c_str());
        return bytes;
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        caso.prepara();
        const std::map<std::string, std::string> eran = todo();
        Escribe({{"parcelas", parcelas}}, {"GER=45", "MUN=127"});
        EXPECT_EQ(todo(), eran);
        EXPECT_NE(dicho.find(std::string(caso.fichero) + " ya está, y la lista "),
                  std::string::npos)
            << dicho;
        EXPECT_TRUE(dicho.ends_with("fallo: No se ha escrito ningún dibujo\n")) << dicho;
    }
    Escribe({{"parcelas", parcelas}}, {"GER=45", "MUN=127", "SUSTITUYE=SI"});
    EXPECT_EQ(dicho.find("fallo: "), std::string::npos) << dicho;
    EXPECT_EQ(Parcelas().size(), 4U);
}

TEST_F(Update, WritesNothingWhereItsSourceBreaksOff)
{
    const auto falla = [] { CPLError(CE_Failure, CPLE_FileIO, "no se lee más"); };
    const struct {
        const char* motivo;
        std::function<void(GDALDataset&)> alFinal;
        bool escribe;
    } casos[] = {
        {"all went well", nullptr, true},
        {"a failure behind the last feature", [&](GDALDataset&) { falla(); }, false},
        {"one that nobody looked at any longer",
         [&](GDALDataset&) {
             falla();
             CPLErrorReset();
         },
         true},
        {"all in a transaction",
         [](GDALDataset& datos) {
             datos.StartTransaction();
             datos.CommitTransaction();
         },
         true},
        {"a failure before the end of one",
         [&](GDALDataset& datos) {
             datos.StartTransaction();
             falla();
             datos.CommitTransaction();
         },
         false},
        {"a transaction that nobody ended", [](GDALDataset& datos) { datos.StartTransaction(); },
         false},
        {"the second one rolled back",
         [](GDALDataset& datos) {
             datos.StartTransaction();
             datos.CommitTransaction();
             datos.StartTransaction();
             datos.RollbackTransaction();
         },
         false},
    };
    CElementos todas = Elementos("parcelas");
    todas.resize(2);
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        PonComoEstaba();
        falla(); // of something else, before
        alFinal = caso.alFinal;
        Escribe({{"parcelas", todas}});
        EXPECT_EQ(Cambiados(), caso.escribe ? (Lineas{"1.BIN", "1.PAR"}) : Lineas());
        EXPECT_EQ(
            dicho.ends_with("fallo: No se ha escrito ningún dibujo: lo que había que escribir "
                            "se quedó a medias\n"),
            !caso.escribe)
            << dicho;
    }
}
