#include "evidence/report/reading/run_files.h"

#include <algorithm>
#include <array>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "evidence/drawn_polygon.h"
#include "evidence/paths.h"
#include "evidence/report/reading/log_messages.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/side_names.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

// Of files beside a log that are no input: what the program and this one write; and that are no
// list: the drawings as well.
constexpr std::string_view kEscritas[] = {kExtensionRegistro, "HTML",      "HTM",     "CSV",
                                          kExtensionR,        kExtensionM, "GEOJSON", "JSON",
                                          kExtensionInfograf};

bool PuedeSerEntrada(const CString& nombre)
{
    return std::ranges::find(kEscritas, ExtensionDe(nombre)) == std::end(kEscritas);
}

bool PuedeSerLista(const CString& nombre)
{
    const std::string extension = ExtensionDe(nombre);
    return PuedeSerEntrada(nombre) && extension != kExtensionDibujo && !ClaseDeExtension(extension);
}

/// The first line, with its end, as far as it tells what a file is; empty where there is none.
std::string PrimeraLinea(const CString& nombre)
{
    constexpr UINT kBasta = 512; // no header is longer
    char bufer[kBasta] = "";
    CStdioFile fichero;
    if (AbreSiHay(fichero, nombre))
        fichero.ReadString(bufer, kBasta);
    return bufer;
}

/// The first name in a folder, in order, that fits; empty for none.
template <class F>
CString BuscaEn(const CString& carpeta, F encaja)
{
    const CString lugar = carpeta.IsEmpty() ? "." : carpeta;
    sistema::Error error;
    std::vector<std::filesystem::path> nombres = sistema::Lista(sistema::Ruta(lugar), error);
    if (NoSeHalla(CFile::RutaCompleta(lugar), error))
        return {};
    std::ranges::sort(nombres);
    for (const std::filesystem::path& nombre : nombres)
        if (CString ruta = EnCarpeta(carpeta, sistema::Nombre(nombre)); encaja(ruta))
            return ruta;
    return {};
}

CString BuscaEntrada(const CString& carpeta, const CString& base)
{
    return BuscaEn(carpeta, [&](const CString& ruta) {
        return BaseDe(ruta) == base && PuedeSerEntrada(ruta) && HayFichero(ruta);
    });
}

CString BuscaLista(const CString& carpeta, const CString& base)
{
    return BuscaEn(carpeta, [&](const CString& ruta) {
        return PuedeSerLista(ruta) && HayFichero(ruta) &&
               LeeCabeceraLista(PrimeraLinea(ruta)).nombreSalida == base;
    });
}

/// The name of the log without folder and extension, of one too that was kept beside the next one.
CString BaseDelRegistro(const CString& registro)
{
    const CString base = BaseDe(registro);
    return std::string_view(registro).ends_with(lado::kAnterior) ? BaseDe(base) : base;
}

/// What a log that came by the standard input is called by, and beside what it would stand.
CString EnLugarDelRegistro(const COpciones& opciones)
{
    if (opciones.lista.IsEmpty())
        return opciones.entrada.IsEmpty() ? CString("registro") : opciones.entrada;
    return FicheroDeLista(CCadena(opciones.lista).DamePath(),
                          LeeCabeceraLista(PrimeraLinea(opciones.lista)).nombreSalida,
                          kExtensionRegistro);
}

/// Takes what the line says of the run's files, each for what it is.
void TomaNombrados(const std::vector<CString>& nombrados, bool escritos, CFicheros& ficheros)
{
    for (const CString& nombre : nombrados) {
        const std::string primera = PrimeraLinea(nombre);
        if (const auto tabla = TablaDeCabecera(primera)) {
            ficheros.tablas[*tabla] = nombre;
            ficheros.tablasDichas = true;
            if (escritos)
                ficheros.escritas.push_back(*tabla);
        } else if (PuedeSerLista(nombre) &&
                   LeeCabeceraLista(primera).nombreSalida == ficheros.base) {
            ficheros.lista.nombre = nombre;
        } else if (PuedeSerEntrada(nombre) && BaseDe(nombre) == ficheros.base) {
            ficheros.entrada = nombre;
        } else if (ExtensionDe(nombre) == kExtensionInfograf && BaseDe(nombre) == ficheros.base) {
            ficheros.ficheroCsp = nombre;
        } else if (PuedeSerLista(nombre) && HayFichero(nombre)) {
            ficheros.sinReconocer.push_back(nombre);
        }
    }
}

/// An output beside the list, by the name that it has on the disk.
CString SalidaDeLista(const CString& carpeta, const CString& base, const char* extension)
{
    CNombresEnDisco nombres;
    return CFile::EnDisco(FicheroDeLista(carpeta, base, extension), nombres);
}

