#include "evidence/gis/writing/write_dataset.h"

#include <algorithm>
#include <map>
#include <set>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/write_layer.h"
#include "evidence/municipality_files.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/set_healing.h"

namespace {

bool EstaEnDisco(const CString& nombre)
{
    CFile fichero;
    return AbreSiHay(fichero, nombre, CFile::anyCase);
}

} // namespace

GDALDataset* CMunicipioNuevo::Crea(const char* lista, int bandas, CSLConstList opciones)
{
    if (bandas != 0)
        return nullptr;
    if (STARTS_WITH_CI(lista, "/vsi")) {
        Falla("Los dibujos se escriben en una carpeta del disco, no dentro de un archivo"_ansi);
        return nullptr;
    }
    const char* ganan = CSLFetchNameValueDef(opciones, opcion::kGanan, "NADIE");
    if (!EQUAL(ganan, "NADIE") && !EQUAL(ganan, opcion::kNumeros) &&
        !EQUAL(ganan, opcion::kRotulos)) {
        Falla("La opción GANAN es NADIE, NUMEROS o ROTULOS"_ansi);
        return nullptr;
    }
    return new CMunicipioNuevo(lista, opciones); // NOLINT(cppcoreguidelines-owning-memory): GDAL's
}

CMunicipioNuevo::CMunicipioNuevo(const char* lista, CSLConstList opciones)
    : m_lista(STARTS_WITH_CI(lista, opcion::kPrefijo) ? lista + strlen(opcion::kPrefijo) : lista),
      m_opciones(CSLDuplicate(opciones), TRUE)
{
    SetDescription(lista);
    eAccess = GA_Update;
    const char* ganan = m_opciones.FetchNameValueDef(opcion::kGanan, "");
    m_modo = {SiNo(opcion::kPiezas), SiNo(opcion::kInvalidos),
              EQUAL(ganan, opcion::kNumeros)   ? Ganan::Numeros
              : EQUAL(ganan, opcion::kRotulos) ? Ganan::Rotulos
                                               : Ganan::Nadie,
              &m_noticias};
    m_tolerancia = CPLAtof(m_opciones.FetchNameValueDef(opcion::kArcos, "0"));
    m_sustituye = SiNo(opcion::kSustituye);
    m_simula = SiNo(opcion::kSimula);
}

CMunicipioNuevo::~CMunicipioNuevo()
{
    Termina();
}

/// Writes all, once. What failed is told behind all warnings: GDAL's tools look at the last
/// complaint for their status.
bool CMunicipioNuevo::Termina()
{
    if (m_terminado)
        return m_escrito;
    m_terminado = true;
    m_escrito = SinExcepciones(false, [this] {
        const bool aMedias = !m_rechazado && !m_fin.Llego();
        const bool bien = !m_rechazado && !aMedias && Graba();
        m_noticias.Dice();
        if (!bien)
            Falla(aMedias ? "No se ha escrito ningún dibujo: lo que había que escribir se quedó a "
                            "medias"_ansi
                          : "No se ha escrito ningún dibujo"_ansi);
        return bien;
    });
    return m_escrito;
}

bool CMunicipioNuevo::SiNo(const char* opcion) const
{
    const char* valor = m_opciones.FetchNameValueDef(opcion, "NO");
    return EQUAL(valor, "SI") || CPLTestBool(valor);
}

/// A layer that can't be written: with INVALIDOS it is told and left out.
bool CMunicipioNuevo::RechazaCapa(const CString& motivo)
{
    if (m_modo.saltaInvalidos)
        Advierte(motivo + ": se deja fuera"_ansi);
    else
        Falla(motivo);
    m_rechazado = m_rechazado || !m_modo.saltaInvalidos;
    return m_modo.saltaInvalidos;
}

