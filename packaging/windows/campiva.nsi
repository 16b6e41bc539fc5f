; The installer: for the user alone, who needs no administrator, or for all. Silent with /S, then for
; the user alone unless /AllUsers says otherwise; /Path enters its folder in PATH. Where Campiva is
; already, its place is kept and it is taken away first. Nothing is written over or taken away that isn't,
; byte by byte, what was installed (own_files.nsh); what the user stored stays, too.
;   makensis -INPUTCHARSET UTF8 -DVERSION=1.2.3 -DCONTENT=FOLDER -DLISTS=FOLDER -DICON=FILE \
;     -DSIDE=PICTURE -DCOMPANY=NAME -DDESCRIPTION=TEXT -DCOPYRIGHT=TEXT -DOUT=FILE campiva.nsi
; The lists are content.nsh and samples.nsh, by list_content.cmake.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off ; the same content is the same installer, whenever it was built
ManifestDPIAware true
ManifestSupportedOS all

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
!include "${__FILEDIR__}/own_files.nsh"
!include "${__FILEDIR__}/path.nsh"
!include "${LISTS}/content.nsh"
!include "${LISTS}/samples.nsh"

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
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAsUser
!insertmacro MUI_PAGE_WELCOME
!define MULTIUSER_INSTALLMODEPAGE_TEXT_TOP \
  "Elija si instala ${PRODUCT} para usted o para todos los que usan este equipo."
!define MULTIUSER_INSTALLMODEPAGE_TEXT_ALLUSERS "Para todos los usuarios de este equipo"
!define MULTIUSER_INSTALLMODEPAGE_TEXT_CURRENTUSER "Solo para mí"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

Var Given ; the folder that the line names
Var Older ; the folder of the one that is there
Var OlderMode ; whose it is
Var OlderIsSafe ; 1 where it takes only its own away
Var Aside ; where its folder of samples waits
Var Place ; below which a list's files are taken away

!insertmacro FUNCTION_SUM_OF_FILE ""
!insertmacro FUNCTION_SUM_OF_FILE "un."
!insertmacro FUNCTION_DELETE_OWN ""
!insertmacro FUNCTION_DELETE_OWN "un."
!insertmacro FUNCTION_FREE_NAME
!insertmacro FUNCTION_MAKE_ROOM
!insertmacro FUNCTION_ENTER_PATH
!insertmacro FUNCTION_LEAVE_PATH "un."

; Not with the administrator's rights that the installer may have.
Function StartAsUser
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\campiva-gui.exe"'
FunctionEnd

; Ends with status 2 and the text, which stands in a box where somebody sits there.
!macro GIVE_UP text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel 2
  Quit
!macroend

; Goes on when the program $0 doesn't run, or isn't there.
!macro FUNCTION_WAIT_FOR_PROGRAM un
Function ${un}WaitForProgram
  ${DoWhile} ${FileExists} "$0"
    ClearErrors
    FileOpen $3 "$0" a
    ${IfNot} ${Errors}
      FileClose $3
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "${PRODUCT} está abierto. Ciérrelo para continuar.$\r$\n$\r$\n$0" /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Quit
  ${Loop}
FunctionEnd
!macroend
!insertmacro FUNCTION_WAIT_FOR_PROGRAM ""
!insertmacro FUNCTION_WAIT_FOR_PROGRAM "un."
!macro WAIT_FOR_PROGRAM un name
  StrCpy $0 "${name}.exe"
  Call ${un}WaitForProgram
!macroend
!macro WAIT_FOR_PROGRAMS un folder
  !insertmacro WAIT_FOR_PROGRAM "${un}" "${folder}\campiva-gui"
  !insertmacro WAIT_FOR_PROGRAM "${un}" "${folder}\campiva"
  !insertmacro WAIT_FOR_PROGRAM "${un}" "${folder}\campiva-informe"
  !insertmacro WAIT_FOR_PROGRAM "${un}" "${folder}\campiva-lote"
  !insertmacro WAIT_FOR_PROGRAM "${un}" "${folder}\show_drawing"
!macroend

; Goes on when no program has the file $0 open in a way that keeps it where it is, as a viewer has the manual.
!macro FUNCTION_WAIT_FOR_FILE un
Function ${un}WaitForFile
  !define DELETE_AND_WRITE 0x40010000
  !define SHARE_ALL 7
  !define OPEN_EXISTING 3
  !define SHARING_VIOLATION 32
  ${Do}
    System::Call 'kernel32::CreateFileW(w r0, i ${DELETE_AND_WRITE}, i ${SHARE_ALL}, p 0, i ${OPEN_EXISTING}, i 0, p 0) p .r3 ?e'
    Pop $4
    ${If} $3 <> -1
      System::Call 'kernel32::CloseHandle(p r3)'
      ${ExitDo}
    ${EndIf}
    ${If} $4 <> ${SHARING_VIOLATION}
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "Algún programa tiene abierto este archivo. Ciérrelo para continuar.$\r$\n$\r$\n$0" /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Quit
  ${Loop}
  !undef DELETE_AND_WRITE
  !undef SHARE_ALL
  !undef OPEN_EXISTING
  !undef SHARING_VIOLATION
