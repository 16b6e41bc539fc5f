#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <variant>

#include "platform/cstring.h"
#include "platform/format.h"
#include "vexa_libs/ccadena.h"

// How a record stands in a line. Each record class has one table of columns beside it, from which
// its readers and its writers work: the read layout of the exchange file, the list of subparcels
// with holders, the written layout of the exchange file and the row of a table file. Columns are
// bytes counted from 0. The readers stand in column_reader.h, the writers in column_writer.h; both
// walk a table when the program is built, so that a line costs what its characters do.

/// The layouts that a record's `Lee` knows.
enum Modo {
    kModoCatastro = 0, ///< read layout of the exchange file
    kModoLista = 1,    ///< list of subparcels with holders
    kModoTabla = 2     ///< row of a table file
};

/// What a line carries beside the fields of its record: its head, numbers that stand for indexes,
/// and values that the record holds in another form.
struct CDatosLinea {
    CDatosLinea() = default;
    CDatosLinea(short ger, short mun, short emenor, short zona = 0, int polig = 0, int parcela = 0)
        : Ger(ger), Mun(mun), EMenor(emenor), Zona(zona), Polig(polig), Parcela(parcela)
    {
    }

    short Ger = 0;
    short Mun = 0;
    short EMenor = 0;
    short Zona = 0;
    int Polig = 0;
    int Parcela = 0;
    CString letra;     ///< of a subparcel, as a row has it
    int numImputa = 0; ///< `NumOrden` of a holder
    CString Tit;
    int partici = 0;
    int numVinculos = 0;
    int gruposVinculos = 0;
    int numParaje = 0;
    CString nombreParaje;
    int numRegistro = 0; ///< of a parcel's CT records, from 1
    int hectareas = 0;   ///< with the next two, a surface in three fields
    int areas = 0;
    int centiareas = 0;
    int cSing = 0;       ///< a character given by its number
    double jornadas = 0; ///< days, where the record holds hundredths
    bool faltan = false; ///< a row lacked one of these values that it should have
    bool pasan = false;  ///< a number had no room in its field, and another one was read
    bool resto = false;  ///< a number went on behind what was read of it
    bool letras = false; ///< more stood in a field of one character

    /// Puts a surface in square metres into the three fields.
    void PonSuperficie(int superficie);
    /// The three fields as square metres; the sum wraps at 32 bits.
    int DameSuperficie() const;
};

/// How many records have a field that was read as another one, or by half.
struct CCamposVistos {
    int pasan = 0;
    int conResto = 0;
    int conLetras = 0;

    void Toma(const CDatosLinea& datos)
    {
        pasan += datos.pasan ? 1 : 0;
        conResto += datos.resto ? 1 : 0;
        conLetras += datos.letras ? 1 : 0;
    }
};

/// The field of a column: a member of the record, something beside it, or a fixed text.
template <class R>
using CMiembroDe =
    std::variant<short R::*, int R::*, char R::*, double R::*, CString R::*, short CDatosLinea::*,
                 int CDatosLinea::*, CString CDatosLinea::*, double CDatosLinea::*, const char*>;

/// Column, width and the least line length, line end included, at which the field is read.
struct CLectura {
    short columna = -1;
    short ancho = 0;
    short minimo = 0;
};

struct CEscritura {
    short columna = -1;
    const char* forma = ""; ///< its width is the column's
};

/// Number of the field in a row of the table file, from 0. One without a form is only read, never
/// written.
struct CCampoTabla {
    short numero = -1;
    const char* forma = "";
    bool obligado = false; ///< a row without it is no record, or tells that it lacks it
};

/// How wide the field is written; 0 for one that has no form.
constexpr int AnchoDe(const CCampoTabla& campo)
{
    std::string_view forma = campo.forma;
    return forma.empty() ? 0 : AnalizaForma(forma).ancho;
}

/// Marks fields that a row must have.
inline constexpr bool kObligado = true;

inline constexpr CLectura kNoSeLee = {};
inline constexpr CEscritura kNoSeEscribe = {};
inline constexpr CCampoTabla kSinTabla = {};

/// The blanks that a text loses when it is read.
enum class Blancos { Ninguno, DeCola, DelEntorno };

/// One row of a record's table of columns.
template <class R>
struct CColumna {
    CMiembroDe<R> campo;
    CLectura catastro; ///< read layout
    CLectura lista;    ///< list layout
    CEscritura escrita;
    CCampoTabla tabla;
    Blancos pierde = Blancos::Ninguno;
};

/// Of texts that are kept without the blanks behind them, and without those around them.
inline constexpr Blancos kSinCola = Blancos::DeCola;
inline constexpr Blancos kSinBlancos = Blancos::DelEntorno;

/// The member, or the fixed text, of a row of a table or of a piece of a line.
template <const auto& Tabla, std::size_t I>
inline constexpr auto kMiembro = std::get<Tabla[I].campo.index()>(Tabla[I].campo);

/// The first row of a table for a field. For constants alone: a field that has no row doesn't
/// compile.
template <class R, std::size_t N>
constexpr const CColumna<R>& ColumnaDe(const std::array<CColumna<R>, N>& tabla,
                                       const std::type_identity_t<CMiembroDe<R>>& campo)
{
    for (const CColumna<R>& columna : tabla)
        if (columna.campo == campo)
            return columna;
    throw "no row of the table is for that field";
}

/// The rows of two tables as one table, those of `a` first.
template <class R, std::size_t N, std::size_t M>
constexpr std::array<CColumna<R>, N + M> Une(const std::array<CColumna<R>, N>& a,
                                             const std::array<CColumna<R>, M>& b)
{
    std::array<CColumna<R>, N + M> suma;
    for (std::size_t i = 0; i < N + M; ++i)
        suma[i] = i < N ? a[i] : b[i - N];
    return suma;
}

/// A line of fixed columns. Its length counts the line end where the line keeps it, but no field
/// reaches into the line end.
class CLineaFija {
public:
    explicit CLineaFija(std::string_view linea)
        : m_texto(linea), m_largo(static_cast<int>(linea.size()))
    {
        if (m_texto.ends_with('\n'))
            m_texto.remove_suffix(1);
    }

    bool Vacia() const { return m_texto.empty(); }
    bool Alcanza(int minimo) const { return m_largo >= minimo; }
    /// The field at a column, counted from 0; shorter, or empty, where the line ends before.
    std::string_view Texto(int columna, int ancho) const
    {
        const auto desde = static_cast<std::size_t>(columna);
        return desde < m_texto.size() ? m_texto.substr(desde, static_cast<std::size_t>(ancho))
                                      : std::string_view();
    }
    std::string_view Texto(const CLectura& donde) const
    {
        return Texto(donde.columna, donde.ancho);
    }
    int Entero(const CLectura& donde) const { return LeeEntero(Texto(donde)); }

    /// Tells whether all columns before `hasta` are there, and so fields can be had without asking.
    bool Llega(std::size_t hasta) const { return m_texto.size() >= hasta; }
    std::string_view TextoQueEsta(const CLectura& donde) const
    {
        return {m_texto.data() + donde.columna, static_cast<std::size_t>(donde.ancho)};
    }

private:
    std::string_view m_texto;
    int m_largo;
};

/// The head that all lines of the read layout share.
inline constexpr CLectura kLeeTipo = {0, 2, 0};
inline constexpr CLectura kLeeGer = {2, 3, 0};
inline constexpr CLectura kLeeMun = {5, 3, 0};

/// Width of the records of the written layout, without the line end.
inline constexpr int kAnchoRegistro = 150;
