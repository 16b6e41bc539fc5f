#include "generator/synthetic_municipality.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

#include "generator/lattice.h"
#include "generator/synthetic_names.h"
#include "platform/ansi.h"

namespace sintetico {
namespace {

constexpr int kLado = 40 * kMalla;           // of a parcel's cell
constexpr int kTemblor = 8;                  // lattice steps that a corner may be off its cell's
constexpr int kEntrePoligonos = 50 * kMalla; // free ground between two polygons
constexpr int kMedioHueco = 5 * kMalla;      // of a square hole in a parcel
constexpr int kMedioMarca = 30;              // of the mark of a built component
constexpr int kLadoHoja = 350 * kMalla;
constexpr int kSolapeHoja = 30 * kMalla;
constexpr int kParcelasPorPoligono = 75;
constexpr int kMasPoligonos = 900;

template <std::size_t N>
const char* Uno(CSorteo& sorteo, const std::array<const char*, N>& textos)
{
    return textos[static_cast<std::size_t>(sorteo.Hasta(static_cast<int>(N)))];
}

class CGenerador {
public:
    CGenerador(const CMedidas& medidas, std::uint64_t semilla)
        : m_medidas(medidas), m_cuantas(medidas.parcelas), m_sorteo(semilla)
    {
    }

    CMunicipioSintetico Genera()
    {
        GeneraModulos();
        GeneraParajes();
        GeneraPersonas();
        RepartePersonas();
        GeneraPoligonos();
        GeneraHojas();
        return std::move(m_municipio);
    }

private:
    void GeneraModulos();
    void GeneraParajes();
    void GeneraPersonas();
    CTitular NuevaPersona();
    void RepartePersonas();
    void GeneraPoligonos();
    void GeneraPoligono(short polig, int celdas, CVertice esquina, int columnas);
    void GeneraHojas();
    CParcelaDibujada NuevaParcela(short polig, int numero, const std::vector<CRecinto>& recintos);
    void ParteParcela(CParcelaDibujada& parcela);
    void Guarda(CParcelaDibujada&& parcela) { m_municipio.parcelas.push_back(std::move(parcela)); }
    CSubparcelaDibujada NuevoSuelo(int orden);
    CSubparcelaDibujada NuevaConstruccion(int orden);
    int Hasta(int n) { return m_sorteo.Hasta(n); }

