#include "platform/files/safe_replacement.h"

#include <utility>

#include "platform/files/output_folders.h"
#include "platform/files/side_names.h"

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;
using Tipo = sistema::CEstado::Tipo;

bool NoHaySegundosNombres(const Error& error)
{
    return error == std::errc::operation_not_permitted ||
           error == std::errc::operation_not_supported ||
           error == std::errc::function_not_supported;
}

bool SinDerecho(const Error& error)
{
    return error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
           error == std::errc::read_only_file_system;
}

} // namespace

CReemplazo::Ruta CReemplazo::DestinoReal(Ruta ruta, Error& error, sistema::CEstado* estado)
{
    constexpr int kEnlacesSeguidos = 40;
    for (int i = 0; i < kEnlacesSeguidos; ++i) {
        const sistema::CEstado enlace = sistema::MiraEnlace(ruta, error);
        if (error || enlace.tipo != Tipo::Enlace) {
            if (estado != nullptr)
                *estado = enlace;
            return ruta;
        }
        const sistema::CEstado carpeta = sistema::Mira(CarpetaDe(ruta), error);
        if (!error && !sistema::SePuedeSeguir(enlace, carpeta))
            error = std::make_error_code(std::errc::permission_denied);
        const Ruta destino = error ? Ruta() : sistema::LeeEnlace(ruta, error);
        if (error)
            return ruta;
        ruta = destino;
    }
    error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return ruta;
}

CReemplazo::Apertura CReemplazo::Abre(std::string_view nombre, std::string_view marca, Error& error)
{
    Desecha();
    m_estado = {};
    m_destino = DestinoReal(sistema::Ruta(nombre), error, &m_estado);
    if (!error && !m_destino.has_filename())
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    if (error)
        return Apertura::NoSePuede;
    switch (m_estado.tipo) {
    case Tipo::NoHay:
    case Tipo::Regular:
        return AbreRegular(marca, error);
    case Tipo::Carpeta:
        error = std::make_error_code(std::errc::is_a_directory);
        return Apertura::NoSePuede;
    default:
        m_fichero = sistema::Abre(m_destino, sistema::Modo::EnSitio, error);
        return Abierto() ? Apertura::Abierto : Apertura::NoSePuede;
    }
}

CReemplazo::Apertura CReemplazo::AbreRegular(std::string_view marca, Error& error)
{
    if (HabiaDestino())
        sistema::PuedeEscribir(m_destino, error);
    if (error)
        return Apertura::NoSePuede;
    const sistema::Bloqueo bloqueo = m_candado.Toma(lado::De(m_destino, lado::kCandado), error);
    if (!error && bloqueo == sistema::Bloqueo::DeOtro)
        return Apertura::Ocupado;
    Error alMirar;
    const bool alLado = PuedeIrAlLado(alMirar);
    if (!alMirar && !error && alLado && CreaTemporal(marca, error) == Apertura::Abierto)
        return Apertura::Abierto;
    if (!alMirar && HabiaDestino() && (!alLado || SinDerecho(error)))
        return CreaEnSitio(marca, error);
    if (alMirar)
        error = alMirar;
    m_candado.Suelta();
    return Apertura::NoSePuede;
}

/// Tells whether a new file may take the target's place, of which it takes note anew: whoever had
/// its lock until now may have put another file there.
bool CReemplazo::PuedeIrAlLado(Error& error)
{
    const sistema::CEstado ahora = sistema::MiraEnlace(m_destino, error);
    if (ahora.tipo == Tipo::Regular)
        m_estado = ahora;
    if (error || !HabiaDestino())
        return !error;
    const sistema::CEstado carpeta = sistema::Mira(CarpetaDe(m_destino), error);
    return !error && sistema::PuedeReemplazar(m_destino, m_estado, carpeta);
}

CReemplazo::Apertura CReemplazo::CreaTemporal(std::string_view marca, Error& error)
{
    Ruta temporal = lado::De(m_destino, lado::kNuevo, marca);
    m_fichero = sistema::Abre(temporal, sistema::Modo::Crear, error);
    if (!Abierto())
        return Apertura::NoSePuede;
    m_temporal = std::move(temporal);
    m_suyo = sistema::Mira(m_fichero, error);
    if (!error && HabiaDestino())
        sistema::CopiaDerechos(m_fichero, m_destino, error);
    if (!error)
        return Apertura::Abierto;
    Error alBorrar;
    sistema::Borra(m_temporal, alBorrar);
    m_fichero = {};
    m_temporal.clear();
    return Apertura::NoSePuede;
}

