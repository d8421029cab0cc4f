!define IS_LINK 0x400 ; FILE_ATTRIBUTE_REPARSE_POINT

; The uninstaller. With _?=FOLDER it works in the program's folder and is waited for; else it is a copy of itself below the
; folder for temporary files, which NSIS makes and starts.

Function un.onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/REST=" $5
    ${IfNot} ${Errors}
        Call un.RemoveRest
        Quit
    ${EndIf}
    Call un.RefuseSecondInstallation
    Call un.FindWidth
    Call un.FindRights
    ; For whom it was installed, the entry of its folder says.
    Call un.FindOwner
    ${If} $1 == HKLM
        ${If} $Machine = 0
            MessageBox MB_OK|MB_ICONSTOP "Bromvale ist für alle Benutzer installiert. Entfernen kann es nur ein Administrator." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
    ${ElseIf} $1 == HKCU
        StrCpy $Machine 0
    ${Else}
        MessageBox MB_OK|MB_ICONSTOP "Im Ordner $INSTDIR ist Bromvale nicht installiert." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    Call un.UseContext
    Call un.RefuseWhileRunning
FunctionEnd

; $1: HKLM or HKCU, where the entry of the program's folder is; empty where there is none.
Function un.FindOwner
    StrCpy $1 ""
    ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
    Call un.SeeIfFolder
    ${If} $2 = 1
        StrCpy $1 HKCU
    ${EndIf}
    ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    Call un.SeeIfFolder
    ${If} $2 = 1
        StrCpy $1 HKLM
    ${EndIf}
FunctionEnd

!macro un.DeleteFile file
    ${If} "${file}" != "Entfernen.exe"
        Delete "$INSTDIR\${file}"
    ${EndIf}
    Delete "$INSTDIR\Bromvale.neu\${file}"
    Delete "$INSTDIR\Bromvale.kopie\${file}"
    Delete "$INSTDIR\Bromvale.alt\${file}"
    Delete "$INSTDIR\Bromvale.weg\${file}"
!macroend

; The program goes first: where it is in use nothing else has changed. The entry goes last: until then it can be removed
; once more.
Section "Uninstall"
    Call un.RefuseWhileRunning
    SetDetailsPrint none ; the line above the bar would name folders that nobody knows
    SetOutPath "$TEMP"
    Call un.AskForUndoFiles
    ClearErrors
    Delete "$INSTDIR\Bromvale.exe"
    ${If} ${Errors}
        !insertmacro Fail "$INSTDIR\Bromvale.exe konnte nicht gelöscht werden. Wird Bromvale gerade von jemand anderem verwendet? Es wurde nichts entfernt."
    ${EndIf}
    !insertmacro EachFile un.DeleteFile
    Delete "$INSTDIR\bromvale.log"
    Delete "$INSTDIR\liste.txt"
    Call un.RemoveUndoFolder
    RMDir "$INSTDIR\Bromvale.neu"
    RMDir "$INSTDIR\Bromvale.kopie"
    RMDir "$INSTDIR\Bromvale.alt"
    RMDir "$INSTDIR\Bromvale.weg"
    Delete "$DESKTOP\Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Hilfe zu Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Bromvale entfernen.lnk"
    RMDir "$SMPROGRAMS\Bromvale"
    Call un.RemoveSettings
    Call un.RemoveStart
    Call un.RemoveSelf
    Call un.TakeBackRegistry
SectionEnd

; $9: 1 where the undo files are to go too.
Function un.AskForUndoFiles
    StrCpy $9 0
    Call un.SeeIfLinked
    ${If} $0 = 0
    ${AndIf} ${FileExists} "$INSTDIR\Backup\*.reg"
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Im Ordner $INSTDIR\Backup liegen Sicherungsdateien. Nur mit ihnen lässt sich zurückholen, was Bromvale entfernt hat.$\r$\n$\r$\nSollen sie endgültig gelöscht werden?" /SD IDNO IDNO keep
        StrCpy $9 1
        keep:
    ${EndIf}
FunctionEnd

