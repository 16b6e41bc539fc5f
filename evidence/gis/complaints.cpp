#include "evidence/gis/complaints.h"

#include "evidence/paths.h"
#include "platform/ansi.h"

void Falla(std::string_view texto)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", ansi::AUtf8(texto).c_str());
}

void Falla(const CFileException& fallo)
{
    CPLError(CE_Failure, CPLE_FileIO, "%s", ansi::AUtf8(EnUnaLinea(fallo)).c_str());
}

void Advierte(std::string_view texto)
{
    CPLError(CE_Warning, CPLE_AppDefined, "%s", ansi::AUtf8(texto).c_str());
}
