#include <filesystem>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/files/system_files.h"
#include "tests/support/files.h"
#include "tests/windows/driven_program.h"

namespace fs = std::filesystem;

// Many municipalities on Windows; how the batch goes in general is tested where its programs start
// faster.

TEST(Lote, EachJobHasSettingsOfItsOwnAndOneLineInTheResult)
{
    const CCarpetaPrueba carpeta;
    for (const char* nombre : {"peña", "lista"})
        fs::create_directory(carpeta.Ruta() / sistema::Ruta(nombre));
    const fs::path muestra = fs::path(SAMPLE);
    fs::copy_file(muestra, carpeta.Ruta() / sistema::Ruta("peña") / "entrada.txt");
    fs::copy_file(muestra.parent_path() / "villanueva_lista.txt",
                  carpeta.Ruta() / "lista" / "entrada.txt");
    carpeta.Pon("trabajos.tsv",
                "\xEF\xBB\xBFida\tpeña\r\nida\tlista\ttipo=lista\r\nida\tfalta\r\n");
    const CProgramaConducido lote(fs::path(BATCH_PROGRAM).native() + L"\" -j 2 \"trabajos.tsv",
                                  carpeta.Ruta().native());
    EXPECT_EQ(lote.EsperaFin(), 1U);
    std::istringstream tabla(carpeta.Lee("trabajos.tsv.resultados/estado.tsv"));
    std::string estados;
    for (std::string linea; std::getline(tabla, linea);)
        estados += linea.substr(0, linea.rfind('\t')) + "\n"; // without the time
    EXPECT_EQ(estados, "trabajo\ttraduccion\tcarpeta\testado\terrores\twarnings\n"
                       "1\tida\tpeña\t0\t0\t0\n"
                       "2\tida\tlista\t0\t4\t5\n"
                       "3\tida\tfalta\t1\t-\t-\n");
    EXPECT_TRUE(fs::exists(carpeta.Ruta() / sistema::Ruta("peña") / "Parcelas.txt"));
    EXPECT_NE(carpeta.Lee("trabajos.tsv.resultados/salidas/3.err").find("falta"),
              std::string::npos);
}
