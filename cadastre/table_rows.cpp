#include "cadastre/table_rows.h"

#include <array>

#include "platform/files/cfile.h"
#include "vexa_libs/ccadena.h"

int MunicipioDeFila(std::string_view fila)
{
    std::array<std::string_view, 2> campos;
    Leetira(fila, campos);
    return LeeEntero(campos.back());
}

bool EsCabecera(std::string_view fila)
{
    return fila.starts_with("Ger");
}

bool RecorreTabla(const CString& nombre, const CTomaFila& toma, UINT modo)
{
    CStdioFile tabla;
    if (nombre.IsEmpty() || !tabla.Open(nombre, CFile::modeRead | modo))
        return false;
    bool primera = true;
    for (CString fila; tabla.ReadString(fila); primera = false)
        if (!fila.IsEmpty() && !(primera && EsCabecera(fila)))
            toma(fila);
    return true;
}
