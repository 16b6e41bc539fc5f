#pragma once

#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/format.h"

namespace lote {

/// What is wrong with the command line or the table, told before anything is begun.
class CLineaMala : public std::runtime_error {
    using runtime_error::runtime_error;
};

enum class Traduccion { Ida, Vuelta, Infograf };

/// A job of the table.
struct CTrabajo {
    int numero = 0;    ///< by which the results name it: its place among the table's jobs
    int fila = 0;      ///< number of its line in the table
    std::string linea; ///< its content, by which it is known when the table has changed
    Traduccion traduccion = Traduccion::Ida;
    std::string carpeta;
    std::map<std::string, std::string, std::less<>> campos; ///< all of them

    const std::string& Campo(std::string_view nombre) const { return campos.find(nombre)->second; }
};

/// Tells whether a name in the results is one that a batch gives: a job's number, or a part's, and
/// this extension, which has its point or is empty.
bool TieneNumero(const std::filesystem::path& nombre, std::string_view extension);

/// The name by which tables and results know a translation.
std::string_view NombreDe(Traduccion traduccion);

/// What the name of a table's results has behind it, where the line tells none.
inline constexpr const char* kExtensionResultados = ".resultados";

/// What a table in the results has in front: the folder from which those of its jobs count.
inline constexpr std::string_view kDesdeCarpeta = "# carpeta\t";

/// Reads a table: a job a line, its fields between tabs; blank lines and those that begin with a
/// "#" don't count. Bytes are taken as they are. Raises CLineaMala for a line that is no job or a
/// job that is there twice, and CFileException where the table can't be read.
std::vector<CTrabajo> LeeTabla(const std::string& nombre);

} // namespace lote
