#pragma once

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "cadastre/database.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "evidence/report/reading/record_lines.h"
#include "evidence/report/reading/states/municipality_state.h"

namespace informe {

/// Gathers a state out of the lines of any layout, which come in any order. Of parcels with the
/// same numbers the first one counts.
class CEstadoEnObra {
public:
    /// Whom a parcel's line names as its holders: all lines with that number, whose shares they
    /// bring along, or the one holder who has it.
    enum class Reparto { PorLineas, PorNumero };

    explicit CEstadoEnObra(Reparto reparto) : m_reparto(reparto) {}

    /// \param partici  the share that a holder's line brings along
    void TomaTitular(short mun, CTitular titular, int partici);
    void TomaParaje(short mun, int numero, std::string_view nombre);
    /// The office that a parcel's line names.
    void TomaGerencia(short gerencia)
    {
        std::vector<short>& suyas = m_estado.gerencias;
        if (gerencia != 0 && std::ranges::find(suyas, gerencia) == suyas.end())
            suyas.push_back(gerencia);
    }
    template <class L>
    void TomaParcela(short mun, const L& linea);
    template <class L>
    void TomaSubparcela(short mun, const L& linea);
    /// A link to a co-holder of a parcel whose line has come.
    void TomaVinculo(const CClaveParcela& clave, int numero, std::string_view titulo, int partici);

    bool HayParcelas() const { return !m_estado.parcelas.empty(); }
    CEstadoMunicipio Acaba();

private:
    using CParcela = CEstadoMunicipio::CParcela;
    using CSubparcela = CEstadoMunicipio::CSubparcela;

    using CClaveLeida = std::pair<short, int>; ///< of a municipality and a number in it

    struct CTitularLeido {
        CClaveLeida clave;
        int indice; ///< in its municipality
        int partici;
    };
    struct CVinculoLeido {
        int parcela;
        int numero;
        int partici;
        CEstadoMunicipio::CLetras titulo;
    };
    struct CParajeLeido {
        CClaveLeida clave;
        int posicion;
    };
    struct CSubparcelaLeida {
        CClaveParcela clave;
        CSubparcela suya;
    };

    /// The parcel to which a person was linked last, and that link.
    struct CUltimo {
        int parcela = kNoEncontrado;
        std::size_t vinculo = 0;
    };

    int BuscaParcela(const CClaveParcela& clave) const;
    CMunicipio& Municipio(short mun) { return m_base.DameMunicipio(m_base.RegistraMunicipio(mun)); }
    /// Gives its position, and whether it is the first one with its numbers.
    std::pair<int, bool> AsientaParcela(const CClaveParcela& clave, int superficie, int numParaje);
    void AsientaParajes();
    void AsientaPersonas();
    void AsientaVinculos();
    void EnlazaPorLineas(const CVinculoLeido& leido, short mun);
    void EnlazaPorNumero(const CVinculoLeido& leido, short mun);
    void Enlaza(int parcela, const CEstadoMunicipio::CVinculo& vinculo);
    void AsientaSubparcelas();
    static void OrdenaSubparcelas(std::span<CSubparcela> suyas);
    int Persona(short mun, int indice);

    Reparto m_reparto;
    CEstadoMunicipio m_estado;
    CBaseCatastro m_base{0};           // for its rules on who is the same person
    CIndice<Gana::Primero> m_porClave; // parcels
    std::vector<CTitularLeido> m_titulares;
    std::vector<CVinculoLeido> m_vinculos;
    std::vector<CParajeLeido> m_parajes;
    std::vector<CSubparcelaLeida> m_subparcelas;
    std::vector<std::pair<short, int>> m_primeras; // of a municipality, the first of its people
    std::vector<CUltimo> m_ultimos;                // of each person
};

template <class L>
void CEstadoEnObra::TomaParcela(short mun, const L& linea)
{
    constexpr const auto& kTabla = kColumnasParcela;
    const CClaveParcela clave{mun, static_cast<short>(Entero<kTabla, &::CParcela::Polig>(linea)),
                              Entero<kTabla, &::CParcela::Parcela>(linea)};
    if (clave.polig < 1 || clave.parcela < 1)
        return;
    const auto [i, nueva] =
        AsientaParcela(clave, Superficie<kTabla, &::CParcela::Superficie>(linea),
                       Entero<kTabla, &CDatosLinea::numParaje>(linea));
    const std::string_view titulo = linea.template Texto<kTabla, &CDatosLinea::Tit>();
    const int numero = Entero<kTabla, &CDatosLinea::numImputa>(linea);
    if constexpr (L::kConParticipacion) {
        if (nueva)
            m_vinculos.push_back(
                {i, numero, Entero<kTabla, &CDatosLinea::partici>(linea), EnLetras(titulo)});
    } else if (!titulo.empty()) { // else the line is too short to name a holder
        m_vinculos.push_back({i, numero, 0, EnLetras(titulo)});
    }
}

template <class L>
void CEstadoEnObra::TomaSubparcela(short mun, const L& linea)
{
    constexpr const auto& kTabla = kColumnasSubparcela;
    CSubparcelaLeida leida;
    leida.clave = {mun, Entero<kTabla, &CDatosLinea::Polig>(linea),
                   Entero<kTabla, &CDatosLinea::Parcela>(linea)};
    CEstadoMunicipio::CSubparcela& suya = leida.suya;
    suya.letra = EnLetras(linea.template Texto<kTabla, &::CSubparcela::letra>());
    if (linea.EsSuelo()) {
        suya.superficie = Superficie<kTabla, &::CSubparcela::superfic>(linea);
        suya.calificacion = {EnLetras(linea.template Texto<kTabla, &::CSubparcela::cE>()),
                             EnLetras(linea.template Texto<kTabla, &::CSubparcela::cA>())};
        suya.intensidad = {static_cast<short>(Entero<kTabla, &::CSubparcela::iE>(linea)),
                           static_cast<short>(Entero<kTabla, &::CSubparcela::iA>(linea))};
    }
    if (linea.EsConstruccion())
        suya.componente = static_cast<short>(Entero<kTabla, &::CSubparcela::compCons>(linea));
    m_subparcelas.push_back(leida);
}

} // namespace informe
