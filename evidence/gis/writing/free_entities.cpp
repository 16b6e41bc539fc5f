#include "evidence/gis/writing/free_entities.h"

#include <algorithm>

#include "platform/ansi.h"

using vexageo::CPunto;
using vexageo::CTexto;

bool EsIgual(const CTexto<int>& a, const CTexto<int>& b)
{
    const bool mismosPuntos =
        a.Tipo().EsLinea() ? std::equal(a.Puntos().begin(), a.Puntos().end(), b.Puntos().begin(),
                                        b.Puntos().end(), vexageo::EnElMismoSitio)
                           : EnElMismoSitio(a.PrimerPunto(), b.PrimerPunto());
    return mismosPuntos && a.Tipo().Tipo() == b.Tipo().Tipo() &&
           SeVenIgual(a.Tipo().Codigo(), b.Tipo().Codigo()) &&
           a.Tipo().EsBorrado() == b.Tipo().EsBorrado() &&
           (a.Tipo().EsLinea() || SeVenIgual(a.Texto(), b.Texto()));
}

bool CEntidadesLibres::Pon()
{
    bool bien = true;
    for (const CEntidadEntrante& suya : m_pedido.entidades)
        bien = PonUna(suya) && bien;
    BorraLasQueFaltan();
    return bien;
}

/// The old entity in whose place one stood when it was read; null where that is another drawing's.
const CTexto<int>* CEntidadesLibres::LaDeAntes(const CEntidadEntrante& suya) const
{
    if (!suya.posicion || m_vistas.contains(*suya.posicion))
        return nullptr;
    const auto antes = m_antes.Entidades().find(*suya.posicion);
    const bool hay =
        antes != m_antes.Entidades().end() && antes->second.Tipo().EsLinea() == suya.EsLinea();
    return hay ? &antes->second : nullptr;
}

/// Tells whether one was read as an outline's and that outline's layer comes, too.
bool CEntidadesLibres::VieneDeRecinto(const CEntidadEntrante& suya) const
{
    if (!suya.deCapa)
        return false;
    if (suya.EsLinea())
        return !m_pedido.delOrigen.recintos.empty();
    const std::optional<ClaseTopologia> clase = ClaseDeCapa(*suya.deCapa);
    return clase && m_pedido.delOrigen.Hay(*clase);
}

bool CEntidadesLibres::PonUna(const CEntidadEntrante& suya)
{
    const CTexto<int>* antes = LaDeAntes(suya);
    if (!suya.rechazo.IsEmpty()) {
        m_noticias.Advierte("elementos rechazados",
                            (antes == nullptr ? "Se deja fuera " : "Se deja como estaba ") +
                                suya.rechazo);
        if (antes != nullptr)
            m_vistas.insert(*suya.posicion);
        return true;
    }
    if (antes == nullptr)
        return VieneDeRecinto(suya) || Añade(suya, nullptr);
    m_vistas.insert(*suya.posicion);
    if (EsIgual(*antes, suya.entidad))
        return true;
    if (m_antes.EsDeRecinto(*suya.posicion)) {
        m_noticias.Falla(
            "rótulos y líneas de recintos que cambian en su propia capa"_ansi,
            suya.nombre + (suya.EsLinea() ? " es linde de un recinto: se cambia en la capa de ese "
                                            "recinto"_ansi
                                          : " es de un recinto: se cambia en la capa de ese "
                                            "recinto"_ansi));
        return false;
    }
    m_dibujo.Borra(*suya.posicion);
    return Añade(suya, antes);
}

bool CEntidadesLibres::Añade(const CEntidadEntrante& suya, const CTexto<int>* antes)
{
    CTexto<int> entidad = suya.entidad;
    if (antes != nullptr && !suya.EsLinea() &&
        EnElMismoSitio(antes->PrimerPunto(), entidad.PrimerPunto()))
        entidad.Puntos() = antes->Puntos();
    else
        for (CPunto<int>& punto : entidad.Puntos())
            punto = m_antes.ConAltura(punto);
    m_cambia = true;
    if (m_dibujo.Pon(entidad) != 0)
        return true;
    m_noticias.Falla("entidades que no caben"_ansi,
                     "el dibujo pasa de dos gigabytes: no cabe "_ansi + suya.nombre);
    return false;
}

/// Deletes the free entities that a layer had and has no longer.
void CEntidadesLibres::BorraLasQueFaltan()
{
    bool faltanDeRecintos = false;
    for (const auto& [posicion, entidad] : m_antes.Entidades()) {
        const ClaseEntidad clase =
            entidad.Tipo().EsLinea() ? ClaseEntidad::Lineas : ClaseEntidad::Rotulos;
        if (!m_pedido.traidas.Hay(clase) || m_vistas.contains(posicion) ||
            entidad.Tipo().EsBorrado())
            continue;
        if (m_antes.EsDeRecinto(posicion)) {
            faltanDeRecintos = faltanDeRecintos || m_usadas.contains(posicion);
            continue;
        }
        m_dibujo.Borra(posicion);
        m_cambia = true;
    }
    if (faltanDeRecintos)
        m_noticias.Apunta("dibujos a cuyas capas rotulos o lineas les faltan rótulos o lindes de "
                          "recintos, que siguen donde están"_ansi,
                          m_pedido.nombre);
}
