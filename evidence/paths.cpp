#include "evidence/paths.h"

#include "evidence/texts.h"
#include "platform/files/system_files.h"

CCadena ConExtension(const CString& nombre, const char* extension)
{
    CCadena otro = nombre;
    otro.CambiaExtension(extension);
    return otro;
}

std::string ExtensionDe(const CString& nombre)
{
    const std::string punto = EnMayusculas(sistema::Nombre(sistema::Ruta(nombre).extension()));
    return punto.empty() ? punto : punto.substr(1);
}

CString BaseDe(const CString& nombre)
{
    return sistema::Nombre(sistema::Ruta(nombre).stem());
}

CString EnCarpeta(const CString& carpeta, const CString& nombre)
{
    return sistema::Nombre(sistema::Ruta(carpeta) / sistema::Ruta(nombre));
}

bool HayFichero(const CString& nombre)
{
    sistema::Error error;
    return !nombre.IsEmpty() &&
           sistema::Mira(sistema::Ruta(nombre), error).tipo == sistema::CEstado::Tipo::Regular;
}
