; The registry: the entry of the list of programs, and the classes of the components that the program's start looks for.
; The entry remembers which of them were added, each under its own number, and which keys above were made for them.

!macro AddClass id name
    StrCpy $6 "${id}"
    StrCpy $7 "${name}"
    Call FindClass
    ${If} $0 P= 0
        ClearErrors
        WriteRegStr SHCTX "${ENTRY}" "$6" "${name}"
        WriteRegStr SHCTX "Software\Classes\CLSID\$6" "" "${name}"
        ${If} ${Errors}
            !insertmacro Fail "Die Komponenten von Bromvale konnten nicht eingetragen werden. Bromvale wurde nicht installiert."
        ${EndIf}
    ${EndIf}
!macroend

Function RegisterUnseen
    ; Asked before the first key is made.
    StrCpy $8 ""
    StrCpy $1 "Software\Classes\CLSID"
    Call AddWhetherNew
    StrCpy $1 "Software\Classes"
    Call AddWhetherNew
    StrCpy $1 "Software\Microsoft\Windows\CurrentVersion\Uninstall"
    Call AddWhetherNew
    Call KeepMadeFolders
    ClearErrors
    ; First, since a key with one other value alone is what a scan takes for an entry that is dead.
    WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\Entfernen.exe"'
    WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\Entfernen.exe" /S _?=$INSTDIR'
    WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\Bromvale.exe,0"
    WriteRegStr SHCTX "${ENTRY}" "Publisher" "${PUBLISHER}"
    WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
    WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
    StrCpy $0 0
    ${If} ${Errors}
        StrCpy $0 1
    ${EndIf}
    WriteRegStr SHCTX "${ENTRY}" "NewFolders" $Made
    ; What an older version remembers stays true.
    ClearErrors
    ReadRegStr $1 SHCTX "${ENTRY}" "NewKeys"
    ${If} ${Errors}
        WriteRegStr SHCTX "${ENTRY}" "NewKeys" $8
    ${EndIf}
    ${If} $0 = 1
        !insertmacro Fail "Bromvale konnte nicht in die Liste der Programme eingetragen werden und wurde nicht installiert."
    ${EndIf}
    !insertmacro EachClass AddClass
FunctionEnd

; What an earlier installation into the same folder has made is to go as well.
Function KeepMadeFolders
    ReadRegStr $0 SHCTX "${ENTRY}" "InstallLocation"
    Call SeeIfFolder
    ReadRegStr $0 SHCTX "${ENTRY}" "NewFolders"
    ${If} $2 = 1
    ${AndIf} $0 > $Made
        StrCpy $Made $0
    ${EndIf}
FunctionEnd

; Appends + to $8 where key $1 of the context is missing, else -.
Function AddWhetherNew
    Call HiveOfContext
    Call OpenKey
    ${If} $0 P= 0
        StrCpy $8 "$8+"
    ${Else}
        System::Call 'advapi32::RegCloseKey(p r0)'
        StrCpy $8 "$8-"
    ${EndIf}
FunctionEnd

; $0: a value other than 0 where class $6 is known. The start looks below the machine's classes, then below the user's. One
; that has our own name, $7, for the machine will be taken back by whoever of us has added it: who installs for himself
; doesn't count on it.
Function FindClass
    StrCpy $1 "Software\Classes\CLSID\$6"
    StrCpy $2 HKLM
    Call OpenKey
    ${If} $Machine = 0
        ReadRegStr $3 HKLM "Software\Classes\CLSID\$6" ""
        ${If} $3 S== $7
        ${AndIf} $0 P<> 0
            System::Call 'advapi32::RegCloseKey(p r0)'
            StrCpy $0 0
        ${EndIf}
    ${EndIf}
    ${If} $0 P= 0
    ${AndIf} $Machine = 0
        StrCpy $2 HKCU
        Call OpenKey
    ${EndIf}
    ${If} $0 P<> 0
        System::Call 'advapi32::RegCloseKey(p r0)'
    ${EndIf}
FunctionEnd

; Remembered before it is written: an installation that is killed between leaves nothing that nobody knows of.

; The name last: what has none, no list of programs shows.
Function RegisterSeen
    WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
    ${If} $Wide = 1
        WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" ${SIZE64}
    ${Else}
        WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" ${SIZE32}
    ${EndIf}
    ClearErrors
    WriteRegStr SHCTX "${ENTRY}" "DisplayName" "Bromvale"
    ${If} ${Errors}
        !insertmacro Fail "Bromvale konnte nicht in die Liste der Programme eingetragen werden."
    ${EndIf}
FunctionEnd

Function MakeShortcuts
    SetOutPath "$INSTDIR"
    CreateDirectory "$SMPROGRAMS\Bromvale"
    CreateShortcut "$SMPROGRAMS\Bromvale\Bromvale.lnk" "$INSTDIR\Bromvale.exe"
    ${If} ${FileExists} "$INSTDIR\Bromvale.chm"
        CreateShortcut "$SMPROGRAMS\Bromvale\Hilfe zu Bromvale.lnk" "$INSTDIR\Bromvale.chm"
    ${EndIf}
    CreateShortcut "$SMPROGRAMS\Bromvale\Bromvale entfernen.lnk" "$INSTDIR\Entfernen.exe"
FunctionEnd
