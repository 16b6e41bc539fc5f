#include "evidence/gis/writing/write_dataset.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>
#include <utility>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/plain_texts.h"

namespace {

/// Takes a feature of a layer for the drawings. False, which was told, where it is refused. Raises
/// nothing.
using CTomaElemento = std::function<bool(const OGRFeature& elemento)>;

/// A layer that takes features for the drawings. It keeps none to be read.
class CCapaNuevaSalida final : public CCapaGdal {
public:
    CCapaNuevaSalida(CTomaElemento toma, CFinDelOrigen& fin, const char* nombre,
                     const OGRSpatialReference* referencia)
        : CCapaGdal(nombre, wkbUnknown, referencia), m_toma(std::move(toma)), m_fin(fin)
    {
    }

    // A layer's transaction is its dataset's: without these GDAL takes one for begun all the same.
    OGRErr StartTransaction() override { return m_fin.Empieza(); }
    OGRErr CommitTransaction() override { return m_fin.Acaba(); }
    OGRErr RollbackTransaction() override { return m_fin.Deshace(); }

    void ResetReading() override {}
    OGRFeature* GetNextFeature() override { return nullptr; }
    OGRErr CreateField(CCampoPedido* campo, int /*aproximado*/) override
    {
        return SinExcepciones<OGRErr>(OGRERR_FAILURE, [&] {
            Definicion().AddFieldDefn(campo);
            return OGRERR_NONE;
        });
    }
    OGRErr ICreateFeature(OGRFeature* elemento) override
    {
        ++m_ultimo;
        if (elemento->GetFID() == OGRNullFID)
            elemento->SetFID(m_ultimo);
        if (OGRGeometry* geometria = elemento->GetGeometryRef();
            geometria != nullptr && geometria->getSpatialReference() == nullptr)
            geometria->assignSpatialReference(Referencia());
        return m_toma(*elemento) ? OGRERR_NONE : OGRERR_FAILURE;
    }

private:
    bool Sabe(const char* capacidad) const override
    {
        return EQUAL(capacidad, OLCSequentialWrite) || EQUAL(capacidad, OLCCreateField) ||
               EQUAL(capacidad, OLCStringsAsUTF8) || EQUAL(capacidad, OLCCurveGeometries);
    }

