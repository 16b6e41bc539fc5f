#include "evidence/report/reading/states/read_state.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "cadastre/exchange_lines.h"
#include "evidence/municipality_tables.h"
#include "evidence/paths.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/states/state_builder.h"
#include "evidence/report/reading/states/state_lines.h"
#include "evidence/report/reading/text.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

// The head of a record of the written layout.
constexpr CLectura kMunEscrito = LecturaDe(kColumnasParcela, &CDatosLinea::Mun);
constexpr CLectura kGerEscrita = LecturaDe(kColumnasParcela, &CDatosLinea::Ger);
constexpr CLectura kTipoEscrito = {Detras(LecturaDe(kColumnasParcela, &CDatosLinea::EMenor)), 2, 0};

// The groups of a CT record stand one behind the other; those that no holder needs are empty.
constexpr short kPrimerGrupo = FinDe(kColumnasCabecera);
constexpr short kAnchoGrupo = FinDe(kColumnasVinculo);
constexpr std::string_view kGrupoVacio = "0000000  00000";

short EnCorto(std::string_view texto)
{
    return static_cast<short>(LeeEntero(texto));
}

template <class L>
void TomaParaje(short mun, const L& linea, CEstadoEnObra& obra)
{
    obra.TomaParaje(mun, LeeEntero(linea.template Texto<kColumnasParaje, &CParaje::NumOrden>()),
                    linea.template Texto<kColumnasParaje, &CParaje::Nombre>());
}

void TomaCatastro(std::string_view texto, CEstadoEnObra& obra)
{
    const CLineaFija fija(texto);
    const CLineaLeida linea(texto);
    const std::string_view tipo = fija.Texto(kLeeTipo);
    const short mun = EnCorto(fija.Texto(kLeeMun));
    if (tipo == kTipoSuelo || tipo == kTipoConstruccion) {
        obra.TomaSubparcela(mun, linea);
    } else if (tipo == "PR") {
        obra.TomaGerencia(EnCorto(fija.Texto(kLeeGer)));
        obra.TomaParcela(mun, linea);
    } else if (tipo == "TL") {
        CTitular titular;
        CDatosLinea datos;
        titular.Lee(texto, kModoCatastro, datos);
        obra.TomaTitular(mun, std::move(titular), datos.partici);
    } else if (tipo == "PJ") {
        TomaParaje(mun, linea, obra);
    }
}

template <class L>
CTitular TitularDe(const L& linea)
{
    CTitular titular;
    titular.NumOrden = LeeEntero(linea.template Texto<kColumnasTitular, &CTitular::NumOrden>());
    titular.Nombre = linea.template Texto<kColumnasTitular, &CTitular::Nombre>();
    titular.DNI = linea.template Texto<kColumnasTitular, &CTitular::DNI>();
    titular.Nombre.TrimRight();
    return titular;
}

template <class L>
CClaveParcela ClaveDe(short mun, const L& linea)
{
    return {mun, LeeEntero(linea.template Texto<kColumnasCotitular, &CDatosLinea::Polig>()),
            LeeEntero(linea.template Texto<kColumnasCotitular, &CDatosLinea::Parcela>())};
}

void TomaGruposCT(short mun, std::string_view texto, CEstadoEnObra& obra)
{
    constexpr CLectura kNumero = LecturaDe(kColumnasVinculo, &CDatosLinea::numImputa);
    constexpr CLectura kTitulo = LecturaDe(kColumnasVinculo, &CCotitular::Tit);
    constexpr CLectura kPartici = LecturaDe(kColumnasVinculo, &CCotitular::partici);
    const CClaveParcela clave = ClaveDe(mun, CLineaEscrita(texto));
    const CLineaFija fija(texto);
    for (short desde = kPrimerGrupo; desde + kAnchoGrupo <= kAnchoRegistro; desde += kAnchoGrupo) {
        const std::string_view grupo = fija.Texto(desde, kAnchoGrupo);
        const CLineaFija campos(grupo);
        if (!grupo.empty() && grupo != kGrupoVacio)
            obra.TomaVinculo(clave, campos.Entero(kNumero), campos.Texto(kTitulo),
                             campos.Entero(kPartici));
    }
}

