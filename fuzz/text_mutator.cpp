#include "fuzz/mutation.h"

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* bytes, std::size_t n,
                                               std::size_t masLargo, unsigned semilla)
{
    return MutaEntrada(bytes, n, masLargo, semilla, MutaTexto);
}
