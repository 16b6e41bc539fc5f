#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

#include "cadastre/message_catalogue.h"
#include "platform/cstring.h"

// The log read back: which message a line is, and which parcel, subparcel or place it speaks of.

/// A line of the log without its words, kept small: a log may have a million lines.
struct CAviso {
    static constexpr int kNada = std::numeric_limits<int>::min();

    bool HayParcela() const { return polig != kNada; }
    bool HaySitio() const { return x != kNada && y != kNada; }
    bool Es(Mensaje cual) const { return mensaje != nullptr && mensaje->numero == cual; }

    const CMensaje* mensaje = nullptr; ///< null for a line that is no message
    std::uint32_t linea = 0;           ///< in the log, from 1; 0 for one that is read by itself
    // What the message names; kNada where it doesn't.
    int polig = kNada;
    int parcela = kNada;
    int numero = kNada;     ///< of a holder or place; of E203 the module's intensity
    int superficie = kNada; ///< of the parcel, as the line says; of W303 the difference
    int suma = kNada;       ///< of its subparcels
    int x = kNada;          ///< hundredths of a metre
    int y = kNada;
    CString letra; ///< of the subparcel; empty where the line names none
    CString texto; ///< the name, DNI or module that the line names
};

/// The code that a message's text begins with, "E112"; empty where there is none.
std::string_view CodigoMensaje(const CMensaje& mensaje);

/// Reads a line of a log. One that begins with a code but doesn't read as that message is no
/// message. Takes time in proportion to the line's length.
/// \param linea  without its line end
CAviso LeeMensaje(std::string_view linea);
