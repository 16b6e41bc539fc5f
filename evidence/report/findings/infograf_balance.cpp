#include "evidence/report/findings/infograf_balance.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "cadastre/file_extensions.h"
#include "evidence/drawn_polygon.h"
#include "evidence/paths.h"
#include "evidence/report/reading/text.h"
#include "evidence/units.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/topology.h"

namespace informe {
namespace {

using vexageo::CPunto;
using vexageo::CTopologia;
using CClaves = std::vector<CClaveRegistro>;

constexpr ClaseTopologia kTopologias[] = {ClaseTopologia::Parcelas, ClaseTopologia::Poligonos,
                                          ClaseTopologia::Subparcelas};

constexpr int kAnchoLetras = 4; // columns of a subparcel's label, by which it is read back

/// An entry of the list as the run reads it.
struct CEntrada {
    CString nombre;
    std::array<std::optional<CTopologia>, kClasesInfograf> topologias;
};

CPunto<int> Punto(const CTopologia& topologia, int i)
{
    return topologia.DameCentroide(i, true);
}

int Numero(const CTopologia& topologia, int i)
{
    return LeeEntero(topologia.DameTextoCentroide(i));
}

/// Goes through the drawings by the rules of the run: which outlines get a record, and which none.
class CRecuento {
public:
    CRecuento(const CFicheros& ficheros, CEvidenciaInfograf& evidencia)
        : m_ficheros(ficheros), m_evidencia(evidencia)
    {
    }

    void Hace()
    {
        MiraOrtos();
        for (const CString& nombre : m_ficheros.lista.entradas)
            if (CEntrada entrada{nombre, {}}; Lee(entrada)) {
                TomaParcelas(entrada);
                TomaPoligonos(entrada);
                TomaSubparcelas(entrada);
            }
    }

    std::array<CClaves, kClasesInfograf> esperadas;

private:
    void MiraOrtos()
    {
        if (m_ficheros.ortos.IsEmpty())
            return Falta({}, "no se halló su gráfico");
        for (const char* extension : {ExtensionDe(ClaseTopologia::Hojas), kExtensionDibujo}) {
            CFile fichero;
            if (!AbreSiHay(fichero, ConExtension(m_ficheros.ortos, extension), CFile::anyCase))
                return Falta({}, std::string("falta su .") + extension);
        }
    }
    bool Lee(CEntrada& entrada)
    {
        const auto abre = [&](CFile& fichero, const char* extension) {
            return AbreSiHay(fichero,
                             FicheroDeLista(m_ficheros.lista.carpeta, entrada.nombre, extension),
                             kModoDibujo);
        };
        CFile bin;
        if (!abre(bin, kExtensionDibujo)) {
            Falta(entrada.nombre,
                  std::string("falta su .") + kExtensionDibujo + ", y no sale nada de él");
            return false;
        }
        std::string que;
        for (std::size_t clase = 0; clase < entrada.topologias.size(); ++clase) {
            CFile topologia;
            const char* const extension = ExtensionDe(kTopologias[clase]);
            if (abre(topologia, extension)) {
                bin.Seek(0);
                entrada.topologias[clase].emplace().Read(&bin, &topologia);
                entrada.topologias[clase]->OrdenaPoligonos();
                if (entrada.topologias[clase]->FaltaAlgo())
                    Falta(entrada, clase, "está dañado o fuera de fecha, y no sale todo de él");
            } else {
                que += (que.empty() ? "falta su ." : " y .") + std::string(extension);
            }
        }
        if (!que.empty())
            Falta(entrada.nombre, que);
        MiraSiEstaVacia(entrada, kDeParcela, kDeSubparcela);
        MiraSiEstaVacia(entrada, kDeSubparcela, kDeParcela);
        return true;
    }
    /// \param entrada  empty for the sheets
    void Falta(const CString& entrada, const std::string& que)
    {
        m_evidencia.faltan.push_back({entrada, que});
    }
    void Falta(const CEntrada& entrada, std::size_t clase, const char* que)
    {
        Falta(entrada.nombre, std::string("su .") + ExtensionDe(kTopologias[clase]) + " " + que);
    }
    /// Where the other one is empty as well, nothing is drawn there.
    void MiraSiEstaVacia(const CEntrada& entrada, ClaseInfograf clase, ClaseInfograf otra)
    {
        const auto cuantos = [&](ClaseInfograf cual) {
            return entrada.topologias[cual] ? entrada.topologias[cual]->Poligonos() : -1;
        };
        if (cuantos(clase) == 0 && cuantos(otra) > 0)
            Falta(entrada, clase, "está vacío");
    }
    void Espera(ClaseInfograf clase, const CTopologia& topologia, int i,
                const CClaveRegistro& clave)
    {
        ++m_evidencia.clases[clase].recintos;
        m_evidencia.clases[clase].dibujada += topologia.DameArea(i);
        m_evidencia.clases[clase].esperada += topologia.DameArea(i);
        esperadas[clase].push_back(clave);
    }
    void Huerfano(ClaseInfograf clase, const CEntrada& entrada, const CTopologia& topologia, int i,
                  const char* porque)
    {
        const std::string rotulo = TextoSinBlancos(topologia.DameTextoCentroide(i));
        const std::string que = clase == kDeParcela ? "parcela " : "subparcela ";
        ++m_evidencia.clases[clase].recintos;
        ++m_evidencia.clases[clase].huerfanos;
        m_evidencia.clases[clase].dibujada += topologia.DameArea(i);
        m_evidencia.sinPadre.push_back({entrada.nombre,
                                        que + (rotulo.empty() ? "sin rótulo" : "«" + rotulo + "»"),
                                        porque, Punto(topologia, i)});
    }

