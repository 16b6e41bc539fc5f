#include "evidence/gis/writing/drawings_as_read.h"

#include <algorithm>

#include "cadastre/file_extensions.h"
#include "evidence/paths.h"

namespace {

sistema::CEstado EstadoDe(const CString& nombre)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(nombre), error);
    CFileException::Exige(error, nombre);
    return estado;
}

bool SigueIgual(const sistema::CEstado& antes, const sistema::CEstado& ahora)
{
    using Tipo = sistema::CEstado::Tipo;
    if (antes.tipo == Tipo::NoHay || ahora.tipo == Tipo::NoHay)
        return antes.tipo == ahora.tipo;
    return antes.EsElMismo(ahora) && antes.largo == ahora.largo && antes.escrito == ahora.escrito;
}

} // namespace

void CComoEstaban::Apunta(const CString& base, std::span<const ClaseTopologia> clases)
{
    Apunta(ConExtension(base, kExtensionDibujo));
    for (const ClaseTopologia clase : clases)
        Apunta(ConExtension(base, ExtensionDe(clase)));
}

void CComoEstaban::Apunta(const CString& nombre)
{
    const CString enDisco = CFile::EnDisco(nombre, m_nombres);
    m_estados.emplace(enDisco, EstadoDe(enDisco));
}

CString CComoEstaban::Cambiado() const
{
    const auto cambiado = std::ranges::find_if(
        m_estados, [](const auto& suyo) { return !SigueIgual(suyo.second, EstadoDe(suyo.first)); });
    return cambiado == m_estados.end() ? CString() : cambiado->first;
}
