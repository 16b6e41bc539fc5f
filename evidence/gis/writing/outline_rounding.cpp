#include "evidence/gis/writing/outline_rounding.h"

#include <algorithm>
#include <memory>

#include <ogr_geometry.h>

#include "evidence/gis/complaints.h"
#include "evidence/gis/geometry.h"
#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr const char* kHuecosPerdidos = "agujeros que desaparecen al redondear a centímetros"_ansi;
constexpr const char* kRechazados = "recintos que no se pueden dibujar";
constexpr const char* kEnNada = "se queda en nada al redondear a centímetros"_ansi;

/// Tells whether a label would break the lines of an exchange file, and isn't there already.
bool RompeLineas(const CRedondo& redondo)
{
    const std::optional<CString>& rotulo = redondo.recinto.rotulo;
    return rotulo && TieneControles(*rotulo) &&
           (redondo.pareja.antes == nullptr ||
            !SeVenIgual(*rotulo, redondo.pareja.antes->dibujado.rotulo));
}

/// The rings around all outlines together; each with its holes.
std::vector<std::vector<CAnillo>> Alrededor(const OGRMultiPolygon& todas)
{
    const std::unique_ptr<OGRGeometry> juntas(todas.UnionCascaded());
    std::vector<std::vector<CAnillo>> recintos;
    if (juntas)
        for (const OGRGeometry* parte : PartesDe(*juntas, wkbPolygon))
            recintos.push_back(AnillosDe(*parte->toPolygon()));
    return recintos;
}

} // namespace

bool CRedondeo::Redondea()
{
    RechazaDefectos();
    Anuda();
    if (!m_antes.Esta())
        RodeaParcelas();
    return m_bien;
}

/// Refuses what can't be drawn, unless it is there already.
void CRedondeo::RechazaDefectos()
{
    for (CRedondo& redondo : m_redondos) {
        CRecintoEntrante& recinto = redondo.recinto;
        CString motivo = recinto.rechazo;
        if (motivo.IsEmpty() && !redondo.pareja.mismoContorno && !recinto.defecto.IsEmpty())
            motivo = recinto.nombre + ": " + recinto.defecto;
        else if (motivo.IsEmpty() && RompeLineas(redondo))
            motivo = recinto.nombre +
                     ": su rótulo lleva un salto de línea u otro carácter de control"_ansi;
        if (motivo.IsEmpty())
            continue;
        recinto.anillos.clear();
        Rechaza(redondo, motivo);
    }
    std::erase_if(m_redondos, [](const CRedondo& redondo) {
        return !redondo.pareja.mismoContorno && redondo.recinto.anillos.empty();
    });
}

/// Tells that an outline can't be drawn. Where the mode leaves such out, one that has a place in
/// the drawing stays there as it was.
void CRedondeo::Rechaza(CRedondo& redondo, const CString& motivo)
{
    if (!m_modo.saltaInvalidos) {
        m_modo.noticias->Falla(kRechazados, motivo);
        m_bien = false;
    } else if (redondo.pareja.antes != nullptr) {
        m_modo.noticias->Advierte(kRechazados, "Se deja como estaba "_ansi + motivo);
        CRecintoEntrante& recinto = redondo.recinto;
        const CRecintoDibujado& antes = redondo.pareja.antes->dibujado;
        redondo.pareja.mismoContorno = true;
        recinto.rotulo = antes.posicionRotulo > 0 ? std::optional(antes.rotulo) : std::nullopt;
        recinto.codigo.reset();
        recinto.borrado.reset();
        recinto.punto.reset();
        recinto.numero.reset();
    } else {
        m_modo.noticias->Advierte(kRechazados, "Se deja fuera "_ansi + motivo);
    }
}

std::vector<CAnillo> CRedondeo::Fijos() const
{
    std::vector<CAnillo> fijos;
    const auto pon = [&](const CDibujoAntes::CRegistro& registro) {
        for (CAnillo& anillo : AnillosDe(registro.dibujado))
            fijos.push_back(std::move(anillo));
    };
    for (const CRedondo& redondo : m_redondos)
        if (redondo.pareja.mismoContorno)
            pon(*redondo.pareja.antes);
    for (const ClaseTopologia clase : m_pedido.clases)
        if (!m_pedido.traidas.Hay(clase))
            for (const CDibujoAntes::CRegistro& registro : m_antes.Registros(clase))
                pon(registro);
    return fijos;
}

void CRedondeo::Anuda()
{
    std::vector<CAnilloFino> finos;
    for (CRedondo& redondo : m_redondos) {
        if (redondo.pareja.mismoContorno)
            continue;
        for (CAnilloFino& anillo : redondo.recinto.anillos)
            finos.push_back(std::move(anillo));
    }
    std::vector<CAnillo> todos;
    if (!::Anuda(finos, Fijos(), todos)) {
        FallaCon("los recintos del polígono %s no se dejan anudar"_ansi, m_pedido.nombre);
        m_bien = false;
        m_redondos.clear();
        return;
    }
    auto siguiente = todos.begin();
    for (CRedondo& redondo : m_redondos)
        if (!redondo.pareja.mismoContorno)
            Toma(redondo, siguiente);
    std::erase_if(m_redondos, [](const CRedondo& redondo) {
        return !redondo.pareja.mismoContorno && redondo.anillos.empty();
    });
}

/// Gives an outline its rounded rings.
void CRedondeo::Toma(CRedondo& redondo, std::vector<CAnillo>::iterator& siguiente)
{
    const auto fin = siguiente + static_cast<std::ptrdiff_t>(redondo.recinto.anillos.size());
    const bool quedaExterior = siguiente != fin && !siguiente->empty();
    if (!quedaExterior)
        Rechaza(redondo, redondo.recinto.nombre + ": " + kEnNada);
    for (; siguiente != fin; ++siguiente)
        if (quedaExterior && siguiente->empty())
            m_modo.noticias->Apunta(kHuecosPerdidos, redondo.recinto.nombre);
        else if (quedaExterior)
            redondo.anillos.push_back(std::move(*siguiente));
}

/// A polygon that nobody drew is what its parcels cover. Where they cross, its points lie on none
/// of them.
void CRedondeo::RodeaParcelas()
{
    OGRMultiPolygon parcelas;
    for (const CRedondo& redondo : m_redondos) {
        if (redondo.recinto.clase == ClaseTopologia::Poligonos)
            return;
        if (redondo.recinto.clase == ClaseTopologia::Parcelas)
            parcelas.addGeometryDirectly(PoligonoDe(redondo.anillos).release());
    }
    if (parcelas.IsEmpty())
        return;
    CRecintoEntrante recinto;
    recinto.clase = ClaseTopologia::Poligonos;
    const int polig = LeeEntero(m_pedido.nombre);
    recinto.rotulo = std::to_string(polig);
    recinto.nombre = Formatea("el polígono %d"_ansi, polig);
    for (std::vector<CAnillo>& anillos : Alrededor(parcelas))
        m_redondos.push_back({recinto, {}, std::move(anillos)});
}
