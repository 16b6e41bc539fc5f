#include "evidence/report/findings/matters.h"

#include <algorithm>
#include <compare>
#include <functional>
#include <map>
#include <set>

#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"

namespace informe {
namespace {

/// What lies behind a matter's messages, in the order of matters that are of one size.
enum class Clase : std::uint8_t {
    Ajena,
    VariosRecintos, ///< of all parcels that lose surface by it
    Paraje,
    Titular,
    Poligono,
    Parcela,
    Persona,
    Modulo,
    Fuera ///< subparcels drawn in no parcel, whose labels name none either
};

/// What lies behind a message.
struct CCausa {
    Clase clase = Clase::Ajena;
    int a = 0; // number of the place, holder or polygon; of a person or module that of its name
    int b = 0; // of a parcel alone: its own number, behind the polygon's
    std::uint32_t posicion = 0; // of the message

    bool EsLaDe(const CCausa& otra) const
    {
        return clase == otra.clase && a == otra.a && b == otra.b;
    }
    friend auto operator<=>(const CCausa&, const CCausa&) = default;
};

class CReunion {
public:
    CReunion(const CProceso& proceso, const CLugaresDeAvisos* lugares,
             const CBalanceDibujo* dibujo);

    CAsuntos Reune();

private:
    CCausa Causa(const CAviso& aviso, std::uint32_t posicion);
    CCausa CausaDeParcela(const CAviso& aviso, CNumerosParcela parcela);
    CCausa CausaDePersona(const CString& nombre) { return {Clase::Persona, Numero(nombre), 0, 0}; }
    int Numero(const CString& texto);
    /// The causes that are alike: those of one matter.
    struct CTramo {
        CCausa causa;
        std::uint32_t desde = 0;
        std::uint32_t hasta = 0;
        CCoste coste = {};

        std::uint32_t Largo() const { return hasta - desde; }
    };
    void BuscaCausas();
    std::vector<CTramo> Tramos() const;
    void Tasa(std::vector<CTramo>& tramos) const;
    CAsunto Cuenta(const CTramo& tramo) const;
    void CuentaMensajes(const CTramo& tramo, CAsunto& asunto) const;
    std::string Titulo(const CCausa& causa, const CAsunto& asunto) const;
    static std::string TituloDeParcela(const CAsunto& asunto);
    const CRegistroLeido& Registro() const { return m_proceso.registro; }
    const CAviso& Aviso(std::uint32_t i) const { return Registro().avisos[i]; }
    bool HayPerdidas() const { return m_dibujo != nullptr && !m_dibujo->perdidas.empty(); }

