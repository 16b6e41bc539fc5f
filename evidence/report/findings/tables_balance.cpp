#include "evidence/report/findings/run_balances.h"

#include <algorithm>

#include "evidence/municipality_tables.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/reading/written_records.h"

namespace informe {
namespace {

using CClaves = std::vector<CClaveRegistro>;

/// The parcels or subparcels that a message tells of, each as often as the log does.
CClaves ClavesDe(const CRegistroLeido& registro, Mensaje mensaje, bool deSubparcelas)
{
    CClaves claves;
    for (const CAviso& aviso : registro.avisos)
        if (aviso.Es(mensaje))
            claves.push_back(deSubparcelas ? CClaveRegistro::DeSubparcela(
                                                 aviso.polig, aviso.parcela, aviso.letra)
                                           : CClaveRegistro::DeParcela(aviso.polig, aviso.parcela));
    return claves;
}

/// Sorted keys, taken one after the other.
class CClavesEnFila {
public:
    explicit CClavesEnFila(CClaves claves) : m_claves(std::move(claves))
    {
        std::ranges::sort(m_claves);
    }
    bool Acabada() const { return m_i == m_claves.size(); }
    const CClaveRegistro& Primera() const { return m_claves[m_i]; }
    /// Takes the key as often as it stands in front; gives how often.
    std::int64_t Toma(const CClaveRegistro& clave)
    {
        const std::size_t antes = m_i;
        while (!Acabada() && Primera() == clave)
            ++m_i;
        return static_cast<std::int64_t>(m_i - antes);
    }

private:
    CClaves m_claves;
    std::size_t m_i = 0;
};

/// Matches rows that the drawing may add to or take from with what was written. The run's options
/// stand nowhere, so what they may have done is read off the records: whether what only the drawing
/// knows was created, and whether what isn't drawn was kept. Rewritten tables hold what was
/// created.
class CCuadre {
public:
    CCuadre(CClaves filas, CClaves escritas, CClaves creadas, CClaves noEnGrafico)
        : m_filas(std::move(filas)), m_escritas(std::move(escritas)), m_creadas(std::move(creadas)),
          m_noEnGrafico(std::move(noEnGrafico))
    {
    }

    /// Adds the part to the balance, with what the options made of it.
    void Cierra(const char* creadas, const char* noEnGrafico, CPartida partida, CBalance& balance)
    {
        for (const CClaveRegistro* clave = Siguiente(); clave != nullptr; clave = Siguiente())
            Toma(CClaveRegistro(*clave), partida);
        partida.Entra(creadas, m_nuevas);
        partida.Sale(noEnGrafico, m_fuera);
        balance.creaNoEnBase = balance.creaNoEnBase || m_nuevas > 0;
        balance.quitaNoEnGrafico = balance.quitaNoEnGrafico || m_fuera > 0;
        balance.partidas.push_back(std::move(partida));
    }

private:
    /// The least key that stands in front of any queue.
    const CClaveRegistro* Siguiente() const
    {
        const CClaveRegistro* menor = nullptr;
        for (const CClavesEnFila* fila : {&m_filas, &m_escritas, &m_creadas, &m_noEnGrafico})
            if (!fila->Acabada() && (menor == nullptr || fila->Primera() < *menor))
                menor = &fila->Primera();
        return menor;
    }
    /// A message explains a difference of its own key, and no more of it than there is.
    void Toma(const CClaveRegistro& clave, CPartida& partida)
    {
        const std::int64_t filas = m_filas.Toma(clave);
        const std::int64_t hueco = m_escritas.Toma(clave) - filas;
        const std::int64_t crea = std::clamp<std::int64_t>(hueco, 0, m_creadas.Toma(clave));
        const std::int64_t quita = std::clamp<std::int64_t>(-hueco, 0, m_noEnGrafico.Toma(clave));
        m_nuevas += crea;
        m_fuera += quita;
        partida.Faltan(crea - hueco - quita, clave);
    }

