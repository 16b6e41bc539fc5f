#pragma once

#include <functional>
#include <string_view>

#include "platform/ansi.h"
#include "platform/plain_texts.h"

// The six table files carry a municipality between the two translations: a header line, then a row
// for each element, for all municipalities in order, with one tab between fields. What a row holds
// stands beside each record; here are the header lines, and what all rows begin with. The source
// has the writers of whole files, which CBaseCatastro and the exchange files share.

inline constexpr const char* kCabeceraTitulares =
    "Ger Mun NumOrden    Nombre                                                      CJurid  DNI   "
    "   "
    "letra Exen Del Mun sig nombreVia                  numPol bloq    esc plant puert  CP\n";

/// The one header line with tabs.
inline constexpr const char* kCabeceraParcelas =
    "Ger\tMun\tZona\tPolig\tParcela\tSuperficie\tvalorCatastral\tañoVal\tnumImputa\tTit\tpartici\t"
    "numOrtofoto\t   x\t   y\tparaje\tclaveConc\n"_ansi;

inline constexpr const char* kCabeceraModulos =
    "Ger Mun Cal Inten Denominacion                           TipoEvalua    Jornadas EConce1 "
    "VConce1 "
    "EConce2 VConce2 EConce3 VConce3 Exen ConIBI ConJornadas\n";

inline constexpr const char* kCabeceraSubparcelas =
    "Ger Mun Zona   Polig   Parcela letra tipo cFiscal superfic cE   iE   ejer   cA   iA  ref1  "
    "ref2 "
    "compCons descComponente    largo   ancho   alto  volumen   uso  cl mod tipo usoP cSing añoC  "
    "añoR "
    "iC iR estC exencion añoEx\n"_ansi;

inline constexpr const char* kCabeceraParajes = "Ger Mun EMenor NumOrden Nombre\n";

inline constexpr const char* kCabeceraCotitulares =
    "Ger Mun  Zona  Polig   Parcela  numOrden Titul partici\n";

/// Code of the municipality that a row of any table belongs to; 0 for a header line.
int MunicipioDeFila(std::string_view fila);

/// Tells whether a row, the first one of its table, is the header line.
bool EsCabecera(std::string_view fila);

/// Tells whether a row, which isn't empty, says nothing all the same: blanks, or what a transfer
/// leaves at the end of a file.
constexpr bool EsFilaEnBlanco(std::string_view fila)
{
    return EstaEnBlanco(fila, std::string_view(" \t\r\f\x1A\0", 6));
}

/// Tells whether a text has what would part the row that it is written to.
constexpr bool ParteFilas(std::string_view texto)
{
    return texto.find_first_of("\t\r\n") != std::string_view::npos;
}

using CTomaFila = std::function<void(std::string_view fila)>;
