#include "cadastre/subparcel.h"

#include "cadastre/exchange_format.h"
#include "tests/cadastre/record_lines.h"
#include "tests/cadastre/record_tools.h"

namespace {

CSubparcela DeLinea(std::string_view linea, int modo)
{
    CSubparcela sub;
    EXPECT_TRUE(sub.Lee(linea, modo));
    return sub;
}

} // namespace

TEST(Subparcela, TakesCSingAsTheLowByteOfANumber)
{
    constexpr struct {
        const char* motivo;
        const char* campo;
        char cSing;
    } kCasos[] = {
        {"a letter", "075", 'K'},
        {"a number past a byte", "331", 'K'},
        {"0 stays blank: a line can't carry it", "000", ' '},
        {"so does a low byte of 0", "256", ' '},
        {"no number", "   ", ' '},
        {"only the line end", "", ' '},
        {"two characters before the line end", "75", 'K'},
        {"negative", "-1 ", '\xFF'},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EXPECT_EQ(DeLinea(kLineaSC.substr(0, 73) + caso.campo + "\n", kModoCatastro).cSing,
                  caso.cSing);
    }
}

TEST(Subparcela, CutsBlanksFromBothEndsOfItsLetterInEachLayout)
{
    EXPECT_EQ(DeLinea("SP                    A B\n", kModoCatastro).letra, "A B");
    EXPECT_EQ(DeLinea("SC                   A   \n", kModoCatastro).letra, "A");
    EXPECT_EQ(DeLinea("SP                       \n", kModoCatastro).letra, "");
    EXPECT_EQ(DeLinea(std::string(29, ' ') + "  A \n", kModoLista).letra, "A");
    EXPECT_EQ(DeFila(CSubparcela(), "|||||   A").letra, "A");
    EXPECT_EQ(DeFila(CSubparcela(), "|||||    ").letra, ""); // blanks aren't an empty field
}
