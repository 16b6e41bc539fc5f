#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/files/cfile.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/point.h"
#include "vexa_libs/topological_polygon.h"

// The drawing of a cadastral polygon as evidence: every outline that its topologies hold, with what
// the way back makes of it, and of one that it makes nothing of the reason. Nothing is dropped.

/// What a topology's outlines are.
enum class ClaseTopologia : std::uint8_t { Parcelas, Subparcelas, Poligonos, Hojas };

/// Those that stand beside a polygon's drawing.
inline constexpr ClaseTopologia kTopologiasDePoligono[] = {
    ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas, ClaseTopologia::Poligonos};

/// Extension of a topology, as it stands beside a drawing.
const char* ExtensionDe(ClaseTopologia que);
/// The topology with an extension, in capitals; none for another file's.
std::optional<ClaseTopologia> ClaseDeExtension(std::string_view extension);

/// How a drawing and its topologies are opened: whole, since they are read all over.
inline constexpr UINT kModoDibujo = CFile::modeRead | CFile::anyCase | CFile::modeWhole;

/// What the way back makes of an outline, and of its label.
enum class EstadoRecinto : std::uint8_t {
    Valido,
    SinRotulo,
    NoEsTexto,
    Borrado,      ///< its label is deleted
    CodigoAjeno,  ///< its label's code says something else
    FueraDeFecha, ///< its label can't be read: the walk of the topology ends here
    NoSeLlega,    ///< it stands behind such a one
    OtraClase     ///< the record is neither a parcel nor an island
};

/// The state that a label with this code gives to such an outline.
EstadoRecinto EstadoPorRotulo(ClaseTopologia que, const CString& codigo, bool borrado);

/// The state in words, in Spanish, code page 1252.
const char* NombreEstado(EstadoRecinto estado);

struct CIslaDibujada {
    std::vector<vexageo::CPunto<int>> contorno;
    double area = 0;       ///< square metres as stored, its own islands added; negative as a rule
    bool enLista = false;  ///< in the polygon's own list, or as a record behind it
    double areaPropia = 0; ///< as stored, without its own islands
};

/// An outline of a topology, with its islands.
struct CRecintoDibujado {
    /// Square metres that the rings enclose, islands taken off.
    double AreaContorno() const;
    bool Valido() const { return estado == EstadoRecinto::Valido; }
    /// It is one of a parcel's outlines, or its subparcels'.
    bool EsDeParcela() const { return Valido() && parcela >= 0; }

    EstadoRecinto estado = EstadoRecinto::SinRotulo;
    int numero = 0; ///< of the record
    CString rotulo;
    CString codigo;
    bool borrado = false;   ///< its label is marked as deleted
    int posicionRotulo = 0; ///< byte of its label in the drawing, from 1; 0 for none
    /// Where its label stands; where it has none, the point inside it.
    vexageo::CPunto<int> punto;
    vexageo::CPunto<int> centroide; ///< the record's own
    std::vector<vexageo::CPunto<int>> contorno;
    std::vector<CIslaDibujada> islas;
    double areaPropia = 0;   ///< as stored, without the islands
    double areaRegistro = 0; ///< as the way back adds it up: square metres, islands as stored
    int tramosPerdidos = 0;  ///< stretches of its boundaries that can't be read

    int parcela = -1; ///< of a valid outline: by its label, or of the parcel that it lies in
    CString letra;    ///< of a subparcel
    int pieza = 1;    ///< among those of one parcel, or of one letter in it (see `CuentaPiezas`)
    int piezas = 1;
};

/// A topology file.
struct CTopologiaDibujada {
    bool hay = false;                ///< its file could be opened
    std::uint64_t dañoEn = kSinDaño; ///< byte at which no whole record stands, and the reading ends
    std::vector<CRecintoDibujado> recintos;

    static constexpr std::uint64_t kSinDaño = ~std::uint64_t{0};
};

/// An entry of the list: a cadastral polygon's drawing.
struct CPoligonoDibujado {
    /// The topology of a kind, which is none of the sheets'.
    const CTopologiaDibujada& Topologia(ClaseTopologia que) const { return this->*Suya(que); }
    CTopologiaDibujada& Topologia(ClaseTopologia que) { return this->*Suya(que); }

    CString entrada;
    int polig = 0;          ///< the number that the entry begins with
    bool hayDibujo = false; ///< its .BIN could be opened; without it nothing else is read
    CTopologiaDibujada parcelas;
    CTopologiaDibujada subparcelas;
    CTopologiaDibujada poligonos;

private:
    static constexpr CTopologiaDibujada CPoligonoDibujado::*Suya(ClaseTopologia que)
    {
        return que == ClaseTopologia::Parcelas      ? &CPoligonoDibujado::parcelas
               : que == ClaseTopologia::Subparcelas ? &CPoligonoDibujado::subparcelas
                                                    : &CPoligonoDibujado::poligonos;
    }
};

/// Tells whether the database has a parcel, as the way back asks before it keeps an outline.
using CHayParcela = std::function<bool(int polig, int parcela)>;

/// Reads the drawing of an entry. A file that isn't there leaves its part empty; a read that fails
/// raises CFileException.
/// \param carpeta  as `DamePath` gives it
/// \param hayParcela  subparcels fall into outlines of such parcels alone; null for all
/// \param cuales      the topologies to be read; subparcels fall into no parcel without theirs
CPoligonoDibujado
LeePoligonoDibujado(const CString& carpeta, const CString& entrada,
                    const CHayParcela& hayParcela = {},
                    std::span<const ClaseTopologia> cuales = kTopologiasDePoligono);

/// Gives the outlines of a polygon their numbers and letters, each subparcel its parcel, and counts
/// their pieces: as the reading does, for a drawing that is still to be written.
void Relaciona(CPoligonoDibujado& poligono, const CHayParcela& hayParcela);

/// Counts the pieces of parcels and letters through all drawings of one polygon, which have been
/// read or related each for itself.
/// \param dibujos  in the order of the list, in which the way back walks them
void CuentaPiezas(std::span<CPoligonoDibujado> dibujos);

/// Reads the orthophoto sheets by the name of their .TOP or .BIN; empty, with `hay` false, unless
/// both are there. Raises CFileException where a read fails.
CTopologiaDibujada LeeHojasDibujadas(const CCadena& ortos);

/// Goes through the records of a topology from the file's position on. Raises CFileException where
/// a read fails.
/// \param toma  gets each, and whether it is an island of the outline in front of it
/// \return the byte at which no whole record stands, kSinDaño at the file's end
std::uint64_t
RecorreRegistros(CFile& topologia,
                 const std::function<void(const vexageo::CPoligonoTopologico&, bool)>& toma);

/// Reads the outlines of a topology from the file's position to its end or its damage. The outlines
/// have no numbers, letters and parcels yet; `Relaciona` gives them those. Raises CFileException
/// where a read fails.
CTopologiaDibujada LeeTopologiaDibujada(CFile& topologia, CFile& bin, ClaseTopologia que);

/// Goes through the entities of a .BIN, which are lines, texts and points, deleted ones included.
/// Raises CFileException where a read fails.
/// \param toma  gets each with the number of its first byte in the file, from 1
/// \return false where damage ends the drawing
bool RecorreEntidades(CFile& bin,
                      const std::function<void(int, const vexageo::CTexto<int>&)>& toma);
