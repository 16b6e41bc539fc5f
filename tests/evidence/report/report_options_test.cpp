#include "evidence/report/reading/report_options.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace informe;
using testing::HasSubstr;

namespace {

COpciones Leidas(const std::vector<std::string>& argumentos)
{
    std::string queja;
    const auto opciones = LeeOpciones(argumentos, queja);
    EXPECT_TRUE(opciones) << queja;
    return opciones.value_or(COpciones());
}

} // namespace

TEST(ReportOptions, TakesLogsAndTheirOptions)
{
    const COpciones opciones = Leidas({"--lista", "l.txt", "a.ERR", "--csv", "a.csv"});
    EXPECT_EQ(opciones.registros, std::vector<CString>{"a.ERR"});
    EXPECT_EQ(opciones.lista, CString("l.txt"));
    EXPECT_EQ(opciones.csv, CString("a.csv"));
    EXPECT_TRUE(opciones.html.IsEmpty());
    EXPECT_EQ(Leidas({"--con", "a", "--con", "b", "a.ERR"}).con, (std::vector<CString>{"a", "b"}));
    const COpciones detenido = Leidas({"--escrito", "c", "--detenido", "a.ERR"});
    EXPECT_EQ(detenido.escritos, std::vector<CString>{"c"});
    EXPECT_TRUE(detenido.detenido);
    const COpciones ensayo = Leidas({"--ensayo", "--crea", "l.txt", "--cambios", "c.csv"});
    EXPECT_TRUE(ensayo.crea);
    EXPECT_FALSE(ensayo.conserva);
    EXPECT_EQ(Leidas({"a.ERR", "--", "--csv"}).registros, (std::vector<CString>{"a.ERR", "--csv"}));
    const COpciones resumen = Leidas({"--resumen", "t.resultados", "--sin-informes", "--json", "-",
                                      "--csv", "t.csv", "--estricto"});
    EXPECT_EQ(resumen.resumen, CString("t.resultados"));
    EXPECT_TRUE(resumen.sinInformes);
    EXPECT_EQ(Leidas({"a.ERR", "--help", "--nada"}).pide, COpciones::Pide::Ayuda);
    EXPECT_EQ(Leidas({"--version"}).pide, COpciones::Pide::Version);
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
