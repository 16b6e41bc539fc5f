#pragma once

#include <memory>
#include <vector>

#include "vexa_libs/extent.h"
#include "vexa_libs/point.h"

// Exact geometry of closed rings in whole coordinates of 32 bits. A ring that isn't closed is
// closed by its ends, and its direction doesn't matter.

namespace vexageo {

enum class Lugar { Fuera, Borde, Dentro };

/// Where the point lies, by the even-odd rule, so that a ring may cross itself. An edge owns its
/// lower end and not its upper one: a ray through a corner counts once. Fewer than three points
/// hold nothing. Z plays no part. Takes a step for each edge.
Lugar Situa(const std::vector<CPunto<int>>& anillo, const CPunto<int>& punto);

/// A ring that is asked for many points. The answers are those of `Situa`; those of a long ring
/// take steps by its logarithm, as a rule: a tree over chains of its edges, made at the first
/// question, leaves only the chains to walk whose extent holds the point.
class CAnilloConsultado {
public:
    /// \param anillo  must stay as it is, and where it is, as long as questions are asked
    explicit CAnilloConsultado(const std::vector<CPunto<int>>& anillo) : m_anillo(&anillo) {}

    Lugar Situa(const CPunto<int>& punto) const;
    const std::vector<CPunto<int>>& Anillo() const { return *m_anillo; }

private:
    using CNiveles = std::vector<std::vector<CCaja>>; // the shortest chains first, the ring last
    struct CVisita;

    const CPunto<int>& Esquina(std::size_t arista) const; ///< where an edge begins
    CNiveles Construye() const;
    void Mira(CVisita& visita, std::size_t nivel, std::size_t i) const;

    const std::vector<CPunto<int>>* m_anillo;
    mutable std::unique_ptr<const CNiveles> m_niveles; // most rings need none
};

/// Twice the area that the ring encloses, in squared units, without its sign; exact below 2^53.
double DobleArea(const std::vector<CPunto<int>>& anillo);
inline constexpr double kDobleMetroCuadrado = 2.0 * 100 * 100; ///< a square metre in these units

} // namespace vexageo
