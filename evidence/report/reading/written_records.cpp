#include "evidence/report/reading/written_records.h"

#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/record_types.h"
#include "evidence/paths.h"
#include "evidence/report/reading/record_lines.h"
#include "platform/files/cstdio_file.h"

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

bool Recorre(const CString& nombre, CEscritosCatastro& escritos)
{
    CStdioFile fichero;
    if (!AbreSiHay(fichero, nombre))
        return false;
    for (CString linea; fichero.ReadString(linea);)
        TomaRegistro(CLineaEscrita(linea), escritos);
    return true;
}

} // namespace

CEscritosCatastro LeeEscritos(const CString& ficheroR, const CString& ficheroM)
{
    CEscritosCatastro escritos;
    escritos.hayR = Recorre(ficheroR, escritos);
    escritos.hayM = Recorre(ficheroM, escritos);
    return escritos;
}

} // namespace informe
