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
inline std::uint32_t Resumen(std::string_view texto)
{
    return Mezcla(std::hash<std::string_view>()(texto));
}
inline std::uint32_t Resumen(int numero)
{
    return Mezcla(static_cast<std::uint32_t>(numero));
}
inline std::uint32_t Resumen(std::uint32_t una, std::uint32_t otra)
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
    int Busca(std::uint32_t resumen, Igual igual) const
    {
        if (m_sitios.empty())
            return kNoEncontrado;
        const CSitio& sitio = m_sitios[Sitio(resumen, igual)];
        return sitio.posicion >= 0 ? sitio.posicion : kNoEncontrado;
    }

    /// Makes `posicion` stand for the key, in the place of another one if there was one.
    template <class Igual>
    void Pon(std::uint32_t resumen, int posicion, Igual igual)
    {
        if ((m_usados + 1) * 4 > m_sitios.size() * 3)
            Crece();
        CSitio& sitio = m_sitios[Sitio(resumen, igual)];
        if (sitio.posicion < 0)
            ++m_usados;
        sitio = {resumen, posicion};
    }

private:
    struct CSitio {
        std::uint32_t resumen = 0;
        int posicion = -1;
    };

    template <class Igual>
    std::size_t Sitio(std::uint32_t resumen, Igual igual) const
    {
        const std::size_t mascara = m_sitios.size() - 1;
        std::size_t i = resumen & mascara;
        while (m_sitios[i].posicion >= 0 &&
               !(m_sitios[i].resumen == resumen && igual(m_sitios[i].posicion)))
            i = (i + 1) & mascara;
        return i;
    }
    void Crece();

    std::vector<CSitio> m_sitios; // their number is a power of two
    std::size_t m_usados = 0;
};

enum class Gana { Primero, Ultimo };

/// Look-up beside a plain array whose answer is that of a walk from index 0: the first element with
/// the key, or the last one. Short arrays are walked. For a long one a table is made when it is
/// first asked for; elements appended since then are taken in at the next question. Whoever
/// reorders the array or changes keys must call `Olvida`. A copy starts without a table. Not for
/// several threads at once.
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
        const auto igual = [&](int i) {
            return std::invoke(proyeccion, elementos[static_cast<std::size_t>(i)]) == valor;
        };
        const int cuantos = static_cast<int>(elementos.size());
        if (cuantos > kPocos) {
            PonAlDia(elementos, proyeccion);
            return m_estado->tabla.Busca(Resumen(valor), igual);
        }
        int hallado = kNoEncontrado;
        for (int i = 0; i < cuantos && (G == Gana::Ultimo || hallado < 0); ++i)
            if (igual(i))
                hallado = i;
        return hallado;
    }

    /// To be called when the element at a position got another key: the table takes that in and
    /// needn't be made anew. For an old key that nobody asks for any more, as other elements that
    /// have it would not be found.
    template <class T, class P>
    void ClaveNueva(const std::vector<T>& elementos, P proyeccion, int posicion)
    {
        if (m_estado != nullptr && posicion < m_estado->hasta)
            Anota(elementos, proyeccion, posicion);
    }

    void Olvida() { m_estado.reset(); }

private:
    static constexpr int kPocos = 12;

    struct CEstado {
        CTablaHash tabla;
        int hasta = 0; // elements that the table knows
    };

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
        const auto& valor = std::invoke(proyeccion, elementos[static_cast<std::size_t>(posicion)]);
        const auto igual = [&](int i) {
            return std::invoke(proyeccion, elementos[static_cast<std::size_t>(i)]) == valor;
        };
        const std::uint32_t resumen = Resumen(valor);
        const int antes = m_estado->tabla.Busca(resumen, igual);
        if (antes < 0 || (G == Gana::Primero ? posicion < antes : posicion > antes))
            m_estado->tabla.Pon(resumen, posicion, igual);
    }

    mutable std::unique_ptr<CEstado> m_estado;
};

/// Look-up of all elements with a key, in the order of the array: the first one, and from each the
/// next. Otherwise like CIndice.
class CIndiceEncadenado {
public:
    CIndiceEncadenado() = default;
    CIndiceEncadenado(const CIndiceEncadenado& /*otro*/) {}
    CIndiceEncadenado(CIndiceEncadenado&&) noexcept = default;
    CIndiceEncadenado& operator=(const CIndiceEncadenado& /*otro*/)
    {
        Olvida();
        return *this;
    }
    CIndiceEncadenado& operator=(CIndiceEncadenado&&) noexcept = default;
    ~CIndiceEncadenado() = default;

    /// The first element with the key, else kNoEncontrado.
    template <class T, class K>
    int Primero(const std::vector<T>& elementos, K T::*campo, const K& valor) const
    {
        if (elementos.size() <= kPocos)
            return Recorre(elementos, campo, valor, 0);
        PonAlDia(elementos, campo);
        return m_estado->primeros.Busca(Resumen(valor),
                                        [&](int i) { return En(elementos, i).*campo == valor; });
    }

    /// The next element with the key of the one at `posicion`, else kNoEncontrado.
    template <class T, class K>
    int Siguiente(const std::vector<T>& elementos, K T::*campo, int posicion) const
    {
        if (elementos.size() <= kPocos)
            return Recorre(elementos, campo, En(elementos, posicion).*campo, posicion + 1);
        PonAlDia(elementos, campo);
        return m_estado->cadena[static_cast<std::size_t>(posicion)].siguiente;
    }

    void Olvida() { m_estado.reset(); }

private:
    static constexpr std::size_t kPocos = 12;

    struct CEslabon {
        int siguiente = kNoEncontrado;
        int ultimo = kNoEncontrado; ///< at the first element of a key: the last one so far
    };
    struct CEstado {
        CTablaHash primeros;
        std::vector<CEslabon> cadena; // as far as the elements are known
    };

    template <class T>
    static const T& En(const std::vector<T>& elementos, int i)
    {
        return elementos[static_cast<std::size_t>(i)];
    }

    template <class T, class K>
    static int Recorre(const std::vector<T>& elementos, K T::*campo, const K& valor, int desde)
    {
        for (int i = desde; i < static_cast<int>(elementos.size()); ++i)
            if (En(elementos, i).*campo == valor)
                return i;
        return kNoEncontrado;
    }

    template <class T, class K>
    void PonAlDia(const std::vector<T>& elementos, K T::*campo) const
    {
        if (m_estado == nullptr)
            m_estado = std::make_unique<CEstado>();
        std::vector<CEslabon>& cadena = m_estado->cadena;
        while (cadena.size() < elementos.size()) {
            const int nuevo = static_cast<int>(cadena.size());
            const K& valor = En(elementos, nuevo).*campo;
            const auto igual = [&](int i) { return En(elementos, i).*campo == valor; };
            int primero = m_estado->primeros.Busca(Resumen(valor), igual);
            cadena.emplace_back();
            if (primero < 0) {
                primero = nuevo;
                m_estado->primeros.Pon(Resumen(valor), nuevo, igual);
            } else {
                const int ultimo = cadena[static_cast<std::size_t>(primero)].ultimo;
                cadena[static_cast<std::size_t>(ultimo)].siguiente = nuevo;
            }
            cadena[static_cast<std::size_t>(primero)].ultimo = nuevo;
        }
    }

    mutable std::unique_ptr<CEstado> m_estado;
};
