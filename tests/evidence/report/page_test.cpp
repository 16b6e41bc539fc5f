#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "evidence/report/writing/maps.h"
#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "platform/files/cfile_exception.h"
#include "tests/evidence/report/report_fixture.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/// What maps have beside the drawings where the log is empty.
struct CSinMensajes {
    informe::CRegistroLeido registro;
    informe::CIndiceAvisos indice{registro};
    informe::CLineasMostradas lineas;
    informe::CAnclas anclas{registro, lineas};
};

/// The report of a log that has nothing beside it.
CInformePrueba InformeDe(std::string_view registro)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.ERR", registro);
    return CInformePrueba(carpeta, "a.ERR");
}

} // namespace

TEST(ReportPage, IsTheSameForTheSameFiles)
{
    const CCarpetaPrueba carpeta;
    carpeta.Pon("a.ERR", "E206: La parcela    1      2 ya existe\r\n");
    const std::string una = CInformePrueba(carpeta, "a.ERR").pagina;
    EXPECT_EQ(CInformePrueba(carpeta, "a.ERR").pagina, una);
    EXPECT_EQ(Veces(una, "<p class=\"fecha\">"), 1);
}

TEST(ReportPage, IsNotMadeOfALogThatIsWrittenAnewMeanwhile)
{
    const CCarpetaPrueba carpeta;
    const std::string linea = "E206: La parcela    1      2 ya existe\r\n";
    const informe::CRegistroLeido registro(carpeta.Pon("a.ERR", linea + linea));
    EXPECT_EQ(informe::CLineasMostradas(registro).Lineas().size(), 2U);
    for (const char* ahora : {"", linea.c_str()}) {
        carpeta.Pon("a.ERR", ahora);
        EXPECT_THROW(informe::CLineasMostradas{registro}, CFileException) << ahora;
    }
}

TEST(ReportPage, IsLookedOverForWhatNoBrowserTells)
{
    const struct {
        const char* pagina;
        const char* reparo;
    } casos[] = {
        {"<!DOCTYPE html>\n<p id=\"a\"><br><a href=\"#a\">b</a><path d=\"M0 0\"/></p>", ""},
        {"<style>a>b{}</style><script>if (a<b) c</script>", ""},
        {"<p><b></p>", "ends unopened: /p\nopen: p\nopen: b\n"},
        {"<p id=\"a\"></p><p class=\"x\" id=\"a\"></p>", "twice: a\n"},
        {"<a href=\"#b\"></a>", "leads nowhere: b\n"},
    };
    for (const auto& caso : casos)
        EXPECT_EQ(ReparosDePagina(caso.pagina), caso.reparo);
}

