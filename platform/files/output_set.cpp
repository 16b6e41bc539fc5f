#include "platform/files/output_set.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/output_diary.h"
#include "platform/files/output_folders.h"
#include "platform/files/short_wait.h"
#include "platform/files/side_names.h"
#include "platform/format.h"
#include "platform/layer_texts.h"

namespace {

using Ruta = CReemplazo::Ruta;
using Error = sistema::Error;

/// An output, and the name by which the program asked for it, which complaints name.
struct CSalidaNombrada {
    CString nombre;
    CReemplazo* reemplazo;
};

/// What the outputs of a run are put in their places by.
struct CCambio {
    std::span<const CSalidaNombrada> salidas;
    const std::string& marca; ///< of the run
    bool conserva;            ///< what all targets held
};

/// The diaries of a set of outputs, one in each folder. The locks of the targets tell that the set
/// is at work.
class CDiario {
public:
    /// Raises CFileException where one can't be brought to the disk.
    void Escribe(const CCambio& cambio);
    /// Whoever reads the folder next finds nothing to heal.
    void Borra(Error& error);
    /// Brings the folders of all outputs to the disk. A single one needs it once, when it has its
    /// place; several also before the first takes its own, and when their diary is gone.
    enum class Momento { Antes, Hecho, Final };
    void AseguraLasSuyas(Momento momento) const;

private:
    static void EscribeUno(const Ruta& ruta, std::string_view bytes);

