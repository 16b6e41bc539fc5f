#include "evidence/gis/writing/outline_input.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

#include <cpl_string.h>
#include <ogr_geometry.h>

#include "cadastre/label_codes.h"
#include "evidence/gis/geometry.h"
#include "evidence/gis/names.h"
#include "evidence/gis/writing/arcs.h"
#include "evidence/units.h"
#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr int kCodigoMasLargo = 0xFFFF; // a drawing has two bytes for its length
constexpr double kMayorCoordenada = EnMetros(std::numeric_limits<int>::max());

// By what the outlines are: their layer, the code of their labels, and what a person calls one.
constexpr const char* kCapas[] = {capa::kParcelas, capa::kSubparcelas, capa::kPoligonos,
                                  capa::kHojas};
constexpr const char* kCodigos[] = {kCodigoParcela, kCodigoSubparcela, kCodigoPoligono,
                                    kCodigoHoja};
constexpr const char* kNombres[] = {"la parcela", "la subparcela", "el polígono"_ansi, "la hoja"};

/// A text of GDAL as one of the program.
CString Ansi(const char* utf8)
{
    const CPLString texto(CPLString(utf8).Recode(CPL_ENC_UTF8, "CP1252"));
    return {std::string_view(texto)};
}

/// The fields of a feature, by the names that drawings are read with.
class CCamposElemento {
public:
    explicit CCamposElemento(const OGRFeature& elemento) : m_elemento(elemento) {}

    bool Hay(const char* nombre) const { return m_elemento.GetFieldIndex(nombre) >= 0; }
    std::optional<CString> Texto(const char* nombre) const
    {
        const int i = Puesto(nombre);
        return i < 0 ? std::nullopt : std::optional(Ansi(m_elemento.GetFieldAsString(i)));
    }
    std::optional<int> Entero(const char* nombre) const
    {
        const int i = Puesto(nombre);
        return i < 0 ? std::nullopt : std::optional(m_elemento.GetFieldAsInteger(i));
    }
    std::optional<double> Real(const char* nombre) const
    {
        const int i = Puesto(nombre);
        return i < 0 ? std::nullopt : std::optional(m_elemento.GetFieldAsDouble(i));
    }

private:
    int Puesto(const char* nombre) const
    {
        const int i = m_elemento.GetFieldIndex(nombre);
        return i >= 0 && m_elemento.IsFieldSetAndNotNull(i) ? i : -1;
    }

    const OGRFeature& m_elemento;
};

CString EnTexto(const std::optional<int>& numero)
{
    CString texto;
    if (numero)
        texto.Format("%d", *numero);
    return texto;
}

/// The label that the other fields make where there is no field for it.
std::optional<CString> RotuloUsual(ClaseTopologia clase, const CCamposElemento& campos)
{
    const std::optional<int> parcela = campos.Entero(capa::kParcela);
    switch (clase) {
    case ClaseTopologia::Parcelas:
        return parcela ? std::optional(EnTexto(parcela)) : std::nullopt;
    case ClaseTopologia::Subparcelas: {
        const std::optional<CString> letra = campos.Texto(capa::kLetra);
        return letra ? std::optional(EnTexto(parcela) + "-" + *letra) : std::nullopt;
    }
    case ClaseTopologia::Poligonos:
        return EnTexto(campos.Entero(capa::kPoligono));
    case ClaseTopologia::Hojas:
        return campos.Texto(capa::kHoja);
    }
    return std::nullopt;
}

CString NombreDe(ClaseTopologia clase, const OGRFeature& elemento, const CRecintoEntrante& recinto)
{
    CString sitio;
    if (!recinto.entrada.IsEmpty() && clase != ClaseTopologia::Poligonos)
        sitio.Format(" del polígono %s"_ansi, recinto.entrada);
    CString nombre;
    nombre.Format("%s %s%s (elemento %d)", kNombres[static_cast<std::size_t>(clase)],
                  recinto.rotulo.value_or("sin rótulo"_ansi), sitio,
                  static_cast<int>(elemento.GetFID()));
    return nombre;
}

/// What the fields say of an outline. False, with the reason, where they don't say enough.
bool LeeCampos(ClaseTopologia clase, const OGRFeature& elemento, CRecintoEntrante& recinto,
               CString& motivo)
{
    const CCamposElemento campos(elemento);
    recinto.clase = clase;
    recinto.rotulo =
        campos.Hay(capa::kRotulo) ? campos.Texto(capa::kRotulo) : RotuloUsual(clase, campos);
    recinto.codigo =
        campos.Texto(capa::kCodigo).value_or(kCodigos[static_cast<std::size_t>(clase)]);
    recinto.borrado = campos.Entero(capa::kBorrado).value_or(0) != 0;
    recinto.numero = campos.Entero(capa::kNumero);
    if (clase != ClaseTopologia::Hojas) {
        const std::optional<int> polig = campos.Entero(capa::kPoligono);
        CString usual;
        if (polig)
            usual.Format("%03d", *polig);
        recinto.entrada = campos.Texto(capa::kEntrada).value_or(usual);
    }
    recinto.nombre = NombreDe(clase, elemento, recinto);
    if (clase != ClaseTopologia::Hojas && recinto.entrada.IsEmpty())
        motivo.Format("%s no dice de qué polígono es: falta el campo poligono"_ansi,
                      recinto.nombre);
    else if (!recinto.rotulo && !campos.Hay(capa::kRotulo))
        motivo.Format("%s no dice qué rótulo lleva: faltan los campos rotulo, parcela o letra"_ansi,
                      recinto.nombre);
    else if (recinto.codigo.GetLength() > kCodigoMasLargo)
        motivo.Format("%s: el código es demasiado largo"_ansi, recinto.nombre);
    else if (std::string_view(recinto.entrada).find_first_of("/\\") != std::string_view::npos)
        motivo.Format("%s: el nombre del polígono lleva una barra"_ansi, recinto.nombre);
    const std::optional<double> x = campos.Real(capa::kX);
    const std::optional<double> y = campos.Real(capa::kY);
    if (x && y && std::fabs(*x) < kMayorCoordenada && std::fabs(*y) < kMayorCoordenada)
        recinto.punto = EnUnidades(*x, *y);
    return motivo.IsEmpty();
}

