#include "cadastre/label_codes.h"
#include "cadastre/wrapping.h"
#include "platform/plain_texts.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/topology.h"
#include "vexa_to_catastro/topology_walk.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;

namespace {

/// Tens of metres, modulo 1000, of a coordinate in hundredths of a metre.
int Recorta(int coordenada)
{
    return coordenada / 1000 % 1000;
}

} // namespace

void CVexaACampiva2Dlg::RegistraParcelas(CStdioFile* log, int* numErrores, int polig,
                                         CMunicipio* municipio, CFile* par, CFile* bin,
                                         CPoligonoEnCurso& poligono, CCruce& cruce)
{
    int sinWarnings = 0; // all that is told here is an error
    const CAvisos avisos{*log, *numErrores, sinWarnings};
    CPoligonoTopologico registro;
    bool dañado = false;
    while (registro.Read(par, &dañado)) {
        double area = registro.Area();
        bool fueraDeFecha = false;
        const bool deParcela =
            LeeParcelaDeRegistro(registro, par, bin, poligono, area, fueraDeFecha);
        if (fueraDeFecha) {
            DiceFueraDeFecha(kParFueraDeFecha, poligono.entrada);
            return;
        }
        const int indice = deParcela ? ParcelaDelRotulo(avisos, polig, poligono.parcela, *municipio)
                                     : kNoEncontrado;
        if (indice < 0)
            continue;
        cruce.ParcelasVistas.push_back(indice);
        AjustaParcela(municipio->DameParcela(indice), registro, area, poligono.rotulo.PrimerPunto(),
                      cruce.ortos);
        if (registro.EsParcela())
            GuardaContorno(registro, bin, poligono);
    }
    ObservaDibujo(*par, dañado, *bin, 0);
}

bool CVexaACampiva2Dlg::LeeParcelaDeRegistro(const CPoligonoTopologico& registro, CFile* par,
                                             CFile* bin, CPoligonoEnCurso& poligono, double& area,
                                             bool& fueraDeFecha)
{
    if (!registro.EsParcela())
        return poligono.parcela >= 0;
    if (!registro.TieneCentroide())
        return false;
    // Before the label is looked at: a polygon that is refused uses its islands up all the same.
    SumaIslas(par, area);
    const Rotulo leido = LeeRotuloDeCodigo(registro, bin, poligono.rotulo, kCodigosDeParcela);
    fueraDeFecha = leido == Rotulo::FueraDeFecha;
    if (leido != Rotulo::Valido)
        return false;
    poligono.parcela = LeeEntero(poligono.rotulo.Texto());
    return true;
}

void CVexaACampiva2Dlg::GuardaContorno(const CPoligonoTopologico& registro, CFile* bin,
                                       CPoligonoEnCurso& poligono)
{
    const auto fueraDeFecha = [&] {
        DiceFueraDeFecha(kParFueraDeFecha, poligono.entrada);
        return true; // the line goes on without the stretch
    };
    CLinea<int> linea("nuevo");
    vexageo::ConstruyeLinea(registro, bin, linea, fueraDeFecha);
    if (vexageo::SonDesmedidos(poligono.LineasParcelas.CantidadVertices(), linea, *bin)) {
        fueraDeFecha();
        linea = CLinea<int>("nuevo");
    }
    const int posicion = static_cast<int>(poligono.LineasParcelas.Cantidad());
    poligono.LineasParcelas.Inserta(linea);
    poligono.TextosParcelas.Inserta(poligono.rotulo);
    if (const double area = linea.Area(100.0); area < kAreaImposible)
        poligono.indice.Añade(poligono.LineasParcelas[static_cast<unsigned>(posicion)]->Puntos(),
                              area, posicion);
}

void CVexaACampiva2Dlg::AjustaParcela(CParcela& parcela, const CPoligonoTopologico& registro,
                                      double area, const CPunto<int>& punto,
                                      const CZonasOrto& ortos)
{
    if (parcela.claveConc == ' ' || ModificarConcentradas != 0)
        parcela.Superficie = Corta((registro.EsIsla() ? parcela.Superficie + area : area) + 0.5);
    parcela.x = Recorta(punto.X);
    parcela.y = Recorta(punto.Y);
    if (const CString* orto = ortos.BuscaOrto(punto)) {
        parcela.numOrtofoto = *orto;
        m_vistas.enHojaSinNombre += SinBlancos(*orto, " ").empty() ? 1 : 0;
    }
}

int CVexaACampiva2Dlg::ParcelaDelRotulo(const CAvisos& avisos, int polig, int numero,
                                        CMunicipio& municipio)
{
    int indice = kNoEncontrado;
    if (municipio.BuscaParcela(polig, numero, indice))
        return indice;
    Avisa(avisos, kParcelaNoEnBase, polig, numero);
    if (ParcelasNoEnBD == 0)
        return kNoEncontrado;
    indice = municipio.InsertaParcela(CParcela(static_cast<short>(polig), numero, 0, {}));
    if (indice < 0) {
        Avisa(avisos, kParcelaNoInsertada, polig, numero);
        ParcelasNoSalvadas = true;
    }
    return indice;
}
