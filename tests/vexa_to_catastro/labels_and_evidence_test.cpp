#include <iterator>
#include <map>

#include "cadastre/wrapping.h"
#include "evidence/drawn_polygon.h"
#include "tests/vexa_to_catastro/run_fixture.h"

// Which labels count, and which parcel a subparcel lies in, stands in the run and once more in the
// evidence that explains it. Here drawings that nobody would think of are read by both.

namespace {

using sintetico::CSorteo;
using vexageo::CPunto;

constexpr int kMalla = 1000; // of the outlines' corners, so that they meet, overlap and repeat

struct CSubEsperada {
    std::string letra;
    int superficie;
    bool vista = false;
};
struct CParcelaEsperada {
    int numero;
    int superficie;
    std::vector<CSubEsperada> subs;
    bool vista = false;
};

/// Draws outlines, islands and labels of all kinds by lot.
class CDibujoAlAzar {
public:
    CDibujoAlAzar(CSorteo& sorteo, const CCarpetaPrueba& carpeta)
        : m_sorteo(sorteo), m_dibujo(carpeta), m_marco(m_dibujo.Cuadrado(0, 0, 20))
    {
        if (m_sorteo.UnoDeCada(3))
            m_dibujo.par.push_back({3, 77, 0, {m_marco}}); // in front of all: nobody's
        const int parcelas = 3 + m_sorteo.Hasta(7);
        for (int i = 0; i < parcelas; ++i)
            Pon(m_dibujo.par, "125201", NumeroAlAzar(), 1000.25 + 10 * i);
        const int subs = 4 + m_sorteo.Hasta(9);
        for (int i = 0; i < subs; ++i)
            Pon(m_dibujo.sub, m_sorteo.UnoDeCada(3) ? "125502" : "125501", LetraAlAzar(),
                100000.5 + 1000 * i);
        m_dibujo.Graba();
    }

private:
    CString NumeroAlAzar()
    {
        constexpr const char* kNumeros[] = {"1", "2", "3", "4", "5a", " 6", "7", "x", "", "-3"};
        return kNumeros[m_sorteo.UnoDeCada(4) ? m_sorteo.Hasta(10) : m_sorteo.Hasta(4)];
    }
    CString LetraAlAzar()
    {
        constexpr const char* kLetras[] = {"1-a", "b", "-c", "9-a-b", "", "x-"};
        return kLetras[m_sorteo.UnoDeCada(4) ? m_sorteo.Hasta(6) : m_sorteo.Hasta(3)];
    }
    int Coordenada(int paso) { return m_sorteo.Hasta(6 * kMalla / paso + 1) * paso; }

    /// The stretches of a ring, in one piece or in two, either of which may run the other way; now
    /// and then one more that can't be read.
    std::vector<int> Contorno()
    {
        constexpr int kLejos = 2000000000; // which no surface of 32 bits holds
        const int x = Coordenada(kMalla);
        const int y = Coordenada(kMalla);
        const int ancho = m_sorteo.UnoDeCada(40) ? kLejos : kMalla * (1 + m_sorteo.Hasta(4));
        const int alto = ancho == kLejos ? kLejos : kMalla * (1 + m_sorteo.Hasta(4));
        std::vector<CPunto<int>> anillo = {
            {x, y}, {x + ancho, y}, {x + ancho, y + alto}, {x, y + alto}, {x, y}};
        if (m_sorteo.UnoDeCada(4)) // a triangle
            anillo.erase(anillo.begin() + 1 + m_sorteo.Hasta(3));
        const auto mitad = anillo.begin() + 2;
        std::vector<int> tramos;
        if (m_sorteo.UnoDeCada(2)) {
            tramos = {m_dibujo.Linea({anillo.begin(), mitad + 1}),
                      -m_dibujo.Linea({anillo.rbegin(), std::reverse_iterator(mitad)})};
        } else {
            const int signo = m_sorteo.UnoDeCada(2) ? -1 : 1;
            tramos = {signo * m_dibujo.Linea(anillo)};
        }
        if (m_sorteo.UnoDeCada(15))
            tramos.push_back(m_sorteo.UnoDeCada(2) ? 0 : kLejos);
        return tramos;
    }
    /// Position of a label; 0 for none.
    int Rotulo(const char* codigo, const CString& texto)
    {
        constexpr const char* kAjenos[] = {"125201", "125501", "125202", "125001", ""};
        const int x = Coordenada(kMalla / 2);
        const int y = Coordenada(kMalla / 2);
        switch (m_sorteo.Hasta(24)) {
        case 0:
            return 0;
        case 1:
            return m_dibujo.Linea({{x, y}, {x, y}}, codigo);
        case 2:
            return m_dibujo.Rotulo(codigo, texto, x, y, true);
        case 3:
        case 4:
            return m_dibujo.Rotulo(kAjenos[m_sorteo.Hasta(5)], texto, x, y);
        case 5:
            if (m_sorteo.UnoDeCada(2))
                return m_marco + 1; // in the middle of an entity: the rest is out of date
            [[fallthrough]];
        default:
            return m_dibujo.Rotulo(codigo, texto, x, y);
        }
    }
    /// An outline with its islands, in its own list or behind it. Behind one that has no label they
    /// would be another one's surface, which no outline tells.
    void Pon(std::vector<CDibujoPrueba::CRegistro>& topologia, const char* codigo,
             const CString& texto, double area)
    {
        CDibujoPrueba::CRegistro registro{kParcela, area, Rotulo(codigo, texto), Contorno()};
        if (m_sorteo.UnoDeCada(3))
            registro.islas.push_back({kIsla, -m_sorteo.Hasta(90) / 4.0, 0, {m_marco}});
        const int detras = registro.rotulo > 0 ? m_sorteo.Hasta(3) : 0;
        topologia.push_back(registro);
        for (int i = 0; i < detras; ++i)
            topologia.push_back({kIsla, -m_sorteo.Hasta(90) / 4.0, 0, {m_marco}});
    }

