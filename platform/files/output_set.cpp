#include "platform/files/output_set.h"

#include <algorithm>
#include <set>

#include "platform/files/cfile_exception.h"
#include "platform/files/output_diary.h"

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;
using sistema::CEstado;

void Exige(const Error& error, const CString& nombre)
{
    if (error)
        throw CFileException(nombre, error);
}

Ruta CarpetaDe(const Ruta& ruta)
{
    return ruta.has_parent_path() ? ruta.parent_path() : Ruta(".");
}

void AseguraCarpetas(const std::set<Ruta>& carpetas)
{
    for (const Ruta& carpeta : carpetas) {
        Error error;
        sistema::AseguraCarpeta(carpeta, error);
        Exige(error, sistema::Nombre(carpeta));
    }
}

/// The diaries of a set of outputs, one in each folder, locked as long as the set is at work.
class CDiario {
public:
    CDiario() = default;
    CDiario(const CDiario&) = delete;
    CDiario& operator=(const CDiario&) = delete;
    ~CDiario() { Cierra(); }

    void Abre(std::span<const CSalidaNombrada> salidas);
    /// Whoever reads the folder next finds nothing to heal.
    void Borra(Error& error);
    /// Brings the folders of all outputs to the disk. A single one needs it once, when it has its
    /// place; several also before the first takes its own, and when their diary is gone.
    enum class Momento { Antes, Hecho, Final };
    void AseguraCarpetas(Momento momento) const;

private:
    void EscribeUno(const Ruta& ruta, std::string_view bytes);
    void Cierra();

    std::set<Ruta> m_carpetas;
    std::vector<Ruta> m_rutas;
    std::vector<int> m_ficheros;
};

void CDiario::Abre(std::span<const CSalidaNombrada> salidas)
{
    std::vector<CEntradaDiario> entradas;
    for (const CSalidaNombrada& salida : salidas) {
        const CReemplazo& reemplazo = *salida.reemplazo;
        if (!reemplazo.EstaAlLado())
            continue;
        Error error;
        entradas.push_back(
            {reemplazo.Destino(), reemplazo.HabiaDestino(), reemplazo.Numero(error)});
        Exige(error, salida.nombre);
        if (m_carpetas.insert(CarpetaDe(reemplazo.Destino())).second)
            m_rutas.push_back(CReemplazo::AlLado(reemplazo.Destino(), CReemplazo::kConjunto));
    }
    if (entradas.size() < 2) {
        m_rutas.clear(); // one rename is done or not done
        return;
    }
    const std::string bytes = EscribeDiario(m_rutas, entradas);
    for (const Ruta& ruta : m_rutas)
        EscribeUno(ruta, bytes);
}

void CDiario::EscribeUno(const Ruta& ruta, std::string_view bytes)
{
    Error error;
    const int fichero = CReemplazo::TomaCerrado(ruta, error);
    if (fichero != sistema::kCerrado)
        m_ficheros.push_back(fichero);
    if (!error)
        sistema::Recorta(fichero, 0, error);
    if (!error)
        sistema::Escribe(fichero, bytes, error);
    if (!error)
        sistema::Asegura(fichero, error);
    Exige(error, sistema::Nombre(ruta));
}

void CDiario::Cierra()
{
    Error error;
    for (const int fichero : m_ficheros)
        sistema::Cierra(fichero, error);
    m_ficheros.clear();
}

void CDiario::Borra(Error& error)
{
    error.clear(); // they stay locked until they are gone, or another run would heal by them
    for (const Ruta& ruta : m_rutas) {
        Error suyo;
        sistema::Borra(ruta, suyo);
        if (suyo && suyo != std::errc::no_such_file_or_directory)
            error = suyo;
    }
}

void CDiario::AseguraCarpetas(Momento momento) const
{
    if (momento == Momento::Hecho || !m_rutas.empty())
        ::AseguraCarpetas(m_carpetas);
}

