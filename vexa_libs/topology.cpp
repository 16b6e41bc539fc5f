#include "vexa_libs/topology.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "vexa_libs/binary.h"
#include "vexa_libs/ring.h"

namespace vexageo {
namespace {

constexpr std::uint64_t kAnilloCorto = 1'000'000;   // points that no ring needs to answer for
constexpr std::uint64_t kAnillosCortos = 4'000'000; // the same of all rings together

/// Points that a ring of this drawing may have: each line bounds two polygons at most, so a longer
/// one names lines over and over, and would cost memory that its files don't.
std::uint64_t MasPuntos(const CFile& dibujo)
{
    return std::max(kAnilloCorto, 2 * (dibujo.GetLength() / kBytesPunto));
}

} // namespace

bool ConstruyeLinea(const CPoligonoTopologico& poligono, CFile* dibujo, CLinea<int>& linea,
                    const std::function<bool()>& falla)
{
    CLinea<int> tramo("nuevo");
    for (int i = 0; i < poligono.Tramos(); ++i) {
        const std::int64_t valor = poligono.OffsetTramo(i);
        const std::int64_t posicion = (valor < 0 ? -valor : valor) - 1;
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
        if (linea.Puntos().size() > MasPuntos(*dibujo)) {
            linea.Puntos().clear();
            linea.Puntos().shrink_to_fit();
            return falla();
        }
    }
    return true;
}

bool SonDesmedidos(std::uint64_t puntos, const CLinea<int>& otro, const CFile& dibujo)
{
    constexpr std::uint64_t kVeces = 16;
    return puntos + otro.Puntos().size() >
           std::max(kAnillosCortos, kVeces * (dibujo.GetLength() / kBytesPunto));
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
    *this = CTopologia();
    for (CPoligonoTopologico poligono; poligono.Read(poligonos, &m_faltaAlgo); poligono = {}) {
        poligono.SetPadre(-1);
        if (!poligono.EsIsla())
            m_poligonos.push_back(std::move(poligono));
        else if (!m_poligonos.empty())
            m_poligonos.back().InsertaIsla(poligono);
    }
    for (CPoligonoTopologico& leido : m_poligonos)
        TomaEntidades(leido, dibujo);
    return true;
}

void CTopologia::TomaEntidades(CPoligonoTopologico& poligono, CFile* dibujo)
{
    poligono.OlvidaIndices();
    poligono.IndiceNuevo(GuardaContorno(poligono, dibujo));
    for (const CPoligonoTopologico& isla : poligono.ListaIslas())
        poligono.IndiceNuevo(GuardaContorno(isla, dibujo));
    CTexto<int> rotulo("nuevo");
    const bool leido = LeeRotulo(poligono, dibujo, rotulo);
    m_faltaAlgo = m_faltaAlgo || (!leido && poligono.TieneCentroide());
    const bool hayTexto = leido && rotulo.Tipo().EsTexto();
    poligono.IndiceCentroide(hayTexto ? Guarda(rotulo) : -1);
}

int CTopologia::GuardaContorno(const CPoligonoTopologico& poligono, CFile* dibujo)
{
    CLinea<int> linea("nuevo");
    ConstruyeLinea(poligono, dibujo, linea, [this] { return m_faltaAlgo = true; });
    const bool cabe = !SonDesmedidos(m_dibujo.CantidadVertices(), linea, *dibujo);
    m_faltaAlgo = m_faltaAlgo || !cabe;
    return Guarda(cabe ? linea : CLinea<int>());
}

int CTopologia::Guarda(const CEntidadVexa<int>& entidad)
{
    m_dibujo.Inserta(entidad);
    return static_cast<int>(m_dibujo.Cantidad()) - 1;
}

const CLinea<int>& CTopologia::Anillo(const CPoligonoTopologico& poligono, int k) const
{
    return m_dibujo.Linea(static_cast<unsigned>(poligono.IndiceTramos(k)));
}

void CTopologia::OrdenaPoligonos()
{
    std::ranges::stable_sort(m_poligonos, {},
                             [](const CPoligonoTopologico& suyo) { return suyo.NumPoligono(); });
    m_buscador = {};
}

const CTopologia::CBuscador& CTopologia::Buscador() const
{
    if (m_buscador.islas.size() == m_poligonos.size())
        return m_buscador;
    CBuscador buscador;
    buscador.islas.resize(m_poligonos.size());
    for (int i = 0; i < Poligonos(); ++i) {
        const CPoligonoTopologico& poligono = Poligono(i);
        buscador.contornos.Añade(Anillo(poligono, 0).Puntos(), DameArea(i), i);
        for (int k = 1; k <= poligono.Islas(); ++k)
            buscador.islas[static_cast<std::size_t>(i)].Añade(Anillo(poligono, k).Puntos(), 0, k);
    }
    return m_buscador = std::move(buscador);
}

int CTopologia::EncuentraPoligono(const CPunto<int>& punto) const
{
    const CBuscador& buscador = Buscador();
    const auto estrictamente = [](int, Lugar lugar) { return lugar == Lugar::Dentro; };
    return buscador.contornos.Busca(punto, [&](int i, Lugar lugar) {
        return lugar != Lugar::Fuera &&
               buscador.islas[static_cast<std::size_t>(i)].Busca(punto, estrictamente) < 0;
    });
}

CString CTopologia::DameTextoCentroide(int i) const
{
    const int indice = Poligono(i).IndiceCentroide();
    return indice < 0 ? CString() : m_dibujo.Texto(static_cast<unsigned>(indice)).Texto();
}

CPunto<int> CTopologia::DameCentroide(int i, bool interior) const
{
    const CPoligonoTopologico& poligono = Poligono(i);
    return interior && !poligono.TieneCentroide() ? poligono.PuntoInterior() : poligono.Centroide();
}

} // namespace vexageo
