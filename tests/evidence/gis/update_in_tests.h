#pragma once

#include <filesystem>
#include <functional>
#include <stdexcept>

#include "evidence/drawn_polygon.h"
#include "tests/evidence/gis/driver_in_tests.h"

using CValores = std::map<std::string, std::string>; // fields, and the geometry as "wkt"
using CElementos = std::vector<CValores>;
using CCapas = std::map<std::string, CElementos>; // by the layers' names

inline constexpr const char* kSeQuedan =
    " polígonos de la lista que el origen no nombra y se quedan como "
    "están; la opción VACIA los vacía: ";
inline constexpr const char* kSeVacian =
    " polígonos que la opción VACIA deja sin los recintos que el origen podría traer: ";
inline constexpr const char* kFicheros[] = {"1.BIN", "1.PAR", "1.SUB", "1.POL",    "2.BIN",
                                            "2.PAR", "2.SUB", "2.POL", "lista.txt"};

/// A municipality of two polygons, which are alike: parcels 7 and 8 side by side, 9 apart, an
/// outline without a label, subparcel a of 7, heights, a line, a text and a point of nobody.
class Update : public CPruebaDriver {
protected:
    Update()
    {
        CDibujoPrueba dibujo(carpeta);
        const int izquierda =
            dibujo.Linea({{1000, 0, 5}, {0, 0, 6}, {0, 1000, 7}, {1000, 1000, 8}});
        const int muro = dibujo.Linea({{1000, 1000, 8}, {1000, 0, 5}});
        const int derecha = dibujo.Linea({{1000, 0, 5}, {2000, 0}, {2000, 1000}, {1000, 1000, 8}});
        const int aparte = dibujo.Cuadrado(5000, 5000, 10);
        const int charca = dibujo.Cuadrado(8000, 8000, 3);
        dibujo.par = {{kParcela, 100, dibujo.Parcela("7", 500, 500), {izquierda, muro}, {}, 1},
                      {kParcela, 100, dibujo.Parcela("8", 1500, 500), {derecha, muro}, {}, 2},
                      {kParcela, 100, dibujo.Parcela("9", 5500, 5500), {aparte}, {}, 3},
                      {kParcela, 9, 0, {charca}, {8100, 8100}, 4}};
        dibujo.sub = {{kParcela, 100, dibujo.Subparcela("7-a", 400, 400), {izquierda, muro}}};
        dibujo.pol = {{kParcela, 100, dibujo.Rotulo("125101", "1", 1, 1), {aparte}}};
        dibujo.Linea({{100, 100, 3}, {9000, 9000, 4}}, "127001");
        dibujo.Rotulo("129001", "Camino", 300, 300);
        dibujo.Graba();
        for (const char* extension : {"BIN", "PAR", "SUB", "POL"})
            std::filesystem::copy_file(carpeta.Ruta() / (std::string("1.") + extension),
                                       carpeta.Ruta() / (std::string("2.") + extension));
        carpeta.Pon("lista.txt", "TREN 045127 PUEBLO\r\nP1\r\nP2");
        for (const char* fichero : kFicheros)
            antes[fichero] = carpeta.Lee(fichero);
    }

