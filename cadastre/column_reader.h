#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

#include "cadastre/exchange_format.h"

// The readers that a record's table of columns makes.

namespace columnas {

// The one place where a text becomes a field. What isn't read as it stands is noted beside the
// record.
template <std::signed_integral T>
void Pon(T& campo, std::string_view texto, CDatosLinea& datos)
{
    const std::int64_t numero = LeeEnteroLargo(texto, &datos.resto);
    campo = static_cast<T>(numero);
    if (numero != campo)
        datos.pasan = true;
}
inline void Pon(double& campo, std::string_view texto, CDatosLinea& datos)
{
    campo = LeeReal(texto, &datos.resto);
}
inline void Pon(CString& campo, std::string_view texto, CDatosLinea& /*datos*/)
{
    campo = texto;
}
inline void Pon(char& campo, std::string_view texto, CDatosLinea& datos)
{
    if (!texto.empty())
        campo = texto.front();
    if (texto.size() > 1 && texto.find_first_not_of(" \r", 1) != std::string_view::npos)
        datos.letras = true;
}

/// The text without the blanks that fill its field up, which are most of a name's.
inline std::string_view SinRelleno(std::string_view texto)
{
    constexpr std::string_view kOcho = "        ";
    const auto acabaEn = [&](std::size_t cuantos) {
        return texto.size() >= cuantos &&
               std::memcmp(texto.data() + texto.size() - cuantos, kOcho.data(), cuantos) == 0;
    };
    while (acabaEn(kOcho.size()))
        texto.remove_suffix(kOcho.size());
    while (acabaEn(1))
        texto.remove_suffix(1);
    return texto;
}

/// Tells whether row `I` of a table is a field of the record, and no value beside it.
template <const auto& Tabla, std::size_t I, class R>
inline constexpr bool kDelRegistro = std::is_invocable_v<decltype(kMiembro<Tabla, I>), R&>;

template <class T, class C>
constexpr bool EsEntero(T C::* /*campo*/)
{
    return std::signed_integral<T> && !std::same_as<T, char>;
}
constexpr bool EsEntero(const char* /*fijo*/)
{
    return false;
}

/// Puts a text into the field of row `I` of a table. A fixed text takes none.
template <const auto& Tabla, std::size_t I, class R>
void PonCampo(std::string_view texto, R& registro, CDatosLinea& datos)
{
    constexpr auto kCampo = kMiembro<Tabla, I>;
    if constexpr (Tabla[I].pierde != Blancos::Ninguno)
        texto = SinRelleno(texto);
    if constexpr (Tabla[I].pierde == Blancos::DelEntorno)
        while (texto.starts_with(' '))
            texto.remove_prefix(1);
    if constexpr (kDelRegistro<Tabla, I, R>)
        Pon(registro.*kCampo, texto, datos);
    else if constexpr (std::is_invocable_v<decltype(kCampo), CDatosLinea&>)
        Pon(datos.*kCampo, texto, datos);
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

/// Where a line ends at the least that has all its fields, as nearly all lines have.
template <auto Cual, class R, std::size_t N>
constexpr std::size_t FinCampos(const std::array<CColumna<R>, N>& tabla)
{
    int fin = 0;
    for (const CColumna<R>& columna : tabla) {
        const CLectura& donde = columna.*Cual;
        fin = std::max({fin, donde.columna + donde.ancho, int{donde.minimo}});
    }
    return static_cast<std::size_t>(fin);
}

/// \param Estan  whether the line has all fields
template <const auto& Tabla, auto Cual, bool Estan, class R>
void LeeCampos(const CLineaFija& linea, R& registro, CDatosLinea& datos)
{
    EnCadaFila<Tabla>([&](auto fila) {
        constexpr CLectura kDonde = Tabla[fila].*Cual;
        if constexpr (kDonde.columna < 0)
            return;
        else if constexpr (Estan)
            PonCampo<Tabla, fila>(linea.TextoQueEsta(kDonde), registro, datos);
        else if (linea.Alcanza(kDonde.minimo))
            PonCampo<Tabla, fila>(linea.Texto(kDonde), registro, datos);
    });
}

} // namespace columnas

/// Reads the fields of a line that `Cual` (`catastro` or `lista`) gives a place and that the line
/// is long enough for; all others stay as they are. A one-character field whose place is behind the
/// line's last character stays too.
/// \param datos  takes the values that stand beside the record, and notes what isn't read as it
/// stands
template <const auto& Tabla, auto Cual, class R>
void LeeColumnas(const CLineaFija& linea, R& registro, CDatosLinea& datos)
{
    if (linea.Llega(columnas::FinCampos<Cual>(Tabla)))
        columnas::LeeCampos<Tabla, Cual, true>(linea, registro, datos);
    else
        columnas::LeeCampos<Tabla, Cual, false>(linea, registro, datos);
}

/// How many fields a reader splits a row into.
template <class R, std::size_t N>
constexpr std::size_t CamposDeFila(const std::array<CColumna<R>, N>& tabla)
{
    std::size_t campos = 0;
    for (const CColumna<R>& columna : tabla)
        if (columna.tabla.numero >= 0)
            campos = std::max(campos, static_cast<std::size_t>(columna.tabla.numero) + 1);
    return campos;
}

/// Reads the fields of a table row that aren't empty; the others stay as they are.
/// \param datos  takes the values that stand beside the record, also where the result is false; its
///               `faltan` becomes true if one of those that the row must have is empty, and what
///               of the row isn't read as it stands
/// \return false, with the record as it was, if a field of the record that the row must have is
///         empty
template <const auto& Tabla, class R>
bool LeeFila(std::string_view fila, R& registro, CDatosLinea& datos)
{
    std::array<std::string_view, CamposDeFila(Tabla)> campos;
    Leetira(fila, campos);
    bool completa = true;
    columnas::EnCadaFila<Tabla>([&](auto i) {
        constexpr CCampoTabla kCampo = Tabla[i].tabla;
        if constexpr (kCampo.obligado)
            if (campos[kCampo.numero].empty()) {
                if constexpr (columnas::kDelRegistro<Tabla, i, R>)
                    completa = false;
                else
                    datos.faltan = true;
            }
    });
    columnas::EnCadaFila<Tabla>([&](auto i) {
        constexpr short kNumero = Tabla[i].tabla.numero;
        if constexpr (kNumero >= 0)
            if (std::string_view texto = campos[kNumero];
                !texto.empty() && (completa || !columnas::kDelRegistro<Tabla, i, R>)) {
                if constexpr (columnas::EsEntero(kMiembro<Tabla, i>)) // rows fill it up in front
                    while (texto.starts_with(' '))
                        texto.remove_prefix(1);
                columnas::PonCampo<Tabla, i>(texto, registro, datos);
            }
    });
    return completa;
}
