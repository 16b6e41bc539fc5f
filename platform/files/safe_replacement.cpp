#include "platform/files/safe_replacement.h"

#include <functional>
#include <string>

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;
using Tipo = sistema::CEstado::Tipo;

/// Copies a whole file into another one, which has its content and length then, on the disk.
void Copia(int desde, int hasta, Error& error)
{
    char trozo[64 * 1024];
    std::uint64_t posicion = 0;
    sistema::Recorta(hasta, 0, error);
    while (!error) {
        const std::size_t n = sistema::LeeEn(desde, trozo, sizeof trozo, posicion, error);
        if (n == 0)
            break;
        sistema::Escribe(hasta, {trozo, n}, error);
        posicion += n;
    }
    if (!error)
        sistema::Asegura(hasta, error);
}

} // namespace

CReemplazo::Ruta CReemplazo::AlLado(const Ruta& destino, std::string_view sufijo)
{
    // A name that leaves no room for the suffix is cut, and a sum of it keeps it apart from others.
    constexpr std::size_t kNombreMasLargo = 200;
    Ruta::string_type nombre = destino.filename().native();
    if (nombre.size() > kNombreMasLargo) {
        const std::size_t suma = std::hash<Ruta::string_type>()(nombre);
        nombre = nombre.substr(0, kNombreMasLargo) + Ruta(std::to_string(suma)).native();
    }
    Ruta ruta = destino.parent_path() / nombre;
    ruta += sufijo;
    return ruta;
}

CReemplazo::Ruta CReemplazo::DestinoReal(Ruta ruta, Error& error)
{
    constexpr int kEnlacesSeguidos = 40;
    for (int i = 0; i < kEnlacesSeguidos; ++i) {
        const Tipo tipo = sistema::MiraEnlace(ruta, error).tipo;
        if (error || tipo != Tipo::Enlace)
            return ruta;
        const Ruta destino = sistema::LeeEnlace(ruta, error);
        if (error)
            return ruta;
        ruta = destino;
    }
    error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
    return ruta;
}

CReemplazo::Apertura CReemplazo::Abre(std::string_view nombre, Error& error)
{
    Desecha();
    m_destino = DestinoReal(sistema::Ruta(nombre), error);
    if (!error && !m_destino.has_filename())
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    if (!error)
        m_estado = sistema::Mira(m_destino, error);
    if (error)
        return Apertura::NoSePuede;
    switch (m_estado.tipo) {
    case Tipo::NoHay:
        return CreaTemporal(error);
    case Tipo::Regular:
        return AbreRegular(error);
    case Tipo::Carpeta:
        error = std::make_error_code(std::errc::is_a_directory);
        return Apertura::NoSePuede;
    default:
        m_fichero = sistema::Abre(m_destino, sistema::Modo::EnSitio, error);
        return Abierto() ? Apertura::Abierto : Apertura::NoSePuede;
    }
}

CReemplazo::Apertura CReemplazo::AbreRegular(Error& error)
{
    sistema::PuedeEscribir(m_destino, error);
    if (error)
        return Apertura::NoSePuede;
    const Ruta carpeta = m_destino.parent_path();
    const sistema::CEstado suya = sistema::Mira(carpeta.empty() ? Ruta(".") : carpeta, error);
    if (error)
        return Apertura::NoSePuede;
    if (!sistema::PuedeReemplazar(m_destino, m_estado, suya))
        return CreaEnSitio(error);
    const Apertura abierto = CreaTemporal(error);
    if (abierto == Apertura::NoSePuede &&
        (error == std::errc::permission_denied || error == std::errc::operation_not_permitted))
        return CreaEnSitio(error);
    return abierto;
}

int CReemplazo::TomaCerrado(const Ruta& ruta, Error& error)
{
    constexpr int kIntentos = 100;
    error.clear();
    for (int i = 0; i < kIntentos && !error; ++i) {
        const int fichero = sistema::Abre(ruta, sistema::Modo::Tomar, error);
        if (fichero == sistema::kCerrado)
            break;
        const bool mio = sistema::Bloquea(fichero, error);
        if (!mio && !error)
            error = sistema::kDeOtro;
        const sistema::CEstado estado = mio ? sistema::Mira(fichero, error) : sistema::CEstado();
        const bool deOtroUsuario = mio && !error && !sistema::EsMio(estado);
        if (deOtroUsuario) // who could write to the file, once it has its place
            sistema::Borra(ruta, error);
        // Between the two calls another program may have put it in place, or away.
        else if (mio && !error && estado.EsElMismo(sistema::MiraEnlace(ruta, error)))
            return fichero;
        Error alCerrar;
        if (mio && error && !deOtroUsuario) // nobody else's, and of no use
            sistema::Borra(ruta, alCerrar);
        sistema::Cierra(fichero, alCerrar);
    }
    if (!error)
        error = sistema::kDeOtro;
    return sistema::kCerrado;
}

CReemplazo::Apertura CReemplazo::CreaTemporal(Error& error)
{
    m_temporal = AlLado(m_destino, kNuevo);
    m_fichero = TomaCerrado(m_temporal, error);
    if (error == sistema::kDeOtro) {
        m_temporal.clear(); // it is the other program's
        return Apertura::Ocupado;
    }
    if (!error)
        sistema::Recorta(m_fichero, 0, error);
    if (!error && HabiaDestino())
        sistema::CopiaDerechos(m_fichero, m_destino, error);
    if (!error)
        return Apertura::Abierto;
    const Error causa = error;
    if (!Abierto())
        m_temporal.clear();
    Desecha();
    error = causa;
    return Apertura::NoSePuede;
}

