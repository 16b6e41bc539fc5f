; The samples, put where their user may work on them: a folder among his documents, which is shown then.
; What is there already stays as it is. With /S nothing is shown.
;   makensis -INPUTCHARSET UTF8 -DPRODUCT=NAME -DSAMPLES=FOLDER -DICON=FILE -DOUT=FILE samples.nsi
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS all
SilentInstall silent
Name "Muestras de ${PRODUCT}"
Icon "${ICON}"
OutFile "${OUT}"
!include FileFunc.nsh
!include LogicLib.nsh

Section
  SetOverwrite off
  SetOutPath "$DOCUMENTS\Muestras de ${PRODUCT}"
  ClearErrors
  File /r "${SAMPLES}\*.*"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "No se pudieron copiar todas las muestras en$\r$\n$OUTDIR"
    SetErrorLevel 2
    Quit
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/S" $1
  ${If} ${Errors}
    ExecShell "open" "$OUTDIR"
  ${EndIf}
SectionEnd
