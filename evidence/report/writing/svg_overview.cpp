#include "evidence/report/writing/svg_overview.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/anchors.h"
#include "evidence/report/writing/markup.h"
#include "evidence/report/writing/svg_shapes.h"

namespace informe {
namespace {

using vexageo::CPunto;
using CAnillo = std::vector<CPunto<int>>;

/// Twice the area of the triangle, positive where it turns to the left.
double Giro(const CPunto<int>& a, const CPunto<int>& b, const CPunto<int>& c)
{
    const auto resta = [](int x, int y) { return static_cast<double>(x) - y; };
    return resta(b.X, a.X) * resta(c.Y, a.Y) - resta(b.Y, a.Y) * resta(c.X, a.X);
}

/// Half of the hull of points that are in order.
void AnexaMedia(const auto& puntos, CAnillo& anillo)
{
    const std::size_t desde = anillo.size();
    for (const CPunto<int>& punto : puntos) {
        while (anillo.size() >= desde + 2 &&
               Giro(anillo[anillo.size() - 2], anillo.back(), punto) <= 0)
            anillo.pop_back();
        anillo.push_back(punto);
    }
}

/// The hull of all outlines.
CAnillo Envolvente(const std::vector<CRecintoDibujado>& recintos)
{
    CAnillo puntos;
    for (const CRecintoDibujado& recinto : recintos)
        puntos.insert(puntos.end(), recinto.contorno.begin(), recinto.contorno.end());
    std::ranges::sort(puntos, {}, [](const CPunto<int>& p) { return std::pair(p.X, p.Y); });
    CAnillo anillo;
    AnexaMedia(puntos, anillo);
    std::ranges::reverse(puntos);
    AnexaMedia(puntos, anillo);
    return anillo;
}

/// Where a polygon's name stands: the middle of its largest ring.
CPunto<int> Centro(const CSilueta& silueta)
{
    vexageo::CMaximas<int> maximas;
    for (const CPunto<int>& punto : silueta.contornos.front())
        maximas.Nuevo(punto);
    const auto medio = [](int a, int b) { return static_cast<int>((0LL + a + b) / 2); };
    return {medio(maximas.Minimo.X, maximas.Maximo.X), medio(maximas.Minimo.Y, maximas.Maximo.Y)};
}

std::string Titulo(const CSilueta& silueta)
{
    const std::string nombre = "Polígono " + silueta.nombre;
    const std::string cambios =
        silueta.cambios == 0
            ? ""
            : "; " + Cuantos(silueta.cambios, "parcela cambia", "parcelas cambian");
    if (silueta.perdida == 0)
        return nombre + (silueta.conMensajes ? ": con mensajes" : ": sin mensajes") + cambios;
    return nombre + ": " + Superficie(silueta.perdida) + " se pierden, en " +
           Cuantos(silueta.parcelas, "parcela", "parcelas") + cambios;
}

/// How deep its colour is: one of four, by what the worst polygon loses.
std::string Clase(const CSilueta& silueta, std::int64_t mayor)
{
    constexpr std::int64_t kGrados = 4;
    if (silueta.perdida == 0)
        return silueta.conMensajes   ? "silueta avisada"
               : silueta.cambios > 0 ? "silueta cambiada"
                                     : "silueta";
    const std::int64_t grado = 1 + (silueta.perdida * kGrados - 1) / mayor;
    return "silueta pierde" + std::to_string(std::min(grado, kGrados));
}

void PonSilueta(CMarcas& svg, const CHojaSvg& hoja, const CSilueta& silueta, std::int64_t mayor)
{
    std::string camino;
    for (const CAnillo& anillo : silueta.contornos)
        camino += hoja.Camino(anillo);
    const auto dibuja = [&] {
        svg.Elemento("path", {{"class", Clase(silueta, mayor)}, {"d", camino}},
                     [&] { svg.Elemento("title", {}, Titulo(silueta)); });
    };
    if (silueta.ancla.empty())
        dibuja();
    else
        svg.Elemento("a", {{"href", CAnclas::A(silueta.ancla)}}, dibuja);
    svg.Linea();
}

void PonNombre(CMarcas& svg, const CHojaSvg& hoja, const CSilueta& silueta)
{
    const CSitioHoja sitio = hoja.Sitio(Centro(silueta));
    const auto rotulo = [&](const char* clase, const std::string& texto) {
        svg.Bloque("text", {{"class", clase}, {"x", sitio.x}, {"y", sitio.y}}, texto);
    };
    rotulo("rg", silueta.nombre);
    if (silueta.perdida > 0)
        rotulo("rm", "−" + Superficie(silueta.perdida));
}

} // namespace

void CSilueta::Une(CSilueta otra)
{
    if (ancla.empty())
        ancla = std::move(otra.ancla);
    contornos.insert(contornos.end(), std::make_move_iterator(otra.contornos.begin()),
                     std::make_move_iterator(otra.contornos.end()));
    conMensajes = conMensajes || otra.conMensajes;
}

std::vector<CAnillo> ContornosDe(const CPoligonoDibujado& poligono)
{
    std::vector<CAnillo> contornos;
    for (const CRecintoDibujado& recinto : poligono.poligonos.recintos)
        if (!recinto.contorno.empty())
            contornos.push_back(recinto.contorno);
    if (contornos.empty())
        if (CAnillo envolvente = Envolvente(poligono.parcelas.recintos); !envolvente.empty())
            contornos.push_back(std::move(envolvente));
    return contornos;
}

std::string VistaGeneral(const std::vector<CSilueta>& siluetas)
{
    if (siluetas.size() < 2)
        return {};
    std::vector<CAnillo> anillos;
    std::int64_t mayor = 1;
    bool hayCambios = false;
    for (const CSilueta& silueta : siluetas) {
        anillos.insert(anillos.end(), silueta.contornos.begin(), silueta.contornos.end());
        mayor = std::max(mayor, silueta.perdida);
        hayCambios = hayCambios || silueta.cambios > 0;
    }
    const CHojaSvg hoja(anillos);
    CMarcas svg;
    svg.Bloque("p", {{"class", "nota"}},
               "Los polígonos, por la superficie que se pierde de ellos: cuanta más, más oscuro. "
               "Los que sólo "
               "tienen mensajes, en ocre" +
                   std::string(hayCambios ? "; los que sólo cambian, en azul." : "."));
    hoja.PonMapa(svg, "mapa general", "Mapa del municipio", "", [&] {
        for (const CSilueta& silueta : siluetas)
            PonSilueta(svg, hoja, silueta, mayor);
        for (const CSilueta& silueta : siluetas)
            PonNombre(svg, hoja, silueta);
    });
    return svg.Toma();
}

} // namespace informe
