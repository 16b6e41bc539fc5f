#include "evidence/gis/writing/outline_matching.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

#include "evidence/gis/geometry.h"
#include "platform/ansi.h"

using vexageo::CPunto;

namespace {

using CAnilloFijo = std::vector<std::pair<std::int64_t, std::int64_t>>;
/// The rings of an outline, wherever they begin and whichever way they run: the outer one, then the
/// holes in an order of their own.
using CContorno = std::vector<CAnilloFijo>;

/// The ring without repeated points, from its least point on, in one of its two directions.
CAnilloFijo Fija(CAnilloFijo anillo)
{
    anillo.erase(std::unique(anillo.begin(), anillo.end()), anillo.end());
    while (anillo.size() > 1 && anillo.front() == anillo.back())
        anillo.pop_back();
    const auto desdeElMenor = [](const CAnilloFijo& puntos) {
        // Where a ring touches itself in its least point there are several beginnings.
        CAnilloFijo mejor;
        const auto menor = std::ranges::min_element(puntos);
        for (auto i = puntos.begin(); i != puntos.end(); ++i) {
            if (*i != *menor)
                continue;
            CAnilloFijo girado(i, puntos.end());
            girado.insert(girado.end(), puntos.begin(), i);
            if (mejor.empty() || girado < mejor)
                mejor = std::move(girado);
        }
        return mejor;
    };
    CAnilloFijo ida = desdeElMenor(anillo);
    std::ranges::reverse(anillo);
    return std::min(ida, desdeElMenor(anillo));
}

void Cierra(CContorno& contorno)
{
    if (contorno.size() > 1)
        std::sort(contorno.begin() + 1, contorno.end());
}

CContorno ContornoDe(const CRecintoEntrante& recinto)
{
    CContorno contorno;
    for (const CAnilloFino& anillo : recinto.anillos) {
        CAnilloFijo puntos;
        for (const CFino& punto : anillo)
            puntos.emplace_back(punto.x, punto.y);
        contorno.push_back(Fija(std::move(puntos)));
    }
    Cierra(contorno);
    return contorno;
}

CContorno ContornoDe(const CRecintoDibujado& recinto)
{
    CContorno contorno;
    const auto pon = [&](const std::vector<CPunto<int>>& anillo) {
        CAnilloFijo puntos;
        for (const CPunto<int>& punto : anillo)
            puntos.emplace_back(EnFinos(punto).x, EnFinos(punto).y);
        if (!puntos.empty())
            contorno.push_back(Fija(std::move(puntos)));
    };
    if (recinto.contorno.empty())
        return contorno; // the driver shows none where the outer ring is lost
    pon(recinto.contorno);
    for (const CIslaDibujada& isla : recinto.islas)
        pon(isla.contorno);
    Cierra(contorno);
    return contorno;
}

/// Outlines of a drawing by what they have in common with those that come; each is given once.
template <class T>
class CPorAlgo {
public:
    void Apunta(T que, std::size_t i) { m_lugares[std::move(que)].push_back(i); }
    /// The first one that isn't taken and that `vale`; -1 for none.
    template <class F>
    int Busca(const T& que, const std::vector<bool>& cogidos, F vale) const
    {
        const auto suyos = m_lugares.find(que);
        if (suyos == m_lugares.end())
            return -1;
        const auto suyo = std::ranges::find_if(
            suyos->second, [&](std::size_t i) { return !cogidos[i] && vale(i); });
        return suyo == suyos->second.end() ? -1 : static_cast<int>(*suyo);
    }

private:
    std::map<T, std::vector<std::size_t>> m_lugares;
};

bool HayRotulo(const CRecintoDibujado& antes)
{
    return antes.posicionRotulo > 0;
}

/// Gives the outlines of a drawing to those that come, each once.
class CReparto {
public:
    CReparto(const std::vector<CDibujoAntes::CRegistro>& registros, std::size_t cuantos)
        : m_registros(registros), m_cogidos(registros.size(), false), m_parejas(cuantos)
    {
    }
    const std::vector<CPareja>& Parejas() const { return m_parejas; }

