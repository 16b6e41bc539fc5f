#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "platform/cfile.h"
#include "platform/cstring.h"
#include "platform/format.h"
#include "vexa_libs/ccadena.h"

// How a record stands in a line. Each record class has one table of columns beside it, from which
// its readers and its writers work: the read layout of the exchange file, the list of subparcels
// with holders, the written layout of the exchange file and the row of a table file. Columns are
// bytes counted from 0.

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
    CDatosLinea(short ger, short mun, short emenor) : Ger(ger), Mun(mun), EMenor(emenor) {}

    short Ger = 0;
    short Mun = 0;
    short EMenor = 0;
    short Zona = 0;
    short Polig = 0;
    int Parcela = 0;
    int numImputa = 0; ///< `NumOrden` of a holder
    CString Tit;
    int partici = 0;
    int numVinculos = 0;
    int gruposVinculos = 0;
    int numParaje = 0;
    int numRegistro = 0; ///< of a parcel's CT records, from 1
    int hectareas = 0;   ///< with the next two, a surface in three fields
    int areas = 0;
    int centiareas = 0;
    int cSing = 0;       ///< a character given by its number
    double jornadas = 0; ///< days, where the record holds hundredths

    /// A surface in square metres as three fields, and back. Sums wrap at 32 bits.
    void PonSuperficie(int superficie);
    int DameSuperficie() const;
};

/// The field of a column: a member of the record, something beside it, or a fixed text.
template <class R>
using CCampo =
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

/// Number of the field in a row of the table file, from 0.
struct CCampoTabla {
    short numero = -1;
    const char* forma = "";
};

inline constexpr CLectura kNoSeLee = {};
inline constexpr CEscritura kNoSeEscribe = {};
inline constexpr CCampoTabla kSinTabla = {};

/// One row of a record's table of columns.
template <class R>
struct CColumna {
    CCampo<R> campo;
    CLectura catastro; ///< read layout
    CLectura lista;    ///< list layout
    CEscritura escrita;
    CCampoTabla tabla;
};

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

namespace columnas {

// The one place where a text becomes a field.
inline void Pon(short& campo, std::string_view texto)
{
    campo = static_cast<short>(LeeEntero(texto));
}
inline void Pon(int& campo, std::string_view texto)
{
    campo = LeeEntero(texto);
}
inline void Pon(double& campo, std::string_view texto)
{
    campo = LeeReal(texto);
}
inline void Pon(CString& campo, std::string_view texto)
{
    campo = texto;
}
inline void Pon(char& campo, std::string_view texto)
{
    if (!texto.empty())
        campo = texto.front();
}

// And the one where a field becomes a text.
inline void Anexa(std::string& destino, const CForma& forma, int campo)
{
    AnexaEntero(destino, forma, campo);
}
inline void Anexa(std::string& destino, const CForma& forma, double campo)
{
    AnexaReal(destino, forma, campo);
}
inline void Anexa(std::string& destino, const CForma& forma, const CString& campo)
{
    AnexaTexto(destino, forma, campo);
}
inline void Anexa(std::string& destino, const CForma& /*forma*/, char campo)
{
    destino += campo;
}

template <class R>
void PonCampo(const CCampo<R>& campo, std::string_view texto, R& registro, CDatosLinea& datos)
{
    std::visit(
        [&]<class C>(C donde) {
            if constexpr (std::is_invocable_v<C, R&>)
                Pon(registro.*donde, texto);
            else if constexpr (std::is_invocable_v<C, CDatosLinea&>)
                Pon(datos.*donde, texto);
        },
        campo);
}

template <class R>
void AnexaCampo(std::string& destino, const CCampo<R>& campo, const CForma& forma,
                const R& registro, const CDatosLinea& datos)
{
    std::visit(
        [&]<class C>(C donde) {
            if constexpr (std::is_invocable_v<C, const R&>)
                Anexa(destino, forma, registro.*donde);
            else if constexpr (std::is_invocable_v<C, const CDatosLinea&>)
                Anexa(destino, forma, datos.*donde);
            else
                destino += donde;
        },
        campo);
}

} // namespace columnas

/// Reads the fields of a line that `cual` (`catastro` or `lista`) gives a place and that the line
/// is long enough for; all others stay as they are. A one-character field whose place is behind the
/// line's last character stays too.
template <class R, std::size_t N>
void LeeColumnas(const std::array<CColumna<R>, N>& tabla, CLectura CColumna<R>::*cual,
                 const CLineaFija& linea, R& registro, CDatosLinea& datos)
{
    for (const CColumna<R>& columna : tabla) {
        const CLectura& donde = columna.*cual;
        if (donde.columna >= 0 && linea.Alcanza(donde.minimo))
            columnas::PonCampo(columna.campo, linea.Texto(donde), registro, datos);
    }
}

/// Reads the fields of a table row that aren't empty; `campos` are all fields of the row.
template <class R, std::size_t N>
void LeeFila(const std::array<CColumna<R>, N>& tabla, std::span<const std::string_view> campos,
             R& registro, CDatosLinea& datos)
{
    for (const CColumna<R>& columna : tabla) {
        if (columna.tabla.numero < 0)
            continue;
        const std::string_view texto = campos[static_cast<std::size_t>(columna.tabla.numero)];
        if (!texto.empty())
            columnas::PonCampo(columna.campo, texto, registro, datos);
    }
}

/// Puts a value into a line at the place where it is read: numbers with leading zeros, texts cut or
/// padded to the width. A short line is filled up with blanks.
void PonEnLinea(std::string& linea, const CLectura& donde, int valor);
void PonEnLinea(std::string& linea, const CLectura& donde, std::string_view valor);

