#include "evidence/drawing_findings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "cadastre/table_files.h"
#include "evidence/outline_pieces.h"
#include "evidence/units.h"
#include "platform/ansi.h"
#include "vexa_libs/ring.h"
#include "vexa_libs/ring_crossings.h"

using vexageo::CPunto;
using vexageo::Lugar;

namespace {

using CAnillo = std::vector<CPunto<int>>;

constexpr std::size_t kMenosPuntos = 3;
constexpr double kTolerancia = 0.5; // square metres

/// Any character will do that is no blank, digit or sign of the first half of the code page.
bool TieneLetra(std::string_view texto)
{
    constexpr unsigned char kSegundaMitad = 0x80;
    return std::ranges::any_of(texto, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               static_cast<unsigned char>(c) >= kSegundaMitad;
    });
}

/// How the label's point lies to the rings of an outline, and in which island or on whose boundary,
/// from 1; 0 for none.
std::pair<Lugar, int> SituaRotulo(const CRecintoDibujado& recinto)
{
    const Lugar lugar = vexageo::Situa(recinto.contorno, recinto.punto);
    if (lugar == Lugar::Dentro)
        for (int isla = 0; const CIslaDibujada& suya : recinto.islas) {
            ++isla;
            if (const Lugar enIsla = vexageo::Situa(suya.contorno, recinto.punto);
                enIsla != Lugar::Fuera)
                return {enIsla, isla};
        }
    return {lugar, 0};
}

/// The sides of a ring, each in one direction, in order: those of equal rings are equal, wherever
/// they begin and whichever way they run.
std::vector<std::array<int, 4>> Lados(const CAnillo& anillo)
{
    std::vector<std::array<int, 4>> lados;
    const CPunto<int>* a = anillo.empty() ? nullptr : &anillo.back();
    for (const CPunto<int>& b : anillo) {
        if (!EnElMismoSitio(*a, b)) {
            const auto [menor, mayor] = std::minmax({std::pair(a->X, a->Y), std::pair(b.X, b.Y)});
            lados.push_back({menor.first, menor.second, mayor.first, mayor.second});
        }
        a = &b;
    }
    std::ranges::sort(lados);
    return lados;
}

/// Finds the faults of one outline.
class CExamen {
public:
    using enum ClaseFalta;

    CExamen(const CRecintoDibujado& recinto, ClaseTopologia que) : m_recinto(recinto), m_que(que) {}

    std::vector<CFalta> Faltas()
    {
        if (m_recinto.tramosPerdidos > 0)
            Falta(
                TramoPerdido,
                Formatea("%d de los tramos de su contorno no se leen en el dibujo: fuera de fecha",
                         m_recinto.tramosPerdidos));
        MiraContorno(m_recinto.contorno, m_recinto.areaPropia, 0);
        MiraIslas();
        MiraEstado();
        if (HayRotulo() && m_que != ClaseTopologia::Hojas) // nobody asks where a sheet's stands
            MiraRotulo();
        if (m_recinto.Valido())
            MiraTexto();
        std::ranges::stable_sort(m_faltas, {}, &CFalta::clase);
        return std::move(m_faltas);
    }

private:
    void Falta(ClaseFalta clase, int isla, const CPunto<int>& donde, const CString& texto)
    {
        m_faltas.push_back(
            {clase, isla, donde, isla > 0 ? Formatea("isla %d: ", isla) + texto : texto});
    }

    /// One that isn't of a ring, where the label stands.
    void Falta(ClaseFalta clase, const CString& texto) { Falta(clase, 0, m_recinto.punto, texto); }

    void MiraContorno(const CAnillo& anillo, double area, int isla)
    {
        if (anillo.size() < kMenosPuntos) {
            Falta(NoEncierra, isla, anillo.empty() ? m_recinto.punto : anillo.front(),
                  "su contorno no encierra nada");
            return;
        }
        if (!(anillo.front() == anillo.back()))
            Falta(NoCierra, isla, anillo.back(),
                  Formatea("su contorno no cierra: va de %.2lf %.2lf a %.2lf %.2lf",
                           EnMetros(anillo.front().X), EnMetros(anillo.front().Y),
                           EnMetros(anillo.back().X), EnMetros(anillo.back().Y)));
        if (const auto encuentro = vexageo::BuscaEncuentro(anillo)) {
            const bool cruza = encuentro->clase == vexageo::Encuentro::Cruza;
            Falta(cruza ? Cruza : Repasa, isla, encuentro->donde,
                  Formatea(
                      cruza ? "su contorno se cruza a sí mismo en %.2lf %.2lf"_ansi
                            : "su contorno pasa dos veces por la misma línea en %.2lf %.2lf"_ansi,
                      EnMetros(encuentro->donde.X), EnMetros(encuentro->donde.Y)));
        }
        const double dibujada = vexageo::DobleArea(anillo) / vexageo::kDobleMetroCuadrado;
        if (std::fabs(dibujada - std::fabs(area)) > kTolerancia)
            Falta(
                AreaDistinta, isla, anillo.front(),
                Formatea("su contorno encierra %.2lf m2 y el registro dice %.2lf", dibujada, area));
    }

