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

void PonAsunto(CMarcas& marcas, const CContenido& contenido, const CAsunto& asunto)
{
    const std::string mapa = contenido.anclas.AParcela(asunto.polig, asunto.parcela);
    marcas.Bloque("li", {{"class", asunto.errores > 0 ? "err" : "avi"}}, [&] {
        marcas.Elemento("b", {}, asunto.titulo);
        if (!mapa.empty()) {
            marcas.Texto(" ");
            Enlace(marcas, mapa, "en el mapa");
        }
        marcas.Suelto("br");
        if (asunto.mensajes > 1)
            marcas.Texto(Miles(asunto.mensajes) + " mensajes: ");
        Cuentas(marcas, asunto);
        marcas.Elemento("span", {{"class", "lineas"}}, [&] { Lineas(marcas, contenido, asunto); });
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

/// A number with its cause and its remedy.
void Articulo(CMarcas& marcas, const CMensaje& mensaje, std::int64_t cuantos)
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
    PonSeccion(marcas, seccion::kAsuntos, [&] {
        if (asuntos.cuantos == 0)
            return Parrafo(marcas, kCuadra, "✓ El registro está vacío: ni errores ni warnings.");
        Parrafo(marcas, kNota,
                "Los mensajes que tienen una misma causa, juntos; los que más dan, primero.");
        marcas.Bloque("ol", {{"class", "asuntos"}}, [&] {
            marcas.Linea();
            for (const CAsunto& asunto : asuntos.mayores)
                PonAsunto(marcas, contenido, asunto);
        });
        if (const auto resto = asuntos.cuantos - static_cast<std::int64_t>(asuntos.mayores.size());
            resto > 0)
            Parrafo(marcas, kNota, "y " + Miles(resto) + " más, de menos mensajes.");
    });
}

void SeccionNumeros(const CContenido& contenido, CMarcas& marcas)
{
    const CRegistroLeido& registro = contenido.proceso.registro;
    PonSeccion(marcas, seccion::kNumeros, [&] {
        for (const CMensaje& mensaje : Catalogo())
            if (const std::int64_t cuantos = registro.Cuenta(mensaje.numero); cuantos > 0)
                Articulo(marcas, mensaje, cuantos);
        if (registro.Ajenas() > 0)
            ArticuloAjenas(marcas, registro.Ajenas());
    });
}

void SeccionMensajes(const CContenido& contenido, CMarcas& marcas)
{
    const auto& lineas = contenido.lineas.Lineas();
    const auto total = static_cast<std::int64_t>(contenido.proceso.registro.avisos.size());
    const auto dichas = static_cast<std::int64_t>(lineas.size());
    PonSeccion(marcas, seccion::kMensajes, [&] {
        if (lineas.empty())
            return Parrafo(marcas, kCuadra, "✓ Ninguno.");
        if (dichas < total)
            Parrafo(marcas, kNota,
                    Miles(dichas) + " de " + Miles(total) + ": los primeros de cada número.");
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
        if (dichas < total)
            Parrafo(marcas, kNota,
                    "y " + Miles(total - dichas) + " más, " +
                        (contenido.csv.empty() ? "en el registro; --csv los da en una hoja"
                                               : "en " + contenido.csv) +
                        ".");
    });
}

} // namespace informe
