#pragma once

#include <array>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "batch/job_table.h"
#include "platform/child_processes.h"
#include "platform/settings.h"

namespace lote {

/// What a job's log tells.
struct CCuenta {
    int errores = 0;
    int warnings = 0;
};

/// How a job came out.
struct CHecho {
    int estado = 0;                     ///< of the program; kMuerto where it was killed
    std::optional<CCuenta> cuenta = {}; ///< nothing where it left no log
    double segundos = 0;
};

inline constexpr int kMuerto = 137; ///< as a shell has it

// As the program stores its settings.
inline constexpr const char* kEmpresa = "VexaSoft";
inline constexpr const char* kPrograma = "Campiva";

/// The fields that name a job's tables, in their order.
inline constexpr std::string_view kCamposDeTablas[] = {"modulos",     "titulares", "parcelas",
                                                       "subparcelas", "parajes",   "cotitulares"};

/// How the program is started for a job: its line, and what it reads.
COrden OrdenDe(const CTrabajo& trabajo);

inline constexpr std::chrono::milliseconds kUnRato{200}; ///< to wait between two looks

/// Runs a program alone and waits for its end; it is asked to end where this process is. Gives its
/// status, none where it was killed, and with an error, where nothing ran.
/// \param mientras  called each time before it waits for a while; what it raises has the program
///                  asked to end, and is raised when that has
std::optional<int> Corre(const COrden& orden, sistema::Error& error,
                         std::chrono::milliseconds unRato = kUnRato,
                         const std::function<void()>& mientras = nullptr);
/// What a program printed into a file.
std::string LoDicho(const std::filesystem::path& dicho);

/// A file of the job, by the field that names it.
std::filesystem::path FicheroDe(const CTrabajo& trabajo, std::string_view campo);
/// The log, as the translation names it: by its input, or by the first line of the list. Empty
/// where the list can't be read.
std::filesystem::path RutaDelRegistro(const CTrabajo& trabajo);

/// The files that the job writes, but for those whose names go with its log's.
std::vector<std::filesystem::path> SalidasDe(const CTrabajo& trabajo);
/// The files that the job reads and another one may write: tables.
std::vector<std::filesystem::path> LeidasDe(const CTrabajo& trabajo);

/// The settings that the job has.
std::array<CAjuste, 2> AjustesDe(const CTrabajo& trabajo);

/// The log of a job, looked after while the program has it.
class CRegistro {
public:
    /// Before the program is started.
    explicit CRegistro(const CTrabajo& trabajo);
    /// When it has ended: counts what the log tells. The way on to Infograf, whose log has the name
    /// of that of the way back and never anything in it, gives that one back.
    /// Nothing where the job left none: one that was there before and is as it was is another's.
    /// Raises CFileException where it can't be read.
    std::optional<CCuenta> Acaba() const;

private:
    void Devuelve(const std::filesystem::path& anterior) const;
    bool EsDeAntes() const;

    bool m_esInfograf;
    std::filesystem::path m_ruta; ///< empty where nothing names it
    std::uintmax_t m_habia = 0;   ///< its length before
    /// And when it was written; none where it wasn't there.
    std::optional<std::filesystem::file_time_type> m_fecha;
};

} // namespace lote
