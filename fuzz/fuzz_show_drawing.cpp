#include <cstdint>

#include "fuzz/work_bench.h"
#include "tools/show_drawing.h"

// The tool that prints a drawing or a topology: the pieces are a drawing and a topology of it.
// Option 0 has the drawing printed.

namespace {

class CMuestra : public CBanco {
public:
    void Prueba(const CEntrada& entrada)
    {
        Pon("1.BIN", entrada.Trozo(0));
        Pon("1.PAR", entrada.Trozo(1));
        const CString fichero = En(entrada.Opcion(0) ? "1.BIN" : "1.PAR");
        const char* const argumentos[] = {"show_drawing", fichero.GetString()};
        Ejecuta(entrada, false, [&] { EnseñaDibujo(2, argumentos); });
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CMuestra banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
