#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "evidence/report/findings/changes/contrast.h"
#include "evidence/report/writing/output_file.h"

// What the files for programs are made of.

namespace informe {

using CValor = nlohmann::ordered_json;

/// The text, or the number of a message; null for none.
inline CValor SiHay(const std::string& texto)
{
    return texto.empty() ? CValor() : CValor(texto);
}
inline CValor SiHay(int numero)
{
    return numero == CAviso::kNada ? CValor() : CValor(numero);
}

/// The things, each as `valor` gives it.
CValor Lista(const auto& cosas, const auto& valor)
{
    CValor lista = CValor::array();
    for (const auto& cosa : cosas)
        lista.push_back(valor(cosa));
    return lista;
}

/// By what it is written.
CValor Programa(const CFirma& firma);
/// The changes between two states.
CValor CambiosEnValor(const CContraste& contraste);

/// A whole file.
std::string EnTexto(const CValor& todo);

} // namespace informe
