#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/cfile.h"
#include "tools/cadastre_lines.h"
#include "vexa_libs/ccadena.h"

// Makes the input files of a synthetic municipality.

namespace {

constexpr const char* kUso =
    "Uso: make_municipality [--parcels N] [--seed N] [--faults] [--list] FILE\n"
    "\n"
    "Writes an exchange file of a synthetic municipality, or with --list a list of subparcels "
    "with\n"
    "holders. The same numbers give the same file. A parcel takes about four lines.\n";

struct COpciones {
    int parcelas = 300;
    int semilla = 1;
    bool faltas = false;
    bool lista = false;
    std::string fichero;
};

bool LeeOpciones(int argc, char* argv[], COpciones& opciones)
{
    for (int i = 1; i < argc; ++i) {
        const std::string_view opcion = argv[i];
        if (opcion == "--faults")
            opciones.faltas = true;
        else if (opcion == "--list")
            opciones.lista = true;
        else if (opcion == "--parcels" && i + 1 < argc)
            opciones.parcelas = LeeEntero(argv[++i]);
        else if (opcion == "--seed" && i + 1 < argc)
            opciones.semilla = LeeEntero(argv[++i]);
        else if (!opcion.starts_with('-') && opciones.fichero.empty())
            opciones.fichero = opcion;
        else
            return false;
    }
    constexpr int kMenosConFaltas = 200;
    return !opciones.fichero.empty() &&
           opciones.parcelas >= (opciones.faltas ? kMenosConFaltas : 1);
}

std::vector<std::string> Lineas(const COpciones& opciones)
{
    const auto municipio =
        sintetico::Genera(opciones.parcelas, static_cast<std::uint64_t>(opciones.semilla));
    if (opciones.lista) {
        std::vector<std::string> lineas = sintetico::LineasLista(municipio);
        if (opciones.faltas)
            sintetico::EstropeaLista(lineas);
        return lineas;
    }
    sintetico::CLineasCatastro lineas = sintetico::LineasCatastro(municipio);
    if (opciones.faltas)
        sintetico::EstropeaCatastro(lineas);
    return lineas.Todas();
}

} // namespace

int main(int argc, char* argv[])
{
    COpciones opciones;
    if (!LeeOpciones(argc, argv, opciones)) {
        std::fputs(kUso, stderr);
        return EXIT_FAILURE;
    }
    try {
        if (sintetico::GrabaLineas(opciones.fichero, Lineas(opciones)))
            return EXIT_SUCCESS;
    } catch (const CFileException&) {
        // told below, like a file that can't be created
    }
    std::fprintf(stderr, "make_municipality: cannot write %s\n", opciones.fichero.c_str());
    return EXIT_FAILURE;
}
