#include "resources/program_resources.h"

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
    {Imagen,          IDB_IMAGEN,         "",                      7,   6,  46, 102},
    {Grupo,           kSinId,             "",                     59,   3, 173, 105},
    {Icono,           IDR_ICONO,          "",                     66,  13,  20, 20},
    {Texto,           kSinId,             "Nombre",               66,  38,  42, 8},
    {Texto,           IDC_NOMBRE,         "",                    110,  38, 119, 8},
    {Texto,           kSinId,             "Descripción"_ansi,     66,  49,  42, 8},
    {Texto,           IDC_DESCRIPCION,    "",                    110,  49, 119, 8},
    {Texto,           kSinId,             "Versión"_ansi,         66,  60,  42, 8},
    {Texto,           IDC_VERSION,        "",                    110,  60, 119, 8},
    {Texto,           kSinId,             "Copyright",            66,  71,  42, 8},
    {Texto,           IDC_COPYRIGHT,      "",                    110,  71, 119, 8},
    {Texto,           kSinId,             "Autor",                66,  82,  42, 8},
    {Texto,           IDC_AUTOR,          "",                    110,  82, 119, 8},
    {Texto,           kSinId,             "E-mail",               66,  93,  42, 8},
    {Texto,           kSinId,             "soporte@vexasoft.example", 110, 93, 119, 8},
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
    {Texto,           IDC_ESTADO,         "",                      7, 184, 245, 8},
    {Progreso,        IDC_PROGRESO,       "Avance",                7, 194, 245, 10},
    {BotonPorDefecto, UINT{IDOK},         "&Aceptar",              7, 210,  56, 14},
    {Boton,           ID_HELP,            "A&yuda",               70, 210,  56, 14},
    {Boton,           IDC_ACERCA_DE,      "A&cerca de...",       133, 210,  56, 14},
    {Boton,           UINT{IDCANCEL},     "&Salir",              196, 210,  56, 14},
};

constexpr CPlantillaControl kVexaACampiva2[] = {
    {Grupo,           kSinId,                 "Archivos de entrada",    7,   7, 245, 183},
    {Texto,           kSinId,                 "Módulos"_ansi,          14,  23,  50, 8},
    {Edicion,         IDC_MODULOS,            "",                      68,  20, 121, 14},
    {Boton,           IDC_BUSCAR_MODULOS,     "Buscar...",            195,  20,  50, 14},
    {Texto,           kSinId,                 "Titulares",             14,  44,  50, 8},
    {Edicion,         IDC_TITULARES,          "",                      68,  41, 121, 14},
    {Boton,           IDC_BUSCAR_TITULARES,   "Buscar...",            195,  41,  50, 14},
    {Texto,           kSinId,                 "Parcelas",              14,  65,  50, 8},
    {Edicion,         IDC_PARCELAS,           "",                      68,  62, 121, 14},
    {Boton,           IDC_BUSCAR_PARCELAS,    "Buscar...",            195,  62,  50, 14},
    {Texto,           kSinId,                 "Subparcelas",           14,  86,  50, 8},
    {Edicion,         IDC_SUBPARCELAS,        "",                      68,  83, 121, 14},
    {Boton,           IDC_BUSCAR_SUBPARCELAS, "Buscar...",            195,  83,  50, 14},
    {Texto,           kSinId,                 "Parajes",               14, 107,  50, 8},
    {Edicion,         IDC_PARAJES,            "",                      68, 104, 121, 14},
    {Boton,           IDC_BUSCAR_PARAJES,     "Buscar...",            195, 104,  50, 14},
    {Texto,           kSinId,                 "Cotitulares",           14, 128,  50, 8},
    {Edicion,         IDC_COTITULARES,        "",                      68, 125, 121, 14},
    {Boton,           IDC_BUSCAR_COTITULARES, "Buscar...",            195, 125,  50, 14},
    {Texto,           kSinId,                 "DBVexa",                14, 149,  50, 8},
    {Edicion,         IDC_TREN,               "",                      68, 146, 121, 14},
    {Boton,           IDC_BUSCAR_TREN,        "Buscar...",            195, 146,  50, 14},
    {Texto,           kSinId,                 "Gráfico Ortos"_ansi,    14, 170,  50, 8},
    {Edicion,         IDC_ORTOS,              "",                      68, 167, 121, 14},
    {Boton,           IDC_BUSCAR_ORTOS,       "Buscar...",            195, 167,  50, 14},
    {Casilla,         IDC_MODIFICAR,
     "&Modificar archivos de entrada con los nuevos datos del gráfico"_ansi, 10, 200, 242, 10},
    {Casilla,         IDC_NO_EN_GRAFICO,
     "&Incluir parcelas existentes en BD y no existentes en gráfico"_ansi,   10, 217, 242, 10},
    {Casilla,         IDC_NO_EN_BD,
     "Incluir &parcelas existentes en gráfico y no existentes en BD"_ansi,   10, 234, 242, 10},
    {Casilla,         IDC_MODIFICAR_CONCENTRADAS,
     "M&odificar las parcelas concentradas",                                 10, 251, 242, 10},
    {Texto,           IDC_ESTADO,             "",                       7, 273, 245, 8},
    {Progreso,        IDC_PROGRESO,           "Avance",                 7, 286, 245, 12},
    {BotonPorDefecto, UINT{IDOK},             "&Aceptar",               7, 316,  56, 14},
    {Boton,           ID_HELP,                "A&yuda",                70, 316,  56, 14},
    {Boton,           IDC_ACERCA_DE,          "A&cerca de...",        133, 316,  56, 14},
    {Boton,           UINT{IDCANCEL},         "&Salir",               196, 316,  56, 14},
};

