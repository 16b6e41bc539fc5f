#include "evidence/report/reading/batch_jobs.h"

#include <algorithm>
#include <utility>

#include "evidence/paths.h"
#include "evidence/report/reading/text.h"
#include "platform/files/cstdio_file.h"
#include "platform/files/side_names.h"
#include "platform/files/target_lock.h"

namespace informe {
namespace {

namespace fs = std::filesystem;

/// Tells whether a batch has the results in hand.
bool EstaEnMarcha(const lote::CEstados& estados)
{
    CCandado candado;
    sistema::Error error; // where none can be made, none keeps anybody out
    return candado.Toma(lado::De(estados.Diario(), lado::kCandado), error) ==
           sistema::Bloqueo::DeOtro;
}

} // namespace

CLoteLeido::CLoteLeido(const CString& carpeta) : estados(sistema::Ruta(carpeta))
{
    const fs::path desde = estados.DesdeCarpeta();
    trabajos = lote::LeeTabla(sistema::Nombre(estados.Trabajos()));
    estados.Lee();
    for (lote::CTrabajo& trabajo : trabajos) {
        carpetas.push_back(trabajo.carpeta);
        trabajo.carpeta = sistema::Nombre(desde / sistema::Ruta(trabajo.carpeta));
    }
}

std::vector<CString> CLoteLeido::Suyos() const
{
    std::vector<CString> suyos = {sistema::Nombre(estados.Trabajos()),
                                  sistema::Nombre(estados.Diario()),
                                  sistema::Nombre(estados.Tabla())};
    fs::path tabla = sistema::EnteraSinPuntos(estados.Carpeta());
    if (!tabla.has_filename())
        tabla = tabla.parent_path(); // a separator stands at the end
    if (tabla.extension() == lote::kExtensionResultados)
        suyos.emplace_back(sistema::Nombre(tabla.replace_extension()));
    return suyos;
}

std::vector<std::string> CLoteLeido::Reparos() const
{
    std::vector<std::string> reparos;
    if (!HayFichero(sistema::Nombre(estados.Tabla())))
        reparos.emplace_back(EstaEnMarcha(estados) ? "El lote está en marcha todavía."
                                                   : "El lote no ha llegado a su fin.");
    if (const int cortadas = estados.Cortadas(); cortadas > 0)
        reparos.push_back(Cuantos(cortadas, "línea de trabajos.log está a medias",
                                  "líneas de trabajos.log están a medias") +
                          ": sus trabajos constan como sin hacer.");
    const auto suyos = static_cast<std::size_t>(std::ranges::count_if(
        trabajos, [&](const lote::CTrabajo& trabajo) { return estados.De(trabajo) != nullptr; }));
    if (const auto otros = static_cast<std::int64_t>(estados.Cuantos() - suyos); otros > 0)
        reparos.push_back(
            Cuantos(otros, "trabajo de trabajos.log no está", "trabajos de trabajos.log no están") +
            " ya en la tabla, ni aquí.");
    return reparos;
}

std::vector<CString> FicherosDe(const lote::CTrabajo& trabajo, const lote::CEstados& estados)
{
    const bool esIda = trabajo.traduccion == lote::Traduccion::Ida;
    std::vector<CString> suyos = {
        sistema::Nombre(lote::RutaDelRegistro(trabajo)),
        sistema::Nombre(lote::FicheroDe(trabajo, esIda ? "entrada" : "lista")),
        sistema::Nombre(estados.Dicho(trabajo.numero)),
        sistema::Nombre(estados.Informe(trabajo.numero)),
    };
    if (!esIda)
        suyos.emplace_back(sistema::Nombre(lote::FicheroDe(trabajo, "ortos")));
    if (trabajo.traduccion != lote::Traduccion::Infograf)
        for (const std::string_view campo : lote::kCamposDeTablas)
            suyos.emplace_back(sistema::Nombre(lote::FicheroDe(trabajo, campo)));
    return suyos;
}

COpciones OpcionesDe(const lote::CTrabajo& trabajo, const lote::CHecho& hecho)
{
    using enum lote::Traduccion;
    constexpr const char* kReescribe[] = {"parcelas", "subparcelas"};
    const auto fichero = [&](std::string_view campo) {
        return CString(sistema::Nombre(lote::FicheroDe(trabajo, campo)));
    };
    COpciones opciones;
    opciones.detenido = hecho.estado == lote::kMuerto;
    opciones.infograf = trabajo.traduccion == Infograf;
    if (trabajo.traduccion == Ida) {
        opciones.entrada = fichero("entrada");
    } else {
        opciones.lista = fichero("lista");
        if (CString ortos = fichero("ortos"); HayFichero(ortos))
            opciones.ortos = std::move(ortos);
    }
    if (trabajo.traduccion == Infograf)
        return opciones;
    for (const std::string_view campo : lote::kCamposDeTablas) {
        const CString tabla = fichero(campo);
        const bool reescrita = trabajo.traduccion == Vuelta && hecho.estado == 0 &&
                               trabajo.Campo("modificar") != "0" &&
                               std::ranges::find(kReescribe, campo) != std::end(kReescribe);
        if (HayFichero(tabla))
            (reescrita ? opciones.escritos : opciones.con).push_back(tabla);
    }
    return opciones;
}

} // namespace informe