FunctionEnd
!macroend
!insertmacro FUNCTION_WAIT_FOR_FILE ""
!insertmacro FUNCTION_WAIT_FOR_FILE "un."
!macro WAIT_FOR_OWN_FILE un name folder sum
  StrCpy $0 "$Place\${name}"
  Call ${un}WaitForFile
!macroend

; Two at a time would take each other's files for somebody's own. The turn ends with what installs.
Function WaitForTurn
  !define ABANDONED 0x80
  System::Call 'kernel32::CreateMutexW(p 0, i 0, w "Global\${PRODUCT}.Instalador") p .r0'
  System::Call 'kernel32::WaitForSingleObject(p r0, i 60000) i .r1'
  ${If} $1 <> 0
  ${AndIf} $1 <> ${ABANDONED}
    !insertmacro GIVE_UP "Otra instalación de ${PRODUCT} está en marcha. Espere a que acabe y repita esta."
  ${EndIf}
  !undef ABANDONED
FunctionEnd

; Takes the one in $Older away. The first release's would delete all that stands in its folder of samples, which
; so is put aside; what of it is no sample comes back.
Function TakeOlderAway
  !insertmacro WAIT_FOR_PROGRAMS "" "$Older"
  StrCpy $Place $Older
  !insertmacro EACH_CONTENT_FILE WAIT_FOR_OWN_FILE ""
  StrCpy $Aside ""
  ${If} $OlderIsSafe <> 1
  ${AndIf} ${FileExists} "$Older\Muestras\*.*"
    StrCpy $0 "$Older\Muestras"
    Call FreeName
    StrCpy $Aside $2
    ClearErrors
    Rename "$Older\Muestras" "$Aside"
    ${If} ${Errors}
      !insertmacro GIVE_UP "Algún programa tiene abierto algo de esta carpeta. Ciérrelo y repita la instalación.$\r$\n$\r$\n$Older\Muestras"
    ${EndIf}
  ${EndIf}
  ClearErrors
  ExecWait '"$Older\${REMOVER}" /S /$OlderMode _?=$Older' $0
  ${If} ${Errors}
    StrCpy $0 2
  ${EndIf}
  ${If} $Aside != ""
    Rename "$Aside" "$Older\Muestras"
  ${EndIf}
  ${If} $0 <> 0
    !insertmacro GIVE_UP "No se pudo quitar la versión anterior de ${PRODUCT}."
  ${EndIf}
  ${If} $Aside != ""
    StrCpy $Place "$Older\Muestras"
    !insertmacro EACH_SAMPLE_FILE DELETE_OWN_FILE ""
    !insertmacro EACH_SAMPLE_FOLDER DELETE_OWN_FOLDER ""
    RMDir "$Place"
  ${EndIf}
  Delete "$Older\${REMOVER}" ; which couldn't take itself away
  RMDir "$Older"
FunctionEnd

; Where one is installed in a mode: $Older, empty for none, and what belongs to it.
!macro LOOK_FOR_OLDER root mode
  StrCpy $OlderMode ${mode}
  ReadRegStr $Older ${root} "${ENTRY}" "InstallLocation"
  ReadRegDWORD $OlderIsSafe ${root} "${ENTRY}" "OnlyItsOwn"
  ${IfNot} ${FileExists} "$Older\${REMOVER}"
    StrCpy $Older ""
  ${EndIf}
!macroend

; There is to be one on a machine: the user's own gives way to the one for all, and that is brought up to
; date rather than joined by another one.
Function LookForTheOther
  ${If} $MultiUser.InstallMode == AllUsers
    !insertmacro LOOK_FOR_OLDER HKCU CurrentUser
    ${If} $Older != ""
      MessageBox MB_YESNO|MB_ICONQUESTION \
        "${PRODUCT} está instalado también solo para usted. ¿Quitar ese?$\r$\n$\r$\n$Older" /SD IDYES IDNO +2
      Call TakeOlderAway
    ${EndIf}
  ${Else}
    !insertmacro LOOK_FOR_OLDER HKLM AllUsers
    ${If} $Older == ""
      Return
    ${EndIf}
    ${If} $MultiUser.Privileges == "Admin"
      MessageBox MB_YESNO|MB_ICONQUESTION \
        "${PRODUCT} está instalado ya para todos. ¿Actualizar ese? Si no, se instala otro solo para usted.$\r$\n$\r$\n$Older" \
        /SD IDNO IDNO +2
      Call MultiUser.InstallMode.AllUsers
    ${Else}
      MessageBox MB_OKCANCEL|MB_ICONINFORMATION \
        "${PRODUCT} está instalado ya para todos. Se instala otro, solo para usted.$\r$\n$\r$\n$Older" \
        /SD IDOK IDOK +3
      SetErrorLevel 1
      Quit
    ${EndIf}
  ${EndIf}
FunctionEnd

