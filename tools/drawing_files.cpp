#include "tools/drawing_files.h"

#include <array>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "tools/cadastre_lines.h"
#include "vexa_libs/entity.h"
#include "vexa_libs/topological_polygon.h"

using vexageo::CCabeceraDibujo;
using vexageo::CEntidadVexa;
using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace sintetico {
namespace {

constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite | CFile::typeBinary;

// Codes of the drawing's code table.
constexpr const char* kLinde = "125001";
constexpr const char* kRotuloPoligono = "125101";
constexpr const char* kRotuloParcela = "125201";
constexpr const char* kRotuloSubparcela = "125501";
constexpr const char* kRotuloConstruccion = "125502";
constexpr const char* kRotuloHoja = "126001";

CPunto<int> Punto(const CVertice& v)
{
    return {v.x, v.y};
}

double AreaExacta(const CContorno& contorno)
{
    CLinea<int> linea;
    for (const CVertice& v : contorno)
        linea.Puntos().push_back(Punto(v));
    return linea.Area(100.0);
}

/// A .BIN file in the making. Each edge is one line, shared by the outlines on both of its sides.
class CDibujante {
public:
    bool Abre(const CString& nombre)
    {
        if (!m_bin.Open(nombre, kModo))
            return false;
        // The head tells how many entities follow, which is known at the end; its room comes first.
        m_entidades.clear();
        m_posicion = CCabeceraDibujo::kBytes;
        return true;
    }

    /// Position, counted from 1, of a label.
    int Rotulo(const char* codigo, const CString& texto, const CVertice& donde)
    {
        CTexto<int> rotulo(codigo);
        rotulo.SetTexto(texto);
        rotulo.Puntos().push_back(Punto(donde));
        return Pon(std::make_unique<CTexto<int>>(rotulo));
    }

    /// Position of an edge, negative where it is drawn the other way.
    int Borde(const CVertice& a, const CVertice& b)
    {
        const auto clave = [](const CVertice& p, const CVertice& q) {
            return std::array<int, 4>{p.x, p.y, q.x, q.y};
        };
        if (const auto hecho = m_bordes.find(clave(a, b)); hecho != m_bordes.end())
            return hecho->second;
        if (const auto hecho = m_bordes.find(clave(b, a)); hecho != m_bordes.end())
            return -hecho->second;
        CLinea<int> linea(kLinde);
        linea.Puntos() = {Punto(a), Punto(b)};
        return m_bordes[clave(a, b)] = Pon(std::make_unique<CLinea<int>>(linea));
    }

    void Cierra()
    {
        CCabeceraDibujo cabecera;
        cabecera.entidades = static_cast<unsigned>(m_entidades.size());
        cabecera.Write(&m_bin);
        for (const auto& entidad : m_entidades)
            entidad->Write(&m_bin);
        m_bin.Close();
    }

private:
    int Pon(std::unique_ptr<CEntidadVexa<int>> entidad)
    {
        const int posicion = m_posicion + 1;
        m_posicion += entidad->Bytes();
        m_entidades.push_back(std::move(entidad));
        return posicion;
    }

    CFile m_bin;
    int m_posicion = 0;
    std::vector<std::unique_ptr<CEntidadVexa<int>>> m_entidades;
    std::map<std::array<int, 4>, int> m_bordes;
};

CPoligonoTopologico NuevoPoligono(CDibujante& dibujo, const CContorno& contorno, int numero)
{
    CPoligonoTopologico poligono;
    poligono.NumPoligono(numero);
    for (std::size_t i = 0; i < contorno.size(); ++i) {
        poligono.InsertaTramo(dibujo.Borde(contorno[i], contorno[(i + 1) % contorno.size()]));
        poligono.Maximas().Nuevo(Punto(contorno[i]));
    }
    poligono.AreaPropia(AreaExacta(contorno));
    return poligono;
}

/// Writes a piece with its label. Its islands go into its own list and behind it by turns, as both
/// are found in real topologies.
void GrabaRecinto(CFile& topologia, CDibujante& dibujo, const CRecinto& recinto, int numero,
                  int rotulo)
{
    CPoligonoTopologico poligono = NuevoPoligono(dibujo, recinto.contorno, numero);
    poligono.Centroide(Punto(recinto.rotulo));
    poligono.PuntoInterior(Punto(recinto.rotulo));
    poligono.OffsetCentroide(rotulo);
    std::vector<CPoligonoTopologico> detras;
    for (const CContorno& hueco : recinto.huecos) {
        CPoligonoTopologico isla = NuevoPoligono(dibujo, hueco, numero);
        isla.Clase(CPoligonoTopologico::kIsla);
        isla.AreaPropia(-isla.AreaPropia());
        if (numero % 2 == 0)
            poligono.InsertaIsla(isla);
        else
            detras.push_back(isla);
    }
    poligono.Write(&topologia);
    for (const CPoligonoTopologico& isla : detras)
        isla.Write(&topologia);
}

/// The outline around outlines that lie side by side: the edges that only one of them has.
CContorno Alrededor(const std::vector<const CParcelaDibujada*>& parcelas)
{
    using CPar = std::pair<int, int>;
    const auto par = [](const CVertice& v) { return CPar(v.x, v.y); };
    std::set<std::pair<CPar, CPar>> bordes;
    for (const CParcelaDibujada* parcela : parcelas)
        for (const CRecinto& recinto : parcela->recintos)
            for (std::size_t i = 0; i < recinto.contorno.size(); ++i)
                bordes.emplace(par(recinto.contorno[i]),
                               par(recinto.contorno[(i + 1) % recinto.contorno.size()]));
    std::map<CPar, CPar> fuera;
    for (const auto& [a, b] : bordes)
        if (!bordes.contains({b, a}))
            fuera[a] = b;
    // The lowest corner lies on the outer outline and not on that of a parcel inside another one.
    CContorno contorno;
    const CPar inicio = fuera.begin()->first;
    for (CPar v = inicio; contorno.empty() || v != inicio; v = fuera.at(v))
        contorno.push_back({v.first, v.second});
    return contorno;
}

bool GrabaPoligono(const CString& base, short polig,
                   const std::vector<const CParcelaDibujada*>& parcelas)
{
    CDibujante dibujo;
    CFile par;
    CFile sub;
    CFile pol;
    if (!dibujo.Abre(base + ".BIN") || !par.Open(base + ".PAR", kModo) ||
        !sub.Open(base + ".SUB", kModo) || !pol.Open(base + ".POL", kModo))
        return false;
    int numPar = 0;
    int numSub = 0;
    for (const CParcelaDibujada* parcela : parcelas) {
        for (const CRecinto& recinto : parcela->recintos)
            GrabaRecinto(par, dibujo, recinto, ++numPar,
                         dibujo.Rotulo(kRotuloParcela, parcela->rotulo, recinto.rotulo));
        for (const CSubparcelaDibujada& suya : parcela->subparcelas)
            for (const CRecinto& recinto : suya.recintos)
                GrabaRecinto(
                    sub, dibujo, recinto, ++numSub,
                    dibujo.Rotulo(suya.construccion ? kRotuloConstruccion : kRotuloSubparcela,
                                  suya.rotulo, recinto.rotulo));
    }
    CString nombre;
    nombre.Format("%d", polig);
    const CRecinto todo{Alrededor(parcelas), {}, parcelas.front()->recintos.front().rotulo};
    GrabaRecinto(pol, dibujo, todo, 1, dibujo.Rotulo(kRotuloPoligono, nombre, todo.rotulo));
    dibujo.Cierra();
    par.Close();
    sub.Close();
    pol.Close();
    return true;
}

bool GrabaHojas(const CString& base, const std::vector<CHoja>& hojas)
{
    CDibujante dibujo;
    CFile top;
    if (!dibujo.Abre(base + ".BIN") || !top.Open(base + ".TOP", kModo))
        return false;
    int numero = 0;
    for (const CHoja& hoja : hojas) {
        const CRecinto recinto{hoja.contorno, {}, hoja.contorno.front()};
        GrabaRecinto(top, dibujo, recinto, ++numero,
                     dibujo.Rotulo(kRotuloHoja, hoja.nombre, recinto.rotulo));
    }
    dibujo.Cierra();
    top.Close();
    return true;
}

CString NombrePoligono(int polig)
{
    CString nombre;
    nombre.Format("%03d", polig);
    return nombre;
}

std::vector<std::string> LineasDeLista(const CMunicipioSintetico& municipio)
{
    CString linea;
    linea.Format("TREN %03d%03d VILLANUEVA", municipio.Ger, municipio.Mun);
    std::vector<std::string> lineas = {std::string(std::string_view(linea))};
    std::set<short> poligonos;
    for (const CParcelaDibujada& parcela : municipio.parcelas)
        if (poligonos.insert(parcela.datos.Polig).second) {
            linea.Format("P%03d", parcela.datos.Polig);
            lineas.emplace_back(std::string_view(linea));
        }
    return lineas;
}

/// A topology whose first polygon points past its drawing.
bool GrabaFueraDeFecha(const CString& nombre)
{
    CFile topologia;
    if (!topologia.Open(nombre, kModo))
        return false;
    CPoligonoTopologico poligono;
    poligono.OffsetCentroide(2000000000);
    poligono.Write(&topologia);
    topologia.Close();
    return true;
}

} // namespace

bool GrabaDibujos(const CString& carpeta, const CMunicipioSintetico& municipio)
{
    std::map<short, std::vector<const CParcelaDibujada*>> porPoligono;
    for (const CParcelaDibujada& parcela : municipio.parcelas)
        porPoligono[parcela.datos.Polig].push_back(&parcela);
    for (const auto& [polig, parcelas] : porPoligono)
        if (!GrabaPoligono(carpeta + "/" + NombrePoligono(polig), polig, parcelas))
            return false;
    return GrabaHojas(carpeta + "/ortos", municipio.hojas) &&
           GrabaLineas(carpeta + "/poligonos.txt", LineasDeLista(municipio));
}

void DesacuerdaDibujos(CMunicipioSintetico& municipio)
{
    std::vector<CParcelaDibujada>& p = municipio.parcelas;
    const auto esAbstracta = [](const CParcelaDibujada& parcela) {
        return !parcela.subparcelas.empty() &&
               parcela.subparcelas.front().datos.tipo == kTipoAbstracta;
    };
    p.at(0).rotulo = "9001";                     // of no parcel; its own is never drawn
    p.at(1).rotulo = "no es un número";          // reads as 0
    p.at(2).subparcelas.front().rotulo = "3-zz"; // a letter that the tables don't have
    p.at(3).subparcelas.pop_back();              // a subparcel that isn't drawn
    p.at(4).subparcelas.front().recintos.front().rotulo = {kOrigen.x - 100000,
                                                           kOrigen.y}; // in no parcel
    CRecinto& casi = p.at(5).subparcelas.front().recintos.front();     // two square metres less
    casi.huecos.push_back({casi.rotulo,
                           {casi.rotulo.x + kMalla, casi.rotulo.y},
                           {casi.rotulo.x + kMalla, casi.rotulo.y + kMalla / 2},
                           {casi.rotulo.x, casi.rotulo.y + kMalla / 2}});
    for (CParcelaDibujada& parcela : p) {
        if (!esAbstracta(parcela))
            continue;
        for (CRecinto& recinto : parcela.subparcelas.front().recintos)
            recinto.huecos.clear(); // the pond counts as land in the drawing
        parcela.subparcelas.front().recintos.back().contorno[0].x -= kMalla;
        break;
    }
}

bool EstropeaDibujos(const CString& carpeta, const CMunicipioSintetico& municipio)
{
    std::vector<std::string> lista = LineasDeLista(municipio);
    lista.emplace_back("P077");
    lista.emplace_back("Psin_numero");
    return GrabaLineas(carpeta + "/poligonos.txt", lista) &&
           GrabaFueraDeFecha(carpeta + "/003.PAR") && GrabaFueraDeFecha(carpeta + "/003.SUB") &&
           GrabaFueraDeFecha(carpeta + "/004.SUB");
}

} // namespace sintetico
