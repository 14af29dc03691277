"""Finds the mutants of a C++ source in the project's format, and writes the source with all of them in it.

A mutant is a call or other statement left out, two neighbouring statements swapped, a condition negated, or a constant or
text changed. Each stands behind Mutante(number), so that one compilation holds them all. What cannot be chosen while the
program runs (the value of a case, a constant of the compiler's) is compiled by itself: Fonte.so_com.
"""

import re
from pathlib import Path
from typing import NamedTuple

PALAVRA = re.compile(
    r"""(?P<espaco>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#[^\n]*)
    |(?P<texto>(?:u8|[LuU])?"(?:[^"\\\n]|\\.)*")
    |(?P<letra>(?:u8|[LuU])?'(?:[^'\\\n]|\\.)+')
    |(?P<numero>\.?\d(?:[eEpP][+-]|['\w.])*)
    |(?P<nome>[^\W\d]\w*)
    |(?P<sinal><=>|->\*|\.\.\.|::|->|<<=|>>=|<<|<=|>=|==|!=|&&|\|\||\+\+|--|[-+*/%&|^]=|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
PARES = {"(": ")", "[": "]", "{": "}"}
# Before these, or after them, an operand of a condition ends.
LIMITES = {",", ";", "?", ":", "=", "return", "&&", "||", "+=", "-=", "|=", "&=", "co_return"}
COMPARACOES = {"==", "!=", "<=", ">=", "<", ">"}


def resumo(texto):
    """Not longer than a line."""
    return texto if len(texto) <= 110 else texto[:107] + "..."


class Peca(NamedTuple):
    tipo: str
    texto: str
    inicio: int
    fim: int


class Comando(NamedTuple):
    """A statement: its pieces from `inicio` up to, not including, `fim`; what it is told by ends before `corpo`."""

    tipo: str
    inicio: int
    fim: int
    corpo: int


class Mutante:
    """A change of the source. Its identity is told by texts, so that it does not move with the lines."""

    def __init__(self, arquivo, procedimento, mudanca, comando, linha, trocas):
        self.arquivo, self.procedimento, self.mudanca, self.comando, self.linha = (
            arquivo,
            procedimento,
            mudanca,
            comando,
            linha,
        )
        self.trocas = trocas  # [(begin, end, text)]: the source as the mutant has it
        self.enxertos = []  # [(begin, end, before, after)]: the same, behind Mutante(number)
        self.numero = 0
        self.uma_vez = False  # a test that comes there after another one does not pass it again

    def chave(self):
        return (self.arquivo, self.procedimento, self.mudanca, self.comando)


class Fonte:
    def __init__(self, arquivo, texto):
        self.arquivo, self.texto = arquivo, texto
        self.pecas = [
            Peca(m.lastgroup, m.group(), m.start(), m.end()) for m in PALAVRA.finditer(texto) if m.lastgroup != "espaco"
        ]
        self.par = {}
        abertos = []
        for i, peca in enumerate(self.pecas):
            if peca.texto in PARES:
                abertos.append(i)
            elif peca.texto in PARES.values():
                self.par[abertos.pop()] = i
        self.inverso = {fecha: abre for abre, fecha in self.par.items()}
        self.mutantes = []
        self.negados = set()
        self.constexpr = []  # where the word stands that what has a mutant in it must not have, and what then does
        self.procedimento = ""
        self.logico = False  # the procedure answers yes or no
        self.comando = None  # the innermost statement
        self._escopo(0, len(self.pecas), "")
        self._numera_iguais()

    # The pieces of the source

    def t(self, i):
        return self.pecas[i].texto if 0 <= i < len(self.pecas) else ""

    def trecho(self, inicio, fim):
        """The pieces on one line, without comments."""
        partes = []
        for i in range(inicio, fim):
            if i > inicio and self.pecas[i].inicio > self.pecas[i - 1].fim:
                partes.append(" ")
            partes.append(self.t(i))
        return "".join(partes)

    def _salta(self, i):
        """The piece after this one, or after the bracket that it opens."""
        return self.par.get(i, i) + 1

    def _ate(self, i, fim, *textos):
        """The first such piece outside of brackets, or `fim`."""
        while i < fim and self.t(i) not in textos:
            i = self._salta(i)
        return i

    def _angulo(self, i):
        """Whether arguments of a template begin here: unlike an operator, beside the name."""
        return self.t(i) == "<" and self.pecas[i - 1].tipo == "nome" and self.pecas[i - 1].fim == self.pecas[i].inicio

    def _salta_angulos(self, i):
        """The piece after the closing one, of `<` at i."""
        fundo = 0
        while i < len(self.pecas):
            fundo += {"<": 1, ">": -1}.get(self.t(i), 0)
            i = self._salta(i)
            if fundo == 0:
                return i
        return i

    # Definitions

    def _escopo(self, i, fim, classe):
        while i < fim:
            if self.t(i) == "template":
                i = self._salta_angulos(i + 1)
            elif self.t(i) in ("public", "private", "protected") and self.t(i + 1) == ":":
                i += 2
            elif self.t(i) in ("using", "typedef", "static_assert", "friend", "requires"):
                i = self._ate(i, fim, ";") + 1
            elif self.t(i) == "namespace":
                abre = self._ate(i, fim, "{", ";")
                if self.t(abre) == "{":
                    self._escopo(abre + 1, self.par[abre], classe)
                    abre = self.par[abre]
                i = abre + 1
            elif self.t(i) in ("class", "struct", "union", "enum"):
                abre = self._ate(i, fim, "{", ";")
                if self.t(abre) == "{":
                    if self.t(i) != "enum":
                        self._escopo(abre + 1, self.par[abre], self.t(i + 1))
                    abre = self._ate(self.par[abre], fim, ";")
                i = abre + 1
            else:
                i = self._definicao(i, fim, classe)

    def _definicao(self, inicio, fim, classe):
        """A procedure or a variable. Answers where the next one begins."""
        i, parametros, lista, tentativa, igual = inicio, None, None, False, False
        while i < fim and self.t(i) != ";":
            if self.t(i) == "operator" and parametros is None:
                i = self._ate(i + (3 if self.t(i + 1) == "(" else 2), fim, "(")
                continue
            if self.t(i) == "(" and parametros is None and not igual:
                parametros = i
            elif self.t(i) == "=":
                igual = True
            elif self.t(i) == "try":
                tentativa = True
            elif self.t(i) == ":" and parametros is not None:
                lista = i + 1
            elif self.t(i) == "{" and parametros is not None and not igual:
                if lista is None or self.pecas[i - 1].tipo != "nome":
                    return self._procedimento(inicio, parametros, lista, i, tentativa, classe)
            elif self._angulo(i) and not igual:
                i = self._salta_angulos(i)
                continue
            i = self._salta(i)
        if parametros is None or igual:
            nome = inicio
            while nome < i and self.t(nome) not in ("=", "{", "["):
                nome = self._salta_angulos(nome) if self._angulo(nome) else nome + 1
            self._em(self.t(nome - 1), Comando("variavel", inicio, i + 1, i + 1), self._variavel, inicio, i)
        return i + 1

    def _em(self, procedimento, comando, faz, *argumentos):
        antes = self.procedimento, self.comando
        self.procedimento, self.comando = procedimento, comando or self.comando
        faz(*argumentos)
        self.procedimento, self.comando = antes

    def _variavel(self, inicio, fim):
        quantos = len(self.mutantes)
        self._expressao(self._ate(inicio, fim, "=", "{"), fim)
        self._sem_constexpr(inicio, fim, quantos, "const")

    def _sem_constexpr(self, inicio, fim, quantos, outra):
        for i in range(inicio, fim):
            if self.t(i) == "constexpr" and self.t(i - 1) != "if":
                palavra = "" if self.t(i + 1) == "const" else outra
                self.constexpr.append((self.pecas[i], palavra, set(self.mutantes[quantos:])))

    def _procedimento(self, inicio, parametros, lista, abre, tentativa, classe):
        nome = parametros
        while self.pecas[nome - 1].tipo == "nome" or self.t(nome - 1) in ("::", "~"):
            nome -= 1
            if self.t(nome - 1) not in ("::", "~") and self.t(nome) not in ("::", "~"):
                break
        titulo = self.trecho(nome, parametros) or "operator"
        self.logico = self.t(nome - 1) == "bool"
        quantos = len(self.mutantes)

        def corpo():
            if lista is not None:
                self._expressao(lista, abre)
            self._bloco(abre)
            i = self.par[abre] + 1
            while tentativa and self.t(i) == "catch":
                i = self._salta(i + 1)
                self._bloco(i)
                i = self._salta(i)
            return i

        fim = []
        cabeca = Comando("procedimento", inicio, abre, abre)
        self._em(f"{classe}::{titulo}" if classe else titulo, cabeca, lambda: fim.append(corpo()))
        self._sem_constexpr(inicio, parametros, quantos, "inline")
        return fim[0]

    # Statements

    def _bloco(self, abre):
        comandos = []
        i = abre + 1
        while i < self.par[abre]:
            comando = self._comando(i)
            comandos.append(comando)
            i = comando.fim
        for um, outro in zip(comandos, comandos[1:]):
            self._troca(um, outro)

    def _comando(self, i):
        fora = self.comando
        comando = self._le_comando(i)
        self.comando = fora
        return comando

    def _sub(self, tipo, inicio, cabeca, i):
        """A statement with another one in it."""
        dentro = self._comando(i)
        fim = dentro.fim
        if tipo == "if" and self.t(fim) == "else":
            fim = self._comando(fim + 1).fim
        return Comando(tipo, inicio, fim, cabeca)

    def _le_comando(self, i):
        texto = self.t(i)
        if texto == "{":
            self._bloco(i)
            return Comando("bloco", i, self.par[i] + 1, i)
        if texto in ("if", "while", "for", "switch"):
            fixo = self.t(i + 1) == "constexpr"
            abre = i + 1 + fixo
            fecha = self.par[abre]
            self.comando = Comando(texto, i, fecha + 1, fecha + 1)
            if texto == "for":
                partes = self._ate(abre + 1, fecha, ";")
                if partes < fecha:
                    self._expressao(abre + 1, partes)
                    condicao = self._ate(partes + 1, fecha, ";")
                    self._nega(partes + 1, condicao)
                    self._expressao(condicao + 1, fecha)
                else:
                    self._expressao(abre + 1, fecha)
            else:
                self._condicao(abre + 1, fecha, texto != "switch" and not fixo)
            return self._sub(texto, i, fecha + 1, fecha + 1)
        if texto == "do":
            dentro = self._comando(i + 1)
            abre = dentro.fim + 1
            self.comando = Comando("do", i, i + 1, i + 1)
            self._nega(abre + 1, self.par[abre])
            return Comando("do", i, self.par[abre] + 2, i + 1)
        if texto == "try":
            self._bloco(i + 1)
            fim = self.par[i + 1] + 1
            while self.t(fim) == "catch":
                abre = self._salta(fim + 1)
                self._bloco(abre)
                fim = self.par[abre] + 1
            return Comando("try", i, fim, i + 1)
        if texto in ("case", "default"):
            fim = self._ate(i, len(self.pecas), ":") + 1
            self.comando = Comando("rotulo", i, fim, fim)
            self._constantes(i, fim, fixas=True)
            return self.comando
        fim = self._ate(i, len(self.pecas), ";") + 1
        if texto in ("using", "typedef", "static_assert", "struct", "class", "enum"):
            return Comando("fixo", i, fim, fim)
        comando = Comando(self._tipo_simples(i, fim), i, fim, fim)
        self.comando = comando
        self._simples(comando)
        return comando

    def _tipo_simples(self, i, fim):
        if self.t(i) in ("return", "throw", "break", "continue", "goto"):
            return self.t(i)
        if fim - i == 1:
            return "vazio"
        return "declaracao" if self._nomes_declarados(i, fim) else "expressao"

    def _nomes_declarados(self, i, fim):
        """The names that a declaration introduces; none when it is an expression."""
        while self.t(i) in ("const", "constexpr", "static", "auto"):
            if self.t(i) == "auto":
                i += 1
                break
            i += 1
        else:
            if self.t(i) == "::":
                i += 1
            if self.pecas[i].tipo != "nome":
                return []
            palavras = self.t(i) in ("unsigned", "signed", "long", "short")
            i += 1
            while palavras and self.t(i) in ("long", "short", "int", "char", "double"):
                i += 1
            while self.t(i) == "::" or self._angulo(i):
                i = self._salta_angulos(i) if self.t(i) == "<" else i + 2
        while self.t(i) in ("&", "&&", "*", "const"):
            i += 1
        if self.t(i) == "[" and self.t(i - 1) in ("auto", "&"):
            return [self.t(k) for k in range(i + 1, self.par[i]) if self.pecas[k].tipo == "nome"]
        if i < fim and self.pecas[i].tipo == "nome" and self.t(i + 1) in ("=", ";", "{", "(", "[", ",", ":"):
            if self.t(i - 1) not in (".", "->", "::"):
                return [self.t(i)]
        return []

    def _simples(self, comando):
        inicio, fim = comando.inicio, comando.fim - 1
        if comando.tipo == "declaracao":
            quantos = len(self.mutantes)
            self._expressao(self._ate(inicio, fim, "=", "{", "("), fim)
            self._sem_constexpr(inicio, fim, quantos, "const")
            for mutante in self.mutantes[quantos:]:
                mutante.uma_vez = "static" in [self.t(i) for i in range(inicio, fim)]
            return
        if comando.tipo in ("expressao", "throw", "break", "continue") or (comando.tipo == "return" and fim == inicio + 1):
            de, ate = self.pecas[inicio].inicio, self.pecas[fim].fim
            mutante = self._novo("delete", [(de, ate, ";")])
            mutante.enxertos.append((de, ate, "{if (!Mutante(#)) {", "}}"))
        if comando.tipo == "return" and self.logico and fim > inicio + 1 and self.t(inicio + 1) not in ("true", "false", "["):
            self._nega(inicio + 1, fim)
        else:
            self._expressao(inicio, fim)

    def _troca(self, um, outro):
        """The two in the other order. A declaration stays, and the other goes to its other side.

        Nothing happens between two plain stores, nor does anything in a declaration with no value or a constant one.
        """
        movel = ("expressao", "if", "for", "while", "do", "bloco", "try")
        pode_um, pode_outro = um.tipo in movel, outro.tipo in movel
        if not (pode_um or um.tipo == "declaracao") or not (pode_outro or outro.tipo == "declaracao"):
            return
        texto_um, texto_outro = self.trecho(um.inicio, um.fim), self.trecho(outro.inicio, outro.fim)
        if texto_um == texto_outro or not (pode_um or pode_outro) or self._imoveis(um, outro):
            return
        if um.tipo == "declaracao":
            novos = set(self._nomes_declarados(um.inicio, um.fim))
            if novos & {self.t(i) for i in range(outro.inicio, outro.fim)}:
                return
        a, b = self.pecas[um.inicio].inicio, self.pecas[um.fim - 1].fim
        c, d = self.pecas[outro.inicio].inicio, self.pecas[outro.fim - 1].fim
        antes = self.comando
        self.comando = um
        mutante = self._novo(
            f"swap with: {self._titulo(outro)}", [(a, b, texto_outro), (c, d, texto_um)]
        )
        self.comando = antes
        if pode_outro:
            mutante.enxertos += [
                (a, a, "if (Mutante(#)) {" + texto_outro + "} ", ""),
                (c, d, "{if (!Mutante(#)) {", "}}"),
            ]
        else:
            mutante.enxertos += [
                (a, b, "{if (!Mutante(#)) {", "}}"),
                (d, d, "", " if (Mutante(#)) {" + texto_um + "}"),
            ]

    def _imoveis(self, um, outro):
        if any(self._declaracao_vazia(comando) for comando in (um, outro)):
            return True
        if not (self._atribui(um) and self._atribui(outro)):
            return False
        igual = self._ate(um.inicio, um.fim, "=")
        outro_igual = self._ate(outro.inicio, outro.fim, "=")
        destino, outro_destino = self.trecho(um.inicio, igual), self.trecho(outro.inicio, outro_igual)
        return destino not in self.trecho(outro.inicio, outro.fim) and outro_destino not in self.trecho(um.inicio, um.fim)

    def _declaracao_vazia(self, comando):
        if comando.tipo != "declaracao":
            return False
        valor = self._ate(comando.inicio, comando.fim, "=", "{", "(")
        return all(self.pecas[i].tipo != "nome" or self.t(i) in ("true", "false") for i in range(valor, comando.fim))

    def _atribui(self, comando):
        """Whether it only stores a value that is there, where nothing runs."""
        pecas = [self.t(i) for i in range(comando.inicio, comando.fim)]
        return comando.tipo == "expressao" and pecas.count("=") == 1 and not {"(", "++", "--"} & set(pecas)

    # Expressions

    def _lambda(self, i):
        """Where the body begins, of a lambda that begins at i."""
        if self.t(i) != "[" or self.pecas[i - 1].tipo in ("numero", "texto") or self.t(i - 1) in (")", "]"):
            return None
        if self.pecas[i - 1].tipo == "nome" and self.t(i - 1) != "return":
            return None
        k = self.par[i] + 1
        if self.t(k) == "(":
            k = self._salta(k)
        while self.t(k) not in ("{", ";", ")", ",") and k < len(self.pecas):
            k += 1
        return k if self.t(k) == "{" else None

    def _expressao(self, inicio, fim):
        i = inicio
        while i < fim:
            abre = self._lambda(i)
            if abre is not None:
                fora = self.logico, self.comando
                self.logico = False
                self._constantes(i, abre)
                self._bloco(abre)
                self.logico, self.comando = fora
                i = self.par[abre] + 1
                continue
            texto = self.t(i)
            if texto in ("&&", "||") and self.pecas[i].fim < self.pecas[i + 1].inicio:
                self._nega_trecho(*self._operando(i, -1))
                self._nega_trecho(*self._operando(i, 1))
            elif texto in COMPARACOES and self.pecas[i - 1].fim < self.pecas[i].inicio < self.pecas[i].fim < self.pecas[i + 1].inicio:
                self._nega_trecho(self._operando(i, -1)[0], self._operando(i, 1)[1])
            elif texto == "?":
                self._nega_trecho(*self._operando(i, -1))
            self._constantes(i, i + 1)
            i += 1

    def _operando(self, i, passo):
        """The pieces beside the operator at i."""
        k = i + passo
        while 0 <= k < len(self.pecas) and self.t(k) not in LIMITES:
            if passo > 0 and self.t(k) in PARES:
                k = self.par[k]
            elif passo < 0 and k in self.inverso:
                k = self.inverso[k]
            elif self.t(k) in PARES or k in self.inverso:
                break
            k += passo
        return (i + 1, k) if passo > 0 else (k + 1, i)

    def _condicao(self, inicio, fim, negavel):
        ponto = self._ate(inicio, fim, ";")
        if ponto < fim:
            self._expressao(inicio, ponto)
            inicio = ponto + 1
        nomes = self._nomes_declarados(inicio, fim)
        if nomes and negavel:
            mutante = self._novo(f"negate: {self.trecho(inicio, fim)}", [])
            ate = self.pecas[fim - 1].fim
            mutante.trocas.append((ate, ate, f"; !static_cast<bool>({nomes[0]})"))
            mutante.enxertos.append((ate, ate, "", f"; Mutante(#) != static_cast<bool>({nomes[0]})"))
            self._expressao(self._ate(inicio, fim, "="), fim)
        elif negavel:
            self._nega(inicio, fim)
        else:
            self._expressao(inicio, fim)

    def _nega(self, inicio, fim):
        self._nega_trecho(inicio, fim)
        self._expressao(inicio, fim)

    def _nega_trecho(self, inicio, fim):
        if inicio >= fim or (inicio, fim) in self.negados or self.trecho(inicio, fim) in ("true", "false"):
            return
        self.negados.add((inicio, fim))
        de, ate = self.pecas[inicio].inicio, self.pecas[fim - 1].fim
        texto = self.trecho(inicio, fim)
        mutante = self._novo(f"negate: {resumo(texto)}", [(de, ate, f"!static_cast<bool>({texto})")])
        mutante.enxertos.append((de, ate, "(Mutante(#) != static_cast<bool>(", "))"))

    def _constantes(self, inicio, fim, fixas=False):
        for i in range(inicio, fim):
            novo = self._outro_valor(i)
            if novo is None:
                continue
            peca = self.pecas[i]
            especie = "text" if peca.tipo == "texto" else "constant"
            mutante = self._novo(f"{especie}: {peca.texto}", [(peca.inicio, peca.fim, novo)])
            # Texts side by side are one.
            if not fixas and "texto" not in (self.pecas[i - 1].tipo, self.pecas[i + 1].tipo):
                mutante.enxertos.append((peca.inicio, peca.fim, f"(Mutante(#) ? {novo} : ", ")"))

    def _outro_valor(self, i):
        peca = self.pecas[i]
        if peca.texto in ("true", "false"):
            return "false" if peca.texto == "true" else "true"
        if peca.tipo == "numero":
            valor = re.fullmatch(r"(0x[\da-fA-F]+|[\d']+)(.*)", peca.texto)
            if valor is None or valor[2][:1] in (".", "e"):
                return f"({peca.texto} + 1)"
            return str(int(valor[1].replace("'", ""), 0 if valor[1].startswith("0x") else 10) + 1) + valor[2]
        if peca.tipo == "letra":
            return "'~'"
        if peca.tipo == "texto":
            # As long as before, so that its type is the same: the last letter is another one.
            inteiro = re.fullmatch(r'(.*")((?:[^"\\]|\\.)*)"', peca.texto)
            ascii_ = [m for m in re.finditer(r"\\.|[\x20-\x7e]", inteiro[2]) if m.group() != "~" and "\\" not in m.group()]
            if not ascii_:
                return f'{inteiro[1]}{inteiro[2]}~"'
            letras = [m for m in ascii_ if m.group().isalnum()] or ascii_
            onde = letras[-1].start()
            return f'{inteiro[1]}{inteiro[2][:onde]}~{inteiro[2][onde + 1:]}"'
        return None

    # The mutants

    def _novo(self, mudanca, trocas):
        onde = trocas[0][0] if trocas else self.pecas[self.comando.inicio].inicio
        linha = self.texto.count("\n", 0, onde) + 1
        mutante = Mutante(self.arquivo, self.procedimento, mudanca, self._titulo(self.comando), linha, trocas)
        self.mutantes.append(mutante)
        return mutante

    def _titulo(self, comando):
        """How a statement is told: without the block that follows it."""
        return resumo(self.trecho(comando.inicio, comando.corpo))

    def _numera_iguais(self):
        vezes = {}
        for mutante in self.mutantes:
            vez = vezes[mutante.chave()] = vezes.get(mutante.chave(), 0) + 1
            if vez > 1:
                mutante.mudanca += f" ({vez})"

    def so_com(self, mutante):
        """The source as this one mutant has it."""
        texto = self.texto
        for de, ate, novo in sorted(mutante.trocas, reverse=True):
            texto = texto[:de] + novo + texto[ate:]
        return texto

    def com_todos(self, mutantes):
        """The source with these mutants in it, line by line as before, and where in it each of them stands."""
        abre, fecha = [], []
        for ordem, mutante in enumerate(mutantes):
            for de, ate, antes, depois in mutante.enxertos:
                # At one place the outer one opens first and closes last.
                largura = ate - de if de < ate else 1 << 30
                if antes:
                    abre.append((de, 1, -largura, ordem, antes, mutante, len(abre)))
                if depois:
                    fecha.append((ate, 0, largura, -ordem, depois, mutante, len(fecha)))
        partes, onde, lugar, tamanho, pilha = [], [], 0, 0, {}
        eventos = sorted(abre + fecha, key=lambda e: e[:4])
        trocas = [(peca.inicio, peca.fim, novo) for peca, novo, seus in self.constexpr if seus & set(mutantes)]
        trocas.sort(reverse=True)

        def poe(texto):
            nonlocal tamanho
            partes.append(texto)
            tamanho += len(texto.encode())

        def ate_lugar(fim):
            nonlocal lugar
            while trocas and trocas[-1][0] < fim:
                de, ate, novo = trocas.pop()
                poe(self.texto[lugar:de] + novo)
                lugar = ate
            poe(self.texto[lugar:fim])
            lugar = fim

        for posicao, tipo, largura, _, texto, mutante, _ in eventos:
            ate_lugar(posicao)
            inicio = tamanho
            poe(texto.replace("#", str(mutante.numero), 1))
            if tipo == 1 and -largura < 1 << 30:
                pilha[(mutante, posicao - largura)] = inicio
            else:
                onde.append((pilha.pop((mutante, posicao), inicio), tamanho, mutante))
        ate_lugar(len(self.texto))
        return "".join(partes), onde


def le(arquivo):
    return Fonte(arquivo, Path(arquivo).read_text())
