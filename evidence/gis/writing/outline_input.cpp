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
#include "evidence/units.h"
#include "platform/ansi.h"
#include "vexa_libs/ccadena.h"

namespace {

constexpr double kMayorCoordenada = EnMetros(std::numeric_limits<int>::max());

// By what the outlines are: their layer, the code of their labels, and what a person calls one.
constexpr const char* kCapas[] = {capa::kParcelas, capa::kSubparcelas, capa::kPoligonos,
                                  capa::kHojas};
constexpr const char* kCodigos[] = {kCodigoParcela, kCodigoSubparcela, kCodigoPoligono,
                                    kCodigoHoja};
constexpr const char* kEnGrados =
    "está en grados: reproyecte antes a coordenadas en metros (-t_srs), o si lo son ya, como en un "
    "GeoJSON que no dice su sistema, diga cuál es (-a_srs)"_ansi;
constexpr const char* kNombres[] = {"la parcela", "la subparcela", "el polígono"_ansi, "la hoja"};

CString EnTexto(const std::optional<int>& numero)
{
    return numero ? std::to_string(*numero) : std::string();
}

/// The digits that a subparcel's label has in front of its letter; none where it has no number
/// there.
std::optional<int> ParcelaDelRotulo(const CString& rotulo)
{
    const CString delante = rotulo.Left(std::max(rotulo.Find('-'), 0));
    const bool numero = !delante.IsEmpty() && std::string_view(delante).find_first_not_of(
                                                  "0123456789") == std::string_view::npos;
    return numero ? std::optional(LeeEntero(delante)) : std::nullopt;
}

/// The label that the other fields make; none where they say nothing.
std::optional<CString> RotuloPorNumeros(const CRecintoEntrante& recinto,
                                        const std::optional<CString>& hoja)
{
    switch (recinto.clase) {
    case ClaseTopologia::Parcelas:
        return recinto.parcela ? std::optional(EnTexto(recinto.parcela)) : std::nullopt;
    case ClaseTopologia::Subparcelas:
        if (recinto.letra)
            return EnTexto(recinto.parcela) + "-" + *recinto.letra;
        return recinto.parcela && recinto.rotulo
                   ? std::optional(EnTexto(recinto.parcela) + "-" + LetraDelRotulo(*recinto.rotulo))
                   : std::nullopt;
    case ClaseTopologia::Poligonos:
        return recinto.de.poligono ? std::optional(EnTexto(recinto.de.poligono)) : std::nullopt;
    case ClaseTopologia::Hojas:
        return hoja;
    }
    return std::nullopt;
}

/// What the fields of an outline with a label say against that label; empty for nothing.
CString ContradiccionDe(const CRecintoEntrante& recinto)
{
    const CString& rotulo = *recinto.rotulo;
    const auto frase = [&](const char* campo, const CString& dice) -> CString {
        return Formatea("su campo %s dice %s y su rótulo dice \"%s\""_ansi, campo, dice, rotulo);
    };
    const bool dicha = recinto.clase == ClaseTopologia::Parcelas ? recinto.parcela.has_value()
                                                                 : recinto.letra.has_value();
    if (dicha && EstadoPorRotulo(recinto.clase, recinto.Codigo(), recinto.Borrado()) !=
                     EstadoRecinto::Valido)
        return recinto.clase == ClaseTopologia::Parcelas
                   ? frase(capa::kParcela, EnTexto(recinto.parcela)) + ", que no vale"
                   : frase(capa::kLetra, *recinto.letra) + ", que no vale";
    if (recinto.clase == ClaseTopologia::Parcelas && recinto.parcela &&
        *recinto.parcela != LeeEntero(rotulo))
        return frase(capa::kParcela, EnTexto(recinto.parcela));
    if (recinto.clase == ClaseTopologia::Poligonos && recinto.de.poligono &&
        *recinto.de.poligono != LeeEntero(rotulo))
        return frase(capa::kPoligono, EnTexto(recinto.de.poligono));
    if (recinto.clase == ClaseTopologia::Hojas && recinto.porNumeros &&
        !SeVenIgual(*recinto.porNumeros, rotulo))
        return frase(capa::kHoja, *recinto.porNumeros);
    if (recinto.clase != ClaseTopologia::Subparcelas)
        return {};
    if (recinto.letra && !SeVenIgual(*recinto.letra, LetraDelRotulo(rotulo)))
        return frase(capa::kLetra, *recinto.letra);
    const std::optional<int> delante = ParcelaDelRotulo(rotulo);
    return recinto.parcela && delante && *delante != *recinto.parcela
               ? frase(capa::kParcela, EnTexto(recinto.parcela))
               : CString();
}

/// Settles the label: as its own field says, else as the others make it. A polygon's outline has
/// the number of its polygon with or without a label, so where there is a field for the label, an
/// outline without one stays so; and so does a sheet without a name.
void PonRotulo(const std::optional<CString>& hoja, CRecintoEntrante& recinto)
{
    recinto.porNumeros = RotuloPorNumeros(recinto, hoja);
    const bool dicho = recinto.clase == ClaseTopologia::Poligonos ? recinto.sinCampoRotulo
                       : recinto.clase == ClaseTopologia::Hojas   ? hoja && !hoja->IsEmpty()
                                                                  : recinto.porNumeros.has_value();
    if (dicho && (!recinto.rotulo || recinto.rotulo->IsEmpty()))
        recinto.rotulo = recinto.porNumeros;
    if (recinto.rotulo)
        recinto.contradiccion = ContradiccionDe(recinto);
}

CString NombreDe(ClaseTopologia clase, const OGRFeature& elemento, const CRecintoEntrante& recinto)
{
    const bool dePoligono = clase == ClaseTopologia::Poligonos;
    return Formatea("%s %s%s (elemento %d)", kNombres[static_cast<std::size_t>(clase)],
                    recinto.rotulo.value_or("sin rótulo"_ansi),
                    dePoligono ? CString() : recinto.de.EnPalabras(),
                    static_cast<int>(elemento.GetFID()));
}

/// Why the fields of an outline make no label or name no polygon; empty where they do.
CString FaltaDe(const CRecintoEntrante& recinto, const CCamposElemento& campos)
{
    if (CString falta = campos.FaltaDe(recinto.de, recinto.clase == ClaseTopologia::Hojas);
        !falta.IsEmpty())
        return falta;
    if (!recinto.rotulo && recinto.sinCampoRotulo)
        return "no dice qué rótulo lleva: faltan los campos rotulo, parcela o letra"_ansi;
    if (recinto.parcela.value_or(0) < 0 || recinto.de.poligono.value_or(0) < 0)
        return "lleva un número negativo"_ansi;
    if (recinto.Codigo().GetLength() > kCodigoMasLargo)
        return "el código es demasiado largo"_ansi;
    return {};
}

/// What the fields say of an outline. It is refused where they don't say enough.
void LeeCampos(ClaseTopologia clase, const OGRFeature& elemento, CRecintoEntrante& recinto)
{
    CCamposElemento campos(elemento);
    recinto.clase = clase;
    recinto.rotulo = campos.Texto(capa::kRotulo);
    recinto.sinCampoRotulo = !campos.Hay(capa::kRotulo);
    recinto.rotuloEsNumero = campos.EsNumero(capa::kRotulo);
    recinto.codigo = campos.Texto(capa::kCodigo);
    recinto.borrado = campos.SiNo(capa::kBorrado);
    recinto.numero = campos.Entero(capa::kNumero);
    std::optional<CString> hoja;
    if (clase == ClaseTopologia::Hojas)
        hoja = campos.Texto(capa::kHoja);
    else
        recinto.de = LeeDePoligono(campos);
    if (clase == ClaseTopologia::Parcelas || clase == ClaseTopologia::Subparcelas)
        recinto.parcela = campos.Entero(capa::kParcela);
    if (clase == ClaseTopologia::Subparcelas)
        recinto.letra = campos.Texto(capa::kLetra);
    const std::optional<double> x = campos.Real(capa::kX);
    const std::optional<double> y = campos.Real(capa::kY);
    if (x && y && std::fabs(*x) < kMayorCoordenada && std::fabs(*y) < kMayorCoordenada)
        recinto.punto = EnUnidades(*x, *y);
    PonRotulo(hoja, recinto);
    recinto.nombre = NombreDe(clase, elemento, recinto);
    if (const CString falta = FaltaDe(recinto, campos); !falta.IsEmpty())
        recinto.rechazo = recinto.nombre + ": " + falta;
}

CAnilloFino AnilloDe(const OGRLinearRing& curva)
{
    CAnilloFino anillo;
    for (int i = 0; i + 1 < curva.getNumPoints(); ++i) // the last one repeats the first
        anillo.push_back(EnFinos(curva.getX(i), curva.getY(i)));
    return anillo;
}

/// Takes each piece of a geometry as an outline, one without a boundary for none. The point that
/// is wished for the label goes to the piece that holds it.
void TomaPiezas(const OGRGeometry* geometria, const CRecintoEntrante& recinto,
                std::vector<CRecintoEntrante>& recintos)
{
    std::vector<const OGRGeometry*> piezas;
    if (geometria == nullptr || geometria->IsEmpty())
        recintos.push_back(recinto);
    else
        piezas = PartesDe(*geometria, wkbPolygon);
    for (const OGRGeometry* pieza : piezas) {
        CRecintoEntrante& suyo = recintos.emplace_back(recinto);
        for (const OGRLinearRing* anillo : *pieza->toPolygon())
            suyo.anillos.push_back(AnilloDe(*anillo));
        if (piezas.size() == 1 || !suyo.punto)
            continue;
        const OGRPoint punto = EnMetros(*suyo.punto);
        const CPLErrorStateBackuper estado; // of one that isn't valid GEOS complains
        const CPLErrorHandlerPusher callado(CPLQuietErrorHandler);
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

/// Looks for coordinates that are no numbers.
class CBuscaNoNumeros final : public OGRDefaultConstGeometryVisitor {
public:
    using OGRDefaultConstGeometryVisitor::visit;
    void visit(const OGRPoint* punto) override
    {
        // To GDAL one like that is an empty point.
        m_hay = m_hay || !std::isfinite(punto->getX()) || !std::isfinite(punto->getY());
    }
    bool Hay() const { return m_hay; }

private:
    bool m_hay = false;
};

bool CabeEnGrados(const OGREnvelope& caja)
{
    constexpr double kVuelta = 360;
    return std::max({-caja.MinX, -caja.MinY, caja.MaxX, caja.MaxY}) <= kVuelta;
}

/// Tells whether what says no reference can be in degrees alone: in metres it would be less than
/// one in each direction, which no outline is but those of a drawing that was made so, on its
/// hundredths.
bool SoloCabeEnGrados(const OGRGeometry& geometria, const OGREnvelope& caja)
{
    constexpr double kIgual = 1e-6; // of a drawing's unit
    const auto esEntera = [](double metros) {
        const double unidades = metros / EnMetros(1);
        return std::fabs(unidades - std::round(unidades)) < kIgual;
    };
    return geometria.getDimension() == 2 && CabeEnGrados(caja) && caja.MaxX - caja.MinX < 1 &&
           caja.MaxY - caja.MinY < 1 &&
           !(esEntera(caja.MinX) && esEntera(caja.MaxX) && esEntera(caja.MinY) &&
             esEntera(caja.MaxY));
}

/// Why a geometry can be no outline at all; empty where it can.
CString MotivoDe(const OGRGeometry* geometria)
{
    if (geometria == nullptr || geometria->IsEmpty())
        return {};
    const OGRwkbGeometryType tipo = wkbFlatten(geometria->getGeometryType());
    if (tipo != wkbPolygon && tipo != wkbMultiPolygon)
        return "no es un recinto: su geometría es otra"_ansi;
    return MotivoDeLugar(*geometria);
}

/// Why an outline can't be drawn as it is; empty where it can.
CString DefectoDe(const OGRGeometry* geometria)
{
    if (geometria == nullptr || geometria->IsEmpty())
        return "no tiene contorno";
    CPLErrorReset();
    const CPLErrorHandlerPusher callado(CPLQuietErrorHandler);
    const bool valido = geometria->IsValid() != 0;
    const CString dicho = AnsiParaDecir(CPLGetLastErrorMsg());
    CPLErrorReset();
    return valido ? CString() : "su contorno no es válido: "_ansi + dicho;
}

} // namespace

CString CRecintoEntrante::Codigo() const
{
    return codigo.value_or(kCodigos[static_cast<std::size_t>(clase)]);
}

const char* NombreDeCapa(ClaseTopologia clase)
{
    return kCapas[static_cast<std::size_t>(clase)];
}

std::optional<ClaseTopologia> ClaseDeCapa(const std::string& nombre)
{
    const auto* const suya =
        std::ranges::find_if(kCapas, [&](const char* capa) { return EQUAL(nombre.c_str(), capa); });
    return suya == std::end(kCapas) ? std::nullopt
                                    : std::optional(static_cast<ClaseTopologia>(suya - kCapas));
}

CString MotivoDeReferencia(const OGRSpatialReference* referencia)
{
    constexpr double kIgual = 1e-9;
    if (referencia == nullptr || SinReferencia(referencia))
        return {};
    if (referencia->IsGeographic() != 0)
        return kEnGrados;
    const char* unidad = nullptr;
    const double metros = referencia->GetLinearUnits(&unidad);
    // Where the unit isn't known its size is none.
    if (metros > 0 && std::fabs(metros - 1) > kIgual)
        return Formatea("está en %s y no en metros: reproyecte antes (-t_srs)"_ansi,
                        AnsiParaDecir(unidad == nullptr ? "otra unidad" : unidad));
    // What web maps are in: the farther from the equator, the longer its metres.
    const char* proyeccion = referencia->GetAttrValue("PROJECTION");
    if (proyeccion != nullptr && std::string_view(proyeccion).starts_with("Mercator"))
        return "está en la proyección de Mercator, cuyos metros no son los del terreno: reproyecte "
               "antes (-t_srs)"_ansi;
    return {};
}

CString MotivoDeLugar(const OGRGeometry& geometria)
{
    CBuscaNoNumeros noNumeros; // an envelope passes them over
    geometria.accept(&noNumeros);
    if (noNumeros.Hay())
        return "sus coordenadas no son números"_ansi;
    OGREnvelope caja;
    geometria.getEnvelope(&caja);
    if (CString motivo = MotivoDeReferencia(geometria.getSpatialReference()); !motivo.IsEmpty())
        return motivo;
    const OGRSpatialReference* const referencia = geometria.getSpatialReference();
    if (referencia == nullptr ? SoloCabeEnGrados(geometria, caja)
                              : SinReferencia(referencia) && CabeEnGrados(caja))
        return kEnGrados;
    return std::max({-caja.MinX, -caja.MinY, caja.MaxX, caja.MaxY}) < kMayorCoordenada
               ? CString()
               : CString("sus coordenadas no caben en un dibujo"_ansi);
}

bool TomaElemento(ClaseTopologia clase, const OGRFeature& elemento, double tolerancia,
                  std::vector<CRecintoEntrante>& recintos)
{
    CRecintoEntrante recinto;
    LeeCampos(clase, elemento, recinto);
    std::unique_ptr<OGRGeometry> sinArcos;
    const OGRGeometry* geometria = elemento.GetGeometryRef();
    const bool hayArcos = geometria != nullptr && geometria->hasCurveGeometry(TRUE) != 0;
    CString falta;
    if (hayArcos && tolerancia <= 0)
        falta = " tiene arcos: hace falta la opción TOLERANCIA_ARCOS, en metros"_ansi;
    else if (geometria != nullptr && geometria->hasCurveGeometry(FALSE) != 0) {
        sinArcos = SinArcos(*geometria, tolerancia);
        geometria = sinArcos.get();
    }
    if (falta.IsEmpty())
        if (const CString porque = MotivoDe(geometria); !porque.IsEmpty())
            falta = ": " + porque;
    if (!falta.IsEmpty()) {
        geometria = nullptr;
        if (recinto.rechazo.IsEmpty())
            recinto.rechazo = recinto.nombre + falta;
    }
    if (!recinto.rechazo.IsEmpty())
        recinto.contradiccion = CString(); // nobody is to settle it
    else
        recinto.defecto = DefectoDe(geometria);
    TomaPiezas(geometria, recinto, recintos);
    return recinto.rechazo.IsEmpty();
}
