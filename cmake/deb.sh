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

# pagina_de_manual FILE: with the version, and the day of it, put in.
pagina_de_manual() {
    sed "s/@VERSAO@/$(dpkg-parsechangelog -l debian/changelog -S Version)/
        s/@DATA@/$(date --date="@$SOURCE_DATE_EPOCH" +%d\\/%m\\/%Y)/" "$1" >"$arvore/$1"
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
