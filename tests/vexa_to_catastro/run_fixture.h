#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "generator/drawing_files.h"
#include "platform/ansi.h"
#include "tests/support/drawing_in_the_making.h"
#include "tests/support/files.h"
#include "tests/support/scripted_front_end.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

using Textos = std::vector<std::string>;

/// A row of Parcelas.txt, by those of its fields that tests tell.
struct CFilaParcela {
    std::string_view numero;
    std::string_view polig = "1";
    std::string_view superficie = "3";
    std::string_view valor = {};
    std::string_view titular = "1";
    std::string_view tit = "PR";
    std::string_view partici = "100";
    std::string_view hoja = "VIEJA";
    std::string_view paraje = "1";
    std::string_view concentrada = " ";
};

/// A run of the translation from the command line, in a folder of its own.
class Cruce : public testing::Test {
protected:
    Cruce()
    {
        tablas["Titulares"] = {Fila({"045", "127", "1", "ANA", " ", "11111111"}),
                               Fila({"045", "127", "2", "LUIS", " ", "22222222"})};
        tablas["Parajes"] = {Fila({"045", "127", "0", "1", "LA ERA"})};
        tablas["Modulos"] = {};
        tablas["Parcelas"] = {};
        tablas["Subparcelas"] = {};
        tablas["Cotitulares"] = {};
        lista = "TREN 045127\r\nP1\r\n";
    }

    static std::string Fila(std::initializer_list<std::string_view> campos)
    {
        std::string fila;
        for (const std::string_view campo : campos)
            fila.append(fila.empty() ? "" : "\t").append(campo);
        return fila + "\r\n";
    }
    static std::string FilaParcela(const CFilaParcela& p)
    {
        return Fila({"045", "127", "0", p.polig, p.numero, p.superficie, p.valor, "", p.titular,
                     p.tit, p.partici, p.hoja, "", "", p.paraje, p.concentrada});
    }
    void Parcela(std::string_view numero, std::string_view superficie,
                 std::string_view concentrada = " ")
    {
        tablas["Parcelas"].push_back(
            FilaParcela({.numero = numero, .superficie = superficie, .concentrada = concentrada}));
    }
    void Subparcela(std::string_view numero, std::string_view letra, std::string_view superficie,
                    std::string_view tipo = " ")
    {
        tablas["Subparcelas"].push_back(
            Fila({"045", "127", "0", "1", numero, letra, tipo, "S", superficie}));
    }

    static std::string Tabla(const Textos& filas)
    {
        std::string texto = "Ger Mun\r\n";
        for (const std::string& fila : filas)
            texto += fila;
        return texto;
    }

    void Ejecuta(int modificar = 0, int noEnGrafico = 0, int noEnBD = 0, int concentradas = 0)
    {
        CVexaACampiva2Dlg dialogo;
        Ejecuta(dialogo, modificar, noEnGrafico, noEnBD, concentradas);
    }
    void Ejecuta(CVexaACampiva2Dlg& dialogo, int modificar, int noEnGrafico, int noEnBD,
                 int concentradas = 0)
    {
        for (const auto& [tabla, filas] : tablas)
            carpeta.Pon(tabla + ".txt", Tabla(filas));
        carpeta.Pon("lista.txt", lista);
        aplicacion.WriteProfileInt("VexaACampiva2", "ModificarConcentradas", concentradas);
        EjecutaLote(dialogo, modificar, noEnGrafico, noEnBD);
    }
    void EjecutaLote(int modificar, int noEnGrafico, int noEnBD)
    {
        CVexaACampiva2Dlg dialogo;
        EjecutaLote(dialogo, modificar, noEnGrafico, noEnBD);
    }
    void EjecutaLote(CVexaACampiva2Dlg& dialogo, int modificar, int noEnGrafico, int noEnBD)
    {
        aplicacion.guion.cajas.clear();
        aplicacion.guion.atendidos = 0;
        dialogo.EjecutaLote(carpeta.En("Modulos.txt"), carpeta.En("Titulares.txt"),
                            carpeta.En("Parcelas.txt"), carpeta.En("Subparcelas.txt"),
                            carpeta.En("Parajes.txt"), carpeta.En("Cotitulares.txt"),
                            carpeta.En("lista.txt"), carpeta.En("ortos.TOP"), modificar,
                            noEnGrafico, noEnBD, nullptr);
    }

    Textos Lineas(std::string_view nombre) const { return carpeta.Lineas(nombre); }
    Textos Mensajes() const { return Lineas("045127.ERR"); }
    /// Records of a type in the exchange file.
    Textos Registros(std::string_view tipo) const
    {
        Textos suyos;
        for (const std::string& linea : Lineas("045127.R"))
            if (std::string_view(linea).substr(9, 2) == tipo)
                suyos.push_back(linea);
        return suyos;
    }
    /// Surfaces, in square metres, of the records of a type.
    std::vector<int> Superficies(std::string_view tipo) const
    {
        std::vector<int> superficies;
        for (const std::string& r : Registros(tipo))
            superficies.push_back(LeeEntero(r.substr(tipo == "PR" ? 21 : 28, 9)));
        return superficies;
    }
    /// Texts of the error boxes without their paths.
    Textos Errores() const
    {
        Textos errores;
        for (const CCajaVista& caja : aplicacion.guion.cajas) {
            if (caja.flags != MB_ICONERROR)
                continue;
            EXPECT_EQ(caja.titulo, "Error");
            errores.push_back(carpeta.SinRuta(caja.texto));
        }
        return errores;
    }
    /// What was said behind the summary, without the first path in each.
    Textos Observaciones() const
    {
        Textos dichas;
        for (const CString& dicha : aplicacion.guion.escritos.observaciones)
            dichas.push_back(carpeta.SinRuta(ansi::AUtf8(dicha)));
        return dichas;
    }
    /// The first of them, empty where there is none.
    std::string Observacion() const
    {
        const Textos dichas = Observaciones();
        return dichas.empty() ? "" : dichas[0];
    }

    CCarpetaPrueba carpeta;
    CAplicacionPrueba aplicacion;
    std::map<std::string, Textos> tablas;
    std::string lista;
};
