#include <string_view>

#include "cadastre/file_extensions.h"
#include "cadastre/polygon_list.h"
#include "vexa_to_catastro/vexa_a_campiva2_dlg.h"

// The matching of the drawings with the database: its stages, and the walk of the polygons.

bool CVexaACampiva2Dlg::CruzaGraficoConBase(CStdioFile* log, int* numErrores, int* numWarnings,
                                            CMunicipio* municipio)
{
    const CAvisos avisos{*log, *numErrores, *numWarnings};
    CCruce cruce;
    std::vector<CString> entradas;
    if (!LeeParajes(log, numErrores, numWarnings, municipio) ||
        !LeeModulos(log, numErrores, numWarnings, municipio) ||
        !LeeTitulares(log, numErrores, numWarnings, municipio) ||
        !LeeParcelas(log, numErrores, numWarnings, municipio) ||
        !LeeSubparcelas(log, numErrores, numWarnings, municipio) ||
        !LeeCotitulares(log, numErrores, numWarnings, municipio) || !LeeOrtos(cruce.ortos) ||
        !LeeListaPoligonos(entradas) || !RecorrePoligonos(entradas, avisos, *municipio, cruce))
        return false;
    m_vistas.faltasDeTitular = municipio->ParcelasFaltasDeTitular();
    CompruebaGrafico(log, numErrores, municipio, cruce.ParcelasVistas, cruce.SubparcelasVistas);
    CompruebaSuperficies(log, numErrores, numWarnings, municipio);
    return true;
}

bool CVexaACampiva2Dlg::LeeListaPoligonos(std::vector<CString>& entradas)
{
    Fase(IDS_LEYENDO_POLIGONOS);
    CStdioFile lista;
    if (!AbreEntrada(lista, ArchivoTren))
        return false;
    CString linea;
    lista.ReadString(linea); // the municipality's, used already
    while (lista.ReadString(linea))
        entradas.push_back(EntradaDeLista(linea));
    m_vistas.poligonos = EntradasConNombre(entradas);
    return true;
}

bool CVexaACampiva2Dlg::RecorrePoligonos(const std::vector<CString>& entradas,
                                         const CAvisos& avisos, CMunicipio& municipio,
                                         CCruce& cruce)
{
    for (std::size_t i = 0; i < entradas.size(); ++i) {
        if (!Avanza(i + 1, entradas.size()))
            return false;
        CruzaPoligono(entradas[i], avisos, municipio, cruce);
    }
    return true;
}

void CVexaACampiva2Dlg::CruzaPoligono(const CString& entrada, const CAvisos& avisos,
                                      CMunicipio& municipio, CCruce& cruce)
{
    const auto nombre = [&](const char* extension) {
        return FicheroDeLista(CCadena(ArchivoTren).DamePath(), entrada, extension);
    };
    CFile bin;
    CFile topologia;
    ObservaEntradaConPunto(CCadena(ArchivoTren).DamePath(), entrada);
    if (!AbreDibujo(bin, nombre(kExtensionDibujo)) ||
        !AbreDibujo(topologia, nombre(kExtensionParcelas)))
        return;
    const int polig = LeeEntero(entrada);
    CPoligonoEnCurso poligono;
    poligono.entrada = entrada;
    RegistraParcelas(&avisos.log, &avisos.numErrores, polig, &municipio, &topologia, &bin, poligono,
                     cruce);
    topologia.Close();
    if (AbreDibujo(topologia, nombre(kExtensionSubparcelas)))
        RegistraSubparcelas(&avisos.log, &avisos.numErrores, &avisos.numWarnings, polig, &municipio,
                            &topologia, &bin, poligono, cruce);
}
