#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "evidence/report/findings/changes/contrast.h"
#include "evidence/report/findings/drawn_balance.h"
#include "evidence/report/findings/matters.h"
#include "evidence/report/findings/run_evidence.h"
#include "evidence/report/findings/run_figures.h"
#include "evidence/report/findings/shown_lines.h"
#include "evidence/report/writing/anchors.h"
#include "evidence/report/writing/maps.h"
#include "evidence/report/writing/markup.h"

namespace informe {

/// All that a page tells.
struct CContenido {
    CFirma firma;
    std::string csv; ///< name of the sheet with all messages; empty for none
    const CProceso& proceso;
    const CLineasMostradas& lineas;
    const CAnclas& anclas;
    std::optional<CBalanceDibujo> dibujo; ///< of a way back
    CAsuntos asuntos;
    std::vector<CMapaHecho> mapas;
    bool ensayo = false;                   ///< the run was only tried
    const CContraste* contraste = nullptr; ///< null where nothing is compared with the run

    /// A surface that was lost, with which all that is told begins.
    struct CPerdida {
        std::int64_t metros;
        std::string que; ///< "no cuentan, en 44 parcelas de varios recintos"
    };
    /// First what several outlines cost, 0 too, then parcels of the tables that weren't written.
    /// Empty where no surfaces can be compared.
    std::vector<CPerdida> Perdidas() const;
    /// All of it in numbers.
    CCifras Cifras() const;
    /// Surface was lost, or records without a message, or something isn't explained, or can't be
    /// checked, or was observed.
    bool HayPerdidas() const;
    /// The drawings of polygons that aren't whole, a sentence; empty for none.
    std::string Incompleto() const;
    /// The log has lines; without any a page says nothing of them.
    bool HayMensajes() const { return !proceso.registro.avisos.empty(); }
    /// How many records and surfaces of parcels nothing explains.
    std::int64_t SinExplicar() const
    {
        return proceso.balance.SinExplicar() + (dibujo ? dibujo->SinExplicar() : 0);
    }
};

/// Writes the page, HTML in UTF-8, piece by piece. Throws what `escribe` throws.
void EscribePagina(const CContenido& contenido, const CEscribe& escribe);

/// The page of two states without a run.
struct CContenidoCambios {
    CFirma firma;
    std::string nombre; ///< what the newer state is called by
    const CContraste& contraste;
};
void EscribePagina(const CContenidoCambios& contenido, const CEscribe& escribe);

/// What the terminal is told of it, UTF-8.
std::string Resumen(const CContraste& contraste, const CString& pagina);

/// What the terminal is told, UTF-8: the log in a line, its messages by number, and where the page
/// is.
std::string Resumen(const CContenido& contenido, const CString& pagina);

} // namespace informe
