; The installer. Needs the definitions VERSION, FOLDER (of the files to be installed) and OUTPUT.
;
;   tonvale-VERSION-setup.exe [/S] [/PERCORSO] [/NOASSOCIAZIONI] [/D=FOLDER]
;
; Everything belongs to the user who runs it: no administrator, nothing outside of HKCU.
Unicode true
Target amd64-unicode
RequestExecutionLevel user
SetCompressor /SOLID lzma
SetDateSave off
ManifestDPIAware true
Name "Tonvale"
Caption "Installazione di Tonvale ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tonvale"
InstallDirRegKey HKCU "Software\Tonvale" "Cartella"
CompletedText "Operazione completata"
ShowInstDetails nevershow
ShowUninstDetails nevershow
BrandingText "Tonvale ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1040 "ProductName" "Tonvale"
VIAddVersionKey /LANG=1040 "CompanyName" "Progetto Tonvale"
VIAddVersionKey /LANG=1040 "FileDescription" "Installazione di Tonvale"
VIAddVersionKey /LANG=1040 "FileVersion" "${VERSION}.0"
VIAddVersionKey /LANG=1040 "ProductVersion" "${VERSION}.0"
VIAddVersionKey /LANG=1040 "LegalCopyright" "Copyright © 2026 Gli sviluppatori di Tonvale"

!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "Sections.nsh"
!include "user_path.nsh"

!define PRODUCT_KEY "Software\Tonvale"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tonvale"
!define CLASSES "Software\Classes"
!define FOLDER_VERB "${CLASSES}\Directory\shell\Tonvale.Registro"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "side.bmp"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TITLE "Installazione di Tonvale ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "Tonvale calcola l'esposizione al rumore dei lavoratori e il danno \
uditivo.$\r$\n$\r$\nSarà installato per il solo utente corrente: non servono diritti di \
amministratore. Una versione già presente sarà sostituita; i file di dati e i documenti non vengono \
toccati.$\r$\n$\r$\n$_CLICK"
!define MUI_FINISHPAGE_RUN "$INSTDIR\tonvale.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Avvia Tonvale"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Italian"

; Every kind of file: its extension, its name, and the number of its icon in tonvale.exe. `do` is
; the macro that takes them.
!macro ForEachKind do
    !insertmacro ${do} "lep" "Lep,d" 2
    !insertmacro ${do} "lew" "Lep,w" 3
    !insertmacro ${do} "leg" "Leq gruppi" 4
    !insertmacro ${do} "ilg" "Danno" 5
    !insertmacro ${do} "spr" "Spettro rumore" 6
    !insertmacro ${do} "spi" "Spettro DPI" 7
    !insertmacro ${do} "dpi" "Scelta DPI" 8
    !insertmacro ${do} "err" "Errore di misura" 9
    !insertmacro ${do} "tnv" "Documento" 10
!macroend

; --- Installation ---

; A data file has the verb "Verifica con Tonvale" as well. The prompt's "pause" keeps the result on
; the screen.
!macro WriteVerifyVerb extension
    !if "${extension}" != "tnv"
        WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\shell\verifica" "" "&Verifica con Tonvale"
        WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\shell\verifica" "Icon" \
            "$INSTDIR\tonvale-calc.exe"
        WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\shell\verifica\command" "" \
            '"$SYSDIR\cmd.exe" /d /s /c ""$INSTDIR\tonvale-calc.exe" verifica "%1" & pause"'
    !endif
!macroend

; What the extension belonged to is remembered, unless that is ourselves.
!macro Associate extension name icon
    WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}" "" "${name} di Tonvale"
    WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\DefaultIcon" "" "$INSTDIR\tonvale.exe,-${icon}"
    WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\shell\open" "" "&Apri"
    WriteRegStr HKCU "${CLASSES}\Tonvale.${extension}\shell\open\command" "" \
        '"$INSTDIR\tonvale.exe" "%1"'
    !insertmacro WriteVerifyVerb "${extension}"
    ReadRegStr $0 HKCU "${CLASSES}\.${extension}" ""
    ${If} $0 != "Tonvale.${extension}"
        WriteRegStr HKCU "${PRODUCT_KEY}\Precedenti" "${extension}" $0
        WriteRegStr HKCU "${CLASSES}\.${extension}" "" "Tonvale.${extension}"
    ${EndIf}
    WriteRegStr HKCU "${CLASSES}\.${extension}\OpenWithProgids" "Tonvale.${extension}" ""
!macroend

; Tells Explorer of new associations and icons.
!macro NotifyShell
    System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

; Ends the installation or removal while one of the programs in the folder $0 runs: a program that
; runs cannot be written.
!macro RefuseWhileRunning un
Function ${un}RefuseWhileRunning
    ${For} $1 1 2
        StrCpy $2 "$0\tonvale.exe"
        ${If} $1 = 2
            StrCpy $2 "$0\tonvale-calc.exe"
        ${EndIf}
        ${DoWhile} ${FileExists} "$2"
            ClearErrors
            FileOpen $3 "$2" a
            ${IfNot} ${Errors}
                FileClose $3
                ${Break}
            ${EndIf}
            MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
                "Chiudere prima Tonvale: è in uso il file$\r$\n$2" /SD IDCANCEL IDRETRY +3
            SetErrorLevel 2
            Abort
        ${Loop}
    ${Next}
FunctionEnd
!macroend
!insertmacro RefuseWhileRunning ""
!insertmacro RefuseWhileRunning "un."

; An installed version goes first, wherever it is, so that nothing of it is left behind.
Function RemoveInstalledVersion
    ReadRegStr $0 HKCU "${PRODUCT_KEY}" "Cartella"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\uninstall.exe"
        Call RefuseWhileRunning
        ExecWait '"$0\uninstall.exe" /S _?=$0'
        Delete "$0\uninstall.exe"
        RMDir "$0"
    ${EndIf}
    StrCpy $0 $INSTDIR
    Call RefuseWhileRunning