    void MiraIslas()
    {
        std::map<std::vector<std::array<int, 4>>, int> vistas;
        int numero = 0;
        for (const CIslaDibujada& isla : m_recinto.islas) {
            ++numero;
            MiraContorno(isla.contorno, isla.areaPropia, numero);
            const CPunto<int> donde = isla.contorno.empty() ? m_recinto.punto : isla.contorno[0];
            if (isla.areaPropia > 0)
                Falta(IslaPositiva, numero, donde,
                      Formatea("su superficie es positiva y se suma en vez de restarse: %.2lf m2",
                               isla.areaPropia));
            const auto [otra, nueva] = vistas.try_emplace(Lados(isla.contorno), numero);
            if (!nueva && isla.contorno.size() >= kMenosPuntos)
                Falta(IslaRepetida, numero, donde,
                      Formatea(
                          "es la misma que la isla %d%s: cuenta dos veces, con %.2lf m2 ésta"_ansi,
                          otra->second, DondeEsta(isla, otra->second), isla.area));
        }
    }

    const char* DondeEsta(const CIslaDibujada& isla, int otra) const
    {
        return isla.enLista == m_recinto.islas[static_cast<std::size_t>(otra) - 1].enLista
                   ? ""
                   : ", que está en la lista"_ansi;
    }

    void MiraEstado()
    {
        switch (m_recinto.estado) {
        case EstadoRecinto::Valido:
            break;
        case EstadoRecinto::OtraClase:
            return Falta(OtraClase, TextoOtraClase());
        case EstadoRecinto::SinRotulo:
            return Falta(SinRotulo, TextoSinRotulo());
        case EstadoRecinto::NoEsTexto:
            return Falta(NoEsTexto, "su rótulo no es un texto"_ansi);
        case EstadoRecinto::Borrado:
            return Falta(Borrado, "su rótulo está borrado"_ansi);
        case EstadoRecinto::CodigoAjeno:
            return Falta(
                CodigoAjeno,
                Formatea("el código de su rótulo, %s, no es de %s"_ansi, m_recinto.codigo,
                         m_que == ClaseTopologia::Parcelas ? "una parcela" : "una subparcela"));
        case EstadoRecinto::FueraDeFecha:
            return Falta(FueraDeFecha, "su rótulo no se lee en el dibujo: fuera de fecha"_ansi);
        case EstadoRecinto::NoSeLlega:
            return Falta(NoSeLlega, "no se llega a él: está tras un rótulo que no se lee"_ansi);
        }
    }

    CString TextoOtraClase() const
    {
        const CString texto = "el registro no es un recinto ni una isla";
        return m_que == ClaseTopologia::Parcelas
                   ? texto + ": su superficie se da a la parcela rotulada antes"_ansi
                   : texto;
    }
    CString TextoSinRotulo() const
    {
        const CString texto = "no tiene rótulo: se pasa por alto"_ansi;
        const bool conIslas = m_que == ClaseTopologia::Parcelas &&
                              std::ranges::any_of(m_recinto.islas, [](const CIslaDibujada& isla) {
                                  return !isla.enLista;
                              });
        return conIslas ? texto + ", y sus islas se restan de la parcela rotulada antes"_ansi
                        : texto;
    }

    /// Tells whether a text names the outline, whatever else is wrong with it.
    bool HayRotulo() const
    {
        using enum EstadoRecinto;
        return m_recinto.estado == Valido || m_recinto.estado == Borrado ||
               m_recinto.estado == CodigoAjeno;
    }

