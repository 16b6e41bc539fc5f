#include "evidence/drawn_polygon.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/label_codes.h"
#include "cadastre/polygon_list.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"
#include "vexa_libs/ring.h"
#include "vexa_libs/ring_index.h"
#include "vexa_libs/topology.h"

using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

constexpr std::array<const char*, 4> kExtensiones = {kExtensionParcelas, kExtensionSubparcelas,
                                                     kExtensionPoligonos, kExtensionHojas};

/// The labels of polygons and sheets may have any code, and be deleted.
bool CuentanCodigos(ClaseTopologia que)
{
    return que == ClaseTopologia::Parcelas || que == ClaseTopologia::Subparcelas;
}

/// Reads the outlines of one topology.
class CLectorTopologia {
public:
    CLectorTopologia(CFile& bin, ClaseTopologia que) : m_bin(bin), m_que(que) {}

    CTopologiaDibujada Lee(CFile& topologia)
    {
        CTopologiaDibujada dibujada;
        dibujada.hay = true;
        dibujada.dañoEn =
            RecorreRegistros(topologia, [&](const CPoligonoTopologico& registro, bool isla) {
                if (isla)
                    PonIsla(registro, false, dibujada.recintos.back());
                else
                    dibujada.recintos.push_back(Recinto(registro));
            });
        return dibujada;
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
            recinto.borrado = rotulo.Tipo().EsBorrado();
            recinto.punto = rotulo.PrimerPunto();
        }
        if (!registro.EsParcela())
            return OtraClase;
        if (!hayCentroide)
            return SinRotulo;
        if (m_fueraDeFecha)
            return NoSeLlega;
        if (!leido) {
            m_fueraDeFecha = CuentanCodigos(m_que); // where codes don't count it stops nothing
            return FueraDeFecha;
        }
        return rotulo.Tipo().EsTexto() ? EstadoPorRotulo(m_que, recinto.codigo, recinto.borrado)
                                       : NoEsTexto;
    }

    CFile& m_bin;
    ClaseTopologia m_que;
    std::uint64_t m_vertices = 0; // of all rings
    bool m_fueraDeFecha = false;  // a label couldn't be read
};

/// Tells each valid outline of some topologies which of the pieces with its key it is.
void CuentaPiezas(std::span<CPoligonoDibujado> dibujos, ClaseTopologia que)
{
    std::map<std::pair<int, CString>, int> piezas; // by parcel and letter, if any
    for (CPoligonoDibujado& dibujo : dibujos)
        for (CRecintoDibujado& recinto : dibujo.Topologia(que).recintos)
            if (recinto.EsDeParcela())
                recinto.pieza = ++piezas[{recinto.parcela, recinto.letra}];
    for (CPoligonoDibujado& dibujo : dibujos)
        for (CRecintoDibujado& recinto : dibujo.Topologia(que).recintos)
            if (recinto.EsDeParcela())
                recinto.piezas = piezas[{recinto.parcela, recinto.letra}];
}

void NumeraParcelas(CPoligonoDibujado& poligono)
{
    for (CRecintoDibujado& recinto : poligono.parcelas.recintos)
        if (recinto.Valido())
            recinto.parcela = LeeEntero(recinto.rotulo);
    CuentaPiezas({&poligono, 1}, ClaseTopologia::Parcelas);
}

/// Gives each subparcel the smallest parcel that holds its label.
void SituaSubparcelas(CPoligonoDibujado& poligono, const CHayParcela& hayParcela)
{
    if (poligono.subparcelas.recintos.empty())
        return;
    const std::vector<CRecintoDibujado>& parcelas = poligono.parcelas.recintos;
    vexageo::CIndiceAnillos indice;
    for (std::size_t i = 0; i < parcelas.size(); ++i) {
        const double area = vexageo::DobleArea(parcelas[i].contorno) / vexageo::kDobleMetroCuadrado;
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
    CuentaPiezas({&poligono, 1}, ClaseTopologia::Subparcelas);
}

} // namespace

const char* ExtensionDe(ClaseTopologia que)
{
    return kExtensiones[static_cast<std::size_t>(que)];
}

std::optional<ClaseTopologia> ClaseDeExtension(std::string_view extension)
{
    const auto* const suya = std::ranges::find(kExtensiones, extension);
    return suya == kExtensiones.end()
               ? std::nullopt
               : std::optional(static_cast<ClaseTopologia>(suya - kExtensiones.begin()));
}

