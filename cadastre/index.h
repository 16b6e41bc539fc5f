#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

/// Code of every look-up that finds nothing.
inline constexpr int kNoEncontrado = -3;

/// Hashes of keys. A key of several fields has its own overload beside its type.
inline std::uint32_t Mezcla(std::uint64_t valor)
{
    valor = (valor ^ (valor >> 32U)) * 0x9E3779B97F4A7C15U;
    return static_cast<std::uint32_t>(valor >> 32U);
}
inline std::uint32_t HashDe(std::string_view texto)
{
    return Mezcla(std::hash<std::string_view>()(texto));
}
inline std::uint32_t HashDe(int numero)
{
    return Mezcla(static_cast<std::uint32_t>(numero));
}
inline std::uint32_t HashDe(std::uint32_t una, std::uint32_t otra)
{
    return Mezcla((std::uint64_t{una} << 32U) | otra);
}

/// Table from the hash of a key to a position in an array. It holds no key itself, so whoever asks
/// tells it whether the element at a position has the key. Open addressing, 8 bytes a place, at
/// most three quarters full.
class CTablaHash {
public:
    /// Position stored for the key, kNoEncontrado if there is none.
    template <class Igual>
    int Busca(std::uint32_t hash, Igual igual) const
    {
        if (m_sitios.empty())
            return kNoEncontrado;
        const CSitio& sitio = m_sitios[Sitio(hash, igual)];
        return sitio.posicion >= 0 ? sitio.posicion : kNoEncontrado;
    }

    /// Makes `posicion` stand for the key, in the place of another one if there was one.
    template <class Igual>
    void Pon(std::uint32_t hash, int posicion, Igual igual)
    {
        if ((m_usados + 1) * 4 > m_sitios.size() * 3)
            Crece();
        CSitio& sitio = m_sitios[Sitio(hash, igual)];
        if (sitio.posicion < 0)
            ++m_usados;
        sitio = {hash, posicion};
    }

private:
    struct CSitio {
        std::uint32_t hash = 0;
        int posicion = -1;
    };

    template <class Igual>
    std::size_t Sitio(std::uint32_t hash, Igual igual) const
    {
        const std::size_t mascara = m_sitios.size() - 1;
        std::size_t i = hash & mascara;
        while (m_sitios[i].posicion >= 0 &&
               !(m_sitios[i].hash == hash && igual(m_sitios[i].posicion)))
            i = (i + 1) & mascara;
        return i;
    }
    void Crece();

    std::vector<CSitio> m_sitios; // their number is a power of two
    std::size_t m_usados = 0;
};

/// Which elements with a key an index is asked for.
enum class Gana {
    Primero,
    Ultimo,
    Todos ///< the first one, and from each the next (`Siguiente`)
};

/// Look-up beside a plain array whose answer is that of a walk from index 0. Short arrays are
/// walked. For a long one a table is made when it is first asked for; elements appended since then
/// are taken in at the next question. Whoever reorders the array or changes keys must call
/// `Olvida`. A copy starts without a table. Not for several threads at once.
template <Gana G>
class CIndice {
public:
    CIndice() = default;
    CIndice(const CIndice& /*otro*/) {}
    CIndice(CIndice&&) noexcept = default;
    CIndice& operator=(const CIndice& /*otro*/)
    {
        Olvida();
        return *this;
    }
    CIndice& operator=(CIndice&&) noexcept = default;
    ~CIndice() = default;

    /// \param proyeccion  member or function that gives an element's key
    /// \return the position, kNoEncontrado if no element has the key
    template <class T, class P, class K>
    int Busca(const std::vector<T>& elementos, P proyeccion, const K& valor) const
    {
        if (elementos.size() <= kPocos)
            return Recorre(elementos, proyeccion, valor, 0);
        PonAlDia(elementos, proyeccion);
        return m_estado->tabla.Busca(HashDe(valor), Con(elementos, proyeccion, valor));
    }

