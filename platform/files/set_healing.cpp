#include "platform/files/set_healing.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/content_copy.h"
#include "platform/files/output_diary.h"
#include "platform/files/output_folders.h"
#include "platform/files/safe_replacement.h"
#include "platform/files/short_wait.h"
#include "platform/files/side_names.h"
#include "platform/files/target_lock.h"
#include "platform/layer_texts.h"

namespace {

using Ruta = std::filesystem::path;
using Error = sistema::Error;
using sistema::Bloqueo;
using sistema::CEstado;
using Tipo = CEstado::Tipo;

/// Tells whether both are surely of one file or folder: some shares give theirs no numbers.
bool SonUno(const CEstado& uno, const CEstado& otro)
{
    return uno.numero != 0 && uno.EsElMismo(otro);
}

/// One of the files that the run is about to read or write.
struct CSuyo {
    CString nombre; ///< by which the program knows it
    Ruta fichero;   ///< without its folder
};

/// A folder with files of the run, whatever path leads there.
struct CCarpeta {
    Ruta ruta;
    CEstado estado;
    std::vector<CSuyo> suyos;
    std::vector<Ruta> nombres; ///< of all that stands there
};

/// A diary, opened, and what it says.
class CDiarioHallado {
public:
    explicit CDiarioHallado(Ruta ruta) : m_ruta(std::move(ruta))
    {
        m_fichero = sistema::Abre(m_ruta, sistema::Modo::Cambiar, m_error);
        if (m_error == std::errc::permission_denied || m_error == std::errc::read_only_file_system)
            m_fichero = sistema::Abre(m_ruta, sistema::Modo::Leer, m_error);
        if (!m_error)
            m_estado = sistema::Mira(m_fichero, m_error);
        if (!m_error && EsElDeSuNombre(m_error) && m_estado.largo <= kDiarioMasLargo) {
            std::string bytes(static_cast<std::size_t>(m_estado.largo), '\0');
            m_leido = LeeDiario(LeeTrozo(m_fichero, bytes.data(), bytes.size(), 0, m_error));
        }
    }

    const Error& Fallo() const { return m_error; }
    const CEstado& Estado() const { return m_estado; }
    const CDiarioLeido& Leido() const { return m_leido; }
    /// Tells whether it still stands under its name: a run that is done has taken it away.
    bool EsElDeSuNombre(Error& error) const
    {
        const CEstado ahora = sistema::MiraEnlace(m_ruta, error);
        return !error && m_estado.tipo == Tipo::Regular && m_estado.EsElMismo(ahora);
    }
    /// Runs of older versions lock their diary itself.
    bool LoTieneOtro() const
    {
        Error error;
        return sistema::Bloquea(m_fichero, error) == Bloqueo::DeOtro && !error;
    }

private:
    Ruta m_ruta;
    sistema::CAbierto m_fichero;
    CEstado m_estado;
    CDiarioLeido m_leido;
    Error m_error;
};

/// Heals one folder.
class CSanador {
public:
    CSanador(CCarpeta& carpeta, std::vector<CTocado>& tocados)
        : m_carpeta(carpeta), m_tocados(tocados)
    {
    }

    void Sana();

private:
    enum class Estado { Hecho, Vivo, Queda };

    void SanaPorDiario(const Ruta& nombre);
    Estado Prueba(const Ruta& nombre, const CDiarioHallado& diario, bool sinEspera);
    void Aplica(const Ruta& nombre, const CDiarioHallado& diario);
    void Devuelve(const CEntradaDiario& entrada, std::string_view marca,
                  const CDiarioHallado& diario) const;
    bool DejaLoTocado(const CEntradaDiario& entrada, const CEstado& ahora,
                      const CDiarioHallado& diario, const Ruta& antes, Error& error) const;
    bool MereceCredito(const CEstado& diario) const;
    bool EsDeAqui(const Ruta& destino) const;
    const CSuyo* Afectado(const Ruta& nombre, const CDiarioLeido& leido) const;
    void Recoge(const Ruta& nombre) const;
    Ruta En(const Ruta& nombre) const { return m_carpeta.ruta / nombre; }
    Ruta Candado(const std::string& base) const
    {
        return En(sistema::Ruta(base).concat(lado::kCandado)); // a base was cut where it had to be
    }

