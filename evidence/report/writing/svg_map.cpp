#include "evidence/report/writing/svg_map.h"

#include <algorithm>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/svg_shapes.h"
#include "evidence/units.h"

namespace informe {
namespace {

using vexageo::CPunto;

/// How an outline stands with the messages.
enum class Trato { Bien, Aviso, Error, SinUso };

/// Classes of an outline, and of the label in it.
struct CClases {
    const char* recinto;
    const char* rotulo;
};

CClases Clases(Trato trato)
{
    constexpr CClases kClases[] = {{"ok", "r"}, {"avi", "ra"}, {"err", "re"}, {"sin", "rs"}};
    return kClases[static_cast<std::size_t>(trato)];
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

class CMapa {
public:
    CMapa(const CPoligonoDibujado& poligono, CComunDeMapas& comun)
        : m_poligono(poligono), m_comun(comun), m_hoja(poligono)
    {
    }

    bool Hay() const { return m_hoja.Hay(); }
    std::string Dibuja()
    {
        const int serie = ++m_comun.dibujados;
        const std::size_t quedan = std::min(m_comun.presupuesto.puntos, m_comun.presupuesto.deUno);
        Decide();
        if (m_nota != nullptr)
            m_svg.Bloque("p", {{"class", "nota"}}, m_nota);
        m_hoja.PonMapa(m_svg, "mapa", "Mapa del polígono " + std::to_string(m_poligono.polig),
                       EstiloTramas(serie), [&] {
                           PonTramas(m_svg, serie, static_cast<double>(m_hoja.Letra()) / 2);
                           PonRecintos(quedan);
                           m_svg.Hecho(m_rotulos.Toma());
                       });
        return m_svg.Toma();
    }

private:
    using CPosiciones = std::vector<std::uint32_t>;

    void PonContorno(const CRecintoDibujado& recinto, const std::string& clase,
                     const std::string& ancla, const std::string& titulo)
    {
        const bool nueva = !ancla.empty() && m_comun.anclas.Pon(ancla);
        const std::string parcela =
            std::to_string(m_poligono.polig) + "-" + std::to_string(recinto.parcela);
        const bool esPieza = recinto.piezas > 1 && recinto.letra.IsEmpty();
        const CAtributos atributos = {{"id", nueva ? ancla.c_str() : nullptr},
                                      {"class", clase},
                                      {"data-p", esPieza ? parcela.c_str() : nullptr},
                                      {"d", m_hoja.Camino(recinto)}};
        if (titulo.empty())
            m_svg.Figura("path", atributos).Linea();
        else
            m_svg.Bloque("path", atributos, [&] { m_svg.Elemento("title", {}, titulo); });
    }

    /// One error outweighs any number of warnings.
    Trato TratoDe(const CPosiciones& avisos) const
    {
        Trato trato = Trato::Bien;
        for (const std::uint32_t i : avisos) {
            if (m_comun.indice[i].mensaje != nullptr && !EsWarning(*m_comun.indice[i].mensaje))
                return Trato::Error;
            trato = Trato::Aviso;
        }
        return trato;
    }

    /// Draws what links to the first of the messages that the page shows; false where it shows
    /// none.
    bool ConEnlace(const CPosiciones& avisos, std::invocable auto dentro)
    {
        for (const std::uint32_t i : avisos)
            if (const std::string destino = m_comun.anclas.ALinea(i); !destino.empty()) {
                m_svg.Elemento("a", {{"href", destino}}, dentro);
                return true;
            }
        dentro();
        return false;
    }

    std::string Explica(const CPosiciones& avisos) const
    {
        std::string codigos;
        for (const std::uint32_t i : avisos) {
            const std::string codigo = Codigo(m_comun.indice[i]);
            if (codigos.find(codigo) == std::string::npos)
                codigos += (codigos.empty() ? ": " : ", ") + codigo;
        }
        return codigos;
    }

    void PonRotulo(const CRecintoDibujado& recinto, std::string_view texto, const char* clase)
    {
        const CSitioHoja sitio = m_hoja.Sitio(recinto.punto);
        m_rotulos.Bloque("text",
                         {{"class", clase},
                          {"x", sitio.x},
                          {"y", sitio.y},
                          {"data-w", CHojaSvg::Ancho(recinto.contorno)}},
                         texto);
    }

    void PonParcela(const CRecintoDibujado& recinto)
    {
        if (recinto.Valido()) {
            const CPosiciones avisos = m_comun.indice.DeParcela(m_poligono.polig, recinto.parcela);
            if (ConEnlace(avisos, [&] { PonParcelaValida(recinto, avisos); }))
                m_svg.Linea();
            return;
        }
        const std::string rotulo = Texto(recinto.rotulo);
        PonContorno(recinto, Clases(Trato::SinUso).recinto, {},
                    "Recinto" + (rotulo.empty() ? "" : " «" + rotulo + "»") + ": " +
                        Texto(NombreEstado(recinto.estado)));
        PonRotulo(recinto, rotulo.empty() ? "?" : rotulo, Clases(Trato::SinUso).rotulo);
    }

    void PonParcelaValida(const CRecintoDibujado& recinto, const CPosiciones& avisos)
    {
        const Trato trato = TratoDe(avisos);
        std::string titulo = "Parcela " + std::to_string(m_poligono.polig) + "-" +
                             std::to_string(recinto.parcela) + Explica(avisos);
        std::string clase = Clases(trato).recinto;
        const bool pierde = PierdeSuperficie(recinto);
        const bool noCuenta = pierde && recinto.pieza < recinto.piezas;
        const std::string metros = Superficie(EnMetrosCuadrados(recinto.areaRegistro));
        if (recinto.piezas > 1) {
            titulo += ", recinto " + std::to_string(recinto.pieza) + " de " +
                      std::to_string(recinto.piezas);
            titulo += noCuenta ? ": no cuentan sus " + metros : pierde ? ": cuenta éste" : "";
            clase += noCuenta ? " pieza perdida" : " pieza";
        }
        const CCambioParcela* const cambio = m_comun.cambios.De(m_poligono.polig, recinto.parcela);
        if (cambio != nullptr) {
            titulo += "; " + CMarcasDeCambio::EnPalabras(*cambio);
            clase += noCuenta ? "" : CMarcasDeCambio::Clase(*cambio);
        }
        PonContorno(recinto, clase,
                    avisos.empty() && !pierde && cambio == nullptr
                        ? ""
                        : CAnclas::DeParcela(m_poligono.polig, recinto.parcela),
                    titulo);
        PonRotulo(recinto, Texto(recinto.rotulo), noCuenta ? "rp" : Clases(trato).rotulo);
        if (noCuenta)
            PonRotulo(recinto, "−" + metros, "rm");
    }

    void PonSubparcela(const CRecintoDibujado& recinto)
    {
        if (!recinto.Valido()) {
            PonContorno(recinto, "sub sin", {},
                        "Subparcela: " + Texto(NombreEstado(recinto.estado)));
            return;
        }
        const std::string letra = Texto(recinto.letra);
        if (recinto.parcela < 0) {
            PonContorno(recinto, "sub err", {}, "Subparcela fuera de toda parcela: E109");
        } else {
            const CPosiciones avisos =
                m_comun.indice.DeSubparcela(m_poligono.polig, recinto.parcela, recinto.letra);
            const std::string nombre = "Subparcela " + std::to_string(m_poligono.polig) + "-" +
                                       std::to_string(recinto.parcela) + " " + letra;
            PonContorno(recinto, std::string("sub ") + Clases(TratoDe(avisos)).recinto, {},
                        avisos.empty() ? std::string() : nombre + Explica(avisos));
        }
        PonRotulo(recinto, letra, "rl");
    }

    /// A cross at the place that a message names; at the edge for one that lies outside the map.
    void PonSenal(const CPunto<int>& punto, std::uint32_t posicion)
    {
        const CSitioHoja donde = m_hoja.Sitio(punto);
        const CSitioHoja sitio = m_hoja.Dentro(donde);
        const bool fuera = donde.x != sitio.x || donde.y != sitio.y;
        const CAviso& aviso = m_comun.indice[posicion];
        const std::string ancla = CAnclas::DeSitio(aviso);
        const bool nueva = m_comun.anclas.Pon(ancla); // labels that lie upon one another have one
        ConEnlace({posicion}, [&] {
            m_svg.Elemento("path",
                           {{"id", nueva ? ancla.c_str() : nullptr},
                            {"class", "cruz"},
                            {"d", CaminoCruz(sitio, m_hoja.Letra())}},
                           [&] {
                               m_svg.Elemento("title", {},
                                              Codigo(aviso) + (fuera ? ", fuera del mapa" : ""));
                           });
            if (fuera)
                m_svg.Elemento("text",
                               {{"class", "re"}, {"x", sitio.x}, {"y", sitio.y}, {"dy", "-1.6em"}},
                               "fuera");
        });
        m_svg.Linea();
    }

    /// What of the polygon fits on the page.
    void Decide()
    {
        CPresupuesto& presupuesto = m_comun.presupuesto;
        const std::size_t tope = std::min(presupuesto.puntos, presupuesto.deUno);
        const std::size_t deParcelas = Puntos(m_poligono.parcelas);
        const std::size_t todos = deParcelas + Puntos(m_poligono.subparcelas);
        m_conSubparcelas = todos <= tope;
        m_soloAvisos = deParcelas > tope;
        if (m_soloAvisos)
            m_nota =
                "Es muy grande: el mapa no lleva más que las parcelas con mensajes, y no todas si "
                "son muchas.";
        else if (!m_conSubparcelas)
            m_nota = "Es grande: el mapa no lleva las subparcelas.";
        const std::size_t gasta = m_conSubparcelas ? todos : std::min(deParcelas, tope);
        presupuesto.puntos -= std::min(gasta, presupuesto.puntos);
    }

    void PonRecintos(std::size_t quedan)
    {
        for (const CRecintoDibujado& recinto : m_poligono.parcelas.recintos) {
            if (!Toca(recinto) || Puntos(recinto) > quedan)
                continue;
            quedan -= Puntos(recinto);
            PonParcela(recinto);
        }
        const std::vector<CRecintoDibujado>& subparcelas = m_poligono.subparcelas.recintos;
        if (m_conSubparcelas)
            for (const CRecintoDibujado& recinto : subparcelas)
                PonSubparcela(recinto);
        for (const CRecintoDibujado& recinto : subparcelas)
            if (recinto.Valido() && recinto.parcela < 0)
                if (const auto i = m_comun.indice.EnSitio(recinto.punto))
                    PonSenal(recinto.punto, *i);
    }

    bool PierdeSuperficie(const CRecintoDibujado& recinto) const
    {
        return recinto.piezas > 1 && m_comun.perdidas.contains({m_poligono.polig, recinto.parcela});
    }
    bool Toca(const CRecintoDibujado& recinto) const
    {
        return !m_soloAvisos || m_comun.indice.HayDeParcela(m_poligono.polig, recinto.parcela) ||
               PierdeSuperficie(recinto) ||
               m_comun.cambios.De(m_poligono.polig, recinto.parcela) != nullptr;
    }

    const CPoligonoDibujado& m_poligono;
    CComunDeMapas& m_comun;
    CHojaSvg m_hoja;
    CMarcas m_svg;
    CMarcas m_rotulos; // on top of all outlines
    bool m_conSubparcelas = true;
    bool m_soloAvisos = false;
    const char* m_nota = nullptr;
};

} // namespace

void PonLeyenda(CMarcas& marcas, bool conCambios)
{
    constexpr int kSerie = 0; // of no map
    constexpr struct {
        const char* clase;
        const char* texto;
        bool deCambio = false;
    } kMuestras[] = {{"ok", "parcela sin mensajes"},
                     {"err", "con errores (rayada)"},
                     {"avi", "con warnings (punteada)"},
                     {"sin", "recinto que la vuelta no ve (línea de puntos)"},
                     {"ok pieza", "parcela en varios recintos (línea partida)"},
                     {"ok pieza perdida", "recinto que no cuenta (relleno)"},
                     {"sub ok", "subparcela (línea fina)"},
                     {"ok nueva", "parcela nueva (relleno verde)", true},
                     {"ok cambiada", "de otro titular, participación o paraje (azul)", true},
                     {"ok medida", "de otra superficie u otras subparcelas (azul claro)", true}};
    const auto muestra = [&](const char* estilo, const char* texto, std::invocable auto dibujo) {
        marcas.Elemento("span", {{"class", "muestra"}}, [&] {
            marcas.Elemento("svg", {{"viewBox", "0 0 26 16"}, {"style", estilo}}, dibujo)
                .Texto(texto);
        });
    };
    const std::string tramas = EstiloTramas(kSerie);
    marcas.Bloque("p", {{"class", "leyenda"}}, [&] {
        for (const auto& una : kMuestras) {
            if (una.deCambio && !conCambios)
                continue;
            muestra(una.deCambio ? nullptr : tramas.c_str(), una.texto, [&] {
                if (una.clase == std::string_view(Clases(Trato::Error).recinto))
                    PonTramas(marcas, kSerie, 4);
                marcas.Figura("path", {{"class", una.clase}, {"d", "M1 1h24v14h-24z"}});
            });
            marcas.Linea();
        }
        muestra(nullptr, "sitio que nombra un mensaje", [&] {
            marcas.Figura("path", {{"class", "cruz"}, {"d", "M8 3l10 10m0 -10l-10 10"}});
        });
    });
}

std::string MapaSvg(const CPoligonoDibujado& poligono, CComunDeMapas& comun)
{
    CMapa mapa(poligono, comun);
    if (mapa.Hay())
        return mapa.Dibuja();
    CMarcas nota;
    nota.Bloque("p", {{"class", "nota"}}, "No hay recintos que dibujar.");
    return nota.Toma();
}

} // namespace informe
