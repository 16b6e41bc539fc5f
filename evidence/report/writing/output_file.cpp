#include "evidence/report/writing/output_file.h"

#include <algorithm>

namespace informe {

const CString* BuscaOcupada(const std::vector<CString>& salidas, std::vector<CString> leidos)
{
    for (const CString& salida : salidas) {
        if (salida.IsEmpty())
            continue;
        if (std::any_of(leidos.begin(), leidos.end(),
                        [&](const CString& leido) { return CFile::SeriaElMismo(salida, leido); }))
            return &salida;
        leidos.push_back(salida);
    }
    return nullptr;
}

} // namespace informe
