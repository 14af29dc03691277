#!/usr/bin/env bash
# ./run in a tree of its own, with a program and a cmake that only write down how they were called: what does it start,
# with a screen and without?
set -euo pipefail
raiz=$1
pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT
mkdir -p "$pasta/cmake" "$pasta/build/release/desk" "$pasta/bin" "$pasta/tmp"
cp "$raiz/run" "$pasta/"
# The packages are another test's affair.
echo 'instala_pacotes() { :; }; fala_portugues() { :; }' >"$pasta/cmake/pacotes.sh"
printf '#!/bin/sh\nexit 0\n' >"$pasta/bin/cmake"
for programa in registro-de-equipamentos roteiro; do
    cat >"$pasta/build/release/desk/$programa" <<'FIM2'
#!/bin/sh
echo "${0##*/} plataforma=${QT_QPA_PLATFORM:-} argumentos=$*"
exit "${SAIDA:-0}"
FIM2
done
chmod +x "$pasta/bin/cmake" "$pasta/build/release/desk/"*

chama() { # variables of the screen, then the arguments of ./run after --
    local tela=()
    while [[ $1 != -- ]]; do
        tela+=("$1")
        shift
    done
    shift
    env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM PATH="$pasta/bin:$PATH" TMPDIR="$pasta/tmp" \
        "${tela[@]}" "$pasta/run" "$@" </dev/null 2>&1
}
espera() { # what, seen, pattern
    # shellcheck disable=SC2053
    if [[ $2 != $3 ]]; then
        printf '%s: seen\n%s\nexpected\n%s\n' "$1" "$2" "$3" >&2
        exit 1
    fi
}

espera "a screen" "$(chama DISPLAY=:9 --)" "registro-de-equipamentos plataforma= argumentos="
espera "a Wayland screen" "$(chama WAYLAND_DISPLAY=wayland-0 -- --amostra)" "registro-de-equipamentos plataforma= argumentos=--amostra"
espera "another folder" "$(chama DISPLAY=:9 -- --dados=aqui --amostra)" \
    "registro-de-equipamentos plataforma= argumentos=--dados=aqui --amostra"
espera "another folder, apart" "$(chama DISPLAY=:9 -- --dados --amostra)" \
    "registro-de-equipamentos plataforma= argumentos=--dados --amostra"
espera "a screen, the tour asked for" "$(chama DISPLAY=:9 -- --amostra --roteiro=aqui)" \
    "roteiro plataforma= argumentos=aqui"
espera "no screen" "$(chama --)" \
    "Não há uma tela neste computador: o roteiro percorre o trabalho e deixa as imagens em $pasta/tmp/roteiro-??????.
roteiro plataforma=offscreen argumentos=$pasta/tmp/roteiro-??????"
espera "no screen, the tour asked for" "$(chama -- --roteiro "$pasta/aqui")" \
    "roteiro plataforma=offscreen argumentos=$pasta/aqui"
espera "a new registry, without a screen" "$(chama -- --novo --uf RS --setor=Norte --setor Sul)" \
    "registro-de-equipamentos plataforma= argumentos=--novo --uf RS --setor=Norte --setor Sul"
saida=0
chama SAIDA=1 -- >/dev/null || saida=$?
espera "exit status of a tour that saw a difference" "$saida" 1