/// Tells whether a run on drawings went on to Infograf. That leaves its log empty, and a file CSP
/// that is as new as the log, with no way back behind it.
bool EsDeInfograf(const COpciones& opciones, const CFicheros& ficheros)
{
    if (opciones.infograf)
        return *opciones.infograf;
    const bool escribioR = std::ranges::any_of(opciones.escritos, [](const CString& nombre) {
        return ExtensionDe(nombre) == kExtensionR;
    });
    if (!ficheros.ficheroCsp.IsEmpty() || escribioR)
        return !escribioR;
    if (ficheros.registro == kEstandar)
        return false;
    const auto delRegistro = FechaDe(ficheros.registro);
    sistema::Error error;
    if (!delRegistro || ExtensionDe(ficheros.registro) != kExtensionRegistro ||
        sistema::Mira(sistema::Ruta(ficheros.registro), error).largo != 0)
        return false;
    if (opciones.detenido)
        return !ficheros.tablasDichas; // the way back reads tables
    const CString carpeta = CCadena(ficheros.lista.nombre).DamePath();
    const auto delCsp = FechaDe(SalidaDeLista(carpeta, ficheros.base, kExtensionInfograf));
    return delCsp && *delCsp + kHolguraDeFechas >= *delRegistro &&
           !(FechaDe(SalidaDeLista(carpeta, ficheros.base, kExtensionR)) > delCsp);
}

/// Tells whether of an input and a list that have this log's name the input was read: the holders,
/// which no way back writes, are as new as the log, and nothing is that a run on drawings writes.
bool EsDeLaIda(const COpciones& opciones, const CFicheros& ficheros, const CString& lista)
{
    const auto delRegistro = FechaDe(ficheros.registro);
    const auto esDeAhora = [&](const CString& nombre) {
        const auto fecha = FechaDe(nombre);
        return fecha && delRegistro && *fecha + kHolguraDeFechas >= *delRegistro;
    };
    const CString deLista = CCadena(lista).DamePath();
    const bool dibujada = std::ranges::any_of(
        std::array{kExtensionR, kExtensionInfograf}, [&](const char* extension) {
            return esDeAhora(SalidaDeLista(deLista, ficheros.base, extension));
        });
    const CString& nombrada = ficheros.tablas[kTitulares];
    const CString& carpeta = opciones.tablas.IsEmpty() ? ficheros.carpeta : opciones.tablas;
    CNombresEnDisco nombres;
    return !dibujada &&
           esDeAhora(CFile::EnDisco(nombrada.IsEmpty() ? TablasEn(carpeta)[kTitulares] : nombrada,
                                    nombres));
}

/// Settles whether the run read an input or a list, and which: what the line names, else what
/// stands beside the log. A list tells by what it says that it is of this log, an input by its name
/// alone, so the list is taken where nothing says otherwise.
void SituaOrigen(const COpciones& opciones, CFicheros& ficheros)
{
    CString& lista = ficheros.lista.nombre;
    if (!opciones.entrada.IsEmpty()) {
        ficheros.entrada = opciones.entrada;
        lista = CString();
    } else if (!opciones.lista.IsEmpty()) {
        lista = opciones.lista;
    } else if (lista.IsEmpty() && ficheros.entrada.IsEmpty()) {
        lista = BuscaLista(ficheros.carpeta, ficheros.base);
        CString entrada = BuscaEntrada(ficheros.carpeta, ficheros.base);
        if (lista.IsEmpty() || (!entrada.IsEmpty() && EsDeLaIda(opciones, ficheros, lista))) {
            lista = CString();
            ficheros.entrada = std::move(entrada);
        }
    }
    if (!lista.IsEmpty())
        ficheros.sentido = EsDeInfograf(opciones, ficheros) ? Sentido::Infograf : Sentido::Vuelta;
    else if (!ficheros.entrada.IsEmpty())
        ficheros.sentido = Sentido::Ida;
}

/// What stands beside the list.
void SituaDibujos(const CString& ortos, CFicheros& ficheros)
{
    CListaPoligonos& lista = ficheros.lista;
    lista.cabecera = LeeCabeceraLista(PrimeraLinea(lista.nombre));
    lista.carpeta = CCadena(lista.nombre).DamePath();
    ficheros.ortos = ortos.IsEmpty() ? BuscaHojas(lista.carpeta).nombre : ortos;
    ficheros.entrada = CString();
    const auto salida = [&](const char* extension) {
        return SalidaDeLista(lista.carpeta, ficheros.base, extension);
    };
    if (ficheros.sentido == Sentido::Infograf && ficheros.ficheroCsp.IsEmpty()) {
        ficheros.ficheroCsp = salida(kExtensionInfograf);
    } else if (ficheros.sentido == Sentido::Vuelta) {
        ficheros.ficheroR = salida(kExtensionR);
        ficheros.ficheroM = salida(kExtensionM);
    }
}

