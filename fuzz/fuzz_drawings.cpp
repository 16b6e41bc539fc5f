#include <cstdint>

#include "fuzz/way_back.h"

// The drawings of both translations back: the pieces are the list and the files of an entry and of
// the sheets, in the order of CVuelta::kDibujos. Options 0 to 2 are the second translation's; with
// option 3 the third one runs.

namespace {

class CDibujos : public CVuelta {
public:
    void Prueba(const CEntrada& entrada)
    {
        for (std::size_t i = 0; i < std::size(kDibujos); ++i)
            Pon(kDibujos[i], entrada.Trozo(i));
        if (entrada.Opcion(3))
            AInfograf(entrada);
        else
            ACatastro(entrada);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CDibujos banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
