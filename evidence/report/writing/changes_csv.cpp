#include <cstdlib>
#include <limits>
#include <string>

#include "evidence/report/writing/change_texts.h"
#include "evidence/report/writing/csv.h"

namespace informe {
namespace {

constexpr auto kTodos = std::numeric_limits<std::size_t>::max();

std::string Fila(const CDiferencia& una, const std::string& parcela, const std::string& porque)
{
    std::string fila = una.que + ";" + parcela;
    for (const std::string& campo : {una.letra, una.antes, una.ahora})
        fila += ";" + CampoCsv(campo);
    fila += ";" + (una.metros == 0 ? "" : std::to_string(una.metros));
    return fila + ";" + CampoCsv(porque) + "\r\n";
}

void EscribeParcela(const CEscribe& escribe, const CContraste& contraste,
                    const CCambioParcela& cambio)
{
    const std::string parcela = std::to_string(cambio.clave.mun) + ";" +
                                std::to_string(cambio.clave.polig) + ";" +
                                std::to_string(cambio.clave.parcela);
    const std::string porque = PorQue(cambio, contraste, kTodos);
    if (cambio.que == CCambioParcela::Que::Cambiada) {
        for (const CDiferencia& una : Diferencias(cambio, contraste, kTodos))
            escribe(Fila(una, parcela, porque));
        return;
    }
    CDiferencia una{std::string("parcela ") + NombreDe(cambio.que), {}, {}, cambio.Diferencia()};
    (cambio.ahora == nullptr ? una.antes : una.ahora) = std::to_string(std::abs(una.metros));
    escribe(Fila(una, parcela, porque));
}

std::string FilaDePersona(const CContraste& contraste, const CCambioPersona& cambio)
{
    CDiferencia una{std::string("titular ") + NombreDe(cambio.que),
                    NombreDe(contraste.antes.estado, cambio.antes),
                    NombreDe(contraste.ahora.estado, cambio.ahora)};
    if (cambio.antes < 0 || cambio.ahora < 0)
        una.metros = cambio.antes < 0 ? cambio.metros : -cambio.metros;
    return Fila(una, ";;", {});
}

} // namespace

void EscribeCambiosCsv(const CEscribe& escribe, const CContraste& contraste)
{
    escribe(kPrincipioCambios);
    escribe("polígono;parcela;letra;antes;ahora;diferencia;por qué\r\n");
    for (const CCambioParcela& cambio : contraste.cambios.parcelas)
        EscribeParcela(escribe, contraste, cambio);
    for (const CCambioPersona& cambio : contraste.cambios.personas)
        escribe(FilaDePersona(contraste, cambio));
}

} // namespace informe
