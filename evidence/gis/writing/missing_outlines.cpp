#include <algorithm>
#include <map>
#include <set>

#include "cadastre/file_extensions.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/write_dataset.h"
#include "evidence/municipality_files.h"
#include "evidence/paths.h"

// What a source doesn't bring of the municipality that is there: what stays as it is, what becomes
// empty because an option says so, and what goes where all is made anew.

namespace {

/// The request for a drawing; null for none.
template <class T>
auto PedidoCon(const CString& nombre, T& pedidos) -> decltype(pedidos.data())
{
    const auto suyo = std::ranges::find(pedidos, nombre, &CPedidoDibujo::nombre);
    return suyo == pedidos.end() ? nullptr : &*suyo;
}

} // namespace

/// The layers that the source has of other polygons, and of which this one has outlines that don't
/// come.
std::vector<ClaseTopologia> CMunicipioNuevo::SinTraer(const CString& entrada,
                                                      const CCapasTraidas& traidas) const
{
    const CString base = CCadena(m_lista).DamePath() + entrada;
    std::vector<ClaseTopologia> sinTraer;
    for (const ClaseTopologia clase : kTopologiasDePoligono)
        if (m_traidas.Hay(clase) && !traidas.Hay(clase) && HayRecintos(base, clase))
            sinTraer.push_back(clase);
    return sinTraer;
}

std::optional<std::set<CString>>
CMunicipioNuevo::Vacios(const CListaDibujada& lista,
                        const std::vector<CPedidoDibujo>& pedidos) const
{
    std::set<CString> vacios;
    const char* vacia = m_opciones.FetchNameValueDef(opcion::kVacia, "");
    if (EQUAL(vacia, opcion::kTodos))
        return lista.Entradas();
    const CPLStringList dichos(
        CSLTokenizeString2(vacia, ",", CSLT_STRIPLEADSPACES | CSLT_STRIPENDSPACES));
    for (int i = 0; i < dichos.size(); ++i) {
        const CString* entrada = lista.PorVista(dichos[i]);
        const CPedidoDibujo* pedido = entrada == nullptr ? nullptr : PedidoCon(*entrada, pedidos);
        if (entrada == nullptr ||
            (pedido != nullptr && pedido->traidas.recintos == pedido->delOrigen.recintos)) {
            FallaCon(entrada == nullptr
                         ? "La opción VACIA nombra %s, que no está en la lista"_ansi
                         : "La opción VACIA nombra %s, y el origen trae recintos suyos"_ansi,
                     AnsiParaDecir(dichos[i]));
            return std::nullopt;
        }
        vacios.insert(*entrada);
    }
    return vacios;
}

/// A layer of a polygon all of whose outlines were deleted and one that the source never had look
/// alike.
bool CMunicipioNuevo::PideVacios(const CListaDibujada& lista, std::vector<CPedidoDibujo>& pedidos)
{
    const std::optional<std::set<CString>> vacios = Vacios(lista, pedidos);
    if (!vacios)
        return false;
    for (const CString& entrada : lista.Entradas()) {
        CPedidoDibujo* pedido = PedidoCon(entrada, pedidos);
        const std::vector<ClaseTopologia> sinTraer =
            SinTraer(entrada, pedido == nullptr ? CCapasTraidas() : pedido->traidas);
        const bool seVacia = vacios->contains(entrada);
        if (pedido != nullptr) {
            for (const ClaseTopologia clase : sinTraer)
                m_noticias.Apunta(seVacia ? "capas que la opción VACIA deja sin recintos"_ansi
                                          : "capas de las que el origen no trae ningún recinto de "
                                            "un polígono y se quedan como están; la opción VACIA "
                                            "las vacía"_ansi,
                                  entrada + "." + ExtensionDe(clase));
        } else if (!sinTraer.empty()) {
            m_noticias.Apunta(seVacia
                                  ? "polígonos que la opción VACIA deja sin los recintos que el "
                                    "origen podría traer"_ansi
                                  : "polígonos de la lista que el origen no nombra y se quedan "
                                    "como están; la opción VACIA los vacía"_ansi,
                              entrada);
            if (seVacia)
                pedido = &pedidos.emplace_back(PedidoDe(entrada));
        }
        if (seVacia && pedido != nullptr)
            pedido->traidas = pedido->delOrigen;
    }
    return true;
}

/// What a writing that makes all anew takes away beside what the source brings anew.
void CMunicipioNuevo::AvisaDeLoSustituido(const std::vector<CPedidoDibujo>& pedidos)
{
    const CString carpeta = CCadena(m_lista).DamePath();
    if (const std::optional<CListaPoligonos> lista = LeeLista(m_lista))
        for (const CString& entrada : lista->entradas)
            if (PedidoCon(entrada, pedidos) == nullptr &&
                EstaEnDisco(ConExtension(carpeta + entrada, kExtensionDibujo)))
                m_noticias.Apunta("polígonos que la opción SUSTITUYE quita de la lista"_ansi,
                                  entrada);
    for (const CPedidoDibujo& pedido : pedidos) {
        const bool sinSueltos = !pedido.delOrigen.Hay(ClaseEntidad::Rotulos) ||
                                !pedido.delOrigen.Hay(ClaseEntidad::Lineas);
        if (sinSueltos && EstaEnDisco(ConExtension(carpeta + pedido.nombre, kExtensionDibujo)))
            m_noticias.Apunta("dibujos que la opción SUSTITUYE hace nuevos, sin los textos o las "
                              "líneas sueltos que tuvieran"_ansi,
                              pedido.nombre);
        for (const ClaseTopologia clase : pedido.clases) {
            const bool seHace = clase == ClaseTopologia::Poligonos && // around the parcels
                                pedido.delOrigen.Hay(ClaseTopologia::Parcelas);
            if (!seHace && !pedido.delOrigen.Hay(clase) &&
                HayRecintos(carpeta + pedido.nombre, clase))
                m_noticias.Apunta("topologías que la opción SUSTITUYE deja sin recintos, pues el "
                                  "origen no trae su capa"_ansi,
                                  pedido.nombre + "." + ExtensionDe(clase));
        }
    }
}

/// Where all outlines of a polygon went to another one, it was named all the same.
void CMunicipioNuevo::PideDejadas(const CListaDibujada& lista,
                                  std::map<CString, CCapasTraidas>& dejadas,
                                  std::vector<CPedidoDibujo>& pedidos) const
{
    for (auto& [dejada, capas] : dejadas) {
        if (!lista.Tiene(dejada))
            continue;
        CPedidoDibujo* pedido = PedidoCon(dejada, pedidos);
        if (pedido == nullptr)
            pedido = &pedidos.emplace_back(PedidoDe(dejada));
        pedido->traidas.recintos.merge(capas.recintos);
        pedido->traidas.entidades.merge(capas.entidades);
    }
}
