#include "evidence/report/report.h"

#include <algorithm>
#include <map>
#include <memory>

#include "evidence/report/findings/exchange_balance.h"
#include "evidence/report/findings/tables_balance.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/csv.h"
#include "evidence/report/writing/geojson.h"
#include "evidence/report/writing/page.h"
#include "evidence/report/writing/svg_map.h"

namespace informe {
namespace {

constexpr std::size_t kTodas = 5000; // lines of a log that a page shows as a whole
constexpr int kDeCadaUno = 150;      // of a longer log those of each number
constexpr std::size_t kAsuntos = 200;
constexpr std::size_t kPuntosSinMensajes = 50'000; // once drawn, only maps with messages follow

class CElaboracion {
public:
    CElaboracion(const CString& registro, const COpciones& opciones, CResultado& resultado)
        : m_opciones(opciones), m_resultado(resultado)
    {
        m_informe.ficheros = BuscaFicheros(registro, opciones);
        m_html = opciones.html;
        if (m_html.IsEmpty()) {
            m_html = registro;
            m_html.CambiaExtension("html");
        }
    }

    void Hace(const std::string& version, std::time_t hecho);

private:
    void MiraNombrados();
    bool CabenSalidas();
    void LeeEntradas();
    void OlvidaSalidas(CSuperficies& superficies);
    void Elige();
    void RecorreDibujos(const CSuperficies& superficies);
    void Mapa(const CPoligonoDibujado& poligono, CEnlaces& enlaces, CPresupuesto& presupuesto);
    void EscribeTodo();
    void Resume();
    void Queja(std::string queja) { m_resultado.quejas.push_back(std::move(queja)); }

