#include <fstream>
#include <sstream>

#include "evidence/drawing_findings.h"
#include "tests/vexa_to_catastro/run_fixture.h"

namespace {

/// The bytes of a file as docs/drawing_files.md lists them, behind a fence with its name: lines of
/// an offset, bytes, and a remark behind two blanks.
std::string BytesDocumentados(const std::string& nombre)
{
    std::ifstream pagina(DOCUMENTED_DRAWINGS);
    std::string bytes;
    bool dentro = false;
    for (std::string linea; std::getline(pagina, linea);) {
        if (linea.starts_with("```")) {
            dentro = linea == "```" + nombre;
            continue;
        }
        if (!dentro)
            continue;
        constexpr std::size_t kTrasElOffset = 6;
        EXPECT_EQ(std::stoul(linea, nullptr, 16), bytes.size());
        std::istringstream parejas(
            linea.substr(kTrasElOffset, linea.find("  ", kTrasElOffset) - kTrasElOffset));
        for (std::string pareja; parejas >> pareja;)
            bytes += static_cast<char>(std::stoi(pareja, nullptr, 16));
    }
    return bytes;
}

} // namespace

TEST_F(Cruce, TakesTheDocumentedDrawing)
{
    Parcela("7", "5");
    Subparcela("7", "a", "5");
    for (const char* fichero : {"1.BIN", "1.PAR", "1.SUB"})
        carpeta.Pon(fichero, BytesDocumentados(fichero));
    Ejecuta();
    EXPECT_EQ(Superficies("PR"), std::vector<int>{396});
    EXPECT_EQ(Superficies("SP"), std::vector<int>{396});
    EXPECT_EQ(Mensajes(), Textos{});

    const CPoligonoDibujado poligono = LeePoligonoDibujado(carpeta.En(""), "1");
    for (const CFaltasDeRecintos& faltas :
         {FaltasDe(poligono.parcelas, ClaseTopologia::Parcelas),
          FaltasDe(poligono.subparcelas, ClaseTopologia::Subparcelas)}) {
        ASSERT_EQ(faltas.size(), 1U);
        EXPECT_EQ(TextoFaltas(faltas[0]), "");
    }
}
