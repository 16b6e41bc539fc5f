#include "evidence/report/findings/drawn_balance.h"

#include <algorithm>
#include <cmath>

#include "cadastre/file_extensions.h"
#include "evidence/report/reading/text.h"
#include "evidence/units.h"

namespace informe {
namespace {

/// What is wrong with a topology as a whole; empty for nothing. The way back ends its reading at
/// the first label that it can't read, so that one is told before damage that it never came to.
std::string FaltaDe(const CPoligonoDibujado& poligono, ClaseTopologia que)
{
    const CTopologiaDibujada& topologia = poligono.Topologia(que);
    const std::string fichero = std::string("su .") + ExtensionDe(que);
    if (!topologia.hay)
        return "falta " + fichero;
    for (const CRecintoDibujado& recinto : topologia.recintos)
        if (recinto.estado == EstadoRecinto::FueraDeFecha)
            return fichero + " está fuera de fecha";
    if (topologia.dañoEn != CTopologiaDibujada::kSinDaño)
        return fichero + " está dañado en el byte " +
               Miles(static_cast<std::int64_t>(topologia.dañoEn));
    const CTopologiaDibujada& otra = poligono.Topologia(
        que == ClaseTopologia::Parcelas ? ClaseTopologia::Subparcelas : ClaseTopologia::Parcelas);
    if (topologia.recintos.empty() && !otra.recintos.empty()) // else nothing is drawn there
        return fichero + " está vacío";
    return {};
}

/// Tells of faults that are told elsewhere: by a message, or by the polygon as a whole.
bool SeDiceYa(const CFalta& falta, const CRecintoDibujado& recinto)
{
    switch (falta.clase) {
    case ClaseFalta::FueraDeFecha:
    case ClaseFalta::NoSeLlega:
    case ClaseFalta::FueraDeParcela:
        return true;
    case ClaseFalta::Repetido:
        return recinto.pieza > 1; // once for all pieces
    default:
        return false;
    }
}

/// The faults in words. What several outlines cost stands in the surfaces.
std::string Di(const std::vector<CFalta>& faltas, const CRecintoDibujado& recinto,
               const CVariosDibujos& varios)
{
    std::string texto;
    for (const CFalta& falta : faltas)
        texto += (texto.empty() ? "" : "; ") +
                 (falta.clase == ClaseFalta::Repetido
                      ? "está en " + Miles(recinto.piezas) + " recintos" +
                            varios.De(ClaveDePieza(recinto)) + ": cuenta el último"
                      : Texto(falta.texto));
    return texto;
}

std::string NombreEnElDibujo(const CRecintoDibujado& recinto, ClaseTopologia clase)
{
    const bool subparcela = clase == ClaseTopologia::Subparcelas;
    if (recinto.Valido() && !subparcela)
        return "parcela " + Texto(recinto.rotulo);
    if (recinto.EsDeParcela())
        return "subparcela " + std::to_string(recinto.parcela) + "-" + Texto(recinto.letra);
    const std::string que = subparcela ? "recinto de subparcela " : "recinto de parcela ";
    return que + (recinto.rotulo.IsEmpty() ? "sin nombre" : "«" + Texto(recinto.rotulo) + "»");
}

/// The record's surface isn't that of the rings, by a square metre or more: an island that is
/// counted twice, or added instead of taken off.
bool GuardaOtraArea(const CRecintoDibujado* recinto)
{
    return std::abs(recinto->areaRegistro - recinto->AreaContorno()) >= 1;
}

} // namespace

CVariosDibujos::CVariosDibujos(std::span<const CPoligonoDibujado> dibujos, ClaseTopologia que)
{
    if (dibujos.size() < 2)
        return;
    for (const CPoligonoDibujado& dibujo : dibujos)
        for (const CRecintoDibujado& recinto : dibujo.Topologia(que).recintos) {
            if (!recinto.EsDeParcela() || recinto.piezas == 1)
                continue;
            std::vector<const CPoligonoDibujado*>& suyos = m_dibujos[ClaveDePieza(recinto)];
            if (suyos.empty() || suyos.back() != &dibujo)
                suyos.push_back(&dibujo);
        }
}

std::string CVariosDibujos::De(const CClavePiezas& clave) const
{
    const auto suyos = m_dibujos.find(clave);
    if (suyos == m_dibujos.end() || suyos->second.size() < 2)
        return {};
    std::string nombres;
    for (const CPoligonoDibujado* dibujo : suyos->second)
        nombres += (nombres.empty() ? "" : ", ") + Texto(dibujo->entrada);
    return " de " + Miles(suyos->second.size()) + " dibujos (" + nombres + ")";
}

CPoligonoRoto FaltaDelPoligono(const CPoligonoDibujado& poligono)
{
    if (!poligono.hayDibujo)
        return {poligono.entrada, poligono.polig, true, true,
                std::string("falta su .") + kExtensionDibujo};
    const std::string par = FaltaDe(poligono, ClaseTopologia::Parcelas);
    const std::string sub = FaltaDe(poligono, ClaseTopologia::Subparcelas);
    return {poligono.entrada, poligono.polig, !par.empty(), !sub.empty(),
            par + (par.empty() || sub.empty() ? "" : " y ") + sub};
}

CBalanceDibujo::CBalanceDibujo(const CProceso& proceso)
    : m_superficies(proceso.superficies), m_hayEscritas(proceso.EscribioParcelas())
{
    for (const CAviso& aviso : proceso.registro.avisos)
        if (aviso.Es(kSuperficieCorregida))
            m_corregidas.emplace(aviso.polig, aviso.parcela);
}

void CBalanceDibujo::Toma(std::span<const CPoligonoDibujado> dibujos)
{
    const CVariosDibujos deParcelas(dibujos, ClaseTopologia::Parcelas);
    const CVariosDibujos deSubparcelas(dibujos, ClaseTopologia::Subparcelas);
    for (const auto& [clave, piezas] : ReunePiezas(dibujos, ClaseTopologia::Parcelas))
        Compara(dibujos.front().polig, clave.first, piezas, deParcelas.De(clave));
    for (const CPoligonoDibujado& dibujo : dibujos) {
        TomaDibujo(dibujo);
        Halla(dibujo, ClaseTopologia::Parcelas, deParcelas);
        Halla(dibujo, ClaseTopologia::Subparcelas, deSubparcelas);
    }
}

void CBalanceDibujo::TomaDibujo(const CPoligonoDibujado& dibujo)
{
    ++poligonos;
    if (CPoligonoRoto roto = FaltaDelPoligono(dibujo); !roto.que.empty())
        rotos.push_back(std::move(roto));
    recintosParcela += static_cast<std::int64_t>(dibujo.parcelas.recintos.size());
    recintosSubparcela += static_cast<std::int64_t>(dibujo.subparcelas.recintos.size());
}

std::int64_t CBalanceDibujo::SinExplicar() const
{
    return std::ranges::count_if(desajustes,
                                 [](const CDesajuste& uno) { return uno.motivo.empty(); });
}

std::int64_t CBalanceDibujo::Perdida() const
{
    return SumaMetros(perdidas);
}

CPerdidas CBalanceDibujo::DeTablaSinEscribir() const
{
    CPerdidas suyas;
    for (const auto& [parcela, superficie] : m_superficies)
        if (m_hayEscritas && !superficie.escrita && superficie.tabla)
            suyas[parcela] = *superficie.tabla;
    return suyas;
}

CPerdidas CBalanceDibujo::DelDibujoSolo() const
{
    CPerdidas suyas = sinEscribir;
    std::erase_if(suyas, [&](const auto& una) {
        const auto suya = m_superficies.find(una.first);
        return suya != m_superficies.end() && suya->second.tabla;
    });
    return suyas;
}

void CBalanceDibujo::Halla(const CPoligonoDibujado& poligono, ClaseTopologia clase,
                           const CVariosDibujos& varios)
{
    const CTopologiaDibujada& topologia = poligono.Topologia(clase);
    const CFaltasDeRecintos faltas = FaltasDe(topologia, clase);
    for (std::size_t i = 0; i < topologia.recintos.size(); ++i) {
        const CRecintoDibujado& recinto = topologia.recintos[i];
        std::vector<CFalta> suyas;
        for (const CFalta& falta : faltas[i])
            if (!SeDiceYa(falta, recinto))
                suyas.push_back(falta);
        if (!suyas.empty())
            hallazgos.push_back({poligono.polig, NombreEnElDibujo(recinto, clase),
                                 Di(suyas, recinto, varios), suyas.front().donde});
    }
}

/// Parcels that are on one side alone are told by the balance of the records.
void CBalanceDibujo::Compara(int polig, int parcela, const CPiezas& piezas,
                             const std::string& dibujos)
{
    const auto suya = m_superficies.find({polig, parcela});
    const std::int64_t area = EnMetrosCuadrados(piezas.Area());
    if (suya == m_superficies.end() || !suya->second.escrita) {
        if (m_hayEscritas)
            sinEscribir[{polig, parcela}] = area;
        return;
    }
    const int recintos = static_cast<int>(piezas.Recintos().size());
    CDesajuste desajuste{polig, parcela, recintos, area, *suya->second.escrita, {}};
    ++comparadas;
    dibujada += desajuste.dibujada;
    escrita += desajuste.escrita;
    if (desajuste.Diferencia() == 0 && recintos == 1)
        return;
    if (desajuste.Perdida() > 0)
        perdidas[{polig, parcela}] = desajuste.Perdida();
    desajuste.motivo = Motivo(desajuste, piezas, suya->second, dibujos);
    desajustes.push_back(std::move(desajuste));
}

/// What explains the surface that was written. A concentrated parcel keeps the table's, whatever is
/// drawn, unless the run was told otherwise; one whose table says what its last outline does was
/// rewritten. Any other takes that of its last outline, islands as they are stored; W304 says that
/// it took that of its subparcels instead.
std::string CBalanceDibujo::Motivo(const CDesajuste& desajuste, const CPiezas& piezas,
                                   const CSuperficie& superficie, const std::string& dibujos) const
{
    const bool esDelUltimo = desajuste.escrita == EnMetrosCuadrados(piezas.Ultima().areaRegistro);
    const bool conserva = superficie.tabla.value_or(desajuste.escrita) == desajuste.escrita;
    if (superficie.concentrada && conserva && !(desajuste.recintos > 1 && esDelUltimo))
        return "concentrada: conserva la de la tabla";
    std::string motivo;
    const auto anota = [&](const std::string& otro) {
        motivo += (motivo.empty() ? "" : "; ") + otro;
    };
    if (desajuste.recintos > 1)
        anota("en " + Miles(desajuste.recintos) + " recintos" + dibujos + ": toma la del último");
    const bool corregida = m_corregidas.contains({desajuste.polig, desajuste.parcela});
    if (corregida)
        anota("toma la suma de sus subparcelas (W304)");
    if (std::ranges::any_of(piezas.Recintos(), GuardaOtraArea))
        anota("el área guardada no es la del contorno");
    return corregida || esDelUltimo ? motivo : std::string();
}

} // namespace informe
