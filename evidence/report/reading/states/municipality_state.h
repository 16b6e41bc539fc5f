#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "cadastre/index.h"
#include "platform/cstring.h"

namespace informe {

/// A parcel by what it is known by.
struct CClaveParcela {
    short mun = 0;
    int polig = 0;
    int parcela = 0;

    friend auto operator<=>(const CClaveParcela&, const CClaveParcela&) = default;
    friend std::uint32_t HashDe(const CClaveParcela& clave)
    {
        const auto lugar = (static_cast<std::uint32_t>(clave.mun) << 16U) ^
                           static_cast<std::uint32_t>(clave.polig);
        return ::HashDe(lugar, static_cast<std::uint32_t>(clave.parcela));
    }
};

/// A municipality as a file, or a folder of tables, has it: what is compared of it and no more, in
/// lists that lie close together, as there may be a million lines of it. Texts are code page 1252
/// without the blanks that fill their columns.
struct CEstadoMunicipio {
    /// Each municipality has people of its own: who is gone from one may go on in the next.
    struct CPersona {
        CString nombre;
        CString dni;
        short mun = 0;

        friend bool operator==(const CPersona&, const CPersona&) = default;
    };
    /// A short text as a number, in the order of its letters.
    using CLetras = std::uint32_t;

    struct CVinculo {
        int persona = 0; ///< position among the people
        int partici = 0;
        CLetras titulo = 0;

        friend bool operator==(const CVinculo&, const CVinculo&) = default;
    };
    struct CSubparcela {
        CLetras letra = 0;
        int superficie = 0;                    ///< square metres
        std::array<CLetras, 2> calificacion{}; ///< the two pairs of class and intensity
        std::array<short, 2> intensidad{};
        short componente = 0; ///< of a built one

        friend auto operator<=>(const CSubparcela&, const CSubparcela&) = default;
    };
    struct CParcela {
        CClaveParcela clave;
        int superficie = 0; ///< square metres
        int paraje = -1;    ///< position among the places, below 0 for none
        std::uint32_t primerVinculo = 0;
        std::uint32_t vinculos = 0;
        std::uint32_t primeraSubparcela = 0;
        std::uint32_t subparcelas = 0;
    };

    std::span<const CVinculo> Vinculos(const CParcela& parcela) const
    {
        return {vinculos.data() + parcela.primerVinculo, parcela.vinculos};
    }
    /// By letter; those of one letter in the order of the file.
    std::span<const CSubparcela> Subparcelas(const CParcela& parcela) const
    {
        return {subparcelas.data() + parcela.primeraSubparcela, parcela.subparcelas};
    }
    const CPersona& Persona(int i) const { return personas[static_cast<std::size_t>(i)]; }
    CString Paraje(const CParcela& parcela) const
    {
        return parcela.paraje < 0 ? CString() : parajes[static_cast<std::size_t>(parcela.paraje)];
    }

    bool conPrincipal = false;      ///< the first link of a parcel is that of its main holder
    std::vector<short> gerencias;   ///< offices of its parcels, each once; 0 is none
    std::vector<CParcela> parcelas; ///< each once, in the order of the file
    std::vector<CPersona> personas;
    std::vector<CString> parajes;
    std::vector<CVinculo> vinculos;
    std::vector<CSubparcela> subparcelas;
    /// Subparcels of parcels that it doesn't have; nothing else is kept of them.
    int sinParcela = 0;
};

/// A short text as a number, and back.
CEstadoMunicipio::CLetras EnLetras(std::string_view texto);
CString DeLetras(CEstadoMunicipio::CLetras letras);

} // namespace informe
