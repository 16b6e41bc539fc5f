#include "evidence/report/reading/run_files.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include "cadastre/table_files.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/system_files.h"
#include "vexa_libs/binary.h"

namespace informe {
namespace {

constexpr const char* kNombres[kTablas] = {"Modulos.txt",     "Titulares.txt", "Parcelas.txt",
                                           "Subparcelas.txt", "Parajes.txt",   "Cotitulares.txt"};
// Of files beside a log that are no input: what the program and this one write.
constexpr std::string_view kNoEsEntrada[] = {"ERR", "HTML", "HTM",     "CSV",
                                             "R",   "M",    "GEOJSON", "CSP"};
constexpr std::string_view kNoEsLista[] = {"ERR", "HTML", "HTM", "CSV", "R",   "M",  "GEOJSON",
                                           "CSP", "BIN",  "PAR", "SUB", "POL", "TOP"};

constexpr const char* kCabeceras[kTablas] = {kCabeceraModulos,  kCabeceraTitulares,
                                             kCabeceraParcelas, kCabeceraSubparcelas,
                                             kCabeceraParajes,  kCabeceraCotitulares};

constexpr std::size_t kPedazo = std::size_t{1} << 16U;
constexpr auto kHolgura = std::chrono::seconds(2); // some disks tell the time no better

std::string EnMayusculas(std::string texto)
{
    for (char& c : texto)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return texto;
}

std::string Extension(const std::filesystem::path& ruta)
{
    const std::string punto = EnMayusculas(sistema::Nombre(ruta.extension()));
    return punto.empty() ? punto : punto.substr(1);
}

template <std::size_t N>
bool EsUna(const std::string& extension, const std::string_view (&extensiones)[N])
{
    return std::find(std::begin(extensiones), std::end(extensiones), extension) !=
           std::end(extensiones);
}

CString EnCarpeta(const CString& carpeta, const CString& nombre)
{
    CCadena ruta = nombre;
    ruta.CambiaPath(carpeta);
    return ruta;
}

/// Names in a folder, in order.
std::vector<std::filesystem::path> Nombres(const CString& carpeta)
{
    sistema::Error error; // a folder that can't be looked at holds nothing for us
    std::vector<std::filesystem::path> nombres =
        sistema::Lista(sistema::Ruta(carpeta.IsEmpty() ? "." : carpeta), error);
    std::sort(nombres.begin(), nombres.end());
    return nombres;
}

CString BuscaEntrada(const CString& carpeta, const CString& base)
{
    for (const std::filesystem::path& nombre : Nombres(carpeta)) {
        CString ruta = EnCarpeta(carpeta, sistema::Nombre(nombre));
        if (sistema::Nombre(nombre.stem()) == std::string_view(base) &&
            !EsUna(Extension(nombre), kNoEsEntrada) && HayFichero(ruta))
            return ruta;
    }
    return {};
}

/// The first line, with its end, as far as it tells what a file is; empty where it can't be read.
std::string PrimeraLinea(const CString& nombre)
{
    constexpr UINT kBasta = 512; // no header is longer
    char bufer[kBasta] = "";
    try {
        CStdioFile fichero;
        if (!fichero.Open(nombre, CFile::modeRead) || fichero.ReadString(bufer, kBasta) == nullptr)
            return {};
    } catch (const CFileException&) {
        return {}; // whatever it is, it is none of ours
    }
    return bufer;
}

CCabeceraLista Cabecera(const CString& nombre)
{
    return LeeCabeceraLista(PrimeraLinea(nombre));
}

CString BuscaLista(const CString& carpeta, const CString& base)
{
    for (const std::filesystem::path& nombre : Nombres(carpeta)) {
        CString ruta = EnCarpeta(carpeta, sistema::Nombre(nombre));
        if (!EsUna(Extension(nombre), kNoEsLista) && HayFichero(ruta) &&
            Cabecera(ruta).nombreSalida == base)
            return ruta;
    }
    return {};
}

/// Takes what the line says of the run's files, each for what it is.
void TomaNombrados(const std::vector<CString>& nombrados, CFicheros& ficheros)
{
    for (const CString& nombre : nombrados) {
        const std::string primera = PrimeraLinea(nombre);
        const auto* const tabla = std::find(std::begin(kCabeceras), std::end(kCabeceras), primera);
        const std::filesystem::path ruta = sistema::Ruta(nombre);
        const std::string extension = Extension(ruta);
        if (tabla != std::end(kCabeceras))
            ficheros.tablas[static_cast<std::size_t>(tabla - kCabeceras)] = nombre;
        else if (!EsUna(extension, kNoEsLista) &&
                 LeeCabeceraLista(primera).nombreSalida == ficheros.base)
            ficheros.lista = nombre;
        else if (!EsUna(extension, kNoEsEntrada) &&
                 sistema::Nombre(ruta.stem()) == std::string_view(ficheros.base))
            ficheros.entrada = nombre;
    }
}

CString BuscaOrtos(const CString& carpeta)
{
    for (const std::filesystem::path& nombre : Nombres(carpeta))
        if (Extension(nombre) == "TOP")
            return EnCarpeta(carpeta, sistema::Nombre(nombre));
    return {};
}

/// Gives the tables that nobody named their usual names.
void SituaTablas(const CString& junto, const CString& carpeta, CFicheros& ficheros)
{
    for (std::size_t tabla = 0; tabla < kTablas; ++tabla) {
        const CString nombre = kNombres[tabla];
        if (!carpeta.IsEmpty())
            ficheros.tablas[tabla] =
                sistema::Nombre(sistema::Ruta(carpeta) / sistema::Ruta(nombre));
        else if (ficheros.tablas[tabla].IsEmpty())
            ficheros.tablas[tabla] = EnCarpeta(junto, nombre);
    }
}

std::optional<std::filesystem::file_time_type> Fecha(const CString& nombre)
{
    std::error_code error;
    const auto fecha = std::filesystem::last_write_time(sistema::Ruta(nombre), error);
    return error ? std::nullopt : std::optional(fecha);
}

std::time_t EnSegundos(std::filesystem::file_time_type fecha)
{
    using std::chrono::system_clock;
    return system_clock::to_time_t(std::chrono::time_point_cast<system_clock::duration>(
        std::filesystem::file_time_type::clock::to_sys(fecha)));
}

std::uint32_t SumaFichero(CFile& fichero)
{
    std::uint32_t suma = 0;
    for (std::string_view tramo = fichero.Tramo(kPedazo); !tramo.empty();
         tramo = fichero.Tramo(kPedazo))
        suma = vexageo::Crc32(tramo, suma);
    return suma;
}

CFicheroVisto Mira(std::string papel, const CString& nombre, bool salida)
{
    CFicheroVisto visto;
    visto.papel = std::move(papel);
    visto.nombre = nombre;
    visto.salida = salida;
    CFile fichero;
    visto.hay = fichero.Open(nombre, CFile::modeRead | CFile::anyCase);
    if (!visto.hay)
        return visto;
    visto.largo = fichero.GetLength();
    visto.crc = SumaFichero(fichero);
    if (const auto fecha = Fecha(nombre))
        visto.fecha = EnSegundos(*fecha);
    return visto;
}

void MiraDibujos(const CFicheros& ficheros, const std::vector<CString>& entradas,
                 std::vector<CFicheroVisto>& vistos)
{
    for (const CString& entrada : entradas)
        for (const char* extension : {"BIN", "PAR", "SUB"})
            vistos.push_back(Mira(std::string(*extension == 'B' ? "dibujo" : "topología"),
                                  FicheroDeLista(ficheros.carpeta, entrada, extension), false));
    if (ficheros.ortos.IsEmpty())
        return;
    for (const char* extension : {"BIN", "TOP"}) {
        CCadena nombre = ficheros.ortos;
        nombre.CambiaExtension(extension);
        vistos.push_back(Mira("ortofotos", nombre, false));
    }
}

} // namespace

const char* NombreTabla(Tabla tabla)
{
    return kNombres[tabla];
}

bool HayFichero(const CString& nombre)
{
    sistema::Error error;
    return !nombre.IsEmpty() &&
           sistema::Mira(sistema::Ruta(nombre), error).tipo == sistema::CEstado::Tipo::Regular;
}

CFicheros BuscaFicheros(const CString& registro, const COpciones& opciones)
{
    CFicheros ficheros;
    ficheros.registro = registro;
    ficheros.base = sistema::Nombre(sistema::Ruta(registro).stem());
    const CString junto = CCadena(registro).DamePath();
    TomaNombrados(opciones.con, ficheros);
    if (!opciones.entrada.IsEmpty()) {
        ficheros.entrada = opciones.entrada;
        ficheros.lista = CString();
    } else if (!opciones.lista.IsEmpty()) {
        ficheros.lista = opciones.lista;
    } else if (ficheros.lista.IsEmpty() && ficheros.entrada.IsEmpty()) {
        ficheros.lista = BuscaLista(junto, ficheros.base);
        if (ficheros.lista.IsEmpty())
            ficheros.entrada = BuscaEntrada(junto, ficheros.base);
    }
    CString carpetaTablas = junto;
    if (!ficheros.lista.IsEmpty()) {
        ficheros.sentido = Sentido::Vuelta;
        ficheros.cabecera = Cabecera(ficheros.lista);
        ficheros.carpeta = carpetaTablas = CCadena(ficheros.lista).DamePath();
        ficheros.ortos = opciones.ortos.IsEmpty() ? BuscaOrtos(ficheros.carpeta) : opciones.ortos;
        ficheros.ficheroR = FicheroDeLista(ficheros.carpeta, ficheros.base, "R");
        ficheros.ficheroM = FicheroDeLista(ficheros.carpeta, ficheros.base, "M");
        ficheros.entrada = CString();
    } else if (!ficheros.entrada.IsEmpty()) {
        ficheros.sentido = Sentido::Ida;
    }
    SituaTablas(carpetaTablas, opciones.tablas, ficheros);
    return ficheros;
}

std::vector<CFicheroVisto> MiraFicheros(const CFicheros& ficheros,
                                        const std::vector<CString>& entradas)
{
    std::vector<CFicheroVisto> vistos;
    const bool ida = ficheros.sentido == Sentido::Ida;
    vistos.push_back(Mira("registro de errores", ficheros.registro, true));
    if (!ficheros.entrada.IsEmpty())
        vistos.push_back(Mira("entrada", ficheros.entrada, false));
    for (const CString& tabla : ficheros.tablas)
        if (ficheros.sentido != Sentido::Ninguno)
            vistos.push_back(Mira("tabla", tabla, ida));
    if (ficheros.sentido == Sentido::Vuelta) {
        vistos.push_back(Mira("lista de polígonos", ficheros.lista, false));
        MiraDibujos(ficheros, entradas, vistos);
        vistos.push_back(Mira("fichero de Catastro", ficheros.ficheroR, true));
        vistos.push_back(Mira("módulos de Catastro", ficheros.ficheroM, true));
    }
    const auto delRegistro = Fecha(ficheros.registro);
    for (CFicheroVisto& visto : vistos) {
        const auto fecha = Fecha(visto.nombre);
        visto.viejo =
            visto.salida && visto.hay && fecha && delRegistro && *fecha + kHolgura < *delRegistro;
    }
    return vistos;
}

bool Detenido(const std::vector<CFicheroVisto>& vistos, Sentido sentido)
{
    bool alguna = false;
    for (std::size_t i = 1; i < vistos.size(); ++i) { // the first one is the log
        if (!vistos[i].salida)
            continue;
        alguna = true;
        if (vistos[i].hay && !vistos[i].viejo)
            return false;
    }
    return alguna && (sentido == Sentido::Vuelta || !SinSalidas(vistos));
}

bool SinSalidas(const std::vector<CFicheroVisto>& vistos)
{
    return std::none_of(vistos.begin() + 1, vistos.end(),
                        [](const CFicheroVisto& visto) { return visto.salida && visto.hay; });
}

} // namespace informe
