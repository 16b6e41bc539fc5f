; The installer: for the user alone, who needs no administrator, or for all. Silent with /S, then for
; the user alone unless /AllUsers says otherwise. Where Campiva is already, its place is kept and it is
; taken away first. Removal leaves what the user stored.
;   makensis -INPUTCHARSET UTF8 -DVERSION=1.2.3 -DPROGRAMS=FOLDER -DSAMPLES=FOLDER -DICON=FILE \
;     -DSIDE=PICTURE -DCOMPANY=NAME -DDESCRIPTION=TEXT -DCOPYRIGHT=TEXT -DOUT=FILE campiva.nsi
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off ; the same content is the same installer, whenever it was built

!define PRODUCT "Campiva"
!define REMOVER "Desinstalar.exe"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "${PRODUCT}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${ENTRY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${ENTRY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_USE_PROGRAMFILES64
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

Name "${PRODUCT}"
OutFile "${OUT}"
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=0 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=0 "FileDescription" "${DESCRIPTION}"
VIAddVersionKey /LANG=0 "CompanyName" "${COMPANY}"
VIAddVersionKey /LANG=0 "LegalCopyright" "${COPYRIGHT}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAsUser
!insertmacro MUI_PAGE_WELCOME
!define MULTIUSER_INSTALLMODEPAGE_TEXT_TOP \
  "Elija si instala ${PRODUCT} para usted o para todos los que usan este equipo."
!define MULTIUSER_INSTALLMODEPAGE_TEXT_ALLUSERS "Para todos los usuarios de este equipo"
!define MULTIUSER_INSTALLMODEPAGE_TEXT_CURRENTUSER "Solo para mí"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

Var Given ; the folder that the line names
Var Older ; the folder of the one that is there

; Not with the administrator's rights that the installer may have.
Function StartAsUser
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\campiva-gui.exe"'
FunctionEnd

; Goes on when no program of the folder in $0 runs.
!macro WAIT_FOR_PROGRAMS
  ${For} $1 1 2
    StrCpy $2 "$0\campiva-gui.exe"
    ${If} $1 = 2
      StrCpy $2 "$0\campiva.exe"
    ${EndIf}
    ${DoWhile} ${FileExists} "$2"
      ClearErrors
      FileOpen $3 "$2" a
      ${IfNot} ${Errors}
        FileClose $3
        ${ExitDo}
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
        "${PRODUCT} está abierto. Ciérrelo para continuar.$\r$\n$\r$\n$2" /SD IDCANCEL IDRETRY +3
      SetErrorLevel 2
      Quit
    ${Loop}
  ${Next}
!macroend

Function .onInit
  SetRegView 64
  StrCpy $Given $INSTDIR
  !insertmacro MULTIUSER_INIT
  ${If} $Given != ""
    StrCpy $INSTDIR $Given
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section
  ReadRegStr $Older SHCTX "${ENTRY}" "InstallLocation"
  ${If} $Older != ""
  ${AndIf} ${FileExists} "$Older\${REMOVER}"
    StrCpy $0 $Older
    !insertmacro WAIT_FOR_PROGRAMS
    ClearErrors
    ExecWait '"$Older\${REMOVER}" /S /$MultiUser.InstallMode _?=$Older' $0
    ${If} ${Errors}
    ${OrIf} $0 <> 0
      MessageBox MB_OK|MB_ICONSTOP "No se pudo quitar la versión anterior de ${PRODUCT}." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    Delete "$Older\${REMOVER}" ; which couldn't take itself away
    RMDir "$Older"
  ${EndIf}

  SetOutPath "$INSTDIR"
  File "${PROGRAMS}\campiva-gui.exe"
  File "${PROGRAMS}\campiva.exe"
!ifdef REPORT
  File "${PROGRAMS}\campiva-informe.exe"
!endif
  File "${PROGRAMS}\campiva.chm"
  File "${PROGRAMS}\campiva.chm.sha256"
  File "${PROGRAMS}\campiva.txt"
  File "${PROGRAMS}\Ayuda IDC.txt"
  SetOutPath "$INSTDIR\Muestras"
  File /r "${SAMPLES}\*.*"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\${REMOVER}"

  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk" "$INSTDIR\campiva-gui.exe"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT}.lnk" "$INSTDIR\campiva.chm"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Muestras de ${PRODUCT}.lnk" "$INSTDIR\Muestras"

  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\campiva-gui.exe"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "${COMPANY}"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\${REMOVER}" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" \
    '"$INSTDIR\${REMOVER}" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" $0
SectionEnd

Section Uninstall
  StrCpy $0 $INSTDIR
  !insertmacro WAIT_FOR_PROGRAMS
  Delete "$INSTDIR\campiva-gui.exe"
  Delete "$INSTDIR\campiva.exe"
  Delete "$INSTDIR\campiva-informe.exe"
  Delete "$INSTDIR\campiva.chm"
  Delete "$INSTDIR\campiva.chm.sha256"
  Delete "$INSTDIR\campiva.chw" ; which the viewer makes beside it
  Delete "$INSTDIR\campiva.txt"
  Delete "$INSTDIR\Ayuda IDC.txt"
  RMDir /r "$INSTDIR\Muestras" ; with what was made of them
  Delete "$INSTDIR\${REMOVER}"
  RMDir "$INSTDIR" ; what else somebody put there stays

  Delete "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT}.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Muestras de ${PRODUCT}.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"
  DeleteRegKey SHCTX "${ENTRY}"
SectionEnd
