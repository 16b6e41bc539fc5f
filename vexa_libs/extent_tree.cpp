#include "vexa_libs/extent_tree.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace vexageo {
namespace {

double Areas(const std::vector<CCaja>& cajas)
{
    double areas = 0;
    for (const CCaja& caja : cajas)
        areas += caja.Area();
    return areas;
}

} // namespace

/// Where a box lies: its centre, and how wide it is.
struct CArbolCajas::CSitio {
    int x, y;
    unsigned ancho;
    unsigned posicion; // of what is in it

    static CSitio De(const CCaja& caja, std::size_t posicion);
    bool PorY(const CSitio& otro) const
    {
        return y < otro.y || (y == otro.y && ancho < otro.ancho);
    }
    bool PorX(const CSitio& otro) const { return x < otro.x || (x == otro.x && PorY(otro)); }
    static void Ordena(std::vector<CSitio>& sitios);
};

/// A node as the level above sees it: the way to it, what bounds it upright and in the frame of its
/// turned boxes, and where the edges run below it, if they were looked at.
struct CArbolCajas::CRama {
    CVia via;
    CCaja recta;
    CMarco marco;
    CCaja girada;
    CRumbo rumbo;
};

/// What a level is made of: rings, by their positions.
class CArbolCajas::CDeAnillos {
public:
    explicit CDeAnillos(const CAlmacenAnillos& anillos) : m_anillos(anillos) {}

    std::size_t Primera() const { return 0; }
    std::size_t Cantidad() const { return m_anillos.Cantidad(); }
    CVia Via(std::size_t i) const
    {
        return {m_anillos[i].preferencia, m_anillos[i].indice, static_cast<unsigned>(i)};
    }
    CCaja Caja(std::size_t i, const CMarco& marco) const { return CCaja::De(Puntos(i), marco); }
    void DaRumbo(std::size_t i, CRumbo& rumbo) const { rumbo.Toma(Puntos(i)); }

private:
    const std::vector<CPunto<int>>& Puntos(std::size_t i) const
    {
        return m_anillos[i].consulta.Anillo();
    }

    const CAlmacenAnillos& m_anillos;
};

/// The same of nodes, by the positions that ways to them have.
class CArbolCajas::CDeRamas {
public:
    explicit CDeRamas(const std::vector<CRama>& ramas) : m_ramas(ramas) {}

    std::size_t Primera() const { return m_ramas.front().via.posicion; }
    std::size_t Cantidad() const { return m_ramas.size(); }
    CVia Via(std::size_t i) const { return Rama(i).via; }
    CCaja Caja(std::size_t i, const CMarco& marco) const
    {
        const CRama& rama = Rama(i);
        if (marco.Recto())
            return rama.recta;
        CCaja caja = rama.recta.Gira(CMarco(), marco);
        caja.Recorta(rama.girada.Gira(rama.marco, marco));
        return caja;
    }
    void DaRumbo(std::size_t i, CRumbo& rumbo) const { rumbo.Junta(Rama(i).rumbo); }

private:
    const CRama& Rama(std::size_t i) const { return m_ramas[i - Primera()]; }

    const std::vector<CRama>& m_ramas;
};

CArbolCajas::CSitio CArbolCajas::CSitio::De(const CCaja& caja, std::size_t posicion)
{
    const auto centro = [&caja](std::size_t k) {
        return static_cast<int>((std::int64_t{caja.minimo[k]} + caja.maximo[k]) >> 1);
    };
    return {centro(0), centro(1),
            static_cast<unsigned>(std::int64_t{caja.maximo[0]} - caja.minimo[0]),
            static_cast<unsigned>(posicion)};
}

/// Puts those near one another side by side: strips of whole nodes from left to right, each from
/// below, and of those with the same centre the narrowest first.
void CArbolCajas::CSitio::Ordena(std::vector<CSitio>& sitios)
{
    std::sort(sitios.begin(), sitios.end(),
              [](const CSitio& a, const CSitio& b) { return a.PorX(b); });
    const double nodos = std::ceil(static_cast<double>(sitios.size()) / kPorNodo);
    const std::size_t porTira = static_cast<std::size_t>(std::ceil(std::sqrt(nodos))) * kPorNodo;
    for (std::size_t i = 0; i < sitios.size(); i += porTira) {
        const auto tira = std::span(sitios).subspan(i, std::min(porTira, sitios.size() - i));
        std::sort(tira.begin(), tira.end(),
                  [](const CSitio& a, const CSitio& b) { return a.PorY(b); });
    }
}

