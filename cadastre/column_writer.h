#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "cadastre/exchange_format.h"
#include "platform/files/cstdio_file.h"
#include "platform/format.h"

// The writers that a record's table of columns makes.

/// A piece of a line to be written: what stands in front of a field, then the field.
template <class R>
struct CTrozo {
    int orden = -1; ///< its column, or its number in the row
    CMiembroDe<R> campo;
    CForma forma;
    std::size_t huecos = 0; ///< blanks, or a tab, in front of it
    bool entero = false;    ///< a text that nobody expects to be cut there
};

/// The pieces of a line in the order in which they are written.
template <class R, std::size_t N>
struct CFormatoLinea {
    char hueco = ' ';
    std::array<CTrozo<R>, N> trozos{};
    std::size_t cuantos = 0;
    std::size_t cola = 0;  ///< blanks behind the last one
    std::size_t ancho = 0; ///< of a record; a row has none

    constexpr const CTrozo<R>& operator[](std::size_t i) const { return trozos[i]; }

    constexpr void Añade(int orden, const CMiembroDe<R>& campo, const char* forma,
                         int anchoEnTabla = 0)
    {
        std::string_view texto = forma;
        CTrozo<R> trozo{orden, campo, AnalizaForma(texto)};
        trozo.entero = anchoEnTabla <= trozo.forma.precision;
        if (trozo.forma.tipo == '\0' || !texto.empty())
            throw "the form of a column is one form and nothing else";
        std::size_t i = cuantos++;
        for (; i > 0 && trozos[i - 1].orden > orden; --i)
            trozos[i] = trozos[i - 1];
        trozos[i] = trozo;
    }
};

namespace columnas {

template <class R>
constexpr int Ancho(const CTrozo<R>& trozo)
{
    if (std::holds_alternative<const char*>(trozo.campo))
        return static_cast<int>(std::string_view(std::get<const char*>(trozo.campo)).size());
    return trozo.forma.tipo == 'c' ? 1 : trozo.forma.ancho;
}

} // namespace columnas

/// A record of the written layout, made from the table of columns: what no column claims is blank.
/// A table whose columns overlap or pass the width doesn't compile.
template <class R, std::size_t N>
constexpr CFormatoLinea<R, N> RegistroFijo(const std::array<CColumna<R>, N>& tabla, int ancho)
{
    CFormatoLinea<R, N> formato;
    for (const CColumna<R>& columna : tabla)
        if (columna.escrita.columna >= 0)
            formato.Añade(columna.escrita.columna, columna.campo, columna.escrita.forma,
                          AnchoDe(columna.tabla));
    int hasta = 0;
    for (std::size_t i = 0; i < formato.cuantos; ++i) {
        CTrozo<R>& trozo = formato.trozos[i];
        if (trozo.orden < hasta)
            throw "two written columns overlap";
        trozo.huecos = static_cast<std::size_t>(trozo.orden - hasta);
        hasta = trozo.orden + columnas::Ancho(trozo);
    }
    if (hasta > ancho)
        throw "the written columns pass the record's width";
    formato.cola = static_cast<std::size_t>(ancho - hasta);
    formato.ancho = static_cast<std::size_t>(ancho);
    return formato;
}

/// A row of a table file, made from the table of columns: fields between tabs. A table whose row
/// has a field twice or lacks one doesn't compile.
template <class R, std::size_t N>
constexpr CFormatoLinea<R, N> FilaTabla(const std::array<CColumna<R>, N>& tabla)
{
    CFormatoLinea<R, N> formato;
    formato.hueco = '\t';
    for (const CColumna<R>& columna : tabla)
        if (columna.tabla.numero >= 0 && *columna.tabla.forma != '\0')
            formato.Añade(columna.tabla.numero, columna.campo, columna.tabla.forma);
    for (std::size_t i = 0; i < formato.cuantos; ++i) {
        if (formato.trozos[i].orden != static_cast<int>(i))
            throw "the fields of a table row are numbered without a hole";
        formato.trozos[i].huecos = i > 0 ? 1 : 0;
    }
    return formato;
}

