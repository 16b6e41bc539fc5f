#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "platform/ansi.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_libs/ccadena.h"

using Textos = std::vector<std::string>;

/// Runs of the translation from the command line, in a folder of their own.
class CBancoDeIda {
public:
    /// Runs on an input of these bytes and with these stored settings.
    void Ejecuta(std::string_view entrada, int tipoEntrada = 0)
    {
        carpeta.Pon("entrada.txt", entrada);
        aplicacion.WriteProfileInt("CampivaAVexa", "TipoEntrada", tipoEntrada);
        EjecutaLote("entrada.txt");
    }

    void EjecutaLote(std::string_view entrada) const
    {
        CCampivaAVexaDlg dialogo;
        EjecutaLote(dialogo, entrada);
    }
    void EjecutaLote(CCampivaAVexaDlg& dialogo, std::string_view entrada) const
    {
        dialogo.EjecutaLote(carpeta.En(entrada), carpeta.En("Modulos.txt"),
                            carpeta.En("Titulares.txt"), carpeta.En("Parcelas.txt"),
                            carpeta.En("Subparcelas.txt"), carpeta.En("Parajes.txt"),
                            carpeta.En("Cotitulares.txt"), nullptr);
    }

    Textos Lineas(std::string_view nombre) const { return carpeta.Lineas(nombre); }
    Textos Mensajes() const { return Lineas("entrada.ERR"); }
    /// A field of a row of a table, both counted from 0, without the blanks before it.
    std::string Campo(std::string_view tabla, std::size_t fila, unsigned campo) const
    {
        std::vector<CString> campos(campo + 1);
        CCadena(Lineas(tabla).at(fila + 1)).Leetira(campo + 1, campos.data());
        return std::string(std::string_view(campos.back().TrimLeft()));
    }
    /// Rows of a table, without its header.
    int Filas(std::string_view tabla) const { return static_cast<int>(Lineas(tabla).size()) - 1; }

    CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
};

class Traduccion : public testing::Test, protected CBancoDeIda {};

/// A line of the read layout: its head, then pieces at their columns.
struct CPieza {
    std::size_t columna;
    std::string_view texto;
};
inline std::string Linea(std::string_view cabecera, std::initializer_list<CPieza> piezas)
{
    std::string linea(cabecera);
    for (const CPieza& pieza : piezas) {
        linea.resize(std::max(linea.size(), pieza.columna + pieza.texto.size()), ' ');
        linea.replace(pieza.columna, pieza.texto.size(), pieza.texto);
    }
    return linea + "\r\n";
}

inline std::string Paraje(std::string_view numero, std::string_view nombre)
{
    return Linea("PJ045127", {{11, numero}, {16, nombre}});
}
inline std::string Titular(std::string_view numero, std::string_view partici,
                           std::string_view nombre, std::string_view dni)
{
    return Linea("TL045127", {{11, numero}, {18, partici}, {23, nombre}, {84, dni}, {92, "X"}});
}
/// A parcel of polygon 1 and 100 square metres.
inline std::string Parcela(std::string_view parcela, std::string_view numImputa,
                           std::string_view paraje)
{
    return Linea("PR045127", {{11, "01001"},
                              {16, parcela},
                              {21, "000000100"},
                              {46, numImputa},
                              {53, "PR"},
                              {71, paraje},
                              {76, " "}});
}
inline std::string Suelo(std::string_view parcela, std::string_view letra,
                         std::string_view centiareas)
{
    return Linea(
        "SP045127",
        {{13, "001"}, {16, parcela}, {21, letra}, {32, "0000"}, {36, centiareas}, {41, "C-"}});
}
