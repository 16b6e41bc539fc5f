#include "platform/format.h"

#include <charconv>

namespace {

void AnexaAjustado(std::string& destino, const CForma& forma, std::string_view valor)
{
    const auto ancho = static_cast<std::size_t>(forma.ancho);
    const std::size_t relleno = valor.size() < ancho ? ancho - valor.size() : 0;
    if (!forma.izquierda)
        destino.append(relleno, ' ');
    destino.append(valor);
    if (forma.izquierda)
        destino.append(relleno, ' ');
}

/// A number whose digits, with their minus if they have one, are ready.
void AnexaNumero(std::string& destino, const CForma& forma, std::string_view cifras)
{
    char signo = '\0';
    if (!cifras.empty() && cifras.front() == '-') {
        signo = '-';
        cifras.remove_prefix(1);
    } else if (forma.hueco) {
        signo = ' ';
    }
    const std::size_t largo = cifras.size() + (signo != '\0' ? 1U : 0U);
    const auto ancho = static_cast<std::size_t>(forma.ancho);
    const std::size_t relleno = largo < ancho ? ancho - largo : 0;
    const bool ceros = forma.ceros && !forma.izquierda;
    if (!forma.izquierda && !ceros)
        destino.append(relleno, ' ');
    if (signo != '\0')
        destino += signo;
    if (ceros)
        destino.append(relleno, '0');
    destino.append(cifras);
    if (forma.izquierda)
        destino.append(relleno, ' ');
}

void AnexaArgumento(std::string& destino, const CForma& forma, const CArgumento& argumento)
{
    if (const auto* entero = std::get_if<int>(&argumento))
        AnexaEntero(destino, forma, *entero);
    else if (const auto* real = std::get_if<double>(&argumento))
        AnexaReal(destino, forma, *real);
    else if (const auto* caracter = std::get_if<char>(&argumento))
        AnexaTexto(destino, forma, std::string_view(caracter, 1));
    else
        AnexaTexto(destino, forma, std::get<std::string_view>(argumento));
}

} // namespace

void AnexaEntero(std::string& destino, const CForma& forma, int valor)
{
    char cifras[16];
    const char* fin = std::to_chars(cifras, cifras + sizeof cifras, valor).ptr;
    AnexaNumero(destino, forma, std::string_view(cifras, static_cast<std::size_t>(fin - cifras)));
}

void AnexaReal(std::string& destino, const CForma& forma, double valor)
{
    char cifras[400]; // the longest double has 309 digits before its point
    const int decimales = forma.precision < 0 ? 6 : forma.precision > 60 ? 60 : forma.precision;
    const char* fin =
        std::to_chars(cifras, cifras + sizeof cifras, valor, std::chars_format::fixed, decimales)
            .ptr;
    AnexaNumero(destino, forma, std::string_view(cifras, static_cast<std::size_t>(fin - cifras)));
}

void AnexaTexto(std::string& destino, const CForma& forma, std::string_view valor)
{
    if (forma.precision >= 0)
        valor = valor.substr(0, static_cast<std::size_t>(forma.precision));
    AnexaAjustado(destino, forma, valor);
}

void AnexaFormato(std::string& destino, std::string_view texto,
                  std::initializer_list<CArgumento> argumentos)
{
    const auto* siguiente = argumentos.begin();
    while (!texto.empty()) {
        const std::size_t signo = texto.find('%');
        destino.append(texto.substr(0, signo));
        if (signo == std::string_view::npos)
            return;
        texto.remove_prefix(signo);
        if (texto.starts_with("%%")) {
            destino += '%';
            texto.remove_prefix(2);
            continue;
        }
        const CForma forma = AnalizaForma(texto);
        if (siguiente != argumentos.end())
            AnexaArgumento(destino, forma, *siguiente++);
    }
}
