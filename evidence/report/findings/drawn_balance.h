#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "evidence/drawing_findings.h"
#include "evidence/drawn_polygon.h"
#include "evidence/outline_pieces.h"
#include "evidence/report/findings/run_evidence.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/surfaces.h"

// What the drawings hold against what the way back took from them.

namespace informe {

/// A parcel whose written surface isn't that of its outlines.
struct CDesajuste {
    int polig = 0;
    int parcela = 0;
    int recintos = 0;
    std::int64_t dibujada = 0; ///< square metres of all its outlines
    int escrita = 0;
    std::string motivo; ///< empty where nothing explains it

    std::int64_t Diferencia() const { return escrita - dibujada; }
    /// Square metres of a parcel in several outlines that don't count.
    std::int64_t Perdida() const
    {
        return recintos > 1 ? std::max<std::int64_t>(-Diferencia(), 0) : 0;
    }
};

/// In which drawings of a polygon its parcels, or their letters, stand that are in several.
class CVariosDibujos {
public:
    CVariosDibujos(std::span<const CPoligonoDibujado> dibujos, ClaseTopologia que);

    /// " de 2 dibujos (001, 001B)", to be said behind the number of outlines; empty for one alone.
    std::string De(const CClavePiezas& clave) const;

private:
    std::map<CClavePiezas, std::vector<const CPoligonoDibujado*>> m_dibujos;
};

/// What no message tells of an outline.
struct CHallazgo {
    int polig = 0;
    std::string donde; ///< "parcela 12", "subparcela 12-a"
    std::string que;
    vexageo::CPunto<int> sitio;
};

/// A polygon whose files aren't all there, or don't belong together.
struct CPoligonoRoto {
    CString entrada;
    int polig = 0;
    bool parcelas = false; ///< parcels went unread by it, all or some
    bool subparcelas = false;
    std::string que;
};

/// Compares surfaces and gathers what is wrong with the drawings, polygon by polygon.
class CBalanceDibujo {
public:
    /// \param proceso  must outlive this object
    explicit CBalanceDibujo(const CProceso& proceso);

    /// Takes a polygon, each once, with all of its drawings in the order of the list: the way back
    /// takes the last outline of all.
    /// \param dibujos  whose pieces are counted through all of them
    void Toma(std::span<const CPoligonoDibujado> dibujos);
    /// How many surfaces of parcels nothing explains.
    std::int64_t SinExplicar() const;
    /// Square metres that don't count, as their parcels are in several outlines.
    std::int64_t Perdida() const;
    /// Square metres that the tables have of parcels that weren't written.
    CPerdidas DeTablaSinEscribir() const;
    /// Square metres drawn of parcels that weren't written and that the tables know nothing of.
    CPerdidas DelDibujoSolo() const;
    /// There are written surfaces to compare with.
    bool HayEscritas() const { return m_hayEscritas; }

    std::int64_t poligonos = 0; ///< drawings of polygons
    std::int64_t recintosParcela = 0;
    std::int64_t recintosSubparcela = 0;
    std::int64_t comparadas = 0; ///< parcels that are drawn and were written
    std::int64_t dibujada = 0;   ///< square metres of all their outlines
    std::int64_t escrita = 0;    ///< square metres that were written of them
    CPerdidas perdidas;          ///< by their several outlines
    CPerdidas sinEscribir;       ///< what is drawn of parcels that weren't written
    std::vector<CDesajuste> desajustes;
    std::vector<CHallazgo> hallazgos;
    std::vector<CPoligonoRoto> rotos;

private:
    void TomaDibujo(const CPoligonoDibujado& dibujo);
    void Halla(const CPoligonoDibujado& poligono, ClaseTopologia clase,
               const CVariosDibujos& varios);
    void Compara(int polig, int parcela, const CPiezas& piezas, const std::string& dibujos);
    std::string Motivo(const CDesajuste& desajuste, const CPiezas& piezas,
                       const CSuperficie& superficie, const std::string& dibujos) const;

    const CSuperficies& m_superficies;
    bool m_hayEscritas;
    std::set<CNumerosParcela> m_corregidas; // told by W304
};

/// Describes what is wrong with a polygon's files, where that costs more than an outline: a file is
/// missing, damaged, or doesn't belong to the drawing. Its `que` is empty where nothing is.
CPoligonoRoto FaltaDelPoligono(const CPoligonoDibujado& poligono);

} // namespace informe
