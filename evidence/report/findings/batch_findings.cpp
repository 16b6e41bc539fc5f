#include "evidence/report/findings/batch_findings.h"

#include <algorithm>
#include <tuple>

namespace informe {

Suerte CTrabajoVisto::DameSuerte() const
{
    if (!hecho)
        return Suerte::SinHacer;
    if (hecho->estado != 0)
        return Suerte::Fallo;
    return cifras ? Suerte::Hecho : Suerte::SinLeer;
}

void CResumenLote::Ordena()
{
    std::ranges::sort(trabajos, {}, [](const CTrabajoVisto& uno) {
        return std::tuple(uno.DameSuerte(), -uno.Cifra(&CCifras::sinExplicar),
                          -uno.Cifra(&CCifras::perdida), -uno.Cifra(&CCifras::sinPadre),
                          -uno.Cifra(&CCifras::errores), -uno.Cifra(&CCifras::warnings),
                          uno.numero);
    });
}

std::int64_t CResumenLote::Cuantos(Suerte suerte) const
{
    return std::ranges::count(trabajos, suerte, &CTrabajoVisto::DameSuerte);
}

std::int64_t CResumenLote::Suma(std::optional<std::int64_t> CCifras::*cual) const
{
    std::int64_t suma = 0;
    for (const CTrabajoVisto& uno : trabajos)
        suma += uno.Cifra(cual);
    return suma;
}

std::int64_t CResumenLote::QuePierden() const
{
    return std::ranges::count_if(
        trabajos, [](const CTrabajoVisto& uno) { return uno.Cifra(&CCifras::perdida) > 0; });
}

double CResumenLote::Segundos() const
{
    double suma = 0;
    for (const CTrabajoVisto& uno : trabajos)
        suma += uno.hecho ? uno.hecho->segundos : 0;
    return suma;
}

bool CResumenLote::Hay(const CColumnaLote& columna) const
{
    return std::ranges::any_of(trabajos, [&](const CTrabajoVisto& uno) {
        return uno.cifras && ((*uno.cifras).*columna.cifra);
    });
}

std::vector<const CColumnaLote*> CResumenLote::Columnas() const
{
    std::vector<const CColumnaLote*> columnas;
    for (const CColumnaLote& columna : kColumnasLote)
        if (Hay(columna))
            columnas.push_back(&columna);
    return columnas;
}

bool CResumenLote::HayPerdidas() const
{
    return std::ranges::any_of(trabajos, [](const CTrabajoVisto& uno) {
        return uno.DameSuerte() != Suerte::Hecho || uno.cifras->hayPerdidas;
    });
}

} // namespace informe
