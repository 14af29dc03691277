#include "services/PalavrasDaConferencia.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/Calendario.h"
#include "services/NomesCampos.h"
#include "services/TextoQt.h"

#include <QJsonDocument>

#include <algorithm>
#include <cctype>
#include <map>
#include <utility>

namespace mesa {

namespace {

constexpr qsizetype MaisLetras = 60; // of a value, in a sentence

// Columns that mean something else in their table than elsewhere, or stand in no form.
const std::map<std::pair<std::string_view, std::string_view>, std::string_view> NomesNaTabela = {
    {{"USUARIO", "Numero"}, "número"},
    {{"PERMISSAO", "Numero"}, "usuário"},
    {{"ESTACAO", "Numero"}, "usuário"},
    {{"ENTRADA_RECUSADA", "Numero"}, "usuário"},
    {{"AFERICAO", "Marca"}, "certificado ou declaração"},
};
const std::map<std::string_view, std::string_view> NomesDoServico = {
    {"Acao", "ação"},
    {"Ativo", "ativo"},
    {"Bairro", "bairro"},
    {"Cep", "CEP"},
    {"Chave", "nome de entrada"},
    {"ChavePublica", "chave pública"},
    {"ChaveSecreta", "chave secreta"},
    {"ClienteTrans", "cliente de quem alterou"},
    {"CodCliente", "código do cliente"},
    {"CodigoBusca", "código para busca"},
    {"CodigoChave", "código sem distinção de letras"},
    {"Conteudo", "conteúdo"},
    {"CriadoEm", "momento da criação"},
    {"DataTrans", "data da alteração"},
    {"Estacao", "estação"},
    {"Fuso", "fuso"},
    {"HoraTrans", "hora da alteração"},
    {"Identificador", "identificador"},
    {"Nome", "nome"},
    {"NomeBusca", "nome para busca"},
    {"NroDocumento", "número"},
    {"NroInt", "número interno"},
    {"NroIntAfericao", "número interno"},
    {"NroIntEquip", "equipamento"},
    {"NroIntSensor", "sensor"},
    {"Objeto", "objeto"},
    {"Operador", "operador"},
    {"OperadorTrans", "operador que alterou"},
    {"Quando", "momento"},
    {"Senha", "senha"},
    {"Setor", "setor"},
    {"Sha256", "soma SHA-256"},
    {"Sistema", "sistema"},
    {"SubCodigoBusca", "subcódigo para busca"},
    {"Tamanho", "tamanho"},
    {"Tipo", "tipo"},
    {"TipoLimite", "tipo de limite"},
    {"TrabFoto", "trabalho com fotos"},
    {"TrocaSenha", "troca de senha"},
    {"UF", "estado"},
    {"Usuario", "usuário"},
    {"Versao", "versão"},
};

std::string Texto(const QJsonObject &retrato, const char *membro)
{
    return S(retrato.value(QString::fromUtf8(membro)).toString());
}

std::int64_t Inteiro(const QJsonObject &retrato, const char *membro)
{
    return retrato.value(QString::fromUtf8(membro)).toInteger();
}

std::string NumeroInterno(const std::string &oQue, std::int64_t chave)
{
    return oQue + " de número interno " + CStr(chave);
}

// "o cliente X", or what is known of it without a name.
std::string ComNome(const std::string &oQue, const std::string &nome, std::int64_t chave)
{
    return nome.empty() ? NumeroInterno(oQue, chave) : oQue + " " + nome;
}

} // namespace

QString PalavrasDaConferencia::ColunasDaEntrada()
{
    return "Nro, Quando, Fuso, Operador, Acao, Antes, Depois";
}

EntradaLida PalavrasDaConferencia::LeEntrada(const LinhasLidas &linhas, int primeira)
{
    return {linhas.Inteiro(primeira),   linhas.Valor(primeira + 1), linhas.Valor(primeira + 2),
            linhas.Valor(primeira + 3), linhas.Texto(primeira + 4), linhas.Valor(primeira + 5),
            linhas.Texto(primeira + 6)};
}

EntradaLida PalavrasDaConferencia::Ultima(std::string_view entidade, std::int64_t chave)
{
    LinhasLidas linhas(m_Leitor,
                       "SELECT " + ColunasDaEntrada() +
                           " FROM HISTORICO WHERE Entidade = ? AND NroEntidade = ? ORDER BY Nro DESC LIMIT 1",
                       {Q(std::string(entidade)), qlonglong(chave)});
    return linhas.Proxima() ? LeEntrada(linhas, 0) : EntradaLida{};
}

QJsonObject PalavrasDaConferencia::Objeto(const std::string &texto)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(texto)).object();
}

// A history that cannot be read names nothing, and is told by itself.
QJsonObject PalavrasDaConferencia::Retrato(std::string_view entidade, std::int64_t chave)
{
    try {
        return Objeto(Ultima(entidade, chave).Depois);
    } catch (const ErroDeLeitura &) {
        return {};
    }
}

std::string PalavrasDaConferencia::DoEquipamento(const QJsonObject &parte)
{
    const std::int64_t numero = Inteiro(parte, "NroIntEquip");
    return ComNome("equipamento", Texto(Retrato("EQUIPAMENTO", numero), "Codigo"), numero);
}

std::string PalavrasDaConferencia::DoUsuario(const QJsonObject &parte)
{
    const std::int64_t numero = Inteiro(parte, "Numero");
    return ComNome("usuário", Texto(Retrato("USUARIO", numero), "Usuario"), numero);
}

