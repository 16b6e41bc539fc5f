#pragma once

#include <vector>

#include "evidence/municipality_files.h"
#include "evidence/report/reading/report_options.h"

// Which files belong to the run that wrote a log.

namespace informe {

enum class Sentido { Ninguno, Ida, Vuelta, Infograf };

/// The files of a run. A name is empty where none was found; that of an output may be of a file
/// that isn't there.
struct CFicheros {
    Sentido sentido = Sentido::Ninguno;
    CString registro;
    CString base;    ///< of the log's name, without folder and extension
    CString carpeta; ///< where it stands
    CNombresTablas tablas;
    CString entrada;       ///< the way out alone
    CListaPoligonos lista; ///< this and the sheets of a run on drawings; its entries are unread
    CString ortos;
    CString ficheroR; ///< this and the next one the way back alone
    CString ficheroM;
    CString ficheroCsp; ///< the way on to Infograf alone

    // What is known of the run from elsewhere.
    bool detenido = false;       ///< it wrote nothing but its log
    bool tablasDichas = false;   ///< it is told where the tables are
    std::vector<Tabla> escritas; ///< tables that the run wrote

    std::vector<CString> sinReconocer; ///< what the line names and nothing tells what it is
};

/// Looks for what belongs to the log in the log's folder, except for what the options name. The
/// direction is `Ninguno` where neither an input nor a list was found. Raises CFileException where
/// one of them, or the folder, can't be read.
CFicheros BuscaFicheros(const CString& registro, const COpciones& opciones);

/// The files that the options name and that aren't there.
std::vector<CString> Ausentes(const CFicheros& ficheros, const COpciones& opciones);

/// Everything that is read for the report, so that nothing is written over it.
std::vector<CString> Leidos(const CFicheros& ficheros);

} // namespace informe