    const COpciones& m_opciones;
    CResultado& m_resultado;
    CInforme m_informe;
    CCadena m_html;
    CListaPoligonos m_lista;
    std::unique_ptr<CIndiceAvisos> m_indice;
    std::unique_ptr<CSitios> m_sitios;
    std::unique_ptr<CGeoJson> m_geojson;
    std::int64_t m_sinMapa = 0;
};

/// Complains of files that the line names and that aren't there.
void CElaboracion::MiraNombrados()
{
    std::vector<CString> nombrados = m_opciones.con;
    nombrados.insert(nombrados.end(), {m_opciones.entrada, m_opciones.lista});
    for (const CString& nombre : nombrados)
        if (!nombre.IsEmpty() && !HayFichero(nombre))
            Queja("El archivo " + Texto(nombre) + " no existe");
    if (!m_opciones.tablas.IsEmpty())
        for (const CString& tabla : m_informe.ficheros.tablas)
            if (!HayFichero(tabla))
                Queja("El archivo " + Texto(tabla) + " no existe");
    CCadena ortos = m_opciones.ortos;
    if (!ortos.IsEmpty()) {
        ortos.CambiaExtension("TOP");
        if (!HayFichero(ortos))
            Queja("El archivo " + Texto(ortos) + " no existe");
    }
}

/// What is written must fall on nothing that was read, nor on one another.
bool CElaboracion::CabenSalidas()
{
    const CFicheros& f = m_informe.ficheros;
    std::vector<CString> leidos(f.tablas.begin(), f.tablas.end());
    leidos.insert(leidos.end(), {f.registro, f.entrada, f.lista, f.ficheroR, f.ficheroM});
    for (const CString& entrada : m_lista.entradas)
        for (const char* extension : {"BIN", "PAR", "SUB", "POL"})
            leidos.push_back(CFile::EnDisco(FicheroDeLista(f.carpeta, entrada, extension)));
    for (const char* extension : {"BIN", "TOP"}) {
        CCadena hojas = f.ortos;
        hojas.CambiaExtension(extension);
        leidos.push_back(f.ortos.IsEmpty() ? CString() : CFile::EnDisco(hojas));
    }
    for (const CString& salida : {CString(m_html), m_opciones.csv, m_opciones.geojson}) {
        if (salida.IsEmpty())
            continue;
        const bool ocupado = std::any_of(leidos.begin(), leidos.end(), [&](const CString& leido) {
            return !leido.IsEmpty() && CFile::SeriaElMismo(salida, leido);
        });
        if (ocupado) {
            Queja("El archivo " + Texto(salida) + " no se escribe, porque se lee o se escribe ya");
            return false;
        }
        leidos.push_back(salida);
    }
    return true;
}

/// Picks the lines that the page shows.
void CElaboracion::Elige()
{
    const auto& avisos = m_informe.registro.avisos;
    std::map<const CMensaje*, int> dichos;
    for (std::size_t i = 0; i < avisos.size(); ++i)
        if (avisos.size() <= kTodas || dichos[avisos[i].mensaje]++ < kDeCadaUno)
            m_informe.mostradas.insert(static_cast<std::uint32_t>(i));
    auto elegida = m_informe.mostradas.begin();
    RecorreRegistro(m_informe.ficheros.registro, [&](std::uint32_t linea, const CString& texto) {
        if (elegida == m_informe.mostradas.end() || *elegida + 1 != linea)
            return;
        m_informe.lineas.push_back({*elegida, Texto(texto)});
        ++elegida;
    });
}

void CElaboracion::Mapa(const CPoligonoDibujado& poligono, CEnlaces& enlaces,
                        CPresupuesto& presupuesto)
{
    const bool conMensajes = std::any_of(
        poligono.parcelas.recintos.begin(), poligono.parcelas.recintos.end(), [&](const auto& r) {
            return r.Valido() && m_indice->HayDeParcela(poligono.polig, r.parcela);
        });
    if (!conMensajes && presupuesto.puntos + kPuntosSinMensajes < CPresupuesto().puntos) {
        ++m_sinMapa;
        return;
    }
    CPoligonoRoto roto;
    const std::string falta = FaltaDelPoligono(poligono, roto);
    m_informe.mapas.push_back({"Polígono " + std::to_string(poligono.polig) + " (" +
                                   Texto(poligono.entrada) + ")" +
                                   (falta.empty() ? "" : ": " + falta),
                               MapaSvg(poligono, *m_indice, enlaces, presupuesto)});
}

void CElaboracion::RecorreDibujos(const CSuperficies& superficies)
{
    m_informe.dibujo.emplace(superficies, m_informe.registro);
    CEnlaces enlaces;
    enlaces.ancla = [&](std::uint32_t posicion) { return m_informe.Ancla(posicion); };
    CPresupuesto presupuesto;
    const CHayParcela hay = [&](int polig, int parcela) {
        return superficies.empty() || superficies.contains({polig, parcela});
    };
    m_sitios = std::make_unique<CSitios>(*m_indice);
    for (const CString& entrada : m_lista.entradas) {
        const CPoligonoDibujado poligono =
            LeePoligonoDibujado(m_informe.ficheros.carpeta, entrada, hay);
        m_informe.dibujo->Toma(poligono);
        m_sitios->Toma(poligono);
        if (m_geojson)
            m_geojson->Toma(poligono, *m_indice);
        Mapa(poligono, enlaces, presupuesto);
    }
    if (m_sinMapa > 0)
        m_informe.mapas.push_back(
            {"Otros", "<p class=\"nota\">" +
                          Cuantos(m_sinMapa, "polígono sin mensajes no lleva mapa",
                                  "polígonos sin mensajes no llevan mapa") +
                          ", para que la página se abra pronto.</p>\n"});
    m_informe.anclas = std::move(enlaces.hechas);
}

/// A run that was stopped left the outputs of an older one, which tell nothing of it.
void CElaboracion::OlvidaSalidas(CSuperficies& superficies)
{
    for (CPartida& partida : m_informe.balance.partidas)
        if (partida.titulo != kTituloLineas && partida.SePuedeDecir())
            partida.noSePuede = "el proceso no llegó a escribirlo";
    for (auto& [parcela, superficie] : superficies)
        superficie.escrita.reset();
}

void CElaboracion::LeeEntradas()
{
    CFicheros& ficheros = m_informe.ficheros;
    m_informe.registro = LeeRegistro(ficheros.registro);
    m_informe.vistos = MiraFicheros(ficheros, m_lista.entradas);
    CPersonas personas(m_informe.registro);
    CSuperficies superficies;
    if (ficheros.sentido == Sentido::Ida)
        m_informe.balance = BalanceIda(ficheros, m_informe.registro, personas);
    else if (ficheros.sentido == Sentido::Vuelta)
        m_informe.balance = BalanceVuelta(ficheros, m_informe.registro, personas, superficies);
    else
        m_informe.balance.notas = {"No se halló la entrada ni la lista del proceso; --entrada o "
                                   "--lista las nombran."};
    if (m_informe.Detenido())
        OlvidaSalidas(superficies);
    else if (ficheros.sentido == Sentido::Ida && SinSalidas(m_informe.vistos))
        m_informe.balance.notas.emplace_back(
            "No se halló ninguna tabla: si están en otra carpeta, --tablas la nombra.");
    Elige();
    m_indice = std::make_unique<CIndiceAvisos>(m_informe.registro);
    if (!m_opciones.geojson.IsEmpty())
        m_geojson = std::make_unique<CGeoJson>(m_opciones.geojson);
    if (ficheros.sentido == Sentido::Vuelta)
        RecorreDibujos(superficies);
    m_informe.asuntos =
        ReuneAsuntos({m_informe.registro, personas, ficheros.sentido, m_sitios.get(),
                      m_informe.dibujo ? &m_informe.dibujo->rotos : nullptr},
                     kAsuntos);
}

void CElaboracion::EscribeTodo()
{
    const CString& registro = m_informe.ficheros.registro;
    if (m_geojson) {
        m_geojson->TomaMensajes(m_informe.registro, registro, m_sitios.get());
        m_geojson->Cierra();
    }
    if (!m_opciones.csv.IsEmpty())
        EscribeCsv(m_opciones.csv, m_informe.registro, registro, m_sitios.get());
    CSalida pagina(m_html);
    EscribePagina(m_informe, [&](std::string_view html) { pagina.Escribe(html); });
    pagina.Cierra();
}

/// The summary by number.
void CElaboracion::Resume()
{
    const CRegistroLeido& registro = m_informe.registro;
    const Sentido sentido = m_informe.ficheros.sentido;
    std::string& texto = m_resultado.resumen;
    texto = Texto(m_informe.ficheros.registro) + ": ";
    texto += sentido == Sentido::Ida ? "ida, " : sentido == Sentido::Vuelta ? "vuelta, " : "";
    texto += Cuantos(registro.Errores(), "error", "errores") + ", " +
             Cuantos(registro.Warnings(), "warning", "warnings") + ", " +
             Cuantos(m_informe.asuntos.cuantos, "asunto", "asuntos") + ", " +
             Miles(m_informe.SinExplicar()) + " sin explicar\n";
    const auto renglon = [&](std::string_view codigo, std::int64_t cuantos,
                             const std::string& que) {
        constexpr std::size_t kAncho = 9;
        std::string cifra = Miles(cuantos);
        cifra.insert(0, kAncho - std::min(cifra.size(), kAncho), ' ');
        texto += "  " + std::string(codigo) + " " + cifra + "  " + que + "\n";
    };
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
            renglon(CodigoMensaje(mensaje), cuantos, Enunciado(mensaje));
    if (registro.Ajenas() > 0)
        renglon("-   ", registro.Ajenas(), "líneas que no son ningún mensaje");
    if (m_informe.Detenido())
        texto += "  El proceso se detuvo: lo que debía escribir falta o es más viejo.\n";
    texto += "  Informe en " + Texto(m_html) + "\n";
}

void CElaboracion::Hace(const std::string& version, std::time_t hecho)
{
    m_informe.version = version;
    m_informe.hecho = hecho;
    m_informe.csv = Texto(m_opciones.csv);
    MiraNombrados();
    if (!m_informe.ficheros.lista.IsEmpty())
        LeeLista(m_informe.ficheros.lista, m_lista);
    if (!CabenSalidas())
        return;
    LeeEntradas();
    EscribeTodo();
    Resume();
}

} // namespace

CResultado HazInforme(const CString& registro, const COpciones& opciones,
                      const std::string& version, std::time_t hecho)
{
    CResultado resultado;
    try {
        CElaboracion(registro, opciones, resultado).Hace(version, hecho);
    } catch (const CFileException& fallo) {
        resultado.quejas.push_back(Texto(fallo.Mensaje()));
    }
    return resultado;
}

} // namespace informe
