; What the installer and the uninstaller do alike.

!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Bromvale"
!define ALREADY_EXISTS 183
!define ACCESS_DENIED 5
!define HALF_64 0x100
!define KEY_READ 0x20019

; Ends what has begun to be done, with all that was done taken back.
!macro Fail text
    StrCpy $Text "${text}"
    MessageBox MB_OK|MB_ICONSTOP "$Text" /SD IDOK
    SetErrorLevel 2
    Abort
!macroend

; The same before the pages are shown, when there is nothing to take back.
!macro Refuse text
    MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
    SetErrorLevel 2
    Quit
!macroend

!macro SharedFunctions un

; $0: 1 where nobody else installs or removes; from then on nobody does as long as this process lives.
Function ${un}BeTheOnlyOne
    System::Call 'kernel32::CreateMutexA(p 0, i 0, t "Bromvale is being installed") p .r0 ?e'
    Pop $1
    ${If} $1 <> ${ALREADY_EXISTS}
    ${AndIf} $1 <> ${ACCESS_DENIED}
        StrCpy $0 1
        Return
    ${EndIf}
    ${If} $0 P<> 0
        System::Call 'kernel32::CloseHandle(p r0)'
    ${EndIf}
    StrCpy $0 0
FunctionEnd

; The last of a removal, which goes on when that has ended, takes a moment.
Function ${un}RefuseSecondInstallation
    ${For} $2 1 20
        Call ${un}BeTheOnlyOne
        ${If} $0 = 1
            Return
        ${EndIf}
        Sleep 100
    ${Next}
    MessageBox MB_OK|MB_ICONEXCLAMATION "Bromvale wird gerade installiert oder entfernt. Warten Sie bitte, bis das beendet ist." /SD IDOK
    SetErrorLevel 3
    Quit
FunctionEnd

; $2: 1 where $0 is the program's folder, in whatever spelling.
Function ${un}SeeIfFolder
    StrCpy $2 0
    ${If} $0 == ""
        Return
    ${EndIf}
    ${If} $0 == $INSTDIR
        StrCpy $2 1
        Return
    ${EndIf}
    GetFullPathName /SHORT $3 $0
    GetFullPathName /SHORT $4 $INSTDIR
    ${If} $3 != ""
    ${AndIf} $3 == $4
        StrCpy $2 1
    ${EndIf}
FunctionEnd

; $0: 1 while the program runs. A mutex that may not be opened is there all the same.
Function ${un}FindRunning
    System::Call 'kernel32::OpenMutexA(i 0x100000, i 0, t "Bromvale is running") p .r0 ?e'
    Pop $1
    ${If} $0 P<> 0
        System::Call 'kernel32::CloseHandle(p r0)'
        StrCpy $0 1
    ${ElseIf} $1 = ${ACCESS_DENIED}
        StrCpy $0 1
    ${Else}
        StrCpy $0 0
    ${EndIf}
FunctionEnd

; Asks the main window to close, and gives it five seconds for that.
Function ${un}CloseProgram
    FindWindow $0 "BromvaleForm" "Bromvale"
    ${If} $0 P<> 0
        System::Call 'user32::PostMessageA(p r0, i ${WM_CLOSE}, p 0, p 0)'
    ${EndIf}
    ${For} $2 1 50
        Call ${un}FindRunning
        ${If} $0 = 0
            Return
        ${EndIf}
        Sleep 100
    ${Next}
FunctionEnd

Function ${un}RefuseWhileRunning
    ${Do}
        Call ${un}FindRunning
        ${If} $0 = 0
            Return
        ${EndIf}
        ${If} ${Silent}
            SetErrorLevel 3
            Quit
        ${EndIf}
        MessageBox MB_OKCANCEL|MB_ICONEXCLAMATION "Bromvale läuft noch. Klicken Sie auf OK, damit es beendet wird und es hier weitergeht." IDOK close
        SetErrorLevel 1
        Quit
        close:
        Call ${un}CloseProgram
    ${Loop}
FunctionEnd

Function ${un}FindWidth
    StrCpy $Wide 0
    StrCpy $Programs $PROGRAMFILES
    ${If} ${RunningX64}
        StrCpy $Wide 1
        StrCpy $Programs $PROGRAMFILES64
        SetRegView 64
    ${EndIf}
