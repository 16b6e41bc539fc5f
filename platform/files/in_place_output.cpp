#include <algorithm>
#include <utility>

#include "platform/files/output_destination.h"
#include "platform/files/safe_replacement.h"
#include "platform/layer_texts.h"

namespace {

class CSalidaEnSitio final : public CDestino {
public:
    CSalidaEnSitio(sistema::CAbierto fichero, sistema::Error& fallo)
        : m_fichero(std::move(fichero)), m_fallo(fallo)
    {
    }
    ~CSalidaEnSitio() override { Cierra(); }

    void Escribe(std::string_view bytes) override;
    void Acaba() override { Cierra(); }
    void Abandona(std::string_view resto) noexcept override { Escribe(resto); }

private:
    void Cierra() noexcept;
    void Anota(const sistema::Error& error)
    {
        if (error && !m_fallo)
            m_fallo = error;
    }

    sistema::CAbierto m_fichero;
    sistema::Error& m_fallo;
    bool m_hayHueco = false; // what was to be written last isn't there
};

void CSalidaEnSitio::Escribe(std::string_view bytes)
{
    sistema::Error error;
    if (m_hayHueco && !bytes.empty()) {
        // The bytes may begin inside a line whose start is lost.
        bytes.remove_prefix(std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        sistema::Escribe(m_fichero, textos::kMarcaHueco, error);
        m_hayHueco = static_cast<bool>(error);
    }
    if (!error)
        sistema::Escribe(m_fichero, bytes, error);
    m_hayHueco = m_hayHueco || error;
    Anota(error);
}

void CSalidaEnSitio::Cierra() noexcept
{
    if (m_fichero == sistema::kCerrado)
        return;
    sistema::Error error;
    if (m_hayHueco) // at the very end
        sistema::Escribe(m_fichero, textos::kMarcaHueco, error);
    m_fichero.Cierra(error);
    Anota(error);
}

} // namespace

std::unique_ptr<CDestino> AbreEnSitio(const CString& nombre, sistema::Error& fallo,
                                      sistema::Error& error)
{
    using Tipo = sistema::CEstado::Tipo;
    const std::filesystem::path ruta = CReemplazo::DestinoReal(sistema::Ruta(nombre), error);
    if (error)
        return nullptr;
    sistema::CAbierto abierto = sistema::Abre(ruta, sistema::Modo::EnSitio, error);
    const int fichero = abierto;
    if (fichero == sistema::kCerrado) {
        sistema::Error deMirar;
        if (sistema::Mira(ruta, deMirar).tipo == Tipo::Carpeta) // some systems have no word for it
            error = std::make_error_code(std::errc::is_a_directory);
        return nullptr;
    }
    auto salida = std::make_unique<CSalidaEnSitio>(std::move(abierto), fallo);
    const bool regular = sistema::Mira(fichero, error).tipo == Tipo::Regular;
    if (!error && regular && sistema::Bloquea(fichero, error) == sistema::Bloqueo::DeOtro && !error)
        error = sistema::kDeOtro;
    if (!error && regular)
        sistema::Recorta(fichero, 0, error);
    if (error)
        salida.reset();
    return salida;
}
