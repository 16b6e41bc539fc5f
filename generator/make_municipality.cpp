#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "platform/files/cfile.h"
#include "vexa_libs/ccadena.h"

// Makes the input files of a synthetic municipality.

namespace {

constexpr const char* kUso =
    "Usage: make_municipality [--parcels N] [--polygons N] [--subparcels N] [--seed N] [--faults]\n"
    "                         [--list | --drawings] NAME\n"
    "\n"
    "Writes an exchange file of a synthetic municipality; with --list a list of subparcels with\n"
    "holders; with --drawings its drawings and the list of its polygons into the folder NAME. The\n"
    "same numbers give the same files. A parcel takes about four lines; --subparcels gives each\n"
    "parcel so many, 1 to 4.\n";

struct COpciones {
    sintetico::CMedidas medidas;
    int semilla = 1;
    bool faltas = false;
    bool lista = false;
    bool dibujos = false;
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
        else if (opcion == "--drawings")
            opciones.dibujos = true;
        else if (opcion == "--parcels" && i + 1 < argc)
            opciones.medidas.parcelas = LeeEntero(argv[++i]);
        else if (opcion == "--polygons" && i + 1 < argc)
            opciones.medidas.poligonos = LeeEntero(argv[++i]);
        else if (opcion == "--subparcels" && i + 1 < argc)
            opciones.medidas.subparcelas = LeeEntero(argv[++i]);
        else if (opcion == "--seed" && i + 1 < argc)
            opciones.semilla = LeeEntero(argv[++i]);
        else if (!opcion.starts_with('-') && opciones.fichero.empty())
            opciones.fichero = opcion;
        else
            return false;
    }
    constexpr int kMenosConFaltas = 200;
    const sintetico::CMedidas& medidas = opciones.medidas;
    return !opciones.fichero.empty() &&
           medidas.parcelas >= (opciones.faltas ? kMenosConFaltas : 1) && medidas.poligonos >= 0 &&
           medidas.poligonos <= medidas.parcelas && medidas.subparcelas >= 0 &&
           medidas.subparcelas <= 4;
}

bool GrabaDibujos(const COpciones& opciones, sintetico::CMunicipioSintetico municipio)
{
    if (!opciones.faltas)
        return sintetico::GrabaDibujos(opciones.fichero, municipio);
    sintetico::DesacuerdaDibujos(municipio);
    return sintetico::GrabaDibujos(opciones.fichero, municipio) &&
           sintetico::EstropeaDibujos(opciones.fichero, municipio);
}

bool Graba(const COpciones& opciones)
{
    const auto municipio =
        sintetico::Genera(opciones.medidas, static_cast<std::uint64_t>(opciones.semilla));
    return opciones.dibujos
               ? GrabaDibujos(opciones, municipio)
               : sintetico::GrabaLineas(
                     opciones.fichero,
                     sintetico::LineasDeEntrada(municipio, opciones.lista, opciones.faltas));
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
        if (Graba(opciones))
            return EXIT_SUCCESS;
    } catch (const CFileException&) {
        // told below, like a file that can't be created
    }
    std::fprintf(stderr, "make_municipality: cannot write %s\n", opciones.fichero.c_str());
    return EXIT_FAILURE;
}
