#include "cadastre/drawn_polygon.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include "cadastre/label_codes.h"
#include "cadastre/polygon_list.h"
#include "platform/ansi.h"
#include "vexa_libs/ring.h"
#include "vexa_libs/ring_index.h"
#include "vexa_libs/topology.h"

using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

constexpr UINT kModo = CFile::modeRead | CFile::typeBinary | CFile::anyCase | CFile::modeWhole;
constexpr double kUnidades = 2.0 * 100 * 100; // of twice an area, in a square metre

// Codes that the labels of a topology may have; none for one whose labels may have any.
constexpr std::array<const char*, 1> kCodigosPar = {kCodigoParcela};
constexpr std::array<const char*, 2> kCodigosSub = {kCodigoSubparcela, kCodigoConstruccion};
using CCodigos = std::span<const char* const>;

/// Reads the outlines of one topology.
class CLectorTopologia {
public:
    CLectorTopologia(CFile& bin, CCodigos codigos) : m_bin(bin), m_codigos(codigos) {}

    void Lee(CFile& topologia, CTopologiaDibujada& dibujada)
    {
        dibujada.hay = true;
        std::uint64_t posicion = 0;
        for (CPoligonoTopologico registro; registro.Read(&topologia);
             posicion = topologia.GetPosition()) {
            // An island with no outline in front of it is told as one of another kind.
            if (registro.EsIsla() && !dibujada.recintos.empty())
                PonIsla(registro, false, dibujada.recintos.back());
            else
                dibujada.recintos.push_back(Recinto(registro));
        }
        if (posicion < topologia.GetLength())
            dibujada.dañoEn = posicion;
    }

private:
    CRecintoDibujado Recinto(const CPoligonoTopologico& registro)
    {
        CRecintoDibujado recinto;
        recinto.numero = registro.NumPoligono();
        recinto.centroide = registro.Centroide();
        recinto.punto = registro.PuntoInterior();
        recinto.areaPropia = registro.AreaPropia();
        recinto.areaRegistro = registro.AreaPropia();
        recinto.contorno = Contorno(registro, recinto);
        for (const CPoligonoTopologico& isla : registro.ListaIslas())
            PonIsla(isla, true, recinto);
        recinto.estado = LeeRotulo(registro, recinto);
        return recinto;
    }
    void PonIsla(const CPoligonoTopologico& isla, bool enLista, CRecintoDibujado& recinto)
    {
        recinto.islas.push_back({Contorno(isla, recinto), isla.Area(), enLista, isla.AreaPropia()});
        recinto.areaRegistro += isla.Area();
    }
    std::vector<CPunto<int>> Contorno(const CPoligonoTopologico& registro,
                                      CRecintoDibujado& recinto)
    {
        CLinea<int> linea;
        vexageo::ConstruyeLinea(registro, &m_bin, linea, [&] {
            ++recinto.tramosPerdidos;
            return true;
        });
        if (vexageo::SonDesmedidos(m_vertices, linea, m_bin)) {
            ++recinto.tramosPerdidos;
            return {};
        }
        m_vertices += linea.Puntos().size();
        return std::move(linea.Puntos());
    }
    EstadoRecinto LeeRotulo(const CPoligonoTopologico& registro, CRecintoDibujado& recinto)
    {
        using enum EstadoRecinto;
        const bool hayCentroide = registro.TieneCentroide();
        CTexto<int> rotulo;
        const bool leido = vexageo::LeeRotulo(registro, &m_bin, rotulo);
        if (leido) {
            recinto.posicionRotulo = registro.OffsetCentroide();
            recinto.rotulo = rotulo.Texto();
            recinto.codigo = rotulo.Tipo().Codigo();
            recinto.punto = rotulo.PrimerPunto();
        }
        if (!registro.EsParcela())
            return OtraClase;
        if (!hayCentroide)
            return SinRotulo;
        if (m_fueraDeFecha)
            return NoSeLlega;
        if (!leido) {
            m_fueraDeFecha = !m_codigos.empty(); // where codes don't count it stops nothing
            return FueraDeFecha;
        }
        if (!rotulo.Tipo().EsTexto())
            return NoEsTexto;
        if (m_codigos.empty())
            return Valido;
        if (rotulo.Tipo().EsBorrado())
            return Borrado;
        const bool suyo = std::any_of(m_codigos.begin(), m_codigos.end(), [&](const char* codigo) {
            return rotulo.Tipo().ComparaCodigo(codigo);
        });
        return suyo ? Valido : CodigoAjeno;
    }

    CFile& m_bin;
    CCodigos m_codigos;
    std::uint64_t m_vertices = 0; // of all rings
    bool m_fueraDeFecha = false;  // a label couldn't be read
};

/// Tells each valid outline which of the pieces with its key it is.
template <class Clave, class F>
void CuentaPiezas(std::vector<CRecintoDibujado>& recintos, F clave)
{
    std::map<Clave, int> piezas;
    for (CRecintoDibujado& recinto : recintos)
        if (recinto.Valido() && recinto.parcela >= 0)
            recinto.pieza = ++piezas[clave(recinto)];
    for (CRecintoDibujado& recinto : recintos)
        if (recinto.Valido() && recinto.parcela >= 0)
            recinto.piezas = piezas[clave(recinto)];
}

