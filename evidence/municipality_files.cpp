#include "evidence/municipality_files.h"

#include <algorithm>

#include "cadastre/file_extensions.h"
#include "cadastre/table_files.h"
#include "evidence/paths.h"
#include "platform/files/any_case_name.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/system_files.h"

namespace {

struct CTablaUsual {
    const char* nombre;
    const char* cabecera;
};

constexpr std::array<CTablaUsual, kTablas> kUsuales = {{{"Modulos.txt", kCabeceraModulos},
                                                        {"Titulares.txt", kCabeceraTitulares},
                                                        {"Parcelas.txt", kCabeceraParcelas},
                                                        {"Subparcelas.txt", kCabeceraSubparcelas},
                                                        {"Parajes.txt", kCabeceraParajes},
                                                        {"Cotitulares.txt", kCabeceraCotitulares}}};

} // namespace

const char* NombreTabla(Tabla tabla)
{
    return kUsuales[tabla].nombre;
}

CNombresTablas TablasEn(const CString& carpeta)
{
    CNombresTablas nombres;
    std::ranges::transform(kUsuales, nombres.begin(), [&](const CTablaUsual& usual) {
        return EnCarpeta(carpeta, usual.nombre);
    });
    return nombres;
}

std::optional<Tabla> TablaDeCabecera(std::string_view primera)
{
    const auto* const suya = std::ranges::find(kUsuales, primera, &CTablaUsual::cabecera);
    return suya == kUsuales.end() ? std::nullopt
                                  : std::optional(static_cast<Tabla>(suya - kUsuales.begin()));
}

std::optional<CListaPoligonos> LeeLista(const CString& nombre)
{
    CStdioFile fichero;
    if (!AbreSiHay(fichero, nombre))
        return std::nullopt;
    CListaPoligonos lista;
    lista.nombre = nombre;
    lista.carpeta = CCadena(nombre).DamePath();
    fichero.ReadString(lista.primera);
    lista.cabecera = LeeCabeceraLista(lista.primera);
    for (CString linea; fichero.ReadString(linea);)
        lista.entradas.push_back(EntradaDeLista(linea));
    return lista;
}

CHojasHalladas BuscaHojas(const CString& carpeta)
{
    constexpr const char* kUsual = "ortos.TOP";
    CNombresEnDisco nombres;
    CString usual = CFile::EnDisco(EnCarpeta(carpeta, kUsual), nombres);
    if (HayFichero(usual))
        return {usual};
    const CString lugar = carpeta.IsEmpty() ? "." : carpeta;
    sistema::Error error;
    CHojasHalladas halladas;
    const std::vector<std::filesystem::path> todos = sistema::Lista(sistema::Ruta(lugar), error);
    if (NoSeHalla(CFile::RutaCompleta(lugar), error))
        return halladas;
    for (const std::filesystem::path& nombre : todos) {
        const CString ruta = EnCarpeta(carpeta, sistema::Nombre(nombre));
        if (ExtensionDe(ruta) != kExtensionHojas)
            continue;
        if (!halladas.nombre.IsEmpty())
            return {CString(), true};
        halladas.nombre = ruta;
    }
    return halladas;
}
