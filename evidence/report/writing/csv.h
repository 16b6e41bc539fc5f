#pragma once

#include <string>
#include <string_view>

#include "evidence/report/findings/message_index.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/writing/output_file.h"

namespace informe {

struct CContraste;

// How the two sheets begin.
inline constexpr std::string_view kPrincipioMensajes = "\xEF\xBB\xBFlínea;código;clase;";
inline constexpr std::string_view kPrincipioCambios = "\xEF\xBB\xBFqué;municipio;";

/// Writes all lines of the log as a sheet: UTF-8 with its mark, by which its reader knows it,
/// semicolons, CR LF. The log is read once more for its words. Raises CFileException.
/// \param lugares  where the drawings show what the messages speak of; null for no drawings
void EscribeCsv(const CEscribe& escribe, const CRegistroLeido& registro,
                const CLugaresDeAvisos* lugares);
/// Writes all changes as a sheet of the same form, a row for each thing that differs. Raises
/// CFileException.
void EscribeCambiosCsv(const CEscribe& escribe, const CContraste& contraste);

/// A field of a row, UTF-8, in quotes where it needs them. A text that a spreadsheet would take for
/// a formula gets an apostrophe.
std::string CampoCsv(std::string_view utf8);

} // namespace informe
