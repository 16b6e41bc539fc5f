#pragma once

#include <map>
#include <span>
#include <utility>
#include <vector>

#include "evidence/drawn_polygon.h"

// A parcel, or a letter of a parcel, that stands in several outlines. The way back takes the last
// one alone, and loses the surface of the others.

/// The outlines of one parcel, or letter, in the order of their records.
class CPiezas {
public:
    void Toma(const CRecintoDibujado& recinto) { m_recintos.push_back(&recinto); }

    const std::vector<const CRecintoDibujado*>& Recintos() const { return m_recintos; }
    const CRecintoDibujado& Ultima() const { return *m_recintos.back(); }
    /// Square metres as the way back adds them up, of all and of those that it loses.
    double Area() const { return Suma(m_recintos.size()); }
    double AreaPerdida() const { return Suma(m_recintos.size() - 1); }

private:
    double Suma(std::size_t primeras) const;

    std::vector<const CRecintoDibujado*> m_recintos;
};

/// By parcel and letter, which is empty for the outlines of parcels.
using CClavePiezas = std::pair<int, CString>;
CClavePiezas ClaveDePieza(const CRecintoDibujado& recinto);

/// All valid outlines that belong to a parcel. They must stay where they are.
std::map<CClavePiezas, CPiezas> ReunePiezas(const std::vector<CRecintoDibujado>& recintos);
/// The same of all drawings of one polygon.
std::map<CClavePiezas, CPiezas> ReunePiezas(std::span<const CPoligonoDibujado> dibujos,
                                            ClaseTopologia que);

/// "la parcela 12", "la letra a de la parcela 12"
CString NombreDePieza(const CRecintoDibujado& recinto, ClaseTopologia que);
