#include <cstdint>

#include "evidence/show_drawing/show_drawing.h"
#include "fuzz/work_bench.h"

// The tool that prints a drawing or a topology: the pieces are a drawing and a topology of it.
// Option 0 has the drawing printed, 1 takes it away, 2 names no file.

namespace {

class CMuestra : public CBanco {
public:
    void Prueba(const CEntrada& entrada)
    {
        Pon("1.PAR", entrada.Trozo(1));
        if (entrada.Opcion(1))
            Quita("1.BIN");
        else
            Pon("1.BIN", entrada.Trozo(0));
        std::vector<std::string> argumentos = {"show_drawing"};
        if (!entrada.Opcion(2))
            argumentos.emplace_back(En(entrada.Opcion(0) ? "1.BIN" : "1.PAR"));
        Ejecuta(entrada, false, [&] {
            const int estado = EnseñaDibujo(argumentos);
            const bool sinFichero = entrada.Opcion(1) || entrada.Opcion(2);
            Exige(estado == kNoSeLee ? sinFichero || entrada.Fallo() != 0
                                     : !sinFichero && (estado == 0 || estado == kHayFallos),
                  "the exit status tells what was read");
        });
    }

private:
    static constexpr int kHayFallos = 1;
    static constexpr int kNoSeLee = 2;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CMuestra banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
