#pragma once

#include <span>
#include <string>

namespace lote {

/// What the command line asks for.
struct COpciones {
    enum class Pide { Trabajos, Ayuda, Version, NoSeEntiende /* nothing at all */ };

    Pide pide = Pide::Trabajos;
    std::string tabla;
    std::string resultados; ///< folder; by the table's name where the line tells none
    std::string maquinas;   ///< as GNU parallel takes them; empty for this machine alone
    int procesos = 0;       ///< at a time; 0 for as many as there are cores
    bool reanuda = false;
    bool resume = false; ///< the report sums it all up in the end
};

/// Reads the arguments behind the program's name. Raises CLineaMala.
COpciones LeeOpciones(std::span<const std::string> argumentos);

} // namespace lote
