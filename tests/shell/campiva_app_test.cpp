#include "shell/campiva_app.h"

#include <gtest/gtest.h>

#include "resources/resources.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_libs/ccadena.h"

TEST(Ruta, IsChosenByTheTokens)
{
    const struct {
        const char* motivo;
        const char* linea; ///< tokens between tabs
        Ruta ruta;
    } casos[] = {
        {"nothing", "", Ruta::Dialogos},
        {"seven tokens", "0\tb\tc\td\te\tf\tg", Ruta::Dialogos},
        {"an empty name among eight", "0\tb\tc\t\te\tf\tg\th", Ruta::Dialogos},
        {"an unknown selector plays no part in that", "2\tb\tc\td\te\tf\tg", Ruta::Dialogos},
        {"eight tokens", "0\tb\tc\td\te\tf\tg\th", Ruta::CatastroAVexa},
        {"an empty selector reads as 0", "\tb\tc\td\te\tf\tg\th", Ruta::CatastroAVexa},
        {"a word reads as 0", "x\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::CatastroAVexa},
        {"twelve tokens with 0", "0\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::CatastroAVexa},
        {"twelve with 1", "1\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::VexaACatastro},
        {"more are passed over", "1\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl\tm", Ruta::VexaACatastro},
        {"one of the last four missing", "1\tb\tc\td\te\tf\tg\th\ti\t\tk\tl", Ruta::Ninguna},
        {"eight with 1", "1\tb\tc\td\te\tf\tg\th", Ruta::Ninguna},
        {"twelve with 2", "2\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::Ninguna},
        {"a number with a tail", "1a\tb\tc\td\te\tf\tg\th\ti\tj\tk\tl", Ruta::VexaACatastro},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CTokens tokens;
        CCadena(caso.linea).Leetira(kTokens, tokens.data());
        EXPECT_EQ(EligeRuta(tokens), caso.ruta);
    }
}

TEST(CampivaApp, EndsWithAStatusThatAScriptCanRead)
{
    const CCarpetaPrueba carpeta;
    const std::string buena(std::string_view(carpeta.Pon("a.txt", "PJ045127   00001LA ERA\r\n")));
    std::string tablas;
    for (const char* tabla : {"m", "t", "p", "s", "j", "c"})
        tablas += "\t" + std::string(std::string_view(carpeta.En(tabla)));
    const struct {
        const char* motivo;
        std::string linea;
        int estado;
        std::size_t cajas;
    } casos[] = {
        {"a run", "0\t" + buena + tablas, 0, 1},
        {"a run with an error box", "0\t" + buena + "x" + tablas, 1, 1},
        {"no route", "5\t" + buena + tablas, 2, 0},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CCampivaApp aplicacion;
        CGuion guion;
        aplicacion.Arranca(guion, RecursosDelPrograma(), caso.linea, "/usr/bin/campiva.HLP");
        EXPECT_EQ(aplicacion.EstadoSalida(), caso.estado);
        EXPECT_EQ(guion.cajas.size(), caso.cajas);
        EXPECT_EQ(aplicacion.m_pszHelpFilePath, CString("/usr/bin/campiva.chm"));
    }
}
