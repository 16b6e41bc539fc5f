#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/files/system_files.h"

/// An output in the making that takes the place of its target only when it is whole.
///
/// It grows under a temporary name beside the target, locked, so that two programs never write one
/// output at a time; a file of that name that a killed program left behind is taken over. Where the
/// folder takes no new file, or the target's owner and permissions couldn't be kept, it grows in a
/// file without a name, and is copied into the target at the end. A link is followed. What is no
/// regular file (a device, a pipe) is written directly.
///
/// Once all is written the owner calls `Asegura`, `Prepara`, `Coloca` and, when nothing can go
/// wrong any more, `Acaba`, in this order. `Desecha` at any time before `Acaba` leaves the target
/// with what it held. CConjuntoSalidas (output_set.h) does all this for the outputs of a run. No
/// operation throws: `error` tells the system's reason, and is clear where all went well.
class CReemplazo {
public:
    using Ruta = std::filesystem::path;
    using Error = sistema::Error;

    // What the names of files that stand beside a target end in.
    static constexpr std::string_view kNuevo = ".~nuevo";       ///< the output in the making
    static constexpr std::string_view kAntes = ".~antes";       ///< what the target held
    static constexpr std::string_view kConjunto = ".~conjunto"; ///< the diary of a set
    static constexpr std::string_view kAnterior = ".anterior";  ///< what a target held, to be kept
    /// Path of such a file. The name of a target that is too long for the suffix is cut, and a sum
    /// of it added.
    static Ruta AlLado(const Ruta& destino, std::string_view sufijo);
    /// The file that a chain of links leads to; the name itself where it is no link. With an error,
    /// as for links in a circle, how far it came.
    static Ruta DestinoReal(Ruta ruta, Error& error);

    /// Makes a file beside a target, or takes one that was left, for this program alone. kCerrado
    /// with the reason on failure; kDeOtro where another program has it.
    static int TomaCerrado(const Ruta& ruta, Error& error);

    enum class Apertura { Abierto, NoSePuede, Ocupado };

    CReemplazo() = default;
    CReemplazo(const CReemplazo&) = delete;
    CReemplazo& operator=(const CReemplazo&) = delete;
    ~CReemplazo() { Desecha(); }

    /// Starts an output for the target. `NoSePuede`, with nothing changed, where the target could
    /// not be written: an empty name, a missing folder, a folder of that name, no permission;
    /// `Ocupado` where another program is writing it.
    Apertura Abre(std::string_view nombre, Error& error);
    bool Abierto() const { return m_fichero != sistema::kCerrado; }
    /// Writes the bytes behind those written last, without a buffer.
    void Escribe(std::string_view bytes, Error& error) const
    {
        sistema::Escribe(m_fichero, bytes, error);
    }

    /// Brings what was written to the disk.
    void Asegura(Error& error) const;
    /// Keeps what the target holds, to be able to give it back.
    void Prepara(Error& error);
    /// Puts the output in its target's place. A target that is overwritten in its place may be half
    /// written after an error; `Desecha` mends that.
    void Coloca(Error& error);
    /// Lets go of what the target held. A failure leaves rubbish for the next run, nothing else.
    /// \param conserva  keep it as `NAME.anterior` beside the target, with a number where one is
    /// there \return that name; empty where nothing was kept
    Ruta Acaba(bool conserva = false);
    /// Gives the target back what it held and removes all else. False where the system doesn't let
    /// it; what is needed to do it later stays then.
    bool Desecha() noexcept;

    /// Tells whether the output grows beside its target, where a killed program leaves traces.
    bool EstaAlLado() const { return !m_temporal.empty(); }
    const Ruta& Destino() const { return m_destino; } ///< links followed
    /// Tells whether the target was there when the output was opened.
    bool HabiaDestino() const { return m_estado.tipo != sistema::CEstado::Tipo::NoHay; }
    /// Number of the file in the making, by which it is known under its later name.
    std::uint64_t Numero(Error& error) const { return sistema::Mira(m_fichero, error).numero; }

private:
    enum class Paso { Nada, Preparado, Colocado };

    Apertura AbreRegular(Error& error);
    Apertura CreaTemporal(Error& error);
    Apertura CreaEnSitio(Error& error);
    void GuardaAnterior(Error& error);
    bool Devuelve() noexcept;
    void Cierra(int& fichero, Error& error) noexcept;
    void Suelta() noexcept;

    int m_fichero = sistema::kCerrado;
    int m_enSitio = sistema::kCerrado;  // the target, to be overwritten in its place
    int m_anterior = sistema::kCerrado; // what the target held: its file, locked, or a copy
    Ruta m_destino;
    Ruta m_temporal; // empty where nothing stands beside the target
    Ruta m_antes;
    sistema::CEstado m_estado; // of the target when it was opened
    Paso m_paso = Paso::Nada;
};
