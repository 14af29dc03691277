#include "services/Cabeca.h"

#include "host/Conversoes.h"
#include "services/Banco.h"
#include "services/Calendario.h"
#include "services/ErroSql.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/LeitorSQLite.h"
#include "services/LigacaoPostgres.h"
#include "services/TextoQt.h"
#include "services/Transporte.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QUuid>

#include <qrcodegen.hpp>
#include <sodium.h>

#include <unistd.h>

#include <algorithm>
#include <array>

namespace mesa {

namespace {

constexpr qint64 MaiorTexto = 4096;
constexpr qsizetype DigitosDoElo = 64;
constexpr const char *Titulo = "Registro de equipamentos: cabeca do historico";
constexpr const char *VersaoDoTexto = "1";

[[noreturn]] void Recusa(const std::string &frase)
{
    throw Falha(NumeroFalha::ArgumentoInvalido, "Cabeca", frase);
}

// Everything but the signature, which is over it.
QString Assinado(const CabecaAssinada &cabeca)
{
    return QStringList{Titulo,
                       QString("versao: ") + VersaoDoTexto,
                       "registro: " + Q(cabeca.Registro),
                       "entradas: " + Q(CStr(cabeca.Tamanho)),
                       "elo: " + Q(cabeca.Elo),
                       "momento: " + Q(CStr(cabeca.Quando)),
                       "chave: " + Q(cabeca.ChavePublica),
                       ""}
        .join("\n");
}

bool EhHexadecimal(const QString &texto, qsizetype digitos)
{
    return texto.size() == digitos && std::all_of(texto.begin(), texto.end(), [](QChar letra) {
               return (letra >= '0' && letra <= '9') || (letra >= 'a' && letra <= 'f');
           });
}

QByteArray Octetos(const std::string &hexadecimal)
{
    return QByteArray::fromHex(QByteArray::fromStdString(hexadecimal));
}

const unsigned char *SemSinal(const QByteArray &octetos)
{
    return reinterpret_cast<const unsigned char *>(octetos.constData());
}

// What the line says under that name.
QString Campo(const QStringList &linhas, int qual, const QString &nome)
{
    const QString comeco = nome + ": ";
    if (!linhas[qual].startsWith(comeco)) {
        Recusa("O texto da cabeça está incompleto ou foi alterado: a linha " + CStr(qual + 1) +
               " deveria começar por \"" + S(comeco.trimmed()) + "\".");
    }
    return linhas[qual].mid(comeco.size());
}

// A number as it is written here, and no other way: without sign, blanks or zeros in front.
std::int64_t Numero(const QString &texto, const std::string &oQue)
{
    bool lido = false;
    const qlonglong numero = texto.toLongLong(&lido);
    if (!lido || numero < 1 || QString::number(numero) != texto) {
        Recusa("O texto da cabeça foi alterado: " + oQue + " não é um número válido.");
    }
    return numero;
}

// The registry and the end of its history, of one moment; its secret key.
QByteArray FimNoArquivo(const std::string &registro, CabecaAssinada &cabeca)
{
    LeitorSQLite leitor(registro, false);
    QByteArray secreta;
    {
        LinhasLidas linha(leitor, "SELECT Identificador, ChavePublica, ChaveSecreta FROM REGISTRO");
        if (linha.Proxima()) {
            cabeca.Registro = linha.Texto(0);
            cabeca.ChavePublica = linha.Texto(1);
            secreta = Octetos(linha.Texto(2));
        }
    }
    LinhasLidas ultima(leitor, "SELECT Nro, Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1");
    if (ultima.Proxima()) {
        cabeca.Tamanho = ultima.Inteiro(0);
        cabeca.Elo = ultima.Texto(1);
    }
    return secreta;
}

QByteArray FimNoServidor(const std::string &registro, CabecaAssinada &cabeca)
{
    LigacaoPostgres ligacao(registro);
    Transporte::ExigeRegistro(ligacao);
    QByteArray secreta;
    for (const auto &linha : ligacao.Linhas(
             "SELECT r.Identificador, r.ChavePublica, r.ChaveSecreta, h.Nro, h.Elo FROM REGISTRO r, HISTORICO h "
             "ORDER BY h.Nro DESC LIMIT 1")) {
        cabeca.Registro = linha[0].value_or("");
        cabeca.ChavePublica = linha[1].value_or("");
        secreta = Octetos(linha[2].value_or(""));
        cabeca.Tamanho = std::stoll(linha[3].value_or("0"));
        cabeca.Elo = linha[4].value_or("");
    }
    return secreta;
}

// secreta: is wiped.
CabecaAssinada Assinada(CabecaAssinada cabeca, QByteArray &secreta, const Instante &agora)
{
    if (secreta.size() != crypto_sign_SECRETKEYBYTES || cabeca.Tamanho == 0 || sodium_init() < 0) {
        Recusa("O registro não tem do que exportar a cabeça: confira-o.");
    }
    cabeca.Quando = agora.Utc();
    const QByteArray texto = Assinado(cabeca).toUtf8();
    std::array<unsigned char, crypto_sign_BYTES> assinatura{};
    crypto_sign_detached(assinatura.data(), nullptr, SemSinal(texto), static_cast<unsigned long long>(texto.size()),
                         SemSinal(secreta));
    sodium_memzero(secreta.data(), static_cast<std::size_t>(secreta.size()));
    cabeca.Assinatura =
        QByteArray(reinterpret_cast<const char *>(assinatura.data()), assinatura.size()).toHex().toStdString();
    if (!cabeca.AssinaturaVale()) {
        Recusa("As chaves do registro não servem uma à outra: confira-o.");
    }
    return cabeca;
}

[[noreturn]] void NaoGravou(const std::string &caminho, const QString &porque)
{
    throw Falha(NumeroFalha::ErroDeAcesso, "Cabeca",
                "A cabeça do histórico não pôde ser gravada em " + caminho + " (" + S(porque) + ").");
}

} // namespace

bool CabecaAssinada::AssinaturaVale() const
{
    const QByteArray texto = Assinado(*this).toUtf8();
    const QByteArray assinatura = Octetos(Assinatura);
    const QByteArray chave = Octetos(ChavePublica);
    return sodium_init() >= 0 && assinatura.size() == crypto_sign_BYTES && chave.size() == crypto_sign_PUBLICKEYBYTES &&
           crypto_sign_verify_detached(SemSinal(assinatura), SemSinal(texto),
                                       static_cast<unsigned long long>(texto.size()), SemSinal(chave)) == 0;
}

std::string CabecaAssinada::Texto() const
{
    return S(Assinado(*this)) + "assinatura: " + Assinatura + "\n";
}

CabecaAssinada CabecaAssinada::Le(const std::string &texto)
{
    if (texto.size() > MaiorTexto) {
        Recusa("O texto é longo demais para ser uma cabeça do histórico.");
    }
    QString lido = QString::fromStdString(texto);
    lido.replace("\r\n", "\n"); // as some programs end their lines
    if (lido.endsWith('\n')) {
        lido.chop(1);
    }
    const QStringList linhas = lido.split('\n');
    if (linhas.front() != Titulo) {
        Recusa("O texto não é uma cabeça do histórico: a sua primeira linha é outra.");
    }
    if (linhas.size() < 2 || Campo(linhas, 1, "versao") != VersaoDoTexto) {
        Recusa("A cabeça é de uma forma que este programa não conhece: atualize o programa.");
    }
    if (linhas.size() != 8) {
        Recusa("O texto da cabeça está incompleto ou tem linhas a mais: tem " + CStr(linhas.size()) +
               " linhas em vez de 8.");
    }
    CabecaAssinada cabeca;
    const QString registro = Campo(linhas, 2, "registro");
    if (QUuid(registro).toString(QUuid::WithoutBraces) != registro) {
        Recusa("O texto da cabeça foi alterado: o identificador do registro não é válido.");
    }
    cabeca.Registro = S(registro);
    cabeca.Tamanho = Numero(Campo(linhas, 3, "entradas"), "a quantidade de entradas");
    const auto hexadecimal = [&](int linha, const char *nome, qsizetype digitos, const std::string &oQue) {
        const QString valor = Campo(linhas, linha, nome);
        if (!EhHexadecimal(valor, digitos)) {
            Recusa("O texto da cabeça foi alterado: " + oQue + " não tem " + CStr(digitos) +
                   " algarismos hexadecimais.");
        }
        return S(valor);
    };
    cabeca.Elo = hexadecimal(4, "elo", DigitosDoElo, "o elo");
    cabeca.Quando = Numero(Campo(linhas, 5, "momento"), "o momento");
    if (!Esquema::Acha("HISTORICO")->Acha("Quando")->Recusa(qlonglong(cabeca.Quando)).empty()) {
        Recusa("O texto da cabeça foi alterado: o momento não existe no calendário.");
    }
    cabeca.ChavePublica = hexadecimal(6, "chave", qsizetype{2} * crypto_sign_PUBLICKEYBYTES, "a chave");
    if (linhas[7] == "assinatura: ") {
        Recusa("A cabeça não está assinada.");
    }
    cabeca.Assinatura = hexadecimal(7, "assinatura", qsizetype{2} * crypto_sign_BYTES, "a assinatura");
    return cabeca;
}

CabecaAssinada CabecaAssinada::LeArquivo(const std::string &caminho)
{
    QFile arquivo(Q(caminho));
    if (!arquivo.open(QIODevice::ReadOnly)) {
        throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Cabeca",
                    "A cabeça do histórico não pôde ser lida de " + caminho + " (" + S(arquivo.errorString()) + ").");
    }
    return Le(arquivo.read(MaiorTexto + 1).toStdString());
}

