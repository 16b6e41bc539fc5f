#include "evidence/report/reading/bounds.h"
#include "evidence/report/reading/text.h"
#include "evidence/report/writing/page_parts.h"

// What was run, and its balance.

namespace informe {
namespace {

void FilaFichero(CMarcas& marcas, const CFicheroVisto& visto)
{
    const char* const clase = visto.hay && !visto.viejo ? nullptr : "mal";
    if (!visto.hay) {
        marcas.Bloque("tr", {{"class", clase}}, [&] {
            marcas.Elemento("td", {}, visto.papel);
            marcas.Elemento("td", {{"class", "nombre"}}, Texto(visto.nombre));
            marcas.Elemento("td", {{"colspan", 3}}, "no está");
        });
        return;
    }
    const std::string fecha = visto.fecha ? Fecha(*visto.fecha) : std::string();
    Fila(marcas, {{"class", clase}},
         {{visto.papel},
          {Texto(visto.nombre), "nombre"},
          {Miles(visto.largo), kNumero},
          {fecha + (visto.viejo ? " " : ""),
           nullptr,
           {},
           visto.viejo ? "más viejo que el registro" : nullptr},
          {Hexadecimal(visto.crc), "suma"}});
}

/// The first files of a side, and all that aren't there: those are why somebody looks.
void TablaFicheros(CMarcas& marcas, const std::vector<CFicheroVisto>& vistos, bool salidas)
{
    std::vector<const CFicheroVisto*> dichos;
    std::size_t suyos = 0;
    for (const CFicheroVisto& visto : vistos)
        if (visto.salida == salidas) {
            ++suyos;
            if (!visto.hay || dichos.size() < topes::kFicheros)
                dichos.push_back(&visto);
        }
    if (dichos.empty())
        return;
    marcas.Bloque("h3", {}, salidas ? "Escribe" : "Lee");
    Tabla(marcas, nullptr, {{"Qué es"}, {"Fichero"}, {"Bytes", true}, {"Fecha"}, {"CRC-32"}}, [&] {
        for (const CFicheroVisto* visto : dichos)
            FilaFichero(marcas, *visto);
    });
    PonResto(marcas, dichos.size(), suyos, ", que están.");
}

/// One side of a part. What didn't happen needs no line, but the first one is what is counted.
void Columna(CMarcas& marcas, const char* titulo, const std::vector<CPartida::CRenglon>& renglones)
{
    const auto lineas = [&] {
        marcas.Linea();
        std::size_t dichos = 0;
        for (const CPartida::CRenglon& renglon : renglones)
            if (dichos == 0 || renglon.cuantos != 0) {
                Fila(marcas, {{"class", renglon.EsPerdida() ? "callado" : nullptr}},
                     {{renglon.texto}, {Miles(renglon.cuantos), kNumero}});
                ++dichos;
            }
        if (dichos > 1)
            Fila(marcas, {{"class", "suma"}},
                 {{"suma"}, {Miles(CPartida::Suma(renglones)), kNumero}});
    };
    marcas.Bloque("table", {{"class", "partida"}}, [&] {
        marcas.Elemento("caption", {}, titulo);
        marcas.Elemento("tbody", {}, lineas);
    });
}

/// What a part comes to, in a word.
void Dictamen(CMarcas& marcas, const CPartida& partida)
{
    const auto parrafo = [&](const char* clase, const std::string& texto) {
        marcas.Elemento("p", {{"class", clase}}, texto);
    };
    const std::int64_t sinExplicar = partida.SinExplicar();
    if (!partida.SePuedeDecir())
        return parrafo(kAlarma, "No se puede comprobar: " + partida.noSePuede + ".");
    if (!partida.reparo.empty())
        return parrafo(kAlarma, "✕ " + partida.reparo + ".");
    if (sinExplicar == 0)
        return parrafo(kCuadra, "✓ Cuadra: sin explicar, 0.");
    std::string texto = "✕ sin explicar: " + Miles(sinExplicar);
    for (std::size_t i = 0; i < partida.ejemplos.size(); ++i)
        texto += (i == 0 ? ": " : ", ") + partida.ejemplos[i];
    if (static_cast<std::size_t>(partida.faltan + partida.sobran) > partida.ejemplos.size() &&
        !partida.ejemplos.empty())
        texto += " …";
    parrafo(kAlarma, texto);
}

void PonPartida(CMarcas& marcas, const CPartida& partida)
{
    const auto columnas = [&] {
        Columna(marcas, "Entra", partida.entra);
        if (partida.SePuedeDecir())
            Columna(marcas, "Sale", partida.sale);
    };
    marcas.Bloque("article", {{"class", "partidas"}}, [&] {
        marcas.Bloque("h3", {}, partida.Titulo());
        marcas.Elemento("div", {}, columnas);
        Dictamen(marcas, partida);
    });
}

} // namespace

void SeccionFicheros(const CContenido& contenido, CMarcas& marcas)
{
    for (const bool salidas : {false, true})
        TablaFicheros(marcas, contenido.proceso.vistos, salidas);
}

void SeccionBalance(const CContenido& contenido, CMarcas& marcas)
{
    const CBalance& balance = contenido.proceso.balance;
    for (const std::string& nota : balance.notas)
        Parrafo(marcas, kNota, nota);
    for (const CPartida& partida : balance.partidas)
        PonPartida(marcas, partida);
    if (balance.HayPerdidas())
        marcas.Bloque("p", {{"class", "nota"}}, [&] {
            marcas.Texto("Con ")
                .Elemento("b", {}, "▸")
                .Texto(", lo que se perdió sin que ningún mensaje lo diga.");
        });
    PonDibujo(contenido, marcas);
    PonInfograf(contenido, marcas);
}

} // namespace informe
