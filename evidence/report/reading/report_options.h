#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/cstring.h"

namespace informe {

/// What the command line asks for.
struct COpciones {
    enum class Pide { Informes, Ayuda, Version };

    Pide pide = Pide::Informes;
    std::vector<CString> registros = {};
    // Of one log; empty for what its name tells.
    CString html = {};
    CString geojson = {};
    CString csv = {};
    CString json = {};
    CString lista = {};
    CString entrada = {};
    CString tablas = {}; ///< folder
    CString ortos = {};
    CString contra = {};                ///< another state of the municipality
    CString cambios = {};               ///< sheet of what changed
    std::vector<CString> con = {};      ///< files of the run; what each is, its content tells
    std::vector<CString> escritos = {}; ///< the same of files that the run wrote
    bool ensayo = false;                ///< a way back is only tried; its list stands for the log
    bool conserva = false;              ///< the trial keeps what isn't drawn
    bool crea = false;                  ///< the trial creates what only the drawing knows
    bool concentradas = false;          ///< the trial gives concentrated parcels what is drawn
    bool detenido = false;              ///< the run wrote nothing but its log
    bool estricto = false;              ///< what was lost, or isn't explained, makes the status
    /// Whether a run on drawings went on to Infograf, where that is known.
    std::optional<bool> infograf = {};

    CString resumen = {};     ///< results of a batch, to be summed up in place of logs
    bool sinInformes = false; ///< no page for each of its jobs

    /// They name files of a run, beside its log, or tell of it.
    bool DicenDeUnProceso() const;
    /// Names of what is written, without the page; empty ones are asked for by nobody.
    std::vector<CString> Otras() const { return {csv, geojson, json, cambios}; }
    /// How many things are to go to the standard output.
    std::ptrdiff_t PorLaSalida() const;
};

/// The usage text, UTF-8.
extern const char* const kUso;

/// Reads the command line. Nothing, and the complaint, where it can't be understood.
/// \param argumentos  without the program's name
std::optional<COpciones> LeeOpciones(std::span<const std::string> argumentos, std::string& queja);

} // namespace informe
