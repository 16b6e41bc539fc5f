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
    using B = CBaseCatastro;
    const struct {
        const CString& archivo;
        UINT estado;
        void (*graba)(B& base, CStdioFile& fichero);
    } tablas[] = {
        {ArchivoTitulares, IDS_GRABANDO_TITULARES,
         [](B& b, CStdioFile& f) { b.GrabaTitulares(f, false); }},
        {ArchivoParcelas, IDS_GRABANDO_PARCELAS,
         [](B& b, CStdioFile& f) { b.GrabaParcelas(f, false); }},
        {ArchivoModulos, IDS_GRABANDO_MODULOS,
         [](B& b, CStdioFile& f) { b.GrabaModulos(f, false); }},
        {ArchivoSubparcelas, IDS_GRABANDO_SUBPARCELAS,
         [](B& b, CStdioFile& f) { b.GrabaSubparcelas(f, false); }},
        {ArchivoParajes, IDS_GRABANDO_PARAJES,
         [](B& b, CStdioFile& f) { b.GrabaParajes(f, false); }},
        {ArchivoCotitulares, IDS_GRABANDO_COTITULARES,
         [](B& b, CStdioFile& f) { b.GrabaCotitulares(f, false); }},
    };
    for (const auto& tabla : tablas) {
        CStdioFile fichero;
        if (!CreaSalida(fichero, tabla.archivo, cajas::kNoSePuedeCrear, {ArchivoEntrada}))
            continue;
        Fase(tabla.estado);
        tabla.graba(base, fichero);
        fichero.Close();
    }
    ConfirmaSalidas();
}
