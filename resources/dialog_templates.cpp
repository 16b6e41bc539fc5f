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

constexpr CPlantillaControl kVexaACampiva2[] = {
    {Grupo,           kSinId,                 "Archivos de entrada",    7,   7, 245, 157},
    {Texto,           kSinId,                 "Módulos"_ansi,          14,  23,  50, 8},
    {Edicion,         IDC_MODULOS,            "",                      68,  20, 121, 14},
    {Boton,           IDC_BUSCAR_MODULOS,     "Buscar...",            195,  20,  50, 14},
    {Texto,           kSinId,                 "Titulares",             14,  40,  50, 8},
    {Edicion,         IDC_TITULARES,          "",                      68,  37, 121, 14},
    {Boton,           IDC_BUSCAR_TITULARES,   "Buscar...",            195,  37,  50, 14},
    {Texto,           kSinId,                 "Parcelas",              14,  57,  50, 8},
    {Edicion,         IDC_PARCELAS,           "",                      68,  54, 121, 14},
    {Boton,           IDC_BUSCAR_PARCELAS,    "Buscar...",            195,  54,  50, 14},
    {Texto,           kSinId,                 "Subparcelas",           14,  74,  50, 8},
    {Edicion,         IDC_SUBPARCELAS,        "",                      68,  71, 121, 14},
    {Boton,           IDC_BUSCAR_SUBPARCELAS, "Buscar...",            195,  71,  50, 14},
    {Texto,           kSinId,                 "Parajes",               14,  91,  50, 8},
    {Edicion,         IDC_PARAJES,            "",                      68,  88, 121, 14},
    {Boton,           IDC_BUSCAR_PARAJES,     "Buscar...",            195,  88,  50, 14},
    {Texto,           kSinId,                 "Cotitulares",           14, 108,  50, 8},
    {Edicion,         IDC_COTITULARES,        "",                      68, 105, 121, 14},
    {Boton,           IDC_BUSCAR_COTITULARES, "Buscar...",            195, 105,  50, 14},
    {Texto,           kSinId,                 "DBVexa",                14, 125,  50, 8},
    {Edicion,         IDC_TREN,               "",                      68, 122, 121, 14},
    {Boton,           IDC_BUSCAR_TREN,        "Buscar...",            195, 122,  50, 14},
    {Texto,           kSinId,                 "Gráfico Ortos"_ansi,    14, 142,  50, 8},
    {Edicion,         IDC_ORTOS,              "",                      68, 139, 121, 14},
    {Boton,           IDC_BUSCAR_ORTOS,       "Buscar...",            195, 139,  50, 14},
    {Casilla,         IDC_MODIFICAR,
     "&Modificar archivos de entrada con los nuevos datos del gráfico"_ansi, 14, 172, 238, 10},
    {Casilla,         IDC_NO_EN_GRAFICO,
     "&Incluir parcelas existentes en BD y no existentes en gráfico"_ansi,   14, 187, 238, 10},
    {Casilla,         IDC_NO_EN_BD,
     "Incluir &parcelas existentes en gráfico y no existentes en BD"_ansi,   14, 202, 238, 10},
    {Casilla,         IDC_MODIFICAR_CONCENTRADAS,
     "M&odificar las parcelas concentradas",                                 14, 217, 238, 10},
    {Texto,           IDC_ESTADO,             "",                       7, 241, 245, 8},
    {Progreso,        IDC_PROGRESO,           "",                       7, 254, 245, 12},
    {BotonPorDefecto, UINT{IDOK},             "&Aceptar",               7, 316,  56, 14},
    {Boton,           ID_HELP,                "A&yuda",                70, 316,  56, 14},
    {Boton,           IDC_ACERCA_DE,          "A&cerca de...",        133, 316,  56, 14},
    {Boton,           UINT{IDCANCEL},         "&Salir",               196, 316,  56, 14},
};
// clang-format on

constexpr CPlantillaDialogo kPlantillas[] = {
    {IDD_ACERCA_DE, "Acerca de Campiva...", 239, 135, kAcercaDe},
    {IDD_CAMPIVA_A_VEXA, "Catastro campiva a Vexa", 259, 231, kCampivaAVexa},
    {IDD_VEXA_A_CAMPIVA2, "Vexa a Catastro campiva", 259, 337, kVexaACampiva2},
};

} // namespace

std::span<const CPlantillaDialogo> PlantillasDeDialogo()
{
    return kPlantillas;
}
