#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "platform/cfile.h"
#include "platform/cstring.h"
#include "tests/support/files.h"

// What the tests of the records share.

/// The bytes on disk of a text file that `graba` has written.
template <class F>
std::string Grabado(F graba)
{
    const CCarpetaPrueba carpeta;
    CStdioFile fichero;
    EXPECT_TRUE(fichero.Open(carpeta.En("escrito"), CFile::modeCreate | CFile::modeWrite));
    graba(fichero);
    fichero.Close();
    return carpeta.Lee("escrito");
}

/// A table row, whose tabs stand as bars in the sources.
inline std::string Fila(std::string_view conBarras)
{
    std::string fila(conBarras);
    std::replace(fila.begin(), fila.end(), '|', '\t');
    return fila;
}

inline std::string Veces(int cuantas, std::string_view texto)
{
    std::string todo;
    for (int i = 0; i < cuantas; ++i)
        todo += texto;
    return todo;
}

template <class R>
using CMiembro = std::variant<short R::*, int R::*, char R::*, CString R::*>;

/// A field as a person writes it down.
template <class R>
std::string Valor(const R& registro, const CMiembro<R>& cual)
{
    return std::visit(
        [&]<class C>(C R::*miembro) -> std::string {
            if constexpr (std::is_same_v<C, CString>)
                return std::string(std::string_view(registro.*miembro));
            else if constexpr (std::is_same_v<C, char>)
                return {registro.*miembro};
            else
                return std::to_string(registro.*miembro);
        },
        cual);
}

/// Three answers to where a line ends: one character short of a field's guard, at the guard, and at
/// the guard with the line end as the last character.
template <class R>
struct CGuarda {
    const char* campo;
    CMiembro<R> miembro;
    unsigned minimo;
    const char* corta;
    const char* justa;
    const char* conFin;
};

/// \param antes  record whose fields all differ from the line's
/// \param lee    reads a line into a record
template <class R, class L>
void CompruebaGuardas(std::string_view linea, const std::vector<CGuarda<R>>& guardas,
                      const R& antes, L lee)
{
    for (const CGuarda<R>& guarda : guardas) {
        const auto valor = [&](std::string_view cortada, const char* fin) {
            R registro = antes;
            lee(registro, std::string(cortada) + fin);
            return Valor(registro, guarda.miembro);
        };
        SCOPED_TRACE(guarda.campo + (" at " + std::to_string(guarda.minimo)));
        const unsigned n = guarda.minimo;
        EXPECT_EQ(valor(linea.substr(0, n - 1), ""), guarda.corta);
        EXPECT_EQ(valor(linea.substr(0, n - 2), "\n"), guarda.corta);
        EXPECT_EQ(valor(linea.substr(0, n), ""), guarda.justa);
        EXPECT_EQ(valor(linea.substr(0, n - 1), "\n"), guarda.conFin);
    }
}
