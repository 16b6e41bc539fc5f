#include "resources/dialog_templates.h"

#include "platform/ansi.h"
#include "platform/dialog.h"
#include "resources/resource_ids.h"

namespace {

using enum ClaseControl;

constexpr const char* kTiposEntrada[] = {
    "Archivo normal entregado por Catastro",
    "Relación de subparcelas con titulares"_ansi,
};

// clang-format off
constexpr CPlantillaControl kAcercaDe[] = {
    {Imagen,          IDB_IMAGEN,         "",                      7,   7,  68, 100},
    {Grupo,           kSinId,             "",                     82,   3, 150, 104},
    {Icono,           IDR_ICONO,          "",                     90,  12,  20, 20},
    {Texto,           kSinId,             "Nombre",               90,  36,  46, 8},
    {Texto,           IDC_NOMBRE,         "",                    138,  36,  90, 8},
    {Texto,           kSinId,             "Descripción"_ansi,     90,  48,  46, 8},
    {Texto,           IDC_DESCRIPCION,    "",                    138,  48,  90, 8},
    {Texto,           kSinId,             "Versión"_ansi,         90,  60,  46, 8},
    {Texto,           IDC_VERSION,        "",                    138,  60,  90, 8},
    {Texto,           kSinId,             "Copyright",            90,  72,  46, 8},
    {Texto,           IDC_COPYRIGHT,      "",                    138,  72,  90, 8},
    {Texto,           kSinId,             "Autor",                90,  84,  46, 8},
    {Texto,           IDC_AUTOR,          "",                    138,  84,  90, 8},
    {Texto,           kSinId,             "E-mail",               90,  96,  46, 8},
    {Texto,           kSinId,             "soporte@vexasoft.example", 138, 96, 90, 8},
    {BotonPorDefecto, UINT{IDOK},         "&Aceptar",             91, 114,  56, 14},
};

constexpr CPlantillaControl kCampivaAVexa[] = {
    {Grupo,           kSinId,             "Archivo de entrada",    7,   7, 245, 49},
    {Lista,           IDC_TIPO_ENTRADA,   "",                     14,  19, 231, 60, kTiposEntrada},
    {Edicion,         IDC_ENTRADA,        "",                     14,  37, 175, 14},
    {Boton,           IDC_BUSCAR_ENTRADA, "Buscar...",           195,  37,  50, 14},
    {Grupo,           kSinId,             "Archivos de salida",    7,  61, 245, 120},
    {Texto,           kSinId,             "Módulos"_ansi,         14,  77,  50, 8},
    {Edicion,         IDC_MODULOS,        "",                     68,  74, 177, 14},
    {Texto,           kSinId,             "Titulares",            14,  94,  50, 8},
    {Edicion,         IDC_TITULARES,      "",                     68,  91, 177, 14},
    {Texto,           kSinId,             "Parcelas",             14, 111,  50, 8},
    {Edicion,         IDC_PARCELAS,       "",                     68, 108, 177, 14},
    {Texto,           kSinId,             "Subparcelas",          14, 128,  50, 8},
    {Edicion,         IDC_SUBPARCELAS,    "",                     68, 125, 177, 14},
    {Texto,           kSinId,             "Parajes",              14, 145,  50, 8},
    {Edicion,         IDC_PARAJES,        "",                     68, 142, 177, 14},
    {Texto,           kSinId,             "Cotitulares",          14, 162,  50, 8},
    {Edicion,         IDC_COTITULARES,    "",                     68, 159, 177, 14},
    {Texto,           IDC_ESTADO,         "",                      7, 186, 120, 8},
    {Progreso,        IDC_PROGRESO,       "",                    132, 185, 120, 10},
    {BotonPorDefecto, UINT{IDOK},         "&Aceptar",              7, 210,  56, 14},
    {Boton,           ID_HELP,            "A&yuda",               70, 210,  56, 14},
    {Boton,           IDC_ACERCA_DE,      "A&cerca de...",       133, 210,  56, 14},
    {Boton,           UINT{IDCANCEL},     "&Salir",              196, 210,  56, 14},
};
// clang-format on

constexpr CPlantillaDialogo kPlantillas[] = {
    {IDD_ACERCA_DE, "Acerca de Campiva...", 239, 135, kAcercaDe},
    {IDD_CAMPIVA_A_VEXA, "Catastro campiva a Vexa", 259, 231, kCampivaAVexa},
};

} // namespace

std::span<const CPlantillaDialogo> PlantillasDeDialogo()
{
    return kPlantillas;
}
