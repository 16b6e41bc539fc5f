#include "evidence/report/findings/matters.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "evidence/report/reading/text.h"

namespace informe {
namespace {

enum class Clase : std::uint8_t {
    Ajena,
    Paraje,
    Titular,
    Poligono,
    Parcela,
    Persona,
    Modulo,
    Fuera
};

constexpr std::size_t kPrimeros = 24; // messages of a matter that it names

/// What lies behind a message: the numbers depend on the class.
struct CCausa {
    Clase clase = Clase::Ajena;
    int a = 0;
    int b = 0;
    std::uint32_t posicion = 0; // of the message

    bool EsLaDe(const CCausa& otra) const
    {
        return clase == otra.clase && a == otra.a && b == otra.b;
    }
    friend bool operator<(const CCausa& x, const CCausa& y)
    {
        return std::tie(x.clase, x.a, x.b, x.posicion) < std::tie(y.clase, y.a, y.b, y.posicion);
    }
};

using CNumeros = std::pair<int, int>; // of a parcel

class CReunion {
public:
    explicit CReunion(const CDatosAsuntos& datos) : m_datos(datos) { Prepara(); }

    CAsuntos Reune(std::size_t tope);

private:
    void Prepara();
    CCausa Causa(const CAviso& aviso, std::uint32_t posicion);
    CCausa CausaDeParcela(const CAviso& aviso, CNumeros parcela);
    CCausa CausaDePersona(const CString& nombre) { return {Clase::Persona, Numero(nombre), 0, 0}; }
    int Numero(const CString& texto);
    CAsunto Cuenta(std::size_t desde, std::size_t hasta) const;
    std::string Titulo(const CCausa& causa, const CAsunto& asunto) const;
    std::string TituloDeParcela(const CAsunto& asunto) const;
    const CAviso& Aviso(std::uint32_t i) const { return m_datos.registro.avisos[i]; }

