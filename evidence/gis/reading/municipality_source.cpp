#include "evidence/gis/reading/municipality_source.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "evidence/gis/complaints.h"
#include "evidence/paths.h"
#include "evidence/units.h"
#include "platform/ansi.h"
#include "platform/files/set_healing.h"

namespace {

using vexageo::CMaximas;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;

/// A drawing that is newer than its topology by more has been changed since.
constexpr std::chrono::seconds kMismoGuardado{60};

bool Hay(const CString& nombre)
{
    CNombresEnDisco nombres;
    return !nombre.IsEmpty() && HayFichero(CFile::EnDisco(nombre, nombres));
}

/// Tells whether the drawing lacks stretches that the topology's outlines are made of.
bool PierdeTramos(const CTopologiaDibujada& topologia)
{
    return std::ranges::any_of(topologia.recintos, [](const CRecintoDibujado& recinto) {
        return recinto.tramosPerdidos > 0;
    });
}

bool Contiene(const CMaximas<int>& extension, const CPunto<int>& punto)
{
    return punto.X >= extension.Minimo.X && punto.X <= extension.Maximo.X &&
           punto.Y >= extension.Minimo.Y && punto.Y <= extension.Maximo.Y;
}

/// Tells whether the record's surface has room in its extent, and its label stands there.
bool EsCreible(const CPoligonoTopologico& registro)
{
    constexpr double kRedondeo = 1;      // square metres
    constexpr double kMasLargo = 200000; // metres: no municipality is as long
    const CMaximas<int>& suya = registro.Maximas();
    const double ancho = EnMetros(suya.Maximo.X) - EnMetros(suya.Minimo.X);
    const double alto = EnMetros(suya.Maximo.Y) - EnMetros(suya.Minimo.Y);
    return ancho > 0 && alto > 0 && std::max(ancho, alto) < kMasLargo &&
           ancho * alto >= std::abs(registro.AreaPropia()) - kRedondeo &&
           (!registro.TieneCentroide() || Contiene(suya, registro.Centroide()));
}

/// Reads how far the outlines of a topology reach, their islands included, as their records say it,
/// without the drawing.
/// \param topologia  the open file; as many outlines come as `LeeTopologiaDibujada` gives
/// \param dañoEn     takes the byte at which the reading ended (see CTopologiaDibujada)
/// \return nothing where one of them can't be true: nobody but this reads them, so a drawing's
///         maker may have left them empty
std::optional<CCajas> LeeExtensiones(CFile& topologia, std::uint64_t& dañoEn)
{
    CCajas cajas;
    bool creibles = true;
    const auto toma = [&](const CPoligonoTopologico& registro) {
        const CMaximas<int>& suya = registro.Maximas();
        for (const CPunto<int>& punto : {suya.Minimo, suya.Maximo})
            cajas.back().Merge(EnMetros(punto.X), EnMetros(punto.Y));
        creibles = EsCreible(registro) && creibles;
    };
    dañoEn = RecorreRegistros(topologia, [&](const CPoligonoTopologico& registro, bool isla) {
        if (!isla)
            cajas.emplace_back();
        toma(registro);
        std::ranges::for_each(registro.ListaIslas(), toma);
    });
    return creibles ? std::optional(std::move(cajas)) : std::nullopt;
}

} // namespace

CMunicipioAbierto::~CMunicipioAbierto()
{
    SinExcepciones(false, [&] {
        m_noticias.Dice();
        return true;
    });
}

bool CMunicipioAbierto::Abre(const CString& lista, const COtrosSitios& otros)
{
    const CCadena carpeta = CCadena(lista).DamePath();
    m_deTablas = TablasEn(otros.tablas.IsEmpty() ? carpeta : otros.tablas);
    std::vector<CString> ficheros(m_deTablas.begin(), m_deTablas.end());
    ficheros.insert(ficheros.end(), {lista, otros.registro, otros.ortos});
    for (const CTocado& tocado : SanaConjuntos(ficheros))
        Advierte(tocado.Frase());
    std::optional<CListaPoligonos> leida = LeeLista(lista);
    if (!leida)
        return false;
    m_lista = std::move(*leida);
    LeeUnaVezCadaEntrada();
    m_otros = otros;
    m_hojas =
        otros.ortos.IsEmpty() ? BuscaHojas(m_lista.carpeta) : CHojasHalladas{otros.ortos, false};
    return std::ranges::any_of(m_lista.entradas, [&](const CString& entrada) {
        CFile bin;
        return AbreSiHay(bin, FicheroDeLista(m_lista.carpeta, entrada, kExtensionDibujo),
                         kModoDibujo);
    });
}