    CMedidas m_medidas;
    int m_cuantas;
    CSorteo m_sorteo;
    CMunicipioSintetico m_municipio;
    std::unordered_set<CString> m_nombres; // no two people share one, which would be a conflict
};

void CGenerador::GeneraModulos()
{
    for (const CCultivo& cultivo : kCultivos) {
        for (int inten = 1; inten <= kIntensidades; ++inten) {
            CModulo modulo;
            modulo.Cal = cultivo.clave;
            modulo.Denominacion = cultivo.nombre;
            modulo.Inten = inten;
            modulo.TipoEvalua = 1000 + Hasta(9000);
            modulo.Jornadas = 25 * Hasta(200);
            modulo.EConce1 = Hasta(100);
            modulo.VConce1 = Hasta(5000);
            modulo.Exen = m_sorteo.UnoDeCada(10) ? 'S' : 'N';
            modulo.ConIBI = 'S';
            modulo.ConJornadas = 'S';
            m_municipio.modulos.push_back(modulo);
        }
    }
}

void CGenerador::GeneraParajes()
{
    const int cuantos = std::clamp(m_cuantas / 20, 5, 9000);
    for (int i = 0; i < cuantos; ++i) {
        const auto vuelta = static_cast<int>(static_cast<std::size_t>(i) / kParajes.size());
        CString nombre = kParajes[static_cast<std::size_t>(i) % kParajes.size()];
        if (vuelta > 0)
            nombre.Format("%s %d", nombre, vuelta + 1);
        CParaje paraje(nombre);
        paraje.NumOrden = static_cast<short>(i + 1);
        m_municipio.parajes.push_back(paraje);
    }
}

CTitular CGenerador::NuevaPersona()
{
    constexpr int kIntentos = 12; // then nearly all names of three words, and of four, are taken
    CTitular persona;
    int intentos = 0;
    do {
        // One after another: the order in which a call's arguments are made is not the same
        // everywhere.
        const char* primero = Uno(m_sorteo, kApellidos);
        const char* segundo = Uno(m_sorteo, kApellidos);
        persona.Nombre.Format("%s %s %s", primero, segundo, Uno(m_sorteo, kNombres));
        if (m_nombres.contains(persona.Nombre))
            persona.Nombre.Format("%s %s", persona.Nombre, Uno(m_sorteo, kNombres));
        if (++intentos > kIntentos)
            persona.Nombre.Format("%s %s", persona.Nombre, Uno(m_sorteo, kNombres));
    } while (!m_nombres.insert(persona.Nombre).second);
    constexpr std::string_view kLetras = "TRWAGMYFPDXBNJZSQVHLCKE";
    const int numero = static_cast<int>(m_municipio.personas.size());
    const int dni = 1000000 + numero * 61 + Hasta(61);
    persona.NumOrden = numero + 1;
    persona.DNI.Format("%08d", dni);
    persona.letra = kLetras[static_cast<std::size_t>(dni) % kLetras.size()];
    persona.sig = Uno(m_sorteo, kVias);
    persona.nombreVia = Uno(m_sorteo, kCalles);
    persona.numPol = static_cast<short>(1 + Hasta(90));
    persona.Del = m_municipio.Ger;
    persona.MunDom = m_municipio.Mun;
    persona.CP = 45100 + Hasta(90);
    if (m_sorteo.UnoDeCada(3)) {
        persona.esc = Hasta(2) == 0 ? "IZ" : "DR";
        persona.plant.Format("%02d", 1 + Hasta(5));
        persona.puert = std::string_view("ABCDEF").substr(static_cast<std::size_t>(Hasta(6)), 1);
    }
    return persona;
}

void CGenerador::GeneraPersonas()
{
    const int cuantas = std::max(2, m_cuantas / 2);
    for (int i = 0; i < cuantas; ++i)
        m_municipio.personas.push_back(NuevaPersona());
    CTitular& ayuntamiento = m_municipio.personas.front();
    ayuntamiento.Nombre = "AYUNTAMIENTO DE VILLANUEVA DE LA CAÑADA BAJA"_ansi;
    ayuntamiento.DNI = "P4512700";
    ayuntamiento.letra = 'A';
    ayuntamiento.CJurid = 'P';
    ayuntamiento.Exen = 'S';
}

void CGenerador::RepartePersonas()
{
    const int n = static_cast<int>(m_municipio.personas.size());
    for (int i = 0; i < n; ++i) {
        std::vector<CParticipe> participes = {{i, 100}};
        const int otros = i > 0 && m_sorteo.UnoDeCada(6) ? 1 + Hasta(3) : 0;
        for (int k = 1; k <= otros && i + k < n; ++k)
            participes.push_back({(i + k * 7) % n, 0});
        const int cuantos = static_cast<int>(participes.size());
        for (CParticipe& participe : participes)
            participe.partici = 100 / cuantos;
        participes.front().partici += 100 % cuantos;
        m_municipio.numeros.push_back(participes);
    }
}

void CGenerador::GeneraPoligonos()
{
    const int poligonos = m_medidas.poligonos > 0
                              ? m_medidas.poligonos
                              : std::clamp(m_cuantas / kParcelasPorPoligono, 1, kMasPoligonos);
    const int porFila = static_cast<int>(std::ceil(std::sqrt(poligonos)));
    const int celdas = (m_cuantas + poligonos - 1) / poligonos;
    const int columnas = std::max(1, static_cast<int>(std::sqrt(celdas)));
    const int filas = (celdas + columnas - 1) / columnas;
    for (int p = 0; p < poligonos; ++p) {
        const CVertice esquina = {kOrigen.X + p % porFila * (columnas * kLado + kEntrePoligonos),
                                  kOrigen.Y + p / porFila * (filas * kLado + kEntrePoligonos)};
        const int suyas = m_cuantas / poligonos + (p < m_cuantas % poligonos ? 1 : 0);
        GeneraPoligono(static_cast<short>(p + 1), suyas, esquina, columnas);
    }
}

/// A grid of cells with shaken corners. Most are a parcel each; some have a pond or another parcel
/// inside, and here and there two make one parcel of two pieces.
void CGenerador::GeneraPoligono(short polig, int celdas, CVertice esquina, int columnas)
{
    const int filas = (celdas + columnas - 1) / columnas;
    std::vector<CVertice> vertices;
    for (int fila = 0; fila <= filas; ++fila)
        for (int columna = 0; columna <= columnas; ++columna) {
            const int x = esquina.X + columna * kLado + Hasta(kTemblor) * kMalla; // drawn first
            const int y = esquina.Y + fila * kLado + Hasta(kTemblor) * kMalla;
            vertices.emplace_back(x, y);
        }
    const auto celda = [&](int i) {
        const int a = i / columnas * (columnas + 1) + i % columnas;
        const auto v = [&](int k) { return vertices[static_cast<std::size_t>(k)]; };
        CRecinto recinto{{v(a), v(a + 1), v(a + columnas + 2), v(a + columnas + 1)}, {}, {}};
        recinto.rotulo = Medio(recinto.contorno[0], Centro(recinto.contorno));
        return recinto;
    };
    constexpr int kCadaEstanque = 29;
    constexpr int kCadaInterior = 37;
    constexpr int kCadaDoble = 53;
    int numero = 1;
    for (int i = 0; i < celdas; ++i) {
        CRecinto recinto = celda(i);
        const bool interior = i % kCadaInterior == 5;
        if (interior || i % kCadaEstanque == 7)
            recinto.huecos.push_back(Cuadrado(Centro(recinto.contorno), kMedioHueco));
        std::vector<CRecinto> recintos = {recinto};
        if (i % kCadaDoble == 11 && i + 1 < celdas)
            recintos.push_back(celda(++i));
        Guarda(NuevaParcela(polig, numero++, recintos));
        if (interior) {
            const CContorno hueco = recinto.huecos.front();
            Guarda(NuevaParcela(polig, numero++, {{hueco, {}, Centro(hueco)}}));
        }
    }
}

void CGenerador::GeneraHojas()
{
    CVertice menor = kOrigen;
    CVertice mayor = kOrigen;
    for (const CParcelaDibujada& parcela : m_municipio.parcelas) {
        mayor.X = std::max(mayor.X, parcela.recintos.back().rotulo.X);
        mayor.Y = std::max(mayor.Y, parcela.recintos.back().rotulo.Y);
    }
    const int filas = (mayor.Y - menor.Y) / kLadoHoja + 1;
    const int columnas = (mayor.X - menor.X) / kLadoHoja + 1;
    for (int fila = 0; fila < filas; ++fila) {
        for (int columna = 0; columna < columnas; ++columna) {
            const CVertice centro = {menor.X + columna * kLadoHoja + kLadoHoja / 2,
                                     menor.Y + fila * kLadoHoja + kLadoHoja / 2};
            CHoja hoja{{}, Cuadrado(centro, kLadoHoja / 2 + kSolapeHoja)};
            hoja.nombre.Format("0629-%d-%d", fila + 1, columna + 1);
            m_municipio.hojas.push_back(hoja);
        }
    }
    for (CParcelaDibujada& parcela : m_municipio.parcelas) {
        const CVertice& punto = parcela.recintos.back().rotulo;
        // The earlier of two sheets that overlap, so a strip of each belongs to the one before it.
        const auto orden = [](int distancia) {
            return std::max(0, (distancia - kSolapeHoja - 1) / kLadoHoja);
        };
        const int hoja = orden(punto.Y - menor.Y) * columnas + orden(punto.X - menor.X);
        parcela.datos.numOrtofoto = m_municipio.hojas[static_cast<std::size_t>(hoja)].nombre;
    }
}

CParcelaDibujada CGenerador::NuevaParcela(short polig, int numero,
                                          const std::vector<CRecinto>& recintos)
{
    CParcelaDibujada parcela{CParcela(polig, numero, 0, {}), 0, 0, "PR", recintos, {}, {}};
    const CRecinto& ultimo = recintos.back();
    const bool municipal = m_sorteo.UnoDeCada(25);
    parcela.numero = municipal ? 0 : Hasta(static_cast<int>(m_municipio.personas.size()));
    parcela.paraje = Hasta(static_cast<int>(m_municipio.parajes.size()));
    parcela.rotulo.Format("%d", numero);
    parcela.datos.Superficie = Area(ultimo);
    parcela.datos.valorCatastral = parcela.datos.Superficie * (20 + Hasta(60));
    parcela.datos.añoVal = 1996 + Hasta(10);
    parcela.datos.x = ultimo.rotulo.X / 1000 % 1000;
    parcela.datos.y = ultimo.rotulo.Y / 1000 % 1000;
    parcela.datos.claveConc = m_sorteo.UnoDeCada(40) ? 'C' : ' ';
    ParteParcela(parcela);
    return parcela;
}

/// Gives the parcel its subparcels. A whole one goes into pieces from a point inside it to one
/// corner after another; one with holes or of several pieces has one letter, now and then an
/// abstract one.
void CGenerador::ParteParcela(CParcelaDibujada& parcela)
{
    const CContorno& c = parcela.recintos.front().contorno;
    const CVertice centro = Centro(c);
    const std::array<std::vector<CContorno>, 4> cortes = {{
        {c},
        {{c[0], c[1], c[2], centro}, {c[2], c[3], c[0], centro}},
        {{c[0], c[1], c[2], centro}, {c[2], c[3], centro}, {c[3], c[0], centro}},
        {{c[0], c[1], centro}, {c[1], c[2], centro}, {c[2], c[3], centro}, {c[3], c[0], centro}},
    }};
    constexpr std::array kCortes = {0, 0, 0, 1, 1, 1, 1, 2, 2, 3};
    const int azar = kCortes[static_cast<std::size_t>(Hasta(static_cast<int>(kCortes.size())))];
    const int corte = m_medidas.subparcelas > 0 ? m_medidas.subparcelas - 1 : azar;
    const bool entera = parcela.recintos.size() > 1 || !parcela.recintos.front().huecos.empty();
    int orden = 0;
    const auto añade = [&](CSubparcelaDibujada sub, const std::vector<CRecinto>& recintos) {
        sub.recintos = recintos;
        sub.datos.superfic = sub.construccion ? 0 : Area(recintos.back());
        sub.rotulo.Format("%s-%s", parcela.rotulo, sub.datos.letra);
        parcela.subparcelas.push_back(std::move(sub));
    };
    if (entera) {
        añade(NuevoSuelo(orden++), parcela.recintos);
        // Each piece is compared with an abstract subparcel, so that only a single one can agree.
        if (parcela.recintos.size() == 1 && m_sorteo.UnoDeCada(3))
            parcela.subparcelas.back().datos.tipo = kTipoAbstracta;
    } else {
        for (const CContorno& contorno : cortes[static_cast<std::size_t>(corte)]) {
            const CVertice rotulo =
                contorno.size() == c.size() && corte == 0 ? Medio(c[2], centro) : Centro(contorno);
            añade(NuevoSuelo(orden++), {{contorno, {}, rotulo}});
        }
    }
    if (m_sorteo.UnoDeCada(5)) {
        const CVertice marca = Medio(c[1], centro);
        añade(NuevaConstruccion(orden), {{Cuadrado(marca, kMedioMarca), {}, marca}});
    }
}

CSubparcelaDibujada CGenerador::NuevoSuelo(int orden)
{
    CSubparcelaDibujada sub;
    const auto cultivo = static_cast<std::size_t>(Hasta(static_cast<int>(kCultivos.size())));
    sub.datos.letra = std::string(1, static_cast<char>('a' + orden));
    sub.datos.cE = kCultivos[cultivo].clave;
    sub.datos.cA = kCultivos[cultivo].clave;
    sub.datos.iE = static_cast<short>(1 + Hasta(kIntensidades));
    sub.datos.iA = sub.datos.iE;
    sub.datos.ejer = static_cast<short>(1998 + Hasta(8));
    sub.datos.descCultivo = kCultivos[cultivo].nombre;
    return sub;
}

CSubparcelaDibujada CGenerador::NuevaConstruccion(int orden)
{
    CSubparcelaDibujada sub;
    sub.construccion = true;
    sub.datos.letra = std::string(1, static_cast<char>('a' + orden));
    sub.datos.compCons = 1;
    sub.datos.descComponente = Uno(m_sorteo, kConstrucciones);
    sub.datos.largo = static_cast<short>(5 + Hasta(60));
    sub.datos.ancho = static_cast<short>(4 + Hasta(20));
    sub.datos.alto = static_cast<short>(2 + Hasta(7));
    sub.datos.volumen =
        static_cast<short>(sub.datos.largo * sub.datos.ancho * sub.datos.alto % 30000);
    sub.datos.añoC = static_cast<short>(1930 + Hasta(70));
    sub.datos.usoP = static_cast<short>(1 + Hasta(5));
    sub.datos.estC = std::string_view("NRD")[static_cast<std::size_t>(Hasta(3))];
    return sub;
}

} // namespace

int CSorteo::Hasta(int n)
{
    m_estado += 0x9E3779B97F4A7C15U;
    std::uint64_t z = m_estado;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    z ^= z >> 31U;
    return static_cast<int>((z >> 33U) % static_cast<std::uint64_t>(n));
}

CMunicipioSintetico Genera(const CMedidas& medidas, std::uint64_t semilla)
{
    return CGenerador(medidas, semilla).Genera();
}

} // namespace sintetico
