#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "cadastre/messages.h"
#include "platform/cstring.h"
#include "platform/files/cstdio_file.h"

/// All messages, by number.
constexpr std::span<const CMensaje> Catalogo()
{
    return kCatalogo;
}

/// The message with a number, which must be one of the catalogue's.
constexpr const CMensaje& DameMensaje(Mensaje numero)
{
    return *std::ranges::lower_bound(kCatalogo, numero, {}, &CMensaje::numero);
}

/// The conversion of a printf form that an argument of this type is for.
template <class T>
constexpr char ConversionDe()
{
    if (std::is_convertible_v<const T&, std::string_view>)
        return 's';
    if (std::is_floating_point_v<T>)
        return 'f';
    return std::is_same_v<T, char> ? 'c' : std::is_integral_v<T> ? 'd' : '?';
}

/// Tells whether arguments of these types are those of a text with printf forms.
template <class... T>
constexpr bool Encajan(std::string_view forma)
{
    constexpr char kSuyas[] = {ConversionDe<T>()..., '\0'};
    std::size_t cuantos = 0;
    bool enForma = false;
    for (const char c : forma) {
        if (!enForma) {
            enForma = c == '%';
            continue;
        }
        if (c != 'd' && c != 's' && c != 'f' && c != 'c')
            continue; // a flag, a width, or the length of a number
        if (kSuyas[cuantos++] != c)
            return false;
        enForma = false;
    }
    return !enForma && cuantos == sizeof...(T);
}

/// A message together with the types of the arguments that it is raised with. Types that don't fit
/// the message's text don't compile.
template <class... T>
class CMensajeCon {
public:
    consteval CMensajeCon(Mensaje numero) : m_mensaje(&DameMensaje(numero))
    {
        if (!Encajan<T...>(m_mensaje->texto))
            throw "the arguments are not those of the message";
    }
    const CMensaje* operator->() const { return m_mensaje; }

private:
    const CMensaje* m_mensaje;
};

/// Where a run's messages go: its log and its two counters.
struct CAvisos {
    CStdioFile& log;
    int& numErrores;
    int& numWarnings;
};

/// Writes a message to the log and raises no counter. Raises CFileException, but never for a log
/// that is written in its place (CFile::modeInPlace).
/// \param argumentos  int, double, char or text, in the order of the message's forms
template <class... T>
void EscribeMensaje(CStdioFile& log, CMensajeCon<std::type_identity_t<T>...> mensaje,
                    const T&... argumentos)
{
    std::string& linea = log.Borrador();
    AnexaFormato(linea, mensaje->texto, {CArgumento(argumentos)...});
    log.WriteString(linea);
}

/// Adds one to a counter, which wraps at 32 bits; `Ninguno` does nothing.
void Cuenta(const CAvisos& avisos, Contador contador);

/// Raises a message: writes it to the log, then adds one to its counter. A run's log is written in
/// its place and passes over a write that fails, so the counter is raised all the same.
template <class... T>
void Avisa(const CAvisos& avisos, CMensajeCon<std::type_identity_t<T>...> mensaje,
           const T&... argumentos)
{
    EscribeMensaje(avisos.log, mensaje, argumentos...);
    Cuenta(avisos, mensaje->contador);
}
