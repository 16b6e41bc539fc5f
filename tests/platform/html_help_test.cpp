#include "platform/html_help.h"

#include <gtest/gtest.h>

TEST(AyudaDeControles, FindsTheTextOfATopic)
{
    constexpr std::string_view kTextos = "before all\r\n.topic 7\r\nSiete,\r\nen dos.\r\n\r\n"
                                         ".topic 70\n\n\n.topic 8\n  Ocho. \n.topic 8\nTarde.\n"
                                         ".topic nada\ncosa .topic 9\n.topic 11\nfin";
    const struct {
        const char* motivo;
        UINT id;
        std::string_view texto;
    } casos[] = {
        {"between two topics", 7, "Siete,\r\nen dos."},
        {"an empty one", 70, ""},
        {"the first of two, and what looks like none inside it", 8, "Ocho."},
        {"the last one, without a line end", 11, "fin"},
        {"one that only a text names", 9, ""},
        {"none such", 1, ""},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(TextoDeTema(kTextos, caso.id), caso.texto);
        EXPECT_EQ(TextoDeTema("", caso.id), "");
    }
}

TEST(AyudaDeControles, ItsNameHasTwoParts)
{
    EXPECT_EQ(ParteTemas("c::d/campiva.chm::Ayuda IDC.txt"),
              (std::pair<CString, CString>("c::d/campiva.chm", "Ayuda IDC.txt")));
    EXPECT_EQ(ParteTemas("campiva.chm"), (std::pair<CString, CString>("campiva.chm", "")));
}
