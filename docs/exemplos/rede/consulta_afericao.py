#!/usr/bin/python3
# Another system asks the registry's server which calibration of an equipment was in force on a day, and fetches its
# certificate. It knows nothing of the server but server/proto/registro.proto, and needs python3-grpcio,
# python3-protobuf and protobuf-compiler. The password is asked for, or comes in the environment (REGISTRO_SENHA).

import argparse
import datetime
import errno
import getpass
import hashlib
import ipaddress
import os
import pathlib
import secrets
import socket
import ssl
import subprocess
import sys
import tempfile
import time

import grpc
from google.protobuf import descriptor_pb2, descriptor_pool, message_factory

CONTRATO = 1
PACOTE = "registro.v1"
TENTATIVAS = 5
# After which the same is asked again: it is reading.
DE_NOVO = (grpc.StatusCode.UNAVAILABLE, grpc.StatusCode.DEADLINE_EXCEEDED, grpc.StatusCode.CANCELLED,
           grpc.StatusCode.ABORTED, grpc.StatusCode.RESOURCE_EXHAUSTED)
DIA_ZERO = datetime.date(1899, 12, 30)


# What the system answers, in the words of the person.
MOTIVOS = {
    errno.ENOENT: "não existe",
    errno.EACCES: "falta permissão",
    errno.EISDIR: "é um diretório",
    errno.ENOTDIR: "o caminho passa por um arquivo",
    errno.EEXIST: "o caminho passa por um arquivo",
    errno.EROFS: "o disco não aceita gravação",
    errno.ENOSPC: "o disco está cheio",
    errno.ECONNREFUSED: "ninguém atende lá",
    errno.ECONNRESET: "a conexão caiu",
    errno.ETIMEDOUT: "não respondeu a tempo",
    errno.EHOSTUNREACH: "não há caminho até lá",
    errno.ENETUNREACH: "não há caminho até lá",
}
# And what the options' library says of them.
PALAVRAS = {
    "usage: ": "uso: ",
    "options": "opções",
    "show this help message and exit": "mostra esta ajuda e termina",
    "%(prog)s: error: %(message)s\n": "%(prog)s: %(message)s.\n",
    "argument %(argument_name)s: %(message)s": "%(argument_name)s: %(message)s",
    "the following arguments are required: %s": "falta informar %s",
    "unrecognized arguments: %s": "não há a opção %s",
    "expected one argument": "falta o valor",
    "ignored explicit argument %r": "não leva o valor %r",
}


class Recusa(Exception):
    """What the person is told instead of an answer."""


class Contrato:
    """The messages and operations of the .proto."""

    def __init__(self, arquivo):
        with tempfile.TemporaryDirectory() as pasta:
            descrito = pathlib.Path(pasta, "contrato")
            comando = ["protoc", "-I", str(arquivo.parent), "--include_imports",
                       f"--descriptor_set_out={descrito}", arquivo.name]
            try:
                feito = subprocess.run(comando, capture_output=True, text=True, check=False)
            except FileNotFoundError:
                raise Recusa("Falta o programa protoc: instale o pacote protobuf-compiler.") from None
            if feito.returncode != 0:
                porque = "não é o do registro" if arquivo.exists() else MOTIVOS[errno.ENOENT]
                raise Recusa(f"O contrato {arquivo} não pôde ser lido: {porque}.")
            arquivos = descriptor_pb2.FileDescriptorSet.FromString(descrito.read_bytes())
        self.tipos = descriptor_pool.DescriptorPool()
        for descricao in arquivos.file:
            self.tipos.Add(descricao)
        self.fabrica = message_factory.MessageFactory(self.tipos)

    def mensagem(self, nome, **campos):
        return self.fabrica.GetPrototype(self.tipos.FindMessageTypeByName(f"{PACOTE}.{nome}"))(**campos)

    def operacao(self, servico, metodo):
        descricao = self.tipos.FindServiceByName(f"{PACOTE}.{servico}").FindMethodByName(metodo)
        return f"/{PACOTE}.{servico}/{metodo}", self.fabrica.GetPrototype(descricao.output_type).FromString


