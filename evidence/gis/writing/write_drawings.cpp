#include <algorithm>
#include <map>
#include <set>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/write_dataset.h"
#include "evidence/municipality_files.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/set_healing.h"

// What a dataset does when it is closed: it makes the drawings of what it took.

namespace {

/// Tells whether one belongs to the drawing of the sheets.
bool EsDeHojas(const CRecintoEntrante& recinto)
{
    return recinto.clase == ClaseTopologia::Hojas;
}
bool EsDeHojas(const CEntidadEntrante& entidad)
{
    return entidad.de.entrada.IsEmpty();
}

bool EstaEnDisco(const CString& nombre)
{
    CFile fichero;
    return AbreSiHay(fichero, nombre, CFile::anyCase);
}

} // namespace

template <class F>
void CMunicipioNuevo::DejaFuera(std::vector<CRecintoEntrante>& recintos,
                                std::vector<CEntidadEntrante>& entidades, F vale)
{
    const auto sobra = [&](const auto& suyo) {
        if (suyo.rechazo.IsEmpty() || vale(suyo))
            return false;
        m_noticias.Advierte(kRechazados, "Se deja fuera "_ansi + suyo.rechazo);
        return true;
    };
    std::erase_if(recintos, sobra);
    std::erase_if(entidades, sobra);
}

/// What one drawing has of what was taken is still to come.
CPedidoDibujo CMunicipioNuevo::PedidoDe(const CString& nombre,
                                        std::span<const ClaseTopologia> clases) const
{
    CPedidoDibujo pedido;
    pedido.nombre = nombre;
    for (const ClaseTopologia clase : clases)
        if (m_traidas.Hay(clase))
            pedido.traidas.recintos.insert(clase);
    pedido.clases = clases;
    pedido.traidas.entidades = m_traidas.entidades;
    return pedido;
}

/// What was taken, by drawings: the polygons' in the order in which they came.
std::vector<CPedidoDibujo> CMunicipioNuevo::Pedidos()
{
    std::vector<CPedidoDibujo> pedidos;
    std::map<CString, std::size_t> lugares;
    const auto suyo = [&](const CString& entrada) -> CPedidoDibujo& {
        const auto [lugar, nuevo] = lugares.try_emplace(entrada, pedidos.size());
        if (nuevo)
            pedidos.push_back(PedidoDe(entrada));
        return pedidos[lugar->second];
    };
    for (CRecintoEntrante& recinto : m_recintos)
        if (!EsDeHojas(recinto))
            suyo(recinto.de.entrada).recintos.push_back(std::move(recinto));
    for (CEntidadEntrante& entidad : m_entidades)
        if (!EsDeHojas(entidad))
            suyo(entidad.de.entrada).entidades.push_back(std::move(entidad));
    return pedidos;
}

/// Tells whether a polygon has outlines of a layer that the source has.
bool CMunicipioNuevo::HayQueQuitar(const CString& entrada) const
{
    const CString base = CCadena(m_lista).DamePath() + entrada;
    return std::ranges::any_of(kDePoligono, [&](ClaseTopologia clase) {
        CFile fichero;
        return m_traidas.Hay(clase) &&
               AbreSiHay(fichero, ConExtension(base, ExtensionDe(clase)), CFile::anyCase) &&
               fichero.GetLength() > 0;
    });
}

