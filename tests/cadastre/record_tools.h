#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "cadastre/exchange_format.h"
#include "cadastre/holder.h"
#include "platform/cstring.h"
#include "platform/files/cstdio_file.h"
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

inline CTitular Titular(const std::string& nombre, const std::string& DNI, int numOrden)
{
    CTitular titular;
    titular.Nombre = nombre;
    titular.DNI = DNI;
    titular.NumOrden = numOrden;
    return titular;
}

inline std::string Veces(int cuantas, std::string_view texto)
{
    std::string todo;
    for (int i = 0; i < cuantas; ++i)
        todo += texto;
    return todo;
}

/// The record filled from a table row, whose tabs stand as bars.
template <class R>
R DeFila(R registro, std::string_view conBarras)
{
    EXPECT_TRUE(registro.Lee(Fila(conBarras), kModoTabla)) << conBarras;
    return registro;
}
