#include "catastro_to_vexa/exchange_reader.h"

#include "cadastre/exchange_format.h"
#include "cadastre/record_types.h"

namespace {

void TomaModulo(std::string_view linea, CLecturaCatastro& lectura)
{
    CDatosLinea datos;
    const auto modulo = lectura.vista.Lee<CModulo>(linea, kModoCatastro, datos);
    CMunicipio& municipio = lectura.Municipio();
    if (municipio.BuscaModulo(modulo) >= 0)
        Avisa(lectura.avisos, kModuloRepetido, modulo.Denominacion, modulo.Cal, modulo.Inten);
    else
        municipio.InsertaModulo(modulo);
}

void TomaTitular(std::string_view linea, CLecturaCatastro& lectura)
{
    CDatosLinea datos;
    auto titular = lectura.vista.Lee<CTitular>(linea, kModoCatastro, datos);
    const int numero = titular.NumOrden;
    const int i = RegistraTitular(lectura.avisos, lectura.Municipio(), std::move(titular));
    lectura.titularesLeidos.push_back({i, numero, datos.partici, lectura.municipioActual});
}

void TomaParcela(std::string_view linea, CLecturaCatastro& lectura)
{
    lectura.parcelasLeidas.Añade(linea);
}

void TomaSubparcela(std::string_view linea, CLecturaCatastro& lectura)
{
    lectura.subparcelasLeidas.Añade(linea);
}

void TomaParaje(std::string_view linea, CLecturaCatastro& lectura)
{
    CDatosLinea datos;
    const auto paraje = lectura.vista.Lee<CParaje>(linea, kModoCatastro, datos);
    CMunicipio& municipio = lectura.Municipio();
    const int conSuNumero = municipio.BuscaParaje(paraje.NumOrden);
    const int i = municipio.InsertaParaje(paraje);
    lectura.vista.parajesDeOtro += conSuNumero >= 0 && conSuNumero != i ? 1 : 0;
}

constexpr struct {
    std::string_view tipo;
    void (*toma)(std::string_view linea, CLecturaCatastro& lectura);
} kRegistros[] = {
    {kTipoModulo, TomaModulo},    {kTipoTitular, TomaTitular},         {kTipoParcela, TomaParcela},
    {kTipoSuelo, TomaSubparcela}, {kTipoConstruccion, TomaSubparcela}, {kTipoParaje, TomaParaje},
};

} // namespace

void TomaRegistro(std::string_view linea, CLecturaCatastro& lectura)
{
    const std::string_view tipo = CLineaFija(linea).Texto(kLeeTipo);
    for (const auto& registro : kRegistros) {
        if (registro.tipo == tipo) {
            registro.toma(linea, lectura);
            return;
        }
    }
}