FunctionEnd

; Windows 98 knows no accounts: there everybody is an administrator.
Function ${un}FindRights
    StrCpy $Machine 1
    ${If} ${IsNT}
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 != "Admin"
            StrCpy $Machine 0
        ${EndIf}
    ${EndIf}
FunctionEnd

Function ${un}UseContext
    ${If} $Machine = 1
        SetShellVarContext all
    ${Else}
        SetShellVarContext current
    ${EndIf}
FunctionEnd

; $0 as the key's handle, 0 where key $1 of hive $2 (HKLM or HKCU) isn't there.
Function ${un}OpenKey
    StrCpy $3 ${KEY_READ}
    ${If} $Wide = 1
        IntOp $3 $3 | ${HALF_64}
    ${EndIf}
    StrCpy $4 0x80000001
    ${If} $2 == HKLM
        StrCpy $4 0x80000002
    ${EndIf}
    System::Call 'advapi32::RegOpenKeyExA(p r4, t r1, i 0, i r3, *p .r0) i .r3'
    ${If} $3 <> 0
        StrCpy $0 0
    ${EndIf}
FunctionEnd

Function ${un}HiveOfContext
    StrCpy $2 HKCU
    ${If} $Machine = 1
        StrCpy $2 HKLM
    ${EndIf}
FunctionEnd

; $0: 1 where key $1 of the context is there and has at most $5 values and no sub key.
Function ${un}FindBare
    Call ${un}HiveOfContext
    Call ${un}OpenKey
    ${If} $0 P= 0
        Return
    ${EndIf}
    System::Call 'advapi32::RegQueryInfoKeyA(p r0, p 0, p 0, p 0, *i .r3, p 0, p 0, *i .r4, p 0, p 0, p 0, p 0)'
    System::Call 'advapi32::RegCloseKey(p r0)'
    StrCpy $0 0
    ${If} $3 = 0
    ${AndIf} $4 <= $5
        StrCpy $0 1
    ${EndIf}
FunctionEnd

; The class $6 goes where it was added by the installation and is as it was then.
Function ${un}TakeBackClass
    ClearErrors
    ReadRegStr $7 SHCTX "${ENTRY}" "$6"
    ${If} ${Errors}
        Return
    ${EndIf}
    StrCpy $1 "Software\Classes\CLSID\$6"
    StrCpy $5 1
    Call ${un}FindBare
    ReadRegStr $8 SHCTX "$1" ""
    ${If} $0 = 1
    ${AndIf} $7 S== $8
        DeleteRegKey SHCTX "$1"
    ${EndIf}
FunctionEnd

; The key $1 goes where $9 says that the installation made it and it holds nothing.
Function ${un}TakeBackKey
    StrCpy $5 0
    ${If} $9 == "+"
        Call ${un}FindBare
        ${If} $0 = 1
            DeleteRegKey SHCTX "$1"
        ${EndIf}
    ${EndIf}
FunctionEnd

; The $5 folders above the program's, as far as they are empty.
Function ${un}TakeBackFolders
    ${GetParent} $INSTDIR $0
    ${For} $1 1 $5
        StrLen $2 $0
        ${If} $2 < 4
            Return
        ${EndIf}
        RMDir $0
        ${GetParent} $0 $0
    ${Next}
FunctionEnd

; What the installation wrote into the registry, with the keys above it that weren't there before it.
Function ${un}TakeBackRegistry
    !insertmacro EachClass ${un}TakeBackOne
    ReadRegStr $8 SHCTX "${ENTRY}" "NewKeys"
    DeleteRegKey SHCTX "${ENTRY}"
    StrCpy $9 $8 1
    StrCpy $1 "Software\Classes\CLSID"
    Call ${un}TakeBackKey
    StrCpy $9 $8 1 1
    StrCpy $1 "Software\Classes"
    Call ${un}TakeBackKey
    StrCpy $9 $8 1 2
    StrCpy $1 "Software\Microsoft\Windows\CurrentVersion\Uninstall"
    Call ${un}TakeBackKey
FunctionEnd

!macroend

!macro TakeBackOne id name
    StrCpy $6 "${id}"
    Call TakeBackClass
!macroend
!macro un.TakeBackOne id name
    StrCpy $6 "${id}"
    Call un.TakeBackClass
!macroend

!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."
