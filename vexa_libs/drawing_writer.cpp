#include "vexa_libs/drawing_writer.h"

#include <limits>

#include "vexa_libs/binary.h"
#include "vexa_libs/ring.h"

namespace vexageo {
namespace {

constexpr std::size_t kEnCuenta = 8; // where a drawing's head counts its entities
constexpr std::size_t kBytesU32 = 4;

void PonU32(std::string& bytes, std::size_t en, std::uint32_t valor)
{
    CEscritor escritor;
    escritor.U32(valor);
    bytes.replace(en, kBytesU32, escritor.Hecho());
}

} // namespace

bool CEscritorDibujo::Abre(const CString& nombre, CFileException* fallo, CConjuntoSalidas* conjunto)
{
    constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite;
    return m_bin.Open(nombre, kModo, fallo, conjunto);
}

bool CEscritorDibujo::Sobre(std::string bytes)
{
    constexpr auto kMayor = static_cast<std::size_t>(std::numeric_limits<int>::max());
    if (bytes.size() < CCabeceraDibujo::kBytes || bytes.size() >= kMayor)
        return false;
    m_antes = std::move(bytes);
    m_posicion = static_cast<int>(m_antes.size());
    return true;
}

void CEscritorDibujo::Borra(int posicion)
{
    if (posicion > 0)
        MarcaBorrada(m_antes, static_cast<std::size_t>(posicion) - 1);
}

int CEscritorDibujo::Rotulo(const CString& codigo, const CString& texto, const CPunto<int>& donde)
{
    CTexto<int> rotulo(codigo);
    rotulo.SetTexto(texto);
    rotulo.Puntos().push_back(donde);
    return Pon(rotulo);
}

int CEscritorDibujo::Linea(const CString& codigo, std::vector<CPunto<int>> puntos)
{
    CLinea<int> linea(codigo);
    linea.Puntos() = std::move(puntos);
    return Pon(linea);
}

int CEscritorDibujo::Pon(const CEntidadVexa<int>& entidad)
{
    const int bytes = entidad.Bytes();
    if (bytes > std::numeric_limits<int>::max() - 1 - m_posicion)
        return 0;
    const int posicion = m_posicion + 1;
    m_posicion += bytes;
    m_entidades.push_back(entidad.Clona());
    return posicion;
}

void CEscritorDibujo::Cierra()
{
    if (m_antes.empty()) {
        CCabeceraDibujo cabecera;
        cabecera.entidades = static_cast<unsigned>(m_entidades.size());
        cabecera.Write(&m_bin);
    } else {
        const std::uint32_t antes = CLector(std::string_view(m_antes).substr(kEnCuenta)).U32();
        PonU32(m_antes, kEnCuenta, antes + static_cast<std::uint32_t>(m_entidades.size()));
        m_bin.Write(m_antes.data(), static_cast<UINT>(m_antes.size()));
        m_antes.clear();
    }
    for (const auto& entidad : m_entidades)
        entidad->Write(&m_bin);
    m_entidades.clear();
    m_posicion = CCabeceraDibujo::kBytes;
    m_bin.Close();
}

CPoligonoTopologico NuevoPoligono(int numero, std::int16_t clase,
                                  const std::vector<CPunto<int>>& contorno,
                                  const std::vector<int>& tramos)
{
    CPoligonoTopologico poligono;
    poligono.NumPoligono(numero);
    poligono.Clase(clase);
    for (const CPunto<int>& punto : contorno)
        poligono.Maximas().Nuevo(punto);
    for (const int tramo : tramos)
        poligono.InsertaTramo(tramo);
    const double area = DobleArea(contorno) / kDobleMetroCuadrado;
    poligono.AreaPropia(clase == CPoligonoTopologico::kIsla ? -area : area);
    return poligono;
}

void PonRotulo(CPoligonoTopologico& poligono, int posicion, const CPunto<int>& donde)
{
    if (posicion > 0)
        poligono.Centroide(donde);
    poligono.PuntoInterior(donde);
    poligono.OffsetCentroide(posicion);
}

} // namespace vexageo
