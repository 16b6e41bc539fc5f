#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

#include <memory>
#include <utility>

#include "cadastre/file_extensions.h"
#include "cadastre/messages.h"
#include "shell/frame/box_texts.h"

CTraduccionDlg::CDescripcion CVexaACampiva2Dlg::Describe()
{
    return {"VexaACampiva2", m_campos, m_busquedas};
}

int CVexaACampiva2Dlg::EjecutaLote(const CString& modulos, const CString& titulares,
                                   const CString& parcelas, const CString& subparcelas,
                                   const CString& parajes, const CString& cotitulares,
                                   const CString& tren, const CString& ortos, int modificar,
                                   int noEnGrafico, int noEnBD, CWnd* padre)
{
    CreaParaLote(padre);
    ArchivoModulos = modulos;
    ArchivoTitulares = titulares;
    ArchivoParcelas = parcelas;
    ArchivoSubparcelas = subparcelas;
    ArchivoParajes = parajes;
    ArchivoCotitulares = cotitulares;
    ArchivoTren = tren;
    ArchivoOrtos = ortos;
    Modificar = modificar;
    ParcelasNoEnGrafico = noEnGrafico;
    ParcelasNoEnBD = noEnBD;
    EjecutaEnLote();
    return 1;
}

std::vector<CString> CVexaACampiva2Dlg::OrdenDeEnsayo()
{
    UpdateData(true);
    std::vector<CString> orden = {"--ensayo"};
    for (const CString& tabla : {ArchivoModulos, ArchivoTitulares, ArchivoParcelas,
                                 ArchivoSubparcelas, ArchivoParajes, ArchivoCotitulares})
        if (!tabla.IsEmpty())
            orden.insert(orden.end(), {"--con", tabla});
    if (!ArchivoOrtos.IsEmpty())
        orden.insert(orden.end(), {"--ortos", ArchivoOrtos});
    for (const auto& [marcada, opcion] :
         {std::pair(ParcelasNoEnGrafico, "--conserva"), std::pair(ParcelasNoEnBD, "--crea"),
          std::pair(ModificarConcentradas, "--concentradas")})
        if (marcada != 0)
            orden.emplace_back(opcion);
    orden.push_back(ArchivoTren);
    return orden;
}

void CVexaACampiva2Dlg::OnOK()
{
    UpdateData(true);
    EmpiezaProceso(Entradas());
    CStdioFile lista;
    if (!AbreEntrada(lista, ArchivoTren))
        return;
    m_vistas = {};
    lista.ReadString(m_vistas.primera);
    lista.Close();
    m_vistas.cabecera = LeeCabeceraLista(m_vistas.primera);
    const CCabeceraLista& cabecera = m_vistas.cabecera;
    const auto registros = std::make_shared<CBaseCatastro>(cabecera.Ger);
    CBaseCatastro& base = *registros;
    const int indice = base.InsertaMunicipio(CMunicipio(cabecera.Mun, 0));
    const auto salida = [&](const char* extension) {
        return FicheroDeLista(CCadena(ArchivoTren).DamePath(), cabecera.nombreSalida, extension);
    };
    std::vector<CString> salidas = {salida(kExtensionR), salida(kExtensionM)};
    if (Modificar != 0)
        salidas.insert(salidas.end(), {ArchivoParcelas, ArchivoSubparcelas});
    if (!CreaLog(salida(kExtensionRegistro), Entradas(), salidas))
        return;

    int numErrores = 0;
    int numWarnings = 0;
    ActivaControles(false);
    ParcelasNoSalvadas = false;
    const bool cruzado =
        CruzaGraficoConBase(&Log(), &numErrores, &numWarnings, &base.DameMunicipio(indice));
    Log().Close();
    if (cruzado) {
        ObservaFilas();
        ObservaEntradas();
        base.Ordena();
        const CString resumen = Resumen(base, cabecera.Mun, numErrores, numWarnings);
        if (GrabaSalida(base, salida(kExtensionR), salida(kExtensionM)))
            Despide(resumen);
    }
    Suelta(registros);
    AcabaProceso();
}

std::vector<CString> CVexaACampiva2Dlg::Entradas() const
{
    return {ArchivoTren,        ArchivoTitulares, ArchivoParcelas,    ArchivoModulos,
            ArchivoSubparcelas, ArchivoParajes,   ArchivoCotitulares, ArchivoOrtos};
}

bool CVexaACampiva2Dlg::GrabaSalida(CBaseCatastro& base, const CString& nombreR,
                                    const CString& nombreM)
{
    constexpr bool kFijo = true;
    CStdioFile r;
    if (!CreaSalida(r, nombreR, cajas::kNoSeCrea, Entradas()))
        return false;
    base.GrabaTitulares(r, kFijo);
    base.GrabaParcelas(r, kFijo);
    base.GrabaCotitulares(r, kFijo);
    base.GrabaSubparcelas(r, kFijo);
    base.GrabaParajes(r, kFijo);
    ObservaDesbordes(r, nombreR);
    r.Close();
    if (CStdioFile m; CreaSalida(m, nombreM, cajas::kNoSeCrea, Entradas())) {
        base.GrabaModulos(m, kFijo);
        ObservaDesbordes(m, nombreM);
        m.Close();
    }
    if (Modificar != 0)
        ModificaTablas(base);
    ConfirmaSalidas();
    return true;
}

void CVexaACampiva2Dlg::ModificaTablas(CBaseCatastro& base)
{
    constexpr bool kFijo = false;
    if (CStdioFile parcelas; CreaSalida(parcelas, ArchivoParcelas, cajas::kNoSeSalvanParcelas)) {
        base.GrabaParcelas(parcelas, kFijo);
        parcelas.Close();
    }
    if (CStdioFile subparcelas;
        CreaSalida(subparcelas, ArchivoSubparcelas, cajas::kNoSeSalvanSubparcelas)) {
        base.GrabaSubparcelas(subparcelas, kFijo);
        subparcelas.Close();
    }
}

CString CVexaACampiva2Dlg::Resumen(const CBaseCatastro& base, short mun, int numErrores,
                                   int numWarnings)
{
    CString resumen;
    resumen.Format(kResumenVexa, base.Ger, mun, base.NumParcelas(), base.NumTitulares(), numErrores,
                   numWarnings);
    return resumen;
}

void CVexaACampiva2Dlg::Despide(const CString& resumen)
{
    CajaDeCierre(resumen);
    if (ParcelasNoSalvadas)
        CajaError(cajas::kAlgunasNoSalvadas);
}
