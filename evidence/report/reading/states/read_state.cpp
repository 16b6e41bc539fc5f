#include "evidence/report/reading/states/read_state.h"

#include <array>
#include <utility>

#include "cadastre/exchange_lines.h"
#include "cadastre/record_types.h"
#include "evidence/municipality_tables.h"
#include "evidence/paths.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/states/state_builder.h"
#include "evidence/report/reading/text.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

template <const auto& Tabla, auto Campo>
short Corto(const auto& linea)
{
    return static_cast<short>(Entero<Tabla, Campo>(linea));
}

void TomaParaje(short mun, const auto& linea, CEstadoEnObra& obra)
{
    obra.TomaParaje(mun, Entero<kColumnasParaje, &CParaje::NumOrden>(linea),
                    linea.template Texto<kColumnasParaje, &CParaje::Nombre>());
}

void TomaCatastro(std::string_view texto, CEstadoEnObra& obra)
{
    const CLineaFija fija(texto);
    const CLineaLeida linea(texto);
    const std::string_view tipo = linea.Tipo();
    const auto mun = static_cast<short>(fija.Entero(kLeeMun));
    if (tipo == kTipoSuelo || tipo == kTipoConstruccion) {
        obra.TomaSubparcela(mun, linea);
    } else if (tipo == kTipoParcela) {
        obra.TomaGerencia(static_cast<short>(fija.Entero(kLeeGer)));
        obra.TomaParcela(mun, linea);
    } else if (tipo == kTipoTitular) {
        CTitular titular;
        CDatosLinea datos;
        titular.Lee(texto, kModoCatastro, datos);
        obra.TomaTitular(mun, std::move(titular), datos.partici);
    } else if (tipo == kTipoParaje) {
        TomaParaje(mun, linea, obra);
    }
}

// What the written layout and the tables have alike.

void TomaParcela(short mun, const auto& linea, CEstadoEnObra& obra)
{
    obra.TomaGerencia(Corto<kColumnasParcela, &CDatosLinea::Ger>(linea));
    obra.TomaParcela(mun, linea);
}

void TomaTitular(short mun, const auto& linea, CEstadoEnObra& obra)
{
    CTitular titular;
    titular.NumOrden = Entero<kColumnasTitular, &CTitular::NumOrden>(linea);
    titular.Nombre = linea.template Texto<kColumnasTitular, &CTitular::Nombre>();
    titular.DNI = linea.template Texto<kColumnasTitular, &CTitular::DNI>();
    titular.Nombre.TrimRight();
    obra.TomaTitular(mun, std::move(titular), 0);
}

CClaveParcela ClaveDe(short mun, const auto& linea)
{
    return {mun, Entero<kColumnasCotitular, &CDatosLinea::Polig>(linea),
            Entero<kColumnasCotitular, &CDatosLinea::Parcela>(linea)};
}

/// \param Tabla  where the link stands in what it is read from
template <const auto& Tabla>
void TomaVinculo(const CClaveParcela& clave, const auto& linea, CEstadoEnObra& obra)
{
    obra.TomaVinculo(clave, Entero<Tabla, &CDatosLinea::numImputa>(linea),
                     linea.template Texto<Tabla, &CCotitular::Tit>(),
                     Entero<Tabla, &CCotitular::partici>(linea));
}

void TomaEscrita(std::string_view texto, CEstadoEnObra& obra)
{
    const CLineaEscrita linea(texto);
    const std::string_view tipo = linea.Tipo();
    const short mun = Corto<kColumnasParcela, &CDatosLinea::Mun>(linea);
    if (tipo == kTipoSuelo)
        obra.TomaSubparcela(mun, linea);
    else if (tipo == kTipoParcela)
        TomaParcela(mun, linea, obra);
    else if (tipo == kTipoCotitulares)
        linea.RecorreGrupos([&, clave = ClaveDe(mun, linea)](const CLineaEscrita& grupo) {
            TomaVinculo<kColumnasVinculo>(clave, grupo, obra);
        });
    else if (tipo == kTipoTitular)
        TomaTitular(mun, linea, obra);
    else if (tipo == kTipoParaje)
        TomaParaje(mun, linea, obra);
}

/// Why what was read is no state; empty for nothing.
std::string ReparoDe(const CEstadoEnObra& obra)
{
    return obra.HayParcelas() ? "" : "no tiene ninguna parcela";
}

using CTomaLinea = void (*)(std::string_view linea, CEstadoEnObra& obra);

/// Hands on the lines of a file, in pieces where they are longer than the program takes. False
/// where the file isn't there.
bool RecorreLineas(const CString& nombre, auto toma)
{
    CStdioFile fichero;
    if (!AbreSiHay(fichero, nombre))
        return false;
    std::array<char, kLineaCatastro + 1> bufer{};
    while (fichero.ReadString(bufer.data(), static_cast<UINT>(bufer.size())) != nullptr)
        if (!toma(std::string_view(bufer.data())))
            break;
    return true;
}

ClaseEstado ClaseDeFichero(const CString& nombre)
{
    const auto esTipo = [](std::string_view tipo) {
        return EsTipoDeIntercambio(tipo) || tipo == kTipoCotitulares;
    };
    int deCatastro = 0;
    int deR = 0;
    int lineas = 0;
    RecorreLineas(nombre, [&](std::string_view texto) {
        const CLineaFija linea(texto);
        deCatastro += esTipo(linea.Texto(kLeeTipo)) ? 1 : 0;
        deR += esTipo(linea.Texto(CLineaEscrita::kTipo)) ? 1 : 0;
        return ++lineas < topes::kLineasParaConocer;
    });
    if (deCatastro == 0 && deR == 0)
        return ClaseEstado::NoEs;
    return deCatastro >= deR ? ClaseEstado::Catastro : ClaseEstado::FicheroR;
}

