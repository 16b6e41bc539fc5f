#include "vexa_libs/extent_rows.h"

#include <algorithm>

namespace vexageo {

/// Where a box stands in its row of bytes: its bit in a selection is that of its byte in a word,
/// the words of a row moved on by a bit each.
std::size_t CCajasJuntas::SitioEnFila(std::size_t i)
{
    const std::size_t octeto = i / kTandas;
    return i % kTandas * 8 + (std::endian::native == std::endian::little ? octeto : 7 - octeto);
}

CCajasJuntas::CCajasJuntas(const std::vector<CCaja>& cajas)
{
    const CCaja todas = CCaja::De(cajas);
    m_origen = todas.minimo;
    std::copy(cajas.begin(), cajas.end(), m_cajas.begin());
    for (std::size_t k = 0; k < m_origen.size(); ++k) {
        while (Celda(k, todas.maximo[k]) >= kCeldas)
            ++m_paso[k];
        // Where no box stands, none holds a point.
        m_minimo[k].fill(Octeto(kCeldas - 1));
        m_maximo[k].fill(Octeto(0));
        for (std::size_t i = 0; i < cajas.size(); ++i) {
            m_minimo[k][SitioEnFila(i)] = Octeto(Celda(k, cajas[i].minimo[k]));
            m_maximo[k][SitioEnFila(i)] = Octeto(Celda(k, cajas[i].maximo[k]));
        }
    }
}

} // namespace vexageo
