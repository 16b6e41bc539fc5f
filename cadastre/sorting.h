#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

/// Sorts by `menor`, elements equal to it keeping their order. The records are moved once each, as
/// they are large.
template <class T, class M>
void OrdenaEstable(std::vector<T>& elementos, M menor)
{
    if (std::is_sorted(elementos.begin(), elementos.end(), menor))
        return;
    std::vector<std::size_t> orden(elementos.size());
    std::iota(orden.begin(), orden.end(), std::size_t{0});
    std::stable_sort(orden.begin(), orden.end(), [&](std::size_t a, std::size_t b) {
        return menor(elementos[a], elementos[b]);
    });
    // Position i takes the element of position orden[i]: one walk along each cycle.
    for (std::size_t inicio = 0; inicio < orden.size(); ++inicio) {
        if (orden[inicio] == inicio)
            continue;
        T primero = std::move(elementos[inicio]);
        std::size_t i = inicio;
        while (orden[i] != inicio) {
            elementos[i] = std::move(elementos[orden[i]]);
            i = std::exchange(orden[i], i);
        }
        elementos[i] = std::move(primero);
        orden[i] = i;
    }
}