!macro MAKE_ROOM_FOR more name folder sum
  StrCpy $0 "$INSTDIR\${name}"
  StrCpy $1 ${sum}
  Call MakeRoom
  ${If} ${Errors}
    !insertmacro GIVE_UP "Hay otro archivo en su lugar, y no se puede apartar.$\r$\n$\r$\n$0"
  ${EndIf}
!macroend

!macro INSTALL_FILE more name folder sum
  SetOutPath "$INSTDIR\${folder}"
  ClearErrors
  File "${CONTENT}/${name}"
  ${If} ${Errors}
    !insertmacro GIVE_UP "No se pudo escribir$\r$\n$INSTDIR\${name}"
  ${EndIf}
!macroend

Section "${PRODUCT}" SECTION_PROGRAM
  SectionIn RO
  Call WaitForTurn
  StrCpy $Place $INSTDIR
  !insertmacro EACH_CONTENT_FILE WAIT_FOR_OWN_FILE "" ; before anything goes
  Call LookForTheOther
  ${If} $MultiUser.InstallMode == AllUsers
    !insertmacro LOOK_FOR_OLDER HKLM AllUsers
  ${Else}
    !insertmacro LOOK_FOR_OLDER HKCU CurrentUser
  ${EndIf}
  Call LookForRoom
  ${If} $Older != ""
    Call TakeOlderAway
  ${EndIf}

  CreateDirectory "$INSTDIR"
  !insertmacro EACH_CONTENT_FILE MAKE_ROOM_FOR ""
  !insertmacro MAKE_ROOM_FOR "" "${REMOVER}" "" no
  WriteUninstaller "$INSTDIR\${REMOVER}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\campiva-gui.exe"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "${COMPANY}"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\${REMOVER}" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" \
    '"$INSTDIR\${REMOVER}" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${ENTRY}" "OnlyItsOwn" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
  SetOverwrite try
  !insertmacro EACH_CONTENT_FILE INSTALL_FILE ""
  SectionGetSize ${SECTION_PROGRAM} $0
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" $0

  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  ; Where it begins to look for files. For all it is no one's documents; the program knows its user's.
  ${If} $MultiUser.InstallMode == CurrentUser
    SetOutPath "$DOCUMENTS"
  ${Else}
    SetOutPath "$INSTDIR"
  ${EndIf}
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk" "$INSTDIR\campiva-gui.exe"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT}.lnk" "$INSTDIR\campiva.chm"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT} (navegador).lnk" \
    "$INSTDIR\manual\inicio.html"
  CreateShortcut "$SMPROGRAMS\${PRODUCT}\Muestras de ${PRODUCT}.lnk" "$INSTDIR\campiva-muestras.exe"
SectionEnd

; While the older one is whole: without a word there is no page that would ask for room.
Function LookForRoom
  SectionGetSize ${SECTION_PROGRAM} $0
  ${If} $Older == $INSTDIR
    ReadRegDWORD $1 SHCTX "${ENTRY}" "EstimatedSize"
    IntOp $0 $0 - $1
  ${EndIf}
  IntOp $0 $0 / 1024
  ${GetRoot} "$INSTDIR" $1
  ClearErrors
  ${DriveSpace} "$1\" "/D=F /S=M" $1
  ${IfNot} ${Errors}
  ${AndIf} $1 <= $0
    !insertmacro GIVE_UP "No hay sitio en el disco para$\r$\n$INSTDIR"
  ${EndIf}
FunctionEnd

Section /o "Los programas en PATH" SECTION_PATH
  Call EnterPath
  WriteRegDWORD SHCTX "${ENTRY}" "InPath" 1
SectionEnd

Section Uninstall
  !insertmacro WAIT_FOR_PROGRAMS "un." "$INSTDIR"
  StrCpy $Place $INSTDIR
  !insertmacro EACH_CONTENT_FILE WAIT_FOR_OWN_FILE "un."
  ReadRegDWORD $0 SHCTX "${ENTRY}" "InPath"
  ${If} $0 = 1
    Call un.LeavePath
  ${EndIf}
  !insertmacro EACH_CONTENT_FILE DELETE_OWN_FILE "un."
  !insertmacro EACH_CONTENT_FOLDER DELETE_OWN_FOLDER "un."
  Delete "$INSTDIR\campiva.chw" ; which the viewer makes beside the manual
  Delete "$INSTDIR\${REMOVER}"
  RMDir "$INSTDIR" ; what else somebody put there stays

  Delete "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT}.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Manual de ${PRODUCT} (navegador).lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\Muestras de ${PRODUCT}.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"
  DeleteRegKey SHCTX "${ENTRY}"
SectionEnd

Function .onInit
  SetRegView 64
  StrCpy $Given $INSTDIR
  !insertmacro MULTIUSER_INIT
  ${If} $Given != ""
    StrCpy $INSTDIR $Given
  ${EndIf}
  ReadRegDWORD $0 SHCTX "${ENTRY}" "InPath"
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/Path" $2
  ${IfNot} ${Errors}
  ${OrIf} $0 = 1
    !insertmacro SelectSection ${SECTION_PATH}
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd
