#!/usr/bin/env bash
# The desk's package, made of a program that was built, and its life in a clean system: installed over an older version
# and once more, used without a screen and on one, known to menus and file types, taken away while it runs, and gone
# without a trace.
#
#   pacote.sh SOURCES PROGRAM VERSION FOLDER      keeps the clean system in the folder, with what it takes from the
#                                                 distribution, and leaves the pictures there
set -euo pipefail

nome=registro-de-equipamentos
tipo=application/x-$nome
ferramentas=(libglib2.0-bin desktop-file-utils) # of a session: what opens files, what knows the menu entries

falha() {
    printf '%s\n' "$@" >&2
    exit 1
}
# 77 after these two lines: it could not be tried.
pula() {
    printf '%s: Skipped\n%s\n' "${BASH_SOURCE[0]}" "$1"
    exit 77
}
espera() { # what, seen, pattern
    # shellcheck disable=SC2053
    [[ $2 == $3 ]] || falha "$1: seen" "$2" "expected" "$3"
}
passo() {
    printf '%3d s  %s\n' $(($(date +%s) - inicio)) "$1"
}

# What needs the rights of root, in a system of its own: the folder of this run, when it began, and the version.
vive() {
    trabalho=$1
    inicio=$2
    versao=$3
    sis=$trabalho/sistema

    # In memory: it goes away with the run, and the disk has less to do.
    mkdir "$sis" "$trabalho/tela"
    mount -t tmpfs -o mode=755 tmpfs "$sis"
    tar --extract --file="$trabalho/../sistema.tar" --directory="$sis" --exclude='./dev/*'
    mkdir -p "$sis/dev/shm" "$sis/tmp/.X11-unix"
    for ponto in null zero full random urandom tty; do
        touch "$sis/dev/$ponto"
        mount --bind "/dev/$ponto" "$sis/dev/$ponto"
    done
    mount -t proc proc "$sis/proc"
    mount -t tmpfs tmpfs "$sis/dev/shm"
    cp "$trabalho/antes.deb" "$trabalho/agora.deb" "$sis/root/"
    passo "the clean system is there"

    # An older version, the new one over it, and that once more.
    apt install /root/antes.deb
    espera "the older version" "$(no_sistema dpkg-query --show $nome)" "$nome	0.9"
    apt install /root/agora.deb
    apt reinstall /root/agora.deb
    espera "what is installed" \
        "$(no_sistema dpkg-query --show --showformat='${db:Status-Status} ${Version}' $nome)" "installed $versao"
    espera "files that are not as they came" "$(no_sistema dpkg --verify $nome)" ""
    [[ ! -e $sis/usr/share/doc/$nome/antigo ]] || falha "A file of the older version stayed."
    passo "it is installed"

    no_sistema useradd --create-home olga
    no_sistema install --directory --owner=olga --mode=700 /tmp/olga # of her session
    no_sistema useradd --no-create-home --home-dir /nenhures semcasa
    sem_tela
    passo "it works without a screen"
    na_tela
    passo "it works on a screen"
    numa_sessao
    passo "it is known to a session"

    apt install /root/agora.deb
    no_sistema dpkg --purge $nome >"$trabalho/apt" 2>&1 || falha "It cannot be purged." "$(<"$trabalho/apt")"
    espera "what stayed of it" \
        "$(find "$sis" -xdev \( -path "$sis/home" -o -path "$sis/var/log" \) -prune -o -name "*$nome*" -print)" ""
    espera "what is still told of it" "$(grep -r -l -F $nome "$sis/usr/share/applications" "$sis/usr/share/mime" \
        "$sis/usr/share/icons" || true)" ""
    [[ -s $sis/home/olga/.local/share/$nome/registro.db ]] || falha "The registry went with the package."
    passo "it is gone"
}

