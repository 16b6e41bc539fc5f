#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/files/system_files.h"

/// A program to be started beside others, without a window.
struct COrden {
    std::filesystem::path programa;
    std::vector<std::string> argumentos;
    std::filesystem::path carpeta; ///< in which it works
    std::string entrada;           ///< what it reads; 4 KB at most
    std::filesystem::path dicho;   ///< file for what it prints, on both streams
    std::vector<std::pair<std::string, std::string>> entorno; ///< variables beside those of ours
    bool sobrevive = false; ///< it goes on where this process ends before it
};

/// Programs that run at the same time. Where this process ends before them, however that comes, on
/// Linux they are asked to end, on Windows killed. Elsewhere they go on.
class CHijos {
public:
    /// How many there can be at a time: on Windows they are waited for together.
    static const std::size_t kComoMucho;

    struct CFin {
        int hijo;
        std::optional<int> estado; ///< none where it was killed
    };

    CHijos();
    CHijos(const CHijos&) = delete;
    CHijos& operator=(const CHijos&) = delete;
    /// What still runs goes on, without anybody to wait for it.
    ~CHijos();

    /// Starts one. Gives the number by which `Espera` tells of its end; with an error nothing runs.
    int Empieza(const COrden& orden, sistema::Error& error);
    /// Waits for the end of one, and no longer than told: nothing where none has ended. A signal
    /// ends the wait, too.
    std::optional<CFin> Espera(std::chrono::milliseconds comoMucho);
    /// Asks all to end, as somebody at a terminal would.
    void PideAcabar();

private:
    struct CEstado;
    std::unique_ptr<CEstado> m_estado;
};
