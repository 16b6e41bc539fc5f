#include "cadastre/table_files.h"
#include "shell/frame/box_texts.h"
#include "vexa_libs/topology.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The loading of the orthophoto sheets.

using vexageo::CLinea;
using vexageo::CPoligonoTopologico;
using vexageo::CTexto;

namespace {

constexpr const char* kSinNombre = "  "; // of a sheet without a centroid

/// Reads what a record says of its sheet. False where the topology is out of date.
bool LeeHoja(const CPoligonoTopologico& hoja, CFile* bin, CLinea<int>& linea, CTexto<int>& texto)
{
    if (!vexageo::ConstruyeLinea(hoja, bin, linea, [] { return false; }))
        return false;
    if (hoja.TieneCentroide())
        return vexageo::LeeRotulo(hoja, bin, texto);
    texto.SetTexto(kSinNombre);
    texto.Puntos().assign(1, hoja.PuntoInterior());
    return true;
}

} // namespace

bool CVexaACampiva2Dlg::LeeOrtos(CZonasOrto& ortos)
{
    Fase(IDS_LEYENDO_ORTOS);
    CFile bin;
    CFile top;
    if (!AbreOrtos(bin, top, ArchivoOrtos))
        return true;
    CPoligonoTopologico hoja;
    bool dañado = false;
    int partidos = 0;
    while (hoja.Read(&top, &dañado)) {
        if (!Avanza(top.GetPosition(), top.GetLength()))
            return false;
        if (hoja.EsIsla())
            continue;
        CLinea<int> linea("nuevo");
        CTexto<int> texto("nuevo");
        if (!LeeHoja(hoja, &bin, linea, texto) ||
            vexageo::SonDesmedidos(ortos.LineasOrtos.CantidadVertices(), linea, bin)) {
            CajaError(cajas::kOrtosFueraDeFecha);
            return false;
        }
        partidos += ParteFilas(texto.Texto()) ? 1 : 0;
        ortos.Inserta(linea, texto);
    }
    ObservaDibujo(top, dañado, bin, partidos);
    return true;
}