no_sistema() { # a command of root's
    chroot "$sis" /usr/bin/env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@" </dev/null
}
como() { # a command of a user's, who has the plainest of languages
    local usuario=$1
    shift
    chroot --userspec="$usuario:$usuario" "$sis" \
        /usr/bin/env --ignore-environment --chdir=/ PATH=/usr/bin:/bin LANG=C "$@"
}
apt() {
    no_sistema apt-get --quiet --yes --no-install-recommends --option Dpkg::Options::=--force-unsafe-io "$@" \
        >"$trabalho/apt" 2>&1 || falha "apt-get $*" "$(<"$trabalho/apt")"
}

sem_tela() {
    local ajuda opcao pagina saida=0
    ajuda=$(como olga HOME=/home/olga $nome --help)
    espera "the help" "$ajuda" "uso: $nome \[opções\]*"
    pagina=$(no_sistema zcat /usr/share/man/man1/$nome.1.gz | sed 's/\\-/-/g')
    for opcao in $(grep -o -e '--[a-z-]*' <<<"$ajuda" | sort -u); do
        [[ $pagina == *"$opcao"* ]] || falha "The manual page does not tell $opcao."
    done

    local novo=($nome --novo --cliente 1 --nome-cliente "Autoridade Estadual de Trânsito" --uf RS --usuario olga
        --nome "Olga Reis")
    espera "a new registry" "$(como olga HOME=/home/olga "${novo[@]}" <<<"$senha")" \
        "O registro foi criado em /home/olga/.local/share/$nome/registro.db."
    espera "its check" "$(como olga HOME=/home/olga $nome --confere </dev/null)" "*O registro está inteiro*"
    como semcasa HOME=/nenhures "${novo[@]}" <<<"$senha" >"$trabalho/semcasa" 2>&1 || saida=$?
    espera "a user who has no directory" "$saida $(<"$trabalho/semcasa")" "1 *nenhures*"
}

# The first window with a title of the pattern.
janela() {
    timeout 60 xdotool search --sync --onlyvisible --name "$1" | tail -n 1 || true
}
# Waits until a window is not shown any more.
some() {
    local ate=$((SECONDS + 60))
    while xwininfo -id "$1" 2>/dev/null | grep -q -F IsViewable; do
        ((SECONDS < ate)) || falha "The window $1 stayed: $(xwininfo -id "$1")"
    done
}
# What is on the screen, as a picture.
retrata() {
    python3 - "$trabalho/tela/Xvfb_screen0" "$trabalho/../$1.png" <<'FIM'
import struct, sys, zlib
tudo = open(sys.argv[1], "rb").read()
campos = struct.unpack(">25I", tudo[:100])
largura, altura, passo = campos[4], campos[5], campos[12]
pontos = tudo[campos[0] + 12 * campos[19]:]
linhas = []
for y in range(altura):
    linha = pontos[y * passo:y * passo + 4 * largura]
    rgb = bytearray(3 * largura)
    rgb[0::3], rgb[1::3], rgb[2::3] = linha[2::4], linha[1::4], linha[0::4]
    linhas.append(b"\0" + bytes(rgb))
def bloco(tipo, dado):
    return struct.pack(">I", len(dado)) + tipo + dado + struct.pack(">I", zlib.crc32(tipo + dado))
with open(sys.argv[2], "wb") as png:
    png.write(b"\x89PNG\r\n\x1a\n" + bloco(b"IHDR", struct.pack(">2I5B", largura, altura, 8, 2, 0, 0, 0)) +
              bloco(b"IDAT", zlib.compress(b"".join(linhas))) + bloco(b"IEND", b""))
FIM
}

# Signs in, whoever did so last.
entra() {
    xdotool windowfocus --sync "$1" key alt+u ctrl+a
    xdotool type olga
    xdotool key alt+s
    xdotool type "$senha"
    xdotool key Return
    some "$1"
}

