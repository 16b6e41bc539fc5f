#include "evidence/report/writing/geojson.h"

#include <algorithm>
#include <set>

#include "evidence/report/reading/text.h"
#include "evidence/units.h"

namespace informe {
namespace {

using vexageo::CPunto;
using CAnillo = std::vector<CPunto<int>>;

void PonPunto(CJson& json, const CPunto<int>& punto)
{
    json.Lista([&] { json.Valor(EnMetros(punto.X)).Valor(EnMetros(punto.Y)); });
}

/// Twice the area, positive where the ring turns to the left.
double DobleAreaConSigno(const CAnillo& anillo)
{
    double doble = 0;
    for (std::size_t i = 0; i < anillo.size(); ++i) {
        const CPunto<int>& a = anillo[i];
        const CPunto<int>& b = anillo[(i + 1) % anillo.size()];
        doble += static_cast<double>(a.X) * b.Y - static_cast<double>(b.X) * a.Y;
    }
    return doble;
}

/// The ring as the form wants it: closed, outlines to the left and holes to the right; empty where
/// it isn't one.
CAnillo Ordenado(CAnillo anillo, bool hueco)
{
    constexpr std::size_t kMenos = 4;
    if (!anillo.empty() &&
        (anillo.front().X != anillo.back().X || anillo.front().Y != anillo.back().Y))
        anillo.push_back(anillo.front());
    if (anillo.size() < kMenos)
        return {};
    if ((DobleAreaConSigno(anillo) < 0) != hueco)
        std::ranges::reverse(anillo);
    return anillo;
}

void PonAnillo(CJson& json, const CAnillo& anillo)
{
    if (!anillo.empty())
        json.Lista([&] {
            for (const CPunto<int>& punto : anillo)
                PonPunto(json, punto);
        });
}

void PonGeometria(CJson& json, const char* tipo, std::invocable auto coordenadas)
{
    json.Objeto([&] {
        json.Campo("type", tipo).Campo("coordinates");
        coordenadas();
    });
}

void PonRecinto(CJson& json, const CRecintoDibujado& recinto)
{
    const CAnillo contorno = Ordenado(recinto.contorno, false);
    if (contorno.empty()) {
        json.Nulo();
        return;
    }
    PonGeometria(json, "Polygon", [&] {
        json.Lista([&] {
            PonAnillo(json, contorno);
            for (const CIslaDibujada& isla : recinto.islas)
                PonAnillo(json, Ordenado(isla.contorno, true));
        });
    });
}

std::optional<int> SiHay(int numero)
{
    return numero == CAviso::kNada ? std::nullopt : std::optional(numero);
}

std::optional<std::string> Letra(const CString& letra)
{
    return letra.IsEmpty() ? std::nullopt : std::optional(Texto(letra));
}

/// The messages that speak of a subparcel; of one in no parcel the one that names its place.
std::vector<std::uint32_t> AvisosDeSubparcela(const CIndiceAvisos& indice, int polig,
                                              const CRecintoDibujado& recinto)
{
    if (recinto.EsDeParcela())
        return indice.DeSubparcela(polig, recinto.parcela, recinto.letra);
    const auto i = indice.EnSitio(recinto.punto);
    return i ? std::vector{*i} : std::vector<std::uint32_t>();
}

} // namespace

CGeoJson::CGeoJson(const CString& nombre, CConjuntoSalidas& todas)
    : m_salida(nombre, kPrincipio, todas)
{
    m_salida.Escribe(kPrincipio);
}

void CGeoJson::Rasgo(std::invocable<CJson&> auto geometria, std::invocable<CJson&> auto propiedades)
{
    CJson json;
    json.Objeto([&] {
        json.Campo("type", "Feature").Campo("geometry");
        geometria(json);
        json.Campo("properties").Objeto([&] { propiedades(json); });
    });
    m_salida.Escribe(m_primero ? "\n" : ",\n"); // a line each, for who reads it as text
    m_salida.Escribe(json.Texto());
    m_primero = false;
}

void CGeoJson::Recinto(const char* clase, int polig, const CRecintoDibujado& recinto,
                       const CIndiceAvisos& indice, const std::vector<std::uint32_t>& avisos)
{
    std::set<std::string> codigos;
    for (const std::uint32_t i : avisos)
        codigos.insert(Codigo(indice[i]));
    Rasgo([&](CJson& json) { PonRecinto(json, recinto); },
          [&](CJson& json) {
              json.Campo("clase", clase).Campo("poligono", polig);
              json.Campo("parcela",
                         recinto.EsDeParcela() ? std::optional(recinto.parcela) : std::nullopt);
              json.Campo("letra", Letra(recinto.letra)).Campo("rotulo", Texto(recinto.rotulo));
              json.Campo("estado", Texto(NombreEstado(recinto.estado)));
              json.Campo("recinto", recinto.pieza).Campo("recintos", recinto.piezas);
              json.Campo("mensajes").Lista([&] {
                  for (const std::string& codigo : codigos)
                      json.Valor(codigo);
              });
          });
}

void CGeoJson::Toma(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice)
{
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
        Recinto("parcela", poligono.polig, recinto, indice,
                recinto.Valido() ? indice.DeParcela(poligono.polig, recinto.parcela)
                                 : std::vector<std::uint32_t>());
    for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos)
        Recinto("subparcela", poligono.polig, recinto, indice,
                AvisosDeSubparcela(indice, poligono.polig, recinto));
}

void CGeoJson::TomaMensajes(const CRegistroLeido& registro, const CLugaresDeAvisos* lugares)
{
    registro.RecorreConAvisos([&](const CAviso& aviso, const CString& texto) {
        const auto sitio = lugares == nullptr ? std::nullopt : lugares->De(aviso);
        Rasgo(
            [&](CJson& json) {
                if (sitio)
                    PonGeometria(json, "Point", [&] { PonPunto(json, *sitio); });
                else
                    json.Nulo();
            },
            [&](CJson& json) {
                json.Campo("clase", "mensaje").Campo("linea", aviso.linea);
                json.Campo("codigo",
                           aviso.mensaje == nullptr ? std::nullopt : std::optional(Codigo(aviso)));
                json.Campo("poligono", SiHay(aviso.polig)).Campo("parcela", SiHay(aviso.parcela));
                json.Campo("letra", Letra(aviso.letra)).Campo("texto", Texto(texto));
            });
    });
}

void CGeoJson::Cierra()
{
    m_salida.Escribe("\n]}\n");
    m_salida.Cierra();
}

} // namespace informe
