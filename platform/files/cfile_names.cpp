#include "platform/files/cfile.h"

#include <algorithm>
#include <filesystem>

#include "platform/files/any_case_name.h"
#include "platform/files/content_copy.h"
#include "platform/files/output_folders.h"
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

/// The path from the root, as far as the system tells without links.
std::filesystem::path SinEnlaces(const std::filesystem::path& ruta)
{
    std::error_code error;
    const auto entera = std::filesystem::weakly_canonical(sistema::Entera(ruta), error);
    return error ? sistema::EnteraSinPuntos(ruta) : entera;
}

/// Tells whether one file or folder stands at both paths. Some shares give theirs no numbers; of
/// these the letters tell.
bool EsUno(const sistema::CEstado& uno, const std::filesystem::path& suya,
           const sistema::CEstado& otro, const std::filesystem::path& ruta)
{
    return uno.EsElMismo(otro) &&
           (uno.numero != 0 || sistema::SonElMismoNombre(SinEnlaces(suya), SinEnlaces(ruta)));
}

/// Tells whether another run is writing a file. Where that can't be asked, nobody is kept out.
bool LoEscribeOtro(const std::filesystem::path& ruta)
{
    sistema::Error error;
    const sistema::CAbierto fichero = sistema::Abre(ruta, sistema::Modo::Leer, error);
    return fichero != sistema::kCerrado &&
           sistema::Bloquea(fichero, error) == sistema::Bloqueo::DeOtro && !error;
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
        if (m_estado.EsRegular())
            return EsUno(m_estado, m_ruta, otro.m_estado, otro.m_ruta);
        return m_estado.tipo == sistema::CEstado::Tipo::NoHay &&
               sistema::SonElMismoNombre(m_ruta.filename(), otro.m_ruta.filename()) &&
               EsUno(Mirado(m_nombre, Carpeta()), Carpeta(), Mirado(otro.m_nombre, otro.Carpeta()),
                     otro.Carpeta());
    }

private:
    std::filesystem::path Carpeta() const { return CarpetaDe(m_ruta); }

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
    if (!estado.EsRegular() || estado.largo == 0)
        return {};
    // What another run is writing isn't whole yet, and what was kept of an older one may be.
    if (LoEscribeOtro(ruta))
        throw CFileException(nombre, sistema::kDeOtro);
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
    const std::filesystem::path suya = sistema::Ruta(nombre);
    const sistema::CEstado suyo = Mirado(nombre, suya);
    return suyo.tipo != sistema::CEstado::Tipo::NoHay &&
           std::ranges::any_of(otros, [&](const CString& otro) {
               const std::filesystem::path ruta = sistema::Ruta(otro);
               return EsUno(suyo, suya, Mirado(otro, ruta), ruta);
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
        if (std::ranges::any_of(vistos, [&](const CSitio& v) { return sitio.SeraElMismo(v); }))
            return nombre;
        vistos.push_back(sitio);
    }
    return {};
}
