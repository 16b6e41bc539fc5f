#include "cadastre/label_codes.h"
#include "cadastre/wrapping.h"
#include "vexa_libs/ccadena.h"
#include "vexa_libs/topology.h"
#include "vexa_to_catastro/topology_walk.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

/// Tens of metres, modulo 1000, of a coordinate in hundredths of a metre.
int Recorta(int coordenada)
{
    return coordenada / 1000 - coordenada / 1000000 * 1000;
}

/// Keeps the boundary of a parcel and, in step with it, its label and number.
void GuardaContorno(const CPoligonoTopologico& registro, const CTexto<int>& rotulo, int numero,
                    CFile* bin, CPoligonoEnCurso& poligono,
                    const std::function<bool()>& fueraDeFecha)
{
    CLinea<int> linea("nuevo");
    vexageo::ConstruyeLinea(registro, bin, linea, fueraDeFecha);
    if (vexageo::SonDesmedidos(poligono.LineasParcelas.CantidadVertices(), linea, *bin)) {
        fueraDeFecha();
        linea = CLinea<int>("nuevo");
    }
    const int posicion = static_cast<int>(poligono.LineasParcelas.Cantidad());
    poligono.LineasParcelas.Inserta(linea);
    poligono.TextosParcelas.Inserta(rotulo);
    poligono.numeros.push_back(numero);
    if (const double area = linea.Area(100.0); area < kAreaImposible)
        poligono.indice.Añade(poligono.LineasParcelas[static_cast<unsigned>(posicion)]->Puntos(),
                              area, posicion);
}

} // namespace

void CVexaACampiva2Dlg::RegistraParcelas(CStdioFile* log, int* numErrores, int polig,
                                         CMunicipio* municipio, CFile* par, CFile* bin,
                                         CPoligonoEnCurso& poligono, CVistas& vistas)
{
    int sinWarnings = 0; // all that is told here is an error
    const CAvisos avisos{*log, *numErrores, sinWarnings};
    const auto fueraDeFecha = [&] {
        CajaError(kParFueraDeFecha, poligono.entrada);
        return true;
    };
    int numero = -1; // the last one read from a label: a record that is no parcel goes on with it
    CTexto<int> rotulo("nuevo");
    CPoligonoTopologico registro;
    while (registro.Read(par)) {
        double area = registro.Area();
        if (registro.EsParcela()) {
            if (!registro.TieneCentroide())
                continue;
            // Before the label is looked at: a polygon that is refused uses its islands up all the
            // same.
            SumaIslas(par, area);
            const Rotulo leido = LeeRotuloDeCodigo(registro, bin, rotulo, {kCodigoParcela});
            if (leido == Rotulo::FueraDeFecha) {
                fueraDeFecha();
                return;
            }
            if (leido == Rotulo::Ajeno)
                continue;
            numero = LeeEntero(rotulo.Texto());
        } else if (numero < 0) {
            continue;
        }
        const int indice = ParcelaDelRotulo(avisos, polig, numero, *municipio);
        if (indice < 0)
            continue;
        vistas.ParcelasVistas.push_back(indice);
        AjustaParcela(municipio->DameParcela(indice), registro, area, rotulo.PrimerPunto());
        if (registro.EsParcela())
            GuardaContorno(registro, rotulo, numero, bin, poligono, fueraDeFecha);
    }
}

void CVexaACampiva2Dlg::AjustaParcela(CParcela& parcela, const CPoligonoTopologico& registro,
                                      double area, const CPunto<int>& punto) const
{
    if (parcela.claveConc == ' ' || ModificarConcentradas != 0)
        parcela.Superficie = Corta((registro.EsIsla() ? parcela.Superficie + area : area) + 0.5);
    parcela.x = Recorta(punto.X);
    parcela.y = Recorta(punto.Y);
    if (const CString* orto = m_ortos.BuscaOrto(punto))
        parcela.numOrtofoto = *orto;
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
