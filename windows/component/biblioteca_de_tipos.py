#!/usr/bin/env python3
"""Makes the type library of the component, and the face of its interfaces in C++, from its .idl.

    biblioteca_de_tipos.py WIDL FOLDER_OF_IDL FOLDER_OF_TLB SOURCE.idl RESULT.tlb RESULT.h

What the compiler of type libraries cannot do is done here: texts with accents, which it takes as the bytes of the code
page that programs show them in, and default values of dates. A date that has one is compiled as a general value whose
default is a text of four characters; then the place of the text, as long as a date, gets the date, and the argument its
type. The moment of the compilation, which it writes into the library, is left out: the same source gives the same bytes.
In C++ no argument has a default value, for that of a general value would be a text.
"""

import re
import struct
import subprocess
import sys
from pathlib import Path

MARCA = b"data"
DATA, TEXTO, VARIANTE = 7, 8, 12  # types of automation
# Layout of the library's file.
CABECALHO, NUMERO_DE_TIPOS = 84, 32  # size of the header, and where it has the number of types
TABELA_DE_TIPOS, VALORES = 0, 11  # segments
TIPO, ARGUMENTO = 100, 12  # sizes of the records


def tipo(numero):
    """A plain type as the record of an argument has it."""
    return struct.pack("<HH", numero, 0x8000 | numero)


def segmento(tlb, numero):
    tipos, = struct.unpack_from("<I", tlb, NUMERO_DE_TIPOS)
    onde, = struct.unpack_from("<I", tlb, CABECALHO + 4 * tipos + 16 * numero)
    return onde


def funcoes(tlb):
    """The records of all functions: where each begins and ends, and how many arguments it has."""
    tipos, = struct.unpack_from("<I", tlb, NUMERO_DE_TIPOS)
    for base in range(segmento(tlb, TABELA_DE_TIPOS), segmento(tlb, TABELA_DE_TIPOS) + tipos * TIPO, TIPO):
        onde, = struct.unpack_from("<I", tlb, base + 4)
        quantas, = struct.unpack_from("<H", tlb, base + 24)
        onde += 4
        for _ in range(quantas):
            tamanho, = struct.unpack_from("<H", tlb, onde)
            argumentos, = struct.unpack_from("<H", tlb, onde + 20)
            yield onde, onde + tamanho, argumentos
            onde += tamanho


def poe_datas(tlb):
    """Gives the provisional default values and their arguments the type of a date; how many there were."""
    provisorio = struct.pack("<HI", TEXTO, len(MARCA)) + MARCA
    quantas = 0
    for inicio, fim, argumentos in funcoes(tlb):
        primeiro = fim - argumentos * ARGUMENTO
        padroes = primeiro - argumentos * 4  # the places of the default values, where there are any
        if padroes < inicio + 24:
            continue
        for i in range(argumentos):
            onde = primeiro + i * ARGUMENTO
            lugar, = struct.unpack_from("<i", tlb, padroes + 4 * i)
            valor = segmento(tlb, VALORES) + lugar
            if lugar < 0 or tlb[onde:onde + 4] != tipo(VARIANTE) or not tlb.startswith(provisorio, valor):
                continue
            tlb[valor:valor + len(provisorio)] = struct.pack("<Hd", DATA, 0.0)
            tlb[onde:onde + 4] = tipo(DATA)
            quantas += 1
    return quantas


def main():
    widl, pasta_idl, pasta_tlb, fonte, resultado, face = sys.argv[1:]
    texto = Path(fonte).read_text(encoding="utf-8")

    def compila(modo, texto, saida):
        preparado = Path(saida + ".idl")
        preparado.write_text(texto, encoding="cp1252")
        subprocess.run([widl, modo, "-I", pasta_idl, "-L", pasta_tlb, "-o", saida, str(preparado)], check=True)

    compila("-h", re.sub(r", defaultvalue\([^)]*\)", "", texto), face)
    texto, datas = re.subn(r"defaultvalue\(0\)\] DATE\b", f'defaultvalue("{MARCA.decode()}")] VARIANT', texto)
    compila("-t", texto, resultado)

    tlb = bytearray(Path(resultado).read_bytes())
    achadas = poe_datas(tlb)
    if achadas != datas:
        sys.exit(f"{datas} dates with a default value in the source, {achadas} in the library")
    tlb = re.sub(rb"Created by WIDL version [^\n]*\n", lambda achado: b" " * len(achado.group()), bytes(tlb))
    Path(resultado).write_bytes(tlb)


if __name__ == "__main__":
    main()
