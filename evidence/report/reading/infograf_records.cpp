#include "evidence/report/reading/infograf_records.h"

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
    if (tipo == kParcelaInfograf.tipo)
        escritos.parcelas.push_back(
            {CClaveRegistro::DeParcela(polig, linea.Entero(kParcela)), area});
    else if (tipo == kPoligonoInfograf.tipo)
        escritos.poligonos.push_back({CClaveRegistro::DePoligono(polig), area});
    else if (tipo == kSubparcelaInfograf.tipo)
        escritos.subparcelas.push_back(
            {CClaveRegistro::DeSubparcela(polig, linea.Entero(kParcela), linea.Texto(kLetras)),
             area});
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
