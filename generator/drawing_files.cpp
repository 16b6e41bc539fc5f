#include "generator/drawing_files.h"

#include <array>
#include <map>
#include <set>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/label_codes.h"
#include "generator/cadastre_lines.h"
#include "vexa_libs/drawing_writer.h"

using vexageo::CPoligonoTopologico;

namespace sintetico {
namespace {

constexpr UINT kModo = CFile::modeCreate | CFile::modeWrite;

CString FicheroDe(const CString& base, const char* extension)
{
    return base + "." + extension;
}

/// The drawing of a polygon in the making. Each edge is one line, shared by the outlines on both of
/// its sides.
class CDibujante {
public:
    bool Abre(const CString& nombre) { return m_dibujo.Abre(nombre); }
    void Cierra() { m_dibujo.Cierra(); }

    int Rotulo(const char* codigo, const CString& texto, const CVertice& donde)
    {
        return m_dibujo.Rotulo(codigo, texto, donde);
    }
    CPoligonoTopologico Poligono(const CContorno& contorno, int numero,
                                 std::int16_t clase = CPoligonoTopologico::kParcela)
    {
        std::vector<int> tramos;
        for (std::size_t i = 0; i < contorno.size(); ++i)
            tramos.push_back(Borde(contorno[i], contorno[(i + 1) % contorno.size()]));
        return vexageo::NuevoPoligono(numero, clase, contorno, tramos);
    }

private:
    /// Position of an edge, negative where it is drawn the other way.
    int Borde(const CVertice& a, const CVertice& b)
    {
        const auto clave = [](const CVertice& p, const CVertice& q) {
            return std::array<int, 4>{p.X, p.Y, q.X, q.Y};
        };
        if (const auto hecho = m_bordes.find(clave(a, b)); hecho != m_bordes.end())
            return hecho->second;
        if (const auto hecho = m_bordes.find(clave(b, a)); hecho != m_bordes.end())
            return -hecho->second;
        return m_bordes[clave(a, b)] = m_dibujo.Linea(kCodigoLinde, {a, b});
    }

    vexageo::CEscritorDibujo m_dibujo;
    std::map<std::array<int, 4>, int> m_bordes;
};

/// Writes a piece with its label. Its islands go into its own list and behind it by turns, as both
/// are found in real topologies.
void GrabaRecinto(CFile& topologia, CDibujante& dibujo, const CRecinto& recinto, int numero,
                  int rotulo)
{
    CPoligonoTopologico poligono = dibujo.Poligono(recinto.contorno, numero);
    vexageo::PonRotulo(poligono, rotulo, recinto.rotulo);
    std::vector<CPoligonoTopologico> detras;
    for (const CContorno& hueco : recinto.huecos) {
        const CPoligonoTopologico isla = dibujo.Poligono(hueco, numero, CPoligonoTopologico::kIsla);
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
    const auto par = [](const CVertice& v) { return CPar(v.X, v.Y); };
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
    if (!dibujo.Abre(FicheroDe(base, kExtensionDibujo)) ||
        !par.Open(FicheroDe(base, kExtensionParcelas), kModo) ||
        !sub.Open(FicheroDe(base, kExtensionSubparcelas), kModo) ||
        !pol.Open(FicheroDe(base, kExtensionPoligonos), kModo))
        return false;
    int numPar = 0;
    int numSub = 0;
    for (const CParcelaDibujada* parcela : parcelas) {
        for (const CRecinto& recinto : parcela->recintos)
            GrabaRecinto(par, dibujo, recinto, ++numPar,
                         dibujo.Rotulo(kCodigoParcela, parcela->rotulo, recinto.rotulo));
        for (const CSubparcelaDibujada& suya : parcela->subparcelas)
            for (const CRecinto& recinto : suya.recintos)
                GrabaRecinto(
                    sub, dibujo, recinto, ++numSub,
                    dibujo.Rotulo(suya.construccion ? kCodigoConstruccion : kCodigoSubparcela,
                                  suya.rotulo, recinto.rotulo));
    }
    const CRecinto todo{Alrededor(parcelas), {}, parcelas.front()->recintos.front().rotulo};
    GrabaRecinto(pol, dibujo, todo, 1,
                 dibujo.Rotulo(kCodigoPoligono, std::to_string(polig), todo.rotulo));
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
    if (!dibujo.Abre(FicheroDe(base, kExtensionDibujo)) ||
        !top.Open(FicheroDe(base, kExtensionHojas), kModo))
        return false;
    int numero = 0;
    for (const CHoja& hoja : hojas) {
        const CRecinto recinto{hoja.contorno, {}, hoja.contorno.front()};
        GrabaRecinto(top, dibujo, recinto, ++numero,
                     dibujo.Rotulo(kCodigoHoja, hoja.nombre, recinto.rotulo));
    }
    dibujo.Cierra();
    top.Close();
    return true;
}

std::vector<std::string> LineasDeLista(const CMunicipioSintetico& municipio)
{
    std::vector<std::string> lineas = {
        Formatea("TREN %03d%03d VILLANUEVA", municipio.Ger, municipio.Mun)};
    std::set<short> poligonos;
    for (const CParcelaDibujada& parcela : municipio.parcelas)
        if (poligonos.insert(parcela.datos.Polig).second)
            lineas.push_back(Formatea("P%03d", parcela.datos.Polig));
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
        if (!GrabaPoligono(carpeta + "/" + Formatea("%03d", polig), polig, parcelas))
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
    p.at(4).subparcelas.front().recintos.front().rotulo = {kOrigen.X - 100000,
                                                           kOrigen.Y}; // in no parcel
    CRecinto& casi = p.at(5).subparcelas.front().recintos.front();     // two square metres less
    casi.huecos.push_back({casi.rotulo,
                           {casi.rotulo.X + kMalla, casi.rotulo.Y},
                           {casi.rotulo.X + kMalla, casi.rotulo.Y + kMalla / 2},
                           {casi.rotulo.X, casi.rotulo.Y + kMalla / 2}});
    for (CParcelaDibujada& parcela : p) {
        if (!esAbstracta(parcela))
            continue;
        for (CRecinto& recinto : parcela.subparcelas.front().recintos)
            recinto.huecos.clear(); // the pond counts as land in the drawing
        parcela.subparcelas.front().recintos.back().contorno[0].X -= kMalla;
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
