#pragma once

#include <string>

#include "evidence/report/findings/batch_findings.h"
#include "evidence/report/writing/output_file.h"

// What is written of a batch: a page, a sheet, and the same for programs.

namespace informe {

/// Writes the page, HTML in UTF-8. Throws what `escribe` throws.
/// \param pagina  its name, from which its links lead; `kEstandar` for the current folder's
void EscribePaginaLote(const CResumenLote& resumen, const CFirma& firma, const CString& pagina,
                       const CEscribe& escribe);
inline constexpr std::string_view kPrincipioHojaLote = "\xEF\xBB\xBFtrabajo;carpeta;";
/// Writes the sheet, all jobs and their sums: UTF-8 with its mark, semicolons, CR LF.
void EscribeHojaLote(const CResumenLote& resumen, const CString& hoja, const CEscribe& escribe);
/// The same for programs; to be asked for only with `kHayJson`.
std::string LoteEnJson(const CResumenLote& resumen, const CFirma& firma);

/// What the terminal is told, UTF-8.
/// \param pagina  where the page is; empty for nowhere
std::string ResumenLote(const CResumenLote& resumen, const CString& pagina);

/// "hecho", "falló (1)"
std::string EnPalabras(const CTrabajoVisto& uno);
/// What there is to say of a job beside its numbers.
std::string Nota(const CTrabajoVisto& uno);
/// How a page or a sheet names a file, for who reads it where it stands: from its folder on, with
/// strokes. Empty for no file, and where no such way leads there.
std::string Desde(const CString& pagina, const CString& fichero);

} // namespace informe
