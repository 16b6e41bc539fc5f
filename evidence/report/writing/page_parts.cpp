#include "evidence/report/writing/page_parts.h"

#include <array>
#include <cstdint>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_files.h"
#include "evidence/units.h"

namespace informe {
namespace {

// What a browser is told to refuse: all requests, whatever a name in the log smuggled in.
constexpr const char* kPolitica =
    "default-src 'none'; style-src 'unsafe-inline'; script-src 'unsafe-inline'; base-uri 'none'; "
    "form-action 'none'";

/// The head of the document, which asks nothing of the network.
void Cabeza(CMarcas& marcas, const std::string& titulo, const char* estilo)
{
    marcas.Linea().Suelto("meta", {{"charset", "utf-8"}}).Linea();
    marcas.Suelto("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", kPolitica}})
        .Linea();
    marcas
        .Suelto("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}})
        .Linea();
    marcas.Bloque("title", {}, titulo);
    marcas.Bloque("style", {}, [&] { marcas.Linea().Hecho(kEstilo).Hecho(estilo); });
}

/// What all pages begin with.
std::string Principio()
{
    std::string documento;
    EscribeDocumento([&](std::string_view utf8) { documento += utf8; }, "", "", [](CMarcas&) {});
    return documento.substr(0, documento.find("<title>"));
}

} // namespace

void EscribeSalidaPagina(const CString& nombre, CConjuntoSalidas& todas,
                         const std::function<void(const CEscribe&)>& como)
{
    EscribeSalida(nombre, Principio(), todas, como);
}

void EscribeDocumento(const CEscribe& escribe, const std::string& titulo, const char* estilo,
                      const std::function<void(CMarcas&)>& cuerpo)
{
    CMarcas marcas(escribe);
    marcas.Hecho("<!DOCTYPE html>\n");
    marcas.Bloque("html", {{"lang", "es"}}, [&] {
        marcas.Linea();
        marcas.Bloque("head", {}, [&] { Cabeza(marcas, titulo, estilo); });
        marcas.Bloque("body", {}, [&] { cuerpo(marcas); });
    });
    marcas.Vuelca();
}

void PonPie(CMarcas& marcas, const CFirma& firma)
{
    marcas.Bloque("footer", {}, [&] {
        marcas.Elemento("p", {{"class", "fecha"}},
                        "Hecho el " + Fecha(firma.hecho) + " por campiva-informe " + firma.version +
                            ".");
    });
}

void Guion(CMarcas& marcas, const char* guion)
{
    marcas.Bloque("script", {}, [&] { marcas.Linea().Hecho(guion); });
}

void Cifra(CMarcas& marcas, bool esCero, const std::string& cuanto, const std::string& que,
           const char* clase)
{
    marcas.Bloque("li", {{"class", esCero ? "cero" : clase}},
                  [&] { marcas.Elemento("b", {}, cuanto).Texto(" ").Texto(que); });
}

void Parrafo(CMarcas& marcas, const char* clase, std::string_view texto)
{
    marcas.Bloque("p", {{"class", clase}}, texto);
}

void PonResto(CMarcas& marcas, std::size_t dichos, std::size_t todos, std::string_view detras)
{
    if (dichos < todos)
        Parrafo(marcas, kNota, "y " + Miles(todos - dichos) + " más" + std::string(detras));
}

void Enlace(CMarcas& marcas, const std::string& destino, std::string_view texto)
{
    if (destino.empty())
        marcas.Texto(texto);
    else
        marcas.Elemento("a", {{"href", destino}}, texto);
}

void Fila(CMarcas& marcas, CAtributos atributos, std::initializer_list<CCelda> celdas)
{
    marcas.Bloque("tr", atributos, [&] {
        for (const CCelda& celda : celdas)
            marcas.Elemento("td", {{"class", celda.clase}}, [&] {
                if (!celda.texto.empty())
                    Enlace(marcas, celda.destino, celda.texto);
                if (celda.fuerte != nullptr)
                    marcas.Elemento("b", {}, celda.fuerte);
                marcas.Hecho(celda.marcas);
            });
    });
}

void Tabla(CMarcas& marcas, const char* ancla, const std::vector<CColumnaPagina>& columnas,
           const std::function<void()>& filas, const std::function<void()>& pie)
{
    const auto cabeza = [&] {
        for (const CColumnaPagina& columna : columnas)
            marcas.Elemento("th", {{"class", columna.deNumeros ? kNumero : nullptr}},
                            columna.titulo);
    };
    marcas.Bloque("div", {{"class", "ancha"}}, [&] {
        marcas.Elemento("table", {{"id", ancla}}, [&] {
            marcas.Elemento("thead", {}, [&] { marcas.Elemento("tr", {}, cabeza); });
            marcas.Elemento("tbody", {}, [&] {
                marcas.Linea();
                filas();
            });
            pie();
        });
    });
}

std::string SitioEnMetros(const vexageo::CPunto<int>& sitio)
{
    return Decimal(EnMetros(sitio.X), 2) + " " + Decimal(EnMetros(sitio.Y), 2);
}

std::string Fecha(std::time_t fecha)
{
    std::array<char, 32> bufer{};
    const std::tm* const partes = std::localtime(&fecha);
    if (partes == nullptr)
        return "sin fecha";
    std::strftime(bufer.data(), bufer.size(), "%d/%m/%Y %H:%M", partes);
    return bufer.data();
}

} // namespace informe
