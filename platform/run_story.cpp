#include "platform/run_story.h"

#include "platform/ansi.h"
#include "platform/files/cfile.h"
#include "platform/files/system_files.h"
#include "platform/format.h"
#include "platform/front_end.h"
#include "platform/layer_texts.h"
#include "platform/system.h"

namespace {

using namespace std::chrono_literals;

constexpr auto kAntesDePredecir = 2s; // the pace of a phase that has just begun tells nothing

std::string Horas(std::chrono::seconds tiempo)
{
    const auto total = tiempo.count();
    const int horas = static_cast<int>(total / 3600);
    const int minutos = static_cast<int>(total / 60 % 60);
    const int segundos = static_cast<int>(total % 60);
    return horas > 0 ? Formatea("%d:%02d:%02d", horas, minutos, segundos)
                     : Formatea("%d:%02d", minutos, segundos);
}

sistema::CEstado EstadoDe(const CString& nombre)
{
    sistema::Error error; // what can't be looked at isn't offered
    return nombre.IsEmpty() ? sistema::CEstado() : sistema::Mira(sistema::Ruta(nombre), error);
}

} // namespace

std::string NoSeAbre(const CString& ruta)
{
    return Formatea(textos::kNoSeAbre, ansi::AUtf8(ruta));
}

std::vector<CString> CajasDeObservaciones(const std::vector<CString>& observaciones)
{
    constexpr int kLetrasPorLinea = 60; // where boxes are narrowest
    constexpr int kLineasPorCaja = 22;
    std::vector<CString> cajas;
    int lineas = 0;
    for (const CString& observacion : observaciones) {
        const int suyas = observacion.GetLength() / kLetrasPorLinea + 2; // with the one between two
        lineas += suyas;
        if (cajas.empty() || lineas > kLineasPorCaja) {
            cajas.push_back(observacion);
            lineas = suyas;
        } else {
            cajas.back() += "\n\n" + observacion;
        }
    }
    return cajas;
}

std::string TituloEnProceso(int hecho, const CString& titulo)
{
    return std::to_string(hecho) + " % - " + ansi::AUtf8(titulo);
}

CRelatoProceso::CRelatoProceso(CString programaInforme, bool seEnsaya)
    : m_programaInforme(std::move(programaInforme)),
      m_seEnsaya(seEnsaya && !sistema::BuscaPrograma(m_programaInforme).empty())
{
    Olvida();
}

void CRelatoProceso::Olvida()
{
    const std::filesystem::path aqui = sistema::Entera("nombre").parent_path();
    m_texto = Formatea(textos::kNombresSinCarpeta, ansi::AUtf8(sistema::Nombre(aqui)));
    m_log = CString();
    m_carpeta = CString();
    m_deInforme = CString();
}

void CRelatoProceso::Avanza(Reloj::time_point ahora, int hecho)
{
    if (!m_enProceso) {
        m_enProceso = true;
        m_inicio = m_inicioFase = ahora;
        Olvida();
    } else if (hecho < m_hecho) {
        m_inicioFase = ahora;
    }
    m_hecho = hecho;
    m_texto = PasadoYResto(ahora);
}

void CRelatoProceso::Descuenta(Reloj::duration espera)
{
    m_inicio += espera;
    m_inicioFase += espera;
}

std::string CRelatoProceso::Pasado(Reloj::time_point ahora) const
{
    return Horas(std::chrono::floor<std::chrono::seconds>(ahora - m_inicio));
}

std::string CRelatoProceso::PasadoYResto(Reloj::time_point ahora) const
{
    const auto fase = ahora - m_inicioFase;
    if (fase < kAntesDePredecir || m_hecho <= 0 || m_hecho >= 100)
        return Pasado(ahora);
    const auto resto = std::chrono::ceil<std::chrono::seconds>(fase * (100 - m_hecho) / m_hecho);
    return Pasado(ahora) + Formatea(textos::kQuedan, Horas(resto));
}

