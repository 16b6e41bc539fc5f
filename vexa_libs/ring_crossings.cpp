#include "vexa_libs/ring_crossings.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "vexa_libs/orientation.h"

// As long as the ring hasn't crossed itself, the edges that a line from below upwards meets keep
// their order while it goes right: edges may touch, and still the one is above the other. So an
// edge is held against its neighbours alone. Edges are said to begin at their lesser point, by X
// and then by Y, which makes of an upright edge one that leans a little to the right.

namespace vexageo {
namespace {

bool Antes(const CPunto<int>& a, const CPunto<int>& b)
{
    return std::tie(a.X, a.Y) < std::tie(b.X, b.Y);
}

struct CArista {
    CPunto<int> desde; // the lesser end
    CPunto<int> hasta;

    /// Above 0 for a point above the edge, 0 for one in line with it.
    Ancho Lado(const CPunto<int>& punto) const { return Cruz(desde, hasta, punto); }
};

/// The order from below upwards of two edges that the line meets at once. Edges in line are equal:
/// they share a way.
struct CDebajo {
    using is_transparent = void;

    bool operator()(const CArista* a, const CArista* b) const
    {
        if (Antes(b->desde, a->desde))
            return Lado(*b, *a) < 0;
        return Lado(*a, *b) > 0;
    }
    bool operator()(const CArista* a, const CPunto<int>& punto) const { return a->Lado(punto) > 0; }
    bool operator()(const CPunto<int>& punto, const CArista* a) const { return a->Lado(punto) < 0; }

private:
    /// On which side of the first edge the second one begins, or goes on from a point of it.
    static Ancho Lado(const CArista& primera, const CArista& segunda)
    {
        const Ancho lado = primera.Lado(segunda.desde);
        return lado != 0 ? lado : primera.Lado(segunda.hasta);
    }
};

/// A direction in which the ring leaves a point, and the passage through it that this belongs to.
struct CSalida {
    CVector hacia;
    std::size_t paso;

    bool MediaVuelta() const { return hacia.y < 0 || (hacia.y == 0 && hacia.x < 0); }
    bool operator<(const CSalida& otra) const
    {
        return MediaVuelta() != otra.MediaVuelta() ? otra.MediaVuelta()
                                                   : Cruz(hacia, otra.hacia) > 0;
    }
};

/// Tells whether two of the passages through a point cross there. All directions differ. Seen all
/// around, the two of a passage are a pair of brackets; passages that don't cross are brackets that
/// close in order.
bool SeCruzan(std::vector<CSalida>& salidas)
{
    std::sort(salidas.begin(), salidas.end());
    std::vector<std::size_t> abiertos;
    for (const CSalida& salida : salidas) {
        if (!abiertos.empty() && abiertos.back() == salida.paso)
            abiertos.pop_back();
        else
            abiertos.push_back(salida.paso);
    }
    return !abiertos.empty();
}

bool SeCruzan(const CArista& a, const CArista& b)
{
    const auto opuestos = [](Ancho m, Ancho n) { return (m < 0 && n > 0) || (m > 0 && n < 0); };
    return opuestos(a.Lado(b.desde), a.Lado(b.hasta)) && opuestos(b.Lado(a.desde), b.Lado(a.hasta));
}

/// Where two edges that cross do so, to a whole unit.
CPunto<int> DondeSeCruzan(const CArista& a, const CArista& b)
{
    const auto desde = static_cast<double>(b.Lado(a.desde));
    const auto hasta = static_cast<double>(b.Lado(a.hasta));
    const double parte = desde / (desde - hasta);
    const CVector via = Hacia(a.desde, a.hasta);
    const auto en = [&](int inicio, std::int64_t largo) {
        return static_cast<int>(std::llround(inicio + parte * static_cast<double>(largo)));
    };
    return {en(a.desde.X, via.x), en(a.desde.Y, via.y)};
}

class CBarrido {
public:
    explicit CBarrido(const std::vector<CPunto<int>>& anillo)
    {
        for (const CPunto<int>& punto : anillo)
            if (m_puntos.empty() || !EnElMismoSitio(m_puntos.back(), punto))
                m_puntos.push_back(punto);
        while (m_puntos.size() > 1 && EnElMismoSitio(m_puntos.front(), m_puntos.back()))
            m_puntos.pop_back();
    }

    std::optional<CEncuentro> Busca()
    {
        if (m_puntos.size() < 2)
            return std::nullopt;
        Prepara();
        for (std::size_t i = 0; i < m_visitas.size() && !m_encuentro;) {
            std::size_t fin = i + 1;
            while (fin < m_visitas.size() &&
                   EnElMismoSitio(Punto(m_visitas[i]), Punto(m_visitas[fin])))
                ++fin;
            Atiende(i, fin);
            i = fin;
        }
        return m_encuentro;
    }

private:
    using COrden = std::set<const CArista*, CDebajo>;

