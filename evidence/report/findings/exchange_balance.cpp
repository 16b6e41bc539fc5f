#include "evidence/report/findings/run_balances.h"

#include <algorithm>
#include <memory>

#include "cadastre/exchange_format.h"
#include "cadastre/parcel.h"
#include "evidence/municipality_tables.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/input_lines.h"
#include "evidence/report/reading/text.h"
#include "evidence/row_keys.h"

namespace informe {
namespace {

/// Puts the parts together from what the input should come to, the tables and the log.
class CBalanceIda {
public:
    CBalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro,
                const CEntradaLeida& leida)
        : m_ficheros(ficheros), m_registro(registro), m_leida(leida),
          m_vinculos(leida.vinculos.quedan)
    {
    }

    CBalance Hace();

private:
    CPartida Lineas() const;
    CPartida Modulos() const;
    CPartida Titulares() const;
    CPartida Parcelas();
    CPartida Subparcelas() const;
    CPartida Parajes() const;
    CPartida Vinculos(bool hayParcelas);
    /// The lines of a kind against the rows of its table.
    template <class F>
    CPartida Empieza(Partida que, std::string lineas, const CEntradaLeida::CLineas& clase,
                     Tabla tabla, F clave) const;
    std::int64_t Cuenta(Mensaje mensaje) const { return m_registro.Cuenta(mensaje); }
    std::vector<std::string> Notas(const std::vector<CPartida>& partidas) const;

