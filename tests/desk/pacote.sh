#!/usr/bin/env bash
# The packages of desk and server, made of programs that were built, and their life in a clean system. The desk's is
# installed over an older version and once more, used without a screen and on one, known to menus and file types, taken
# away while it runs, and gone without a trace. The server's gets a user of its own, is set up, answers who asks, ends in
# order, keeps its settings over a newer version and its registry when it goes.
#
#   pacote.sh SOURCES DESK SERVER COMMAND VERSION FOLDER      keeps the clean system in the folder, with what it takes from
#                                                             the distribution, and leaves the pictures there
set -euo pipefail

nome=registro-de-equipamentos
servidor=registro-servidor
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
    cp "$trabalho/antes.deb" "$trabalho/agora.deb" "$trabalho/servidor.deb" "$sis/root/"
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
    [[ ! -L $sis/usr/bin/registro ]] || falha "The program without windows stayed."
    [[ -s $sis/home/olga/.local/share/$nome/registro.db ]] || falha "The registry went with the package."
    passo "it is gone"

    o_servidor
    passo "the server came, worked and went"
}

no_sistema() { # a command of root's
    chroot "$sis" /usr/bin/env --ignore-environment PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@" </dev/null
}
como() { # a command of a user's, who has the plainest of languages
    (vira "$@")
}
vira() { # the same in the place of this shell
    local usuario=$1
    shift
    exec chroot --userspec="$usuario:$usuario" "$sis" \
        /usr/bin/env --ignore-environment --chdir=/ PATH=/usr/bin:/bin:/usr/sbin LANG=C "$@"
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
    o_comando $nome
    espera "its check without the desk" "$(como olga HOME=/home/olga registro confere </dev/null)" "*O registro está inteiro*"
    como semcasa HOME=/nenhures "${novo[@]}" <<<"$senha" >"$trabalho/semcasa" 2>&1 || saida=$?
    espera "a user who has no directory" "$saida $(<"$trabalho/semcasa")" "1 *nenhures*"
}

