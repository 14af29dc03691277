#!/usr/bin/python3
"""Asks two engines that are not ours for the value of every call in casos.tsv and writes conversoes.tsv.

See README.md for what has to be installed and for the meaning of the columns.
"""

import datetime
import math
import os
import re
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue

PASTA = os.path.dirname(os.path.abspath(__file__))
ANO = datetime.date.today().year
AUSENTE = "(ausente)"  # the engine has no such function
LOCAL = {"LC_ALL": "pt_BR.UTF-8"}


# --- cases ---------------------------------------------------------------------------------------------------------

ESCAPE = re.compile(r"\\(u[0-9A-Fa-f]{4}|.)")
LETRAS = {"t": "\t", "n": "\n", "r": "\r", "\\": "\\"}


def le(argumento):
    """Kind and value of an argument: "text", #day count#, truth value, number (kept as written)."""
    if argumento[0] == '"':
        return "texto", ESCAPE.sub(lambda m: LETRAS.get(m[1]) or chr(int(m[1][1:], 16)), argumento[1:-1])
    if argumento[0] == "#":
        return "data", float(argumento[1:-1])
    if argumento in ("Verdadeiro", "Falso"):
        return "logico", argumento == "Verdadeiro"
    return "numero", argumento


def escreve_texto(texto):
    for letra, c in (("\\", "\\"), ("t", "\t"), ("n", "\n"), ("r", "\r")):
        texto = texto.replace(c, "\\" + letra)
    return '"' + texto.replace("\u00a0", "\\u00A0") + '"'


def escreve_numero(valor):
    valor = float(valor)
    return str(int(valor)) if valor.is_integer() and abs(valor) < 1e15 else repr(valor)


def escreve_data(valor, exato):
    """A moment to the nearest second, or the day count itself."""
    valor = float(valor)
    if exato:
        return escreve_numero(valor)
    dia = math.trunc(valor)
    segundos = round(abs(valor - dia) * 86400)
    try:
        m = datetime.datetime(1899, 12, 30) + datetime.timedelta(days=dia, seconds=segundos)
    except OverflowError:
        return "#%r#" % valor
    return "#%02d/%02d/%04d %02d:%02d:%02d#" % (m.day, m.month, m.year, m.hour, m.minute, m.second)


def exato(caso):
    return caso[0] == "MaisDias" or (caso[0] == "CDate" and le(caso[1])[0] == "numero")


def basic(argumento):
    """The argument as an expression of the script engine."""
    tipo, valor = le(argumento)
    if tipo == "texto":
        pedacos = [p for p in re.split("([\x00-\x1f])", valor) if p]
        return " & ".join("Chr(%d)" % ord(p) if p < " " else '"%s"' % p.replace('"', '""') for p in pedacos) or '""'
    if tipo == "data":
        return "CDate(%r)" % valor
    if tipo == "logico":
        return "True" if valor else "False"
    return valor


# How a function of ours is asked of the engines where the name alone does not say it.
EXPRESSOES = {
    "DataDe": "DateSerial({2},{1},{0})",
    "MaisDias": 'DateAdd("d",{1},{0})',
    "Substitui": "Replace({0},{1},{2})",
    "Divide": 'Join(Split({0},{1}),"¦")',
    "Partes": 'Format({0},"yyyy-mm-dd hh:mm:ss")',
}


# --- Wine: script engine and automation library ----------------------------------------------------------------------

MUDA = {"CByte": "UI1", "CInt": "I2", "CLng": "I4", "CBool": "BOOL", "CStr": "BSTR", "CDate": "DATE"}
FALHAS = {0x800A000D: 13, 0x80020005: 13, 0x8002000A: 6, 0x80070057: 5}
SEM_FUNCAO = (0x800A01B6, 0x800A01BD)


