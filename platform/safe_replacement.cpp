#include "platform/safe_replacement.h"

#include <system_error>

#include "platform/system.h"

namespace fs = std::filesystem;

namespace {

/// The file that a chain of links leads to; the name itself where it is no link. Empty where the
/// links go round in a circle.
fs::path DestinoReal(fs::path ruta)
{
    constexpr int kEnlacesSeguidos = 40;
    for (int i = 0; i < kEnlacesSeguidos; ++i) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(ruta, error)))
            return ruta;
        const fs::path enlace = fs::read_symlink(ruta, error);
        if (error)
            return {};
        ruta = ruta.parent_path() / enlace; // an absolute link replaces the whole
    }
    return {};
}

} // namespace

bool CReemplazo::Abre(std::string_view nombre)
{
    m_destino = DestinoReal(sistema::Ruta(nombre));
    if (!m_destino.has_filename())
        return false;
    std::error_code error;
    const fs::file_status estado = fs::status(m_destino, error);
    switch (estado.type()) {
    case fs::file_type::regular:
        return sistema::PuedeEscribir(m_destino) && CreaTemporal(m_destino.parent_path());
    case fs::file_type::not_found:
        return CreaTemporal(m_destino.parent_path());
    case fs::file_type::none:
    case fs::file_type::directory:
        return false;
    default:
        m_fichero = sistema::AbreEscritura(m_destino);
        return m_fichero != nullptr;
    }
}

bool CReemplazo::CreaTemporal(const fs::path& carpeta)
{
    // A killed process leaves its temporary file behind, so a taken name is no failure.
    constexpr int kNombresProbados = 10000;
    constexpr std::size_t kNombreMasLargo = 200; // leaves room for the suffix in a name of 255
    const fs::path::string_type nombre = m_destino.filename().native().substr(0, kNombreMasLargo);
    for (int i = 1; i <= kNombresProbados && m_fichero == nullptr; ++i) {
        m_temporal = carpeta / nombre;
        m_temporal += ".~" + std::to_string(i);
        m_fichero = sistema::CreaNuevo(m_temporal);
        std::error_code error;
        if (m_fichero == nullptr && !fs::exists(fs::symlink_status(m_temporal, error)))
            break; // not taken: the folder refuses
    }
    if (m_fichero == nullptr)
        m_temporal.clear();
    else
        sistema::CopiaPermisos(m_fichero, m_destino);
    return m_fichero != nullptr;
}

bool CReemplazo::Confirma()
{
    if (m_temporal.empty()) {
        const bool cerrado = std::fclose(m_fichero) == 0;
        m_fichero = nullptr;
        return cerrado;
    }
    bool bien = sistema::Asegura(m_fichero);
    bien = std::fclose(m_fichero) == 0 && bien;
    m_fichero = nullptr;
    std::error_code error;
    if (bien)
        fs::rename(m_temporal, m_destino, error);
    if (!bien || error)
        fs::remove(m_temporal, error);
    else
        m_temporal.clear();
    const bool hecho = m_temporal.empty();
    m_temporal.clear();
    return hecho;
}

void CReemplazo::Desecha()
{
    if (m_fichero == nullptr)
        return;
    std::fclose(m_fichero);
    m_fichero = nullptr;
    std::error_code error;
    if (!m_temporal.empty())
        fs::remove(m_temporal, error);
    m_temporal.clear();
}
