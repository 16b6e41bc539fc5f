#include "vexa_libs/ccadena.h"

#include <array>
#include <climits>
#include <span>

#include <gtest/gtest.h>

TEST(Cadena, KnowsTheFolderAndTheExtensionOfAPath)
{
    const struct {
        const char* motivo;
        const char* ruta;
        const char* carpeta;
        const char* conR; ///< with the extension R
    } casos[] = {
        {"a bare name", "datos.txt", "", "datos.R"},
        {"without an extension", "/a/datos", "/a/", "/a/datos.R"},
        {"a point in the folder", "/a.b/datos", "/a.b/", "/a.b/datos.R"},
        {"several points", "a/datos.v2.txt", "a/", "a/datos.v2.R"},
        {"a closing point", "datos.", "", "datos.R"},
        {"nothing but a folder", "a/", "a/", "a/.R"},
        {"nothing", "", "", ".R"},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        CCadena ruta = caso.ruta;
        EXPECT_EQ(ruta.DamePath(), CString(caso.carpeta));
        ruta.CambiaExtension("R");
        EXPECT_EQ(ruta, CString(caso.conR));
    }
    CCadena nombre = "otra/045127.R";
    nombre.CambiaPath(CCadena("/donde/sea/lista.txt").DamePath());
    EXPECT_EQ(nombre, CString("/donde/sea/045127.R"));
    nombre.CambiaPath(CCadena("lista.txt").DamePath());
    EXPECT_EQ(nombre, CString("045127.R"));
}

TEST(Cadena, SplitsARowAtItsTabs)
{
    constexpr struct {
        const char* motivo;
        std::string_view fila;
        unsigned pedidos, cuantos;
        std::array<const char*, 4> campos;
    } kCasos[] = {
        {"as many as asked for", "a\tb\tc", 3, 3, {"a", "b", "c", "antes"}},
        {"blanks stay", " a \t  \tc ", 3, 3, {" a ", "  ", "c ", "antes"}},
        {"more than asked for", "a\tb\tc\td", 3, 3, {"a", "b", "c", "antes"}},
        {"fewer", "a", 3, 1, {"a", "antes", "antes", "antes"}},
        {"empty ones", "\t\t", 3, 3, {"", "", "", "antes"}},
        {"shorter than asked for", "a\tb", 4, 2, {"a", "b", "antes", "antes"}},
        {"a closing tab opens one more", "a\t", 4, 2, {"a", "", "antes", "antes"}},
        {"an empty row has one field", "", 4, 1, {"", "antes", "antes", "antes"}},
        {"none asked for", "a\tb", 0, 0, {"antes", "antes", "antes", "antes"}},
        {"fewer than there are", "a\tb\tc", 1, 1, {"a", "antes", "antes", "antes"}},
        {"a line end is no separator", "a\nb\tc", 2, 2, {"a\nb", "c", "antes", "antes"}},
    };
    for (const auto& caso : kCasos) {
        SCOPED_TRACE(caso.motivo);
        std::array<CString, 4> copias = {"antes", "antes", "antes", "antes"};
        EXPECT_EQ(CCadena(caso.fila).Leetira(caso.pedidos, copias.data()), caso.cuantos);
        std::array<std::string_view, 4> vistas = {"antes", "antes", "antes", "antes"};
        Leetira(caso.fila, std::span(vistas).first(caso.pedidos));
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(copias[i], CString(caso.campos[i])) << "what isn't reached is left alone";
            EXPECT_EQ(vistas[i], i < caso.cuantos || i >= caso.pedidos ? caso.campos[i] : "")
                << "and emptied";
        }
    }
    std::array<CString, 2> fila = {"a\tb", "antes"};
    CCadena(fila[0]).Leetira(2, fila.data()); // a row that lies in its own array
    EXPECT_EQ(fila[0], CString("a"));
    EXPECT_EQ(fila[1], CString("b"));
}

TEST(Numeros, AreReadAsFarAsTheyGo)
{
    const struct {
        const char* texto;
        int valor;
    } enteros[] = {
        {"", 0},
        {"12", 12},
        {" \t\r\n\v\f7", 7},
        {"-12", -12},
        {"+12", 12},
        {"--1", 0},
        {"- 1", 0},
        {"12A45", 12},
        {"A1", 0},
        {"007", 7},
        {"2147483647", INT_MAX},
        {"2147483648", INT_MIN},
        {"-2147483648", INT_MIN},
        {"4294967297", 1},
        {"99999999999999999999", 1661992959},
        {"1 2", 1},
    };
    for (const auto& caso : enteros)
        EXPECT_EQ(LeeEntero(caso.texto), caso.valor) << caso.texto;
    const struct {
        const char* texto;
        double valor;
    } reales[] = {
        {"", 0},  {"      12.50", 12.5}, {"+3", 3},    {"-0.5x", -0.5}, {"1,5", 1},
        {"x", 0}, {".25", 0.25},         {"1e2", 100},
    };
    for (const auto& caso : reales)
        EXPECT_EQ(LeeReal(caso.texto), caso.valor) << caso.texto;
}

TEST(Numeros, EndWhereTheTextEnds)
{
    // What stands behind a field in its line is no part of it.
    constexpr std::string_view kLinea = "12345.75";
    EXPECT_EQ(LeeEntero(kLinea.substr(1, 2)), 23);
    EXPECT_EQ(LeeReal(kLinea.substr(3, 3)), 45);
    EXPECT_EQ(LeeReal(kLinea.substr(3, 4)), 45.7);
    EXPECT_EQ(LeeEntero(std::string_view("1\0"
                                         "2",
                                         3)),
              1);
    EXPECT_EQ(LeeEntero("\xA0"
                        "5"),
              0)
        << "the code page's hard blank is no white space";
}
