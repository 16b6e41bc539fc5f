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
    constexpr std::string_view kLetras =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.~/";
    std::string url;
    for (const char c : camino)
        if (kLetras.find(c) != std::string_view::npos)
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

std::string Segundos(double segundos)
{
    return Decimal(segundos, 2);
}

/// The rows of a table whose columns are those of which some job has a value.
class CTablaLote {
public:
    CTablaLote(CMarcas& marcas, const CResumenLote& resumen, const CString& pagina)
        : m_marcas(marcas), m_resumen(resumen), m_pagina(pagina), m_columnas(resumen.Columnas())
    {
    }

    void Pon()
    {
        std::vector<CColumnaPagina> cabeza = {
            {"Trabajo", true}, {"Carpeta"}, {"Traducción"}, {"Estado"}};
        for (const CColumnaLote* columna : m_columnas)
            cabeza.push_back({columna->titulo, true});
        cabeza.push_back({"Segundos", true});
        const auto filas = [&] {
            for (const CTrabajoVisto& uno : Primeros(m_resumen.trabajos, topes::kTrabajos))
                Fila(uno);
        };
        Tabla(m_marcas, "trabajos", cabeza, filas,
              [&] { m_marcas.Elemento("tfoot", {}, [&] { Suma(); }); });
        PonResto(m_marcas, topes::kTrabajos, m_resumen.trabajos.size(),
                 ", que están en la hoja y cuentan en la suma.");
    }

private:
    void Fila(const CTrabajoVisto& uno)
    {
        const auto enlaza = [&](const CString& fichero, const std::string& texto) {
            Enlace(m_marcas, EnUrl(Desde(m_pagina, fichero)), texto);
        };
        const bool bien = uno.DameSuerte() == Suerte::Hecho;
        m_marcas.Bloque("tr", {}, [&] {
            Numero("trabajo", std::to_string(uno.numero));
            m_marcas.Elemento("td", {{"class", "nombre"}}, [&] {
                enlaza(uno.informe, uno.carpeta);
                if (const std::string nota = Nota(uno); !nota.empty())
                    m_marcas.Elemento("small", {}, nota);
            });
            m_marcas.Elemento("td", {}, uno.traduccion);
            m_marcas.Elemento("td", {{"class", bien ? "estado" : "estado mal"}},
                              [&] { enlaza(uno.dicho, EnPalabras(uno)); });
            for (const CColumnaLote* columna : m_columnas) {
                const auto valor = uno.cifras ? (*uno.cifras).*columna->cifra : std::nullopt;
                Numero(columna->etiqueta, valor ? EnColumna(*columna, *valor) : "");
            }
            Numero("segundos", uno.hecho ? Segundos(uno.hecho->segundos) : "");
        });
    }
    void Suma()
    {
        m_marcas.Bloque("tr", {}, [&] {
            Numero("trabajos", Miles(m_resumen.trabajos.size()));
            m_marcas.Elemento("td", {{"class", "nombre"}}, "Suma");
            m_marcas.Elemento("td", {}, "").Elemento("td", {}, "");
            for (const CColumnaLote* columna : m_columnas)
                Numero(columna->etiqueta, EnColumna(*columna, m_resumen.Suma(columna->cifra)));
            Numero("segundos", Segundos(m_resumen.Segundos()));
        });
    }
    /// \param que  what a narrow screen, which shows no heads of columns, puts in front
    void Numero(const std::string& que, const std::string& cuanto)
    {
        m_marcas.Elemento("td", {{"class", kNumero}, {"data-t", que}}, cuanto);
    }

    CMarcas& m_marcas;
    const CResumenLote& m_resumen;
    const CString& m_pagina;
    std::vector<const CColumnaLote*> m_columnas;
};

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
            CTablaLote(marcas, resumen, pagina).Pon();
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