    void MiraRotulo()
    {
        const CPunto<int>& rotulo = m_recinto.punto;
        const CPunto<int>& centroide = m_recinto.centroide;
        if (!EnElMismoSitio(rotulo, centroide))
            Falta(CentroideDistinto,
                  Formatea("su rótulo está en %.2lf %.2lf y el registro dice %.2lf %.2lf"_ansi,
                           EnMetros(rotulo.X), EnMetros(rotulo.Y), EnMetros(centroide.X),
                           EnMetros(centroide.Y)));
        if (m_recinto.tramosPerdidos > 0 || m_recinto.contorno.size() < kMenosPuntos)
            return;
        const auto [lugar, numero] = SituaRotulo(m_recinto);
        const CString isla = numero > 0 ? Formatea(" de su isla %d", numero) : CString();
        if (lugar == Lugar::Fuera)
            Falta(RotuloFuera, "su rótulo cae fuera de su contorno"_ansi);
        else if (lugar == Lugar::Borde)
            Falta(RotuloEnBorde, "su rótulo está en el borde"_ansi + isla);
        else if (numero > 0)
            Falta(RotuloEnIsla, "su rótulo cae dentro"_ansi + isla);
    }

    void MiraTexto()
    {
        const bool conNumero =
            m_que == ClaseTopologia::Parcelas || m_que == ClaseTopologia::Poligonos;
        if (conNumero && LeeEntero(m_recinto.rotulo) <= 0)
            Falta(SinNumero,
                  Formatea("su rótulo, \"%s\", no empieza por un número"_ansi, m_recinto.rotulo));
        if (::ParteFilas(m_que == ClaseTopologia::Hojas ? m_recinto.rotulo : m_recinto.letra))
            Falta(
                ParteFilas,
                "su rótulo tiene un tabulador o un fin de línea, que parte las filas en las que se "
                "escribe"_ansi);
        if (m_que != ClaseTopologia::Subparcelas)
            return;
        if (!TieneLetra(m_recinto.letra))
            Falta(SinLetra,
                  Formatea("su rótulo, \"%s\", no dice ninguna letra"_ansi, m_recinto.rotulo));
        if (m_recinto.parcela < 0)
            Falta(FueraDeParcela, "su rótulo no cae en ninguna parcela: se pasa por alto"_ansi);
    }

    const CRecintoDibujado& m_recinto;
    ClaseTopologia m_que;
    std::vector<CFalta> m_faltas;
};

CString TextoRepetido(const CRecintoDibujado& recinto, const CPiezas& piezas, ClaseTopologia que)
{
    const CString cual = NombreDePieza(recinto, que);
    const double cuenta = piezas.Ultima().areaRegistro;
    if (&recinto == &piezas.Ultima())
        return Formatea("%s está en %d recintos: cuenta éste, el último, de %.2lf m2, y se pierden "
                        "%.2lf m2 de los demás"_ansi,
                        cual, recinto.piezas, cuenta, piezas.Area() - cuenta);
    return Formatea("%s está en %d recintos y éste no cuenta: se pierden sus %.2lf m2; cuenta el "
                    "último, de %.2lf m2"_ansi,
                    cual, recinto.piezas, recinto.areaRegistro, cuenta);
}

/// Adds what can't be seen of one outline alone.
void AnotaRepetidos(const CTopologiaDibujada& topologia, ClaseTopologia que,
                    CFaltasDeRecintos& faltas)
{
    const auto piezas = ReunePiezas(topologia.recintos);
    for (std::size_t i = 0; i < topologia.recintos.size(); ++i) {
        const CRecintoDibujado& recinto = topologia.recintos[i];
        if (recinto.piezas > 1)
            faltas[i].push_back({ClaseFalta::Repetido, 0, recinto.punto,
                                 TextoRepetido(recinto, piezas.at(ClaveDePieza(recinto)), que)});
    }
}

} // namespace

CFaltasDeRecintos FaltasDe(const CTopologiaDibujada& topologia, ClaseTopologia que)
{
    CFaltasDeRecintos faltas;
    faltas.reserve(topologia.recintos.size());
    for (const CRecintoDibujado& recinto : topologia.recintos)
        faltas.push_back(CExamen(recinto, que).Faltas());
    AnotaRepetidos(topologia, que, faltas);
    return faltas;
}

CString TextoFaltas(const std::vector<CFalta>& faltas)
{
    CString texto;
    for (const CFalta& falta : faltas)
        texto += (texto.IsEmpty() ? "" : "; ") + falta.texto;
    return texto;
}
