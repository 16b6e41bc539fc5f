#include "platform/format.h"

#include <climits>
#include <cstdio>
#include <limits>
#include <locale>

#include <gtest/gtest.h>

namespace {

std::string Formato(std::string_view forma, std::initializer_list<CArgumento> argumentos)
{
    std::string texto;
    AnexaFormato(texto, forma, argumentos);
    return texto;
}

} // namespace

TEST(Formato, WritesAWholeNumberInEachForm)
{
    constexpr struct {
        const char* motivo;
        const char* forma;
        int valor;
        const char* texto;
    } kCasos[] = {
        {"padded", "% 4d", 7, "   7"},
        {"zero has a digit", "% 4d", 0, "   0"},
        {"one blank left", "% 4d", 123, " 123"},
        {"the blank of the sign stays in a number that fills the width", "% 4d", 1234, " 1234"},
        {"the minus takes that blank's place", "% 4d", -123, "-123"},
        {"wide and negative", "% 4d", -12345, "-12345"},
        {"without a width", "% d", 5, " 5"},
        {"zeros", "%03d", 7, "007"},
        {"zeros stand behind the minus", "%07d", -42, "-000042"},
        {"no room for zeros", "%02d", 1234567, "1234567"},
        {"zeros behind the blank", "% 05d", 12, " 0012"},
        {"padded on the right", "%-5d|", 12, "12   |"},
        {"'-' beats '0'", "%-05d|", 12, "12   |"},
        {"the flags in the other order", "%0-5d|", 12, "12   |"},
        {"least number", "%d", INT_MIN, "-2147483648"},
        {"least number with zeros", "%013d", INT_MIN, "-002147483648"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(Formato(caso.forma, {caso.valor}), caso.texto);
    }
}

TEST(Formato, WritesAWholeNumberAsTheCLibraryDoes)
{
    for (const char* forma : {"%d", "%1d", "% 2d", "% 13d", "%01d", "%08d", "%-8d", "%- 8d"})
        for (const int valor : {0, 1, -1, 99, -99, 1234567, -1234567, INT_MAX, INT_MIN}) {
            char esperado[32];
            std::snprintf(esperado, sizeof esperado, forma, valor);
            EXPECT_EQ(Formato(forma, {valor}), esperado) << forma;
        }
}

TEST(Formato, WritesATextInEachForm)
{
    constexpr struct {
        const char* motivo;
        const char* forma;
        CArgumento valor;
        const char* texto;
    } kCasos[] = {
        {"as it is", "<%s>", "a b ", "<a b >"},
        {"empty", "<%s>", "", "<>"},
        {"cut and padded on the right: short", "%-10.10s|", "LABOR", "LABOR     |"},
        {"cut and padded on the right: long", "%-10.10s|", "LABOR SECANO", "LABOR SECA|"},
        {"cut and padded on the left: short", "% 4.4s", "a", "   a"},
        {"cut and padded on the left: long", "% 4.4s", "abcdef", "abcd"},
        {"a width cuts nothing", "%-2s|", "abc", "abc|"},
        {"a precision alone pads nothing", "%.3s|", "ab", "ab|"},
        {"precision 0", "%-3.0s|", "abc", "   |"},
        {"a letter of the code page is one column", "%-3.3s|", "\xF1\xF1\xF1\xF1", "\xF1\xF1\xF1|"},
        {"no zeros in front of a text", "%04s", "a", "   a"},
        {"a character", "%c|", 'x', "x|"},
        {"a blank one", "%c|", ' ', " |"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(Formato(caso.forma, {caso.valor}), caso.texto);
    }
}

TEST(Formato, WritesARealNumberWithAPointWhateverTheLocale)
{
    // The C locale is the one that the test program was started with.
    struct CComa : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    constexpr struct {
        const char* motivo;
        const char* forma;
        double valor;
        const char* texto;
    } kCasos[] = {
        {"padded", "% 11.2lf", 1234.5, "    1234.50"},
        {"negative", "% 11.2lf", -1234.5, "   -1234.50"},
        {"the blank of the sign stays", "% 11.2lf", 12345678.25, " 12345678.25"},
        {"wide", "% 11.2lf", -1234567890.5, "-1234567890.50"},
        {"rounded by its exact value, which is below the half", "%.2lf", 2.675, "2.67"},
        {"an exact half goes to the even digit", "%.2f", 0.125, "0.12"},
        {"rounded up over a nine", "%.2lf", 9.999, "10.00"},
        {"less than what is shown", "%.2lf", 0.001, "0.00"},
        {"six decimals if none are told", "%lf", 1.5, "1.500000"},
        {"no decimals, no point", "%.0lf", 1234.0, "1234"},
        {"zeros behind the minus", "%08.2lf", -1.5, "-0001.50"},
    };
    const std::locale antes = std::locale::global(std::locale(std::locale(), new CComa));
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(Formato(caso.forma, {caso.valor}), caso.texto);
    }
    std::locale::global(antes);
}

TEST(Formato, TheGreatestRealNumberHasRoom)
{
    const std::string texto = Formato("%.60lf", {std::numeric_limits<double>::lowest()});
    EXPECT_EQ(texto.size(), 1U + 309 + 1 + 60);
    EXPECT_EQ(texto.substr(0, 18), "-17976931348623157");
    EXPECT_EQ(Formato("%.999lf", {1.0}), "1." + std::string(60, '0')); // more are never asked for
}

TEST(Formato, TakesTheArgumentsInOrder)
{
    const struct {
        const char* motivo;
        std::string escrito;
        const char* texto;
    } casos[] = {
        {"one each", Formato("% 4d %s %c", {3, "ab", 'z'}), "   3 ab z"},
        {"a per cent sign takes none", Formato("%d%% de %d", {50, 7}), "50% de 7"},
        {"nothing but per cent signs", Formato("%%%%", {7}), "%%"},
        {"what misses its argument gives nothing", Formato("a% 4db%sc%%", {1}), "a   1bc%"},
        {"without any", Formato("%d|% 7.2lf|%c", {}), "||"},
        {"one too many", Formato("%d", {1, 2}), "1"},
        {"a number for a text", Formato("%-4s|", {12}), "12  |"},
        {"a text for a number", Formato("%05d|", {"ab"}), "   ab|"},
        {"a whole number for a real one", Formato("%.2lf", {3}), "3"},
        {"a text with a per cent sign is no form", Formato("%s %d", {"%d", 4}), "%d 4"},
        {"a form that the text's end cuts off", Formato("100%", {}), "100"},
        {"cut off behind its flags", Formato("100%-5.2", {}), "100"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(caso.escrito, caso.texto);
    }
}
