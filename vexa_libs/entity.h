#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "platform/cstring.h"
#include "platform/files/cfile.h"
#include "vexa_libs/point.h"

// The entities of a drawing, and how they stand in a .BIN file.

namespace vexageo {

/// Type and code of an entity.
class CTipoDat {
public:
    /// As the .BIN file numbers them.
    enum CTipoEntidad { Ninguna = 0, Linea = 1, Texto = 2, Punto = 3 };

    CTipoDat() = default;
    CTipoDat(CTipoEntidad tipo, const CString& codigo) : m_tipo(tipo), m_codigo(codigo) {}

    bool EsLinea() const { return m_tipo == Linea; }
    bool EsTexto() const { return m_tipo == Texto; }
    bool EsBorrado() const { return m_borrado; }
    bool ComparaCodigo(const CString& codigo) const { return m_codigo == codigo; }
    CTipoEntidad Tipo() const { return m_tipo; }
    const CString& Codigo() const { return m_codigo; }
    void SetBorrado(bool borrado) { m_borrado = borrado; }

private:
    CTipoEntidad m_tipo = Ninguna;
    CString m_codigo = "nuevo";
    bool m_borrado = false;
};

/// What all entities have: type, code, points, and the text of those that carry one.
template <class T>
class CEntidadVexa {
    static_assert(std::is_same_v<T, int>, "a drawing holds whole coordinates alone");

public:
    CEntidadVexa() = default;
    explicit CEntidadVexa(const CTipoDat& tipo) : m_tipo(tipo) {}
    virtual ~CEntidadVexa() = default;
    CEntidadVexa(const CEntidadVexa&) = default;
    CEntidadVexa(CEntidadVexa&&) noexcept = default;
    CEntidadVexa& operator=(const CEntidadVexa&) = default;
    CEntidadVexa& operator=(CEntidadVexa&&) noexcept = default;

    /// Reads the entity at the file's position. False, with nothing changed here, at the end of the
    /// file and where no whole entity stands: a wrong mark or kind, lengths that pass the file's
    /// end, a wrong sum. No length is believed before it is held against the file. Behind a false
    /// the file stands nowhere in particular. Raises CFileException where a read fails.
    virtual bool Read(CFile* fichero) { return Lee(fichero, false); }
    /// Writes the entity at the file's end. The code must be shorter than 65536 characters. Raises
    /// CFileException.
    void Write(CFile* fichero) const;
    /// Length in bytes of what `Write` writes.
    int Bytes() const;

    const CTipoDat& Tipo() const { return m_tipo; }
    CTipoDat& Tipo() { return m_tipo; }
    const std::vector<CPunto<T>>& Puntos() const { return m_puntos; }
    std::vector<CPunto<T>>& Puntos() { return m_puntos; }
    /// The first point; the origin for an entity without points.
    CPunto<T> PrimerPunto() const { return m_puntos.empty() ? CPunto<T>() : m_puntos.front(); }

    virtual std::unique_ptr<CEntidadVexa> Clona() const
    {
        return std::make_unique<CEntidadVexa>(*this);
    }

protected:
    bool Lee(CFile* fichero, bool soloLineas);

    CString m_texto;

private:
    CTipoDat m_tipo;
    std::vector<CPunto<T>> m_puntos;
};

/// A line.
template <class T>
class CLinea : public CEntidadVexa<T> {
public:
    explicit CLinea(const CString& codigo = "nuevo")
        : CEntidadVexa<T>(CTipoDat(CTipoDat::Linea, codigo))
    {
    }

    /// As the base's; false, with nothing changed, for an entity that is no line.
    bool Read(CFile* fichero) override { return this->Lee(fichero, true); }
    /// Turns the line round.
    void Voltea();
    /// Appends the other line; with `sinRepetir` without its first point where it repeats the last
    /// one here, Z included. Gives true.
    bool Une(const CLinea& otra, bool sinRepetir);
    /// Non-zero where the closed line holds the point, its boundary included; 0 outside and with
    /// fewer than three points. Exact. A question of this line alone: the translations, which want
    /// the smallest of many rings, ask a CIndiceAnillos, by the same exact test.
    short EstaDentro(const CPunto<T>& punto) const;
    /// Area of the closed line, without a sign: drawing units divided by the square of `precision`,
    /// so 100 gives square metres.
    double Area(double precision) const;

    std::unique_ptr<CEntidadVexa<T>> Clona() const override
    {
        return std::make_unique<CLinea>(*this);
    }
};

/// A text. Its first point is its position.
template <class T>
class CTexto : public CEntidadVexa<T> {
public:
    explicit CTexto(const CString& codigo = "nuevo")
        : CEntidadVexa<T>(CTipoDat(CTipoDat::Texto, codigo))
    {
    }

    const CString& Texto() const { return this->m_texto; }
    void SetTexto(const CString& texto) { this->m_texto = texto; }

    std::unique_ptr<CEntidadVexa<T>> Clona() const override
    {
        return std::make_unique<CTexto>(*this);
    }
};

/// Marks an entity as deleted and seals it anew, in the bytes of a drawing. Nothing changes where
/// no whole one stands.
/// \param desde  where it begins, from 0
void MarcaBorrada(std::string& bytes, std::size_t desde);

/// Head of a .BIN file.
struct CCabeceraDibujo {
    static constexpr unsigned kBytes = 16;

    /// Reads the head at the file's start. False where it is none, or has more decimals than nine;
    /// the fields below may have changed then. Raises CFileException where a read fails.
    bool Read(CFile* fichero);
    /// Writes the head at the file's end. Raises CFileException.
    void Write(CFile* fichero) const;

    CDataSemilla semilla;
    unsigned entidades = 0;
};

} // namespace vexageo
