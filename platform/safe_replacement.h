#pragma once

#include <cstdio>
#include <filesystem>
#include <string_view>

/// A file in the making that takes the place of its target only when it is whole.
///
/// It grows under a temporary name beside the target; `Confirma` renames it. Whatever happens
/// before that, a full disk or the end of the process, the target keeps its old content. A link is
/// followed. What is no regular file (a device, a pipe) can't be replaced and is written directly.
class CReemplazo {
public:
    CReemplazo() = default;
    CReemplazo(const CReemplazo&) = delete;
    CReemplazo& operator=(const CReemplazo&) = delete;
    ~CReemplazo() { Desecha(); }

    /// Starts a file for the target. False, with nothing changed, where the target could not be
    /// written: an empty name, a missing folder, a folder of that name, no permission.
    bool Abre(std::string_view nombre);

    /// Where to write; without a buffer. Null when nothing is open.
    std::FILE* Fichero() const { return m_fichero; }

    /// Closes the file and puts it in the target's place. False, with the target as it was, where
    /// the system refuses; then, too, nothing stays behind.
    bool Confirma();

    /// Closes the file and removes it; the target stays as it was.
    void Desecha();

private:
    bool CreaTemporal(const std::filesystem::path& carpeta);

    std::FILE* m_fichero = nullptr;
    std::filesystem::path m_destino;
    std::filesystem::path m_temporal; // empty when the target is written directly
};
