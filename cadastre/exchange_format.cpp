#include "cadastre/exchange_format.h"

#include "cadastre/wrapping.h"

void CDatosLinea::PonSuperficie(int superficie)
{
    constexpr int kMetrosPorHectarea = 10000;
    constexpr int kMetrosPorArea = 100;
    hectareas = superficie / kMetrosPorHectarea;
    areas = superficie % kMetrosPorHectarea / kMetrosPorArea;
    centiareas = superficie % kMetrosPorArea;
}

int CDatosLinea::DameSuperficie() const
{
    return Suma(Suma(hectareas * 10000, areas * 100), centiareas);
}
