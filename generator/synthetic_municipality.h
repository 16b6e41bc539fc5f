#pragma once

#include <cstdint>
#include <vector>

#include "cadastre/holder.h"
#include "cadastre/module_place.h"
#include "cadastre/parcel.h"
#include "generator/lattice.h"

// A municipality that nobody owns: names, parcels and holders are drawn at random from a seed. The
// same seed gives the same municipality on every machine.

namespace sintetico {

/// Draws numbers; the sequence is the same everywhere.
class CSorteo {
public:
    explicit CSorteo(std::uint64_t semilla) : m_estado(semilla) {}
    /// A number from 0 to n - 1; n is 1 or more.
    int Hasta(int n);
    bool UnoDeCada(int n) { return Hasta(n) == 0; }

private:
    std::uint64_t m_estado;
};

/// A subparcel and its pieces; of several pieces the last one tells the surface. A built component
/// is drawn as a mark of less than half a square metre, as its ground belongs to the land's letter.
struct CSubparcelaDibujada {
    CSubparcela datos;
    bool construccion = false;
    std::vector<CRecinto> recintos;
    CString rotulo; ///< "12-a"
};

/// Somebody who holds the parcels of a number: the position among the people, and the share.
struct CParticipe {
    int persona;
    int partici;
};

struct CParcelaDibujada {
    CParcela datos;
    int numero; ///< position in `numeros`: who holds it
    int paraje; ///< position in `parajes`
    CString Tit;
    std::vector<CRecinto> recintos; ///< of several pieces the last one tells surface and position
    std::vector<CSubparcelaDibujada> subparcelas;
    CString rotulo; ///< its number
};

/// An orthophoto sheet.
struct CHoja {
    CString nombre;
    CContorno contorno;
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
    std::vector<CHoja> hojas; ///< they overlap; the earlier one counts
};

struct CMedidas {
    int parcelas = 300;
    int poligonos = 0;   ///< 0: one for every 75 parcels
    int subparcelas = 0; ///< of each parcel, 1 to 4; 0: as it comes, two on the average
};

/// Draws a municipality; half as many holders as parcels, the rest follows. All surfaces are whole
/// square metres and agree with the outlines, so it is clean.
CMunicipioSintetico Genera(const CMedidas& medidas, std::uint64_t semilla);

} // namespace sintetico
