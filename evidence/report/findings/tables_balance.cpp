#include "evidence/report/findings/tables_balance.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "evidence/report/reading/municipality_tables.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/reading/written_records.h"

namespace informe {
namespace {

using CClaves = std::vector<CClave>;

/// The records that a message tells of, each as often as the log does.
CClaves ClavesDe(const CRegistroLeido& registro, Mensaje mensaje)
{
    const CMensaje& cual = DameMensaje(mensaje);
    CClaves claves;
    for (const CAviso& aviso : registro.avisos)
        if (aviso.mensaje == &cual)
            claves.push_back({aviso.polig, aviso.parcela, aviso.letra});
    return claves;
}

/// Sorted keys, taken one after the other.
class CFila {
public:
    explicit CFila(CClaves claves) : m_claves(std::move(claves))
    {
        std::sort(m_claves.begin(), m_claves.end());
    }
    bool Acabada() const { return m_i == m_claves.size(); }
    const CClave& Primera() const { return m_claves[m_i]; }
    /// Takes the key as often as it stands in front; gives how often.
    std::int64_t Toma(const CClave& clave)
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
        : m_lados{CFila(std::move(filas)), CFila(std::move(escritas)), CFila(std::move(creadas)),
                  CFila(std::move(noEnGrafico))}
    {
    }

    void Cierra(const char* creadas, const char* noEnGrafico, CPartida& partida)
    {
        for (const CClave* clave = Siguiente(); clave != nullptr; clave = Siguiente())
            Toma(CClave(*clave), partida);
        partida.Entra(creadas, m_nuevas);
        partida.Sale(noEnGrafico, m_fuera);
    }

private:
    const CClave* Siguiente() const
    {
        const CClave* menor = nullptr;
        for (const CFila& lado : m_lados)
            if (!lado.Acabada() && (menor == nullptr || lado.Primera() < *menor))
                menor = &lado.Primera();
        return menor;
    }
    void Toma(const CClave& clave, CPartida& partida)
    {
        constexpr std::size_t kEjemplos = 8;
        const std::int64_t filas = m_lados[0].Toma(clave);
        const std::int64_t hueco = m_lados[1].Toma(clave) - filas;
        const std::int64_t crea = std::clamp<std::int64_t>(hueco, 0, m_lados[2].Toma(clave));
        const std::int64_t quita = std::clamp<std::int64_t>(-hueco, 0, m_lados[3].Toma(clave));
        m_nuevas += crea;
        m_fuera += quita;
        const std::int64_t resto = hueco - crea + quita;
        (resto > 0 ? partida.sobran : partida.faltan) += std::abs(resto);
        if (resto != 0 && partida.ejemplos.size() < kEjemplos)
            partida.ejemplos.push_back((resto > 0 ? "sobra " : "falta ") + Nombra(clave));
    }

    std::array<CFila, 4> m_lados; // rows, written, created, not drawn
    std::int64_t m_nuevas = 0;
    std::int64_t m_fuera = 0;
};

class CBalanceVuelta {
public:
    CBalanceVuelta(const CRegistroLeido& registro, const CTablasLeidas& tablas,
                   const CEscritosCatastro& escritos)
        : m_registro(registro), m_tablas(tablas), m_escritos(escritos)
    {
    }

    CBalance Hace() const;

private:
    using CClase = CTablasLeidas::CClase;

    /// What one kind of record is called on either side.
    struct CNombres {
        const char* titulo;
        Tabla tabla;
        char fichero; ///< R or M
        const char* registros;
        const char* incompletas; ///< what a row lacks that is lost without a message
    };
    CPartida Empieza(const CNombres& nombres, const CClase& clase, std::int64_t escritos) const;
    CPartida Titulares() const;
    CPartida Parcelas() const;
    CPartida Subparcelas() const;
    CPartida Cotitulares() const;
    CPartida Parajes() const;
    CPartida Modulos() const;
    std::int64_t Cuenta(Mensaje mensaje) const { return m_registro.Cuenta(mensaje); }

