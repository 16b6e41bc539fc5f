#pragma once

#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"

/// The orthophoto sheets: closed lines with their names, in the order of their file.
class CZonasOrto {
public:
    void Inserta(const vexageo::CLinea<int>& linea, const vexageo::CTexto<int>& texto);

    /// Name of the first sheet that holds the point, null if none does.
    const CString* BuscaOrto(const vexageo::CPunto<int>& punto) const;

private:
    vexageo::CDibujoVexa m_lineas; // LineasOrtos
    vexageo::CDibujoVexa m_textos; // TextosOrtos, in step with the lines
    vexageo::CIndiceAnillos m_indice;
};
