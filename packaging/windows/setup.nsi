; The installer. scripts/package-windows compiles it and defines
;   VERSION    such as 0.1.0
;   COPYRIGHT  the line of the licence
;   LICENSE    its file
;   FILES      the macros InstallFiles and RemoveFiles
;   SIZE       of the files in kilobytes
;   OUTPUT     the installer
;   SIGNED     where the environment's QEL_SIGN signs it and its uninstaller
;
; Switches: /S silent, /AllUsers or /CurrentUser for whom, /D=<folder> where (the last switch).
; Exit codes: 0 done, 1 cancelled, 2 failed (nothing is left), 3 a newer version is installed,
; 4 the rights to install for all users are missing.

Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS all
; An administrator is asked to confirm; everyone else may install for himself.
RequestExecutionLevel highest

!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include nsDialogs.nsh
!include MUI2.nsh
!include "${FILES}"

!define COMPANY "QEL Software"
!define LIST "Software\Microsoft\Windows\CurrentVersion\Uninstall"
!define LIST_KEY "${LIST}\QEL"
!define PROGRAMS "Software\Microsoft\Windows\CurrentVersion\App Paths"
!define PROGRAM_KEY "${PROGRAMS}\qel.exe"

Name "QEL"
OutFile "${OUTPUT}"
BrandingText "QEL ${VERSION}"
AllowSkipFiles off
ShowInstDetails show
ShowUninstDetails show

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=0 CompanyName "${COMPANY}"
VIAddVersionKey /LANG=0 FileDescription "Installs QEL ${VERSION}"
VIAddVersionKey /LANG=0 FileVersion "${VERSION}"
VIAddVersionKey /LANG=0 LegalCopyright "${COPYRIGHT}"
VIAddVersionKey /LANG=0 ProductName "QEL"
VIAddVersionKey /LANG=0 ProductVersion "${VERSION}"

!ifdef SIGNED
  !finalize '$%QEL_SIGN% "%1"'
  !uninstfinalize '$%QEL_SIGN% "%1"'
!endif

Var scope           ; machine or user
Var for_user        ; the options of regsvr32 for one user, or nothing
Var chosen_folder   ; by /D, or nothing
Var machine_button

!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
Page custom ask_scope leave_scope
!define MUI_PAGE_CUSTOMFUNCTION_PRE skip_where_installed
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; --- For both the installer and the uninstaller

; A file that a running program uses cannot be deleted, but gives its name free; the rest of it goes
; with the next start of the system.
!macro RemoveFile path
  ClearErrors
  Delete "$INSTDIR\${path}"
  ${If} ${Errors}
    GetTempFileName $R9 "$INSTDIR"
    Delete "$R9"
    Rename "$INSTDIR\${path}" "$R9"
    Delete /REBOOTOK "$R9"
  ${EndIf}
!macroend

; RunRegistration SYSTEM-FOLDER OPTION DLL: $0 becomes 0, or what went wrong. There is nothing to do
; for a file that is missing, nor on a system that cannot run 32-bit programs at all.
!macro RunRegistration folder option dll
  StrCpy $0 0
  ${If} ${FileExists} "${folder}\regsvr32.exe"
  ${AndIf} ${FileExists} "$INSTDIR\${dll}"
    ClearErrors
    ExecWait '"${folder}\regsvr32.exe" /s ${option} $for_user "$INSTDIR\${dll}"' $0
    ${If} ${Errors}
      StrCpy $0 "no program"
    ${EndIf}
    DetailPrint "regsvr32 ${option} $for_user ${dll}: $0"
  ${EndIf}
!macroend

!macro SetScope prefix
  Function ${prefix}set_scope
    ${If} $scope == machine
      SetShellVarContext all
      StrCpy $for_user ""
    ${Else}
      SetShellVarContext current
      StrCpy $for_user "/n /i:user"
    ${EndIf}
  FunctionEnd
!macroend
!insertmacro SetScope ""
!insertmacro SetScope "un."

!macro Fail code text
  MessageBox MB_OK|MB_ICONSTOP "${text}" /SD IDOK
  SetErrorLevel ${code}
  Quit
!macroend

; --- Installing

; Where it goes: the folder of the version that is there, or the one that was chosen, or the usual.
Function enter_scope
  Call set_scope
  ReadRegStr $0 SHCTX "${LIST_KEY}" InstallLocation
  ${If} $0 != ""
    StrCpy $INSTDIR $0
  ${ElseIf} $chosen_folder != ""
    StrCpy $INSTDIR $chosen_folder
  ${ElseIf} $scope == machine
    StrCpy $INSTDIR "$PROGRAMFILES64\QEL"
  ${Else}
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\QEL"
  ${EndIf}
FunctionEnd

Function may_serve_all
  UserInfo::GetAccountType
  Pop $0
FunctionEnd

