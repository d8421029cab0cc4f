; The files of the program: unpacked beside, then put into their places. The folders that tell how far it got:
;
;   FOLDER.neu             all that a first installation will be, until it gets the folder's name
;   FOLDER\Bromvale.neu    the new files, where the folder is there already
;   FOLDER\Bromvale.kopie  copies of the files that are replaced, not yet all of them
;   FOLDER\Bromvale.alt    all of them: the exchange is going on, and can be taken back
;   FOLDER\Bromvale.weg    the exchange is done
;
; The exchange goes file by file, the program last, each in one step: at any instant there is a program that works.

; $0: 1 where file $1 now is $2. A scanner of viruses may hold a new file for a moment. Windows 98 can't put one file in
; another's place in one step.
Function MoveOver
    SetFileAttributes "$2" NORMAL
    ${For} $4 1 20
        System::Call 'kernel32::MoveFileExA(t r1, t r2, i 1) i .r0'
        ${If} $0 = 0
        ${AndIfNot} ${IsNT}
            Delete "$2"
            System::Call 'kernel32::MoveFileA(t r1, t r2) i .r0'
        ${EndIf}
        ${If} $0 <> 0
            Return
        ${EndIf}
        Sleep 100
    ${Next}
FunctionEnd

!macro BringBack file
    ${If} ${FileExists} "$INSTDIR\Bromvale.neu\${file}"
        Delete "$INSTDIR\Bromvale.alt\${file}"
    ${ElseIf} ${FileExists} "$INSTDIR\Bromvale.alt\${file}"
        StrCpy $1 "$INSTDIR\Bromvale.alt\${file}"
        StrCpy $2 "$INSTDIR\${file}"
        Call MoveOver
    ${EndIf}
!macroend

!macro DeleteLeft file
    Delete "$INSTDIR.neu\${file}"
    Delete "$INSTDIR\Bromvale.neu\${file}"
    Delete "$INSTDIR\Bromvale.kopie\${file}"
    Delete "$INSTDIR\Bromvale.weg\${file}"
!macroend

; What an installation that was killed has left in the program's folder or beside it. Where the exchange had begun, the
; files of the older version come back; a copy that can't stays for the next time. What is still among the new ones has not
; been exchanged.
Function Mend
    ${If} ${FileExists} "$INSTDIR\Bromvale.alt\*.*"
        !insertmacro EachFile BringBack
    ${EndIf}
    !insertmacro EachFile DeleteLeft
    RMDir "$INSTDIR.neu"
    RMDir "$INSTDIR\Bromvale.neu"
    RMDir "$INSTDIR\Bromvale.kopie"
    RMDir "$INSTDIR\Bromvale.alt"
    RMDir "$INSTDIR\Bromvale.weg"
    ; An entry without a name belongs to a program that never got its place, unless it did and only the name is missing.
    ReadRegStr $0 SHCTX "${ENTRY}" "UninstallString"
    ReadRegStr $1 SHCTX "${ENTRY}" "DisplayName"
    ${If} $0 != ""
    ${AndIf} $1 == ""
    ${AndIfNot} ${FileExists} "$INSTDIR\Bromvale.exe"
        Call TakeBackRegistry
    ${EndIf}
FunctionEnd

Function FindMissingFolders
    StrCpy $Made 0
    ${GetParent} $INSTDIR $0
    ${DoUntil} ${FileExists} "$0\*.*"
        StrLen $1 $0
        ${If} $1 < 4 ; a drive
            Return
        ${EndIf}
        IntOp $Made $Made + 1
        ${GetParent} $0 $0
    ${Loop}
FunctionEnd

