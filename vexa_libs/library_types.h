#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "platform/cstring.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/point.h"

// Public value types of the drawing library that stand beside those of drawings and topologies.

namespace vexageo {

/// One row of the code table.
struct CElementoVexaTab {
    CTipoDat::CTipoEntidad tipo = CTipoDat::Ninguna;
    CString codigo = "nuevo";
    int valores[5] = {70, 70, 70, 0, 0};
    CString texto;
};

/// The code table.
struct CVexaTab {
    std::vector<CElementoVexaTab> elementos;
    unsigned char propio = 0;
};

/// A table of numbers, row by row.
struct CIndices {
    /// Makes it of `filas` times `columnas` places that all hold `valor`; none for a size below 1.
    void Inicializa(int filas, int columnas, int valor)
    {
        const bool vacia = filas < 1 || columnas < 1;
        primero = filas;
        segundo = columnas;
        tercero = valor;
        indices.assign(vacia ? 0
                             : static_cast<std::size_t>(filas) * static_cast<std::size_t>(columnas),
                       valor);
    }

    std::vector<int> indices;
    int primero = 0;
    int segundo = 0;
    int tercero = 0;
};

struct CAtrVexa {
    int valores[4] = {};
};

struct CTransformacion {
    CPunto<double> puntos[2];
    double valores[14] = {};
    int clase = 0;
};

struct CSplineElement {
    double valores[5] = {};
};

class CObjetoParaSuavizar {
public:
    CObjetoParaSuavizar() = default;
    CObjetoParaSuavizar(const CObjetoParaSuavizar&) = default;
    CObjetoParaSuavizar& operator=(const CObjetoParaSuavizar&) = default;
    virtual ~CObjetoParaSuavizar() = default;
};

} // namespace vexageo