/// Gives the last node turned boxes too: along most of the edges below it where those are narrower,
/// else along the diagonals, so that boxes cut the corners at least of what runs all ways.
template <class F>
void CArbolCajas::PonGiro(const F& fuente, std::vector<CCaja>& cajas, CRama& rama)
{
    constexpr double kMasCeñidas = 0.9;
    constexpr std::size_t kDecisivas = 8;
    CNodo& nodo = m_nodos.back();
    const std::span<const CVia> vias = std::span(nodo.vias).first(cajas.size());
    // What stands near one another runs alike: a few of them tell.
    for (std::size_t i = 0; i < vias.size(); i += vias.size() / kDecisivas + 1)
        fuente.DaRumbo(vias[i].posicion, rama.rumbo);
    const double rectas = Areas(cajas);
    const auto gira = [&](const CMarco& marco) {
        rama.marco = marco;
        std::transform(vias.begin(), vias.end(), cajas.begin(),
                       [&](const CVia& via) { return fuente.Caja(via.posicion, marco); });
        return Areas(cajas) * marco.AreaDePaso();
    };
    const std::optional<CMarco> marco = rama.rumbo.Marco();
    if (!marco || gira(*marco) > kMasCeñidas * rectas)
        gira(CMarco::Diagonal());
    rama.girada = CCaja::De(cajas);
    nodo.giro = std::make_unique<const CGiro>(rama.marco, cajas);
}

/// Makes a node of boxes near one another. Where its points lie in many of them, they stand from
/// the best to the worst, and turned boxes beside them.
template <class F>
CArbolCajas::CRama CArbolCajas::PonNodo(const F& fuente, const std::vector<CCaja>& rectas,
                                        std::span<const CSitio> sitios)
{
    constexpr double kMuchas = 2;
    CNodo& nodo = m_nodos.emplace_back();
    const std::span<CVia> vias = std::span(nodo.vias).first(sitios.size());
    std::transform(sitios.begin(), sitios.end(), vias.begin(),
                   [&](const CSitio& sitio) { return fuente.Via(sitio.posicion); });
    std::vector<CCaja> cajas(vias.size());
    const auto tomaCajas = [&] {
        std::transform(vias.begin(), vias.end(), cajas.begin(),
                       [&](const CVia& via) { return rectas[via.posicion - fuente.Primera()]; });
    };
    tomaCajas();
    const CCaja suma = CCaja::De(cajas);
    const bool enMuchas = Areas(cajas) > kMuchas * suma.Area();
    if (enMuchas) {
        std::sort(vias.begin(), vias.end());
        tomaCajas();
    }
    nodo.cajas = CCajasJuntas(cajas);
    CRama rama{*std::min_element(vias.begin(), vias.end()), suma, {}, suma, {}};
    rama.via.posicion = static_cast<unsigned>(m_anillos + m_nodos.size() - 1);
    if (enMuchas)
        PonGiro(fuente, cajas, rama);
    return rama;
}

template <class F>
std::vector<CArbolCajas::CRama> CArbolCajas::PonNivel(const F& fuente)
{
    std::vector<CSitio> sitios;
    std::vector<CCaja> rectas;
    sitios.reserve(fuente.Cantidad());
    rectas.reserve(fuente.Cantidad());
    for (std::size_t i = fuente.Primera(); i < fuente.Primera() + fuente.Cantidad(); ++i) {
        rectas.push_back(fuente.Caja(i, CMarco()));
        sitios.push_back(CSitio::De(rectas.back(), i));
    }
    CSitio::Ordena(sitios);
    std::vector<CRama> ramas;
    ramas.reserve(Nodos(sitios.size()));
    for (std::size_t i = 0; i < sitios.size(); i += kPorNodo) {
        const std::size_t cuantos = std::min(kPorNodo, sitios.size() - i);
        ramas.push_back(PonNodo(fuente, rectas, std::span(sitios).subspan(i, cuantos)));
    }
    return ramas;
}

CArbolCajas::CArbolCajas(const CAlmacenAnillos& anillos) : m_anillos(anillos.Cantidad())
{
    if (m_anillos == 0)
        return;
    std::size_t nodos = 1;
    for (std::size_t nivel = m_anillos; nivel > kPorNodo; nivel = Nodos(nivel))
        nodos += Nodos(nivel);
    m_nodos.reserve(nodos);
    std::vector<CRama> ramas = PonNivel(CDeAnillos(anillos));
    while (ramas.size() > 1)
        ramas = PonNivel(CDeRamas(ramas));
}

} // namespace vexageo