    CSorteo& m_sorteo;
    CDibujoPrueba m_dibujo;
    int m_marco;
};

class RotulosYEvidencia : public Cruce {
protected:
    CParcelaEsperada* Busca(int numero)
    {
        const auto suya = std::find_if(esperadas.begin(), esperadas.end(),
                                       [&](const auto& p) { return p.numero == numero; });
        return suya == esperadas.end() ? nullptr : &*suya;
    }

    void SorteaTablas(CSorteo& sorteo)
    {
        esperadas.clear();
        tablas["Parcelas"].clear();
        tablas["Subparcelas"].clear();
        for (int numero = 1; numero <= 6; ++numero) {
            if (sorteo.UnoDeCada(4))
                continue;
            CParcelaEsperada parcela{numero, 500 + numero, {}};
            Parcela(std::to_string(numero), std::to_string(parcela.superficie));
            for (const char* letra : {"a", "b", "c"}) {
                if (sorteo.UnoDeCada(3))
                    continue;
                parcela.subs.push_back({letra, 70000 + numero});
                Subparcela(std::to_string(numero), letra, std::to_string(70000 + numero));
            }
            esperadas.push_back(parcela);
        }
    }

    /// What the run must do, if the evidence is right.
    void Cree(const CPoligonoDibujado& dibujado, bool crea)
    {
        CStdioFile log;
        ASSERT_TRUE(log.Open(carpeta.En("esperado.ERR"), CFile::modeCreate | CFile::modeWrite));
        cajas = 0;
        for (const CRecintoDibujado& recinto : dibujado.parcelas.recintos)
            CreeParcela(recinto, crea, log);
        for (const CRecintoDibujado& recinto : dibujado.subparcelas.recintos)
            CreeSubparcela(recinto, log);
        for (const CParcelaEsperada& parcela : esperadas) {
            if (!parcela.vista) {
                EscribeMensaje(log, kParcelaNoEnGrafico, 1, parcela.numero);
                continue;
            }
            for (const CSubEsperada& sub : parcela.subs)
                if (!sub.vista)
                    EscribeMensaje(log, kSubparcelaNoEnGrafico, 1, parcela.numero,
                                   CString(sub.letra));
        }
        log.Close();
    }

    /// The same of what the run said and wrote. What surfaces come to is no matter of labels.
    Textos MensajesDeRotulos() const
    {
        Textos suyos;
        for (const std::string& mensaje : Mensajes())
            if (!mensaje.starts_with("E112") && !mensaje.starts_with("W30"))
                suyos.push_back(mensaje);
        return suyos;
    }
    using CSuperficies = std::multimap<std::string, int>; // by number, or number and letter
    CSuperficies Escritas() const
    {
        CSuperficies escritas;
        for (const std::string& r : Registros("PR"))
            escritas.emplace(r.substr(16, 5), LeeEntero(r.substr(21, 9)));
        for (const std::string& r : Registros("SP"))
            escritas.emplace(r.substr(16, 9), LeeEntero(r.substr(28, 9)));
        return escritas;
    }
    CSuperficies Esperadas() const
    {
        CSuperficies suyas;
        for (const CParcelaEsperada& parcela : esperadas) {
            CString numero;
            numero.Format("%05d", parcela.numero);
            suyas.emplace(std::string_view(numero), parcela.superficie);
            for (const CSubEsperada& sub : parcela.subs) {
                CString letra;
                letra.Format("%s% 4s", numero, CString(sub.letra));
                suyas.emplace(std::string_view(letra), sub.superficie);
            }
        }
        return suyas;
    }