    CTomaElemento m_toma;
    CFinDelOrigen& m_fin;
    GIntBig m_ultimo = 0; // number of the last feature
};

/// Tells of what names no polygon whether it may be in the drawing of one all the same.
bool EsDeAlgunDibujo(const CRecintoEntrante& recinto)
{
    return !recinto.EsDeHojas() && recinto.de.entrada.IsEmpty();
}
bool EsDeAlgunDibujo(const CEntidadEntrante& /*entidad*/)
{
    return false; // with a place it is the sheets'
}

/// The option that a layer was given and that counts for all of them alone; null for none.
const char* OpcionDelMunicipio(CSLConstList opciones)
{
    constexpr const char* kSuyas[] = {opcion::kGer,    opcion::kMun,       opcion::kCabecera,
                                      opcion::kOrtos,  opcion::kPiezas,    opcion::kGanan,
                                      opcion::kSimula, opcion::kInvalidos, opcion::kSustituye,
                                      opcion::kVacia,  opcion::kArcos};
    const auto* const suya = std::ranges::find_if(
        kSuyas, [&](const char* cual) { return CSLFetchNameValue(opciones, cual) != nullptr; });
    return suya == std::end(kSuyas) ? nullptr : *suya;
}

/// Metres that a chord may be off its arc; none for what is no such number.
std::optional<double> Tolerancia(const char* texto)
{
    const std::optional<double> metros = NumeroDe<double>(texto);
    return metros && std::isfinite(*metros) && *metros > 0 ? metros : std::nullopt;
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
    const char* ganan = CSLFetchNameValueDef(opciones, opcion::kGanan, opcion::kNadie);
    if (!EQUAL(ganan, opcion::kNadie) && !EQUAL(ganan, opcion::kNumeros) &&
        !EQUAL(ganan, opcion::kRotulos)) {
        Falla("La opción GANAN es NADIE, NUMEROS o ROTULOS"_ansi);
        return nullptr;
    }
    if (std::strpbrk(CSLFetchNameValueDef(opciones, opcion::kOrtos, ""), "/\\") != nullptr) {
        Falla(
            "La opción ORTOS es el nombre del dibujo de las hojas, que está junto a la lista"_ansi);
        return nullptr;
    }
    for (const char* opcion :
         {opcion::kPiezas, opcion::kInvalidos, opcion::kSustituye, opcion::kSimula})
        if (!SiONo(CSLFetchNameValueDef(opciones, opcion, "NO"))) {
            FallaCon("La opción %s es SI o NO"_ansi, opcion);
            return nullptr;
        }
    if (const char* arcos = CSLFetchNameValue(opciones, opcion::kArcos);
        arcos != nullptr && !Tolerancia(arcos)) {
        FallaCon("La opción %s es un número de metros mayor que 0, con punto decimal"_ansi,
                 opcion::kArcos);
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
    m_tolerancia = Tolerancia(m_opciones.FetchNameValueDef(opcion::kArcos, "")).value_or(0);
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
    if (m_escrito)
        return *m_escrito;
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
    return *m_escrito;
}

bool CMunicipioNuevo::SiNo(const char* opcion) const
{
    return SiONo(m_opciones.FetchNameValueDef(opcion, "NO")).value_or(false);
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

OGRLayer* CMunicipioNuevo::CreaCapa(const char* nombre, const OGRSpatialReference* referencia,
                                    CSLConstList opciones)
{
    m_fin.Mira();
    return SinExcepciones<OGRLayer*>(nullptr, [&]() -> OGRLayer* {
        const std::optional<ClaseTopologia> clase = ClaseDeCapa(nombre);
        const std::optional<ClaseEntidad> entidad = ClaseDeEntidad(nombre);
        CTomaElemento toma = [](const OGRFeature&) { return true; }; // of a layer that is left out
        CString motivo;
        if (EQUAL(nombre, capa::kMensajes))
            Advierte("La capa mensajes no se escribe: sale del fichero de errores"_ansi);
        else if (const char* suya = OpcionDelMunicipio(opciones))
            motivo = Formatea("La opción %s es del municipio y no de una capa (-dsco)"_ansi, suya);
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
            toma = [this, clase, entidad](const OGRFeature& elemento) {
                const bool tomado =
                    SinExcepciones(false, [&] { return Toma(clase, entidad, elemento); });
                m_rechazado = m_rechazado || !tomado;
                return tomado;
            };
        }
        if (!motivo.IsEmpty() && !RechazaCapa(motivo))
            return nullptr;
        return Añade(
            std::make_unique<CCapaNuevaSalida>(std::move(toma), m_fin, nombre, referencia));
    });
}

bool CMunicipioNuevo::Sabe(const char* capacidad) const
{
    return EQUAL(capacidad, ODsCCreateLayer) || EQUAL(capacidad, ODsCCurveGeometries) ||
           EQUAL(capacidad, ODsCTransactions);
}

bool CMunicipioNuevo::Toma(const std::optional<ClaseTopologia>& clase,
                           const std::optional<ClaseEntidad>& entidad, const OGRFeature& elemento)
{
    m_fin.Mira();
    if (!m_hayLista)
        m_hayLista = !m_sustituye && HayFichero(m_lista);
    if (clase && *m_hayLista)
        m_leidos.Apunta(NombreDeCapa(*clase), elemento);
    const std::size_t desde = clase ? m_recintos.size() : m_entidades.size();
    if (clase)
        return TomaElemento(*clase, elemento, m_tolerancia, m_recintos) ||
               SeSalta(m_recintos, desde);
    return TomaEntidad(*entidad, elemento, m_entidades) || SeSalta(m_entidades, desde);
}

template <class T>
bool CMunicipioNuevo::SeSalta(std::vector<T>& tomados, std::size_t desde)
{
    const bool seQueda = m_modo.saltaInvalidos && *m_hayLista; // what a drawing has of it
    const bool noSeSabeDonde = seQueda && EsDeAlgunDibujo(tomados.back());
    if (seQueda && !noSeSabeDonde)
        return true;
    const CString motivo = tomados.back().rechazo;
    tomados.erase(tomados.begin() + static_cast<std::ptrdiff_t>(desde), tomados.end());
    if (noSeSabeDonde)
        m_noticias.Falla(kRechazados, motivo + ". Si es uno de los que ya hay, con INVALIDOS=SI se "
                                               "quitaría de su dibujo"_ansi);
    else if (m_modo.saltaInvalidos)
        m_noticias.Advierte(kRechazados, "Se deja fuera "_ansi + motivo);
    else
        m_noticias.Falla(kRechazados, motivo);
    return m_modo.saltaInvalidos && !noSeSabeDonde;
}
