; $INSTDIR in the PATH of the user or of all. Lists of folders are longer than this language's texts may
; be, so they stay in memory that the system gives.

!define PATH_HOLDER_CURRENTUSER 0x80000001
!define PATH_KEY_CURRENTUSER "Environment"
!define PATH_HOLDER_ALLUSERS 0x80000002
!define PATH_KEY_ALLUSERS "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"

; Opens the key of $MultiUser.InstallMode as $1 and has at $4 its list, between two ";", with its type in
; $3, at $5 the place of ";$INSTDIR;" in it. $1 is 0 where the key can't be opened.
!macro OPEN_PATH
  !define ALL_RIGHTS 0xF013F ; of the 64-bit registry, too
  !define NOT_THERE 2
  !define EXPANDABLE 2 ; it may name variables
  StrCpy $0 ${PATH_HOLDER_CURRENTUSER}
  StrCpy $2 "${PATH_KEY_CURRENTUSER}"
  ${If} $MultiUser.InstallMode == AllUsers
    StrCpy $0 ${PATH_HOLDER_ALLUSERS}
    StrCpy $2 "${PATH_KEY_ALLUSERS}"
  ${EndIf}
  System::Call 'advapi32::RegOpenKeyExW(p r0, w r2, i 0, i ${ALL_RIGHTS}, *p 0 r1) i .r0'
  ${If} $0 <> 0
    StrCpy $1 0
  ${Else}
    StrCpy $2 0
    System::Call 'advapi32::RegQueryValueExW(p r1, w "Path", p 0, *i 2 r3, p 0, *i 0 r2) i .r0'
    IntOp $6 $2 + 8192 ; what is put to it, and the zero at its end
    System::Alloc $6
    Pop $4
    System::Call 'kernel32::lstrcpyW(p r4, w ";")'
    ${If} $0 = 0
      IntPtrOp $5 $4 + 2
      System::Call 'advapi32::RegQueryValueExW(p r1, w "Path", p 0, p 0, p r5, *i r2) i .r0'
    ${ElseIf} $0 = ${NOT_THERE}
      StrCpy $0 0
      StrCpy $3 ${EXPANDABLE}
    ${EndIf}
    ${If} $0 <> 0 ; a list that can't be read is left alone
      System::Free $4
      System::Call 'advapi32::RegCloseKey(p r1)'
      StrCpy $1 0
    ${EndIf}
  ${EndIf}
  ${If} $1 <> 0
    System::Call 'kernel32::lstrlenW(p r4) i .r0'
    ${If} $0 > 1
      System::Call 'kernel32::lstrcatW(p r4, w ";")'
    ${EndIf}
    System::Call 'shlwapi::StrStrIW(p r4, w ";$INSTDIR;") p .r5'
  ${EndIf}
  !undef ALL_RIGHTS
  !undef NOT_THERE
  !undef EXPANDABLE
!macroend

; Stores the list without what stands around it, and tells the programs that are open.
!macro CLOSE_PATH
  !define BROADCAST 0xFFFF
  !define SETTING_CHANGED 0x1A
  IntPtrOp $5 $4 + 2
  System::Call 'kernel32::lstrlenW(p r5) i .r0'
  ${If} $0 > 0
    IntOp $0 $0 - 1
    IntOp $0 $0 * 2
    IntPtrOp $2 $5 + $0
    System::Call 'kernel32::lstrcpyW(p r2, w "")'
    IntOp $0 $0 + 2
    System::Call 'advapi32::RegSetValueExW(p r1, w "Path", i 0, i r3, p r5, i r0)'
  ${Else}
    System::Call 'advapi32::RegDeleteValueW(p r1, w "Path")'
  ${EndIf}
  System::Call 'advapi32::RegCloseKey(p r1)'
  System::Free $4
  System::Call 'user32::SendMessageTimeoutW(p ${BROADCAST}, i ${SETTING_CHANGED}, p 0, w "Environment", i 2, i 1000, *p .r0)'
  !undef BROADCAST
  !undef SETTING_CHANGED
!macroend

; Puts $INSTDIR at the end, unless it is there.
!macro FUNCTION_ENTER_PATH
Function EnterPath
  !insertmacro OPEN_PATH
  ${If} $1 <> 0
    ${If} $5 = 0
      System::Call 'kernel32::lstrcatW(p r4, w "$INSTDIR;")'
    ${EndIf}
    !insertmacro CLOSE_PATH
  ${EndIf}
FunctionEnd
!macroend

!macro FUNCTION_LEAVE_PATH un
Function ${un}LeavePath
  !insertmacro OPEN_PATH
  ${If} $1 <> 0
    ${If} $5 <> 0
      StrLen $0 ";$INSTDIR"
      IntOp $0 $0 * 2
      IntPtrOp $2 $5 + $0
      System::Call 'kernel32::lstrlenW(p r2) i .r0'
      IntOp $0 $0 * 2
      IntOp $0 $0 + 2
      System::Call 'kernel32::RtlMoveMemory(p r5, p r2, p r0)'
    ${EndIf}
    !insertmacro CLOSE_PATH
  ${EndIf}
FunctionEnd
!macroend
