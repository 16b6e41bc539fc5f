#pragma once

#include <string_view>

#include "cadastre/exchange_format.h"

/// What a run of the way out has read of its input by half, or not at all, and no message tells.
struct CEntradaVista {
    CCamposVistos campos;
    int parten = 0;          ///< constructions with a character that splits a row
    int deOtroUltimo = 0;    ///< parcels whose lines name another municipality than the last line
    int ultimo = 0;          ///< the municipality of that
    int parajesDeOtro = 0;   ///< places that have the number of another one
    int titularesDeOtro = 0; ///< holders' lines with the number of another one, of a list
    int sinReferencia = 0;   ///< parcels that can't be stored, of a list
    int conOtrosDatos = 0;   ///< parcels that come again and aren't the same, of a list
    int sinSuTitular = 0;    ///< subparcels whose holder is in another municipality, of a list

    /// The record of a line; what of it isn't read as it stands is counted.
    template <class R>
    R Lee(std::string_view linea, Modo modo, CDatosLinea& datos)
    {
        R registro;
        registro.Lee(linea, modo, datos);
        campos.Toma(datos);
        return registro;
    }
};