std::string PalavrasDaConferencia::Linha(std::string_view tabela, std::int64_t chave)
{
    const QJsonObject retrato = Retrato(tabela, chave);
    if (tabela == "REGISTRO") {
        return "a identidade do registro";
    }
    if (tabela == "CLIENTE") {
        return ComNome("o cliente", Texto(retrato, "Nome"), chave);
    }
    if (tabela == "SETOR") {
        return ComNome("o setor", Texto(retrato, "Nome"), chave);
    }
    if (tabela == "USUARIO") {
        return ComNome("o usuário", Texto(retrato, "Usuario"), chave);
    }
    if (tabela == "LAYOUT") {
        return ComNome("o layout", Texto(retrato, "Nome"), chave);
    }
    if (tabela == "EQUIPAMENTO") {
        return ComNome("o equipamento", Texto(retrato, "Codigo"), chave);
    }
    if (tabela == "DOCUMENTO") {
        return "o documento " + CStr(chave);
    }
    if (tabela == "LOGRADOURO") {
        return "o logradouro " + CStr(chave) + (retrato.isEmpty() ? "" : " (" + Texto(retrato, "Nome") + ")");
    }
    if (tabela == "PERMISSAO" || tabela == "ESTACAO") {
        const std::string qual = (tabela == "PERMISSAO" ? "a permissão " : "a estação ") + CStr(chave);
        return retrato.isEmpty() ? qual : qual + " do " + DoUsuario(retrato);
    }
    if (tabela == "SENSOR") {
        return retrato.isEmpty() ? NumeroInterno("o sensor", chave)
                                 : "o sensor " + CStr(Inteiro(retrato, "NroSensor")) + " do " + DoEquipamento(retrato);
    }
    if (tabela == "AFERICAO") {
        const std::string qual = ComNome("a aferição", Texto(retrato, "Numero"), chave);
        const QJsonObject sensor = Retrato("SENSOR", Inteiro(retrato, "NroIntSensor"));
        return sensor.isEmpty()
                   ? qual
                   : qual + " (sensor " + CStr(Inteiro(sensor, "NroSensor")) + " do " + DoEquipamento(sensor) + ")";
    }
    if (tabela == "LIMITE" || tabela == "DIA") {
        const std::string qual = NumeroInterno(tabela == "DIA"                       ? "o dia específico"
                                               : Inteiro(retrato, "TipoLimite") == 2 ? "o horário proibido"
                                                                                     : "o limite diferenciado",
                                               chave);
        return retrato.isEmpty() ? qual : qual + " do " + DoEquipamento(retrato);
    }
    return "a linha " + CStr(chave) + " de " + std::string(tabela);
}

std::string PalavrasDaConferencia::Coluna(std::string_view tabela, std::string_view coluna)
{
    const auto naTabela = NomesNaTabela.find({tabela, coluna});
    if (naTabela != NomesNaTabela.end()) {
        return std::string(naTabela->second);
    }
    const auto doServico = NomesDoServico.find(coluna);
    return doServico != NomesDoServico.end() ? std::string(doServico->second) : NomeDoCampo(coluna);
}

std::string PalavrasDaConferencia::Valor(const Esquema::Coluna &coluna, const QJsonValue &valor)
{
    if (valor.isUndefined() || valor.isNull() || (coluna.Tipo != Esquema::Forma::Texto && valor == QString())) {
        return "nada";
    }
    if (!valor.isDouble()) {
        const QString texto = valor.isString() ? valor.toString() : valor.toVariant().toString();
        return S("\"" + (texto.size() > MaisLetras ? texto.first(MaisLetras) + "..." : texto) + "\"");
    }
    const std::int64_t numero = valor.toInteger();
    if (!coluna.Recusa(qlonglong(numero)).empty()) {
        return CStr(numero);
    }
    switch (coluna.Tipo) {
    case Esquema::Forma::SimNao:
        return numero == 1 ? "sim" : "não";
    case Esquema::Forma::Dia:
        return TextoDoDia(static_cast<std::int32_t>(numero));
    case Esquema::Forma::Momento:
        return TextoDoMomento(numero);
    case Esquema::Forma::Hora:
        return TextoDaHora(static_cast<std::int32_t>(numero));
    default:
        return CStr(numero);
    }
}

std::string PalavrasDaConferencia::Autor(const EntradaLida &entrada)
{
    std::string quem = "pelo próprio sistema";
    if (!entrada.Operador.isNull()) {
        const std::int64_t numero = entrada.Operador.toLongLong();
        const std::string nome = Texto(Retrato("USUARIO", numero), "Nome");
        quem = "por " + (nome.empty() ? NumeroInterno("usuário", numero) : nome);
    }
    const Esquema::Coluna &quando = *Esquema::Acha("HISTORICO")->Acha("Quando");
    const Esquema::Coluna &fuso = *Esquema::Acha("HISTORICO")->Acha("Fuso");
    if (!quando.Recusa(entrada.Quando).empty() || !fuso.Recusa(entrada.Fuso).empty()) {
        return quem + " em um momento que não se lê";
    }
    try {
        return quem + " em " + TextoDoMomento(MaisMinutos(entrada.Quando.toLongLong(), entrada.Fuso.toInt()));
    } catch (const Falha &) { // past the calendar's last day
        return quem + " em " + TextoDoMomento(entrada.Quando.toLongLong()) + " (UTC)";
    }
}

std::string ComecoDeFrase(std::string texto)
{
    if (!texto.empty()) {
        texto.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(texto.front())));
    }
    return texto;
}

} // namespace mesa
