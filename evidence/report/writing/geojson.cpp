#include "evidence/report/writing/geojson.h"

#include <algorithm>
#include <set>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"
#include "platform/format.h"

namespace informe {
namespace {

using vexageo::CPunto;
using CAnillo = std::vector<CPunto<int>>;

std::string Metros(double centesimas)
{
    constexpr double kMetro = 0.01;
    std::string texto;
    AnexaFormato(texto, "%.2lf", {centesimas * kMetro});
    return texto;
}

std::string Coordenadas(const CPunto<int>& punto)
{
    return "[" + Metros(punto.X) + "," + Metros(punto.Y) + "]";
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
std::string Anillo(CAnillo anillo, bool hueco)
{
    constexpr std::size_t kMenos = 4;
    if (anillo.empty())
        return {};
    if (anillo.front().X != anillo.back().X || anillo.front().Y != anillo.back().Y)
        anillo.push_back(anillo.front());
    if (anillo.size() < kMenos)
        return {};
    if ((DobleAreaConSigno(anillo) < 0) != hueco)
        std::reverse(anillo.begin(), anillo.end());
    std::string texto;
    for (const CPunto<int>& punto : anillo)
        texto += (texto.empty() ? "[" : ",") + Coordenadas(punto);
    return texto + "]";
}

std::string Geometria(const CRecintoDibujado& recinto)
{
    std::string anillos = Anillo(recinto.contorno, false);
    if (anillos.empty())
        return "null";
    for (const CIslaDibujada& isla : recinto.islas)
        if (const std::string hueco = Anillo(isla.contorno, true); !hueco.empty())
            anillos += "," + hueco;
    return R"({"type":"Polygon","coordinates":[)" + anillos + "]}";
}

std::string Codigos(const CIndiceAvisos& indice, const std::vector<std::uint32_t>& avisos)
{
    std::set<std::string> codigos;
    for (const std::uint32_t i : avisos)
        codigos.insert(Codigo(indice[i]));
    std::string lista;
    for (const std::string& codigo : codigos)
        lista += (lista.empty() ? "" : ",") + Json(codigo);
    return "[" + lista + "]";
}

std::string Numero(int numero)
{
    return numero == CAviso::kNada ? "null" : std::to_string(numero);
}

} // namespace

CGeoJson::CGeoJson(const CString& nombre) : m_salida(nombre)
{
    m_salida.Escribe(
        R"({"type":"FeatureCollection","nota":"Coordenadas del dibujo, en metros.","features":[)");
}

void CGeoJson::Rasgo(const std::string& geometria, const std::string& propiedades)
{
    m_salida.Escribe(m_primero ? "\n" : ",\n");
    m_primero = false;
    m_salida.Escribe(R"({"type":"Feature","geometry":)" + geometria + R"(,"properties":{)" +
                     propiedades + "}}");
}

void CGeoJson::Recinto(const char* clase, int polig, const CRecintoDibujado& recinto,
                       const std::string& mensajes)
{
    const bool situado = recinto.Valido() && recinto.parcela >= 0;
    Rasgo(Geometria(recinto),
          std::string(R"("clase":")") + clase + R"(","poligono":)" + std::to_string(polig) +
              R"(,"parcela":)" + (situado ? std::to_string(recinto.parcela) : "null") +
              R"(,"letra":)" + (recinto.letra.IsEmpty() ? "null" : Json(Texto(recinto.letra))) +
              R"(,"rotulo":)" + Json(Texto(recinto.rotulo)) + R"(,"estado":)" +
              Json(Texto(NombreEstado(recinto.estado))) + R"(,"recinto":)" +
              std::to_string(recinto.pieza) + R"(,"recintos":)" + std::to_string(recinto.piezas) +
              R"(,"mensajes":)" + mensajes);
}

void CGeoJson::Toma(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice)
{
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos)
        Recinto("parcela", poligono.polig, recinto,
                recinto.Valido()
                    ? Codigos(indice, indice.DeParcela(poligono.polig, recinto.parcela))
                    : "[]");
    for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos) {
        std::vector<std::uint32_t> avisos;
        if (recinto.Valido() && recinto.parcela >= 0)
            avisos = indice.DeSubparcela(poligono.polig, recinto.parcela, recinto.letra);
        else if (const auto i = indice.EnSitio(recinto.punto.X, recinto.punto.Y); i >= 0)
            avisos = {static_cast<std::uint32_t>(i)};
        Recinto("subparcela", poligono.polig, recinto, Codigos(indice, avisos));
    }
}

void CGeoJson::TomaMensajes(const CRegistroLeido& registro, const CString& ficheroRegistro,
                            const CSitios* sitios)
{
    auto siguiente = registro.avisos.begin();
    RecorreRegistro(ficheroRegistro, [&](std::uint32_t /*linea*/, const CString& texto) {
        if (siguiente == registro.avisos.end())
            return;
        const CAviso& aviso = *siguiente++;
        const auto sitio = sitios == nullptr ? std::nullopt : sitios->De(aviso);
        Rasgo(sitio ? R"({"type":"Point","coordinates":)" + Coordenadas(*sitio) + "}" : "null",
              R"("clase":"mensaje","linea":)" + std::to_string(aviso.linea) + R"(,"codigo":)" +
                  (aviso.mensaje == nullptr ? "null" : Json(Codigo(aviso))) + R"(,"poligono":)" +
                  Numero(aviso.polig) + R"(,"parcela":)" + Numero(aviso.parcela) + R"(,"letra":)" +
                  (aviso.letra.IsEmpty() ? "null" : Json(Texto(aviso.letra))) + R"(,"texto":)" +
                  Json(Texto(texto)));
    });
}

void CGeoJson::Cierra()
{
    m_salida.Escribe("\n]}\n");
    m_salida.Cierra();
}

} // namespace informe
