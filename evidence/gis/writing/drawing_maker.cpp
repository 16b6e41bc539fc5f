#include "evidence/gis/writing/drawing_maker.h"

#include <memory>

#include <ogr_geometry.h>

#include "cadastre/label_codes.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/writing/label_point.h"
#include "evidence/gis/writing/overlaps.h"
#include "evidence/outline_pieces.h"
#include "evidence/paths.h"
#include "platform/ansi.h"

using vexageo::CPoligonoTopologico;

namespace {

constexpr const char* kHuecosPerdidos = "agujeros que desaparecen al redondear a centímetros"_ansi;
constexpr const char* kRotulosMovidos =
    "rótulos que no caían dentro de su recinto y se ponen en su interior"_ansi;
constexpr const char* kSinInterior =
    "recintos tan estrechos que su rótulo queda en una esquina"_ansi;

/// The state that an outline will be read with.
EstadoRecinto EstadoDe(const CRecintoEntrante& recinto)
{
    return recinto.rotulo ? EstadoPorRotulo(recinto.clase, recinto.codigo, recinto.borrado)
                          : EstadoRecinto::SinRotulo;
}

/// The rings around all outlines together; each with its holes.
std::vector<std::vector<CAnillo>> Alrededor(const OGRMultiPolygon& todas)
{
    const std::unique_ptr<OGRGeometry> juntas(todas.UnionCascaded());
    std::vector<std::vector<CAnillo>> recintos;
    if (juntas && wkbFlatten(juntas->getGeometryType()) == wkbPolygon)
        recintos.push_back(AnillosDe(*juntas->toPolygon()));
    else if (juntas && wkbFlatten(juntas->getGeometryType()) == wkbMultiPolygon)
        for (const OGRPolygon* poligono : *juntas->toMultiPolygon())
            recintos.push_back(AnillosDe(*poligono));
    return recintos;
}

} // namespace

void CNoticias::Apunta(const char* noticia, const CString& nombre)
{
    constexpr int kConNombre = 10;
    CCuenta& cuenta = m_cuentas[noticia];
    if (++cuenta.veces <= kConNombre)
        cuenta.nombres += (cuenta.nombres.IsEmpty() ? "" : ", ") + nombre;
    else if (cuenta.veces == kConNombre + 1)
        cuenta.nombres += "...";
}

void CNoticias::Dice()
{
    for (const auto& [noticia, cuenta] : m_cuentas)
        AdvierteCon("%d %s: %s", cuenta.veces, noticia.c_str(), cuenta.nombres);
    m_cuentas.clear();
}

bool CDibujoHecho::Compon(const std::vector<const CRecintoEntrante*>& entrantes,
                          const CModoDibujo& modo)
{
    for (const CRecintoEntrante* entrante : entrantes)
        m_redondos.push_back({*entrante, {}});
    if (!RedondeaRecintos(modo))
        return false;
    RodeaParcelas();
    std::vector<CAnillo> todos;
    for (const CRedondo& redondo : m_redondos)
        todos.insert(todos.end(), redondo.anillos.begin(), redondo.anillos.end());
    m_tramos = std::make_unique<CTramos>(todos);
    bool bien = true;
    for (const CRedondo& redondo : m_redondos)
        bien = ComponRegistro(redondo.recinto, redondo.anillos, modo) && bien;
    Relaciona(m_dibujado, {});
    for (const ClaseTopologia que : {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas})
        AvisaSolapes(m_dibujado.Topologia(que), que, m_dibujado.entrada);
    bien = PermitePiezas(ClaseTopologia::Parcelas, modo) && bien;
    return PermitePiezas(ClaseTopologia::Subparcelas, modo) && bien;
}

bool CDibujoHecho::RedondeaRecintos(const CModoDibujo& modo)
{
    std::vector<CAnilloFino> finos;
    for (CRedondo& redondo : m_redondos) {
        for (CAnilloFino& anillo : redondo.recinto.anillos)
            finos.push_back(std::move(anillo));
    }
    std::vector<CAnillo> todos;
    if (!Anuda(finos, todos)) {
        FallaCon("los recintos del polígono de %s no se dejan anudar"_ansi,
                 m_redondos.front().recinto.nombre);
        return false;
    }
    auto siguiente = todos.begin();
    bool bien = true;
    for (CRedondo& redondo : m_redondos) {
        const auto fin = siguiente + static_cast<std::ptrdiff_t>(redondo.recinto.anillos.size());
        const bool quedaExterior = siguiente != fin && !siguiente->empty();
        if (!quedaExterior && modo.saltaInvalidos) {
            AdvierteCon("Se deja fuera %s: se queda en nada al redondear a centímetros"_ansi,
                        redondo.recinto.nombre);
        } else if (!quedaExterior) {
            FallaCon("%s se queda en nada al redondear a centímetros"_ansi, redondo.recinto.nombre);
            bien = false;
        }
        for (; siguiente != fin; ++siguiente)
            if (quedaExterior && siguiente->empty())
                modo.noticias->Apunta(kHuecosPerdidos, redondo.recinto.nombre);
            else if (quedaExterior)
                redondo.anillos.push_back(std::move(*siguiente));
    }
    std::erase_if(m_redondos, [](const CRedondo& redondo) { return redondo.anillos.empty(); });
    return bien;
}

