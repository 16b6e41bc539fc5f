#pragma once

#include "platform/types.h"

// The framework's numbers for answers, boxes and messages.

inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDRETRY = 4;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;
inline constexpr UINT ID_HELP = 57670;

inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_YESNO = 4;
inline constexpr UINT MB_RETRYCANCEL = 5;
inline constexpr UINT MB_TYPEMASK = 0x0F;
inline constexpr UINT MB_ICONERROR = 16;
inline constexpr UINT MB_ICONQUESTION = 32;
inline constexpr UINT MB_ICONWARNING = 48;
inline constexpr UINT MB_ICONMASK = 0xF0;

inline constexpr UINT WM_HELP = 0x0053;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT PBM_SETPOS = 1026;
