#include "evidence/gis/writing/node_grid.h"

#include <algorithm>
#include <cmath>

namespace {

using Ancho = __int128; // products of two differences have 86 bits

constexpr std::int64_t kMedio = kFinos / 2;

/// A bound of the share of a way that lies in a cell: from 0 at its start to 1 at its end.
struct CCota {
    std::int64_t numerador;
    std::int64_t denominador; ///< above 0
    bool abierta;             ///< the bound itself lies outside
};

/// Below 0, 0 or above it as a lies before, at or behind b.
int Compara(const CCota& a, const CCota& b)
{
    const Ancho izquierda = Ancho{a.numerador} * b.denominador;
    const Ancho derecha = Ancho{b.numerador} * a.denominador;
    return izquierda < derecha ? -1 : izquierda > derecha ? 1 : 0;
}

/// Narrows the share to where a coordinate that goes from `desde` by `paso` lies in a cell around
/// 0. False where it never does.
bool Estrecha(std::int64_t desde, std::int64_t paso, CCota& primera, CCota& ultima)
{
    if (paso == 0)
        return -kMedio <= desde && desde < kMedio;
    const std::int64_t signo = paso < 0 ? -1 : 1;
    const CCota inferior{signo * (-kMedio - desde), signo * paso, false};
    const CCota superior{signo * (kMedio - desde), signo * paso, true};
    const CCota& entra = paso > 0 ? inferior : superior;
    const CCota& sale = paso > 0 ? superior : inferior;
    if (const int c = Compara(entra, primera); c > 0 || (c == 0 && entra.abierta))
        primera = entra;
    if (const int c = Compara(sale, ultima); c < 0 || (c == 0 && sale.abierta))
        ultima = sale;
    return true;
}

} // namespace

bool Atraviesa(const CFino& a, const CFino& b, const CFino& nudo)
{
    CCota primera{0, 1, false};
    CCota ultima{1, 1, false};
    if (!Estrecha(a.x - nudo.x, b.x - a.x, primera, ultima) ||
        !Estrecha(a.y - nudo.y, b.y - a.y, primera, ultima))
        return false;
    const int c = Compara(primera, ultima);
    return c < 0 || (c == 0 && !primera.abierta && !ultima.abierta);
}

bool PasaPor(const CFino& a, const CFino& b, const CFino& punto)
{
    const bool entre = std::min(a.x, b.x) <= punto.x && punto.x <= std::max(a.x, b.x) &&
                       std::min(a.y, b.y) <= punto.y && punto.y <= std::max(a.y, b.y);
    return entre && Ancho{b.x - a.x} * (punto.y - a.y) == Ancho{b.y - a.y} * (punto.x - a.x);
}

CRejillaNudos::CRejillaNudos(const std::vector<CNudo>& nudos)
{
    if (nudos.empty())
        return;
    CFino hasta = m_origen = nudos.front().punto;
    for (const auto& [punto, atrae] : nudos) {
        m_origen = {std::min(m_origen.x, punto.x), std::min(m_origen.y, punto.y)};
        hasta = {std::max(hasta.x, punto.x), std::max(hasta.y, punto.y)};
    }
    // About as many cells as nodes.
    const auto celdas = static_cast<std::int64_t>(std::sqrt(static_cast<double>(nudos.size())));
    m_lado = std::max(hasta.x - m_origen.x, hasta.y - m_origen.y) / (celdas + 1) + kFinos;
    m_columnas = (hasta.x - m_origen.x) / m_lado + 1;
    m_nudos.reserve(nudos.size());
    for (const CNudo& nudo : nudos)
        m_nudos.push_back({Celda(nudo.punto.x, nudo.punto.y), nudo});
    std::ranges::sort(m_nudos);
    m_nudos.erase(std::unique(m_nudos.begin(), m_nudos.end()), m_nudos.end());
}

std::int64_t CRejillaNudos::Celda(std::int64_t x, std::int64_t y) const
{
    const std::int64_t columna = std::clamp((x - m_origen.x) / m_lado, std::int64_t{0}, m_columnas);
    return (y - m_origen.y) / m_lado * (m_columnas + 1) + columna;
}

/// Nodes near the way: it is halved until its box is hardly larger than a cell.
void CRejillaNudos::Busca(const CFino& a, const CFino& b, std::vector<CNudo>& hallados) const
{
    if (std::abs(b.x - a.x) > 2 * m_lado && std::abs(b.y - a.y) > 2 * m_lado) {
        const CFino medio{a.x + (b.x - a.x) / 2, a.y + (b.y - a.y) / 2};
        Busca(a, medio, hallados);
        Busca(medio, b, hallados);
        return;
    }
    const CFino desde{std::min(a.x, b.x) - kFinos, std::min(a.y, b.y) - kFinos};
    const CFino hasta{std::max(a.x, b.x) + kFinos, std::max(a.y, b.y) + kFinos};
    for (std::int64_t y = desde.y;; y += m_lado) {
        y = std::min(y, hasta.y);
        const CEnCelda primera{Celda(desde.x, std::max(y, m_origen.y)),
                               {{INT64_MIN, INT64_MIN}, false}};
        const std::int64_t ultima = Celda(hasta.x, std::max(y, m_origen.y));
        for (auto i = std::lower_bound(m_nudos.begin(), m_nudos.end(), primera);
             i != m_nudos.end() && i->celda <= ultima; ++i)
            hallados.push_back(i->nudo);
        if (y == hasta.y)
            break;
    }
}

void CRejillaNudos::Camino(const CFino& a, const CFino& b, CAnilloFino& camino) const
{
    std::vector<CNudo> hallados;
    Busca(a, b, hallados);
    std::erase_if(hallados, [&](const CNudo& nudo) {
        return nudo.atrae ? !Atraviesa(a, b, nudo.punto) : !PasaPor(a, b, nudo.punto);
    });
    const auto lejos = [&](const CNudo& nudo) {
        return Ancho{nudo.punto.x - a.x} * (b.x - a.x) + Ancho{nudo.punto.y - a.y} * (b.y - a.y);
    };
    std::ranges::sort(hallados, [&](const CNudo& p, const CNudo& q) {
        const Ancho dp = lejos(p);
        const Ancho dq = lejos(q);
        return dp < dq || (dp == dq && p.punto < q.punto);
    });
    // The cells of the ends come first and last, whatever the middles of others say.
    const CFino primero = Redondea(a);
    const CFino ultimo = Redondea(b);
    camino.push_back(primero);
    for (const auto& [punto, atrae] : hallados)
        if (punto != primero && punto != ultimo && punto != camino.back())
            camino.push_back(punto);
    if (ultimo != primero)
        camino.push_back(ultimo);
}
