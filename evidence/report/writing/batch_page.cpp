#include <filesystem>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/batch_outputs.h"
#include "evidence/report/writing/page_files.h"
#include "evidence/report/writing/page_parts.h"
#include "platform/files/system_files.h"

namespace informe {
namespace {

/// The name of the results, whatever way leads to them.
std::string NombreSuyo(const CString& carpeta)
{
    const std::filesystem::path entera = sistema::EnteraSinPuntos(sistema::Ruta(carpeta));
    return sistema::Nombre(entera.has_filename() ? entera.filename()
                                                 : entera.parent_path().filename());
}

/// A name of a file as a link has it: what isn't a letter of a name by its number.
std::string EnUrl(const std::string& camino)
{
    constexpr std::string_view kTalCual =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.~/";
    std::string url;
    for (const char c : camino)
        if (kTalCual.find(c) != std::string_view::npos)
            url += c;
        else
            url += "%" + Hexadecimal(static_cast<unsigned char>(c), 2);
    return url;
}

std::string EnColumna(const CColumnaLote& columna, std::int64_t valor)
{
    return columna.esSuperficie ? Hectareas(valor) : Miles(valor);
}

void Cifras(CMarcas& marcas, const CResumenLote& resumen)
{
    const auto cuantos = [&](Suerte suerte, const char* uno, const char* varios) {
        Cifra(marcas, resumen.Cuantos(suerte), uno, varios, "err");
    };
    marcas.Bloque("ul", {{"class", "cifras"}}, [&] {
        marcas.Linea();
        Cifra(marcas, resumen.trabajos.size(), "trabajo", "trabajos", "");
        cuantos(Suerte::Fallo, "falló", "fallaron");
        cuantos(Suerte::SinHacer, "sin hacer", "sin hacer");
        cuantos(Suerte::SinLeer, "hecho, sin leer", "hechos, sin leer");
        for (const CColumnaLote* columna : resumen.Columnas()) {
            const std::int64_t suma = resumen.Suma(columna->cifra);
            if (columna->esSuperficie)
                Cifra(marcas, suma == 0, Superficie(suma),
                      "perdidos, en " +
                          Cuantos(resumen.Suma(&CCifras::parcelas), "parcela", "parcelas") +
                          " de " + Cuantos(resumen.QuePierden(), "trabajo", "trabajos"),
                      "err");
            else if (columna->cifra != &CCifras::parcelas)
                Cifra(marcas, suma == 0, Miles(suma), columna->etiqueta,
                      columna->cifra == &CCifras::warnings ? "avi" : "err");
        }
    });
}

using CColumnas = std::vector<const CColumnaLote*>; // of which some job has a value

/// \param que  what a narrow screen, which shows no heads of columns, puts in front
void CeldaDeNumero(CMarcas& marcas, const std::string& que, const std::string& cuanto)
{
    marcas.Elemento("td", {{"class", kNumero}, {"data-t", que}}, cuanto);
}

void FilaDe(CMarcas& marcas, const CTrabajoVisto& uno, const CString& pagina,
            const CColumnas& columnas)
{
    const auto enlaza = [&](const CString& fichero, const std::string& texto) {
        Enlace(marcas, EnUrl(Desde(pagina, fichero)), texto);
    };
    const bool bien = uno.DameSuerte() == Suerte::Hecho;
    marcas.Bloque("tr", {}, [&] {
        CeldaDeNumero(marcas, "trabajo", std::to_string(uno.numero));
        marcas.Elemento("td", {{"class", "nombre"}}, [&] {
            enlaza(uno.informe, uno.carpeta);
            if (const std::string nota = Nota(uno); !nota.empty())
                marcas.Elemento("small", {}, nota);
        });
        marcas.Elemento("td", {}, uno.traduccion);
        marcas.Elemento("td", {{"class", bien ? "estado" : "estado mal"}},
                        [&] { enlaza(uno.dicho, EnPalabras(uno)); });
        for (const CColumnaLote* columna : columnas) {
            const auto valor = uno.cifras ? (*uno.cifras).*columna->cifra : std::nullopt;
            CeldaDeNumero(marcas, columna->etiqueta, valor ? EnColumna(*columna, *valor) : "");
        }
        CeldaDeNumero(marcas, "segundos", uno.hecho ? Decimal(uno.hecho->segundos, 2) : "");
    });
}

void FilaDeSuma(CMarcas& marcas, const CResumenLote& resumen, const CColumnas& columnas)
{
    marcas.Bloque("tr", {}, [&] {
        CeldaDeNumero(marcas, "trabajos", Miles(resumen.trabajos.size()));
        marcas.Elemento("td", {{"class", "nombre"}}, "Suma");
        marcas.Elemento("td", {}, "").Elemento("td", {}, "");
        for (const CColumnaLote* columna : columnas)
            CeldaDeNumero(marcas, columna->etiqueta,
                          EnColumna(*columna, resumen.Suma(columna->cifra)));
        CeldaDeNumero(marcas, "segundos", Decimal(resumen.Segundos(), 2));
    });
}

void TablaTrabajos(CMarcas& marcas, const CResumenLote& resumen, const CString& pagina)
{
    const CColumnas columnas = resumen.Columnas();
    std::vector<CColumnaPagina> cabeza = {
        {"Trabajo", true}, {"Carpeta"}, {"Traducción"}, {"Estado"}};
    for (const CColumnaLote* columna : columnas)
        cabeza.push_back({columna->titulo, true});
    cabeza.push_back({"Segundos", true});
    const auto filas = [&] {
        for (const CTrabajoVisto& uno : Primeros(resumen.trabajos, topes::kTrabajos))
            FilaDe(marcas, uno, pagina, columnas);
    };
    Tabla(marcas, "trabajos", cabeza, filas,
          [&] { marcas.Elemento("tfoot", {}, [&] { FilaDeSuma(marcas, resumen, columnas); }); });
    PonResto(marcas, topes::kTrabajos, resumen.trabajos.size(),
             ", que están en la hoja y cuentan en la suma.");
}

void Cuerpo(CMarcas& marcas, const CResumenLote& resumen, const CFirma& firma,
            const CString& pagina)
{
    marcas.Linea().Bloque("header", {}, [&] {
        marcas.Linea().Bloque("p", {{"class", "sobre"}}, "Resumen del lote");
        marcas.Bloque("h1", {}, Texto(NombreSuyo(resumen.carpeta)));
        Cifras(marcas, resumen);
        for (const std::string& reparo : resumen.reparos)
            Parrafo(marcas, kAlarma, reparo);
    });
    marcas.Bloque("main", {}, [&] {
        marcas.Linea();
        PonSeccion(marcas, "lote", "Trabajos", [&] {
            Parrafo(marcas, kNota,
                    "Lo peor, primero: lo que falló, lo que no se pudo leer o hacer; después, lo "
                    "que nadie explica, lo que se perdió, los errores y los warnings. La carpeta "
                    "lleva al informe del trabajo; su estado, a lo que dijo.");
            TablaTrabajos(marcas, resumen, pagina);
        });
    });
    PonPie(marcas, firma);
    Guion(marcas, kGuionOrden);
}

} // namespace

void EscribePaginaLote(const CResumenLote& resumen, const CFirma& firma, const CString& pagina,
                       const CEscribe& escribe)
{
    EscribeDocumento(escribe, "Resumen de " + Texto(NombreSuyo(resumen.carpeta)), "",
                     [&](CMarcas& marcas) { Cuerpo(marcas, resumen, firma, pagina); });
}

} // namespace informe
