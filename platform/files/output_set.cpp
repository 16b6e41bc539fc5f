#include "platform/files/output_set.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <span>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/output_diary.h"
#include "platform/files/output_folders.h"

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;

/// An output, and the name by which the program asked for it, which complaints name.
struct CSalidaNombrada {
    CString nombre;
    CReemplazo* reemplazo;
};

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
    void AseguraLasSuyas(Momento momento) const;

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
        CFileException::Exige(error, salida.nombre);
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
    CFileException::Exige(error, sistema::Nombre(ruta));
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

void CDiario::AseguraLasSuyas(Momento momento) const
{
    if (momento == Momento::Hecho || !m_rutas.empty())
        AseguraCarpetas(m_carpetas);
}

void Cambia(std::span<const CSalidaNombrada> salidas, CDiario& diario)
{
    Error error;
    for (const CSalidaNombrada& salida : salidas) {
        salida.reemplazo->Asegura(error);
        CFileException::Exige(error, salida.nombre);
    }
    diario.Abre(salidas);
    for (const CSalidaNombrada& salida : salidas) {
        salida.reemplazo->Prepara(error);
        CFileException::Exige(error, salida.nombre);
    }
    diario.AseguraLasSuyas(CDiario::Momento::Antes);
    // What is written in its place goes first: it is the likelier to fail.
    for (const bool alLado : {false, true})
        for (const CSalidaNombrada& salida : salidas)
            if (salida.reemplazo->EstaAlLado() == alLado) {
                salida.reemplazo->Coloca(error);
                CFileException::Exige(error, salida.nombre);
            }
    diario.AseguraLasSuyas(CDiario::Momento::Hecho);
    diario.Borra(error);
    CFileException::Exige(error, salidas.front().nombre);
    diario.AseguraLasSuyas(CDiario::Momento::Final);
}

/// Puts all outputs in their targets' places, or none. What the targets held is still there then;
/// where it raises CFileException the outputs are closed.
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
}

} // namespace

CReemplazo::Apertura CConjuntoSalidas::Reserva(const CString& nombre)
{
    Error error;
    return Pon(nombre, error);
}

CReemplazo::Apertura CConjuntoSalidas::Pon(const CString& nombre, Error& error)
{
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
    auto salida = std::find_if(m_salidas.begin(), m_salidas.end(),
                               [&](const CSalida& s) { return !s.usada && s.nombre == nombre; });
    if (salida == m_salidas.end()) {
        const auto apertura = Pon(nombre, error);
        if (apertura == CReemplazo::Apertura::Ocupado)
            throw CFileException(nombre, sistema::kDeOtro);
        if (apertura == CReemplazo::Apertura::NoSePuede)
            return nullptr;
        salida = std::prev(m_salidas.end());
    }
    salida->usada = true;
    return &salida->reemplazo;
}

void CConjuntoSalidas::Confirma()
{
    m_salidas.remove_if([](const CSalida& salida) { return !salida.usada; });
    std::vector<CSalidaNombrada> salidas;
    for (CSalida& salida : m_salidas)
        salidas.push_back({salida.nombre, &salida.reemplazo});
    ConfirmaSalidas(salidas);
    for (const CSalidaNombrada& salida : salidas)
        if (const auto anterior = salida.reemplazo->Acaba(m_conserva); !anterior.empty())
            m_conservadas.emplace_back(salida.nombre, sistema::Nombre(anterior));
    m_salidas.clear();
}

void CConjuntoSalidas::Desecha()
{
    m_salidas.clear();
}