    const CFicheros& m_ficheros;
    const CRegistroLeido& m_registro;
    const CEntradaLeida& m_leida;
    CCotejo m_vinculos;
};

std::string Filas(Tabla tabla)
{
    return "filas de " + std::string(NombreTabla(tabla));
}

// What a row of each table is told by. Rows are read as they stand: what the way out wrote is
// whole.

template <class R>
CClaveRegistro ClaveFila(std::string_view fila)
{
    R registro;
    registro.Lee(fila, kModoTabla);
    return CClaveRegistro::De(registro);
}

template <class F>
CPartida CBalanceIda::Empieza(Partida que, std::string lineas, const CEntradaLeida::CLineas& clase,
                              Tabla tabla, F clave) const
{
    CPartida partida(que);
    partida.Entra(std::move(lineas), clase.lineas);
    CCotejo cotejo(clase.quedan);
    const bool hay =
        RecorreTabla(m_ficheros.tablas[tabla],
                     [&](std::string_view fila, bool /*primera*/) { cotejo.Toma(clave(fila)); });
    partida.Sale(Filas(tabla), cotejo.Hallados());
    if (hay)
        cotejo.Acaba(partida);
    else
        partida.noSePuede = "no está " + std::string(NombreTabla(tabla));
    return partida;
}

/// The lines of the input by their types, so that none is passed over in silence. The most frequent
/// of the types without effect come first.
CPartida CBalanceIda::Lineas() const
{
    CPartida partida(Partida::Lineas);
    partida.Entra("líneas leídas", m_leida.lineas);
    const bool lista = m_leida.esLista;
    if (!lista)
        partida.Sale("MD, módulos", m_leida.modulos.lineas);
    partida.Sale(lista ? "31, titulares" : "TL, titulares", m_leida.titulares.lineas);
    partida.Sale(lista ? "32, parcelas" : "PR, parcelas", m_leida.parcelas.lineas);
    partida.Sale(lista ? "33, subparcelas" : "SP y SC, subparcelas", m_leida.subparcelas.lineas);
    if (!lista)
        partida.Sale("PJ, parajes", m_leida.parajes.lineas);
    std::vector<std::pair<std::string, std::int64_t>> ajenas(m_leida.ajenas.begin(),
                                                             m_leida.ajenas.end());
    std::stable_sort(ajenas.begin(), ajenas.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    std::int64_t otras = 0;
    for (std::size_t i = 0; i < ajenas.size(); ++i) {
        if (ajenas[i].first == kTipoCabecera)
            partida.Sale(kTipoCabecera, ajenas[i].second);
        else if (i < topes::kTiposNombrados)
            partida.Sale("de tipo «" + Texto(ajenas[i].first) + "», sin efecto", ajenas[i].second);
        else
            otras += ajenas[i].second;
    }
    if (otras > 0)
        partida.Sale("de otros tipos, sin efecto", otras);
    if (m_leida.trozos > 0)
        partida.Sale("final de una línea demasiado larga, sin efecto", m_leida.trozos);
    if (m_leida.vacias > 0)
        partida.Sale("vacías", m_leida.vacias);
    return partida;
}

CPartida CBalanceIda::Modulos() const
{
    CPartida partida =
        Empieza(Partida::Modulos, "líneas MD", m_leida.modulos, kModulos, ClaveFila<CModulo>);
    partida.Sale("ya estaban (E203)", Cuenta(kModuloRepetido));
    return partida;
}

CPartida CBalanceIda::Titulares() const
{
    CPartida partida = Empieza(Partida::Titulares, m_leida.esLista ? "líneas 31" : "líneas TL",
                               m_leida.titulares, kTitulares, ClaveDeFilaTitular);
    partida.Sale("unidas a otra de igual nombre y DNI", m_leida.titulares.unidas);
    return partida;
}

CPartida CBalanceIda::Parcelas()
{
    const auto clave = [&](std::string_view fila) {
        const CNumerosDeFila parcela = NumerosDeFilaParcela(fila);
        if (parcela.numImputa != -1)
            m_vinculos.Toma(parcela.Clave());
        return parcela.Clave();
    };
    CPartida partida = Empieza(Partida::Parcelas, m_leida.esLista ? "líneas 32" : "líneas PR",
                               m_leida.parcelas, kParcelas, clave);
    if (m_leida.esLista) {
        partida.Sale("de una parcela que ya estaba", m_leida.parcelas.unidas);
        partida.SalePerdido("con polígono o parcela menor que 1, sin mensaje",
                            m_leida.parcelas.sinEfecto);
        return partida;
    }
    partida.Sale("sin su paraje (E102)", Cuenta(kParajeNoEncontrado));
    partida.Sale("ya estaban (E206)", Cuenta(kParcelaRepetida));
    partida.Sale("con polígono o parcela menor que 1 (E207)", Cuenta(kParcelaNoValida));
    return partida;
}

CPartida CBalanceIda::Subparcelas() const
{
    CPartida partida =
        Empieza(Partida::Subparcelas, m_leida.esLista ? "líneas 33" : "líneas SP y SC",
                m_leida.subparcelas, kSubparcelas, ClaveDeFilaSubparcela);
    if (m_leida.esLista)
        partida.SalePerdido("sin parcela válida delante, sin mensaje",
                            m_leida.subparcelas.sinEfecto);
    else
        partida.Sale("sin su parcela (E103)", Cuenta(kSubparcelaSinParcela));
    return partida;
}

CPartida CBalanceIda::Parajes() const
{
    CPartida partida =
        Empieza(Partida::Parajes, m_leida.esLista ? "nombrados en líneas 32" : "líneas PJ",
                m_leida.parajes, kParajes, ClaveFila<CParaje>);
    if (m_leida.esLista)
        partida.Sale("de un nombre que ya estaba", m_leida.parajes.unidas);
    else
        partida.SalePerdido("de un nombre que ya estaba: su número se pierde, sin mensaje",
                            m_leida.parajes.unidas);
    return partida;
}

/// \param hayParcelas  their table is there; it was asked for the main holders when it was read
CPartida CBalanceIda::Vinculos(bool hayParcelas)
{
    CPartida partida(Partida::Titularidades);
    partida.Entra(m_leida.esLista ? "líneas 33, bajo su titular"
                                  : "parcelas con cada titular de su número",
                  m_leida.vinculos.lineas);
    const std::int64_t principales = m_vinculos.Hallados();
    const bool hayCotitulares =
        RecorreTabla(m_ficheros.tablas[kCotitulares], [&](std::string_view fila, bool /*primera*/) {
            m_vinculos.Toma(NumerosDeFilaCotitular(fila).Clave());
        });
    if (!hayParcelas || !hayCotitulares)
        partida.noSePuede =
            "no está " + std::string(NombreTabla(hayParcelas ? kCotitulares : kParcelas));
    partida.Sale("titulares principales, en Parcelas.txt", principales);
    partida.Sale(Filas(kCotitulares), m_vinculos.Hallados() - principales);
    if (m_leida.esLista) {
        partida.Sale("sumadas a la parte del mismo titular", m_leida.vinculos.unidas);
        partida.SalePerdido("sin parcela válida o sin titular delante, sin mensaje",
                            m_leida.vinculos.sinEfecto);
    } else {
        partida.Sale("ya era cotitular (E211)", Cuenta(kYaCotitular));
        partida.Sale("ya era titular (E212)", Cuenta(kYaTitular));
        partida.Sale("de parcelas descartadas", m_leida.vinculos.sinEfecto);
    }
    if (partida.SePuedeDecir())
        m_vinculos.Acaba(partida);
    return partida;
}

std::vector<std::string> CBalanceIda::Notas(const std::vector<CPartida>& partidas) const
{
    std::vector<std::string> notas = {m_leida.esLista
                                          ? "La entrada es una relación de subparcelas con "
                                            "titulares."
                                          : "La entrada es un fichero de Catastro."};
    if (m_leida.municipios > 1)
        notas.push_back("Trae " + Miles(m_leida.municipios) +
                        " municipios: las parcelas de un fichero de Catastro van todas al de su "
                        "última línea.");
    if (m_leida.sinVinculo > 0)
        notas.push_back(Cuantos(m_leida.sinVinculo, "línea PR de", "líneas PR de") +
                        " 71 caracteres o menos, sin titular ni paraje.");
    std::int64_t filas = 0;
    bool todas = true;
    for (const CPartida& partida : partidas) {
        todas = todas && partida.SePuedeDecir();
        if (partida.que != Partida::Lineas)
            filas += partida.sale.front().cuantos;
    }
    if (todas && filas == 0 && m_leida.lineas > 1)
        notas.emplace_back(
            "Las tablas no tienen más que su cabecera. ¿Se leyó la entrada como si fuera "
            "de la otra clase (TipoEntrada)?");
    return notas;
}

CBalance CBalanceIda::Hace()
{
    CBalance balance;
    const CPartida parcelas = Parcelas();
    balance.partidas = {Lineas(),      Titulares(), parcelas,
                        Subparcelas(), Parajes(),   Vinculos(parcelas.SePuedeDecir())};
    if (!m_leida.esLista)
        balance.partidas.insert(balance.partidas.begin() + 1, Modulos());
    balance.notas = Notas(balance.partidas);
    return balance;
}

} // namespace

CBalance BalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro, CPersonas& personas)
{
    const auto leida =
        std::make_shared<const CEntradaLeida>(LeeEntrada(ficheros.entrada, personas));
    CBalance balance;
    if (leida->hay) {
        balance = CBalanceIda(ficheros, registro, *leida).Hace();
        balance.leido = leida;
        return balance;
    }
    balance.notas = {"No se pudo abrir la entrada, así que no hay balance."};
    return balance;
}

} // namespace informe
