#include "platform/cstring.h"

#include <climits>

#include <gtest/gtest.h>

#include "tests/support/scripted_front_end.h"

using namespace std::string_view_literals;

namespace {

// On both sides of the length from which a text has a block of its own.
constexpr std::size_t kLargos[] = {0, 1, 6, 7, 8, 9, 40};

std::string Letras(std::size_t largo, char primera = 'a')
{
    std::string letras;
    for (std::size_t i = 0; i < largo; ++i)
        letras += static_cast<char>(primera + static_cast<char>(i % 26));
    return letras;
}

void EsperaTexto(const CString& texto, const std::string& esperado)
{
    EXPECT_EQ(std::string_view(texto), esperado);
    EXPECT_EQ(texto.GetLength(), static_cast<int>(esperado.size()));
    EXPECT_EQ(texto.GetString()[esperado.size()], '\0');
    EXPECT_EQ(texto.IsEmpty(), esperado.empty());
}

} // namespace

TEST(CString, CopiesAndMovesBetweenAllLengths)
{
    for (const std::size_t largoA : kLargos)
        for (const std::size_t largoB : kLargos) {
            SCOPED_TRACE(std::to_string(largoA) + " <- " + std::to_string(largoB));
            const std::string a = Letras(largoA, 'A');
            const std::string b = Letras(largoB);
            CString origen = b;
            CString copia = a;
            copia = origen;
            EsperaTexto(origen, b);
            origen = a; // the copy is one of its own
            EsperaTexto(copia, b);
            CString movido = a;
            movido = std::move(copia);
            EsperaTexto(movido, b);
            copia = a; // what was moved from can be used again
            EsperaTexto(copia, a);
            EsperaTexto(CString(std::move(movido)), b);
            EsperaTexto(origen, a);
        }
}

TEST(CString, SurvivesAnAssignmentToItself)
{
    for (const std::size_t largo : kLargos) {
        CString texto = Letras(largo);
        CString& elMismo = texto;
        texto = elMismo;
        EsperaTexto(texto, Letras(largo));
        texto = std::move(elMismo);
        EsperaTexto(texto, Letras(largo));
    }
}

TEST(CString, TakesAPartOfItself)
{
    constexpr struct {
        const char* motivo;
        std::size_t largo, desde, cuantos;
    } kCasos[] = {
        {"short", 10, 3, 5},
        {"from the border", 7, 1, 6},
        {"a long text becomes a short one", 8, 1, 7},
        {"a long text stays long and overlaps", 60, 1, 59},
        {"its end", 60, 40, 20},
        {"nothing of it", 60, 60, 0},
        {"the whole", 60, 0, 60},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CString texto = Letras(caso.largo);
        texto = std::string_view(texto).substr(caso.desde, caso.cuantos);
        EsperaTexto(texto, Letras(caso.largo).substr(caso.desde, caso.cuantos));
    }
}

TEST(CString, KeepsItsBlockForALongTextThatFits)
{
    CString texto = Letras(100);
    const char* bloque = texto.GetString();
    for (const std::size_t largo : {std::size_t{8}, std::size_t{100}, std::size_t{50}}) {
        texto = Letras(largo, 'A');
        EXPECT_EQ(texto.GetString(), bloque);
        EsperaTexto(texto, Letras(largo, 'A'));
    }
    texto = Letras(101);
    EsperaTexto(texto, Letras(101));
}

TEST(CString, GrowsByItselfAndByItsForms)
{
    for (const std::size_t largo : kLargos) {
        const std::string doble = Letras(largo) + Letras(largo);
        CString texto = Letras(largo);
        texto += texto;
        EsperaTexto(texto, doble);
        texto = Letras(largo);
        texto.Format("%s%s", texto, texto);
        EsperaTexto(texto, doble);
        EsperaTexto(CString("<") + Letras(largo) + ">", "<" + Letras(largo) + ">");
    }
}

TEST(CString, GivesWhatIsInsideTheText)
{
    constexpr struct {
        const char* motivo;
        int desde, cuantos;
        const char* parte;
    } kCasos[] = {
        {"inside", 2, 3, "cde"},
        {"cut by the end", 4, 9, "ef"},
        {"from the end", 6, 1, ""},
        {"behind the end", 9, 1, ""},
        {"from in front of the text", -2, 3, "abc"},
        {"less than nothing", 2, -1, ""},
        {"position and number don't add up to an int", 1, INT_MAX, "bcdef"},
        {"far behind", INT_MAX, INT_MAX, ""},
        {"far in front", INT_MIN, 2, "ab"},
    };
    const CString texto = "abcdef";
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        EsperaTexto(texto.Mid(caso.desde, caso.cuantos), caso.parte);
    }
    EsperaTexto(texto.Mid(4), "ef");
    constexpr struct {
        int cuantos;
        const char* izquierda;
    } kExtremos[] = {{INT_MIN, ""}, {-1, ""},      {0, ""},
                     {2, "ab"},     {9, "abcdef"}, {INT_MAX, "abcdef"}};
    for (const auto& caso : kExtremos)
        EsperaTexto(texto.Left(caso.cuantos), caso.izquierda);
}

