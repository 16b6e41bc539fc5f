#include "evidence/gis/writing/read_only_fields.h"

#include <cmath>
#include <utility>

#include <gdal_priv.h>
#include <ogrsf_frmts.h>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "platform/ansi.h"

namespace {

constexpr const char* kDelDibujo[] = {"area_registro", "area_contorno", "valido", "estado",
                                      "faltas",        "pieza",         "piezas"};
constexpr const char* kDeTablas[] = {"en_tablas",     "superficie", "titular",    "dni",
                                     "participacion", "paraje",     "clave_conc", "tipo",
                                     "calificacion",  "clase"};
constexpr const char* kEnTablas = "en_tablas";

const char* Valor(const OGRFeature& elemento, const char* campo)
{
    const int i = elemento.GetFieldIndex(campo);
    return i >= 0 && elemento.IsFieldSetAndNotNull(i) ? elemento.GetFieldAsString(i) : "";
}

/// Tells whether a value is another than the one that is shown, whatever form it came in.
bool Difiere(const OGRFeature& antes, const char* campo, const std::string& valor)
{
    constexpr double kSeVe = 0.005;
    const int i = antes.GetFieldIndex(campo);
    if (i < 0 || valor.empty())
        return false; // another layer's, or nothing is said
    if (antes.GetFieldDefnRef(i)->GetType() == OFTString)
        return valor != Valor(antes, campo);
    const double numero = EQUAL(valor.c_str(), "true")    ? 1
                          : EQUAL(valor.c_str(), "false") ? 0
                                                          : CPLAtof(valor.c_str());
    return !antes.IsFieldSetAndNotNull(i) || std::fabs(numero - antes.GetFieldAsDouble(i)) > kSeVe;
}

} // namespace

void CSoloLeidos::Apunta(const char* capa, const OGRFeature& elemento)
{
    CValores valores;
    const auto toma = [&](const char* campo) {
        if (const char* valor = Valor(elemento, campo); *valor != '\0')
            valores[campo] = valor;
    };
    for (const char* campo : kDelDibujo)
        toma(campo);
    for (const char* campo : kDeTablas)
        toma(campo);
    if (!valores.empty())
        m_elementos[{capa, Valor(elemento, capa::kEntrada), Valor(elemento, capa::kNumero)}]
            .push_back(std::move(valores));
}

/// The fields of a feature that are other ones than those that are shown.
std::set<std::string> CSoloLeidos::Distintos(const OGRFeature& antes, const CValores& valores)
{
    std::set<std::string> distintos;
    const auto mira = [&](const char* campo) {
        const auto valor = valores.find(campo);
        if (valor != valores.end() && Difiere(antes, campo, valor->second))
            distintos.insert(campo);
    };
    for (const char* campo : kDelDibujo)
        mira(campo);
    // Where the tables aren't at hand nobody knows what they said.
    if (*Valor(antes, kEnTablas) != '\0')
        for (const char* campo : kDeTablas)
            mira(campo);
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
        const char* const drivers[] = {"Vexa", nullptr};
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
