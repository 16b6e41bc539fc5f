#include "platform/files/cfile.h"

#include <algorithm>
#include <filesystem>

#include "platform/files/any_case_name.h"
#include "platform/files/safe_replacement.h"
#include "platform/files/side_names.h"
#include "platform/files/system_files.h"

// What the names of files lead to, and whether it is one file.

namespace {

/// What stands at a path that the program knows by a name. A fault is no answer: two files that
/// can't be told apart could be one.
sistema::CEstado Mirado(const CString& nombre, const std::filesystem::path& ruta)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(ruta, error);
    if (error && !CFileException::EsCorriente(error))
        throw CFileException(nombre, error);
    return estado;
}

std::filesystem::path Destino(const CString& nombre)
{
    sistema::Error error;
    std::filesystem::path ruta = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
    if (error && !CFileException::EsCorriente(error))
        throw CFileException(nombre, error);
    return ruta;
}

} // namespace

CString CFile::RutaCompleta(const CString& nombre)
{
    return sistema::Nombre(sistema::EnteraSinPuntos(sistema::Ruta(nombre)));
}

CString CFile::EnDisco(const CString& nombre, CNombresEnDisco& nombres)
{
    sistema::Error error;
    const std::filesystem::path ruta = nombres.Busca(sistema::Ruta(nombre), error);
    if (error)
        throw CFileException(nombre, error, true);
    return sistema::Nombre(ruta);
}

CString CFile::GuardaAnterior(const CString& nombre)
{
    constexpr std::size_t kTrozo = std::size_t{64} * 1024;
    CFile fichero;
    if (!fichero.Open(nombre, modeRead) || fichero.GetLength() == 0)
        return {};
    CString anterior = sistema::Nombre(lado::De(sistema::Ruta(nombre), lado::kAnterior));
    CFile copia;
    CFileException fallo;
    if (!copia.Open(anterior, modeCreate | modeWrite, &fallo))
        throw CFileException(fallo);
    for (auto tramo = fichero.Tramo(kTrozo); !tramo.empty(); tramo = fichero.Tramo(kTrozo))
        copia.Write(tramo.data(), static_cast<UINT>(tramo.size()));
    copia.Close();
    return anterior;
}

bool CFile::EsElMismo(const CString& uno, const CString& otro)
{
    return Mirado(uno, sistema::Ruta(uno)).EsElMismo(Mirado(otro, sistema::Ruta(otro)));
}

bool CFile::EsAlguno(const CString& nombre, const std::vector<CString>& otros)
{
    return std::any_of(otros.begin(), otros.end(),
                       [&](const CString& otro) { return EsElMismo(nombre, otro); });
}

bool CFile::SeriaElMismo(const CString& uno, const CString& otro)
{
    using Tipo = sistema::CEstado::Tipo;
    if (uno.IsEmpty() || otro.IsEmpty())
        return false;
    const std::filesystem::path ruta = Destino(uno);
    const std::filesystem::path otra = Destino(otro);
    const sistema::CEstado estado = Mirado(uno, ruta);
    if (estado.tipo == Tipo::Regular)
        return estado.EsElMismo(Mirado(otro, otra));
    const auto carpeta = [](const CString& nombre, const std::filesystem::path& destino) {
        return Mirado(nombre, destino.has_parent_path() ? destino.parent_path() : ".");
    };
    return estado.tipo == Tipo::NoHay &&
           sistema::SonElMismoNombre(ruta.filename(), otra.filename()) &&
           carpeta(uno, ruta).EsElMismo(carpeta(otro, otra));
}
