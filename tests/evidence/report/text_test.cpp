#include "evidence/report/reading/text.h"
#include "evidence/report/writing/csv.h"
#include "evidence/report/writing/json.h"
#include "evidence/report/writing/markup.h"

#include <limits>

#include <gtest/gtest.h>

#include "evidence/paths.h"
#include "platform/ansi.h"

using namespace informe;

TEST(ReportText, WritesNumbersAsInSpanish)
{
    const struct {
        std::string escrito;
        const char* esperado;
    } casos[] = {
        {Miles(0), "0"},
        {Miles(999), "999"},
        {Miles(1000), "1.000"},
        {Miles(-1234567), "-1.234.567"},
        {Miles(-100), "-100"},
        {Miles(std::numeric_limits<std::int64_t>::min()), "-9.223.372.036.854.775.808"},
        {Decimal(1234.5, 2), "1.234,50"},
        {Decimal(-0.001, 2), "0,00"},
        {Decimal(-0.25, 1), "-0,2"},
        {Decimal(1e300, 2), "desmedido"},
        {Decimal(std::numeric_limits<double>::quiet_NaN(), 0), "desmedido"},
        {Cuantos(1, "línea", "líneas"), "1 línea"},
        {Cuantos(2000, "línea", "líneas"), "2.000 líneas"},
        {Hexadecimal(0xBF43926), "0BF43926"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(caso.escrito, caso.esperado);
}

TEST(ReportText, TakesTextsOutOfTheCodePage)
{
    EXPECT_EQ(Texto("Año"_ansi), "Año");
    EXPECT_EQ(Texto("a\tb"), "a b");
    EXPECT_EQ(Texto(std::string_view("a\0b\x1F", 4)), "a�b�");
    EXPECT_EQ(TextoSinBlancos(" \ta b  "), "a b");
    EXPECT_EQ(TextoSinBlancos("  \t"), "");
}

TEST(ReportText, LeavesNothingThatAFormWouldTakeForItsOwn)
{
    const struct {
        const char* texto;
        const char* html;
        const char* json;
        const char* csv;
    } casos[] = {
        {"llano", "llano", "\"llano\"", "llano"},
        {"<script>alert('a')</script>", "&lt;script&gt;alert(&#39;a&#39;)&lt;/script&gt;",
         "\"<script>alert('a')</script>\"", "<script>alert('a')</script>"},
        {"\"a\" & b", "&quot;a&quot; &amp; b", R"("\"a\" & b")", R"("""a"" & b")"},
        {"a;b", "a;b", "\"a;b\"", "\"a;b\""},
        {"a\\\nb", "a\\\nb", R"("a\\\u000Ab")", "\"a\\\nb\""},
        {"=SUM(A1)", "=SUM(A1)", "\"=SUM(A1)\"", "'=SUM(A1)"},
        {"-1", "-1", "\"-1\"", "'-1"},
        {"", "", "\"\"", ""},
    };
    for (const auto& caso : casos) {
        EXPECT_EQ(CMarcas().Texto(caso.texto).Toma(), caso.html);
        EXPECT_EQ(CMarcas().Figura("a", {{"b", std::string(caso.texto)}}).Toma(),
                  "<a b=\"" + std::string(caso.html) + "\"/>");
        EXPECT_EQ(CJson().Valor(caso.texto).Texto(), caso.json);
        EXPECT_EQ(CampoCsv(caso.texto), caso.csv);
    }
}

TEST(ReportText, PutsAComplaintOfSeveralLinesInOne)
{
    CFileException fallo("f.txt", std::make_error_code(std::errc::io_error));
    fallo.m_nota = "Se quedó a medias.\nHágalo otra vez"_ansi;
    fallo.m_sinDevolver = {"g.txt", "h.txt"};
    const std::string linea = Texto(EnUnaLinea(fallo));
    EXPECT_NE(linea.find(": Se quedó a medias. Hágalo otra vez: "), std::string::npos) << linea;
    EXPECT_TRUE(linea.ends_with("): g.txt, h.txt")) << linea;
}
