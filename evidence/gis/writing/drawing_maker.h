#pragma once

#include <map>
#include <optional>
#include <set>
#include <vector>

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/drawing_review.h"
#include "evidence/gis/writing/free_entities.h"
#include "evidence/gis/writing/old_drawing.h"
#include "evidence/gis/writing/outline_rounding.h"
#include "evidence/gis/writing/stretches.h"
#include "platform/files/output_set.h"

/// What became of a drawing.
struct CCambiosDibujo {
    CCambios recintos;
    int iguales = 0; ///< outlines that are as they were
    CCambios libres; ///< texts, points and lines that no outline is named or bounded by
};

/// A drawing with its topologies: a new one, or one that is there, in which what the source doesn't
/// change keeps its bytes.
class CDibujoHecho {
public:
    /// \param antes  the drawing that is there
    CDibujoHecho(CPedidoDibujo pedido, const CDibujoAntes& antes, const CModoDibujo& modo)
        : m_pedido(std::move(pedido)), m_antes(antes), m_modo(modo)
    {
    }

    /// Nodes the outlines, cuts them into lines and composes the records. False, which was told,
    /// where something of the source can't be drawn.
    bool Compon();

    /// Writes the files that change. They take their places when `salidas` is confirmed. Raises
    /// CFileException.
    /// \param base  path of the files without their extension
    void Graba(const CString& base, CConjuntoSalidas& salidas);

    const CCambiosDibujo& Cambios() const { return m_cambios; }

private:
    struct CRegistroHecho {
        CDibujoAntes::CRegistro suyo;
        CRecintoRevisado revisado;
        int orden = 0; ///< place that it had; behind all others for a new one
    };

    void EmparejaRecintos();
    void PreparaTramos(std::vector<CAnillo> todos);
    void ComponRegistros();
    bool ComponRegistro(const CRedondo& redondo);
    void ConservaRegistro(const CRedondo& redondo);
    void CambiaRotulo(const CRecintoEntrante& recinto, CRegistroHecho& hecho);
    int PonRotulo(const CRecintoEntrante& recinto, const CDibujoAntes::CRegistro* antes,
                  const vexageo::CPunto<int>& punto);
    int NumeroDe(const CRedondo& redondo);
    void ConservaLoDemas();
    void BorraLoQueSobra();
    bool SePuedeCambiar() const;
    bool Revisa() const;

    CPedidoDibujo m_pedido;
    const CDibujoAntes& m_antes;
    CModoDibujo m_modo;
    bool m_bien = true;
    std::vector<CRedondo> m_redondos;
    std::optional<CTramos> m_tramos;
    vexageo::CEscritorDibujo m_dibujo;
    std::map<ClaseTopologia, std::vector<CRegistroHecho>> m_registros;
    std::map<ClaseTopologia, int> m_numeros; // the last one given
    std::set<int> m_usadas;                  // positions that the records name
    std::set<ClaseTopologia> m_cambiadas;    // topologies that are written
    bool m_cambiaDibujo = false;
    CCambiosDibujo m_cambios;
};
