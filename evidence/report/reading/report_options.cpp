#include "evidence/report/reading/report_options.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include "evidence/report/reading/log_messages.h"

namespace informe {
namespace {

constexpr struct {
    std::string_view nombre;
    /// What it sets: a name, one more name, or that it is there.
    std::variant<CString COpciones::*, std::vector<CString> COpciones::*, bool COpciones::*> valor;
} kOpciones[] = {
    {"--html", &COpciones::html},
    {"--geojson", &COpciones::geojson},
    {"--csv", &COpciones::csv},
    {"--lista", &COpciones::lista},
    {"--entrada", &COpciones::entrada},
    {"--tablas", &COpciones::tablas},
    {"--ortos", &COpciones::ortos},
    {"--json", &COpciones::json},
    {"--contra", &COpciones::contra},
    {"--cambios", &COpciones::cambios},
    {"--resumen", &COpciones::resumen},
    {"--con", &COpciones::con},
    {"--escrito", &COpciones::escritos},
    {"--detenido", &COpciones::detenido},
    {"--estricto", &COpciones::estricto},
    {"--ensayo", &COpciones::ensayo},
    {"--conserva", &COpciones::conserva},
    {"--crea", &COpciones::crea},
    {"--concentradas", &COpciones::concentradas},
    {"--sin-informes", &COpciones::sinInformes},
};

bool TieneAlgunValor(const COpciones& opciones)
{
    return !opciones.con.empty() || !opciones.escritos.empty() || opciones.detenido ||
           opciones.ensayo || std::ranges::any_of(kOpciones, [&](const auto& opcion) {
               const auto* const nombre = std::get_if<CString COpciones::*>(&opcion.valor);
               return nombre != nullptr && !(opciones.*(*nombre)).IsEmpty();
           });
}

/// What is wrong with a line that asks for the summary of a batch.
std::string ReparaResumen(COpciones opciones)
{
    if (!opciones.registros.empty())
        return "--resumen es de un lote, y no de registros";
    opciones.html = opciones.csv = opciones.json = opciones.resumen = CString();
    const bool deEnsayo = opciones.conserva || opciones.crea || opciones.concentradas;
    return TieneAlgunValor(opciones) || deEnsayo ? "con --resumen sólo caben --html, --csv y --json"
                                                 : "";
}

std::string Repara(const COpciones& opciones)
{
    if (opciones.PorLaSalida() > 1)
        return "por la salida sólo cabe una cosa";
    if (!opciones.resumen.IsEmpty())
        return ReparaResumen(opciones);
    if (opciones.sinInformes)
        return "--sin-informes es de --resumen";
    if (opciones.registros.empty() || // or it comes of a variable that nobody set
        std::ranges::any_of(opciones.registros, &CString::IsEmpty))
        return "falta el nombre de un registro";
    if (opciones.registros.size() > 1 && TieneAlgunValor(opciones))
        return "con varios registros no caben opciones, que son de uno solo";
    if (!opciones.entrada.IsEmpty() && !opciones.lista.IsEmpty())
        return "--entrada es de la ida y --lista de la vuelta: un registro es de una de las dos";
    if (!opciones.cambios.IsEmpty() && opciones.contra.IsEmpty() && !opciones.ensayo)
        return "--cambios da los de --contra o --ensayo, que faltan";
    if (!opciones.ensayo && (opciones.conserva || opciones.crea || opciones.concentradas))
        return "--conserva, --crea y --concentradas son de --ensayo";
    if (opciones.ensayo && (opciones.detenido || !opciones.escritos.empty() ||
                            !(opciones.entrada + opciones.lista).IsEmpty()))
        return "con --ensayo va la lista en lugar del registro, y no hay nada escrito";
    return {};
}

/// Takes the option that stands at `i`, and its value.
bool TomaOpcion(std::span<const std::string> argumentos, std::size_t& i, COpciones& opciones,
                std::string& queja)
{
    const std::string& argumento = argumentos[i];
    const auto* const suya =
        std::ranges::find(kOpciones, argumento, [](const auto& opcion) { return opcion.nombre; });
    if (suya == std::end(kOpciones)) {
        queja = "no hay opción " + argumento;
        return false;
    }
    if (const auto* const marca = std::get_if<bool COpciones::*>(&suya->valor)) {
        opciones.*(*marca) = true;
        return true;
    }
    // What looks like an option is the next one, and no name of a file.
    if (i + 1 == argumentos.size() || argumentos[i + 1].empty() ||
        (argumentos[i + 1].starts_with('-') && argumentos[i + 1] != "-")) {
        queja = "a " + argumento + " le falta su nombre";
        return false;
    }
    const std::string& valor = argumentos[++i];
    if (const auto* const varios = std::get_if<std::vector<CString> COpciones::*>(&suya->valor)) {
        (opciones.*(*varios)).emplace_back(valor);
        return true;
    }
    CString& uno = opciones.*std::get<CString COpciones::*>(suya->valor);
    if (!uno.IsEmpty()) {
        queja = argumento + " está dos veces";
        return false;
    }
    uno = valor;
    return true;
}

} // namespace

bool COpciones::DicenDeUnProceso() const
{
    return !con.empty() || !escritos.empty() || detenido ||
           !(entrada + lista + tablas + ortos + geojson).IsEmpty();
}

std::ptrdiff_t COpciones::PorLaSalida() const
{
    std::vector<CString> salidas = Otras();
    salidas.push_back(html);
    return std::ranges::count(salidas, CString(kEstandar));
}

const char* const kUso = R"(Uso: campiva-informe [OPCIONES] REGISTRO.ERR ...
     campiva-informe --resumen TRABAJOS.resultados [OPCIONES]

Escribe de cada registro de errores una página HTML con lo que dice del proceso:
qué se leyó y qué se escribió, el balance de lo que entró y lo que salió, los
mensajes reunidos por asuntos y, en la vuelta, un mapa de cada polígono. En el
terminal da el resumen por número de mensaje.

Sin opciones busca lo que es del registro: junto a él, la entrada de su mismo
nombre (ida) o la lista que nombra el municipio (vuelta); las tablas, junto a
la entrada o a la lista.

