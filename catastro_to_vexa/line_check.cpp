#include "catastro_to_vexa/line_check.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "cadastre/exchange_format.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel_columns.h"
#include "platform/plain_texts.h"

namespace {

constexpr std::size_t kAnchoTipo = kLeeTipo.ancho;
constexpr std::size_t kAnchoMunicipio = kLeeGer.ancho + kLeeMun.ancho; // its two numbers
static_assert(kLeeGer.columna == kLeeTipo.ancho);

template <class R, std::size_t N>
constexpr CLargoRegistro LargoDe(const std::array<CColumna<R>, N>& tabla)
{
    int fin = 0;
    int minimo = 0;
    for (const CColumna<R>& columna : tabla) {
        const CLectura& donde = columna.catastro;
        fin = std::max(fin, donde.columna + donde.ancho);
        minimo = std::max<int>(minimo, donde.minimo);
    }
    return {static_cast<std::size_t>(fin), static_cast<std::size_t>(minimo)};
}

constexpr struct {
    std::string_view tipo;
    CLargoRegistro largo;
} kLargosDeRegistro[] = {
    {kTipoTitular, LargoDe(kColumnasTitular)}, {kTipoParcela, LargoDe(kColumnasParcela)},
    {kTipoSuelo, LargoDe(kColumnasSuelo)},     {kTipoConstruccion, LargoDe(kColumnasConstruccion)},
    {kTipoModulo, LargoDe(kColumnasModulo)},   {kTipoParaje, LargoDe(kColumnasParaje)},
};

CLargoRegistro LargoDelTipo(std::string_view tipo)
{
    for (const auto& [suyo, largo] : kLargosDeRegistro)
        if (suyo == tipo)
            return largo;
    return {};
}

/// Tells whether another record of the same municipality stands behind the first one. What else
/// stands behind its columns is for other readers.
/// \param fin  where those end
bool EsDoble(std::string_view linea, std::size_t fin)
{
    if (EstaEnBlanco(linea.substr(fin)))
        return false;
    const std::string_view municipio = linea.substr(kAnchoTipo, kAnchoMunicipio);
    for (std::size_t i = linea.find(municipio, 2 * kAnchoTipo + municipio.size());
         i != std::string_view::npos; i = linea.find(municipio, i + 1))
        if (EsTipoDeIntercambio(linea.substr(i - kAnchoTipo, kAnchoTipo)))
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
    const CBytesVistos vistos = MiraBytes(linea);
    if (vistos.altos)
        m_pagina.TomaConAltos(linea);
    TomaTipo(linea, acaba);
    if (vistos.controles)
        TomaControles(linea);
    else if (linea.size() > m_largo.fin && EsDoble(linea, m_largo.fin))
        ++m_dobles;
}

/// Most lines have the type of the one in front of them.
void CMiraLineas::TomaTipo(std::string_view linea, bool acaba)
{
    const std::array<char, 2> tipo = {linea.front(), linea.size() > 1 ? linea[1] : '\0'};
    const bool sigue = tipo == m_tipo;
    if (!sigue) {
        m_tipo = tipo;
        const auto esSuya = [desde = m_esLista ? '0' : 'A', hasta = m_esLista ? '9' : 'Z'](char c) {
            return c >= desde && c <= hasta;
        };
        m_tieneTipo = esSuya(tipo[0]) && esSuya(tipo[1]);
        m_largo = m_esLista ? CLargoRegistro() : LargoDelTipo({tipo.data(), tipo.size()});
    }
    // A last column that is read where the line end is there.
    const bool pierde = linea.size() >= m_largo.fin && linea.size() < m_largo.minimo;
    m_cortada = !acaba && ((sigue && linea.size() < m_masCorta) || (pierde && linea.back() != ' '));
    m_masCorta = sigue ? std::min(m_masCorta, linea.size()) : linea.size();
    if (m_tieneTipo)
        TomaGer(linea);
    else if (!EstaEnBlanco(linea))
        ++m_sinTipo;
}

void CMiraLineas::TomaGer(std::string_view linea)
{
    const bool esLaSuya = linea.size() >= kAnchoTipo + m_ger.size() &&
                          std::memcmp(m_ger.data(), linea.data() + kAnchoTipo, m_ger.size()) == 0;
    if (esLaSuya || CLineaFija(linea).Entero(kLeeGer) == 0)
        return;
    if (m_ger.front() == '\0')
        TomaCabecera(linea);
    else
        ++m_deOtraGer;
}

void CMiraLineas::TomaCabecera(std::string_view linea)
{
    m_ger.fill(' ');
    std::ranges::copy(CLineaFija(linea).Texto(kLeeGer), m_ger.begin());
}

void CMiraLineas::TomaControles(std::string_view linea)
{
    constexpr std::string_view kFines = "\r\x1A";
    m_conTabulador += linea.find('\t') != std::string_view::npos ? 1 : 0;
    const std::size_t dentro = std::min(linea.find_first_of(kFines), linea.size());
    // Some transfers leave one more at the end of each line.
    const bool sigue = linea.find_first_not_of(kFines, dentro) != std::string_view::npos;
    m_conFines += m_tieneTipo && sigue ? 1 : 0;
}