Function Unpack
    Call FindMissingFolders
    StrCpy $First 0
    StrCpy $New "$INSTDIR\Bromvale.neu"
    ${IfNot} ${FileExists} "$INSTDIR\*.*"
        StrCpy $First 1
        StrCpy $New "$INSTDIR.neu"
    ${EndIf}
    ${If} ${FileExists} "$New"
        !insertmacro Fail "Der Ordner $New ist im Weg. Entfernen Sie ihn bitte und starten Sie die Installation erneut."
    ${EndIf}
    Call ProtectFolder
    ClearErrors
    SetOutPath "$New"
    ${IfNot} ${Errors}
        ${If} $Wide = 1
            File /r "${STAGE64}/*"
        ${Else}
            File /r "${STAGE32}/*"
        ${EndIf}
        WriteUninstaller "$New\Entfernen.exe"
    ${EndIf}
    ; A folder that somebody stands in can't get another name.
    StrCpy $0 0
    ${If} ${Errors}
        StrCpy $0 1
    ${EndIf}
    SetOutPath "$PLUGINSDIR"
    ${If} $0 = 1
        !insertmacro Fail "Die Dateien konnten im Ordner $New nicht angelegt werden. Ist genug Platz auf dem Datenträger, und dürfen Sie dort schreiben?"
    ${EndIf}
FunctionEnd

!macro KeepOldFile file
    ${If} ${FileExists} "$INSTDIR\${file}"
        StrCpy $1 "$INSTDIR\${file}"
        StrCpy $2 "$INSTDIR\Bromvale.kopie\${file}"
        System::Call 'kernel32::CopyFileA(t r1, t r2, i 1) i .r0'
        ${If} $0 = 0
            !insertmacro Fail "Von $1 konnte keine Kopie angelegt werden. Die vorhandene Version bleibt, wie sie ist. Ist genug Platz auf dem Datenträger?"
        ${EndIf}
    ${EndIf}
!macroend

Function KeepOldFiles
    ${If} $First = 1
        Return
    ${EndIf}
    CreateDirectory "$INSTDIR\Bromvale.kopie"
    !insertmacro EachFile KeepOldFile
    ClearErrors
    Rename "$INSTDIR\Bromvale.kopie" "$INSTDIR\Bromvale.alt"
    ${If} ${Errors}
        !insertmacro Fail "Der Ordner $INSTDIR\Bromvale.alt ist im Weg. Die vorhandene Version bleibt, wie sie ist."
    ${EndIf}
FunctionEnd

!macro Exchange file
    StrCpy $1 "$New\${file}"
    StrCpy $2 "$INSTDIR\${file}"
    Call MoveOver
    ${If} $0 = 0
        !insertmacro Fail "$2 konnte nicht ersetzt werden. Wird Bromvale gerade von jemand anderem verwendet? Es wurde nichts geändert."
    ${EndIf}
!macroend

Function PutIntoPlace
    ${If} $First = 1
        ${For} $4 1 20
            ClearErrors
            Rename "$New" "$INSTDIR"
            ${IfNot} ${Errors}
                Return
            ${EndIf}
            Sleep 100
        ${Next}
        !insertmacro Fail "Der Ordner $INSTDIR konnte nicht angelegt werden. Bromvale wurde nicht installiert."
    ${EndIf}
    !insertmacro EachFile Exchange
    Rename "$INSTDIR\Bromvale.alt" "$INSTDIR\Bromvale.weg"
    StrCpy $Begun 0
    !insertmacro EachFile DeleteLeft
    RMDir "$INSTDIR\Bromvale.weg"
    RMDir "$New"
FunctionEnd

!macro DeleteNew file
    Delete "$INSTDIR\${file}"
!macroend

!macro DeleteAdded file
    ${IfNot} ${FileExists} "$INSTDIR\Bromvale.alt\${file}"
    ${AndIfNot} ${FileExists} "$New\${file}"
        Delete "$INSTDIR\${file}"
    ${EndIf}
!macroend

; After a failure: everything as it was before. A file that has got its place without having replaced one goes.
Function RollBack
    ${If} $Begun <> 1
        Return
    ${EndIf}
    StrCpy $Begun 0
    SetOutPath "$PLUGINSDIR"
    ${If} $First = 1
        !insertmacro EachFile DeleteNew
        RMDir "$INSTDIR"
    ${ElseIf} ${FileExists} "$INSTDIR\Bromvale.alt\*.*"
        !insertmacro EachFile DeleteAdded
    ${EndIf}
    ${If} $Older = 0
        Call TakeBackRegistry
    ${EndIf}
    Call Mend
    StrCpy $5 $Made
    Call TakeBackFolders
FunctionEnd