/// The inverse of LeeColumnas: puts all fields that `cual` gives a place into the line.
template <class R, std::size_t N>
void ComponColumnas(const std::array<CColumna<R>, N>& tabla, CLectura CColumna<R>::*cual,
                    std::string& linea, const R& registro, const CDatosLinea& datos)
{
    const auto pon = [&]<class V>(const CLectura& donde, const V& valor) {
        if constexpr (std::is_same_v<V, char>)
            PonEnLinea(linea, donde, std::string_view(&valor, 1));
        else if constexpr (std::is_integral_v<V>)
            PonEnLinea(linea, donde, static_cast<int>(valor));
        else if constexpr (std::is_same_v<V, CString>)
            PonEnLinea(linea, donde, std::string_view(valor));
    };
    for (const CColumna<R>& columna : tabla) {
        const CLectura& donde = columna.*cual;
        if (donde.columna < 0)
            continue;
        std::visit(
            [&]<class C>(C campo) {
                if constexpr (std::is_invocable_v<C, const R&>)
                    pon(donde, registro.*campo);
                else if constexpr (std::is_invocable_v<C, const CDatosLinea&>)
                    pon(donde, datos.*campo);
            },
            columna.campo);
    }
}

/// A piece of a line to be written: blanks, then a field.
template <class R>
struct CTrozo {
    int orden = -1; ///< its column, or its number in the row
    int blancos = 0;
    CCampo<R> campo;
    CForma forma;
};

/// The pieces of a line in the order in which they are written. A table of columns whose pieces
/// overlap, repeat or leave a hole doesn't compile.
template <class R, std::size_t N>
class CTrozos {
protected:
    constexpr void Añade(int orden, const CCampo<R>& campo, const char* forma)
    {
        CTrozo<R> trozo{orden, 0, campo, {}};
        std::string_view texto = forma;
        trozo.forma = AnalizaForma(texto);
        if (trozo.forma.tipo == '\0' || !texto.empty())
            throw "the form of a column is one form and nothing else";
        std::size_t i = m_cuantos++;
        for (; i > 0 && m_trozos[i - 1].orden > orden; --i)
            m_trozos[i] = m_trozos[i - 1];
        m_trozos[i] = trozo;
    }
    constexpr CTrozo<R>& Trozo(std::size_t i) { return m_trozos[i]; }
    constexpr std::span<const CTrozo<R>> Trozos() const { return {m_trozos.data(), m_cuantos}; }
    constexpr std::size_t Cuantos() const { return m_cuantos; }

private:
    std::array<CTrozo<R>, N> m_trozos{};
    std::size_t m_cuantos = 0;
};

/// A record of the written layout, made from the table of columns: what no column claims is blank.
template <class R, std::size_t N>
class CRegistroFijo : CTrozos<R, N> {
public:
    constexpr CRegistroFijo(const std::array<CColumna<R>, N>& tabla, int ancho)
    {
        for (const CColumna<R>& columna : tabla)
            if (columna.escrita.columna >= 0)
                this->Añade(columna.escrita.columna, columna.campo, columna.escrita.forma);
        int hasta = 0;
        for (std::size_t i = 0; i < this->Cuantos(); ++i) {
            CTrozo<R>& trozo = this->Trozo(i);
            trozo.blancos = trozo.orden - hasta;
            if (trozo.blancos < 0)
                throw "two written columns overlap";
            hasta = trozo.orden + Ancho(trozo);
        }
        m_cola = ancho - hasta;
        if (m_cola < 0)
            throw "the written columns pass the record's width";
    }

    /// Appends the record, without a line end. A value wider than its column widens the record.
    void Anexa(std::string& destino, const R& registro, const CDatosLinea& datos) const
    {
        for (const CTrozo<R>& trozo : this->Trozos()) {
            destino.append(static_cast<std::size_t>(trozo.blancos), ' ');
            columnas::AnexaCampo(destino, trozo.campo, trozo.forma, registro, datos);
        }
        destino.append(static_cast<std::size_t>(m_cola), ' ');
    }

private:
    static constexpr int Ancho(const CTrozo<R>& trozo)
    {
        if (std::holds_alternative<const char*>(trozo.campo))
            return static_cast<int>(std::string_view(std::get<const char*>(trozo.campo)).size());
        return trozo.forma.tipo == 'c' ? 1 : trozo.forma.ancho;
    }

    int m_cola = 0;
};

/// A row of a table file, made from the table of columns: fields between tabs.
template <class R, std::size_t N>
class CFilaTabla : CTrozos<R, N> {
public:
    constexpr explicit CFilaTabla(const std::array<CColumna<R>, N>& tabla)
    {
        for (const CColumna<R>& columna : tabla)
            if (columna.tabla.numero >= 0)
                this->Añade(columna.tabla.numero, columna.campo, columna.tabla.forma);
        for (std::size_t i = 0; i < this->Cuantos(); ++i)
            if (this->Trozo(i).orden != static_cast<int>(i))
                throw "the fields of a table row are numbered without a hole";
    }

    /// Appends the row, without a line end.
    void Anexa(std::string& destino, const R& registro, const CDatosLinea& datos) const
    {
        for (const CTrozo<R>& trozo : this->Trozos()) {
            if (trozo.orden > 0)
                destino += '\t';
            columnas::AnexaCampo(destino, trozo.campo, trozo.forma, registro, datos);
        }
    }
};

/// Writes one line made by a record or a row. Raises CFileException.
template <class F, class R>
void GrabaLinea(CStdioFile& fichero, const F& formato, const R& registro, const CDatosLinea& datos)
{
    std::string& linea = fichero.Borrador();
    formato.Anexa(linea, registro, datos);
    linea += '\n';
    fichero.WriteString(linea);
}
