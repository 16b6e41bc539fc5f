#include "evidence/report/reading/seen_files.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <span>

#include "cadastre/file_extensions.h"
#include "evidence/drawn_polygon.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cfile.h"
#include "platform/files/system_files.h"
#include "vexa_libs/binary.h"

namespace informe {
namespace {

constexpr std::size_t kPedazo = std::size_t{1} << 16U;

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

CFicheroVisto Mira(const char* papel, const CString& nombre, bool salida, CNombresEnDisco& nombres)
{
    CFicheroVisto visto{.papel = papel,
                        .nombre = nombre.IsEmpty() ? nombre : CFile::EnDisco(nombre, nombres),
                        .salida = salida};
    CFile fichero;
    visto.hay = AbreSiHay(fichero, visto.nombre);
    if (!visto.hay)
        return visto;
    visto.largo = fichero.GetLength();
    visto.crc = SumaFichero(fichero);
    if (const auto fecha = FechaDe(visto.nombre))
        visto.fecha = EnSegundos(*fecha);
    return visto;
}

/// What came by the standard input.
CFicheroVisto MiraRecibido(const char* papel, std::string_view texto)
{
    return {.papel = papel,
            .nombre = "(entrada estándar)"_ansi,
            .salida = true,
            .hay = true,
            .largo = texto.size(),
            .crc = vexageo::Crc32(texto, 0)};
}

/// The drawings as the run reads them: the way back asks nothing of a .POL.
void MiraDibujos(const CFicheros& ficheros, CNombresEnDisco& nombres,
                 std::vector<CFicheroVisto>& vistos)
{
    using enum ClaseTopologia;
    for (const CString& entrada : ficheros.lista.entradas) {
        const auto mira = [&](const char* papel, const char* extension) {
            vistos.push_back(Mira(papel, FicheroDeLista(ficheros.lista.carpeta, entrada, extension),
                                  false, nombres));
        };
        mira("dibujo", kExtensionDibujo);
        mira("topología", ExtensionDe(Parcelas));
        mira("topología", ExtensionDe(Subparcelas));
        if (ficheros.sentido == Sentido::Infograf)
            mira("topología", ExtensionDe(Poligonos));
    }
    if (!ficheros.ortos.IsEmpty())
        for (const char* extension : {kExtensionDibujo, ExtensionDe(Hojas)})
            vistos.push_back(
                Mira("ortofotos", ConExtension(ficheros.ortos, extension), false, nombres));
}

/// The tables, which the way back may have written again after it read them.
void MiraTablas(const CFicheros& ficheros, CNombresEnDisco& nombres,
                std::vector<CFicheroVisto>& vistos)
{
    const bool ida = ficheros.sentido == Sentido::Ida;
    for (int tabla = 0; tabla < kTablas; ++tabla) {
        const auto& escritas = ficheros.escritas;
        const bool otraVez = !ida && std::ranges::find(escritas, tabla) != escritas.end();
        vistos.push_back(Mira(otraVez ? "tabla, reescrita" : "tabla",
                              ficheros.tablas[static_cast<std::size_t>(tabla)], ida, nombres));
    }
}

/// Tells of each output whether it is older than the log that stands in front.
void BuscaViejos(std::vector<CFicheroVisto>& vistos)
{
    const auto delRegistro = vistos.front().fecha ? FechaDe(vistos.front().nombre) : std::nullopt;
    for (CFicheroVisto& visto : vistos) {
        const auto fecha = FechaDe(visto.nombre);
        visto.viejo = visto.salida && visto.hay && fecha && delRegistro &&
                      *fecha + kHolguraDeFechas < *delRegistro;
    }
}

} // namespace

std::vector<CFicheroVisto> MiraFicheros(const CFicheros& ficheros,
                                        const std::optional<std::string>& recibido)
{
    std::vector<CFicheroVisto> vistos;
    CNombresEnDisco nombres;
    const Sentido sentido = ficheros.sentido;
    constexpr const char* kPapelRegistro = "registro de errores";
    vistos.push_back(recibido ? MiraRecibido(kPapelRegistro, *recibido)
                              : Mira(kPapelRegistro, ficheros.registro, true, nombres));
    if (!ficheros.entrada.IsEmpty())
        vistos.push_back(Mira("entrada", ficheros.entrada, false, nombres));
    if (sentido == Sentido::Ida || sentido == Sentido::Vuelta)
        MiraTablas(ficheros, nombres, vistos);
    if (sentido == Sentido::Vuelta || sentido == Sentido::Infograf) {
        vistos.push_back(Mira("lista de polígonos", ficheros.lista.nombre, false, nombres));
        MiraDibujos(ficheros, nombres, vistos);
    }
    if (sentido == Sentido::Infograf)
        vistos.push_back(Mira("registros de Infograf", ficheros.ficheroCsp, true, nombres));
    if (sentido == Sentido::Vuelta) {
        vistos.push_back(Mira("fichero de Catastro", ficheros.ficheroR, true, nombres));
        vistos.push_back(Mira("módulos de Catastro", ficheros.ficheroM, true, nombres));
    }
    BuscaViejos(vistos);
    return vistos;
}

bool Detenido(const std::vector<CFicheroVisto>& vistos, const CFicheros& ficheros)
{
    if (ficheros.detenido)
        return true;
    const auto otros = std::span(vistos).subspan(1); // the first one is the log
    const auto esDeAhora = [](const CFicheroVisto& visto) {
        return visto.salida && visto.hay && !visto.viejo;
    };
    return std::ranges::any_of(otros, &CFicheroVisto::salida) &&
           std::ranges::none_of(otros, esDeAhora) &&
           (ficheros.sentido != Sentido::Ida || ficheros.tablasDichas || !SinSalidas(vistos));
}

bool SinSalidas(const std::vector<CFicheroVisto>& vistos)
{
    return std::none_of(vistos.begin() + 1, vistos.end(),
                        [](const CFicheroVisto& visto) { return visto.salida && visto.hay; });
}

} // namespace informe
