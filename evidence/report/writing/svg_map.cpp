#include "evidence/report/writing/svg_map.h"

#include <algorithm>
#include <cmath>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/escapes.h"

namespace informe {
namespace {

using vexageo::CPunto;

constexpr int kDecimetro = 10; // in the drawing's unit

/// How an outline stands with the messages.
enum class Trato { Bien, Aviso, Error, SinUso };

const char* Clase(Trato trato)
{
    switch (trato) {
    case Trato::Error:
        return "err";
    case Trato::Aviso:
        return "avi";
    case Trato::SinUso:
        return "sin";
    case Trato::Bien:
        break;
    }
    return "ok";
}

std::size_t Puntos(const CRecintoDibujado& recinto)
{
    std::size_t puntos = recinto.contorno.size();
    for (const CIslaDibujada& isla : recinto.islas)
        puntos += isla.contorno.size();
    return puntos;
}

std::size_t Puntos(const CTopologiaDibujada& topologia)
{
    std::size_t puntos = 0;
    for (const CRecintoDibujado& recinto : topologia.recintos)
        puntos += Puntos(recinto);
    return puntos;
}

/// The patterns of one map: stripes and dots that are apart by `paso` of its units.
std::string Tramas(const std::string& serie, double paso)
{
    const auto n = [](double valor) {
        std::string texto;
        AnexaFormato(texto, "%.2lf", {valor});
        return texto;
    };
    const std::string lado = "\" width=\"" + n(2 * paso) + "\" height=\"" + n(2 * paso) +
                             "\" patternUnits=\"userSpaceOnUse\"";
    return "<defs><pattern id=\"te" + serie + lado +
           " patternTransform=\"rotate(45)\"><path "
           "class=\"te\" stroke-width=\"" +
           n(paso / 3) + "\" d=\"M0 0v" + n(2 * paso) + "M" + n(paso) + " 0v" + n(2 * paso) +
           "\"/></pattern><pattern id=\"ta" + serie + lado + "><circle class=\"ta\" cx=\"" +
           n(paso / 2) + "\" cy=\"" + n(paso / 2) + "\" r=\"" + n(paso / 4) +
           "\"/><circle class=\"ta\" cx=\"" + n(paso * 3 / 2) + "\" cy=\"" + n(paso * 3 / 2) +
           "\" r=\"" + n(paso / 4) + "\"/></pattern></defs>\n";
}

class CMapa {
public:
    CMapa(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice, CEnlaces& enlaces)
        : m_poligono(poligono), m_indice(indice), m_enlaces(enlaces)
    {
        for (const CTopologiaDibujada* topologia : {&poligono.parcelas, &poligono.subparcelas})
            for (const CRecintoDibujado& recinto : topologia->recintos)
                for (const CPunto<int>& punto : recinto.contorno)
                    m_maximas.Nuevo(punto);
    }

    bool Hay() const { return m_maximas.Hay; }
    std::string Dibuja(CPresupuesto& presupuesto);

private:
    struct CSitioMapa {
        long long x;
        long long y;
    };

    CSitioMapa Sitio(const CPunto<int>& punto) const
    {
        const auto decimetros = [](long long a, long long b) { return (a - b) / kDecimetro; };
        return {decimetros(punto.X, m_maximas.Minimo.X), decimetros(m_maximas.Maximo.Y, punto.Y)};
    }
    long long Ancho() const { return Sitio(m_maximas.Maximo).x + 1; }
    long long Alto() const { return Sitio(m_maximas.Minimo).y + 1; }
    /// Size of a letter that can be read on a page.
    long long Letra() const { return std::max<long long>(std::max(Ancho(), Alto()) / 70, 1); }

    void PonAnillo(const std::vector<CPunto<int>>& anillo);
    void PonContorno(const CRecintoDibujado& recinto, const char* clase, const std::string& ancla,
                     const std::string& titulo);
    void PonParcela(const CRecintoDibujado& recinto);
    void PonSubparcela(const CRecintoDibujado& recinto);
    void PonRotulo(const CRecintoDibujado& recinto, std::string_view texto, const char* clase);
    void PonSenal(const CPunto<int>& punto, std::uint32_t posicion);
    void PonEscala();
    Trato TratoDe(const std::vector<std::uint32_t>& avisos) const;
    std::string Enlace(const std::vector<std::uint32_t>& avisos) const;
    std::string Explica(const std::vector<std::uint32_t>& avisos) const;
    void Decide(CPresupuesto& presupuesto);
    bool Toca(const CRecintoDibujado& recinto) const
    {
        return !m_soloAvisos || m_indice.HayDeParcela(m_poligono.polig, recinto.parcela);
    }

