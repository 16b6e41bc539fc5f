#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

/// Tells whether the keys that `clave` gives ascend, no two of them equal.
template <class T, class C>
bool Ascienden(const std::vector<T>& elementos, C clave)
{
    const auto noAsciende = [&](const T& a, const T& b) { return !(clave(a) < clave(b)); };
    return std::adjacent_find(elementos.begin(), elementos.end(), noAsciende) == elementos.end();
}

/// Sorts by the key that `clave` gives of an element, elements with equal keys keeping their order.
/// The keys are sorted apart and the records moved once each, as they are large. A key may point
/// into its element.
/// \return for each old position that of the first element with its key now; nothing where the keys
/// ascended from the start
template <class T, class C>
std::vector<int> OrdenaPor(std::vector<T>& elementos, C clave)
{
    if (Ascienden(elementos, clave))
        return {};
    using Clave = decltype(clave(elementos.front()));
    std::vector<std::pair<Clave, std::size_t>> orden; // with the old position
    orden.reserve(elementos.size());
    for (const T& elemento : elementos)
        orden.emplace_back(clave(elemento), orden.size());
    std::sort(orden.begin(), orden.end());
    std::vector<int> nuevas(orden.size());
    for (std::size_t i = 0, primera = 0; i < orden.size(); ++i) {
        if (orden[primera].first < orden[i].first)
            primera = i;
        nuevas[orden[i].second] = static_cast<int>(primera);
    }
    // Position i takes the element of position orden[i]: one walk along each cycle.
    for (std::size_t inicio = 0; inicio < orden.size(); ++inicio) {
        if (orden[inicio].second == inicio)
            continue;
        T primero = std::move(elementos[inicio]);
        std::size_t i = inicio;
        while (orden[i].second != inicio) {
            elementos[i] = std::move(elementos[orden[i].second]);
            i = std::exchange(orden[i].second, i);
        }
        elementos[i] = std::move(primero);
        orden[i].second = i;
    }
    return nuevas;
}