def pedido_wine(caso):
    funcao, args = caso[0], caso[1:]
    tipos = [le(a)[0] for a in args]
    de = {"data": "DATE", "numero": "R8"}.get(tipos[0])
    if funcao == "CDate" and tipos[0] == "texto":
        return "data\t" + args[0][1:-1]
    if funcao in MUDA and de:
        return "\t".join(["muda", de, args[0].strip("#"), MUDA[funcao]])
    if funcao == "Format":
        return "\t".join(["fmt", de, args[0].strip("#"), args[1][1:-1]])
    if funcao == "Partes":
        return "\t".join(["fmt", "DATE", args[0].strip("#"), "yyyy-mm-dd hh:nn:ss"])
    b = [basic(a) for a in args]
    return "vbs\t" + EXPRESSOES.get(funcao, funcao + "(" + ",".join("{%d}" % i for i in range(len(b))) + ")").format(*b)


def resposta_wine(caso, linha):
    tipo, _, valor = linha.rstrip("\r").partition("\t")
    if tipo == "falha":
        codigo = int(valor, 16)
        if codigo in SEM_FUNCAO:
            return AUSENTE
        return "falha %s" % (FALHAS.get(codigo) or (codigo & 0xFFFF if codigo >> 16 == 0x800A else valor))
    if tipo == "texto":
        return '"' + valor.replace("\u00a0", "\\u00A0") + '"'
    if tipo == "numero":
        return escreve_numero(valor)
    if tipo == "data":
        return escreve_data(valor, exato(caso))
    if tipo == "logico":
        return "Verdadeiro" if valor == "1" else "Falso"
    return linha


def pergunta_wine(casos, pasta):
    programa = os.path.join(pasta, "motor_ole.exe")
    subprocess.run(
        ["x86_64-w64-mingw32-g++", "-std=c++20", "-Wall", "-static", os.path.join(PASTA, "motor_ole.cpp"), "-o", programa]
        + ["-loleaut32", "-lole32", "-luuid"],
        check=True,
    )
    ambiente = dict(os.environ, WINEPREFIX=os.path.join(pasta, "wine"), WINEARCH="win64", WINEDEBUG="-all", **LOCAL)
    subprocess.run(["wine", "wineboot", "-i"], env=ambiente, check=True, stderr=subprocess.DEVNULL)
    saida = subprocess.run(
        ["wine", programa],
        input="".join(pedido_wine(c) + "\n" for c in casos).encode(),
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        env=ambiente,
        check=True,
    ).stdout.decode()
    linhas = saida.split("\n")[:-1]
    assert len(linhas) == len(casos), "Wine answered %d of %d calls" % (len(linhas), len(casos))
    return [resposta_wine(c, l) for c, l in zip(casos, linhas)]


# --- LibreOffice Basic -----------------------------------------------------------------------------------------------

REGISTRO = """<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Setup/L10N"><prop oor:name="ooSetupSystemLocale"><value>pt-BR</value></prop></item>
<item oor:path="/org.openoffice.Setup/L10N"><prop oor:name="ooLocale"><value>pt-BR</value></prop></item>
</oor:items>
"""
FUNCAO_BASIC = """Function {nome}({parametros})
On Error GoTo Falhou
Dim r
r = {expressao}
Dim t
t = TypeName(r)
If t = "Date" Then r = CDbl(r)
{nome} = Array(t, r)
Exit Function
Falhou:
{nome} = Array("falha", Err.Number)
End Function
"""
INTEIROS = ("Left", "Right", "Mid", "DataDe", "MaisDias")  # whose number arguments are whole


def fonte_basic(assinaturas):
    fonte = "Option VBASupport 1\n"
    for i, (funcao, tipos) in enumerate(assinaturas):
        parametros = ["p%d" % j for j in range(len(tipos))]
        usados = ["CDate(%s)" % p if t == "data" else p for p, t in zip(parametros, tipos)]
        expressao = EXPRESSOES.get(funcao, funcao + "(" + ",".join("{%d}" % j for j in range(len(tipos))) + ")")
        fonte += FUNCAO_BASIC.format(nome="F%d" % i, parametros=",".join(parametros), expressao=expressao.format(*usados))
    return fonte