na_tela() {
    local numero tela mesa entrada processo manual parte
    exec {numero}< <(exec Xvfb -displayfd 1 -screen 0 1366x768x24 -nolisten tcp -noreset -ac -fbdir "$trabalho/tela" \
        </dev/null 2>"$trabalho/xvfb")
    read -r -t 60 tela <&"$numero" || falha "There is no display." "$(<"$trabalho/xvfb")"
    export DISPLAY=:$tela
    touch "$sis/tmp/.X11-unix/X$tela"
    mount --bind "/tmp/.X11-unix/X$tela" "$sis/tmp/.X11-unix/X$tela"

    como olga HOME=/home/olga DISPLAY="$DISPLAY" XDG_RUNTIME_DIR=/tmp/olga $nome </dev/null >"$trabalho/mesa" 2>&1 &
    mesa=$!
    entrada=$(janela ' - Entrada$')
    [[ -n $entrada ]] || falha "The sign-in is not shown." "$(xwininfo -root -tree)" "$(<"$trabalho/mesa")"
    retrata entrada
    espera "the class of the windows" "$(xprop -id "$entrada" WM_CLASS)" "*\"$nome\"*"
    espera "the class that the menu entry tells" \
        "$(grep ^StartupWMClass= "$sis/usr/share/applications/$nome.desktop")" "StartupWMClass=$nome"
    entra "$entrada"
    xdotool windowfocus --sync "$(janela '^Registro de Equipamentos$')" key F1
    manual=$(janela '^Manual do operador$')
    [[ -n $manual ]] || falha "The manual is not shown." "$(xwininfo -root -tree)" "$(<"$trabalho/mesa")"
    retrata mesa

    # What it loads only while it runs.
    processo=$(xdotool getwindowpid "$manual")
    for parte in platforms/libqxcb.so libQt6Svg.so sqldrivers/libqsqlite.so qtbase_pt_BR.qm; do
        grep -q -F "$parte" "$sis/proc/$processo/maps" || falha "It runs without $parte."
    done
    xdotool windowfocus --sync "$manual" key Escape
    some "$manual"
    xdotool windowfocus --sync "$(janela '^Registro de Equipamentos$')" key ctrl+q
    wait "$mesa" || falha "It ended with $?." "$(<"$trabalho/mesa")"
    espera "what it complained of" "$(<"$trabalho/mesa")" ""
}

numa_sessao() {
    local copia entrada processo
    apt install "${ferramentas[@]}"
    # A copy has any name: it is known by what is in it.
    copia=/home/olga/qualquer
    como olga HOME=/home/olga $nome --copia /home/olga/copias </dev/null >/dev/null
    como olga sh -c 'cp /home/olga/copias/registro.*.db "$0"' "$copia"
    for arquivo in "$copia" /home/olga/.local/share/$nome/registro.db; do
        espera "the type of $arquivo" "$(como olga HOME=/home/olga gio info --attributes=standard::content-type "$arquivo")" \
            "*content-type: $tipo*"
    done
    espera "who opens the type" "$(como olga HOME=/home/olga gio mime $tipo)" "*: $nome.desktop*"

    # Opened as from a folder's window, and taken away while it runs.
    como olga HOME=/home/olga DISPLAY="$DISPLAY" XDG_RUNTIME_DIR=/tmp/olga gio open /home/olga/.local/share/$nome/registro.db </dev/null
    entrada=$(janela ' - Entrada$')
    [[ -n $entrada ]] || falha "A registry that is opened does not show the sign-in." "$(xwininfo -root -tree)"
    processo=$(xdotool getwindowpid "$entrada")
    apt remove $nome
    [[ ! -e $sis/usr/bin/$nome ]] || falha "The program is still there."
    entra "$entrada"
    xdotool windowfocus --sync "$(janela '^Registro de Equipamentos$')" key ctrl+q
    timeout 60 tail --pid="$processo" --follow /dev/null || falha "The desk does not end."
}

senha="cavalo grampeador azul"
if [[ ${1:-} = --vive ]]; then
    vive "${@:2}"
    exit 0
