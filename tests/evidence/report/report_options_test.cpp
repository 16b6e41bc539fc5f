#include "evidence/report/reading/report_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace informe;
using testing::HasSubstr;

TEST(ReportOptions, TakesLogsAndTheirOptions)
{
    std::string queja;
    const std::vector<std::string> argumentos = {"--lista", "l.txt", "a.ERR", "--csv", "a.csv"};
    const auto opciones = LeeOpciones(argumentos, queja);
    ASSERT_TRUE(opciones) << queja;
    EXPECT_EQ(opciones->registros, std::vector<CString>{"a.ERR"});
    EXPECT_EQ(opciones->lista, CString("l.txt"));
    EXPECT_EQ(opciones->csv, CString("a.csv"));
    EXPECT_TRUE(opciones->html.IsEmpty());
    const std::vector<std::string> con = {"--con", "a", "--con", "b", "a.ERR"};
    EXPECT_EQ(LeeOpciones(con, queja)->con, (std::vector<CString>{"a", "b"}));
    const std::vector<std::string> detenido = {"--escrito", "c", "--detenido", "a.ERR"};
    EXPECT_EQ(LeeOpciones(detenido, queja)->escritos, std::vector<CString>{"c"});
    EXPECT_TRUE(LeeOpciones(detenido, queja)->detenido);
    const std::vector<std::string> ensayo = {"--ensayo", "--crea", "l.txt", "--cambios", "c.csv"};
    ASSERT_TRUE(LeeOpciones(ensayo, queja)) << queja;
    EXPECT_TRUE(LeeOpciones(ensayo, queja)->crea);
    EXPECT_FALSE(LeeOpciones(ensayo, queja)->conserva);
    const std::vector<std::string> varios = {"a.ERR", "--", "--csv"};
    EXPECT_EQ(LeeOpciones(varios, queja)->registros, (std::vector<CString>{"a.ERR", "--csv"}));
    const std::vector<std::string> resumen = {
        "--resumen", "t.resultados", "--sin-informes", "--json",
        "-",         "--csv",        "t.csv",          "--estricto"};
    ASSERT_TRUE(LeeOpciones(resumen, queja)) << queja;
    EXPECT_EQ(LeeOpciones(resumen, queja)->resumen, CString("t.resultados"));
    EXPECT_TRUE(LeeOpciones(resumen, queja)->sinInformes);
    const std::vector<std::string> ayuda = {"a.ERR", "--help", "--nada"};
    EXPECT_EQ(LeeOpciones(ayuda, queja)->pide, COpciones::Pide::Ayuda);
    const std::vector<std::string> version = {"--version"};
    EXPECT_EQ(LeeOpciones(version, queja)->pide, COpciones::Pide::Version);
}

TEST(ReportOptions, ComplainsOfALineThatItDoesNotUnderstand)
{
    const struct {
        std::vector<std::string> argumentos;
        const char* queja;
    } casos[] = {
        {{}, "falta el nombre"},
        {{"--csv", "a.csv"}, "falta el nombre"},
        {{"--estricto", ""}, "falta el nombre"},
        {{"a.ERR", ""}, "falta el nombre"},
        {{"a.ERR", "--nada"}, "--nada"},
        {{"a.ERR", "-x"}, "-x"},
        {{"a.ERR", "--csv"}, "a --csv le falta"},
        {{"a.ERR", "--csv", ""}, "a --csv le falta"},
        {{"--json", "--estricto", "a.ERR"}, "a --json le falta"},
        {{"--con", "-x", "a.ERR"}, "a --con le falta"},
        {{"a.ERR", "--csv", "a", "--csv", "b"}, "dos veces"},
        {{"a.ERR", "b.ERR", "--html", "p.html"}, "de uno solo"},
        {{"a.ERR", "b.ERR", "--con", "f"}, "de uno solo"},
        {{"a.ERR", "--con"}, "a --con le falta"},
        {{"a.ERR", "b.ERR", "--detenido"}, "de uno solo"},
        {{"a.ERR", "--html", "-", "--json", "-"}, "sólo cabe una cosa"},
        {{"--resumen", "r", "a.ERR"}, "no de registros"},
        {{"--resumen", "r", "--lista", "l"}, "sólo caben"},
        {{"--resumen", "r", "--detenido"}, "sólo caben"},
        {{"--resumen", "r", "--csv", "-", "--html", "-"}, "sólo cabe una cosa"},
        {{"--sin-informes", "a.ERR"}, "es de --resumen"},
        {{"a.ERR", "--entrada", "e", "--lista", "l"}, "de la ida"},
        {{"a.ERR", "b.ERR", "--contra", "f"}, "de uno solo"},
        {{"a.ERR", "--cambios", "f"}, "que faltan"},
        {{"a.ERR", "--crea"}, "son de --ensayo"},
        {{"a.ERR", "--concentradas"}, "son de --ensayo"},
        {{"a", "b", "--ensayo"}, "de uno solo"},
        {{"a", "--ensayo", "--lista", "l"}, "en lugar del registro"},
        {{"a", "--ensayo", "--escrito", "f"}, "no hay nada escrito"},
    };
    for (const auto& caso : casos) {
        std::string queja;
        EXPECT_FALSE(LeeOpciones(caso.argumentos, queja)) << caso.queja;
        EXPECT_THAT(queja, HasSubstr(caso.queja));
    }
}
