#pragma once

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "evidence/drawn_polygon.h"
#include "evidence/gis/writing/outline_input.h"
#include "evidence/gis/writing/stretches.h"
#include "platform/files/output_set.h"

/// What is told once for many outlines: how many there were, and the first of them by name.
class CNoticias {
public:
    /// Counts an outline.
    /// \param noticia  what is told of it, code page 1252
    /// \param nombre   of the outline
    void Apunta(const char* noticia, const CString& nombre);
    /// Tells all and forgets them.
    void Dice();

private:
    struct CCuenta {
        int veces = 0;
        CString nombres;
    };
    std::map<std::string, CCuenta> m_cuentas;
};

/// How drawings are made where there is a choice.
struct CModoDibujo {
    bool admitePiezas = false;   ///< parcels and letters in several outlines are written
    bool saltaInvalidos = false; ///< outlines that can't be drawn are left out
    CNoticias* noticias = nullptr;
};

/// A drawing with its topologies, made from the outlines of one polygon or from the sheets.
class CDibujoHecho {
public:
    /// Nodes the outlines, cuts them into lines and composes the records. False, which was told,
    /// where an outline can't be drawn or stands in several pieces and the mode takes neither.
    bool Compon(const std::vector<const CRecintoEntrante*>& entrantes, const CModoDibujo& modo);

    /// Writes the drawing and the topologies with these extensions, in the order given. They take
    /// their places when `salidas` is confirmed. Raises CFileException.
    /// \param base  path of the files without their extension
    void Graba(const CString& base,
               std::initializer_list<std::pair<ClaseTopologia, const char*>> ficheros,
               CConjuntoSalidas& salidas);

private:
    bool RedondeaRecintos(const CModoDibujo& modo);
    void RodeaParcelas();
    bool ComponRegistro(CRecintoEntrante recinto, const std::vector<CAnillo>& anillos,
                        const CModoDibujo& modo);
    void ApuntaDibujado(const CRecintoEntrante& recinto, const std::vector<CAnillo>& anillos,
                        const vexageo::CPoligonoTopologico& registro);
    bool PermitePiezas(ClaseTopologia que, const CModoDibujo& modo) const;

    struct CRedondo {
        CRecintoEntrante recinto;
        std::vector<CAnillo> anillos; ///< the outer one first; no empty ones
    };
    std::vector<CRedondo> m_redondos;
    std::unique_ptr<CTramos> m_tramos;
    vexageo::CEscritorDibujo m_dibujo;
    std::map<ClaseTopologia, std::vector<vexageo::CPoligonoTopologico>> m_registros;
    CPoligonoDibujado m_dibujado; ///< the same as it will be read
};
