#include "batch/progress.h"

#include <cstdio>

#include "batch/batch_texts.h"
#include "batch/job_table.h"
#include "platform/system.h"

namespace lote {
namespace {

/// Hours, minutes and seconds.
std::string Tiempo(std::chrono::seconds quedan)
{
    const auto segundos = static_cast<int>(quedan.count());
    constexpr int kHora = 3600;
    constexpr int kMinuto = 60;
    return Formatea("%d:%02d:%02d", segundos / kHora, segundos % kHora / kMinuto,
                    segundos % kMinuto);
}

} // namespace

CAvance::CAvance(int trabajos) : m_trabajos(trabajos), m_esTerminal(sistema::EsTerminal(stderr)) {}

CAvance::~CAvance()
{
    if (m_ancho > 0)
        sistema::Imprime(stderr, "\r" + std::string(m_ancho, ' ') + "\r");
}

void CAvance::Cuenta(const CAcabados& acabados)
{
    constexpr std::chrono::milliseconds kEnTerminal{200};
    constexpr std::chrono::minutes kEnRegistro{1};
    const auto ahora = Reloj::now();
    if (ahora - m_dicho < kEnTerminal || (!m_esTerminal && ahora - m_dicho < kEnRegistro))
        return;
    m_dicho = ahora;
    const auto& [hechos, fallidos] = acabados;
    std::string linea = Formatea(textos::kAvance, hechos, m_trabajos, fallidos);
    if (hechos > 0)
        linea +=
            Formatea(textos::kQuedan, Tiempo(std::chrono::duration_cast<std::chrono::seconds>(
                                          (ahora - m_principio) / hechos * (m_trabajos - hechos))));
    if (!m_esTerminal)
        return sistema::Imprime(stderr, linea + "\n");
    const std::size_t ancho = linea.size();
    if (m_ancho > ancho)
        linea.append(m_ancho - ancho, ' ');
    sistema::Imprime(stderr, "\r" + linea);
    m_ancho = ancho;
}

} // namespace lote
