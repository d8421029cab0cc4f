; Where the program goes, and who may write there.

; Only administrators write; everybody reads and starts. Owned by administrators, since an owner may change all that.
!define ADMINISTRATORS_WRITE "O:BAD:PAI(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)"
!define KEEPS_RIGHTS 8 ; of a volume: FS_PERSISTENT_ACLS
!define OWNER_AND_RIGHTS 0x80000005
!define NO_LIKENESS 0x400 ; WC_NO_BEST_FIT_CHARS

; Who has the program for himself and not for the machine keeps it so.
Function StayForTheUser
    ClearErrors
    ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    ${IfNot} ${Errors}
        Return
    ${EndIf}
    ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
    ${If} $0 != ""
    ${AndIf} ${FileExists} "$0\Bromvale.exe"
        StrCpy $Machine 0
    ${EndIf}
FunctionEnd

!macro RefuseGivenFolder
    !insertmacro Refuse "Der Ordner hinter /D= kann nicht verwendet werden. /D= steht als letztes, in Großbuchstaben und ohne Anführungszeichen; dahinter steht der ganze Pfad mit seinem Laufwerk."
!macroend

; A folder that it can't use NSIS passes over in silence, and takes the usual one; out of one with characters that no name may
; have it makes another; a switch within quotes it doesn't see. Characters that the code page lacks would be those that look
; like them.
Function CheckGivenFolder
    ${GetParameters} $0
    ${Do} ; the switch that NSIS has taken isn't among them
        StrCpy $2 $0 3
        ${If} $2 == "/D="
            !insertmacro RefuseGivenFolder
        ${EndIf}
        StrCpy $0 $0 "" 1
    ${LoopUntil} $0 == ""
    StrCpy $0 $CMDLINE
    System::Call 'kernel32::lstrlenW(w r0) i .r4'
    StrLen $3 $0
    IntOp $3 $3 + 4 ; " /D="
    System::Call 'kernel32::GetCommandLineA() t .r2'
    StrLen $5 $2
    ${If} $5 < $3
        Return
    ${EndIf}
    StrCpy $2 $2 "" $3
    Call WholePath
    StrCpy $5 $2
    Call WholeFolder
    ${If} $INSTDIR != $5
        !insertmacro RefuseGivenFolder
    ${EndIf}
    IntOp $4 $4 + 4
    IntOp $4 $4 * 2
    System::Call 'kernel32::GetCommandLineW() p .r3'
    IntPtrOp $3 $3 + $4
    StrCpy $5 0
    System::Call 'kernel32::WideCharToMultiByte(i 0, i ${NO_LIKENESS}, p r3, i -1, t .r2, i ${NSIS_MAX_STRLEN}, p 0, *i .r5) i .r4'
    ${If} $4 <> 0
    ${AndIf} $5 <> 0
        !insertmacro RefuseGivenFolder
    ${EndIf}
FunctionEnd

; $INSTDIR: the folder of the version that is there, else the given one, else the usual one.
Function FindFolder
    Call CheckGivenFolder
    ReadRegStr $1 SHCTX "${ENTRY}" "InstallLocation"
    StrCpy $Older 0
    ${If} $1 != ""
    ${AndIf} ${FileExists} "$1\Bromvale.exe"
        StrCpy $Older 1
    ${EndIf}
    ${If} $INSTDIR == "${NO_FOLDER}"
        Call UsualFolder
    ${Else}
        Call WholeFolder
        StrCpy $0 $1
        Call SeeIfFolder
        ${If} $2 = 1
            StrCpy $INSTDIR $1
        ${ElseIf} $Older = 1
            !insertmacro Refuse "Bromvale ist schon im Ordner $1 installiert. Entfernen Sie es dort, bevor Sie einen anderen Ordner wählen."
        ${EndIf}
    ${EndIf}
FunctionEnd

