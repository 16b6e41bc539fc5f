#include "evidence/report/writing/svg_shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "evidence/report/reading/text.h"

namespace informe {
namespace {

using vexageo::CPunto;

constexpr int kDecimetro = 10; // in the drawing's unit

/// A command of a path with its numbers: "m10 -4".
std::string Orden(const char* orden, long long a, long long b)
{
    return orden + std::to_string(a) + " " + std::to_string(b);
}

/// The greatest of 1, 2 and 5 times a power of ten that isn't above a number; 1 at least.
double Redondo(double numero)
{
    const double decena = std::pow(10.0, std::floor(std::log10(std::max(numero, 1.0))));
    const double veces = numero / decena;
    return std::max(decena * (veces >= 5 ? 5 : veces >= 2 ? 2 : 1), 1.0);
}

} // namespace

CHojaSvg::CHojaSvg(const CPoligonoDibujado& poligono)
{
    for (const CTopologiaDibujada* topologia : {&poligono.parcelas, &poligono.subparcelas})
        for (const CRecintoDibujado& recinto : topologia->recintos)
            for (const CPunto<int>& punto : recinto.contorno)
                m_maximas.Nuevo(punto);
}

CHojaSvg::CHojaSvg(const std::vector<CAnillo>& anillos)
{
    constexpr long long kPasos = 1500; // no screen has many more
    for (const CAnillo& anillo : anillos)
        for (const CPunto<int>& punto : anillo)
            m_maximas.Nuevo(punto);
    if (m_maximas.Hay)
        m_paso = std::max(std::max(Ancho(), Alto()) / kPasos, 1LL);
}

CSitioHoja CHojaSvg::Sitio(const CPunto<int>& punto) const
{
    const auto decimetros = [](long long a, long long b) { return (a - b) / kDecimetro; };
    return {decimetros(punto.X, m_maximas.Minimo.X), decimetros(m_maximas.Maximo.Y, punto.Y)};
}

/// From its second point on a ring is told by steps; those that are too small are passed over.
std::string CHojaSvg::Camino(const CAnillo& anillo) const
{
    if (anillo.empty())
        return {};
    CSitioHoja antes = Sitio(anillo.front());
    std::string camino = Orden("M", antes.x, antes.y) + "l";
    for (const CPunto<int>& punto : anillo) {
        const CSitioHoja sitio = Sitio(punto);
        if (std::max(std::abs(sitio.x - antes.x), std::abs(sitio.y - antes.y)) < m_paso)
            continue;
        camino += Orden("", sitio.x - antes.x, sitio.y - antes.y) + " ";
        antes = sitio;
    }
    return camino + "0 0z";
}

std::string CHojaSvg::Camino(const CRecintoDibujado& recinto) const
{
    std::string camino = Camino(recinto.contorno);
    for (const CIslaDibujada& isla : recinto.islas)
        camino += Camino(isla.contorno);
    return camino;
}

long long CHojaSvg::Ancho(const CAnillo& anillo)
{
    const auto [menor, mayor] = std::ranges::minmax_element(anillo, {}, &CPunto<int>::X);
    return menor == anillo.end() ? 0 : (0LL + mayor->X - menor->X) / kDecimetro;
}

void CHojaSvg::PonMapa(CMarcas& svg, const char* clase, const std::string& nombre,
                       const std::string& estilo, const std::function<void()>& dentro) const
{
    const long long letra = Letra();
    const std::string ventana =
        Orden("-", letra, -letra) + Orden(" ", Ancho() + 2 * letra, Alto() + 6 * letra);
    svg.Bloque("svg",
               {{"class", clase},
                {"role", "group"},
                {"aria-label", nombre},
                {"viewBox", ventana},
                {"style", "font-size:" + std::to_string(letra) + "px;" + estilo}},
               [&] {
                   svg.Linea();
                   dentro();
                   PonEscala(svg);
               });
}

void CHojaSvg::PonEscala(CMarcas& svg) const
{
    const double metros = Redondo(static_cast<double>(std::max(Ancho(), Alto())) / kDecimetro / 5);
    const long long letra = Letra();
    const auto n = [](long long valor) { return std::to_string(valor); };
    const auto pie = [&](long long x, long long y, const std::string& texto) {
        svg.Bloque("text", {{"class", "pie"}, {"x", x}, {"y", y}}, texto);
    };
    const long long y = Alto() + 2 * letra;
    const long long largo = static_cast<long long>(metros) * kDecimetro;
    svg.Figura("path",
               {{"class", "escala"},
                {"d", Orden("M", 0, y) + "v" + n(letra) + "h" + n(largo) + "v" + n(-letra)}});
    pie(largo + letra, y + letra, Miles(static_cast<std::int64_t>(metros)) + " m");
    const long long x = Ancho() - letra;
    svg.Elemento("path",
                 {{"class", "norte"},
                  {"d", Orden("M", x, y - letra / 2) + Orden("l", -letra, 3 * letra) +
                            Orden("l", letra, -letra) + Orden("l", letra, letra) + "z"}},
                 [&] { svg.Elemento("title", {}, "Norte"); });
    pie(x - 2 * letra - letra / 2, y + 2 * letra, "N");
}

std::string CaminoCruz(const CSitioHoja& sitio, long long brazo)
{
    const long long dos = 2 * brazo;
    return Orden("M", sitio.x, sitio.y) + Orden("m", -brazo, -brazo) + Orden("l", dos, dos) +
           Orden("m", 0, -dos) + Orden("l", -dos, dos);
}

void PonTramas(CMarcas& svg, int serie, double paso)
{
    const auto circulo = [&](double centro) {
        svg.Figura(
            "circle",
            {{"class", "ta"}, {"cx", Fijo(centro)}, {"cy", Fijo(centro)}, {"r", Fijo(paso / 4)}});
    };
    const std::string lado = Fijo(2 * paso);
    const std::string numero = std::to_string(serie);
    svg.Elemento("defs", {}, [&] {
        svg.Elemento("pattern",
                     {{"id", "te" + numero},
                      {"width", lado},
                      {"height", lado},
                      {"patternUnits", "userSpaceOnUse"},
                      {"patternTransform", "rotate(45)"}},
                     [&] {
                         svg.Figura("path",
                                    {{"class", "te"},
                                     {"stroke-width", Fijo(paso / 3)},
                                     {"d", "M0 0v" + lado + "M" + Fijo(paso) + " 0v" + lado}});
                     });
        svg.Elemento("pattern",
                     {{"id", "ta" + numero},
                      {"width", lado},
                      {"height", lado},
                      {"patternUnits", "userSpaceOnUse"}},
                     [&] {
                         circulo(paso / 2);
                         circulo(paso * 3 / 2);
                     });
    });
    svg.Linea();
}

std::string EstiloTramas(int serie)
{
    const std::string numero = std::to_string(serie);
    return "--te:url(#te" + numero + ");--ta:url(#ta" + numero + ")";
}

} // namespace informe
