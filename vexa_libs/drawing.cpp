#include "vexa_libs/drawing.h"

#include <utility>

namespace vexageo {

CDibujoVexa::CDibujoVexa(const CDibujoVexa& otro) : m_semilla(otro.m_semilla)
{
    *this = otro;
}

CDibujoVexa::CDibujoVexa(CDibujoVexa&& otro) noexcept : m_semilla(otro.m_semilla)
{
    Intercambia(otro);
}

CDibujoVexa& CDibujoVexa::operator=(CDibujoVexa&& otro) noexcept
{
    CDibujoVexa tomado(std::move(otro));
    Intercambia(tomado);
    return *this;
}

void CDibujoVexa::Intercambia(CDibujoVexa& otro) noexcept
{
    std::swap(m_lineas, otro.m_lineas);
    std::swap(m_textos, otro.m_textos);
    std::swap(m_puntos, otro.m_puntos);
    std::swap(m_borrados, otro.m_borrados);
    std::swap(m_vertices, otro.m_vertices);
    std::swap(m_mensajes, otro.m_mensajes);
    std::swap(m_semilla, otro.m_semilla);
    std::swap(m_maximas, otro.m_maximas);
    m_entidades.swap(otro.m_entidades);
}

CDibujoVexa& CDibujoVexa::operator=(const CDibujoVexa& otro)
{
    if (this == &otro)
        return *this;
    CDibujoVexa copia(otro.m_semilla);
    copia.m_mensajes = otro.m_mensajes;
    for (const auto& entidad : otro.m_entidades)
        copia.Inserta(*entidad);
    return *this = std::move(copia);
}

bool CDibujoVexa::Inserta(const CEntidadVexa<int>& entidad)
{
    const CTipoDat& tipo = entidad.Tipo();
    if (tipo.EsLinea())
        ++m_lineas;
    else if (tipo.EsTexto())
        ++m_textos;
    else
        ++m_puntos;
    if (tipo.EsBorrado())
        ++m_borrados;
    m_vertices += entidad.Puntos().size();
    for (const CPunto<int>& punto : entidad.Puntos())
        m_maximas.Nuevo(punto);
    m_entidades.push_back(entidad.Clona());
    return true;
}

CMaximas<double> CDibujoVexa::GetMaximasDouble() const
{
    CMaximas<double> maximas;
    if (!m_maximas.Hay)
        return maximas;
    for (const CPunto<int>& punto : {m_maximas.Minimo, m_maximas.Maximo})
        maximas.Nuevo({punto.X / Precision(), punto.Y / Precision(), punto.Z / Precision()});
    return maximas;
}

} // namespace vexageo
