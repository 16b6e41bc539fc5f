#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/cstring.h"

/// A value to be stored.
struct CAjuste {
    CString seccion;
    CString clave;
    CString valor;
    bool esNumero = false; ///< the registry keeps numbers in a form of their own
};

/// The user's stored settings, by section and key, whose letters may be capital or small. On
/// Windows they live in the registry under Software\<company>\<program>, elsewhere in
/// <company>/<program>.ini of the settings folder, a file in INI form. A person may write to it:
/// blanks around keys and values don't matter, nor does a note behind a number. Values are bytes as
/// they come, so that a name of a file that is no UTF-8 stays what it was; one that begins or ends
/// with a blank stands in quotes.
class CAlmacenAjustes {
public:
    CAlmacenAjustes(const CString& empresa, const CString& programa);

    /// A section's values in the order of `claves`; nothing for one that was never stored. An INI
    /// file is read once for all of them. Raises CFileException where the store is there and can't
    /// be read.
    std::vector<std::optional<CString>> Lee(const CString& seccion,
                                            std::span<const CString> claves) const;

    /// Stores the values in one step and keeps all others, also those that another program stores
    /// at the same time. Raises CFileException, with the store as it was, where it can't; for a
    /// value with a line end, which an INI file can't hold, when all others are stored. Waits up to
    /// two seconds for another program that is storing its own. Who is killed while he stores
    /// leaves an INI file as it was, and in the registry what he came to.
    void Escribe(std::span<const CAjuste> ajustes);

protected:
    explicit CAlmacenAjustes(std::string lugar) : m_lugar(std::move(lugar)) {}

    std::string m_lugar; ///< file, or key of the registry
};

/// A store for programs that are started, which nothing of their user's own reaches. It is gone
/// with the object.
class CAlmacenAparte : public CAlmacenAjustes {
public:
    /// \param carpeta  of the store's own, for its file
    CAlmacenAparte(const CString& empresa, const CString& programa,
                   const std::filesystem::path& carpeta);
    CAlmacenAparte(const CAlmacenAparte&) = delete;
    CAlmacenAparte& operator=(const CAlmacenAparte&) = delete;
    ~CAlmacenAparte();
    /// The variable, and its value, by which a program finds this store.
    const std::pair<std::string, std::string>& Variable() const { return m_variable; }

private:
    std::pair<std::string, std::string> m_variable;
};