constexpr CPlantillaControl kVexaAInfograf[] = {
    {Grupo,           kSinId,             "Archivos de entrada",    7,   7, 245, 58},
    {Texto,           kSinId,             "DBVexa",                14,  24,  50, 8},
    {Edicion,         IDC_TREN,           "",                      68,  21, 121, 14},
    {Boton,           IDC_BUSCAR_TREN,    "Buscar...",            195,  21,  50, 14},
    {Texto,           kSinId,             "Gráfico Ortos"_ansi,    14,  45,  50, 8},
    {Edicion,         IDC_ORTOS,          "",                      68,  42, 121, 14},
    {Boton,           IDC_BUSCAR_ORTOS,   "Buscar...",            195,  42,  50, 14},
    {Texto,           IDC_ESTADO,         "",                       7,  75, 245, 8},
    {Progreso,        IDC_PROGRESO,       "Avance",                 7,  88, 245, 12},
    {BotonPorDefecto, UINT{IDOK},         "&Aceptar",               7, 122,  56, 14},
    {Boton,           ID_HELP,            "A&yuda",                70, 122,  56, 14},
    {Boton,           IDC_ACERCA_DE,      "A&cerca de...",        133, 122,  56, 14},
    {Boton,           UINT{IDCANCEL},     "&Salir",               196, 122,  56, 14},
};

constexpr CPlantillaControl kTipoTraduccion[] = {
    {Imagen,          IDB_IMAGEN,             "",                       7,   7,  58,  96},
    {Grupo,           kSinId,                 "Tipo de traducción"_ansi, 72, 5,  91,  98},
    {Radio,           IDC_DE_CATASTRO_A_VEXA, "de &Catastro a Vexa",   80,  25,  79,  10, {}, true},
    {Radio,           IDC_DE_VEXA_A_CATASTRO, "de &Vexa a Catastro",   80,  50,  79,  10},
    {Radio,           IDC_DE_VEXA_A_INFOGRAF, "de Vexa a &Infograf",   80,  75,  79,  10},
    {BotonPorDefecto, UINT{IDOK},             "&Aceptar",              44, 113,  56,  14},
    {Boton,           UINT{IDCANCEL},         "&Salir",               107, 113,  56,  14},
};
// clang-format on

constexpr CPlantillaDialogo kPlantillas[] = {
    {IDD_ACERCA_DE, "Acerca de Campiva...", 239, 135, kAcercaDe},
    {IDD_TIPO_TRADUCCION, "Campiva", 170, 134, kTipoTraduccion},
    {IDD_CAMPIVA_A_VEXA, "Catastro campiva a Vexa", 259, 231, kCampivaAVexa},
    {IDD_VEXA_A_CAMPIVA2, "Vexa a Catastro campiva", 259, 337, kVexaACampiva2},
    {IDD_VEXA_A_INFOGRAF, "Vexa a Infograf", 259, 143, kVexaAInfograf},
};

} // namespace

std::span<const CPlantillaDialogo> PlantillasDeDialogo()
{
    return kPlantillas;
}