    const CPoligonoDibujado& m_poligono;
    const CIndiceAvisos& m_indice;
    CEnlaces& m_enlaces;
    vexageo::CMaximas<int> m_maximas;
    std::string m_svg;
    bool m_conSubparcelas = true;
    bool m_soloAvisos = false;
    std::string m_nota;
};

void CMapa::PonAnillo(const std::vector<CPunto<int>>& anillo)
{
    CSitioMapa antes{};
    bool primero = true;
    for (const CPunto<int>& punto : anillo) {
        const CSitioMapa sitio = Sitio(punto);
        if (primero)
            m_svg += "M" + std::to_string(sitio.x) + " " + std::to_string(sitio.y) + "l";
        else if (sitio.x != antes.x || sitio.y != antes.y)
            m_svg +=
                std::to_string(sitio.x - antes.x) + " " + std::to_string(sitio.y - antes.y) + " ";
        antes = sitio;
        primero = false;
    }
    if (!primero)
        m_svg += "0 0z";
}

void CMapa::PonContorno(const CRecintoDibujado& recinto, const char* clase,
                        const std::string& ancla, const std::string& titulo)
{
    m_svg += "<path";
    if (!ancla.empty() && m_enlaces.hechas.insert(ancla).second)
        m_svg += " id=\"" + ancla + "\"";
    m_svg += std::string(" class=\"") + clase + "\" d=\"";
    PonAnillo(recinto.contorno);
    for (const CIslaDibujada& isla : recinto.islas)
        PonAnillo(isla.contorno);
    m_svg += titulo.empty() ? "\"/>\n" : "\"><title>" + Html(titulo) + "</title></path>\n";
}

Trato CMapa::TratoDe(const std::vector<std::uint32_t>& avisos) const
{
    Trato trato = Trato::Bien;
    for (const std::uint32_t i : avisos) {
        if (m_indice[i].mensaje != nullptr && !EsWarning(*m_indice[i].mensaje))
            return Trato::Error;
        trato = Trato::Aviso;
    }
    return trato;
}

std::string CMapa::Enlace(const std::vector<std::uint32_t>& avisos) const
{
    for (const std::uint32_t i : avisos)
        if (std::string ancla = m_enlaces.ancla(i); !ancla.empty())
            return ancla;
    return {};
}

std::string CMapa::Explica(const std::vector<std::uint32_t>& avisos) const
{
    std::string codigos;
    for (const std::uint32_t i : avisos) {
        const std::string codigo = Codigo(m_indice[i]);
        if (codigos.find(codigo) == std::string::npos)
            codigos += (codigos.empty() ? ": " : ", ") + codigo;
    }
    return codigos;
}

void CMapa::PonRotulo(const CRecintoDibujado& recinto, std::string_view texto, const char* clase)
{
    const CSitioMapa sitio = Sitio(recinto.punto);
    m_svg += std::string("<text class=\"") + clase + "\" x=\"" + std::to_string(sitio.x) +
             "\" y=\"" + std::to_string(sitio.y) + "\">" + Html(texto) + "</text>\n";
}

void CMapa::PonParcela(const CRecintoDibujado& recinto)
{
    if (!recinto.Valido()) {
        const std::string rotulo =
            recinto.rotulo.IsEmpty() ? "" : " «" + Texto(recinto.rotulo) + "»";
        PonContorno(recinto, Clase(Trato::SinUso), {},
                    "Recinto" + rotulo + ": " + Texto(NombreEstado(recinto.estado)));
        PonRotulo(recinto, recinto.rotulo.IsEmpty() ? "?" : Texto(recinto.rotulo), "rs");
        return;
    }
    const std::vector<std::uint32_t> avisos = m_indice.DeParcela(m_poligono.polig, recinto.parcela);
    const std::string nombre =
        std::to_string(m_poligono.polig) + "-" + std::to_string(recinto.parcela);
    const std::string enlace = Enlace(avisos);
    if (!enlace.empty())
        m_svg += "<a href=\"#" + enlace + "\">";
    std::string titulo = "Parcela " + nombre + Explica(avisos);
    std::string clase = Clase(TratoDe(avisos));
    if (recinto.piezas > 1) {
        titulo +=
            ", recinto " + std::to_string(recinto.pieza) + " de " + std::to_string(recinto.piezas);
        clase += " pieza";
    }
    PonContorno(recinto, clase.c_str(), avisos.empty() ? "" : "p" + nombre, titulo);
    const Trato trato = TratoDe(avisos);
    PonRotulo(recinto, Texto(recinto.rotulo),
              trato == Trato::Error   ? "re"
              : trato == Trato::Aviso ? "ra"
                                      : "r");
    if (!enlace.empty())
        m_svg += "</a>\n";
}

void CMapa::PonSubparcela(const CRecintoDibujado& recinto)
{
    if (!recinto.Valido()) {
        PonContorno(recinto, "sub sin", {}, "Subparcela: " + Texto(NombreEstado(recinto.estado)));
        return;
    }
    if (recinto.parcela < 0) {
        PonContorno(recinto, "sub err", {}, "Subparcela fuera de toda parcela: E109");
        PonRotulo(recinto, Texto(recinto.letra), "rl");
        return;
    }
    const std::vector<std::uint32_t> avisos =
        m_indice.DeSubparcela(m_poligono.polig, recinto.parcela, recinto.letra);
    const std::string clase = std::string("sub ") + Clase(TratoDe(avisos));
    const std::string nombre = std::to_string(m_poligono.polig) + "-" +
                               std::to_string(recinto.parcela) + " " + Texto(recinto.letra);
    PonContorno(recinto, clase.c_str(), {},
                avisos.empty() ? std::string() : "Subparcela " + nombre + Explica(avisos));
    PonRotulo(recinto, Texto(recinto.letra), "rl");
}

/// A cross at the place that a message names; at the edge for one that lies outside the map.
void CMapa::PonSenal(const CPunto<int>& punto, std::uint32_t posicion)
{
    const CSitioMapa donde = Sitio(punto);
    const CSitioMapa sitio = {std::clamp(donde.x, 0LL, Ancho()), std::clamp(donde.y, 0LL, Alto())};
    const bool fuera = donde.x != sitio.x || donde.y != sitio.y;
    const std::string brazo = std::to_string(Letra());
    const std::string dos = std::to_string(2 * Letra());
    const std::string ancla = "s" + std::to_string(m_indice[posicion].linea);
    const std::string enlace = m_enlaces.ancla(posicion);
    if (!enlace.empty())
        m_svg += "<a href=\"#" + enlace + "\">";
    m_svg += "<path id=\"" + ancla + "\" class=\"cruz\" d=\"M" + std::to_string(sitio.x) + " " +
             std::to_string(sitio.y) + "m-" + brazo + " -" + brazo + "l" + dos + " " + dos +
             "m0 -" + dos + "l-" + dos + " " + dos + "\"><title>" + Codigo(m_indice[posicion]) +
             (fuera ? ", fuera del mapa" : "") + "</title></path>";
    if (fuera)
        m_svg += "<text class=\"re\" x=\"" + std::to_string(sitio.x) + "\" y=\"" +
                 std::to_string(sitio.y) + "\" dy=\"-1.6em\">fuera</text>";
    m_svg += enlace.empty() ? "\n" : "</a>\n";
    m_enlaces.hechas.insert(ancla);
}

/// A bar of a round length, and where north is.
void CMapa::PonEscala()
{
    const double metros = static_cast<double>(std::max(Ancho(), Alto())) / kDecimetro / 5;
    const double decena = std::pow(10.0, std::floor(std::log10(std::max(metros, 1.0))));
    const double veces = metros / decena;
    const double redondo = std::max(decena * (veces >= 5 ? 5 : veces >= 2 ? 2 : 1), 1.0);
    const long long letra = Letra();
    const auto n = [](long long valor) { return std::to_string(valor); };
    const long long y = Alto() + 2 * letra;
    const long long largo = static_cast<long long>(redondo) * kDecimetro;
    m_svg += "<path class=\"escala\" d=\"M0 " + n(y) + "v" + n(letra) + "h" + n(largo) + "v-" +
             n(letra) + "\"/><text class=\"pie\" x=\"" + n(largo + letra) + "\" y=\"" +
             n(y + letra) + "\">" + Miles(static_cast<std::int64_t>(redondo)) + " m</text>\n";
    const long long x = Ancho() - letra;
    m_svg += "<path class=\"norte\" d=\"M" + n(x) + " " + n(y - letra / 2) + "l-" + n(letra) + " " +
             n(3 * letra) + "l" + n(letra) + " -" + n(letra) + "l" + n(letra) + " " + n(letra) +
             "z\"><title>Norte</title></path><text class=\"pie\" x=\"" +
             n(x - 2 * letra - letra / 2) + "\" y=\"" + n(y + 2 * letra) + "\">N</text>\n";
}

void CMapa::Decide(CPresupuesto& presupuesto)
{
    const std::size_t tope = std::min(presupuesto.puntos, presupuesto.deUno);
    const std::size_t deParcelas = Puntos(m_poligono.parcelas);
    const std::size_t todos = deParcelas + Puntos(m_poligono.subparcelas);
    m_conSubparcelas = todos <= tope;
    m_soloAvisos = deParcelas > tope;
    if (!m_conSubparcelas)
        m_nota = "Es grande: el mapa no lleva las subparcelas.";
    if (m_soloAvisos)
        m_nota = "Es muy grande: el mapa no lleva más que las parcelas con mensajes, y no todas si "
                 "son muchas.";
    std::size_t gasta = m_conSubparcelas ? todos : std::min(deParcelas, tope);
    presupuesto.puntos -= std::min(gasta, presupuesto.puntos);
}

std::string CMapa::Dibuja(CPresupuesto& presupuesto)
{
    std::size_t quedan = std::min(presupuesto.puntos, presupuesto.deUno);
    Decide(presupuesto);
    const long long letra = Letra();
    const auto n = [](long long valor) { return std::to_string(valor); };
    const std::string serie = std::to_string(++m_enlaces.mapas);
    m_svg = "<svg class=\"mapa\" role=\"img\" aria-label=\"Mapa del polígono " +
            n(m_poligono.polig) + "\" viewBox=\"-" + n(letra) + " -" + n(letra) + " " +
            n(Ancho() + 2 * letra) + " " + n(Alto() + 6 * letra) +
            "\" style=\"font-size:" + n(letra) + "px;--te:url(#te" + serie + ");--ta:url(#ta" +
            serie + ")\">\n" + Tramas(serie, static_cast<double>(letra) / 2);
    for (const CRecintoDibujado& recinto : m_poligono.parcelas.recintos) {
        if (!Toca(recinto) || Puntos(recinto) > quedan)
            continue;
        quedan -= Puntos(recinto);
        PonParcela(recinto);
    }
    if (m_conSubparcelas)
        for (const CRecintoDibujado& recinto : m_poligono.subparcelas.recintos)
            PonSubparcela(recinto);
    for (const CRecintoDibujado& recinto : m_poligono.subparcelas.recintos)
        if (recinto.Valido() && recinto.parcela < 0)
            if (const auto i = m_indice.EnSitio(recinto.punto.X, recinto.punto.Y); i >= 0)
                PonSenal(recinto.punto, static_cast<std::uint32_t>(i));
    PonEscala();
    m_svg += "</svg>\n";
    return m_nota.empty() ? m_svg : "<p class=\"nota\">" + m_nota + "</p>\n" + m_svg;
}

} // namespace

std::string LeyendaSvg()
{
    const auto muestra = [](const char* clase, const char* texto) {
        return std::string("<span class=\"muestra\"><svg viewBox=\"0 0 26 16\" "
                           "style=\"--te:url(#te0);--ta:url(#ta0)\">") +
               (std::string_view(clase) == "err" ? Tramas("0", 4) : "") + "<path class=\"" + clase +
               "\" d=\"M1 1h24v14h-24z\"/></svg>" + texto + "</span>\n";
    };
    return "<p class=\"leyenda\">" + muestra("ok", "parcela sin mensajes") +
           muestra("err", "con errores (rayada)") + muestra("avi", "con warnings (punteada)") +
           muestra("sin", "recinto que la vuelta no ve (línea de puntos)") +
           muestra("ok pieza", "parcela en varios recintos (línea partida)") +
           muestra("sub ok", "subparcela (línea fina)") +
           "<span class=\"muestra\"><svg viewBox=\"0 0 26 16\"><path class=\"cruz\" d=\"M8 3l10 "
           "10m0 -10l-10 10\"/></svg>sitio que nombra un mensaje</span></p>\n";
}

std::string MapaSvg(const CPoligonoDibujado& poligono, const CIndiceAvisos& indice,
                    CEnlaces& enlaces, CPresupuesto& presupuesto)
{
    CMapa mapa(poligono, indice, enlaces);
    return mapa.Hay() ? mapa.Dibuja(presupuesto)
                      : "<p class=\"nota\">No hay recintos que dibujar.</p>\n";
}

} // namespace informe
