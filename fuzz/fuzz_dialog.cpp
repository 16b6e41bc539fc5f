#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <fstream>

#include "fuzz/way_back.h"
#include "platform/cfile.h"
#include "platform/html_help.h"
#include "platform/output_set.h"
#include "platform/settings.h"
#include "platform/terminal/terminal_front_end.h"
#include "resources/resources.h"
#include "shell/campiva_app.h"

// The program at a terminal, and the texts that it takes from its user and finds beside it. The
// pieces are the stored settings, what is typed, the file with the texts of the controls, a value
// to be stored, and the command line, its tokens parted by tabs.

namespace {

namespace fs = std::filesystem;

/// Works in a folder as long as it lives.
class CEnCarpeta {
public:
    explicit CEnCarpeta(const fs::path& carpeta) : m_antes(fs::current_path())
    {
        fs::current_path(carpeta);
    }
    CEnCarpeta(const CEnCarpeta&) = delete;
    CEnCarpeta& operator=(const CEnCarpeta&) = delete;
    ~CEnCarpeta() { fs::current_path(m_antes); }

private:
    fs::path m_antes;
};

/// No name leads out of the folder.
std::string SinCarpetas(std::string_view texto)
{
    std::string suyo(texto);
    std::replace(suyo.begin(), suyo.end(), '/', '_');
    return suyo;
}

class CTerminal : public CVuelta {
public:
    CTerminal() { fs::create_directories(m_ajustes.parent_path()); }

    void Prueba(const CEntrada& entrada)
    {
        const CEnCarpeta carpeta(Ruta());
        PonAjustes(entrada);
        PruebaAjustes(entrada.Trozo(3));
        PruebaTextos(entrada.Trozo(2));
        PruebaDiario(entrada.Trozo(5));
        PonAjustes(entrada);
        Teclea(entrada);
    }

private:
    void PonAjustes(const CEntrada& entrada) const
    {
        std::ofstream(m_ajustes, std::ios::binary) << SinCarpetas(entrada.Trozo(0));
    }

    /// What is stored is read again, and nothing else has changed.
    static void PruebaAjustes(std::string_view valor)
    {
        CAlmacenAjustes almacen("VexaSoft", "Campiva");
        const auto otro = almacen.Lee("VexaACampiva2", "ArchivoTren");
        const CAjuste ajuste{"CampivaAVexa", "ArchivoEntrada", valor};
        try {
            almacen.Escribe({&ajuste, 1});
        } catch (const CFileException&) {
            Exige(valor.find_first_of("\r\n") != std::string_view::npos,
                  "a value of one line can be stored");
            return;
        }
        const auto leido = almacen.Lee(ajuste.seccion, ajuste.clave);
        const bool conNulo = valor.find('\0') != std::string_view::npos; // no name has one
        Exige(leido && (conNulo || *leido == ajuste.valor), "what was stored is read again");
        Exige(almacen.Lee("VexaACampiva2", "ArchivoTren") == otro, "other values stay");
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
        CConjuntoSalidas::Sana({"entrada.txt"});
        CompruebaRestos();
    }

    /// The whole program on the commands, each run in this folder.
    void Teclea(const CEntrada& entrada)
    {
        Pon("Ayuda IDC.txt", entrada.Trozo(2));
        Pon("tecleado", SinCarpetas(entrada.Trozo(1)));
        Exige(std::freopen("tecleado", "rb", stdin) != nullptr, "the commands can be read");
        CFrontalTerminal frontal;
        CCampivaApp aplicacion;
        aplicacion.Arranca(frontal, RecursosDelPrograma(), SinCarpetas(entrada.Trozo(4)),
                           "campiva.HLP");
        CompruebaRestos();
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