    std::set<Ruta> m_carpetas;
    std::vector<Ruta> m_rutas;
};

CEntradaDiario::Antes QueHabia(const CReemplazo& reemplazo)
{
    using Antes = CEntradaDiario::Antes;
    if (reemplazo.EstaEnSitio())
        return Antes::FicheroEnSitio;
    return reemplazo.HabiaDestino() ? Antes::Fichero : Antes::Nada;
}

void CDiario::Escribe(const CCambio& cambio)
{
    std::map<Ruta, std::vector<CEntradaDiario>> carpetas;
    std::size_t cuantas = 0;
    bool deUnGolpe = true;
    for (const CSalidaNombrada& salida : cambio.salidas) {
        const CReemplazo& reemplazo = *salida.reemplazo;
        if (!reemplazo.DejaRastro())
            continue;
        deUnGolpe = ++cuantas == 1 && !reemplazo.EstaEnSitio();
        carpetas[CarpetaDe(reemplazo.Destino())].push_back(
            {reemplazo.Destino().filename(), QueHabia(reemplazo), reemplazo.Numero()});
    }
    for (const auto& [carpeta, entradas] : carpetas)
        m_carpetas.insert(carpeta);
    if (deUnGolpe)
        return; // one rename is done or not done
    for (const auto& [carpeta, entradas] : carpetas)
        m_rutas.push_back(
            lado::De(carpeta / entradas.front().destino, lado::kConjunto, cambio.marca));
    auto ruta = m_rutas.begin();
    for (const auto& [carpeta, entradas] : carpetas)
        EscribeUno(*ruta++, EscribeDiario(m_rutas, entradas));
}

void CDiario::EscribeUno(const Ruta& ruta, std::string_view bytes)
{
    Error error;
    if (bytes.size() > kDiarioMasLargo)
        error = std::make_error_code(std::errc::file_too_large);
    const sistema::CAbierto fichero =
        error ? sistema::CAbierto() : sistema::Abre(ruta, sistema::Modo::CrearSinOtros, error);
    if (!error)
        sistema::Escribe(fichero, bytes, error);
    if (!error)
        sistema::Asegura(fichero, error);
    CFileException::Exige(error, sistema::Nombre(ruta));
}

void CDiario::Borra(Error& error)
{
    error.clear();
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

/// Tells whether an output takes its place by a rename.
bool EsPorNombre(const CReemplazo& reemplazo)
{
    return reemplazo.DejaRastro() && !reemplazo.EstaEnSitio();
}

void Cambia(const CCambio& cambio, CDiario& diario)
{
    Error error;
    for (const CSalidaNombrada& salida : cambio.salidas) {
        salida.reemplazo->Asegura(error);
        CFileException::Exige(error, salida.nombre);
    }
    diario.Escribe(cambio);
    for (const CSalidaNombrada& salida : cambio.salidas) {
        salida.reemplazo->Prepara(cambio.marca, error);
        CFileException::Exige(error, salida.nombre);
    }
    diario.AseguraLasSuyas(CDiario::Momento::Antes);
    // What is written in its place goes first: it is the likelier to fail.
    for (const bool porNombre : {false, true})
        for (const CSalidaNombrada& salida : cambio.salidas)
            if (EsPorNombre(*salida.reemplazo) == porNombre) {
                salida.reemplazo->Coloca(error);
                CFileException::Exige(error, salida.nombre);
            }
    for (const CSalidaNombrada& salida : cambio.salidas) {
        if (!salida.reemplazo->SigueColocado(error) && !error)
            error = sistema::kDeOtro;
        CFileException::Exige(error, salida.nombre);
        if (cambio.conserva || salida.reemplazo->EscritoMientras())
            salida.reemplazo->Conserva();
    }
    diario.AseguraLasSuyas(CDiario::Momento::Hecho);
    diario.Borra(error);
    CFileException::Exige(error, cambio.salidas.front().nombre);
    diario.AseguraLasSuyas(CDiario::Momento::Final);
}

/// Gives all targets back what they held.
/// \return the names of those that couldn't be; they are healed by the diary, which stays then
std::vector<CString> Deshaz(const CCambio& cambio, CDiario& diario)
{
    std::vector<CString> sinDevolver;
    for (const CSalidaNombrada& salida : cambio.salidas)
        if (!salida.reemplazo->Desecha())
            sinDevolver.push_back(salida.nombre);
    Error error;
    if (sinDevolver.empty())
        diario.Borra(error);
    return sinDevolver;
}

/// Puts all outputs in their targets' places, or none. What the targets held is still there then;
/// where it raises CFileException the outputs are closed.
void ConfirmaSalidas(const CCambio& cambio)
{
    if (cambio.salidas.empty())
        return;
    CDiario diario;
    try {
        Cambia(cambio, diario);
    } catch (CFileException& fallo) {
        fallo.m_sinDevolver = Deshaz(cambio, diario);
        throw;
    } catch (...) {
        if (const auto sinDevolver = Deshaz(cambio, diario); !sinDevolver.empty()) {
            CFileException fallo(sinDevolver.front(),
                                 std::make_error_code(std::errc::not_enough_memory));
            fallo.m_sinDevolver = sinDevolver;
            throw CFileException(fallo);
        }
        throw;
    }
}

} // namespace

CString CConservada::Frase() const
{
    if (anterior.IsEmpty())
        return {Formatea(textos::kNoSeConserva, destino)};
    return {Formatea(escritoMientras ? textos::kEscritoMientras : textos::kAnterior, destino,
                     anterior)};
}

CReemplazo::Apertura CConjuntoSalidas::Reserva(const CString& nombre, Error& error)
{
    constexpr std::chrono::milliseconds kUnMomento{200}; // as long as somebody heals the folder
    const CEspera espera(kUnMomento);
    if (m_marca.empty())
        m_marca = lado::Marca();
    CSalida& salida = m_salidas.emplace_back();
    salida.nombre = nombre;
    auto apertura = salida.reemplazo.Abre(nombre, m_marca, error);
    while (apertura == CReemplazo::Apertura::Ocupado && espera.Sigue())
        apertura = salida.reemplazo.Abre(nombre, m_marca, error);
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
        const auto apertura = Reserva(nombre, error);
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
    std::vector<CSalidaNombrada> salidas;
    for (CSalida& salida : m_salidas)
        if (salida.usada)
            salidas.push_back({salida.nombre, &salida.reemplazo});
    ConfirmaSalidas({salidas, m_marca, m_conserva});
    for (const CSalidaNombrada& salida : salidas) {
        CReemplazo& reemplazo = *salida.reemplazo;
        const bool habia =
            reemplazo.HabiaDestino() && (reemplazo.DejaRastro() || reemplazo.EstaEnSitio());
        reemplazo.Acaba();
        if ((m_conserva && habia) || reemplazo.EscritoMientras())
            m_conservadas.push_back({salida.nombre, sistema::Nombre(reemplazo.Conservado()),
                                     reemplazo.EscritoMientras()});
    }
    m_salidas.clear();
}
