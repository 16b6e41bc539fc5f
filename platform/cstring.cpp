#include "platform/cstring.h"

#include <algorithm>
#include <cstring>

#include "platform/cwinapp.h"

namespace {

// A block holds its capacity in front of its characters.
using Capacidad = std::size_t;
constexpr std::size_t kCabecera = sizeof(Capacidad);

char* NuevoBloque(Capacidad capacidad)
{
    char* memoria = new char[kCabecera + capacidad + 1];
    std::memcpy(memoria, &capacidad, kCabecera);
    return memoria + kCabecera;
}

Capacidad CapacidadDe(const char* bloque)
{
    Capacidad capacidad = 0;
    std::memcpy(&capacidad, bloque - kCabecera, kCabecera);
    return capacidad;
}

} // namespace

char* CString::Bloque() const
{
    char* bloque = nullptr;
    std::memcpy(&bloque, m_bytes, sizeof bloque);
    return bloque;
}

std::size_t CString::LargoBloque() const
{
    std::uint32_t largo = 0;
    std::memcpy(&largo, m_bytes + sizeof(char*), sizeof largo);
    return largo;
}

void CString::PonBloque(char* bloque, std::size_t largo)
{
    const auto largo32 = static_cast<std::uint32_t>(largo);
    std::memcpy(m_bytes, &bloque, sizeof bloque);
    std::memcpy(m_bytes + sizeof bloque, &largo32, sizeof largo32);
    m_bytes[kMasCorto] = kMarcaLargo;
}

void CString::Asigna(std::string_view texto)
{
    // The text may be a part of this one: it is copied before anything of ours goes.
    if (texto.size() <= kMasCorto) {
        char copia[kMasCorto + 1];
        std::copy(texto.begin(), texto.end(), copia);
        Libera();
        std::copy_n(copia, texto.size(), m_bytes);
        PonLargoCorto(texto.size());
        return;
    }
    char* bloque = nullptr;
    if (EsLargo() && CapacidadDe(Bloque()) >= texto.size()) {
        bloque = Bloque();
        std::memmove(bloque, texto.data(), texto.size());
    } else {
        bloque = NuevoBloque(texto.size());
        std::memcpy(bloque, texto.data(), texto.size());
        Libera();
    }
    bloque[texto.size()] = '\0';
    PonBloque(bloque, texto.size());
}

void CString::Toma(CString& otro) noexcept
{
    std::memcpy(m_bytes, otro.m_bytes, sizeof m_bytes);
    otro.PonLargoCorto(0);
}

void CString::LiberaBloque() noexcept
{
    delete[](Bloque() - kCabecera);
}

CString CString::Mid(int desde, int cuantos) const
{
    const int largo = GetLength();
    desde = std::clamp(desde, 0, largo);
    cuantos = std::clamp(cuantos, 0, largo - desde);
    return std::string_view(*this).substr(static_cast<std::size_t>(desde),
                                          static_cast<std::size_t>(cuantos));
}

CString CString::Right(int cuantos) const
{
    return Mid(GetLength() - std::clamp(cuantos, 0, GetLength()));
}

int CString::Find(char c) const
{
    return static_cast<int>(std::string_view(*this).find(c));
}

int CString::ReverseFind(char c) const
{
    return static_cast<int>(std::string_view(*this).rfind(c));
}

CString& CString::TrimRight(std::string_view cuales)
{
    const std::string_view texto = *this;
    return *this = texto.substr(0, texto.find_last_not_of(cuales) + 1);
}

CString& CString::TrimLeft(std::string_view cuales)
{
    const std::string_view texto = *this;
    return *this = texto.substr(std::min(texto.find_first_not_of(cuales), texto.size()));
}

int CString::Replace(std::string_view antes, std::string_view ahora)
{
    if (antes.empty())
        return 0;
    std::string texto{std::string_view(*this)};
    int veces = 0;
    for (std::size_t i = texto.find(antes); i != std::string::npos;
         i = texto.find(antes, i + ahora.size())) {
        texto.replace(i, antes.size(), ahora);
        ++veces;
    }
    Asigna(texto);
    return veces;
}

bool CString::LoadString(UINT numero)
{
    const char* texto = AfxGetApp()->Recursos().Texto(numero);
    Asigna(texto != nullptr ? texto : "");
    return texto != nullptr;
}

CString& CString::operator+=(std::string_view texto)
{
    return *this = Suma(*this, texto);
}

CString CString::Suma(std::string_view a, std::string_view b)
{
    std::string suma;
    suma.reserve(a.size() + b.size());
    suma.append(a).append(b);
    return suma;
}
