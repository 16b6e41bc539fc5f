#include "platform/cstring.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>

#include "platform/resource_form.h"

namespace {

/// What stands in front of a block's characters.
struct CCabecera {
    std::uint32_t capacidad; ///< characters that fit, beside the zero that closes them
    std::uint32_t largo;
};

char* NuevoBloque(std::size_t capacidad)
{
    if (capacidad > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("text");
    char* memoria = new char[sizeof(CCabecera) + capacidad + 1];
    const CCabecera cabecera = {static_cast<std::uint32_t>(capacidad), 0};
    std::memcpy(memoria, &cabecera, sizeof cabecera);
    return memoria + sizeof cabecera;
}

CCabecera CabeceraDe(const char* bloque)
{
    CCabecera cabecera{};
    std::memcpy(&cabecera, bloque - sizeof cabecera, sizeof cabecera);
    return cabecera;
}

void PonLargo(char* bloque, std::size_t largo)
{
    const CCabecera cabecera = {CabeceraDe(bloque).capacidad, static_cast<std::uint32_t>(largo)};
    std::memcpy(bloque - sizeof cabecera, &cabecera, sizeof cabecera);
    bloque[largo] = '\0';
}

/// A word with its lowest byte first in memory, and back.
constexpr std::uint64_t BajoPrimero(std::uint64_t palabra)
{
    if constexpr (std::endian::native == std::endian::little)
        return palabra;
    std::uint64_t vuelta = 0;
    for (int i = 0; i < 8; ++i, palabra >>= 8U)
        vuelta = (vuelta << 8U) | (palabra & 0xFFU);
    return vuelta;
}

} // namespace

char* CString::Bloque() const
{
    std::uint64_t palabra = 0;
    std::memcpy(&palabra, m_bytes, sizeof palabra);
    constexpr std::uint64_t kDireccion = ~std::uint64_t{0} >> 8U;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the address that PonBloque put there
    return reinterpret_cast<char*>(static_cast<std::uintptr_t>(BajoPrimero(palabra) & kDireccion));
}

std::size_t CString::LargoBloque() const
{
    return CabeceraDe(Bloque()).largo;
}

void CString::PonBloque(char* bloque)
{
    const std::uint64_t palabra = BajoPrimero(reinterpret_cast<std::uintptr_t>(bloque));
    std::memcpy(m_bytes, &palabra, sizeof palabra);
    m_bytes[kMasCorto] = static_cast<char>(kMarcaLargo);
}

void CString::AsignaLargo(std::string_view texto)
{
    // The text may be a part of this one: it is copied before anything of ours goes.
    if (texto.size() <= kMasCorto) {
        CString corto;
        corto.Asigna(texto);
        LiberaBloque();
        Toma(corto);
        return;
    }
    char* bloque = EsLargo() ? Bloque() : nullptr;
    if (bloque != nullptr && CabeceraDe(bloque).capacidad >= texto.size()) {
        std::memmove(bloque, texto.data(), texto.size());
    } else {
        bloque = NuevoBloque(texto.size());
        std::memcpy(bloque, texto.data(), texto.size());
        Libera();
        PonBloque(bloque);
    }
    PonLargo(bloque, texto.size());
}

void CString::LiberaBloque() noexcept
{
    delete[](Bloque() - sizeof(CCabecera));
}

CString CString::Mid(int desde, int cuantos) const
{
    const int largo = GetLength();
    desde = std::clamp(desde, 0, largo);
    cuantos = std::clamp(cuantos, 0, largo - desde);
    return std::string_view(*this).substr(static_cast<std::size_t>(desde),
                                          static_cast<std::size_t>(cuantos));
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
    const CCadenaRecurso* const cadena = BuscaRecurso(RecursosDeLaAplicacion().cadenas, numero);
    Asigna(cadena != nullptr ? cadena->texto : "");
    return cadena != nullptr;
}

CString CString::Suma(std::string_view a, std::string_view b)
{
    std::string suma;
    suma.reserve(a.size() + b.size());
    suma.append(a).append(b);
    return suma;
}
