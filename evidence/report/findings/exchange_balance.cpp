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

/// What the input should come to, the tables and the log.
struct CIdaLeida {
    const CFicheros& ficheros;
    const CRegistroLeido& registro;
    const CEntradaLeida& entrada;

    std::int64_t Cuenta(Mensaje mensaje) const { return registro.Cuenta(mensaje); }
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

/// The lines of a kind against the rows of its table.
template <class F>
CPartida Empieza(const CIdaLeida& leida, Partida que, std::string lineas,
                 const CEntradaLeida::CLineas& clase, Tabla tabla, F clave)
{
    CPartida partida(que);
    partida.Entra(std::move(lineas), clase.lineas);
    CCotejo cotejo(clase.quedan);
    const bool hay =
        RecorreTabla(leida.ficheros.tablas[tabla],
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
CPartida Lineas(const CEntradaLeida& entrada)
{
    CPartida partida(Partida::Lineas);
    partida.Entra("líneas leídas", entrada.lineas);
    const bool lista = entrada.esLista;
    if (!lista)
        partida.Sale("MD, módulos", entrada.modulos.lineas);
    partida.Sale(lista ? "31, titulares" : "TL, titulares", entrada.titulares.lineas);
    partida.Sale(lista ? "32, parcelas" : "PR, parcelas", entrada.parcelas.lineas);
    partida.Sale(lista ? "33, subparcelas" : "SP y SC, subparcelas", entrada.subparcelas.lineas);
    if (!lista)
        partida.Sale("PJ, parajes", entrada.parajes.lineas);
    std::vector<std::pair<std::string, std::int64_t>> ajenas(entrada.ajenas.begin(),
                                                             entrada.ajenas.end());
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
    if (entrada.trozos > 0)
        partida.Sale("final de una línea demasiado larga, sin efecto", entrada.trozos);
    if (entrada.vacias > 0)
        partida.Sale("vacías", entrada.vacias);
    return partida;
}

CPartida Modulos(const CIdaLeida& leida)
{
    CPartida partida = Empieza(leida, Partida::Modulos, "líneas MD", leida.entrada.modulos,
                               kModulos, ClaveFila<CModulo>);
    partida.Sale("ya estaban (E203)", leida.Cuenta(kModuloRepetido));
    return partida;
}

CPartida Titulares(const CIdaLeida& leida)
{
    CPartida partida =
        Empieza(leida, Partida::Titulares, leida.entrada.esLista ? "líneas 31" : "líneas TL",
                leida.entrada.titulares, kTitulares, ClaveDeFilaTitular);
    partida.Sale("unidas a otra de igual nombre y DNI", leida.entrada.titulares.unidas);
    return partida;
}

/// \param vinculos  is told of the main holders
CPartida Parcelas(const CIdaLeida& leida, CCotejo& vinculos)
{
    const auto clave = [&](std::string_view fila) {
        const CNumerosDeFila parcela = NumerosDeFilaParcela(fila);
        if (parcela.numImputa != -1)
            vinculos.Toma(parcela.Clave());
        return parcela.Clave();
    };
    CPartida partida =
        Empieza(leida, Partida::Parcelas, leida.entrada.esLista ? "líneas 32" : "líneas PR",
                leida.entrada.parcelas, kParcelas, clave);
    if (leida.entrada.esLista) {
        partida.Sale("de una parcela que ya estaba", leida.entrada.parcelas.unidas);
        partida.SalePerdido("con polígono o parcela menor que 1, sin mensaje",
                            leida.entrada.parcelas.sinEfecto);
        return partida;
    }
    partida.Sale("sin su paraje (E102)", leida.Cuenta(kParajeNoEncontrado));
    partida.Sale("ya estaban (E206)", leida.Cuenta(kParcelaRepetida));
    partida.Sale("con polígono o parcela menor que 1 (E207)", leida.Cuenta(kParcelaNoValida));
    return partida;
}

CPartida Subparcelas(const CIdaLeida& leida)
{
    CPartida partida =
        Empieza(leida, Partida::Subparcelas, leida.entrada.esLista ? "líneas 33" : "líneas SP y SC",
                leida.entrada.subparcelas, kSubparcelas, ClaveDeFilaSubparcela);
    if (leida.entrada.esLista)
        partida.SalePerdido("sin parcela válida delante, sin mensaje",
                            leida.entrada.subparcelas.sinEfecto);
    else
        partida.Sale("sin su parcela (E103)", leida.Cuenta(kSubparcelaSinParcela));
    return partida;
}

CPartida Parajes(const CIdaLeida& leida)
{
    CPartida partida = Empieza(leida, Partida::Parajes,
                               leida.entrada.esLista ? "nombrados en líneas 32" : "líneas PJ",
                               leida.entrada.parajes, kParajes, ClaveFila<CParaje>);
    if (leida.entrada.esLista)
        partida.Sale("de un nombre que ya estaba", leida.entrada.parajes.unidas);
    else
        partida.SalePerdido("de un nombre que ya estaba: su número se pierde, sin mensaje",
                            leida.entrada.parajes.unidas);
    return partida;
}

/// \param hayParcelas  their table is there; it was asked for the main holders when it was read
CPartida Vinculos(const CIdaLeida& leida, bool hayParcelas, CCotejo& vinculos)
{
    CPartida partida(Partida::Titularidades);
    partida.Entra(leida.entrada.esLista ? "líneas 33, bajo su titular"
                                        : "parcelas con cada titular de su número",
                  leida.entrada.vinculos.lineas);
    const std::int64_t principales = vinculos.Hallados();
    const bool hayCotitulares = RecorreTabla(
        leida.ficheros.tablas[kCotitulares], [&](std::string_view fila, bool /*primera*/) {
            vinculos.Toma(NumerosDeFilaCotitular(fila).Clave());
        });
    if (!hayParcelas || !hayCotitulares)
        partida.noSePuede =
            "no está " + std::string(NombreTabla(hayParcelas ? kCotitulares : kParcelas));
    partida.Sale("titulares principales, en Parcelas.txt", principales);
    partida.Sale(Filas(kCotitulares), vinculos.Hallados() - principales);
    if (leida.entrada.esLista) {
        partida.Sale("sumadas a la parte del mismo titular", leida.entrada.vinculos.unidas);
        partida.SalePerdido("sin parcela válida o sin titular delante, sin mensaje",
                            leida.entrada.vinculos.sinEfecto);
    } else {
        partida.Sale("ya era cotitular (E211)", leida.Cuenta(kYaCotitular));
        partida.Sale("ya era titular (E212)", leida.Cuenta(kYaTitular));
        partida.Sale("de parcelas descartadas", leida.entrada.vinculos.sinEfecto);
    }
    if (partida.SePuedeDecir())
        vinculos.Acaba(partida);
    return partida;
}

std::vector<std::string> Notas(const CEntradaLeida& entrada, const std::vector<CPartida>& partidas)
{
    std::vector<std::string> notas = {entrada.esLista
                                          ? "La entrada es una relación de subparcelas con "
                                            "titulares."
                                          : "La entrada es un fichero de Catastro."};
    if (entrada.municipios > 1)
        notas.push_back("Trae " + Miles(entrada.municipios) +
                        " municipios: las parcelas de un fichero de Catastro van todas al de su "
                        "última línea.");
    if (entrada.sinVinculo > 0)
        notas.push_back(Cuantos(entrada.sinVinculo, "línea PR de", "líneas PR de") +
                        " 71 caracteres o menos, sin titular ni paraje.");
    std::int64_t filas = 0;
    bool todas = true;
    for (const CPartida& partida : partidas) {
        todas = todas && partida.SePuedeDecir();
        if (partida.que != Partida::Lineas)
            filas += partida.sale.front().cuantos;
    }
    if (todas && filas == 0 && entrada.lineas > 1)
        notas.emplace_back(
            "Las tablas no tienen más que su cabecera. ¿Se leyó la entrada como si fuera "
            "de la otra clase (TipoEntrada)?");
    return notas;
}

CBalance Reune(const CIdaLeida& leida)
{
    CBalance balance;
    CCotejo vinculos(leida.entrada.vinculos.quedan);
    const CPartida parcelas = Parcelas(leida, vinculos);
    balance.partidas = {Lineas(leida.entrada),
                        Titulares(leida),
                        parcelas,
                        Subparcelas(leida),
                        Parajes(leida),
                        Vinculos(leida, parcelas.SePuedeDecir(), vinculos)};
    if (!leida.entrada.esLista)
        balance.partidas.insert(balance.partidas.begin() + 1, Modulos(leida));
    balance.notas = Notas(leida.entrada, balance.partidas);
    return balance;
}

} // namespace

CBalance BalanceIda(const CFicheros& ficheros, const CRegistroLeido& registro, CPersonas& personas)
{
    const auto leida =
        std::make_shared<const CEntradaLeida>(LeeEntrada(ficheros.entrada, personas));
    CBalance balance;
    if (leida->hay) {
        balance = Reune(CIdaLeida{ficheros, registro, *leida});
        balance.leido = leida;
        return balance;
    }
    balance.notas = {"No se pudo abrir la entrada, así que no hay balance."};
    return balance;
}

} // namespace informe
