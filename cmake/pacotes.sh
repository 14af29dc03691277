# Sourced by the commands, which give `desiste MESSAGE`: how they end when they cannot go on.

# What a person is told on the way.
declare -A dizeres=(
    [instala]="Installing from the distribution:"
    [sudo]="Not root and no sudo: install the packages above, then run again."
    [lista]="apt-get update failed."
    [pacotes]="apt-get install failed."
    [motivos]=yes
)
# The same for who only wants the program, and why it takes a package is of no use to them.
fala_portugues() {
    dizeres=(
        [instala]="Instalando da distribuição:"
        [sudo]="Só o administrador instala pacotes, e não há sudo: instale os pacotes acima e chame este comando de novo."
        [lista]="A lista de pacotes da distribuição não pôde ser atualizada."
        [pacotes]="Os pacotes não puderam ser instalados."
    )
}

# What building, testing and running take from the distribution, one package a line with the reason.
pacotes() {
    cat <<'FIM'
g++            compiles the project
cmake          configures the build and runs the tests
ninja-build    runs the build
ccache         compiles again only what has changed
libgtest-dev   the framework that the tests are written in
pkg-config     finds the libraries of the desk
python3        tries the command that changes the sources for what no test notices
qt6-base-dev   windows and databases of the desk, and the portal that tells the desktop's colours
qt6-pdf-dev    the desk's viewer of certificates
qt6-svg-dev    draws the desk's icons
libqt6sql6-sqlite the embedded database under the desk
libsqlite3-dev functions of the desk's own in that database
qt6-translations-l10n Portuguese of the dialogs that come with the toolkit
libgrpc++-dev  calls between desks and server
libprotobuf-dev the messages between them
protobuf-compiler-grpc their messages and stubs from the contract
libssl-dev     the server's own certificate, and its fingerprint
libtomlplusplus-dev the server's settings
prometheus-cpp-dev its figures
libqt6sql6-psql the database of many desks, where there is one
libpq-dev      the statements there, and cancelling what waits without end
libcli11-dev   the command line of the program without windows
nlohmann-json3-dev its answers for programs
libsodium-dev  password hashes of the desk's sign-in
libxlsxwriter-dev writes tables as XLSX
libzip-dev     the packages that XLSX and ODS are
libexpat1-dev  reads their documents piece by piece, with care for hostile ones
libqrcodegencpp-dev the head of the history as a picture that a telephone reads
dbus-daemon    the tests' own bus for that portal
fonts-dejavu-core text in windows and pictures on a machine without a desktop
FIM
}

# What the component for Windows takes besides: building it, and testing it under the compatibility layer.
pacotes_windows() {
    cat <<'FIM'
g++-mingw-w64-x86-64-win32 compiles the component for 64 bits
g++-mingw-w64-i686-win32 compiles the component for 32 bits
mingw-w64-tools compiles its type library
libwine-dev    the interfaces that the type library is written with
googletest     the tests' framework as sources, to be compiled for Windows
wine64         the compatibility layer under which its tests run
fonts-wine     the fonts of its windows there
xvfb           the display that they are drawn on
nsis           makes its installer
FIM
}

# What trying out and testing with that database takes besides.
pacotes_postgres() {
    cat <<'FIM'
postgresql-15  the database of many desks itself
python3-grpcio the example of another system that asks the server
python3-protobuf its messages
FIM
}

# What making the desk's package takes besides.
pacotes_pacote() {
    cat <<'FIM'
debhelper      makes the desk's package
librsvg2-bin   draws its icon in all sizes
FIM
}

# And what its test takes.
pacotes_teste_pacote() {
    cat <<'FIM'
mmdebstrap     lays out the clean system in which the package is tried
appstream      looks through what the package tells software catalogues
desktop-file-utils looks through its menu entry
xvfb           the display of its windows there
xdotool        the keyboard in front of them
x11-utils      tells which windows there are
systemd        looks through the unit of the server
FIM
}

# Installs what is missing of the above, and of what the command needs besides: arguments, each a line of that form.
instala_pacotes() {
    command -v dpkg-query >/dev/null || return 0 # another distribution: its user provides them
    local pacote motivo faltam=()
    while read -r pacote motivo; do
        if [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$pacote" 2>/dev/null) != installed ]]; then
            [[ ${#faltam[@]} -gt 0 ]] || echo "${dizeres[instala]}"
            echo "  $pacote${dizeres[motivos]+: $motivo}"
            faltam+=("$pacote")
        fi
    done < <(pacotes; (($# == 0)) || printf '%s\n' "$@")
    [[ ${#faltam[@]} -gt 0 ]] || return 0

    local como=(env DEBIAN_FRONTEND=noninteractive)
    if [[ $EUID -ne 0 ]]; then
        command -v sudo >/dev/null || desiste "${dizeres[sudo]}"
        como=(sudo --non-interactive "${como[@]}")
    fi
    "${como[@]}" apt-get update --quiet </dev/null || desiste "${dizeres[lista]}"
    "${como[@]}" apt-get install --quiet --yes --no-install-recommends "${faltam[@]}" </dev/null ||
        desiste "${dizeres[pacotes]}"
}
