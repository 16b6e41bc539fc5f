#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "cadastre/exchange_format.h"

// The readers that a record's table of columns makes.

namespace columnas {

// The one place where a text becomes a field.
inline void Pon(short& campo, std::string_view texto)
{
    campo = static_cast<short>(LeeEntero(texto));
}
inline void Pon(int& campo, std::string_view texto)
{
    campo = LeeEntero(texto);
}
inline void Pon(double& campo, std::string_view texto)
{
    campo = LeeReal(texto);
}
inline void Pon(CString& campo, std::string_view texto)
{
    campo = texto;
}
inline void Pon(char& campo, std::string_view texto)
{
    if (!texto.empty())
        campo = texto.front();
}

/// Puts a text into the field of row `I` of a table. A fixed text takes none.
template <const auto& Tabla, std::size_t I, class R>
void PonCampo(std::string_view texto, R& registro, CDatosLinea& datos)
{
    constexpr auto kCampo = kMiembro<Tabla, I>;
    using C = decltype(kCampo);
    if constexpr (Tabla[I].recorta != Recorta::Nada)
        while (texto.ends_with(' '))
            texto.remove_suffix(1);
    if constexpr (Tabla[I].recorta == Recorta::Entorno)
        while (texto.starts_with(' '))
            texto.remove_prefix(1);
    if constexpr (std::is_invocable_v<C, R&>)
        Pon(registro.*kCampo, texto);
    else if constexpr (std::is_invocable_v<C, CDatosLinea&>)
        Pon(datos.*kCampo, texto);
}

/// Calls `f` with each row's number of a table, known when the program is built.
template <const auto& Tabla, class F>
void EnCadaFila(F f)
{
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        (f(std::integral_constant<std::size_t, I>()), ...);
    }
    (std::make_index_sequence<Tabla.size()>());
}

} // namespace columnas

/// Reads the fields of a line that `Cual` (`catastro` or `lista`) gives a place and that the line
/// is long enough for; all others stay as they are. A one-character field whose place is behind the
/// line's last character stays too.
template <const auto& Tabla, auto Cual, class R>
void LeeColumnas(const CLineaFija& linea, R& registro, CDatosLinea& datos)
{
    columnas::EnCadaFila<Tabla>([&](auto fila) {
        constexpr CLectura kDonde = Tabla[fila].*Cual;
        if constexpr (kDonde.columna >= 0)
            if (linea.Alcanza(kDonde.minimo))
                columnas::PonCampo<Tabla, fila>(linea.Texto(kDonde), registro, datos);
    });
}

/// Reads the fields of a table row that aren't empty; `campos` are all fields of the row.
template <const auto& Tabla, class R>
void LeeFila(std::span<const std::string_view> campos, R& registro, CDatosLinea& datos)
{
    columnas::EnCadaFila<Tabla>([&](auto fila) {
        constexpr short kNumero = Tabla[fila].tabla.numero;
        if constexpr (kNumero >= 0)
            if (const std::string_view texto = campos[kNumero]; !texto.empty())
                columnas::PonCampo<Tabla, fila>(texto, registro, datos);
    });
}

/// Puts a value into a line at the place where it is read: numbers with leading zeros, texts cut or
/// padded to the width. A short line is filled up with blanks.
void PonEnLinea(std::string& linea, const CLectura& donde, int valor);
void PonEnLinea(std::string& linea, const CLectura& donde, std::string_view valor);

/// The inverse of LeeColumnas: puts all fields that `Cual` gives a place into the line.
template <const auto& Tabla, auto Cual, class R>
void ComponColumnas(std::string& linea, const R& registro, const CDatosLinea& datos)
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
