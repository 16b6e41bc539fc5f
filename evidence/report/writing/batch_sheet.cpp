#include "evidence/report/reading/text.h"
#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/csv.h"

namespace informe {
namespace {

/// A number as a sheet reads it, without points in the thousands.
std::string SinPuntos(std::string cifras)
{
    std::erase(cifras, '.');
    return cifras;
}

std::string EnHoja(const CColumnaLote& columna, std::int64_t valor)
{
    return SinPuntos(columna.esSuperficie ? Hectareas(valor) : Miles(valor));
}

std::string Linea(const std::vector<std::string>& campos)
{
    std::string linea;
    for (const std::string& campo : campos)
        linea += (&campo == campos.data() ? "" : ";") + campo;
    return linea + "\r\n";
}

std::string Fila(const CTrabajoVisto& uno, const CString& hoja)
{
    std::vector<std::string> campos = {std::to_string(uno.numero), CampoCsv(uno.carpeta),
                                       uno.traduccion, EnPalabras(uno),
                                       uno.hecho ? std::to_string(uno.hecho->estado) : ""};
    for (const CColumnaLote& columna : kColumnasLote) {
        const auto valor = uno.cifras ? (*uno.cifras).*columna.cifra : std::nullopt;
        campos.push_back(valor ? EnHoja(columna, *valor) : "");
    }
    campos.push_back(uno.hecho ? SinPuntos(Decimal(uno.hecho->segundos, 2)) : "");
    campos.push_back(CampoCsv(Texto(Desde(hoja, uno.informe))));
    campos.push_back(CampoCsv(Nota(uno)));
    return Linea(campos);
}

} // namespace

void EscribeHojaLote(const CResumenLote& resumen, const CString& hoja, const CEscribe& escribe)
{
    std::vector<std::string> cabeza = {"traducción", "estado", "estado de salida"};
    std::vector<std::string> suma = {"suma", "", "", "", ""};
    for (const CColumnaLote& columna : kColumnasLote) {
        cabeza.emplace_back(columna.etiqueta);
        suma.push_back(resumen.Hay(columna) ? EnHoja(columna, resumen.Suma(columna.cifra)) : "");
    }
    cabeza.insert(cabeza.end(), {"segundos", "informe", "nota"});
    suma.insert(suma.end(), {SinPuntos(Decimal(resumen.Segundos(), 2)), "", ""});
    escribe(kPrincipioHojaLote);
    escribe(Linea(cabeza));
    for (const CTrabajoVisto& uno : resumen.trabajos)
        escribe(Fila(uno, hoja));
    escribe(Linea(suma));
}

} // namespace informe
