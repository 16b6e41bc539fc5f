#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/cstring.h"
#include "platform/plain_texts.h"

class CModulo;
class CParaje;
class CTitular;

/// What tells one record from others of its kind, and what a person calls it by.
class CClaveRegistro {
public:
    static CClaveRegistro DeParcela(int polig, int parcela)
    {
        return {Clase::Parcela, polig, parcela, {}};
    }
    static CClaveRegistro DePoligono(int polig)
    {
        return {Clase::Poligono, polig, 0, std::to_string(polig)};
    }
    static CClaveRegistro DeSubparcela(int polig, int parcela, std::string_view letra)
    {
        return {Clase::Subparcela, polig, parcela, SinBlancos(letra)};
    }
    static CClaveRegistro DeTitular(std::string_view nombre, std::string_view dni);
    static CClaveRegistro De(const CTitular& titular);
    static CClaveRegistro DeParaje(std::string_view nombre)
    {
        return {Clase::Paraje, 0, 0, SinCola(nombre)};
    }
    static CClaveRegistro De(const CParaje& paraje);
    /// \param denominacion  empty where only class and intensity are known
    static CClaveRegistro DeModulo(std::string_view denominacion, std::string_view cal, int inten);
    static CClaveRegistro De(const CModulo& modulo);

    int Polig() const { return m_polig; }
    int Parcela() const { return m_parcela; }
    /// "3-12", "3-12 a", "3", "ANA, 11111111", "LA ERA", "VIÑA, V- 3": code page 1252.
    CString Nombre() const;

    friend auto operator<=>(const CClaveRegistro& a, const CClaveRegistro& b) = default;

private:
    enum class Clase : std::uint8_t { Poligono, Parcela, Subparcela, Titular, Paraje, Modulo };

    CClaveRegistro(Clase clase, int polig, int parcela, CString texto)
        : m_clase(clase), m_polig(polig), m_parcela(parcela), m_texto(std::move(texto))
    {
    }
    bool EsDeParcela() const { return m_clase == Clase::Parcela || m_clase == Clase::Subparcela; }

    Clase m_clase;
    int m_polig; ///< this and the next one 0 for what belongs to no parcel
    int m_parcela;
    CString m_texto;
};
