#include "evidence/gis/writing/outline_matching.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>

#include "evidence/gis/geometry.h"
#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

using vexageo::CPunto;

namespace {

/// The rings of an outline, wherever they begin and whichever way they run: the outer one, then the
/// holes in an order of their own.
using CContorno = std::vector<CAnilloFino>;

/// The ring without repeated points, from its least point on, in one of its two directions.
CAnilloFino Fija(CAnilloFino anillo)
{
    anillo.erase(std::unique(anillo.begin(), anillo.end()), anillo.end());
    while (anillo.size() > 1 && anillo.front() == anillo.back())
        anillo.pop_back();
    const auto desdeElMenor = [](const CAnilloFino& puntos) {
        // Where a ring touches itself in its least point there are several beginnings.
        CAnilloFino mejor;
        const auto menor = std::ranges::min_element(puntos);
        for (auto i = puntos.begin(); i != puntos.end(); ++i) {
            if (*i != *menor)
                continue;
            CAnilloFino girado(i, puntos.end());
            girado.insert(girado.end(), puntos.begin(), i);
            if (mejor.empty() || girado < mejor)
                mejor = std::move(girado);
        }
        return mejor;
    };
    CAnilloFino ida = desdeElMenor(anillo);
    std::ranges::reverse(anillo);
    return std::min(ida, desdeElMenor(anillo));
}

CContorno ContornoDe(std::vector<CAnilloFino> anillos)
{
    for (CAnilloFino& anillo : anillos)
        anillo = Fija(std::move(anillo));
    if (anillos.size() > 1)
        std::sort(anillos.begin() + 1, anillos.end());
    return anillos;
}

CContorno ContornoDe(const CRecintoDibujado& recinto)
{
    std::vector<CAnilloFino> anillos;
    if (!recinto.contorno.empty()) // the driver shows none where the outer ring is lost
        for (const CAnillo& anillo : AnillosDe(recinto))
            std::ranges::transform(anillo, std::back_inserter(anillos.emplace_back()),
                                   [](const CPunto<int>& punto) { return EnFinos(punto); });
    return ContornoDe(std::move(anillos));
}

bool HayRotulo(const CRecintoDibujado& antes)
{
    return antes.posicionRotulo > 0;
}

/// Gives the outlines of a drawing to those that come, each once.
class CReparto {
public:
    CReparto(const std::vector<CDibujoAntes::CRegistro>& registros, std::vector<CRedondo>& suyos)
        : m_registros(registros), m_suyos(suyos), m_cogidos(registros.size(), false)
    {
    }

