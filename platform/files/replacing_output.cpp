#include "platform/files/cfile_exception.h"
#include "platform/files/output_destination.h"
#include "platform/files/output_set.h"

namespace {

class CSalidaReemplazo final : public CDestino {
public:
    explicit CSalidaReemplazo(const CString& nombre) : m_nombre(nombre) {}

    bool Abre(CConjuntoSalidas* conjunto, sistema::Error& error)
    {
        CConjuntoSalidas& suyo = conjunto != nullptr ? *conjunto : m_sola;
        m_reemplazo = suyo.Abre(m_nombre, error);
        return m_reemplazo != nullptr;
    }
    void Escribe(std::string_view bytes) override
    {
        sistema::Error error;
        m_reemplazo->Escribe(bytes, error);
        if (!error)
            return;
        m_reemplazo->Desecha();
        throw CFileException(m_nombre, error);
    }
    /// Raises CFileException where an output that stands alone can't take its target's place. One
    /// of a set waits there.
    void Acaba() override { m_sola.Confirma(); }
    void Abandona(std::string_view /*resto*/) noexcept override { m_sola.Desecha(); }

private:
    CString m_nombre;
    CConjuntoSalidas m_sola; // the output that belongs to no other set; else it is empty
    CReemplazo* m_reemplazo = nullptr;
};

} // namespace

std::unique_ptr<CDestino> AbreReemplazo(const CString& nombre, CConjuntoSalidas* conjunto,
                                        sistema::Error& error)
{
    auto salida = std::make_unique<CSalidaReemplazo>(nombre);
    if (!salida->Abre(conjunto, error))
        salida.reset();
    return salida;
}
