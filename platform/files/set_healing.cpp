#include "platform/files/set_healing.h"

#include <set>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/output_diary.h"
#include "platform/files/output_folders.h"

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;
using sistema::CEstado;

/// A file of a folder that may belong to a program that is alive; locked here if it doesn't.
/// `Error` tells what kept it from being looked at.
class CHallado {
public:
    explicit CHallado(const Ruta& ruta)
    {
        m_estado = sistema::MiraEnlace(ruta, m_error);
        if (m_error || m_estado.tipo != CEstado::Tipo::Regular)
            return;
        // Some shares lock only what is open for writing.
        m_fichero = sistema::Abre(ruta, sistema::Modo::Cambiar, m_error);
        if (m_error == std::errc::permission_denied || m_error == std::errc::read_only_file_system)
            m_fichero = sistema::Abre(ruta, sistema::Modo::Leer, m_error);
        if (m_error == std::errc::no_such_file_or_directory)
            m_error.clear(); // its program has just put it in place, or away
        if (m_fichero == sistema::kCerrado)
            return;
        const bool mio = sistema::Bloquea(m_fichero, m_error) && !m_error;
        const CEstado abierto = mio ? sistema::Mira(m_fichero, m_error) : CEstado();
        m_suelto =
            mio && !m_error && abierto.EsElMismo(sistema::MiraEnlace(ruta, m_error)) && !m_error;
    }
    CHallado(const CHallado&) = delete;
    CHallado& operator=(const CHallado&) = delete;
    ~CHallado()
    {
        Error error;
        if (m_fichero != sistema::kCerrado)
            sistema::Cierra(m_fichero, error);
    }
    bool Suelto() const { return m_suelto; }
    const Error& Fallo() const { return m_error; }
    const CEstado& Estado() const { return m_estado; }
    std::string LeeTodo(Error& error) const
    {
        std::string bytes;
        char trozo[4096];
        while (const std::size_t n =
                   sistema::LeeEn(m_fichero, trozo, sizeof trozo, bytes.size(), error))
            bytes.append(trozo, n);
        return bytes;
    }

private:
    int m_fichero = sistema::kCerrado;
    bool m_suelto = false;
    CEstado m_estado;
    Error m_error;
};

/// Gives a target back what it held before the set that its diary tells of.
void Devuelve(const CEntradaDiario& entrada)
{
    Error error;
    const Ruta antes = CReemplazo::AlLado(entrada.destino, CReemplazo::kAntes);
    const CString nombre = sistema::Nombre(entrada.destino);
    const CEstado deAntes = sistema::MiraEnlace(antes, error);
    CFileException::Exige(error, nombre);
    const CEstado deAhora = sistema::MiraEnlace(entrada.destino, error);
    CFileException::Exige(error, nombre);
    if (entrada.habia) {
        if (deAntes.tipo != CEstado::Tipo::NoHay && !deAntes.EsElMismo(deAhora))
            sistema::Renombra(antes, entrada.destino, error);
    } else if (deAhora.tipo == CEstado::Tipo::Regular && deAhora.numero == entrada.numero) {
        sistema::Borra(entrada.destino, error);
    }
    CFileException::Exige(error, nombre);
}

bool AcabaEn(const Ruta& nombre, std::string_view sufijo)
{
    return sistema::Nombre(nombre).ends_with(sufijo);
}

/// What may be done by a diary. Somebody else's is believed about the files of its own folder
/// alone, and about none where users may not touch one another's files.
class CCredito {
public:
    CCredito(const Ruta& diario, const CEstado& estado)
        : m_esMio(sistema::EsMio(estado)), m_carpeta(CarpetaDe(sistema::Entera(diario)))
    {
    }
    bool Alguno() const
    {
        Error error;
        return m_esMio || (!sistema::Mira(m_carpeta, error).EsDeTodosConDueño() && !error);
    }
    bool Cubre(const Ruta& ruta) const { return m_esMio || CarpetaDe(ruta) == m_carpeta; }

private:
    bool m_esMio;
    Ruta m_carpeta;
};

/// Heals by a diary. False where its run is alive, or it isn't to be believed.
bool SanaPorDiario(const Ruta& diario)
{
    const CHallado hallado(diario);
    if (hallado.Fallo() != std::errc::permission_denied) // else it is kept from this user
        CFileException::Exige(hallado.Fallo(), sistema::Nombre(diario));
    const CCredito credito(diario, hallado.Estado());
    if (!hallado.Suelto() || !credito.Alguno())
        return false;
    Error error;
    const CDiarioLeido leido = LeeDiario(hallado.LeeTodo(error));
    CFileException::Exige(error, sistema::Nombre(diario));
    std::set<Ruta> carpetas;
    for (const CEntradaDiario& entrada : leido.entradas) {
        if (!credito.Cubre(entrada.destino))
            continue;
        Devuelve(entrada);
        carpetas.insert(CarpetaDe(entrada.destino));
    }
    AseguraCarpetas(carpetas);
    for (const Ruta& otro : leido.diarios)
        if (credito.Cubre(otro) && AcabaEn(otro, CReemplazo::kConjunto))
            sistema::Borra(otro, error);
    sistema::Borra(diario, error);
    return true;
}

/// Puts away what a killed program left. What its target held stays if the target isn't there: on a
/// file system without second names it was the only one. Where a name was cut, so that it doesn't
/// tell the target's, the file stays as it is.
void Recoge(const Ruta& ruta)
{
    Error error;
    const std::string nombre = sistema::Nombre(ruta);
    if (AcabaEn(ruta, CReemplazo::kAntes)) {
        const Ruta destino =
            sistema::Ruta(nombre.substr(0, nombre.size() - CReemplazo::kAntes.size()));
        const bool falta = sistema::MiraEnlace(destino, error).tipo == CEstado::Tipo::NoHay;
        if (error)
            return;
        if (CReemplazo::AlLado(destino, CReemplazo::kAntes) != ruta)
            return;
        if (falta)
            return sistema::Renombra(ruta, destino, error);
    }
    sistema::Borra(ruta, error);
}

void SanaCarpeta(const Ruta& carpeta)
{
    Error error;
    const std::vector<Ruta> nombres = sistema::Lista(carpeta, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied ||
        error == std::errc::not_a_directory)
        return; // whoever opens a file there will be told
    CFileException::Exige(error, sistema::Nombre(carpeta));
    bool hayVivos = false;
    for (const Ruta& nombre : nombres)
        if (AcabaEn(nombre, CReemplazo::kConjunto))
            hayVivos = !SanaPorDiario(carpeta / nombre) || hayVivos;
    for (const Ruta& nombre : nombres) {
        const bool sobra = AcabaEn(nombre, CReemplazo::kNuevo) ||
                           (!hayVivos && AcabaEn(nombre, CReemplazo::kAntes));
        if (sobra && CHallado(carpeta / nombre).Suelto())
            Recoge(carpeta / nombre);
    }
}

} // namespace

void SanaConjuntos(const std::vector<CString>& nombres)
{
    std::set<Ruta> carpetas;
    for (const CString& nombre : nombres) {
        if (nombre.IsEmpty())
            continue;
        Error error;
        const Ruta destino = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
        if (error && !CFileException::EsCorriente(error))
            throw CFileException(nombre, error, true);
        if (!error)
            carpetas.insert(CarpetaDe(destino));
    }
    for (const Ruta& carpeta : carpetas)
        SanaCarpeta(carpeta);
}
