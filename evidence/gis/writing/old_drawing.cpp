#include "evidence/gis/writing/old_drawing.h"

#include <algorithm>
#include <cstdlib>

#include "cadastre/file_extensions.h"
#include "cadastre/polygon_list.h"
#include "evidence/paths.h"
#include "platform/ansi.h"
#include "platform/files/any_case_name.h"
#include "vexa_libs/ring.h"

using vexageo::CPoligonoTopologico;
using vexageo::CPunto;
using vexageo::CTexto;

namespace {

void ApuntaPosiciones(const CPoligonoTopologico& registro, std::set<int>& posiciones)
{
    if (registro.TieneCentroide())
        posiciones.insert(registro.OffsetCentroide());
    for (int i = 0; i < registro.Tramos(); ++i)
        posiciones.insert(std::abs(registro.OffsetTramo(i)));
    for (const CPoligonoTopologico& isla : registro.ListaIslas())
        ApuntaPosiciones(isla, posiciones);
}

} // namespace

bool EstaEnDisco(const CString& nombre)
{
    CFile fichero;
    return AbreSiHay(fichero, nombre, CFile::anyCase);
}

bool HayRecintos(const CString& base, ClaseTopologia clase)
{
    CFile fichero;
    return AbreSiHay(fichero, ConExtension(base, ExtensionDe(clase)), CFile::anyCase) &&
           fichero.GetLength() > 0;
}

void ApuntaPosiciones(const CDibujoAntes::CRegistro& registro, std::set<int>& posiciones)
{
    ApuntaPosiciones(registro.registro, posiciones);
    for (const CPoligonoTopologico& isla : registro.detras)
        ApuntaPosiciones(isla, posiciones);
}

bool CDibujoAntes::Lee(const CString& base, std::span<const ClaseTopologia> clases)
{
    m_base = base;
    CFile bin;
    if (!AbreSiHay(bin, ConExtension(base, kExtensionDibujo), kModoDibujo))
        return false;
    m_esta = true;
    m_bytes = bin.Tramo(static_cast<std::size_t>(bin.GetLength()));
    LeeEntidades(bin);
    for (const ClaseTopologia clase : clases)
        LeeTopologia(bin, clase);
    RelacionaRecintos();
    return true;
}

/// Gives the outlines what the driver shows of them beside their labels.
void CDibujoAntes::RelacionaRecintos()
{
    constexpr ClaseTopologia kClases[] = {ClaseTopologia::Parcelas, ClaseTopologia::Subparcelas};
    CPoligonoDibujado poligono;
    for (const ClaseTopologia clase : kClases)
        for (CRegistro& registro : m_topologias[clase].registros)
            poligono.Topologia(clase).recintos.push_back(std::move(registro.dibujado));
    Relaciona(poligono, {});
    for (const ClaseTopologia clase : kClases) {
        auto suyo = poligono.Topologia(clase).recintos.begin();
        for (CRegistro& registro : m_topologias[clase].registros)
            registro.dibujado = std::move(*suyo++);
    }
}

bool CDibujoAntes::CaeEnParcela(const CPunto<int>& punto, int parcela) const
{
    const std::vector<CRegistro>& parcelas = Registros(ClaseTopologia::Parcelas);
    return std::ranges::any_of(parcelas, [&](const CRegistro& registro) {
        return registro.dibujado.Valido() && registro.dibujado.parcela == parcela &&
               vexageo::Situa(registro.dibujado.contorno, punto) != vexageo::Lugar::Fuera;
    });
}

void CDibujoAntes::LeeEntidades(CFile& bin)
{
    bin.Seek(0);
    vexageo::CCabeceraDibujo cabecera;
    const bool hayCabecera = cabecera.Read(&bin);
    const bool entero = RecorreEntidades(bin, [&](int posicion, const CTexto<int>& entidad) {
        m_entidades.emplace(posicion, entidad);
        for (const CPunto<int>& punto : entidad.Puntos())
            if (punto.Z != 0)
                m_alturas.try_emplace({punto.X, punto.Y}, punto.Z);
    });
    if (!hayCabecera || !entero)
        m_falta = "su .BIN está dañado"_ansi;
}

void CDibujoAntes::LeeTopologia(CFile& bin, ClaseTopologia clase)
{
    CFile fichero;
    if (!AbreSiHay(fichero, ConExtension(m_base, ExtensionDe(clase)), kModoDibujo))
        return;
    CTopologiaDibujada dibujada = LeeTopologiaDibujada(fichero, bin, clase);
    CTopologia& suya = m_topologias[clase];
    suya.cortada = dibujada.dañoEn != CTopologiaDibujada::kSinDaño;
    fichero.Seek(0);
    std::vector<CRegistro>& registros = suya.registros;
    for (CPoligonoTopologico registro; registro.Read(&fichero);) {
        if (registro.EsIsla() && !registros.empty())
            registros.back().detras.push_back(registro);
        else
            registros.push_back({registro, {}, std::move(dibujada.recintos[registros.size()])});
    }
    for (const CRegistro& registro : registros)
        ApuntaPosiciones(registro, m_usadas);
}

CString CDibujoAntes::FaltaDe(ClaseTopologia clase) const
{
    const auto suya = m_topologias.find(clase);
    return suya != m_topologias.end() && suya->second.cortada
               ? Formatea("su .%s está dañado"_ansi, ExtensionDe(clase))
               : std::string();
}

const std::vector<CDibujoAntes::CRegistro>& CDibujoAntes::Registros(ClaseTopologia clase) const
{
    static const std::vector<CRegistro> kNinguno;
    const auto suya = m_topologias.find(clase);
    return suya == m_topologias.end() ? kNinguno : suya->second.registros;
}

const CTexto<int>* CDibujoAntes::RotuloDe(const CRegistro& registro) const
{
    const auto suyo = m_entidades.find(registro.dibujado.posicionRotulo);
    return suyo == m_entidades.end() ? nullptr : &suyo->second;
}

CPunto<int> CDibujoAntes::ConAltura(const CPunto<int>& punto) const
{
    const auto altura = m_alturas.find({punto.X, punto.Y});
    return {punto.X, punto.Y, altura == m_alturas.end() ? 0 : altura->second};
}

CString CDibujoAntes::Nombre(const char* extension) const
{
    CNombresEnDisco nombres;
    return CFile::EnDisco(ConExtension(m_base, extension), nombres);
}
