#include "vexa_libs/topological_polygon.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace vexageo {
namespace {

constexpr std::string_view kMarca = "VPOL";
constexpr std::size_t kCabecera = 8;
constexpr std::size_t kCuerpoMenor = 88; // of a polygon without stretches, indexes and islands
constexpr int kMasHondo = 16;

void LeeLista(CLector& lector, std::vector<int>& lista)
{
    const std::uint32_t cuantos = lector.U32();
    if (cuantos > lector.Quedan() / sizeof(std::int32_t)) {
        lector.Falla();
        return;
    }
    lista.resize(cuantos);
    for (int& valor : lista)
        valor = lector.I32();
}

void EscribeLista(CEscritor& escritor, const std::vector<int>& lista)
{
    escritor.U32(static_cast<std::uint32_t>(lista.size()));
    for (const int valor : lista)
        escritor.I32(valor);
}

} // namespace

bool CPoligonoTopologico::Read(CFile* fichero, bool* dañado)
{
    const bool queda = fichero->GetPosition() < fichero->GetLength();
    const bool leido = LeeRegistro(fichero);
    if (dañado != nullptr && queda && !leido)
        *dañado = true;
    return leido;
}

bool CPoligonoTopologico::LeeRegistro(CFile* fichero)
{
    const std::uint64_t posicion = fichero->GetPosition();
    CLector cabecera(fichero->Tramo(kCabecera));
    const bool marca = cabecera.Bytes(kMarca.size()) == kMarca;
    const std::uint32_t largo = cabecera.U32();
    const std::uint64_t quedan =
        fichero->GetLength() - std::min(fichero->GetPosition(), fichero->GetLength());
    if (!marca || !cabecera.Bien() ||
        std::uint64_t{largo} + kBytesCrc > std::min(quedan, kRegistroMayor))
        return false;
    fichero->Seek(posicion);
    const std::string_view todo = fichero->Tramo(kCabecera + largo + kBytesCrc);
    if (todo.size() < kCabecera + largo + kBytesCrc)
        return false;
    CLector crc(todo.substr(kCabecera + largo));
    if (crc.U32() != Crc32(todo.substr(0, kCabecera + largo)))
        return false;
    CLector lector(todo.substr(kCabecera, largo));
    CPoligonoTopologico leido;
    if (!leido.LeeCuerpo(lector, 0) || lector.Quedan() > 0 || !std::isfinite(leido.Area()))
        return false;
    *this = std::move(leido);
    return true;
}

bool CPoligonoTopologico::ReadIsla(CFile* fichero)
{
    const std::uint64_t posicion = fichero->GetPosition();
    CLector lector(fichero->Tramo(kCabecera + sizeof m_numero + sizeof m_clase));
    lector.Bytes(kCabecera + sizeof m_numero);
    const bool isla = lector.I16() == kIsla;
    fichero->Seek(posicion);
    if (isla && Read(fichero))
        return true;
    fichero->Seek(posicion);
    return false;
}

bool CPoligonoTopologico::LeeCuerpo(CLector& lector, int hondura)
{
    m_numero = lector.I32();
    m_clase = lector.I16();
    m_centroide = lector.Punto();
    m_interior = lector.Punto();
    m_maximas.Minimo = lector.Punto();
    m_maximas.Maximo = lector.Punto();
    m_maximas.Hay = true;
    m_area = lector.F64();
    m_propio = lector.I16();
    m_offsetCentroide = lector.I32();
    m_indiceCentroide = lector.I32();
    LeeLista(lector, m_tramos);
    LeeLista(lector, m_indices);
    const std::uint32_t islas = lector.U32();
    if (!lector.Bien() || islas > lector.Quedan() / kCuerpoMenor ||
        (islas > 0 && hondura == kMasHondo))
        return false;
    m_islas.resize(islas);
    for (CPoligonoTopologico& isla : m_islas)
        if (!isla.LeeCuerpo(lector, hondura + 1))
            return false;
    m_padre = lector.I32();
    return lector.Bien() && std::isfinite(m_area);
}

void CPoligonoTopologico::Write(CFile* fichero) const
{
    CEscritor cuerpo;
    EscribeCuerpo(cuerpo);
    CEscritor registro;
    registro.Bytes(kMarca);
    registro.U32(static_cast<std::uint32_t>(cuerpo.Hecho().size()));
    registro.Bytes(cuerpo.Hecho());
    registro.U32(Crc32(registro.Hecho()));
    fichero->Write(registro.Hecho().data(), static_cast<UINT>(registro.Hecho().size()));
}

void CPoligonoTopologico::EscribeCuerpo(CEscritor& escritor) const
{
    escritor.I32(m_numero);
    escritor.I16(m_clase);
    escritor.Punto(m_centroide);
    escritor.Punto(m_interior);
    escritor.Punto(m_maximas.Minimo);
    escritor.Punto(m_maximas.Maximo);
    escritor.F64(m_area);
    escritor.I16(m_propio);
    escritor.I32(m_offsetCentroide);
    escritor.I32(m_indiceCentroide);
    EscribeLista(escritor, m_tramos);
    EscribeLista(escritor, m_indices);
    escritor.U32(static_cast<std::uint32_t>(m_islas.size()));
    for (const CPoligonoTopologico& isla : m_islas)
        isla.EscribeCuerpo(escritor);
    escritor.I32(m_padre);
}

double CPoligonoTopologico::Area() const
{
    double area = m_area;
    for (const CPoligonoTopologico& isla : m_islas)
        area += isla.Area();
    return area;
}

} // namespace vexageo
