#!/usr/bin/env bash
# A command for who uses the program says what it installs, and that this failed, in Portuguese. Arguments: the source
# folder; the command and its options. Nothing is installed: the distribution here has nothing and gives nothing.
set -euo pipefail
cd "$1"
shift
pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT
for vazio in dpkg-query sudo apt-get; do
    printf '#!/bin/sh\nexit 1\n' >"$pasta/$vazio"
    chmod +x "$pasta/$vazio"
done
dito=$(PATH="$pasta:$PATH" QT_QPA_PLATFORM=offscreen "$@" 2>&1) && {
    echo "it went on: $dito"
    exit 1
}
[[ $dito = "Instalando da distribuição:"$'\n'"  g++"$'\n'* &&
    $dito = *$'\n'"A lista de pacotes da distribuição não pôde ser atualizada." ]] || {
    echo "said: $dito"
    exit 1
}
