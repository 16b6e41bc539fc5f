#include "vexa_libs/topology.h"

#include <algorithm>
#include <cstdint>

#include "vexa_libs/ring.h"

namespace vexageo {
namespace {

CLinea<int> Contorno(const CPoligonoTopologico& poligono, CFile* dibujo)
{
    CLinea<int> linea("nuevo");
    ConstruyeLinea(poligono, dibujo, linea, [] { return true; });
    return linea;
}

} // namespace

bool ConstruyeLinea(const CPoligonoTopologico& poligono, CFile* dibujo, CLinea<int>& linea,
                    const std::function<bool()>& falla)
{
    for (int i = 0; i < poligono.Tramos(); ++i) {
        const std::int64_t valor = poligono.OffsetTramo(i);
        const std::int64_t posicion = (valor < 0 ? -valor : valor) - 1;
        CLinea<int> tramo("nuevo");
        bool leido = false;
        if (posicion >= 0) {
            dibujo->Seek(static_cast<std::uint64_t>(posicion));
            leido = tramo.Read(dibujo);
        }
        if (!leido) {
            if (!falla())
                return false;
            continue;
        }
        if (valor < 0)
            tramo.Voltea();
        linea.Une(tramo, true);
    }
    return true;
}

bool LeeRotulo(const CPoligonoTopologico& poligono, CFile* dibujo, CTexto<int>& rotulo)
{
    if (!poligono.TieneCentroide())
        return false;
    dibujo->Seek(static_cast<std::uint64_t>(poligono.OffsetCentroide()) - 1);
    return rotulo.Read(dibujo);
}

bool CTopologia::Read(CFile* dibujo, CFile* poligonos)
{
    m_poligonos.clear();
    m_indiceListo = false;
    CPoligonoTopologico poligono;
    while (poligono.Read(poligonos)) {
        poligono.SetPadre(-1);
        if (poligono.EsIsla()) {
            if (!m_poligonos.empty())
                m_poligonos.back().poligono.InsertaIsla(poligono);
            continue;
        }
        m_poligonos.push_back({poligono, {}, Contorno(poligono, dibujo), {}});
        CTexto<int> rotulo("nuevo");
        if (LeeRotulo(poligono, dibujo, rotulo) && rotulo.Tipo().EsTexto())
            m_poligonos.back().texto = rotulo.Texto();
    }
    for (CElemento& elemento : m_poligonos)
        for (const CPoligonoTopologico& isla : elemento.poligono.ListaIslas())
            elemento.islas.push_back(Contorno(isla, dibujo));
    return true;
}

void CTopologia::OrdenaPoligonos()
{
    std::stable_sort(m_poligonos.begin(), m_poligonos.end(),
                     [](const CElemento& a, const CElemento& b) {
                         return a.poligono.NumPoligono() < b.poligono.NumPoligono();
                     });
    m_indiceListo = false;
}

void CTopologia::PreparaIndice() const
{
    m_indice = CIndiceAnillos();
    for (int i = 0; i < Poligonos(); ++i)
        m_indice.Añade(Elemento(i).contorno.Puntos(), DameArea(i), i);
    m_indiceListo = true;
}

int CTopologia::EncuentraPoligono(const CPunto<int>& punto) const
{
    if (!m_indiceListo)
        PreparaIndice();
    return m_indice.Busca(punto, [&](int i) {
        const CElemento& elemento = Elemento(i);
        return elemento.contorno.EstaDentro(punto) != 0 &&
               std::none_of(elemento.islas.begin(), elemento.islas.end(),
                            [&](const CLinea<int>& isla) {
                                return Situa(isla.Puntos(), punto) == Lugar::Dentro;
                            });
    });
}

CPunto<int> CTopologia::DameCentroide(int i, bool interior) const
{
    const CPoligonoTopologico& poligono = Poligono(i);
    return interior && !poligono.TieneCentroide() ? poligono.PuntoInterior() : poligono.Centroide();
}

} // namespace vexageo
