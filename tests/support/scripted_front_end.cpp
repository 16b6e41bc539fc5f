#include "tests/support/scripted_front_end.h"

#include "platform/ansi.h"
#include "platform/html_help.h"
#include "resources/program_resources.h"
#include "resources/resource_ids.h"

void CGuion::MuestraModal(CDialog& dialogo)
{
    if (alMostrar)
        alMostrar(dialogo);
}

void CGuion::AtiendeUno(CDialog& dialogo)
{
    ++atendidos;
    if (alAtender)
        alAtender(dialogo, atendidos);
}

int CGuion::Caja(const CString& texto, const CString& titulo, UINT flags)
{
    cajas.push_back({ansi::AUtf8(titulo), ansi::AUtf8(texto), flags});
    const UINT tipo = flags & MB_TYPEMASK;
    if (tipo != MB_YESNO && tipo != MB_RETRYCANCEL)
        return IDOK;
    if (respuestas.empty())
        return tipo == MB_YESNO ? IDYES : IDCANCEL;
    const int respuesta = respuestas.front();
    respuestas.erase(respuestas.begin());
    return respuesta;
}

bool CGuion::EligeFichero(CFileDialog& dialogo)
{
    filtros = ansi::AUtf8(dialogo.Filtros());
    flagsFichero = dialogo.Flags();
    if (fichero.IsEmpty())
        return false;
    dialogo.SetPathName(fichero);
    return true;
}

void CGuion::Refleja(const CDialog& dialogo, const CControl& control)
{
    if (control.Id() == IDC_ESTADO)
        if (const std::string estado = ansi::AUtf8(control.GetWindowText());
            estados.empty() || estados.back() != estado)
            estados.push_back(estado);
    if (alReflejar)
        alReflejar(dialogo, control);
}

void CGuion::InicioDeProceso(const CDialog& /*dialogo*/)
{
    escritos = {};
}

void CGuion::FinDeProceso(const CDialog& /*dialogo*/, const CEscritos& suyos)
{
    escritos = suyos;
}

bool CGuion::MuestraAyuda(const CString& ficheroAyuda)
{
    ayudas.push_back(ansi::AUtf8(ficheroAyuda));
    return true;
}

bool CGuion::MuestraAyudaControl(const CString& temas, const HH_POPUP& popup)
{
    ayudas.push_back(ansi::AUtf8(temas) + "#" + std::to_string(popup.idString) + " at " +
                     std::to_string(popup.pt.x) + "," + std::to_string(popup.pt.y) + " on " +
                     std::to_string(popup.clrBackground));
    return true;
}

CAplicacionPrueba::CAplicacionPrueba()
{
    SetRegistryKey("VexaSoft");
    Arranca(guion, RecursosDelPrograma(), {}, "campiva.chm");
    ReadResourceInformation();
}
