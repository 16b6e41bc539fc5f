#pragma once

#include "platform/cwinapp.h"
#include "platform/dialog.h"
#include "platform/front_end.h"
#include "resources/program_resources.h"

/// A user who isn't there: nothing is shown, every box is answered at once.
class CSilencio : public CFrontal {
public:
    void MuestraModal(CDialog& /*dialogo*/) override {}
    void AtiendeUno(CDialog& /*dialogo*/) override {}
    int Caja(const CString& /*texto*/, const CString& /*titulo*/, UINT /*flags*/) override
    {
        return IDOK;
    }
    bool EligeFichero(CFileDialog& /*dialogo*/) override { return false; }
    void Refleja(const CDialog& /*dialogo*/, const CControl& /*control*/) override {}
    bool MuestraAyuda(const CString& /*ficheroAyuda*/) override { return false; }
    bool MuestraAyudaControl(const CString& /*temas*/, const HH_POPUP& /*popup*/) override
    {
        return false;
    }
};

/// An application for such a user. It reads and stores no settings.
class CAplicacionSilenciosa : public CWinApp {
public:
    CAplicacionSilenciosa() { Arranca(m_frontal, RecursosDelPrograma(), {}, {}); }

private:
    CSilencio m_frontal;
};
