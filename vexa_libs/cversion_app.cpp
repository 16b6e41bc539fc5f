#include "vexa_libs/cversion_app.h"

#include <system_error>

#include "platform/system.h"

void CVersionApp::ReadResourceInformation()
{
    const CRecursoVersion& version = Recursos().version;
    m_producto = version.producto;
    m_descripcion = version.descripcion;
    m_version = version.version;
    m_copyright = version.copyright;
    m_empresa = version.empresa;
}

void CVersionApp::ReadFileTime()
{
    std::error_code error;
    const auto fecha = std::filesystem::last_write_time(sistema::FicheroPrograma(), error);
    m_fecha = error ? std::nullopt : std::optional(fecha);
}
