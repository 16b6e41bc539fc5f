#include "evidence/report/findings/drawn_balance.h"

#include <cmath>

#include "evidence/report/reading/text.h"

namespace informe {
namespace {

/// Square metres as the way back rounds them; what no parcel has counts as none.
std::int64_t Redondea(double area)
{
    constexpr double kMayor = 1e15;
    return std::abs(area) < kMayor ? static_cast<std::int64_t>(std::trunc(area + 0.5)) : 0;
}

/// What is wrong with a topology as a whole; empty for nothing.
std::string FaltaDe(const CTopologiaDibujada& topologia, const char* extension)
{
    if (!topologia.hay)
        return std::string("falta su .") + extension;
    for (const CRecintoDibujado& recinto : topologia.recintos)
        if (recinto.estado == EstadoRecinto::FueraDeFecha)
            return std::string("su .") + extension + " está fuera de fecha";
    if (topologia.dañoEn != CTopologiaDibujada::kSinDaño)
        return std::string("su .") + extension + " está dañado en el byte " +
               Miles(static_cast<std::int64_t>(topologia.dañoEn));
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
std::string Di(const std::vector<CFalta>& faltas, const CRecintoDibujado& recinto)
{
    std::string texto;
    for (const CFalta& falta : faltas)
        texto += (texto.empty() ? "" : "; ") +
                 (falta.clase == ClaseFalta::Repetido
                      ? "está en " + Miles(recinto.piezas) + " recintos: cuenta el último"
                      : Texto(falta.texto));
    return texto;
}

std::string Nombra(const CRecintoDibujado& recinto, ClaseTopologia clase)
{
    const bool subparcela = clase == ClaseTopologia::Subparcelas;
    if (recinto.Valido() && !subparcela)
        return "parcela " + Texto(recinto.rotulo);
    if (recinto.Valido() && recinto.parcela >= 0)
        return "subparcela " + std::to_string(recinto.parcela) + "-" + Texto(recinto.letra);
    const std::string que = subparcela ? "recinto de subparcela " : "recinto de parcela ";
    return que + (recinto.rotulo.IsEmpty() ? "sin nombre" : "«" + Texto(recinto.rotulo) + "»");
}

} // namespace

std::string FaltaDelPoligono(const CPoligonoDibujado& poligono, CPoligonoRoto& roto)
{
    roto.entrada = poligono.entrada;
    roto.polig = poligono.polig;
    if (!poligono.hayDibujo) {
        roto.parcelas = roto.subparcelas = true;
        return roto.que = "falta su .BIN";
    }
    const std::string par = FaltaDe(poligono.parcelas, "PAR");
    const std::string sub = FaltaDe(poligono.subparcelas, "SUB");
    roto.parcelas = !par.empty();
    roto.subparcelas = !sub.empty();
    return roto.que = par + (par.empty() || sub.empty() ? "" : " y ") + sub;
}

CBalanceDibujo::CBalanceDibujo(const CSuperficies& superficies, const CRegistroLeido& registro)
    : m_superficies(superficies)
{
    for (const CAviso& aviso : registro.avisos)
        if (aviso.mensaje != nullptr && aviso.mensaje->numero == kSuperficieCorregida)
            m_corregidas.emplace(aviso.polig, aviso.parcela);
}

void CBalanceDibujo::Toma(const CPoligonoDibujado& poligono)
{
    ++poligonos;
    CPoligonoRoto roto;
    if (!FaltaDelPoligono(poligono, roto).empty())
        rotos.push_back(roto);
    recintosParcela += static_cast<std::int64_t>(poligono.parcelas.recintos.size());
    recintosSubparcela += static_cast<std::int64_t>(poligono.subparcelas.recintos.size());
    TomaParcelas(poligono);
    Halla(poligono, poligono.parcelas, ClaseTopologia::Parcelas);
    Halla(poligono, poligono.subparcelas, ClaseTopologia::Subparcelas);
}

void CBalanceDibujo::Halla(const CPoligonoDibujado& poligono, const CTopologiaDibujada& topologia,
                           ClaseTopologia clase)
{
    const CFaltasDeRecintos faltas = FaltasDe(topologia, clase);
    for (std::size_t i = 0; i < topologia.recintos.size(); ++i) {
        const CRecintoDibujado& recinto = topologia.recintos[i];
        std::vector<CFalta> suyas;
        for (const CFalta& falta : faltas[i])
            if (!SeDiceYa(falta, recinto))
                suyas.push_back(falta);
        if (!suyas.empty())
            hallazgos.push_back(
                {poligono.polig, Nombra(recinto, clase), Di(suyas, recinto), suyas.front().donde});
    }
}

void CBalanceDibujo::TomaParcelas(const CPoligonoDibujado& poligono)
{
    std::map<int, CSuma> sumas;
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos) {
        if (!recinto.Valido())
            continue;
        CSuma& suma = sumas[recinto.parcela];
        ++suma.recintos;
        suma.todos += recinto.areaRegistro;
        suma.ultimo = recinto.areaRegistro;
        suma.islasRaras =
            suma.islasRaras || std::abs(recinto.areaRegistro - recinto.AreaContorno()) >= 1;
    }
    for (const auto& [parcela, suma] : sumas)
        Compara(poligono.polig, parcela, suma);
}

void CBalanceDibujo::Compara(int polig, int parcela, const CSuma& suma)
{
    const auto suya = m_superficies.find({polig, parcela});
    if (suya == m_superficies.end() || !suya->second.escrita)
        return;
    CDesajuste desajuste{polig, parcela, suma.recintos, Redondea(suma.todos), *suya->second.escrita,
                         {}};
    dibujada += desajuste.dibujada;
    escrita += desajuste.escrita;
    if (desajuste.Diferencia() == 0 && suma.recintos == 1)
        return;
    if (suma.recintos > 1 && !suya->second.concentrada)
        perdida += Redondea(suma.todos) - Redondea(suma.ultimo);
    desajuste.motivo = Motivo(polig, parcela, suma, suya->second);
    desajustes.push_back(std::move(desajuste));
}

std::string CBalanceDibujo::Motivo(int polig, int parcela, const CSuma& suma,
                                   const CSuperficie& superficie) const
{
    const std::int64_t deR = *superficie.escrita;
    if (superficie.concentrada && superficie.tabla.value_or(*superficie.escrita) == deR)
        return "concentrada: conserva la de la tabla";
    std::string motivo;
    if (suma.recintos > 1)
        motivo = "en " + Miles(suma.recintos) + " recintos: toma la del último";
    const bool corregida = m_corregidas.contains({polig, parcela});
    if (corregida)
        motivo +=
            (motivo.empty() ? "" : "; ") + std::string("toma la suma de sus subparcelas (W304)");
    if (suma.islasRaras)
        motivo +=
            (motivo.empty() ? "" : "; ") + std::string("el área guardada no es la del contorno");
    const bool seExplica = corregida || deR == Redondea(suma.ultimo);
    return seExplica ? motivo : std::string();
}

} // namespace informe