/// A polygon all of whose outlines were deleted and one that the source never had look alike.
bool CMunicipioNuevo::PideVacios(const CListaDibujada& lista, const std::set<CString>& nombradas,
                                 std::vector<CPedidoDibujo>& pedidos)
{
    const char* vacia = m_opciones.FetchNameValueDef(opcion::kVacia, "");
    const bool todos = EQUAL(vacia, opcion::kTodos);
    const CPLStringList dichos(
        CSLTokenizeString2(todos ? "" : vacia, ",", CSLT_STRIPLEADSPACES | CSLT_STRIPENDSPACES));
    std::set<CString> vacios;
    for (int i = 0; i < dichos.size(); ++i) {
        const CString* entrada = lista.PorVista(dichos[i]);
        if (entrada == nullptr || nombradas.contains(*entrada)) {
            FallaCon(entrada == nullptr
                         ? "La opción VACIA nombra %s, que no está en la lista"_ansi
                         : "La opción VACIA nombra %s, y el origen trae recintos suyos"_ansi,
                     AnsiParaDecir(dichos[i]));
            return false;
        }
        vacios.insert(*entrada);
    }
    for (const CString& entrada : lista.Entradas()) {
        if (nombradas.contains(entrada) || !HayQueQuitar(entrada))
            continue;
        const bool seVacia = todos || vacios.contains(entrada);
        if (seVacia)
            pedidos.push_back(PedidoDe(entrada));
        m_noticias.Apunta(seVacia ? "polígonos que la opción VACIA deja sin los recintos que el "
                                    "origen podría traer"_ansi
                                  : "polígonos de la lista que el origen no nombra y se quedan "
                                    "como están; la opción VACIA los vacía"_ansi,
                          entrada);
    }
    return true;
}

bool CMunicipioNuevo::Graba()
{
    SanaConjuntos({m_lista});
    CListaDibujada lista(m_lista, m_sustituye);
    if (!lista.FijaMunicipio(m_opciones, GetMetadataItem(opcion::kCabecera)))
        return false;
    const auto vale = [](const auto& suyo) { return suyo.rechazo.IsEmpty(); };
    if (std::ranges::none_of(m_recintos, vale) && std::ranges::none_of(m_entidades, vale) &&
        !m_opciones.FetchNameValue(opcion::kVacia)) {
        DejaFuera(m_recintos, m_entidades, vale);
        Falla("No hay ningún recinto que dibujar"_ansi);
        return false;
    }
    if (lista.Estaba())
        m_leidos.Avisa(m_lista);
    std::vector<CString> dejadas;
    bool bien = lista.SituaEntradas(m_modo, m_recintos, m_entidades, dejadas);
    DejaFuera(m_recintos, m_entidades,
              [&](const auto& suyo) { return EsDeHojas(suyo) || lista.Tiene(suyo.de.entrada); });
    CConjuntoSalidas salidas;
    bien = GrabaHojas(salidas) && bien;
    std::vector<CPedidoDibujo> pedidos = Pedidos();
    std::vector<CString> entradas;
    std::set<CString> nombradas;
    for (const CPedidoDibujo& pedido : pedidos) {
        entradas.push_back(pedido.nombre);
        nombradas.insert(pedido.nombre);
    }
    // Where all outlines of a polygon went to another one, it was named all the same.
    for (const CString& dejada : dejadas)
        if (lista.Tiene(dejada) && nombradas.insert(dejada).second)
            pedidos.push_back(PedidoDe(dejada));
    bien = PideVacios(lista, nombradas, pedidos) && bien;
    for (CPedidoDibujo& pedido : pedidos) {
        const bool estaba = lista.Estaba() && lista.Tiene(pedido.nombre);
        const CString base = CCadena(m_lista).DamePath() + pedido.nombre;
        // All of them are looked at, so that all refusals are told.
        bien = GrabaPoligono(base, estaba, std::move(pedido), salidas) && bien;
    }
    if (!bien || m_simula)
        return bien;
    lista.Graba(entradas, salidas);
    salidas.Confirma();
    return true;
}

bool CMunicipioNuevo::GrabaPoligono(const CString& base, bool estaba, CPedidoDibujo pedido,
                                    CConjuntoSalidas& salidas)
{
    CDibujoAntes antes;
    if (estaba && antes.Lee(base, kDePoligono))
        return Graba(base, &antes, std::move(pedido), salidas);
    if (estaba)
        for (const ClaseTopologia clase : kDePoligono)
            if (!pedido.traidas.Hay(clase) && EstaEnDisco(ConExtension(base, ExtensionDe(clase)))) {
                FallaCon("el dibujo %s no se puede cambiar: tiene .%s y le falta el .BIN. Con la "
                         "opción SUSTITUYE=SI se hace uno nuevo"_ansi,
                         pedido.nombre, ExtensionDe(clase));
                return false;
            }
    if (!estaba && !m_sustituye && !EstaLibre(base, pedido))
        return false;
    return Graba(base, nullptr, std::move(pedido), salidas);
}

