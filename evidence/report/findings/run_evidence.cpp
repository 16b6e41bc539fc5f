#include "evidence/report/findings/run_evidence.h"

#include <ctime>
#include <utility>

#include "evidence/paths.h"
#include "evidence/report/findings/run_balances.h"
#include "evidence/report/reading/text.h"

namespace informe {
namespace {

/// Seconds that an output is older than the log by where it is another run's: those of one are
/// further apart than they were once somebody has copied them without their times.
constexpr std::time_t kDeOtroProceso = 600;

/// Tells whether a table was written with the file R, which a run writes in front of it.
bool EsDelFinal(const CString& tabla, const CFicheros& ficheros)
{
    const auto suya = FechaDe(tabla);
    const auto delR = FechaDe(ficheros.ficheroR);
    return suya && delR && *suya >= *delR && *suya <= *delR + kHolguraDeFechas;
}

/// The log of the run. That of Infograf is always empty: what stands there is the way back's.
CRegistroLeido RegistroDe(const CFicheros& ficheros)
{
    CRegistroLeido registro(ficheros.registro);
    if (ficheros.sentido == Sentido::Infograf && !registro.Recibido())
        return {};
    return registro;
}

} // namespace

CProceso::CProceso(CFicheros suyos)
    : ficheros(std::move(suyos)), registro(RegistroDe(ficheros)), personas(registro)
{
    vistos = MiraFicheros(ficheros, registro.Recibido());
    HazBalance();
    if (Detenido() && !infograf.acabaAntes)
        OlvidaSalidas();
    else if (ficheros.sentido == Sentido::Vuelta)
        AnotaReescritas();
}

void CProceso::HazBalance()
{
    switch (ficheros.sentido) {
    case Sentido::Ida:
        balance = BalanceIda(ficheros, registro, personas);
        break;
    case Sentido::Vuelta:
        balance = BalanceVuelta(ficheros, registro, personas, superficies);
        break;
    case Sentido::Infograf:
        balance = BalanceInfograf(ficheros, infograf);
        break;
    case Sentido::Ninguno:
        balance.notas = {"No se halló la entrada ni la lista del proceso; --entrada o "
                         "--lista las nombran."};
    }
}

bool CProceso::EscribioParcelas() const
{
    return !Detenido() && HayFichero(ficheros.ficheroR);
}

std::string CProceso::Alarma() const
{
    if (infograf.acabaAntes)
        return "El proceso se detuvo: los registros acaban antes que los dibujos.";
    if (Detenido())
        return "El proceso se detuvo, o no llegó a su fin: el registro está, y lo que debía "
               "escribir falta o es más viejo que él.";
    return ficheros.sentido == Sentido::Ida && SinSalidas(vistos)
               ? "No se halló ninguna tabla: el proceso se detuvo antes de escribirlas, o están en "
                 "otra carpeta, que --tablas nombra."
               : std::string();
}

std::string CProceso::SinComprobar() const
{
    if (ficheros.sentido == Sentido::Ninguno)
        return balance.notas.front(); // why there is no balance
    if (!Alarma().empty())
        return {};                                              // it says that as well
    std::vector<std::pair<std::string, std::string>> porMotivo; // and the parts of each
    for (const CPartida& partida : balance.partidas) {
        if (partida.SePuedeDecir())
            continue;
        if (porMotivo.empty() || porMotivo.back().first != partida.noSePuede)
            porMotivo.emplace_back(partida.noSePuede, "");
        std::string& suyas = porMotivo.back().second;
        suyas += (suyas.empty() ? "" : ", ") + std::string(partida.Titulo());
    }
    std::string viejas; // of those that take their places together
    for (const CFicheroVisto& visto : vistos)
        if (visto.viejo && *vistos.front().fecha - *visto.fecha > kDeOtroProceso)
            viejas += (viejas.empty() ? "" : ", ") + Texto(NombreSinCarpeta(visto.nombre));
    if (!viejas.empty())
        porMotivo.emplace_back("más viejo que el registro y que lo demás que escribió el proceso",
                               viejas);
    std::string texto;
    for (const auto& [motivo, suyas] : porMotivo)
        texto.append(texto.empty() ? "Sin comprobar: " : "; ")
            .append(suyas)
            .append(" (")
            .append(motivo)
            .append(")");
    return texto.empty() ? texto : texto + ".";
}

/// Tables that the run wrote hold what it made of them. Where nobody tells, the time does.
void CProceso::AnotaReescritas()
{
    constexpr const char* kSonLasSuyas =
        "tienen lo que hizo, y lo que quitó de ellas ya no se puede contar.";
    if (!ficheros.escritas.empty())
        balance.notas.push_back(std::string("El proceso reescribió las tablas (Modificar): ") +
                                kSonLasSuyas);
    else if (EsDelFinal(ficheros.tablas[kParcelas], ficheros) &&
             EsDelFinal(ficheros.tablas[kSubparcelas], ficheros))
        balance.notas.push_back("Parcelas.txt y Subparcelas.txt son tan nuevas como lo que el "
                                "proceso escribió: si las reescribió (Modificar), " +
                                std::string(kSonLasSuyas));
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
