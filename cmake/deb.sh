# Sourced by what makes a package of a program that is built. The newest entry of debian/changelog has to be of the
# program's version; its moment is that of everything in the package, so that the same program gives the same package.

desiste() {
    echo "$1" >&2
    exit 1
}

# comeca_pacote NAME PROGRAM VERSION ROOT, in the folder that has debian/: lays the package out in $arvore, below $pasta, which
# goes away with the script.
comeca_pacote() {
    nome=$1
    local programa=$2 versao=$3 raiz=$4 contada
    contada=$(dpkg-parsechangelog -l debian/changelog -S Version)
    [[ $contada = "$versao" ]] ||
        desiste "The program has version $versao, and the newest entry of $PWD/debian/changelog is of $contada."
    SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l debian/changelog -S Timestamp)
    export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
    umask 022

    pasta=$(mktemp -d)
    trap 'rm -rf "$pasta"' EXIT
    arvore=$pasta/$nome
    mkdir "$arvore"
    cp -r debian "$arvore/"
    cp "$programa" "$arvore/$nome"

    # The licence, each line of it begun by a blank, an empty one by " .".
    sed '1,4d; s/^/ /; s/^ $/ ./' "$raiz/LICENSE" >"$pasta/licenca"
    sed -i -e "/@LICENCA@/{r $pasta/licenca" -e 'd}' "$arvore/debian/copyright"
}

# com_versao FILE: the text of a manual page, with the version, and the day of it, put in.
com_versao() {
    sed "s/@VERSAO@/$(dpkg-parsechangelog -l debian/changelog -S Version)/
        s/@DATA@/$(date --date="@$SOURCE_DATE_EPOCH" +%d\\/%m\\/%Y)/" "$1"
}
pagina_de_manual() {
    com_versao "$1" >"$arvore/$1"
}

# poe_comando PROGRAM ROOT: lays the program without windows out, with its manual page, what makes bash complete it, and
# what mails the deadlines each night. It is in more than one package, in directories and under names of their own, so that
# they go together on one machine.
poe_comando() {
    local programa=$1 raiz=$2 roteiro ato tipo
    mkdir "$arvore/comando"
    cp "$programa" "$arvore/comando/registro"
    "$programa" completa-bash >"$arvore/comando/registro.bash"
    com_versao "$raiz/comando/pacote/registro.1" | gzip --best --no-name >"$arvore/comando/registro.1.gz"
    printf '%s\n' "comando/registro usr/lib/$nome" "comando/registro.bash usr/share/$nome" \
        "comando/registro.1.gz usr/share/$nome" "comando/prazos-de-ontem usr/lib/$nome" \
        "comando/$nome-prazos@.* lib/systemd/system" >>"$arvore/debian/$nome.install"
    cp "$raiz/comando/pacote/prazos-de-ontem" "$arvore/comando/"
    for tipo in service timer; do
        sed "s/@NOME@/$nome/g" "$raiz/comando/pacote/prazos@.$tipo" >"$arvore/comando/$nome-prazos@.$tipo"
    done
    printf '%s\n' usr/share/man/man1 usr/share/bash-completion/completions >>"$arvore/debian/$nome.dirs"
    for ato in postinst prerm; do
        roteiro=$arvore/debian/$nome.$ato
        [[ -e $roteiro ]] || printf '#!/bin/sh\nset -e\n\n#DEBHELPER#\n' >"$roteiro"
        sed "s/@NOME@/$nome/g" "$raiz/comando/pacote/$ato" >>"$roteiro"
    done
}

# termina_pacote FOLDER: writes the package there, and its name to the standard output.
termina_pacote() {
    local destino=$1 versao feito
    versao=$(dpkg-parsechangelog -l debian/changelog -S Version)
    (cd "$arvore" && debian/rules binary) >"$pasta/registro" 2>&1 || {
        cat "$pasta/registro" >&2
        desiste "The package could not be made."
    }
    mkdir -p "$destino"
    feito=${nome}_${versao}_$(dpkg --print-architecture).deb
    mv "$pasta/$feito" "$destino/"
    echo "$destino/$feito"
}
