#include "evidence/gis/writing/stretches.h"

#include <algorithm>
#include <cstdlib>
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

CTramos::CTramos(const std::vector<CAnillo>& anillos, CAltura altura) : m_altura(std::move(altura))
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

void CTramos::Conoce(int posicion, const CAnillo& puntos)
{
    CAnillo linea; // a drawing's line may repeat a point, which a ring doesn't
    for (const CPunto<int>& punto : puntos)
        if (linea.empty() || !EnElMismoSitio(linea.back(), punto))
            linea.push_back(punto);
    for (const int signo : {1, -1}) {
        if (linea.size() > 1)
            m_conocidas.emplace(CClaveArista(Clave(linea[0]), Clave(linea[1])),
                                CConocida{signo * posicion, linea});
        std::ranges::reverse(linea);
    }
}

std::pair<int, std::size_t> CTramos::Conocida(const CAnillo& cerrado, std::size_t desde) const
{
    std::pair<int, std::size_t> mejor{0, 0};
    const auto [primera, ultima] =
        m_conocidas.equal_range({Clave(cerrado[desde]), Clave(cerrado[desde + 1])});
    for (auto i = primera; i != ultima; ++i) {
        const auto& [posicion, puntos] = i->second;
        const std::size_t aristas = puntos.size() - 1;
        const bool cabe = desde + aristas < cerrado.size() &&
                          std::equal(puntos.begin(), puntos.end(),
                                     cerrado.begin() + static_cast<std::ptrdiff_t>(desde),
                                     vexageo::EnElMismoSitio);
        // Of two alike the first one in the drawing.
        if (cabe && (aristas > mejor.second ||
                     (aristas == mejor.second && std::abs(posicion) < std::abs(mejor.first))))
            mejor = {posicion, aristas};
    }
    return mejor;
}

bool CTramos::EsNudo(const CPunto<int>& punto) const
{
    return m_aristas.at(Clave(punto)) != 2;
}

CAnillo CTramos::Girado(const CAnillo& anillo) const
{
    const auto desde = [&](CAnillo::const_iterator inicio) {
        CAnillo girado(inicio, anillo.end());
        girado.insert(girado.end(), anillo.begin(), inicio + 1); // its first point closes it
        return girado;
    };
    const auto nudo =
        std::ranges::find_if(anillo, [&](const CPunto<int>& punto) { return EsNudo(punto); });
    if (nudo != anillo.end())
        return desde(nudo);
    for (auto i = anillo.begin(); i != anillo.end(); ++i) { // a known line may be all of it
        const auto& siguiente = i + 1 == anillo.end() ? anillo.front() : *(i + 1);
        if (!m_conocidas.contains({Clave(*i), Clave(siguiente)}))
            continue;
        CAnillo girado = desde(i);
        if (Conocida(girado, 0).second == anillo.size())
            return girado;
    }
    // One line: it begins where every ring along it would.
    return desde(std::ranges::min_element(
        anillo, {}, [](const CPunto<int>& punto) { return std::pair(punto.X, punto.Y); }));
}

std::vector<int> CTramos::Pon(const CAnillo& anillo, vexageo::CEscritorDibujo& dibujo)
{
    const CAnillo girado = Girado(anillo);
    std::vector<int> tramos;
    for (std::size_t i = 0; i + 1 < girado.size();) {
        auto [posicion, aristas] = Conocida(girado, i);
        if (posicion == 0) {
            aristas = 1;
            while (i + aristas + 1 < girado.size() && !EsNudo(girado[i + aristas]))
                ++aristas;
            const auto desde = girado.begin() + static_cast<std::ptrdiff_t>(i);
            posicion = PonLinea({desde, desde + static_cast<std::ptrdiff_t>(aristas) + 1}, dibujo);
        }
        if (posicion == 0)
            return {};
        tramos.push_back(posicion);
        i += aristas;
    }
    return tramos;
}

int CTramos::PonLinea(CAnillo linea, vexageo::CEscritorDibujo& dibujo)
{
    const CClaveArista ida(Clave(linea[0]), Clave(linea[1]));
    if (const auto hecha = m_lineas.find(ida); hecha != m_lineas.end())
        return hecha->second;
    const CClaveArista vuelta(Clave(linea.back()), Clave(linea[linea.size() - 2]));
    std::ranges::transform(linea, linea.begin(), m_altura);
    const int posicion = dibujo.Linea(kCodigoLinde, std::move(linea));
    if (posicion != 0) {
        m_lineas[ida] = posicion;
        m_lineas[vuelta] = -posicion;
    }
    return posicion;
}