TEST(ReportPage, AsksNothingOfTheNetwork)
{
    const std::string pagina = InformeDe("E206: La parcela    1      2 ya existe\r\n").pagina;
    for (const char* fuera : {"http:", "https:", "src=", "@import", "<link", "url(//"})
        EXPECT_EQ(Veces(pagina, fuera), 0) << fuera;
    // Nor could it: the browser refuses, and is told so before anything else.
    const std::size_t politica = pagina.find(
        R"(<meta http-equiv="Content-Security-Policy" content="default-src &#39;none&#39;; )");
    EXPECT_LT(politica, std::min(pagina.find("<style"), pagina.find("<title")));
    const std::string lista = pagina.substr(politica, pagina.find('>', politica) - politica);
    for (const char* permiso : {"http", "data:", "*", "self", "unsafe-eval", "blob:"})
        EXPECT_EQ(Veces(lista.substr(lista.find("content")), permiso), 0) << permiso;
}

TEST(ReportPage, ShowsLinesThatAreNoMessageAsSuch)
{
    const CInformePrueba informe =
        InformeDe("hola\r\nE206: medio\r\n\r\nE206: La parcela    1      2 ya existe\r\n");
    EXPECT_TRUE(informe.Dice("<tr id=\"m1\" class=\"ajena\">"));
    EXPECT_TRUE(informe.Dice("3 líneas que no son ningún mensaje"));
    EXPECT_TRUE(informe.Dice("<b>Líneas que no son mensajes</b>"));
    EXPECT_THAT(informe.resultado.resumen, HasSubstr("líneas que no son ningún mensaje"));
    EXPECT_EQ(Veces(informe.pagina, "<tr id=\"m"), 4);
}

TEST(ReportPage, BoundsItsListsAndCountsTheRest)
{
    const CCarpetaPrueba carpeta;
    std::string registro;
    for (int i = 1; i <= 20000; ++i)
        registro += "E206: La parcela    1 " + std::to_string(100000 + i) + " ya existe\r\n";
    registro += "W302: Parcela    1      1 no tiene titular\r\n";
    carpeta.Pon("a.ERR", registro);
    informe::COpciones opciones;
    opciones.csv = carpeta.En("a.csv");
    const CInformePrueba informe(carpeta, "a.ERR", opciones);
    const std::int64_t filas = Veces(informe.pagina, "<tr id=\"m");
    EXPECT_LT(filas, 1000);
    EXPECT_TRUE(informe.Dice("<tr id=\"m20001\" class=\"avi\">")) << "some of each number";
    EXPECT_TRUE(informe.Dice("y 19.850 más, en "));
    EXPECT_TRUE(informe.Dice("y 19.801 más, de menos coste")) << "matters";
    EXPECT_LT(informe.pagina.size(), 400'000U);
    EXPECT_EQ(carpeta.Lineas("a.csv").size(), 20002U);
}

TEST(ReportPage, NamesTheFirstLinesOfAMatter)
{
    for (const int lineas : {12, 13}) {
        std::string registro;
        for (int i = 0; i < lineas; ++i)
            registro += "E105: Titular      7 no encontrado en el fichero de cotitulares.\r\n";
        EXPECT_TRUE(InformeDe(registro).Dice("<a href=\"#m12\">12</a>" +
                                             std::string(lineas > 12 ? " …" : "") + "</span>"));
    }
    EXPECT_TRUE(InformeDe("E109: La subparcela    a de coordenadas 1.00 2.00 no se encuentra en "
                          "ninguna parcela\r\n")
                    .Dice("<b>Subparcelas dibujadas fuera de toda parcela</b>"))
        << "without drawings nobody knows in which polygon";
}

TEST(ReportPage, TellsCauseAndRemedyOfEachNumber)
{
    const CInformePrueba informe = InformeDe("E206: La parcela    1      2 ya existe\r\n");
    EXPECT_TRUE(informe.Dice("id=\"E206\""));
    EXPECT_TRUE(informe.Dice("<a href=\"#m1\" data-codigo=\"E206\">ver el mensaje</a>"));
    EXPECT_TRUE(informe.Dice("La parcela … … ya existe"));
    EXPECT_TRUE(informe.Dice("<b>Causa.</b> "));
    EXPECT_TRUE(informe.Dice("<b>Remedio.</b> "));
}

TEST(ReportPage, AnEmptyLogIsGoodNews)
{
    const CInformePrueba informe = InformeDe("");
    EXPECT_THAT(informe.resultado.quejas, IsEmpty());
    EXPECT_TRUE(informe.Dice("El registro está vacío"));
}

TEST(ReportMap, ShowsAllPolygonsByWhatTheyLose)
{
    const auto poligono = [](int polig, bool conSuyo) {
        CPoligonoDibujado p;
        p.polig = polig;
        CRecintoDibujado r;
        const int x = polig * 10000;
        // A corner that turns in: the hull of a polygon without a ring of its own passes it by.
        r.contorno = {{x, 0}, {x + 9000, 0}, {x + 5000, 4000}, {x + 9000, 9000}, {x, 9000}};
        (conSuyo ? p.poligonos : p.parcelas).recintos.push_back(r);
        return p;
    };
    CSinMensajes vacio;
    const informe::CPerdidas perdidas = {{{1, 7}, 100}, {{3, 1}, 9000}};
    informe::CMapas mapas({vacio.indice, perdidas, {}, vacio.anclas}, {{{3, 2}, 1000}});
    for (const int polig : {1, 2, 3})
        mapas.Toma(poligono(polig, polig != 2));
    const std::vector<informe::CMapaHecho> hechos = mapas.Acaba();
    ASSERT_EQ(hechos.size(), 4U);
    EXPECT_EQ(hechos[0].titulo, "El municipio");
    const std::string& svg = hechos[0].marcas;
    for (const char* dice :
         {"<a href=\"#mapa1\"><path class=\"silueta pierde1\" d=\"M0 900l900 0 -400 -400 ",
          "<title>Polígono 1: 100 m² se pierden, en 1 parcela</title>",
          "<path class=\"silueta\" d=\"M1000 900l900 0 0 -900 -900 0 0 900 ",
          "<title>Polígono 2: sin mensajes</title>", "<path class=\"silueta pierde4\"",
          "<title>Polígono 3: 1,00 ha se pierden, en 2 parcelas</title>", ">−1,00 ha</text>"})
        EXPECT_THAT(svg, HasSubstr(dice));
    EXPECT_EQ(Veces(svg, "<path class=\"silueta"), 3);
    EXPECT_LT(svg.rfind("<path class=\"silueta"), svg.find("<text class=\"rg\""))
        << "no label below an outline";
}

TEST(ReportMap, LeavesOutPolygonsWithNothingToTellOnceThereIsMuch)
{
    constexpr std::size_t kMuchos = 50'001;
    CPoligonoDibujado poligono;
    CRecintoDibujado recinto;
    recinto.estado = EstadoRecinto::Valido;
    recinto.parcela = 1;
    recinto.contorno.resize(kMuchos);
    recinto.contorno[1] = {1000, 1000};
    poligono.parcelas.recintos = {recinto};
    CSinMensajes vacio;
    const informe::CPerdidas perdidas = {{{3, 1}, 100}};
    informe::CMapas mapas({vacio.indice, perdidas, {}, vacio.anclas}, {});
    for (const int polig : {1, 2, 3}) {
        poligono.polig = polig;
        mapas.Toma(poligono);
    }
    std::vector<std::string> titulos;
    for (const informe::CMapaHecho& mapa : mapas.Acaba())
        titulos.push_back(mapa.titulo.substr(0, mapa.titulo.find(" (")));
    EXPECT_THAT(titulos, testing::ElementsAre("El municipio", "Polígono 1", "Polígono 3", "Otros"));
}

TEST(ReportMap, LeavesOutWhatPassesItsBoundAndSaysSo)
{
    CPoligonoDibujado poligono;
    poligono.polig = 1;
    poligono.hayDibujo = poligono.parcelas.hay = poligono.subparcelas.hay = true;
    const auto recinto = [](int parcela, const char* letra) {
        CRecintoDibujado r;
        r.estado = EstadoRecinto::Valido;
        r.parcela = parcela;
        r.letra = letra;
        r.rotulo = std::to_string(parcela);
        r.contorno = {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}};
        return r;
    };
    for (int i = 1; i <= 10; ++i) {
        poligono.parcelas.recintos.push_back(recinto(i, ""));
        poligono.subparcelas.recintos.push_back(recinto(i, "a"));
    }
    informe::CRegistroLeido registro;
    CAviso aviso;
    aviso.mensaje = &DameMensaje(kSuperficieDifiere);
    aviso.linea = 1;
    aviso.polig = 1;
    for (const int parcela : {3, 5}) {
        aviso.parcela = parcela;
        registro.avisos.push_back(aviso);
    }
    const informe::CIndiceAvisos indice(registro);
    const CCarpetaPrueba carpeta;
    const informe::CRegistroLeido leido(carpeta.Pon("a.ERR", "E112: de la parcela 1 3\r\n"));
    const informe::CLineasMostradas lineas(leido);
    const struct {
        std::size_t puntos;
        std::int64_t parcelas, subparcelas;
        const char* nota;
    } casos[] = {{1000, 10, 10, ""},
                 {79, 10, 0, "no lleva las subparcelas"},
                 {39, 2, 0, "con mensajes"},
                 {7, 1, 0, "con mensajes"}};
    for (const auto& caso : casos) {
        informe::CAnclas anclas(registro, lineas);
        const informe::CPerdidas perdidas;
        informe::CComunDeMapas comun{indice, perdidas, {}, anclas, {1000, caso.puntos}};
        const std::string svg = informe::MapaSvg(poligono, comun);
        EXPECT_EQ(Veces(svg, "<title>Parcela "), caso.parcelas) << caso.puntos;
        EXPECT_EQ(Veces(svg, "class=\"sub ok\""), caso.subparcelas) << caso.puntos;
        EXPECT_THAT(svg, HasSubstr(caso.nota));
        EXPECT_EQ(Veces(svg, "<a href=\"#m1\"><path id=\"p1-3\" class=\"err\""), 1);
        EXPECT_LT(comun.presupuesto.puntos, 1000U);
    }
}
