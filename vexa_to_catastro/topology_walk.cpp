#include "vexa_to_catastro/topology_walk.h"

#include <algorithm>

#include "vexa_libs/topology.h"

void SumaIslas(CFile* poligonos, double& area)
{
    vexageo::CPoligonoTopologico isla;
    while (isla.ReadIsla(poligonos))
        area += isla.Area();
}

Rotulo LeeRotuloDeCodigo(const vexageo::CPoligonoTopologico& poligono, CFile* bin,
                         vexageo::CTexto<int>& rotulo, std::span<const char* const> codigos)
{
    if (!vexageo::LeeRotulo(poligono, bin, rotulo))
        return Rotulo::FueraDeFecha;
    const vexageo::CTipoDat& tipo = rotulo.Tipo();
    const bool suyo = std::ranges::any_of(
        codigos, [&](const char* codigo) { return tipo.ComparaCodigo(codigo); });
    return tipo.EsTexto() && !tipo.EsBorrado() && suyo ? Rotulo::Valido : Rotulo::Ajeno;
}