    CCarpeta& m_carpeta;
    std::vector<CTocado>& m_tocados;
    std::set<std::string> m_marcasVivas; // of the sets whose diary stays
};

/// The folder of a file of the run, out of those that are known.
void Anota(std::vector<CCarpeta>& carpetas, const CString& nombre)
{
    Error error;
    const Ruta destino = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
    if (error && !CFileException::EsCorriente(error))
        throw CFileException(nombre, error, true);
    if (error)
        return; // whoever opens it will be told
    const Ruta ruta = CarpetaDe(destino);
    const auto conRuta = [&](const CCarpeta& c) { return c.ruta == ruta; };
    auto carpeta = std::ranges::find_if(carpetas, conRuta);
    if (carpeta == carpetas.end()) {
        const CEstado estado = sistema::Mira(ruta, error);
        if (error && !CFileException::EsCorriente(error))
            throw CFileException(sistema::Nombre(sistema::EnteraSinPuntos(ruta)), error, true);
        carpeta = std::ranges::find_if(carpetas,
                                       [&](const CCarpeta& c) { return SonUno(c.estado, estado); });
        if (carpeta == carpetas.end())
            carpeta = carpetas.insert(carpetas.end(), {ruta, estado, {}, {}});
    }
    carpeta->suyos.push_back({nombre, destino.filename()});
}

void CSanador::Sana()
{
    Error error;
    m_carpeta.nombres = sistema::Lista(m_carpeta.ruta, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::permission_denied ||
        error == std::errc::not_a_directory)
        return; // whoever opens a file there will be told
    if (error)
        throw CFileException(sistema::Nombre(sistema::EnteraSinPuntos(m_carpeta.ruta)), error);
    for (const Ruta& nombre : m_carpeta.nombres)
        if (lado::Parte(nombre).sufijo == lado::kConjunto)
            SanaPorDiario(nombre);
    for (const Ruta& nombre : m_carpeta.nombres)
        Recoge(nombre);
}

/// Heals by a diary, as soon as its run is dead. Raises CFileException where that can't be and it
/// names a file of the run.
void CSanador::SanaPorDiario(const Ruta& nombre)
{
    constexpr std::chrono::seconds kComoMucho{5}; // a set takes its places in a blink
    const CEspera espera(kComoMucho);
    Error error;
    for (bool sinEspera = false;; sinEspera = !espera.Sigue()) {
        const CDiarioHallado diario(En(nombre));
        if (diario.Fallo() == std::errc::no_such_file_or_directory)
            return; // its run is done
        if (diario.Fallo() && !CFileException::EsCorriente(diario.Fallo()))
            throw CFileException(sistema::Nombre(En(nombre)), diario.Fallo(), true);
        const CSuyo* const suyo = Afectado(nombre, diario.Leido());
        const Estado estado = Prueba(nombre, diario, sinEspera);
        if (estado == Estado::Hecho)
            return;
        m_marcasVivas.insert(lado::Parte(nombre).marca);
        if (suyo == nullptr)
            return;
        if (estado == Estado::Vivo && sinEspera)
            throw CFileException(suyo->nombre, sistema::kDeOtro, true);
        if (estado == Estado::Queda) {
            CFileException fallo(suyo->nombre, {}, true);
            fallo.m_nota = Formatea(textos::kAMedias, sistema::NombreDelDueño(En(nombre)),
                                    sistema::Nombre(sistema::EnteraSinPuntos(En(nombre))));
            throw CFileException(fallo);
        }
    }
}

/// \param sinEspera  where locks don't reach nobody knows whether a run is alive: then it was given
///                   the time that a live one takes
CSanador::Estado CSanador::Prueba(const Ruta& nombre, const CDiarioHallado& diario, bool sinEspera)
{
    CCandado candado;
    Error error;
    const Bloqueo bloqueo = candado.Toma(Candado(lado::Parte(nombre).base), error);
    if (bloqueo == Bloqueo::DeOtro || (bloqueo == Bloqueo::NoHay && !error && !sinEspera))
        return Estado::Vivo;
    if (diario.Fallo() || error || !MereceCredito(diario.Estado()))
        return Estado::Queda;
    if (diario.LoTieneOtro())
        return Estado::Vivo;
    if (!diario.EsElDeSuNombre(error))
        return error ? Estado::Queda : Estado::Hecho;
    try {
        Aplica(nombre, diario);
    } catch (const CFileException& fallo) {
        if (!CFileException::EsCorriente(fallo.m_causa) &&
            Afectado(nombre, diario.Leido()) != nullptr)
            throw;
        return Estado::Queda;
    }
    return Estado::Hecho;
}

/// Gives all targets of a diary back what they held, and the other folders of its set as well.
void CSanador::Aplica(const Ruta& nombre, const CDiarioHallado& diario)
{
    Error error;
    const std::string marca = lado::Parte(nombre).marca;
    for (const CEntradaDiario& entrada : diario.Leido().entradas)
        if (EsDeAqui(entrada.destino) && diario.EsElDeSuNombre(error))
            Devuelve(entrada, marca, diario);
    AseguraCarpetas({m_carpeta.ruta});
    sistema::Borra(En(nombre), error);
    CFileException::Exige(error, sistema::Nombre(En(nombre)));
    if (!sistema::EsMio(diario.Estado()))
        return; // where its owner works he heals the rest himself
    for (const Ruta& otro : diario.Leido().diarios) {
        CCarpeta carpeta{CarpetaDe(otro), sistema::Mira(CarpetaDe(otro), error), {}, {}};
        if (!error && !SonUno(carpeta.estado, m_carpeta.estado) &&
            lado::Parte(otro).sufijo == lado::kConjunto)
            CSanador(carpeta, m_tocados).SanaPorDiario(otro.filename());
    }
}

/// Gives a target back what it held before the set that its diary tells of.
void CSanador::Devuelve(const CEntradaDiario& entrada, std::string_view marca,
                        const CDiarioHallado& diario) const
{
    Error error;
    const Ruta destino = En(entrada.destino.filename());
    const Ruta antes = lado::De(destino, lado::kAntes, marca);
    const CString nombre = sistema::Nombre(destino);
    const CEstado deAntes = sistema::MiraEnlace(antes, error);
    CFileException::Exige(error, nombre);
    const CEstado deAhora = sistema::MiraEnlace(destino, error);
    CFileException::Exige(error, nombre);
    if (deAntes.tipo != Tipo::NoHay && deAhora.tipo != Tipo::NoHay &&
        entrada.antes == CEntradaDiario::Antes::FicheroEnSitio) {
        // A second name may have been given to a file that the diary's writer may not write.
        if (deAhora.nombres != 1 && !sistema::EsMio(diario.Estado()))
            error = std::make_error_code(std::errc::permission_denied);
        else
            // The copy goes when the diary has gone.
            CopiaFichero(antes, destino, sistema::Modo::Cambiar, error);
    } else if (deAntes.tipo != Tipo::NoHay) {
        if (!SonUno(deAntes, deAhora) && !DejaLoTocado(entrada, deAhora, diario, antes, error))
            sistema::Renombra(antes, destino, error);
    } else if (entrada.antes == CEntradaDiario::Antes::Nada && deAhora.tipo == Tipo::Regular &&
               deAhora.numero == entrada.numero && deAhora.escrito <= diario.Estado().escrito) {
        sistema::Borra(destino, error);
    }
    CFileException::Exige(error, nombre);
}

/// Leaves a target as it is where somebody has worked on it since its set was cut off, or put
/// another file in its place; what it held before the set becomes TARGET.anterior then.
/// \return false, with nothing done, where nobody has
bool CSanador::DejaLoTocado(const CEntradaDiario& entrada, const CEstado& ahora,
                            const CDiarioHallado& diario, const Ruta& antes, Error& error) const
{
    const bool despues = ahora.escrito > diario.Estado().escrito; // all of a set is written before
    const bool esOtro = ahora.numero != entrada.numero && !entrada.destino.has_parent_path();
    if (ahora.tipo == Tipo::NoHay || (!despues && !esOtro))
        return false;
    const Ruta destino = En(entrada.destino.filename());
    const auto [anterior, esNuevo] = GuardaComoAnterior(antes, destino, error);
    if (error)
        return true; // nothing is touched
    // A disk without second names may number its files anew whenever it is there.
    if (!despues && sistema::MiraEnlace(antes, error).nombres == 1) {
        if (esNuevo)
            sistema::Borra(anterior, error);
        return false;
    }
    m_tocados.push_back({sistema::Nombre(destino.lexically_normal()),
                         sistema::Nombre(anterior.lexically_normal())});
    return true;
}

/// Tells whether a diary is to be believed: it is what its owner wrote, it can be one, and he could
/// have done all that it asks for himself.
bool CSanador::MereceCredito(const CEstado& diario) const
{
    const bool loEscribioSuDueño = diario.nombres == 1 && !diario.EscribenOtros();
    return loEscribioSuDueño && diario.tipo == Tipo::Regular && diario.largo <= kDiarioMasLargo &&
           (sistema::EsMio(diario) || !m_carpeta.estado.EsDeTodosConDueño());
}

/// Tells whether a target of a diary stands in the diary's own folder. Older ones name it by its
/// whole path.
bool CSanador::EsDeAqui(const Ruta& destino) const
{
    Error error;
    return !destino.has_parent_path() ||
           (SonUno(sistema::Mira(destino.parent_path(), error), m_carpeta.estado) && !error);
}

/// The file of the run that a set leaves half done, null for none. A diary that can't be read tells
/// by the second names that its targets have.
const CSuyo* CSanador::Afectado(const Ruta& nombre, const CDiarioLeido& leido) const
{
    const std::string marca = lado::Parte(nombre).marca;
    const auto esDe = [&](const CSuyo& suyo) {
        const Ruta antes = lado::De(suyo.fichero, lado::kAntes, marca);
        const auto leNombra = [&](const CEntradaDiario& entrada) {
            return sistema::SonElMismoNombre(entrada.destino.filename(), suyo.fichero) &&
                   EsDeAqui(entrada.destino);
        };
        return std::ranges::any_of(leido.entradas, leNombra) ||
               std::ranges::count(m_carpeta.nombres, antes) != 0;
    };
    const auto suyo = std::ranges::find_if(m_carpeta.suyos, esDe);
    return suyo != m_carpeta.suyos.end() ? &*suyo : nullptr;
}

/// Puts away what a killed run left. What its target held stays if the target isn't there: on a
/// file system without second names it was the only one. Where a name was cut, so that it doesn't
/// tell the target's, that stays as it is.
void CSanador::Recoge(const Ruta& nombre) const
{
    const lado::CPartes partes = lado::Parte(nombre);
    if (partes.sufijo.empty() || partes.sufijo == lado::kConjunto ||
        (partes.sufijo == lado::kAntes && m_marcasVivas.contains(partes.marca)))
        return;
    CCandado candado;
    Error error;
    if (candado.Toma(Candado(partes.base), error) != Bloqueo::Mio ||
        partes.sufijo == lado::kCandado)
        return; // a lock goes when it is let go of
    if (partes.sufijo == lado::kAntes) {
        const Ruta destino = En(sistema::Ruta(partes.base));
        const bool falta = sistema::MiraEnlace(destino, error).tipo == Tipo::NoHay;
        if (error || lado::De(destino, lado::kAntes, partes.marca).filename() != nombre)
            return;
        if (falta)
            return sistema::Renombra(En(nombre), destino, error);
    }
    sistema::Borra(En(nombre), error);
}

} // namespace

CString CTocado::Frase() const
{
    return {Formatea(textos::kTocado, nombre, anterior)};
}

std::vector<CTocado> SanaConjuntos(const std::vector<CString>& nombres)
{
    std::vector<CTocado> tocados;
    std::vector<CCarpeta> carpetas;
    for (const CString& nombre : nombres)
        if (!nombre.IsEmpty())
            Anota(carpetas, nombre);
    for (CCarpeta& carpeta : carpetas)
        CSanador(carpeta, tocados).Sana();
    return tocados;
}