void TomaEscrita(std::string_view texto, CEstadoEnObra& obra)
{
    const CLineaFija fija(texto);
    const CLineaEscrita linea(texto);
    const std::string_view tipo = fija.Texto(kTipoEscrito);
    const short mun = EnCorto(fija.Texto(kMunEscrito));
    if (tipo == kTipoSuelo) {
        obra.TomaSubparcela(mun, linea);
    } else if (tipo == "PR") {
        obra.TomaGerencia(EnCorto(fija.Texto(kGerEscrita)));
        obra.TomaParcela(mun, linea);
    } else if (tipo == "CT") {
        TomaGruposCT(mun, texto, obra);
    } else if (tipo == "TL") {
        obra.TomaTitular(mun, TitularDe(linea), 0);
    } else if (tipo == "PJ") {
        TomaParaje(mun, linea, obra);
    }
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
    constexpr std::string_view kTipos[] = {"MD", "TL", "PR", "SP", "SC", "PJ", "CT"};
    const auto esTipo = [&](std::string_view texto) {
        return std::ranges::find(kTipos, texto) != std::end(kTipos);
    };
    int deCatastro = 0;
    int deR = 0;
    int lineas = 0;
    RecorreLineas(nombre, [&](std::string_view texto) {
        const CLineaFija linea(texto);
        deCatastro += esTipo(linea.Texto(kLeeTipo)) ? 1 : 0;
        deR += esTipo(linea.Texto(kTipoEscrito)) ? 1 : 0;
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
    CEstadoLeido leido;
    leido.clase = clase;
    leido.nombre = nombre;
    RecorreLineas(nombre, [&](std::string_view linea) {
        toma(linea, obra);
        return true;
    });
    if (!obra.HayParcelas())
        leido.reparo = "no tiene ninguna parcela";
    leido.estado = obra.Acaba();
    return leido;
}

/// The tables one after the other: parcels before the links that look for them.
class CLectorTablas {
public:
    CLectorTablas(const CNombresTablas& tablas, CEstadoEnObra& obra)
        : m_tablas(tablas), m_obra(obra)
    {
    }

    /// \return the first table that isn't there; none for none
    std::optional<Tabla> Lee();

private:
    template <const auto& Columnas>
    bool Recorre(Tabla tabla, auto toma)
    {
        return RecorreTabla(
            m_tablas[tabla],
            [&](std::string_view fila) {
                const CFila<Columnas> campos(fila);
                toma(EnCorto(campos.template Texto<Columnas, &CDatosLinea::Mun>()), campos);
            },
            CFile::anyCase);
    }

    const CNombresTablas& m_tablas;
    CEstadoEnObra& m_obra;
};

std::optional<Tabla> CLectorTablas::Lee()
{
    if (!Recorre<kColumnasParaje>(
            kParajes, [&](short mun, const auto& fila) { TomaParaje(mun, fila, m_obra); }))
        return kParajes;
    if (!Recorre<kColumnasTitular>(kTitulares, [&](short mun, const auto& fila) {
            if (!fila.template Texto<kColumnasTitular, &CTitular::NumOrden>().empty())
                m_obra.TomaTitular(mun, TitularDe(fila), 0);
        }))
        return kTitulares;
    if (!Recorre<kColumnasParcela>(kParcelas, [&](short mun, const auto& fila) {
            m_obra.TomaGerencia(
                EnCorto(fila.template Texto<kColumnasParcela, &CDatosLinea::Ger>()));
            m_obra.TomaParcela(mun, fila);
        }))
        return kParcelas;
    if (!Recorre<kColumnasSubparcela>(
            kSubparcelas, [&](short mun, const auto& fila) { m_obra.TomaSubparcela(mun, fila); }))
        return kSubparcelas;
    if (!Recorre<kColumnasCotitular>(kCotitulares, [&](short mun, const auto& fila) {
            m_obra.TomaVinculo(
                ClaveDe(mun, fila),
                LeeEntero(fila.template Texto<kColumnasCotitular, &CDatosLinea::numImputa>()),
                fila.template Texto<kColumnasCotitular, &CCotitular::Tit>(),
                LeeEntero(fila.template Texto<kColumnasCotitular, &CCotitular::partici>()));
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
    CEstadoLeido leido;
    leido.nombre = nombre;
    leido.reparo = HayFichero(nombre) ? "no es un fichero de Catastro, ni un fichero R, ni la "
                                        "carpeta de unas tablas"
                                      : "no existe";
    return leido;
}

CEstadoLeido LeeEstado(const CNombresTablas& tablas, const CString& carpeta)
{
    CEstadoEnObra obra(CEstadoEnObra::Reparto::PorNumero);
    CEstadoLeido leido;
    leido.clase = ClaseEstado::Tablas;
    leido.nombre = carpeta.IsEmpty() ? CString(".") : carpeta;
    if (const std::optional<Tabla> falta = CLectorTablas(tablas, obra).Lee())
        leido.reparo = "no se puede comparar: le falta la tabla " + Texto(tablas[*falta]);
    else if (!obra.HayParcelas())
        leido.reparo = "no tiene ninguna parcela";
    leido.estado = obra.Acaba();
    return leido;
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