    /// Those with the same rings, of several the one that has most in common beside them.
    void PorContorno()
    {
        CLugares<CContorno> lugares;
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            lugares[ContornoDe(m_registros[i].dibujado)].push_back(i);
        std::vector<CContorno> contornos;
        contornos.reserve(m_suyos.size());
        for (const CRedondo& suyo : m_suyos)
            contornos.push_back(ContornoDe(suyo.recinto.anillos));
        constexpr int kTodoIgual = 2;
        for (int rigor = kTodoIgual; rigor >= 0; --rigor)
            for (std::size_t k = 0; k < m_suyos.size(); ++k)
                if (m_suyos[k].pareja.antes == nullptr)
                    Toma(m_suyos[k], true, lugares, contornos[k], [&](std::size_t i) {
                        return Vale(m_suyos[k].recinto, m_registros[i].dibujado, rigor);
                    });
    }
    /// Of the others those with the same number and label, where no other record has that number:
    /// several pieces of a parcel have one label.
    void PorNumeroYRotulo(const std::vector<bool>& resueltos)
    {
        const CLugares<int> lugares = PorNumeros();
        for (std::size_t k = 0; k < m_suyos.size(); ++k)
            if (CRedondo& suyo = m_suyos[k]; suyo.pareja.antes == nullptr && suyo.recinto.numero &&
                                             suyo.recinto.rotulo && resueltos[k])
                Toma(suyo, false, lugares, *suyo.recinto.numero, [&](std::size_t i) {
                    return HayRotulo(m_registros[i].dibujado) &&
                           SeVenIgual(*suyo.recinto.rotulo, m_registros[i].dibujado.rotulo);
                });
    }
    /// Of the others those with the same label, where it was settled.
    void PorRotulo(const std::vector<bool>& resueltos)
    {
        CLugares<std::string> lugares; // as it is shown
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            if (HayRotulo(m_registros[i].dibujado))
                lugares[ansi::AUtf8(m_registros[i].dibujado.rotulo)].push_back(i);
        for (std::size_t k = 0; k < m_suyos.size(); ++k)
            if (CRedondo& suyo = m_suyos[k];
                suyo.pareja.antes == nullptr && suyo.recinto.rotulo && resueltos[k])
                Toma(suyo, false, lugares, ansi::AUtf8(*suyo.recinto.rotulo), kCualquiera);
    }
    /// Of those that come without a field for labels the rest by what their numbers say.
    void PorCampos()
    {
        CLugares<std::string> lugares;
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            if (const CRecintoDibujado& antes = m_registros[i].dibujado; antes.Valido())
                lugares[EnUno(antes.parcela, antes.letra)].push_back(i);
        for (CRedondo& suyo : m_suyos)
            if (suyo.pareja.antes == nullptr &&
                (suyo.recinto.sinCampoRotulo || suyo.recinto.rotuloEsNumero))
                Toma(suyo, false, lugares,
                     EnUno(suyo.recinto.parcela.value_or(-1),
                           suyo.recinto.letra.value_or(CString())),
                     kCualquiera);
    }
    /// Of what was refused, or can't be drawn, the rest by the numbers of their records, where
    /// these are one record's alone: what they would change is to stay.
    void PorNumero()
    {
        const CLugares<int> lugares = PorNumeros();
        for (CRedondo& suyo : m_suyos)
            if (suyo.pareja.antes == nullptr &&
                !(suyo.recinto.rechazo.IsEmpty() && suyo.recinto.defecto.IsEmpty()))
                Toma(suyo, false, lugares, suyo.recinto.numero.value_or(-1), kCualquiera);
    }

private:
    /// Places of outlines in their topology, by what may be in common.
    template <class T>
    using CLugares = std::map<T, std::vector<std::size_t>>;

    static constexpr auto kCualquiera = [](std::size_t) { return true; };

    /// The records by their numbers, of which those are left out that several have.
    CLugares<int> PorNumeros() const
    {
        CLugares<int> lugares;
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            lugares[m_registros[i].dibujado.numero].push_back(i);
        std::erase_if(lugares, [](const auto& suyos) { return suyos.second.size() > 1; });
        return lugares;
    }
    /// Parcel and letter, of which other layers' outlines have none.
    static std::string EnUno(int parcela, const CString& letra)
    {
        return std::to_string(parcela) + "-" + ansi::AUtf8(letra);
    }

    static bool Vale(const CRecintoEntrante& recinto, const CRecintoDibujado& antes, int rigor)
    {
        return rigor == 0 ||
               (EsElMismoRotulo(recinto, antes) &&
                (rigor == 1 || recinto.numero.value_or(antes.numero) == antes.numero));
    }
    /// Gives one the first of those with this in common that isn't taken and that `vale`.
    template <class T, class F>
    void Toma(CRedondo& suyo, bool mismoContorno, const CLugares<T>& lugares, const T& que, F vale)
    {
        const auto iguales = lugares.find(que);
        if (iguales == lugares.end())
            return;
        const auto i = std::ranges::find_if(
            iguales->second, [&](std::size_t uno) { return !m_cogidos[uno] && vale(uno); });
        if (i == iguales->second.end())
            return;
        m_cogidos[*i] = true;
        suyo.pareja = {&m_registros[*i], static_cast<int>(*i), mismoContorno};
    }

