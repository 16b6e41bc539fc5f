#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

/// Memory for the bytes of a file on their way. It is not filled with zeros, and stays as large as
/// it once was.
class CBufer {
public:
    /// Makes room for so many bytes in all; those that stand there stay. What pointed into the
    /// buffer points nowhere then.
    void Cabe(std::size_t bytes)
    {
        if (bytes <= m_cabe)
            return;
        std::unique_ptr<char[]> mayor(new char[bytes]);
        // No more than fits, which it never is: g++ 14 sees a larger buffer behind an empty one.
        std::copy_n(m_bytes.get(), std::min(m_lleno, bytes), mayor.get());
        m_bytes = std::move(mayor);
        m_cabe = bytes;
    }
    /// Throws away the first bytes; the others move to the front.
    void QuitaDelante(std::size_t bytes)
    {
        std::copy(m_bytes.get() + bytes, m_bytes.get() + m_lleno, m_bytes.get());
        m_lleno -= bytes;
    }
    /// Leaves the first bytes alone.
    void Deja(std::size_t bytes) { m_lleno = bytes; }
    /// Tells that so many bytes were put behind the others.
    void Crece(std::size_t bytes) { m_lleno += bytes; }

    std::string_view Bytes() const { return {m_bytes.get(), m_lleno}; }
    std::size_t Lleno() const { return m_lleno; }          ///< bytes that stand there
    std::size_t Libre() const { return m_cabe - m_lleno; } ///< for which there is room behind them
    char* Final() { return m_bytes.get() + m_lleno; }

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_cabe = 0;
    std::size_t m_lleno = 0;
};