    /// The next element with the key of the one at `posicion`, else kNoEncontrado.
    template <class T, class P>
    int Siguiente(const std::vector<T>& elementos, P proyeccion, int posicion) const
        requires(G == Gana::Todos)
    {
        if (elementos.size() <= kPocos)
            return Recorre(elementos, proyeccion, Clave(elementos, proyeccion, posicion),
                           posicion + 1);
        PonAlDia(elementos, proyeccion);
        return m_estado->cadena[static_cast<std::size_t>(posicion)].siguiente;
    }

    /// To be called when the element at a position got another key: the table takes that in and
    /// needn't be made anew. For an old key that nobody asks for any more, as other elements that
    /// have it would not be found.
    template <class T, class P>
    void ClaveNueva(const std::vector<T>& elementos, P proyeccion,
                    int posicion) requires(G != Gana::Todos)
    {
        if (m_estado != nullptr && posicion < m_estado->hasta)
            Anota(elementos, proyeccion, posicion);
    }

    void Olvida() { m_estado.reset(); }

private:
    static constexpr std::size_t kPocos = 12;

    struct CEslabon {
        int siguiente = kNoEncontrado;
        int ultimo = kNoEncontrado; ///< at the first element of a key: the last one so far
    };
    struct CEstado {
        CTablaHash tabla;
        int hasta = 0;                // elements that the table knows
        std::vector<CEslabon> cadena; // of these, where all are asked for
    };

    template <class T, class P>
    static decltype(auto) Clave(const std::vector<T>& elementos, P proyeccion, int i)
    {
        return std::invoke(proyeccion, elementos[static_cast<std::size_t>(i)]);
    }

    /// Tells whether the element at a position has the key.
    template <class T, class P, class K>
    static auto Con(const std::vector<T>& elementos, P proyeccion, const K& valor)
    {
        return [&elementos, proyeccion, &valor](int i) {
            return Clave(elementos, proyeccion, i) == valor;
        };
    }

    template <class T, class P, class K>
    static int Recorre(const std::vector<T>& elementos, P proyeccion, const K& valor, int desde)
    {
        int hallado = kNoEncontrado;
        for (int i = desde; i < static_cast<int>(elementos.size()); ++i)
            if (Clave(elementos, proyeccion, i) == valor) {
                hallado = i;
                if (G != Gana::Ultimo)
                    break;
            }
        return hallado;
    }

    template <class T, class P>
    void PonAlDia(const std::vector<T>& elementos, P proyeccion) const
    {
        if (m_estado == nullptr)
            m_estado = std::make_unique<CEstado>();
        while (m_estado->hasta < static_cast<int>(elementos.size()))
            Anota(elementos, proyeccion, m_estado->hasta++);
    }

    template <class T, class P>
    void Anota(const std::vector<T>& elementos, P proyeccion, int posicion) const
    {
        const auto& valor = Clave(elementos, proyeccion, posicion);
        const auto igual = Con(elementos, proyeccion, valor);
        const std::uint32_t hash = HashDe(valor);
        const int antes = m_estado->tabla.Busca(hash, igual);
        if (antes < 0 || (G == Gana::Ultimo ? posicion > antes : posicion < antes))
            m_estado->tabla.Pon(hash, posicion, igual);
        if constexpr (G == Gana::Todos)
            Encadena(posicion, antes < 0 ? posicion : antes);
    }

    /// Hangs a new element behind the last one of its key.
    void Encadena(int posicion, int primero) const
    {
        std::vector<CEslabon>& cadena = m_estado->cadena;
        cadena.emplace_back();
        int& ultimo = cadena[static_cast<std::size_t>(primero)].ultimo;
        if (primero != posicion)
            cadena[static_cast<std::size_t>(ultimo)].siguiente = posicion;
        ultimo = posicion;
    }

    mutable std::unique_ptr<CEstado> m_estado;
};
