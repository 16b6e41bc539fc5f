#include "evidence/report/writing/page_parts.h"

#include <array>

#include "evidence/report/reading/text.h"
#include "evidence/units.h"

namespace informe {

void Parrafo(CMarcas& marcas, const char* clase, std::string_view texto)
{
    marcas.Bloque("p", {{"class", clase}}, texto);
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
            });
    });
}

void CabeceraTabla(CMarcas& marcas, std::initializer_list<CColumnaPagina> columnas)
{
    marcas.Elemento("thead", {}, [&] {
        marcas.Elemento("tr", {}, [&] {
            for (const CColumnaPagina& columna : columnas)
                marcas.Elemento("th", {{"class", columna.deNumeros ? kNumero : nullptr}},
                                columna.titulo);
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