FunctionEnd

Section "Tonvale" SectionProgram
    SectionIn RO
    Call RemoveInstalledVersion
    SetOutPath "$INSTDIR"
    File "${FOLDER}/tonvale.exe"
    File "${FOLDER}/tonvale-calc.exe"
    File "${FOLDER}/tonvale.hlp"
    File "${FOLDER}/LICENSE.txt"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Tonvale.lnk" "$INSTDIR\tonvale.exe"
    WriteRegStr HKCU "${PRODUCT_KEY}" "Cartella" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Tonvale"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Progetto Tonvale"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\tonvale.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
    SectionGetSize ${SectionProgram} $0
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Tipi di file e menu di Esplora file" SectionAssociations
    !insertmacro ForEachKind Associate
    WriteRegStr HKCU "${FOLDER_VERB}" "" "&Registro Tonvale"
    WriteRegStr HKCU "${FOLDER_VERB}" "Icon" "$INSTDIR\tonvale.exe"
    WriteRegStr HKCU "${FOLDER_VERB}\command" "" \
        '"$SYSDIR\cmd.exe" /d /s /c ""$INSTDIR\tonvale-calc.exe" registro "%1" --apri & if errorlevel 2 pause"'
    WriteRegDWORD HKCU "${PRODUCT_KEY}" "Associazioni" 1
    !insertmacro NotifyShell
SectionEnd

Section /o "tonvale-calc nel percorso dei comandi" SectionPath
    Push "$INSTDIR"
    Call AddToUserPath
    WriteRegDWORD HKCU "${PRODUCT_KEY}" "Percorso" 1
SectionEnd

LangString DescriptionProgram 1040 "Il programma, la guida e tonvale-calc, che ricalcola e verifica \
i file di dati dalla riga di comando."
LangString DescriptionAssociations 1040 "I file di dati e i documenti si aprono con un doppio clic; \
il menu di Esplora file ne verifica i risultati e fa il registro di una cartella."
LangString DescriptionPath 1040 "tonvale-calc si avvia da ogni finestra dei comandi."
!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} $(DescriptionProgram)
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionAssociations} $(DescriptionAssociations)
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionPath} $(DescriptionPath)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; The choices of an installed version hold until others are made.
Function .onInit
    ReadRegStr $0 HKCU "${PRODUCT_KEY}" "Cartella"
    ${If} $0 != ""
        ReadRegDWORD $1 HKCU "${PRODUCT_KEY}" "Associazioni"
        ${If} $1 != 1
            !insertmacro UnselectSection ${SectionAssociations}
        ${EndIf}
        ReadRegDWORD $1 HKCU "${PRODUCT_KEY}" "Percorso"
        ${If} $1 = 1
            !insertmacro SelectSection ${SectionPath}
        ${EndIf}
    ${EndIf}
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/PERCORSO" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${SectionPath}
    ${EndIf}
    ClearErrors
    ${GetOptions} $0 "/NOASSOCIAZIONI" $1
    ${IfNot} ${Errors}
        !insertmacro UnselectSection ${SectionAssociations}
    ${EndIf}
FunctionEnd

; --- Removal ---

; Gives the extension back to whom it belonged, unless somebody else has taken it since.
!macro Dissociate extension name icon
    ReadRegStr $0 HKCU "${CLASSES}\.${extension}" ""
    ${If} $0 == "Tonvale.${extension}"
        ReadRegStr $0 HKCU "${PRODUCT_KEY}\Precedenti" "${extension}"
        ${If} $0 == ""
            DeleteRegValue HKCU "${CLASSES}\.${extension}" ""
        ${Else}
            WriteRegStr HKCU "${CLASSES}\.${extension}" "" $0
        ${EndIf}
    ${EndIf}
    DeleteRegValue HKCU "${CLASSES}\.${extension}\OpenWithProgids" "Tonvale.${extension}"
    DeleteRegKey /ifempty HKCU "${CLASSES}\.${extension}\OpenWithProgids"
    DeleteRegKey /ifempty HKCU "${CLASSES}\.${extension}"
    DeleteRegKey HKCU "${CLASSES}\Tonvale.${extension}"
!macroend

Section "Uninstall"
    StrCpy $0 $INSTDIR
    Call un.RefuseWhileRunning
    ReadRegDWORD $1 HKCU "${PRODUCT_KEY}" "Percorso"
    ${If} $1 = 1
        ReadRegStr $0 HKCU "${PRODUCT_KEY}" "Cartella"
        Push $0
        Call un.RemoveFromUserPath
    ${EndIf}
    ReadRegDWORD $1 HKCU "${PRODUCT_KEY}" "Associazioni"
    ${If} $1 = 1
        !insertmacro ForEachKind Dissociate
        DeleteRegKey HKCU "${FOLDER_VERB}"
        DeleteRegKey /ifempty HKCU "${CLASSES}\Directory\shell"
        DeleteRegKey /ifempty HKCU "${CLASSES}\Directory"
        !insertmacro NotifyShell
    ${EndIf}
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    DeleteRegKey HKCU "${PRODUCT_KEY}"
    Delete "$SMPROGRAMS\Tonvale.lnk"
    Delete "$INSTDIR\tonvale.exe"
    Delete "$INSTDIR\tonvale-calc.exe"
    Delete "$INSTDIR\tonvale.hlp"
    Delete "$INSTDIR\LICENSE.txt"
    Delete "$INSTDIR\uninstall.exe"
    ; Only when nothing of the user's is in it.
    RMDir "$INSTDIR"
SectionEnd
