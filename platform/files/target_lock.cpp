#include "platform/files/target_lock.h"

#include <utility>

using sistema::Bloqueo;
using sistema::Error;

namespace {

/// Opens the lock's file, and makes it if need be. One that another user's run left, and can't be
/// written, can be locked all the same.
sistema::CAbierto AbreCandado(const std::filesystem::path& ruta, Error& error)
{
    sistema::CAbierto fichero = sistema::Abre(ruta, sistema::Modo::Tomar, error);
    if (error != std::errc::permission_denied)
        return fichero;
    Error alLeer;
    sistema::CAbierto suyo = sistema::Abre(ruta, sistema::Modo::Leer, alLeer);
    if (!alLeer)
        error.clear();
    return suyo;
}

} // namespace

Bloqueo CCandado::Toma(const std::filesystem::path& ruta, Error& error)
{
    constexpr int kIntentos = 100;
    Suelta();
    m_ruta = ruta;
    for (int i = 0; i < kIntentos; ++i) {
        sistema::CAbierto fichero = AbreCandado(ruta, error);
        if (error)
            return Bloqueo::NoHay;
        const Bloqueo bloqueo = sistema::Bloquea(fichero, error);
        if (!error && bloqueo != Bloqueo::DeOtro) {
            // Between the two calls another run may have put it away.
            const sistema::CEstado estado = sistema::Mira(fichero, error);
            if (!error && estado.EsElMismo(sistema::MiraEnlace(ruta, error))) {
                // A file of somebody's that was put or linked there is neither opened to others nor
                // taken away.
                const bool esUnCandado = estado.largo == 0 && estado.nombres == 1;
                if (!esUnCandado)
                    m_ruta.clear();
                else if (sistema::EsMio(estado))
                    sistema::AbreATodos(fichero, estado);
                m_fichero = std::move(fichero);
                return bloqueo;
            }
        }
        Error alBorrar;
        if (error && bloqueo != Bloqueo::DeOtro) // nobody else's, and of no use
            sistema::Borra(ruta, alBorrar);
        if (error)
            return Bloqueo::NoHay;
        if (bloqueo == Bloqueo::DeOtro)
            return bloqueo;
    }
    return Bloqueo::DeOtro;
}

void CCandado::Suelta() noexcept
{
    if (m_fichero == sistema::kCerrado)
        return;
    Error error;
    if (!m_ruta.empty())
        sistema::Borra(m_ruta, error); // as long as it is locked, or another run's would go
    m_fichero.Cierra(error);
}
