#include <map>

#include "evidence/message_advice.h"
#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_files.h"
#include "evidence/report/writing/page_parts.h"

// The messages: by matter, by number, and one by one.

namespace informe {
namespace {

void Cuentas(CMarcas& marcas, const CAsunto& asunto)
{
    for (const auto& [mensaje, cuantos] : asunto.cuentas) {
        const std::string codigo(CodigoMensaje(*mensaje));
        marcas.Elemento("a", {{"class", "codigo"}, {"href", CAnclas::A(codigo)}}, codigo);
        if (cuantos > 1)
            marcas.Elemento("small", {}, "×" + Miles(cuantos));
        marcas.Texto(" ");
    }
}

void Lineas(CMarcas& marcas, const CContenido& contenido, const CAsunto& asunto)
{
    const std::size_t dichas = std::min(asunto.primeros.size(), topes::kLineasDeAsunto);
    for (std::size_t i = 0; i < dichas; ++i) {
        const std::uint32_t posicion = asunto.primeros[i];
        marcas.Texto(i > 0 ? ", " : asunto.mensajes == 1 ? "línea " : "líneas ");
        Enlace(marcas, contenido.anclas.ALinea(posicion),
               std::to_string(contenido.proceso.registro.avisos[posicion].linea));
    }
    if (static_cast<std::size_t>(asunto.mensajes) > dichas)
        marcas.Texto(" …");
}

/// What the matter costs, "4,68 ha · 12 registros · 33 mensajes: ".
void Coste(CMarcas& marcas, const CAsunto& asunto)
{
    std::string texto;
    const auto anota = [&](const std::string& otro) {
        texto += (texto.empty() ? "" : " · ") + otro;
    };
    if (asunto.coste.metros > 0)
        anota(Superficie(asunto.coste.metros));
    if (asunto.coste.registros > 0)
        anota(Cuantos(asunto.coste.registros, "registro", "registros"));
    if (!texto.empty())
        marcas.Elemento("span", {{"class", "coste"}}, texto)
            .Texto(asunto.mensajes > 0 ? " · " : " ");
    if (asunto.mensajes > 1)
        marcas.Texto(Miles(asunto.mensajes) + " mensajes: ");
}

/// The parcels that a matter is about, with what each loses.
void Parcelas(CMarcas& marcas, const CContenido& contenido, const CAsunto& asunto)
{
    if (asunto.parcelas.empty())
        return;
    const auto dichas = Primeros(asunto.parcelas, topes::kParcelasDeAsunto);
    marcas.Elemento("ul", {{"class", "piezas"}}, [&] {
        for (const auto& una : dichas) {
            marcas.Elemento("li", {}, [&] {
                const auto& [polig, parcela] = una.first;
                Enlace(marcas, contenido.anclas.AParcela(polig, parcela),
                       std::to_string(polig) + "-" + std::to_string(parcela));
                marcas.Texto(" ").Texto(Superficie(una.second));
            });
            marcas.Texto(" ");
        }
        if (dichas.size() < asunto.parcelas.size())
            marcas.Elemento("li", {},
                            "y " + Miles(asunto.parcelas.size() - dichas.size()) + " más");
    });
}

void PonAsunto(CMarcas& marcas, const CContenido& contenido, const CAsunto& asunto)
{
    const std::string mapa = contenido.anclas.AParcela(asunto.polig, asunto.parcela);
    const bool esError = asunto.errores > 0 || asunto.coste.metros > 0;
    marcas.Bloque("li", {{"class", esError ? "err" : "avi"}}, [&] {
        marcas.Elemento("b", {}, asunto.titulo);
        if (!mapa.empty()) {
            marcas.Texto(" ");
            Enlace(marcas, mapa, "en el mapa");
        }
        marcas.Suelto("br");
        Coste(marcas, asunto);
        Cuentas(marcas, asunto);
        if (asunto.mensajes > 0)
            marcas.Elemento("span", {{"class", "lineas"}},
                            [&] { Lineas(marcas, contenido, asunto); });
        Parcelas(marcas, contenido, asunto);
    });
}

const char* Clase(const CMensaje* mensaje)
{
    return mensaje == nullptr ? "ajena" : EsWarning(*mensaje) ? "avi" : "err";
}

void FilaMensaje(CMarcas& marcas, const CContenido& contenido,
                 const CLineasMostradas::CLinea& linea)
{
    const CAviso& aviso = contenido.proceso.registro.avisos[linea.posicion];
    const std::string mapa = contenido.anclas.ALugar(aviso);
    Fila(marcas, {{"id", CAnclas::DeLinea(aviso)}, {"class", Clase(aviso.mensaje)}},
         {{std::to_string(aviso.linea), kNumero},
          {Codigo(aviso)},
          {Numero(aviso.polig), kNumero},
          {Numero(aviso.parcela), kNumero},
          {Texto(aviso.letra)},
          {linea.texto, "texto"},
          {mapa.empty() ? "" : "mapa", nullptr, mapa}});
}

/// The first line of each number that the page shows.
std::map<const CMensaje*, std::string> Primeras(const CContenido& contenido)
{
    std::map<const CMensaje*, std::string> primeras;
    for (const CLineasMostradas::CLinea& linea : contenido.lineas.Lineas()) {
        const CAviso& aviso = contenido.proceso.registro.avisos[linea.posicion];
        primeras.emplace(aviso.mensaje, CAnclas::A(CAnclas::DeLinea(aviso)));
    }
    return primeras;
}

/// A number with its cause and its remedy.
/// \param primera  where its first line stands
void Articulo(CMarcas& marcas, const CMensaje& mensaje, std::int64_t cuantos,
              const std::string& primera)
{
    const std::string codigo(CodigoMensaje(mensaje));
    const CConsejo consejo = DameConsejo(codigo);
    const auto consejoDe = [&](const char* que, const std::string& texto) {
        if (!texto.empty())
            marcas.Bloque("p", {}, [&] { marcas.Elemento("b", {}, que).Texto(" ").Texto(texto); });
    };
    const auto titulo = [&] {
        marcas.Elemento("span", {{"class", "codigo"}}, codigo).Texto(" ").Texto(Enunciado(mensaje));
        marcas.Texto(" ").Elemento("span", {{"class", "cuantos"}}, Miles(cuantos));
        marcas.Texto(" ").Elemento("a", {{"href", primera}, {"data-codigo", codigo}},
                                   cuantos == 1 ? "ver el mensaje" : "ver los mensajes");
    };
    marcas.Bloque("article", {{"class", std::string("numero ") + Clase(&mensaje)}, {"id", codigo}},
                  [&] {
                      marcas.Bloque("h3", {}, titulo);
                      consejoDe("Causa.", consejo.causa);
                      consejoDe("Remedio.", consejo.remedio);
                  });
}

void ArticuloAjenas(CMarcas& marcas, std::int64_t ajenas)
{
    marcas.Bloque("article", {{"class", "numero"}}, [&] {
        marcas.Bloque("h3", {},
                      Cuantos(ajenas, "línea que no es", "líneas que no son") + " ningún mensaje");
        marcas.Elemento("p", {},
                        "El registro fue escrito o cambiado por otro, o está a "
                        "medias.");
    });
}

} // namespace

void SeccionAsuntos(const CContenido& contenido, CMarcas& marcas)
{
    const CAsuntos& asuntos = contenido.asuntos;
    if (asuntos.cuantos == 0)
        return Parrafo(marcas, kCuadra,
                       contenido.proceso.ficheros.sentido == Sentido::Infograf
                           ? "✓ No falta ningún fichero, y cada recinto tiene su padre."
                           : "✓ El registro está vacío: ni errores ni warnings.");
    Parrafo(marcas, kNota,
            "Lo que tiene una misma causa, junto; lo que más cuesta, primero: en superficie, "
            "en registros, en mensajes.");
    marcas.Bloque("ol", {{"class", "asuntos"}}, [&] {
        marcas.Linea();
        for (const CAsunto& asunto : asuntos.mayores)
            PonAsunto(marcas, contenido, asunto);
    });
    PonResto(marcas, asuntos.mayores.size(), static_cast<std::size_t>(asuntos.cuantos),
             ", de menos coste.");
}

void SeccionNumeros(const CContenido& contenido, CMarcas& marcas)
{
    const CRegistroLeido& registro = contenido.proceso.registro;
    const auto primeras = Primeras(contenido);
    for (const CMensaje& mensaje : Catalogo())
        if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
            Articulo(marcas, mensaje, cuantos, primeras.at(&mensaje));
    if (registro.Ajenas() > 0)
        ArticuloAjenas(marcas, registro.Ajenas());
}

void SeccionMensajes(const CContenido& contenido, CMarcas& marcas)
{
    const auto& lineas = contenido.lineas.Lineas();
    const std::size_t total = contenido.proceso.registro.avisos.size();
    if (lineas.size() < total)
        Parrafo(marcas, kNota,
                Miles(lineas.size()) + " de " + Miles(total) + ": los primeros de cada número.");
    marcas.Hecho(kFiltro);
    Tabla(marcas, "lista",
          {{"Línea", true},
           {"Código"},
           {"Polígono", true},
           {"Parcela", true},
           {"Letra"},
           {"Mensaje"},
           {"Mapa"}},
          [&] {
              for (const auto& linea : lineas)
                  FilaMensaje(marcas, contenido, linea);
          });
    PonResto(marcas, lineas.size(), total,
             contenido.csv.empty() ? ", en el registro; --csv los da en una hoja."
                                   : ", en " + contenido.csv + ".");
}

} // namespace informe
