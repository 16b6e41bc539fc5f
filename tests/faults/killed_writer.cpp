#include <cstdlib>
#include <exception>
#include <string>

#include "platform/files/cfile_exception.h"
#include "platform/files/output_set.h"
#include "tests/faults/fault_plan.h"

// Replaces three files of a folder as a set, and is killed before its n-th call to the system:
//   killed_writer FOLDER N

int main(int argc, char* argv[])
try {
    if (argc != 3)
        return 2;
    Plan() = {.que = CPlanDeFallos::Que::MataEnLlamada, .en = std::atol(argv[2])};
    CConjuntoSalidas salidas;
    for (const char* nombre : {"a.txt", "b.txt", "c.txt"}) {
        sistema::Error error;
        CReemplazo* const salida = salidas.Abre(std::string(argv[1]) + "\\" + nombre, error);
        if (salida == nullptr)
            return 1;
        salida->Escribe("ahora, y más largo", error);
        CFileException::Exige(error, nombre);
    }
    salidas.Confirma();
    return 0;
} catch (const std::exception&) {
    return 1;
}
