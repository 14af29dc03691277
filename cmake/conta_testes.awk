# Reads the JUnit file of ctest; prints every skipped test with its reason, every part (what the names of its tests have
# before the first full stop) with its count and the seconds of its tests, the sum of the faults that the tests tell to
# have survived, every failed test with the end of what it said, and the count as the last line.
# -v saida=<exit status of ctest>. Exits 1 when a test failed, when ctest did, or when none ran.

function texto(xml) {
    gsub(/&quot;/, "\"", xml)
    gsub(/&apos;/, "'", xml)
    gsub(/&lt;/, "<", xml)
    gsub(/&gt;/, ">", xml)
    gsub(/&amp;/, "\\&", xml)
    return xml
}

function atributo(linha, nome) {
    if (!match(linha, " " nome "=\"[^\"]*\"")) {
        return ""
    }
    return texto(substr(linha, RSTART + length(nome) + 3, RLENGTH - length(nome) - 4))
}

function termina_caso() {
    parte = nome
    sub(/\..*/, "", parte)
    if (!(parte in casos)) {
        partes[++quantas] = parte
    }
    ++casos[parte]
    segundos[parte] += tempo
    if (estado == "run") {
        ++passaram
    } else if (estado == "disabled" || pulado ~ /^SKIP_/) {
        ++pulados
        ++pulados_da[parte]
        if (motivo == "") {
            motivo = estado == "disabled" ? "disabled" : "no reason given"
        }
        print "skipped: " nome ": " motivo
    } else { # failed, or could not even be run
        ++falharam
        ++falharam_da[parte]
        falhados[falharam] = nome
        for (n = quantas_ditas > 20 ? quantas_ditas - 19 : 1; n <= quantas_ditas; ++n) {
            fim_do[falharam] = fim_do[falharam] "  | " ditas[n] "\n"
        }
    }
}

/<testcase / {
    nome = atributo($0, "name")
    estado = atributo($0, "status")
    tempo = atributo($0, "time")
    pulado = ""
    motivo = ""
    le_motivo = 0
    quantas_ditas = 0
    diz = 0
}
/<system-out>/ { diz = 1 }
diz {
    dita = $0
    sub(/^\t*<system-out>/, "", dita)
    sub(/<\/system-out>$/, "", dita)
    if (dita != "") {
        ditas[++quantas_ditas] = texto(dita)
    }
}
/<\/system-out>/ { diz = 0 }
/<skipped / { pulado = atributo($0, "message") }
# GoogleTest prints the place, ending in "Skipped", then the reason up to an empty line or its own "[  SKIPPED ]".
le_motivo && (/^$/ || /^\[/ || /<\/system-out>/) { le_motivo = 0 }
le_motivo { motivo = motivo (motivo == "" ? "" : " ") texto($0) }
/: Skipped$/ { le_motivo = 1 }
# What a sweep prints on a line of its own.
/^(\t*<system-out>)?faults survived: [0-9]+(<\/system-out>)?$/ {
    match($0, /: [0-9]+/)
    falhas += substr($0, RSTART + 2, RLENGTH - 2)
    houve_varredura = 1
}
/<\/testcase>/ { termina_caso() }

END {
    for (n = 1; n <= quantas; ++n) {
        parte = partes[n]
        linha = sprintf("%-14s %5d tests %8.1f s", parte, casos[parte], segundos[parte])
        if (falharam_da[parte] > 0) {
            linha = linha ", " falharam_da[parte] " failed"
        }
        if (pulados_da[parte] > 0) {
            linha = linha ", " pulados_da[parte] " skipped"
        }
        print linha
    }
    if (houve_varredura) {
        printf "faults survived: %d\n", falhas
    }
    for (n = 1; n <= falharam; ++n) {
        printf "failed: %s\n%s", falhados[n], fim_do[n]
    }
    if (saida != 0 && falharam == 0) {
        print "ctest ended with status " saida
        falharam = 1
    }
    printf "%d passed, %d failed, %d skipped\n", passaram, falharam, pulados
    exit (falharam > 0 || passaram + falharam == 0)
}