Function UsualFolder
    ${If} $Older = 1
        StrCpy $INSTDIR $1
    ${ElseIf} $Machine = 1
        StrCpy $INSTDIR "$Programs\Bromvale"
    ${Else}
        StrCpy $0 $LOCALAPPDATA
        ${If} $0 == "" ; NT4 knows a folder of this name only with a newer browser
            StrCpy $0 $APPDATA
        ${EndIf}
        StrCpy $INSTDIR "$0\Programs\Bromvale"
    ${EndIf}
FunctionEnd

; Without "..", without a backslash at the end but that of a drive.
Function WholeFolder
    StrCpy $2 $INSTDIR
    Call WholePath
    StrCpy $INSTDIR $2
FunctionEnd

; The same of $2.
Function WholePath
    Push $4
    System::Call 'kernel32::GetFullPathNameA(t r2, i ${NSIS_MAX_STRLEN}, t .r3, p 0) i .r4'
    ${If} $4 <> 0
        StrCpy $2 $3
    ${EndIf}
    StrCpy $3 $2 1 -1
    StrLen $4 $2
    ${If} $3 == "\"
    ${AndIf} $4 > 3
        StrCpy $2 $2 -1
    ${EndIf}
    Pop $4
FunctionEnd

!macro IsOurs file
    ${If} $2 == "${file}"
        StrCpy $3 1
    ${EndIf}
!macroend

; $0: 1 where the folder holds files of others.
Function HoldsOthers
    StrCpy $0 0
    FindFirst $1 $2 "$INSTDIR\*.*"
    ${DoWhile} $2 != ""
        StrCpy $3 0
        !insertmacro EachFile IsOurs
        ${Select} $2
            ${Case5} "." ".." "Backup" "liste.txt" "bromvale.log"
                StrCpy $3 1
            ${Case4} "Bromvale.neu" "Bromvale.kopie" "Bromvale.alt" "Bromvale.weg"
                StrCpy $3 1
        ${EndSelect}
        ${If} $3 = 0
            StrCpy $0 1
        ${EndIf}
        ClearErrors
        FindNext $1 $2
        ${If} ${Errors}
            StrCpy $2 ""
        ${EndIf}
    ${Loop}
    FindClose $1
FunctionEnd

; $0: why the program can't be put there; empty where it can.
Function FolderFault
    Call WholeFolder
    StrCpy $0 $INSTDIR 1 3
    ${If} $0 == ""
        StrCpy $0 "Bromvale braucht einen eigenen Ordner; $INSTDIR ist keiner."
        Return
    ${EndIf}
    ${If} ${FileExists} "$INSTDIR\Bromvale.exe"
        StrCpy $0 ""
        Return
    ${EndIf}
    Call HoldsOthers
    ; A list of folders that are to be emptied is taken over from a program of ours alone.
    ${If} ${FileExists} "$INSTDIR\liste.txt"
        Push $0
        ReadRegStr $0 SHCTX "${ENTRY}" "InstallLocation"
        Call SeeIfFolder
        Pop $0
        ${If} $2 = 0
            StrCpy $0 1
        ${EndIf}
    ${EndIf}
    ${If} $0 = 1
        StrCpy $0 "Der Ordner $INSTDIR enthält schon anderes. Wählen Sie bitte einen Ordner, den es noch nicht gibt oder der leer ist."
    ${Else}
        StrCpy $0 ""
    ${EndIf}
FunctionEnd

Function RefuseFolder
    Call FolderFault
    ${If} $0 != ""
        !insertmacro Fail "$0"
    ${EndIf}
FunctionEnd

; $0: 1 where the rights of the folder are to be set: an installation for the machine outside the folder for programs.
Function WantsRights
    StrCpy $0 0
    ${If} $Machine = 0
    ${OrIfNot} ${IsNT}
        Return
    ${EndIf}
    StrLen $1 $Programs
    StrCpy $2 $INSTDIR $1
    StrCpy $3 $INSTDIR 1 $1
    ${If} $2 == $Programs
    ${AndIf} $3 == "\"
        Return
    ${EndIf}
    StrCpy $0 1