/// A drawing that the list names twice is one: of two a copy would bring each outline back twice.
void CMunicipioAbierto::LeeUnaVezCadaEntrada()
{
    std::set<CString> vistas;
    const auto deMas = std::erase_if(m_lista.entradas, [&](const CString& entrada) {
        return !entrada.IsEmpty() && !vistas.insert(entrada).second;
    });
    if (deMas > 0)
        AdvierteCon("%s nombra otra vez polígonos que ya tiene, %d: se leen una vez"_ansi,
                    m_lista.nombre, static_cast<int>(deMas));
}

CString CMunicipioAbierto::FaltaEnSitios() const
{
    const auto falta = [](const char* opcion, const CString& que) -> CString {
        return Formatea("La opción %s no da con nada: %s"_ansi, opcion, que);
    };
    if (!m_otros.tablas.IsEmpty() && std::ranges::none_of(m_deTablas, Hay))
        return falta("TABLAS", m_otros.tablas);
    for (const char* extension : {ExtensionDe(ClaseTopologia::Hojas), kExtensionDibujo})
        if (!m_otros.ortos.IsEmpty() && !Hay(ConExtension(m_otros.ortos, extension)))
            return falta("ORTOS", ConExtension(m_otros.ortos, extension));
    return !m_otros.registro.IsEmpty() && !Hay(m_otros.registro)
               ? falta("REGISTRO", m_otros.registro)
               : CString();
}

CCadena CMunicipioAbierto::Registro() const
{
    return m_otros.registro.IsEmpty()
               ? FicheroDeLista(m_lista.carpeta, m_lista.cabecera.nombreSalida, kExtensionRegistro)
               : CCadena(m_otros.registro);
}

const CTablasLeidas& CMunicipioAbierto::Tablas()
{
    if (m_tablas)
        return *m_tablas;
    CNombresTablas nombres = m_deTablas;
    nombres[kModulos] = nombres[kCotitulares] = CString(); // no layer shows anything of them
    for (CString& nombre : nombres)
        if (!nombre.IsEmpty())
            nombre = CFile::EnDisco(nombre, m_nombres);
    return m_tablas.emplace(LeeTablas(nombres, m_lista.cabecera.Mun, {false, true, {}, {}}));
}

CCadena CMunicipioAbierto::Fichero(std::size_t dibujo, const char* extension) const
{
    if (!SonHojas(dibujo))
        return FicheroDeLista(m_lista.carpeta, m_lista.entradas[dibujo], extension);
    return m_hojas.nombre.IsEmpty() ? CCadena() : ConExtension(m_hojas.nombre, extension);
}

std::vector<CCadena> CMunicipioAbierto::Topologias(std::size_t dibujo) const
{
    if (SonHojas(dibujo))
        return {Fichero(dibujo, ExtensionDe(ClaseTopologia::Hojas))};
    std::vector<CCadena> nombres;
    for (const ClaseTopologia clase : kTopologiasDePoligono)
        nombres.push_back(Fichero(dibujo, ExtensionDe(clase)));
    return nombres;
}

CPoligonoDibujado CMunicipioAbierto::Poligono(std::size_t entrada,
                                              std::span<const ClaseTopologia> cuales)
{
    CHayParcela hayParcela;
    const bool haySubparcelas =
        std::ranges::find(cuales, ClaseTopologia::Subparcelas) != cuales.end();
    if (haySubparcelas && Tablas().parcelas.hay)
        hayParcela = [this](int polig, int parcela) {
            int i = kNoEncontrado;
            return m_tablas->municipio.BuscaParcela(polig, parcela, i);
        };
    CPoligonoDibujado poligono =
        LeePoligonoDibujado(m_lista.carpeta, m_lista.entradas[entrada], hayParcela, cuales);
    if (!poligono.hayDibujo)
        AvisaSinDibujo(entrada);
    for (const ClaseTopologia que : cuales) {
        const CTopologiaDibujada& topologia = poligono.Topologia(que);
        const CString fichero = Fichero(entrada, ExtensionDe(que));
        if (poligono.hayDibujo && !topologia.hay)
            AvisaFalta(fichero);
        AvisaDaño(fichero, topologia.dañoEn);
        if (PierdeTramos(topologia))
            AvisaDibujoDañado(entrada);
    }
    return poligono;
}

