#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <vector>

#include "fuzz/terminal.h"
#include "fuzz/way_back.h"
#include "platform/files/cfile.h"
#include "platform/files/set_healing.h"
#include "platform/html_help.h"
#include "platform/system.h"
#include "platform/terminal/terminal_front_end.h"
#include "resources/program_resources.h"
#include "shell/campiva_app.h"
#include "shell/command_line.h"
#include "shell/exit_status.h"
#include "shell/start_up.h"
#include "tests/support/files.h"
#include "vexa_libs/ccadena.h"

// The program at a terminal, and the texts that it takes from its user and finds beside it. The
// pieces are the stored settings, what is typed, the file with the texts of the help, a value
// to be stored, the command line, its tokens parted by tabs, a diary, and the terminal's columns.
// Option 0 has somebody type at it, 1 has it show what is told; 2 and 3 together name the pager.
// The user stops a run by Ctrl-C.

namespace {

namespace fs = std::filesystem;

constexpr UINT kMasColumnas = 200;
constexpr const char* kPaginadores[] = {"", "cat", "no-hay-tal-programa", "true"};

/// The front end with a user who presses Ctrl-C at one of a run's ticks.
class CFrontalConUsuario : public CFrontalTerminal {
public:
    explicit CFrontalConUsuario(int parada) : m_parada(parada) {}
    bool AlguienContesta() const override { return true; }
    void AtiendeUno(CDialog& dialogo) override
    {
        CFrontalTerminal::AtiendeUno(dialogo);
        if (++m_vez == m_parada)
            std::raise(SIGINT);
    }

private:
    int m_parada;
    int m_vez = 0;
};

/// Takes Ctrl-C from the fuzzer, which has a handler of its own, as long as it lives. Where the
/// program has none a key that comes too late changes nothing.
class CTeclaParar {
public:
    CTeclaParar() : m_antes(std::signal(SIGINT, SIG_DFL)) {}
    CTeclaParar(const CTeclaParar&) = delete;
    CTeclaParar& operator=(const CTeclaParar&) = delete;
    ~CTeclaParar() { std::signal(SIGINT, m_antes); }

private:
    void (*m_antes)(int);
};

/// No name leads out of the folder.
std::string SinCarpetas(std::string_view texto)
{
    std::string suyo(texto);
    std::replace(suyo.begin(), suyo.end(), '/', '_');
    return suyo;
}

/// Nor does one look like that of an output in the making.
std::string SinRestos(std::string_view texto)
{
    std::string suyo = SinCarpetas(texto);
    std::replace(suyo.begin(), suyo.end(), '~', '_');
    return suyo;
}

class CTerminal : public CVuelta {
public:
    CTerminal()
    {
        sistema::PreparaFlujos();
        fs::create_directories(m_ajustes.parent_path());
    }

    void Prueba(const CEntrada& entrada)
    {
        const CEnCarpeta carpeta(Ruta());
        PonAjustes(entrada);
        PruebaAjustes(entrada);
        PruebaTextos(entrada.Trozo(2));
        PruebaDiario(entrada.Trozo(5));
        PonAjustes(entrada);
        Teclea(entrada);
    }

private:
    void PonAjustes(const CEntrada& entrada) const
    {
        std::ofstream(m_ajustes, std::ios::binary) << SinRestos(entrada.Trozo(0));
    }

    /// What is stored is read again, what can't be stored stays, and nothing else has changed.
    void PruebaAjustes(const CEntrada& entrada)
    {
        constexpr const char* kSeccion = "CampivaAVexa";
        constexpr const char* kClave = "ArchivoEntrada";
        CVersionApp& aplicacion = Aplicacion();
        const CString valor = entrada.Trozo(3);
        const CString antes = aplicacion.GetProfileString(kSeccion, kClave, "no está");
        const CString otro = aplicacion.GetProfileString("VexaACampiva2", "ArchivoTren", {});
        const int numero = aplicacion.GetProfileInt("VexaACampiva2", "TipoEntrada", -1);
        bool guardado = false;
        {
            const CTropiezo tropiezo(entrada);
            guardado = aplicacion.WriteProfileString(kSeccion, kClave, valor) != 0;
        }
        if (entrada.Fallo() != 0)
            SanaConjuntos({m_ajustes.string()});
        const std::string_view texto = valor;
        const bool unaLinea = texto.find_first_of("\r\n") == std::string_view::npos;
        Exige(guardado ? unaLinea : !unaLinea || entrada.Fallo() != 0,
              "a value of one line can be stored");
        const CString ahora = aplicacion.GetProfileString(kSeccion, kClave, "no está");
        const bool conNulo = texto.find('\0') != std::string_view::npos; // no name has one
        Exige(guardado ? conNulo || ahora == valor : ahora == antes,
              "what was stored is read again, and else what was there");
        Exige(aplicacion.GetProfileString("VexaACampiva2", "ArchivoTren", {}) == otro &&
                  aplicacion.GetProfileInt("VexaACampiva2", "TipoEntrada", -1) == numero,
              "other values stay");
    }

