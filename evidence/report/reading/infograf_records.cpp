#include "evidence/report/reading/infograf_records.h"

#include <utility>

#include "cadastre/infograf_record_columns.h"
#include "evidence/paths.h"
#include "evidence/written_columns.h"
#include "platform/files/cstdio_file.h"
#include "vexa_libs/ccadena.h"

namespace informe {
namespace {

using R = CRegistroInfograf;

constexpr CLectura kTipo = LecturaDe(kColumnasInfograf, &R::tipo);
constexpr CLectura kPolig = LecturaDe(kColumnasInfograf, &R::Polig);
constexpr CLectura kParcela = LecturaDe(kColumnasInfograf, &R::Parcela);
constexpr CLectura kArea = LecturaDe(kColumnasInfograf, &R::area);
constexpr CLectura kLetras = LecturaDe(kColumnasInfograf, &R::letras);

constexpr std::string_view kCabecera = "00"; // in front of a polygon's name

void Toma(const CLineaFija& linea, CEscritosInfograf& escritos)
{
    const std::string_view tipo = linea.Texto(kTipo);
    const int polig = linea.Entero(kPolig);
    const double area = LeeReal(linea.Texto(kArea));
    const auto pon = [&](ClaseInfograf clase, CClaveRegistro clave) {
        escritos.clases[clase].push_back({std::move(clave), area});
    };
    if (tipo == kParcelaInfograf.tipo)
        pon(kDeParcela, CClaveRegistro::DeParcela(polig, linea.Entero(kParcela)));
    else if (tipo == kPoligonoInfograf.tipo)
        pon(kDePoligono, CClaveRegistro::DePoligono(polig));
    else if (tipo == kSubparcelaInfograf.tipo)
        pon(kDeSubparcela,
            CClaveRegistro::DeSubparcela(polig, linea.Entero(kParcela), linea.Texto(kLetras)));
    else if (!tipo.starts_with(kCabecera))
        ++escritos.ajenos;
}

} // namespace

CEscritosInfograf LeeInfograf(const CString& csp)
{
    CEscritosInfograf escritos;
    CStdioFile fichero;
    escritos.hay = AbreSiHay(fichero, csp);
    if (escritos.hay)
        for (CString linea; fichero.ReadString(linea);)
            Toma(CLineaFija(linea), escritos);
    return escritos;
}

} // namespace informe