    CClavesEnFila m_filas;
    CClavesEnFila m_escritas;
    CClavesEnFila m_creadas;
    CClavesEnFila m_noEnGrafico;
    std::int64_t m_nuevas = 0;
    std::int64_t m_fuera = 0;
};

/// The tables' rows, the records of the files R and M, and the log. Messages are counted by the
/// log, and never for more than the rows that they speak of: one that the reading of the tables
/// doesn't bear out comes from elsewhere and explains nothing.
struct CVueltaLeida {
    const CRegistroLeido& registro;
    const CTablasLeidas& tablas;
    const CEscritosCatastro& escritos;
};

/// What one kind of record is called on either side.
struct CNombresDeClase {
    Partida que;
    Tabla tabla;
    char fichero; ///< R or M
    const char* registros;
    const char* incompletas; ///< what a row lacks that is lost without a message
};

CPartida Empieza(const CVueltaLeida& leida, const CNombresDeClase& nombres,
                 const CFilasLeidas& clase, std::int64_t escritos)
{
    CPartida partida(nombres.que);
    partida.Entra("filas de " + std::string(NombreTabla(nombres.tabla)), clase.filas);
    if (!clase.hay)
        partida.noSePuede = "no está " + std::string(NombreTabla(nombres.tabla));
    else if (!(nombres.fichero == 'R' ? leida.escritos.hayR : leida.escritos.hayM))
        partida.noSePuede = std::string("no está el fichero ") + nombres.fichero;
    partida.Sale(nombres.registros, escritos);
    partida.Sale("de otro municipio", clase.deOtro);
    if (clase.sinMunicipio > 0)
        partida.SalePerdido("sin número de municipio, sin mensaje", clase.sinMunicipio);
    partida.SalePerdido(std::string(nombres.incompletas) + ", sin mensaje", clase.incompletas);
    return partida;
}

/// Notes that the table isn't there whose rows those of a part are looked for in.
void SinLaSuya(Tabla tabla, CPartida& partida)
{
    if (partida.SePuedeDecir())
        partida.noSePuede = "no está " + std::string(NombreTabla(tabla));
}

std::int64_t Cuantas(const CClaves& claves)
{
    return static_cast<std::int64_t>(claves.size());
}

/// A kind whose rows the drawing neither adds to nor takes from.
CPartida FilaAFila(const CVueltaLeida& leida, const CNombresDeClase& nombres,
                   const CFilasLeidas& clase, const CClaves& escritas)
{
    CPartida partida = Empieza(leida, nombres, clase, Cuantas(escritas));
    Coteja(clase.quedan, escritas, partida);
    return partida;
}

void Parcelas(const CVueltaLeida& leida, CBalance& balance)
{
    const CFilasLeidas& clase = leida.tablas.parcelas;
    CClaves escritas;
    for (const auto& escrita : leida.escritos.parcelas)
        escritas.push_back(escrita.clave);
    CPartida partida = Empieza(leida,
                               {Partida::Parcelas, kParcelas, 'R', "registros PR",
                                "sin zona, polígono, parcela, numImputa, Tit o partici"},
                               clase, Cuantas(escritas));
    partida.SalePerdido("de una parcela que ya estaba, sin mensaje", clase.unidas);
    partida.Sale("con polígono o parcela menor que 1 (E213)",
                 std::min(clase.conMensaje, leida.registro.Cuenta(kParcelaNoInsertada)));
    CCuadre(clase.quedan, std::move(escritas), ClavesDe(leida.registro, kParcelaNoEnBase, false),
            ClavesDe(leida.registro, kParcelaNoEnGrafico, false))
        .Cierra("creadas desde el gráfico (E106)",
                "no están en el gráfico y no se conservan (E111)", std::move(partida), balance);
}

void Subparcelas(const CVueltaLeida& leida, CBalance& balance)
{
    const CFilasLeidas& clase = leida.tablas.subparcelas;
    CPartida partida =
        Empieza(leida, {Partida::Subparcelas, kSubparcelas, 'R', "registros SP", "sin letra"},
                clase, Cuantas(leida.escritos.subparcelas));
    partida.Sale("sin su parcela (E103)",
                 std::min(clase.conMensaje, leida.registro.Cuenta(kSubparcelaSinParcela)));
    CCuadre(clase.quedan, leida.escritos.subparcelas,
            ClavesDe(leida.registro, kSubparcelaNoEnBase, true),
            ClavesDe(leida.registro, kSubparcelaNoEnGrafico, true))
        .Cierra("creadas desde el gráfico (E110)",
                "no están en el gráfico y no se conservan (E113)", std::move(partida), balance);
}

CPartida Cotitulares(const CVueltaLeida& leida)
{
    const CFilasLeidas& clase = leida.tablas.cotitulares;
    CPartida partida = FilaAFila(leida,
                                 {Partida::Cotitulares, kCotitulares, 'R',
                                  "cotitulares en registros CT", "sin Titul o partici"},
                                 clase, leida.escritos.cotitulares);
    partida.Sale("sin su parcela (E104)", std::min(leida.tablas.cotitularesSinParcela,
                                                   leida.registro.Cuenta(kCotitularSinParcela)));
    partida.Sale("sin su titular (E105)", std::min(leida.tablas.cotitularesSinTitular,
                                                   leida.registro.Cuenta(kCotitularSinTitular)));
    partida.Sale("sumadas a la parte del mismo titular", clase.unidas);
    return partida;
}

CBalance Reune(const CVueltaLeida& leida)
{
    CBalance balance;
    CPartida titulares = FilaAFila(
        leida, {Partida::Titulares, kTitulares, 'R', "registros TL", "sin número, nombre o DNI"},
        leida.tablas.titulares, leida.escritos.titulares);
    titulares.Sale("unidas a otra de igual nombre y DNI", leida.tablas.titulares.unidas);
    CPartida parajes =
        FilaAFila(leida, {Partida::Parajes, kParajes, 'R', "registros PJ", "sin número o nombre"},
                  leida.tablas.parajes, leida.escritos.parajes);
    parajes.SalePerdido("de un nombre que ya estaba: su número se pierde, sin mensaje",
                        leida.tablas.parajes.unidas);
    CPartida modulos = FilaAFila(
        leida, {Partida::Modulos, kModulos, 'M', "registros MD", "sin Cal o Denominacion"},
        leida.tablas.modulos, leida.escritos.modulos);
    modulos.SalePerdido("de un módulo que ya estaba, sin mensaje", leida.tablas.modulos.unidas);
    balance.partidas = {titulares};
    Parcelas(leida, balance);
    balance.partidas.push_back(Cotitulares(leida));
    if (!leida.tablas.titulares.hay)
        SinLaSuya(kTitulares, balance.partidas.back());
    Subparcelas(leida, balance);
    if (!leida.tablas.parcelas.hay)
        for (CPartida& partida : balance.partidas)
            if (partida.que == Partida::Cotitulares || partida.que == Partida::Subparcelas)
                SinLaSuya(kParcelas, partida);
    balance.partidas.insert(balance.partidas.end(), {parajes, modulos});
    for (CPartida& partida : balance.partidas)
        if (!partida.SePuedeDecir())
            partida.faltan = partida.sobran = 0;
    if (leida.escritos.ajenos > 0)
        balance.notas.push_back(Cuantos(leida.escritos.ajenos, "línea", "líneas") +
                                " de los ficheros R y M no son registros de los que escribe el "
                                "programa.");
    return balance;
}

} // namespace

CBalance BalanceVuelta(const CFicheros& ficheros, const CRegistroLeido& registro,
                       CPersonas& personas, CSuperficies& superficies)
{
    CTablasLeidas tablas = LeeTablas(ficheros.tablas, ficheros.lista.cabecera.Mun,
                                     {true, false, 0, [&](const CTitular& titular) {
                                          personas.Mira(titular.Nombre, titular.DNI);
                                      }});
    for (const CParcela& parcela : tablas.municipio.Parcelas())
        superficies[{parcela.Polig, parcela.Parcela}] = {parcela.Superficie, std::nullopt,
                                                         parcela.claveConc != ' '};
    tablas.municipio = CMunicipio(0, 0); // its keys are all that is asked for from here on
    const CEscritosCatastro escritos = LeeEscritos(ficheros.ficheroR, ficheros.ficheroM);
    for (const auto& escrita : escritos.parcelas) {
        CSuperficie& suya = superficies[{escrita.clave.Polig(), escrita.clave.Parcela()}];
        suya.escrita = escrita.superficie;
        suya.concentrada = suya.concentrada || escrita.concentrada;
    }
    return Reune(CVueltaLeida{registro, tablas, escritos});
}

} // namespace informe
