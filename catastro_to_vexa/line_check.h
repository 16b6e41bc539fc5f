#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "cadastre/exchange_format.h"
#include "platform/ansi.h"

/// How long the lines of a record are.
struct CLargoRegistro {
    std::size_t fin = std::string_view::npos; ///< where the last column that is read ends
    std::size_t minimo = 0; ///< of a line, its end included, of which all columns are read
};

/// What speaks against the lines of an input, one by one: deliveries that were joined, cut short or
/// converted on their way hold lines of which nothing is read, or something else than they say.
class CMiraLineas {
public:
    /// \param tipoEntrada  0 an exchange file, any other a list of subparcels with holders
    explicit CMiraLineas(int tipoEntrada) : m_esLista(tipoEntrada != 0) {}

    /// \param linea  as its reader takes it: with its line end, or a piece of one that is too long
    void Toma(std::string_view linea);

    /// The heading of a list, from which the tables take the office of all its lines.
    void TomaCabecera(std::string_view linea);

    int DeOtraGer() const { return m_deOtraGer; } ///< name another office than the tables will
    int ConTabulador() const { return m_conTabulador; }
    int SinTipo() const { return m_sinTipo; }   ///< begin as no record does
    int ConFines() const { return m_conFines; } ///< have ends of lines, or of files, within
    int Dobles() const { return m_dobles; }     ///< of an exchange file, have a second record
    /// Tells that the last line has no end, and is shorter than those of its type in front of it or
    /// loses its last field by that.
    bool Cortada() const { return m_cortada; }
    const ansi::CMiraPagina& Pagina() const { return m_pagina; }

private:
    void TomaTipo(std::string_view linea, bool acaba);
    void TomaGer(std::string_view linea);
    void TomaControles(std::string_view linea);

    bool m_esLista;
    std::array<char, kLeeGer.ancho> m_ger = {}; // of the first line that tells it
    int m_deOtraGer = 0;
    int m_conTabulador = 0;
    int m_sinTipo = 0;
    int m_conFines = 0;
    int m_dobles = 0;
    bool m_cortada = false;
    std::array<char, 2> m_tipo = {}; // of the last line
    bool m_tieneTipo = false;        // that is one
    CLargoRegistro m_largo;
    std::size_t m_masCorta = 0; // of the last lines of that type
    ansi::CMiraPagina m_pagina;
};
