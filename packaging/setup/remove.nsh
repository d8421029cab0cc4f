; The uninstaller. With _?=FOLDER it works in the program's folder and is waited for; else it is a copy of itself below the
; folder for temporary files, which NSIS makes and starts.

Function un.onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/REST" $1
    ${IfNot} ${Errors}
        Call un.RemoveRest
        Quit
    ${EndIf}
    Call un.RefuseSecondInstallation
    Call un.FindWidth
    Call un.FindRights
    ; For whom it was installed, the entry of its folder says.
    ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    ReadRegStr $1 HKCU "${ENTRY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        ${If} $Machine = 0
            MessageBox MB_OK|MB_ICONSTOP "Bromvale ist für alle Benutzer installiert. Entfernen kann es nur ein Administrator." /SD IDOK
            SetErrorLevel 2
            Quit
        ${EndIf}
    ${ElseIf} $1 == $INSTDIR
        StrCpy $Machine 0
    ${Else}
        MessageBox MB_OK|MB_ICONSTOP "Im Ordner $INSTDIR ist Bromvale nicht installiert." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    Call un.UseContext
    Call un.RefuseWhileRunning
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
    ${If} $9 = 1
        Delete "$INSTDIR\Backup\*.reg"
    ${EndIf}
    RMDir "$INSTDIR\Backup"
    RMDir "$INSTDIR\Bromvale.neu"
    RMDir "$INSTDIR\Bromvale.kopie"
    RMDir "$INSTDIR\Bromvale.alt"
    RMDir "$INSTDIR\Bromvale.weg"
    Delete "$DESKTOP\Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Hilfe zu Bromvale.lnk"
    Delete "$SMPROGRAMS\Bromvale\Bromvale entfernen.lnk"
    RMDir "$SMPROGRAMS\Bromvale"
    DeleteRegKey HKCU "Software\Bromvale"
    Call un.RemoveStart
    Call un.RemoveSelf
    Call un.TakeBackRegistry
SectionEnd

; $9: 1 where the undo files are to go too.
Function un.AskForUndoFiles
    StrCpy $9 0
    ${If} ${FileExists} "$INSTDIR\Backup\*.reg"
        MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Im Ordner $INSTDIR\Backup liegen Sicherungsdateien. Nur mit ihnen lässt sich zurückholen, was Bromvale entfernt hat.$\r$\n$\r$\nSollen sie endgültig gelöscht werden?" /SD IDNO IDNO keep
        StrCpy $9 1
        keep:
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
    ${If} $EXEDIR == $INSTDIR
        GetTempFileName $0
        Delete $0
        CreateDirectory $0
        StrCpy $1 $EXEPATH
        StrCpy $2 "$0\Entfernen.exe"
        System::Call 'kernel32::CopyFileA(t r1, t r2, i 1) i .r3'
        Exec '"$2" /S /REST _?=$INSTDIR'
    ${Else}
        Delete "$INSTDIR\Entfernen.exe"
        Call un.RemoveFolder
    ${EndIf}
FunctionEnd

Function un.RemoveRest
    ${For} $0 1 100
        ClearErrors
        Delete "$INSTDIR\Entfernen.exe"
        ${IfNot} ${Errors}
            ${Break}
        ${EndIf}
        Sleep 100
    ${Next}
    Call un.RemoveFolder
    Delete /REBOOTOK $EXEPATH
    RMDir /REBOOTOK $EXEDIR
FunctionEnd

; What others have put there, and undo files, keep their folder.
Function un.RemoveFolder
    RMDir "$INSTDIR"
    ${GetParent} $INSTDIR $0
    ${If} $0 == "$LOCALAPPDATA\Programs"
        RMDir $0
    ${EndIf}
FunctionEnd