# The program without windows, which both packages bring, and what the named one has of it.
o_comando() {
    espera "the program without windows" "$(no_sistema registro --versao)" "registro $versao"
    espera "its manual page" "$(no_sistema zcat /usr/share/man/man1/registro.1.gz)" "*.SH COMANDOS*"
    espera "what makes bash complete it" "$(no_sistema cat /usr/share/bash-completion/completions/registro)" \
        "*complete -F _registro registro*"
    espera "what mails the deadlines, by the unit of each night" \
        "$(no_sistema find "$(sed -n 's/^ExecStart=//p' "$sis/lib/systemd/system/$1-prazos@.service")" -perm 755 -printf %f)" \
        "prazos-de-ontem"
    [[ -z $(find "$sis/etc/systemd" -name "*prazos*") ]] || falha "The deadlines are mailed before it is said by whom and to whom."
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

o_servidor() {
    local estado=/var/lib/$servidor ajustes=/etc/$servidor/$servidor.toml pagina ajuda opcao saida=0 porta processo
    apt install /root/servidor.deb
    o_comando $servidor
    espera "its user" "$(no_sistema getent passwd $servidor)" "$servidor:*:$estado:/usr/sbin/nologin"
    espera "files that are not as they came" "$(no_sistema dpkg --verify $servidor)" ""
    espera "what is kept of its settings" "$(no_sistema dpkg-query --show --showformat='${Conffiles}' $servidor)" "*$ajustes*"
    [[ ! -e $sis/etc/systemd/system/multi-user.target.wants/$servidor.service ]] || falha "It starts before it is set up."
    ajuda=$(no_sistema $servidor --ajuda)
    pagina=$(no_sistema zcat /usr/share/man/man8/$servidor.8.gz | sed 's/\\-/-/g')
    for opcao in $(grep -o -e '--[a-z-]*' <<<"$ajuda" | sort -u); do
        [[ $pagina == *"$opcao"* ]] || falha "The manual page does not tell $opcao."
    done

    espera "who reads its settings" "$(no_sistema stat --format='%U %G %a' $ajustes)" "root $servidor 640"

    # It is tried again however long the database is not there, and at its end has longer than its settings may ask for.
    local unidade=$sis/lib/systemd/system/$servidor.service fim
    espera "when it is given up" "$(sed -n 's/^StartLimitIntervalSec=//p' "$unidade")" 0
    fim=$(sed -n 's/^TimeoutStopSec=\([0-9]*\)min$/\1/p' "$unidade")
    ((fim * 60 > $(sed -n '/^# Segundos que o servidor espera pelo que/s/.* a \([0-9]*\)\.$/\1/p' "$sis$ajustes"))) ||
        falha "It is killed at its end after $fim minutes, while its settings may ask for more."

    # Its directory is there before the service ever ran, and a registry is made in it.
    espera "its directory" "$(no_sistema stat --format='%U %G %a' $estado)" "$servidor $servidor 700"
    como $servidor $servidor --confere-configuracao </dev/null >"$trabalho/conferida" 2>&1 || saida=$?
    espera "the settings as they came" "$saida $(<"$trabalho/conferida")" \
        "1 O arquivo $estado/registro.db, que \"registro\" nomeia, não pôde ser lido: o arquivo ou a pasta não existe."
    porta=$(shuf --input-range=10000-32000 --head-count=1) # below those that the system gives to who asks for any
    sed -i -e "s|^#* *registro *=.*|registro = \"$estado/registro.db\"|" \
        -e "s|^#* *escuta *=.*|escuta = \"127.0.0.1:$porta\"|" "$sis$ajustes"
    como $servidor $servidor --novo --cliente 1 --nome-cliente "Autoridade Estadual de Trânsito" --uf RS --usuario olga \
        --nome "Olga Reis" <<<"$senha" >"$trabalho/novo" 2>&1 || falha "A registry cannot be made." "$(<"$trabalho/novo")"
    como $servidor $servidor --confere-configuracao </dev/null >"$trabalho/conferida" 2>&1 ||
        falha "The settings are refused." "$(<"$trabalho/conferida")" "$(<"$sis$ajustes")"

    # By the command of its service.
    vira $servidor $(sed -n 's/^ExecStart=//p' "$sis/lib/systemd/system/$servidor.service") </dev/null >"$trabalho/servindo" 2>&1 &
    processo=$!
    local ate=$((SECONDS + 60))
    until (exec 3<>"/dev/tcp/127.0.0.1/$porta") 2>/dev/null; do
        if ! kill -0 "$processo" 2>/dev/null || ((SECONDS > ate)); then
            falha "It does not start." "$(<"$trabalho/servindo")"
        fi
        sleep 0.05
    done
    espera "the users of the certificate's key" "$(no_sistema find $estado -name '*.key' -printf '%U %m ')" \
        "$(no_sistema id -u $servidor) 600 "
    apt reinstall /root/servidor.deb
    grep -q -F ":$porta\"" "$sis$ajustes" || falha "Its settings were overwritten."
    kill -TERM "$processo"
    wait "$processo" || falha "It ended with $?." "$(<"$trabalho/servindo")"

    no_sistema dpkg --purge $servidor >"$trabalho/apt" 2>&1 || falha "It cannot be purged." "$(<"$trabalho/apt")"
    espera "what stayed of it" "$(find "$sis" -xdev \( -path "$sis$estado" -o -path "$sis/var/log" -o -path "$sis/root" \) -prune \
        -o -name "*$servidor*" -print)" ""
    [[ -s $sis$estado/registro.db ]] || falha "The registry went with the package."
}

senha="cavalo grampeador azul"
if [[ ${1:-} = --vive ]]; then
    vive "${@:2}"
    exit 0
fi

fontes=$1
programa=$2
programa_servidor=$3
programa_sem_janelas=$4
versao=$5
pasta=$6
inicio=$(date +%s)

for comando in mmdebstrap dh python3 rsvg-convert appstreamcli desktop-file-validate xdotool xprop Xvfb unshare; do
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
faz() { # room, program, name of the file
    local pacote outra
    pacote=$("$fontes/$1/pacote/faz_pacote.sh" "$2" "$programa_sem_janelas" "$versao" "$trabalho/um")
    outra=$("$fontes/$1/pacote/faz_pacote.sh" "$2" "$programa_sem_janelas" "$versao" "$trabalho/outra vez")
    cmp "$pacote" "$outra" || falha "The same program does not give the same package."
    mv "$pacote" "$trabalho/$3"
}
faz desk "$programa" agora.deb
faz server "$programa_servidor" servidor.deb
passo "the packages are made"

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

dpkg-deb --raw-extract "$trabalho/servidor.deb" "$trabalho/do servidor"
# The example for other systems, with the contract beside it, which it looks for there, and the page that tells of both.
for achado in registro.proto consulta_afericao.py network.md; do
    [[ -f "$trabalho/do servidor/usr/share/doc/$servidor/$achado" ]] || falha "The package does not have $achado."
done
grep -o '](\([^)]*\))' "$trabalho/do servidor/usr/share/doc/$servidor/network.md" | sed 's/^](\(.*\))$/\1/' | while read -r achado; do
    [[ -f "$trabalho/do servidor/usr/share/doc/$servidor/$achado" ]] || falha "The package's network.md leads to no $achado."
done
achado=$(grep -r -l -F "$fontes" "$trabalho/do servidor" || true)
espera "files of the server that know a folder of the build" "$achado" ""
# What the service manager finds in the units, with the programs in the place where they are here, that of each night under
# somebody's name; and how much the service could still do, from 0 to 100.
mkdir "$trabalho/unidade"
for de in "dentro $nome-prazos@" "do servidor $servidor-prazos@" "do servidor $servidor"; do
    for unidade in "$trabalho/${de% *}/lib/systemd/system/${de##* }".*; do
        sed "s|^ExecStart=\(.*\)|ExecStart=\"$trabalho/${de% *}\1\"|" "$unidade" \
            >"$trabalho/unidade/$(basename "$unidade" | sed 's/@/@root/')"
    done
done
espera "the units" "$(ls "$trabalho/unidade")" "$nome-prazos@root.service
$nome-prazos@root.timer
$servidor-prazos@root.service
$servidor-prazos@root.timer
$servidor.service"
systemd-analyze verify --man=no --recursive-errors=no "$trabalho"/unidade/* >"$trabalho/verificada" 2>&1 ||
    falha "There is something wrong in a unit." "$(<"$trabalho/verificada")"
systemd-analyze security --offline=true --threshold=15 --no-pager \
    "$trabalho/do servidor/lib/systemd/system/$servidor.service" >"$trabalho/seguranca" 2>&1 ||
    falha "The service may do more than it needs." "$(<"$trabalho/seguranca")"

# An older one, with a file that the new one does not have.
touch "$manual/antigo"
sed -i 's/^Version: .*/Version: 0.9/' "$trabalho/dentro/DEBIAN/control"
dpkg-deb --root-owner-group --build "$trabalho/dentro" "$trabalho/antes.deb" >/dev/null

# The clean system, with what the package needs downloaded beside: made anew when that changes.
dependencias=$(for pacote in agora servidor; do dpkg-deb --field "$trabalho/$pacote.deb" Depends; done | tr ',' '\n' |
    sed 's/^ *\([^ ]*\).*/\1/')
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