  --html F         la página; si no, REGISTRO.html junto al registro
  --csv F          todos los mensajes, en una hoja (UTF-8, con punto y coma)
  --json F         lo que dice la página, para otros programas; su forma está en
                   report.schema.json
  --geojson F      los recintos de los dibujos y los mensajes, con su sitio
  --entrada F      el fichero de Catastro o la relación que leyó la ida
  --lista F        la lista de polígonos de la vuelta
  --tablas CARPETA la carpeta de las seis tablas: Modulos.txt, Titulares.txt,
                   Parcelas.txt, Subparcelas.txt, Parajes.txt, Cotitulares.txt
  --ortos F        el gráfico de las ortofotos (.TOP o .BIN)
  --contra F       compara lo que dejó el proceso con otro estado del municipio: un
                   fichero de Catastro, un fichero R o una carpeta de tablas. En
                   lugar del registro puede ir otro estado, sin más proceso
  --cambios F      todos los cambios de --contra o --ensayo, en una hoja
  --ensayo         hace la vuelta aparte, con Modificar, y dice lo que cambiaría en
                   las tablas; no cambia nada. En lugar del registro va la lista
  --conserva       el ensayo conserva las parcelas que no están en el gráfico
  --crea           el ensayo crea las que sólo están en el gráfico
  --concentradas   el ensayo da a las concentradas la superficie del gráfico
  --con F          otro fichero que leyó o escribió el proceso; qué es, se ve
                   en él. Puede ir varias veces
  --escrito F      lo mismo, de un fichero que escribió el proceso
  --detenido       el proceso no llegó a escribir más que el registro
  --estricto       acaba con 3 si se perdió superficie, o algo sin mensaje, o algo
                   queda sin explicar o sin comprobar, porque el proceso se detuvo
                   o falta un fichero. Los errores del registro no cuentan
  --resumen DIR    una página y una hoja de todos los trabajos de campiva-lote,
                   con un informe de cada uno
  --sin-informes   sin los informes de cada uno; enlaza los que ya hay
  --help           esto
  --version        la versión

El resumen pone primero lo peor: lo que falló, lo que nadie explica, lo que se
perdió, los errores. Queda en DIR: resumen.html, resumen.csv, y los informes en
informes/N.html. --html y --csv les dan otro nombre, --json lo da para programas.

Las opciones son de un solo registro, menos --estricto. Un guion es la salida
estándar, que entonces no lleva resumen; si va a ella otra cosa que la página,
no hay página sin --html. Como registro es la entrada estándar; de qué proceso
es lo dicen --entrada o --lista.

Estado de salida: 0, hecho; 1, algo no se pudo leer o escribir; 2, la línea no
se entiende; 3, lo dicho de --estricto.
)";

std::optional<COpciones> LeeOpciones(std::span<const std::string> argumentos, std::string& queja)
{
    COpciones opciones;
    bool soloNombres = false;
    for (std::size_t i = 0; i < argumentos.size(); ++i) {
        const std::string& argumento = argumentos[i];
        if (soloNombres || !argumento.starts_with('-') || argumento == "-") {
            opciones.registros.emplace_back(argumento);
        } else if (argumento == "--") {
            soloNombres = true;
        } else if (argumento == "--help" || argumento == "--version") {
            using enum COpciones::Pide;
            opciones.pide = argumento == "--help" ? Ayuda : Version;
            return opciones;
        } else if (!TomaOpcion(argumentos, i, opciones, queja)) {
            return std::nullopt;
        }
    }
    queja = Repara(opciones);
    if (!queja.empty())
        return std::nullopt;
    return opciones;
}

} // namespace informe
