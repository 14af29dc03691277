"""Runs the tests of rooms against every mutant of the rooms' sources, and lists those that no test notices.

usage: roda.py <build folder> <list of reasons> <seconds, 0 for no limit> <room>[:<other room>...]...

The build folder is ninja's, with programs teste_<room> that are up to date. What the room's own tests do not notice is
tried with those of the other rooms. All mutants of a source are compiled at once
(see fontes.py) and linked in front of the libraries. A first run tells which tests come to which mutant; those alone are
run against it, the quick ones first, and the first that fails ends it.
"""

import json
import os
import random
import re
import shlex
import subprocess
import sys
import threading
import time
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import fontes

AQUI = Path(__file__).resolve().parent
RAPIDOS = 0.2  # seconds that the first run of a mutant's tests may take; the others are run when it found nothing
PARALELOS = os.cpu_count()


def desiste(mensagem):
    sys.exit(mensagem)


class Construcao:
    """The commands of the build folder."""

    def __init__(self, pasta):
        self.pasta = Path(pasta).resolve()
        banco = subprocess.run(["ninja", "-C", pasta, "-t", "compdb"], check=True, capture_output=True, text=True)
        self.comandos = json.loads(banco.stdout)

    def compila(self, modelo, fonte, objeto):
        """Compiles one source as the build compiles another. Answers what the compiler said when it refused."""
        comando = next(c for c in self.comandos if (self.pasta / c["file"]).resolve() == Path(modelo).resolve())
        palavras = shlex.split(comando["command"])
        while "-MF" in palavras:
            palavras.remove("-MD")
            for opcao in ("-MF", "-MT"):
                del palavras[palavras.index(opcao) : palavras.index(opcao) + 2]
        palavras = [palavra for palavra in palavras if palavra not in ("-g", "-Werror")]
        palavras[palavras.index("-o") + 1] = str(objeto)
        palavras[palavras.index("-c") + 1] = str(fonte)
        palavras += ["-w", "-Wno-narrowing", "-fno-diagnostics-show-caret", f"-I{AQUI.parents[1]}"]
        palavras += ["-include", str(AQUI / "Mutante.h")]
        execucao = subprocess.run(palavras, cwd=self.pasta, capture_output=True, text=True)
        return execucao.stderr if execucao.returncode != 0 else ""

    def liga(self, programa, saida, objetos):
        comando = next(c["command"] for c in self.comandos if c["output"] == programa)
        juntos = " ".join(shlex.quote(str(objeto)) for objeto in objetos)
        comando = re.sub(rf"-o {re.escape(programa)}(?=\s)", f"-o {shlex.quote(str(saida))} {juntos}", comando)
        execucao = subprocess.run(comando, shell=True, cwd=self.pasta, capture_output=True, text=True)
        if execucao.returncode != 0:
            desiste(f"{programa} with its mutants does not link:\n{execucao.stderr}")


