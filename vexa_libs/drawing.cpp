#include "vexa_libs/drawing.h"

#include <utility>

namespace vexageo {

CDibujoVexa::CDibujoVexa(const CDibujoVexa& otro)
    : m_semilla(otro.m_semilla), m_mensajes(otro.m_mensajes)
{
    for (const auto& entidad : otro.m_contenido.entidades)
        Inserta(*entidad);
}

CDibujoVexa::CDibujoVexa(CDibujoVexa&& otro) noexcept
    : m_semilla(otro.m_semilla), m_mensajes(otro.m_mensajes),
      m_contenido(std::exchange(otro.m_contenido, {}))
{
}

CDibujoVexa& CDibujoVexa::operator=(CDibujoVexa otro) noexcept
{
    m_semilla = otro.m_semilla;
    m_mensajes = otro.m_mensajes;
    m_contenido = std::move(otro.m_contenido);
    return *this;
}

bool CDibujoVexa::Inserta(const CEntidadVexa<int>& entidad)
{
    const CTipoDat& tipo = entidad.Tipo();
    if (tipo.EsLinea())
        ++m_contenido.lineas;
    else if (tipo.EsTexto())
        ++m_contenido.textos;
    else
        ++m_contenido.puntos;
    if (tipo.EsBorrado())
        ++m_contenido.borrados;
    m_contenido.vertices += entidad.Puntos().size();
    for (const CPunto<int>& punto : entidad.Puntos())
        m_contenido.maximas.Nuevo(punto);
    m_contenido.entidades.push_back(entidad.Clona());
    return true;
}

CMaximas<double> CDibujoVexa::GetMaximasDouble() const
{
    CMaximas<double> maximas;
    if (!m_contenido.maximas.Hay)
        return maximas;
    for (const CPunto<int>& punto : {m_contenido.maximas.Minimo, m_contenido.maximas.Maximo})
        maximas.Nuevo({punto.X / Precision(), punto.Y / Precision(), punto.Z / Precision()});
    return maximas;
}

} // namespace vexageo
