#!/usr/bin/env bash
# Makes the server's package of programs that are built: the server, and the one without windows.
#
#   faz_pacote.sh PROGRAM COMMAND VERSION FOLDER      writes registro-servidor_VERSION_ARCHITECTURE.deb into the folder, and
#                                                     its name to the standard output
set -euo pipefail
programa=$(realpath "$1")
comando=$(realpath "$2")
versao=$3
destino=$(realpath --canonicalize-missing "$4")
cd "$(dirname "${BASH_SOURCE[0]}")"
raiz=$(realpath ../..)
source "$raiz/cmake/deb.sh"

comeca_pacote registro-servidor "$programa" "$versao" "$raiz"
poe_comando "$comando" "$raiz"
pagina_de_manual "$nome.8"
cp "$raiz/server/$nome.toml" "$raiz/server/proto/registro.proto" "$raiz/docs/servidor.md" \
    "$raiz/docs/exemplos/rede/consulta_afericao.py" "$arvore/"
# What it refers to stands beside it there.
sed 's/\](\(\.\.\/server\/proto\|exemplos\/rede\)\//](/g' "$raiz/docs/network.md" >"$arvore/network.md"
termina_pacote "$destino"
