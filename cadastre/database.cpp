#include "cadastre/database.h"

#include <utility>

#include "cadastre/sorting.h"

namespace {

int Codigo(const CMunicipio& municipio)
{
    return municipio.Mun;
}

} // namespace

int CBaseCatastro::BuscaMunicipio(short mun) const
{
    return m_porCodigo.Busca(m_municipios, Codigo, int{mun});
}

int CBaseCatastro::InsertaMunicipio(const CMunicipio& municipio)
{
    if (const int i = BuscaMunicipio(municipio.Mun); i >= 0)
        return i;
    m_municipios.push_back(municipio);
    return static_cast<int>(m_municipios.size()) - 1;
}

int CBaseCatastro::RegistraMunicipio(short mun)
{
    const int i = BuscaMunicipio(mun);
    return i >= 0 ? i : InsertaMunicipio(CMunicipio(mun, 0));
}

int CBaseCatastro::NumTitulares() const
{
    std::size_t suma = 0;
    for (const CMunicipio& municipio : m_municipios)
        suma += municipio.Titulares().size();
    return static_cast<int>(suma);
}

int CBaseCatastro::NumParcelas() const
{
    std::size_t suma = 0;
    for (const CMunicipio& municipio : m_municipios)
        suma += municipio.Parcelas().size();
    return static_cast<int>(suma);
}

void CBaseCatastro::ReparteParticipaciones()
{
    for (CMunicipio& municipio : m_municipios)
        for (CParcela& parcela : municipio.Parcelas())
            parcela.ReparteParticipaciones();
}

void CBaseCatastro::EligeTitularPrincipal()
{
    for (CMunicipio& municipio : m_municipios)
        for (CParcela& parcela : municipio.Parcelas())
            parcela.EligeTitularPrincipal();
}

int CBaseCatastro::AsignaNumOrden(CStdioFile& log)
{
    int mayor = 0;
    for (const CMunicipio& municipio : m_municipios)
        mayor = municipio.MayorNumOrden(mayor);
    int asignados = 0;
    for (CMunicipio& municipio : m_municipios)
        asignados += municipio.AsignaNumOrden(log, mayor);
    return asignados;
}

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

void CBaseCatastro::OrdenaTitulares()
{
    EnCadaMunicipio(&CMunicipio::OrdenaTitulares);
}

void CBaseCatastro::OrdenaParajes()
{
    EnCadaMunicipio(&CMunicipio::OrdenaParajes);
}

void CBaseCatastro::OrdenaParcelas()
{
    EnCadaMunicipio(&CMunicipio::OrdenaParcelas);
}

void CBaseCatastro::OrdenaSubparcelas()
{
    EnCadaMunicipio(&CMunicipio::OrdenaSubparcelas);
}

void CBaseCatastro::OrdenaModulos()
{
    EnCadaMunicipio(&CMunicipio::OrdenaModulos);
}

void CBaseCatastro::OrdenaCotitulares()
{
    EnCadaMunicipio(&CMunicipio::OrdenaCotitulares);
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

int RegistraTitular(const CAvisos& avisos, CMunicipio& municipio, CTitular titular)
{
    const int codigo = municipio.BuscaTitular(titular);
    if (codigo == kMismoDNIOtroNombre)
        Avisa(avisos, kMismoDNI, titular.DNI);
    else if (codigo == kMismoNombreOtroDNI)
        Avisa(avisos, kMismoNombre, titular.Nombre);
    return municipio.InsertaTitular(std::move(titular), codigo);
}
