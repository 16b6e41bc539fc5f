#include "platform/desktop/run_footer.h"

#include <chrono>
#include <memory>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "platform/desktop/message_box.h"
#include "platform/desktop/text.h"
#include "platform/desktop/toolkit.h"
#include "platform/dialog.h"
#include "platform/front_end.h"
#include "platform/layer_texts.h"

namespace {

constexpr int kEntreMiradas = 100; // milliseconds

} // namespace

CPieProceso::CPieProceso(wxWindow* padre, const CRelatoProceso& relato,
                         std::function<std::vector<CString>()> orden)
    : wxPanel(padre), m_relato(relato), m_orden(std::move(orden)), m_mirada(this),
      m_texto(new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END)),
      m_haceEnsayo(PonBoton(textos::kHazEnsayo, &CPieProceso::HazEnsayo)),
      m_haceInforme(PonBoton(textos::kHazInforme, &CPieProceso::HazInforme)),
      m_abreLog(PonBoton(textos::kAbreLog, &CPieProceso::AbreLog)),
      m_abreCarpeta(PonBoton(textos::kAbreCarpeta, &CPieProceso::AbreCarpeta))
{
    const int letra = GetCharWidth();
    auto* renglon = new wxBoxSizer(wxHORIZONTAL);
    renglon->Add(m_texto, 1, wxALIGN_CENTER_VERTICAL);
    for (wxButton* boton : {m_haceEnsayo, m_haceInforme, m_abreLog, m_abreCarpeta}) {
        renglon->Add(boton, 0, wxLEFT, letra);
        boton->SetMinSize(boton->GetBestSize() + wxSize(2 * letra, 0));
        boton->Hide();
    }
    renglon->SetMinSize(0, m_abreLog->GetMinSize().y); // the window doesn't jump when they show
    auto* marco = new wxBoxSizer(wxVERTICAL);
    marco->Add(renglon, 1, wxEXPAND | wxLEFT | wxRIGHT, 2 * letra);
    marco->AddSpacer(letra);
    SetSizer(marco);
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { MiraSiEsta(); });
    PonAlDia();
}

wxButton* CPieProceso::PonBoton(const char* leyenda, void (CPieProceso::*alPulsar)())
{
    auto* boton = new wxButton(this, wxID_ANY, wxString::FromUTF8(leyenda), wxDefaultPosition,
                               wxDefaultSize, wxBU_EXACTFIT);
    boton->Bind(wxEVT_BUTTON, [this, alPulsar](wxCommandEvent&) { (this->*alPulsar)(); });
    return boton;
}

void CPieProceso::PonAlDia()
{
    const wxString texto = wxString::FromUTF8(m_relato.Texto());
    if (m_texto->GetLabelText() != texto) {
        m_texto->SetLabelText(texto);
        m_texto->SetToolTip(texto); // whole, where the window is too narrow
    }
    if (m_haceEnsayo->Show(m_relato.OfreceEnsayo())) {
        m_haceEnsayo->SetToolTip(wxString::FromUTF8(textos::kNombreHazEnsayo));
        PonNombreAccesible(*m_haceEnsayo, wxString::FromUTF8(textos::kNombreHazEnsayo));
    }
    Ofrece(*m_haceInforme, textos::kNombreHazInforme, m_relato.DeInforme());
    Ofrece(*m_abreLog, textos::kNombreAbreLog, m_relato.Log());
    Ofrece(*m_abreCarpeta, textos::kNombreAbreCarpeta, m_relato.Carpeta());
    if (!m_relato.EnProceso())
        Layout();
}

void CPieProceso::Ofrece(wxButton& boton, const char* nombre, const CString& ruta)
{
    if (ruta.IsEmpty()) {
        boton.Hide();
        return;
    }
    boton.Show();
    boton.SetToolTip(AWx(ruta));
    PonNombreAccesible(boton, nombre + AWx(ruta));
}

void CPieProceso::Haz(CPaginaPedida pedida)
{
    m_queja = std::move(pedida.queja);
    m_foco = FindFocus(); // a button that is switched off loses it
    m_texto->SetLabelText(wxString::FromUTF8(pedida.mientras));
    m_haceEnsayo->Disable();
    m_haceInforme->Disable();
    const auto trabajo = std::make_shared<std::packaged_task<CString()>>(std::move(pedida.hace));
    m_pagina = trabajo->get_future();
    try {
        std::thread([trabajo] { (*trabajo)(); }).detach();
    } catch (const std::system_error&) { // the system has no thread to give: the window waits
        (*trabajo)();
    }
    m_mirada.Start(kEntreMiradas);
}

void CPieProceso::MiraSiEsta()
{
    if (m_relato.EnProceso()) // which would stand still behind a box
        return;
    if (m_pagina.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return;
    m_mirada.Stop();
    CString pagina;
    try {
        pagina = m_pagina.get();
    } catch (const std::bad_alloc&) { // then there is none
    }
    m_haceEnsayo->Enable();
    m_haceInforme->Enable();
    if (FindFocus() == nullptr && m_foco != nullptr)
        m_foco->SetFocus();
    PonAlDia();
    if (pagina.IsEmpty())
        Quejate(m_queja);
    else
        Abre(pagina);
}

void CPieProceso::Abre(const CString& ruta)
{
    if (!AbreConElSistema(AWx(ruta)))
        Quejate(NoSeAbre(ruta));
}

void CPieProceso::Quejate(const std::string& queja)
{
    MuestraCaja(wxGetTopLevelParent(this), wxString::FromUTF8(queja), textos::kError, MB_ICONERROR);
}
