#include "catastro_to_vexa/campiva_a_vexa_dlg.h"
#include "shell/frame/box_texts.h"

// The end of the run, the same after a complete reading and after a stop: the checks of the
// database and the six table files.

void CompruebaBase(CBaseCatastro& base, CStdioFile* log, int* numErrores)
{
    int sinWarnings = 0; // both checks raise errors alone
    const CAvisos avisos{*log, *numErrores, sinWarnings};
    for (const CMunicipio& municipio : base.Municipios()) {
        for (const CParcela& parcela : municipio.Parcelas()) {
            if (parcela.Subparcelas().empty())
                Avisa(avisos, kSinSubparcelas, parcela.Polig, parcela.Parcela);
            else if (parcela.Cotitulares().empty())
                Avisa(avisos, kSinPropietarios, parcela.Polig, parcela.Parcela);
        }
    }
    for (const CMunicipio& municipio : base.Municipios()) {
        for (const CParcela& parcela : municipio.Parcelas()) {
            int superficie = 0;
            int suma = 0;
            parcela.SumaSuperficies(superficie, suma);
            if (superficie != suma)
                Avisa(avisos, kSuperficieDifiere, parcela.Polig, parcela.Parcela, superficie, suma);
        }
    }
}

void CCampivaAVexaDlg::GrabaTablas(CBaseCatastro& base)
{
    base.Ordena();
    const auto graba = [&](const CString& archivo, UINT estado, auto tabla) {
        CStdioFile fichero;
        if (!CreaSalida(fichero, archivo, cajas::kNoSePuedeCrear, {ArchivoEntrada}))
            return;
        Fase(estado);
        (base.*tabla)(fichero, false);
        fichero.Close();
    };
    using B = CBaseCatastro;
    graba(ArchivoTitulares, IDS_GRABANDO_TITULARES, &B::GrabaTitulares);
    graba(ArchivoParcelas, IDS_GRABANDO_PARCELAS, &B::GrabaParcelas);
    graba(ArchivoModulos, IDS_GRABANDO_MODULOS, &B::GrabaModulos);
    graba(ArchivoSubparcelas, IDS_GRABANDO_SUBPARCELAS, &B::GrabaSubparcelas);
    graba(ArchivoParajes, IDS_GRABANDO_PARAJES, &B::GrabaParajes);
    graba(ArchivoCotitulares, IDS_GRABANDO_COTITULARES, &B::GrabaCotitulares);
    ConfirmaSalidas();
}
