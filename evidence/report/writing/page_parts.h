#pragma once

#include <algorithm>
#include <concepts>
#include <ctime>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/markup.h"
#include "evidence/report/writing/page_content.h"

// What the sections of a page are made of, and the sections.

namespace informe {

/// Writes a whole document, HTML in UTF-8, piece by piece; it asks nothing of the network. Throws
/// what `escribe` throws.
/// \param estilo  what it has of style beside that of all pages
void EscribeDocumento(const CEscribe& escribe, const std::string& titulo, const char* estilo,
                      const std::function<void(CMarcas&)>& cuerpo);
/// Writes a page as one of the files. Raises CFileException.
void EscribeSalidaPagina(const CString& nombre, CConjuntoSalidas& todas,
                         const std::function<void(const CEscribe&)>& como);
/// When the page was made, and by what.
void PonPie(CMarcas& marcas, const CFirma& firma);
/// What stands behind its body: a script.
void Guion(CMarcas& marcas, const char* guion);
/// One of the numbers that a page begins with.
/// \param clase  how it looks where it isn't 0
void Cifra(CMarcas& marcas, bool esCero, const std::string& cuanto, const std::string& que,
           const char* clase);
void Cifra(CMarcas& marcas, std::integral auto cuantos, const char* uno, const char* varios,
           const char* clase)
{
    Cifra(marcas, cuantos == 0, Miles(cuantos), cuantos == 1 ? uno : varios, clase);
}

/// A section with its heading and what `dentro` writes.
void PonSeccion(CMarcas& marcas, const char* ancla, const char* titulo, std::invocable auto dentro)
{
    marcas.Bloque("section", {{"id", ancla}}, [&] {
        marcas.Linea().Bloque("h2", {}, titulo);
        dentro();
    });
}

// Classes of paragraphs: a note, a complaint, good news.
inline constexpr const char* kNota = "nota";
inline constexpr const char* kAlarma = "alarma";
inline constexpr const char* kCuadra = "cuadra";
void Parrafo(CMarcas& marcas, const char* clase, std::string_view texto);
/// A note behind those that are shown, "y 7 más." where there are others.
/// \param detras  what it says of the others
void PonResto(CMarcas& marcas, std::size_t dichos, std::size_t todos,
              std::string_view detras = ".");

/// A link where there is somewhere to go to, else the text alone.
void Enlace(CMarcas& marcas, const std::string& destino, std::string_view texto);

/// A cell of a table.
struct CCelda {
    std::string texto = {};
    const char* clase = nullptr;
    std::string destino = {};     ///< where its text links to; empty for nowhere
    const char* fuerte = nullptr; ///< what stands behind the text in bold
    std::string marcas = {};      ///< and what markup behind that
};
inline constexpr const char* kNumero = "n"; ///< class of cells whose numbers stand to the right
void Fila(CMarcas& marcas, CAtributos atributos, std::initializer_list<CCelda> celdas);

struct CColumnaPagina {
    const char* titulo;
    bool deNumeros = false;
};
/// A table whose rows `filas` writes, and `pie` what stands below them.
void Tabla(
    CMarcas& marcas, const char* ancla, const std::vector<CColumnaPagina>& columnas,
    const std::function<void()>& filas, const std::function<void()>& pie = [] {});
/// As many of them as a table shows.
template <class T>
std::span<const T> Primeros(const std::vector<T>& todos, std::size_t comoMucho)
{
    return std::span(todos).first(std::min(todos.size(), comoMucho));
}

/// "352488,49 4437040,56"
std::string SitioEnMetros(const vexageo::CPunto<int>& sitio);
/// "25/11/2026 12:34", by the clock of the place.
std::string Fecha(std::time_t fecha);

// What the sections of a report say below their headings.

/// The changes against another state, which there has to be.
void SeccionCambios(const CContenido& contenido, CMarcas& marcas);
void SeccionFicheros(const CContenido& contenido, CMarcas& marcas);
void SeccionBalance(const CContenido& contenido, CMarcas& marcas);
/// The drawings' side of the balance; nothing without drawings.
void PonDibujo(const CContenido& contenido, CMarcas& marcas);
/// What went on to Infograf; nothing of another run.
void PonInfograf(const CContenido& contenido, CMarcas& marcas);
void SeccionAsuntos(const CContenido& contenido, CMarcas& marcas);
void SeccionNumeros(const CContenido& contenido, CMarcas& marcas);
void SeccionMensajes(const CContenido& contenido, CMarcas& marcas);

} // namespace informe
