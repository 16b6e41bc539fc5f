#include "evidence/report/reading/text.h"
#include "evidence/report/writing/change_texts.h"
#include "evidence/report/writing/json_values.h"

// The changes between two states, for programs.

namespace informe {
namespace {

CValor Estado(const CEstadoLeido& leido, const CCambios::CSuma& suma)
{
    return {{"nombre", Texto(leido.nombre)},
            {"clase", NombreDe(leido.clase)},
            {"parcelas", suma.parcelas},
            {"m2", suma.metros}};
}

CValor Suma(const CCambios::CSuma& suma)
{
    return {{"parcelas", suma.parcelas}, {"m2", suma.metros}};
}

CValor Clave(const CClaveParcela& clave)
{
    return {{"municipio", clave.mun}, {"poligono", clave.polig}, {"parcela", clave.parcela}};
}

CValor Persona(const CEstadoMunicipio& estado, int persona)
{
    if (persona < 0)
        return {};
    const CEstadoMunicipio::CPersona& una = estado.Persona(persona);
    return {{"nombre", Texto(una.nombre)}, {"dni", SiHay(Texto(una.dni))}};
}

CValor Titulares(const CEstadoMunicipio& estado, const CEstadoMunicipio::CParcela& parcela)
{
    return Lista(estado.Vinculos(parcela), [&](const CEstadoMunicipio::CVinculo& vinculo) {
        CValor uno = Persona(estado, vinculo.persona);
        uno["titulo"] = SiHay(Texto(DeLetras(vinculo.titulo)));
        uno["participacion"] = vinculo.partici;
        return uno;
    });
}

CValor Subparcela(const CEstadoMunicipio::CSubparcela* una)
{
    if (una == nullptr)
        return {};
    CValor clases = CValor::array();
    for (std::size_t i = 0; i < una->calificacion.size(); ++i)
        clases.push_back({{"calificacion", SiHay(Texto(DeLetras(una->calificacion[i])))},
                          {"intensidad", una->intensidad[i]}});
    return {
        {"m2", una->superficie}, {"clases", std::move(clases)}, {"componente", una->componente}};
}

/// A parcel on one side; of one that both states have, what differs alone, beside its surface.
CValor Lado(const CEstadoMunicipio& estado, const CEstadoMunicipio::CParcela* parcela,
            const CCambioParcela& cambio)
{
    if (parcela == nullptr)
        return {};
    const bool entera = cambio.que != CCambioParcela::Que::Cambiada;
    CValor lado = {{"m2", parcela->superficie}};
    if (entera || cambio.Hay(Difiere::Titular) || cambio.Hay(Difiere::Participacion))
        lado["titulares"] = Titulares(estado, *parcela);
    if (entera || cambio.Hay(Difiere::Paraje))
        lado["paraje"] = SiHay(Texto(estado.Paraje(*parcela)));
    return lado;
}

CValor Parcela(const CCambioParcela& cambio, const CContraste& contraste)
{
    const CEstadoMunicipio& viejo = contraste.antes.estado;
    const CEstadoMunicipio& nuevo = contraste.ahora.estado;
    CValor difiere = CValor::array();
    for (std::size_t i = 0; i < kDifiere; ++i)
        if (cambio.difiere[i])
            difiere.push_back(NombreDe(static_cast<Difiere>(i)));
    CValor subparcelas = CValor::array();
    if (cambio.Hay(Difiere::Subparcelas))
        for (const CCambioSubparcela& una : CambiosDeSubparcelas(viejo.Subparcelas(*cambio.antes),
                                                                 nuevo.Subparcelas(*cambio.ahora)))
            subparcelas.push_back(
                {{"letra", Texto(DeLetras((una.antes == nullptr ? una.ahora : una.antes)->letra))},
                 {"antes", Subparcela(una.antes)},
                 {"ahora", Subparcela(una.ahora)}});
    CValor valor = Clave(cambio.clave);
    valor["que"] = NombreDe(cambio.que);
    valor["difiere"] = std::move(difiere);
    valor["diferencia"] = cambio.Diferencia();
    valor["antes"] = Lado(viejo, cambio.antes, cambio);
    valor["ahora"] = Lado(nuevo, cambio.ahora, cambio);
    valor["subparcelas"] = std::move(subparcelas);
    valor["reparto"] = cambio.reparto < 0 ? CValor() : CValor(cambio.reparto);
    return valor;
}

} // namespace

CValor CambiosEnValor(const CContraste& contraste)
{
    const CCambios& cambios = contraste.cambios;
    const auto parcela = [&](const CCambioParcela& cambio) { return Parcela(cambio, contraste); };
    const auto reparto = [](const CReparto& uno) -> CValor {
        return {{"que", NombreDe(uno.que)},
                {"de", Lista(uno.de, Clave)},
                {"a", Lista(uno.a, Clave)},
                {"m2", uno.metros}};
    };
    const auto titular = [&](const CCambioPersona& una) -> CValor {
        return {{"que", NombreDe(una.que)},
                {"antes", Persona(contraste.antes.estado, una.antes)},
                {"ahora", Persona(contraste.ahora.estado, una.ahora)},
                {"parcelas", una.parcelas},
                {"m2", una.metros}};
    };
    return {{"antes", Estado(contraste.antes, cambios.antes)},
            {"ahora", Estado(contraste.ahora, cambios.ahora)},
            {"desaparecidas", Suma(cambios.desaparecidas)},
            {"nuevas", Suma(cambios.nuevas)},
            {"crecen", Suma(cambios.crecen)},
            {"menguan", Suma(cambios.menguan)},
            {"iguales", cambios.iguales},
            {"deOtroMunicipio", cambios.deOtroMunicipio},
            {"parcelas", Lista(cambios.parcelas, parcela)},
            {"repartos", Lista(cambios.repartos, reparto)},
            {"titulares", Lista(cambios.personas, titular)}};
}

} // namespace informe
