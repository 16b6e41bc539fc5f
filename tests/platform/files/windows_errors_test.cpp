#include <algorithm>
#include <iterator>

#include <gtest/gtest.h>

#include "platform/files/cfile.h"
#include "platform/files/windows_handles.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

/// A drive that this system doesn't have.
fs::path UnidadQueNoHay()
{
    const DWORD hay = GetLogicalDrives();
    for (wchar_t letra = L'D'; letra < L'Z'; ++letra)
        if ((hay >> static_cast<unsigned>(letra - L'A') & 1U) == 0)
            return std::wstring{letra, L':', L'\\'};
    return {};
}

} // namespace

TEST(ErroresWindows, AShareOrADiskThatIsGoneEndsTheRunAndIsNoMissingFile)
{
    constexpr DWORD kIdos[] = {
        ERROR_BAD_NETPATH,      ERROR_DEV_NOT_EXIST,
        ERROR_BAD_NET_NAME,     ERROR_NETNAME_DELETED,
        ERROR_UNEXP_NET_ERR,    ERROR_REM_NOT_LIST,
        ERROR_SEM_TIMEOUT,      ERROR_NETWORK_UNREACHABLE,
        ERROR_HOST_UNREACHABLE, ERROR_CONNECTION_ABORTED,
        ERROR_NETWORK_BUSY,     ERROR_REQ_NOT_ACCEP,
        ERROR_LOGON_FAILURE,    ERROR_INVALID_DRIVE,
        ERROR_NOT_READY,        ERROR_GEN_FAILURE,
        ERROR_FILE_INVALID,     ERROR_DEVICE_NOT_CONNECTED,
        ERROR_VC_DISCONNECTED,  ERROR_BAD_UNIT,
    };
    for (const DWORD codigo : kIdos) {
        const sistema::Error error = sistema::Fallo(codigo);
        EXPECT_FALSE(CFileException::EsCorriente(error)) << codigo << ": " << error.message();
    }
}

TEST(ErroresWindows, NothingElseTheSystemSaysPassesForAFileThatIsNotThere)
{
    constexpr DWORD kUltimo = 16000; // behind it are other things than errors of calls
    constexpr DWORD kFaltan[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_BAD_PATHNAME,
                                 ERROR_DIRECTORY};
    for (DWORD codigo = 1; codigo < kUltimo; ++codigo) {
        const sistema::Error error = sistema::Fallo(codigo);
        const bool falta =
            error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
            error == std::errc::no_such_device || error == std::errc::no_such_device_or_address;
        const bool seSabe =
            std::find(std::begin(kFaltan), std::end(kFaltan), codigo) != std::end(kFaltan);
        EXPECT_EQ(falta, seSabe) << codigo << ": " << error.message();
    }
}

TEST(ErroresWindows, AFileIsMissingWhereItsDriveAnswersAndAFaultWhereItDoesNot)
{
    const CCarpetaPrueba carpeta;
    const struct {
        const char* motivo;
        fs::path ruta;
        bool falta;
    } casos[] = {
        {"a file of a folder", carpeta.Ruta() / "no.txt", true},
        {"a folder of a drive", carpeta.Ruta() / "no" / "no.txt", true},
        {"a drive that was taken out", UnidadQueNoHay() / "no.txt", false},
        {"a folder of such a one", UnidadQueNoHay() / "no" / "no.txt", false},
    };
    for (const auto& caso : casos) {
        SCOPED_TRACE(caso.motivo);
        sistema::Error error;
        EXPECT_EQ(sistema::Abre(caso.ruta, sistema::Modo::Leer, error), sistema::kCerrado);
        EXPECT_EQ(error == std::errc::no_such_file_or_directory, caso.falta) << error.message();
        sistema::Mira(caso.ruta, error);
        EXPECT_EQ(!error, caso.falta) << error.message();
        if (!caso.falta) {
            sistema::Lista(caso.ruta.parent_path(), error);
            EXPECT_FALSE(CFileException::EsCorriente(error)) << error.message();
        }
    }
}
