#pragma once

#include <string_view>

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
