#include "evidence/gis/writing/drawing_maker.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include <ogr_geometry.h>

#include "cadastre/file_extensions.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/writing/label_point.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

constexpr const char* kRotulosMovidos =
    "rótulos que no caían dentro de su recinto y se ponen en su interior"_ansi;
constexpr const char* kSinInterior =
    "recintos tan estrechos que su rótulo queda en una esquina"_ansi;
constexpr int kDetrasDeTodos = std::numeric_limits<int>::max();

/// The label of an outline that has one, at a place; of an outline that was there it is its old
/// label, as far as the source doesn't say otherwise.
/// \param viejo  its old label; null for none
/// \param punto  with its height
CTexto<int> RotuloDe(const CRecintoEntrante& recinto, const CTexto<int>* viejo,
                     const CPunto<int>& punto)
{
    const CString codigo = viejo == nullptr ? recinto.Codigo() : viejo->Tipo().Codigo();
    const bool borrado = viejo == nullptr ? recinto.Borrado() : viejo->Tipo().EsBorrado();
    CTexto<int> texto(recinto.codigo.value_or(codigo));
    texto.SetTexto(*recinto.rotulo);
    texto.Tipo().SetBorrado(recinto.borrado.value_or(borrado));
    if (viejo != nullptr && EnElMismoSitio(viejo->PrimerPunto(), punto))
        texto.Puntos() = viejo->Puntos();
    else
        texto.Puntos().push_back(punto);
    return texto;
}

/// The state that an outline gets by its label.
EstadoRecinto EstadoDe(const CRecintoEntrante& recinto)
{
    return recinto.rotulo ? EstadoPorRotulo(recinto.clase, recinto.Codigo(), recinto.Borrado())
                          : EstadoRecinto::SinRotulo;
}

/// What will be read of an outline that was drawn anew.
CRecintoDibujado DibujadoDe(const CRedondo& redondo, const CPoligonoTopologico& registro)
{
    CRecintoDibujado dibujado;
    dibujado.punto = registro.PuntoInterior();
    dibujado.areaRegistro = registro.Area();
    dibujado.contorno = redondo.anillos.front();
    for (std::size_t i = 1; i < redondo.anillos.size(); ++i)
        dibujado.islas.push_back({redondo.anillos[i], 0, true});
    dibujado.rotulo = redondo.recinto.rotulo.value_or(CString());
    dibujado.estado = EstadoDe(redondo.recinto);
    return dibujado;
}

} // namespace

bool CDibujoHecho::Compon()
{
    if (m_antes.Esta() && !m_dibujo.Sobre(m_antes.Bytes()) && m_antes.Falta().IsEmpty()) {
        FallaCon("el dibujo del polígono %s pasa de dos gigabytes"_ansi, m_pedido.nombre);
        return false;
    }
    EmparejaRecintos();
    CRedondeo redondeo(m_pedido, m_antes, m_modo, m_redondos);
    m_bien = redondeo.Redondea() && m_bien;
    PreparaTramos(redondeo.Fijos());
    ComponRegistros();
    CEntidadesLibres libres(m_pedido, m_antes, m_usadas, m_dibujo, *m_modo.noticias);
    m_bien = libres.Pon() && m_bien;
    m_cambios.libres = libres.Cambios();
    m_cambiaDibujo = m_cambiaDibujo || m_cambios.libres.Hay() || !m_antes.Esta();
    BorraLoQueSobra();
    m_bien = SePuedeCambiar() && m_bien;
    return Revisa() && m_bien;
}

void CDibujoHecho::EmparejaRecintos()
{
    std::map<ClaseTopologia, std::vector<CRedondo>> porClase;
    for (CRecintoEntrante& recinto : m_pedido.recintos) {
        std::vector<CRedondo>& suyos = porClase[recinto.clase];
        suyos.push_back({std::move(recinto), {}, {}});
    }
    m_pedido.recintos.clear();
    for (auto& [clase, suyos] : porClase) {
        m_bien = Empareja(suyos, clase, m_antes, m_modo) && m_bien;
        std::ranges::move(suyos, std::back_inserter(m_redondos));
    }
}

