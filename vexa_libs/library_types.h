#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
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
    /// Notes the three values and makes the table of `filas` times `columnas` places that all hold
    /// `valor`; none where that product is below 1.
    void Inicializa(int filas, int columnas, int valor)
    {
        const std::int64_t sitios = std::int64_t{filas} * columnas;
        indices.assign(static_cast<std::size_t>(std::max<std::int64_t>(sitios, 0)), valor);
        primero = filas;
        segundo = columnas;
        tercero = valor;
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
