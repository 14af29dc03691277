#!/usr/bin/env bash
# The compatibility layer under which the Windows build's tests run.
#
#   camada.sh FOLDER prefixo             makes the layer's prefix in the folder, anew
#   camada.sh FOLDER roda PROGRAM ...    runs a Windows program in it, for no more than PRAZO seconds (280 where it is
#                                        not told); its lines come without carriage returns
#   camada.sh FOLDER liga                starts the virtual display, the layer's server and its desktop for the runs that
#                                        follow; mesa.exe in the folder keeps the last
#   camada.sh FOLDER desliga             ends them
#
# A run that finds no server starts one, which ends by itself a minute after its last program; there are windows only
# between liga and desliga.
#
# With SISTEMA32, a folder with a system of 32 bits, all of it is in there.
set -euo pipefail

if [[ -n ${SISTEMA32:-} ]]; then
    exec env --unset=SISTEMA32 chroot "$SISTEMA32" /usr/bin/env --chdir="$PWD" bash "$(realpath "${BASH_SOURCE[0]}")" "$@"
fi

pasta=$1
comando=$2
shift 2

export PATH=/usr/lib/wine:$PATH # where the distribution keeps the programs for one width only
export WINEPREFIX=$pasta/prefixo WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' # nothing asks to be downloaded, no menus outside
# Nothing of the person who runs the tests comes in: folders, language, screen.
export HOME=$pasta/casa LC_ALL=C.UTF-8
unset DISPLAY WAYLAND_DISPLAY XAUTHORITY XDG_CONFIG_HOME XDG_DATA_HOME XDG_RUNTIME_DIR
tela=$pasta/tela
carregador=wine
if command -v wine64 >/dev/null; then
    carregador=wine64
fi

# Whoever waits for the end of a program's output waits for all that inherited it. So the server is started detached, and
# the first program too, by which the layer starts what stays beside the server.
serve() {
    if setsid wineserver -p60 </dev/null >/dev/null 2>&1; then
        "$carregador" cmd /c exit </dev/null >/dev/null 2>&1
    fi
}

case $comando in
prefixo)
    wineserver -k </dev/null >/dev/null 2>&1 || true
    rm -rf "$WINEPREFIX" "$HOME"
    mkdir -p "$WINEPREFIX" "$HOME"
    serve
    "$carregador" wineboot --init </dev/null >/dev/null 2>&1
    # A crash ends the program; nobody is there to close the dialog.
    "$carregador" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f </dev/null >/dev/null
    "$carregador" reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d camada /f </dev/null >/dev/null
    "$carregador" reg add 'HKCU\Software\Wine\Explorer\Desktops' /v camada /d 1280x1024 /f </dev/null >/dev/null
    wineserver -k </dev/null >/dev/null 2>&1 || true
    ;;
roda)
    if [[ -s $tela/numero ]]; then
        DISPLAY=:$(<"$tela/numero")
        export DISPLAY
    else
        serve
    fi
    # The pipe waits for all that the program started too: the remover of an installation goes on in a program of its
    # own. Of one that does not end, what it said is wanted: nothing waits for more before it is passed on.
    timeout --kill-after=5 "${PRAZO:=280}" "$carregador" "$@" | sed --unbuffered 's/\r//g' || {
        saida=$?
        if ((saida == 124 || saida == 137)); then
            echo "$1 was still there after $PRAZO s."
        else
            echo "$1 ended with $saida." # one that ends badly may not have said a word
        fi
        exit "$saida"
    }
    ;;
liga)
    "${BASH_SOURCE[0]}" "$pasta" desliga
    mkdir -p "$tela"
    # Answers with the number of a display that was free, or ends.
    exec {resposta}< <(exec setsid Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset \
        </dev/null 2>"$tela/registro")
    echo $! >"$tela/processo"
    read -r numero <&"$resposta" || {
        cat "$tela/registro" >&2
        exit 1
    }
    export DISPLAY=:$numero
    serve
    # The desktop, in which the programs' windows have frames without a window manager.
    exec {mesa}< <(exec setsid "$carregador" "$pasta/mesa.exe" </dev/null 2>/dev/null)
    read -r _ <&"$mesa" || {
        echo "The layer's desktop could not be started." >&2
        exit 1
    }
    echo "$numero" >"$tela/numero"
    ;;
desliga)
    wineserver -k </dev/null >/dev/null 2>&1 || true
    if [[ -s $tela/processo ]]; then
        kill "$(<"$tela/processo")" 2>/dev/null || true
    fi
    rm -rf "$tela"
    ;;
*)
    sed -n '2,/^set/{/^#/p}' "${BASH_SOURCE[0]}" >&2
    exit 2
    ;;
esac
