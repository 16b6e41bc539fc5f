#include "evidence/report/reading/record_key.h"

#include "evidence/report/reading/text.h"

namespace informe {

std::string Nombra(const CClave& clave)
{
    std::string texto = SinBlancos(Texto(clave.texto));
    if (clave.polig == 0 && clave.parcela == 0)
        return texto;
    const std::string numeros = std::to_string(clave.polig) + "-" + std::to_string(clave.parcela);
    return texto.empty() ? numeros : numeros + " " + texto;
}

} // namespace informe