CReemplazo::Apertura CReemplazo::CreaEnSitio(std::string_view marca, Error& error)
{
    m_enSitio = sistema::Abre(m_destino, sistema::Modo::Cambiar, error);
    const sistema::Bloqueo bloqueo =
        error ? sistema::Bloqueo::NoHay : sistema::Bloquea(m_enSitio, error);
    if (!error && bloqueo != sistema::Bloqueo::DeOtro)
        CreaCopia(marca, error);
    if (m_anterior != sistema::kCerrado)
        m_fichero = sistema::CreaAnonimo(error);
    if (Abierto())
        return Apertura::Abierto;
    Error alBorrar;
    if (!m_temporal.empty())
        sistema::Borra(m_temporal, alBorrar);
    m_temporal.clear();
    Suelta();
    return error ? Apertura::NoSePuede : Apertura::Ocupado;
}

/// Makes the file for what a target that is overwritten in its place holds: beside it, where the
/// next run finds it if this one is killed, or without a name where the folder takes no file.
void CReemplazo::CreaCopia(std::string_view marca, Error& error)
{
    Ruta copia = lado::De(m_destino, lado::kNuevo, marca);
    m_anterior = sistema::Abre(copia, sistema::Modo::CrearPrivado, error);
    if (SinDerecho(error) || error == std::errc::file_exists) // what grew there couldn't go
        m_anterior = sistema::CreaAnonimo(error);
    else if (!error)
        m_temporal = std::move(copia);
    Error quedaPrivada;
    if (!m_temporal.empty())
        sistema::CopiaDerechos(m_anterior, m_destino, quedaPrivada);
}

void CReemplazo::Prepara(std::string_view marca, Error& error)
{
    error.clear();
    if (EstaEnSitio())
        GuardaCopia(marca, error);
    else if (DejaRastro())
        ApartaLoQueHabia(marca, error);
    if (error)
        return;
    m_paso = Paso::Preparado;
    if (EstaEnSitio())
        m_escritoMientras = !EsComoAlAbrir(sistema::Mira(m_enSitio, error));
    else if (!m_antes.empty())
        m_escritoMientras = !EsComoAlAbrir(sistema::MiraEnlace(m_antes, error));
}

/// Tells whether what the target holds is as old and as long as what it held when the output was
/// opened.
bool CReemplazo::EsComoAlAbrir(const sistema::CEstado& ahora) const
{
    return HabiaDestino() && ahora.escrito == m_estado.escrito && ahora.largo == m_estado.largo;
}

void CReemplazo::GuardaCopia(std::string_view marca, Error& error)
{
    CopiaContenido(m_enSitio, m_anterior, error);
    if (error || m_temporal.empty())
        return;
    // It has the name by which it is given back only when it is whole.
    Ruta antes = lado::De(m_destino, lado::kAntes, marca);
    sistema::Renombra(m_temporal, antes, error);
    if (error)
        return;
    m_antes = std::move(antes);
    m_temporal.clear();
}

void CReemplazo::ApartaLoQueHabia(std::string_view marca, Error& error)
{
    Ruta antes = lado::De(m_destino, lado::kAntes, marca);
    sistema::Enlaza(m_destino, antes, error);
    if (!error) {
        m_antes = std::move(antes);
        return;
    }
    const Error causa = error;
    if (!HabiaDestino() && causa == std::errc::no_such_file_or_directory) {
        error.clear(); // nothing is to be kept
        return;
    }
    const Tipo tipo = sistema::MiraEnlace(m_destino, error).tipo;
    if (error)
        return;
    if (tipo == Tipo::Carpeta) // it has come there meanwhile
        error = std::make_error_code(std::errc::is_a_directory);
    else if (tipo != Tipo::NoHay && NoHaySegundosNombres(causa))
        sistema::Renombra(m_destino, antes, error);
    else if (tipo != Tipo::NoHay || HabiaDestino())
        error = causa;
    else
        return; // nothing is to be kept
    if (!error)
        m_antes = std::move(antes);
}

void CReemplazo::Coloca(Error& error)
{
    error.clear();
    if (EstaEnSitio()) {
        m_paso = Paso::Colocado; // from the first byte on there is something to give back
        CopiaContenido(m_fichero, m_enSitio, error);
    } else if (DejaRastro()) {
        sistema::Renombra(m_temporal, m_destino, error);
        if (error)
            return;
        m_paso = Paso::Colocado;
        Error alMirar;
        m_colocado = sistema::Mira(m_fichero, alMirar);
        if (!sistema::kSeReemplazaAbierto) // or what the target held couldn't come back
            m_fichero.Cierra(error);
    } else {
        m_fichero.Cierra(error);
    }
}