class Registro:
    """A session with the server."""

    def __init__(self, contrato, canal):
        self.contrato = contrato
        self.canal = canal
        self.chave = None

    def chama(self, servico, metodo, pedido, de_novo=DE_NOVO):
        caminho, le = self.contrato.operacao(servico, metodo)
        chamada = self.canal.unary_unary(caminho, type(pedido).SerializeToString, le)
        return self._insiste(lambda: chamada(pedido, metadata=self._metadados(), timeout=20), de_novo)

    def le_documento(self, numero):
        caminho, le = self.contrato.operacao("Documentos", "Le")
        chamada = self.canal.unary_stream(caminho, lambda pedido: pedido.SerializeToString(), le)
        octetos = bytearray()
        prometido = {}

        def recebe():
            # After a cut it goes on where it stood.
            pedido = self.contrato.mensagem("PedidoDeDocumento", Numero=numero, APartirDe=len(octetos))
            for ordem, pedaco in enumerate(chamada(pedido, metadata=self._metadados(), timeout=300)):
                if ordem == 0:
                    prometido.update(tamanho=pedaco.Tamanho, soma=pedaco.Sha256)
                octetos.extend(pedaco.Octetos)

        self._insiste(recebe)
        if len(octetos) != prometido.get("tamanho") or hashlib.sha256(octetos).hexdigest() != prometido["soma"]:
            raise Recusa("O certificado chegou danificado. Tente de novo.")
        return bytes(octetos)

    def entra(self, usuario, senha, estacao):
        servidor = self.chama("Entrada", "Apresenta", self.contrato.mensagem(
            "Apresentacao", Contrato=CONTRATO, ContratoMinimo=CONTRATO, Programa="consulta_afericao"))
        if not servidor.ContratoMinimo <= CONTRATO <= servidor.Contrato:
            raise Recusa(f"O servidor fala as versões {servidor.ContratoMinimo} a {servidor.Contrato} do contrato, e "
                         f"este programa fala a versão {CONTRATO}.")
        # Each sign-in that reached the server counts as a try: without an answer it is left at that.
        sessao = self.chama("Entrada", "Entra", self.contrato.mensagem(
            "PedidoDeEntrada", Usuario=usuario, Senha=senha.encode(), Estacao=estacao, Contrato=CONTRATO),
            de_novo=(grpc.StatusCode.RESOURCE_EXHAUSTED,))
        if sessao.Recusa:
            raise Recusa(sessao.Recusa)
        self.chave = sessao.Chave
        if sessao.DeveTrocarSenha:
            raise Recusa("A senha precisa ser trocada antes, na mesa do registro.")

    def sai(self):
        if self.chave:
            try:
                self.chama("Entrada", "Sai", self.contrato.mensagem("Vazio"))
            except Recusa:
                pass  # the server ends it by itself after a while

    def equipamento(self, codigo):
        achados = []
        proximo = 0
        while True:
            lista = self.chama("EquiptoRN", "lista2", self.contrato.mensagem(
                "ListaEquiptoED", Codigo=codigo, ProxNroIntEquip=proximo))
            achados += [um for um in lista.Equipamentos.Itens if um.Codigo.casefold() == codigo.casefold()]
            proximo = lista.ProxNroIntEquip
            if proximo < 1:
                break
        if not achados:
            raise Recusa(f"Não há equipamento de código {codigo} no cliente deste usuário.")
        if len(achados) > 1:
            raise Recusa(f"Há {len(achados)} equipamentos de código {codigo}.")
        return achados[0]

    def vigente(self, equipamento, dia):
        return self.chama("EquiptoRN", "consultaSimplesAfericaoVigente", self.contrato.mensagem(
            "ConsultaAfericaoED", NroIntEquip=equipamento.NroIntEquip, TipoConsulta=1, DtInfracao=numero_do_dia(dia)))

    def que_cobrem(self, equipamento, dia):
        # Each with a certificate, and the day in its period: none where there is a gap, several where they conflict.
        inteiro = self.chama("EquiptoRN", "consulta", self.contrato.mensagem(
            "EquiptoED", NroIntEquip=equipamento.NroIntEquip))
        numero = int(numero_do_dia(dia))
        return [um for sensor in inteiro.Sensores.Itens for um in sensor.Afericoes.Itens
                if um.Ativo == 1 and um.NroIntImgCertif and int(um.DataVerificacao) <= numero <= int(um.DataVencimento)]

    def _metadados(self):
        return (("sessao", self.chave),) if self.chave else ()

    @staticmethod
    def _insiste(tenta, de_novo=DE_NOVO):
        for falta in reversed(range(TENTATIVAS)):
            try:
                return tenta()
            except grpc.RpcError as erro:
                if erro.code() not in de_novo or not falta:
                    raise Recusa(em_palavras(erro)) from None
                time.sleep(0.2 * 2 ** (TENTATIVAS - 1 - falta))


