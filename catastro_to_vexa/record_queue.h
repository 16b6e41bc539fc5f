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

    /// Appends a record made of the arguments and gives it, to be filled.
    template <class... A>
    T& Nueva(A&&... argumentos)
    {
        if (m_bloques.empty() || m_bloques.back().size() == kBloque)
            m_bloques.emplace_back().reserve(kBloque);
        ++m_cuantos;
        return m_bloques.back().emplace_back(std::forward<A>(argumentos)...);
    }

    /// The record in front, for whoever takes what it holds; there must be one.
    T& Primera() { return m_bloques.front()[m_tomados]; }
    /// Drops the record in front.
    void Quita()
    {
        --m_cuantos;
        if (++m_tomados == m_bloques.front().size()) {
            m_bloques.pop_front();
            m_tomados = 0;
        }
    }

private:
    static constexpr std::size_t kBloque = 256;

    std::deque<std::vector<T>> m_bloques;
    std::size_t m_tomados = 0; // of the block in front
    std::size_t m_cuantos = 0;
};
