#pragma once

#include "platform/dialog.h"

/// The About box: the values of the program's version block.
class CAcercaDeDlg : public CDialog {
public:
    CAcercaDeDlg();

protected:
    BOOL OnInitDialog() override;
};
