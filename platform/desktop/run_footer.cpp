#include "platform/desktop/run_footer.h"

#include <wx/button.h>
#include <wx/filefn.h>
#include <wx/filename.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "platform/desktop/message_box.h"
#include "platform/desktop/text.h"
#include "platform/desktop/toolkit.h"
#include "platform/dialog.h"
#include "platform/front_end.h"

namespace {

using Reloj = CRelojProceso::Reloj;

constexpr const char* kAbreLog = "Abrir &registro";
constexpr const char* kAbreCarpeta = "Abrir carp&eta";
constexpr const char* kNombreLog = "Abrir el registro de errores: ";
constexpr const char* kNombreCarpeta = "Abrir la carpeta de los archivos escritos: ";
constexpr const char* kDuracion = "Duración: %s";
constexpr const char* kLogVacio = "Registro vacío: sin errores ni avisos";
constexpr const char* kNoSeAbre = "Ningún programa abre aquí %s";
constexpr const char* kTituloNoSeAbre = "Abrir";

wxString CarpetaDeSalidas(const CEscritos& escritos)
{
    for (const CString& salida : escritos.salidas)
        if (wxFileExists(AWx(salida)))
            return wxFileName(AWx(salida)).GetPath();
    return {};
}

} // namespace

CPieProceso::CPieProceso(wxWindow* padre)
    : wxPanel(padre), m_texto(new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                               wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)),
      m_abreLog(PonBoton(kAbreLog, &CPieProceso::m_log)),
      m_abreCarpeta(PonBoton(kAbreCarpeta, &CPieProceso::m_carpeta))
{
    const int letra = GetCharWidth();
    auto* renglon = new wxBoxSizer(wxHORIZONTAL);
    renglon->Add(m_texto, 1, wxALIGN_CENTER_VERTICAL);
    for (wxButton* boton : {m_abreLog, m_abreCarpeta}) {
        renglon->Add(boton, 0, wxLEFT, letra);
        boton->SetMinSize(boton->GetBestSize() + wxSize(2 * letra, 0));
        boton->Hide();
    }
    renglon->SetMinSize(0, m_abreLog->GetMinSize().y); // the window doesn't jump when they show
    auto* marco = new wxBoxSizer(wxVERTICAL);
    marco->Add(renglon, 1, wxEXPAND | wxLEFT | wxRIGHT, 2 * letra);
    marco->AddSpacer(letra);
    SetSizer(marco);
}

wxButton* CPieProceso::PonBoton(const char* leyenda, wxString CPieProceso::*destino)
{
    auto* boton = new wxButton(this, wxID_ANY, wxString::FromUTF8(leyenda), wxDefaultPosition,
                               wxDefaultSize, wxBU_EXACTFIT);
    boton->Bind(wxEVT_BUTTON, [this, destino](wxCommandEvent&) { Abre(this->*destino); });
    return boton;
}

void CPieProceso::Avanza(int hecho)
{
    const auto ahora = Reloj::now();
    if (!m_enProceso) {
        m_enProceso = true;
        m_reloj.Empieza(ahora);
        m_abreLog->Hide();
        m_abreCarpeta->Hide();
    } else if (hecho < m_hecho) {
        m_reloj.EmpiezaFase(ahora);
    }
    m_hecho = hecho;
    Escribe(wxString::FromUTF8(m_reloj.PasadoYResto(ahora, hecho)));
}

void CPieProceso::Termina(const CEscritos& escritos)
{
    const std::string pasado = m_reloj.Pasado(Reloj::now());
    wxString texto;
    if (m_enProceso && pasado != "0:00")
        texto = wxString::Format(wxString::FromUTF8(kDuracion), pasado);
    m_enProceso = false;
    m_log = AWx(escritos.log);
    m_carpeta = CarpetaDeSalidas(escritos);
    const bool hayLog = !m_log.empty() && wxFileExists(m_log);
    const bool vacio = hayLog && wxFileName::GetSize(m_log) == 0;
    if (vacio)
        texto += (texto.empty() ? "" : ".  ") + wxString::FromUTF8(kLogVacio);
    Escribe(texto);
    Ofrece(*m_abreLog, kNombreLog, hayLog && !vacio ? m_log : wxString());
    Ofrece(*m_abreCarpeta, kNombreCarpeta, m_carpeta);
    Layout();
}

void CPieProceso::Ofrece(wxButton& boton, const wxString& nombre, const wxString& ruta)
{
    boton.Show(!ruta.empty());
    boton.SetToolTip(ruta);
    PonNombreAccesible(boton, nombre + ruta);
}

void CPieProceso::Escribe(const wxString& texto)
{
    if (m_texto->GetLabelText() != texto)
        m_texto->SetLabelText(texto);
}

void CPieProceso::Abre(const wxString& ruta)
{
    if (AbreConElSistema(ruta))
        return;
    const wxString queja = wxString::Format(wxString::FromUTF8(kNoSeAbre), ruta);
    CCajaMensaje(wxGetTopLevelParent(this), queja, kTituloNoSeAbre, MB_ICONERROR).ShowModal();
}
