#include <algorithm>

#include "fuzz/mutation.h"
#include "vexa_libs/binary.h"

using vexageo::kBytesCrc;
using vexageo::kBytesPunto;

namespace {

constexpr std::string_view kEntidad = "VENT";
constexpr std::string_view kPoligono = "VPOL";
constexpr std::size_t kCabeceraEntidad = 16;
constexpr std::size_t kCabeceraPoligono = 8;

std::uint32_t Numero(std::string_view registro, std::size_t donde, std::size_t bytes)
{
    const std::string_view suyo = registro.substr(donde, bytes);
    vexageo::CLector lector(suyo);
    return bytes == 2 ? lector.U16() : lector.U32();
}

void PonNumero(std::string& registro, std::size_t donde, std::size_t bytes, std::size_t valor)
{
    vexageo::CEscritor escritor;
    if (bytes == 2)
        escritor.U16(static_cast<std::uint16_t>(valor));
    else
        escritor.U32(static_cast<std::uint32_t>(valor));
    registro.replace(donde, bytes, escritor.Hecho());
}

/// Cuts a file before each mark of a record; what stands before the first is a piece too.
std::vector<std::string> Registros(std::string_view bytes)
{
    std::vector<std::string> registros;
    while (!bytes.empty()) {
        const std::size_t fin = std::min(bytes.find(kEntidad, 1), bytes.find(kPoligono, 1));
        registros.emplace_back(bytes.substr(0, fin));
        bytes.remove_prefix(std::min(fin, bytes.size()));
    }
    return registros;
}

/// Makes the lengths of an entity fit its bytes: the code first, then the points, then the text.
void AjustaEntidad(std::string& registro)
{
    const std::size_t cuerpo = registro.size() - kCabeceraEntidad - kBytesCrc;
    const std::size_t codigo = std::min<std::size_t>(Numero(registro, 6, 2), cuerpo);
    const std::size_t puntos =
        std::min<std::size_t>(Numero(registro, 8, 4), (cuerpo - codigo) / kBytesPunto);
    PonNumero(registro, 6, 2, codigo);
    PonNumero(registro, 8, 4, puntos);
    PonNumero(registro, 12, 4, cuerpo - codigo - puntos * kBytesPunto);
}

void Sella(std::string& registro)
{
    const bool entidad = registro.starts_with(kEntidad);
    const std::size_t menor = (entidad ? kCabeceraEntidad : kCabeceraPoligono) + kBytesCrc;
    if ((!entidad && !registro.starts_with(kPoligono)) || registro.size() < menor)
        return;
    if (entidad)
        AjustaEntidad(registro);
    else
        PonNumero(registro, kPoligono.size(), 4, registro.size() - menor);
    const std::size_t sellado = registro.size() - kBytesCrc;
    PonNumero(registro, sellado, kBytesCrc,
              vexageo::Crc32(std::string_view(registro).substr(0, sellado)));
}

/// A number that means something: an edge of its range, a small one, or one of the same file.
std::uint32_t Significativo(const std::string& registro, CAzar& azar)
{
    constexpr std::uint32_t kBordes[] = {0,           1,           0x7FFFFFFFU, 0x80000000U,
                                         0xFFFFFFFFU, 0x7FF00000U, 0x7FF80000U, 2};
    constexpr std::size_t kPequeños = 64;
    switch (azar.Hasta(4)) {
    case 0:
        return azar.Uno(kBordes);
    case 1:
        return static_cast<std::uint32_t>(azar.Hasta(kPequeños));
    case 2: // a stretch turned round
        return 0U - Numero(registro, azar.Hasta(registro.size()), 4);
    default:
        return Numero(registro, azar.Hasta(registro.size()), 4);
    }
}

void MutaRegistro(std::string& registro, CAzar& azar)
{
    constexpr std::size_t kCrece = 24;
    const std::size_t cabecera = std::min(kPoligono.size(), registro.size());
    const std::size_t cuerpo = registro.size() - cabecera;
    switch (azar.Hasta(3)) {
    case 0:
        registro =
            registro.substr(0, cabecera) + MutaBytes(registro.substr(cabecera), cuerpo + kCrece);
        break;
    case 1:
        registro = registro.substr(0, cabecera) + MutaBytes(registro.substr(cabecera), cuerpo);
        break;
    default:
        if (cuerpo >= 4) {
            // Most numbers of a polygon stand at two bytes behind a multiple of four.
            const std::size_t donde = (azar.Hasta(cuerpo - 3) & ~std::size_t{1}) + cabecera;
            PonNumero(registro, std::min(donde, registro.size() - 4), 4,
                      Significativo(registro, azar));
        }
    }
}

} // namespace

std::string MutaDibujo(std::string_view bytes, CAzar& azar)
{
    if (!bytes.starts_with("VXBN") && !bytes.starts_with(kPoligono) && !bytes.empty())
        return MutaTexto(bytes, azar);
    std::vector<std::string> registros = Registros(bytes);
    if (registros.empty() || azar.UnaDe(16))
        return MutaBytes(std::string(bytes), bytes.size() + 1);
    std::string& elegido = azar.Uno(registros);
    const bool baraja = azar.UnaDe(5);
    if (!baraja)
        MutaRegistro(elegido, azar);
    if (!baraja && !azar.UnaDe(10))
        Sella(elegido);
    if (baraja)
        Baraja(registros, azar);
    std::string nuevo;
    for (const std::string& registro : registros)
        nuevo += registro;
    return nuevo;
}