    /// Those with the same rings, of several the one that has most in common beside them.
    void PorContorno(const std::vector<CRecintoEntrante>& recintos)
    {
        CPorAlgo<CContorno> porContorno;
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            porContorno.Apunta(ContornoDe(m_registros[i].dibujado), i);
        std::vector<CContorno> contornos;
        contornos.reserve(recintos.size());
        for (const CRecintoEntrante& recinto : recintos)
            contornos.push_back(ContornoDe(recinto));
        constexpr int kTodoIgual = 2;
        for (int rigor = kTodoIgual; rigor >= 0; --rigor)
            for (std::size_t k = 0; k < recintos.size(); ++k)
                if (m_parejas[k].antes == nullptr)
                    Toma(k,
                         porContorno.Busca(contornos[k], m_cogidos,
                                           [&](std::size_t i) {
                                               return Vale(recintos[k], m_registros[i].dibujado,
                                                           rigor);
                                           }),
                         true);
    }
    /// Of the others those with the same label, where it was settled.
    void PorRotulo(const std::vector<CRecintoEntrante>& recintos,
                   const std::vector<bool>& resueltos)
    {
        CPorAlgo<std::string> porRotulo; // as it is shown
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            if (m_registros[i].dibujado.posicionRotulo > 0)
                porRotulo.Apunta(ansi::AUtf8(m_registros[i].dibujado.rotulo), i);
        for (std::size_t k = 0; k < recintos.size(); ++k)
            if (m_parejas[k].antes == nullptr && recintos[k].rotulo && resueltos[k])
                Toma(k,
                     porRotulo.Busca(ansi::AUtf8(*recintos[k].rotulo), m_cogidos,
                                     [](std::size_t) { return true; }),
                     false);
    }

    /// Of what was refused the rest by the numbers of their records, where these are one record's
    /// alone: what they would change is to stay.
    void PorNumero(const std::vector<CRecintoEntrante>& recintos)
    {
        std::map<int, std::vector<std::size_t>> porNumero;
        for (std::size_t i = 0; i < m_registros.size(); ++i)
            porNumero[m_registros[i].dibujado.numero].push_back(i);
        for (std::size_t k = 0; k < recintos.size(); ++k) {
            const auto suyos = m_parejas[k].antes != nullptr || recintos[k].rechazo.IsEmpty()
                                   ? porNumero.end()
                                   : porNumero.find(recintos[k].numero.value_or(-1));
            if (suyos != porNumero.end() && suyos->second.size() == 1 &&
                !m_cogidos[suyos->second.front()])
                Toma(k, static_cast<int>(suyos->second.front()), false);
        }
    }

private:
    static bool Vale(const CRecintoEntrante& recinto, const CRecintoDibujado& antes, int rigor)
    {
        return rigor == 0 ||
               (EsElMismoRotulo(recinto, antes) &&
                (rigor == 1 || recinto.numero.value_or(antes.numero) == antes.numero));
    }
    void Toma(std::size_t k, int i, bool mismoContorno)
    {
        if (i < 0)
            return;
        m_cogidos[static_cast<std::size_t>(i)] = true;
        m_parejas[k] = {&m_registros[static_cast<std::size_t>(i)], i, mismoContorno};
    }

    const std::vector<CDibujoAntes::CRegistro>& m_registros;
    std::vector<bool> m_cogidos;
    std::vector<CPareja> m_parejas;
};

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

std::vector<CPareja>
Empareja(std::vector<CRecintoEntrante>& recintos,
         const std::vector<CDibujoAntes::CRegistro>& registros,
         const std::function<bool(CRecintoEntrante&, const CPareja&)>& resuelve)
{
    CReparto reparto(registros, recintos.size());
    if (!registros.empty())
        reparto.PorContorno(recintos);
    std::vector<bool> resueltos(recintos.size());
    for (std::size_t k = 0; k < recintos.size(); ++k)
        resueltos[k] = resuelve(recintos[k], reparto.Parejas()[k]);
    if (!registros.empty())
        reparto.PorRotulo(recintos, resueltos);
    reparto.PorNumero(recintos);
    return reparto.Parejas();
}
