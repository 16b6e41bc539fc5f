#pragma once

#include <cerrno>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gdal_priv.h>
#include <gtest/gtest.h>
#include <ogrsf_frmts.h>

#include "evidence/gis/driver.h"
#include "tests/faults/fault_plan.h"
#include "tests/support/drawing_in_the_making.h"

using Lineas = std::vector<std::string>;

inline constexpr const char* kCuadro = "POLYGON ((0 0,10 0,10 10,0 10,0 0))";

/// GDAL with the driver, its complaints gathered and not printed.
class CPruebaDriver : public testing::Test {
protected:
    CPruebaDriver()
    {
        RegistraVexa();
        CPLPushErrorHandlerEx(
            [](CPLErr clase, CPLErrorNum, const char* texto) {
                auto& gritos = *static_cast<std::string*>(CPLGetErrorHandlerUserData());
                if (clase != CE_Debug)
                    gritos +=
                        std::string(clase == CE_Warning ? "aviso: " : "fallo: ") + texto + "\n";
            },
            &dicho);
    }
    ~CPruebaDriver() override { CPLPopErrorHandler(); }

    /// Tells whether GDAL was told a sentence. Who expected otherwise sees all that it was told.
    testing::AssertionResult Dice(const std::string& frase) const
    {
        return testing::AssertionResult(dicho.find(frase) != std::string::npos) << dicho;
    }
    GDALDatasetUniquePtr Abre(const CString& lista, std::vector<const char*> opciones = {})
    {
        const char* const drivers[] = {"Vexa", nullptr};
        opciones.push_back(nullptr);
        return GDALDatasetUniquePtr(
            GDALDataset::Open(lista.GetString(), GDAL_OF_VECTOR, drivers, opciones.data()));
    }
    GDALDatasetUniquePtr Crea(std::vector<const char*> opciones = {"GER=45", "MUN=127"})
    {
        opciones.push_back(nullptr);
        GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("Vexa");
        return GDALDatasetUniquePtr(driver->Create(carpeta.En("lista.txt").GetString(), 0, 0, 0,
                                                   GDT_Unknown,
                                                   const_cast<char**>(opciones.data())));
    }
    /// A municipality of one parcel, 7, whose label stands before its boundary in the drawing.
    void PonUnaParcela()
    {
        CDibujoPrueba dibujo(carpeta);
        const int rotulo = dibujo.Parcela("7", 100, 100);
        dibujo.par = {{kParcela, 100, rotulo, {dibujo.Cuadrado(0, 0, 10)}}};
        dibujo.Graba();
        carpeta.Pon("lista.txt", "TREN 045127\r\nP1\r\n");
    }
    /// A layer with the fields that its features give.
    OGRLayer* Capa(GDALDataset& datos, const char* nombre,
                   const std::vector<std::pair<const char*, OGRFieldType>>& campos)
    {
        OGRLayer* capa = datos.CreateLayer(nombre, nullptr, wkbUnknown);
        EXPECT_NE(capa, nullptr);
        for (const auto& [campo, tipo] : campos) {
            OGRFieldDefn definicion(campo, tipo);
            EXPECT_EQ(capa->CreateField(&definicion), OGRERR_NONE);
        }
        return capa;
    }
    static std::unique_ptr<OGRGeometry> Geometria(const char* wkt) ///< null for none
    {
        OGRGeometry* geometria = nullptr;
        if (wkt != nullptr)
            OGRGeometryFactory::createFromWkt(wkt, nullptr, &geometria);
        return std::unique_ptr<OGRGeometry>(geometria);
    }
    bool Pon(OGRLayer& capa, const std::map<std::string, std::string>& campos, const char* wkt)
    {
        OGRFeature elemento(capa.GetLayerDefn());
        for (const auto& [campo, valor] : campos)
            elemento.SetField(campo.c_str(), valor.c_str());
        elemento.SetGeometryDirectly(Geometria(wkt).release());
        return capa.CreateFeature(&elemento) == OGRERR_NONE;
    }
    struct CUna {
        const char* poligono;
        const char* parcela;
        const char* wkt; ///< null for a feature without an outline
    };
    /// Writes parcels into new drawings. False where the driver takes one of them for none.
    bool Dibuja(const std::vector<CUna>& parcelas,
                std::vector<const char*> opciones = {"GER=45", "MUN=127"})
    {
        const GDALDatasetUniquePtr datos = Crea(std::move(opciones));
        OGRLayer* capa =
            Capa(*datos, "parcelas", {{"poligono", OFTInteger}, {"parcela", OFTInteger}});
        bool todas = true;
        for (const CUna& una : parcelas)
            todas &= Pon(*capa, {{"poligono", una.poligono}, {"parcela", una.parcela}}, una.wkt);
        return todas;
    }
    /// A line for each feature: the values of these fields and the geometry.
    std::vector<std::string> Lee(GDALDataset& datos, const char* nombre,
                                 const std::vector<const char*>& campos)
    {
        std::vector<std::string> lineas;
        for (const auto& elemento : *datos.GetLayerByName(nombre)) {
            std::string& linea = lineas.emplace_back();
            for (const char* campo : campos)
                linea += std::string(elemento->IsFieldSetAndNotNull(elemento->GetFieldIndex(campo))
                                         ? elemento->GetFieldAsString(campo)
                                         : "-") +
                         "|";
            if (const OGRGeometry* geometria = elemento->GetGeometryRef())
                linea += geometria->exportToWkt();
        }
        return lineas;
    }

    /// Has each call to the system fail in turn of those that this makes. It comes to what it came
    /// to without, or a failure is told.
    void FallaCadaLlamada(const std::function<Lineas()>& hace)
    {
        Plan() = {};
        const Lineas limpias = hace();
        const long cuantas = Plan().llamadas;
        EXPECT_GT(cuantas, 10);
        EXPECT_FALSE(Dice("fallo: "));
        for (long en = 1; en <= cuantas && !HasFailure(); ++en) {
            SCOPED_TRACE(testing::Message() << "call " << en << " of " << cuantas);
            dicho.clear();
            Plan() = {CPlanDeFallos::Que::FallaLlamada, en};
            Plan().error = EIO;
            const Lineas lineas = hace();
            Plan() = {};
            EXPECT_TRUE(lineas == limpias || Dice("fallo: "));
        }
    }

    CCarpetaPrueba carpeta;
    std::string dicho;
};
