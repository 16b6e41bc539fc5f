#include "vexa_to_catastro/ortho_zones.h"

using vexageo::CLinea;
using vexageo::CPunto;
using vexageo::CTexto;

void CZonasOrto::Inserta(const CLinea<int>& linea, const CTexto<int>& texto)
{
    const int indice = static_cast<int>(LineasOrtos.Cantidad());
    LineasOrtos.Inserta(linea);
    TextosOrtos.Inserta(texto);
    // No sheet is preferred: the earlier one wins.
    m_indice.Añade(LineasOrtos[static_cast<unsigned>(indice)]->Puntos(), 0, indice);
}

const CString* CZonasOrto::BuscaOrto(const CPunto<int>& punto) const
{
    const int i = m_indice.Busca(punto);
    return i < 0 ? nullptr : &TextosOrtos.Texto(static_cast<unsigned>(i)).Texto();
}
