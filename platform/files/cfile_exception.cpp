#include "platform/files/cfile_exception.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include "platform/ansi.h"
#include "platform/layer_texts.h"

// What a failed read or write is told with.

namespace {

using std::errc;

// clang-format off
constexpr struct {
    errc causa;
    const char* razon;
} kRazones[] = {
    {errc::permission_denied,             "Permiso denegado"},
    {errc::operation_not_permitted,       "Operación no permitida"_ansi},
    {errc::read_only_file_system,         "El sistema de ficheros es de sólo lectura"_ansi},
    {errc::no_such_file_or_directory,     "No existe el fichero o la carpeta"},
    {errc::not_a_directory,               "No es un directorio"},
    {errc::is_a_directory,                "Es un directorio"},
    {errc::file_exists,                   "El fichero ya existe"},
    {errc::filename_too_long,             "El nombre del fichero es demasiado largo"},
    {errc::too_many_symbolic_link_levels, "Demasiados enlaces, uno tras otro"},
    {errc::no_space_on_device,            "No queda espacio en el dispositivo"},
    {errc::file_too_large,                "El fichero es demasiado grande"},
    {errc::io_error,                      "Error de entrada/salida"},
    {errc::device_or_resource_busy,       "Otro programa lo tiene ocupado"},
    {errc::no_such_device,                "No existe el dispositivo"},
    {errc::no_such_device_or_address,     "No existe el dispositivo o la dirección"_ansi},
    {errc::too_many_files_open,           "Demasiados ficheros abiertos"},
    {errc::too_many_files_open_in_system, "Demasiados ficheros abiertos en el sistema"},
    {errc::too_many_links,                "Demasiados nombres para un fichero"},
    {errc::cross_device_link,             "Está en otro dispositivo"_ansi},
    {errc::no_lock_available,             "No quedan bloqueos"},
    {errc::not_enough_memory,             "No queda memoria"},
    {errc::invalid_argument,              "El sistema no admite ese nombre o esa operación"_ansi},
    {errc::invalid_seek,                  "No se puede ir a otra posición: no es un fichero corriente"_ansi},
    {errc::not_supported,                 "El sistema de ficheros no admite la operación"_ansi},
    {errc::operation_not_supported,       "El sistema de ficheros no admite la operación"_ansi},
    {errc::broken_pipe,                   "Nadie lee ya de la tubería"_ansi},
    {errc::timed_out,                     "Se agotó el tiempo de espera"_ansi},
    {errc::connection_aborted,            "Se cortó la conexión"_ansi},
    {errc::connection_reset,              "Se cortó la conexión"_ansi},
    {errc::host_unreachable,              "No se llega a la máquina"_ansi},
    {errc::network_down,                  "La red no funciona"},
    {errc::network_unreachable,           "No se llega a la red"},
};
// clang-format on

/// Those that the standard library has no name for, by their numbers where the system has them.
const char* RazonSinNombre(int numero)
{
    switch (numero) {
#ifdef EDQUOT
    case EDQUOT:
        return "Se acabó la cuota de disco"_ansi;
#endif
#ifdef ESTALE
    case ESTALE:
        return "El fichero del servidor ya no es el que era";
#endif
    default:
        return nullptr;
    }
}

/// Why the system refused a call on a file, in Spanish, code page 1252, whatever language the
/// system or the session speaks. A reason that hardly any file meets comes in the system's own
/// words.
CString RazonDelSistema(const sistema::Error& error)
{
    const auto* const suya =
        std::ranges::find_if(kRazones, [&](const auto& razon) { return error == razon.causa; });
    if (suya != std::end(kRazones))
        return suya->razon;
    const char* razon =
        error.category() == std::generic_category() ? RazonSinNombre(error.value()) : nullptr;
    return razon != nullptr ? razon : error.message();
}

} // namespace

CString CFileException::Causa() const
{
    if (m_causa == AcortadoAlLeer())
        return textos::kTerminaAntes;
    if (m_causa == sistema::kDeOtro)
        return textos::kLoEscribeOtro;
    return RazonDelSistema(m_causa);
}

CString CFileException::Mensaje() const
{
    CString texto;
    texto.Format(m_alLeer ? textos::kNoSeLee : textos::kNoSeEscribe, m_strFileName);
    return texto + Detalle();
}

CString CFileException::Detalle() const
{
    CString lineas = m_causa && !SeVe() ? "\n" + Causa() : CString();
    if (!m_nota.IsEmpty())
        lineas += "\n" + m_nota;
    if (!m_sinDevolver.empty())
        lineas += CString("\n") + textos::kSinDevolver;
    for (const CString& nombre : m_sinDevolver)
        lineas += "\n  " + nombre;
    return lineas;
}

bool CFileException::EsCorriente(const sistema::Error& error)
{
    constexpr errc kCorrientes[] = {
        errc::no_such_file_or_directory,
        errc::not_a_directory,
        errc::is_a_directory,
        errc::permission_denied,
        errc::operation_not_permitted,
        errc::read_only_file_system,
        errc::filename_too_long,
        errc::too_many_symbolic_link_levels,
        errc::file_exists,
        errc::no_such_device_or_address,
        errc::no_such_device,
        errc::invalid_argument,
        errc::device_or_resource_busy, // another program has it open and lets nobody else in
    };
    return std::ranges::any_of(kCorrientes, [&](errc corriente) { return error == corriente; });
}

bool CFileException::SeVe() const
{
    return m_causa == std::errc::no_such_file_or_directory ||
           m_causa == std::errc::not_a_directory ||
           (m_causa == std::errc::is_a_directory && !m_alLeer);
}