    /// A parcel lies in the polygon that holds its point, where there are polygons.
    void TomaParcelas(CEntrada& entrada)
    {
        std::optional<CTopologia>& parcelas = entrada.topologias[kDeParcela];
        const std::optional<CTopologia>& poligonos = entrada.topologias[kDePoligono];
        for (int i = 0; parcelas && i < parcelas->Poligonos(); ++i) {
            const int padre = poligonos ? poligonos->EncuentraPoligono(Punto(*parcelas, i)) : -1;
            parcelas->SetPadre(i, padre);
            if (poligonos && padre < 0)
                Huerfano(kDeParcela, entrada, *parcelas, i, "no cae en ningún polígono");
            else
                Espera(kDeParcela, *parcelas, i,
                       CClaveRegistro::DeParcela(poligonos ? Numero(*poligonos, padre) : 0,
                                                 Numero(*parcelas, i)));
        }
    }
    void TomaPoligonos(CEntrada& entrada)
    {
        const std::optional<CTopologia>& poligonos = entrada.topologias[kDePoligono];
        for (int i = 0; poligonos && i < poligonos->Poligonos(); ++i)
            Espera(kDePoligono, *poligonos, i, CClaveRegistro::DePoligono(Numero(*poligonos, i)));
    }
    /// A subparcel lies in a parcel, and through it in a polygon; where there are no parcels in the
    /// polygon that holds its point.
    void TomaSubparcelas(CEntrada& entrada)
    {
        const std::optional<CTopologia>& subparcelas = entrada.topologias[kDeSubparcela];
        const std::optional<CTopologia>& parcelas = entrada.topologias[kDeParcela];
        const std::optional<CTopologia>& poligonos = entrada.topologias[kDePoligono];
        for (int i = 0; subparcelas && i < subparcelas->Poligonos(); ++i) {
            const CPunto<int> punto = Punto(*subparcelas, i);
            const int parcela = parcelas ? parcelas->EncuentraPoligono(punto) : -1;
            const int padre = parcela >= 0 ? parcelas->GetPadre(parcela)
                              : poligonos  ? poligonos->EncuentraPoligono(punto)
                                           : -1;
            if (parcelas && parcela < 0)
                Huerfano(kDeSubparcela, entrada, *subparcelas, i, "no cae en ninguna parcela");
            else if (poligonos && padre < 0)
                Huerfano(kDeSubparcela, entrada, *subparcelas, i,
                         parcelas ? "su parcela no cae en ningún polígono"
                                  : "no cae en ningún polígono");
            else
                Espera(kDeSubparcela, *subparcelas, i,
                       CClaveRegistro::DeSubparcela(
                           poligonos ? Numero(*poligonos, padre) : 0,
                           parcelas ? Numero(*parcelas, parcela) : 0,
                           subparcelas->DameTextoCentroide(i).Left(kAnchoLetras)));
        }
    }

