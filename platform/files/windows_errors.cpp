#include <algorithm>
#include <iterator>

#include "platform/files/windows_handles.h"

// What the numbers of the system's errors mean to a run. A file that isn't there is a matter of the
// data: the run goes on without it. So only what surely says that may pass for it. The place of the
// file that is gone, a share above all, is a fault that ends the run, however the system words it.

namespace sistema {
namespace {

using std::errc;

constexpr DWORD kNoHayDispositivo = 433; // for which the headers have no name

// clang-format off
constexpr struct {
    DWORD codigo;
    errc significa;
} kTabla[] = {
    // The place is there, the file isn't; or no file can have the name.
    {ERROR_FILE_NOT_FOUND,       errc::no_such_file_or_directory}, // but see `ConSuLugar`
    {ERROR_PATH_NOT_FOUND,       errc::no_such_file_or_directory},
    {ERROR_BAD_PATHNAME,         errc::no_such_file_or_directory},
    {ERROR_INVALID_NAME,         errc::invalid_argument},
    {ERROR_DIRECTORY,            errc::not_a_directory},
    {ERROR_FILENAME_EXCED_RANGE, errc::filename_too_long},
    {ERROR_CANT_RESOLVE_FILENAME, errc::too_many_symbolic_link_levels},

    // A share or its machine is gone, or lets nobody in any more.
    {ERROR_REM_NOT_LIST,         errc::host_unreachable},
    {ERROR_BAD_NETPATH,          errc::host_unreachable},
    {ERROR_BAD_NET_NAME,         errc::host_unreachable},
    {ERROR_NO_NET_OR_BAD_PATH,   errc::host_unreachable},
    {ERROR_HOST_UNREACHABLE,     errc::host_unreachable},
    {ERROR_HOST_DOWN,            errc::host_unreachable},
    {ERROR_PORT_UNREACHABLE,     errc::host_unreachable},
    {ERROR_PROTOCOL_UNREACHABLE, errc::host_unreachable},
    {ERROR_CONNECTION_REFUSED,   errc::host_unreachable},
    {ERROR_BAD_PROVIDER,         errc::host_unreachable},
    {ERROR_NETWORK_UNREACHABLE,  errc::network_unreachable},
    {ERROR_NO_NETWORK,           errc::network_down},
    {ERROR_NETWORK_BUSY,         errc::network_down},
    {ERROR_ADAP_HDW_ERR,         errc::network_down},
    {ERROR_BAD_NET_RESP,         errc::network_down},
    {ERROR_TOO_MANY_CMDS,        errc::network_down},
    {ERROR_TOO_MANY_NAMES,       errc::network_down},
    {ERROR_TOO_MANY_SESS,        errc::network_down},
    {ERROR_REQ_NOT_ACCEP,        errc::network_down},
    {ERROR_SHARING_PAUSED,       errc::network_down},
    {ERROR_DEV_NOT_EXIST,        errc::connection_aborted},
    {ERROR_UNEXP_NET_ERR,        errc::connection_aborted},
    {ERROR_NETNAME_DELETED,      errc::connection_aborted},
    {ERROR_BAD_DEV_TYPE,         errc::connection_aborted},
    {ERROR_VC_DISCONNECTED,      errc::connection_aborted},
    {ERROR_CONNECTION_ABORTED,   errc::connection_aborted},
    {ERROR_CONNECTION_INVALID,   errc::connection_aborted},
    {ERROR_CONNECTION_UNAVAIL,   errc::connection_aborted},
    {ERROR_GRACEFUL_DISCONNECT,  errc::connection_aborted},
    {ERROR_NOT_CONNECTED,        errc::connection_aborted},
    {ERROR_NO_LOGON_SERVERS,     errc::connection_aborted},
    {ERROR_LOGON_FAILURE,        errc::connection_aborted},
    {ERROR_NO_SUCH_LOGON_SESSION, errc::connection_aborted},
    {ERROR_SESSION_CREDENTIAL_CONFLICT, errc::connection_aborted},
    {ERROR_SEM_TIMEOUT,          errc::timed_out},
    {ERROR_TIMEOUT,              errc::timed_out},

    // So with a disk that was taken out, or that can't be read.
    {ERROR_INVALID_DRIVE,        errc::io_error},
    {ERROR_BAD_UNIT,             errc::io_error},
    {ERROR_NOT_READY,            errc::io_error},
    {ERROR_CRC,                  errc::io_error},
    {ERROR_SEEK,                 errc::io_error},
    {ERROR_NOT_DOS_DISK,         errc::io_error},
    {ERROR_SECTOR_NOT_FOUND,     errc::io_error},
    {ERROR_READ_FAULT,           errc::io_error},
    {ERROR_WRITE_FAULT,          errc::io_error},
    {ERROR_GEN_FAILURE,          errc::io_error},
    {kNoHayDispositivo,          errc::io_error},
    {ERROR_OPEN_FAILED,          errc::io_error},
    {ERROR_FILE_INVALID,         errc::io_error},
    {ERROR_UNRECOGNIZED_VOLUME,  errc::io_error},
    {ERROR_UNRECOGNIZED_MEDIA,   errc::io_error},
    {ERROR_NO_MEDIA_IN_DRIVE,    errc::io_error},
    {ERROR_IO_DEVICE,            errc::io_error},
    {ERROR_DEVICE_NOT_CONNECTED, errc::io_error},
    {ERROR_FILE_CORRUPT,         errc::io_error},
    {ERROR_DISK_CORRUPT,         errc::io_error},
    {ERROR_DEVICE_REMOVED,       errc::io_error},

    {ERROR_LOCK_VIOLATION,       errc::text_file_busy}, // kDeOtro
    {ERROR_INVALID_FUNCTION,     errc::not_supported}, // how a file system says that it has no such thing
};
// clang-format on

/// Tells whether the run would go on as without the file.
bool PasaPorFaltar(const Error& error)
{
    return error == errc::no_such_file_or_directory || error == errc::no_such_device ||
           error == errc::no_such_device_or_address || error == errc::not_a_directory;
}

} // namespace

Error Fallo(DWORD codigo)
{
    const auto* const fila = std::find_if(std::begin(kTabla), std::end(kTabla),
                                          [&](const auto& f) { return f.codigo == codigo; });
    if (fila != std::end(kTabla))
        return std::make_error_code(fila->significa);
    const Error delSistema{static_cast<int>(codigo), std::system_category()};
    return PasaPorFaltar(delSistema) ? std::make_error_code(errc::io_error) : delSistema;
}

DWORD ConSuLugar(const std::filesystem::path& ruta, DWORD codigo)
{
    if (codigo != ERROR_PATH_NOT_FOUND && codigo != ERROR_FILE_NOT_FOUND)
        return codigo;
    const std::filesystem::path raiz = Entera(ruta).root_path();
    if (raiz.empty() || GetFileAttributesW(raiz.c_str()) != INVALID_FILE_ATTRIBUTES)
        return codigo;
    const DWORD suyo = GetLastError();
    if (suyo == ERROR_ACCESS_DENIED) // who may not look at it is in it all the same
        return codigo;
    return PasaPorFaltar(Fallo(suyo)) ? ERROR_INVALID_DRIVE : suyo;
}

} // namespace sistema
