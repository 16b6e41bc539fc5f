#include "evidence/gis/complaints.h"

#include <exception>
#include <new>

#include "evidence/paths.h"
#include "platform/ansi.h"

void Falla(std::string_view texto)
{
    CPLError(CE_Failure, CPLE_AppDefined, "%s", ansi::AUtf8(texto).c_str());
}

void FallaLaExcepcion() noexcept
{
    try {
        try {
            throw;
        } catch (const CFileException& fallo) {
            CPLError(CE_Failure, CPLE_FileIO, "%s", ansi::AUtf8(EnUnaLinea(fallo)).c_str());
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& fallo) {
            FallaCon("Fallo del programa: %s", fallo.what());
        }
    } catch (...) { // in words that need no memory
        CPLError(CE_Failure, CPLE_OutOfMemory, "No hay memoria para seguir");
    }
}

void Advierte(std::string_view texto)
{
    CPLError(CE_Warning, CPLE_AppDefined, "%s", ansi::AUtf8(texto).c_str());
}