CodigoQR CodigoQR::De(const std::string &texto)
{
    using qrcodegen::QrCode;
    const QrCode codigo = QrCode::encodeText(texto.c_str(), QrCode::Ecc::MEDIUM);
    CodigoQR pontos;
    pontos.Lado = codigo.getSize();
    for (int y = 0; y < pontos.Lado; ++y) {
        for (int x = 0; x < pontos.Lado; ++x) {
            pontos.Pontos.push_back(codigo.getModule(x, y));
        }
    }
    return pontos;
}

CabecaAssinada ExportacaoDeCabeca::Le(const std::string &registro, const Instante &agora)
try {
    CabecaAssinada cabeca;
    QByteArray secreta = EhDeServidor(registro) ? FimNoServidor(registro, cabeca) : FimNoArquivo(registro, cabeca);
    return Assinada(cabeca, secreta, agora);
} catch (const ErroDeLeitura &erro) {
    throw ErroSql(MotivoSql::Danificado, erro.what());
}

CabecaAssinada ExportacaoDeCabeca::Le(Banco &banco, const Instante &agora)
{
    CabecaAssinada cabeca;
    QByteArray secreta;
    {
        Consulta linha(banco, "SELECT Identificador, ChavePublica, ChaveSecreta FROM REGISTRO");
        if (linha.Proxima()) {
            cabeca.Registro = linha.Texto(0);
            cabeca.ChavePublica = linha.Texto(1);
            secreta = Octetos(linha.Texto(2));
        }
    }
    const Historico::Cabeca fim = Historico(banco).Fim();
    cabeca.Tamanho = fim.Tamanho;
    cabeca.Elo = fim.Elo;
    return Assinada(cabeca, secreta, agora);
}