class Sala:
    """A room: its sources, compiled with all their mutants, and its tests."""

    def __init__(self, construcao, nome, outras):
        self.construcao, self.nome = construcao, nome
        self.programas = [f"teste_{sala}" for sala in (nome, *outras)]
        self.pasta = construcao.pasta / "mutantes" / nome
        self.pasta.mkdir(parents=True, exist_ok=True)
        self.fontes = {str(c): fontes.le(str(c)) for c in sorted(Path(nome).glob("*.cpp"))}
        self.mutantes = [mutante for fonte in self.fontes.values() for mutante in fonte.mutantes]
        for numero, mutante in enumerate(self.mutantes, 1):
            mutante.numero = numero
        self.recusados = []  # the compiler does not take them
        self.sozinhos = []
        self.objetos = {}
        self.de_cada = defaultdict(dict)  # program: {mutant: names of the tests that come to it}
        self.tempos = defaultdict(dict)  # program: {test: seconds}

    def constroi(self):
        apoio = self.pasta / "Mutante.o"
        with ThreadPoolExecutor(PARALELOS) as grupo:
            erro = grupo.submit(self.construcao.compila, next(iter(self.fontes)), AQUI / "Mutante.cpp", apoio)
            list(grupo.map(self._compila, self.fontes.values()))
        if erro.result():
            desiste(erro.result())
        self.objetos["apoio"] = apoio
        for programa in self.programas:
            self.construcao.liga(programa, self.pasta / programa, self.objetos.values())

    def _compila(self, fonte):
        """With as many mutants as the compiler takes together; the others are on their own."""
        caminho = self.pasta / Path(fonte.arquivo).name
        objeto = caminho.with_suffix(".o")
        juntos = [mutante for mutante in fonte.mutantes if mutante.enxertos]
        while True:
            texto, onde = fonte.com_todos(juntos)
            caminho.write_text(texto)
            erro = self.construcao.compila(fonte.arquivo, caminho, objeto)
            if not erro:
                break
            culpados = self._culpados(erro, caminho, texto, onde)
            if not culpados:
                desiste(f"{fonte.arquivo} with its mutants does not compile:\n{erro}")
            juntos = [mutante for mutante in juntos if mutante not in culpados]
        self.objetos[fonte.arquivo] = objeto
        self.sozinhos += [mutante for mutante in fonte.mutantes if mutante not in juntos]

    @staticmethod
    def _culpados(erro, caminho, texto, onde):
        """The innermost mutants where the compiler found errors; when there are none, those of the line."""
        linhas = [0]
        for linha in texto.encode().split(b"\n"):
            linhas.append(linhas[-1] + len(linha) + 1)
        culpados, vizinhos = set(), set()
        for achado in re.finditer(rf"^\S*/{re.escape(caminho.name)}:(\d+):(\d+): ", erro, re.MULTILINE):
            linha, coluna = int(achado[1]), int(achado[2])
            lugar = linhas[linha - 1] + coluna - 1
            dentro = [(ate - de, mutante) for de, ate, mutante in onde if de <= lugar < ate]
            if dentro:
                culpados.add(min(dentro, key=lambda par: par[0])[1])
            vizinhos |= {mutante for de, _, mutante in onde if linhas[linha - 1] <= de < linhas[linha]}
        return culpados or vizinhos

    def mede(self, programa):
        """Runs all tests with no mutant on, and learns which of them come to which mutant."""
        registro = self.pasta / "alcance.tsv"
        ambiente = os.environ | {"MUTANTES_REGISTRO": str(registro)}
        execucao = subprocess.run([self.pasta / programa], env=ambiente, capture_output=True, text=True)
        if execucao.returncode != 0:
            desiste(f"{programa} does not pass:\n{execucao.stdout[-2000:]}")
        tempos = self.tempos[programa]
        testes = defaultdict(set)
        de_todos = set()
        for linha in registro.read_text().splitlines():
            teste, tempo, numeros = linha.split("\t")
            if teste == "*":
                de_todos |= set(numeros.split())
                continue
            tempos[teste] = int(tempo) / 1000
            for numero in numeros.split():
                testes[int(numero)].add(teste)
        for mutante in self.mutantes:
            em_todos = mutante.uma_vez or str(mutante.numero) in de_todos or mutante in self.sozinhos
            self.de_cada[programa][mutante] = set(tempos) if em_todos else testes[mutante.numero]

    def mata(self, mutante):
        """Whether a test notices it; None when the compiler does not take it."""
        objeto = self._so_com(mutante) if mutante in self.sozinhos else None
        if mutante in self.sozinhos and objeto is None:
            return None
        return any(self._mata(programa, mutante, objeto) for programa in self.programas)

    def _mata(self, programa, mutante, objeto):
        caminho = self.pasta / programa
        if objeto is not None:
            caminho = objeto.with_suffix("." + programa)
            self.construcao.liga(programa, caminho, (self.objetos | {mutante.arquivo: objeto}).values())
        tempos = self.tempos[programa]
        testes = sorted(self.de_cada[programa][mutante], key=lambda teste: tempos[teste])
        rapidos, soma = 0, 0.0
        while rapidos < len(testes) and soma + tempos[testes[rapidos]] <= RAPIDOS:
            soma += tempos[testes[rapidos]]
            rapidos += 1
        for parte in (testes[:rapidos], testes[rapidos:]):
            if parte and self._falha(caminho, mutante, parte, 5 + round(3 * sum(tempos[t] for t in parte))):
                return True
        return False

    def _so_com(self, mutante):
        base = self.pasta / f"so_{mutante.numero}"
        fonte = self.fontes[mutante.arquivo]
        base.with_suffix(".cpp").write_text(fonte.so_com(mutante))
        if self.construcao.compila(mutante.arquivo, base.with_suffix(".cpp"), base.with_suffix(".o")):
            return None
        return base.with_suffix(".o")

    def _falha(self, programa, mutante, testes, segundos):
        opcoes = self.pasta / f"opcoes_{threading.get_ident()}"
        opcoes.write_text("--gtest_filter=" + ":".join(testes) + "\n--gtest_fail_fast\n")
        ambiente = os.environ | {"MUTANTE": str(mutante.numero), "MUTANTE_SEGUNDOS": str(segundos)}
        try:
            execucao = subprocess.run(
                [programa, f"--gtest_flagfile={opcoes}"],
                env=ambiente,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.DEVNULL,
                stderr=subprocess.DEVNULL,
                timeout=20 * segundos, # it may also wait for something that does not come
            )
        except subprocess.TimeoutExpired:
            return True
        return execucao.returncode != 0


