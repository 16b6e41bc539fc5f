#include "cadastre/table_rows.h"

#include <array>

#include "platform/cfile.h"
#include "vexa_libs/ccadena.h"

bool RecorreTabla(const CString& nombre, const CTomaFila& toma, UINT modo)
{
    CStdioFile tabla;
    if (nombre.IsEmpty() || !tabla.Open(nombre, CFile::modeRead | CFile::typeText | modo))
        return false;
    std::array<std::string_view, tabla::kCampos> campos;
    bool primera = true;
    for (CString fila; tabla.ReadString(fila); primera = false) {
        const std::string_view texto = fila;
        if (texto.empty() || (primera && texto.starts_with("Ger")))
            continue;
        Leetira(texto, campos);
        toma(texto, campos);
    }
    return true;
}
