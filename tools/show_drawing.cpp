#include "tools/show_drawing.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "platform/ansi.h"
#include "platform/cfile.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"
#include "vexa_libs/topology.h"

// Prints a drawing or a topology readably, and says what in it is damaged or doesn't belong to its
// drawing. A technician needs it when a run says that a topology is out of date.

using vexageo::CCabeceraDibujo;
using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;
using vexageo::CTipoDat;

namespace {

constexpr const char* kUso =
    "Uso: show_drawing FICHERO\n"
    "\n"
    "FICHERO es un dibujo (.BIN) o una topología (.PAR, .SUB, .POL, .TOP), cuyo dibujo se busca a "
    "su\n"
    "lado. Cada línea que empieza por \"!\" cuenta un fallo.\n"
    "\n"
    "Estado de salida: 0; 1 si hay fallos; 2 si no se puede leer el fichero.\n";

constexpr UINT kModo = CFile::modeRead | CFile::typeBinary | CFile::anyCase | CFile::modeWhole;
constexpr int kNoSeLee = 2;

/// Prints lines, and counts those that tell a fault.
class CInforme {
public:
    template <class... T>
    void Linea(std::string_view forma, const T&... argumentos)
    {
        std::string texto;
        AnexaFormato(texto, forma, {CArgumento(argumentos)...});
        std::puts(ansi::AUtf8(texto).c_str());
    }
    template <class... T>
    void Fallo(std::string_view forma, const T&... argumentos)
    {
        ++m_fallos;
        Linea("! " + std::string(forma), argumentos...);
    }
    int Fallos() const { return m_fallos; }

private:
    int m_fallos = 0;
};

double Metros(int coordenada)
{
    return coordenada / 100.0;
}

const char* NombreTipo(const CTipoDat& tipo)
{
    return tipo.EsLinea() ? "línea"_ansi : tipo.EsTexto() ? "texto" : "punto";
}

/// Moves the file to the next mark behind `desde`; false if there is none.
bool BuscaMarca(CFile& fichero, std::uint64_t desde, std::string_view marca)
{
    std::string vistos;
    fichero.Seek(desde);
    for (char c = 0; fichero.Read(&c, 1) == 1;) {
        vistos += c;
        if (vistos.size() > marca.size())
            vistos.erase(0, 1);
        if (vistos == marca) {
            fichero.Seek(fichero.GetPosition() - marca.size());
            return true;
        }
    }
    return false;
}

/// Goes on behind damage. A mark inside it may claim to be of a record as long as the file, and be
/// false; so that many such cost no more than the file does, the search ends when what was read in
/// vain is several times as long.
class CTrasElDaño {
public:
    CTrasElDaño(CFile& fichero, std::string_view marca) : m_fichero(fichero), m_marca(marca) {}