    const CRegistroLeido& m_registro;
    const CTablasLeidas& m_tablas;
    const CEscritosCatastro& m_escritos;
};

CPartida CBalanceVuelta::Empieza(const CNombres& nombres, const CClase& clase,
                                 std::int64_t escritos) const
{
    CPartida partida;
    partida.titulo = nombres.titulo;
    partida.Entra("filas de " + std::string(NombreTabla(nombres.tabla)), clase.filas);
    if (!clase.hay)
        partida.noSePuede = "no está " + std::string(NombreTabla(nombres.tabla));
    else if (!(nombres.fichero == 'R' ? m_escritos.hayR : m_escritos.hayM))
        partida.noSePuede = std::string("no está el fichero ") + nombres.fichero;
    partida.Sale(nombres.registros, escritos);
    partida.Sale("de otro municipio", clase.deOtro);
    partida.SalePerdido(std::string(nombres.incompletas) + ", sin mensaje", clase.incompletas);
    return partida;
}

void Coteja(const std::vector<CClave>& quedan, const std::vector<CClave>& escritas,
            CPartida& partida)
{
    CCotejo cotejo;
    for (const CClave& clave : quedan)
        cotejo.Espera(clave);
    for (const CClave& clave : escritas)
        cotejo.Hay(clave);
    cotejo.Cierra(partida);
}

std::int64_t Cuantas(const std::vector<CClave>& claves)
{
    return static_cast<std::int64_t>(claves.size());
}

CPartida CBalanceVuelta::Titulares() const
{
    CPartida partida =
        Empieza({"Titulares", kTitulares, 'R', "registros TL", "sin número, nombre o DNI"},
                m_tablas.titulares, Cuantas(m_escritos.titulares));
    partida.Sale("unidas a otra de igual nombre y DNI", m_tablas.titulares.unidas);
    Coteja(m_tablas.titulares.quedan, m_escritos.titulares, partida);
    return partida;
}

CPartida CBalanceVuelta::Parcelas() const
{
    const CClase& clase = m_tablas.parcelas;
    std::vector<CClave> escritas;
    for (const auto& escrita : m_escritos.parcelas)
        escritas.push_back(escrita.clave);
    CPartida partida = Empieza({"Parcelas", kParcelas, 'R', "registros PR",
                                "sin zona, polígono, parcela, numImputa, Tit o partici"},
                               clase, Cuantas(escritas));
    partida.SalePerdido("de una parcela que ya estaba, sin mensaje", clase.unidas);
    partida.Sale("con polígono o parcela menor que 1 (E213)",
                 std::min(clase.conMensaje, Cuenta(kParcelaNoInsertada)));
    CCuadre(clase.quedan, std::move(escritas), ClavesDe(m_registro, kParcelaNoEnBase),
            ClavesDe(m_registro, kParcelaNoEnGrafico))
        .Cierra("creadas desde el gráfico (E106)",
                "no están en el gráfico y no se conservan (E111)", partida);
    return partida;
}

CPartida CBalanceVuelta::Subparcelas() const
{
    const CClase& clase = m_tablas.subparcelas;
    CPartida partida = Empieza({"Subparcelas", kSubparcelas, 'R', "registros SP", "sin letra"},
                               clase, Cuantas(m_escritos.subparcelas));
    partida.Sale("sin su parcela (E103)",
                 std::min(clase.conMensaje, Cuenta(kSubparcelaSinParcela)));
    CCuadre(clase.quedan, m_escritos.subparcelas, ClavesDe(m_registro, kSubparcelaNoEnBase),
            ClavesDe(m_registro, kSubparcelaNoEnGrafico))
        .Cierra("creadas desde el gráfico (E110)",
                "no están en el gráfico y no se conservan (E113)", partida);
    return partida;
}

CPartida CBalanceVuelta::Cotitulares() const
{
    const CClase& clase = m_tablas.cotitulares;
    CPartida partida = Empieza(
        {"Cotitulares", kCotitulares, 'R', "cotitulares en registros CT", "sin Titul o partici"},
        clase, Cuantas(m_escritos.cotitulares));
    partida.Sale("sin su parcela (E104)",
                 std::min(m_tablas.cotitularesSinParcela, Cuenta(kCotitularSinParcela)));
    partida.Sale("sin su titular (E105)",
                 std::min(m_tablas.cotitularesSinTitular, Cuenta(kCotitularSinTitular)));
    partida.Sale("sumadas a la parte del mismo titular", clase.unidas);
    Coteja(clase.quedan, m_escritos.cotitulares, partida);
    return partida;
}

CPartida CBalanceVuelta::Parajes() const
{
    CPartida partida = Empieza({"Parajes", kParajes, 'R', "registros PJ", "sin número o nombre"},
                               m_tablas.parajes, Cuantas(m_escritos.parajes));
    partida.SalePerdido("de un nombre que ya estaba: su número se pierde, sin mensaje",
                        m_tablas.parajes.unidas);
    Coteja(m_tablas.parajes.quedan, m_escritos.parajes, partida);
    return partida;
}

CPartida CBalanceVuelta::Modulos() const
{
    CPartida partida = Empieza({"Módulos", kModulos, 'M', "registros MD", "sin Cal o Denominacion"},
                               m_tablas.modulos, Cuantas(m_escritos.modulos));
    partida.SalePerdido("de un módulo que ya estaba, sin mensaje", m_tablas.modulos.unidas);
    Coteja(m_tablas.modulos.quedan, m_escritos.modulos, partida);
    return partida;
}

CBalance CBalanceVuelta::Hace() const
{
    CBalance balance;
    balance.partidas = {Titulares(),   Parcelas(), Cotitulares(),
                        Subparcelas(), Parajes(),  Modulos()};
    for (CPartida& partida : balance.partidas)
        if (!partida.SePuedeDecir())
            partida.faltan = partida.sobran = 0;
    if (m_escritos.ajenos > 0)
        balance.notas.push_back(Cuantos(m_escritos.ajenos, "línea", "líneas") +
                                " de los ficheros R y M no son registros de los que escribe el "
                                "programa.");
    return balance;
}

} // namespace

CBalance BalanceVuelta(const CFicheros& ficheros, const CRegistroLeido& registro,
                       CPersonas& personas, CSuperficies& superficies)
{
    const CTablasLeidas tablas =
        LeeTablas(ficheros.tablas, ficheros.cabecera.Mun, personas, superficies);
    const CEscritosCatastro escritos = LeeEscritos(ficheros.ficheroR, ficheros.ficheroM);
    for (const auto& escrita : escritos.parcelas) {
        CSuperficie& suya = superficies[{escrita.clave.polig, escrita.clave.parcela}];
        suya.escrita = escrita.superficie;
        suya.concentrada = suya.concentrada || escrita.concentrada;
    }
    return CBalanceVuelta(registro, tablas, escritos).Hace();
}

} // namespace informe
