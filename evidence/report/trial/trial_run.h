#pragma once

#include <string>
#include <vector>

#include "batch/job_table.h"
#include "evidence/report/reading/run_files.h"
#include "platform/files/temporary_folder.h"

namespace informe {

/// A way back that is only tried: the program runs with "Modificar" in a folder of its own, on
/// copies of what it would write and by links to the drawings that it reads. Nothing beside the
/// inputs changes, and the folder goes with the object, whatever ends it.
class CEnsayo {
public:
    /// Prepares the folder. Raises CFileException where that can't be done.
    /// \param ficheros  of a way back, with the entries of its list
    /// \param opciones  must outlive this object
    CEnsayo(const CFicheros& ficheros, const COpciones& opciones);

    /// Runs the program, and waits for it. Gives what it says where it ended without an output;
    /// empty for nothing. Where the process is to end meanwhile, so does the program, and
    /// CInterrumpido is thrown.
    std::string Corre();
    /// The files of the run: the inputs where they are, the outputs in the folder.
    const CFicheros& Suyos() const { return m_suyos; }
    /// The tables that it would leave.
    const CNombresTablas& Tablas() const { return m_tablas; }
    /// What the run said beside its summary (Observado), without the folder's name.
    std::vector<std::string> LoObservado() const;
    /// Takes the folder off a name.
    CString SinCarpeta(const CString& nombre) const;

private:
    void TraeDibujos(const CFicheros& ficheros);
    lote::CTrabajo Trabajo() const;

    const COpciones& m_opciones;
    CCarpetaTemporal m_carpeta{"campiva-ensayo"};
    std::filesystem::path m_dicho; // what the program says
    CFicheros m_suyos;
    CNombresTablas m_tablas;
    CString m_lista;
};

} // namespace informe
