#!/usr/bin/env bash
# Makes the desk's package of programs that are built: the desk, and the one without windows.
#
#   faz_pacote.sh PROGRAM COMMAND VERSION FOLDER      writes registro-de-equipamentos_VERSION_ARCHITECTURE.deb into the
#                                                     folder, and its name to the standard output
set -euo pipefail
programa=$(realpath "$1")
comando=$(realpath "$2")
versao=$3
destino=$(realpath --canonicalize-missing "$4")
cd "$(dirname "${BASH_SOURCE[0]}")"
raiz=$(realpath ../..)
source "$raiz/cmake/deb.sh"

comeca_pacote registro-de-equipamentos "$programa" "$versao" "$raiz"
poe_comando "$comando" "$raiz"
cp "$nome.desktop" "$arvore/"
cp "$nome.sharedmimeinfo" "$arvore/debian/"
sed "s/@VERSAO@/$versao/; s/@DATA@/$(date --date="@$SOURCE_DATE_EPOCH" +%F)/" "$nome.metainfo.xml" \
    >"$arvore/org.registro_de_equipamentos.Mesa.metainfo.xml"
pagina_de_manual "$nome.1"

# The manual with the pictures that it shows.
mkdir "$arvore/imagens"
cp "$raiz/docs/manual.md" "$arvore/"
grep -o '](imagens/[^)]*)' "$raiz/docs/manual.md" | sed 's/^](\(.*\))$/\1/' | sort -u | while read -r imagem; do
    cp "$raiz/docs/$imagem" "$arvore/imagens/"
done

icones=$arvore/icons/hicolor
mkdir -p "$icones/scalable/apps"
cp "$nome.svg" "$icones/scalable/apps/"
for lado in 16 24 32 48 64 128 256; do
    mkdir -p "$icones/${lado}x$lado/apps"
    rsvg-convert --width=$lado --height=$lado "$nome.svg" --output="$icones/${lado}x$lado/apps/$nome.png"
done

termina_pacote "$destino"
