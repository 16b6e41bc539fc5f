#include <cstdint>

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "fuzz/work_bench.h"

// The first translation. Option 0 asks for a list of subparcels with holders; the only piece is the
// input file.

namespace {

constexpr const char* kTablas[] = {"Modulos.txt",     "Titulares.txt", "Parcelas.txt",
                                   "Subparcelas.txt", "Parajes.txt",   "Cotitulares.txt"};

class CIda : public CBanco {
public:
    CIda()
    {
        for (const char* tabla : kTablas)
            Pon(tabla, kAntes);
    }
    void Prueba(const CEntrada& entrada)
    {
        Pon("entrada.txt", entrada.Trozo(0));
        Ejecuta(entrada, true, [&] {
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
        });
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t n)
{
    static CIda banco;
    banco.Prueba(CEntrada({reinterpret_cast<const char*>(bytes), n}));
    return 0;
}
