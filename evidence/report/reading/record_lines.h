#pragma once

#include <array>
#include <string_view>

#include "cadastre/co_holder_columns.h"
#include "cadastre/column_reader.h"
#include "cadastre/exchange_format.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/record_types.h"
#include "cadastre/subparcel_columns.h"
#include "evidence/written_columns.h"

// A line of each layout, asked for the fields of a record by the columns of its table. So whoever
// takes a record in needn't know which layout it comes from.

namespace informe {

/// The first row for a field that has a place in a layout. For constants alone.
template <class R, std::size_t N, class F>
constexpr const CColumna<R>& ColumnaCon(const std::array<CColumna<R>, N>& tabla,
                                        const std::type_identity_t<CMiembroDe<R>>& campo, F hay)
{
    for (const CColumna<R>& columna : tabla)
        if (columna.campo == campo && hay(columna))
            return columna;
    throw "no row of the table is for that field";
}

/// A line of the read layout of the exchange file.
class CLineaLeida {
public:
    static constexpr bool kSuperficieEnTres = true;  ///< hectares, ares and centiares
    static constexpr bool kConParticipacion = false; ///< a parcel has its holder's share

    explicit CLineaLeida(std::string_view linea) : m_linea(linea) {}

    /// The field as it stands there; empty where the line is too short to have it.
    template <const auto& Tabla, auto Campo>
    std::string_view Texto() const
    {
        constexpr CLectura kDonde = ColumnaCon(Tabla, Campo, [](const auto& c) {
                                        return c.catastro.columna >= 0;
                                    }).catastro;
        return m_linea.Alcanza(kDonde.minimo) ? m_linea.Texto(kDonde) : std::string_view();
    }
    std::string_view Tipo() const { return m_linea.Texto(kLeeTipo); }
    // Land and construction come in two kinds of line here, and in one elsewhere.
    bool EsSuelo() const { return Tipo() == kTipoSuelo; }
    bool EsConstruccion() const { return !EsSuelo(); }

private:
    CLineaFija m_linea;
};

/// A line of the written layout.
class CLineaEscrita {
public:
    static constexpr bool kSuperficieEnTres = true;
    static constexpr bool kConParticipacion = true;

    /// All records have their kind in the same place.
    static constexpr CLectura kTipo = {Detras(LecturaDe(kColumnasParcela, &CDatosLinea::EMenor)), 2,
                                       0};

    explicit CLineaEscrita(std::string_view linea) : m_linea(linea) {}

    template <const auto& Tabla, auto Campo>
    std::string_view Texto() const
    {
        constexpr CLectura kDonde = LecturaDe(
            ColumnaCon(Tabla, Campo, [](const auto& c) { return c.escrita.columna >= 0; }));
        return m_linea.Texto(kDonde);
    }
    std::string_view Tipo() const { return m_linea.Texto(kTipo); }
    static bool EsSuelo() { return true; }
    static bool EsConstruccion() { return true; }
    /// Hands on the groups of a CT record, which stand one behind the other, each as a line of
    /// `kColumnasVinculo`. Those that no holder needs are empty.
    void RecorreGrupos(auto toma) const
    {
        constexpr short kAncho = FinDe(kColumnasVinculo);
        constexpr std::string_view kVacio = "0000000  00000";
        static_assert(kVacio.size() == kAncho);
        for (short desde = FinDe(kColumnasCabecera); desde + kAncho <= kAnchoRegistro;
             desde += kAncho) {
            const std::string_view grupo = m_linea.Texto(desde, kAncho);
            if (!grupo.empty() && grupo != kVacio)
                toma(CLineaEscrita(grupo));
        }
    }

private:
    CLineaFija m_linea;
};

/// A row of the table file that belongs to a record's table of columns.
template <const auto& SuTabla>
class CFila {
public:
    static constexpr bool kSuperficieEnTres = false;
    static constexpr bool kConParticipacion = true;

    explicit CFila(std::string_view fila) { Leetira(fila, m_campos); }

    template <const auto& Tabla, auto Campo>
    std::string_view Texto() const
    {
        constexpr auto kNumero =
            static_cast<std::size_t>(ColumnaCon(Tabla, Campo, [](const auto& c) {
                                         return c.tabla.numero >= 0;
                                     }).tabla.numero);
        return m_campos[kNumero];
    }
    static bool EsSuelo() { return true; }
    static bool EsConstruccion() { return true; }

private:
    std::array<std::string_view, CamposDeFila(SuTabla)> m_campos;
};

/// A field of a line of any layout that is a number.
template <const auto& Tabla, auto Campo>
int Entero(const auto& linea)
{
    return LeeEntero(linea.template Texto<Tabla, Campo>());
}
/// A surface, in square metres.
/// \param Campo  where it has one
template <const auto& Tabla, auto Campo, class L>
int Superficie(const L& linea)
{
    if constexpr (L::kSuperficieEnTres) {
        CDatosLinea datos;
        datos.hectareas = Entero<Tabla, &CDatosLinea::hectareas>(linea);
        datos.areas = Entero<Tabla, &CDatosLinea::areas>(linea);
        datos.centiareas = Entero<Tabla, &CDatosLinea::centiareas>(linea);
        return datos.DameSuperficie();
    } else {
        return Entero<Tabla, Campo>(linea);
    }
}

} // namespace informe
