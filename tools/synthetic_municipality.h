#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cadastre/holder.h"
#include "cadastre/module_place.h"
#include "cadastre/parcel.h"

// A municipality that nobody owns: names, parcels and holders drawn by a number, the same for the
// same number on every machine.

namespace sintetico {

/// Draws numbers; the sequence is the same everywhere.
class CSorteo {
public:
    explicit CSorteo(std::uint64_t semilla) : m_estado(semilla) {}
    /// A number from 0 to n - 1.
    int Hasta(int n);
    bool UnoDeCada(int n) { return Hasta(n) == 0; }

private:
    std::uint64_t m_estado;
};

/// A point of the drawing, in hundredths of a metre.
struct CVertice {
    int x;
    int y;
};

/// A subparcel with its outline. A built component has none.
struct CSubparcelaDibujada {
    CSubparcela datos;
    bool construccion = false;
    std::vector<CVertice> contorno;
};

/// A holder of a number: its position among the people, and its share.
struct CParticipe {
    int persona;
    int partici;
};

struct CParcelaDibujada {
    CParcela datos;
    int numero; ///< position in `numeros`: who holds it
    int paraje; ///< position in `parajes`
    CString Tit;
    std::vector<CVertice> contorno;
    std::vector<CSubparcelaDibujada> subparcelas;
};

struct CMunicipioSintetico {
    short Ger = 45;
    short Mun = 127;
    std::vector<CModulo> modulos;
    std::vector<CParaje> parajes;
    std::vector<CTitular> personas;
    /// For each person's number all who hold its parcels, that person first.
    std::vector<std::vector<CParticipe>> numeros;
    std::vector<CParcelaDibujada> parcelas;
};

/// \param parcelas  how many parcels; the rest follows from it: polygons of about 75 parcels, half
///                  as many holders, two subparcels to a parcel
/// All surfaces are whole square metres and agree with the outlines, so the municipality is clean.
CMunicipioSintetico Genera(int parcelas, std::uint64_t semilla);

} // namespace sintetico