    const std::vector<CDibujoAntes::CRegistro>& m_registros;
    std::vector<CRedondo>& m_suyos;
    std::vector<bool> m_cogidos;
};

/// Tells whether the fields beside the label are those that the driver shows of an outline.
bool CamposComoSeLeen(const CRecintoEntrante& recinto, const CDibujoAntes::CRegistro& antes,
                      const CDibujoAntes& dibujo)
{
    switch (recinto.clase) {
    case ClaseTopologia::Parcelas:
        return recinto.parcela.value_or(-1) == antes.dibujado.parcela;
    case ClaseTopologia::Subparcelas:
        // Which parcel it lies in depends on the tables.
        return (!recinto.letra || SeVenIgual(*recinto.letra, antes.dibujado.letra)) &&
               (!recinto.parcela || *recinto.parcela == antes.dibujado.parcela ||
                dibujo.CaeEnParcela(antes.dibujado.punto, *recinto.parcela));
    case ClaseTopologia::Poligonos:
        return recinto.de.poligono == LeeEntero(recinto.de.entrada);
    case ClaseTopologia::Hojas:
        return true;
    }
    return true;
}

/// Tells whether an outline that comes without its label as a text says by its numbers what it had:
/// they are a part of the label alone, "7 bis" is 7 as well, and 008 is 8.
bool DiceLoMismo(const CRecintoEntrante& recinto, const CDibujoAntes::CRegistro& antes,
                 const CDibujoAntes& dibujo)
{
    const bool dice = recinto.sinCampoRotulo ||
                      (recinto.rotuloEsNumero && recinto.rotulo && HayRotulo(antes.dibujado) &&
                       LeeEntero(*recinto.rotulo) == LeeEntero(antes.dibujado.rotulo));
    return dice && CamposComoSeLeen(recinto, antes, dibujo);
}

/// Gives such outlines the labels that they had.
void ConservaRotulos(std::vector<CRedondo>& suyos, const CDibujoAntes& dibujo)
{
    for (CRedondo& suyo : suyos) {
        const CDibujoAntes::CRegistro* antes = suyo.pareja.antes;
        if (antes == nullptr || !DiceLoMismo(suyo.recinto, *antes, dibujo))
            continue;
        suyo.recinto.rotulo.reset();
        if (HayRotulo(antes->dibujado))
            suyo.recinto.rotulo = antes->dibujado.rotulo;
    }
}

/// Settles the label of an outline whose fields say different things. One that comes as it is read
/// is nobody's edit.
/// \return false, which was told, where nothing says which of them counts
bool Resuelve(CRedondo& suyo, const CDibujoAntes& antes, const CModoDibujo& modo)
{
    CRecintoEntrante& recinto = suyo.recinto;
    const CPareja& pareja = suyo.pareja;
    if (recinto.contradiccion.IsEmpty() ||
        (pareja.mismoContorno && EsElMismoRotulo(recinto, pareja.antes->dibujado) &&
         CamposComoSeLeen(recinto, *pareja.antes, antes)))
        return true;
    modo.AvisaContradiccion("recintos cuyos campos se contradicen",
                            recinto.nombre + ": " + recinto.contradiccion, "el campo",
                            "el rótulo"_ansi);
    if (modo.ganan != Ganan::Numeros)
        return modo.ganan == Ganan::Rotulos;
    recinto.rotulo = recinto.porNumeros;
    if (EstadoPorRotulo(recinto.clase, recinto.Codigo(), recinto.Borrado()) !=
        EstadoRecinto::Valido) {
        recinto.borrado = false;
        recinto.codigo.reset();
        recinto.codigo = recinto.Codigo();
    }
    return true;
}

} // namespace

bool EsElMismoRotulo(const CRecintoEntrante& recinto, const CRecintoDibujado& antes)
{
    if (recinto.punto && !EnElMismoSitio(*recinto.punto, antes.punto))
        return false;
    // Some forms of a source can't tell an empty text from none.
    const CString rotulo = recinto.rotulo.value_or(CString());
    if (rotulo.IsEmpty() && antes.rotulo.IsEmpty())
        return true;
    return recinto.rotulo && HayRotulo(antes) && SeVenIgual(rotulo, antes.rotulo) &&
           SeVenIgual(recinto.codigo.value_or(antes.codigo), antes.codigo) &&
           recinto.borrado.value_or(antes.borrado) == antes.borrado;
}

bool Empareja(std::vector<CRedondo>& suyos, ClaseTopologia clase, const CDibujoAntes& antes,
              const CModoDibujo& modo)
{
    const std::vector<CDibujoAntes::CRegistro>& registros = antes.Registros(clase);
    CReparto reparto(registros, suyos);
    if (!registros.empty())
        reparto.PorContorno();
    std::vector<bool> resueltos;
    resueltos.reserve(suyos.size());
    for (CRedondo& suyo : suyos)
        resueltos.push_back(Resuelve(suyo, antes, modo));
    reparto.PorNumeroYRotulo(resueltos);
    reparto.PorRotulo(resueltos);
    reparto.PorCampos();
    ConservaRotulos(suyos, antes);
    reparto.PorNumero();
    return std::ranges::find(resueltos, false) == resueltos.end();
}
