#include "evidence/gis/writing/source_fields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

#include <cpl_string.h>

#include "evidence/gis/names.h"
#include "platform/ansi.h"
#include "platform/plain_texts.h"

namespace {

constexpr char32_t kNoEsLetra = 0xFFFFFFFF;

/// Takes the next letter off a text; `kNoEsLetra` for bytes that are no UTF-8.
char32_t Siguiente(std::string_view& utf8)
{
    const auto primero = static_cast<unsigned char>(utf8.front());
    utf8.remove_prefix(1);
    const std::size_t siguen = primero < 0x80 ? 0 : primero < 0xE0 ? 1 : primero < 0xF0 ? 2 : 3;
    if ((primero >= 0x80 && primero < 0xC2) || primero > 0xF4 || utf8.size() < siguen)
        return kNoEsLetra;
    char32_t letra = siguen == 0 ? primero : primero & (0x3FU >> siguen);
    for (std::size_t i = 0; i < siguen; ++i) {
        const auto byte = static_cast<unsigned char>(utf8[i]);
        if ((byte & 0xC0U) != 0x80U)
            return kNoEsLetra;
        letra = (letra << 6U) | (byte & 0x3FU);
    }
    utf8.remove_prefix(siguen);
    return letra;
}

/// The text in the code page, with a question mark for each letter that is lacking, and whether
/// none is.
std::pair<CString, bool> EnCodigo(std::string_view utf8)
{
    std::string bytes;
    bool todas = true;
    while (!utf8.empty()) {
        const std::optional<char> byte = ansi::ByteDe(Siguiente(utf8));
        todas = todas && byte;
        bytes.push_back(byte.value_or('?'));
    }
    return {bytes, todas};
}

} // namespace

std::optional<CString> EnAnsi(const char* utf8)
{
    auto [texto, todas] = EnCodigo(utf8);
    return todas ? std::optional(std::move(texto)) : std::nullopt;
}

CString AnsiParaDecir(const char* utf8)
{
    return EnCodigo(utf8).first;
}

bool TieneControles(std::string_view texto)
{
    constexpr unsigned char kPrimeraLetra = 0x20;
    return std::ranges::any_of(
        texto, [](char c) { return static_cast<unsigned char>(c) < kPrimeraLetra; });
}

std::optional<bool> SiONo(const char* texto)
{
    const CPLString dicho = CPLString(texto).Trim();
    const auto es = [&](const char* forma) { return EQUAL(dicho.c_str(), forma); };
    // What isn't ASCII has its two cases here.
    constexpr const char* kSi[] = {"SI", "SÍ", "Sí", "S", "YES", "Y", "TRUE", "T", "ON", "1"};
    constexpr const char* kNo[] = {"NO", "N", "FALSE", "F", "OFF", "0"};
    if (std::ranges::any_of(kSi, es))
        return true;
    return std::ranges::any_of(kNo, es) ? std::optional(false) : std::nullopt;
}

bool SeVenIgual(const CString& a, const CString& b)
{
    return a == b || ansi::AUtf8(a) == ansi::AUtf8(b);
}

int CCamposElemento::Puesto(const char* nombre) const
{
    const int i = m_elemento.GetFieldIndex(nombre);
    return i >= 0 && m_elemento.IsFieldSetAndNotNull(i) ? i : -1;
}

void CCamposElemento::Anota(const char* forma, const char* campo, const char* utf8)
{
    if (m_falta.IsEmpty())
        m_falta = Formatea(forma, campo, AnsiParaDecir(utf8));
}

CString CCamposElemento::FaltaDe(const CDePoligono& de, bool sinPoligono) const
{
    if (!m_falta.IsEmpty())
        return m_falta;
    if (de.entrada.IsEmpty())
        return sinPoligono ? CString() : "no dice de qué polígono es: falta el campo poligono"_ansi;
    const std::string_view entrada = de.entrada;
    return TieneControles(entrada) || entrada.find_first_of("/\\") != std::string_view::npos
               ? "el nombre del polígono lleva una barra o un carácter de control"_ansi
               : m_falta;
}

CString CDePoligono::EnPalabras() const
{
    return entrada.IsEmpty() ? entrada : " del polígono "_ansi + entrada;
}

