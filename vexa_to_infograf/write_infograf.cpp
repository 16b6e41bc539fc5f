#include "cadastre/file_extensions.h"
#include "cadastre/infograf_record.h"
#include "cadastre/polygon_list.h"
#include "cadastre/table_files.h"
#include "vexa_libs/ccadena.h"
#include "vexa_to_infograf/vexa_a_infograf_dlg.h"

using vexageo::CPunto;
using vexageo::CTopologia;

/// The topologies of one entry of the list, each as far as its file could be opened.
struct CEntradaInfograf {
    std::optional<CTopologia> parcelas;
    std::optional<CTopologia> poligono;
    std::optional<CTopologia> subparcelas;
};

/// Where the records go, and the sheets that name where they lie.
struct CSalidaInfograf {
    CStdioFile& csp;
    const CTopologia& ortos;

    /// Completes the record with what polygon `i` of the topology says, and writes it.
    void Graba(CRegistroInfograf& registro, const CTopologia& topologia, int i) const;
};

namespace {

/// The polygon's point, which stands for it when other polygons are asked what holds it.
CPunto<int> DamePunto(const CTopologia& topologia, int i)
{
    return topologia.DameCentroide(i, true);
}

int DameNumero(const CTopologia& topologia, int i)
{
    return LeeEntero(topologia.DameTextoCentroide(i));
}

/// Sets the parcel and the polygon in which a subparcel lies. False where one of them is to hold it
/// and none does.
bool SituaSubparcela(const CEntradaInfograf& entrada, const CPunto<int>& punto,
                     CRegistroInfograf& registro)
{
    int poligono = -1;
    if (entrada.parcelas) {
        const int parcela = entrada.parcelas->EncuentraPoligono(punto);
        if (parcela < 0)
            return false;
        registro.Parcela = DameNumero(*entrada.parcelas, parcela);
        poligono = entrada.parcelas->GetPadre(parcela);
    } else if (entrada.poligono) {
        poligono = entrada.poligono->EncuentraPoligono(punto);
    }
    if (!entrada.poligono)
        return true;
    if (poligono < 0)
        return false;
    registro.Polig = DameNumero(*entrada.poligono, poligono);
    return true;
}

} // namespace

void CSalidaInfograf::Graba(CRegistroInfograf& registro, const CTopologia& topologia, int i) const
{
    const CPunto<int> punto = DamePunto(topologia, i);
    registro.x = punto.X;
    registro.y = punto.Y;
    registro.area = topologia.DameArea(i);
    if (const int hoja = ortos.EncuentraPoligono(punto); hoja >= 0)
        registro.numOrtofoto = ortos.DameTextoCentroide(hoja);
    registro.Graba(csp);
}

bool CVexaAInfografDlg::GrabaInfograf(CStdioFile* csp, const std::vector<CString>& entradas,
                                      const CString& carpeta)
{
    const CTopologia ortos = LeeOrtos();
    const CSalidaInfograf salida = {*csp, ortos};
    for (const CString& nombre : entradas) {
        CEntradaInfograf entrada;
        if (!LeeEntrada(carpeta, nombre, entrada))
            continue;
        csp->WriteString("00" + FicheroDeLista(carpeta, nombre, "IFG") + "\n");
        if (!GrabaParcelas(entrada, salida) || !GrabaPoligonos(entrada, salida) ||
            !GrabaSubparcelas(entrada, salida))
            return false;
    }
    return true;
}

CTopologia CVexaAInfografDlg::LeeOrtos()
{
    Fase(IDS_LEYENDO_ORTOS);
    CFile bin;
    CFile top;
    CTopologia ortos;
    if (AbreOrtos(bin, top, ArchivoOrtos)) {
        ortos.Read(&bin, &top);
        ortos.OrdenaPoligonos();
        int partidos = 0;
        for (int i = 0; i < ortos.Poligonos(); ++i)
            partidos += ParteFilas(ortos.DameTextoCentroide(i)) ? 1 : 0;
        ObservaDibujo(top, ortos.FaltaAlgo(), bin, partidos);
    }
    return ortos;
}

bool CVexaAInfografDlg::LeeEntrada(const CString& carpeta, const CString& nombre,
                                   CEntradaInfograf& entrada)
{
    ObservaEntradaConPunto(carpeta, nombre);
    CFile bin;
    if (!AbreDibujo(bin, FicheroDeLista(carpeta, nombre, kExtensionDibujo)))
        return false;
    const auto lee = [&](const char* extension, std::optional<CTopologia>& topologia) {
        CFile poligonos;
        if (!AbreDibujo(poligonos, FicheroDeLista(carpeta, nombre, extension)))
            return;
        bin.Seek(0);
        topologia.emplace();
        topologia->Read(&bin, &poligonos);
        ObservaDibujo(poligonos, topologia->FaltaAlgo(), bin, 0);
        topologia->OrdenaPoligonos();
    };
    lee(kExtensionParcelas, entrada.parcelas);
    lee(kExtensionPoligonos, entrada.poligono);
    lee(kExtensionSubparcelas, entrada.subparcelas);
    return true;
}

bool CVexaAInfografDlg::Recorre(UINT fase, const std::optional<CTopologia>& topologia,
                                const std::function<void(int)>& graba)
{
    Fase(fase);
    const int cuantos = topologia ? topologia->Poligonos() : 0;
    for (int i = 0; i < cuantos; ++i) {
        if (!Avanza(static_cast<unsigned>(i), static_cast<unsigned>(cuantos)))
            return false;
        graba(i);
    }
    return true;
}

bool CVexaAInfografDlg::GrabaParcelas(CEntradaInfograf& entrada, const CSalidaInfograf& salida)
{
    return Recorre(IDS_REGISTRANDO_PARCELAS, entrada.parcelas, [&](int i) {
        CTopologia& parcelas = *entrada.parcelas;
        CRegistroInfograf registro(kParcelaInfograf);
        registro.Parcela = DameNumero(parcelas, i);
        m_sinNumero += registro.Parcela > 0 ? 0 : 1;
        if (entrada.poligono) {
            const int poligono = entrada.poligono->EncuentraPoligono(DamePunto(parcelas, i));
            if (poligono < 0) {
                ++m_sueltos;
                return; // its subparcels will be left out with it
            }
            parcelas.SetPadre(i, poligono);
            registro.Polig = DameNumero(*entrada.poligono, poligono);
        }
        salida.Graba(registro, parcelas, i);
    });
}

bool CVexaAInfografDlg::GrabaPoligonos(const CEntradaInfograf& entrada,
                                       const CSalidaInfograf& salida)
{
    return Recorre(IDS_REGISTRANDO_POLIGONOS, entrada.poligono, [&](int i) {
        CRegistroInfograf registro(kPoligonoInfograf);
        registro.Polig = DameNumero(*entrada.poligono, i);
        m_sinNumero += registro.Polig > 0 ? 0 : 1;
        salida.Graba(registro, *entrada.poligono, i);
    });
}

bool CVexaAInfografDlg::GrabaSubparcelas(const CEntradaInfograf& entrada,
                                         const CSalidaInfograf& salida)
{
    return Recorre(IDS_REGISTRANDO_SUBPARCELAS, entrada.subparcelas, [&](int i) {
        const CTopologia& subparcelas = *entrada.subparcelas;
        CRegistroInfograf registro(kSubparcelaInfograf);
        if (!SituaSubparcela(entrada, DamePunto(subparcelas, i), registro)) {
            ++m_sueltos;
            return;
        }
        registro.letras = subparcelas.DameTextoCentroide(i);
        salida.Graba(registro, subparcelas, i);
    });
}
