#pragma once

#include <optional>
#include <string_view>

#include "cadastre/message_catalogue.h"
#include "platform/cstring.h"

// The log read back: which message a line is, and which parcel, subparcel or place it speaks of.

/// A place in metres.
struct CSitio {
    double x = 0;
    double y = 0;
};

struct CMensajeLeido {
    const CMensaje* mensaje = nullptr; ///< null for a line that is no message
    std::optional<int> polig;
    std::optional<int> parcela;
    std::optional<int> numero;     ///< of a holder or place; of E203 the module's intensity
    std::optional<int> superficie; ///< of the parcel, as the line says; of W303 the difference
    std::optional<int> suma;       ///< of its subparcels
    std::optional<CSitio> sitio;
    CString letra; ///< of the subparcel; empty where the line names none
    CString texto; ///< the name, DNI or module that the line names
};

/// The code that a message's text begins with, "E112"; empty where there is none.
std::string_view CodigoMensaje(const CMensaje& mensaje);

/// The message with the code, null for none.
const CMensaje* BuscaMensaje(std::string_view codigo);

/// Reads a line of a log. One that begins with a code but doesn't read as that message is no
/// message. Takes time in proportion to the line's length.
/// \param linea  without its line end
CMensajeLeido LeeMensaje(std::string_view linea);
