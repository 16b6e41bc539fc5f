#pragma once

#include <memory>
#include <string_view>

#include "platform/cstring.h"
#include "platform/files/system_files.h"

class CConjuntoSalidas;

/// Where the bytes of a file that is written go, one class for each way. It is asked once a
/// bufferful and not once a line.
class CDestino {
public:
    CDestino() = default;
    CDestino(const CDestino&) = delete;
    CDestino& operator=(const CDestino&) = delete;
    virtual ~CDestino() = default;

    /// Takes the bytes that follow those taken before. Where it raises CFileException all of them
    /// are thrown away, and nothing else may be asked of it.
    virtual void Escribe(std::string_view bytes) = 0;
    /// All was written. Nothing else may be asked of it then, also where it raises CFileException.
    virtual void Acaba() = 0;
    /// The file is let go of before all was written.
    /// \param resto  what was written last and didn't come here yet
    virtual void Abandona(std::string_view resto) noexcept = 0;
};

/// A file that is written in its place, locked meanwhile; it is emptied, or made. It raises
/// nothing: what can't be written is lost, a mark in the file tells so where it would have stood,
/// and whoever asks learns of the first failure.
/// \param fallo  takes the reason of the first write that fails; must outlive the destination
/// \return null, with the reason in `error` and the file as it was, where that can't be done;
///         sistema::kDeOtro where another program has it
std::unique_ptr<CDestino> AbreEnSitio(const CString& nombre, sistema::Error& fallo,
                                      sistema::Error& error);

/// An output that replaces its target: alone, when it is written to its end, or with a run's other
/// ones, when their set is confirmed. Until then, and where anything fails, the target stays as it
/// was.
/// \param conjunto  the set that the output belongs to; null for none
/// \return null with the reason in `error` where the target could not be written. Raises
///         CFileException where another program is writing it.
std::unique_ptr<CDestino> AbreReemplazo(const CString& nombre, CConjuntoSalidas* conjunto,
                                        sistema::Error& error);
