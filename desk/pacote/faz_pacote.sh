#!/usr/bin/env bash
# Makes the desk's package of a program that is built.
#
#   faz_pacote.sh PROGRAM VERSION FOLDER      writes registro-de-equipamentos_VERSION_ARCHITECTURE.deb into the folder, and
#                                             its name to the standard output
#
# The newest entry of debian/changelog has to be of that version; its moment is that of everything in the package, so that
# the same program gives the same package.
set -euo pipefail
programa=$(realpath "$1")
versao=$2
destino=$(realpath --canonicalize-missing "$3")
cd "$(dirname "${BASH_SOURCE[0]}")"
raiz=$(realpath ../..)

desiste() {
    echo "$1" >&2
    exit 1
}

nome=registro-de-equipamentos
contada=$(dpkg-parsechangelog -l debian/changelog -S Version)
[[ $contada = "$versao" ]] ||
    desiste "The program has version $versao, and the newest entry of desk/pacote/debian/changelog is of $contada."
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l debian/changelog -S Timestamp)
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022

pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT
arvore=$pasta/$nome
mkdir "$arvore"
cp -r debian "$arvore/"
cp "$programa" "$arvore/$nome"
cp "$nome.desktop" "$arvore/"
cp "$nome.sharedmimeinfo" "$arvore/debian/"
sed "s/@VERSAO@/$versao/; s/@DATA@/$(date --date="@$SOURCE_DATE_EPOCH" +%F)/" "$nome.metainfo.xml" \
    >"$arvore/org.registro_de_equipamentos.Mesa.metainfo.xml"
sed "s/@VERSAO@/$versao/; s/@DATA@/$(date --date="@$SOURCE_DATE_EPOCH" +%d\\/%m\\/%Y)/" "$nome.1" >"$arvore/$nome.1"

# The licence, each line of it begun by a blank, an empty one by " .".
sed '1,4d; s/^/ /; s/^ $/ ./' "$raiz/LICENSE" >"$pasta/licenca"
sed -i -e "/@LICENCA@/{r $pasta/licenca" -e 'd}' "$arvore/debian/copyright"

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

cd "$arvore"
debian/rules binary >"$pasta/registro" 2>&1 || {
    cat "$pasta/registro" >&2
    desiste "The package could not be made."
}
mkdir -p "$destino"
feito=${nome}_${versao}_$(dpkg --print-architecture).deb
mv "$pasta/$feito" "$destino/"
echo "$destino/$feito"
