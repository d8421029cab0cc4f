; The installer of Bromvale: both programs, in German, for Windows 98 and NT4 to 11. build-setup calls it with
;
;   VERSION           1.2.3
;   STAGE32, STAGE64  folders with the files of the program of each width
;   LISTS             what build-setup says about them and about the components' classes
;   PICTURE           of the last pages
;   TOP, OUT          the project's folder; the file to be made
;
; /S is silent, /D=FOLDER (the last one, without quotes) sets the folder, /NUTZER installs for the user alone where
; the rights would do for the machine, /DESKTOP makes the icon on the desktop. Exit codes: 0 installed or removed,
; 1 cancelled, 2 failed, 3 Bromvale or another installation is running; with 3 nothing was changed.
;
; An installation goes so that it may break off at any instant (files.nsh): all files are unpacked into a folder of
; their own; what doesn't show is written into the registry; then the files get their names, of a first installation
; all at once by the folder's name, else one by one with the program last; then the entry of the list of programs gets
; its name, without which nobody lists it. What a killed one left the next start of the installer mends.

Unicode false
SetCompressor /SOLID lzma
SetDateSave on
SetOverwrite on
AllowSkipFiles off
CRCCheck on

!include MUI2.nsh
!include LogicLib.nsh
!include x64.nsh
!include FileFunc.nsh
!include WinVer.nsh
!include "${LISTS}"

Name "Bromvale"
OutFile "${OUT}"
; Stands for "none was given": which one it is then, the start decides.
!define NO_FOLDER "Programmordner\Bromvale"
InstallDir "${NO_FOLDER}"
; Else a drive's root that was given would be passed over in silence, and the usual folder taken: RefuseFolder says no to it.
AllowRootDirInstall true
; Administrators are asked for their rights from Vista on, all others install for themselves.
RequestExecutionLevel highest
ManifestSupportedOS all
ManifestDPIAware true
XPStyle on
BrandingText "Bromvale ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define PUBLISHER "Bromvale developers"
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1031 ProductName "Bromvale"
VIAddVersionKey /LANG=1031 ProductVersion "${VERSION}"
VIAddVersionKey /LANG=1031 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1031 FileDescription "Installation von Bromvale"
VIAddVersionKey /LANG=1031 CompanyName "${PUBLISHER}"
VIAddVersionKey /LANG=1031 LegalCopyright "© 2026 die Entwickler von Bromvale"
VIAddVersionKey /LANG=1031 OriginalFilename "Bromvale-${VERSION}-setup.exe"

Var Machine  ; 1 for all users of the machine, 0 for the user alone
Var Wide     ; 1 where the 64-bit program is installed and the 64-bit half of the registry is meant
Var Programs ; the system's folder for programs of that width
Var Older    ; 1 where a version of the program is registered and in its place
Var First    ; 1 where the program's folder isn't there yet
Var Made     ; how many folders above the program's are missing: the installation makes them, the removal takes them back
Var New      ; the folder that is unpacked into
Var Begun    ; 1 from the first change on until all is in its place
Var Text     ; of the failure that is to be told

!include "shared.nsh"
!include "folder.nsh"
!include "files.nsh"
!include "registry.nsh"
!include "remove.nsh"

!define MUI_ICON "${TOP}/resources/icons/bromvale.ico"
!define MUI_UNICON "${TOP}/resources/icons/bromvale.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_ABORTWARNING

!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipWhereInstalled
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE FolderChosen
!define MUI_DIRECTORYPAGE_TEXT_TOP "$Text"
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_COMPONENTSPAGE_TEXT_TOP "$Text"
!define MUI_PAGE_CUSTOMFUNCTION_PRE TellWhatIsDone
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\Bromvale.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Bromvale jetzt starten"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_UNPAGE_FINISH
!insertmacro MUI_LANGUAGE "German"

Section "Bromvale mit Hilfe" SectionProgram
    SectionIn RO
    SetDetailsPrint none
    AddSize ${SIZE64} ; the files are unpacked by a function, whose size nobody adds
    Call RefuseWhileRunning
    Call RefuseFolder
    Call Mend
    StrCpy $Begun 1
    Call Unpack
    Call KeepOldFiles
    Call RegisterUnseen
    Call PutIntoPlace
    Call RegisterSeen
    StrCpy $Begun 0
    Call MakeShortcuts
SectionEnd

Section /o "Symbol auf dem Desktop" SectionDesktop
    CreateShortcut "$DESKTOP\Bromvale.lnk" "$INSTDIR\Bromvale.exe"
SectionEnd

Function .onInit
    Call RefuseSecondInstallation
    Call FindWidth
    Call FindRights
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/NUTZER" $1
    ${IfNot} ${Errors}
        StrCpy $Machine 0
    ${EndIf}
    Call StayForTheUser
    Call UseContext
    Call FindFolder
    Call RefuseWhileRunning
    Call Mend
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/DESKTOP" $1
    ${IfNot} ${Errors}
    ${OrIf} ${FileExists} "$DESKTOP\Bromvale.lnk"
        !insertmacro SelectSection ${SectionDesktop}
    ${EndIf}
    ${If} $Machine = 1
        StrCpy $Text "Bromvale wird für alle Benutzer dieses Computers installiert."
    ${Else}
        StrCpy $Text "Bromvale wird nur für Sie installiert. Für alle Benutzer kann es ein Administrator installieren."
    ${EndIf}
FunctionEnd

; A version that is there is replaced where it is.
Function SkipWhereInstalled
    ${If} $Older = 1
        Abort
    ${EndIf}
FunctionEnd

Function TellWhatIsDone
    ${If} $Older = 1
        StrCpy $Text "Die vorhandene Version im Ordner $INSTDIR wird ersetzt. Ihre Sicherungsdateien und Einstellungen bleiben erhalten."
    ${EndIf}
FunctionEnd

Function FolderChosen
    Call FolderFault
    ${If} $0 != ""
        MessageBox MB_OK|MB_ICONEXCLAMATION "$0"
        Abort
    ${EndIf}
FunctionEnd

Function .onInstFailed
    Call RollBack
    SetErrorLevel 2
FunctionEnd
