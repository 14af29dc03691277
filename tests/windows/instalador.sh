#!/usr/bin/env bash
# The installer under the compatibility layer, without questions: it installs, the component can be created, it installs
# again, it is removed, and of it there is nothing left. What it cannot do it tells by its exit code.
#
#   instalador.sh LAYER... -- INSTALLER WIDTH     LAYER: the command that runs Windows programs; WIDTH: 64 or 32 bits
set -euo pipefail

camada=()
while [[ $1 != -- ]]; do
    camada+=("$1")
    shift
done
instalador=$2
largura=$3

roda() { "${camada[@]}" "$@" </dev/null; }

falha() {
    echo "$1"
    exit 1
}

pasta=$(mktemp --directory)
trap 'rm -rf "$pasta"' EXIT

# What the registry has where components and programs are told, on the standard output. Some of it need not be there.
inscritos() {
    local chave
    for chave in 'HKLM\Software\Classes' 'HKCU\Software\Classes' 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall'; do
        if roda reg query "$chave" >/dev/null 2>&1; then
            roda reg export "$chave" "Z:$pasta/chaves" /y >/dev/null
            iconv -f UTF-16 -t UTF-8 "$pasta/chaves"
        fi
    done
}

# A script that fails ends with 0: what it says tells. Answers what CreateObject gave, or the number of its fault.
cria() {
    printf '%s\r\n' 'On Error Resume Next' 'Set o = CreateObject("ZTAVOREQUIP.Geral")' \
        'If Err.Number = 0 Then' 'WScript.Echo "criado: " & TypeName(o)' 'Else' 'WScript.Echo "falha: " & Err.Number' \
        'End If' >"$pasta/cria.vbs"
    roda cscript //nologo "Z:$pasta/cria.vbs"
}

programas=$(roda winepath -u 'C:\Program Files')
instalado=$programas/ZTAVOREQUIP
remove() { roda 'C:\Program Files\ZTAVOREQUIP\Desinstala.exe' /S; }

[[ $(cria) = 'falha: 429' ]] || falha "The component was there before it was installed."
inscritos >"$pasta/antes" # after the first script, by which its host registers itself

roda "$instalador" /S || falha "The installer ended with $?."
[[ -f $instalado/$largura/ZTAVOREQUIP.dll && -f $instalado/$largura/ZTAVOREQUIP.manifest ]] || falha "Files are missing."
criado=$(cria)
[[ $criado = 'criado: _Geral' ]] || falha "The component installed could not be created: $criado"
inscritos >"$pasta/instalado"
grep -q -F "Program Files\\\\ZTAVOREQUIP\\\\$largura\\\\ZTAVOREQUIP.dll" "$pasta/instalado" || falha "The file is not registered."
grep -q -F '"QuietUninstallString"' "$pasta/instalado" || falha "The list of programs does not have it."

roda "$instalador" /S || falha "The second time the installer ended with $?."
inscritos | diff "$pasta/instalado" - || falha "Installing again changed what is registered."

remove || falha "The removal ended with $?."
[[ ! -e $instalado ]] || falha "Files are left: $(find "$instalado")"
inscritos | diff "$pasta/antes" - || falha "Of what was registered something is left."
[[ $(cria) = 'falha: 429' ]] || falha "The component removed can still be created."

# Something stands where the file goes.
mkdir -p "$instalado/$largura/ZTAVOREQUIP.dll"
codigo=0
roda "$instalador" /S || codigo=$?
[[ $codigo -eq 2 ]] || falha "An installer that could not write its file ended with $codigo."
[[ $(cria) = 'falha: 429' ]] || falha "What could not be installed was registered."
rmdir "$instalado/$largura/ZTAVOREQUIP.dll"
remove || falha "The removal of an installation cut off ended with $?."
[[ ! -e $instalado ]] || falha "Files of an installation cut off are left: $(find "$instalado")"
inscritos | diff "$pasta/antes" - || falha "Of an installation cut off something is left registered."
