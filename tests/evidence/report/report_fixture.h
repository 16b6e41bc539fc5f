#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
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

/// Has a file written a day ago.
inline void Envejece(const std::filesystem::path& fichero)
{
    std::filesystem::last_write_time(fichero, std::filesystem::file_time_type::clock::now() -
                                                  std::chrono::hours(24));
}

/// Takes the last row off a table.
void QuitaFila(const CCarpetaPrueba& carpeta, const std::string& tabla);

/// Runs the way on to Infograf.
/// \param lugar  folder below the other one, with its stroke, where the list and the sheets are
void EjecutaAInfograf(const CCarpetaPrueba& carpeta, const std::string& lugar = "");

/// Copies the tables into a new folder below.
void CopiaTablas(const CCarpetaPrueba& carpeta, const char* donde);

/// What comes of a report of something in the folder, whatever its page says.
inline informe::CResultado Resultado(const CCarpetaPrueba& carpeta, std::string_view registro,
                                     const informe::COpciones& opciones = {})
{
    return informe::HazInforme(carpeta.En(registro), opciones, {"1", 0});
}

/// What the report of a log in the folder says.
struct CInformePrueba {
    explicit CInformePrueba(const CCarpetaPrueba& carpeta, const char* registro,
                            const informe::COpciones& opciones = {}, std::string nombre = {})
        : resultado(Resultado(carpeta, registro, opciones))
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
