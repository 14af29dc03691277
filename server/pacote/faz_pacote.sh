#!/usr/bin/env bash
# Makes the server's package of a program that is built.
#
#   faz_pacote.sh PROGRAM VERSION FOLDER      writes registro-servidor_VERSION_ARCHITECTURE.deb into the folder, and its
#                                             name to the standard output
set -euo pipefail
programa=$(realpath "$1")
versao=$2
destino=$(realpath --canonicalize-missing "$3")
cd "$(dirname "${BASH_SOURCE[0]}")"
raiz=$(realpath ../..)
source "$raiz/cmake/deb.sh"

comeca_pacote registro-servidor "$programa" "$versao" "$raiz"
pagina_de_manual "$nome.8"
cp "$raiz/server/$nome.toml" "$raiz/server/proto/registro.proto" "$raiz/docs/servidor.md" \
    "$raiz/docs/exemplos/rede/consulta_afericao.py" "$arvore/"
# What it refers to stands beside it there.
sed 's/\](\(\.\.\/server\/proto\|exemplos\/rede\)\//](/g' "$raiz/docs/network.md" >"$arvore/network.md"
termina_pacote "$destino"
