#pragma once

// The system's own headers, beside the layer that has the same names. To be included before any
// header of the layer, by this folder's sources and tests alone.

// Two records and a function of the layer are called as the system's are: here those of the system
// have other names.
#define POINT PuntoDelSistema
#define HELPINFO AyudaDelSistema
#define InitCommonControls IniciaControlesDelSistema

#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>
#include <oleacc.h>
#include <shellapi.h>
#include <shobjidl.h>

#undef POINT
#undef HELPINFO
#undef InitCommonControls

// Operations of the layer's classes that the system has as macros. Its own are called by their
// wide names.
#undef GetWindowText
#undef SetWindowText
#undef SendMessage
#undef MessageBox
#undef WinHelp
#undef GetProfileInt
#undef GetProfileString
#undef WriteProfileString

// The layer declares these numbers itself, the same ones.
#undef IDOK
#undef IDCANCEL
#undef IDRETRY
#undef IDYES
#undef IDNO
#undef MB_OK
#undef MB_YESNO
#undef MB_RETRYCANCEL
#undef MB_TYPEMASK
#undef MB_ICONERROR
#undef MB_ICONQUESTION
#undef MB_ICONWARNING
#undef MB_ICONMASK
#undef WM_HELP
#undef WM_COMMAND
#undef PBM_SETPOS
#undef OFN_HIDEREADONLY
#undef OFN_FILEMUSTEXIST
