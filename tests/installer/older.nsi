; What the first release's installer did, as far as it matters to a newer one: samples below the program's
; folder, and a removal that takes that folder away with all that is in it.
;   makensis -DCONTENT=FOLDER -DSAMPLES=FOLDER -DOUT=FILE older.nsi
Unicode true
Target amd64-unicode
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Campiva"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "Campiva"
!define MULTIUSER_USE_PROGRAMFILES64
!include MultiUser.nsh
Name "Campiva"
OutFile "${OUT}"

Function .onInit
  SetRegView 64
  !insertmacro MULTIUSER_INIT
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section
  SetOutPath "$INSTDIR"
  File "${CONTENT}/campiva.exe"
  File "${CONTENT}/campiva.txt"
  SetOutPath "$INSTDIR\Muestras"
  File /r "${SAMPLES}/*.*"
  WriteUninstaller "$INSTDIR\Desinstalar.exe"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "1.6.6"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
SectionEnd

Section Uninstall
  Delete "$INSTDIR\campiva.exe"
  Delete "$INSTDIR\campiva.txt"
  RMDir /r "$INSTDIR\Muestras"
  Delete "$INSTDIR\Desinstalar.exe"
  RMDir "$INSTDIR"
  DeleteRegKey SHCTX "${ENTRY}"
SectionEnd
