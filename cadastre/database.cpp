#include "cadastre/database.h"

namespace {

int Codigo(const CMunicipio& municipio)
{
    return municipio.Mun;
}

/// The sum of what `cuantos` counts in each municipality.
template <class F>
int Total(const std::vector<CMunicipio>& municipios, F cuantos)
{
    std::size_t suma = 0;
    for (const CMunicipio& municipio : municipios)
        suma += static_cast<std::size_t>(cuantos(municipio));
    return static_cast<int>(suma);
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
    return Total(m_municipios, [](const CMunicipio& m) { return m.Titulares().size(); });
}

int CBaseCatastro::NumParcelas() const
{
    return Total(m_municipios, [](const CMunicipio& m) { return m.NumParcelas(); });
}

int CBaseCatastro::ParcelasFaltasDeTitular() const
{
    return Total(m_municipios, [](const CMunicipio& m) { return m.ParcelasFaltasDeTitular(); });
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