/// Tells whether no file stands where a drawing is to come that the list doesn't have: a list with
/// another name, or without one of its entries, doesn't make the drawings beside it nobody's.
bool CMunicipioNuevo::EstaLibre(const CString& base, const CPedidoDibujo& pedido) const
{
    std::vector<const char*> extensiones = {kExtensionDibujo};
    for (const ClaseTopologia clase : pedido.clases)
        extensiones.push_back(ExtensionDe(clase));
    for (const char* extension : extensiones)
        if (const CString fichero = ConExtension(base, extension); EstaEnDisco(fichero)) {
            FallaCon(
                "%s ya está, y la lista %s no tiene el polígono %s. Si es de este municipio se "
                "escribe en la lista, y con la opción SUSTITUYE=SI se hace todo nuevo"_ansi,
                fichero, m_lista, pedido.nombre);
            return false;
        }
    return true;
}

bool CMunicipioNuevo::GrabaHojas(CConjuntoSalidas& salidas)
{
    const CString carpeta = CCadena(m_lista).DamePath();
    CString nombre = m_opciones.FetchNameValueDef(opcion::kOrtos, "");
    if (nombre.IsEmpty() && !m_sustituye)
        nombre = BaseDe(BuscaHojas(carpeta).nombre);
    if (nombre.IsEmpty())
        nombre = "ortos";
    static constexpr ClaseTopologia kDeHojas[] = {ClaseTopologia::Hojas};
    CPedidoDibujo pedido = PedidoDe(nombre, kDeHojas);
    for (const CRecintoEntrante& recinto : m_recintos)
        if (EsDeHojas(recinto))
            pedido.recintos.push_back(recinto);
    for (const CEntidadEntrante& entidad : m_entidades)
        if (EsDeHojas(entidad))
            pedido.entidades.push_back(entidad);
    if (pedido.recintos.empty() && pedido.entidades.empty())
        return true;
    const CString base = carpeta + nombre;
    CDibujoAntes antes;
    const bool estaba = !m_sustituye && antes.Lee(base, pedido.clases);
    return Graba(base, estaba ? &antes : nullptr, std::move(pedido), salidas);
}

bool CMunicipioNuevo::Graba(const CString& base, const CDibujoAntes* antes, CPedidoDibujo pedido,
                            CConjuntoSalidas& salidas)
{
    const CString nombre = pedido.nombre;
    if (antes == nullptr) {
        const std::size_t traidos = pedido.recintos.size() + pedido.entidades.size();
        DejaFuera(pedido.recintos, pedido.entidades, [](const auto&) { return false; });
        if (traidos > 0 && pedido.recintos.empty() && pedido.entidades.empty())
            return true;
    }
    CDibujoHecho dibujo(std::move(pedido), antes, m_modo);
    if (!dibujo.Compon())
        return false;
    CuentaCambios(nombre, dibujo.Cambios());
    if (!m_simula)
        dibujo.Graba(base, salidas);
    return true;
}

void CMunicipioNuevo::CuentaCambios(const CString& nombre, const CCambiosDibujo& cambios)
{
    const std::string frase =
        Formatea("%s: %d recintos nuevos, %d cambiados, %d quitados y %d como estaban"_ansi, nombre,
                 cambios.nuevos, cambios.cambiados, cambios.quitados, cambios.iguales);
    if (m_simula && cambios.nuevos + cambios.cambiados + cambios.quitados > 0)
        m_noticias.Advierte("dibujos que cambiarían"_ansi, frase);
    else
        CPLDebug("VEXA", "%s", ansi::AUtf8(frase).c_str());
}
