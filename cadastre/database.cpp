#include "cadastre/database.h"

namespace {

int Codigo(const CMunicipio& municipio)
{
    return municipio.Mun;
}

} // namespace

int CBaseCatastro::BuscaMunicipio(short mun) const
{
    if (!m_municipios.empty() && m_municipios.back().Mun == mun) // asked for by every line
        return static_cast<int>(m_municipios.size()) - 1;
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

int CBaseCatastro::ParcelasFaltasDeTitular() const
{
    int suma = 0;
    for (const CMunicipio& municipio : m_municipios)
        suma += municipio.ParcelasFaltasDeTitular();
    return suma;
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
