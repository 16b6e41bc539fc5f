#include "evidence/report/findings/changes/changes.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <tuple>
#include <utility>

namespace informe {
namespace {

using CParcela = CEstadoMunicipio::CParcela;

class CComparacion {
public:
    CComparacion(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora, Municipios cuales)
        : m_antes(antes), m_ahora(ahora), m_gente(antes, ahora)
    {
        ReuneMunicipios(ahora);
        if (cuales == Municipios::Todos)
            ReuneMunicipios(antes);
    }

    CCambios Compara();

private:
    /// A link by a person's number that both states share.
    using CParte = std::tuple<int, CEstadoMunicipio::CLetras, int>;
    using CPartes = std::vector<CParte>;

    void ReuneMunicipios(const CEstadoMunicipio& estado);
    void ComparaUna(const CParcela& antes, const CParcela& ahora);
    void ComparaTitulares(const CParcela& antes, const CParcela& ahora, CCambioParcela& cambio);
    static void Partes(const CEstadoMunicipio& estado, const CParcela& parcela,
                       const std::vector<int>& numeros, CPartes& partes);
    static int Principal(const CEstadoMunicipio& estado, const CParcela& parcela,
                         const std::vector<int>& numeros);
    void Pon(const CCambioParcela& cambio, CCambios::CSuma& suma);

    const CEstadoMunicipio& m_antes;
    const CEstadoMunicipio& m_ahora;
    CPersonasDeDos m_gente;
    CCambios m_cambios;
    std::set<short> m_municipios;
    CPartes m_partesAntes; // of the parcel at work
    CPartes m_partesAhora;
};

void CComparacion::ReuneMunicipios(const CEstadoMunicipio& estado)
{
    for (const CParcela& parcela : estado.parcelas)
        m_municipios.insert(parcela.clave.mun);
}

void CComparacion::Pon(const CCambioParcela& cambio, CCambios::CSuma& suma)
{
    suma.Añade(std::abs(cambio.Diferencia()));
    m_cambios.parcelas.push_back(cambio);
}

void CComparacion::Partes(const CEstadoMunicipio& estado, const CParcela& parcela,
                          const std::vector<int>& numeros, CPartes& partes)
{
    partes.clear();
    for (const CEstadoMunicipio::CVinculo& vinculo : estado.Vinculos(parcela))
        partes.emplace_back(numeros[static_cast<std::size_t>(vinculo.persona)], vinculo.titulo,
                            vinculo.partici);
    std::ranges::sort(partes);
}

/// Who is named first of those that hold a parcel, by his number in both states; below 0 for none.
int CComparacion::Principal(const CEstadoMunicipio& estado, const CParcela& parcela,
                            const std::vector<int>& numeros)
{
    const auto vinculos = estado.Vinculos(parcela);
    return vinculos.empty() ? -1 : numeros[static_cast<std::size_t>(vinculos.front().persona)];
}

void CComparacion::ComparaTitulares(const CParcela& antes, const CParcela& ahora,
                                    CCambioParcela& cambio)
{
    Partes(m_antes, antes, m_gente.DeAntes(), m_partesAntes);
    Partes(m_ahora, ahora, m_gente.DeAhora(), m_partesAhora);
    if (m_partesAntes == m_partesAhora) {
        if (m_antes.conPrincipal && m_ahora.conPrincipal &&
            Principal(m_antes, antes, m_gente.DeAntes()) !=
                Principal(m_ahora, ahora, m_gente.DeAhora()))
            cambio.Pon(Difiere::Titular);
        return;
    }
    const auto quien = [](const CParte& parte) { return std::get<0>(parte); };
    const bool sonLosMismos = std::ranges::equal(m_partesAntes, m_partesAhora, {}, quien, quien);
    cambio.Pon(sonLosMismos ? Difiere::Participacion : Difiere::Titular);
}

void CComparacion::ComparaUna(const CParcela& antes, const CParcela& ahora)
{
    CCambioParcela cambio{ahora.clave, CCambioParcela::Que::Cambiada, &antes, &ahora, {}, -1};
    ComparaTitulares(antes, ahora, cambio);
    if (antes.superficie != ahora.superficie)
        cambio.Pon(Difiere::Superficie);
    if (!std::ranges::equal(m_antes.Subparcelas(antes), m_ahora.Subparcelas(ahora)))
        cambio.Pon(Difiere::Subparcelas);
    if (m_antes.Paraje(antes) != m_ahora.Paraje(ahora))
        cambio.Pon(Difiere::Paraje);
    if (!cambio.HayAlguno()) {
        ++m_cambios.iguales;
        return;
    }
    for (std::size_t i = 0; i < kDifiere; ++i)
        m_cambios.porDifiere[i] += cambio.difiere[i] ? 1 : 0;
    if (const std::int64_t diferencia = cambio.Diferencia(); diferencia != 0)
        (diferencia > 0 ? m_cambios.crecen : m_cambios.menguan).Añade(std::abs(diferencia));
    m_cambios.parcelas.push_back(cambio);
}

/// Walks the newer state, and then what it left of the older one.
CCambios CComparacion::Compara()
{
    const CIndice<Gana::Primero> porClave;
    std::vector<bool> sigue(m_antes.parcelas.size());
    for (const CParcela& ahora : m_ahora.parcelas) {
        m_cambios.ahora.Añade(ahora.superficie);
        const int i = porClave.Busca(m_antes.parcelas, &CParcela::clave, ahora.clave);
        if (i < 0) {
            Pon({ahora.clave, CCambioParcela::Que::Nueva, nullptr, &ahora, {}, -1},
                m_cambios.nuevas);
            continue;
        }
        sigue[static_cast<std::size_t>(i)] = true;
        ComparaUna(m_antes.parcelas[static_cast<std::size_t>(i)], ahora);
    }
    for (std::size_t i = 0; i < m_antes.parcelas.size(); ++i) {
        const CParcela& antes = m_antes.parcelas[i];
        if (!m_municipios.contains(antes.clave.mun)) {
            ++m_cambios.deOtroMunicipio;
            continue;
        }
        m_cambios.antes.Añade(antes.superficie);
        if (!sigue[i])
            Pon({antes.clave, CCambioParcela::Que::Desaparecida, &antes, nullptr, {}, -1},
                m_cambios.desaparecidas);
    }
    std::ranges::sort(m_cambios.parcelas, {}, &CCambioParcela::clave);
    m_cambios.municipios = m_municipios.size();
    BuscaRepartos(m_cambios);
    m_cambios.personas = m_gente.Cambios(m_municipios);
    return std::move(m_cambios);
}

} // namespace

CCambios Compara(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora, Municipios cuales)
{
    return CComparacion(antes, ahora, cuales).Compara();
}

std::vector<CCambioSubparcela>
CambiosDeSubparcelas(std::span<const CEstadoMunicipio::CSubparcela> antes,
                     std::span<const CEstadoMunicipio::CSubparcela> ahora)
{
    std::vector<CCambioSubparcela> cambios;
    auto a = antes.begin();
    auto b = ahora.begin();
    while (a != antes.end() || b != ahora.end()) {
        if (b == ahora.end() || (a != antes.end() && a->letra < b->letra)) {
            cambios.push_back({&*a++, nullptr});
        } else if (a == antes.end() || b->letra < a->letra) {
            cambios.push_back({nullptr, &*b++});
        } else {
            if (*a != *b)
                cambios.push_back({&*a, &*b});
            ++a;
            ++b;
        }
    }
    return cambios;
}

} // namespace informe
