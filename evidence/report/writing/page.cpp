#include <set>
#include <utility>
#include <vector>

#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_files.h"
#include "evidence/report/writing/page_parts.h"
#include "evidence/report/writing/svg_map.h"

namespace informe {
namespace {

const char* NombreSentido(Sentido sentido)
{
    constexpr const char* kNombres[] = {
        "Proceso sin identificar: no se halló ni su entrada ni su lista", "Ida: de Catastro a Vexa",
        "Vuelta: de Vexa a Catastro", "A Infograf: de Vexa a Infograf"};
    return kNombres[static_cast<std::size_t>(sentido)];
}

/// What went to Infograf, and what didn't.
void CifrasDeInfograf(CMarcas& marcas, const CEvidenciaInfograf& infograf)
{
    std::int64_t registros = 0;
    for (const CEvidenciaInfograf::CClase& clase : infograf.clases)
        registros += clase.registros;
    std::set<CString> incompletos; // of one drawing several files may lack something
    for (const CEvidenciaInfograf::CFaltan& falta : infograf.faltan)
        incompletos.insert(falta.entrada);
    Cifra(marcas, incompletos.size(), "dibujo que no está entero", "dibujos que no están enteros",
          "err");
    Cifra(marcas, infograf.sinPadre.size(), "recinto sin padre", "recintos sin padre", "err");
    Cifra(marcas, registros, "registro", "registros", "");
}

/// What a technician looks for first: surface that doesn't count, then errors, warnings, and what
/// nothing explains.
void Cifras(CMarcas& marcas, const CContenido& contenido)
{
    const CProceso& proceso = contenido.proceso;
    marcas.Bloque("ul", {{"class", "cifras"}}, [&] {
        marcas.Linea();
        for (const CContenido::CPerdida& perdida : contenido.Perdidas())
            Cifra(marcas, perdida.metros == 0, Superficie(perdida.metros), perdida.que, "err");
        if (proceso.ficheros.sentido == Sentido::Infograf) {
            CifrasDeInfograf(marcas, proceso.infograf);
        } else {
            Cifra(marcas, proceso.registro.Errores(), "error", "errores", "err");
            Cifra(marcas, proceso.registro.Warnings(), "warning", "warnings", "avi");
        }
        Cifra(marcas, contenido.SinExplicar(), "sin explicar", "sin explicar", "err");
        Cifra(marcas, contenido.asuntos.cuantos, "asunto", "asuntos", "");
    });
}

void SeccionMapas(const CContenido& contenido, CMarcas& marcas)
{
    PonLeyenda(marcas, contenido.contraste != nullptr);
    for (const CMapaHecho& mapa : contenido.mapas)
        marcas.Bloque("article", {{"class", "poligono"}, {"id", mapa.ancla}},
                      [&] { marcas.Elemento("h3", {}, mapa.titulo).Linea().Hecho(mapa.marcas); });
}

struct CSeccion {
    const char* ancla;
    const char* enlace; ///< what the link to it says
    const char* titulo;
    bool hay; ///< it has something to say
    void (*pon)(const CContenido& contenido, CMarcas& marcas);
};

/// The sections that have something to say, in their order.
std::vector<CSeccion> Secciones(const CContenido& contenido)
{
    const bool hayMensajes = contenido.HayMensajes();
    std::vector<CSeccion> secciones = {
        {"cambios", "Cambios", "Cambios", contenido.contraste != nullptr, SeccionCambios},
        {"asuntos", "Asuntos", "Asuntos", true, SeccionAsuntos},
        {"balance", "Balance", "Balance", true, SeccionBalance},
        {"mapas", "Mapas", "Mapas", !contenido.mapas.empty(), SeccionMapas},
        {"numeros", "Por número", "Por número de mensaje", hayMensajes, SeccionNumeros},
        {"mensajes", "Mensajes", "Mensajes", hayMensajes, SeccionMensajes},
        {"ficheros", "Ficheros", "Ficheros", true, SeccionFicheros},
    };
    std::erase_if(secciones, [](const CSeccion& una) { return !una.hay; });
    return secciones;
}

void Indice(CMarcas& marcas, const std::vector<CSeccion>& secciones)
{
    marcas.Bloque("nav", {}, [&] {
        const char* entre = "";
        for (const CSeccion& una : secciones) {
            marcas.Texto(std::exchange(entre, " "));
            Enlace(marcas, CAnclas::A(una.ancla), una.enlace);
        }
    });
}

void Cabecera(CMarcas& marcas, const CContenido& contenido, const std::vector<CSeccion>& secciones)
{
    const CFicheros& ficheros = contenido.proceso.ficheros;
    marcas.Linea().Bloque("p", {{"class", "sobre"}},
                          contenido.ensayo ? "Ensayo: no se ha cambiado nada"
                                           : "Informe del proceso");
    marcas.Bloque("h1", {}, Texto(ficheros.base));
    marcas.Bloque("p", {{"class", "sentido"}}, NombreSentido(ficheros.sentido));
    Cifras(marcas, contenido);
    if (const std::string alarma = contenido.proceso.Alarma(); !alarma.empty())
        Parrafo(marcas, kAlarma, alarma);
    for (const std::string& frase : contenido.proceso.observado)
        Parrafo(marcas, kAlarma, frase);
    Indice(marcas, secciones);
}

void Cuerpo(CMarcas& marcas, const CContenido& contenido)
{
    const std::vector<CSeccion> secciones = Secciones(contenido);
    marcas.Linea().Bloque("header", {}, [&] { Cabecera(marcas, contenido, secciones); });
    marcas.Bloque("main", {}, [&] {
        marcas.Linea();
        for (const CSeccion& una : secciones)
            PonSeccion(marcas, una.ancla, una.titulo, [&] { una.pon(contenido, marcas); });
    });
    PonPie(marcas, contenido.firma);
    Guion(marcas, kGuionOrden);
    Guion(marcas, kGuion);
    if (!contenido.mapas.empty())
        Guion(marcas, kGuionMapas);
}

} // namespace

void EscribePagina(const CContenido& contenido, const CEscribe& escribe)
{
    EscribeDocumento(escribe, "Informe de " + Texto(contenido.proceso.ficheros.base),
                     contenido.contraste == nullptr ? "" : kEstiloCambios,
                     [&](CMarcas& marcas) { Cuerpo(marcas, contenido); });
}

} // namespace informe
