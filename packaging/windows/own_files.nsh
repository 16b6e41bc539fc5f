; What keeps people's files theirs. A file is the installer's own where it is, byte by byte, what was
; installed: its sum stands in the list that packaging/windows/list_content.cmake makes of the content.

Var Sum

; The SHA-256 of the file in $0 goes to $Sum, in small letters; empty where it can't be read.
!macro FUNCTION_SUM_OF_FILE un
Function ${un}SumOfFile
  !define SHARE_ALL 7
  !define OPEN_EXISTING 3
  !define PROV_RSA_AES 24
  !define CRYPT_VERIFYCONTEXT 0xF0000000
  !define CALG_SHA_256 0x800C
  !define HP_HASHVAL 2
  !define PIECE 65536
  Push $1 ; file
  Push $2 ; provider
  Push $3 ; sum
  Push $4 ; a piece of the file
  Push $5 ; its length
  Push $6 ; whether a call did its work
  StrCpy $Sum ""
  System::Call 'kernel32::CreateFileW(w r0, i 0x80000000, i ${SHARE_ALL}, p 0, i ${OPEN_EXISTING}, i 0, p 0) p .r1'
  ${If} $1 <> -1
    System::Call 'advapi32::CryptAcquireContextW(*p 0 r2, p 0, p 0, i ${PROV_RSA_AES}, i ${CRYPT_VERIFYCONTEXT}) i .r6'
    System::Call 'advapi32::CryptCreateHash(p r2, i ${CALG_SHA_256}, p 0, i 0, *p 0 r3) i .r6'
    System::Alloc ${PIECE}
    Pop $4
    ${Do}
      ${If} $6 <> 0
        System::Call 'kernel32::ReadFile(p r1, p r4, i ${PIECE}, *i 0 r5, p 0) i .r6'
      ${EndIf}
      ${If} $6 = 0
      ${OrIf} $5 = 0
        ${ExitDo}
      ${EndIf}
      System::Call 'advapi32::CryptHashData(p r3, p r4, i r5, i 0) i .r6'
    ${Loop}
    ${If} $6 <> 0
      System::Call 'advapi32::CryptGetHashParam(p r3, i ${HP_HASHVAL}, p r4, *i ${PIECE} r5, i 0) i .r6'
    ${EndIf}
    ${If} $6 <> 0
      ${For} $5 1 32
        System::Call '*$4(&i1 .r6)'
        IntOp $6 $6 & 0xFF
        IntFmt $6 "%02x" $6
        StrCpy $Sum "$Sum$6"
        IntPtrOp $4 $4 + 1
      ${Next}
      IntPtrOp $4 $4 - 32
    ${EndIf}
    System::Free $4
    System::Call 'advapi32::CryptDestroyHash(p r3)'
    System::Call 'advapi32::CryptReleaseContext(p r2, i 0)'
    System::Call 'kernel32::CloseHandle(p r1)'
  ${EndIf}
  Pop $6
  Pop $5
  Pop $4
  Pop $3
  Pop $2
  Pop $1
  !undef SHARE_ALL
  !undef OPEN_EXISTING
  !undef PROV_RSA_AES
  !undef CRYPT_VERIFYCONTEXT
  !undef CALG_SHA_256
  !undef HP_HASHVAL
  !undef PIECE
FunctionEnd
!macroend

; The first of $0.anterior, $0.anterior2 ... that is free goes to $2.
!macro FUNCTION_FREE_NAME
Function FreeName
  Push $3
  StrCpy $3 1
  StrCpy $2 "$0.anterior"
  ${DoWhile} ${FileExists} "$2"
    IntOp $3 $3 + 1
    StrCpy $2 "$0.anterior$3"
  ${Loop}
  Pop $3
FunctionEnd
!macroend

; Makes room for the file $0 with the sum $1: what is there and is another one gets another name. The
; error flag tells that it couldn't.
!macro FUNCTION_MAKE_ROOM
Function MakeRoom
  ClearErrors
  ${IfNot} ${FileExists} "$0"
    Return
  ${EndIf}
  Call SumOfFile
  ClearErrors
  ${If} $Sum != $1
    Call FreeName
    ClearErrors
    Rename "$0" "$2"
  ${EndIf}
FunctionEnd
!macroend

; Deletes the file $0 where it has the sum $1.
!macro FUNCTION_DELETE_OWN un
Function ${un}DeleteOwn
  ${If} ${FileExists} "$0"
    Call ${un}SumOfFile
    ${If} $Sum == $1
      Delete "$0"
    ${EndIf}
  ${EndIf}
FunctionEnd
!macroend

; Takes a list's file and folder away, from below $Place.
!macro DELETE_OWN_FILE un name folder sum
  StrCpy $0 "$Place\${name}"
  StrCpy $1 "${sum}"
  Call ${un}DeleteOwn
!macroend
!macro DELETE_OWN_FOLDER un name
  RMDir "$Place\${name}" ; where nothing else is in it
!macroend
