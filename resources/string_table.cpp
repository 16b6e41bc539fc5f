#include "resources/program_resources.h"

#include <vector>

#include "cadastre/message_catalogue.h"
#include "platform/ansi.h"
#include "resources/resource_ids.h"

namespace {

constexpr CCadenaRecurso kCadenas[] = {
    {IDS_FILTRO_TODOS, "Todos los ficheros (*.*)|*.*||"},
    {IDS_NADA, " "},
    {IDS_LEYENDO_BASE, "Leyendo Base de datos"},
    {IDS_LEYENDO_POLIGONOS, "Leyendo polígonos"_ansi},
    {IDS_REGISTRANDO_PARCELAS, "Registrando parcelas"},
    {IDS_REGISTRANDO_SUBPARCELAS, "Registrando subparcelas"},
    {IDS_REGISTRANDO_TITULARES, "Registrando titulares"},
    {IDS_GRABANDO_TITULARES, "Grabando fichero de titulares"},
    {IDS_REGISTRANDO_POLIGONOS, "Registrando polígonos"_ansi},
    {IDS_GRABANDO_PARCELAS, "Grabando fichero de parcelas"},
    {IDS_GRABANDO_SUBPARCELAS, "Grabando fichero de subparcelas"},
    {IDS_GRABANDO_PARAJES, "Grabando fichero de parajes"},
    {IDS_GRABANDO_COTITULARES, "Grabando fichero de cotitulares"},
    {IDS_LEYENDO_TITULARES, "Leyendo fichero de titulares"},
    {IDS_LEYENDO_MODULOS, "Leyendo fichero de módulos"_ansi},
    {IDS_LEYENDO_PARCELAS, "Leyendo fichero de parcelas"},
    {IDS_LEYENDO_SUBPARCELAS, "Leyendo fichero de subparcelas"},
    {IDS_LEYENDO_PARAJES, "Leyendo fichero de parajes"},
    {IDS_LEYENDO_COTITULARES, "Leyendo fichero de cotitulares"},
    {IDS_ASIGNANDO_TITULARIDAD, "Asignando titularidad"},
    {IDS_FILTRO_TOPOLOGIAS,
     "Archivos topológicos (*.top)|*.top|Todos los ficheros (*.*)|*.*||"_ansi},
    {IDS_LEYENDO_ORTOS, "Leyendo fichero de ortos"},
    {IDS_GRABANDO_MODULOS, "Grabando fichero de módulos"_ansi},
};

constexpr const char* kFasesDelDibujo[] = {
    "Abriendo dibujo",
    "Leyendo cabecera del dibujo",
    "Leyendo entidades",
    "Leyendo líneas"_ansi,
    "Leyendo textos",
    "Leyendo puntos",
    "Leyendo topología"_ansi,
    "Leyendo islas",
    "Leyendo centroides",
    "Construyendo contornos",
    "Calculando superficies",
    "Ordenando polígonos"_ansi,
    "Ordenando entidades",
    "Buscando islas",
    "Asignando centroides",
    "Indexando dibujo",
    "Comprobando topología"_ansi,
    "Grabando entidades",
    "Grabando dibujo",
    "Grabando topología"_ansi,
};
static_assert(std::size(kFasesDelDibujo) == IDS_DIBUJO_ULTIMO - IDS_DIBUJO_PRIMERO + 1);

} // namespace

std::span<const CCadenaRecurso> TablaDeCadenas()
{
    static const std::vector<CCadenaRecurso> kTabla = [] {
        std::vector<CCadenaRecurso> tabla(std::begin(kCadenas), std::end(kCadenas));
        for (const CMensaje& mensaje : Catalogo())
            tabla.push_back({mensaje.numero, mensaje.texto});
        for (UINT numero = IDS_DIBUJO_PRIMERO; const char* fase : kFasesDelDibujo)
            tabla.push_back({numero++, fase});
        return tabla;
    }();
    return kTabla;
}
