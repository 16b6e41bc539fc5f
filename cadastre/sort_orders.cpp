#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/sorting.h"

// In which order everything is written, and what a sort does to the positions that point into its
// array.

void CBaseCatastro::OrdenaMunicipios()
{
    OrdenaPor(m_municipios, [](const CMunicipio& municipio) {
        return std::pair(municipio.Mun, municipio.EMenor);
    });
    m_porCodigo.Olvida();
}

void CBaseCatastro::EnCadaMunicipio(void (CMunicipio::*ordena)())
{
    for (CMunicipio& municipio : m_municipios)
        (municipio.*ordena)();
}

void CBaseCatastro::Ordena()
{
    OrdenaMunicipios();
    OrdenaTitulares();
    OrdenaParajes();
    OrdenaParcelas();
    OrdenaSubparcelas();
    OrdenaModulos();
    OrdenaCotitulares();
}

void CMunicipio::OrdenaTitulares()
{
    const auto numero = [](const CTitular& titular) { return titular.NumOrden; };
    if (Ascienden(m_titulares, numero))
        return;
    AsientaPropiedades(); // so that they go with their holders
    const std::vector<int> nuevos = OrdenaPor(m_titulares, numero);
    OlvidaTitulares();
    for (CParcela& parcela : m_parcelas)
        parcela.RenumeraTitulares(nuevos);
}

void CMunicipio::OrdenaParajes()
{
    std::vector<int> nuevos; // by the old position: first the number, then the new position
    nuevos.reserve(m_parajes.size());
    for (const CParaje& paraje : m_parajes)
        nuevos.push_back(paraje.NumOrden);
    OrdenaPor(m_parajes, [](const CParaje& paraje) { return std::string_view(paraje.Nombre); });
    m_parajesPorNumero.Olvida();
    m_parajesPorNombre.Olvida();
    for (int& nuevo : nuevos)
        nuevo = BuscaParaje(nuevo);
    for (CParcela& parcela : m_parcelas)
        if (parcela.paraje >= 0)
            parcela.paraje = nuevos[static_cast<std::size_t>(parcela.paraje)];
}

void CMunicipio::OrdenaParcelas()
{
    const std::vector<int> nuevas = OrdenaPor(m_parcelas, [](const CParcela& parcela) {
        return std::tuple(parcela.Zona, parcela.Polig, parcela.Parcela);
    });
    if (nuevas.empty())
        return;
    m_parcelasPorNumeros.Olvida();
    m_parcelasAscienden = false;
    for (CTitular& titular : m_titulares)
        titular.RenumeraParcelas(nuevas);
    for (CPropiedadPorAsentar& propiedad : m_propiedadesPorAsentar)
        propiedad.parcela = nuevas[static_cast<std::size_t>(propiedad.parcela)];
}

void CMunicipio::OrdenaSubparcelas()
{
    for (CParcela& parcela : m_parcelas)
        parcela.OrdenaSubparcelas();
}

void CMunicipio::OrdenaModulos()
{
    OrdenaPor(m_modulos,
              [](const CModulo& modulo) { return std::string_view(modulo.Denominacion); });
    m_modulosPorClave.Olvida();
}

void CMunicipio::OrdenaCotitulares()
{
    for (CParcela& parcela : m_parcelas)
        parcela.OrdenaCotitulares();
}

void CParcela::OrdenaSubparcelas()
{
    OrdenaPor(m_subparcelas,
              [](const CSubparcela& subparcela) { return std::string_view(subparcela.letra); });
    m_porLetra.Olvida();
}

void CParcela::OrdenaCotitulares()
{
    const bool conPrincipal = IndicePrincipal() >= 0;
    OrdenaPor(m_cotitulares, [](const CCotitular& v) {
        return std::tuple(v.titular, v.partici, v.orden, std::string_view(v.Tit));
    });
    m_porTitular.Olvida();
    if (!conPrincipal && !m_cotitulares.empty()) {
        m_cotitulares.front().orden = kOrdenPrincipal;
        m_ordenMaximo = std::max(m_ordenMaximo, kOrdenPrincipal);
    }
}
