#include "evidence/report/reading/written_records.h"

#include <utility>

#include "cadastre/holder_columns.h"
#include "cadastre/infograf_record_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/record_types.h"
#include "evidence/paths.h"
#include "evidence/report/reading/record_lines.h"
#include "evidence/written_columns.h"
#include "platform/files/cstdio_file.h"
#include "vexa_libs/ccadena.h"

namespace informe {
namespace {

void TomaParcela(const CLineaEscrita& linea, CEscritosCatastro& escritos)
{
    const std::string_view clave = linea.Texto<kColumnasParcela, &CParcela::claveConc>();
    escritos.parcelas.push_back(
        {CClaveRegistro::DeParcela(Entero<kColumnasParcela, &CParcela::Polig>(linea),
                                   Entero<kColumnasParcela, &CParcela::Parcela>(linea)),
         Superficie<kColumnasParcela, &CParcela::Superficie>(linea),
         !clave.empty() && clave != " "});
}

void TomaCotitulares(const CLineaEscrita& linea, CEscritosCatastro& escritos)
{
    const auto clave =
        CClaveRegistro::DeParcela(Entero<kColumnasCabecera, &CDatosLinea::Polig>(linea),
                                  Entero<kColumnasCabecera, &CDatosLinea::Parcela>(linea));
    linea.RecorreGrupos(
        [&](const CLineaEscrita& /*grupo*/) { escritos.cotitulares.push_back(clave); });
}

void TomaRegistro(const CLineaEscrita& linea, CEscritosCatastro& escritos)
{
    const std::string_view tipo = linea.Tipo();
    if (tipo == kTipoTitular)
        escritos.titulares.push_back(
            CClaveRegistro::DeTitular(linea.Texto<kColumnasTitular, &CTitular::Nombre>(),
                                      linea.Texto<kColumnasTitular, &CTitular::DNI>()));
    else if (tipo == kTipoParcela)
        TomaParcela(linea, escritos);
    else if (tipo == kTipoCotitulares)
        TomaCotitulares(linea, escritos);
    else if (tipo == kTipoSuelo)
        escritos.subparcelas.push_back(
            CClaveRegistro::DeSubparcela(Entero<kColumnasComunes, &CDatosLinea::Polig>(linea),
                                         Entero<kColumnasComunes, &CDatosLinea::Parcela>(linea),
                                         linea.Texto<kColumnasComunes, &CSubparcela::letra>()));
    else if (tipo == kTipoParaje)
        escritos.parajes.push_back(
            CClaveRegistro::DeParaje(linea.Texto<kColumnasParaje, &CParaje::Nombre>()));
    else if (tipo == kTipoModulo)
        escritos.modulos.push_back( // the record has no room for the name
            CClaveRegistro::DeModulo({}, linea.Texto<kColumnasModulo, &CModulo::Cal>(),
                                     Entero<kColumnasModulo, &CModulo::Inten>(linea)));
    else
        ++escritos.ajenos;
}

// The records of Infograf.
using R = CRegistroInfograf;

constexpr CLectura kTipo = LecturaDe(kColumnasInfograf, &R::tipo);
constexpr CLectura kPolig = LecturaDe(kColumnasInfograf, &R::Polig);
constexpr CLectura kParcela = LecturaDe(kColumnasInfograf, &R::Parcela);
constexpr CLectura kArea = LecturaDe(kColumnasInfograf, &R::area);
constexpr CLectura kLetras = LecturaDe(kColumnasInfograf, &R::letras);

constexpr std::string_view kCabecera = "00"; // in front of a polygon's name

void TomaInfograf(const CLineaFija& linea, CEscritosInfograf& escritos)
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

/// Hands on the lines of a file. False where it isn't there.
bool Recorre(const CString& nombre, auto toma)
{
    CStdioFile fichero;
    if (!AbreSiHay(fichero, nombre))
        return false;
    for (CString linea; fichero.ReadString(linea);)
        toma(linea);
    return true;
}

} // namespace

CEscritosCatastro LeeEscritos(const CString& ficheroR, const CString& ficheroM)
{
    CEscritosCatastro escritos;
    const auto toma = [&](const CString& linea) { TomaRegistro(CLineaEscrita(linea), escritos); };
    escritos.hayR = Recorre(ficheroR, toma);
    escritos.hayM = Recorre(ficheroM, toma);
    return escritos;
}

CEscritosInfograf LeeInfograf(const CString& csp)
{
    CEscritosInfograf escritos;
    escritos.hay =
        Recorre(csp, [&](const CString& linea) { TomaInfograf(CLineaFija(linea), escritos); });
    return escritos;
}

} // namespace informe
