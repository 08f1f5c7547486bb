; The installer: for one user, without an administrator. scripts/package gives it VERSION, SOURCE
; (the application folder), OUTPUT, and FILES: the lines that remove what SOURCE holds. SIGN, if it
; is given, is the command that signs the uninstaller.
;
; /S installs or removes without a question: no desktop entry unless /DESKTOP is given, and a removal
; keeps the data folder unless /DATA is given.
Unicode true
Target amd64-unicode
RequestExecutionLevel user
ManifestDPIAware true
SetCompressor /SOLID lzma

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tobbin"
!define TITLE "Tobbin MP3 Organizer"

Name "${TITLE}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tobbin"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
!ifdef SIGN
    !uninstfinalize '"${SIGN}" "%1"' = 0
!endif
BrandingText "${TITLE} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${TITLE}"
VIAddVersionKey FileDescription "Installer of ${TITLE}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "MIT License"

!define MUI_ICON "${ASSETS}/tobbin.ico"
!define MUI_UNICON "${ASSETS}/tobbin.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${ASSETS}/setup.bmp"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tobbin.exe"
!define MUI_FINISHPAGE_RUN_TEXT "&Start Tobbin"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\Help\index.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Show the &manual"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; The exit code of an installation or a removal that a running program prevents.
!define IN_USE 32

