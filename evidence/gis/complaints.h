#pragma once

#include <string_view>

#include <cpl_error.h>

#include "platform/format.h"

// The driver's sentences go the way that GDAL's do (CPLError). Texts come in code page 1252 or
// UTF-8, and go out in UTF-8.

/// Tells that something failed, so that the program at work ends with an error.
void Falla(std::string_view texto);
/// The same of the exception that is being handled; of a file's with its name and the reason.
void FallaLaExcepcion() noexcept;
/// Tells what a user has to know, and goes on.
void Advierte(std::string_view texto);

/// Both with a printf form (see format.h).
template <class... T>
void FallaCon(std::string_view forma, const T&... argumentos)
{
    Falla(std::string_view(Formatea(forma, argumentos...)));
}
template <class... T>
void AdvierteCon(std::string_view forma, const T&... argumentos)
{
    Advierte(Formatea(forma, argumentos...));
}

/// Does what GDAL asks for and gives the answer. GDAL knows no exceptions: where one comes it is
/// told, and the answer is `siNo`.
template <class R, class F>
R SinExcepciones(R siNo, F hace) noexcept
{
    try {
        return hace();
    } catch (...) {
        FallaLaExcepcion();
        return siNo;
    }
}
