#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "tests/support/files.h"
#include "vexa_libs/topology.h"

/// The drawing of polygon 1 in the making.
class CDibujoPrueba {
public:
    explicit CDibujoPrueba(const CCarpetaPrueba& carpeta) : m_carpeta(carpeta)
    {
        constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite | CFile::typeBinary;
        EXPECT_TRUE(m_bin.Open(carpeta.En("1.BIN"), kModo));
        vexageo::CCabeceraDibujo().Write(&m_bin);
    }

    /// A closed square of so many metres, written as one line; gives its position from 1.
    int Cuadrado(int x, int y, int metros)
    {
        vexageo::CLinea<int> linea;
        const int lado = metros * 100;
        linea.Puntos() = {{x, y}, {x + lado, y}, {x + lado, y + lado}, {x, y + lado}, {x, y}};
        return Pon(linea);
    }
    int Rotulo(const char* codigo, const CString& texto, int x, int y, bool borrado = false)
    {
        vexageo::CTexto<int> rotulo(codigo);
        rotulo.SetTexto(texto);
        rotulo.Puntos().emplace_back(x, y);
        rotulo.Tipo().SetBorrado(borrado);
        return Pon(rotulo);
    }
    int Parcela(const CString& texto, int x, int y) { return Rotulo("125201", texto, x, y); }
    int Subparcela(const CString& texto, int x, int y) { return Rotulo("125501", texto, x, y); }

    /// Records for the topologies.
    struct CRegistro {
        std::int16_t clase;
        double area;
        int rotulo; ///< position; 0 for none
        std::vector<int> tramos;
        vexageo::CPunto<int> punto = {}; ///< centroid and interior point
        int numero = 0;
    };
    std::vector<CRegistro> par;
    std::vector<CRegistro> sub;
    std::vector<CRegistro> pol;

    void Graba()
    {
        m_bin.Close();
        GrabaTopologia("1.PAR", par);
        GrabaTopologia("1.SUB", sub);
        GrabaTopologia("1.POL", pol);
    }

private:
    int Pon(const vexageo::CEntidadVexa<int>& entidad)
    {
        const int posicion = static_cast<int>(m_bin.GetPosition()) + 1;
        entidad.Write(&m_bin);
        return posicion;
    }
    void GrabaTopologia(const char* nombre, const std::vector<CRegistro>& registros)
    {
        CFile fichero;
        fichero.Open(m_carpeta.En(nombre),
                     CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
        for (const CRegistro& registro : registros) {
            vexageo::CPoligonoTopologico poligono;
            poligono.NumPoligono(registro.numero);
            poligono.Clase(registro.clase);
            poligono.Centroide(registro.punto);
            poligono.PuntoInterior(registro.punto);
            poligono.AreaPropia(registro.area);
            poligono.OffsetCentroide(registro.rotulo);
            for (const int tramo : registro.tramos)
                poligono.InsertaTramo(tramo);
            poligono.Write(&fichero);
        }
        fichero.Close();
    }

    const CCarpetaPrueba& m_carpeta;
    CFile m_bin;
};