void Cambia(std::span<const CSalidaNombrada> salidas, CDiario& diario)
{
    Error error;
    for (const CSalidaNombrada& salida : salidas) {
        salida.reemplazo->Asegura(error);
        Exige(error, salida.nombre);
    }
    diario.Abre(salidas);
    for (const CSalidaNombrada& salida : salidas) {
        salida.reemplazo->Prepara(error);
        Exige(error, salida.nombre);
    }
    diario.AseguraCarpetas(CDiario::Momento::Antes);
    // What is written in its place goes first: it is the likelier to fail.
    for (const bool alLado : {false, true})
        for (const CSalidaNombrada& salida : salidas)
            if (salida.reemplazo->EstaAlLado() == alLado) {
                salida.reemplazo->Coloca(error);
                Exige(error, salida.nombre);
            }
    diario.AseguraCarpetas(CDiario::Momento::Hecho);
    diario.Borra(error);
    Exige(error, salidas.front().nombre);
    diario.AseguraCarpetas(CDiario::Momento::Final);
}

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
    Exige(error, nombre);
    const CEstado deAhora = sistema::MiraEnlace(entrada.destino, error);
    Exige(error, nombre);
    if (entrada.habia) {
        if (deAntes.tipo != CEstado::Tipo::NoHay && !deAntes.EsElMismo(deAhora))
            sistema::Renombra(antes, entrada.destino, error);
    } else if (deAhora.tipo == CEstado::Tipo::Regular && deAhora.numero == entrada.numero) {
        sistema::Borra(entrada.destino, error);
    }
    Exige(error, nombre);
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
        Exige(hallado.Fallo(), sistema::Nombre(diario));
    const CCredito credito(diario, hallado.Estado());
    if (!hallado.Suelto() || !credito.Alguno())
        return false;
    Error error;
    const CDiarioLeido leido = LeeDiario(hallado.LeeTodo(error));
    Exige(error, sistema::Nombre(diario));
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
    Exige(error, sistema::Nombre(carpeta));
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

void ConfirmaSalidas(std::span<const CSalidaNombrada> salidas)
{
    if (salidas.empty())
        return;
    CDiario diario;
    try {
        Cambia(salidas, diario);
    } catch (...) {
        bool devueltas = true;
        for (const CSalidaNombrada& salida : salidas)
            devueltas = salida.reemplazo->Desecha() && devueltas;
        Error error;
        if (devueltas) // else the next run finds the diary and heals by it
            diario.Borra(error);
        throw;
    }
    for (const CSalidaNombrada& salida : salidas)
        salida.reemplazo->Acaba();
}

void CConjuntoSalidas::Sana(const std::vector<CString>& nombres)
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

CReemplazo::Apertura CConjuntoSalidas::Reserva(const CString& nombre)
{
    Error error;
    CSalida& salida = m_salidas.emplace_back();
    salida.nombre = nombre;
    const auto apertura = salida.reemplazo.Abre(nombre, error);
    if (apertura != CReemplazo::Apertura::Abierto)
        m_salidas.pop_back();
    return apertura;
}

CReemplazo* CConjuntoSalidas::Abre(const CString& nombre, Error& error)
{
    error.clear();
    const auto reservada = std::find_if(m_salidas.begin(), m_salidas.end(), [&](const CSalida& s) {
        return !s.usada && s.nombre == nombre;
    });
    if (reservada != m_salidas.end()) {
        reservada->usada = true;
        return &reservada->reemplazo;
    }
    CSalida& salida = m_salidas.emplace_back();
    salida.nombre = nombre;
    salida.usada = true;
    const auto apertura = salida.reemplazo.Abre(nombre, error);
    if (apertura == CReemplazo::Apertura::Abierto)
        return &salida.reemplazo;
    m_salidas.pop_back();
    if (apertura == CReemplazo::Apertura::Ocupado)
        throw CFileException(nombre, sistema::kDeOtro);
    return nullptr;
}

void CConjuntoSalidas::Confirma()
{
    m_salidas.remove_if([](const CSalida& salida) { return !salida.usada; });
    std::vector<CSalidaNombrada> salidas;
    for (CSalida& salida : m_salidas)
        salidas.push_back({salida.nombre, &salida.reemplazo});
    ConfirmaSalidas(salidas);
    m_salidas.clear();
}

void CConjuntoSalidas::Desecha()
{
    m_salidas.clear();
}