bool CReemplazo::SigueColocado(Error& error) const
{
    error.clear();
    return EstaEnSitio() || !DejaRastro() || EsNuestro(sistema::MiraEnlace(m_destino, error));
}

/// Tells whether a file is the output. Some shares number a file by its name, so that it has
/// another number once it is placed; on some disks its number by the open file is true before that
/// alone.
bool CReemplazo::EsNuestro(const sistema::CEstado& estado) const
{
    return estado.EsElMismo(m_suyo) || estado.EsElMismo(m_colocado);
}

void CReemplazo::Conserva() noexcept
{
    // An older one stays: a run that is wrong for the second time replaces its own tables.
    Error error;
    if (!m_antes.empty() && m_conservado.ruta.empty())
        m_conservado = GuardaComoAnterior(m_antes, m_destino, error);
}

void CReemplazo::Acaba() noexcept
{
    Error error;
    if (!m_antes.empty())
        sistema::Borra(m_antes, error);
    m_temporal.clear();
    m_antes.clear();
    m_paso = Paso::Nada;
    Suelta();
}

bool CReemplazo::Desecha() noexcept
{
    const bool bien = m_paso == Paso::Nada || Devuelve();
    Error error;
    if (m_paso != Paso::Nada && m_conservado.esNuevo) // the target has it again
        sistema::Borra(m_conservado.ruta, error);
    if (!m_temporal.empty() && m_paso != Paso::Colocado)
        sistema::Borra(m_temporal, error);
    m_temporal.clear();
    m_antes.clear();
    m_conservado = {};
    m_colocado = {};
    m_escritoMientras = false;
    m_paso = Paso::Nada;
    Suelta();
    return bien;
}

/// Undoes what `Prepara` and `Coloca` did.
bool CReemplazo::Devuelve() noexcept
{
    if (EstaEnSitio())
        return DevuelveEnSitio();
    if (!DejaRastro())
        return true;
    Error error;
    const sistema::CEstado ahora = sistema::MiraEnlace(m_destino, error);
    if (error) // a copy goes into the file that was placed, whatever stands at its name
        return m_paso == Paso::Colocado && !m_antes.empty() && CopiaDeVuelta();
    const bool esNuestro = EsNuestro(ahora);
    if (!m_antes.empty())
        return DevuelveSegundo(esNuestro, ahora.tipo == Tipo::NoHay);
    if (esNuestro)
        sistema::Borra(m_destino, error);
    return !error;
}

/// Gives a target that was overwritten in its place its bytes again.
bool CReemplazo::DevuelveEnSitio() noexcept
{
    Error error;
    if (m_paso == Paso::Colocado)
        CopiaContenido(m_anterior, m_enSitio, error);
    const bool devuelto = !error;
    if (devuelto && !m_antes.empty())
        sistema::Borra(m_antes, error);
    return devuelto;
}

/// Gives the target back the file that has a second name.
/// \param esNuestro  the target is the file that this output placed
/// \param falta      nothing stands at its name
bool CReemplazo::DevuelveSegundo(bool esNuestro, bool falta) noexcept
{
    Error error;
    if (esNuestro || falta) {
        sistema::Renombra(m_antes, m_destino, error);
        return !error || (esNuestro && CopiaDeVuelta());
    }
    sistema::Borra(m_antes, error); // what it held stands there, or what another run has placed
    m_conservado = {};              // and then this is all that is left of it
    return true;
}

/// Where nothing can be renamed any more, what the target held comes back into the file that was
/// placed there.
bool CReemplazo::CopiaDeVuelta() noexcept
{
    Error error;
    sistema::CAbierto antes = sistema::Abre(m_antes, sistema::Modo::Leer, error);
    if (!error && Abierto())
        CopiaContenido(antes, m_fichero, error);
    const bool devuelto = !error && Abierto();
    antes = {};
    if (devuelto)
        sistema::Borra(m_antes, error);
    return devuelto;
}

void CReemplazo::Suelta() noexcept
{
    for (sistema::CAbierto* fichero : {&m_fichero, &m_enSitio, &m_anterior})
        *fichero = {};
    m_candado.Suelta();
}
