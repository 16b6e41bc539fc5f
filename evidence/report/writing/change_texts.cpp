#include "evidence/report/writing/change_texts.h"

#include <algorithm>
#include <array>

#include "evidence/report/reading/text.h"
#include "platform/ansi.h"

namespace informe {
namespace {

/// "a, b y c", of more than so many "a, b y 7 más".
std::string Enumera(const std::vector<std::string>& cosas, std::size_t comoMucho)
{
    const std::size_t dichas = cosas.size() > comoMucho ? comoMucho : cosas.size();
    std::string texto;
    for (std::size_t i = 0; i < dichas; ++i)
        texto += (i == 0 ? "" : i + 1 == cosas.size() ? " y " : ", ") + cosas[i];
    if (dichas < cosas.size())
        texto += " y " + Miles(cosas.size() - dichas) + " más";
    return texto;
}

CDiferencia DeSubparcela(const CCambioSubparcela& cambio)
{
    const auto metros = [](const CEstadoMunicipio::CSubparcela* una) {
        return una == nullptr ? 0 : static_cast<std::int64_t>(una->superficie);
    };
    CDiferencia diferencia{"subparcela", {}, {}, metros(cambio.ahora) - metros(cambio.antes)};
    diferencia.letra =
        Texto(DeLetras((cambio.antes == nullptr ? cambio.ahora : cambio.antes)->letra));
    for (const bool deTodo : {false, true}) {
        if (cambio.antes != nullptr)
            diferencia.antes = EnPalabras(*cambio.antes, deTodo);
        if (cambio.ahora != nullptr)
            diferencia.ahora = EnPalabras(*cambio.ahora, deTodo);
        if (diferencia.antes != diferencia.ahora)
            break; // else what differs is one of the pairs
    }
    return diferencia;
}

/// Where what differs stands behind those that have room, all of them are named.
CDiferencia DeTitulares(Difiere que, const CCambioParcela& cambio, const CContraste& contraste,
                        std::size_t comoMucho)
{
    const auto son = [&](std::size_t tantos) {
        return CDiferencia{NombreDe(que), Titulares(contraste.antes.estado, *cambio.antes, tantos),
                           Titulares(contraste.ahora.estado, *cambio.ahora, tantos)};
    };
    CDiferencia algunos = son(comoMucho);
    return algunos.antes != algunos.ahora ? algunos : son(std::string::npos);
}

/// Tells whether a parcel of a split or join is there on both sides.
bool Sigue(const CClaveParcela& clave, const CContraste& contraste)
{
    const auto& parcelas = contraste.cambios.parcelas;
    const auto suya = std::ranges::lower_bound(parcelas, clave, {}, &CCambioParcela::clave);
    return suya != parcelas.end() && suya->que == CCambioParcela::Que::Cambiada;
}

} // namespace

std::string NombreDe(const CClaveParcela& clave, const CContraste& contraste)
{
    const std::string nombre = std::to_string(clave.polig) + "-" + std::to_string(clave.parcela);
    return contraste.cambios.municipios > 1 ? std::to_string(clave.mun) + ": " + nombre : nombre;
}

std::string NombreDe(const CEstadoMunicipio::CPersona& persona)
{
    std::string nombre = Texto(persona.nombre);
    if (persona.dni.IsEmpty())
        return nombre;
    return nombre + (nombre.empty() ? "" : ", ") + Texto(persona.dni);
}

std::string NombreDe(const CEstadoMunicipio& estado, int persona)
{
    return persona < 0 ? std::string() : NombreDe(estado.Persona(persona));
}

std::string Titulares(const CEstadoMunicipio& estado, const CEstadoMunicipio::CParcela& parcela,
                      std::size_t comoMucho)
{
    std::vector<std::string> todos;
    for (const CEstadoMunicipio::CVinculo& vinculo : estado.Vinculos(parcela)) {
        const std::string titulo = Texto(DeLetras(vinculo.titulo));
        todos.push_back(NombreDe(estado, vinculo.persona) + " (" + titulo +
                        (titulo.empty() ? "" : " ") + std::to_string(vinculo.partici) + ")");
    }
    return todos.empty() ? "sin titular" : Enumera(todos, comoMucho);
}

std::string EnPalabras(const CEstadoMunicipio::CSubparcela& subparcela, bool deTodo)
{
    std::string texto = Miles(subparcela.superficie) + " m²";
    std::array<std::string, 2> clases;
    for (std::size_t i = 0; i < clases.size(); ++i) {
        const std::string intensidad = std::to_string(subparcela.intensidad[i]);
        if (subparcela.calificacion[i] != 0 || (deTodo && subparcela.intensidad[i] != 0))
            clases[i] = Texto(DeLetras(subparcela.calificacion[i])) + " " +
                        (intensidad.size() < 2 ? "0" : "") + intensidad;
    }
    const auto& [una, otra] = clases;
    if (deTodo || (una != otra && !una.empty() && !otra.empty()))
        texto += ", " + (una.empty() ? "—" : una) + " / " + (otra.empty() ? "—" : otra);
    else if (!(una + otra).empty()) // as a rule the pairs are the same, or there is one
        texto += ", " + (una.empty() ? otra : una);
    if (subparcela.componente != 0)
        texto += ", componente " + std::to_string(subparcela.componente);
    return texto;
}

std::vector<CDiferencia> Diferencias(const CCambioParcela& cambio, const CContraste& contraste,
                                     std::size_t titularesComoMucho)
{
    const CEstadoMunicipio& viejo = contraste.antes.estado;
    const CEstadoMunicipio& nuevo = contraste.ahora.estado;
    std::vector<CDiferencia> todas;
    for (const Difiere que : {Difiere::Titular, Difiere::Participacion})
        if (cambio.Hay(que))
            todas.push_back(DeTitulares(que, cambio, contraste, titularesComoMucho));
    if (cambio.Hay(Difiere::Superficie))
        todas.push_back({NombreDe(Difiere::Superficie), std::to_string(cambio.Antes()),
                         std::to_string(cambio.Ahora()), cambio.Diferencia(), true});
    if (cambio.Hay(Difiere::Subparcelas))
        for (const CCambioSubparcela& una : CambiosDeSubparcelas(viejo.Subparcelas(*cambio.antes),
                                                                 nuevo.Subparcelas(*cambio.ahora)))
            todas.push_back(DeSubparcela(una));
    if (cambio.Hay(Difiere::Paraje))
        todas.push_back({NombreDe(Difiere::Paraje), Texto(viejo.Paraje(*cambio.antes)),
                         Texto(nuevo.Paraje(*cambio.ahora))});
    return todas;
}

const char* NombreDe(Difiere que)
{
    constexpr const char* kNombres[] = {"titular", "participación", "superficie", "subparcelas",
                                        "paraje"};
    return kNombres[static_cast<std::size_t>(que)];
}

const char* NombreDe(CCambioParcela::Que que)
{
    constexpr const char* kNombres[] = {"desaparecida", "nueva", "cambiada"};
    return kNombres[static_cast<std::size_t>(que)];
}

const char* NombreDe(CReparto::Que que)
{
    constexpr const char* kNombres[] = {"división", "agrupación", "otro número"};
    return kNombres[static_cast<std::size_t>(que)];
}

const char* NombreDe(CCambioPersona::Que que)
{
    constexpr const char* kNombres[] = {"nuevo", "desaparecido", "otro nombre", "otro DNI"};
    return kNombres[static_cast<std::size_t>(que)];
}

std::string EnPalabras(const CReparto& reparto, const CContraste& contraste,
                       std::size_t parcelasComoMucho)
{
    const auto nombra = [&](const std::vector<CClaveParcela>& claves) {
        std::vector<std::string> nombres;
        nombres.reserve(claves.size());
        for (const CClaveParcela& clave : claves)
            nombres.push_back(NombreDe(clave, contraste));
        return Enumera(nombres, parcelasComoMucho);
    };
    const std::string de = nombra(reparto.de);
    const std::string a = nombra(reparto.a);
    const bool varias = reparto.de.size() > 1;
    switch (reparto.que) {
    case CReparto::Que::Division:
        return Sigue(reparto.de.front(), contraste) ? "de " + de + ", que sigue, sale " + a
                                                    : de + " se divide en " + a;
    case CReparto::Que::Agrupacion:
        return Sigue(reparto.a.front(), contraste)
                   ? de + (varias ? " se agregan a " : " se agrega a ") + a + ", que ya estaba"
                   : de + " se agrupan en " + a;
    case CReparto::Que::OtroNumero:
        break;
    }
    return de + " pasa a ser " + a;
}

std::string PorQue(const CCambioParcela& cambio, const CContraste& contraste,
                   std::size_t parcelasComoMucho)
{
    return cambio.reparto < 0
               ? std::string()
               : EnPalabras(contraste.cambios.repartos[static_cast<std::size_t>(cambio.reparto)],
                            contraste, parcelasComoMucho);
}

std::string SinSuParcela(const CContraste& contraste)
{
    const int antes = contraste.antes.estado.sinParcela;
    const int ahora = contraste.ahora.estado.sinParcela;
    return antes == ahora ? std::string()
                          : "subparcelas sin su parcela, que no se comparan: " + Miles(antes) +
                                " antes y " + Miles(ahora) + " ahora";
}

std::string EnUtf8(const CContraste& contraste)
{
    const auto parece = [](const CEstadoMunicipio& estado) {
        ansi::CMiraPagina pagina;
        for (const CEstadoMunicipio::CPersona& persona : estado.personas)
            pagina.Toma(persona.nombre);
        for (const CString& paraje : estado.parajes)
            pagina.Toma(paraje);
        return pagina.TodasEnUtf8();
    };
    const bool antes = parece(contraste.antes.estado);
    if (antes == parece(contraste.ahora.estado))
        return {};
    return Texto((antes ? contraste.antes : contraste.ahora).nombre) +
           " parece estar en UTF-8, y lo que difiere por sus acentos y eñes no ha cambiado";
}

std::string CambiosEnBreve(const CContraste& contraste)
{
    const CCambios& cambios = contraste.cambios;
    const std::string sueltas = SinSuParcela(contraste);
    const std::string enUtf8 = EnUtf8(contraste);
    const std::string detras =
        (sueltas.empty() ? "" : "; " + sueltas) + (enUtf8.empty() ? "" : "; " + enUtf8);
    if (!cambios.HayAlguno())
        return std::string("sin cambios en ") + kLoComparado + detras;
    const std::int64_t cambiadas = cambios.Cuantas(CCambioParcela::Que::Cambiada);
    const std::int64_t metros = cambios.ahora.metros - cambios.antes.metros;
    return Cuantos(cambios.nuevas.parcelas, "parcela nueva", "parcelas nuevas") + ", " +
           Cuantos(cambios.desaparecidas.parcelas, "desaparecida", "desaparecidas") + ", " +
           Cuantos(cambiadas, "cambiada", "cambiadas") + ", " +
           Cuantos(cambios.repartos.size(), "división o agrupación", "divisiones o agrupaciones") +
           ", " + Cuantos(cambios.personas.size(), "cambio de titulares", "cambios de titulares") +
           ", " + (metros > 0 ? "+" : "") + Hectareas(metros) + " ha" + detras;
}

} // namespace informe