/// Gives the tables their usual names, as the disk has them: all of them in a folder that the line
/// names, else those that nobody named.
void SituaTablas(const CString& nombrada, const CString& junto, CFicheros& ficheros)
{
    const CNombresTablas usuales = TablasEn(nombrada.IsEmpty() ? junto : nombrada);
    CNombresEnDisco nombres;
    for (std::size_t tabla = 0; tabla < kTablas; ++tabla)
        if (!nombrada.IsEmpty() || ficheros.tablas[tabla].IsEmpty())
            ficheros.tablas[tabla] = CFile::EnDisco(usuales[tabla], nombres);
}

/// Where the way on to Infograf came behind the way back, the log is empty and that of the way back
/// is kept beside it; unless the way back has written its files again since.
CString RegistroDeLaVuelta(const CFicheros& ficheros)
{
    const std::filesystem::path registro = sistema::Ruta(ficheros.registro);
    const CString guardado = sistema::Nombre(lado::De(registro, lado::kAnterior));
    sistema::Error error;
    const bool vacio = sistema::Mira(registro, error).largo == 0;
    NoSeHalla(ficheros.registro, error);
    return vacio && HayFichero(guardado) && !(FechaDe(ficheros.ficheroR) > FechaDe(guardado))
               ? guardado
               : ficheros.registro;
}

} // namespace

CFicheros BuscaFicheros(const CString& registro, const COpciones& opciones)
{
    CFicheros ficheros;
    const bool recibido = registro == kEstandar;
    const CString enSuLugar = recibido ? EnLugarDelRegistro(opciones) : registro;
    ficheros.registro = registro;
    ficheros.base = BaseDelRegistro(enSuLugar);
    ficheros.carpeta = CCadena(enSuLugar).DamePath();
    ficheros.detenido = opciones.detenido;
    ficheros.tablasDichas = !opciones.tablas.IsEmpty();
    TomaNombrados(opciones.con, false, ficheros);
    TomaNombrados(opciones.escritos, true, ficheros);
    SituaOrigen(opciones, ficheros);
    const bool conDibujos =
        ficheros.sentido == Sentido::Vuelta || ficheros.sentido == Sentido::Infograf;
    if (conDibujos)
        SituaDibujos(opciones.ortos, ficheros);
    if (ficheros.sentido == Sentido::Vuelta && !recibido)
        ficheros.registro = RegistroDeLaVuelta(ficheros);
    SituaTablas(opciones.tablas, conDibujos ? ficheros.lista.carpeta : ficheros.carpeta, ficheros);
    return ficheros;
}

std::vector<CString> Ausentes(const CFicheros& ficheros, const COpciones& opciones)
{
    std::vector<CString> nombrados = opciones.con;
    nombrados.insert(nombrados.end(), opciones.escritos.begin(), opciones.escritos.end());
    nombrados.insert(nombrados.end(), {opciones.entrada, opciones.lista});
    if (!opciones.tablas.IsEmpty())
        nombrados.insert(nombrados.end(), ficheros.tablas.begin(), ficheros.tablas.end());
    CNombresEnDisco nombres;
    if (!opciones.ortos.IsEmpty())
        nombrados.push_back(CFile::EnDisco(
            ConExtension(opciones.ortos, ExtensionDe(ClaseTopologia::Hojas)), nombres));
    std::erase_if(nombrados,
                  [](const CString& nombre) { return nombre.IsEmpty() || HayFichero(nombre); });
    return nombrados;
}

std::vector<CString> Leidos(const CFicheros& ficheros)
{
    std::vector<CString> leidos(ficheros.tablas.begin(), ficheros.tablas.end());
    leidos.insert(leidos.end(), {ficheros.registro, ficheros.entrada, ficheros.lista.nombre,
                                 ficheros.ficheroR, ficheros.ficheroM, ficheros.ficheroCsp});
    CNombresEnDisco nombres;
    using enum ClaseTopologia;
    for (const CString& entrada : ficheros.lista.entradas)
        for (const char* extension : {kExtensionDibujo, ExtensionDe(Parcelas),
                                      ExtensionDe(Subparcelas), ExtensionDe(Poligonos)})
            leidos.push_back(CFile::EnDisco(
                FicheroDeLista(ficheros.lista.carpeta, entrada, extension), nombres));
    if (!ficheros.ortos.IsEmpty())
        for (const char* extension : {kExtensionDibujo, ExtensionDe(Hojas)})
            leidos.push_back(CFile::EnDisco(ConExtension(ficheros.ortos, extension), nombres));
    std::erase_if(leidos,
                  [](const CString& nombre) { return nombre.IsEmpty() || nombre == kEstandar; });
    return leidos;
}

} // namespace informe
