#include "generator/lattice.h"

#include <cstdint>

#include "vexa_libs/ring.h"

namespace sintetico {

int AreaContorno(const CContorno& contorno)
{
    return static_cast<int>(vexageo::DobleArea(contorno) / vexageo::kDobleMetroCuadrado);
}

int Area(const CRecinto& recinto)
{
    int area = AreaContorno(recinto.contorno);
    for (const CContorno& hueco : recinto.huecos)
        area -= AreaContorno(hueco);
    return area;
}

CVertice Medio(const CVertice& a, const CVertice& b)
{
    return {a.X + (b.X - a.X) / 2, a.Y + (b.Y - a.Y) / 2};
}

CVertice Centro(const CContorno& contorno)
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    for (const CVertice& v : contorno) {
        x += v.X;
        y += v.Y;
    }
    const auto n = static_cast<std::int64_t>(contorno.size());
    return {static_cast<int>(x / n / kMalla * kMalla), static_cast<int>(y / n / kMalla * kMalla)};
}

CContorno Cuadrado(const CVertice& centro, int medio)
{
    return {{centro.X - medio, centro.Y - medio},
            {centro.X + medio, centro.Y - medio},
            {centro.X + medio, centro.Y + medio},
            {centro.X - medio, centro.Y + medio}};
}

} // namespace sintetico