fi

fontes=$1
programa=$2
versao=$3
pasta=$4
inicio=$(date +%s)

for comando in mmdebstrap dh rsvg-convert appstreamcli desktop-file-validate xdotool xprop Xvfb unshare; do
    command -v "$comando" >/dev/null || pula "There is no $comando here."
done
so=(unshare --mount --pid --fork --kill-child)
if [[ $EUID -ne 0 ]]; then
    so=(unshare --user --map-root-user --map-auto --mount --pid --fork --kill-child)
fi
"${so[@]}" mount -t proc proc /proc 2>/dev/null ||
    pula "A system of its own can be run neither as root nor in a name space here."

mkdir -p "$pasta"
trabalho=$(mktemp --directory --tmpdir="$pasta" vida.XXXXXX)
chmod 755 "$trabalho"
trap 'rm -rf "$trabalho"' EXIT

# The package, twice the same.
pacote=$("$fontes/desk/pacote/faz_pacote.sh" "$programa" "$versao" "$trabalho/um")
outra=$("$fontes/desk/pacote/faz_pacote.sh" "$programa" "$versao" "$trabalho/outra vez")
cmp "$pacote" "$outra" || falha "The same program does not give the same package."
mv "$pacote" "$trabalho/agora.deb"
passo "the package is made"

# What is in it, without installing it.
dpkg-deb --raw-extract "$trabalho/agora.deb" "$trabalho/dentro"
achado=$(grep -r -l -F "$fontes" "$trabalho/dentro" || true)
espera "files that know a folder of the build" "$achado" ""
desktop-file-validate "$trabalho/dentro/usr/share/applications/$nome.desktop"
appstreamcli validate --no-net "$trabalho"/dentro/usr/share/metainfo/*.xml || falha "The data for catalogues is not valid."
manual=$trabalho/dentro/usr/share/doc/$nome
grep -o '](imagens/[^)]*)' "$manual/manual.md" | sed 's/^](\(.*\))$/\1/' | while read -r imagem; do
    [[ -s $manual/$imagem ]] || falha "The manual has no $imagem."
done

# An older one, with a file that the new one does not have.
touch "$manual/antigo"
sed -i 's/^Version: .*/Version: 0.9/' "$trabalho/dentro/DEBIAN/control"
dpkg-deb --root-owner-group --build "$trabalho/dentro" "$trabalho/antes.deb" >/dev/null

# The clean system, with what the package needs downloaded beside: made anew when that changes.
dependencias=$(dpkg-deb --field "$trabalho/agora.deb" Depends | tr ',' '\n' | sed 's/^ *\([^ ]*\).*/\1/')
mapfile -t baixados < <(printf '%s\n' $dependencias "${ferramentas[@]}" | sort -u)
lancamento=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
receita="$lancamento ${baixados[*]}"
if [[ ! -s $pasta/sistema.tar || $(cat "$pasta/receita" 2>/dev/null) != "$receita" ]]; then
    site=$(apt-get indextargets --format '$(CODENAME) $(SITE)' "Created-By: Packages" |
        awk -v lancamento="$lancamento" '$1 == lancamento { print $2; exit }')
    [[ -n $site ]] || pula "The sources of this system's packages are not known."
    rm -f "$pasta/receita"
    mmdebstrap --variant=apt --skip=cleanup/apt,cleanup/tmp --customize-hook="chroot \"\$1\" apt-get install --quiet --yes \
        --no-install-recommends --download-only ${baixados[*]}" "$lancamento" "$pasta/sistema.tar" "$site" \
        >"$pasta/registro" 2>&1 </dev/null || {
        tail -n 5 "$pasta/registro"
        pula "The clean system could not be laid out; is there a network?"
    }
    echo "$receita" >"$pasta/receita"
    passo "the clean system is laid out"
fi

"${so[@]}" "${BASH_SOURCE[0]}" --vive "$trabalho" "$inicio" "$versao"