    const CPunto<int>& Punto(std::size_t i) const { return m_puntos[i]; }
    std::size_t Siguiente(std::size_t i) const { return i + 1 == m_puntos.size() ? 0 : i + 1; }
    std::size_t Anterior(std::size_t i) const { return (i == 0 ? m_puntos.size() : i) - 1; }

    void Prepara()
    {
        m_aristas.reserve(m_puntos.size());
        for (std::size_t i = 0; i < m_puntos.size(); ++i) {
            const CPunto<int>& a = Punto(i);
            const CPunto<int>& b = Punto(Siguiente(i));
            m_aristas.push_back(Antes(a, b) ? CArista{a, b} : CArista{b, a});
            m_visitas.push_back(i);
        }
        std::ranges::sort(m_visitas,
                          [&](std::size_t a, std::size_t b) { return Antes(Punto(a), Punto(b)); });
    }

    /// The passages through one place, which are visits from `i` on.
    void Atiende(std::size_t i, std::size_t fin)
    {
        const CPunto<int> punto = Punto(m_visitas[i]);
        const CArista* pasante = QuitaLasQueAcaban(punto);
        if (!m_encuentro)
            PonLasQueEmpiezan(i, fin, punto);
        if (m_encuentro)
            return;
        MiraPasos(i, fin, punto, pasante);
        if (!m_encuentro)
            MiraVecinas(punto);
    }

    /// Gives the edge that goes on beyond the place, null if none does.
    const CArista* QuitaLasQueAcaban(const CPunto<int>& punto)
    {
        const CArista* pasante = nullptr;
        auto arista = m_orden.lower_bound(punto);
        while (arista != m_orden.end() && (*arista)->Lado(punto) == 0) {
            if (EnElMismoSitio((*arista)->hasta, punto)) {
                arista = m_orden.erase(arista);
                continue;
            }
            if (pasante != nullptr) {
                Encuentra(Encuentro::Cruza, punto);
                break;
            }
            pasante = *arista++;
        }
        return pasante;
    }

    void PonLasQueEmpiezan(std::size_t i, std::size_t fin, const CPunto<int>& punto)
    {
        for (; i < fin; ++i)
            for (const std::size_t k : {m_visitas[i], Anterior(m_visitas[i])})
                if (EnElMismoSitio(m_aristas[k].desde, punto) &&
                    !m_orden.insert(&m_aristas[k]).second)
                    Encuentra(Encuentro::Repasa, punto);
    }

    void MiraPasos(std::size_t i, std::size_t fin, const CPunto<int>& punto, const CArista* pasante)
    {
        if (fin - i + (pasante != nullptr ? 1U : 0U) < 2)
            return;
        m_salidas.clear();
        for (; i < fin; ++i)
            for (const std::size_t k : {Anterior(m_visitas[i]), Siguiente(m_visitas[i])})
                m_salidas.push_back({Hacia(punto, Punto(k)), i});
        if (pasante != nullptr) {
            m_salidas.push_back({Hacia(punto, pasante->desde), fin});
            m_salidas.push_back({Hacia(punto, pasante->hasta), fin});
        }
        if (SeCruzan(m_salidas))
            Encuentra(Encuentro::Cruza, punto);
    }

    /// Holds the lowest and the highest edge at the place against what is next to them; where none
    /// goes on from it, what has come together there.
    void MiraVecinas(const CPunto<int>& punto)
    {
        const auto primera = m_orden.lower_bound(punto);
        const auto encima = m_orden.upper_bound(punto);
        MiraConLaDeDebajo(primera);
        if (primera != encima)
            MiraConLaDeDebajo(encima);
    }
    void MiraConLaDeDebajo(COrden::const_iterator arista)
    {
        if (arista == m_orden.begin() || arista == m_orden.end())
            return;
        const CArista& debajo = **std::prev(arista);
        if (SeCruzan(debajo, **arista))
            Encuentra(Encuentro::Cruza, DondeSeCruzan(debajo, **arista));
    }

    void Encuentra(Encuentro clase, const CPunto<int>& donde)
    {
        if (!m_encuentro)
            m_encuentro = CEncuentro{clase, {donde.X, donde.Y}};
    }

    std::vector<CPunto<int>> m_puntos;  // each other than the one before it
    std::vector<CArista> m_aristas;     // from each point to the next one
    std::vector<std::size_t> m_visitas; // the points, from left to right
    COrden m_orden;                     // the edges that the line meets
    std::vector<CSalida> m_salidas;     // at the place at work
    std::optional<CEncuentro> m_encuentro;
};

} // namespace

std::optional<CEncuentro> BuscaEncuentro(const std::vector<CPunto<int>>& anillo)
{
    return CBarrido(anillo).Busca();
}

} // namespace vexageo
