#include "catastro_to_vexa/line_check.h"

#include <algorithm>
#include <array>
#include <span>

#include "cadastre/exchange_format.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel_columns.h"

namespace {

constexpr std::size_t kAnchoTipo = kLeeTipo.ancho;
constexpr std::size_t kAnchoMunicipio = kLeeGer.ancho + kLeeMun.ancho; // its two numbers

/// Where the last column that is read of a record ends.
/// \param Forma  of the exchange file's lines, or of the list's
template <auto Forma, class R, std::size_t N>
constexpr std::size_t FinDe(const std::array<CColumna<R>, N>& tabla)
{
    int fin = 0;
    for (const CColumna<R>& columna : tabla)
        fin = std::max(fin, (columna.*Forma).columna + (columna.*Forma).ancho);
    return static_cast<std::size_t>(fin);
}

template <class R, std::size_t N>
constexpr std::size_t FinCatastro(const std::array<CColumna<R>, N>& tabla)
{
    return FinDe<&CColumna<R>::catastro>(tabla);
}

template <class R, std::size_t N>
constexpr std::size_t FinLista(const std::array<CColumna<R>, N>& tabla)
{
    return FinDe<&CColumna<R>::lista>(tabla);
}

struct CLargoRegistro {
    std::string_view tipo;
    std::size_t fin;
};

constexpr CLargoRegistro kCatastro[] = {
    {kTipoTitular, FinCatastro(kColumnasTitular)},
    {kTipoParcela, FinCatastro(kColumnasParcela)},
    {kTipoSuelo, FinCatastro(kColumnasSuelo)},
    {kTipoConstruccion, FinCatastro(kColumnasConstruccion)},
    {kTipoModulo, FinCatastro(kColumnasModulo)},
    {kTipoParaje, FinCatastro(kColumnasParaje)},
};

constexpr CLargoRegistro kLista[] = {
    {"31", FinLista(kColumnasTitular)},
    {"32", FinLista(kColumnasParcela)},
    {"33", FinLista(kColumnasSubparcela)},
};

/// The record of a type; none for another type.
const CLargoRegistro* RegistroDe(std::span<const CLargoRegistro> registros, std::string_view tipo)
{
    const auto suyo = std::ranges::find(registros, tipo, &CLargoRegistro::tipo);
    return suyo == registros.end() ? nullptr : &*suyo;
}

bool EsMayuscula(char c)
{
    return c >= 'A' && c <= 'Z';
}

bool EsCifra(char c)
{
    return c >= '0' && c <= '9';
}

bool EstaEnBlanco(std::string_view texto)
{
    return std::ranges::all_of(texto, [](char c) { return c == ' '; });
}

/// Tells whether another record of the same municipality stands behind the first one. What else
/// stands behind its columns is for other readers.
bool EsDoble(std::string_view linea, std::span<const CLargoRegistro> registros)
{
    const CLargoRegistro* registro = RegistroDe(registros, linea.substr(0, kAnchoTipo));
    if (registro == nullptr || linea.size() <= registro->fin ||
        EstaEnBlanco(linea.substr(registro->fin)))
        return false;
    const std::string_view municipio = linea.substr(kAnchoTipo, kAnchoMunicipio);
    for (std::size_t i = linea.find(municipio, 2 * kAnchoTipo + municipio.size());
         i != std::string_view::npos; i = linea.find(municipio, i + 1))
        if (RegistroDe(registros, linea.substr(i - kAnchoTipo, kAnchoTipo)) != nullptr)
            return true;
    return false;
}

} // namespace

void CMiraLineas::Toma(std::string_view linea)
{
    const bool acaba = linea.ends_with('\n');
    if (acaba)
        linea.remove_suffix(1);
    if (linea.empty())
        return;
    unsigned altos = 0; // in one pass, and without a branch: faster than to stop
    bool controles = false;
    for (const char c : linea) {
        altos |= static_cast<unsigned char>(c);
        controles |= static_cast<unsigned char>(c) < ' ';
    }
    if (altos >= 0x80)
        m_utf8.Toma(linea);
    const auto esSuya = m_esLista ? EsCifra : EsMayuscula;
    const std::string_view tipo = linea.substr(0, kAnchoTipo);
    const bool tieneTipo = tipo.size() == kAnchoTipo && std::ranges::all_of(tipo, esSuya);
    if (!tieneTipo && !EstaEnBlanco(linea))
        ++m_sinTipo;
    else if (!controles &&
             EsDoble(linea, m_esLista ? std::span<const CLargoRegistro>(kLista) : kCatastro))
        ++m_dobles;
    if (controles)
        TomaControles(linea, tieneTipo);
    TomaLargo(linea, acaba);
}

void CMiraLineas::TomaControles(std::string_view linea, bool tieneTipo)
{
    constexpr std::string_view kFines = "\r\x1A";
    m_conTabulador += linea.find('\t') != std::string_view::npos ? 1 : 0;
    const std::size_t dentro = std::min(linea.find_first_of(kFines), linea.size());
    // Some transfers leave one more at the end of each line.
    const bool sigue = linea.find_first_not_of(kFines, dentro) != std::string_view::npos;
    m_conFines += tieneTipo && sigue ? 1 : 0;
}

void CMiraLineas::TomaLargo(std::string_view linea, bool acaba)
{
    const std::string_view tipo = linea.substr(0, kAnchoTipo);
    const bool sigue = tipo == m_tipo;
    m_cortada = !acaba && sigue && linea.size() < m_masCorta;
    m_masCorta = sigue ? std::min(m_masCorta, linea.size()) : linea.size();
    if (!sigue)
        m_tipo = tipo;
}
