#include "evidence/report/writing/changes_csv.h"

#include <limits>
#include <string>

#include "evidence/report/writing/change_texts.h"
#include "evidence/report/writing/csv.h"
#include "platform/ansi.h"

namespace informe {
namespace {

constexpr auto kTodos = std::numeric_limits<std::size_t>::max();

class CHojaCambios {
public:
    CHojaCambios(const CEscribe& escribe, const CContraste& contraste)
        : m_escribe(escribe), m_contraste(contraste)
    {
    }

    void Escribe()
    {
        m_escribe(ansi::kMarcaUtf8);
        m_escribe("qué;municipio;polígono;parcela;letra;antes;ahora;diferencia;por qué\r\n");
        for (const CCambioParcela& cambio : m_contraste.cambios.parcelas)
            EscribeParcela(cambio);
        for (const CCambioPersona& cambio : m_contraste.cambios.personas)
            EscribePersona(cambio);
    }

private:
    void EscribeFila(const std::string& que, const std::string& parcela, const CDiferencia& una,
                     const std::string& porque)
    {
        std::string fila = que + ";" + parcela;
        for (const std::string& campo : {una.letra, una.antes, una.ahora})
            fila += ";" + CampoCsv(campo);
        fila += ";" + (una.metros == 0 ? "" : std::to_string(una.metros));
        m_escribe(fila + ";" + CampoCsv(porque) + "\r\n");
    }

    void EscribeParcela(const CCambioParcela& cambio)
    {
        const std::string parcela = std::to_string(cambio.clave.mun) + ";" +
                                    std::to_string(cambio.clave.polig) + ";" +
                                    std::to_string(cambio.clave.parcela);
        const std::string porque = PorQue(cambio, m_contraste, kTodos);
        if (cambio.que == CCambioParcela::Que::Cambiada) {
            for (const CDiferencia& una : Diferencias(cambio, m_contraste, kTodos))
                EscribeFila(una.que, parcela, una, porque);
            return;
        }
        CDiferencia una{"", {}, {}, {}, cambio.Diferencia()};
        (cambio.ahora == nullptr ? una.antes : una.ahora) = std::to_string(std::abs(una.metros));
        EscribeFila(std::string("parcela ") + NombreDe(cambio.que), parcela, una, porque);
    }

    void EscribePersona(const CCambioPersona& cambio)
    {
        CDiferencia una{"",
                        {},
                        NombreDe(m_contraste.antes.estado, cambio.antes),
                        NombreDe(m_contraste.ahora.estado, cambio.ahora)};
        if (cambio.antes < 0 || cambio.ahora < 0)
            una.metros = cambio.antes < 0 ? cambio.metros : -cambio.metros;
        EscribeFila(std::string("titular ") + NombreDe(cambio.que), ";;", una, {});
    }

    const CEscribe& m_escribe;
    const CContraste& m_contraste;
};

} // namespace

void EscribeCambiosCsv(const CEscribe& escribe, const CContraste& contraste)
{
    CHojaCambios(escribe, contraste).Escribe();
}

} // namespace informe