CTopologiaDibujada CMunicipioAbierto::Hojas()
{
    CTopologiaDibujada hojas = LeeHojasDibujadas(m_hojas.nombre);
    if (!hojas.hay)
        AvisaSinHojas();
    AvisaDaño(m_hojas.nombre, hojas.dañoEn);
    if (PierdeTramos(hojas))
        AvisaDibujoDañado(m_lista.entradas.size());
    return hojas;
}

std::optional<CCajas> CMunicipioAbierto::Extensiones(std::size_t entrada, ClaseTopologia que)
{
    const auto enDisco = [&](const char* extension) {
        return CFile::EnDisco(Fichero(entrada, extension), m_nombres);
    };
    const auto dibujada = FechaDe(enDisco(kExtensionDibujo));
    if (!dibujada) {
        AvisaSinDibujo(entrada);
        return CCajas();
    }
    const CString fichero = enDisco(ExtensionDe(que));
    const auto hecha = FechaDe(fichero);
    CFile topologia;
    if (!hecha || !AbreSiHay(topologia, fichero, CFile::modeWhole)) {
        AvisaFalta(fichero);
        return CCajas();
    }
    if (*dibujada > *hecha + kMismoGuardado)
        return std::nullopt;
    std::uint64_t dañoEn = 0;
    std::optional<CCajas> extensiones = LeeExtensiones(topologia, dañoEn);
    AvisaDaño(fichero, dañoEn);
    return extensiones;
}

void CMunicipioAbierto::AvisaFalta(const CString& fichero, const char* detras)
{
    if (EsNueva(fichero))
        m_noticias.Advierte("ficheros que faltan", "Falta "_ansi + fichero + detras);
}

void CMunicipioAbierto::AvisaSinDibujo(std::size_t dibujo)
{
    if (SonHojas(dibujo))
        AvisaSinHojas();
    else
        AvisaFalta(Dibujo(dibujo), ", y sin él no se lee nada del polígono"_ansi);
}

void CMunicipioAbierto::AvisaSinHojas()
{
    if (m_hojas.varias && EsNueva("*.TOP"))
        m_noticias.Advierte("hojas dudosas",
                            "Hay varios .TOP y ninguno es ortos.TOP, así que no se lee "
                            "ninguna hoja; la opción ORTOS dice cuál vale"_ansi);
    if (!m_hojas.nombre.IsEmpty())
        AvisaFalta(Dibujo(m_lista.entradas.size()), ", y sin él no se lee ninguna hoja"_ansi);
}

void CMunicipioAbierto::AvisaDaño(const CString& fichero, std::uint64_t dañoEn)
{
    if (dañoEn == CTopologiaDibujada::kSinDaño || !EsNueva(fichero))
        return;
    m_noticias.Advierte("ficheros dañados"_ansi,
                        Formatea("%s está dañado desde el byte %.0lf: lo que sigue no se lee"_ansi,
                                 fichero, static_cast<double>(dañoEn)));
}

void CMunicipioAbierto::AvisaDibujoDañado(std::size_t dibujo)
{
    if (const CString fichero = Dibujo(dibujo); EsNueva(fichero))
        m_noticias.Advierte("dibujos dañados"_ansi,
                            fichero + " está dañado: no se leen todos sus rótulos y líneas"_ansi);
}

std::vector<CString> CMunicipioAbierto::Ficheros() const
{
    CNombresEnDisco nombres;
    std::vector<CString> ficheros = {m_lista.nombre};
    const auto apunta = [&](const CString& nombre) {
        CString suyo = nombre.IsEmpty() ? nombre : CFile::EnDisco(nombre, nombres);
        if (!suyo.IsEmpty() && HayFichero(suyo))
            ficheros.push_back(std::move(suyo));
    };
    for (std::size_t dibujo = 0; dibujo < Dibujos(); ++dibujo) {
        apunta(Dibujo(dibujo));
        std::ranges::for_each(Topologias(dibujo), apunta);
    }
    std::ranges::for_each(m_deTablas, apunta);
    apunta(Registro());
    return ficheros;
}
