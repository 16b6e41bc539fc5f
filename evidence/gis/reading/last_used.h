#pragma once

#include <algorithm>
#include <iterator>
#include <list>
#include <utility>

/// What was read and may be asked for again: of much of it those parts that were used last.
/// \tparam T  has `Cuanto`, which tells how many outlines or entities it holds
template <class Clave, class T>
class CUltimos {
public:
    /// The part with a key, which `lee` makes where it isn't kept. Valid until the next call.
    template <class F>
    const T& Dame(const Clave& clave, F lee)
    {
        const auto suyo =
            std::ranges::find_if(m_partes, [&](const auto& parte) { return parte.first == clave; });
        if (suyo != m_partes.end()) {
            m_partes.splice(m_partes.begin(), m_partes, suyo);
        } else {
            m_partes.emplace_front(clave, lee());
            m_cuanto += m_partes.front().second.Cuanto();
            for (; m_cuanto > kMasGuardados && m_partes.size() > 1; m_partes.pop_back())
                m_cuanto -= m_partes.back().second.Cuanto();
        }
        return m_partes.front().second;
    }

private:
    static constexpr std::size_t kMasGuardados = 16384; // some tens of megabytes

    std::list<std::pair<Clave, T>> m_partes; // the last one first
    std::size_t m_cuanto = 0;                // of all
};