void CDibujoHecho::PreparaTramos(std::vector<CAnillo> todos)
{
    for (const CRedondo& redondo : m_redondos)
        todos.insert(todos.end(), redondo.anillos.begin(), redondo.anillos.end());
    m_tramos.emplace(todos, [this](const CPunto<int>& punto) { return m_antes.ConAltura(punto); });
    for (const auto& [posicion, entidad] : m_antes.Entidades())
        if (entidad.Tipo().EsLinea() && !entidad.Tipo().EsBorrado() &&
            m_antes.EsDeRecinto(posicion))
            m_tramos->Conoce(posicion, entidad.Puntos());
}

void CDibujoHecho::ComponRegistros()
{
    if (!m_antes.Esta())
        m_cambiadas.insert(m_pedido.clases.begin(), m_pedido.clases.end());
    for (const ClaseTopologia clase : m_pedido.clases) {
        m_registros[clase];
        for (const CDibujoAntes::CRegistro& registro : m_antes.Registros(clase))
            m_numeros[clase] = std::max(m_numeros[clase], registro.registro.NumPoligono());
    }
    for (const CRedondo& redondo : m_redondos) {
        if (redondo.pareja.mismoContorno)
            ConservaRegistro(redondo);
        else
            m_bien = ComponRegistro(redondo) && m_bien;
    }
    ConservaLoDemas();
    for (auto& [clase, hechos] : m_registros) {
        std::ranges::stable_sort(hechos, {}, &CRegistroHecho::orden);
        for (const CRegistroHecho& hecho : hechos)
            ApuntaPosiciones(hecho.suyo, m_usadas);
    }
}

/// The number of an outline's record: as the source says, as it was, or the next one.
int CDibujoHecho::NumeroDe(const CRedondo& redondo)
{
    if (redondo.recinto.numero)
        return *redondo.recinto.numero;
    if (redondo.pareja.antes != nullptr)
        return redondo.pareja.antes->registro.NumPoligono();
    if (int& ultimo = m_numeros[redondo.recinto.clase]; m_antes.Esta())
        return ultimo < std::numeric_limits<int>::max() ? ++ultimo : ultimo;
    return static_cast<int>(m_registros[redondo.recinto.clase].size()) + 1;
}

bool CDibujoHecho::ComponRegistro(const CRedondo& redondo)
{
    const CRecintoEntrante& recinto = redondo.recinto;
    const int numero = NumeroDe(redondo);
    std::vector<CPoligonoTopologico> partes; // the outline, then its islands
    for (const CAnillo& anillo : redondo.anillos) {
        const std::vector<int> tramos = m_tramos->Pon(anillo, m_dibujo);
        if (tramos.empty()) {
            FallaCon("el dibujo pasa de dos gigabytes: no cabe %s"_ansi, recinto.nombre);
            return false;
        }
        partes.push_back(vexageo::NuevoPoligono(
            numero, partes.empty() ? CPoligonoTopologico::kParcela : CPoligonoTopologico::kIsla,
            anillo, tramos));
    }
    const CDibujoAntes::CRegistro* antes = redondo.pareja.antes;
    const bool hayPunto = recinto.punto.has_value() || antes == nullptr;
    const CPuntoRotulo sitio =
        SituaRotulo(redondo.anillos, hayPunto ? recinto.punto : antes->dibujado.punto);
    if (!sitio.dentro)
        m_modo.noticias->Apunta(kSinInterior, recinto.nombre);
    else if (recinto.punto && recinto.rotulo && !EnElMismoSitio(sitio.punto, *recinto.punto))
        m_modo.noticias->Apunta(kRotulosMovidos, recinto.nombre);
    CPoligonoTopologico registro = std::move(partes.front());
    vexageo::PonRotulo(registro, PonRotulo(recinto, antes, sitio.punto), sitio.punto);
    for (std::size_t i = 1; i < partes.size(); ++i)
        registro.InsertaIsla(partes[i]);
    CRecintoDibujado dibujado = DibujadoDe(redondo, registro);
    const bool nuevoRotulo = antes == nullptr || antes->dibujado.rotulo != dibujado.rotulo;
    m_registros[recinto.clase].push_back(
        {{std::move(registro), {}, std::move(dibujado)},
         {recinto.nombre, recinto.parcela, true, nuevoRotulo},
         antes == nullptr ? kDetrasDeTodos : redondo.pareja.orden});
    m_cambiadas.insert(recinto.clase);
    m_cambiaDibujo = true;
    ++(antes == nullptr ? m_cambios.recintos.nuevos : m_cambios.recintos.cambiados);
    return true;
}

