#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "cadastre/polygon_list.h"
#include "evidence/report/reading/report_options.h"

// Which files belong to the run that wrote a log, and what can be seen of them from outside.

namespace informe {

enum class Sentido { Ninguno, Ida, Vuelta };

enum Tabla { kModulos, kTitulares, kParcelas, kSubparcelas, kParajes, kCotitulares, kTablas };

/// The usual name of a table, "Modulos.txt".
const char* NombreTabla(Tabla tabla);

/// The files of a run. A name is empty where none was found; that of an output may be of a file
/// that isn't there.
struct CFicheros {
    Sentido sentido = Sentido::Ninguno;
    CString registro;
    CString base; ///< of the log's name, without folder and extension
    std::array<CString, kTablas> tablas;
    CString entrada; ///< the way out alone
    CString lista;   ///< this and those below the way back alone
    CCabeceraLista cabecera;
    CString carpeta; ///< of the list, as `DamePath` gives it
    CString ortos;
    CString ficheroR;
    CString ficheroM;
};

/// Looks for what belongs to the log in the log's folder, except for what the options name. The
/// direction is `Ninguno` where neither an input nor a list was found. A file that can't be read is
/// taken for none of the run's.
CFicheros BuscaFicheros(const CString& registro, const COpciones& opciones);

/// Tells whether a regular file of that name is there.
bool HayFichero(const CString& nombre);

/// A file of the run as it was found.
struct CFicheroVisto {
    std::string papel; ///< what it was to the run
    CString nombre;
    bool salida = false;
    bool hay = false;
    bool viejo = false;               ///< an output that is older than the log
    std::uint64_t largo = 0;          ///< bytes
    std::optional<std::time_t> fecha; ///< of the last write
    std::uint32_t crc = 0;            ///< of all its bytes (vexageo::Crc32)
};

/// Looks at all files of the run, the log first, and reads each whole for its sum. A read that
/// fails raises CFileException.
/// \param entradas  of the list: the base names of the polygons' files
std::vector<CFicheroVisto> MiraFicheros(const CFicheros& ficheros,
                                        const std::vector<CString>& entradas);

/// Tells whether the run left its log and no outputs: it was stopped, or ended by a fault. False
/// for a way out none of whose tables is there, as they may stand in another folder.
bool Detenido(const std::vector<CFicheroVisto>& vistos, Sentido sentido);
/// Tells whether no output was found.
bool SinSalidas(const std::vector<CFicheroVisto>& vistos);

} // namespace informe
