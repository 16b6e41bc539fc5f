#include "evidence/report/writing/output_file.h"

#include <algorithm>

#include "evidence/report/reading/text.h"

namespace informe {

void EscribeSalida(const CString& nombre, CConjuntoSalidas& todas,
                   const std::function<void(const CEscribe&)>& como)
{
    if (nombre.IsEmpty())
        return;
    CSalida salida(nombre, todas);
    como([&](std::string_view utf8) { salida.Escribe(utf8); });
    salida.Cierra();
}

void Coloca(CConjuntoSalidas& todas, std::vector<std::string>& quejas)
{
    todas.Confirma();
    for (const CConservada& una : todas.Conservadas())
        quejas.push_back(Texto(una.Frase()));
}

const CString* BuscaOcupada(const std::vector<CString>& salidas, std::vector<CString> leidos)
{
    for (const CString& salida : salidas) {
        if (salida.IsEmpty() || salida == kEstandar)
            continue;
        if (std::ranges::any_of(
                leidos, [&](const CString& leido) { return CFile::SeriaElMismo(salida, leido); }))
            return &salida;
        leidos.push_back(salida);
    }
    return nullptr;
}

std::string NoSePisa(const CString& ocupada)
{
    return "El archivo " + Texto(ocupada) + " no se escribe, porque se lee o se escribe ya";
}

} // namespace informe
