#pragma once

#include "evidence/report/findings/message_index.h"
#include "evidence/report/writing/json.h"
#include "evidence/report/writing/output_file.h"

namespace informe {

/// The outlines of the drawings and the messages as features, written one by one. Coordinates are
/// the drawing's, in metres; no system of coordinates is told, as the drawing tells none.
class CGeoJson {
public:
    static constexpr std::string_view kPrincipio = ///< how it begins
        R"({"type":"FeatureCollection","nota":"Coordenadas del dibujo, en metros.","features":[)";

    /// Creates the file. This and all others raise CFileException.
    CGeoJson(const CString& nombre, CConjuntoSalidas& todas);

    /// Writes the outlines of a polygon.
    void Toma(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice);
    /// Writes the messages, behind all polygons. The log is read once more for its words.
    /// \param lugares  null for no drawings
    void TomaMensajes(const CRegistroLeido& registro, const CLugaresDeAvisos* lugares);
    void Cierra();

private:
    void Rasgo(std::invocable<CJson&> auto geometria, std::invocable<CJson&> auto propiedades);
    void Recinto(const char* clase, int polig, const CRecintoDibujado& recinto,
                 const CIndiceAvisos& indice, const std::vector<std::uint32_t>& avisos);

    CSalida m_salida;
    bool m_primero = true;
};

} // namespace informe
