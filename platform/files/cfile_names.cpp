#include "platform/files/cfile.h"

#include <algorithm>
#include <filesystem>

#include "platform/files/any_case_name.h"
#include "platform/files/content_copy.h"
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

/// Where a name of the program leads to, looked at once.
class CSitio {
public:
    explicit CSitio(const CString& nombre) : m_nombre(nombre)
    {
        sistema::Error error;
        m_ruta = CReemplazo::DestinoReal(sistema::Ruta(nombre), error, &m_estado);
        if (error && !CFileException::EsCorriente(error))
            throw CFileException(nombre, error);
    }

    /// Tells whether both are, or will be, one regular file.
    bool SeraElMismo(const CSitio& otro) const
    {
        using Tipo = sistema::CEstado::Tipo;
        if (m_estado.tipo == Tipo::Regular)
            return m_estado.EsElMismo(otro.m_estado);
        return m_estado.tipo == Tipo::NoHay &&
               sistema::SonElMismoNombre(m_ruta.filename(), otro.m_ruta.filename()) &&
               Carpeta().EsElMismo(otro.Carpeta());
    }

private:
    sistema::CEstado Carpeta() const
    {
        return Mirado(m_nombre, m_ruta.has_parent_path() ? m_ruta.parent_path() : ".");
    }

    CString m_nombre;
    std::filesystem::path m_ruta;
    sistema::CEstado m_estado;
};

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
    sistema::Error error;
    const std::filesystem::path ruta = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
    const sistema::CEstado estado = error ? sistema::CEstado() : Mirado(nombre, ruta);
    if (estado.tipo != sistema::CEstado::Tipo::Regular || estado.largo == 0)
        return {};
    const std::filesystem::path guardada = lado::De(sistema::Ruta(nombre), lado::kAnterior);
    const std::filesystem::path copia = lado::De(guardada, lado::kNuevo, lado::Marca());
    CopiaFichero(ruta, copia, sistema::Modo::Crear, error);
    if (!error)
        sistema::Renombra(copia, guardada, error);
    CFileException::Exige(error, sistema::Nombre(guardada));
    return sistema::Nombre(guardada);
}

bool CFile::EsAlguno(const CString& nombre, const std::vector<CString>& otros)
{
    if (otros.empty())
        return false;
    const sistema::CEstado suyo = Mirado(nombre, sistema::Ruta(nombre));
    return suyo.tipo != sistema::CEstado::Tipo::NoHay &&
           std::any_of(otros.begin(), otros.end(), [&](const CString& otro) {
               return suyo.EsElMismo(Mirado(otro, sistema::Ruta(otro)));
           });
}

bool CFile::SeriaElMismo(const CString& uno, const CString& otro)
{
    return !Repetida({uno, otro}).IsEmpty();
}

CString CFile::Repetida(const std::vector<CString>& nombres)
{
    std::vector<CSitio> vistos;
    for (const CString& nombre : nombres) {
        if (nombre.IsEmpty())
            continue;
        const CSitio sitio(nombre);
        if (std::any_of(vistos.begin(), vistos.end(),
                        [&](const CSitio& otro) { return sitio.SeraElMismo(otro); }))
            return nombre;
        vistos.push_back(sitio);
    }
    return {};
}