    static void PruebaTextos(std::string_view textos)
    {
        for (const UINT id : {1U, 1003U, 1010U, 4294967295U}) {
            const std::string_view tema = TextoDeTema(textos, id);
            Exige(tema.find("\n.topic 1003\n") == std::string_view::npos,
                  "a text ends where the next one begins");
        }
        const auto [fichero, interior] = ParteTemas(textos);
        Exige(std::string_view(interior).find("::") == std::string_view::npos,
              "the last mark parts a name");
    }

    /// Whatever a diary says, the folder is healed behind it.
    void PruebaDiario(std::string_view diario)
    {
        if (diario.empty())
            return;
        std::ofstream("Parcelas.txt.~antes") << kAntes;
        std::ofstream("Titulares.txt.~conjunto", std::ios::binary) << SinCarpetas(diario);
        SanaConjuntos({"entrada.txt"});
        CompruebaRestos();
    }

    /// The whole program on the commands, each run in this folder.
    void Teclea(const CEntrada& entrada)
    {
        Pon("Ayuda IDC.txt", entrada.Trozo(2));
        Pon("campiva.txt", entrada.Trozo(2));
        setenv("PAGER", kPaginadores[entrada.Opciones() / 4], 1);
        const CString columnas = entrada.Trozo(6);
        const auto ancho = static_cast<int>(static_cast<UINT>(LeeEntero(columnas)) % kMasColumnas);
        int estado = 0;
        {
            const CTeclaParar parada;
            const CFlujos flujos({entrada.Opcion(0), entrada.Opcion(1), ancho},
                                 SinRestos(entrada.Trozo(1)), "tecleado");
            const CTropiezo tropiezo(entrada);
            estado = Programa(entrada);
        }
        Exige((estado >= 0 && estado <= 2) || estado == estado::kDetenido,
              "the exit status is one of those that are told");
        if (entrada.Fallo() != 0)
            SanaConjuntos({"entrada.txt", m_ajustes.string()});
        CompruebaRestos();
    }

    /// What the program's start does. Gives its exit status.
    static int Programa(const CEntrada& entrada)
    {
        const std::vector<std::string> argumentos = Argumentos(SinRestos(entrada.Trozo(4)));
        if (const auto estado = AtiendeOpcion(argumentos))
            return *estado;
        CFrontalConUsuario frontal(entrada.Parada());
        CCampivaApp aplicacion;
        aplicacion.Arranca(frontal, RecursosDelPrograma(),
                           UneArgumentos(std::span(argumentos).subspan(1)), "campiva.HLP");
        return ConSalida(EstadoSalida(aplicacion));
    }

    /// The program's name and the tokens; a zero is a tab inside one.
    static std::vector<std::string> Argumentos(std::string linea)
    {
        std::vector<std::string> argumentos = {"campiva"};
        while (!linea.empty()) {
            const std::size_t fin = std::min(linea.find('\t'), linea.size());
            std::string& argumento = argumentos.emplace_back(linea.substr(0, fin));
            std::replace(argumento.begin(), argumento.end(), '\0', '\t');
            linea.erase(0, fin + 1);
        }
        return argumentos;
    }

    /// Names come from the input, so outputs may be anywhere in the folder; unfinished ones never.
    void CompruebaRestos()
    {
        for (const fs::directory_entry& fichero : fs::directory_iterator(Ruta())) {
            const std::string nombre = fichero.path().filename().string();
            Exige(nombre.find(".~") == std::string::npos, "nothing unfinished is left:", nombre);
            if (fichero.is_regular_file())
                Repon(nombre);
        }
    }

    fs::path m_ajustes = Ruta() / "config" / "VexaSoft" / "Campiva.ini";
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CTerminal banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