; Files of a running program can't be replaced, so nothing is touched until FILE is no longer in use.
; The person is asked first; then the window is told to close, which asks about unsaved jukeboxes.
!macro CloseProgram FILE WINDOW
    ${DoWhile} ${FileExists} "$INSTDIR\${FILE}"
        ClearErrors
        FileOpen $0 "$INSTDIR\${FILE}" a
        ${IfNot} ${Errors}
            FileClose $0
            ${Break}
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_OKCANCEL|MB_ICONEXCLAMATION "${FILE} is running and has to be closed first. You can save your jukeboxes before it closes.$\r$\n$\r$\nChoose OK to close it now." /SD IDCANCEL IDCANCEL`
            SetErrorLevel ${IN_USE}
            Quit
        ${EndIf}
        FindWindow $0 "${WINDOW}"
        ${If} $0 P<> 0
            System::Call 'user32::PostMessageW(p r0, i ${WM_CLOSE}, p 0, p 0)'
        ${EndIf}
        ${For} $1 1 40  ; ten seconds at most, then the question comes again
            Sleep 250
            ClearErrors
            FileOpen $0 "$INSTDIR\${FILE}" a
            ${IfNot} ${Errors}
                FileClose $0
                ${ExitFor}
            ${EndIf}
        ${Next}
    ${Loop}
!macroend

; The player has nothing to lose: it is closed without a question. Waits ten seconds at most.
!macro ClosePlayer
    ${If} ${FileExists} "$INSTDIR\Player\TobbinPlayer.exe"
        ${For} $1 1 40
            ClearErrors
            FileOpen $0 "$INSTDIR\Player\TobbinPlayer.exe" a
            ${IfNot} ${Errors}
                FileClose $0
                ${ExitFor}
            ${EndIf}
            ${If} $1 = 1
                ExecWait '"$INSTDIR\Player\TobbinPlayer.exe" /close'
            ${EndIf}
            Sleep 250
        ${Next}
    ${EndIf}
!macroend

; Deletes what Tobbin itself writes into a folder, by kind, and then the folder if nothing else is in
; it, unless the folder is a link or junction: what is in there lies somewhere else.
!macro DeleteData FOLDER
    ${If} ${FileExists} "${FOLDER}\*"
        System::Call 'kernel32::GetFileAttributesW(w "${FOLDER}") i .r0'
        IntOp $0 $0 & 0x400  ; FILE_ATTRIBUTE_REPARSE_POINT
        ${If} $0 = 0
            Delete "${FOLDER}\*.juk"
            Delete "${FOLDER}\*.poc"
            Delete "${FOLDER}\*.lmz"
            Delete "${FOLDER}\*.ini"
            Delete "${FOLDER}\*.bak"
            Delete "${FOLDER}\*.bad*"
            Delete "${FOLDER}\*.new"
            Delete "${FOLDER}\*.tmp"
            RMDir "${FOLDER}"
        ${EndIf}
    ${EndIf}
!macroend

Section "Tobbin" SecProgram
    SectionIn RO
    !insertmacro CloseProgram "Tobbin.exe" "frmMDIForm1"
    !insertmacro ClosePlayer
    SetOutPath "$INSTDIR"
    SetOverwrite off  ; The tips are anyone's to change.
    File "${SOURCE}/TIPOFDAY.TXT"
    SetOverwrite on
    File /r /x TIPOFDAY.TXT "${SOURCE}/*"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Tobbin.lnk" "$INSTDIR\Tobbin.exe"

    ; Tobbin needs no runtime library: its start need not ask for one.
    WriteRegStr HKCU "Software\Tobbin\Options" "Runtime Library Check" "0"

    WriteRegStr HKCU "Software\Classes\.juk" "" "Tobbin.Jukebox"
    WriteRegStr HKCU "Software\Classes\Tobbin.Jukebox" "" "Jukebox"
    WriteRegStr HKCU "Software\Classes\Tobbin.Jukebox\DefaultIcon" "" "$INSTDIR\Tobbin.exe,1"
    WriteRegStr HKCU "Software\Classes\Tobbin.Jukebox\shell\open\command" "" '"$INSTDIR\Tobbin.exe" "%1"'
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'

    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "${TITLE}"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "The Tobbin developers"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\Tobbin.exe"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
    SectionGetSize ${SecProgram} $0
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section /o "Entry on the desktop" SecDesktop
    CreateShortcut "$DESKTOP\Tobbin.lnk" "$INSTDIR\Tobbin.exe"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "The program, its entry in the start menu, and jukebox files (.juk) that open with it."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecDesktop} "A second entry, on the desktop."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/DESKTOP" $1
    ${IfNot} ${Errors}
        !insertmacro SelectSection ${SecDesktop}
    ${EndIf}
FunctionEnd

Section Uninstall
    !insertmacro CloseProgram "Tobbin.exe" "frmMDIForm1"
    !insertmacro ClosePlayer
    !include "${FILES}"
    Delete "$INSTDIR\Uninstall.exe"
    Delete "$SMPROGRAMS\Tobbin.lnk"
    Delete "$DESKTOP\Tobbin.lnk"
    DeleteRegKey HKCU "${UNINSTALL}"
    DeleteRegKey HKCU "Software\Classes\Tobbin.Jukebox"
    ReadRegStr $0 HKCU "Software\Classes\.juk" ""
    ${If} $0 == "Tobbin.Jukebox"
        DeleteRegKey HKCU "Software\Classes\.juk"
    ${EndIf}
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'

    ${If} ${FileExists} "$INSTDIR\Grouping\*"
        ${GetParameters} $0
        ClearErrors
        ${GetOptions} $0 "/DATA" $1
        ${If} ${Errors}
            MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONQUESTION "Remove your catalog, ranks, settings, and the jukeboxes in$\r$\n$INSTDIR\Grouping, too?$\r$\n$\r$\nThey can't be brought back. Your music is not touched." /SD IDNO IDNO kept
        ${EndIf}
        System::Call 'kernel32::GetFileAttributesW(w "$INSTDIR\Grouping") i .r0'
        IntOp $0 $0 & 0x400
        ${If} $0 = 0  ; see DeleteData
            !insertmacro DeleteData "$INSTDIR\Grouping\System"
            !insertmacro DeleteData "$INSTDIR\Grouping\Recovered"
            !insertmacro DeleteData "$INSTDIR\Grouping"
        ${EndIf}
        !insertmacro DeleteData "$LOCALAPPDATA\Tobbin\Recovered"
        RMDir "$LOCALAPPDATA\Tobbin"
    ${EndIf}
    DeleteRegKey HKCU "Software\Tobbin"
kept:
    RMDir "$INSTDIR"
SectionEnd