    const CFicheros& m_ficheros;
    CEvidenciaInfograf& m_evidencia;
};

/// What one kind of record is called on either side.
struct CNombres {
    Partida que;
    const char* recintos;
    const char* registros;
    const char* huerfanos;
};
constexpr std::array<CNombres, kClasesInfograf> kNombres = {
    {{Partida::Parcelas, "recintos de .PAR", "registros de parcela (12)",
      "en ningún polígono, sin mensaje"},
     {Partida::Poligonos, "recintos de .POL", "registros de polígono (13)", ""},
     {Partida::Subparcelas, "recintos de .SUB", "registros de subparcela (11)",
      "en ninguna parcela, o en ningún polígono, sin mensaje"}}};

/// The keys of the records of a kind, in their order; sums up their surfaces.
CClaves Halladas(const std::vector<CEscritosInfograf::CRegistro>& registros,
                 CEvidenciaInfograf::CClase& clase)
{
    CClaves halladas;
    for (const CEscritosInfograf::CRegistro& registro : registros) {
        halladas.push_back(registro.clave);
        clase.escrita += registro.area;
    }
    clase.registros = static_cast<std::int64_t>(halladas.size());
    return halladas;
}

/// What the surfaces say of records that are those of the drawings; empty where they are theirs.
std::string OtraSuperficie(const CEvidenciaInfograf::CClase& clase)
{
    constexpr double kRedondeo = 0.01; // of a record, in square metres
    const double puede = kRedondeo * static_cast<double>(clase.registros + 1);
    if (std::abs(clase.escrita - clase.esperada) <= puede)
        return {};
    return "los registros suman " + Superficie(EnMetrosCuadrados(clase.escrita)) +
           " y sus recintos " + Superficie(EnMetrosCuadrados(clase.esperada));
}

} // namespace

CBalance BalanceInfograf(const CFicheros& ficheros, CEvidenciaInfograf& evidencia)
{
    CRecuento recuento(ficheros, evidencia);
    recuento.Hace();
    const CEscritosInfograf escritos = LeeInfograf(ficheros.ficheroCsp);
    CBalance balance;
    bool esPrincipio = escritos.hay; // the records are the first ones of those that should be there
    bool falta = false;
    for (std::size_t i = 0; i < kClasesInfograf; ++i) {
        CEvidenciaInfograf::CClase& clase = evidencia.clases[i];
        const CClaves& esperadas = recuento.esperadas[i];
        const CClaves halladas = Halladas(escritos.clases[i], clase);
        const CNombres& nombres = kNombres[i];
        CPartida partida(nombres.que);
        partida.Entra(nombres.recintos, clase.recintos);
        partida.Sale(nombres.registros, clase.registros);
        partida.SalePerdido(nombres.huerfanos, clase.huerfanos);
        if (escritos.hay)
            Coteja(esperadas, halladas, partida);
        else
            partida.noSePuede = "no está el fichero CSP";
        if (partida.SePuedeDecir() && partida.SinExplicar() == 0)
            partida.reparo = OtraSuperficie(clase);
        esPrincipio =
            esPrincipio && std::ranges::mismatch(halladas, esperadas).in1 == halladas.end();
        falta = falta || halladas.size() < esperadas.size();
        balance.partidas.push_back(std::move(partida));
    }
    evidencia.acabaAntes = esPrincipio && falta;
    if (escritos.ajenos > 0)
        balance.notas.push_back(Cuantos(escritos.ajenos, "línea", "líneas") +
                                " del fichero CSP no son registros.");
    return balance;
}

} // namespace informe