    const CProceso& m_proceso;
    const CLugaresDeAvisos* m_lugares;
    const CBalanceDibujo* m_dibujo;
    std::vector<CCausa> m_causas;
    std::map<CString, int> m_numeros; // of texts
    std::vector<CString> m_textos;
    // Parcels that the way out dropped, and the place's number.
    std::map<CNumerosParcela, int> m_sinParaje;
    std::set<CNumerosParcela> m_repetidas;
    std::set<CNumerosParcela> m_sinDibujo; // parcels with a subparcel that isn't drawn
    std::map<int, const CPoligonoRoto*> m_rotos;
};

/// Notes what the messages say of one another's causes. On the way out E102 drops the parcel, and
/// all that hangs on it then misses it; the way back only leaves the parcel without its place.
CReunion::CReunion(const CProceso& proceso, const CLugaresDeAvisos* lugares,
                   const CBalanceDibujo* dibujo)
    : m_proceso(proceso), m_lugares(lugares), m_dibujo(dibujo)
{
    for (const CAviso& aviso : Registro().avisos) {
        const CNumerosParcela parcela(aviso.polig, aviso.parcela);
        if (aviso.Es(kParajeNoEncontrado) && m_proceso.ficheros.sentido != Sentido::Vuelta)
            m_sinParaje.emplace(parcela, aviso.numero);
        else if (aviso.Es(kParcelaRepetida))
            m_repetidas.insert(parcela);
    }
    if (m_dibujo == nullptr)
        return;
    for (const CPoligonoRoto& roto : m_dibujo->rotos)
        m_rotos.emplace(roto.polig, &roto);
    for (const CAviso& aviso : Registro().avisos)
        if (aviso.Es(kSubparcelaNoEnGrafico) && m_rotos.contains(aviso.polig))
            m_sinDibujo.emplace(aviso.polig, aviso.parcela);
}

int CReunion::Numero(const CString& texto)
{
    const auto [suyo, nuevo] = m_numeros.emplace(texto, static_cast<int>(m_textos.size()));
    if (nuevo)
        m_textos.push_back(texto);
    return suyo->second;
}

/// The cause that lies farthest back: a drawing that is missing takes its whole polygon along, a
/// place that is missing a parcel, and only what neither explains is the parcel's own. The drawing
/// of the parcels costs E111 and E109, that of the subparcels E113 and E109; and a parcel some of
/// whose subparcels are missing no longer has the sum of their surfaces (E112, W304). Nor has one
/// that takes the surface of the last of its outlines alone.
CCausa CReunion::CausaDeParcela(const CAviso& aviso, CNumerosParcela parcela)
{
    const bool deSuma = aviso.Es(kSuperficieDifiere) || aviso.Es(kSuperficieCorregida);
    if (deSuma && HayPerdidas() && m_dibujo->perdidas.contains(parcela))
        return {Clase::VariosRecintos, 0, 0, 0};
    if (const auto roto = m_rotos.find(parcela.first); roto != m_rotos.end()) {
        const UINT numero = aviso.mensaje->numero;
        const bool deParcelas = numero == kParcelaNoEnGrafico || numero == kSubparcelaFuera;
        const bool deSubparcelas = numero == kSubparcelaNoEnGrafico || numero == kSubparcelaFuera ||
                                   (deSuma && m_sinDibujo.contains(parcela));
        if ((roto->second->parcelas && deParcelas) || (roto->second->subparcelas && deSubparcelas))
            return {Clase::Poligono, parcela.first, 0, 0};
    }
    if (const auto paraje = m_sinParaje.find(parcela); paraje != m_sinParaje.end())
        return {Clase::Paraje, paraje->second, 0, 0};
    return {Clase::Parcela, parcela.first, parcela.second, 0};
}

/// A parcel that stands twice links its holders twice: E211 and E212 of such a parcel are the
/// parcel's matter, of any other the person's, who stands twice in the list of holders.
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
        return CausaDePersona(m_proceso.personas.Clave(aviso.texto));
    case kYaTitular:
    case kYaCotitular:
        if (!m_repetidas.contains({aviso.polig, aviso.parcela}))
            return CausaDePersona(m_proceso.personas.Clave(aviso.texto));
        break;
    case kSubparcelaFuera: {
        const auto fuera = m_lugares == nullptr ? std::nullopt : m_lugares->DeFuera(posicion);
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

void CReunion::CuentaMensajes(const CTramo& tramo, CAsunto& asunto) const
{
    for (std::uint32_t i = tramo.desde; i < tramo.hasta; ++i) {
        const CAviso& aviso = Aviso(m_causas[i].posicion);
        ++asunto.mensajes;
        if (asunto.primeros.size() < topes::kMensajesDeAsunto)
            asunto.primeros.push_back(m_causas[i].posicion);
        if (aviso.mensaje == nullptr)
            continue;
        asunto.errores += EsWarning(*aviso.mensaje) ? 0 : 1;
        const auto suya = std::ranges::find_if(
            asunto.cuentas, [&](const auto& c) { return c.first == aviso.mensaje; });
        if (suya == asunto.cuentas.end())
            asunto.cuentas.emplace_back(aviso.mensaje, 1);
        else
            ++suya->second;
    }
}

CAsunto CReunion::Cuenta(const CTramo& tramo) const
{
    CAsunto asunto;
    const CCausa& causa = tramo.causa;
    asunto.coste = tramo.coste;
    CuentaMensajes(tramo, asunto);
    if (causa.clase == Clase::Parcela) {
        asunto.polig = causa.a;
        asunto.parcela = causa.b;
    } else if (causa.clase == Clase::Poligono) {
        asunto.polig = causa.a;
    } else if (causa.clase == Clase::VariosRecintos) {
        const auto& perdidas = m_dibujo->perdidas;
        asunto.parcelas.assign(perdidas.begin(), perdidas.end());
        std::ranges::stable_sort(asunto.parcelas, std::greater(),
                                 [](const auto& una) { return una.second; });
    }
    asunto.titulo = Titulo(causa, asunto);
    return asunto;
}

/// Of all that is said of a parcel the reason that the rest follows from. What keeps the parcel out
/// altogether comes first, then what doesn't know it, then what of it is missing in the drawing or
/// the database; then what it lacks, and last sums and surfaces, which any of the others upsets.
std::string CReunion::TituloDeParcela(const CAsunto& asunto)
{
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
    for (const auto& [numero, motivo] : kMotivos)
        for (const auto& [mensaje, veces] : asunto.cuentas)
            if (mensaje->numero == numero)
                return motivo;
    return "sus mensajes";
}

std::string CReunion::Titulo(const CCausa& causa, const CAsunto& asunto) const
{
    const auto texto = [&](int numero) {
        return TextoSinBlancos(m_textos[static_cast<std::size_t>(numero)]);
    };
    switch (causa.clase) {
    case Clase::VariosRecintos:
        return "En varios recintos: la vuelta toma el último, y el resto no cuenta";
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

/// The causes of all messages, sorted: those of one matter stand together, in the log's order.
void CReunion::BuscaCausas()
{
    m_causas.reserve(Registro().avisos.size());
    std::uint32_t posicion = 0;
    for (const CAviso& aviso : Registro().avisos) {
        CCausa causa = Causa(aviso, posicion);
        causa.posicion = posicion++;
        m_causas.push_back(causa);
    }
    std::ranges::sort(m_causas);
}

/// What has a cause of its own. Surface that is lost is a matter without any message, too.
std::vector<CReunion::CTramo> CReunion::Tramos() const
{
    std::vector<CTramo> tramos;
    bool faltaPerdidas = HayPerdidas();
    for (std::uint32_t desde = 0, hasta = 0; desde < m_causas.size(); desde = hasta) {
        while (hasta < m_causas.size() && m_causas[hasta].EsLaDe(m_causas[desde]))
            ++hasta;
        tramos.push_back({m_causas[desde], desde, hasta});
        faltaPerdidas = faltaPerdidas && m_causas[desde].clase != Clase::VariosRecintos;
    }
    if (faltaPerdidas)
        tramos.push_back({{Clase::VariosRecintos, 0, 0, 0}});
    return tramos;
}

void CReunion::Tasa(std::vector<CTramo>& tramos) const
{
    CTarifa tarifa(m_proceso, m_dibujo);
    for (CTramo& tramo : tramos) {
        if (tramo.causa.clase == Clase::VariosRecintos)
            tramo.coste.metros = m_dibujo->Perdida();
        for (std::uint32_t i = tramo.desde; i < tramo.hasta; ++i)
            tramo.coste += tarifa.De(Aviso(m_causas[i].posicion));
    }
}

CAsuntos CReunion::Reune()
{
    BuscaCausas();
    std::vector<CTramo> tramos = Tramos();
    Tasa(tramos);
    CAsuntos asuntos;
    asuntos.cuantos = static_cast<std::int64_t>(tramos.size());
    std::ranges::stable_sort(tramos, std::greater(), [](const CTramo& tramo) {
        return std::pair(tramo.coste, tramo.Largo());
    });
    if (tramos.size() > topes::kAsuntos)
        tramos.erase(tramos.begin() + topes::kAsuntos, tramos.end());
    for (const CTramo& tramo : tramos)
        asuntos.mayores.push_back(Cuenta(tramo));
    return asuntos;
}

CAsuntos AsuntosDeInfograf(const CProceso& proceso)
{
    std::vector<CAsunto> asuntos;
    for (const CEvidenciaInfograf::CFaltan& falta : proceso.infograf.faltan)
        asuntos.push_back(
            {.titulo = falta.entrada.IsEmpty()
                           ? "Ortofotos: " + falta.que + ", y ningún registro nombra su hoja"
                           : "Polígono " + Texto(falta.entrada) + ": " + falta.que});
    std::map<CString, std::int64_t> sinPadre;
    for (const CEvidenciaInfograf::CSinPadre& suyo : proceso.infograf.sinPadre)
        ++sinPadre[suyo.entrada];
    for (const auto& [entrada, cuantos] : sinPadre)
        asuntos.push_back(
            {.titulo = "Polígono " + Texto(entrada) + ": recintos que no caen en el suyo",
             .coste = {0, cuantos}});
    const auto total = static_cast<std::int64_t>(asuntos.size());
    const auto sueltos =
        asuntos.begin() + static_cast<std::ptrdiff_t>(proceso.infograf.faltan.size());
    std::stable_sort(sueltos, asuntos.end(),
                     [](const CAsunto& a, const CAsunto& b) { return a.coste > b.coste; });
    if (asuntos.size() > topes::kAsuntos)
        asuntos.erase(asuntos.begin() + topes::kAsuntos, asuntos.end());
    return {std::move(asuntos), total};
}

} // namespace

CAsuntos ReuneAsuntos(const CProceso& proceso, const CLugaresDeAvisos* lugares,
                      const CBalanceDibujo* dibujo)
{
    return proceso.ficheros.sentido == Sentido::Infograf
               ? AsuntosDeInfograf(proceso)
               : CReunion(proceso, lugares, dibujo).Reune();
}

} // namespace informe
