#include "report/drawn_balance.h"

#include <cmath>

#include "report/text.h"

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

std::string Que(const CRecintoDibujado& recinto)
{
    return Texto(NombreEstado(recinto.estado));
}

/// Told by the polygon, or nothing to tell.
bool EsRuido(EstadoRecinto estado)
{
    return estado == EstadoRecinto::Valido || estado == EstadoRecinto::NoSeLlega ||
           estado == EstadoRecinto::FueraDeFecha || estado == EstadoRecinto::OtraClase;
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
    TomaParcelas(poligono);
    TomaSubparcelas(poligono);
}

void CBalanceDibujo::TomaParcelas(const CPoligonoDibujado& poligono)
{
    std::map<int, CSuma> sumas;
    for (const CRecintoDibujado& recinto : poligono.parcelas.recintos) {
        ++recintosParcela;
        if (!EsRuido(recinto.estado))
            Halla(poligono.polig,
                  recinto.rotulo.IsEmpty() ? "recinto sin nombre"
                                           : "recinto «" + Texto(recinto.rotulo) + "»",
                  Que(recinto) + ": la vuelta no lo ve");
        if (recinto.tramosPerdidos > 0)
            Halla(poligono.polig, "parcela " + Texto(recinto.rotulo),
                  Cuantos(recinto.tramosPerdidos, "tramo de su linde no se lee",
                          "tramos de su linde no se leen"));
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

void CBalanceDibujo::TomaSubparcelas(const CPoligonoDibujado& poligono)
{
    for (const CRecintoDibujado& recinto : poligono.subparcelas.recintos) {
        ++recintosSubparcela;
        if (!EsRuido(recinto.estado))
            Halla(poligono.polig,
                  recinto.rotulo.IsEmpty()
                      ? "recinto de subparcela sin nombre"
                      : "recinto de subparcela «" + Texto(recinto.rotulo) + "»",
                  Que(recinto) + ": la vuelta no lo ve");
        if (recinto.Valido() && recinto.parcela >= 0 && recinto.piezas > 1 && recinto.pieza == 1)
            Halla(poligono.polig,
                  "subparcela " + std::to_string(recinto.parcela) + "-" + Texto(recinto.letra),
                  "su letra está en " + Miles(recinto.piezas) + " recintos: cuenta el último");
    }
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
