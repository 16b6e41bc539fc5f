#pragma once

#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

/// Records that wait, the first one in front. They stand in blocks of many, each of which goes when
/// its last record was taken, so that a record never stands in memory twice.
template <class T>
class CCola {
public:
    std::size_t Cuantos() const { return m_cuantos; }

    /// Appends a record and gives it, to be filled.
    T& Nueva(T registro)
    {
        if (m_bloques.empty() || m_bloques.back().size() == kBloque)
            m_bloques.emplace_back().reserve(kBloque);
        m_bloques.back().push_back(std::move(registro));
        ++m_cuantos;
        return m_bloques.back().back();
    }

    /// Takes the record in front; there must be one.
    T Toma()
    {
        std::vector<T>& bloque = m_bloques.front();
        T primero = std::move(bloque[m_tomados++]);
        --m_cuantos;
        if (m_tomados == bloque.size()) {
            m_bloques.pop_front();
            m_tomados = 0;
        }
        return primero;
    }

private:
    static constexpr std::size_t kBloque = 256;

    std::deque<std::vector<T>> m_bloques;
    std::size_t m_tomados = 0; // of the block in front
    std::size_t m_cuantos = 0;
};
