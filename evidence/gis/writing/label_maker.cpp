#include "evidence/gis/writing/label_maker.h"

#include "evidence/gis/writing/drawn_rings.h"

using vexageo::CPunto;
using vexageo::CTexto;

CTexto<int> RotuloDe(const CRecintoEntrante& recinto, const CTexto<int>* viejo,
                     const CPunto<int>& punto)
{
    const CString codigo = viejo == nullptr ? recinto.Codigo() : viejo->Tipo().Codigo();
    const bool borrado = viejo == nullptr ? recinto.Borrado() : viejo->Tipo().EsBorrado();
    CTexto<int> texto(recinto.codigo.value_or(codigo));
    texto.SetTexto(*recinto.rotulo);
    texto.Tipo().SetBorrado(recinto.borrado.value_or(borrado));
    if (viejo != nullptr && EnElMismoSitio(viejo->PrimerPunto(), punto))
        texto.Puntos() = viejo->Puntos();
    else
        texto.Puntos().push_back(punto);
    return texto;
}

bool EsElMismo(const CTexto<int>& a, const CTexto<int>& b)
{
    return SeVenIgual(a.Texto(), b.Texto()) && SeVenIgual(a.Tipo().Codigo(), b.Tipo().Codigo()) &&
           a.Tipo().EsBorrado() == b.Tipo().EsBorrado() &&
           EnElMismoSitio(a.PrimerPunto(), b.PrimerPunto());
}
