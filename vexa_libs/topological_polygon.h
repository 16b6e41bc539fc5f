#pragma once

#include <cstdint>
#include <vector>

#include "platform/files/cfile.h"
#include "vexa_libs/binary.h"
#include "vexa_libs/point.h"

namespace vexageo {

/// One polygon of a topology file: it points into the drawing of the same name.
class CPoligonoTopologico {
public:
    /// Reads the record at the file's position and moves behind it. False, with nothing changed
    /// here, at the end of the file and where no whole record stands: a wrong mark or sum, lengths
    /// that pass the file's end, bytes left over, islands more than 16 deep, an area that is no
    /// finite number. Behind a false the file stands nowhere in particular. Raises CFileException
    /// where a read fails.
    /// \param dañado  where it isn't null, becomes true for a false that isn't the file's end
    bool Read(CFile* fichero, bool* dañado = nullptr);
    /// The same for the record of an island alone; where another one stands, or none, the file
    /// stays in front of it.
    bool ReadIsla(CFile* fichero);
    /// Writes the record. Raises CFileException.
    void Write(CFile* fichero) const;

    int NumPoligono() const { return m_numero; }
    void NumPoligono(int numero) { m_numero = numero; }
    bool EsParcela() const { return m_clase == kParcela; }
    bool EsIsla() const { return m_clase == kIsla; }
    std::int16_t Clase() const { return m_clase; }
    void Clase(std::int16_t clase) { m_clase = clase; }
    const CPunto<int>& Centroide() const { return m_centroide; }
    void Centroide(const CPunto<int>& punto) { m_centroide = punto; }
    const CPunto<int>& PuntoInterior() const { return m_interior; }
    void PuntoInterior(const CPunto<int>& punto) { m_interior = punto; }
    CMaximas<int>& Maximas() { return m_maximas; }
    const CMaximas<int>& Maximas() const { return m_maximas; }
    /// Square metres, with the islands of its list added as they are stored: negative as a rule.
    double Area() const;
    /// Square metres as stored, without the islands.
    double AreaPropia() const { return m_area; }
    void AreaPropia(double area) { m_area = area; }

    /// Position in the drawing of the text that names the polygon, counted from 1.
    int OffsetCentroide() const { return m_offsetCentroide; }
    void OffsetCentroide(int offset) { m_offsetCentroide = offset; }
    bool TieneCentroide() const { return m_offsetCentroide > 0; }
    /// The same as a position in whatever holds the drawing's entities; -1 for none.
    int IndiceCentroide() const { return m_indiceCentroide; }
    void IndiceCentroide(int indice) { m_indiceCentroide = indice; }

    /// The boundary: positions in the drawing of its lines, counted from 1, in order; a negative
    /// one is of a line that runs the other way.
    int Tramos() const { return static_cast<int>(m_tramos.size()); }
    int OffsetTramo(int i) const { return m_tramos[static_cast<std::size_t>(i)]; }
    void InsertaTramo(int offset) { m_tramos.push_back(offset); }
    /// Numbers that the library keeps beside the stretches. CTopologia puts its own there.
    int Indices() const { return static_cast<int>(m_indices.size()); }
    int IndiceTramos(int i) const { return m_indices[static_cast<std::size_t>(i)]; }
    void IndiceNuevo(int indice) { m_indices.push_back(indice); }
    void OlvidaIndices() { m_indices.clear(); }

    int Islas() const { return static_cast<int>(m_islas.size()); }
    /// A copy, with all islands inside it; `ListaIslas` costs nothing.
    CPoligonoTopologico Isla(int i) const { return m_islas[static_cast<std::size_t>(i)]; }
    void InsertaIsla(const CPoligonoTopologico& isla) { m_islas.push_back(isla); }
    const std::vector<CPoligonoTopologico>& ListaIslas() const { return m_islas; }

    /// Index of the polygon around it in another topology.
    int GetPadre() const { return m_padre; }
    void SetPadre(int padre) { m_padre = padre; }

    static constexpr std::int16_t kParcela = 1;
    static constexpr std::int16_t kIsla = 2;

private:
    bool LeeRegistro(CFile* fichero);
    bool LeeCuerpo(CLector& lector, int hondura);
    void EscribeCuerpo(CEscritor& escritor) const;

    int m_numero = 0;
    std::int16_t m_clase = kParcela;
    CPunto<int> m_centroide;
    CPunto<int> m_interior;
    CMaximas<int> m_maximas;
    double m_area = 0;
    std::int16_t m_propio = 0; // the library's own
    int m_offsetCentroide = 0;
    int m_indiceCentroide = -1;
    std::vector<int> m_tramos;
    std::vector<int> m_indices;
    std::vector<CPoligonoTopologico> m_islas;
    int m_padre = -1;
};

} // namespace vexageo
