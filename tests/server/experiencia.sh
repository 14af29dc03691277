#!/usr/bin/env bash
# ./servidor in a tree of its own, with the program that was built: it starts, answers who asks, ends in order when it is
# asked to, and goes on the next time with what is there. What was killed, or given up, in the middle of the sample is
# made anew.
#
#   experiencia.sh SOURCES PROGRAM
set -euo pipefail
raiz=$1
programa=$2
pasta=$(mktemp -d)
chmod 755 "$pasta"
processo=
encerra() {
    [[ -z $processo ]] || kill -TERM "$processo" 2>/dev/null || true
    [[ -z $processo ]] || wait "$processo" || true
    rm -rf "$pasta"
}
trap encerra EXIT
mkdir -p "$pasta/cmake" "$pasta/build/release/server" "$pasta/bin" "$pasta/tmp"
export TMPDIR=$pasta/tmp
cp "$raiz/servidor" "$pasta/"
cp "$programa" "$pasta/build/release/server/registro-servidor"
# The packages are another test's affair, and so is the build.
echo 'instala_pacotes() { :; }; fala_portugues() { :; }; pacotes_postgres() { :; }' >"$pasta/cmake/pacotes.sh"
printf '#!/bin/sh\nexit 0\n' >"$pasta/bin/cmake"
chmod +x "$pasta/bin/cmake"

falha() {
    printf '%s\n' "$@" >&2
    exit 1
}
espera() { # what, seen, pattern
    # shellcheck disable=SC2053
    [[ $2 == $3 ]] || falha "$1: seen" "$2" "expected" "$3"
}

# Starts it with these options as a terminal would, in a group of its own, and waits until it says so.
comeca_ate() {
    local frase=$1
    shift
    porta=$(shuf --input-range=10000-32000 --head-count=1) # below those that the system gives to who asks for any
    : >"$pasta/saida"
    PATH="$pasta/bin:$PATH" setsid env --default-signal=INT,HUP "$pasta/servidor" --porta "$porta" "$@" \
        >"$pasta/saida" 2>&1 </dev/null &
    processo=$!
    local ate=$((SECONDS + 120)) # the sample goes through the services
    until grep -q -F -e "$frase" "$pasta/saida"; do
        if ! kill -0 "$processo" 2>/dev/null || ((SECONDS > ate)); then
            falha "It does not start." "$(<"$pasta/saida")"
        fi
        sleep 0.05
    done
}
comeca() {
    comeca_ate "./run --servidor localhost:" "$@"
}
# Whether it is well, and which registry it has.
pergunta() {
    # The distribution's own, which has its packages.
    /usr/bin/python3 - "$porta" "$1" <<'FIM'
import glob, sys
import grpc

pem = b"".join(open(nome, "rb").read() for nome in glob.glob(sys.argv[2] + "/*.crt")
               if b"BEGIN CERTIFICATE" in open(nome, "rb").read())
canal = grpc.secure_channel("localhost:" + sys.argv[1], grpc.ssl_channel_credentials(pem))
def chama(operacao, pedido):
    return canal.unary_unary(operacao)(pedido, timeout=20)
assert chama("/grpc.health.v1.Health/Check", b"") == b"\x08\x01", "it is not well"
# Contract 1, as who understands no earlier one. Of the answer the fourth member is the registry.
resposta = chama("/registro.v1.Entrada/Apresenta", b"\x08\x01\x10\x01\x1a\x01x")
onde = resposta.index(b"\x22\x24") + 2
print(resposta[onde:onde + 36].decode())
FIM
}
# One of the sample's users signs in, over what the server said of its certificate, and asks.
entra() {
    local digital
    digital=$(grep --only-matching --max-count=1 --extended-regexp '([0-9A-F]{2}:){31}[0-9A-F]{2}' "$pasta/saida")
    REGISTRO_SENHA=registro2026 "$raiz/docs/exemplos/rede/consulta_afericao.py" --servidor "localhost:$porta" \
        --digital "$digital" --usuario ana --equipamento NENHUM --dia 20/11/2026 2>&1 || true
}
termina() { # by Ctrl+C, a terminal that is closed, or as a service is ended
    local quem=$processo
    [[ $1 = TERM ]] || quem=-$processo
    kill "-$1" -- "$quem"
    local saida=0
    wait "$processo" || saida=$?
    processo=
    espera "its end" "$saida $(tail -n 1 "$pasta/saida")" "0 Encerrado."
    if (exec 3<>"/dev/tcp/127.0.0.1/$porta") 2>/dev/null; then
        falha "Somebody still answers on port $porta."
    fi
}

