#pragma once

#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/old_drawing.h"
#include "vexa_libs/drawing_writer.h"

/// Tells whether an entity is still as it was, by what the layers show of it: no heights, and of a
/// text the first point alone.
bool EsIgual(const vexageo::CTexto<int>& a, const vexageo::CTexto<int>& b);

/// What became of a drawing's outlines, or of what else it holds.
struct CCambios {
    bool Hay() const { return nuevos + cambiados + quitados > 0; }

    int nuevos = 0;
    int cambiados = 0;
    int quitados = 0;
};

/// Puts the texts, points and lines of a source into a drawing. Those that name or bound an outline
/// come out of it: where the drawing is there they must be as they were, and a new one makes them
/// of the outlines.
class CEntidadesLibres {
public:
    /// \param usadas  positions that its outlines name from now on
    /// \param dibujo  the one in the making, which begins with it
    CEntidadesLibres(const CPedidoDibujo& pedido, const CDibujoAntes& antes,
                     const std::set<int>& usadas, vexageo::CEscritorDibujo& dibujo,
                     CNoticias& noticias)
        : m_pedido(pedido), m_antes(antes), m_usadas(usadas), m_dibujo(dibujo), m_noticias(noticias)
    {
    }

    /// False, which was told, where one can't be put there.
    bool Pon();
    const CCambios& Cambios() const { return m_cambios; }

private:
    bool PonUna(const CEntidadEntrante& suya);
    std::optional<int> PosicionDeAntes(const CEntidadEntrante& suya) const;
    bool EsUnaDeAntes(const CEntidadEntrante& suya);
    bool VieneDeRecinto(const CEntidadEntrante& suya) const;
    bool Añade(const CEntidadEntrante& suya, const vexageo::CTexto<int>* antes);
    void BorraLasQueFaltan();

    const CPedidoDibujo& m_pedido;
    const CDibujoAntes& m_antes;
    const std::set<int>& m_usadas;
    vexageo::CEscritorDibujo& m_dibujo;
    CNoticias& m_noticias;
    std::set<int> m_vistas; // positions of old ones that came
    /// Those by what they are and where they begin, once one comes that doesn't say its own.
    std::multimap<std::tuple<bool, int, int>, std::pair<int, vexageo::CTexto<int>>> m_porSitio;
    CCambios m_cambios;
};
