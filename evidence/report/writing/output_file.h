#pragma once

#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/paths.h"
#include "evidence/report/reading/log_messages.h"
#include "evidence/report/writing/watched_signals.h"

namespace informe {

/// Takes what is written, a piece at a time.
using CEscribe = std::function<void(std::string_view)>;

/// A file that the report writes. It takes the place of an older one when all that belong to the
/// report do; the standard output, by the name `kEstandar`, gets its bytes at once. All operations
/// raise CFileException, the constructor where the file can't be created. Where the process is to
/// end, a write throws CInterrumpido.
class CSalida {
public:
    /// \param principio  how all such files begin: what stands there and begins otherwise is
    ///                   somebody's, and stays beside it, with all that the others replace
    CSalida(const CString& nombre, std::string_view principio, CConjuntoSalidas& todas);

    void Escribe(std::string_view utf8)
    {
        CVigilancia::Mira();
        if (!m_estandar)
            m_fichero.Write(utf8.data(), static_cast<UINT>(utf8.size()));
        else if (std::fwrite(utf8.data(), 1, utf8.size(), stdout) != utf8.size())
            throw CFileException(kEstandar, std::make_error_code(std::errc::io_error));
    }
    void Cierra()
    {
        if (!m_estandar)
            m_fichero.Close();
    }

private:
    bool m_estandar;
    CFile m_fichero;
};

/// When and by what it is written.
struct CFirma {
    std::string version; ///< of the program
    std::time_t hecho = 0;
};

/// Writes one of the files; an empty name is no file.
/// \param principio  as of CSalida
/// \param como       writes it, UTF-8, piece by piece
void EscribeSalida(const CString& nombre, std::string_view principio, CConjuntoSalidas& todas,
                   const std::function<void(const CEscribe&)>& como);

/// Puts all that was written in its place. What another program wrote there in the meantime stays
/// beside it, and a sentence of `quejas` says so. Raises CFileException, with all as it was.
void Coloca(CConjuntoSalidas& todas, std::vector<std::string>& quejas);

/// What is written must fall on nothing that is read, nor on one another: gives the first output
/// that does, null for none. Empty names are no outputs.
const CString* BuscaOcupada(const std::vector<CString>& salidas, std::vector<CString> leidos);
/// Tells whether a name is a drawing's, a topology's, a log's or one of what goes to the authority
/// and to Infograf: no page or sheet is called so.
bool EsDeUnMunicipio(const CString& nombre);
/// The complaint of such a one.
std::string NoSePisa(const CString& ocupada);

} // namespace informe