/// A polygon that nobody drew is what its parcels cover. Where they cross, its points lie on none
/// of them.
void CDibujoHecho::RodeaParcelas()
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
    recinto.codigo = kCodigoPoligono;
    const int polig = LeeEntero(m_redondos.front().recinto.entrada);
    recinto.rotulo.emplace().Format("%d", polig);
    recinto.nombre.Format("el polígono %d"_ansi, polig);
    for (std::vector<CAnillo>& anillos : Alrededor(parcelas))
        m_redondos.push_back({recinto, std::move(anillos)});
}

bool CDibujoHecho::ComponRegistro(CRecintoEntrante recinto, const std::vector<CAnillo>& anillos,
                                  const CModoDibujo& modo)
{
    std::vector<CPoligonoTopologico>& registros = m_registros[recinto.clase];
    const int numero = recinto.numero.value_or(static_cast<int>(registros.size()) + 1);
    std::vector<CPoligonoTopologico> partes; // the outline, then its islands
    for (const CAnillo& anillo : anillos) {
        const std::vector<int> tramos = m_tramos->Pon(anillo, m_dibujo);
        if (tramos.empty()) {
            FallaCon("el dibujo pasa de dos gigabytes: no cabe %s"_ansi, recinto.nombre);
            return false;
        }
        partes.push_back(vexageo::NuevoPoligono(
            numero, partes.empty() ? CPoligonoTopologico::kParcela : CPoligonoTopologico::kIsla,
            anillo, tramos));
    }
    const CPuntoRotulo sitio = SituaRotulo(anillos, recinto.punto);
    if (!sitio.dentro)
        modo.noticias->Apunta(kSinInterior, recinto.nombre);
    else if (recinto.punto && recinto.rotulo && !sitio.comoSePide)
        modo.noticias->Apunta(kRotulosMovidos, recinto.nombre);
    int rotulo = 0;
    if (recinto.rotulo) {
        vexageo::CTexto<int> texto(recinto.codigo);
        texto.SetTexto(*recinto.rotulo);
        texto.Puntos().push_back(sitio.punto);
        texto.Tipo().SetBorrado(recinto.borrado);
        rotulo = m_dibujo.Pon(texto);
    }
    CPoligonoTopologico registro = std::move(partes.front());
    vexageo::PonRotulo(registro, rotulo, sitio.punto);
    for (std::size_t i = 1; i < partes.size(); ++i)
        registro.InsertaIsla(partes[i]);
    ApuntaDibujado(recinto, anillos, registro);
    registros.push_back(std::move(registro));
    return true;
}

void CDibujoHecho::ApuntaDibujado(const CRecintoEntrante& recinto,
                                  const std::vector<CAnillo>& anillos,
                                  const CPoligonoTopologico& registro)
{
    if (recinto.clase != ClaseTopologia::Parcelas && recinto.clase != ClaseTopologia::Subparcelas)
        return;
    CRecintoDibujado dibujado;
    dibujado.estado = EstadoDe(recinto);
    dibujado.rotulo = recinto.rotulo.value_or(CString());
    dibujado.punto = registro.PuntoInterior();
    dibujado.areaRegistro = registro.Area();
    dibujado.contorno = anillos.front();
    for (std::size_t i = 1; i < anillos.size(); ++i)
        dibujado.islas.push_back({anillos[i], 0, true});
    m_dibujado.entrada = recinto.entrada;
    (recinto.clase == ClaseTopologia::Parcelas ? m_dibujado.parcelas : m_dibujado.subparcelas)
        .recintos.push_back(std::move(dibujado));
}

/// Tells what the way back will lose of each parcel, or letter, that stands in several outlines.
bool CDibujoHecho::PermitePiezas(ClaseTopologia que, const CModoDibujo& modo) const
{
    const std::vector<CRecintoDibujado>& recintos = m_dibujado.Topologia(que).recintos;
    const auto piezas = ReunePiezas(recintos);
    bool permitidas = true;
    for (const CRecintoDibujado& recinto : recintos) {
        if (recinto.piezas < 2 || recinto.pieza < recinto.piezas) // once, at the last one
            continue;
        CString frase;
        frase.Format("%s del polígono %s está en %d recintos: la vuelta toma el último, de %.2lf "
                     "m2, y pierde %.2lf m2 de los otros"_ansi,
                     NombreDePieza(recinto, que), m_dibujado.entrada, recinto.piezas,
                     recinto.areaRegistro, piezas.at(ClaveDePieza(recinto)).AreaPerdida());
        if (modo.admitePiezas)
            Advierte(frase);
        else
            Falla(frase + ". Con la opción PIEZAS=SI se escribe así"_ansi);
        permitidas = permitidas && modo.admitePiezas;
    }
    return permitidas;
}

void CDibujoHecho::Graba(const CString& base,
                         std::initializer_list<std::pair<ClaseTopologia, const char*>> ficheros,
                         CConjuntoSalidas& salidas)
{
    CFileException fallo;
    if (!m_dibujo.Abre(base + ".BIN", &fallo, &salidas))
        throw CFileException(fallo);
    m_dibujo.Cierra();
    for (const auto& [clase, extension] : ficheros) {
        CFile topologia;
        CreaSalida(topologia, base + extension, salidas);
        for (const CPoligonoTopologico& registro : m_registros[clase])
            registro.Write(&topologia);
        topologia.Close();
    }
}
