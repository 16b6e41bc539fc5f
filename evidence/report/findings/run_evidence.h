#pragma once

#include <string>
#include <vector>

#include "evidence/report/findings/balance.h"
#include "evidence/report/findings/infograf_balance.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/seen_files.h"
#include "evidence/report/reading/surfaces.h"

namespace informe {

/// A run as its log and its tables show it. The drawings of a way back are another matter: they are
/// gone through one by one, and not kept.
struct CProceso {
    /// Reads all files of the run but its drawings. Raises CFileException where one of them, or the
    /// log, can't be read.
    explicit CProceso(CFicheros suyos);

    bool Detenido() const { return informe::Detenido(vistos, ficheros) || infograf.acabaAntes; }
    /// Its file of parcels is there, be there any in it or none.
    bool EscribioParcelas() const;
    /// What is wrong with the run as a whole, a sentence; empty for nothing.
    std::string Alarma() const;
    /// What of it can't be checked beside that, and why; empty for nothing.
    std::string SinComprobar() const;

    CFicheros ficheros;
    std::vector<CFicheroVisto> vistos;
    CRegistroLeido registro;
    CPersonas personas;
    CBalance balance;
    CSuperficies superficies;           ///< of a way back
    CEvidenciaInfograf infograf;        ///< of a way on to Infograf
    std::vector<std::string> observado; ///< what it said beside its summary; of a trial

private:
    void HazBalance();
    void AnotaReescritas();
    void OlvidaSalidas();
};

} // namespace informe
