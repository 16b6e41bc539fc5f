#include "evidence/report/findings/matter_cost.h"

namespace informe {
namespace {

constexpr CCoste kUnRegistro = {0, 1};

} // namespace

CTarifa::CTarifa(const CProceso& proceso, const CBalanceDibujo* dibujo)
    : m_proceso(proceso), m_vuelta(proceso.ficheros.sentido == Sentido::Vuelta),
      m_hayEscritas(dibujo != nullptr && dibujo->HayEscritas())
{
    if (dibujo != nullptr)
        m_sinEscribir = dibujo->sinEscribir;
}

/// A parcel that only the drawing knows, by what is drawn of it.
CCoste CTarifa::DeParcelaSinBase(const CNumerosParcela& parcela)
{
    const auto suya = m_sinEscribir.find(parcela);
    if (suya == m_sinEscribir.end())
        return {};
    const CCoste coste = {suya->second, 1};
    m_sinEscribir.erase(suya); // its other outlines give the same message
    return coste;
}

/// One that only the tables know, by what they say of it.
CCoste CTarifa::DeParcelaSinGrafico(const CNumerosParcela& parcela) const
{
    const auto suya = m_proceso.superficies.find(parcela);
    if (suya == m_proceso.superficies.end() || suya->second.escrita)
        return {};
    return {suya->second.tabla.value_or(0), 1};
}

/// What a message says was dropped. What stands on one side alone is dropped or not by the options
/// of the run, which the balance read off the records.
CCoste CTarifa::De(const CAviso& aviso)
{
    if (aviso.mensaje == nullptr)
        return {};
    switch (aviso.mensaje->numero) {
    case kParajeNoEncontrado: // the way back only leaves the parcel without its place
        return m_vuelta ? CCoste() : kUnRegistro;
    case kTitularNoEncontrado:
    case kSubparcelaSinParcela:
    case kCotitularSinParcela:
    case kCotitularSinTitular:
    case kSubparcelaFuera:
    case kModuloRepetido:
    case kParcelaRepetida:
    case kParcelaNoValida:
    case kParcelaNoInsertada:
    case kYaCotitular:
    case kYaTitular:
        return kUnRegistro;
    case kParcelaNoEnBase:
        return m_hayEscritas ? DeParcelaSinBase({aviso.polig, aviso.parcela}) : CCoste();
    case kParcelaNoEnGrafico:
        return m_hayEscritas ? DeParcelaSinGrafico({aviso.polig, aviso.parcela}) : CCoste();
    case kSubparcelaNoEnBase:
        return m_hayEscritas && !m_proceso.balance.creaNoEnBase ? kUnRegistro : CCoste();
    case kSubparcelaNoEnGrafico:
        return m_hayEscritas && m_proceso.balance.quitaNoEnGrafico ? kUnRegistro : CCoste();
    default:
        return {};
    }
}

} // namespace informe
