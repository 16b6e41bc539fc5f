#include "evidence/report/findings/run_evidence.h"

#include <utility>

#include "evidence/report/findings/run_balances.h"

namespace informe {

CProceso::CProceso(CFicheros suyos)
    : ficheros(std::move(suyos)), registro(LeeRegistro(ficheros.registro)), personas(registro)
{
    vistos = MiraFicheros(ficheros);
    if (ficheros.sentido == Sentido::Ida)
        balance = BalanceIda(ficheros, registro, personas);
    else if (ficheros.sentido == Sentido::Vuelta)
        balance = BalanceVuelta(ficheros, registro, personas, superficies);
    else
        balance.notas = {"No se halló la entrada ni la lista del proceso; --entrada o "
                         "--lista las nombran."};
    if (Detenido())
        OlvidaSalidas();
    else if (ficheros.sentido == Sentido::Ida && SinSalidas(vistos))
        balance.notas.emplace_back(
            "No se halló ninguna tabla: si están en otra carpeta, --tablas la nombra.");
}

/// A run that was stopped left the outputs of an older one, which tell nothing of it.
void CProceso::OlvidaSalidas()
{
    for (CPartida& partida : balance.partidas)
        if (partida.que != Partida::Lineas && partida.SePuedeDecir())
            partida.noSePuede = "el proceso no llegó a escribirlo";
    for (auto& [parcela, superficie] : superficies)
        superficie.escrita.reset();
}

} // namespace informe
