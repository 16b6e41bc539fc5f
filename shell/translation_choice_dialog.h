#pragma once

#include "platform/dialog.h"

/// The first thing that a user sees: which translation to run. The answer is remembered.
class CTipoTraduccionDlg : public CDialog {
public:
    CTipoTraduccionDlg();

    /// 0 Catastro to Vexa, 1 Vexa to Catastro, 2 Vexa to Infograf; -1 where no button is marked.
    int TipoTraduccion = -1;

protected:
    BOOL OnInitDialog() override;
    void DoDataExchange(CDataExchange* dx) override;
    /// Stores the answer, also -1, and closes the dialog with IDOK.
    void OnOK() override;
};
