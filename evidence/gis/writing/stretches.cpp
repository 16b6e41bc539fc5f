#include "evidence/gis/writing/stretches.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "cadastre/label_codes.h"

using vexageo::CPunto;

std::size_t CTramos::CDispersa::operator()(const CClaveArista& clave) const
{
    constexpr std::uint64_t kMezcla = 0x9E3779B97F4A7C15U;
    const auto mezcla = [](std::int64_t valor) {
        return (static_cast<std::uint64_t>(valor) + 1) * kMezcla;
    };
    return mezcla(clave.first) ^ (mezcla(clave.second) >> 29U);
}

std::int64_t CTramos::Clave(const CPunto<int>& punto)
{
    constexpr unsigned kBits = 32;
    return static_cast<std::int64_t>(std::uint64_t{static_cast<std::uint32_t>(punto.X)} << kBits |
                                     static_cast<std::uint32_t>(punto.Y));
}

CTramos::CTramos(const std::vector<CAnillo>& anillos)
{
    std::unordered_set<CClaveArista, CDispersa> vistas;
    for (const CAnillo& anillo : anillos)
        for (std::size_t i = 0; i < anillo.size(); ++i) {
            const std::int64_t a = Clave(anillo[i]);
            const std::int64_t b = Clave(anillo[(i + 1) % anillo.size()]);
            if (!vistas.insert(std::minmax(a, b)).second)
                continue;
            ++m_aristas[a];
            ++m_aristas[b];
        }
}

bool CTramos::EsNudo(const CPunto<int>& punto) const
{
    return m_aristas.at(Clave(punto)) != 2;
}

std::vector<int> CTramos::Pon(const CAnillo& anillo, vexageo::CEscritorDibujo& dibujo)
{
    CAnillo girado = anillo;
    auto inicio = std::find_if(girado.begin(), girado.end(),
                               [&](const CPunto<int>& punto) { return EsNudo(punto); });
    if (inicio == girado.end()) // one line: it begins where every ring along it would
        inicio = std::min_element(girado.begin(), girado.end(), [](const auto& a, const auto& b) {
            return std::pair(a.X, a.Y) < std::pair(b.X, b.Y);
        });
    std::rotate(girado.begin(), inicio, girado.end());
    girado.push_back(girado.front());
    std::vector<int> tramos;
    CAnillo linea = {girado.front()};
    for (std::size_t i = 1; i < girado.size(); ++i) {
        linea.push_back(girado[i]);
        if (i + 1 < girado.size() && !EsNudo(girado[i]))
            continue;
        const int posicion = PonLinea(std::exchange(linea, {girado[i]}), dibujo);
        if (posicion == 0)
            return {};
        tramos.push_back(posicion);
    }
    return tramos;
}

int CTramos::PonLinea(CAnillo linea, vexageo::CEscritorDibujo& dibujo)
{
    const CClaveArista ida(Clave(linea[0]), Clave(linea[1]));
    if (const auto hecha = m_lineas.find(ida); hecha != m_lineas.end())
        return hecha->second;
    const CClaveArista vuelta(Clave(linea.back()), Clave(linea[linea.size() - 2]));
    const int posicion = dibujo.Linea(kCodigoLinde, std::move(linea));
    if (posicion != 0) {
        m_lineas[ida] = posicion;
        m_lineas[vuelta] = -posicion;
    }
    return posicion;
}
