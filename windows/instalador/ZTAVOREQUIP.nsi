; Installer of the component: puts it where programs are and registers it, for 64 bits and for 32 bits as far as they
; were built and the system runs them. /S asks nothing, /D=folder puts it elsewhere.
;
;   makensis -DDLL64=file -DDLL32=file -DMANIFESTO=file -DSAIDA=file ZTAVOREQUIP.nsi
;
; Without DLL64 the installer is one for systems of 32 bits. It ends with 2 when something could not be done.

!ifdef DLL64
    Target amd64-unicode
!else
    Target x86-unicode
!endif

!include MUI2.nsh
!include LogicLib.nsh

!define NOME "Cadastro de Equipamentos"
!define VERSAO "1.00.0047"
!define CHAVE "Software\Microsoft\Windows\CurrentVersion\Uninstall\ZTAVOREQUIP"

Name "${NOME} (ZTAVOREQUIP)"
OutFile "${SAIDA}"
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestDPIAware true
!ifdef DLL64
    InstallDir "$PROGRAMFILES64\ZTAVOREQUIP"
!else
    InstallDir "$PROGRAMFILES\ZTAVOREQUIP"
!endif
ShowInstDetails show
ShowUninstDetails show
BrandingText " "

!define MUI_WELCOMEPAGE_TITLE "Instalação do componente ZTAVOREQUIP"
!define MUI_WELCOMEPAGE_TEXT "O componente do cadastro de equipamentos será instalado e registrado para os aplicativos deste \
computador.$\r$\n$\r$\nFeche os aplicativos que o usam antes de continuar."
!define MUI_UNCONFIRMPAGE_TEXT_TOP "O componente ZTAVOREQUIP deixará de estar registrado e será removido deste computador. \
Feche os aplicativos que o usam antes de continuar."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE PortugueseBR

VIProductVersion 1.0.0.47
VIFileVersion 1.0.0.47
VIAddVersionKey /LANG=0 ProductName "${NOME}"
VIAddVersionKey /LANG=0 ProductVersion "${VERSAO}"
VIAddVersionKey /LANG=0 FileDescription "Instalador do componente ZTAVOREQUIP"
VIAddVersionKey /LANG=0 FileVersion "${VERSAO}"
VIAddVersionKey /LANG=0 LegalCopyright "Licença MIT"

; The system's own program for registering, of the component's width. An installer of 64 bits finds that of 32 bits only
; where the system runs such programs.
!ifdef DLL64
    !define REGISTRA64 "$SYSDIR\regsvr32.exe"
    !define REGISTRA32 "$WINDIR\SysWOW64\regsvr32.exe"
!else
    !define REGISTRA32 "$SYSDIR\regsvr32.exe"
!endif

!macro Instala largura arquivo
    ${If} ${FileExists} "${REGISTRA${largura}}"
        SetOutPath "$INSTDIR\${largura}"
        ClearErrors
        SetOverwrite try
        File "/oname=ZTAVOREQUIP.dll" "${arquivo}"
        File "/oname=ZTAVOREQUIP.manifest" "${MANIFESTO}"
        ${If} ${Errors}
            StrCpy $0 "O componente de ${largura} bits está em uso: feche os aplicativos que o usam e instale outra vez."
            Call Desiste
        ${EndIf}
        ClearErrors
        ExecWait '"${REGISTRA${largura}}" /s "$INSTDIR\${largura}\ZTAVOREQUIP.dll"' $1
        ${If} ${Errors}
        ${OrIf} $1 <> 0
            StrCpy $0 "O componente de ${largura} bits não pôde ser registrado (regsvr32: $1)."
            Call Desiste
        ${EndIf}
        DetailPrint "Componente de ${largura} bits registrado."
    ${Else}
        DetailPrint "Este Windows não executa programas de ${largura} bits: o componente de ${largura} bits não foi instalado."
    ${EndIf}
!macroend

!macro Remove largura
    ${If} ${FileExists} "$INSTDIR\${largura}\ZTAVOREQUIP.dll"
        ClearErrors
        ExecWait '"${REGISTRA${largura}}" /u /s "$INSTDIR\${largura}\ZTAVOREQUIP.dll"' $1
        ${If} ${Errors}
        ${OrIf} $1 <> 0
            StrCpy $0 "O registro do componente de ${largura} bits não pôde ser removido (regsvr32: $1)."
            Call un.Desiste
        ${EndIf}
        ClearErrors
        Delete "$INSTDIR\${largura}\ZTAVOREQUIP.dll"
        ${If} ${Errors}
            StrCpy $0 "O componente de ${largura} bits está em uso: feche os aplicativos que o usam e remova outra vez."
            Call un.Desiste
        ${EndIf}
    ${EndIf}
    Delete "$INSTDIR\${largura}\ZTAVOREQUIP.manifest"
    Delete "$INSTDIR\${largura}\VORTemp.pdf" ; the component's own, beside its file
    RMDir "$INSTDIR\${largura}"
!macroend

; Shows why, in $0, unless silent, and ends.
!macro DefineDesiste prefixo
    Function ${prefixo}Desiste
        DetailPrint $0
        MessageBox MB_OK|MB_ICONSTOP $0 /SD IDOK
        SetErrorLevel 2
        Abort
    FunctionEnd
!macroend
!insertmacro DefineDesiste ""
!insertmacro DefineDesiste "un."

Section
    SetShellVarContext all
    !ifdef DLL64
        SetRegView 64
    !endif
    ; First what takes all away again, also what is left of an installation that fails.
    SetOutPath $INSTDIR
    WriteUninstaller "$INSTDIR\Desinstala.exe"
    WriteRegStr HKLM "${CHAVE}" DisplayName "${NOME} (ZTAVOREQUIP)"
    WriteRegStr HKLM "${CHAVE}" DisplayVersion "${VERSAO}"
    WriteRegStr HKLM "${CHAVE}" InstallLocation "$INSTDIR"
    WriteRegStr HKLM "${CHAVE}" UninstallString '"$INSTDIR\Desinstala.exe"'
    WriteRegStr HKLM "${CHAVE}" QuietUninstallString '"$INSTDIR\Desinstala.exe" /S'
    WriteRegDWORD HKLM "${CHAVE}" NoModify 1
    WriteRegDWORD HKLM "${CHAVE}" NoRepair 1
    !ifdef DLL64
        !insertmacro Instala 64 "${DLL64}"
    !endif
    !ifdef DLL32
        !insertmacro Instala 32 "${DLL32}"
    !endif
SectionEnd

Section Uninstall
    SetShellVarContext all
    !ifdef DLL64
        SetRegView 64
        !insertmacro Remove 64
    !endif
    !ifdef DLL32
        !insertmacro Remove 32
    !endif
    DeleteRegKey HKLM "${CHAVE}"
    Delete "$INSTDIR\Desinstala.exe"
    SetOutPath $TEMP ; a folder in which a program stands cannot be removed
    RMDir "$INSTDIR"
SectionEnd
