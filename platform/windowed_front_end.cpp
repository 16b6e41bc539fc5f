#include "platform/windowed_front_end.h"

#include <algorithm>
#include <memory>

#include "platform/ansi.h"
#include "platform/common_window.h"
#include "platform/files/system_files.h"
#include "platform/layer_texts.h"
#include "platform/run_story.h"
#include "platform/system.h"

void CFrontalVentanas::Muestra(CVentanaComun& ventana)
{
    m_ventanas.push_back(&ventana);
    const auto quita = [this](CVentanaComun*) { m_ventanas.pop_back(); };
    const std::unique_ptr<CVentanaComun, decltype(quita)> alSalir(&ventana, quita);
    ventana.Muestra();
}

CVentanaComun* CFrontalVentanas::Delante() const
{
    return Ultima() != nullptr && Ultima()->SeVe() ? Ultima() : nullptr;
}

int CFrontalVentanas::Espera(const std::function<int()>& caja) const
{
    return Ultima() != nullptr ? Ultima()->Espera(caja) : caja();
}

void CFrontalVentanas::DiQueNoSeVeLaAyuda(const CString& fichero)
{
    Caja(Formatea(textos::kNoSeVeLaAyuda, fichero), textos::kAyuda, MB_ICONERROR);
}

std::filesystem::path CFrontalVentanas::CarpetaInicial(const CFileDialog& dialogo) const
{
    constexpr const char* kCualquiera = "-"; // any name stands for one in the folder at work
    const CString enCampo = dialogo.GetPathName();
    const bool hay = !enCampo.IsEmpty();
    const std::filesystem::path carpeta =
        sistema::Entera(sistema::Ruta(hay ? enCampo : CString(kCualquiera))).parent_path();
    sistema::Error error;
    const bool laDice =
        hay && sistema::Mira(carpeta, error).tipo == sistema::CEstado::Tipo::Carpeta;
    return laDice || m_carpeta.empty() ? carpeta : m_carpeta;
}

void CFrontalVentanas::Elige(CFileDialog& dialogo, const CString& ruta)
{
    m_carpeta = sistema::Ruta(ruta).parent_path();
    dialogo.SetPathName(ruta);
}

CVentanaComun* CFrontalVentanas::VentanaDe(const CDialog& dialogo) const
{
    const auto esta = std::ranges::find(m_ventanas, &dialogo,
                                        [](const CVentanaComun* v) { return &v->Dialogo(); });
    return esta != m_ventanas.end() ? *esta : nullptr;
}

void CFrontalVentanas::AtiendeUno(CDialog& dialogo)
{
    if (CVentanaComun* ventana = VentanaDe(dialogo))
        ventana->AtiendeUno();
}

void CFrontalVentanas::Refleja(const CDialog& dialogo, const CControl& control)
{
    if (CVentanaComun* ventana = VentanaDe(dialogo))
        ventana->Refleja(control);
}

void CFrontalVentanas::InicioDeProceso(const CDialog& dialogo)
{
    if (CVentanaComun* ventana = VentanaDe(dialogo))
        ventana->InicioDeProceso();
}

void CFrontalVentanas::FinDeProceso(const CDialog& dialogo, const CEscritos& escritos)
{
    CVentanaComun* ventana = VentanaDe(dialogo);
    if (ventana == nullptr) { // a run from the command line, which no further box may hold up
        for (const CString& observacion : escritos.observaciones)
            sistema::Imprime(stderr, ansi::AUtf8(observacion) + "\n");
        return;
    }
    ventana->FinDeProceso(escritos);
    // The line below the dialog has no room for them, and a closing box has said that all went
    // well.
    for (const CString& texto : CajasDeObservaciones(escritos.observaciones))
        Caja(texto, textos::kObservaciones, MB_ICONWARNING);
}