CEstadoLeido LeeFichero(const CString& nombre, ClaseEstado clase)
{
    using enum CEstadoEnObra::Reparto;
    const bool deR = clase == ClaseEstado::FicheroR;
    CEstadoEnObra obra(deR ? PorNumero : PorLineas);
    const CTomaLinea toma = deR ? TomaEscrita : TomaCatastro;
    RecorreLineas(nombre, [&](std::string_view linea) {
        toma(linea, obra);
        return true;
    });
    std::string reparo = ReparoDe(obra);
    return {clase, nombre, obra.Acaba(), std::move(reparo)};
}

/// Hands on the rows of a table, each with its municipality. False where the table isn't there.
template <const auto& Columnas>
bool RecorreFilas(const CString& tabla, auto toma)
{
    return RecorreTabla(
        tabla,
        [&](std::string_view fila, bool /*primera*/) {
            const CFila<Columnas> campos(fila);
            toma(Corto<Columnas, &CDatosLinea::Mun>(campos), campos);
        },
        CFile::anyCase);
}

/// Takes the tables one after the other: parcels before the links that look for them. Gives the
/// first table that isn't there; none for none.
std::optional<Tabla> TomaTablas(const CNombresTablas& tablas, CEstadoEnObra& obra)
{
    if (!RecorreFilas<kColumnasParaje>(
            tablas[kParajes], [&](short mun, const auto& fila) { TomaParaje(mun, fila, obra); }))
        return kParajes;
    if (!RecorreFilas<kColumnasTitular>(tablas[kTitulares], [&](short mun, const auto& fila) {
            if (!fila.template Texto<kColumnasTitular, &CTitular::NumOrden>().empty())
                TomaTitular(mun, fila, obra);
        }))
        return kTitulares;
    if (!RecorreFilas<kColumnasParcela>(
            tablas[kParcelas], [&](short mun, const auto& fila) { TomaParcela(mun, fila, obra); }))
        return kParcelas;
    if (!RecorreFilas<kColumnasSubparcela>(tablas[kSubparcelas], [&](short mun, const auto& fila) {
            obra.TomaSubparcela(mun, fila);
        }))
        return kSubparcelas;
    if (!RecorreFilas<kColumnasCotitular>(tablas[kCotitulares], [&](short mun, const auto& fila) {
            TomaVinculo<kColumnasCotitular>(ClaveDe(mun, fila), fila, obra);
        }))
        return kCotitulares;
    return std::nullopt;
}

sistema::CEstado::Tipo TipoDe(const CString& nombre)
{
    sistema::Error error;
    const sistema::CEstado estado = sistema::Mira(sistema::Ruta(nombre), error);
    return NoSeHalla(nombre, error) ? sistema::CEstado::Tipo::NoHay : estado.tipo;
}

bool EsCarpeta(const CString& nombre)
{
    return TipoDe(nombre) == sistema::CEstado::Tipo::Carpeta;
}

} // namespace

std::string ReparoDeTipo(const CString& nombre)
{
    return TipoDe(nombre) == sistema::CEstado::Tipo::Otro
               ? Texto(nombre) + " no es un fichero ni una carpeta"
               : std::string();
}

ClaseEstado ClaseDeEstado(const CString& nombre)
{
    return EsCarpeta(nombre) ? ClaseEstado::Tablas : ClaseDeFichero(nombre);
}

CEstadoLeido LeeEstado(const CString& nombre)
{
    const ClaseEstado clase = ClaseDeEstado(nombre);
    if (clase == ClaseEstado::Tablas)
        return LeeEstado(TablasEn(nombre), nombre);
    if (clase != ClaseEstado::NoEs)
        return LeeFichero(nombre, clase);
    return {.nombre = nombre,
            .reparo = HayFichero(nombre) ? "no es un fichero de Catastro, ni un fichero R, ni la "
                                           "carpeta de unas tablas"
                                         : "no existe"};
}

CEstadoLeido LeeEstado(const CNombresTablas& tablas, const CString& carpeta)
{
    CEstadoEnObra obra(CEstadoEnObra::Reparto::PorNumero);
    const std::optional<Tabla> falta = TomaTablas(tablas, obra);
    std::string reparo =
        falta ? "no se puede comparar: le falta la tabla " + Texto(tablas[*falta]) : ReparoDe(obra);
    return {ClaseEstado::Tablas, carpeta.IsEmpty() ? CString(".") : carpeta, obra.Acaba(),
            std::move(reparo)};
}

std::vector<CString> FicherosDeEstado(const CString& nombre)
{
    if (!EsCarpeta(nombre))
        return {nombre};
    CNombresEnDisco nombres;
    std::vector<CString> tablas;
    for (const CString& tabla : TablasEn(nombre))
        tablas.push_back(CFile::EnDisco(tabla, nombres));
    return tablas;
}

const char* NombreDe(ClaseEstado clase)
{
    constexpr const char* kNombres[] = {"", "fichero de Catastro", "fichero R", "tablas"};
    return kNombres[static_cast<std::size_t>(clase)];
}

} // namespace informe
