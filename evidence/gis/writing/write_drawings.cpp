#include <algorithm>
#include <map>

#include "cadastre/file_extensions.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/write_dataset.h"
#include "evidence/municipality_files.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/any_case_name.h"
#include "platform/files/set_healing.h"

// What a dataset does when it is closed: it makes the drawings of what it took.

namespace {

// A layer of a drawing that is there changes where something of it comes.
void Pon(CRecintoEntrante recinto, CPedidoDibujo& pedido)
{
    pedido.traidas.Pon(recinto);
    pedido.recintos.push_back(std::move(recinto));
}
void Pon(CEntidadEntrante entidad, CPedidoDibujo& pedido)
{
    pedido.traidas.Pon(entidad);
    pedido.entidades.push_back(std::move(entidad));
}

/// Tells whether no topology without its drawing would go by what is written; one that would was
/// told.
bool EstaEntero(const CString& base, const CPedidoDibujo& pedido)
{
    const auto suelta = std::ranges::find_if(pedido.clases, [&](ClaseTopologia clase) {
        return !pedido.traidas.Hay(clase) && EstaEnDisco(ConExtension(base, ExtensionDe(clase)));
    });
    if (suelta == pedido.clases.end())
        return true;
    FallaCon("el dibujo %s no se puede cambiar: tiene .%s y le falta el .BIN. Con la opción "
             "SUSTITUYE=SI se hacen nuevos él y la lista, sólo con lo que trae el origen"_ansi,
             pedido.nombre, ExtensionDe(*suelta));
    return false;
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
            pedido.delOrigen.recintos.insert(clase);
    pedido.clases = clases;
    pedido.delOrigen.entidades = m_traidas.entidades;
    return pedido;
}

/// What was taken, by drawings: the polygons' in the order in which they came.
std::vector<CPedidoDibujo> CMunicipioNuevo::Pedidos()
{
    std::vector<CPedidoDibujo> pedidos;
    std::map<CString, std::size_t> lugares;
    const auto pon = [&](auto& suyo) {
        if (suyo.EsDeHojas())
            return;
        const auto [lugar, nuevo] = lugares.try_emplace(suyo.de.entrada, pedidos.size());
        if (nuevo)
            pedidos.push_back(PedidoDe(suyo.de.entrada));
        Pon(std::move(suyo), pedidos[lugar->second]);
    };
    std::ranges::for_each(m_recintos, pon);
    std::ranges::for_each(m_entidades, pon);
    return pedidos;
}

bool CMunicipioNuevo::TienenFicherosPropios(const CListaDibujada& lista,
                                            const std::vector<CPedidoDibujo>& pedidos) const
{
    const CString carpeta = CCadena(m_lista).DamePath();
    std::map<CString, CString> deQuien; // by the drawing's file
    CNombresEnDisco nombres;
    bool bien = true;
    const auto fichero = [&](const CString& nombre) {
        return CFile::EnDisco(ConExtension(carpeta + nombre, kExtensionDibujo), nombres);
    };
    const auto apunta = [&](const CString& nombre, const CString& quien) {
        const auto [suyo, nuevo] = deQuien.try_emplace(fichero(nombre), quien);
        if (nuevo || suyo->second == quien)
            return;
        FallaCon("%s y %s son los mismos ficheros: %s"_ansi, quien, suyo->second, suyo->first);
        bien = false;
    };
    const auto poligono = [](const CString& nombre) { return "el polígono "_ansi + nombre; };
    for (const CString& entrada : lista.Entradas())
        deQuien.try_emplace(fichero(entrada), poligono(entrada));
    for (const CPedidoDibujo& pedido : pedidos) {
        apunta(pedido.nombre, poligono(pedido.nombre));
        const CString casi = lista.CasiComo(pedido.nombre);
        if (casi.IsEmpty())
            continue;
        FallaCon("El polígono %s no está en la lista, y está %s: un mismo polígono no tiene dos "
                 "dibujos que solo ceros o blancos distinguen"_ansi,
                 pedido.nombre, casi);
        bien = false;
    }
    if (!m_hojas.IsEmpty())
        apunta(m_hojas, "el dibujo de las hojas");
    return bien;
}

/// Who writes the municipality has its list, from before the first drawing is read until all are in
/// their places: what two of them make of one drawing would be the later one's alone.
void CMunicipioNuevo::ReservaLista(CConjuntoSalidas& salidas) const
{
    sistema::Error error;
    if (!m_simula && salidas.Reserva(m_lista, error) == CReemplazo::Apertura::Ocupado)
        throw CFileException(m_lista, sistema::kDeOtro);
}

bool CMunicipioNuevo::Graba()
{
    for (const CTocado& tocado : SanaConjuntos({m_lista}))
        Advierte(tocado.Frase());
    CConjuntoSalidas salidas;
    ReservaLista(salidas);
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
    std::map<CString, CCapasTraidas> dejadas;
    bool bien = lista.SituaEntradas(m_modo, m_recintos, m_entidades, dejadas);
    DejaFuera(m_recintos, m_entidades,
              [&](const auto& suyo) { return suyo.EsDeHojas() || lista.Tiene(suyo.de.entrada); });
    bien = GrabaHojas(salidas) && bien;
    std::vector<CPedidoDibujo> pedidos = Pedidos();
    std::vector<CString> entradas;
    entradas.reserve(pedidos.size());
    for (const CPedidoDibujo& pedido : pedidos)
        entradas.push_back(pedido.nombre);
    PideDejadas(lista, dejadas, pedidos);
    if (m_sustituye)
        AvisaDeLoSustituido(pedidos);
    bien = PideVacios(lista, pedidos) && bien;
    bien = TienenFicherosPropios(lista, pedidos) && bien;
    for (CPedidoDibujo& pedido : pedidos) {
        const bool estaba = lista.Estaba() && lista.Tiene(pedido.nombre);
        const CString base = CCadena(m_lista).DamePath() + pedido.nombre;
        // All of them are looked at, so that all refusals are told.
        bien = GrabaPoligono(base, estaba, std::move(pedido), salidas) && bien;
    }
    if (!bien || m_simula)
        return bien;
    lista.Graba(entradas, salidas);
    return Coloca(salidas);
}

/// Puts all files in their places. False, which was told, where a drawing that they were made on is
/// another one by now.
bool CMunicipioNuevo::Coloca(CConjuntoSalidas& salidas) const
{
    if (const CString cambiado = m_comoEstaban.Cambiado(); !cambiado.IsEmpty()) {
        FallaCon("Otro programa ha escrito en %s mientras se hacían los dibujos: quedan todos como "
                 "están. Repita la escritura"_ansi,
                 cambiado);
        return false;
    }
    salidas.Confirma();
    for (const CConservada& una : salidas.Conservadas())
        Advierte(una.Frase());
    return true;
}

bool CMunicipioNuevo::GrabaPoligono(const CString& base, bool estaba, CPedidoDibujo pedido,
                                    CConjuntoSalidas& salidas)
{
    m_comoEstaban.Apunta(base, pedido.clases);
    CDibujoAntes antes;
    const bool sePuede = estaba ? antes.Lee(base, pedido.clases) || EstaEntero(base, pedido)
                                : m_sustituye || EstaLibre(base, pedido);
    if (sePuede && estaba && !antes.Esta())
        m_noticias.Apunta("dibujos de la lista que faltaban y se hacen nuevos", pedido.nombre);
    return sePuede && Graba(base, antes, std::move(pedido), salidas);
}

/// Tells whether no file stands where a drawing is to come that the list doesn't have: a list with
/// another name, or without one of its entries, doesn't make the drawings beside it nobody's.
bool CMunicipioNuevo::EstaLibre(const CString& base, const CPedidoDibujo& pedido) const
{
    std::vector<const char*> extensiones = {kExtensionDibujo};
    for (const ClaseTopologia clase : pedido.clases)
        extensiones.push_back(ExtensionDe(clase));
    const auto ocupada = std::ranges::find_if(extensiones, [&](const char* extension) {
        return EstaEnDisco(ConExtension(base, extension));
    });
    if (ocupada == extensiones.end())
        return true;
    FallaCon("%s ya está, y la lista %s no tiene el polígono %s. Si es de este municipio se "
             "escribe en la lista, y con la opción SUSTITUYE=SI se hace todo nuevo"_ansi,
             ConExtension(base, *ocupada), m_lista, pedido.nombre);
    return false;
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
    const auto pon = [&](const auto& suyo) {
        if (suyo.EsDeHojas())
            Pon(suyo, pedido);
    };
    std::ranges::for_each(m_recintos, pon);
    std::ranges::for_each(m_entidades, pon);
    const CString base = carpeta + nombre;
    if (pedido.recintos.empty() && pedido.entidades.empty()) {
        if (m_traidas.Hay(ClaseTopologia::Hojas) && HayRecintos(base, ClaseTopologia::Hojas))
            m_noticias.Apunta("dibujos de hojas de los que el origen no trae ninguna y se quedan "
                              "como están"_ansi,
                              nombre);
        return true;
    }
    m_hojas = nombre;
    m_comoEstaban.Apunta(base, pedido.clases);
    CDibujoAntes antes;
    const bool sePuede = m_sustituye || antes.Lee(base, pedido.clases) || EstaEntero(base, pedido);
    return sePuede && Graba(base, antes, std::move(pedido), salidas);
}

bool CMunicipioNuevo::Graba(const CString& base, const CDibujoAntes& antes, CPedidoDibujo pedido,
                            CConjuntoSalidas& salidas)
{
    const CString nombre = pedido.nombre;
    if (!antes.Esta()) {
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
    const auto& [recintos, iguales, libres] = cambios;
    std::string frase =
        Formatea("%s: %d recintos nuevos, %d cambiados, %d quitados y %d como estaban"_ansi, nombre,
                 recintos.nuevos, recintos.cambiados, recintos.quitados, iguales);
    if (libres.Hay())
        frase += Formatea("; %d textos o líneas sueltos nuevos, %d cambiados y %d quitados"_ansi,
                          libres.nuevos, libres.cambiados, libres.quitados);
    if (m_simula && (recintos.Hay() || libres.Hay()))
        m_noticias.Advierte("dibujos que cambiarían"_ansi, frase);
    else if (recintos.quitados > 0) // a source of a part of them looks like one that deletes
        m_noticias.Advierte("dibujos que pierden recintos", frase);
    else if (libres.quitados > 0)
        m_noticias.Advierte("dibujos que pierden textos o líneas sueltos"_ansi, frase);
    else
        CPLDebug("VEXA", "%s", ansi::AUtf8(frase).c_str());
}