void ExportacaoDeCabeca::Grava(const CabecaAssinada &cabeca, const std::string &caminho)
{
    QFile arquivo(Q(caminho));
    if (!arquivo.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        NaoGravou(caminho, arquivo.exists() ? "já existe um arquivo com esse nome" : arquivo.errorString());
    }
    const QByteArray texto = QByteArray::fromStdString(cabeca.Texto());
    if (arquivo.write(texto) != texto.size() || !arquivo.flush() || ::fsync(arquivo.handle()) != 0) {
        const QString porque = arquivo.errorString();
        arquivo.remove();
        NaoGravou(caminho, porque);
    }
}

std::string ExportacaoDeCabeca::ExportaSeDevida(const std::string &registro, const std::string &diretorio,
                                                const Instante &agora)
{
    // An absent directory may be a medium that is not there just now: nothing is made in its place.
    if (!QFileInfo(Q(diretorio)).isDir()) {
        throw Falha(NumeroFalha::CaminhoNaoEncontrado, "Cabeca",
                    "A pasta " + diretorio + ", para as cabeças do histórico, não foi encontrada.");
    }
    const CabecaAssinada cabeca = Le(registro, agora);
    const std::string dia = CStr(Momento(agora.Local) / 1000000);
    const std::string caminho = diretorio + "/cabeca." + dia + "." + cabeca.Registro.substr(0, 8) + ".txt";
    if (QFileInfo::exists(Q(caminho))) {
        return "";
    }
    Grava(cabeca, caminho);
    return caminho;
}

} // namespace mesa
