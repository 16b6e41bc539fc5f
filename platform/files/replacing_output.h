#pragma once

#include <memory>

#include "platform/cstring.h"
#include "platform/files/output_destination.h"
#include "platform/files/output_set.h"

/// An output that replaces its target: alone, when it is written to its end, or with a run's other
/// ones, when their set is confirmed. Until then, and where anything fails, the target stays as it
/// was.
class CSalidaReemplazo final : public CDestino {
public:
    /// \param conjunto  the set that the output belongs to; null for none
    /// \return null with the reason in `error` where the target could not be written. Raises
    ///         CFileException where another program is writing it.
    static std::unique_ptr<CSalidaReemplazo> Abre(const CString& nombre, CConjuntoSalidas* conjunto,
                                                  sistema::Error& error);

    void Escribe(std::string_view bytes) override;
    /// Raises CFileException where an output that stands alone can't take its target's place. One
    /// of a set waits there.
    void Acaba() override { m_sola.Confirma(); }
    void Abandona(std::string_view /*resto*/) noexcept override { m_sola.Desecha(); }

private:
    explicit CSalidaReemplazo(const CString& nombre) : m_nombre(nombre) {}

    CString m_nombre;
    CConjuntoSalidas m_sola; // the output that belongs to no other set; else it is empty
    CReemplazo* m_reemplazo = nullptr;
};
