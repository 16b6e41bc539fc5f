#pragma once

#include <string>
#include <string_view>
#include <type_traits>

#include "cadastre/column_reader.h"

// Composes lines of fixed columns as the readers of column_reader.h expect them.

namespace sintetico {

/// Puts a value into a line at the place where it is read: numbers with leading zeros, texts cut or
/// padded to the width. A short line is filled up with blanks.
void PonEnLinea(std::string& linea, const CLectura& donde, int valor);
void PonEnLinea(std::string& linea, const CLectura& donde, std::string_view valor);

/// Puts all fields that `Cual` gives a place into the line, and what stands beside the record.
template <const auto& Tabla, auto Cual, class R>
void Compon(std::string& linea, const R& registro, const CDatosLinea& datos)
{
    const auto pon = [&]<class V>(const CLectura& donde, const V& valor) {
        if constexpr (std::is_same_v<V, char>)
            PonEnLinea(linea, donde, std::string_view(&valor, 1));
        else if constexpr (std::is_integral_v<V>)
            PonEnLinea(linea, donde, static_cast<int>(valor));
        else if constexpr (std::is_same_v<V, CString>)
            PonEnLinea(linea, donde, std::string_view(valor));
    };
    columnas::EnCadaFila<Tabla>([&](auto fila) {
        constexpr CLectura kDonde = Tabla[fila].*Cual;
        constexpr auto kCampo = kMiembro<Tabla, fila>;
        using C = decltype(kCampo);
        if constexpr (kDonde.columna < 0)
            return;
        else if constexpr (std::is_invocable_v<C, const R&>)
            pon(kDonde, registro.*kCampo);
        else if constexpr (std::is_invocable_v<C, const CDatosLinea&>)
            pon(kDonde, datos.*kCampo);
    });
}

} // namespace sintetico
