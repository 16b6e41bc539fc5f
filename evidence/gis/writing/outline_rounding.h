#pragma once

#include <vector>

#include "evidence/gis/writing/drawing_request.h"
#include "evidence/gis/writing/outline_matching.h"

/// Gives the outlines of a drawing their rounded rings: those that came as they were stay, and the
/// others are noded together and led through the points of those.
class CRedondeo {
public:
    CRedondeo(const CPedidoDibujo& pedido, const CDibujoAntes& antes, const CModoDibujo& modo,
              std::vector<CRedondo>& redondos)
        : m_pedido(pedido), m_antes(antes), m_modo(modo), m_redondos(redondos)
    {
    }

    /// Rounds them, and takes out those that can't be drawn. False, which was told, where one was
    /// refused; they are all looked at.
    bool Redondea();

    /// The rings that stay as they are: of outlines that came as they were, and of all kinds that
    /// the source doesn't bring.
    std::vector<CAnillo> Fijos() const;

private:
    void RechazaDefectos();
    void Rechaza(CRedondo& redondo, const CString& motivo);
    void Anuda();
    void Toma(CRedondo& redondo, std::vector<CAnillo>::iterator& siguiente);
    void RodeaParcelas();

    const CPedidoDibujo& m_pedido;
    const CDibujoAntes& m_antes;
    const CModoDibujo& m_modo;
    std::vector<CRedondo>& m_redondos;
    bool m_bien = true;
};