def argumento_basic(funcao, argumento):
    tipo, valor = le(argumento)
    if tipo == "numero":
        return int(valor) if funcao in INTEIROS else float(valor)
    return valor


def resposta_basic(caso, tipo, valor):
    if tipo == "falha":
        return "falha %d" % valor
    if tipo == "Date":
        return escreve_data(valor, exato(caso))
    if tipo == "String":
        return escreve_texto(valor)
    if tipo == "Boolean":
        return "Verdadeiro" if valor else "Falso"
    return escreve_numero(valor)


def sem_ano(caso):
    """CDate of a text without a year: the second argument is the year of the day on which the engines are asked."""
    return caso[0] == "CDate" and len(caso) == 3


def pergunta_libreoffice(casos, pasta):
    perfil = os.path.join(pasta, "libreoffice")
    os.makedirs(os.path.join(perfil, "user"))
    with open(os.path.join(perfil, "user", "registrymodifications.xcu"), "w", encoding="utf-8") as arquivo:
        arquivo.write(REGISTRO)
    canal = "conversoes%d" % os.getpid()
    processo = subprocess.Popen(
        ["soffice", "--headless", "--norestore", "--nologo", "-env:UserInstallation=file://" + perfil]
        + ["--accept=pipe,name=%s;urp;" % canal],
        env=dict(os.environ, **LOCAL),
        stderr=subprocess.DEVNULL,
    )
    local = uno.getComponentContext()
    ponte = local.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", local)
    for _ in range(200):
        try:
            contexto = ponte.resolve("uno:pipe,name=%s;urp;StarOffice.ComponentContext" % canal)
            break
        except Exception:  # not listening yet
            time.sleep(0.3)
    mesa = contexto.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", contexto)
    oculto = PropertyValue()
    oculto.Name, oculto.Value = "Hidden", True
    documento = mesa.loadComponentFromURL("private:factory/scalc", "_blank", 0, (oculto,))
    bibliotecas = documento.BasicLibraries
    bibliotecas.VBACompatibilityMode = True
    if not bibliotecas.hasByName("Standard"):
        bibliotecas.createLibrary("Standard")

    chamadas = [c[:2] if sem_ano(c) else c for c in casos]
    assinatura = [(c[0], tuple(le(a)[0] for a in c[1:])) for c in chamadas]
    distintas = list(dict.fromkeys(assinatura))
    bibliotecas.getByName("Standard").insertByName("Modulo", fonte_basic(distintas))
    provedor = documento.getScriptProvider()
    endereco = "vnd.sun.star.script:Standard.Modulo.F%d?language=Basic&location=document"
    funcoes = {a: provedor.getScript(endereco % i) for i, a in enumerate(distintas)}

    respostas = []
    for caso, a in zip(chamadas, assinatura):
        argumentos = tuple(argumento_basic(caso[0], x) for x in caso[1:])
        tipo, valor = funcoes[a].invoke(argumentos, (), ())[0]
        respostas.append(resposta_basic(caso, tipo, valor))
    documento.close(True)
    try:
        mesa.terminate()
    except Exception:  # the bridge goes down with the program
        pass
    processo.wait()
    return respostas


# --- decision --------------------------------------------------------------------------------------------------------