    const CDatosAsuntos& m_datos;
    std::vector<CCausa> m_causas;
    std::map<CString, int> m_numeros; // of texts
    std::vector<CString> m_textos;
    std::map<CNumeros, int> m_sinParaje; // parcels that the way out dropped, and the place's number
    std::set<CNumeros> m_repetidas;
    std::set<CNumeros> m_sinDibujo; // parcels with a subparcel that isn't drawn
    std::map<int, const CPoligonoRoto*> m_rotos;
};

void CReunion::Prepara()
{
    for (const CAviso& aviso : m_datos.registro.avisos) {
        if (aviso.mensaje == nullptr)
            continue;
        const CNumeros parcela(aviso.polig, aviso.parcela);
        if (aviso.mensaje->numero == kParajeNoEncontrado && m_datos.sentido != Sentido::Vuelta)
            m_sinParaje.emplace(parcela, aviso.numero);
        else if (aviso.mensaje->numero == kParcelaRepetida)
            m_repetidas.insert(parcela);
    }
    if (m_datos.rotos == nullptr)
        return;
    for (const CPoligonoRoto& roto : *m_datos.rotos)
        m_rotos.emplace(roto.polig, &roto);
    for (const CAviso& aviso : m_datos.registro.avisos)
        if (aviso.mensaje != nullptr && aviso.mensaje->numero == kSubparcelaNoEnGrafico &&
            m_rotos.contains(aviso.polig))
            m_sinDibujo.emplace(aviso.polig, aviso.parcela);
}

int CReunion::Numero(const CString& texto)
{
    const auto [suyo, nuevo] = m_numeros.emplace(texto, static_cast<int>(m_textos.size()));
    if (nuevo)
        m_textos.push_back(texto);
    return suyo->second;
}

CCausa CReunion::CausaDeParcela(const CAviso& aviso, CNumeros parcela)
{
    if (const auto roto = m_rotos.find(parcela.first); roto != m_rotos.end()) {
        const UINT numero = aviso.mensaje->numero;
        const bool deParcelas = numero == kParcelaNoEnGrafico || numero == kSubparcelaFuera;
        const bool deSubparcelas =
            numero == kSubparcelaNoEnGrafico || numero == kSubparcelaFuera ||
            ((numero == kSuperficieDifiere || numero == kSuperficieCorregida) &&
             m_sinDibujo.contains(parcela));
        if ((roto->second->parcelas && deParcelas) || (roto->second->subparcelas && deSubparcelas))
            return {Clase::Poligono, parcela.first, 0, 0};
    }
    if (const auto paraje = m_sinParaje.find(parcela); paraje != m_sinParaje.end())
        return {Clase::Paraje, paraje->second, 0, 0};
    return {Clase::Parcela, parcela.first, parcela.second, 0};
}

CCausa CReunion::Causa(const CAviso& aviso, std::uint32_t posicion)
{
    if (aviso.mensaje == nullptr)
        return {};
    switch (aviso.mensaje->numero) {
    case kTitularNoEncontrado:
    case kCotitularSinTitular:
        return {Clase::Titular, aviso.numero, 0, 0};
    case kParajeNoEncontrado:
        return {Clase::Paraje, aviso.numero, 0, 0};
    case kModuloRepetido:
        return {Clase::Modulo, Numero(aviso.texto), 0, 0};
    case kMismoNombre:
    case kMismoDNI:
    case kSinNumImputa:
        return CausaDePersona(m_datos.personas.Clave(aviso.texto));
    case kYaTitular:
    case kYaCotitular:
        if (!m_repetidas.contains({aviso.polig, aviso.parcela}))
            return CausaDePersona(m_datos.personas.Clave(aviso.texto));
        break;
    case kSubparcelaFuera: {
        const auto fuera =
            m_datos.sitios == nullptr ? std::nullopt : m_datos.sitios->DeFuera(posicion);
        if (!fuera)
            return {Clase::Fuera, 0, 0, 0};
        return fuera->second == 0 && !m_rotos.contains(fuera->first)
                   ? CCausa{Clase::Fuera, fuera->first, 0, 0}
                   : CausaDeParcela(aviso, *fuera);
    }
    default:
        break;
    }
    return CausaDeParcela(aviso, {aviso.polig, aviso.parcela});
}

CAsunto CReunion::Cuenta(std::size_t desde, std::size_t hasta) const
{
    CAsunto asunto;
    const CCausa& causa = m_causas[desde];
    for (std::size_t i = desde; i < hasta; ++i) {
        const CAviso& aviso = Aviso(m_causas[i].posicion);
        ++asunto.mensajes;
        if (asunto.primeros.size() < kPrimeros)
            asunto.primeros.push_back(m_causas[i].posicion);
        if (aviso.mensaje == nullptr)
            continue;
        asunto.errores += EsWarning(*aviso.mensaje) ? 0 : 1;
        const auto suya = std::find_if(asunto.cuentas.begin(), asunto.cuentas.end(),
                                       [&](const auto& c) { return c.first == aviso.mensaje; });
        if (suya == asunto.cuentas.end())
            asunto.cuentas.emplace_back(aviso.mensaje, 1);
        else
            ++suya->second;
    }
    if (causa.clase == Clase::Parcela) {
        asunto.polig = causa.a;
        asunto.parcela = causa.b;
    } else if (causa.clase == Clase::Poligono) {
        asunto.polig = causa.a;
    }
    asunto.titulo = Titulo(causa, asunto);
    return asunto;
}

std::string CReunion::TituloDeParcela(const CAsunto& asunto) const
{
    const auto hay = [&](Mensaje numero) {
        return std::any_of(asunto.cuentas.begin(), asunto.cuentas.end(),
                           [&](const auto& c) { return c.first->numero == numero; });
    };
    constexpr std::pair<Mensaje, const char*> kMotivos[] = {
        {kParcelaNoValida, "sus números no valen"},
        {kParcelaNoInsertada, "no se pudo insertar"},
        {kParcelaRepetida, "está más de una vez"},
        {kSubparcelaSinParcela, "no existe, y sus subparcelas la nombran"},
        {kCotitularSinParcela, "no existe, y un cotitular la nombra"},
        {kParcelaNoEnBase, "sólo está en el gráfico"},
        {kParcelaNoEnGrafico, "no está en el gráfico"},
        {kSubparcelaFuera, "una subparcela está fuera de ella"},
        {kSubparcelaNoEnGrafico, "una subparcela no está en el gráfico"},
        {kSubparcelaNoEnBase, "una subparcela sólo está en el gráfico"},
        {kSinSubparcelas, "sin subparcelas"},
        {kSinPropietarios, "sin propietarios"},
        {kSinTitular, "sin titular"},
        {kSubparcelaSinSuperficie, "una subparcela sin superficie"},
        {kSubparcelaDuplicada, "una letra está dos veces"},
        {kSuperficieDifiere, "su superficie no es la de sus subparcelas"},
        {kSuperficieCorregida, "toma la superficie de sus subparcelas"},
        {kAbstractaDifiere, "una subparcela abstracta difiere del gráfico"},
    };
    for (const auto& [mensaje, motivo] : kMotivos)
        if (hay(mensaje))
            return motivo;
    return "sus mensajes";
}

std::string CReunion::Titulo(const CCausa& causa, const CAsunto& asunto) const
{
    const auto texto = [&](int numero) {
        return SinBlancos(Texto(m_textos[static_cast<std::size_t>(numero)]));
    };
    switch (causa.clase) {
    case Clase::Paraje:
        return "El paraje " + std::to_string(causa.a) + " no existe";
    case Clase::Titular:
        return "El titular " + std::to_string(causa.a) + " no existe";
    case Clase::Poligono:
        return "Polígono " + Texto(m_rotos.at(causa.a)->entrada) + ": " + m_rotos.at(causa.a)->que;
    case Clase::Parcela:
        return "Parcela " + std::to_string(causa.a) + "-" + std::to_string(causa.b) + ": " +
               TituloDeParcela(asunto);
    case Clase::Persona:
        return "Titular " + texto(causa.a);
    case Clase::Modulo:
        return "Módulo repetido: " + texto(causa.a);
    case Clase::Fuera:
        return causa.a == 0 ? "Subparcelas dibujadas fuera de toda parcela"
                            : "Polígono " + std::to_string(causa.a) +
                                  ": subparcelas dibujadas fuera de toda parcela";
    case Clase::Ajena:
        break;
    }
    return "Líneas que no son mensajes";
}

CAsuntos CReunion::Reune(std::size_t tope)
{
    const std::size_t n = m_datos.registro.avisos.size();
    m_causas.reserve(n);
    std::uint32_t posicion = 0;
    for (const CAviso& aviso : m_datos.registro.avisos) {
        CCausa causa = Causa(aviso, posicion);
        causa.posicion = posicion++;
        m_causas.push_back(causa);
    }
    std::sort(m_causas.begin(), m_causas.end());
    struct CTramo {
        std::uint32_t desde;
        std::uint32_t largo;
    };
    std::vector<CTramo> tramos;
    for (std::size_t desde = 0; desde < n;) {
        std::size_t hasta = desde + 1;
        while (hasta < n && m_causas[hasta].EsLaDe(m_causas[desde]))
            ++hasta;
        tramos.push_back(
            {static_cast<std::uint32_t>(desde), static_cast<std::uint32_t>(hasta - desde)});
        desde = hasta;
    }
    CAsuntos asuntos;
    asuntos.cuantos = static_cast<std::int64_t>(tramos.size());
    std::stable_sort(tramos.begin(), tramos.end(),
                     [](const CTramo& a, const CTramo& b) { return a.largo > b.largo; });
    tramos.resize(std::min(tramos.size(), tope));
    for (const CTramo& tramo : tramos)
        asuntos.mayores.push_back(Cuenta(tramo.desde, std::size_t{tramo.desde} + tramo.largo));
    return asuntos;
}

} // namespace

CAsuntos ReuneAsuntos(const CDatosAsuntos& datos, std::size_t tope)
{
    return CReunion(datos).Reune(tope);
}

} // namespace informe