def le_motivos(arquivo, salas):
    """{key of the mutant: reason}, of these rooms. A statement "*" stands for all of the procedure."""
    motivos = {}
    for linha in Path(arquivo).read_text().splitlines():
        if linha and linha[0] != "#":
            *chave, motivo = linha.split("\t")
            if chave[0].split("/")[0] in salas:
                motivos[tuple(chave)] = motivo
    return motivos


def motivo_de(chave, motivos):
    """The entry that speaks of a mutant: its own, or the one for all changes of its kind in its procedure."""
    arquivo, procedimento, mudanca, _ = chave
    todas = (arquivo, procedimento, mudanca.split()[0].rstrip(":"), "*")
    return next((entrada for entrada in (chave, todas) if entrada in motivos), None)


def roda_sala(sala, ate):
    """{mutant: whether a test noticed it}, of those that there was time for."""
    sala.constroi()
    for programa in sala.programas:
        sala.mede(programa)
    ordem = list(sala.mutantes)
    if ate is not None:
        random.shuffle(ordem)

    def experimenta(mutante):
        return None if ate is not None and time.monotonic() > ate else (mutante, sala.mata(mutante))

    with ThreadPoolExecutor(PARALELOS) as grupo:
        tentados = dict(filter(None, grupo.map(experimenta, ordem)))
    for resto in sala.pasta.glob("so_*"):
        resto.unlink()
    return tentados


def imprime_lista(titulo, itens):
    if itens:
        print(f"\n{titulo}:")
        for item in itens:
            print("  " + item)


def main():
    pasta, arquivo, segundos, *salas = sys.argv[1:]
    ate = time.monotonic() + int(segundos) if int(segundos) > 0 else None
    construcao = Construcao(pasta)
    nomes = [sala.split(":")[0] for sala in salas]
    motivos = le_motivos(arquivo, nomes)
    sem_motivo, precisos, faltou = [], set(), set()
    print(f"{'room':12}{'mutants':>9}{'tried':>8}{'killed':>8}{'%':>8}{'reason':>8}{'survived':>10}", flush=True)
    for pedida in salas:
        nome, *outras = pedida.split(":")
        sala = Sala(construcao, nome, outras)
        tentados = roda_sala(sala, ate)
        refugo = sum(morto is None for morto in tentados.values())
        mortos = sum(morto is True for morto in tentados.values())
        com_motivo = 0
        for mutante in sala.mutantes:
            entrada = motivo_de(mutante.chave(), motivos)
            if mutante not in tentados:
                faltou.add(entrada)
            elif tentados[mutante] is False:
                com_motivo += entrada is not None
                precisos.add(entrada)
                if entrada is None:
                    sem_motivo.append(f"line {mutante.linha}: " + "\t".join(mutante.chave()))
        validos = len(tentados) - refugo
        vivos = validos - mortos
        print(
            f"{nome:12}{len(sala.mutantes) - refugo:9}{validos:8}{mortos:8}{100 * mortos / max(validos, 1):8.2f}"
            f"{com_motivo:8}{vivos - com_motivo:10}",
            flush=True,
        )
    errados = ["\t".join(entrada) for entrada in motivos if entrada not in precisos | faltou]
    imprime_lista("No test notices", sem_motivo)
    imprime_lista("Reasons of no change, or of one that a test notices", errados)
    sys.exit(1 if sem_motivo or errados else 0)


main()
