#include "catastro_to_vexa/campiva_a_vexa_dlg.h"

#include <algorithm>
#include <memory>

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "catastro_to_vexa/input_check.h"
#include "shell/frame/box_texts.h"
#include "vexa_libs/ccadena.h"

namespace {

/// What is said of an input whatever form it was read as.
constexpr struct {
    SospechaEntrada que;
    const char* observacion;
} kObservaciones[] = {
    {SospechaEntrada::Vacia, observaciones::kVacia},
    {SospechaEntrada::SoloRetornos, observaciones::kSoloRetornos},
    {SospechaEntrada::ConMarca, observaciones::kConMarca},
    {SospechaEntrada::EsUtf16, observaciones::kEnUtf16},
    {SospechaEntrada::LineasLargas, observaciones::kLineasLargas},
    {SospechaEntrada::LineasCortas, observaciones::kLineasCortas},
};

bool NadaLeido(const CBaseCatastro& base)
{
    return std::all_of(base.Municipios().begin(), base.Municipios().end(), [](const CMunicipio& m) {
        return m.Titulares().empty() && m.Parcelas().empty() && m.Modulos().empty() &&
               m.Parajes().empty();
    });
}

} // namespace

CCampivaAVexaDlg::CCampivaAVexaDlg() : CTraduccionDlg(IDD_CAMPIVA_A_VEXA)
{
    PonValoresIniciales();
}

void CCampivaAVexaDlg::PonValoresIniciales()
{
    ArchivoModulos = "Modulos.txt";
    ArchivoParajes = "Parajes.txt";
    ArchivoParcelas = "Parcelas.txt";
    ArchivoSubparcelas = "Subparcelas.txt";
    ArchivoTitulares = "Titulares.txt";
    ArchivoCotitulares = "Cotitulares.txt";
    TipoEntrada = 0;
}

CTraduccionDlg::CDescripcion CCampivaAVexaDlg::Describe()
{
    return {"CampivaAVexa", m_campos, m_busquedas};
}

int CCampivaAVexaDlg::EjecutaLote(const CString& entrada, const CString& modulos,
                                  const CString& titulares, const CString& parcelas,
                                  const CString& subparcelas, const CString& parajes,
                                  const CString& cotitulares, CWnd* padre)
{
    CreaParaLote(padre);
    ArchivoEntrada = entrada;
    ArchivoModulos = modulos;
    ArchivoTitulares = titulares;
    ArchivoParcelas = parcelas;
    ArchivoSubparcelas = subparcelas;
    ArchivoParajes = parajes;
    ArchivoCotitulares = cotitulares;
    EjecutaEnLote();
    return 1;
}

void CCampivaAVexaDlg::OnOK()
{
    UpdateData(true);
    const std::vector<CString> tablas = {ArchivoTitulares,   ArchivoParcelas, ArchivoModulos,
                                         ArchivoSubparcelas, ArchivoParajes,  ArchivoCotitulares};
    std::vector<CString> ficheros = tablas;
    ficheros.push_back(ArchivoEntrada);
    EmpiezaProceso(ficheros);
    CStdioFile entrada;
    if (!AbreEntrada(entrada, ArchivoEntrada))
        return;
    CCadena archivoErr = ArchivoEntrada;
    archivoErr.CambiaExtension(kExtensionRegistro);
    if (!CreaLog(archivoErr, {ArchivoEntrada}, tablas))
        return;

    int numErrores = 0;
    int numWarnings = 0;
    m_lineas = CMiraLineas(TipoEntrada);
    m_vista = {};
    const auto registros = std::make_shared<CBaseCatastro>(0);
    CBaseCatastro& base = *registros;
    ActivaControles(false);
    if (TipoEntrada == 0)
        LeeArchivoNormal(base, &entrada, &Log(), &numErrores, &numWarnings);
    else
        LeeListaSubparcelas(base, &entrada, &Log(), &numErrores, &numWarnings);
    ObservaEntrada(entrada, base);
    entrada.Close();
    CompruebaBase(base, &Log(), &numErrores);
    Log().Close();
    CString resumen; // made while nothing has changed yet
    resumen.Format(kResumenCatastro, static_cast<int>(base.Municipios().size()), base.NumParcelas(),
                   base.NumTitulares(), numErrores, numWarnings);
    GrabaTablas(base);
    CajaDeCierre(resumen);
    Suelta(registros);
    AcabaProceso();
}

void CCampivaAVexaDlg::ObservaEntrada(CStdioFile& entrada, const CBaseCatastro& base)
{
    if (m_vista.deOtroUltimo > 0)
        Sospecha(observaciones::kOtraUltima, ArchivoEntrada, m_vista.deOtroUltimo, m_vista.ultimo);
    SospechaCuentas({{m_lineas.ConTabulador(), observaciones::kTabuladores},
                     {m_vista.parten, observaciones::kCaracteresQueParten},
                     {m_vista.campos.pasan, observaciones::kNumerosQuePasan},
                     {m_vista.parajesDeOtro, observaciones::kParajesDeOtro},
                     {base.ParcelasFaltasDeTitular(), observaciones::kFaltanTitulares}},
                    ArchivoEntrada);
    if (base.NumParcelas() == 0 && base.NumTitulares() > 0)
        Sospecha(observaciones::kSinParcelas, ArchivoEntrada);
    SospechaEntrada sospecha = MiraEntrada(entrada, TipoEntrada);
    if (sospecha == SospechaEntrada::OtraForma && !NadaLeido(base))
        sospecha = SospechaEntrada::Ninguna; // its records stand further down
    for (const auto& [que, observacion] : kObservaciones)
        if (que == sospecha)
            Sospecha(observacion, ArchivoEntrada);
    if (sospecha == SospechaEntrada::OtraForma)
        Sospecha(TipoEntrada == 0 ? observaciones::kNoEsIntercambio : observaciones::kNoEsRelacion,
                 ArchivoEntrada);
    else if (sospecha == SospechaEntrada::Ninguna || sospecha == SospechaEntrada::LineasCortas)
        ObservaLineas();
    else if (sospecha == SospechaEntrada::LineasLargas) // whose pieces begin as no record does
        SospechaPagina(m_lineas.Pagina(), ArchivoEntrada);
}

void CCampivaAVexaDlg::ObservaLineas()
{
    SospechaCuentas({{m_lineas.DeOtraGer(), observaciones::kLineasDeOtraGer},
                     {m_lineas.SinTipo(), observaciones::kLineasSinTipo},
                     {m_lineas.ConFines(), observaciones::kLineasConFines},
                     {m_lineas.Dobles(), observaciones::kLineasDobles},
                     {m_vista.campos.conResto, observaciones::kNumerosConResto},
                     {m_vista.titularesDeOtro, observaciones::kQuedanSinNumero},
                     {m_vista.sinReferencia, observaciones::kParcelasSinReferencia},
                     {m_vista.conOtrosDatos, observaciones::kParcelasConOtrosDatos},
                     {m_vista.sinSuTitular, observaciones::kSubparcelasSinTitular}},
                    ArchivoEntrada);
    if (m_lineas.Cortada())
        Sospecha(observaciones::kEntradaCortada, ArchivoEntrada);
    SospechaPagina(m_lineas.Pagina(), ArchivoEntrada);
}
