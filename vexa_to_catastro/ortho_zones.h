#pragma once

#include "vexa_libs/drawing.h"
#include "vexa_libs/ring_index.h"

/// The orthophoto sheets: closed lines with their names, in the order of their file.
class CZonasOrto {
public:
    /// Adds a copy of a sheet behind those that are there.
    /// \param linea  its boundary, hundredths of a metre
    /// \param texto  its name
    void Inserta(const vexageo::CLinea<int>& linea, const vexageo::CTexto<int>& texto);

    /// Name of the first sheet that holds the point, null if none does.
    const CString* BuscaOrto(const vexageo::CPunto<int>& punto) const;

    vexageo::CDibujoVexa LineasOrtos; ///< boundary of each sheet
    vexageo::CDibujoVexa TextosOrtos; ///< its name, at the same index

private:
    vexageo::CIndiceAnillos m_indice;
};
