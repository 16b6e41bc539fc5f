#include "evidence/gis/reading/archive_copy.h"

#include <filesystem>
#include <stdexcept>

#include <cpl_conv.h>
#include <cpl_string.h>
#include <cpl_vsi.h>

namespace {

/// Where no variable names a folder for such, GDAL's own is the current one: the user's.
std::string NombreTemporal()
{
    const std::string nombre = CPLGenerateTempFilename("vexa");
    const std::string carpeta = CPLGetPath(nombre.c_str());
    return carpeta.empty() || carpeta == "."
               ? (std::filesystem::temp_directory_path() / CPLGetFilename(nombre.c_str())).string()
               : nombre;
}

/// Copies a file of so many bytes. False where that fails; GDAL's own copy takes what it can't
/// read for the end.
bool CopiaEntero(const std::string& nombre, const std::string& copia, vsi_l_offset largo)
{
    CPLErrorReset();
    VSIStatBufL hecho;
    return CPLCopyFile(copia.c_str(), nombre.c_str()) == 0 && CPLGetLastErrorType() < CE_Failure &&
           VSIStatL(copia.c_str(), &hecho) == 0 &&
           static_cast<vsi_l_offset>(hecho.st_size) == largo;
}

} // namespace

bool CCopiaDeArchivo::HaceFalta(const char* nombre)
{
    return STARTS_WITH_CI(nombre, "/vsi");
}

CCopiaDeArchivo::CCopiaDeArchivo(const std::string& lista)
    : m_origen(lista.substr(0, lista.rfind('/'))), m_carpeta(NombreTemporal())
{
    constexpr long kSoloSuyo = 0700; // holders' names are among the data
    if (VSIMkdir(m_carpeta.c_str(), kSoloSuyo) != 0)
        throw std::runtime_error("no se puede crear la carpeta " + m_carpeta);
    m_lista = m_carpeta + "/" + CPLGetFilename(lista.c_str());
    try {
        Copia();
    } catch (...) {
        CPLUnlinkTree(m_carpeta.c_str());
        throw;
    }
}

CCopiaDeArchivo::~CCopiaDeArchivo()
{
    CPLUnlinkTree(m_carpeta.c_str());
}

void CCopiaDeArchivo::Copia()
{
    constexpr vsi_l_offset kMayor = vsi_l_offset{1} << 31U; // bytes of all; archives may lie
    vsi_l_offset bytes = 0;
    const CPLStringList nombres(VSIReadDir(m_origen.c_str()), TRUE);
    for (int i = 0; i < nombres.size(); ++i) {
        const std::string nombre = m_origen + "/" + nombres[i];
        VSIStatBufL estado;
        if (VSIStatL(nombre.c_str(), &estado) != 0 || VSI_ISREG(estado.st_mode) == 0)
            continue;
        bytes += static_cast<vsi_l_offset>(estado.st_size);
        if (bytes > kMayor)
            throw std::runtime_error("el archivo tiene demasiado: más de dos gigabytes");
        const std::string copia = m_carpeta + "/" + CPLGetFilename(nombres[i]);
        if (!CopiaEntero(nombre, copia, static_cast<vsi_l_offset>(estado.st_size)))
            throw std::runtime_error("no se puede copiar " + nombre);
    }
}

std::string CCopiaDeArchivo::Original(const std::string& nombre) const
{
    return nombre.starts_with(m_carpeta + "/") ? m_origen + nombre.substr(m_carpeta.size())
                                               : nombre;
}
