; The installer for Windows: for one person, without an administrator. What it installs is the folder
; FROM; makensis gets VERSION, OUT and, made from that folder, the lists INSTALL and REMOVE.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Lapvane"
Name "Lapvane"
OutFile "${OUT}"
InstallDir "$LOCALAPPDATA\Programs\Lapvane"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
RequestExecutionLevel user
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Lapvane"
VIAddVersionKey "FileDescription" "Lapvane"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\lapvane.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Italian"

LangString Running ${LANG_ENGLISH} "Lapvane is running. Close it, then try again."
LangString Running ${LANG_ITALIAN} "Lapvane è in esecuzione. Chiuderlo, poi riprovare."
LangString Kept ${LANG_ENGLISH} "Files that you made or changed stay in $LOCALAPPDATA\Lapvane."
LangString Kept ${LANG_ITALIAN} "I file creati o modificati restano in $LOCALAPPDATA\Lapvane."

; A program that runs keeps its file from being written.
!macro WAIT_UNTIL_CLOSED UN
Function ${UN}WaitUntilClosed
    again:
    IfFileExists "$INSTDIR\lapvane.exe" 0 done
    ClearErrors
    FileOpen $0 "$INSTDIR\lapvane.exe" a
    IfErrors 0 closed
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(Running)" /SD IDCANCEL IDRETRY again
    SetErrorLevel 1
    Abort
    closed:
    FileClose $0
    done:
FunctionEnd
!macroend
!insertmacro WAIT_UNTIL_CLOSED ""
!insertmacro WAIT_UNTIL_CLOSED "un."

Section
    Call WaitUntilClosed
    ; An older version takes its own files away, since it knows them.
    IfFileExists "$INSTDIR\uninstall.exe" 0 +2
    ExecWait '"$INSTDIR\uninstall.exe" /S /UPGRADE _?=$INSTDIR'
    !include "${INSTALL}"
    SetOutPath "$INSTDIR"
    ; Each person has a folder of their own; this one belongs to the installer.
    FileOpen $0 "$INSTDIR\for-all-users" w
    FileClose $0
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Lapvane.lnk" "$INSTDIR\lapvane.exe"
    WriteRegStr HKCU "${KEY}" "DisplayName" "Lapvane"
    WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\lapvane.exe"
    WriteRegStr HKCU "${KEY}" "Publisher" "Lapvane"
    WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
    WriteRegDWORD HKCU "${KEY}" "EstimatedSize" ${KILOBYTES}
SectionEnd

!include FileFunc.nsh
Section "Uninstall"
    Call un.WaitUntilClosed
    ${GetParameters} $1
    ClearErrors
    ${GetOptions} $1 "/UPGRADE" $2
    ${If} ${Errors}
        nsExec::Exec '"$INSTDIR\lapvane-tool.exe" clear'
        Pop $0
        IfFileExists "$LOCALAPPDATA\Lapvane\*.*" 0 +2
        MessageBox MB_OK|MB_ICONINFORMATION "$(Kept)" /SD IDOK
        Delete "$SMPROGRAMS\Lapvane.lnk"
        DeleteRegKey HKCU "${KEY}"
    ${EndIf}
    !include "${REMOVE}"
    Delete "$INSTDIR\for-all-users"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    ; Not there before the first program of this kind; stays while it holds another.
    RMDir "$LOCALAPPDATA\Programs"
SectionEnd
