#pragma once

#include <string>
#include <vector>

#include "batch/job_states.h"
#include "evidence/report/reading/report_options.h"

// The results of a batch, as campiva-lote leaves them.

namespace informe {

/// What stands in the results of a batch. No job of its table is passed over: one of which nothing
/// is written down wasn't done.
struct CLoteLeido {
    /// Reads them. Raises CFileException where they can't be read, and lote::CLineaMala where the
    /// table isn't whole.
    explicit CLoteLeido(const CString& carpeta);

    /// What belongs to the batch as a whole: its table, and what it keeps.
    std::vector<CString> Suyos() const;
    /// What is to be said of the batch as a whole, sentences in UTF-8.
    std::vector<std::string> Reparos() const;

    lote::CEstados estados;
    std::vector<lote::CTrabajo> trabajos; ///< with their folders as they are found from here
    std::vector<std::string> carpetas;    ///< of each of them, as the table has it
};

/// What a job has of its own, whether or not it is there: what its line names, its log, what it
/// said, and its report.
std::vector<CString> FicherosDe(const lote::CTrabajo& trabajo, const lote::CEstados& estados);

/// What the report of a job is to read: the files that the table names, as far as they are there.
/// Raises CFileException where that can't be told.
COpciones OpcionesDe(const lote::CTrabajo& trabajo, const lote::CHecho& hecho);

} // namespace informe
