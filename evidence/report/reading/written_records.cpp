#include "evidence/report/reading/written_records.h"

#include "cadastre/co_holder_columns.h"
#include "cadastre/holder_columns.h"
#include "cadastre/module_place_columns.h"
#include "cadastre/parcel_columns.h"
#include "cadastre/subparcel_columns.h"
#include "evidence/paths.h"
#include "evidence/written_columns.h"
#include "platform/files/cstdio_file.h"

namespace informe {
namespace {

// Columns of the written layout. All records of a parcel have its numbers in the same place.
constexpr CLectura kTipo = {Detras(LecturaDe(kColumnasParcela, &CDatosLinea::EMenor)), 2, 0};
constexpr CLectura kPolig = LecturaDe(kColumnasParcela, &CParcela::Polig);
constexpr CLectura kParcela = LecturaDe(kColumnasParcela, &CParcela::Parcela);
constexpr CLectura kHectareas = LecturaDe(kColumnasParcela, &CDatosLinea::hectareas);
constexpr CLectura kAreas = LecturaDe(kColumnasParcela, &CDatosLinea::areas);
constexpr CLectura kCentiareas = LecturaDe(kColumnasParcela, &CDatosLinea::centiareas);
constexpr CLectura kClaveConc = LecturaDe(kColumnasParcela, &CParcela::claveConc);
constexpr CLectura kLetra = LecturaDe(kColumnasComunes, &CSubparcela::letra);
constexpr CLectura kNombre = LecturaDe(kColumnasTitular, &CTitular::Nombre);
constexpr CLectura kDni = LecturaDe(kColumnasTitular, &CTitular::DNI);
constexpr CLectura kNombreParaje = LecturaDe(kColumnasParaje, &CParaje::Nombre);
constexpr CLectura kCal = LecturaDe(kColumnasModulo, &CModulo::Cal);
constexpr CLectura kInten = LecturaDe(kColumnasModulo, &CModulo::Inten);

// The groups of a CT record stand one behind the other; those that no holder needs are empty.
constexpr short kPrimerGrupo = FinDe(kColumnasCabecera);
constexpr short kAnchoGrupo = FinDe(kColumnasVinculo);
constexpr int kGrupos = 9;
constexpr std::string_view kGrupoVacio = "0000000  00000";

static_assert(kPolig.columna == LecturaDe(kColumnasCabecera, &CDatosLinea::Polig).columna &&
              kPolig.columna == LecturaDe(kColumnasComunes, &CDatosLinea::Polig).columna);
static_assert(kPrimerGrupo + kGrupos * kAnchoGrupo <= kAnchoRegistro &&
              kGrupoVacio.size() == kAnchoGrupo);

CClaveRegistro ClaveParcela(const CLineaFija& linea)
{
    return CClaveRegistro::DeParcela(linea.Entero(kPolig), linea.Entero(kParcela));
}

void TomaParcela(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    CDatosLinea datos;
    datos.hectareas = linea.Entero(kHectareas);
    datos.areas = linea.Entero(kAreas);
    datos.centiareas = linea.Entero(kCentiareas);
    const std::string_view clave = linea.Texto(kClaveConc);
    escritos.parcelas.push_back(
        {ClaveParcela(linea), datos.DameSuperficie(), !clave.empty() && clave != " "});
}

void TomaCotitulares(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    for (int grupo = 0; grupo < kGrupos; ++grupo) {
        const std::string_view texto = linea.Texto(kPrimerGrupo + grupo * kAnchoGrupo, kAnchoGrupo);
        if (!texto.empty() && texto != kGrupoVacio)
            escritos.cotitulares.push_back(ClaveParcela(linea));
    }
}

void TomaRegistro(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    const std::string_view tipo = linea.Texto(kTipo);
    if (tipo == "TL")
        escritos.titulares.push_back(
            CClaveRegistro::DeTitular(linea.Texto(kNombre), linea.Texto(kDni)));
    else if (tipo == "PR")
        TomaParcela(linea, escritos);
    else if (tipo == "CT")
        TomaCotitulares(linea, escritos);
    else if (tipo == "SP")
        escritos.subparcelas.push_back(CClaveRegistro::DeSubparcela(
            linea.Entero(kPolig), linea.Entero(kParcela), linea.Texto(kLetra)));
    else if (tipo == "PJ")
        escritos.parajes.push_back(CClaveRegistro::DeParaje(linea.Texto(kNombreParaje)));
    else if (tipo == "MD")
        escritos.modulos.push_back( // the record has no room for the name
            CClaveRegistro::DeModulo({}, linea.Texto(kCal), linea.Entero(kInten)));
    else
        ++escritos.ajenos;
}

bool Recorre(const CString& nombre, CEscritosCatastro& escritos)
{
    CStdioFile fichero;
    if (!AbreSiHay(fichero, nombre))
        return false;
    for (CString linea; fichero.ReadString(linea);)
        TomaRegistro(CLineaFija(linea), escritos);
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
