#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "evidence/report/report.h"
#include "tests/support/files.h"

// Beside a fixture that runs a translation: the report on its log, and what stands in the page.

/// What is wrong with a page, whatever it says: elements that don't end where they should, places
/// of one name, links that lead nowhere. Empty for nothing, and for no page.
std::string ReparosDePagina(std::string_view pagina);

/// How often a text stands in another one.
inline std::int64_t Veces(std::string_view texto, std::string_view que)
{
    std::int64_t veces = 0;
    for (std::size_t i = texto.find(que); i != std::string_view::npos; i = texto.find(que, i + 1))
        ++veces;
    return veces;
}

/// What the report of a log in the folder says.
struct CInformePrueba {
    explicit CInformePrueba(const CCarpetaPrueba& carpeta, const char* registro,
                            informe::COpciones opciones = {}, std::string nombre = {})
        : resultado(informe::HazInforme(carpeta.En(registro), opciones, {"1", 0}))
    {
        if (nombre.empty())
            nombre = std::string(registro).replace(std::string_view(registro).rfind('.'),
                                                   std::string::npos, ".html");
        pagina = carpeta.Lee(nombre);
        EXPECT_EQ(ReparosDePagina(pagina), "");
    }

    bool Dice(std::string_view html) const { return pagina.find(html) != std::string::npos; }
    /// The part of the balance with the title, without its marks.
    std::string Partida(std::string_view titulo) const
    {
        const std::string desde = "<article class=\"partidas\"><h3>" + std::string(titulo) + "<";
        const std::size_t i = pagina.find(desde);
        if (i == std::string::npos)
            return "(no part)";
        std::string texto;
        bool marca = false;
        for (const char c : pagina.substr(i, pagina.find("</article>", i) - i)) {
            if (c == '<')
                texto += texto.ends_with('|') ? "" : "|";
            marca = c == '<' || (marca && c != '>');
            if (!marca && c != '>' && c != '\n')
                texto += c;
        }
        return texto;
    }
    /// The first line of the summary, behind the log's name.
    std::string Cuenta() const
    {
        const std::size_t desde = resultado.resumen.find(".ERR: ") + 6;
        return resultado.resumen.substr(desde, resultado.resumen.find('\n') - desde);
    }

    informe::CResultado resultado;
    std::string pagina;
};