EstadoRecinto EstadoPorRotulo(ClaseTopologia que, const CString& codigo, bool borrado)
{
    if (!CuentanCodigos(que))
        return EstadoRecinto::Valido;
    if (borrado)
        return EstadoRecinto::Borrado;
    const std::span<const char* const> codigos =
        que == ClaseTopologia::Parcelas ? std::span<const char* const>(kCodigosDeParcela)
                                        : std::span<const char* const>(kCodigosDeSubparcela);
    const bool suyo = std::ranges::find(codigos, codigo) != codigos.end();
    return suyo ? EstadoRecinto::Valido : EstadoRecinto::CodigoAjeno;
}

const char* NombreEstado(EstadoRecinto estado)
{
    constexpr const char* kNombres[] = {"válido"_ansi,
                                        "sin rótulo"_ansi,
                                        "el rótulo no es un texto"_ansi,
                                        "rótulo borrado"_ansi,
                                        "rótulo de código ajeno"_ansi,
                                        "fuera de fecha",
                                        "tras un rótulo fuera de fecha"_ansi,
                                        "registro de otra clase"};
    return kNombres[static_cast<std::size_t>(estado)];
}

double CRecintoDibujado::AreaContorno() const
{
    double doble = vexageo::DobleArea(contorno);
    for (const CIslaDibujada& isla : islas)
        doble -= vexageo::DobleArea(isla.contorno);
    return doble / vexageo::kDobleMetroCuadrado;
}

CPoligonoDibujado LeePoligonoDibujado(const CString& carpeta, const CString& entrada,
                                      const CHayParcela& hayParcela,
                                      std::span<const ClaseTopologia> cuales)
{
    CPoligonoDibujado poligono;
    poligono.entrada = entrada;
    poligono.polig = LeeEntero(entrada);
    CFile bin;
    poligono.hayDibujo =
        AbreSiHay(bin, FicheroDeLista(carpeta, entrada, kExtensionDibujo), kModoDibujo);
    if (!poligono.hayDibujo)
        return poligono;
    for (const ClaseTopologia que : cuales) {
        CFile topologia;
        if (AbreSiHay(topologia, FicheroDeLista(carpeta, entrada, ExtensionDe(que)), kModoDibujo))
            poligono.Topologia(que) = LeeTopologiaDibujada(topologia, bin, que);
    }
    Relaciona(poligono, hayParcela);
    return poligono;
}

void Relaciona(CPoligonoDibujado& poligono, const CHayParcela& hayParcela)
{
    NumeraParcelas(poligono);
    SituaSubparcelas(poligono, hayParcela);
}

void CuentaPiezas(std::span<CPoligonoDibujado> dibujos)
{
    if (dibujos.size() < 2)
        return; // counted already
    for (const ClaseTopologia que : {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas})
        CuentaPiezas(dibujos, que);
}

CTopologiaDibujada LeeHojasDibujadas(const CCadena& ortos)
{
    constexpr ClaseTopologia kHojas = ClaseTopologia::Hojas;
    CFile bin;
    CFile top;
    return AbreSiHay(bin, ConExtension(ortos, kExtensionDibujo), kModoDibujo) &&
                   AbreSiHay(top, ConExtension(ortos, ExtensionDe(kHojas)), kModoDibujo)
               ? LeeTopologiaDibujada(top, bin, kHojas)
               : CTopologiaDibujada();
}

std::uint64_t RecorreRegistros(CFile& topologia,
                               const std::function<void(const CPoligonoTopologico&, bool)>& toma)
{
    std::uint64_t posicion = topologia.GetPosition();
    bool hayRecinto = false; // an island with no outline in front of it is one of another kind
    for (CPoligonoTopologico registro; registro.Read(&topologia);
         posicion = topologia.GetPosition()) {
        toma(registro, registro.EsIsla() && hayRecinto);
        hayRecinto = true;
    }
    return posicion < topologia.GetLength() ? posicion : CTopologiaDibujada::kSinDaño;
}

CTopologiaDibujada LeeTopologiaDibujada(CFile& topologia, CFile& bin, ClaseTopologia que)
{
    return CLectorTopologia(bin, que).Lee(topologia);
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
