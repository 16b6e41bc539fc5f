#include "platform/files/cfile.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <memory>
#include <utility>

#include "platform/files/any_case_name.h"
#include "platform/files/in_place_output.h"
#include "platform/files/replacing_output.h"
#include "platform/files/system_files.h"

bool CFile::Open(const CString& nombre, UINT modo, CFileException* fallo,
                 CConjuntoSalidas* conjunto)
{
    m_lector.Cierra();
    m_escritor.Suelta();
    m_fallo = {};
    sistema::Error error;
    const bool escribe = (modo & modeWrite) != 0;
    std::unique_ptr<CDestino> destino;
    if (escribe && (modo & modeInPlace) != 0)
        destino = CSalidaEnSitio::Abre(nombre, m_fallo.m_causa, error);
    else if (escribe)
        destino = CSalidaReemplazo::Abre(nombre, conjunto, error);
    if (destino != nullptr)
        m_escritor.Abre(std::move(destino));
    if (m_escritor.Abierto() || (!escribe && AbreLectura(nombre, modo, error)))
        return true;
    const CFileException como(nombre, error, !escribe);
    if (!CFileException::EsCorriente(error))
        throw CFileException(como);
    if (fallo != nullptr)
        *fallo = como;
    return false;
}

bool CFile::AbreLectura(const CString& nombre, UINT modo, sistema::Error& error)
{
    std::filesystem::path ruta = sistema::Ruta(nombre);
    if ((modo & anyCase) != 0)
        ruta = SinMayusculas(ruta, error);
    return !error && m_lector.Abre(nombre, ruta, (modo & modeWhole) != 0, error);
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

void CFile::Seek(std::uint64_t posicion)
{
    m_lector.Seek(posicion);
}

void CFile::Write(const void* bytes, UINT n)
{
    m_escritor.Escribe({static_cast<const char*>(bytes), n});
}