# Where the engines differ Wine's answer is taken, except for what is listed here, where LibreOffice has the answer that
# the platform documents. The third column is the reason given in README.md.
NUMERO = "CDbl|CBool|IsNumeric"
PREFERE_LIBREOFFICE = [
    ("UCase|LCase", r".*", "letters"),
    ("Trim", r".*", "trim"),
    ("Mid", r".*\t0\t.*", "mid"),
    ("Format", r'(0\.5|-0\.5|0\.999)\t"0"', "format-0"),
    ("Format", r'[\d.]+\t"\.0+"', "format-0"),
    ("MaisDias", r".*\t-?\d{5,}", "16-bit-days"),
    ("CDbl", r'"(1e308|\d{18,}|1,7976931348623157|0,\d{30})"', "precision"),
    (NUMERO + "|CByte|CInt|CLng", r'"1[dD]-?\d"', "exponent-d"),
    (NUMERO, r'"[\d.]*,\d*\..*"', "point-after-comma"),
    (NUMERO, r'"(-\+|\+-).*"', "two-signs"),
    (NUMERO + "|CInt|CLng", r'"-&H10"', "signed-hex"),
    (NUMERO, r'"&HFFFFFFFF"', "32-bit-hex"),
    ("CDate", r'".*(?:[^a-zç](?:jan|fev|mar|abr|mai|jun|jul|ago|set|out|nov|dez|ter)(?:[^a-zç.].*)?)"(\t\?)?', "abbreviation"),
    ("CDate", r'"(?:mai|jan|ter|sex)[ /].*"(\t\?)?', "abbreviation"),
    ("CDate", r'"12/mai"\t\?', "abbreviation"),
    ("CDate", r'".*Ç.*"', "letters"),
    ("CDate", r'".*(?:(?<![a-z])[/,:.-] *[/,:.-])(?!2020).*"(\t\?)?', "separators"),
    ("CDate", r'" ?[,:].*"(\t\?)?', "separators"),
    ("CDate", r'"(.*:maio|.*maio-10:20)"', "separators"),
    ("CDate", r'".*maio (maio|junho).*"(\t\?)?', "two-months"),
    ("CDate", r'".*/65\d36"', "year-overflow"),
]


def janela(caso, wine):
    """The same day a century before, when Wine has put a year of two digits into 2030 to 2049."""
    m = re.fullmatch(r"#(\d\d/\d\d)/(20[34]\d)( .*)#", wine)
    if caso[0] != "CDate" or not m or m[2] in caso[1]:
        return None
    return "#%s/%d%s#" % (m[1], int(m[2]) - 100, m[3])


def decide(caso, wine, libreoffice, plataforma):
    """Expected value and where it comes from."""
    chave = "\t".join(caso)
    if chave in plataforma:
        return plataforma[chave], "plataforma"
    if wine == AUSENTE:
        return libreoffice, "libreoffice"
    antes = janela(caso, wine)
    if antes:
        return antes, "libreoffice" if antes == libreoffice else "plataforma"
    if wine == libreoffice:
        return wine, "ambos"
    for funcoes, argumentos, _ in PREFERE_LIBREOFFICE:
        if re.fullmatch(funcoes, caso[0]) and re.fullmatch(argumentos, "\t".join(caso[1:])):
            return libreoffice, "libreoffice"
    return wine, "wine"


def le_tabela(nome):
    with open(os.path.join(PASTA, nome), encoding="utf-8") as arquivo:
        return [linha.rstrip("\n").split("\t") for linha in arquivo if linha.strip()]


def main():
    casos = le_tabela("casos.tsv")
    plataforma = {"\t".join(linha[:-1]): linha[-1] for linha in le_tabela("plataforma.tsv")}
    with tempfile.TemporaryDirectory() as pasta:
        wine = pergunta_wine(casos, pasta)
        libreoffice = pergunta_libreoffice(casos, pasta)
    faltam = set(plataforma) - {"\t".join(c) for c in casos}
    assert not faltam, "in plataforma.tsv and not in casos.tsv: %s" % faltam
    tabela = ["funcao\targ1\targ2\targ3\tesperado\tmotor\twine\tlibreoffice"]
    for caso, w, b in zip(casos, wine, libreoffice):
        valor, motor = decide(caso, w, b, plataforma)
        args = [str(ANO) if a == "?" else a for a in caso[1:]]
        args += [""] * (3 - len(args))
        tabela.append("\t".join([caso[0], *args, valor, motor, w, b]))
    with open(os.path.join(PASTA, "conversoes.tsv"), "w", encoding="utf-8") as arquivo:
        arquivo.write("\n".join(tabela) + "\n")
    contagem = {}
    for linha in tabela[1:]:
        motor = linha.split("\t")[5]
        contagem[motor] = contagem.get(motor, 0) + 1
    print(contagem)


if __name__ == "__main__":
    sys.exit(main())
