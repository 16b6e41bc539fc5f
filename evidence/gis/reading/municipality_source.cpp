#include "evidence/gis/reading/municipality_source.h"

#include <algorithm>

#include "cadastre/messages.h"
#include "evidence/gis/tidings.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/any_case_name.h"
#include "platform/files/set_healing.h"

namespace {

constexpr ClaseTopologia kDePoligono[] = {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas,
                                          ClaseTopologia::Poligonos};
constexpr const char* kFaltan = "ficheros que faltan";
constexpr const char* kDañados = "ficheros dañados"_ansi;

bool Hay(const CString& nombre)
{
    CNombresEnDisco nombres;
    return !nombre.IsEmpty() && HayFichero(CFile::EnDisco(nombre, nombres));
}

void AvisaDaño(const CString& fichero, const CTopologiaDibujada& topologia, CNoticias& noticias)
{
    if (topologia.dañoEn == CTopologiaDibujada::kSinDaño)
        return;
    CString frase;
    frase.Format("%s está dañado desde el byte %.0lf: lo que sigue no se lee"_ansi, fichero,
                 static_cast<double>(topologia.dañoEn));
    noticias.Advierte(kDañados, frase);
}

} // namespace

bool CMunicipioAbierto::Abre(const CString& lista, const COtrosSitios& otros)
{
    const CCadena carpeta = CCadena(lista).DamePath();
    const CNombresTablas tablas = TablasEn(otros.tablas.IsEmpty() ? carpeta : otros.tablas);
    std::vector<CString> ficheros(tablas.begin(), tablas.end());
    ficheros.insert(ficheros.end(), {lista, otros.registro, otros.ortos});
    SanaConjuntos(ficheros);
    std::optional<CListaPoligonos> leida = LeeLista(lista);
    if (!leida)
        return false;
    m_lista = std::move(*leida);
    m_otros = otros;
    m_ortos = otros.ortos.IsEmpty() ? BuscaHojas(m_lista.carpeta) : otros.ortos;
    return std::any_of(
        m_lista.entradas.begin(), m_lista.entradas.end(), [&](const CString& entrada) {
            CFile bin;
            return AbreSiHay(bin, FicheroDeLista(m_lista.carpeta, entrada, kExtensionDibujo),
                             kModoDibujo);
        });
}

CString CMunicipioAbierto::FaltaEnSitios() const
{
    const auto falta = [](const char* opcion, const CString& que) {
        CString frase;
        frase.Format("La opción %s no da con nada: %s"_ansi, opcion, que);
        return frase;
    };
    const CNombresTablas tablas = NombresTablas();
    if (!m_otros.tablas.IsEmpty() && std::none_of(tablas.begin(), tablas.end(), Hay))
        return falta("TABLAS", m_otros.tablas);
    for (const char* extension : {ExtensionDe(ClaseTopologia::Hojas), kExtensionDibujo})
        if (!m_otros.ortos.IsEmpty() && !Hay(ConExtension(m_otros.ortos, extension)))
            return falta("ORTOS", ConExtension(m_otros.ortos, extension));
    return !m_otros.registro.IsEmpty() && !Hay(m_otros.registro)
               ? falta("REGISTRO", m_otros.registro)
               : CString();
}

CCadena CMunicipioAbierto::Ortos() const
{
    return m_ortos;
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
    CNombresTablas nombres = NombresTablas();
    nombres[kModulos] = nombres[kCotitulares] = CString(); // no layer shows anything of them
    return m_tablas.emplace(
        LeeTablas(nombres, m_lista.cabecera.Mun, {false, true, CFile::anyCase, {}}));
}

const std::vector<CPoligonoDibujado>& CMunicipioAbierto::Poligonos()
{
    if (m_poligonos)
        return *m_poligonos;
    CHayParcela hayParcela;
    if (const CTablasLeidas& tablas = Tablas(); tablas.parcelas.hay)
        hayParcela = [&tablas](int polig, int parcela) {
            int i = kNoEncontrado;
            return tablas.municipio.BuscaParcela(polig, parcela, i);
        };
    std::vector<CPoligonoDibujado> poligonos;
    poligonos.reserve(m_lista.entradas.size());
    for (const CString& entrada : m_lista.entradas)
        poligonos.push_back(LeePoligonoDibujado(m_lista.carpeta, entrada, hayParcela));
    AvisaFaltas(poligonos);
    m_poligonos = std::move(poligonos);
    return *m_poligonos;
}

const CTopologiaDibujada& CMunicipioAbierto::Hojas()
{
    if (!m_hojas) {
        m_hojas = LeeHojasDibujadas(Ortos());
        AvisaFaltas(*m_hojas);
    }
    return *m_hojas;
}

CNombresTablas CMunicipioAbierto::NombresTablas() const
{
    return TablasEn(m_otros.tablas.IsEmpty() ? m_lista.carpeta : m_otros.tablas);
}

/// Tells which files of the list's drawings aren't there, and which end in damage.
void CMunicipioAbierto::AvisaFaltas(const std::vector<CPoligonoDibujado>& poligonos) const
{
    CNoticias noticias;
    for (const CPoligonoDibujado& poligono : poligonos) {
        const auto nombre = [&](const char* extension) {
            return FicheroDeLista(m_lista.carpeta, poligono.entrada, extension);
        };
        if (!poligono.hayDibujo)
            noticias.Advierte(kFaltan, "Falta "_ansi + nombre(kExtensionDibujo) +
                                           ", y sin él no se lee nada del polígono"_ansi);
        for (const ClaseTopologia clase : kDePoligono) {
            const CTopologiaDibujada& topologia = poligono.Topologia(clase);
            if (poligono.hayDibujo && !topologia.hay)
                noticias.Advierte(kFaltan, "Falta "_ansi + nombre(ExtensionDe(clase)));
            AvisaDaño(nombre(ExtensionDe(clase)), topologia, noticias);
        }
    }
    noticias.Dice();
}

void CMunicipioAbierto::AvisaFaltas(const CTopologiaDibujada& hojas) const
{
    CNoticias noticias;
    if (!m_ortos.IsEmpty() && !hojas.hay)
        noticias.Advierte(kFaltan, "Falta "_ansi + ConExtension(m_ortos, kExtensionDibujo) +
                                       ", y sin él no se lee ninguna hoja"_ansi);
    AvisaDaño(m_ortos, hojas, noticias);
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
    for (const CString& entrada : m_lista.entradas) {
        apunta(FicheroDeLista(m_lista.carpeta, entrada, kExtensionDibujo));
        for (const ClaseTopologia clase : kDePoligono)
            apunta(FicheroDeLista(m_lista.carpeta, entrada, ExtensionDe(clase)));
    }
    if (!m_ortos.IsEmpty())
        for (const char* extension : {kExtensionDibujo, ExtensionDe(ClaseTopologia::Hojas)})
            apunta(ConExtension(m_ortos, extension));
    for (const CString& tabla : NombresTablas())
        apunta(tabla);
    apunta(Registro());
    return ficheros;
}
