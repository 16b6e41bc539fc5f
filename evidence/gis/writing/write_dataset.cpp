#include "evidence/gis/writing/write_dataset.h"

#include <cstdlib>
#include <map>

#include "cadastre/polygon_list.h"
#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/write_layer.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/cstdio_file.h"

namespace {

/// A layer of what the driver shows beside the outlines: it comes from the drawings, not into them.
bool EsDeEvidencia(const char* nombre)
{
    return EQUAL(nombre, capa::kRotulos) || EQUAL(nombre, capa::kLineas) ||
           EQUAL(nombre, capa::kMensajes);
}

} // namespace

GDALDataset* CMunicipioNuevo::Crea(const char* lista, int bandas, CSLConstList opciones)
{
    if (bandas != 0)
        return nullptr;
    return new CMunicipioNuevo(lista, opciones); // NOLINT(cppcoreguidelines-owning-memory): GDAL's
}

CMunicipioNuevo::CMunicipioNuevo(const char* lista, CSLConstList opciones)
    : m_lista(lista), m_opciones(CSLDuplicate(opciones), TRUE)
{
    SetDescription(lista);
    eAccess = GA_Update;
    m_modo = {SiNo(opcion::kPiezas), SiNo(opcion::kInvalidos), &m_noticias};
    m_tolerancia = CPLAtof(m_opciones.FetchNameValueDef(opcion::kArcos, "0"));
}

CMunicipioNuevo::~CMunicipioNuevo()
{
    SinExcepciones(false, [this] {
        if (m_rechazado)
            Falla("No se ha escrito ningún dibujo: hay recintos rechazados"_ansi);
        else
            Graba();
        return true;
    });
}

bool CMunicipioNuevo::SiNo(const char* opcion) const
{
    return CPLTestBool(m_opciones.FetchNameValueDef(opcion, "NO"));
}

OGRLayer* CMunicipioNuevo::CreaCapa(const char* nombre, const OGRSpatialReference* referencia)
{
    const std::optional<ClaseTopologia> clase = ClaseDeCapa(nombre);
    if (!clase && !EsDeEvidencia(nombre)) {
        FallaCon(
            "De la capa %s no se hace un dibujo; las hay de parcelas, subparcelas, poligonos y "
            "hojas (se nombra con -nln)"_ansi,
            nombre);
        return nullptr;
    }
    if (EstaEnGrados(referencia)) {
        FallaCon(
            "La capa %s está en grados: reproyecte antes a coordenadas en metros (-t_srs)"_ansi,
            nombre);
        m_rechazado = true;
        return nullptr;
    }
    const auto toma = [this](ClaseTopologia suya, const OGRFeature& elemento) {
        const bool tomado = SinExcepciones(false, [&] { return Toma(suya, elemento); });
        m_rechazado = m_rechazado || !tomado;
        return tomado;
    };
    return SinExcepciones<OGRLayer*>(nullptr, [&] {
        Añade(std::make_unique<CCapaNuevaSalida>(toma, nombre, clase, referencia));
        return Ultima();
    });
}

bool CMunicipioNuevo::Sabe(const char* capacidad) const
{
    return EQUAL(capacidad, ODsCCreateLayer) || EQUAL(capacidad, ODsCCurveGeometries);
}

bool CMunicipioNuevo::Toma(ClaseTopologia clase, const OGRFeature& elemento)
{
    CString motivo;
    if (TomaElemento(clase, elemento, m_tolerancia, m_recintos, motivo))
        return true;
    if (m_modo.saltaInvalidos) {
        Advierte("Se deja fuera "_ansi + motivo);
        return true;
    }
    Falla(motivo);
    return false;
}

CString CMunicipioNuevo::Cabecera()
{
    constexpr int kMayorCodigo = 999;
    const char* ger = m_opciones.FetchNameValue(opcion::kGer);
    const char* mun = m_opciones.FetchNameValue(opcion::kMun);
    CString cabecera;
    if (ger != nullptr && mun != nullptr) {
        const int numeros[] = {std::atoi(ger), std::atoi(mun)};
        for (const int numero : numeros)
            if (numero < 0 || numero > kMayorCodigo) {
                Falla("GER y MUN van de 0 a 999");
                return {};
            }
        cabecera.Format("LISTA%03d%03d", numeros[0], numeros[1]);
        return cabecera;
    }
    const char* puesta = m_opciones.FetchNameValue(opcion::kCabecera);
    if (puesta == nullptr)
        puesta = GetMetadataItem(opcion::kCabecera);
    if (puesta == nullptr)
        Falla("Falta el municipio: opciones GER y MUN"_ansi);
    else
        cabecera = CString(CPLString(puesta).Recode(CPL_ENC_UTF8, "CP1252").c_str());
    return cabecera;
}

CString CMunicipioNuevo::Al(const CString& nombre) const
{
    return CCadena(m_lista).DamePath() + nombre;
}

void CMunicipioNuevo::Graba()
{
    const CString cabecera = Cabecera();
    if (cabecera.IsEmpty())
        return;
    if (m_recintos.empty()) {
        Falla("No hay ningún recinto que dibujar"_ansi);
        return;
    }
    CConjuntoSalidas salidas;
    std::vector<CString> entradas;
    const bool bien = GrabaPoligonos(salidas, entradas) && GrabaHojas(salidas);
    m_noticias.Dice();
    if (!bien)
        return;
    GrabaLista(salidas, cabecera, entradas);
    salidas.Confirma();
}

bool CMunicipioNuevo::GrabaPoligonos(CConjuntoSalidas& salidas, std::vector<CString>& entradas)
{
    std::map<CString, std::vector<const CRecintoEntrante*>> porEntrada;
    for (const CRecintoEntrante& recinto : m_recintos) {
        if (recinto.clase == ClaseTopologia::Hojas)
            continue;
        auto& suyos = porEntrada[recinto.entrada];
        if (suyos.empty())
            entradas.push_back(recinto.entrada);
        suyos.push_back(&recinto);
    }
    bool bien = true;
    for (const CString& entrada : entradas) {
        CDibujoHecho dibujo;
        if (!dibujo.Compon(porEntrada[entrada], m_modo))
            bien = false; // the others are looked at all the same, so that all refusals are told
        else if (bien)
            dibujo.Graba(Al(entrada),
                         {{ClaseTopologia::Parcelas, ".PAR"},
                          {ClaseTopologia::Subparcelas, ".SUB"},
                          {ClaseTopologia::Poligonos, ".POL"}},
                         salidas);
    }
    return bien;
}

bool CMunicipioNuevo::GrabaHojas(CConjuntoSalidas& salidas)
{
    std::vector<const CRecintoEntrante*> hojas;
    for (const CRecintoEntrante& recinto : m_recintos)
        if (recinto.clase == ClaseTopologia::Hojas)
            hojas.push_back(&recinto);
    if (hojas.empty())
        return true;
    CDibujoHecho dibujo;
    if (!dibujo.Compon(hojas, m_modo))
        return false;
    dibujo.Graba(Al(m_opciones.FetchNameValueDef(opcion::kOrtos, "ortos")),
                 {{ClaseTopologia::Hojas, ".TOP"}}, salidas);
    return true;
}

void CMunicipioNuevo::GrabaLista(CConjuntoSalidas& salidas, const CString& cabecera,
                                 const std::vector<CString>& entradas) const
{
    CStdioFile lista;
    CreaSalida(lista, m_lista, salidas);
    lista.WriteString(cabecera + "\n");
    for (const CString& entrada : entradas)
        lista.WriteString("P" + entrada + "\n");
    lista.Close();
}