void NumeraParcelas(std::vector<CRecintoDibujado>& parcelas)
{
    for (CRecintoDibujado& recinto : parcelas)
        if (recinto.Valido())
            recinto.parcela = LeeEntero(recinto.rotulo);
    CuentaPiezas<int>(parcelas, [](const CRecintoDibujado& recinto) { return recinto.parcela; });
}

/// Gives each subparcel the smallest parcel that holds its label.
void SituaSubparcelas(CPoligonoDibujado& poligono, const CHayParcela& hayParcela)
{
    const std::vector<CRecintoDibujado>& parcelas = poligono.parcelas.recintos;
    vexageo::CIndiceAnillos indice;
    for (std::size_t i = 0; i < parcelas.size(); ++i) {
        const double area = vexageo::DobleArea(parcelas[i].contorno) / kUnidades;
        if (parcelas[i].Valido() && area < kAreaImposible &&
            (!hayParcela || hayParcela(poligono.polig, parcelas[i].parcela)))
            indice.Añade(parcelas[i].contorno, area, static_cast<int>(i));
    }
    for (CRecintoDibujado& recinto : poligono.subparcelas.recintos) {
        if (!recinto.Valido())
            continue;
        recinto.letra = LetraDelRotulo(recinto.rotulo);
        const int i = indice.Busca(recinto.punto);
        recinto.parcela = i < 0 ? -1 : parcelas[static_cast<std::size_t>(i)].parcela;
    }
    CuentaPiezas<std::pair<int, std::string>>(
        poligono.subparcelas.recintos, [](const CRecintoDibujado& recinto) {
            return std::pair(recinto.parcela, std::string(std::string_view(recinto.letra)));
        });
}

} // namespace

const char* NombreEstado(EstadoRecinto estado)
{
    switch (estado) {
    case EstadoRecinto::Valido:
        return "válido"_ansi;
    case EstadoRecinto::SinRotulo:
        return "sin rótulo"_ansi;
    case EstadoRecinto::NoEsTexto:
        return "el rótulo no es un texto"_ansi;
    case EstadoRecinto::Borrado:
        return "rótulo borrado"_ansi;
    case EstadoRecinto::CodigoAjeno:
        return "rótulo de código ajeno"_ansi;
    case EstadoRecinto::FueraDeFecha:
        return "fuera de fecha";
    case EstadoRecinto::NoSeLlega:
        return "tras un rótulo fuera de fecha"_ansi;
    case EstadoRecinto::OtraClase:
        return "registro de otra clase";
    }
    return "";
}

double CRecintoDibujado::AreaContorno() const
{
    double doble = vexageo::DobleArea(contorno);
    for (const CIslaDibujada& isla : islas)
        doble -= vexageo::DobleArea(isla.contorno);
    return doble / kUnidades;
}

CPoligonoDibujado LeePoligonoDibujado(const CString& carpeta, const CString& entrada,
                                      const CHayParcela& hayParcela)
{
    CPoligonoDibujado poligono;
    poligono.entrada = entrada;
    poligono.polig = LeeEntero(entrada);
    CFile bin;
    poligono.hayDibujo = bin.Open(FicheroDeLista(carpeta, entrada, "BIN"), kModo);
    if (!poligono.hayDibujo)
        return poligono;
    const auto lee = [&](const char* extension, CCodigos codigos, CTopologiaDibujada& dibujada) {
        CFile topologia;
        if (topologia.Open(FicheroDeLista(carpeta, entrada, extension), kModo))
            CLectorTopologia(bin, codigos).Lee(topologia, dibujada);
    };
    lee("PAR", kCodigosPar, poligono.parcelas);
    lee("SUB", kCodigosSub, poligono.subparcelas);
    lee("POL", {}, poligono.poligonos);
    NumeraParcelas(poligono.parcelas.recintos);
    SituaSubparcelas(poligono, hayParcela);
    return poligono;
}

CTopologiaDibujada LeeHojasDibujadas(const CCadena& ortos)
{
    CTopologiaDibujada hojas;
    CCadena nombre = ortos;
    CFile bin;
    CFile top;
    nombre.CambiaExtension("BIN");
    const bool hayBin = bin.Open(nombre, kModo);
    nombre.CambiaExtension("TOP");
    if (hayBin && top.Open(nombre, kModo))
        CLectorTopologia(bin, {}).Lee(top, hojas);
    return hojas;
}

bool RecorreEntidades(CFile& bin, const std::function<void(int, const CTexto<int>&)>& toma)
{
    bin.Seek(vexageo::CCabeceraDibujo::kBytes);
    while (bin.GetPosition() < bin.GetLength()) {
        const int posicion = static_cast<int>(bin.GetPosition()) + 1;
        CTexto<int> entidad; // a text takes any entity
        if (!entidad.Read(&bin))
            return false;
        toma(posicion, entidad);
    }
    return true;
}

bool LeeLista(const CString& nombre, CListaPoligonos& lista)
{
    CStdioFile fichero;
    if (!fichero.Open(nombre, CFile::modeRead | CFile::typeText))
        return false;
    fichero.ReadString(lista.cabecera);
    CString linea;
    while (fichero.ReadString(linea))
        lista.entradas.push_back(EntradaDeLista(linea));
    return true;
}
