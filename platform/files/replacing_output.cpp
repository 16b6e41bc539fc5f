#include "platform/files/replacing_output.h"

#include "platform/files/cfile_exception.h"

std::unique_ptr<CSalidaReemplazo>
CSalidaReemplazo::Abre(const CString& nombre, CConjuntoSalidas* conjunto, sistema::Error& error)
{
    std::unique_ptr<CSalidaReemplazo> salida(new CSalidaReemplazo(nombre));
    CConjuntoSalidas& suyo = conjunto != nullptr ? *conjunto : salida->m_sola;
    salida->m_reemplazo = suyo.Abre(nombre, error);
    if (salida->m_reemplazo == nullptr)
        salida.reset();
    return salida;
}

void CSalidaReemplazo::Escribe(std::string_view bytes)
{
    sistema::Error error;
    m_reemplazo->Escribe(bytes, error);
    if (!error)
        return;
    m_reemplazo->Desecha();
    throw CFileException(m_nombre, error);
}
