#include "evidence/report/findings/run_balances.h"

#include <algorithm>

#include "cadastre/exchange_format.h"
#include "cadastre/parcel.h"
#include "evidence/municipality_tables.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/input_lines.h"
#include "evidence/report/reading/text.h"

namespace informe {
namespace {

/// Puts the parts together from what the input should come to, the tables and the log.
class CBalanceIda {
public:
    CBalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro,
                const CEntradaLeida& leida)
        : m_ficheros(ficheros), m_registro(registro), m_leida(leida)
    {
    }

    CBalance Hace();

private:
    using CLeeClave = std::function<CClaveRegistro(std::string_view fila)>;

    CPartida Lineas() const;
    CPartida Modulos() const;
    CPartida Titulares() const;
    CPartida Parcelas() const;
    CPartida Subparcelas() const;
    CPartida Parajes() const;
    CPartida Vinculos() const;
    /// The lines of a kind against the rows of its table.
    CPartida Empieza(Partida que, std::string lineas, const CEntradaLeida::CLineas& clase,
                     Tabla tabla, const CLeeClave& clave) const;
    std::int64_t Cuenta(Mensaje mensaje) const { return m_registro.Cuenta(mensaje); }
    std::vector<std::string> Notas(const std::vector<CPartida>& partidas) const;

    const CFicheros& m_ficheros;
    const CRegistroLeido& m_registro;
    const CEntradaLeida& m_leida;
};

std::string Filas(Tabla tabla)
{
    return "filas de " + std::string(NombreTabla(tabla));
}

// What a row of each table is told by. Rows are read as they stand: what the way out wrote is
// whole.

CClaveRegistro ClaveFilaSubparcela(std::string_view fila)
{
    CSubparcela subparcela;
    CDatosLinea datos;
    subparcela.Lee(fila, kModoTabla, datos);
    return CClaveRegistro::DeSubparcela(datos.Polig, datos.Parcela, subparcela.letra);
}

/// What a row of parcels says beside its record: its numbers, and the holder's, -1 for none.
CDatosLinea DatosDeParcela(std::string_view fila)
{
    CDatosLinea datos;
    CParcela(0, 0, 0, {}).Lee(fila, kModoTabla, datos);
    return datos;
}

CClaveRegistro ClaveDe(const CDatosLinea& parcela)
{
    return CClaveRegistro::DeParcela(parcela.Polig, parcela.Parcela);
}

CClaveRegistro ClaveFilaCotitular(std::string_view fila)
{
    CDatosLinea datos;
    CCotitular().Lee(fila, datos);
    return ClaveDe(datos);
}

template <class R>
CClaveRegistro ClaveFila(std::string_view fila)
{
    R registro;
    registro.Lee(fila, kModoTabla);
    return CClaveRegistro::De(registro);
}

CPartida CBalanceIda::Empieza(Partida que, std::string lineas, const CEntradaLeida::CLineas& clase,
                              Tabla tabla, const CLeeClave& clave) const
{
    CPartida partida(que);
    partida.Entra(std::move(lineas), clase.lineas);
    std::vector<CClaveRegistro> halladas;
    const bool hay = RecorreTabla(m_ficheros.tablas[tabla],
                                  [&](std::string_view fila) { halladas.push_back(clave(fila)); });
    partida.Sale(Filas(tabla), static_cast<std::int64_t>(halladas.size()));
    if (hay)
        Coteja(clase.quedan, halladas, partida);
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
                               m_leida.titulares, kTitulares, ClaveFila<CTitular>);
    partida.Sale("unidas a otra de igual nombre y DNI", m_leida.titulares.unidas);
    return partida;
}

CPartida CBalanceIda::Parcelas() const
{
    CPartida partida =
        Empieza(Partida::Parcelas, m_leida.esLista ? "líneas 32" : "líneas PR", m_leida.parcelas,
                kParcelas, [](std::string_view fila) { return ClaveDe(DatosDeParcela(fila)); });
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
                m_leida.subparcelas, kSubparcelas, ClaveFilaSubparcela);
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

CPartida CBalanceIda::Vinculos() const
{
    CPartida partida(Partida::Titularidades);
    partida.Entra(m_leida.esLista ? "líneas 33, bajo su titular"
                                  : "parcelas con cada titular de su número",
                  m_leida.vinculos.lineas);
    std::vector<CClaveRegistro> hallados;
    const auto cuantos = [&] { return static_cast<std::int64_t>(hallados.size()); };
    const bool hayParcelas = RecorreTabla(m_ficheros.tablas[kParcelas], [&](std::string_view fila) {
        const CDatosLinea parcela = DatosDeParcela(fila);
        if (parcela.numImputa != -1)
            hallados.push_back(ClaveDe(parcela));
    });
    const std::int64_t principales = cuantos();
    const bool hayCotitulares =
        RecorreTabla(m_ficheros.tablas[kCotitulares],
                     [&](std::string_view fila) { hallados.push_back(ClaveFilaCotitular(fila)); });
    if (!hayParcelas || !hayCotitulares)
        partida.noSePuede =
            "no está " + std::string(NombreTabla(hayParcelas ? kCotitulares : kParcelas));
    partida.Sale("titulares principales, en Parcelas.txt", principales);
    partida.Sale(Filas(kCotitulares), cuantos() - principales);
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
        Coteja(m_leida.vinculos.quedan, hallados, partida);
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
    balance.partidas = {Lineas(), Titulares(), Parcelas(), Subparcelas(), Parajes(), Vinculos()};
    if (!m_leida.esLista)
        balance.partidas.insert(balance.partidas.begin() + 1, Modulos());
    balance.notas = Notas(balance.partidas);
    return balance;
}

} // namespace

CBalance BalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro, CPersonas& personas)
{
    const CEntradaLeida leida = LeeEntrada(ficheros.entrada, personas);
    if (leida.hay)
        return CBalanceIda(ficheros, registro, leida).Hace();
    CBalance balance;
    balance.notas = {"No se pudo abrir la entrada, así que no hay balance."};
    return balance;
}

} // namespace informe
