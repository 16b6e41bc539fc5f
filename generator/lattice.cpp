#include "generator/lattice.h"

#include <cstdint>
#include <cstdlib>

namespace sintetico {

int AreaContorno(const CContorno& contorno)
{
    std::int64_t doble = 0;
    for (std::size_t i = 0; i < contorno.size(); ++i) {
        const CVertice& a = contorno[i];
        const CVertice& b = contorno[(i + 1) % contorno.size()];
        doble += std::int64_t{a.x} * b.y - std::int64_t{b.x} * a.y;
    }
    return static_cast<int>(std::abs(doble) / 2 / 10000);
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
    return {a.x + (b.x - a.x) / 2, a.y + (b.y - a.y) / 2};
}

CVertice Centro(const CContorno& contorno)
{
    std::int64_t x = 0;
    std::int64_t y = 0;
    for (const CVertice& v : contorno) {
        x += v.x;
        y += v.y;
    }
    const auto n = static_cast<std::int64_t>(contorno.size());
    return {static_cast<int>(x / n / kMalla * kMalla), static_cast<int>(y / n / kMalla * kMalla)};
}

CContorno Cuadrado(const CVertice& centro, int medio)
{
    return {{centro.x - medio, centro.y - medio},
            {centro.x + medio, centro.y - medio},
            {centro.x + medio, centro.y + medio},
            {centro.x - medio, centro.y + medio}};
}

} // namespace sintetico