CAnilloFino AnilloDe(const OGRLinearRing& curva)
{
    CAnilloFino anillo;
    for (int i = 0; i + 1 < curva.getNumPoints(); ++i) // the last one repeats the first
        anillo.push_back(EnFinos(curva.getX(i), curva.getY(i)));
    return anillo;
}

/// Takes each piece of a geometry as an outline. The point that is wished for the label goes to the
/// piece that holds it.
void TomaPiezas(const OGRGeometry& geometria, const CRecintoEntrante& recinto,
                std::vector<CRecintoEntrante>& recintos)
{
    std::vector<const OGRPolygon*> piezas;
    if (wkbFlatten(geometria.getGeometryType()) == wkbPolygon)
        piezas.push_back(geometria.toPolygon());
    else
        for (const OGRPolygon* poligono : *geometria.toMultiPolygon())
            piezas.push_back(poligono);
    for (const OGRPolygon* pieza : piezas) {
        CRecintoEntrante& suyo = recintos.emplace_back(recinto);
        for (const OGRLinearRing* anillo : *pieza)
            suyo.anillos.push_back(AnilloDe(*anillo));
        if (piezas.size() == 1 || !suyo.punto)
            continue;
        const OGRPoint punto = EnMetros(*suyo.punto);
        if (pieza->Contains(&punto) == FALSE)
            suyo.punto.reset();
    }
}

/// Tells whether a reference is the one that GeoPackages give to what has none.
bool SinReferencia(const OGRSpatialReference* referencia)
{
    return referencia != nullptr && referencia->GetName() != nullptr &&
           EQUAL(referencia->GetName(), "Undefined geographic SRS");
}

bool CabeEnGrados(const OGREnvelope& caja)
{
    constexpr double kVuelta = 360;
    return std::max({-caja.MinX, -caja.MinY, caja.MaxX, caja.MaxY}) <= kVuelta;
}

/// Why a geometry can't be drawn; empty where it can.
CString MotivoDe(const OGRGeometry* geometria)
{
    if (geometria == nullptr || geometria->IsEmpty())
        return "no tiene contorno";
    const OGRwkbGeometryType tipo = wkbFlatten(geometria->getGeometryType());
    if (tipo != wkbPolygon && tipo != wkbMultiPolygon)
        return "no es un recinto: su geometría es otra"_ansi;
    OGREnvelope caja;
    geometria->getEnvelope(&caja);
    if (EstaEnGrados(geometria->getSpatialReference()) ||
        (SinReferencia(geometria->getSpatialReference()) && CabeEnGrados(caja)))
        return "está en grados: reproyecte antes a coordenadas en metros"_ansi;
    if (!(std::max({-caja.MinX, -caja.MinY, caja.MaxX, caja.MaxY}) < kMayorCoordenada))
        return "sus coordenadas no caben en un dibujo"_ansi;
    CPLErrorReset();
    const CPLErrorHandlerPusher callado(CPLQuietErrorHandler);
    const bool valido = geometria->IsValid() != 0;
    const CString dicho = Ansi(CPLGetLastErrorMsg());
    CPLErrorReset();
    return valido ? CString() : "su contorno no es válido: "_ansi + dicho;
}

} // namespace

std::optional<ClaseTopologia> ClaseDeCapa(const std::string& nombre)
{
    const auto* const suya =
        std::find_if(std::begin(kCapas), std::end(kCapas),
                     [&](const char* capa) { return EQUAL(nombre.c_str(), capa); });
    return suya == std::end(kCapas) ? std::nullopt
                                    : std::optional(static_cast<ClaseTopologia>(suya - kCapas));
}

bool EstaEnGrados(const OGRSpatialReference* referencia)
{
    return referencia != nullptr && referencia->IsGeographic() != 0 && !SinReferencia(referencia);
}

bool TomaElemento(ClaseTopologia clase, const OGRFeature& elemento, double tolerancia,
                  std::vector<CRecintoEntrante>& recintos, CString& motivo)
{
    CRecintoEntrante recinto;
    if (!LeeCampos(clase, elemento, recinto, motivo))
        return false;
    std::unique_ptr<OGRGeometry> sinArcos;
    const OGRGeometry* geometria = elemento.GetGeometryRef();
    const bool hayArcos = geometria != nullptr && geometria->hasCurveGeometry(TRUE) != 0;
    if (hayArcos && tolerancia <= 0) {
        motivo.Format("%s tiene arcos: hace falta la opción TOLERANCIA_ARCOS, en metros"_ansi,
                      recinto.nombre);
        return false;
    }
    if (geometria != nullptr && geometria->hasCurveGeometry(FALSE) != 0) {
        sinArcos = SinArcos(*geometria, tolerancia);
        geometria = sinArcos.get();
    }
    if (const CString porque = MotivoDe(geometria); !porque.IsEmpty()) {
        motivo.Format("%s: %s", recinto.nombre, porque);
        return false;
    }
    TomaPiezas(*geometria, recinto, recintos);
    return true;
}
