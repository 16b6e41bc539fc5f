#include "fuzz/way_back.h"

#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "generator/cadastre_lines.h"
#include "generator/drawing_files.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

CVuelta::CVuelta()
{
    Hace([&] {
        const auto municipio = sintetico::Genera({.parcelas = 4, .poligonos = 1}, 7);
        sintetico::GrabaLineas(En("entrada.txt"), sintetico::LineasCatastro(municipio).Todas());
        sintetico::GrabaDibujos(Ruta().string(), municipio);
        AVexa();
    });
    for (const char* salida : kSalidas)
        Pon(salida, kAntes);
}

void CVuelta::AVexa()
{
    CCampivaAVexaDlg().EjecutaLote(En("entrada.txt"), En("Modulos.txt"), En("Titulares.txt"),
                                   En("Parcelas.txt"), En("Subparcelas.txt"), En("Parajes.txt"),
                                   En("Cotitulares.txt"), nullptr);
}

void CVuelta::ACatastro(const CEntrada& entrada)
{
    Ejecuta(entrada, true, [&] {
        CVexaACampiva2Dlg dialogo;
        dialogo.ModificarConcentradas = entrada.Opcion(0) ? 1 : 0;
        dialogo.EjecutaLote(En("Modulos.txt"), En("Titulares.txt"), En("Parcelas.txt"),
                            En("Subparcelas.txt"), En("Parajes.txt"), En("Cotitulares.txt"),
                            En("poligonos.txt"), En("ortos.TOP"), entrada.Opcion(0) ? 1 : 0,
                            entrada.Opcion(1) ? 1 : 0, entrada.Opcion(2) ? 1 : 0, nullptr);
    });
}

void CVuelta::AInfograf(const CEntrada& entrada)
{
    Ejecuta(entrada, false, [&] {
        CVexaAInfografDlg dialogo;
        dialogo.Create(IDD_VEXA_A_INFOGRAF, nullptr);
        dialogo.ArchivoTren = En("poligonos.txt");
        dialogo.ArchivoOrtos = En("ortos.TOP");
        dialogo.UpdateData(false);
        dialogo.SendMessage(WM_COMMAND, IDOK, 0);
    });
}
