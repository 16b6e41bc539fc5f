#include "evidence/gis/writing/read_only_fields.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "platform/ansi.h"

namespace {

/// The fields that an outline is made of. All others that the driver shows are read alone.
constexpr const char* kSeEscriben[] = {
    capa::kEntrada, capa::kPoligono, capa::kParcela, capa::kLetra, capa::kHoja, capa::kRotulo,
    capa::kCodigo,  capa::kBorrado,  capa::kNumero,  capa::kX,     capa::kY};
constexpr const char* kEnTablas = "en_tablas";

const char* Valor(const OGRFeature& elemento, const char* campo)
{
    const int i = elemento.GetFieldIndex(campo);
    return i >= 0 && elemento.IsFieldSetAndNotNull(i) ? elemento.GetFieldAsString(i) : "";
}

bool SeEscribe(const char* campo)
{
    return std::ranges::any_of(kSeEscriben, [&](const char* suyo) { return EQUAL(campo, suyo); });
}

/// The place of a field that is read alone, by its name as a source has it: Shapefiles keep ten
/// letters of one. -1 for another one.
int SoloLeido(const OGRFeature& antes, const std::string& campo)
{
    constexpr std::size_t kLetrasDeShape = 10;
    for (int i = 0; i < antes.GetFieldCount(); ++i) {
        const char* suyo = antes.GetFieldDefnRef(i)->GetNameRef();
        if (EQUAL(suyo, campo.c_str()) ||
            (campo.size() == kLetrasDeShape && EQUALN(suyo, campo.c_str(), kLetrasDeShape)))
            return SeEscribe(suyo) ? -1 : i;
    }
    return -1;
}

/// Tells whether a value is another than the one that is shown, whatever form it came in.
bool Difiere(const OGRFeature& antes, int i, const std::string& valor)
{
    constexpr double kSeVe = 0.005;
    if (!antes.IsFieldSetAndNotNull(i))
        return *Valor(antes, kEnTablas) != '\0'; // without tables nobody knows what they said
    if (antes.GetFieldDefnRef(i)->GetType() == OFTString)
        return valor != antes.GetFieldAsString(i);
    const double numero = EQUAL(valor.c_str(), "true")    ? 1
                          : EQUAL(valor.c_str(), "false") ? 0
                                                          : CPLAtof(valor.c_str());
    return std::fabs(numero - antes.GetFieldAsDouble(i)) > kSeVe;
}

} // namespace

void CSoloLeidos::Apunta(const char* capa, const OGRFeature& elemento)
{
    CValores valores;
    for (int i = 0; i < elemento.GetFieldCount(); ++i) {
        const char* campo = elemento.GetFieldDefnRef(i)->GetNameRef();
        if (const char* valor = Valor(elemento, campo); *valor != '\0' && !SeEscribe(campo))
            valores[campo] = valor;
    }
    if (!valores.empty())
        m_elementos[{capa, Valor(elemento, capa::kEntrada), Valor(elemento, capa::kNumero)}]
            .push_back(std::move(valores));
}

/// The fields of a feature that are other ones than those that are shown.
std::set<std::string> CSoloLeidos::Distintos(const OGRFeature& antes, const CValores& valores)
{
    std::set<std::string> distintos;
    for (const auto& [campo, valor] : valores)
        if (const int i = SoloLeido(antes, campo); i >= 0 && Difiere(antes, i, valor))
            distintos.insert(campo);
    return distintos;
}

/// How many features differ in each field.
std::map<std::string, int> CSoloLeidos::Cambiados(GDALDataset& datos) const
{
    // Records may share a number: then a feature is that of them which it differs from least.
    std::map<CClave, std::vector<std::set<std::string>>> distintos;
    for (const char* capa : {capa::kParcelas, capa::kSubparcelas, capa::kPoligonos, capa::kHojas})
        for (const auto& antes : *datos.GetLayerByName(capa)) {
            const CClave clave = {capa, Valor(*antes, capa::kEntrada),
                                  Valor(*antes, capa::kNumero)};
            const auto suyos = m_elementos.find(clave);
            if (suyos == m_elementos.end())
                continue;
            const auto [lugar, primero] = distintos.try_emplace(clave);
            lugar->second.resize(suyos->second.size());
            for (std::size_t i = 0; i < suyos->second.size(); ++i)
                if (std::set<std::string> suyo = Distintos(*antes, suyos->second[i]);
                    primero || suyo.size() < lugar->second[i].size())
                    lugar->second[i] = std::move(suyo);
        }
    std::map<std::string, int> cambiados;
    for (const auto& [clave, suyos] : distintos)
        for (const std::set<std::string>& campos : suyos)
            for (const std::string& campo : campos)
                ++cambiados[campo];
    return cambiados;
}

void CSoloLeidos::Avisa(const CString& lista) const
{
    if (m_elementos.empty())
        return;
    std::map<std::string, int> cambiados;
    {
        const char* const drivers[] = {opcion::kControlador, nullptr};
        const CPLErrorHandlerPusher callado(CPLQuietErrorHandler); // nobody asked to read it
        const GDALDatasetUniquePtr datos(
            GDALDataset::Open(lista.GetString(), GDAL_OF_VECTOR, drivers));
        if (datos)
            cambiados = Cambiados(*datos);
    }
    CString nombres;
    for (const auto& [campo, veces] : cambiados)
        nombres += (nombres.IsEmpty() ? "" : ", ") + Formatea("%s (%d)", campo, veces);
    if (!nombres.IsEmpty())
        Advierte("Sin efecto, porque estos campos sólo se leen; elementos que los cambian: "_ansi +
                 nombres);
}
