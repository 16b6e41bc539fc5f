#pragma once

#include <cerrno>

#include "platform/files/fault_point.h"
#include "platform/files/system_files.h"

namespace sistema {

/// Makes a call that gives -1 and an error number on failure; one that a signal interrupted again.
template <class F>
auto Llama(Llamada cual, Error& error, F llamada) -> decltype(llamada())
{
    error.clear();
    for (;;) {
        if (const int tropiezo = Tropiezo(cual); tropiezo != 0)
            errno = tropiezo;
        else if (const auto resultado = llamada(); resultado != -1)
            return resultado;
        if (errno == EINTR)
            continue;
        error = Error(errno, std::generic_category());
        return -1;
    }
}

} // namespace sistema
