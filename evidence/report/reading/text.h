#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

// Everything that the report writes is UTF-8, and so are the literals of this folder. What comes
// out of the program's files is code page 1252 and passes through `Texto` first.

namespace informe {

/// "1.234.567"
std::string Miles(std::int64_t numero);
std::string Miles(std::unsigned_integral auto numero)
{
    return Miles(static_cast<std::int64_t>(numero));
}
/// The number with so many decimals, "1.234,50".
std::string Decimal(double numero, int decimales);
/// The number with two decimals and a point, "1234.50", for programs.
std::string Fijo(double numero);
/// A surface given in square metres, as one reads it: "9.999 m²", "1,25 ha", "127,4 ha".
std::string Superficie(std::int64_t metros);
/// The same as a number of hectares to the square metre, "127,4321".
std::string Hectareas(std::int64_t metros);
/// "1 línea", "3 líneas"
std::string Cuantos(std::integral auto cuantos, std::string_view uno, std::string_view varios)
{
    return Miles(cuantos) + " " + std::string(cuantos == 1 ? uno : varios);
}
/// A sum as eight digits, "CBF43926", or a number as so many.
std::string Hexadecimal(std::uint32_t numero, int cifras = 8);

/// A text of the program's files, in UTF-8; a byte that is no character becomes the sign for such.
std::string Texto(std::string_view texto);
/// The same without the blanks at either end that its columns have.
std::string TextoSinBlancos(std::string_view texto);

} // namespace informe