def motivo(erro):
    if isinstance(erro, socket.gaierror):
        return "o nome não é conhecido"
    if isinstance(erro, ssl.SSLError):
        return "quem atende lá não mostra um certificado"
    if isinstance(erro, TimeoutError):
        return MOTIVOS[errno.ETIMEDOUT]
    return MOTIVOS.get(erro.errno, f"o sistema recusou (erro {erro.errno})")


def em_palavras(erro):
    if erro.code() == grpc.StatusCode.UNAUTHENTICATED and erro.details():
        return erro.details()  # before the call was taken in; the sentence is in the status itself
    for nome, valor in erro.trailing_metadata() or ():
        if nome == "frase-bin":
            return valor.decode("utf-8", "replace")
    return {
        grpc.StatusCode.UNAVAILABLE: "O servidor não respondeu.",
        grpc.StatusCode.DEADLINE_EXCEEDED: "O servidor não respondeu a tempo.",
        grpc.StatusCode.RESOURCE_EXHAUSTED: "O servidor está ocupado.",
        grpc.StatusCode.UNAUTHENTICATED: "A sessão com o servidor terminou.",
        grpc.StatusCode.UNIMPLEMENTED: "O servidor não tem essa operação: a versão dele é outra.",
    }.get(erro.code(), f"A operação falhou no servidor ({erro.code().name}).")


def numero_do_dia(dia):
    return float((dia - DIA_ZERO).days)


def texto_do_dia(numero):
    return (DIA_ZERO + datetime.timedelta(days=int(numero))).strftime("%d/%m/%Y")


def desta_maquina(maquina):
    try:
        return ipaddress.ip_address(maquina).is_loopback
    except ValueError:
        return maquina == "localhost"


def canal_para(servidor, digital, autoridade):
    maquina, _, porta = servidor.rpartition(":")
    if not maquina or not porta.isdigit():
        raise Recusa("Informe o servidor como máquina:porta.")
    maquina = maquina.strip("[]")
    if autoridade:
        try:
            raizes = pathlib.Path(autoridade).read_bytes()
        except OSError as erro:
            raise Recusa(f"O arquivo da autoridade {autoridade} não pôde ser lido: {motivo(erro)}.") from None
        return grpc.secure_channel(servidor, grpc.ssl_channel_credentials(raizes))
    if not digital:
        if not desta_maquina(maquina):
            raise Recusa("Informe a digital do certificado do servidor, ou o arquivo da autoridade que o emitiu.")
        return grpc.insecure_channel(servidor)
    # The certificate that is shown has to be the one whose fingerprint is known; then it alone is trusted.
    try:
        pem = ssl.get_server_certificate((maquina, int(porta)))
    except OSError as erro:
        raise Recusa(f"Não se chegou ao servidor {servidor}: {motivo(erro)}.") from None
    soma = hashlib.sha256(ssl.PEM_cert_to_DER_cert(pem)).hexdigest()
    if soma != digital.replace(":", "").lower():
        raise Recusa("O servidor não é o que se espera: o certificado que ele mostra é outro.")
    return grpc.secure_channel(servidor, grpc.ssl_channel_credentials(pem.encode()),
                               options=(("grpc.ssl_target_name_override", "localhost"),))


def desta_estacao(arquivo):
    # What tells this station from others has to be known to nobody else: whoever knows it can use up its user's tries.
    # So it is made by chance, once, and kept.
    try:
        if arquivo.exists():
            return arquivo.read_text(encoding="ascii").strip()
        arquivo.parent.mkdir(mode=0o700, parents=True, exist_ok=True)
        novo = arquivo.with_name(f"{arquivo.name}.{os.getpid()}")
        with open(os.open(novo, os.O_CREAT | os.O_EXCL | os.O_WRONLY, 0o600), "w", encoding="ascii") as aberto:
            aberto.write(secrets.token_hex(16))
        novo.replace(arquivo)
        return arquivo.read_text(encoding="ascii")
    except UnicodeDecodeError:
        raise Recusa(f"A identificação desta estação, em {arquivo}, está estragada: apague o arquivo.") from None
    except OSError as erro:
        raise Recusa(f"A identificação desta estação não pôde ser guardada em {arquivo}: {motivo(erro)}.") from None