std::optional<CString> CCamposElemento::Texto(const char* nombre)
{
    const int i = Puesto(nombre);
    if (i < 0)
        return std::nullopt;
    const char* utf8 = m_elemento.GetFieldAsString(i);
    const OGRFieldType tipo = m_elemento.GetFieldDefnRef(i)->GetType();
    if (tipo == OFTDate || tipo == OFTTime || tipo == OFTDateTime) {
        Anota("el campo %s es de fecha u hora y no de texto: %s. El origen se lee con los nombres "
              "como texto, en GeoJSON con -oo DATE_AS_STRING=YES"_ansi,
              nombre, utf8);
        return std::nullopt;
    }
    std::optional<CString> texto = EnAnsi(utf8);
    if (!texto)
        Anota("el campo %s lleva letras que un dibujo no puede llevar: %s"_ansi, nombre, utf8);
    return texto;
}

bool CCamposElemento::EsNumero(const char* nombre) const
{
    const int i = m_elemento.GetFieldIndex(nombre);
    const OGRFieldType tipo = i < 0 ? OFTString : m_elemento.GetFieldDefnRef(i)->GetType();
    return tipo == OFTInteger || tipo == OFTInteger64 || tipo == OFTReal;
}

std::optional<int> CCamposElemento::Entero(const char* nombre)
{
    const int i = Puesto(nombre);
    if (i < 0)
        return std::nullopt;
    const std::string_view texto = m_elemento.GetFieldAsString(i);
    if (EstaEnBlanco(texto))
        return std::nullopt;
    char* fin = nullptr;
    const double valor = CPLStrtod(texto.data(), &fin);
    const bool entero = fin != texto.data() && *fin == '\0' && std::trunc(valor) == valor &&
                        std::fabs(valor) <= std::numeric_limits<int>::max();
    if (entero)
        return static_cast<int>(valor);
    Anota("el campo %s no es un número entero: %s"_ansi, nombre, texto.data());
    return std::nullopt;
}

std::optional<double> CCamposElemento::Real(const char* nombre)
{
    const int i = Puesto(nombre);
    if (i < 0)
        return std::nullopt;
    const std::string_view texto = m_elemento.GetFieldAsString(i);
    if (EstaEnBlanco(texto))
        return std::nullopt;
    if (m_elemento.GetFieldDefnRef(i)->GetType() != OFTString)
        return m_elemento.GetFieldAsDouble(i); // what is not in its text counts as well
    char* fin = nullptr;
    const double valor = CPLStrtod(texto.data(), &fin);
    if (fin != texto.data() && EstaEnBlanco(fin))
        return valor;
    Anota("el campo %s no es un número, cuyos decimales van tras un punto: %s"_ansi, nombre,
          texto.data());
    return std::nullopt;
}

std::optional<bool> CCamposElemento::SiNo(const char* nombre)
{
    const int i = Puesto(nombre);
    if (i < 0 || EstaEnBlanco(m_elemento.GetFieldAsString(i)))
        return std::nullopt;
    if (m_elemento.GetFieldDefnRef(i)->GetType() != OFTString)
        return m_elemento.GetFieldAsInteger(i) != 0;
    const char* texto = m_elemento.GetFieldAsString(i);
    const std::optional<bool> dicho = SiONo(texto);
    if (!dicho)
        Anota("el campo %s no dice ni sí ni no: %s"_ansi, nombre, texto);
    return dicho;
}

CString EntradaUsual(int poligono)
{
    return Formatea("%03d", poligono);
}

CDePoligono LeeDePoligono(CCamposElemento& campos)
{
    CDePoligono suyo;
    suyo.poligono = campos.Entero(capa::kPoligono);
    if (campos.EsNumero(capa::kEntrada)) { // the same number is all that is left of the name
        const std::optional<int> leido = campos.Entero(capa::kEntrada);
        if (!suyo.poligono || suyo.poligono == leido) {
            suyo.poligono = leido;
            suyo.entrada = leido ? EntradaUsual(*leido) : CString();
            return suyo;
        }
    }
    const std::optional<CString> entrada = campos.Texto(capa::kEntrada);
    suyo.nombrada = entrada && !entrada->IsEmpty();
    if (suyo.nombrada)
        suyo.entrada = *entrada;
    else if (suyo.poligono)
        suyo.entrada = EntradaUsual(*suyo.poligono);
    return suyo;
}
