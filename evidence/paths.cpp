#include "evidence/paths.h"

#include "platform/files/system_files.h"
#include "platform/plain_texts.h"

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
    // By the letters: where memory runs out the library's own paths can't be joined safely.
    const std::string_view separador = sistema::kSeparadores.substr(0, 1);
    const bool cerrada =
        carpeta.IsEmpty() ||
        sistema::kSeparadores.find(std::string_view(carpeta).back()) != std::string_view::npos;
    return cerrada ? carpeta + nombre : carpeta + separador + nombre;
}

bool NoSeHalla(const CString& nombre, const sistema::Error& error)
{
    const CFileException fallo(nombre, error, true);
    if (error && !fallo.SeVe())
        throw CFileException(fallo);
    return static_cast<bool>(error);
}

bool HayFichero(const CString& nombre)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(nombre), error);
    return !NoSeHalla(nombre, error) && estado.tipo == sistema::CEstado::Tipo::Regular;
}

CString NombreSinCarpeta(const CString& nombre)
{
    const CString solo = sistema::Nombre(sistema::Ruta(nombre).filename());
    return solo.IsEmpty() ? nombre : solo;
}

std::optional<std::filesystem::file_time_type> FechaDe(const CString& nombre)
{
    sistema::Error error;
    const auto fecha = std::filesystem::last_write_time(sistema::Ruta(nombre), error);
    return NoSeHalla(nombre, error) ? std::nullopt : std::optional(fecha);
}

bool AbreSiHay(CFile& fichero, const CString& nombre, UINT modo)
{
    CFileException fallo;
    return !nombre.IsEmpty() && (fichero.Open(nombre, CFile::modeRead | modo, &fallo) ||
                                 !NoSeHalla(nombre, fallo.m_causa));
}

void CreaSalida(CFile& fichero, const CString& nombre, CConjuntoSalidas& todas)
{
    CFileException fallo;
    if (!fichero.Open(nombre, CFile::modeCreate | CFile::modeWrite, &fallo, &todas))
        throw CFileException(fallo);
}

CString EnUnaLinea(const CFileException& fallo)
{
    CString texto = fallo.Mensaje();
    texto.Replace(".\n", ". ");
    texto.Replace(":\n  ", ": "); // a list, a line each
    texto.Replace("\n  ", ", ");
    texto.Replace("\n", ": ");
    return texto;
}
