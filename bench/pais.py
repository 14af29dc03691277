#!/usr/bin/env python3
"""A whole country on many machines, reckoned from what one machine was measured to carry.

    bench/pais.py [FIGURES]      the file that bench/servidor/run --figuras writes (default: bench/servidor/figuras.json)

Prints one table for the plan that docs/scale.md tells. The same figures give the same table.
"""
import heapq
import json
import math
import os
import random
import sys

AUTORIDADES = 5_000
AFERICOES = 10_000_000
PERGUNTAS_POR_DIA = 1_000_000_000
AFERICOES_POR_DIA = AFERICOES / 365  # each is made anew once a year
TELAS_POR_AFERICAO = 20  # lists and records that desks open for each calibration that they save
DOCUMENTO = 300_000  # octets
PICO = 3.0  # the busiest second over the mean of the day
NUCLEOS = 2  # of a machine, as of the one that was measured
OCUPACAO = 0.6  # that a machine is planned for: what is left is for the one beside it that fails
AFERICOES_MEDIDAS = 3  # of each equipment in the registry that was measured
SEGUNDOS = 20  # of the busiest time that are played through
PEDIDOS = 200_000  # at most so many of them
SEMENTE = 1


def tamanhos():
    """Parts of the whole that the authorities have, the largest first: the n-th has 1/n of the first, as towns do."""
    pesos = [1 / n for n in range(1, AUTORIDADES + 1)]
    soma = sum(pesos)
    return [peso / soma for peso in pesos]


def reparte(partes, quantas):
    """Authorities to partitions, each whole: the largest first, to whichever has least. What each partition has."""
    monte = [(0.0, n) for n in range(quantas)]
    for parte in partes:
        carga, n = heapq.heappop(monte)
        heapq.heappush(monte, (carga + parte, n))
    return sorted((carga for carga, _ in monte), reverse=True)


def joga(por_segundo, custo, maquinas, sorte):
    """Questions that come by chance to machines that take turns; what the median and the 99th percentile wait and last, s."""
    livres = [[0.0] * NUCLEOS for _ in range(maquinas)]
    for maquina in livres:
        heapq.heapify(maquina)
    sigma = 0.5  # most last about as long, some several times that
    mu = math.log(custo) - sigma * sigma / 2
    agora = 0.0
    tempos = []
    vez = 0
    while agora < SEGUNDOS and len(tempos) < PEDIDOS:
        agora += sorte.expovariate(por_segundo)
        maquina = livres[vez % maquinas]
        vez += 1
        comeca = max(agora, maquina[0])
        fim = comeca + sorte.lognormvariate(mu, sigma)
        heapq.heapreplace(maquina, fim)
        tempos.append(fim - agora)
    tempos.sort()
    return tempos[len(tempos) // 2], tempos[len(tempos) * 99 // 100]


def plano(figuras, quantas):
    """One line of the table: the country in so many partitions."""
    medido = figuras[max(figuras, key=int)]
    equipamentos = int(max(figuras, key=int))
    pergunta = (medido["perguntas"]["motor_ms"] + medido["perguntas"]["falante_ms"]) / 1e3
    mista = (medido["cheio"]["motor_ms"] + medido["cheio"]["falante_ms"]) / 1e3
    tempos = medido["com"]["tempos"]
    # A save takes the processor no longer than it lasts; its document comes with it.
    salva = (tempos["altera"]["mediana_ms"] + tempos["documento"]["mediana_ms"]) / 1e3
    linha_octetos = medido["octetos"] / (equipamentos * AFERICOES_MEDIDAS)

    cargas = reparte(tamanhos(), quantas)
    maior = cargas[0]
    perguntas = PERGUNTAS_POR_DIA / 86_400 * PICO
    mesas = AFERICOES_POR_DIA / 86_400 * PICO
    # Desks work on the machine that writes; questions go to those that follow it.
    primaria = maior * mesas * (salva + TELAS_POR_AFERICAO * mista) / NUCLEOS
    replicas = [max(1, math.ceil(carga * perguntas * pergunta / (NUCLEOS * OCUPACAO))) for carga in cargas]
    uso = maior * perguntas * pergunta / (replicas[0] * NUCLEOS)
    sem_uma = uso * replicas[0] / max(1, replicas[0] - 1)
    sorte = random.Random(SEMENTE)
    mediana, p99 = joga(maior * perguntas, pergunta, replicas[0], sorte)
    return {
        "partições": f"{quantas}",
        "maior": f"{maior * 100:.1f} %",
        "máquinas": f"{2 * quantas + sum(replicas)}",
        "réplicas da maior": f"{replicas[0]}",
        "primária": f"{primaria * 100:.1f} %",
        "réplica": f"{uso * 100:.0f} %",
        "sem uma": "sem folga" if sem_uma >= 1 else f"{sem_uma * 100:.0f} %",
        "mediana": f"{mediana * 1e3:.1f} ms",
        "p99": f"{p99 * 1e3:.1f} ms",
        "registro da maior": f"{maior * AFERICOES * linha_octetos / 1e9:.1f} GB",
    }


def tabela(figuras):
    linhas = [plano(figuras, quantas) for quantas in (1, 4, 8, 16, 32, 64)]
    nomes = list(linhas[0])
    larguras = {nome: max(len(nome), *(len(linha[nome]) for linha in linhas)) for nome in nomes}
    texto = ["  ".join(nome.rjust(larguras[nome]) for nome in nomes)]
    texto += ["  ".join(linha[nome].rjust(larguras[nome]) for nome in nomes) for linha in linhas]
    texto.append(f"documentos: {AFERICOES * DOCUMENTO / 1e12:.1f} TB, "
                 f"{AFERICOES_POR_DIA * DOCUMENTO / 1e9:.1f} GB a mais por dia")
    return "\n".join(texto)


if __name__ == "__main__":
    if len(sys.argv) > 2 or (len(sys.argv) == 2 and sys.argv[1].startswith("-")):
        sys.exit(__doc__)
    padrao = os.path.join(os.path.dirname(os.path.abspath(__file__)), "servidor", "figuras.json")
    with open(sys.argv[1] if len(sys.argv) == 2 else padrao, encoding="utf-8") as arquivo:
        print(tabela(json.load(arquivo)))