# Both kinds in one place, which know nothing of each other.
dados=$pasta/dados
psql="/usr/lib/postgresql/15/bin/psql --host=$dados/soquete --username=postgres --no-psqlrc --tuples-only --no-align registro"
# Until some of it is there.
comeca_amostra() {
    comeca_ate "Preparando a amostra" --dados "$dados" "$@"
    local ate=$((SECONDS + 60))
    until [[ -s $dados/registro.db || $($psql --command="SELECT EXISTS (SELECT 1 FROM USUARIO)" 2>&1) = t ]]; do
        ((SECONDS < ate)) || falha "There is nothing of a sample." "$(<"$pasta/saida")"
        sleep 0.05
    done
}
for opcao in "" --sqlite; do
    comeca_amostra $opcao
    termina INT
    [[ $(<"$pasta/saida") != *"A amostra foi criada"* ]] || falha "Ctrl+C waited for the sample."
    # Everything at once, but the database, which has a group of its own.
    comeca_amostra $opcao
    kill -KILL -- "-$processo"
    wait "$processo" 2>/dev/null || true
    processo=
    rm -f "$pasta"/tmp/*

    comeca --dados "$dados" $opcao
    espera "what it says of its certificate" "$(<"$pasta/saida")" "*[0-9A-F][0-9A-F]:[0-9A-F][0-9A-F]:[0-9A-F][0-9A-F]:*"
    primeiro=$(pergunta "$dados")
    espera "the registry" "$primeiro" "????????-????-????-????-????????????"
    saida=0
    outro=$(PATH="$pasta/bin:$PATH" "$pasta/servidor" --dados "$dados" $opcao 2>&1 </dev/null) || saida=$?
    espera "a second one in the same place" "$saida $outro" "1 Já há um servidor em experiência *"
    termina INT

    comeca --dados "$dados" $opcao
    espera "the registry, the second time" "$(pergunta "$dados")" "$primeiro"
    espera "an equipment that is not there" "$(entra)" "*Não há equipamento de código NENHUM no cliente deste usuário.*"
    termina HUP
    [[ ! -e $dados/postgres/postmaster.pid ]] || falha "The database still runs."
done

# What it has not made it leaves as it is.
mkdir "$pasta/alheio"
echo "de outro" >"$pasta/alheio/registro.db"
chmod 755 "$pasta/alheio"
de_antes=$(stat --format '%U %a' "$pasta/alheio")
tenta() { PATH="$pasta/bin:$PATH" "$pasta/servidor" --sqlite --dados "$pasta/alheio" 2>&1 </dev/null; }
saida=0
outro=$(tenta) || saida=$?
espera "somebody else's directory" "$saida $outro $(<"$pasta/alheio/registro.db")" \
    "1 O diretório $pasta/alheio tem o que não é de uma experiência*de outro"
espera "its owner and rights" "$(stat --format '%U %a' "$pasta/alheio")" "$de_antes"
touch "$pasta/alheio/trava"
saida=0
outro=$(tenta) || saida=$?
espera "somebody else's file" "$saida $outro $(<"$pasta/alheio/registro.db")" "1 Já há *registro.db*de outro"
espera "temporary files that stayed" "$(find "$pasta/tmp" -mindepth 1)" ""
