#include <cstdint>
#include <optional>

#include <unistd.h>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "fuzz/work_bench.h"
#include "platform/files/safe_replacement.h"
#include "platform/files/side_names.h"

// The first translation. Option 0 asks for a list of subparcels with holders; the others together
// tell what stands where one of the tables goes. The only piece is the input file.

namespace {

namespace fs = std::filesystem;

constexpr const char* kTablas[] = {"Modulos.txt",     "Titulares.txt", "Parcelas.txt",
                                   "Subparcelas.txt", "Parajes.txt",   "Cotitulares.txt"};
constexpr const char* kTabla = kTablas[1];
constexpr const char* kLejos = "lejos.txt";

/// What stands there, by the number that an input gives it.
enum class Sitio {
    Fichero,
    Enlace,
    EnlaceANada,
    EnlaceASiMismo,
    Carpeta,
    Aparato,
    Ocupado,
    DeOtro
};

class CIda : public CBanco {
public:
    CIda()
    {
        for (const char* tabla : kTablas)
            Pon(tabla, kAntes);
    }
    void Prueba(const CEntrada& entrada)
    {
        const auto sitio = static_cast<Sitio>(entrada.Opciones() / 2);
        Pon("entrada.txt", entrada.Trozo(0));
        PonSitio(sitio);
        const fs::file_type tipo = fs::symlink_status(Ruta() / kTabla).type();
        Ejecuta(entrada, true, [&] {
            std::optional<CReemplazo> otroPrograma;
            sistema::Error error;
            if (sitio == Sitio::Ocupado)
                otroPrograma.emplace().Abre(En(kTabla), lado::Marca(), error);
            Traduce(entrada);
            if (sitio == Sitio::Ocupado && entrada.Fallo() == 0)
                Exige(Guion().escritos.salidas.empty(), "what another one writes stays his");
        });
        Exige(fs::symlink_status(Ruta() / kTabla).type() == tipo,
              "links, folders and devices stay what they are");
    }

private:
    void PonSitio(Sitio sitio)
    {
        if (sitio == m_sitio)
            return;
        m_sitio = sitio;
        Quita(kTabla);
        Quita(kLejos);
        const fs::path tabla = Ruta() / kTabla;
        switch (sitio) {
        case Sitio::Enlace:
            Pon(kLejos, kAntes);
            [[fallthrough]];
        case Sitio::EnlaceANada:
            return fs::create_symlink(kLejos, tabla);
        case Sitio::EnlaceASiMismo:
            return fs::create_symlink(kTabla, tabla);
        case Sitio::Carpeta:
            fs::create_directory(tabla);
            return;
        case Sitio::Aparato:
            return fs::create_symlink("/dev/null", tabla);
        default:
            Pon(kTabla, kAntes);
        }
        constexpr uid_t kOtro = 65533;
        if (sitio == Sitio::DeOtro && chown(tabla.c_str(), kOtro, kOtro) != 0)
            m_sitio = Sitio::Fichero; // only an administrator gives files away
    }

    void Traduce(const CEntrada& entrada)
    {
        CCampivaAVexaDlg dialogo;
        dialogo.Create(IDD_CAMPIVA_A_VEXA, nullptr);
        dialogo.ArchivoEntrada = En("entrada.txt");
        dialogo.ArchivoModulos = En(kTablas[0]);
        dialogo.ArchivoTitulares = En(kTablas[1]);
        dialogo.ArchivoParcelas = En(kTablas[2]);
        dialogo.ArchivoSubparcelas = En(kTablas[3]);
        dialogo.ArchivoParajes = En(kTablas[4]);
        dialogo.ArchivoCotitulares = En(kTablas[5]);
        dialogo.TipoEntrada = entrada.Opcion(0) ? 1 : 0;
        dialogo.UpdateData(false);
        dialogo.SendMessage(WM_COMMAND, IDOK, 0);
    }

    Sitio m_sitio = Sitio::Fichero;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CIda banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
