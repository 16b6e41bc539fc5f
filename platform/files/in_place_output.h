#pragma once

#include <memory>

#include "platform/cstring.h"
#include "platform/files/output_destination.h"
#include "platform/files/system_files.h"

/// A file that is written in its place, locked meanwhile. It raises nothing: what can't be written
/// is lost, a mark in the file tells so where it would have stood, and whoever asks learns of the
/// first failure.
class CSalidaEnSitio final : public CDestino {
public:
    /// Empties the file, or makes it.
    /// \param fallo  takes the reason of the first write that fails; must outlive the object
    /// \return null, with the reason in `error` and the file as it was, where that can't be done;
    ///         sistema::kDeOtro where another program has it
    static std::unique_ptr<CSalidaEnSitio> Abre(const CString& nombre, sistema::Error& fallo,
                                                sistema::Error& error);
    ~CSalidaEnSitio() override { Cierra(); }

    void Escribe(std::string_view bytes) override;
    void Acaba() override { Cierra(); }
    void Abandona(std::string_view resto) noexcept override { Escribe(resto); }

private:
    CSalidaEnSitio(int fichero, sistema::Error& fallo) : m_fichero(fichero), m_fallo(fallo) {}
    void Cierra() noexcept;
    void Anota(const sistema::Error& error);

    int m_fichero;
    sistema::Error& m_fallo;
    bool m_hayHueco = false; // what was to be written last isn't there
};
