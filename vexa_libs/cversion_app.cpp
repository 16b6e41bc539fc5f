#include "vexa_libs/cversion_app.h"

void CVersionApp::ReadResourceInformation()
{
    const CRecursoVersion& version = Recursos().Version();
    m_producto = version.producto;
    m_descripcion = version.descripcion;
    m_version = version.version;
    m_copyright = version.copyright;
    m_empresa = version.empresa;
}
