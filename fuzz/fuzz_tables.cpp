#include <cstdint>

#include "fuzz/way_back.h"

// The tables of the second translation: the pieces are the six, in the order of CVuelta::kTablas.
// Options 0 to 2 are the run's, 3 takes the drawings away.

namespace {

class CTablas : public CVuelta {
public:
    void Prueba(const CEntrada& entrada)
    {
        for (std::size_t i = 0; i < std::size(kTablas); ++i)
            Pon(kTablas[i], entrada.Trozo(i));
        Pon("poligonos.txt", entrada.Opcion(3) ? "TREN 045127\r\n" : "TREN 045127\r\nP001\r\n");
        ACatastro(entrada);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CTablas banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
