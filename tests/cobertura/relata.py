"""Prints what the tests cover of each room, from the two exports of llvm-cov, and what they do not cover.

What is uncovered must have a reason in the list, and every reason there must still be needed.
"""

import json
import re
import sys
from collections import defaultdict
from pathlib import Path
from typing import NamedTuple

SALAS = ["host", "shell", "sensors", "equipment", "limits", "search", "controls", "tela"]
MINIMO_LINHAS = 98.0
MINIMO_DESVIOS = 95.0
NADA_FAZ = re.compile(r"[{}]?|//.*")


class Falta(NamedTuple):
    """A line that never ran (desvio empty), or a condition that was never so (desvio "condition never true")."""

    caminho: str
    linha: int
    desvio: str


def da_sala(caminho):
    return caminho.split("/", 1)[0] in SALAS


def le_linhas(arquivo):
    """{path: {line: times run}}"""
    linhas = defaultdict(dict)
    for registro in arquivo.read_text().splitlines():
        campo, _, valor = registro.partition(":")
        if campo == "SF":
            caminho = valor
        elif campo == "DA" and da_sala(caminho):
            numero, vezes = valor.split(",")[:2]
            linhas[caminho][int(numero)] = int(vezes)
    return linhas


def le_desvios(arquivo, fontes):
    """{path: {(line, column, line and column of the end): [times true, times false]}}, the copies of a template summed.

    What is known when a template is compiled is no branch of the program.
    """
    desvios = defaultdict(lambda: defaultdict(lambda: [0, 0]))
    for arquivo_fonte in json.loads(arquivo.read_text())["data"][0]["files"]:
        caminho = arquivo_fonte["filename"]
        if not da_sala(caminho):
            continue
        for linha, coluna, ate_linha, ate_coluna, verdadeiro, falso, *_ in arquivo_fonte["branches"]:
            if "if constexpr" in fontes[caminho][linha - 1][: coluna - 1]:
                continue
            vezes = desvios[caminho][(linha, coluna, ate_linha, ate_coluna)]
            vezes[0] += verdadeiro
            vezes[1] += falso
    return desvios


def condicao(fonte, linha, coluna, ate_linha, ate_coluna):
    """Its text. Columns count bytes from 1."""
    trecho = [texto.encode() for texto in fonte[linha - 1 : ate_linha]]
    trecho[-1] = trecho[-1][: ate_coluna - 1]
    trecho[0] = trecho[0][coluna - 1 :]
    return " ".join(parte.decode().strip() for parte in trecho)


def acha_faltas(linhas, desvios, fontes):
    """What is to be listed: neither lines with nothing to run, nor the conditions of a line that never ran."""
    faltas = [
        Falta(caminho, linha, "")
        for caminho, vezes_de in linhas.items()
        for linha, vezes in vezes_de.items()
        if vezes == 0 and NADA_FAZ.fullmatch(fontes[caminho][linha - 1].strip()) is None
    ]
    for caminho, vezes_de in desvios.items():
        for lugar, vezes in vezes_de.items():
            if linhas[caminho].get(lugar[0]) == 0:
                continue
            texto = condicao(fontes[caminho], *lugar)
            for vez, nunca in zip(vezes, ("true", "false")):
                if vez == 0:
                    faltas.append(Falta(caminho, lugar[0], f"{texto} never {nunca}"))
    return sorted(faltas)


def mostra(falta, fontes):
    texto = falta.desvio or fontes[falta.caminho][falta.linha - 1].strip()
    return f"{falta.caminho}:{falta.linha}: {texto}"


class Motivo:
    """An entry of the list: the lines "A" after "B" are written as B, " / ", A. It speaks of the last of them."""

    def __init__(self, registro):
        self.caminho, texto, self.desvio, self.motivo = registro.split("\t")
        self.textos = texto.split(" / ")

    def linha(self, fontes):
        """The one line that it speaks of; None when there is no such line, or more than one."""
        fonte = [linha.strip() for linha in fontes.get(self.caminho, [])]
        quantas = len(self.textos)
        fins = [fim for fim in range(quantas, len(fonte) + 1) if fonte[fim - quantas : fim] == self.textos]
        return fins[0] if len(fins) == 1 else None

    def __str__(self):
        return "\t".join([self.caminho, " / ".join(self.textos), self.desvio])


def le_motivos(arquivo):
    return [Motivo(registro) for registro in arquivo.read_text().splitlines() if registro and registro[0] != "#"]


def porcentagem(cobertos, total):
    return 100.0 if total == 0 else 100.0 * cobertos / total


def imprime_salas(linhas, desvios):
    """The table. Whether all rooms together reach both minimums."""
    print(f"{'room':12}{'lines':>8}{'covered':>9}{'%':>8}{'branches':>11}{'covered':>9}{'%':>8}")
    soma = [0, 0, 0, 0]
    for sala in SALAS:
        execucoes = [v for caminho in linhas if caminho.startswith(f"{sala}/") for v in linhas[caminho].values()]
        saidas = [
            v
            for caminho in desvios
            if caminho.startswith(f"{sala}/")
            for vezes in desvios[caminho].values()
            for v in vezes
        ]
        conta = [len(execucoes), sum(v > 0 for v in execucoes), len(saidas), sum(v > 0 for v in saidas)]
        imprime_linha(sala, conta)
        soma = [a + b for a, b in zip(soma, conta)]
    imprime_linha("all", soma)
    return porcentagem(soma[1], soma[0]) >= MINIMO_LINHAS and porcentagem(soma[3], soma[2]) >= MINIMO_DESVIOS


def imprime_linha(nome, conta):
    linhas, linhas_cobertas, desvios, desvios_cobertos = conta
    print(
        f"{nome:12}{linhas:8}{linhas_cobertas:9}{porcentagem(linhas_cobertas, linhas):8.2f}"
        f"{desvios:11}{desvios_cobertos:9}{porcentagem(desvios_cobertos, desvios):8.2f}"
    )


def imprime_lista(titulo, itens):
    if itens:
        print(f"\n{titulo}:")
        for item in itens:
            print(f"  {item}")


def main():
    linhas = le_linhas(Path(sys.argv[1]))
    fontes = {caminho: Path(caminho).read_text().splitlines() for caminho in linhas}
    desvios = le_desvios(Path(sys.argv[2]), fontes)
    faltas = acha_faltas(linhas, desvios, fontes)

    motivos = le_motivos(Path(sys.argv[3]))
    com_motivo = {}
    sem_uso = []
    for motivo in motivos:
        falta = Falta(motivo.caminho, motivo.linha(fontes), motivo.desvio)
        if falta in faltas:
            com_motivo[falta] = motivo.motivo
        else:
            porque = "covered" if falta.linha else "no such line, or several"
            sem_uso.append(f"{motivo}: {porque}")

    suficiente = imprime_salas(linhas, desvios)
    imprime_lista(
        "Not covered, with the reason",
        [f"{mostra(falta, fontes)}\n      {com_motivo[falta]}" for falta in faltas if falta in com_motivo],
    )
    sem_motivo = [mostra(falta, fontes) for falta in faltas if falta not in com_motivo]
    imprime_lista("Not covered, without a reason", sem_motivo)
    imprime_lista("Reasons that are not needed", sem_uso)
    print(f"\n{len(com_motivo)} with a reason, {len(sem_motivo)} without, {len(sem_uso)} reasons not needed")
    if not suficiente:
        print(f"Below {MINIMO_LINHAS:g} % of lines or {MINIMO_DESVIOS:g} % of branches.")
    sys.exit(0 if suficiente and not sem_motivo and not sem_uso else 1)


main()
