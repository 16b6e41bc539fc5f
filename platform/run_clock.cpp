#include "platform/run_clock.h"

#include "platform/format.h"
#include "platform/layer_texts.h"

namespace {

using namespace std::chrono_literals;

constexpr auto kAntesDePredecir = 2s; // the pace of a phase that has just begun tells nothing

std::string Horas(std::chrono::seconds tiempo)
{
    const auto total = tiempo.count();
    const int horas = static_cast<int>(total / 3600);
    const int minutos = static_cast<int>(total / 60 % 60);
    const int segundos = static_cast<int>(total % 60);
    return horas > 0 ? Formatea("%d:%02d:%02d", horas, minutos, segundos)
                     : Formatea("%d:%02d", minutos, segundos);
}

} // namespace

void CRelojProceso::Descuenta(Reloj::duration espera)
{
    m_inicio += espera;
    m_inicioFase += espera;
}

std::string CRelojProceso::Pasado(Reloj::time_point ahora) const
{
    return Horas(std::chrono::floor<std::chrono::seconds>(ahora - m_inicio));
}

std::string CRelojProceso::PasadoYResto(Reloj::time_point ahora, int hecho) const
{
    const auto fase = ahora - m_inicioFase;
    if (fase < kAntesDePredecir || hecho <= 0 || hecho >= 100)
        return Pasado(ahora);
    const auto resto = std::chrono::ceil<std::chrono::seconds>(fase * (100 - hecho) / hecho);
    return Pasado(ahora) + Formatea(textos::kQuedan, Horas(resto));
}
