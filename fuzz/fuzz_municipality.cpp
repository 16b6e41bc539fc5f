#include <algorithm>
#include <array>
#include <cstdint>

#include "fuzz/way_back.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "vexa_libs/ccadena.h"

// Municipalities that nobody owns, on all their ways. The only piece has five numbers, one a line:
// parcels, polygons, subparcels of each parcel, the seed, and 1 for a list of subparcels with
// holders. Options 0 to 2 are those of the way back, 3 puts faults into lines and drawings.

namespace {

using sintetico::CMunicipioSintetico;

/// What takes a moment, and what has room for the faults.
constexpr unsigned kMasParcelas = 20;
constexpr unsigned kMenosConFaltas = 30;

struct CPedido {
    sintetico::CMedidas medidas;
    std::uint64_t semilla;
    bool lista;
    bool faltas;
};

CPedido LeePedido(const CEntrada& entrada)
{
    std::string_view texto = entrada.Trozo(0);
    std::array<unsigned, 5> numeros = {};
    for (unsigned& numero : numeros) {
        const std::size_t fin = std::min(texto.find('\n'), texto.size());
        numero = static_cast<unsigned>(LeeEntero(CString(texto.substr(0, fin))));
        texto.remove_prefix(std::min(fin + 1, texto.size()));
    }
    const bool faltas = entrada.Opcion(3);
    unsigned parcelas = 1 + numeros[0] % kMasParcelas + (faltas ? kMenosConFaltas : 0);
    // Of seven holders one may be drawn as his own joint holder, which isn't clean.
    if (parcelas / 2 == 7)
        parcelas += 2;
    return {{.parcelas = static_cast<int>(parcelas),
             .poligonos = static_cast<int>(numeros[1] % (parcelas + 1)),
             .subparcelas = static_cast<int>(numeros[2] % 5)},
            numeros[3],
            numeros[4] == 1,
            faltas};
}

class CMunicipal : public CVuelta {
public:
    void Prueba(const CEntrada& entrada)
    {
        const CPedido pedido = LeePedido(entrada);
        Vacia();
        Hace([&] { Graba(pedido); });
        Aplicacion().WriteProfileInt("CampivaAVexa", "TipoEntrada", pedido.lista ? 1 : 0);
        Ejecuta(entrada, true, [&] { AVexa(); });
        CompruebaRegistro(entrada, pedido.faltas);
        Hace([&] { AVexa(); });
        for (const char* salida : kSalidas)
            Pon(salida, kAntes);
        ACatastro(entrada);
        if (pedido.faltas || !pedido.lista) // a list tells no buildings, and drawings do
            CompruebaRegistro(entrada, pedido.faltas);
        AInfograf(entrada);
        CompruebaRegistro(entrada, false);
    }

private:
    void Graba(const CPedido& pedido) const
    {
        CMunicipioSintetico municipio = sintetico::Genera(pedido.medidas, pedido.semilla);
        const CString carpeta = Ruta().string();
        sintetico::GrabaLineas(En("entrada.txt"),
                               sintetico::LineasDeEntrada(municipio, pedido.lista, pedido.faltas));
        if (pedido.faltas)
            sintetico::DesacuerdaDibujos(municipio);
        sintetico::GrabaDibujos(carpeta, municipio);
        if (pedido.faltas)
            sintetico::EstropeaDibujos(carpeta, municipio);
    }

    /// A municipality is clean, and agrees with its drawings, unless faults were put into it.
    void CompruebaRegistro(const CEntrada& entrada, bool hayFaltas) const
    {
        if (entrada.Fallo() == 0 && entrada.Parada() == 0)
            Exige(Registro().empty() != hayFaltas, "faults are told, and only they:", Registro());
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CMunicipal banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
