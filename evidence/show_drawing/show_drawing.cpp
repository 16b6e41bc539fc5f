#include "evidence/show_drawing/show_drawing.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "cadastre/file_extensions.h"
#include "evidence/drawing_findings.h"
#include "evidence/paths.h"
#include "evidence/units.h"
#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "platform/files/set_healing.h"
#include "platform/system.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"
#include "vexa_libs/topology.h"

// Prints a drawing or a topology readably, and says what in it is damaged or doesn't belong to its
// drawing. A technician needs it when a run says that a topology is out of date.

using vexageo::CCabeceraDibujo;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;
using vexageo::CTipoDat;

namespace {

constexpr const char* kUso = R"(Uso: show_drawing FICHERO

FICHERO es un dibujo (.BIN) o una topología (.PAR, .SUB, .POL, .TOP), cuyo dibujo se busca a su
lado, y para un .SUB también su .PAR. De un dibujo salen sus entidades; de una topología, sus
recintos con sus islas. Cada línea que empieza por "!" cuenta un fallo de lo que está encima:
lo dañado, lo que no corresponde al dibujo y lo que una traducción perdería o tomaría mal.

  --help  escribe este texto

Estado de salida: 0; 1 si hay fallos; 2 si no se puede leer el fichero, o escribir lo que
dice.
)";

constexpr int kNoSeLee = 2;
constexpr int kDecimales = 2;

/// The line with its control characters as "\x0A": a label may hold an end of line, which would
/// make two lines of one.
std::string ConControlesALaVista(std::string_view linea)
{
    constexpr unsigned char kBlanco = ' ';
    constexpr std::string_view kCifras = "0123456789ABCDEF";
    std::string vista;
    for (const char c : linea) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < kBlanco)
            vista.append("\\x") += {kCifras[byte / 16U], kCifras[byte % 16U]};
        else
            vista += c;
    }
    return vista;
}

/// Prints lines, and counts those that tell a fault.
class CImpresion {
public:
    template <class... T>
    void Linea(std::string_view forma, const T&... argumentos)
    {
        m_lineas += ansi::AUtf8(ConControlesALaVista(Formatea(forma, argumentos...))) + '\n';
        if (m_lineas.size() > kDeUnaVez)
            Vacia();
    }
    template <class... T>
    void Fallo(std::string_view forma, const T&... argumentos)
    {
        ++m_fallos;
        Linea("! " + std::string(forma), argumentos...);
    }
    int Fallos() const { return m_fallos; }
    /// Prints what is still kept.
    void Vacia()
    {
        sistema::Imprime(stdout, m_lineas);
        m_lineas.clear();
    }

private:
    static constexpr std::size_t kDeUnaVez = std::size_t{16} * 1024; // in whole lines

    std::string m_lineas;
    int m_fallos = 0;
};

const char* NombreTipo(const CTipoDat& tipo)
{
    return tipo.EsLinea() ? "línea"_ansi : tipo.EsTexto() ? "texto" : "punto";
}

/// Moves the file to the next mark behind `desde`; false if there is none.
bool BuscaMarca(CFile& fichero, std::uint64_t desde, std::string_view marca)
{
    fichero.Seek(desde);
    const std::size_t donde =
        fichero.Tramo(static_cast<std::size_t>(fichero.GetLength() - desde)).find(marca);
    if (donde == std::string_view::npos)
        return false;
    fichero.Seek(desde + donde);
    return true;
}

/// Goes on behind damage. A mark inside it may claim to be of a record as long as the file, and be
/// false; so that many such cost no more than the file does, the search ends when what was read in
/// vain is several times as long.
class CTrasElDaño {
public:
    CTrasElDaño(CFile& fichero, std::string_view marca) : m_fichero(fichero), m_marca(marca) {}

