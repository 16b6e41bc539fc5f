#pragma once

#include <string>

#include "report/message_index.h"
#include "report/output_file.h"

namespace informe {

/// The outlines of the drawings and the messages as features, written one by one. Coordinates are
/// the drawing's, in metres; no system of coordinates is told, as the drawing tells none.
class CGeoJson {
public:
    /// Raises CFileException, as all do.
    explicit CGeoJson(const CString& nombre);

    void Toma(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice);
    /// \param sitios  null for no drawings
    void TomaMensajes(const CRegistroLeido& registro, const CString& ficheroRegistro,
                      const CSitios* sitios);
    void Cierra();

private:
    void Rasgo(const std::string& geometria, const std::string& propiedades);
    void Recinto(const char* clase, int polig, const CRecintoDibujado& recinto,
                 const std::string& mensajes);

    CSalida m_salida;
    bool m_primero = true;
};

} // namespace informe
