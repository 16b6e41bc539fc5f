#pragma once

#include <optional>
#include <string>

#include "platform/cstring.h"

/// The user's stored settings, by section and key. On Windows they live in the registry under
/// Software\<company>\<program>, elsewhere in <company>/<program>.ini of the settings folder, a
/// file in INI form and UTF-8 that is replaced as a whole at each write.
class CAlmacenAjustes {
public:
    CAlmacenAjustes(const CString& empresa, const CString& programa);

    /// The value, or nothing where it was never stored or can't be read.
    std::optional<CString> Lee(const CString& seccion, const CString& clave) const;

    /// Stores the value and keeps all others. False, with the store as it was, if it can't.
    bool Escribe(const CString& seccion, const CString& clave, const CString& valor);

private:
    std::string m_lugar; ///< file, or key of the registry
};
