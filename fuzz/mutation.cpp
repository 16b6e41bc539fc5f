#include "fuzz/mutation.h"

#include <algorithm>

#include "fuzz/input.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* bytes, std::size_t n, std::size_t masLargo);

namespace {

std::string MutaCabecera(std::string cabecera, CAzar& azar)
{
    constexpr std::size_t kOpciones = 16;
    constexpr std::size_t kModosFallo = 5;
    constexpr std::size_t kLlamadas = 224;
    constexpr std::size_t kAvances = 40;
    cabecera.resize(kBytesCabecera, ' ');
    switch (azar.Hasta(4)) {
    case 0: // the options stay, in another column
        cabecera[0] = static_cast<char>('0' + static_cast<unsigned char>(cabecera[0]) % kOpciones +
                                        azar.Hasta(kModosFallo) * kOpciones);
        cabecera[1] = static_cast<char>(' ' + azar.Hasta(kLlamadas));
        break;
    case 1:
        cabecera[2] = static_cast<char>(' ' + azar.Hasta(kAvances));
        break;
    default:
        cabecera = {static_cast<char>('0' + azar.Hasta(kOpciones)), ' ', ' '};
    }
    return cabecera;
}

} // namespace

std::string MutaBytes(std::string bytes, std::size_t masLargo)
{
    const std::size_t n = std::min(bytes.size(), masLargo);
    bytes.resize(masLargo);
    auto* suyos = reinterpret_cast<std::uint8_t*>(bytes.data());
    bytes.resize(masLargo > 0 ? LLVMFuzzerMutate(suyos, n, masLargo) : 0);
    return bytes;
}

std::size_t MutaEntrada(std::uint8_t* bytes, std::size_t n, std::size_t masLargo, unsigned semilla,
                        std::string (*muta)(std::string_view, CAzar&))
{
    CAzar azar(semilla);
    std::string entrada(reinterpret_cast<const char*>(bytes), n);
    std::string cabecera = entrada.substr(0, kBytesCabecera);
    const std::string cuerpo = entrada.substr(cabecera.size());
    const std::vector<std::string_view> viejos = Trocea(cuerpo);
    std::vector<std::string> trozos(viejos.begin(), viejos.end());
    if (azar.UnaDe(12))
        cabecera = MutaCabecera(cabecera, azar);
    else
        for (std::size_t veces = 1 + azar.Hasta(3); veces > 0; --veces) {
            std::string& trozo = azar.Uno(trozos);
            trozo = muta(trozo, azar);
        }
    entrada = cabecera;
    for (std::size_t i = 0; i < trozos.size(); ++i)
        entrada.append(i > 0 ? kCorte : "").append(trozos[i]);
    const std::size_t nuevo = std::min(entrada.size(), masLargo);
    std::copy_n(entrada.begin(), nuevo, bytes);
    return nuevo;
}
