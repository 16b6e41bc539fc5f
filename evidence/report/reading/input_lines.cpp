#include "evidence/report/reading/input_lines.h"

#include "cadastre/exchange_lines.h"
#include "evidence/paths.h"
#include "evidence/report/reading/bounds.h"

namespace informe {
namespace {

/// Tells a list of subparcels by the numbers that its lines begin with.
bool EsRelacion(const CString& nombre)
{
    CStdioFile fichero;
    AbreSiHay(fichero, nombre);
    int deLista = 0;
    int deCatastro = 0;
    char bufer[kLineaCatastro + 1];
    for (int i = 0;
         i < topes::kLineasParaConocer && fichero.ReadString(bufer, sizeof bufer) != nullptr; ++i) {
        const std::string_view tipo = CLineaFija(bufer).Texto(kLeeTipo);
        if (const int numero = LeeEntero(tipo); numero >= kLineaTitular && numero <= kLineaIgnorada)
            ++deLista;
        else if (tipo.size() == 2 && tipo.find_first_of("0123456789 ") == std::string_view::npos)
            ++deCatastro;
    }
    return deLista > deCatastro;
}

} // namespace

CEntradaLeida LeeEntrada(const CString& nombre, CPersonas& personas)
{
    CEntradaLeida leida;
    CStdioFile fichero;
    leida.hay = AbreSiHay(fichero, nombre);
    if (!leida.hay)
        return leida;
    leida.esLista = EsRelacion(nombre);
    if (leida.esLista)
        LeeRelacion(fichero, leida, personas);
    else
        LeeCatastro(fichero, leida, personas);
    return leida;
}

} // namespace informe
