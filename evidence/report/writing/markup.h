#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "evidence/report/writing/output_file.h"

namespace informe {

/// An attribute of an element. One whose value is null is left out, and has no name.
struct CAtributo {
    CAtributo(const char* suNombre, const char* suValor)
        : nombre(suValor == nullptr ? nullptr : suNombre), valor(suValor == nullptr ? "" : suValor)
    {
    }
    CAtributo(const char* suNombre, std::string suValor)
        : nombre(suNombre), valor(std::move(suValor))
    {
    }
    CAtributo(const char* suNombre, std::integral auto suValor)
        : nombre(suNombre), valor(std::to_string(suValor))
    {
    }

    const char* nombre;
    std::string valor;
};

using CAtributos = std::initializer_list<CAtributo>;

/// Markup, HTML or SVG, as it grows. Texts and values are UTF-8 and come out so that they can be
/// taken for nothing else; an element ends where its content does.
class CMarcas {
public:
    CMarcas() = default;
    /// Markup that is handed on in large pieces; `Vuelca` hands on the last one.
    explicit CMarcas(CEscribe escribe) : m_escribe(std::move(escribe)) {}

    CMarcas& Texto(std::string_view utf8);
    /// The end of a line of the source, for who reads that.
    CMarcas& Linea();
    CMarcas& Elemento(const char* elemento, CAtributos atributos, std::string_view texto)
    {
        PonMarca(elemento, atributos, ">");
        Texto(texto);
        return Cierra(elemento);
    }
    /// An element with what `dentro` writes.
    CMarcas& Elemento(const char* elemento, CAtributos atributos, std::invocable auto dentro)
    {
        PonMarca(elemento, atributos, ">");
        dentro();
        return Cierra(elemento);
    }
    /// The same on a line of its own.
    void Bloque(const char* elemento, CAtributos atributos, auto contenido)
    {
        Elemento(elemento, atributos, contenido).Linea();
    }
    /// An element that never has content: `<br>`.
    CMarcas& Suelto(const char* elemento, CAtributos atributos = {})
    {
        return PonMarca(elemento, atributos, ">");
    }
    /// An element of SVG without content: `<path/>`.
    CMarcas& Figura(const char* elemento, CAtributos atributos)
    {
        return PonMarca(elemento, atributos, "/>");
    }
    /// Markup that is made already: the program's own, or another object's.
    CMarcas& Hecho(std::string_view marcas)
    {
        m_texto += marcas;
        return *this;
    }

    void Vuelca()
    {
        m_escribe(m_texto);
        m_texto.clear();
    }
    std::string Toma() { return std::move(m_texto); }

private:
    CMarcas& PonMarca(const char* elemento, CAtributos atributos, const char* fin);
    CMarcas& Cierra(const char* elemento) { return Hecho("</").Hecho(elemento).Hecho(">"); }

    CEscribe m_escribe;
    std::string m_texto;
};

} // namespace informe