namespace columnas {

// And the one place where a field becomes a text: the room that it takes at most, and its writing.
template <CForma F>
std::size_t Cota(int /*campo*/)
{
    return std::max<std::size_t>(F.ancho, kEnteroMasLargo);
}
template <CForma F>
std::size_t Cota(double /*campo*/)
{
    return std::max<std::size_t>(F.ancho, kRealMasLargo);
}
template <CForma F>
std::size_t Cota(char /*campo*/)
{
    return 1;
}
template <CForma F>
std::size_t Cota(const CString& campo)
{
    const int largo = F.precision >= 0 ? F.precision : campo.GetLength();
    return static_cast<std::size_t>(std::max<int>(F.ancho, largo));
}

template <CForma F>
char* Pon(char* destino, int campo)
{
    return PonEntero<F>(destino, campo);
}
template <CForma F>
char* Pon(char* destino, double campo)
{
    return PonReal(destino, F, campo);
}
template <CForma F>
char* Pon(char* destino, char campo)
{
    *destino = campo;
    return destino + 1;
}
template <CForma F>
char* Pon(char* destino, const CString& campo)
{
    return PonTexto<F>(destino, campo);
}

/// Calls `f` for each piece of a line, in order, with the piece's number in the line and its value.
template <const auto& Formato, class R, class F>
void EnCadaTrozo(const R& registro, const CDatosLinea& datos, F f)
{
    const auto con = [&](auto trozo) {
        constexpr auto kCampo = kMiembro<Formato, trozo>;
        using C = decltype(kCampo);
        if constexpr (std::is_invocable_v<C, const R&>)
            f(trozo, registro.*kCampo);
        else if constexpr (std::is_invocable_v<C, const CDatosLinea&>)
            f(trozo, datos.*kCampo);
        else
            f(trozo, std::string_view(kCampo));
    };
    [&]<std::size_t... I>(std::index_sequence<I...>)
    {
        (con(std::integral_constant<std::size_t, I>()), ...);
    }
    (std::make_index_sequence<Formato.cuantos>());
}

/// Tells whether a record that came out `largo` characters long has room for what it holds: no
/// value made it wider, but for a text at its end, which moves nothing, and no text lost more than
/// blanks. Of texts for which tables have more room than records have nobody expects that.
template <const auto& Formato, class R>
bool Cabe(std::size_t largo, const R& registro, const CDatosLinea& datos)
{
    bool cabe = true;
    std::size_t ancho = Formato.ancho;
    EnCadaTrozo<Formato>(registro, datos, [&]<class V>(auto trozo, const V& valor) {
        constexpr const CForma& kForma = Formato[trozo].forma;
        constexpr auto kHasta = static_cast<std::size_t>(kForma.precision);
        if constexpr (std::is_same_v<V, CString> && trozo + 1 == Formato.cuantos)
            if (const std::string_view texto = valor; kForma.precision < 0)
                ancho += texto.size() - std::min<std::size_t>(texto.size(), kForma.ancho);
        if constexpr (std::is_same_v<V, CString> && Formato[trozo].entero)
            if (const std::string_view texto = valor; texto.size() > kHasta)
                cabe &= texto.find_first_not_of(' ', kHasta) == std::string_view::npos;
    });
    return cabe && largo <= ancho;
}

} // namespace columnas

/// Most bytes that the line may take, without a line end.
template <const auto& Formato, class R>
std::size_t Cota(const R& registro, const CDatosLinea& datos)
{
    std::size_t cota = Formato.cola;
    columnas::EnCadaTrozo<Formato>(registro, datos, [&]<class V>(auto trozo, const V& valor) {
        constexpr const auto& kTrozo = Formato[trozo];
        cota += kTrozo.huecos;
        if constexpr (std::is_same_v<V, std::string_view>)
            cota += valor.size();
        else
            cota += columnas::Cota<kTrozo.forma>(valor);
    });
    return cota;
}

/// Puts the line, without a line end, at `destino`, where there must be room for `Cota` bytes, and
/// gives its end. A value wider than its column moves what follows it to the right.
template <const auto& Formato, class R>
char* PonLinea(char* destino, const R& registro, const CDatosLinea& datos)
{
    const auto llena = [&](std::size_t huecos, char c) {
        std::memset(destino, c, huecos);
        destino += huecos;
    };
    columnas::EnCadaTrozo<Formato>(registro, datos, [&]<class V>(auto trozo, const V& valor) {
        constexpr const auto& kTrozo = Formato[trozo];
        llena(kTrozo.huecos, Formato.hueco);
        if constexpr (std::is_same_v<V, std::string_view>)
            destino = std::copy(valor.begin(), valor.end(), destino);
        else
            destino = columnas::Pon<kTrozo.forma>(destino, valor);
    });
    llena(Formato.cola, ' ');
    return destino;
}

/// Appends the line, without a line end.
/// \return false where the record lacks room for what it holds
template <const auto& Formato, class R>
[[nodiscard]] bool AnexaLinea(std::string& texto, const R& registro, const CDatosLinea& datos)
{
    const std::size_t antes = texto.size();
    texto.resize(antes + Cota<Formato>(registro, datos));
    const char* const fin = PonLinea<Formato>(texto.data() + antes, registro, datos);
    texto.resize(static_cast<std::size_t>(fin - texto.data()));
    return columnas::Cabe<Formato>(texto.size() - antes, registro, datos);
}

/// Writes one line; the file notes a record that lacks room for what it holds. Raises
/// CFileException.
template <const auto& Formato, class R>
void GrabaLinea(CStdioFile& fichero, const R& registro, const CDatosLinea& datos)
{
    char* const linea = fichero.EmpiezaLinea(Cota<Formato>(registro, datos));
    const char* const fin = PonLinea<Formato>(linea, registro, datos);
    if constexpr (Formato.ancho > 0)
        if (!columnas::Cabe<Formato>(static_cast<std::size_t>(fin - linea), registro, datos))
            fichero.AnotaDesborde();
    fichero.AcabaLinea(fin);
}

/// Writes the record of the written layout with `fijo`, else the table row. Raises CFileException.
template <const auto& Tabla, int Ancho = kAnchoRegistro, class R>
void GrabaRegistro(CStdioFile& fichero, const R& registro, const CDatosLinea& datos, bool fijo)
{
    static constexpr auto kRegistro = RegistroFijo(Tabla, Ancho);
    static constexpr auto kFila = FilaTabla(Tabla);
    if (fijo)
        GrabaLinea<kRegistro>(fichero, registro, datos);
    else
        GrabaLinea<kFila>(fichero, registro, datos);
}
