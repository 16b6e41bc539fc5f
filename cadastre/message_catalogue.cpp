#include "cadastre/message_catalogue.h"

#include <algorithm>

#include "cadastre/wrapping.h"
#include "platform/ansi.h"

namespace {

using enum Contador;

// E107 and E108 go to a box, E214 is counted by whoever has the holders numbered, the summaries end
// a run. E208 and E210 are kept for their numbers; nothing raises them.
// clang-format off
constexpr CMensaje kCatalogo[] = {
    {kResumenCatastro, Ninguno,
     "Proceso finalizado con éxito.\n\nNúmero de municipios leidos  : % 6d\nNúmero de parcelas leidas    : % 6d\nNúmero de titulares leidos   : % 6d\n\nNúmero de errores producidos : % 6d\nNúmero de warnings producidos : % 6d\n"_ansi},
    {kTitularNoEncontrado, Errores,
     "E101: Titular % 6d no encontrado en parcela % 4d % 6d\n"_ansi},
    {kParajeNoEncontrado, Errores,
     "E102: Paraje % 4d no encontrado en parcela % 4d % 6d\n"_ansi},
    {kSubparcelaSinParcela, Errores,
     "E103: Parcela % 4d % 6d inexistente en subparcela %s\n"_ansi},
    {kCotitularSinParcela, Errores,
     "E104: Parcela % 4d % 6d no encontrada en el fichero de cotitulares.\n"_ansi},
    {kCotitularSinTitular, Errores,
     "E105: Titular % 6d no encontrado en el fichero de cotitulares.\n"_ansi},
    {kParcelaNoEnBase, Errores,
     "E106: La parcela % 4d % 6d en gráfico no tiene correspondencia en base de datos\n"_ansi},
    {kParFueraDeFecha, Ninguno,
     "E107: Archivo topológico del polígono %s.PAR fuera de fecha\n"_ansi},
    {kSubFueraDeFecha, Ninguno,
     "E108: Archivo topológico del polígono %s.SUB fuera de fecha\n"_ansi},
    {kSubparcelaFuera, Errores,
     "E109: La subparcela % 4s de coordenadas %.2lf %.2lf no se encuentra en ninguna parcela\n"_ansi},
    {kSubparcelaNoEnBase, Errores,
     "E110: La subparcela % 4d % 6d % 4s en gráfico no tiene correspondencia en base de datos\n"_ansi},
    {kParcelaNoEnGrafico, Errores,
     "E111: La parcela % 4d % 6d en base de datos no tiene correspondencia en gráfico\n"_ansi},
    {kSubparcelaNoEnGrafico, Errores,
     "E113: La subparcela % 4d % 6d % 4s en base de datos no tiene correspondencia en gráfico\n"_ansi},
    {kSuperficieDifiere, Errores,
     "E112: La parcela % 4d % 6d difiere en superficie % 8d de sus subparcelas % 8d\n"_ansi},
    {kSinSubparcelas, Errores,
     "E201: Parcela % 4d % 6d sin subparcelas\n"_ansi},
    {kSinPropietarios, Errores,
     "E202: Parcela % 4d % 6d sin propietarios\n"_ansi},
    {kSubparcelaDuplicada, Warnings,
     "W301: La subparcela % 4d % 6d % 4s está duplicada\n"_ansi},
    {kModuloRepetido, Errores,
     "E203: El módulo %s con calificación %s e intensidad %d ya insertado.\n"_ansi},
    {kMismoNombre, Errores,
     "E204: Ya existe otro titular con el mismo nombre y distinto DNI para %s\n"_ansi},
    {kMismoDNI, Errores,
     "E205: Ya existe otro titular con el mismo DNI y distinto nombre que %s\n"_ansi},
    {kSinTitular, Warnings,
     "W302: Parcela % 4d % 6d no tiene titular\n"_ansi},
    {kParcelaRepetida, Errores,
     "E206: La parcela % 4d % 6d ya existe\n"_ansi},
    {kParcelaNoValida, Errores,
     "E207: Referencia de parcela % 4d % 6d no válida\n"_ansi},
    {kSubparcelaRepetida, Errores,
     "E208: La subparcela % 4d % 6d % 4s ya existe\n"_ansi},
    {kSubparcelaSinSuperficie, Errores,
     "E209: Subparcela % 4d % 6d %s con superficie 0\n"_ansi},
    {kMismoIndice, Errores,
     "E210: Existe otro titular con el mismo índice en la parcela % 4d % 6d el titular %s\n"_ansi},
    {kYaCotitular, Errores,
     "E211: Ya existía como cotitular en la parcela % 4d % 6d el titular %s\n"_ansi},
    {kYaTitular, Errores,
     "E212: El cotitular %s ya era titular en la parcela % 4d % 6d\n"_ansi},
    {kParcelaNoInsertada, Errores,
     "E213: La parcela % 4d % 6d no pudo ser insertada.\n"_ansi},
    {kSinNumImputa, Ninguno,
     "E214: El cotitular %s no tiene asignado número imputación. Se le asigna el número %d.\n"_ansi},
    {kResumenVexa, Ninguno,
     "Proceso finalizado con éxito.\n\nMuncipio leido  : %03d %03d\nNúmero de parcelas leidas    : % 6d\nNúmero de titulares leidos   : % 6d\n\nNúmero de errores producidos : % 6d\nNúmero de warnings producidos : % 6d\n"_ansi},
    {kAbstractaDifiere, Warnings,
     "W303: La subparcela abstracta % 4d % 6d % 4s difiere en superficie % 8d del gráfico\n"_ansi},
    {kSuperficieCorregida, Warnings,
     "W304: La parcela % 4d % 6d difiere en superficie % 8d de sus subparcelas % 8d. Se asigna nueva superficie a la parcela\n"_ansi},
};
// clang-format on

} // namespace

std::span<const CMensaje> Catalogo()
{
    return kCatalogo;
}

const CMensaje& DameMensaje(Mensaje numero)
{
    return *std::lower_bound(std::begin(kCatalogo), std::end(kCatalogo), numero,
                             [](const CMensaje& m, Mensaje n) { return m.numero < n; });
}

void Cuenta(const CAvisos& avisos, Contador contador)
{
    if (contador == Contador::Errores)
        avisos.numErrores = Suma(avisos.numErrores, 1);
    else if (contador == Contador::Warnings)
        avisos.numWarnings = Suma(avisos.numWarnings, 1);
}
