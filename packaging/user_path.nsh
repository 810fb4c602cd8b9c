; Adds a folder to the user's PATH and takes it out again. The value may be longer than a variable
; of the installer, which would cut it: it stays in memory outside.

!define HKEY_CURRENT_USER -2147483647  ; 0x80000001 with its sign
!define RRF_ANY_TEXT 0x10000006  ; REG_SZ or REG_EXPAND_SZ, not expanded
!define REG_EXPAND_SZ 2

; Gives in $1 a block of memory with ";" and the user's PATH, with room for $2 more bytes, and in $3
; the type of the value.
!macro ReadUserPath
    System::Call 'advapi32::RegGetValueW(p ${HKEY_CURRENT_USER}, w "Environment", w "Path", \
        i ${RRF_ANY_TEXT}, *i .r3, p 0, *i .r4) i .r5'
    ${If} $5 <> 0
        StrCpy $4 0
        StrCpy $3 ${REG_EXPAND_SZ}
    ${EndIf}
    IntOp $6 $4 + $2
    IntOp $6 $6 + 8
    System::Alloc $6
    Pop $1
    System::Call 'kernel32::lstrcpyW(p r1, w ";")'
    ${If} $4 > 0
        IntPtrOp $5 $1 + 2
        System::Call 'advapi32::RegGetValueW(p ${HKEY_CURRENT_USER}, w "Environment", w "Path", \
            i ${RRF_ANY_TEXT}, p 0, p r5, *i r4r4)'
    ${EndIf}
!macroend

; Finds the entry $0 among those that begin at $1: $5 is the ";" before it, 0 when it is not there;
; $6 is what follows.
!macro FindInUserPath
    StrCpy $5 $1
    ${Do}
        System::Call 'shlwapi::StrStrIW(p r5, w ";$0") p .r5'
        ${If} $5 == 0
            ${Break}
        ${EndIf}
        StrLen $6 ";$0"
        IntOp $6 $6 * 2
        IntPtrOp $6 $6 + $5
        System::Call '*$6(&i2 .r7)'
        ${If} $7 = 0
        ${OrIf} $7 = 59  ; ";"
            ${Break}
        ${EndIf}
        StrCpy $5 $6
    ${Loop}
!macroend

; Writes what is at $1, without the ";" before it; nothing left means no value.
!macro WriteUserPath
    System::Call 'kernel32::lstrlenW(p r1) i .r4'
    ${If} $4 > 1
        IntPtrOp $5 $1 + 2
        IntOp $4 $4 * 2  ; the end is counted in place of the ";"
        System::Call 'advapi32::RegSetKeyValueW(p ${HKEY_CURRENT_USER}, w "Environment", w "Path", \
            i r3, p r5, i r4)'
    ${Else}
        DeleteRegValue HKCU "Environment" "Path"
    ${EndIf}
    ; Windows that open from now on know of it.
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=2000
!macroend

; Takes the folder from the stack.
Function AddToUserPath
    Pop $0
    StrLen $2 ";$0"
    IntOp $2 $2 * 2
    !insertmacro ReadUserPath
    !insertmacro FindInUserPath
    ${If} $5 == 0
        System::Call 'kernel32::lstrlenW(p r1) i .r4'
        ${If} $4 > 1
            System::Call 'kernel32::lstrcatW(p r1, w ";$0")'
        ${Else}
            System::Call 'kernel32::lstrcatW(p r1, w "$0")'
        ${EndIf}
        !insertmacro WriteUserPath
    ${EndIf}
    System::Free $1
FunctionEnd

; Takes the folder from the stack.
Function un.RemoveFromUserPath
    Pop $0
    StrCpy $2 0
    !insertmacro ReadUserPath
    !insertmacro FindInUserPath
    ${If} $5 != 0
        System::Call 'kernel32::lstrlenW(p r6) i .r4'
        IntOp $4 $4 + 1
        IntOp $4 $4 * 2
        System::Call 'kernel32::RtlMoveMemory(p r5, p r6, p r4)'
        !insertmacro WriteUserPath
    ${EndIf}
    System::Free $1
FunctionEnd