    /// Moves the file to the next mark behind the record at `posicion` that couldn't be read. False
    /// if the search is over.
    bool Sigue(CImpresion& informe, std::uint64_t posicion)
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

void MuestraEntidad(CImpresion& informe, int posicion, const CTexto<int>& entidad)
{
    const CPunto<int> punto = entidad.PrimerPunto();
    informe.Linea("% 10d  %-5s %-10s % 6d puntos  %.2lf %.2lf %s%s", posicion + 1,
                  NombreTipo(entidad.Tipo()), entidad.Tipo().Codigo(),
                  static_cast<int>(entidad.Puntos().size()), EnMetros(punto.X), EnMetros(punto.Y),
                  entidad.Texto().IsEmpty() ? CString() : " \"" + entidad.Texto() + "\"",
                  entidad.Tipo().EsBorrado() ? " (borrado)" : "");
}

void MuestraDibujo(CImpresion& informe, CFile& bin)
{
    CTrasElDaño daño(bin, "VENT");
    CCabeceraDibujo cabecera;
    if (!cabecera.Read(&bin))
        informe.Fallo("la cabecera no es de un dibujo"_ansi);
    informe.Linea("Dibujo con %d decimales; la cabecera cuenta %d entidades"_ansi,
                  static_cast<int>(cabecera.semilla.Decimales()),
                  static_cast<int>(cabecera.entidades));
    if (cabecera.semilla.Decimales() != kDecimales)
        informe.Fallo("los %d decimales de la cabecera no cuentan: las coordenadas se toman en "
                      "centésimas de metro"_ansi,
                      static_cast<int>(cabecera.semilla.Decimales()));
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

/// Prints the records of a topology, and below each what is wrong with it.
class CMuestraTopologia {
public:
    CMuestraTopologia(CImpresion& informe, CFile& topologia, CFile& bin, ClaseTopologia que)
        : m_informe(informe), m_topologia(topologia), m_bin(bin), m_que(que)
    {
    }

    /// \param primeras  the faults of its outlines up to the first damage
    void Muestra(const CFaltasDeRecintos& primeras)
    {
        CTrasElDaño daño(m_topologia, "VPOL");
        MuestraTrozo(primeras);
        while (m_topologia.GetPosition() < m_topologia.GetLength()) {
            const std::uint64_t posicion = m_topologia.GetPosition();
            m_informe.Fallo(
                "en el byte %d no hay un registro entero; un proceso acaba de leer aquí"_ansi,
                static_cast<int>(posicion));
            // Read once more, for how far it was read in vain.
            if (CPoligonoTopologico().Read(&m_topologia) || !daño.Sigue(m_informe, posicion))
                break;
            MuestraTrozo(FaltasSueltas());
        }
    }

private:
    /// The faults of the outlines from here to the next damage, each looked at by itself.
    CFaltasDeRecintos FaltasSueltas()
    {
        const std::uint64_t posicion = m_topologia.GetPosition();
        CFaltasDeRecintos faltas = FaltasDe(LeeTopologiaDibujada(m_topologia, m_bin, m_que), m_que);
        m_topologia.Seek(posicion);
        for (std::vector<CFalta>& suyas : faltas)
            std::erase_if(suyas,
                          [](const CFalta& falta) { return falta.clase >= ClaseFalta::SinNumero; });
        return faltas;
    }

    /// Goes through the records up to the next damage, as those did that the faults are of.
    void MuestraTrozo(const CFaltasDeRecintos& faltas)
    {
        std::size_t recintos = 0;
        int isla = 0; // of the outline, the last one seen
        const auto muestra = [&](const CPoligonoTopologico& registro, bool esIsla) {
            MuestraRegistro(registro, 0);
            if (esIsla)
                return MuestraFaltas(faltas, recintos - 1, ++isla);
            MuestraFaltas(faltas, recintos++, 0);
            isla = 0;
            for (const CPoligonoTopologico& suya : registro.ListaIslas()) {
                MuestraConIslas(suya, 1);
                MuestraFaltas(faltas, recintos - 1, ++isla);
            }
        };
        m_topologia.Seek(std::min(RecorreRegistros(m_topologia, muestra), m_topologia.GetLength()));
    }

    /// \param recinto  none of them where the file isn't the one that was read before
    void MuestraFaltas(const CFaltasDeRecintos& faltas, std::size_t recinto, int isla)
    {
        if (recinto >= faltas.size())
            return;
        for (const CFalta& falta : faltas[recinto])
            if (falta.isla == isla)
                m_informe.Fallo("%s", falta.texto);
    }

    void MuestraConIslas(const CPoligonoTopologico& registro, int hondura)
    {
        MuestraRegistro(registro, hondura);
        for (const CPoligonoTopologico& isla : registro.ListaIslas())
            MuestraConIslas(isla, hondura + 1);
    }

    void MuestraRegistro(const CPoligonoTopologico& registro, int hondura)
    {
        const std::string sangria(static_cast<std::size_t>(hondura) * 4, ' ');
        const std::string clase = registro.EsParcela() ? "recinto"
                                  : registro.EsIsla()
                                      ? "isla"
                                      : Formatea("clase %d", static_cast<int>(registro.Clase()));
        CTexto<int> rotulo;
        const bool leido = vexageo::LeeRotulo(registro, &m_bin, rotulo);
        m_informe.Linea(
            "%s%d: %s, %.2lf m2, %d tramos, %d islas%s", sangria, registro.NumPoligono(), clase,
            registro.Area(), registro.Tramos(), registro.Islas(),
            leido ? ", \"" + rotulo.Texto() + "\" " + rotulo.Tipo().Codigo() : CString());
    }

    CImpresion& m_informe;
    CFile& m_topologia;
    CFile& m_bin;
    ClaseTopologia m_que;
};

/// The faults of a topology's outlines up to its first damage, held against their neighbours.
CFaltasDeRecintos FaltasConVecinos(CImpresion& informe, const CString& nombre, ClaseTopologia que)
{
    if (que == ClaseTopologia::Hojas)
        return FaltasDe(LeeHojasDibujadas(nombre), que);
    const CPoligonoDibujado poligono = LeePoligonoDibujado(CCadena(nombre).DamePath(), nombre);
    CFaltasDeRecintos faltas = FaltasDe(poligono.Topologia(que), que);
    if (que == ClaseTopologia::Subparcelas && !poligono.parcelas.hay) {
        informe.Fallo("no está su .PAR: no se sabe en qué parcela cae cada recinto"_ansi);
        for (std::vector<CFalta>& suyas : faltas)
            std::erase_if(suyas, [](const CFalta& falta) {
                return falta.clase == ClaseFalta::FueraDeParcela;
            });
    }
    return faltas;
}

/// Prints the file. False where it or its drawing isn't there, or it is neither.
bool Muestra(CImpresion& informe, const CString& nombre)
{
    const std::string extension = ExtensionDe(nombre);
    const std::optional<ClaseTopologia> que = ClaseDeExtension(extension);
    SanaConjuntos({nombre});
    CFile fichero;
    CFile bin;
    if ((!que && extension != kExtensionDibujo) || !AbreSiHay(fichero, nombre, kModoDibujo) ||
        (que && !AbreSiHay(bin, ConExtension(nombre, kExtensionDibujo), kModoDibujo)))
        return false;
    if (que)
        CMuestraTopologia(informe, fichero, bin, *que)
            .Muestra(FaltasConVecinos(informe, nombre, *que));
    else
        MuestraDibujo(informe, fichero);
    return true;
}

/// Prints the file and how many faults it has, and tells what keeps it from that.
/// \return the exit status
int Imprime(const std::string& nombre)
{
    CImpresion informe;
    try {
        if (!Muestra(informe, nombre)) {
            std::fprintf(stderr, "show_drawing: no se puede leer %s o su dibujo\n", nombre.c_str());
            return kNoSeLee;
        }
    } catch (const CFileException& fallo) {
        informe.Vacia();
        std::fprintf(stderr, "show_drawing: %s\n", ansi::AUtf8(EnUnaLinea(fallo)).c_str());
        return kNoSeLee;
    }
    informe.Linea("%d fallos", informe.Fallos());
    informe.Vacia();
    if (std::ferror(stdout) != 0) {
        std::fputs("show_drawing: no se puede escribir todo\n", stderr);
        return kNoSeLee;
    }
    return informe.Fallos() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int EnseñaDibujo(const std::vector<std::string>& argumentos)
{
    if (argumentos.size() != 2) {
        std::fputs(kUso, stderr);
        return kNoSeLee;
    }
    if (argumentos[1] == "--help") {
        std::fputs(kUso, stdout);
        return EXIT_SUCCESS;
    }
    try {
        return Imprime(argumentos[1]);
    } catch (const std::bad_alloc&) {
        std::fputs("show_drawing: no hay memoria bastante\n", stderr);
        return kNoSeLee;
    }
}