CReemplazo::Apertura CReemplazo::CreaEnSitio(Error& error)
{
    m_temporal.clear();
    m_enSitio = sistema::Abre(m_destino, sistema::Modo::Cambiar, error);
    if (m_enSitio == sistema::kCerrado)
        return Apertura::NoSePuede;
    if (!sistema::Bloquea(m_enSitio, error) && !error) {
        Suelta();
        return Apertura::Ocupado;
    }
    if (!error)
        m_fichero = sistema::CreaAnonimo(error);
    if (!error)
        return Apertura::Abierto;
    Suelta();
    return Apertura::NoSePuede;
}

void CReemplazo::Asegura(Error& error) const
{
    sistema::Asegura(m_fichero, error);
}

void CReemplazo::Prepara(Error& error)
{
    error.clear();
    if (m_enSitio != sistema::kCerrado) {
        m_anterior = sistema::CreaAnonimo(error);
        if (!error)
            Copia(m_enSitio, m_anterior, error);
    } else if (EstaAlLado() && HabiaDestino()) {
        GuardaAnterior(error);
    }
    if (!error)
        m_paso = Paso::Preparado;
}

void CReemplazo::GuardaAnterior(Error& error)
{
    const Ruta antes = AlLado(m_destino, kAntes);
    sistema::Borra(antes, error); // what a killed program left
    if (error && error != std::errc::no_such_file_or_directory)
        return;
    // As long as it is locked nobody takes it for such. Elsewhere the diary alone tells that.
    Error ajeno;
    if (sistema::kSeReemplazaAbierto)
        m_anterior = sistema::Abre(m_destino, sistema::Modo::Leer, ajeno);
    if (m_anterior != sistema::kCerrado)
        sistema::Bloquea(m_anterior, ajeno);
    sistema::Enlaza(m_destino, antes, error);
    if (error == std::errc::operation_not_permitted ||
        error == std::errc::operation_not_supported || error == std::errc::function_not_supported)
        sistema::Renombra(m_destino, antes, error); // a file system without second names
    if (!error)
        m_antes = antes;
}

void CReemplazo::Coloca(Error& error)
{
    error.clear();
    if (m_enSitio != sistema::kCerrado) {
        m_paso = Paso::Colocado; // from the first byte on there is something to give back
        Copia(m_fichero, m_enSitio, error);
    } else if (EstaAlLado()) {
        sistema::Renombra(m_temporal, m_destino, error);
        if (error)
            return;
        m_paso = Paso::Colocado;
        if (!sistema::kSeReemplazaAbierto) // or what the target held couldn't come back
            Cierra(m_fichero, error);
    } else {
        Cierra(m_fichero, error);
    }
}

CReemplazo::Ruta CReemplazo::Acaba(bool conserva)
{
    Error error;
    Ruta anterior;
    if (conserva && !m_antes.empty()) {
        // An older one stays: a run that is wrong for the second time replaces its own tables.
        constexpr int kIntentos = 1000;
        bool libre = false;
        for (int i = 1; i <= kIntentos && !libre && !error; ++i) {
            const std::string numero = i > 1 ? "." + std::to_string(i) : "";
            anterior = AlLado(m_destino, std::string(kAnterior) + numero);
            libre = sistema::MiraEnlace(anterior, error).tipo == Tipo::NoHay && !error;
        }
        if (libre)
            sistema::Renombra(m_antes, anterior, error);
        if (!libre || error)
            anterior.clear();
    }
    if (!m_antes.empty() && anterior.empty())
        sistema::Borra(m_antes, error);
    Suelta();
    m_temporal.clear();
    m_antes.clear();
    m_paso = Paso::Nada;
    return anterior;
}

bool CReemplazo::Desecha() noexcept
{
    const bool bien = m_paso == Paso::Nada || Devuelve();
    Error error;
    if (EstaAlLado() && m_paso != Paso::Colocado)
        sistema::Borra(m_temporal, error);
    Suelta();
    m_temporal.clear();
    m_antes.clear();
    m_paso = Paso::Nada;
    return bien;
}

/// Undoes what `Prepara` and `Coloca` did.
bool CReemplazo::Devuelve() noexcept
{
    Error error;
    if (m_enSitio != sistema::kCerrado) {
        if (m_paso == Paso::Colocado)
            Copia(m_anterior, m_enSitio, error);
        return !error;
    }
    if (!EstaAlLado())
        return true;
    if (m_antes.empty()) {
        if (m_paso == Paso::Colocado)
            sistema::Borra(m_destino, error);
        return !error;
    }
    const bool esElMismo =
        sistema::MiraEnlace(m_antes, error).EsElMismo(sistema::MiraEnlace(m_destino, error));
    if (esElMismo) { // a rename between two names of one file does nothing
        sistema::Borra(m_antes, error);
        return true;
    }
    sistema::Renombra(m_antes, m_destino, error);
    if (!error)
        return true;
    // The system doesn't rename any more; by another way to the same end.
    sistema::Borra(m_destino, error);
    sistema::Enlaza(m_antes, m_destino, error);
    if (error)
        return false;
    sistema::Borra(m_antes, error);
    return true;
}

void CReemplazo::Cierra(int& fichero, Error& error) noexcept
{
    error.clear();
    if (fichero != sistema::kCerrado)
        sistema::Cierra(fichero, error);
    fichero = sistema::kCerrado;
}

void CReemplazo::Suelta() noexcept
{
    Error error;
    for (int* fichero : {&m_fichero, &m_enSitio, &m_anterior})
        Cierra(*fichero, error);
}
