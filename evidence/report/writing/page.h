#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/report/findings/balance.h"
#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/findings/matters.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/reading/run_files.h"

namespace informe {

/// A line of the log as the page shows it.
struct CLineaMostrada {
    std::uint32_t posicion = 0; ///< among the log's lines, from 0
    std::string texto;
};

struct CMapaHecho {
    std::string titulo;
    std::string svg;
};

/// All that a page tells.
struct CInforme {
    std::string version;
    std::time_t hecho = 0;
    CFicheros ficheros;
    std::vector<CFicheroVisto> vistos;
    CRegistroLeido registro;
    CBalance balance;
    std::optional<CBalanceDibujo> dibujo; ///< of a way back
    CAsuntos asuntos;
    std::vector<CLineaMostrada> lineas; ///< those that are shown, in order
    std::set<std::uint32_t> mostradas;  ///< their positions
    std::vector<CMapaHecho> mapas;
    std::set<std::string> anclas; ///< that the maps made
    std::string csv;              ///< name of the sheet with all messages; empty for none

    /// Anchor of a message's row, empty where it isn't shown.
    std::string Ancla(std::uint32_t posicion) const;
    bool Detenido() const { return informe::Detenido(vistos, ficheros.sentido); }
    /// How many records and surfaces of parcels nothing explains.
    std::int64_t SinExplicar() const;
};

using CEscribe = std::function<void(std::string_view)>;

/// Writes the page, HTML in UTF-8, piece by piece. Throws what `escribe` throws.
void EscribePagina(const CInforme& informe, const CEscribe& escribe);

// Its parts.
std::string Estilo();
std::string Guion();
std::string SeccionFicheros(const CInforme& informe);
std::string SeccionBalance(const CInforme& informe);
std::string SeccionDibujo(const CInforme& informe); ///< of the balance; empty without drawings
std::string SeccionAsuntos(const CInforme& informe);
std::string SeccionNumeros(const CInforme& informe);
void SeccionMensajes(const CInforme& informe, const CEscribe& escribe);

/// "25/11/2026 12:34", by the clock of the place.
std::string Fecha(std::time_t fecha);
/// The note where a list was cut: how many more there are, and where they are to be found.
std::string YMas(const CInforme& informe, std::int64_t cuantos);

} // namespace informe
