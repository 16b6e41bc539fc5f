#include "report/table_rows.h"

#include <array>

#include "platform/cfile.h"
#include "vexa_libs/ccadena.h"

namespace informe {

bool RecorreTabla(const CString& nombre, const CTomaFila& toma)
{
    CStdioFile tabla;
    if (nombre.IsEmpty() || !tabla.Open(nombre, CFile::modeRead | CFile::typeText))
        return false;
    std::array<std::string_view, kCamposTabla> campos;
    CString fila;
    bool cabecera = true;
    while (tabla.ReadString(fila)) {
        if (!cabecera && !fila.IsEmpty()) {
            Leetira(fila, campos);
            toma(fila, campos);
        }
        cabecera = false;
    }
    return true;
}

} // namespace informe
