#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "cadastre/polygon_list.h"
#include "shell/frame/box_texts.h"

CTraduccionDlg::CDescripcion CVexaAInfografDlg::Describe()
{
    return {"VexaAInfograf", m_campos, m_busquedas, false};
}

void CVexaAInfografDlg::OnOK()
{
    UpdateData(true);
    EmpiezaProceso({ArchivoTren, ArchivoOrtos});
    CStdioFile lista;
    if (!AbreEntrada(lista, ArchivoTren))
        return;
    CString primera;
    lista.ReadString(primera);
    const CString nombreSalida = LeeCabeceraLista(primera).nombreSalida;
    std::vector<CString> entradas;
    for (CString linea; lista.ReadString(linea);)
        entradas.push_back(EntradaDeLista(linea));
    lista.Close();

    const CString carpeta = CCadena(ArchivoTren).DamePath();
    const CString salida = FicheroDeLista(carpeta, nombreSalida, kExtensionInfograf);
    const std::vector<CString> fuentes = {ArchivoTren, ArchivoOrtos};
    CStdioFile csp;
    // Nothing is written to the log, which is the way back's, too; whoever collects a run's files
    // looks for it.
    if (!CreaLog(FicheroDeLista(carpeta, nombreSalida, kExtensionRegistro), fuentes, {salida},
                 Registro::SiempreVacio) ||
        !CreaSalida(csp, salida, cajas::kNoSeCrea, fuentes))
        return;
    // The way back's page bears the log's name.
    NombraInforme(CFile::RutaCompleta(carpeta + nombreSalida + "_infograf.html"));
    ObservaLista(ArchivoTren, primera, EntradasConNombre(entradas));
    SospechaCuentas({{EntradasDeMas(entradas), observaciones::kPoligonosDeMas}}, ArchivoTren);
    ActivaControles(false);
    m_sueltos = 0;
    m_sinNumero = 0;
    GrabaInfograf(&csp, entradas, carpeta);
    SospechaCuentas({{m_sueltos, observaciones::kRecintosSueltos},
                     {m_sinNumero, observaciones::kRecintosSinNumero}},
                    ArchivoTren);
    Log().Close();
    ObservaDesbordes(csp, salida);
    csp.Close();
    ConfirmaSalidas();
    AcabaProceso();
}
