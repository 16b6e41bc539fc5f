#include "evidence/report/reading/input_lines.h"

#include "cadastre/exchange_lines.h"
#include "cadastre/holder.h"
#include "cadastre/module_place.h"

namespace informe {
namespace {

std::string_view SinCola(std::string_view texto)
{
    return texto.substr(0, texto.find_last_not_of(" \r\n") + 1);
}

/// Tells a list of subparcels by the numbers that its lines begin with.
bool EsRelacion(const CString& nombre)
{
    CStdioFile fichero;
    fichero.Open(nombre, CFile::modeRead);
    constexpr int kBastan = 500; // lines, to be sure
    int deLista = 0;
    int deCatastro = 0;
    char bufer[kLineaCatastro + 1];
    for (int i = 0; i < kBastan && fichero.ReadString(bufer, sizeof bufer) != nullptr; ++i) {
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
    leida.hay = !nombre.IsEmpty() && fichero.Open(nombre, CFile::modeRead);
    if (!leida.hay)
        return leida;
    leida.esLista = EsRelacion(nombre);
    if (leida.esLista)
        LeeRelacion(fichero, leida, personas);
    else
        LeeCatastro(fichero, leida, personas);
    return leida;
}

CClave ClaveTitular(const CTitular& titular)
{
    std::string clave(SinCola(titular.Nombre));
    const std::string_view dni = SinCola(titular.DNI);
    if (!dni.empty())
        clave.append(", ").append(dni);
    return {0, 0, clave};
}

CClave ClaveModulo(const CModulo& modulo)
{
    std::string clave(SinCola(modulo.Denominacion));
    clave.append(", ").append(SinCola(modulo.Cal)).append(" ");
    return {0, 0, clave + std::to_string(modulo.Inten)};
}

CClave ClaveParaje(std::string_view nombre)
{
    return {0, 0, CString(SinCola(nombre))};
}

} // namespace informe
