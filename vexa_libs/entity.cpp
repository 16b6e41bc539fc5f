#include "vexa_libs/entity.h"

#include <algorithm>
#include <string>

#include "vexa_libs/binary.h"
#include "vexa_libs/ring.h"

namespace vexageo {
namespace {

constexpr std::string_view kMarcaEntidad = "VENT";
constexpr std::string_view kMarcaDibujo = "VXBN";
constexpr std::size_t kCabeceraEntidad = 16;
constexpr int kVersion = 1;
constexpr int kMasDecimales = 9;

/// The head of an entity: what tells its length.
struct CCabecera {
    std::uint8_t tipo;
    std::uint8_t estado;
    std::uint16_t codigo; ///< length
    std::uint32_t puntos;
    std::uint32_t texto; ///< length

    static CCabecera De(CLector& lector)
    {
        CCabecera cabecera{};
        lector.Bytes(kMarcaEntidad.size());
        cabecera.tipo = lector.U8();
        cabecera.estado = lector.U8();
        cabecera.codigo = lector.U16();
        cabecera.puntos = lector.U32();
        cabecera.texto = lector.U32();
        return cabecera;
    }
    /// Bytes of the entity behind the head.
    std::uint64_t Cuerpo() const
    {
        return std::uint64_t{codigo} + std::uint64_t{puntos} * kBytesPunto + texto + kBytesCrc;
    }
};

std::uint64_t Quedan(const CFile& fichero)
{
    const std::uint64_t posicion = fichero.GetPosition();
    return posicion < fichero.GetLength() ? fichero.GetLength() - posicion : 0;
}

/// The entity at the file's position, in the file's memory; empty where no whole one stands.
std::string_view LeeEntidad(CFile* fichero)
{
    const std::uint64_t posicion = fichero->GetPosition();
    const std::string_view bytes = fichero->Tramo(kCabeceraEntidad);
    if (bytes.size() < kCabeceraEntidad || !bytes.starts_with(kMarcaEntidad))
        return {};
    CLector lector(bytes);
    const CCabecera cabecera = CCabecera::De(lector);
    if (cabecera.tipo < CTipoDat::Linea || cabecera.tipo > CTipoDat::Punto ||
        cabecera.Cuerpo() > std::min(Quedan(*fichero), kRegistroMayor))
        return {};
    const std::size_t largo = kCabeceraEntidad + static_cast<std::size_t>(cabecera.Cuerpo());
    fichero->Seek(posicion);
    const std::string_view todo = fichero->Tramo(largo);
    if (todo.size() < largo)
        return {};
    CLector crc(todo.substr(largo - kBytesCrc));
    return crc.U32() == Crc32(todo.substr(0, largo - kBytesCrc)) ? todo : std::string_view();
}

} // namespace

void MarcaBorrada(std::string& bytes, std::size_t desde)
{
    const std::size_t enEstado = kMarcaEntidad.size() + 1; // behind the kind
    const std::string_view quedan = std::string_view(bytes).substr(std::min(desde, bytes.size()));
    if (quedan.size() < kCabeceraEntidad || !quedan.starts_with(kMarcaEntidad))
        return;
    CLector lector(quedan);
    const std::uint64_t cuerpo = CCabecera::De(lector).Cuerpo();
    if (cuerpo > quedan.size() - kCabeceraEntidad)
        return;
    const std::size_t sellado = kCabeceraEntidad + static_cast<std::size_t>(cuerpo) - kBytesCrc;
    bytes[desde + enEstado] = 1;
    CEscritor crc;
    crc.U32(Crc32(std::string_view(bytes).substr(desde, sellado)));
    bytes.replace(desde + sellado, kBytesCrc, crc.Hecho());
}

template <class T>
bool CEntidadVexa<T>::Lee(CFile* fichero, bool soloLineas)
{
    const std::string_view bytes = LeeEntidad(fichero);
    if (bytes.empty())
        return false;
    CLector lector(bytes);
    const CCabecera cabecera = CCabecera::De(lector);
    const auto tipo = static_cast<CTipoDat::CTipoEntidad>(cabecera.tipo);
    if (soloLineas && tipo != CTipoDat::Linea)
        return false;
    m_tipo = CTipoDat(tipo, lector.Bytes(cabecera.codigo));
    m_tipo.SetBorrado(cabecera.estado != 0);
    m_puntos.resize(cabecera.puntos);
    for (CPunto<T>& punto : m_puntos)
        punto = lector.Punto();
    m_texto = lector.Bytes(cabecera.texto);
    return true;
}

template <class T>
void CEntidadVexa<T>::Write(CFile* fichero) const
{
    CEscritor escritor;
    escritor.Bytes(kMarcaEntidad);
    escritor.U8(static_cast<std::uint8_t>(m_tipo.Tipo()));
    escritor.U8(m_tipo.EsBorrado() ? 1 : 0);
    escritor.U16(static_cast<std::uint16_t>(m_tipo.Codigo().GetLength()));
    escritor.U32(static_cast<std::uint32_t>(m_puntos.size()));
    escritor.U32(static_cast<std::uint32_t>(m_texto.GetLength()));
    escritor.Bytes(m_tipo.Codigo());
    for (const CPunto<T>& punto : m_puntos)
        escritor.Punto(punto);
    escritor.Bytes(m_texto);
    escritor.U32(Crc32(escritor.Hecho()));
    fichero->Write(escritor.Hecho().data(), static_cast<UINT>(escritor.Hecho().size()));
}

template <class T>
int CEntidadVexa<T>::Bytes() const
{
    return static_cast<int>(kCabeceraEntidad + kBytesCrc + m_puntos.size() * kBytesPunto) +
           m_tipo.Codigo().GetLength() + m_texto.GetLength();
}

template <class T>
void CLinea<T>::Voltea()
{
    std::ranges::reverse(this->Puntos());
}

template <class T>
bool CLinea<T>::Une(const CLinea& otra, bool sinRepetir)
{
    std::vector<CPunto<T>>& puntos = this->Puntos();
    const std::vector<CPunto<T>>& suyos = otra.Puntos();
    const bool repite =
        sinRepetir && !puntos.empty() && !suyos.empty() && puntos.back() == suyos.front();
    puntos.insert(puntos.end(), suyos.begin() + (repite ? 1 : 0), suyos.end());
    return true;
}

template <class T>
short CLinea<T>::EstaDentro(const CPunto<T>& punto) const
{
    return Situa(this->Puntos(), punto) == Lugar::Fuera ? 0 : 1;
}

template <class T>
double CLinea<T>::Area(double precision) const
{
    return DobleArea(this->Puntos()) / 2 / (precision * precision);
}

template class CEntidadVexa<int>;
template class CLinea<int>;
template class CTexto<int>;

bool CCabeceraDibujo::Read(CFile* fichero)
{
    std::string bytes(kBytes, '\0');
    fichero->Seek(0);
    if (fichero->Read(bytes.data(), kBytes) < kBytes)
        return false;
    CLector lector(bytes);
    const bool marca = lector.Bytes(kMarcaDibujo.size()) == kMarcaDibujo;
    const int version = lector.U8();
    const int decimales = lector.U8(); // a negative number reads as one far above the most
    lector.U16();
    entidades = lector.U32();
    semilla.Precision(static_cast<char>(decimales));
    return marca && version == kVersion && decimales >= 0 && decimales <= kMasDecimales;
}

void CCabeceraDibujo::Write(CFile* fichero) const
{
    CEscritor escritor;
    escritor.Bytes(kMarcaDibujo);
    escritor.U8(kVersion);
    escritor.U8(static_cast<std::uint8_t>(semilla.Decimales()));
    escritor.U16(0);
    escritor.U32(entidades);
    escritor.U32(0);
    fichero->Write(escritor.Hecho().data(), kBytes);
}

} // namespace vexageo
