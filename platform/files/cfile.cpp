#include "platform/files/cfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <utility>

#include "platform/files/any_case_name.h"
#include "platform/files/output_destination.h"
#include "platform/files/system_files.h"

bool CFile::Open(const CString& nombre, UINT modo, CFileException* fallo,
                 CConjuntoSalidas* conjunto)
{
    if ((modo & modeWrite) == 0) {
        CNombresEnDisco nombres;
        return Open(nombre, modo, fallo, nombres);
    }
    Suelta();
    sistema::Error error;
    auto destino = (modo & modeInPlace) != 0 ? AbreEnSitio(nombre, m_fallo.m_causa, error)
                                             : AbreReemplazo(nombre, conjunto, error);
    if (destino != nullptr)
        m_escritor.Abre(std::move(destino));
    return m_escritor.Abierto() || NoSeAbre({nombre, error}, fallo);
}

bool CFile::Open(const CString& nombre, UINT modo, CFileException* fallo, CNombresEnDisco& nombres)
{
    Suelta();
    sistema::Error error;
    std::filesystem::path ruta = sistema::Ruta(nombre);
    if ((modo & anyCase) != 0)
        ruta = nombres.Busca(ruta, error);
    const bool abierto = !error && m_lector.Abre(nombre, ruta, (modo & modeWhole) != 0, error);
    return abierto || NoSeAbre({nombre, error, true}, fallo);
}

/// Lets go of what is open.
void CFile::Suelta()
{
    m_lector.Cierra();
    m_escritor.Suelta();
    m_fallo = {};
}

/// Tells one of the usual reasons by false, and raises all others.
bool CFile::NoSeAbre(const CFileException& como, CFileException* fallo)
{
    if (!CFileException::EsCorriente(como.m_causa))
        throw CFileException(como);
    if (fallo != nullptr)
        *fallo = como;
    return false;
}

void CFile::Close()
{
    m_lector.Cierra();
    if (m_escritor.Abierto())
        m_escritor.Cierra();
}

void CFile::Flush()
{
    if (m_escritor.Abierto())
        m_escritor.Vuelca();
}

UINT CFile::Read(void* bytes, UINT n)
{
    auto* destino = static_cast<char*>(bytes);
    UINT leidos = 0;
    while (leidos < n) {
        const std::string_view resto = m_lector.Resto(1);
        if (resto.empty())
            break;
        const std::size_t trozo = std::min(resto.size(), std::size_t{n} - leidos);
        std::memcpy(destino + leidos, resto.data(), trozo);
        m_lector.Consume(trozo);
        leidos += static_cast<UINT>(trozo);
    }
    return leidos;
}

std::string_view CFile::Tramo(std::size_t n)
{
    const std::string_view tramo = m_lector.Resto(n).substr(0, n);
    m_lector.Consume(tramo.size());
    return tramo;
}
