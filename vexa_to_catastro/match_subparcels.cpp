#include "cadastre/label_codes.h"
#include "cadastre/table_files.h"
#include "cadastre/wrapping.h"
#include "vexa_to_catastro/topology_walk.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

constexpr double kMetros = 0.01; // in a hundredth of a metre

} // namespace

void CVexaACampiva2Dlg::RegistraSubparcelas(CStdioFile* log, int* numErrores, int* numWarnings,
                                            int polig, CMunicipio* municipio, CFile* sub,
                                            CFile* bin, const CPoligonoEnCurso& poligono,
                                            CCruce& cruce)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    CTexto<int> rotulo("nuevo");
    CPoligonoTopologico registro;
    bool dañado = false;
    int partidos = 0;
    while (registro.Read(sub, &dañado)) {
        double area = registro.Area();
        if (!registro.EsParcela() || !registro.TieneCentroide())
            continue;
        SumaIslas(sub, area);
        const Rotulo leido = LeeRotuloDeCodigo(registro, bin, rotulo, kCodigosDeSubparcela);
        if (leido == Rotulo::FueraDeFecha) {
            DiceFueraDeFecha(kSubFueraDeFecha, poligono.entrada);
            return;
        }
        if (leido == Rotulo::Ajeno)
            continue;
        const CString letra = LetraDelRotulo(rotulo.Texto());
        partidos += ParteFilas(letra) ? 1 : 0;
        const CPunto<int> punto = rotulo.PrimerPunto();
        const int numero = poligono.ParcelaEn(punto);
        if (numero < 0) {
            Avisa(avisos, kSubparcelaFuera, letra, punto.X * kMetros, punto.Y * kMetros);
            continue;
        }
        int indice = kNoEncontrado;
        if (!municipio->BuscaParcela(polig, numero, indice))
            continue; // of a polygon whose number no parcel can have
        CParcela& parcela = municipio->DameParcela(indice);
        if (parcela.BuscaSubparcela(letra, 0) < 0) {
            Avisa(avisos, kSubparcelaNoEnBase, polig, numero, letra);
            bool repetida = false;
            parcela.InsertaSubparcela(CSubparcela(letra), repetida);
        }
        AjustaSubparcelas(avisos, parcela, indice, letra, area, cruce);
    }
    ObservaDibujo(*sub, dañado, *bin, partidos);
}

void CVexaACampiva2Dlg::AjustaSubparcelas(const CAvisos& avisos, CParcela& parcela, int indice,
                                          const CString& letra, double area, CCruce& cruce) const
{
    const int primera = parcela.BuscaSubparcela(letra, 0);
    const bool abstracta = parcela.DameSubparcela(primera).tipo == kTipoAbstracta;
    const bool concentrada = parcela.claveConc != ' ' && ModificarConcentradas == 0;
    double suma = 0;
    for (int i = primera; i >= 0; i = parcela.BuscaSubparcela(letra, i + 1)) {
        CSubparcela& subparcela = parcela.DameSubparcela(i);
        suma += subparcela.superfic;
        if (!abstracta && !concentrada)
            subparcela.superfic = Corta(area + 0.5);
        cruce.SubparcelasVistas.push_back({indice, i});
    }
    if (const int diferencia = Corta(suma - area); abstracta && diferencia != 0)
        Avisa(avisos, kAbstractaDifiere, parcela.Polig, parcela.Parcela, letra, diferencia);
}
