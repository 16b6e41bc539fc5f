#pragma once

#include <string>
#include <vector>

#include "evidence/report/findings/changes/contrast.h"

// What changed, in words: the same for the page, the sheet and programs. UTF-8.

namespace informe {

/// What is compared of two states, behind "sin cambios en".
inline constexpr const char* kLoComparado =
    "titulares, participaciones, superficies, subparcelas ni parajes";

/// "3-12"; with its municipality where the states have several.
std::string NombreDe(const CClaveParcela& clave, const CContraste& contraste);
/// "ANA, 11111111"
std::string NombreDe(const CEstadoMunicipio::CPersona& persona);
/// The same of the one at a position; empty for none, below 0.
std::string NombreDe(const CEstadoMunicipio& estado, int persona);
/// "ANA (PR 50), JUAN (PR 50)"; of more than so many the first ones.
std::string Titulares(const CEstadoMunicipio& estado, const CEstadoMunicipio::CParcela& parcela,
                      std::size_t comoMucho);
/// "1.200 m², VI 02"
/// \param deTodo  both pairs of class and intensity, also where one says it all
std::string EnPalabras(const CEstadoMunicipio::CSubparcela& subparcela, bool deTodo);

/// One thing that differs in a parcel that both states have.
struct CDiferencia {
    std::string que; ///< "titular", "superficie"
    std::string antes;
    std::string ahora;
    std::int64_t metros = 0; ///< how much more surface there is now
    bool deSuperficie = false;
    std::string letra = {};
};
std::vector<CDiferencia> Diferencias(const CCambioParcela& cambio, const CContraste& contraste,
                                     std::size_t titularesComoMucho);

/// "titular", "superficie"
const char* NombreDe(Difiere que);
/// "nueva", "desaparecida", "cambiada"
const char* NombreDe(CCambioParcela::Que que);
/// "división", "agrupación", "otro número"
const char* NombreDe(CReparto::Que que);
/// "titular nuevo", "titular con otro nombre"
const char* NombreDe(CCambioPersona::Que que);
/// "3-12 se divide en 3-40 y 3-41"
std::string EnPalabras(const CReparto& reparto, const CContraste& contraste,
                       std::size_t parcelasComoMucho);
/// The same of the one that a change belongs to; empty for none.
std::string PorQue(const CCambioParcela& cambio, const CContraste& contraste,
                   std::size_t parcelasComoMucho);

/// What of the subparcels can't be compared, where it isn't the same in both; empty for nothing.
std::string SinSuParcela(const CContraste& contraste);
/// That one of the two states seems to be in UTF-8 and the other isn't; empty where they are alike.
std::string EnUtf8(const CContraste& contraste);
/// What became of the parcels, as the terminal tells it.
std::string CambiosEnBreve(const CContraste& contraste);

} // namespace informe
