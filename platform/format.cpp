#include "platform/format.h"

#include <algorithm>
#include <charconv>

namespace {

char* Repite(char* destino, std::size_t veces, char c)
{
    std::memset(destino, c, veces);
    return destino + veces;
}

char* Copia(char* destino, std::string_view texto)
{
    return std::copy(texto.begin(), texto.end(), destino);
}

/// What a value lacks to its form's width.
std::size_t Relleno(const CForma& forma, std::size_t largo)
{
    const auto ancho = static_cast<std::size_t>(forma.ancho);
    return largo < ancho ? ancho - largo : 0;
}

/// A number whose digits, with their minus if they have one, are ready.
char* PonNumero(char* destino, const CForma& forma, std::string_view cifras)
{
    char signo = '\0';
    if (!cifras.empty() && cifras.front() == '-') {
        signo = '-';
        cifras.remove_prefix(1);
    } else if (forma.hueco) {
        signo = ' ';
    }
    const std::size_t relleno = Relleno(forma, cifras.size() + (signo != '\0' ? 1U : 0U));
    const bool ceros = forma.ceros && !forma.izquierda;
    if (!forma.izquierda && !ceros)
        destino = Repite(destino, relleno, ' ');
    if (signo != '\0')
        *destino++ = signo;
    if (ceros)
        destino = Repite(destino, relleno, '0');
    destino = Copia(destino, cifras);
    return forma.izquierda ? Repite(destino, relleno, ' ') : destino;
}

/// Appends what `pon` puts into a room for the width of the form and `largo` characters at most.
template <class F>
void Anexa(std::string& destino, const CForma& forma, std::size_t largo, F pon)
{
    const std::size_t antes = destino.size();
    destino.resize(antes + std::max(largo, static_cast<std::size_t>(forma.ancho)));
    destino.resize(static_cast<std::size_t>(pon(destino.data() + antes) - destino.data()));
}

void AnexaArgumento(std::string& destino, const CForma& forma, const CArgumento& argumento)
{
    if (const auto* entero = std::get_if<int>(&argumento)) {
        Anexa(destino, forma, kEnteroMasLargo,
              [&](char* p) { return PonEntero(p, forma, *entero); });
    } else if (const auto* real = std::get_if<double>(&argumento)) {
        Anexa(destino, forma, kRealMasLargo, [&](char* p) { return PonReal(p, forma, *real); });
    } else {
        const auto* caracter = std::get_if<char>(&argumento);
        const std::string_view texto = caracter != nullptr ? std::string_view(caracter, 1)
                                                           : std::get<std::string_view>(argumento);
        Anexa(destino, forma, texto.size(), [&](char* p) { return PonTexto(p, forma, texto); });
    }
}

} // namespace

char* PonEntero(char* destino, const CForma& forma, int valor)
{
    char cifras[kEnteroMasLargo];
    const char* fin = std::to_chars(cifras, cifras + sizeof cifras, valor).ptr;
    return PonNumero(destino, forma, {cifras, fin});
}

char* PonReal(char* destino, const CForma& forma, double valor)
{
    char cifras[kRealMasLargo];
    const int decimales = forma.precision < 0 ? 6 : forma.precision > 60 ? 60 : forma.precision;
    const char* fin =
        std::to_chars(cifras, cifras + sizeof cifras, valor, std::chars_format::fixed, decimales)
            .ptr;
    return PonNumero(destino, forma, {cifras, fin});
}

char* PonTexto(char* destino, const CForma& forma, std::string_view valor)
{
    if (forma.precision >= 0)
        valor = valor.substr(0, static_cast<std::size_t>(forma.precision));
    const std::size_t relleno = Relleno(forma, valor.size());
    if (!forma.izquierda)
        destino = Repite(destino, relleno, ' ');
    destino = Copia(destino, valor);
    return forma.izquierda ? Repite(destino, relleno, ' ') : destino;
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
