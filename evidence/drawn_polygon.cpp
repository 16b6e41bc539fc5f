#include "evidence/drawn_polygon.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include "cadastre/label_codes.h"
#include "cadastre/polygon_list.h"
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

constexpr UINT kModo = CFile::modeRead | CFile::anyCase | CFile::modeWhole;

/// The labels of polygons and sheets may have any code, and be deleted.
bool CuentanCodigos(ClaseTopologia que)
{
    return que == ClaseTopologia::Parcelas || que == ClaseTopologia::Subparcelas;
}

/// Reads the outlines of one topology.
class CLectorTopologia {
public:
    CLectorTopologia(CFile& bin, ClaseTopologia que) : m_bin(bin), m_que(que) {}

    void Lee(CFile& topologia, CTopologiaDibujada& dibujada)
    {
        dibujada.hay = true;
        std::uint64_t posicion = topologia.GetPosition();
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
        if (!rotulo.Tipo().EsTexto())
            return NoEsTexto;
        if (!CuentanCodigos(m_que))
            return Valido;
        if (rotulo.Tipo().EsBorrado())
            return Borrado;
        return EsCodigoDe(m_que, recinto.codigo) ? Valido : CodigoAjeno;
    }

    CFile& m_bin;
    ClaseTopologia m_que;
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
    CuentaPiezas<std::pair<int, std::string>>(
        poligono.subparcelas.recintos, [](const CRecintoDibujado& recinto) {
            return std::pair(recinto.parcela, std::string(std::string_view(recinto.letra)));
        });
}

} // namespace

bool EsCodigoDe(ClaseTopologia que, const CString& codigo)
{
    if (que == ClaseTopologia::Parcelas)
        return codigo == kCodigoParcela;
    return que != ClaseTopologia::Subparcelas || codigo == kCodigoSubparcela ||
           codigo == kCodigoConstruccion;
}

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
    return doble / vexageo::kDobleMetroCuadrado;
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
    const auto lee = [&](const char* extension, ClaseTopologia que, CTopologiaDibujada& dibujada) {
        CFile topologia;
        if (topologia.Open(FicheroDeLista(carpeta, entrada, extension), kModo))
            dibujada = LeeTopologiaDibujada(topologia, bin, que);
    };
    lee("PAR", ClaseTopologia::Parcelas, poligono.parcelas);
    lee("SUB", ClaseTopologia::Subparcelas, poligono.subparcelas);
    lee("POL", ClaseTopologia::Poligonos, poligono.poligonos);
    Relaciona(poligono, hayParcela);
    return poligono;
}

void Relaciona(CPoligonoDibujado& poligono, const CHayParcela& hayParcela)
{
    NumeraParcelas(poligono.parcelas.recintos);
    SituaSubparcelas(poligono, hayParcela);
}

CTopologiaDibujada LeeHojasDibujadas(const CCadena& ortos)
{
    CCadena nombre = ortos;
    CFile bin;
    CFile top;
    nombre.CambiaExtension("BIN");
    const bool hayBin = bin.Open(nombre, kModo);
    nombre.CambiaExtension("TOP");
    return hayBin && top.Open(nombre, kModo) ? LeeTopologiaDibujada(top, bin, ClaseTopologia::Hojas)
                                             : CTopologiaDibujada();
}

CTopologiaDibujada LeeTopologiaDibujada(CFile& topologia, CFile& bin, ClaseTopologia que)
{
    CTopologiaDibujada dibujada;
    CLectorTopologia(bin, que).Lee(topologia, dibujada);
    return dibujada;
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
    if (!fichero.Open(nombre, CFile::modeRead))
        return false;
    fichero.ReadString(lista.cabecera);
    CString linea;
    while (fichero.ReadString(linea))
        lista.entradas.push_back(EntradaDeLista(linea));
    return true;
}
