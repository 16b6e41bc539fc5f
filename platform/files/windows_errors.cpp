#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "platform/files/windows_handles.h"

// What the numbers of the system's errors mean to a run. A file that isn't there is a matter of the
// data: the run goes on without it. So only what surely says that may pass for it. The place of the
// file that is gone, a share above all, is a fault that ends the run, however the system words it.

namespace sistema {
namespace {

using std::errc;

constexpr DWORD kNoHayDispositivo = 433; // for which the headers have no name

// What each means, and the system's numbers for it.
constexpr struct {
    errc significa;
    std::initializer_list<DWORD> codigos;
} kTabla[] = {
    // The place is there, the file isn't; or no file can have the name. But see `ConSuLugar`.
    {errc::no_such_file_or_directory,
     {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_BAD_PATHNAME}},
    {errc::invalid_argument, {ERROR_INVALID_NAME}},
    {errc::not_a_directory, {ERROR_DIRECTORY}},
    {errc::filename_too_long, {ERROR_FILENAME_EXCED_RANGE}},
    {errc::too_many_symbolic_link_levels, {ERROR_CANT_RESOLVE_FILENAME}},

    // A share or its machine is gone, or lets nobody in any more.
    {errc::host_unreachable,
     {ERROR_REM_NOT_LIST, ERROR_BAD_NETPATH, ERROR_BAD_NET_NAME, ERROR_NO_NET_OR_BAD_PATH,
      ERROR_HOST_UNREACHABLE, ERROR_HOST_DOWN, ERROR_PORT_UNREACHABLE, ERROR_PROTOCOL_UNREACHABLE,
      ERROR_CONNECTION_REFUSED, ERROR_BAD_PROVIDER}},
    {errc::network_unreachable, {ERROR_NETWORK_UNREACHABLE}},
    {errc::network_down,
     {ERROR_NO_NETWORK, ERROR_NETWORK_BUSY, ERROR_ADAP_HDW_ERR, ERROR_BAD_NET_RESP,
      ERROR_TOO_MANY_CMDS, ERROR_TOO_MANY_NAMES, ERROR_TOO_MANY_SESS, ERROR_REQ_NOT_ACCEP,
      ERROR_SHARING_PAUSED}},
    {errc::connection_aborted,
     {ERROR_DEV_NOT_EXIST, ERROR_UNEXP_NET_ERR, ERROR_NETNAME_DELETED, ERROR_BAD_DEV_TYPE,
      ERROR_VC_DISCONNECTED, ERROR_CONNECTION_ABORTED, ERROR_CONNECTION_INVALID,
      ERROR_CONNECTION_UNAVAIL, ERROR_GRACEFUL_DISCONNECT, ERROR_NOT_CONNECTED,
      ERROR_NO_LOGON_SERVERS, ERROR_LOGON_FAILURE, ERROR_NO_SUCH_LOGON_SESSION,
      ERROR_SESSION_CREDENTIAL_CONFLICT}},
    {errc::timed_out, {ERROR_SEM_TIMEOUT, ERROR_TIMEOUT}},

    // So with a disk that was taken out,
    {errc::io_error,
     {ERROR_INVALID_DRIVE, ERROR_BAD_UNIT, ERROR_NOT_READY, ERROR_NOT_DOS_DISK, kNoHayDispositivo,
      ERROR_OPEN_FAILED, ERROR_FILE_INVALID, ERROR_UNRECOGNIZED_VOLUME, ERROR_UNRECOGNIZED_MEDIA,
      ERROR_NO_MEDIA_IN_DRIVE, ERROR_DEVICE_NOT_CONNECTED, ERROR_DEVICE_REMOVED}},
    // or that can't be read.
    {errc::io_error,
     {ERROR_CRC, ERROR_SEEK, ERROR_SECTOR_NOT_FOUND, ERROR_READ_FAULT, ERROR_WRITE_FAULT,
      ERROR_GEN_FAILURE, ERROR_IO_DEVICE, ERROR_FILE_CORRUPT, ERROR_DISK_CORRUPT}},

    {errc::text_file_busy, {ERROR_LOCK_VIOLATION}}, // kDeOtro
    // How a file system says that it has no such thing.
    {errc::not_supported, {ERROR_INVALID_FUNCTION}},
};

/// Tells whether the run would go on as without the file.
bool PasaPorFaltar(const Error& error)
{
    return error == errc::no_such_file_or_directory || error == errc::no_such_device ||
           error == errc::no_such_device_or_address || error == errc::not_a_directory;
}

} // namespace

Error Fallo(DWORD codigo)
{
    for (const auto& [significa, codigos] : kTabla)
        if (std::ranges::count(codigos, codigo) != 0)
            return std::make_error_code(significa);
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
