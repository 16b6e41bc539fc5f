#include "evidence/report/reading/written_records.h"

#include "cadastre/exchange_format.h"
#include "platform/files/cstdio_file.h"

namespace informe {
namespace {

// Columns of the written layout.
constexpr CLectura kTipo = {9, 2, 0};
constexpr CLectura kPolig = {13, 3, 0};
constexpr CLectura kParcela = {16, 5, 0};
constexpr CLectura kHectareas = {21, 5, 0};
constexpr CLectura kAreas = {26, 2, 0};
constexpr CLectura kCentiareas = {28, 2, 0};
constexpr CLectura kClaveConc = {111, 1, 0};
constexpr CLectura kLetra = {21, 4, 0};
constexpr CLectura kNombre = {19, 60, 0};
constexpr CLectura kDni = {80, 8, 0};
constexpr CLectura kNombreParaje = {16, 30, 0};
constexpr CLectura kCal = {11, 2, 0};
constexpr CLectura kInten = {13, 2, 0};
constexpr short kPrimerGrupo = 23;
constexpr short kAnchoGrupo = 14;
constexpr int kGrupos = 9;
constexpr std::string_view kGrupoVacio = "0000000  00000";

std::string_view SinCola(std::string_view texto)
{
    return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

CClave ClaveParcela(const CLineaFija& linea)
{
    return {linea.Entero(kPolig), linea.Entero(kParcela), {}};
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

void TomaSubparcela(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    CClave clave = ClaveParcela(linea);
    clave.texto = CString(linea.Texto(kLetra));
    clave.texto.TrimLeft().TrimRight();
    escritos.subparcelas.push_back(std::move(clave));
}

void TomaTitular(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    std::string clave(SinCola(linea.Texto(kNombre)));
    if (const std::string_view dni = SinCola(linea.Texto(kDni)); !dni.empty())
        clave.append(", ").append(dni);
    escritos.titulares.push_back({0, 0, clave});
}

void TomaRegistro(const CLineaFija& linea, CEscritosCatastro& escritos)
{
    ++escritos.registros;
    const std::string_view tipo = linea.Texto(kTipo);
    if (tipo == "TL")
        TomaTitular(linea, escritos);
    else if (tipo == "PR")
        TomaParcela(linea, escritos);
    else if (tipo == "CT")
        TomaCotitulares(linea, escritos);
    else if (tipo == "SP")
        TomaSubparcela(linea, escritos);
    else if (tipo == "PJ")
        escritos.parajes.push_back({0, 0, CString(SinCola(linea.Texto(kNombreParaje)))});
    else if (tipo == "MD")
        escritos.modulos.push_back({linea.Entero(kInten), 0, CString(linea.Texto(kCal))});
    else
        ++escritos.ajenos;
}

bool Recorre(const CString& nombre, CEscritosCatastro& escritos)
{
    CStdioFile fichero;
    if (nombre.IsEmpty() || !fichero.Open(nombre, CFile::modeRead))
        return false;
    CString linea;
    while (fichero.ReadString(linea))
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