/// Keeps the record of an outline whose rings came as they were.
void CDibujoHecho::ConservaRegistro(const CRedondo& redondo)
{
    const CRecintoEntrante& recinto = redondo.recinto;
    CRegistroHecho hecho{*redondo.pareja.antes,
                         {recinto.nombre, recinto.parcela, false, false},
                         redondo.pareja.orden};
    const int numero = recinto.numero.value_or(hecho.suyo.registro.NumPoligono());
    const bool otroNumero = numero != hecho.suyo.registro.NumPoligono();
    hecho.suyo.registro.NumPoligono(numero);
    const bool otroRotulo = !EsElMismoRotulo(recinto, hecho.suyo.dibujado);
    if (otroRotulo)
        CambiaRotulo(recinto, hecho);
    if (otroNumero || otroRotulo)
        m_cambiadas.insert(recinto.clase);
    ++(otroNumero || otroRotulo ? m_cambios.recintos.cambiados : m_cambios.iguales);
    m_registros[recinto.clase].push_back(std::move(hecho));
}

void CDibujoHecho::CambiaRotulo(const CRecintoEntrante& recinto, CRegistroHecho& hecho)
{
    const CDibujoAntes::CRegistro antes = hecho.suyo;
    CPoligonoTopologico& registro = hecho.suyo.registro;
    CRecintoDibujado& dibujado = hecho.suyo.dibujado;
    CPunto<int> punto = dibujado.punto;
    if (recinto.punto && !EnElMismoSitio(*recinto.punto, punto)) {
        const std::vector<CAnillo> anillos = AnillosDe(dibujado);
        punto = anillos.empty() ? *recinto.punto : SituaRotulo(anillos, recinto.punto).punto;
        if (!EnElMismoSitio(punto, *recinto.punto))
            m_modo.noticias->Apunta(kRotulosMovidos, recinto.nombre);
    }
    const int posicion = PonRotulo(recinto, &antes, punto);
    if (posicion > 0 && dibujado.posicionRotulo > 0 && EnElMismoSitio(punto, dibujado.punto))
        registro.OffsetCentroide(posicion);
    else
        vexageo::PonRotulo(registro, posicion, m_antes.ConAltura(punto));
    dibujado.punto = punto;
    dibujado.rotulo = recinto.rotulo.value_or(CString());
    if (dibujado.estado != EstadoRecinto::OtraClase)
        dibujado.estado = EstadoDe(recinto);
    hecho.revisado.nuevoRotulo = true;
}

/// Puts the label of an outline into the drawing, or finds the one that it had. Gives its position,
/// 0 for none.
int CDibujoHecho::PonRotulo(const CRecintoEntrante& recinto, const CDibujoAntes::CRegistro* antes,
                            const CPunto<int>& punto)
{
    if (!recinto.rotulo)
        return 0;
    const CTexto<int>* viejo = antes == nullptr ? nullptr : m_antes.RotuloDe(*antes);
    if (viejo != nullptr && !viejo->Tipo().EsTexto())
        viejo = nullptr;
    const CTexto<int> texto = RotuloDe(recinto, viejo, m_antes.ConAltura(punto));
    if (viejo != nullptr && EsIgual(*viejo, texto))
        return antes->dibujado.posicionRotulo;
    m_cambiaDibujo = true;
    return m_dibujo.Pon(texto);
}

