#include "platform/ansi.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

TEST(Ansi, ALiteralBecomesOneByteACharacter)
{
    const struct {
        const char* motivo;
        const char* literal;
        const char* bytes;
    } casos[] = {
        {"ASCII stays", "Parcela 7"_ansi, "Parcela 7"},
        {"letters of two bytes", "Año ÉÜ¿"_ansi, "A\xF1o \xC9\xDC\xBF"},
        {"ends of the part that is the same in both", "¡ÿ"_ansi, "\xA1\xFF"},
        {"two and three bytes for the part that isn't", "Š€™Ÿ"_ansi, "\x8A\x80\x99\x9F"},
        {"nothing", ""_ansi, ""},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_STREQ(caso.literal, caso.bytes);
    }
}

TEST(Ansi, EachByteOfTheCodePageHasItsCharacter)
{
    // The bytes that the code page leaves open show as the control character of the same value.
    constexpr const char* kComienzo = "€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F\u0090‘’“”•–—˜™š›œ\u009DžŸ"
                                      "\u00A0¡¢£¤¥¦§¨©ª«¬\u00AD®¯°±²³´µ¶·¸¹º»¼½¾¿"
                                      "ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞß"
                                      "àáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþÿ";
    std::string utf8;
    for (int byte = 0x80; byte <= 0xFF; ++byte)
        utf8 += ansi::AUtf8(std::string(1, static_cast<char>(byte)));
    EXPECT_EQ(utf8, kComienzo);
}

TEST(Ansi, ShowsUtf8AsItIsAndAnyOtherByteAsCodePage1252)
{
    constexpr struct {
        const char* motivo;
        std::string_view texto;
        std::string_view utf8;
    } kCasos[] = {
        {"text of the program", "A\xF1o \x80", "Año €"},
        {"name of a file", "peña €😀.txt", "peña €😀.txt"},
        {"both in one message", "El a\xF1o de peña.txt", "El año de peña.txt"},
        {"a NUL is a byte like any other", "a\0\xF1"sv, "a\0ñ"sv},
        {"least and greatest of two bytes", "\xC2\x80\xDF\xBF", "\xC2\x80\xDF\xBF"},
        {"least and greatest of three bytes", "\xE0\xA0\x80\xEF\xBF\xBF",
         "\xE0\xA0\x80\xEF\xBF\xBF"},
        {"on both sides of the surrogates", "\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},
        {"least of four bytes", "\xF0\x90\x80\x80", "\xF0\x90\x80\x80"},
        {"greatest of four bytes", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
        {"overlong two bytes", "\xC0\xAF", "À¯"},
        {"overlong two bytes, greatest", "\xC1\xBF", "Á¿"},
        {"overlong three bytes", "\xE0\x9F\xBF", "àŸ¿"},
        {"overlong four bytes", "\xF0\x8F\xBF\xBF", "ð\u008F¿¿"},
        {"first surrogate", "\xED\xA0\x80", "í\u00A0€"},
        {"last surrogate", "\xED\xBF\xBF", "í¿¿"},
        {"past the last character", "\xF4\x90\x80\x80", "ô\u0090€€"},
        {"a first byte that none has", "\xF5\x80\x80\x80", "õ€€€"},
        {"a second byte without its first", "\xB1", "±"},
        {"two bytes cut off by the end", "\xC3", "Ã"},
        {"the end of the text counts, not what stands behind it", "\xC3\xB1"sv.substr(0, 1), "Ã"},
        {"three bytes cut off", "\xE2\x82", "â‚"},
        {"four bytes cut off", "\xF0\x9F\x98", "ðŸ˜"},
        {"three bytes cut off by a letter",
         "\xE2\x82"
         "A",
         "â‚A"},
        {"a broken one doesn't spoil the next", "\xC3\xC3\xB1", "Ãñ"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(ansi::AUtf8(caso.texto), caso.utf8);
    }
}
