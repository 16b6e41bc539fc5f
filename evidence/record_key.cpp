#include "evidence/record_key.h"

#include "cadastre/holder.h"
#include "cadastre/module_place.h"

namespace {

/// The parts of a name that are there.
std::string Une(std::string_view primera, const char* entre, std::string_view segunda)
{
    std::string texto(primera);
    if (!primera.empty() && !segunda.empty())
        texto += entre;
    return texto.append(segunda);
}

} // namespace

CClaveRegistro CClaveRegistro::DeTitular(std::string_view nombre, std::string_view dni)
{
    nombre = SinCola(nombre);
    dni = SinCola(dni);
    if (dni.empty())
        return {Clase::Titular, 0, 0, nombre};
    constexpr std::string_view kEntre = ", ";
    std::string texto;
    texto.reserve(nombre.size() + kEntre.size() + dni.size());
    texto.append(nombre).append(kEntre).append(dni);
    return {Clase::Titular, 0, 0, texto};
}

CClaveRegistro CClaveRegistro::De(const CTitular& titular)
{
    return DeTitular(titular.Nombre, titular.DNI);
}

CClaveRegistro CClaveRegistro::De(const CParaje& paraje)
{
    return DeParaje(paraje.Nombre);
}

CClaveRegistro CClaveRegistro::DeModulo(std::string_view denominacion, std::string_view cal,
                                        int inten)
{
    const std::string clase = std::string(SinCola(cal)) + " " + std::to_string(inten);
    return {Clase::Modulo, 0, 0, Une(SinCola(denominacion), ", ", clase)};
}

CClaveRegistro CClaveRegistro::De(const CModulo& modulo)
{
    return DeModulo(modulo.Denominacion, modulo.Cal, modulo.Inten);
}

CString CClaveRegistro::Nombre() const
{
    // A line too short to name a parcel reads as 0 and 0, which is no name.
    const bool conNumeros = EsDeParcela() && (m_polig != 0 || m_parcela != 0);
    const std::string numeros =
        conNumeros ? std::to_string(m_polig) + "-" + std::to_string(m_parcela) : std::string();
    return Une(numeros, " ", m_texto);
}