/// The kinds that the source doesn't bring stay; of those that it brings, what didn't come goes.
void CDibujoHecho::ConservaLoDemas()
{
    for (const ClaseTopologia clase : m_pedido.clases) {
        const std::vector<CDibujoAntes::CRegistro>& registros = m_antes.Registros(clase);
        if (m_pedido.traidas.Hay(clase)) {
            const std::vector<CRegistroHecho>& hechos = m_registros[clase];
            const auto nuevos = std::ranges::count(hechos, kDetrasDeTodos, &CRegistroHecho::orden);
            const int quitados =
                static_cast<int>(std::ssize(registros) - std::ssize(hechos) + nuevos);
            m_cambios.recintos.quitados += quitados;
            if (quitados > 0)
                m_cambiadas.insert(clase);
            continue;
        }
        int orden = 0;
        for (const CDibujoAntes::CRegistro& registro : registros)
            m_registros[clase].push_back({registro, {}, orden++});
    }
}

/// Marks as deleted what outlines named and none names any longer.
void CDibujoHecho::BorraLoQueSobra()
{
    for (const auto& [posicion, entidad] : m_antes.Entidades()) {
        if (!m_antes.EsDeRecinto(posicion) || m_usadas.contains(posicion) ||
            entidad.Tipo().EsBorrado())
            continue;
        m_dibujo.Borra(posicion);
        m_cambiaDibujo = true;
    }
}

/// Tells whether the drawing that is there can be changed; where not, it was told why.
bool CDibujoHecho::SePuedeCambiar() const
{
    if (!m_antes.Esta() || (!m_cambiaDibujo && m_cambiadas.empty()))
        return true;
    CString falta = m_antes.Falta();
    for (const ClaseTopologia clase : m_cambiadas)
        if (falta.IsEmpty())
            falta = m_antes.FaltaDe(clase);
    // A record that names a place behind the drawing's end would get what is put there.
    std::set<int> deAntes;
    for (const auto& [clase, hechos] : m_registros)
        for (const CRegistroHecho& hecho : hechos)
            if (!hecho.revisado.nuevoContorno && !hecho.revisado.nuevoRotulo)
                ApuntaPosiciones(hecho.suyo, deAntes);
    if (falta.IsEmpty() && !deAntes.empty() &&
        static_cast<std::size_t>(*deAntes.rbegin()) > m_antes.Bytes().size())
        falta = "sus topologías están fuera de fecha"_ansi;
    if (falta.IsEmpty())
        return true;
    m_modo.noticias->Falla(
        "dibujos que no se pueden cambiar",
        Formatea("el dibujo %s no se puede cambiar: %s. Con la opción SUSTITUYE=SI se hacen "
                 "nuevos él y la lista, sólo con lo que trae el origen"_ansi,
                 m_pedido.nombre, falta));
    return false;
}

bool CDibujoHecho::Revisa() const
{
    if (!m_registros.contains(ClaseTopologia::Parcelas))
        return true;
    CPoligonoDibujado poligono;
    poligono.entrada = m_pedido.nombre;
    poligono.polig = LeeEntero(m_pedido.nombre);
    CRevisados revisados;
    for (const auto& [clase, hechos] : m_registros) {
        for (const CRegistroHecho& hecho : hechos) {
            poligono.Topologia(clase).recintos.push_back(hecho.suyo.dibujado);
            revisados[clase].push_back(hecho.revisado);
        }
    }
    return RevisaDibujo(std::move(poligono), std::move(revisados), m_modo);
}

void CDibujoHecho::Graba(const CString& base, CConjuntoSalidas& salidas)
{
    const auto nombre = [&](const char* extension) {
        return m_antes.Esta() ? m_antes.Nombre(extension) : CString(ConExtension(base, extension));
    };
    CFileException fallo;
    if (m_cambiaDibujo) {
        if (!m_dibujo.Abre(nombre(kExtensionDibujo), &fallo, &salidas))
            throw CFileException(fallo);
        m_dibujo.Cierra();
    }
    for (const ClaseTopologia clase : m_pedido.clases) {
        if (!m_cambiadas.contains(clase))
            continue;
        CFile topologia;
        CreaSalida(topologia, nombre(ExtensionDe(clase)), salidas);
        for (const CRegistroHecho& hecho : m_registros[clase]) {
            hecho.suyo.registro.Write(&topologia);
            for (const CPoligonoTopologico& isla : hecho.suyo.detras)
                isla.Write(&topologia);
        }
        topologia.Close();
    }
}
