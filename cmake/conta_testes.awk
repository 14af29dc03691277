# Reads the JUnit file of ctest; prints every skipped test with its reason, and the count as the last line.
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
    if (estado == "run") {
        ++passaram
    } else if (estado == "disabled" || pulado ~ /^SKIP_/) {
        ++pulados
        if (motivo == "") {
            motivo = estado == "disabled" ? "disabled" : "no reason given"
        }
        print "skipped: " nome ": " motivo
    } else { # failed, or could not even be run
        ++falharam
    }
}

/<testcase / {
    nome = atributo($0, "name")
    estado = atributo($0, "status")
    pulado = ""
    motivo = ""
    le_motivo = 0
}
/<skipped / { pulado = atributo($0, "message") }
# GoogleTest prints the place, ending in "Skipped", then the reason up to an empty line or its own "[  SKIPPED ]".
le_motivo && (/^$/ || /^\[/ || /<\/system-out>/) { le_motivo = 0 }
le_motivo { motivo = motivo (motivo == "" ? "" : " ") texto($0) }
/: Skipped$/ { le_motivo = 1 }
/<\/testcase>/ { termina_caso() }

END {
    if (saida != 0 && falharam == 0) {
        print "ctest ended with status " saida
        falharam = 1
    }
    printf "%d passed, %d failed, %d skipped\n", passaram, falharam, pulados
    exit (falharam > 0 || passaram + falharam == 0)
}