void CRelatoProceso::Termina(Reloj::time_point ahora, const CEscritos& escritos)
{
    const std::string pasado = Pasado(ahora);
    m_texto.clear();
    if (m_enProceso && pasado != "0:00")
        m_texto = Formatea(textos::kDuracion, pasado);
    m_enProceso = false;
    for (const CString& observacion : escritos.observaciones)
        m_texto += (m_texto.empty() ? "" : ".  ") + ansi::AUtf8(observacion);
    const sistema::CEstado log = EstadoDe(escritos.log);
    const bool vacio = log.EsRegular() && log.largo == 0;
    if (vacio && escritos.observaciones.empty() && !escritos.huboErrores)
        m_texto += (m_texto.empty() ? "" : ".  ") + std::string(textos::kRegistroVacio);
    m_log = log.EsRegular() && !vacio ? escritos.log : CString();
    const bool hayPrograma = log.EsRegular() && !m_programaInforme.IsEmpty() &&
                             !sistema::BuscaPrograma(m_programaInforme).empty();
    m_deInforme = hayPrograma ? escritos.log : CString();
    m_pagina = escritos.informe.IsEmpty()
                   ? sistema::Nombre(sistema::Ruta(escritos.log).replace_extension("html"))
                   : escritos.informe;
    m_leidos.clear();
    for (const CString& leido : escritos.leidos)
        m_leidos.push_back(CFile::RutaCompleta(leido));
    m_escritos.clear();
    for (const CString& salida : escritos.salidas)
        if (EstadoDe(salida).EsRegular())
            m_escritos.push_back(CFile::RutaCompleta(salida));
    m_carpeta = m_escritos.empty()
                    ? CString()
                    : sistema::Nombre(sistema::Ruta(m_escritos.front()).parent_path());
}

CPaginaPedida CRelatoProceso::Informe() const
{
    return {textos::kHaciendoInforme, Formatea(textos::kNoHayInforme, ansi::AUtf8(m_deInforme)),
            [relato = *this] { return relato.HazInforme(); }};
}

CPaginaPedida CRelatoProceso::Ensayo(const std::vector<CString>& orden) const
{
    return {textos::kHaciendoEnsayo,
            Formatea(textos::kNoHayEnsayo, orden.empty() ? "" : ansi::AUtf8(orden.back())),
            [relato = *this, suya = orden] { return relato.HazEnsayo(suya); }};
}

CString CRelatoProceso::HazInforme() const
{
    std::vector<std::string> argumentos = {"--html", std::string(m_pagina)};
    const auto nombra = [&](const char* opcion, const std::vector<CString>& ficheros) {
        for (const CString& fichero : ficheros)
            argumentos.insert(argumentos.end(), {opcion, std::string(fichero)});
    };
    nombra("--con", m_leidos);
    nombra("--escrito", m_escritos);
    if (m_escritos.empty())
        argumentos.emplace_back("--detenido");
    argumentos.insert(argumentos.end(), {"--", std::string(m_deInforme)});
    return HazPagina(m_pagina, argumentos);
}

CString CRelatoProceso::HazEnsayo(const std::vector<CString>& orden) const
{
    if (orden.empty() || orden.back().IsEmpty())
        return {};
    std::filesystem::path pagina = sistema::Entera(sistema::Ruta(orden.back()));
    pagina.replace_extension().concat("_ensayo.html");
    std::vector<std::string> argumentos = {"--html", sistema::Nombre(pagina)};
    argumentos.insert(argumentos.end(), orden.begin(), orden.end() - 1);
    argumentos.insert(argumentos.end(), {"--", std::string(orden.back())});
    return HazPagina(sistema::Nombre(pagina), argumentos);
}

CString CRelatoProceso::HazPagina(const CString& pagina,
                                  const std::vector<std::string>& argumentos) const
{
    constexpr int kAlgoFalto = 1; // the page may be there all the same
    const sistema::CEstado antes = EstadoDe(pagina);
    const auto estado = sistema::Ejecuta(sistema::BuscaPrograma(m_programaInforme), argumentos);
    const sistema::CEstado ahora = EstadoDe(pagina);
    const bool esLaDeAntes = ahora.EsElMismo(antes) && ahora.escrito == antes.escrito;
    return estado && *estado <= kAlgoFalto && ahora.EsRegular() && !esLaDeAntes ? pagina
                                                                                : CString();
}
