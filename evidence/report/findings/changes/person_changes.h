#pragma once

#include <cstdint>
#include <set>
#include <vector>

#include "evidence/report/reading/states/municipality_state.h"

namespace informe {

/// What became of a holder.
struct CCambioPersona {
    enum class Que { Nueva, Desaparecida, OtroNombre, OtroDni };

    Que que;
    int antes = -1; ///< position in the older state, -1 for none
    int ahora = -1;
    std::int64_t parcelas = 0; ///< that the person holds, or held, and their square metres
    std::int64_t metros = 0;
};

/// Who is the same person in two states: whoever has the same name and DNI; else, of those whom
/// only one state has, who alone has that DNI, or that name.
class CPersonasDeDos {
public:
    CPersonasDeDos(const CEstadoMunicipio& antes, const CEstadoMunicipio& ahora);

    /// Numbers for the people of either state, the same for the same person.
    const std::vector<int>& DeAntes() const { return m_deAntes; }
    const std::vector<int>& DeAhora() const { return m_deAhora; }
    /// In the order of the two states: those who are gone, who are new, who got another name.
    /// \param municipios  people of others are passed over
    std::vector<CCambioPersona> Cambios(const std::set<short>& municipios) const;

private:
    struct CSuelto {
        int persona;
        int pareja = -1; ///< position among the others
        CCambioPersona::Que que = CCambioPersona::Que::Nueva;
    };

    void Numera();
    void Empareja(CString CEstadoMunicipio::CPersona::*campo, CCambioPersona::Que que);

    const CEstadoMunicipio& m_antes;
    const CEstadoMunicipio& m_ahora;
    std::vector<int> m_deAntes;
    std::vector<int> m_deAhora;
    std::vector<CSuelto> m_desaparecidas;
    std::vector<CSuelto> m_nuevas;
};

} // namespace informe