def contrato_padrao():
    # Installed, it stands beside this program; in the sources, where the server's is.
    aqui = pathlib.Path(__file__).resolve().parent
    lugares = [aqui / "registro.proto", *(pasta / "server/proto/registro.proto" for pasta in aqui.parents)]
    return next((um for um in lugares if um.exists()), lugares[0])


def dia_do_texto(texto):
    try:
        return datetime.datetime.strptime(texto, "%d/%m/%Y").date()
    except ValueError:
        raise argparse.ArgumentTypeError("informe o dia como dd/mm/aaaa") from None


def grava(caminho, octetos):
    # Whole or not at all.
    novo = caminho.with_name(caminho.name + ".novo")
    try:
        novo.write_bytes(octetos)
        novo.replace(caminho)
    except OSError as erro:
        novo.unlink(missing_ok=True)
        raise Recusa(f"O certificado não pôde ser gravado em {caminho}: {motivo(erro)}.") from None


def consulta(opcoes):
    senha = os.environ.get("REGISTRO_SENHA") or getpass.getpass("Senha: ")
    contrato = Contrato(pathlib.Path(opcoes.contrato))
    with canal_para(opcoes.servidor, opcoes.digital, opcoes.autoridade) as canal:
        registro = Registro(contrato, canal)
        try:
            registro.entra(opcoes.usuario, senha, desta_estacao(pathlib.Path(opcoes.estacao)))
            equipamento = registro.equipamento(opcoes.equipamento)
            afericao = registro.vigente(equipamento, opcoes.dia)
            dia = opcoes.dia.strftime("%d/%m/%Y")
            if afericao.NroIntAfericao == 0:
                cobrem = registro.que_cobrem(equipamento, opcoes.dia)
                if len(cobrem) > 1:
                    raise Recusa(f"Em {dia}, o equipamento {equipamento.Codigo} tinha {len(cobrem)} aferições, e nenhuma "
                                 f"é a vigente: {', '.join(um.Numero for um in cobrem)}.")
                raise Recusa(f"Em {dia}, o equipamento {equipamento.Codigo} não tinha uma aferição vigente.")
            print(f"Em {dia}, a aferição vigente do equipamento {equipamento.Codigo} era a de número "
                  f"{afericao.Numero}, certificado {afericao.Marca}, de {texto_do_dia(afericao.DataVerificacao)} a "
                  f"{texto_do_dia(afericao.DataVencimento)}.")
            if not opcoes.saida:
                return
            if afericao.NroIntImgCertif == 0:
                raise Recusa("Essa aferição não tem o documento do certificado.")
            octetos = registro.le_documento(afericao.NroIntImgCertif)
            grava(pathlib.Path(opcoes.saida), octetos)
            print(f"Certificado gravado em {opcoes.saida} ({len(octetos)} octetos).")
        finally:
            registro.sai()


def main():
    guardado = pathlib.Path(os.environ.get("XDG_CONFIG_HOME") or pathlib.Path.home() / ".config")
    argparse._ = lambda texto: PALAVRAS.get(texto, texto)  # the library asks for all its words there
    opcoes = argparse.ArgumentParser(description="Que aferição de um equipamento era vigente num dia.",
                                     allow_abbrev=False)
    opcoes.add_argument("--servidor", required=True, help="máquina:porta")
    opcoes.add_argument("--digital", help="digital (SHA-256) do certificado do servidor")
    opcoes.add_argument("--autoridade", help="arquivo da autoridade que emitiu o certificado do servidor")
    opcoes.add_argument("--usuario", required=True)
    opcoes.add_argument("--equipamento", required=True, help="código do equipamento")
    opcoes.add_argument("--dia", required=True, type=dia_do_texto, help="dd/mm/aaaa")
    opcoes.add_argument("--saida", help="arquivo em que o certificado é gravado")
    opcoes.add_argument("--contrato", default=contrato_padrao(), help="arquivo do contrato")
    opcoes.add_argument("--estacao", default=guardado / "registro-de-equipamentos" / "estacao-da-consulta",
                        help="arquivo que guarda a identificação desta estação")
    try:
        consulta(opcoes.parse_args())
    except Recusa as recusa:
        print(recusa, file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
