#include "evidence/report/findings/changes/person_changes.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>

namespace informe {
namespace {

using CPersona = CEstadoMunicipio::CPersona;

std::uint32_t HashDe(const CPersona& persona)
{
    return ::HashDe(::HashDe(::HashDe(persona.nombre), ::HashDe(persona.dni)),
                    static_cast<std::uint32_t>(persona.mun));
}

/// The square metres, and the parcels, that each person of a state holds some share of.
std::vector<std::pair<std::int64_t, std::int64_t>> Haberes(const CEstadoMunicipio& estado)
{
    std::vector<std::pair<std::int64_t, std::int64_t>> haberes(estado.personas.size());
    for (const CEstadoMunicipio::CParcela& parcela : estado.parcelas)
        for (const CEstadoMunicipio::CVinculo& vinculo : estado.Vinculos(parcela)) {
            auto& [metros, parcelas] = haberes[static_cast<std::size_t>(vinculo.persona)];
            metros += parcela.superficie;
            ++parcelas;
        }
    return haberes;
}

} // namespace

CPersonasDeDos::CPersonasDeDos(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora)
    : m_antes(antes), m_ahora(ahora)
{
    Numera();
    Empareja(&CPersona::dni, CCambioPersona::Que::OtroNombre);
    Empareja(&CPersona::nombre, CCambioPersona::Que::OtroDni);
}

/// One table for both states: the older one's people are known by their positions, whom only the
/// newer one has by those behind them.
void CPersonasDeDos::Numera()
{
    const int cuantas = static_cast<int>(m_antes.personas.size());
    const auto de = [&](int numero) -> const CPersona& {
        return numero < cuantas ? m_antes.Persona(numero) : m_ahora.Persona(numero - cuantas);
    };
    CTablaHash tabla;
    const auto numera = [&](const CPersona& persona, int propio) {
        const auto igual = [&](int otra) { return de(otra) == persona; };
        const std::uint32_t hash = HashDe(persona);
        const int hallada = tabla.Busca(hash, igual);
        if (hallada < 0)
            tabla.Pon(hash, propio, igual);
        return hallada < 0 ? propio : hallada;
    };
    for (int i = 0; i < cuantas; ++i)
        m_deAntes.push_back(numera(m_antes.Persona(i), i));
    std::vector<bool> sigue(m_deAntes.size());
    for (int i = 0; i < static_cast<int>(m_ahora.personas.size()); ++i) {
        m_deAhora.push_back(numera(m_ahora.Persona(i), cuantas + i));
        if (m_deAhora.back() < cuantas)
            sigue[static_cast<std::size_t>(m_deAhora.back())] = true;
        else if (m_deAhora.back() == cuantas + i)
            m_nuevas.push_back({i});
    }
    for (int i = 0; i < cuantas; ++i)
        if (m_deAntes[static_cast<std::size_t>(i)] == i && !sigue[static_cast<std::size_t>(i)])
            m_desaparecidas.push_back({i});
}

/// Ties those on either side who alone have a text of that field in their municipality.
void CPersonasDeDos::Empareja(CString CPersona::*campo, CCambioPersona::Que que)
{
    constexpr int kNinguna = -1;
    struct CLados {
        int antes = kNinguna;
        int ahora = kNinguna;
        bool varias = false;
    };
    std::map<std::pair<short, std::string_view>, CLados> porTexto;
    const auto anota = [&](const CEstadoMunicipio& estado, const std::vector<CSuelto>& sueltos,
                           int CLados::*lado) {
        for (std::size_t i = 0; i < sueltos.size(); ++i) {
            const CPersona& persona = estado.Persona(sueltos[i].persona);
            const CString& texto = persona.*campo;
            if (texto.IsEmpty() || sueltos[i].pareja >= 0)
                continue;
            CLados& lados = porTexto[{persona.mun, texto}];
            lados.varias = lados.varias || lados.*lado != kNinguna;
            lados.*lado = static_cast<int>(i);
        }
    };
    anota(m_antes, m_desaparecidas, &CLados::antes);
    anota(m_ahora, m_nuevas, &CLados::ahora);
    for (const auto& [texto, lados] : porTexto) {
        if (lados.varias || lados.antes < 0 || lados.ahora < 0)
            continue;
        CSuelto& antes = m_desaparecidas[static_cast<std::size_t>(lados.antes)];
        CSuelto& ahora = m_nuevas[static_cast<std::size_t>(lados.ahora)];
        antes.pareja = lados.ahora;
        ahora.pareja = lados.antes;
        antes.que = ahora.que = que;
        m_deAhora[static_cast<std::size_t>(ahora.persona)] = antes.persona;
    }
}

std::vector<CCambioPersona> CPersonasDeDos::Cambios(const std::set<short>& municipios) const
{
    const auto haberesAntes = Haberes(m_antes);
    const auto haberesAhora = Haberes(m_ahora);
    std::vector<CCambioPersona> cambios;
    const auto pon = [&](CCambioPersona cambio, const auto& haberes, int persona,
                         const CEstadoMunicipio& estado) {
        if (!municipios.contains(estado.Persona(persona).mun))
            return;
        std::tie(cambio.metros, cambio.parcelas) = haberes[static_cast<std::size_t>(persona)];
        cambios.push_back(cambio);
    };
    using enum CCambioPersona::Que;
    for (const CSuelto& una : m_desaparecidas)
        if (una.pareja < 0)
            pon({Desaparecida, una.persona, -1}, haberesAntes, una.persona, m_antes);
    for (const CSuelto& una : m_nuevas)
        if (una.pareja < 0)
            pon({Nueva, -1, una.persona}, haberesAhora, una.persona, m_ahora);
    for (const CSuelto& una : m_nuevas)
        if (una.pareja >= 0)
            pon({una.que, m_desaparecidas[static_cast<std::size_t>(una.pareja)].persona,
                 una.persona},
                haberesAhora, una.persona, m_ahora);
    return cambios;
}

} // namespace informe
