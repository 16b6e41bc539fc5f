#pragma once

#include <filesystem>
#include <optional>

#include "platform/cwinapp.h"

/// Base of the application: gives it the values of the program's version block. They are texts in
/// code page 1252, empty until they were read.
class CVersionApp : public CWinApp {
public:
    BOOL InitInstance() override { return 1; }
    /// Makes the values below available. Called once, at start-up.
    void ReadResourceInformation();
    /// Notes when the program's file was last written. Called once, after the version block.
    void ReadFileTime();

    CString GetAppProductName() const { return m_producto; }
    CString GetAppDescription() const { return m_descripcion; }
    CString GetAppVersion() const { return m_version; }
    CString GetAppCopyright() const { return m_copyright; }
    CString GetAppCompany() const { return m_empresa; }
    /// When the program's file was last written; nothing where the system doesn't tell.
    std::optional<std::filesystem::file_time_type> GetAppFileTime() const { return m_fecha; }

private:
    CString m_producto;
    CString m_descripcion;
    CString m_version;
    CString m_copyright;
    CString m_empresa;
    std::optional<std::filesystem::file_time_type> m_fecha;
};
