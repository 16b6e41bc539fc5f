#pragma once

#include <memory>
#include <optional>
#include <string>

#include <wx/string.h>

struct chmFile;

/// A compiled help file.
class CFicheroAyuda {
public:
    /// Opens the file. Where it can't be read, `Lee` gives nothing.
    explicit CFicheroAyuda(const wxString& ruta);
    ~CFicheroAyuda();

    /// Content of a file inside it. Nothing where it isn't there or the help file can't be read.
    std::optional<std::string> Lee(const wxString& nombre) const;

private:
    struct CCierra {
        void operator()(chmFile* fichero) const;
    };
    std::unique_ptr<chmFile, CCierra> m_fichero;
};

/// Lets the library's help window open what stands inside a help file, by names of the form
/// "file:path#chm:name". To be called once: each call adds a handler more.
void RegistraFicherosDeAyuda();
