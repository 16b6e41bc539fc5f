#include "evidence/table_rows.h"

#include "platform/files/cstdio_file.h"

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
