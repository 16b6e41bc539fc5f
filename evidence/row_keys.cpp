#include "evidence/row_keys.h"

#include <array>
#include <cstddef>

#include "cadastre/co_holder_columns.h"
#include "cadastre/holder_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/subparcel_columns.h"

namespace {

/// The field's number in a row of its table.
template <class R, std::size_t N>
constexpr std::size_t CampoDe(const std::array<CColumna<R>, N>& tabla,
                              const std::type_identity_t<CMiembroDe<R>>& campo)
{
    return static_cast<std::size_t>(ColumnaDe(tabla, campo).tabla.numero);
}

/// The fields of a row up to the one with a number.
template <std::size_t Ultimo>
std::array<std::string_view, Ultimo + 1> CamposHasta(std::string_view fila)
{
    std::array<std::string_view, Ultimo + 1> campos;
    Leetira(fila, campos);
    return campos;
}

/// The field of a line of an exchange file; empty, and read as 0, where the line is too short.
template <const auto& Tabla, auto Miembro>
std::string_view Campo(const CLineaFija& linea)
{
    constexpr CLectura kDonde = ColumnaDe(Tabla, Miembro).catastro;
    return linea.Alcanza(kDonde.minimo) ? linea.Texto(kDonde) : std::string_view();
}

/// The numbers of a row whose table has that of the holder behind the parcel's.
template <const auto& Tabla>
CNumerosDeFila Numeros(std::string_view fila)
{
    constexpr std::size_t kNumImputa = CampoDe(Tabla, &CDatosLinea::numImputa);
    const auto campos = CamposHasta<kNumImputa>(fila);
    return {LeeEntero(campos[CampoDe(Tabla, &CDatosLinea::Polig)]),
            LeeEntero(campos[CampoDe(Tabla, &CDatosLinea::Parcela)]),
            LeeEntero(campos[kNumImputa])};
}

} // namespace

CNumerosDeFila NumerosDeFilaParcela(std::string_view fila)
{
    return Numeros<kColumnasParcela>(fila);
}

CNumerosDeFila NumerosDeFilaCotitular(std::string_view fila)
{
    return Numeros<kColumnasCotitular>(fila);
}

CClaveRegistro ClaveDeFilaSubparcela(std::string_view fila)
{
    constexpr std::size_t kLetra = CampoDe(kColumnasComunes, &CSubparcela::letra);
    const auto campos = CamposHasta<kLetra>(fila);
    return CClaveRegistro::DeSubparcela(
        LeeEntero(campos[CampoDe(kColumnasComunes, &CDatosLinea::Polig)]),
        LeeEntero(campos[CampoDe(kColumnasComunes, &CDatosLinea::Parcela)]), campos[kLetra]);
}

CClaveRegistro ClaveDeFilaTitular(std::string_view fila)
{
    constexpr std::size_t kDni = CampoDe(kColumnasTitular, &CTitular::DNI);
    const auto campos = CamposHasta<kDni>(fila);
    const std::string_view numero = campos[CampoDe(kColumnasTitular, &CTitular::NumOrden)];
    const std::string_view nombre = campos[CampoDe(kColumnasTitular, &CTitular::Nombre)];
    if (numero.empty() || nombre.empty() || campos[kDni].empty())
        return CClaveRegistro::DeTitular({}, {});
    return CClaveRegistro::DeTitular(nombre, campos[kDni]);
}

CNumerosDeLinea NumerosDeLineaParcela(std::string_view linea)
{
    const CLineaFija fija(linea);
    return {
        .polig = static_cast<short>(LeeEntero(Campo<kColumnasParcela, &CParcela::Polig>(fija))),
        .parcela = LeeEntero(Campo<kColumnasParcela, &CParcela::Parcela>(fija)),
        .numParaje = LeeEntero(Campo<kColumnasParcela, &CDatosLinea::numParaje>(fija)),
        .numImputa = LeeEntero(Campo<kColumnasParcela, &CDatosLinea::numImputa>(fija)),
        .enlaza = !Campo<kColumnasParcela, &CDatosLinea::Tit>(fija).empty(),
    };
}

CClaveRegistro ClaveDeLineaSubparcela(std::string_view linea)
{
    const CLineaFija fija(linea);
    return CClaveRegistro::DeSubparcela(
        LeeEntero(Campo<kColumnasComunes, &CDatosLinea::Polig>(fija)),
        LeeEntero(Campo<kColumnasComunes, &CDatosLinea::Parcela>(fija)),
        Campo<kColumnasComunes, &CSubparcela::letra>(fija));
}