FunctionEnd

; $0: 1 where it can be set. Not on a volume without rights, and not in a folder that others share.
Function KeepsRights
    ${If} ${FileExists} "$INSTDIR\*.*"
        Call HoldsOthers
        ${If} $0 = 1
            StrCpy $0 0
            Return
        ${EndIf}
        ; Before Vista there is no tool that gives what lies there the folder's rights. What a version of ours has put
        ; there has them.
        ${If} $Older = 0
        ${AndIfNot} ${FileExists} "$SYSDIR\icacls.exe"
            StrCpy $0 0
            Return
        ${EndIf}
    ${EndIf}
    ${GetRoot} $INSTDIR $1
    StrCpy $1 "$1\"
    System::Call 'kernel32::GetVolumeInformationA(t r1, p 0, i 0, p 0, p 0, *i .r2, p 0, i 0) i .r0'
    ${If} $0 <> 0
        IntOp $0 $2 & ${KEEPS_RIGHTS}
    ${EndIf}
    ${If} $0 <> 0
        Call MakeRights
        System::Call 'kernel32::LocalFree(p r0)'
    ${EndIf}
    ${If} $0 P<> 0
        StrCpy $0 1
    ${EndIf}
FunctionEnd

; $0: the rights as Windows has them in memory, 0 where it has no words for them (NT4).
Function MakeRights
    StrCpy $0 0
    System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorA(t "${ADMINISTRATORS_WRITE}", i 1, *p .r0, p 0)'
FunctionEnd

; The folder $1 with the rights $2, and so the folders above it that are missing: whoever may rename one of them may put
; another in its place. $3: 0 where that failed.
Function MakeProtected
    Push $1
    ${GetParent} $1 $1
    StrLen $3 $1
    ${If} $3 > 3
    ${AndIfNot} ${FileExists} "$1\*.*"
        Call MakeProtected
    ${EndIf}
    Pop $1
    System::Call 'kernel32::CreateDirectoryA(t r1, p r2) i .r3'
FunctionEnd

; The folder of a first installation has its rights from its first instant; one that is there gets them, and what lies in
; it takes them over.
Function ProtectFolder
    Call WantsRights
    ${If} $0 = 0
        Return
    ${EndIf}
    Call KeepsRights
    ${If} $0 = 0
        MessageBox MB_OKCANCEL|MB_ICONEXCLAMATION "Der Ordner $INSTDIR kann nicht so geschützt werden, dass nur Administratoren ihn ändern. Jeder könnte dann bestimmen, welche Ordner Bromvale leert.$\r$\n$\r$\nTrotzdem dorthin installieren?" /SD IDCANCEL IDOK end
        !insertmacro Fail "Bromvale wurde nicht installiert, da der Ordner $INSTDIR nicht geschützt werden kann."
    ${EndIf}
    Call MakeRights
    ${If} $First = 1
        System::Call '*(i 12, p r0, i 0) p .r2'
        StrCpy $1 $New
        Call MakeProtected
        System::Free $2
    ${Else}
        StrCpy $1 $INSTDIR
        System::Call 'advapi32::SetFileSecurityA(t r1, i ${OWNER_AND_RIGHTS}, p r0) i .r3'
        nsExec::Exec '"$SYSDIR\icacls.exe" "$INSTDIR\*" /setowner *S-1-5-32-544 /T /C /L /Q'
        Pop $4
        nsExec::Exec '"$SYSDIR\icacls.exe" "$INSTDIR\*" /reset /T /C /L /Q'
        Pop $4
    ${EndIf}
    System::Call 'kernel32::LocalFree(p r0)'
    ${If} $3 = 0
        !insertmacro Fail "Der Ordner $INSTDIR konnte nicht geschützt werden. Bromvale wurde nicht installiert."
    ${EndIf}
    end:
FunctionEnd
