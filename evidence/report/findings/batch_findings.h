#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "evidence/report/findings/run_figures.h"
#include "evidence/report/reading/batch_jobs.h"

// What the jobs of a batch came to.

namespace informe {

/// What became of a job. Those that need somebody come first.
enum class Suerte : std::uint8_t {
    Fallo,
    SinLeer, ///< it was done, and its log or another file can't be read
    SinHacer,
    Hecho
};

/// A job, and what its report says.
struct CTrabajoVisto {
    Suerte DameSuerte() const;
    /// Gives none where the report says nothing of it.
    std::int64_t Cifra(std::optional<std::int64_t> CCifras::*cual) const
    {
        return cifras ? ((*cifras).*cual).value_or(0) : 0;
    }

    int numero = 0;
    std::string traduccion;
    std::string carpeta; ///< as the table has it, in UTF-8
    std::optional<lote::CHecho> hecho;
    std::optional<CCifras> cifras;    ///< none where its files couldn't be read
    std::vector<std::string> reparos; ///< sentences in UTF-8
    CString informe;                  ///< its page; empty for none
    CString dicho;                    ///< what it said; empty for nothing
    bool conQuejas = false;           ///< something of it, or its page, couldn't be read or written
};

/// A column of what is told of jobs, on the page, in the sheet and for programs.
struct CColumnaLote {
    const char* titulo;
    const char* etiqueta; ///< the same within a line
    const char* nombre;   ///< the same for programs
    std::optional<std::int64_t> CCifras::*cifra;
    bool esSuperficie = false;
};
inline constexpr CColumnaLote kColumnasLote[] = {
    {"Sin explicar", "sin explicar", "sinExplicar", &CCifras::sinExplicar},
    {"Hectáreas perdidas", "hectáreas perdidas", "perdida", &CCifras::perdida, true},
    {"Parcelas que pierden", "parcelas que pierden", "parcelas", &CCifras::parcelas},
    {"Sin padre", "sin padre", "sinPadre", &CCifras::sinPadre},
    {"Errores", "errores", "errores", &CCifras::errores},
    {"Warnings", "warnings", "warnings", &CCifras::warnings},
};

/// All jobs, the worst first.
struct CResumenLote {
    /// Puts them in their order: by what became of them, then what nothing explains, what was lost,
    /// messages without a cause, errors, warnings, and by their places in the table.
    void Ordena();
    std::int64_t Cuantos(Suerte suerte) const;
    /// Of all jobs that have a value; 0 for none.
    std::int64_t Suma(std::optional<std::int64_t> CCifras::*cual) const;
    std::int64_t QuePierden() const; ///< jobs that lose surface
    double Segundos() const;
    /// The columns of which some job has a value.
    std::vector<const CColumnaLote*> Columnas() const;
    bool Hay(const CColumnaLote& columna) const;
    /// Something failed, was lost, isn't explained, or can't be checked.
    bool HayPerdidas() const;

    std::string nombre; ///< of the results
    CString carpeta;    ///< they themselves
    std::vector<std::string> reparos;
    std::vector<CTrabajoVisto> trabajos;
};

} // namespace informe
