; The installer of Tracksmith for one user, without administrator's rights, and its uninstaller.
; Called by make_packages.sh, which gives VERSION, STAGE (the folder with what is installed) and
; OUTPUT. `/S` installs without questions, `/D=FOLDER` somewhere else.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
!include MUI2.nsh

!define REMOVE "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tracksmith"
!define CLASS "Tracksmith.Song"

Name "Tracksmith"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tracksmith"
InstallDirRegKey HKCU "${REMOVE}" "InstallLocation"

!define MUI_ICON "tracksmith.ico"
!define MUI_UNICON "tracksmith.ico"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\tracksmith.exe"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"

LangString OFFER ${LANG_ENGLISH} "Offer for opening MIDI files"
LangString OFFER ${LANG_GERMAN} "Für MIDI-Dateien anbieten"
LangString SONG ${LANG_ENGLISH} "MIDI song"
LangString SONG ${LANG_GERMAN} "MIDI-Song"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tracksmith"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Tracksmith Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "See LICENSE"

Section "Tracksmith"
  SectionIn RO
  ; An older version's files go, so that none of them stays behind.
  RMDir /r "$INSTDIR\data"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\licenses"
  SetOutPath "$INSTDIR"
  File /r "${STAGE}\*"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Tracksmith.lnk" "$INSTDIR\tracksmith.exe"
  WriteRegStr HKCU "${REMOVE}" "DisplayName" "Tracksmith"
  WriteRegStr HKCU "${REMOVE}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${REMOVE}" "DisplayIcon" "$INSTDIR\tracksmith.exe"
  WriteRegStr HKCU "${REMOVE}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${REMOVE}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${REMOVE}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${REMOVE}" "NoModify" 1
  WriteRegDWORD HKCU "${REMOVE}" "NoRepair" 1
SectionEnd

; The same entries as the tick in the program's settings makes. Which program opens the files when
; they are double-clicked stays as it is.
!macro Offer EXTENSION
  WriteRegStr HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${CLASS}" ""
!macroend
!macro TakeBack EXTENSION
  DeleteRegValue HKCU "Software\Classes\${EXTENSION}\OpenWithProgids" "${CLASS}"
!macroend

Section /o "$(OFFER)"
  WriteRegStr HKCU "Software\Classes\${CLASS}" "" "$(SONG)"
  WriteRegStr HKCU "Software\Classes\${CLASS}\DefaultIcon" "" '"$INSTDIR\tracksmith.exe",0'
  WriteRegStr HKCU "Software\Classes\${CLASS}\shell\open\command" "" '"$INSTDIR\tracksmith.exe" "%1"'
  !insertmacro Offer ".mid"
  !insertmacro Offer ".midi"
  !insertmacro Offer ".kar"
  !insertmacro Offer ".smf"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd

; Songs, voice lists, backups and settings of the user stay.
Section "Uninstall"
  RMDir /r "$INSTDIR\data"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\licenses"
  Delete "$INSTDIR\tracksmith.exe"
  Delete "$INSTDIR\tracksmith-cli.exe"
  Delete "$INSTDIR\LICENSE"
  Delete "$INSTDIR\README.md"
  Delete "$INSTDIR\CHANGELOG.md"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Tracksmith.lnk"
  !insertmacro TakeBack ".mid"
  !insertmacro TakeBack ".midi"
  !insertmacro TakeBack ".kar"
  !insertmacro TakeBack ".smf"
  DeleteRegKey HKCU "Software\Classes\${CLASS}"
  DeleteRegKey HKCU "${REMOVE}"
  System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
SectionEnd