TEST(CString, CutsFromItsEnds)
{
    constexpr struct {
        const char* motivo;
        std::string_view texto, cuales, sinFinal, sinPrincipio;
    } kCasos[] = {
        {"blanks", "  a b  ", " ", "  a b", "a b  "},
        {"nothing but blanks", "    ", " ", "", ""},
        {"empty", "", " ", "", ""},
        {"nothing to cut", "a", " ", "a", "a"},
        {"a blank is 0x20 alone", "\t\xA0 ", " ", "\t\xA0", "\t\xA0 "},
        {"any of several, in any order", "\n\ra\n\r\n", "\r\n", "\n\ra", "a\n\r\n"},
        {"from a block into the object", "               a               ", " ", "               a",
         "a               "},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CString texto = caso.texto;
        EsperaTexto(texto.TrimRight(caso.cuales), std::string(caso.sinFinal));
        texto = caso.texto;
        EsperaTexto(texto.TrimLeft(caso.cuales), std::string(caso.sinPrincipio));
    }
    CString texto = "\t a \t";
    EsperaTexto(texto.TrimLeft().TrimRight(), "\t a \t"); // what is cut without a word is blanks
}

TEST(CString, ReplacesEachOnceFromTheLeft)
{
    constexpr struct {
        const char* motivo;
        const char *texto, *antes, *ahora;
        int veces;
        const char* despues;
    } kCasos[] = {
        {"each of several", "a.HLP b.HLP", ".HLP", ".chm", 2, "a.chm b.chm"},
        {"capitals count", "a.hlp", ".HLP", ".chm", 0, "a.hlp"},
        {"what was put in isn't looked at again", "aa", "a", "aa", 2, "aaaa"},
        {"overlapping", "aaa", "aa", "b", 1, "ba"},
        {"by nothing", "a-b-", "-", "", 2, "ab"},
        {"nothing by something", "ab", "", "x", 0, "ab"},
        {"grows out of the object", "0123456789", "9", "9abcdefgh", 1, "0123456789abcdefgh"},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        CString texto = caso.texto;
        EXPECT_EQ(texto.Replace(caso.antes, caso.ahora), caso.veces);
        EsperaTexto(texto, caso.despues);
    }
}

TEST(CString, FindsTheFirstAndTheLast)
{
    constexpr struct {
        std::string_view texto;
        char c;
        int primero, ultimo;
    } kCasos[] = {{"a.b.c", '.', 1, 3},
                  {"abc", '.', -1, -1},
                  {"", 'a', -1, -1},
                  {"\xF1", '\xF1', 0, 0},
                  {"aaaaaaaaaaaaaaaaa\0"sv, '\0', 17, 17}};
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.texto);
        EXPECT_EQ(CString(caso.texto).Find(caso.c), caso.primero);
        EXPECT_EQ(CString(caso.texto).ReverseFind(caso.c), caso.ultimo);
    }
}

TEST(CString, IsComparedByItsBytes)
{
    // Each stands before the next.
    const CString enOrden[] = {"",
                               " a",
                               "A",
                               "Z",
                               "a",
                               "a\0"sv,
                               "a\0b"sv,
                               "aaaaaaaaaaaaaaa",
                               "aaaaaaaaaaaaaaaa",
                               "b",
                               "\x7F",
                               "\x80",
                               "\xD1",
                               "\xF1"};
    for (const CString& uno : enOrden)
        for (const CString& otro : enOrden) {
            SCOPED_TRACE(std::string(std::string_view(uno)) + " / " +
                         std::string(std::string_view(otro)));
            EXPECT_EQ(uno < otro, &uno < &otro);
            EXPECT_EQ(uno == otro, &uno == &otro);
        }
}

TEST(CString, TakesItsTextsFromTheStringTable)
{
    static constexpr CCadenaRecurso kCadenas[] = {{1, "Parcela % 4d %s"}, {2, ""}};
    CGuion guion;
    CWinApp aplicacion;
    aplicacion.Arranca(guion, {.cadenas = kCadenas}, {}, {});

    CString texto = "antes";
    EXPECT_TRUE(texto.LoadString(2)); // empty, but there
    EsperaTexto(texto, "");
    texto.Format(1, 7, "a");
    EsperaTexto(texto, "Parcela    7 a");
    EXPECT_FALSE(texto.LoadString(3));
    EsperaTexto(texto, "");
    texto = "antes";
    texto.Format(3, 7);
    EsperaTexto(texto, "");
}