    std::vector<CParcelaEsperada> esperadas;
    int cajas = 0; ///< that tell of what is out of date

private:
    void CreeParcela(const CRecintoDibujado& recinto, bool crea, CStdioFile& log)
    {
        cajas += recinto.estado == EstadoRecinto::FueraDeFecha ? 1 : 0;
        if (!recinto.Valido())
            return;
        if (Busca(recinto.parcela) == nullptr) {
            EscribeMensaje(log, kParcelaNoEnBase, 1, recinto.parcela);
            if (!crea)
                return;
            if (recinto.parcela <= 0) {
                EscribeMensaje(log, kParcelaNoInsertada, 1, recinto.parcela);
                return;
            }
            esperadas.push_back({recinto.parcela, 0, {}});
        }
        CParcelaEsperada& parcela = *Busca(recinto.parcela);
        parcela.vista = true;
        parcela.superficie = Corta(recinto.areaRegistro + 0.5);
        cajas += recinto.tramosPerdidos;
    }
    void CreeSubparcela(const CRecintoDibujado& recinto, CStdioFile& log)
    {
        cajas += recinto.estado == EstadoRecinto::FueraDeFecha ? 1 : 0;
        if (!recinto.Valido())
            return;
        if (recinto.parcela < 0) {
            EscribeMensaje(log, kSubparcelaFuera, recinto.letra, recinto.punto.X * 0.01,
                           recinto.punto.Y * 0.01);
            return;
        }
        CParcelaEsperada* parcela = Busca(recinto.parcela);
        ASSERT_NE(parcela, nullptr) << recinto.parcela;
        const std::string letra(std::string_view(recinto.letra));
        auto suya = std::find_if(parcela->subs.begin(), parcela->subs.end(),
                                 [&](const CSubEsperada& sub) { return sub.letra == letra; });
        if (suya == parcela->subs.end()) {
            EscribeMensaje(log, kSubparcelaNoEnBase, 1, recinto.parcela, recinto.letra);
            suya = parcela->subs.insert(suya, {letra, 0});
        }
        suya->vista = true;
        suya->superficie = Corta(recinto.areaRegistro + 0.5);
    }
};

} // namespace

TEST_F(RotulosYEvidencia, SayTheSameOfEachOutline)
{
    constexpr int kDibujos = 100;
    std::map<EstadoRecinto, int> estados;
    int fuera = 0;
    for (int semilla = 1; semilla <= kDibujos && !HasFailure(); ++semilla) {
        SCOPED_TRACE(semilla);
        CSorteo sorteo(static_cast<std::uint64_t>(semilla));
        SorteaTablas(sorteo);
        const CDibujoAlAzar dibujo(sorteo, carpeta);
        const bool crea = sorteo.UnoDeCada(2);
        const CPoligonoDibujado dibujado =
            LeePoligonoDibujado(carpeta.En(""), "1", [&](int, int parcela) {
                return crea ? parcela > 0 : Busca(parcela) != nullptr;
            });
        for (const CTopologiaDibujada* topologia : {&dibujado.parcelas, &dibujado.subparcelas})
            for (const CRecintoDibujado& recinto : topologia->recintos)
                ++estados[recinto.estado];
        for (const CRecintoDibujado& recinto : dibujado.subparcelas.recintos)
            fuera += recinto.Valido() && recinto.parcela < 0 ? 1 : 0;
        Cree(dibujado, crea);

        Ejecuta(0, 1, crea ? 1 : 0);
        EXPECT_EQ(MensajesDeRotulos(), Lineas("esperado.ERR"));
        EXPECT_EQ(Escritas(), Esperadas());
        int dichas = 0;
        for (const std::string& error : Errores())
            dichas += error.starts_with("E10") ? 1 : 0;
        EXPECT_EQ(dichas, cajas);
    }
    EXPECT_EQ(estados.size(), 8U) << "every state has come up";
    EXPECT_GT(fuera, kDibujos / 2);
}