; $0: 1 where the folder of undo files is a link: it stays, since what it points to would be out of sight without it, and is
; nobody's but its owner's.
Function un.SeeIfLinked
    StrCpy $1 "$INSTDIR\Backup"
    System::Call 'kernel32::GetFileAttributesA(t r1) i .r0'
    ${If} $0 = -1
        StrCpy $0 0
    ${EndIf}
    IntOp $0 $0 & ${IS_LINK}
    ${If} $0 <> 0
        StrCpy $0 1
    ${EndIf}
FunctionEnd

; A pattern of three letters would find longer endings too, by their short names.
Function un.RemoveUndoFolder
    Call un.SeeIfLinked
    ${If} $0 = 1
        Return
    ${EndIf}
    ${If} $9 = 1
        FindFirst $0 $1 "$INSTDIR\Backup\*.reg"
        ${DoWhile} $1 != ""
            StrCpy $2 $1 "" -4
            ${If} $2 == ".reg"
                Delete "$INSTDIR\Backup\$1"
            ${EndIf}
            ClearErrors
            FindNext $0 $1
            ${If} ${Errors}
                StrCpy $1 ""
            ${EndIf}
        ${Loop}
        FindClose $0
    ${EndIf}
    RMDir "$INSTDIR\Backup"
FunctionEnd

; An installation for the machine and one for the user have the same settings: the last of them takes them along.
Function un.RemoveSettings
    ${If} $Machine = 1
        ReadRegStr $0 HKCU "${ENTRY}" "InstallLocation"
    ${Else}
        ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    ${EndIf}
    ${If} $0 == ""
    ${OrIfNot} ${FileExists} "$0\Bromvale.exe"
        DeleteRegKey HKCU "Software\Bromvale"
    ${EndIf}
FunctionEnd

; The emptying at the start of Windows, where it names this program.
Function un.RemoveStart
    ReadRegStr $0 HKLM "Software\Microsoft\Windows\CurrentVersion\Run" "Bromvale"
    StrCpy $1 "$INSTDIR\Bromvale.exe"
    StrLen $2 $1
    StrCpy $3 $0 $2
    ${If} $3 == $1
        DeleteRegValue HKLM "Software\Microsoft\Windows\CurrentVersion\Run" "Bromvale"
    ${EndIf}
FunctionEnd

; A program that runs can't be deleted. Where this one runs in the program's folder a copy of it outlives it for that; the
; copy itself the system deletes at its next start.
Function un.RemoveSelf
    ReadRegStr $5 SHCTX "${ENTRY}" "NewFolders"
    IntOp $5 $5 + 0
    ${If} $EXEDIR == $INSTDIR
        GetTempFileName $0
        Delete $0
        CreateDirectory $0
        StrCpy $1 $EXEPATH
        StrCpy $2 "$0\Entfernen.exe"
        System::Call 'kernel32::CopyFileA(t r1, t r2, i 1) i .r3'
        Exec '"$2" /S /REST=$5 _?=$INSTDIR'
    ${Else}
        Delete "$INSTDIR\Entfernen.exe"
        Call un.RemoveFolder
    ${EndIf}
FunctionEnd

; When the first one has ended the entry is gone. Where there is one the program has been installed anew meanwhile, and the
; file is that one's.
Function un.RemoveRest
    ${For} $2 1 6000 ; the first one's last page may stay open for a while
        Call un.BeTheOnlyOne
        ${If} $0 = 1
            ${Break}
        ${EndIf}
        Sleep 100
    ${Next}
    Call un.FindWidth
    Call un.FindOwner
    ${If} $1 == ""
        ${For} $0 1 100
            ClearErrors
            Delete "$INSTDIR\Entfernen.exe"
            ${IfNot} ${Errors}
                ${Break}
            ${EndIf}
            Sleep 100
        ${Next}
        Call un.RemoveFolder
    ${EndIf}
    Delete /REBOOTOK $EXEPATH
    RMDir /REBOOTOK $EXEDIR
FunctionEnd

; What others have put there, and undo files, keep their folder, and the $5 folders above it that were made for it.
Function un.RemoveFolder
    RMDir "$INSTDIR"
    Call un.TakeBackFolders
FunctionEnd