    /// The features of a layer as they are read, those of polygon 1 alone.
    CElementos Elementos(const char* capa)
    {
        CElementos elementos;
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        for (const auto& elemento : *datos->GetLayerByName(capa)) {
            CValores& suyo = elementos.emplace_back();
            for (int i = 0; i < elemento->GetFieldCount(); ++i)
                if (elemento->IsFieldSetAndNotNull(i))
                    suyo[elemento->GetFieldDefnRef(i)->GetNameRef()] =
                        elemento->GetFieldAsString(i);
            if (const OGRGeometry* geometria = elemento->GetGeometryRef())
                suyo["wkt"] = geometria->exportToWkt();
        }
        std::erase_if(elementos, [](const CValores& suyo) { return suyo.at("poligono") != "1"; });
        return elementos;
    }
    /// The same of several layers.
    CCapas Capas(const std::vector<const char*>& nombres)
    {
        CCapas capas;
        for (const char* nombre : nombres)
            capas[nombre] = Elementos(nombre);
        return capas;
    }
    /// Writes layers over what is there. That polygon 2, which most of them don't name, stays as it
    /// was is told each time, and left out of `dicho`.
    void Escribe(const CCapas& capas, const std::vector<const char*>& opciones = {})
    {
        dicho.clear();
        PonCapas(capas, opciones);
        const std::string seQueda = std::string("aviso: 1") + kSeQuedan + "2\n";
        if (const std::size_t lugar = dicho.find(seQueda); lugar != std::string::npos)
            dicho.erase(lugar, seQueda.size());
    }
    /// Writes them where that is refused with a sentence, and nothing changes.
    void EsperaQueNiega(const CCapas& capas, const std::string& frase,
                        const std::vector<const char*>& opciones = {})
    {
        Escribe(capas, opciones);
        EXPECT_TRUE(Dice(frase));
        EXPECT_TRUE(dicho.ends_with("fallo: No se ha escrito ningún dibujo\n") ||
                    Dice("fallo: Imposible escribir"))
            << dicho;
        EXPECT_EQ(Cambiados(), Lineas());
        EXPECT_EQ(carpeta.Cuantos(), static_cast<int>(std::size(kFicheros)));
    }
    void PonCapas(const CCapas& capas, const std::vector<const char*>& opciones)
    {
        const GDALDatasetUniquePtr datos = Crea(opciones);
        ASSERT_NE(datos, nullptr);
        for (const auto& [nombre, elementos] : capas) {
            OGRLayer* capa = datos->CreateLayer(nombre.c_str(), nullptr, wkbUnknown);
            ASSERT_NE(capa, nullptr) << dicho;
            for (const CValores& elemento : elementos)
                for (const auto& [campo, valor] : elemento)
                    if (campo != "wkt" && capa->GetLayerDefn()->GetFieldIndex(campo.c_str()) < 0) {
                        const auto tipo = tipos.find(campo);
                        OGRFieldDefn definicion(campo.c_str(),
                                                tipo == tipos.end() ? OFTString : tipo->second);
                        ASSERT_EQ(capa->CreateField(&definicion), OGRERR_NONE);
                    }
            for (CValores elemento : elementos) {
                const std::string wkt = elemento["wkt"];
                elemento.erase("wkt");
                Pon(*capa, elemento, wkt.empty() ? nullptr : wkt.c_str());
            }
        }
        if (alFinal)
            alFinal(*datos);
    }
    /// The files that aren't as they were.
    Lineas Cambiados() const
    {
        Lineas cambiados;
        for (const char* fichero : kFicheros)
            if (carpeta.Lee(fichero) != antes.at(fichero))
                cambiados.emplace_back(fichero);
        return cambiados;
    }
    void PonComoEstaba() const
    {
        for (const char* fichero : kFicheros)
            carpeta.Pon(fichero, antes.at(fichero));
    }
    /// The drawing of polygon 1 is what it was, but for deleted marks, with something behind it.
    void EsperaQueCrece() const
    {
        const std::string ahora = carpeta.Lee("1.BIN");
        const std::string& viejo = antes.at("1.BIN");
        ASSERT_GE(ahora.size(), viejo.size());
        CFile bin;
        ASSERT_TRUE(bin.Open(carpeta.En("1.BIN"), CFile::modeRead));
        std::size_t deAntes = 0;
        ASSERT_TRUE(RecorreEntidades(bin, [&](int posicion, const vexageo::CTexto<int>& entidad) {
            const auto desde = static_cast<std::size_t>(posicion) - 1;
            deAntes += desde < viejo.size() ? 1U : 0U;
            if (desde >= viejo.size() || entidad.Tipo().EsBorrado())
                return;
            const auto largo = static_cast<std::size_t>(entidad.Bytes());
            EXPECT_EQ(ahora.substr(desde, largo), viejo.substr(desde, largo));
        }));
        EXPECT_EQ(deAntes, 12U);
    }
    Lineas Parcelas()
    {
        const GDALDatasetUniquePtr datos = Abre(carpeta.En("lista.txt"));
        Lineas lineas;
        for (const std::string& linea :
             Lee(*datos, "parcelas", {"poligono", "parcela", "area_registro", "numero"}))
            lineas.push_back(linea.substr(0, linea.rfind('|')));
        return lineas;
    }

    std::map<std::string, std::string> antes;
    std::map<std::string, OGRFieldType> tipos; ///< of the source's fields that are no texts
    std::function<void(GDALDataset&)> alFinal; ///< what happens before the dataset is closed
};

inline CValores& Parcela(CElementos& elementos, const char* numero)
{
    for (CValores& elemento : elementos)
        if (elemento["parcela"] == numero)
            return elemento;
    throw std::out_of_range(numero);
}