Function .onInit
  StrCpy $chosen_folder $INSTDIR
  StrCpy $scope user
  Call may_serve_all
  ${If} $0 == Admin
    StrCpy $scope machine
    ReadRegStr $1 HKLM "${LIST_KEY}" InstallLocation
    ReadRegStr $2 HKCU "${LIST_KEY}" InstallLocation
    ${If} $1 == ""
    ${AndIf} $2 != ""
      StrCpy $scope user
    ${EndIf}
  ${EndIf}
  ${GetParameters} $3
  ClearErrors
  ${GetOptions} $3 "/CurrentUser" $4
  ${IfNot} ${Errors}
    StrCpy $scope user
  ${EndIf}
  ClearErrors
  ${GetOptions} $3 "/AllUsers" $4
  ${IfNot} ${Errors}
    StrCpy $scope machine
    ${If} $0 != Admin
      !insertmacro Fail 4 "Only an administrator can install QEL for all users."
    ${EndIf}
  ${EndIf}
  Call enter_scope
FunctionEnd

Function ask_scope
  !insertmacro MUI_HEADER_TEXT "Who is it for?" "QEL can be installed for everyone or for you alone."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 0 100% 12u "&Everyone who uses this computer"
  Pop $machine_button
  ${NSD_CreateRadioButton} 0 18u 100% 12u "Only &me"
  Pop $1
  ${If} $scope == machine
    ${NSD_Check} $machine_button
  ${Else}
    ${NSD_Check} $1
  ${EndIf}
  Call may_serve_all
  ${If} $0 != Admin
    EnableWindow $machine_button 0
  ${EndIf}
  ReadRegStr $0 SHCTX "${LIST_KEY}" DisplayVersion
  ${If} $0 == "${VERSION}"
    ${NSD_CreateLabel} 0 42u 100% 24u "This version is installed already: it will be repaired."
    Pop $1
  ${ElseIf} $0 != ""
    ${NSD_CreateLabel} 0 42u 100% 24u "Version ${VERSION} will take the place of version $0."
    Pop $1
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function leave_scope
  ${NSD_GetState} $machine_button $0
  StrCpy $scope user
  ${If} $0 == ${BST_CHECKED}
    StrCpy $scope machine
  ${EndIf}
  Call enter_scope
FunctionEnd

Function skip_where_installed
  ReadRegStr $0 SHCTX "${LIST_KEY}" InstallLocation
  ${If} $0 != ""
    Abort
  ${EndIf}
FunctionEnd

Function give_up
  !insertmacro RunRegistration "$WINDIR\SysWOW64" /u "x86\bin\qelcom.dll"
  !insertmacro RunRegistration "$SYSDIR" /u "x64\bin\qelcom.dll"
  !insertmacro RemoveFiles
  RMDir "$INSTDIR"
  SetErrorLevel 2
  Abort "The component could not be registered. Nothing was installed."
FunctionEnd

Section
  ReadRegStr $0 SHCTX "${LIST_KEY}" DisplayVersion
  ${If} $0 != ""
    ${VersionCompare} "$0" "${VERSION}" $1
    ${If} $1 == 1
      !insertmacro Fail 3 "QEL $0 is installed, which is newer than ${VERSION}. Remove it first."
    ${EndIf}
    ; It knows files that this version may no longer have.
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR' $1
    DetailPrint "Version $0 was taken out: $1"
  ${EndIf}

  !insertmacro RemoveFiles
  ClearErrors
  !insertmacro InstallFiles
  ${If} ${Errors}
    Call give_up
  ${EndIf}
  !insertmacro RunRegistration "$SYSDIR" "" "x64\bin\qelcom.dll"
  ${If} $0 == 0
    !insertmacro RunRegistration "$WINDIR\SysWOW64" "" "x86\bin\qelcom.dll"
  ${EndIf}
  ${If} $0 != 0
    Call give_up
  ${EndIf}

  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteINIStr "$INSTDIR\uninstall.ini" QEL scope $scope
  WriteRegStr SHCTX "${LIST_KEY}" DisplayName "QEL"
  WriteRegStr SHCTX "${LIST_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${LIST_KEY}" Publisher "${COMPANY}"
  WriteRegStr SHCTX "${LIST_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${LIST_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${LIST_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${LIST_KEY}" EstimatedSize ${SIZE}
  WriteRegDWORD SHCTX "${LIST_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${LIST_KEY}" NoRepair 1
  ${If} ${FileExists} "$INSTDIR\x64\bin\qel.exe"
    WriteRegStr SHCTX "${PROGRAM_KEY}" "" "$INSTDIR\x64\bin\qel.exe"
  ${EndIf}
SectionEnd

; --- Removing

Function un.onInit
  ReadINIStr $scope "$INSTDIR\uninstall.ini" QEL scope
  Call un.set_scope
FunctionEnd

Section Uninstall
  !insertmacro RunRegistration "$WINDIR\SysWOW64" /u "x86\bin\qelcom.dll"
  ${If} $0 == 0
    !insertmacro RunRegistration "$SYSDIR" /u "x64\bin\qelcom.dll"
  ${EndIf}
  ${If} $0 != 0
    SetErrorLevel 2
    Abort "The component is still registered: the rights to change that are missing."
  ${EndIf}
  DeleteRegKey SHCTX "${PROGRAM_KEY}"
  DeleteRegKey /ifempty SHCTX "${PROGRAMS}"
  DeleteRegKey SHCTX "${LIST_KEY}"
  DeleteRegKey /ifempty SHCTX "${LIST}"
  SetOutPath "$TEMP"
  !insertmacro RemoveFiles
  Delete "$INSTDIR\uninstall.ini"
  Delete "$INSTDIR\uninstall.exe"
  RMDir /REBOOTOK "$INSTDIR"
SectionEnd
