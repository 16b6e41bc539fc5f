#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "vexa_libs/drawing_writer.h"
#include "vexa_libs/topology.h"

// What an outline of a topology stands for.
inline constexpr std::int16_t kParcela = vexageo::CPoligonoTopologico::kParcela;
inline constexpr std::int16_t kIsla = vexageo::CPoligonoTopologico::kIsla;

/// The drawing of polygon 1, or another one by its name, in the making.
class CDibujoPrueba {
public:
    explicit CDibujoPrueba(const CCarpetaPrueba& carpeta, std::string nombre = "1")
        : m_carpeta(carpeta), m_nombre(std::move(nombre))
    {
        EXPECT_TRUE(m_bin.Abre(carpeta.En(m_nombre + ".BIN")));
    }

    /// A closed square of so many metres, written as one line; gives its position from 1.
    int Cuadrado(int x, int y, int metros)
    {
        const int lado = metros * 100;
        return m_bin.Linea("nuevo",
                           {{x, y}, {x + lado, y}, {x + lado, y + lado}, {x, y + lado}, {x, y}});
    }
    int Linea(const std::vector<vexageo::CPunto<int>>& puntos, const char* codigo = "nuevo")
    {
        return m_bin.Linea(codigo, puntos);
    }
    int Rotulo(const char* codigo, const CString& texto, int x, int y, bool borrado = false)
    {
        vexageo::CTexto<int> rotulo(codigo);
        rotulo.SetTexto(texto);
        rotulo.Puntos().emplace_back(x, y);
        rotulo.Tipo().SetBorrado(borrado);
        return m_bin.Pon(rotulo);
    }
    int Parcela(const CString& texto, int x, int y) { return Rotulo("125201", texto, x, y); }
    int Subparcela(const CString& texto, int x, int y) { return Rotulo("125501", texto, x, y); }

    /// Records for the topologies.
    struct CRegistro {
        std::int16_t clase;
        double area;
        int rotulo; ///< position; 0 for none
        std::vector<int> tramos;
        vexageo::CPunto<int> punto = {}; ///< centroid, and interior point where that isn't told
        int numero = 0;
        std::vector<CRegistro> islas = {}; ///< in its own list
        std::optional<vexageo::CPunto<int>> interior = {};
    };
    std::vector<CRegistro> par;
    std::vector<CRegistro> sub;
    std::vector<CRegistro> pol;

    void Graba()
    {
        m_bin.Cierra();
        GrabaTopologia(m_nombre + ".PAR", par);
        GrabaTopologia(m_nombre + ".SUB", sub);
        GrabaTopologia(m_nombre + ".POL", pol);
    }

private:
    void GrabaTopologia(const std::string& nombre, const std::vector<CRegistro>& registros)
    {
        CFile fichero;
        fichero.Open(m_carpeta.En(nombre), CFile::modeCreate | CFile::modeWrite);
        for (const CRegistro& registro : registros)
            Poligono(registro).Write(&fichero);
        fichero.Close();
    }
    static vexageo::CPoligonoTopologico Poligono(const CRegistro& registro)
    {
        vexageo::CPoligonoTopologico poligono;
        poligono.NumPoligono(registro.numero);
        poligono.Clase(registro.clase);
        poligono.Centroide(registro.punto);
        poligono.PuntoInterior(registro.interior.value_or(registro.punto));
        poligono.AreaPropia(registro.area);
        poligono.OffsetCentroide(registro.rotulo);
        for (const int tramo : registro.tramos)
            poligono.InsertaTramo(tramo);
        for (const CRegistro& isla : registro.islas)
            poligono.InsertaIsla(Poligono(isla));
        return poligono;
    }

    const CCarpetaPrueba& m_carpeta;
    std::string m_nombre;
    vexageo::CEscritorDibujo m_bin;
};