OGRLayer* CMunicipioNuevo::CreaCapa(const char* nombre, const OGRSpatialReference* referencia)
{
    return SinExcepciones<OGRLayer*>(nullptr, [&]() -> OGRLayer* {
        const std::optional<ClaseTopologia> clase = ClaseDeCapa(nombre);
        const std::optional<ClaseEntidad> entidad = ClaseDeEntidad(nombre);
        CTomaElemento toma = [](const OGRFeature&) { return true; }; // of a layer that is left out
        CString motivo;
        if (EQUAL(nombre, capa::kMensajes))
            Advierte("La capa mensajes no se escribe: sale del fichero de errores"_ansi);
        else if (!clase && !entidad)
            motivo =
                Formatea("De la capa %s no se hace un dibujo; las hay de parcelas, subparcelas, "
                         "poligonos, hojas, rotulos y lineas (se nombra con -nln)"_ansi,
                         AnsiParaDecir(nombre));
        else if (motivo = MotivoDeReferencia(referencia); !motivo.IsEmpty())
            motivo = "La capa " + AnsiParaDecir(nombre) + " " + motivo;
        else {
            if (clase)
                m_traidas.recintos.insert(*clase);
            else
                m_traidas.entidades.insert(*entidad);
            toma = [this, suya = std::string(nombre)](const OGRFeature& elemento) {
                const bool tomado =
                    SinExcepciones(false, [&] { return Toma(suya.c_str(), elemento); });
                m_rechazado = m_rechazado || !tomado;
                return tomado;
            };
        }
        if (!motivo.IsEmpty() && !RechazaCapa(motivo))
            return nullptr;
        Añade(std::make_unique<CCapaNuevaSalida>(std::move(toma), nombre, referencia));
        return Ultima();
    });
}

bool CMunicipioNuevo::Sabe(const char* capacidad) const
{
    return EQUAL(capacidad, ODsCCreateLayer) || EQUAL(capacidad, ODsCCurveGeometries) ||
           EQUAL(capacidad, ODsCTransactions);
}

OGRErr CMunicipioNuevo::StartTransaction(int /*forzar*/)
{
    m_fin.Empieza();
    return OGRERR_NONE;
}

OGRErr CMunicipioNuevo::CommitTransaction()
{
    m_fin.Acaba();
    return OGRERR_NONE;
}

OGRErr CMunicipioNuevo::RollbackTransaction()
{
    m_fin.Deshace();
    return OGRERR_NONE;
}

bool CMunicipioNuevo::Toma(const char* capa, const OGRFeature& elemento)
{
    CString motivo;
    const std::optional<ClaseTopologia> clase = ClaseDeCapa(capa);
    if (!m_hayLista)
        m_hayLista = !m_sustituye && HayFichero(m_lista);
    if (clase && *m_hayLista)
        m_leidos.Apunta(NombreDeCapa(*clase), elemento);
    if (clase ? TomaElemento(*clase, elemento, m_tolerancia, m_recintos, motivo)
              : TomaEntidad(*ClaseDeEntidad(capa), elemento, m_entidades, motivo))
        return true;
    constexpr const char* kClase = "elementos rechazados";
    if (m_modo.saltaInvalidos) {
        m_noticias.Advierte(kClase, "Se deja fuera "_ansi + motivo);
        return true;
    }
    m_noticias.Falla(kClase, motivo);
    return false;
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
        if (recinto.clase != ClaseTopologia::Hojas)
            suyo(recinto.de.entrada).recintos.push_back(std::move(recinto));
    for (CEntidadEntrante& entidad : m_entidades)
        if (!entidad.de.entrada.IsEmpty())
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
    if (m_recintos.empty() && m_entidades.empty() && !m_opciones.FetchNameValue(opcion::kVacia)) {
        Falla("No hay ningún recinto que dibujar"_ansi);
        return false;
    }
    if (lista.Estaba())
        m_leidos.Avisa(m_lista);
    std::vector<CString> dejadas;
    bool bien = lista.SituaEntradas(m_modo, m_recintos, m_entidades, dejadas);
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
        if (recinto.clase == ClaseTopologia::Hojas)
            pedido.recintos.push_back(recinto);
    for (const CEntidadEntrante& entidad : m_entidades)
        if (entidad.de.entrada.IsEmpty())
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
