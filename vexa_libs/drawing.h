#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "vexa_libs/entity.h"

namespace vexageo {

/// A drawing in memory: entities in the order in which they were put in.
class CDibujoVexa {
public:
    /// \param semilla  its decimals; null for two. It must live as long as the drawing and its
    ///                 copies.
    explicit CDibujoVexa(const CDataSemilla* semilla = nullptr) : m_semilla(semilla) {}
    CDibujoVexa(const CDibujoVexa& otro);
    CDibujoVexa(CDibujoVexa&& otro) noexcept; ///< leaves the other one empty
    CDibujoVexa& operator=(CDibujoVexa otro) noexcept;
    ~CDibujoVexa() = default;

    /// Keeps a copy of the entity, behind those that are there. The copy keeps its address as long
    /// as the drawing has it. Gives true.
    bool Inserta(const CEntidadVexa<int>& entidad);
    /// The entity at a valid position, from 0.
    CEntidadVexa<int>* operator[](unsigned i) { return m_contenido.entidades[i].get(); }
    const CEntidadVexa<int>* operator[](unsigned i) const { return m_contenido.entidades[i].get(); }

    /// The line or the text at that place; what stands there must be one.
    const CLinea<int>& Linea(unsigned i) const
    {
        return static_cast<const CLinea<int>&>(*m_contenido.entidades[i]);
    }
    const CTexto<int>& Texto(unsigned i) const
    {
        return static_cast<const CTexto<int>&>(*m_contenido.entidades[i]);
    }

    unsigned CantidadLineas() const { return m_contenido.lineas; }
    unsigned CantidadTextos() const { return m_contenido.textos; }
    unsigned CantidadPuntos() const { return m_contenido.puntos; }
    unsigned CantidadBorrados() const { return m_contenido.borrados; }
    unsigned Cantidad() const { return static_cast<unsigned>(m_contenido.entidades.size()); }
    /// The points of all entities.
    std::uint64_t CantidadVertices() const { return m_contenido.vertices; }

    void SinMensajes() { m_mensajes = false; }
    void ConMensajes() { m_mensajes = true; }
    const CDataSemilla* Semilla() const { return m_semilla; }
    /// Units of a coordinate in a metre.
    double Precision() const
    {
        return m_semilla != nullptr ? m_semilla->Precision() : CDataSemilla().Precision();
    }
    const CMaximas<int>& GetMaximasInt() const { return m_contenido.maximas; }
    CMaximas<double> GetMaximasDouble() const; ///< in metres

private:
    /// What was put in.
    struct CContenido {
        unsigned lineas = 0;
        unsigned textos = 0;
        unsigned puntos = 0;
        unsigned borrados = 0;
        std::uint64_t vertices = 0;
        CMaximas<int> maximas;
        std::vector<std::unique_ptr<CEntidadVexa<int>>> entidades;
    };

    const CDataSemilla* m_semilla;
    bool m_mensajes = true;
    CContenido m_contenido;
};

} // namespace vexageo
