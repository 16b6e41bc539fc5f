#include "evidence/gis/reading/read_dataset.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "evidence/gis/complaints.h"
#include "evidence/gis/names.h"
#include "platform/ansi.h"

namespace {

/// Tells whether a file begins as a list does: the municipality's numbers in their columns.
bool PareceLista(const GDALOpenInfo& que)
{
    constexpr std::size_t kDesde = 5;
    constexpr std::size_t kCifras = 6;
    const std::string_view principio(reinterpret_cast<const char*>(que.pabyHeader), // NOLINT
                                     static_cast<std::size_t>(que.nHeaderBytes));
    const std::string_view numeros =
        principio.size() < kDesde ? std::string_view() : principio.substr(kDesde, kCifras);
    return numeros.size() == kCifras &&
           numeros.find_first_not_of("0123456789 ") == std::string_view::npos &&
           principio.find('\n') != std::string_view::npos &&
           principio.find('\0') == std::string_view::npos;
}

/// Gives up a share of a reference.
struct CSuelta {
    void operator()(OGRSpatialReference* referencia) const { referencia->Release(); }
};

} // namespace

int CDatosMunicipio::Identifica(GDALOpenInfo* que)
{
    return STARTS_WITH_CI(que->pszFilename, opcion::kPrefijo) ||
                   (que->fpL != nullptr && PareceLista(*que))
               ? TRUE
               : FALSE;
}

GDALDataset* CDatosMunicipio::Abre(GDALOpenInfo* que)
{
    if (Identifica(que) == FALSE || que->eAccess == GA_Update)
        return nullptr;
    const bool pedido = STARTS_WITH_CI(que->pszFilename, opcion::kPrefijo);
    const char* nombre = que->pszFilename + (pedido ? std::strlen(opcion::kPrefijo) : 0);
    std::unique_ptr<CCopiaDeArchivo> copia;
    try {
        if (CCopiaDeArchivo::HaceFalta(nombre))
            copia = std::make_unique<CCopiaDeArchivo>(nombre);
    } catch (const std::runtime_error& fallo) {
        FallaCon("%s: %s", nombre, fallo.what());
        return nullptr;
    }
    const auto opcionDe = [&](const char* cual) {
        return CString(CSLFetchNameValueDef(que->papszOpenOptions, cual, ""));
    };
    auto municipio = std::make_unique<CMunicipioAbierto>();
    if (!municipio->Abre(
            copia ? copia->Lista() : CString(nombre),
            {opcionDe(opcion::kTablas), opcionDe(opcion::kOrtos), opcionDe(opcion::kRegistro)})) {
        if (pedido)
            FallaCon("%s no es una lista de polígonos con sus dibujos al lado"_ansi, nombre);
        return nullptr;
    }
    if (const CString falta = municipio->FaltaEnSitios(); !falta.IsEmpty()) {
        Falla(falta);
        return nullptr;
    }
    // Layers and geometries share it by counting.
    const std::unique_ptr<OGRSpatialReference, CSuelta> referencia(new OGRSpatialReference());
    referencia->SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    const CString srs = opcionDe(opcion::kReferencia);
    if (!srs.IsEmpty() && referencia->SetFromUserInput(srs.GetString()) != OGRERR_NONE)
        return nullptr; // told by GDAL
    auto datos = std::unique_ptr<CDatosMunicipio>(
        new CDatosMunicipio(std::move(copia), std::move(municipio)));
    datos->PonCapas(srs.IsEmpty() ? nullptr : referencia.get());
    return datos.release();
}

void CDatosMunicipio::PonCapas(const OGRSpatialReference* referencia)
{
    SetMetadataItem(opcion::kCabecera, ansi::AUtf8(m_municipio->Lista().primera).c_str());
    for (const auto haz : {CapaParcelas, CapaSubparcelas, CapaPoligonos, CapaHojas, CapaRotulos,
                           CapaLineas, CapaMensajes})
        Añade(haz(*m_municipio, referencia));
}

char** CDatosMunicipio::GetFileList()
{
    return SinExcepciones<char**>(nullptr, [&] {
        CPLStringList ficheros;
        for (const CString& fichero : m_municipio->Ficheros())
            ficheros.AddString(m_copia ? m_copia->Original(fichero.GetString()).c_str()
                                       : fichero.GetString());
        return ficheros.StealList();
    });
}
