#pragma once

#include <filesystem>
#include <string_view>

#include "platform/files/content_copy.h"
#include "platform/files/system_files.h"
#include "platform/files/target_lock.h"

/// An output in the making that takes the place of its target only when it is whole.
///
/// It grows beside the target under a name that no other run has (side_names.h), and the target is
/// locked meanwhile, so that two programs never write one output at a time. Where the folder takes
/// no new file, the target's owner and permissions couldn't be kept, or another program has it open
/// and lets it be written but not be replaced, the output grows in a file without a name, and is
/// copied into the target at the end. What the target held stands beside it before that, if the
/// folder takes it. A link is followed. What is no regular file (a device, a pipe) is written
/// directly.
///
/// Once all is written the owner calls `Asegura`, `Prepara`, `Coloca` and, when nothing can go
/// wrong any more, `Acaba`, in this order. `Desecha` at any time before `Acaba` leaves the target
/// with what it held. CConjuntoSalidas (output_set.h) does all this for the outputs of a run. No
/// operation throws: `error` tells the system's reason, and is clear where all went well.
class CReemplazo {
public:
    using Ruta = std::filesystem::path;
    using Error = sistema::Error;

    /// The file that a chain of links leads to; the name itself where it is no link. With an error,
    /// as for links in a circle, how far it came. A link of somebody else in a folder where users
    /// may not touch one another's files is followed by nobody but him.
    /// \param estado  where it isn't null, what stands there
    static Ruta DestinoReal(Ruta ruta, Error& error, sistema::CEstado* estado = nullptr);

    enum class Apertura { Abierto, NoSePuede, Ocupado };

    CReemplazo() = default;
    CReemplazo(const CReemplazo&) = delete;
    CReemplazo& operator=(const CReemplazo&) = delete;
    ~CReemplazo() { Desecha(); }

    /// Starts an output for the target. `NoSePuede`, with nothing changed, where the target could
    /// not be written: an empty name, a missing folder, a folder of that name, no permission;
    /// `Ocupado` where another program is writing it.
    /// \param marca  of the run (lado::Marca)
    Apertura Abre(std::string_view nombre, std::string_view marca, Error& error);
    bool Abierto() const { return m_fichero != sistema::kCerrado; }
    /// Writes the bytes behind those written last, without a buffer.
    void Escribe(std::string_view bytes, Error& error) const
    {
        sistema::Escribe(m_fichero, bytes, error);
    }

    /// Brings what was written to the disk.
    void Asegura(Error& error) const { sistema::Asegura(m_fichero, error); }
    /// Keeps what the target holds, to be able to give it back.
    void Prepara(std::string_view marca, Error& error);
    /// Tells whether another program wrote the target between `Abre` and `Prepara`.
    bool EscritoMientras() const { return m_escritoMientras; }
    /// Puts the output in its target's place. A target that is overwritten in its place may be half
    /// written after an error; `Desecha` mends that.
    void Coloca(Error& error);
    /// Tells whether the target is what `Coloca` put there: where locks don't reach another run may
    /// have come between.
    bool SigueColocado(Error& error) const;
    /// Keeps what the target held beside it (GuardaComoAnterior). What couldn't be kept is no
    /// failure.
    void Conserva() noexcept;
    const Ruta& Conservado() const { return m_conservado.ruta; } ///< that name; empty for none
    /// Lets go of what the target held. A failure leaves rubbish for the next run, nothing else.
    void Acaba() noexcept;
    /// Gives the target back what it held and removes all else. Touches only what this output
    /// placed, and no name goes before what it held is back. False where the system doesn't let it;
    /// what is needed to do it later stays then.
    bool Desecha() noexcept;

    /// Tells whether something of the output stands beside its target, where a killed program
    /// leaves it.
    bool DejaRastro() const { return !m_temporal.empty() || !m_antes.empty(); }
    /// Tells whether the output is copied into the target.
    bool EstaEnSitio() const { return m_enSitio != sistema::kCerrado; }
    const Ruta& Destino() const { return m_destino; } ///< links followed
    /// Tells whether the target was there when the output was opened.
    bool HabiaDestino() const { return m_estado.tipo != sistema::CEstado::Tipo::NoHay; }
    /// Number of the file in the making, by which it is known under its later name.
    std::uint64_t Numero() const { return m_suyo.numero; }

private:
    enum class Paso { Nada, Preparado, Colocado };

    Apertura AbreRegular(std::string_view marca, Error& error);
    bool PuedeIrAlLado(Error& error);
    Apertura CreaTemporal(std::string_view marca, Error& error);
    Apertura CreaEnSitio(std::string_view marca, Error& error);
    void CreaCopia(std::string_view marca, Error& error);
    void GuardaCopia(std::string_view marca, Error& error);
    void ApartaLoQueHabia(std::string_view marca, Error& error);
    bool EsNuestro(const sistema::CEstado& estado) const;
    bool EsComoAlAbrir(const sistema::CEstado& ahora) const;
    bool Devuelve() noexcept;
    bool DevuelveEnSitio() noexcept;
    bool DevuelveSegundo(bool esNuestro, bool falta) noexcept;
    bool CopiaDeVuelta() noexcept;
    void Suelta() noexcept;

    CCandado m_candado; // of the target
    sistema::CAbierto m_fichero;
    sistema::CAbierto m_enSitio;  // the target, to be overwritten in its place
    sistema::CAbierto m_anterior; // a copy of what it held
    Ruta m_destino;
    Ruta m_temporal; // what grows beside the target: the output, or the copy of what it held
    Ruta m_antes;    // what the target held, beside it
    CAnterior m_conservado;
    sistema::CEstado m_estado; // of the target when it was opened
    bool m_escritoMientras = false;
    sistema::CEstado m_suyo;     // of the file in the making
    sistema::CEstado m_colocado; // the same when it has taken its target's place
    Paso m_paso = Paso::Nada;
};