    /// Moves the file to the next mark behind the record at `posicion` that couldn't be read. False
    /// if the search is over.
    bool Sigue(CInforme& informe, std::uint64_t posicion)
    {
        constexpr std::uint64_t kVeces = 4;
        constexpr std::uint64_t kSinCuenta = std::uint64_t{1} << 20U;
        m_enVano += m_fichero.GetPosition() - posicion;
        if (m_enVano <= kVeces * m_fichero.GetLength() + kSinCuenta)
            return BuscaMarca(m_fichero, posicion + 1, m_marca);
        informe.Fallo("hay demasiados daños para seguir"_ansi);
        return false;
    }

private:
    CFile& m_fichero;
    std::string_view m_marca;
    std::uint64_t m_enVano = 0;
};

void MuestraEntidad(CInforme& informe, int posicion, const CTexto<int>& entidad)
{
    const CPunto<int> punto = entidad.PrimerPunto();
    informe.Linea("% 10d  %-5s %-10s % 6d puntos  %.2lf %.2lf %s%s", posicion + 1,
                  NombreTipo(entidad.Tipo()), entidad.Tipo().Codigo(),
                  static_cast<int>(entidad.Puntos().size()), Metros(punto.X), Metros(punto.Y),
                  entidad.Texto().IsEmpty() ? CString() : " \"" + entidad.Texto() + "\"",
                  entidad.Tipo().EsBorrado() ? " (borrado)" : "");
}

void MuestraDibujo(CInforme& informe, CFile& bin)
{
    CTrasElDaño daño(bin, "VENT");
    CCabeceraDibujo cabecera;
    if (!cabecera.Read(&bin))
        informe.Fallo("la cabecera no es de un dibujo"_ansi);
    informe.Linea("Dibujo con %d decimales; la cabecera cuenta %d entidades"_ansi,
                  static_cast<int>(cabecera.semilla.Decimales()),
                  static_cast<int>(cabecera.entidades));
    bin.Seek(CCabeceraDibujo::kBytes);
    unsigned leidas = 0;
    while (bin.GetPosition() < bin.GetLength()) {
        const std::uint64_t posicion = bin.GetPosition();
        CTexto<int> entidad; // a text takes any entity
        if (entidad.Read(&bin)) {
            ++leidas;
            MuestraEntidad(informe, static_cast<int>(posicion), entidad);
            continue;
        }
        informe.Fallo("en %d no hay una entidad entera"_ansi, static_cast<int>(posicion) + 1);
        if (!daño.Sigue(informe, posicion))
            break;
    }
    if (leidas != cabecera.entidades)
        informe.Fallo("se leen %d entidades, no %d"_ansi, static_cast<int>(leidas),
                      static_cast<int>(cabecera.entidades));
}

void CompruebaContorno(CInforme& informe, const CPoligonoTopologico& poligono, CFile& bin)
{
    CLinea<int> linea;
    vexageo::ConstruyeLinea(poligono, &bin, linea, [&] {
        informe.Fallo("un tramo de su contorno no se lee en el dibujo: fuera de fecha"_ansi);
        return true;
    });
    if (linea.Puntos().size() < 3) {
        informe.Fallo("su contorno no encierra nada"_ansi);
        return;
    }
    if (!(linea.Puntos().front() == linea.Puntos().back()))
        informe.Fallo("su contorno no cierra");
    constexpr double kTolerancia = 0.5; // square metres
    const double dibujada = linea.Area(100.0);
    if (std::fabs(dibujada - std::fabs(poligono.AreaPropia())) > kTolerancia)
        informe.Fallo("su contorno encierra %.2lf m2 y el registro dice %.2lf", dibujada,
                      poligono.AreaPropia());
}

void MuestraPoligono(CInforme& informe, const CPoligonoTopologico& poligono, CFile& bin,
                     int hondura)
{
    const std::string sangria(static_cast<std::size_t>(hondura) * 4, ' ');
    CString clase;
    clase.Format("clase %d", static_cast<int>(poligono.Clase()));
    if (poligono.EsParcela())
        clase = "recinto";
    else if (poligono.EsIsla())
        clase = "isla";
    CTexto<int> rotulo;
    const bool leido = vexageo::LeeRotulo(poligono, &bin, rotulo);
    informe.Linea("%s%d: %s, %.2lf m2, %d tramos, %d islas%s", sangria, poligono.NumPoligono(),
                  clase, poligono.Area(), poligono.Tramos(), poligono.Islas(),
                  leido ? ", \"" + rotulo.Texto() + "\" " + rotulo.Tipo().Codigo() : CString());
    if (poligono.TieneCentroide() && !leido)
        informe.Fallo("su rótulo no se lee en el dibujo: fuera de fecha"_ansi);
    if (leido && !rotulo.Tipo().EsTexto())
        informe.Fallo("su rótulo no es un texto"_ansi);
    if (leido && rotulo.Tipo().EsBorrado())
        informe.Fallo("su rótulo está borrado"_ansi);
    CompruebaContorno(informe, poligono, bin);
    for (const CPoligonoTopologico& isla : poligono.ListaIslas())
        MuestraPoligono(informe, isla, bin, hondura + 1);
}

void MuestraTopologia(CInforme& informe, CFile& topologia, CFile& bin)
{
    CTrasElDaño daño(topologia, "VPOL");
    while (topologia.GetPosition() < topologia.GetLength()) {
        const std::uint64_t posicion = topologia.GetPosition();
        CPoligonoTopologico poligono;
        if (poligono.Read(&topologia)) {
            MuestraPoligono(informe, poligono, bin, 0);
            continue;
        }
        informe.Fallo("en el byte %d no hay un registro entero; un proceso acaba de leer aquí"_ansi,
                      static_cast<int>(posicion));
        if (!daño.Sigue(informe, posicion))
            break;
    }
}

} // namespace

int EnseñaDibujo(int argc, const char* const* argv)
{
    if (argc != 2) {
        std::fputs(kUso, stderr);
        return kNoSeLee;
    }
    CCadena nombreBin = argv[1];
    nombreBin.CambiaExtension("BIN");
    const bool esDibujo =
        std::string_view(argv[1]).ends_with(".BIN") || std::string_view(argv[1]).ends_with(".bin");
    CFile fichero;
    CFile bin;
    CInforme informe;
    try {
        if (!fichero.Open(argv[1], kModo) || (!esDibujo && !bin.Open(nombreBin, kModo))) {
            std::fprintf(stderr, "show_drawing: no se puede leer %s o su dibujo\n", argv[1]);
            return kNoSeLee;
        }
        if (esDibujo)
            MuestraDibujo(informe, fichero);
        else
            MuestraTopologia(informe, fichero, bin);
    } catch (const CFileException& fallo) {
        std::fprintf(stderr, "show_drawing: %s\n", ansi::AUtf8(fallo.Mensaje()).c_str());
        return kNoSeLee;
    }
    informe.Linea("%d fallos", informe.Fallos());
    return informe.Fallos() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
