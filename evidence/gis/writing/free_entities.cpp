#include "evidence/gis/writing/free_entities.h"

#include <algorithm>

#include "platform/ansi.h"

using vexageo::CPunto;
using vexageo::CTexto;
using vexageo::CTipoDat;

namespace {

/// A line from the one of its ends on that comes first on the map.
CTexto<int> EnSuSentido(CTexto<int> entidad)
{
    const auto orden = [](const CPunto<int>& punto) { return std::pair(punto.X, punto.Y); };
    if (auto& puntos = entidad.Puntos();
        entidad.Tipo().EsLinea() && !puntos.empty() && orden(puntos.back()) < orden(puntos.front()))
        std::ranges::reverse(puntos);
    return entidad;
}

} // namespace

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

/// Those that say where they stood come first: of two that are alike the other one is new.
bool CEntidadesLibres::Pon()
{
    bool bien = true;
    for (const bool conPosicion : {true, false})
        for (const CEntidadEntrante& suya : m_pedido.entidades)
            if (suya.posicion.has_value() == conPosicion)
                bien = PonUna(suya) && bien;
    BorraLasQueFaltan();
    return bien;
}

/// The position of the old entity in whose place one stood when it was read; none where that is
/// another drawing's.
std::optional<int> CEntidadesLibres::PosicionDeAntes(const CEntidadEntrante& suya) const
{
    if (!suya.posicion || m_vistas.contains(*suya.posicion))
        return std::nullopt;
    const auto antes = m_antes.Entidades().find(*suya.posicion);
    const bool hay =
        antes != m_antes.Entidades().end() && antes->second.Tipo().EsLinea() == suya.EsLinea();
    return hay ? suya.posicion : std::nullopt;
}

/// Where a source has lost the positions, one that is as it was is known by that alone: put beside
/// itself it would be there twice, and once more each time.
bool CEntidadesLibres::EsUnaDeAntes(const CEntidadEntrante& suya)
{
    const auto sitio = [](const CTexto<int>& entidad) {
        const CPunto<int> punto = entidad.PrimerPunto();
        return std::tuple(entidad.Tipo().EsLinea(), punto.X, punto.Y);
    };
    if (m_porSitio.empty())
        for (const auto& [posicion, entidad] : m_antes.Entidades()) {
            const CTexto<int> suSentido = EnSuSentido(entidad);
            m_porSitio.emplace(sitio(suSentido), std::pair(posicion, suSentido));
        }
    CTexto<int> entidad = EnSuSentido(suya.entidad);
    const auto [desde, hasta] = m_porSitio.equal_range(sitio(entidad));
    const auto igual = std::find_if(desde, hasta, [&](const auto& una) {
        const auto& [posicion, antes] = una.second;
        if (suya.sinCodigo) { // then its code is the old one's as much as any
            entidad.Tipo() = CTipoDat(entidad.Tipo().Tipo(), antes.Tipo().Codigo());
            entidad.Tipo().SetBorrado(suya.entidad.Tipo().EsBorrado());
        }
        return !m_vistas.contains(posicion) && EsIgual(antes, entidad);
    });
    if (igual != hasta)
        m_vistas.insert(igual->second.first);
    return igual != hasta;
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
    const std::optional<int> posicion = PosicionDeAntes(suya);
    if (posicion)
        m_vistas.insert(*posicion);
    const bool esDeAntes = !suya.posicion && EsUnaDeAntes(suya);
    if (!suya.rechazo.IsEmpty()) {
        m_noticias.Advierte("elementos rechazados",
                            (posicion || esDeAntes ? "Se deja como estaba " : "Se deja fuera ") +
                                suya.rechazo);
        return true;
    }
    if (esDeAntes)
        return true;
    if (!posicion)
        return VieneDeRecinto(suya) || Añade(suya, nullptr);
    const CTexto<int>& antes = m_antes.Entidades().at(*posicion);
    if (EsIgual(antes, suya.entidad))
        return true;
    if (m_antes.EsDeRecinto(*posicion)) {
        m_noticias.Falla(
            "rótulos y líneas de recintos que cambian en su propia capa"_ansi,
            suya.nombre + (suya.EsLinea() ? " es linde de un recinto: se cambia en la capa de ese "
                                            "recinto"_ansi
                                          : " es de un recinto: se cambia en la capa de ese "
                                            "recinto"_ansi));
        return false;
    }
    m_dibujo.Borra(*posicion);
    return Añade(suya, &antes);
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
    ++(antes == nullptr ? m_cambios.nuevos : m_cambios.cambiados);
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
        ++m_cambios.quitados;
    }
    if (faltanDeRecintos)
        m_noticias.Apunta("dibujos a cuyas capas rotulos o lineas les faltan rótulos o lindes de "
                          "recintos, que siguen donde están"_ansi,
                          m_pedido.nombre);
}
