#pragma once

#include <string>
#include <tuple>

#include "platform/cstring.h"

namespace informe {

/// What tells one record from others of its kind.
struct CClave {
    int polig = 0;
    int parcela = 0;
    CString texto;

    friend bool operator==(const CClave& a, const CClave& b) = default;
    friend bool operator<(const CClave& a, const CClave& b)
    {
        return std::tie(a.polig, a.parcela, a.texto) < std::tie(b.polig, b.parcela, b.texto);
    }
};

/// "3-12", "3-12 a", or the text of what has no numbers.
std::string Nombra(const CClave& clave);

} // namespace informe
