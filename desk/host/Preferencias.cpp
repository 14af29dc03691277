#include "desk/host/Preferencias.h"

#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <array>

namespace mesa {

namespace {

constexpr std::int32_t MinutosDeInicio = 15;
constexpr const char *Estacao = "estacao";
constexpr const char *AteTravar = "minutosAteTravar";
constexpr const char *ACopiaDiaria = "copiaDiaria";
constexpr const char *APastaDasCabecas = "pastaDasCabecas";
constexpr const char *OTema = "aspecto/tema";
constexpr const char *OTamanhoDoTexto = "aspecto/tamanhoDoTexto";
constexpr const char *AImpressora = "aspecto/impressora";
constexpr const char *LembrarUsuario = "entrada/lembraUsuario";
constexpr const char *NaoLembra = "não";
constexpr const char *Ultimos = "entrada/ultimos/";
constexpr std::array<const char *, 3> Temas = {"sistema", "claro", "escuro"};

// The links on the way are left as they are: one that leads nowhere today is the same directory tomorrow.
QString ChaveDo(const std::filesystem::path &diretorio)
{
    std::filesystem::path inteiro = std::filesystem::absolute(diretorio).lexically_normal();
    if (!inteiro.has_filename()) {
        inteiro = inteiro.parent_path();
    }
    return "registros/" + QString::fromLatin1(QUrl::toPercentEncoding(QFile::decodeName(inteiro.c_str())));
}

QString ChaveDo(const rede::Endereco &servidor)
{
    return "servidores/" + QString::fromLatin1(QUrl::toPercentEncoding(Q(servidor.Texto())));
}

} // namespace

Preferencias::Preferencias(const std::filesystem::path &arquivo)
    : m_Guardadas(QFile::decodeName(arquivo.c_str()), QSettings::IniFormat)
{
}

std::filesystem::path Preferencias::ArquivoDoUsuario()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QFile::encodeName(base + "/registro-de-equipamentos/preferencias.ini").toStdString();
}

void Preferencias::Grava(const QString &chave, const QString &valor)
{
    m_Guardadas.setValue(chave, valor);
    m_Guardadas.sync();
    if (m_Guardadas.status() != QSettings::NoError) {
        throw Falha(NumeroFalha::ErroDeAcesso, "Preferencias",
                    "As preferências do usuário não puderam ser gravadas em " + S(m_Guardadas.fileName()) +
                        ". Confira o espaço em disco e as permissões desse arquivo.");
    }
}

std::optional<RegistroConhecido> Preferencias::Registro(const std::filesystem::path &diretorio) const
{
    const QString chave = ChaveDo(diretorio);
    const QString caminho = m_Guardadas.value(chave + "/caminho").toString();
    if (caminho.isEmpty()) {
        return std::nullopt;
    }
    return RegistroConhecido{QFile::encodeName(caminho).toStdString(),
                             S(m_Guardadas.value(chave + "/identificador").toString())};
}

void Preferencias::LembraRegistro(const std::filesystem::path &diretorio, const RegistroConhecido &registro)
{
    const QString chave = ChaveDo(diretorio);
    const std::filesystem::path inteiro = std::filesystem::absolute(registro.Caminho).lexically_normal();
    Grava(chave + "/identificador", Q(registro.Identificador));
    Grava(chave + "/caminho", QFile::decodeName(inteiro.c_str()));
}

std::optional<rede::Endereco> Preferencias::Servidor(const std::filesystem::path &diretorio) const
{
    std::string recusa;
    return rede::Endereco::Le(Texto(ChaveDo(diretorio) + "/servidor"), recusa);
}

void Preferencias::LembraServidor(const std::filesystem::path &diretorio, const std::optional<rede::Endereco> &servidor)
{
    if (servidor || Servidor(diretorio)) {
        Grava(ChaveDo(diretorio) + "/servidor", servidor ? Q(servidor->Texto()) : QString());
    }
}

rede::Confianca Preferencias::Confianca(const rede::Endereco &servidor) const
{
    return {Texto(ChaveDo(servidor) + "/digital"), Texto(ChaveDo(servidor) + "/autoridade")};
}

void Preferencias::LembraConfianca(const rede::Endereco &servidor, const rede::Confianca &confianca)
{
    Grava(ChaveDo(servidor) + "/digital", Q(confianca.Digital));
    Grava(ChaveDo(servidor) + "/autoridade", Q(confianca.Autoridade));
}

std::string Preferencias::RegistroNo(const rede::Endereco &servidor) const
{
    return Texto(ChaveDo(servidor) + "/registro");
}

void Preferencias::LembraRegistroNo(const rede::Endereco &servidor, const std::string &identificador)
{
    Grava(ChaveDo(servidor) + "/registro", Q(identificador));
}

std::string Preferencias::Estacao()
{
    QString estacao = m_Guardadas.value(mesa::Estacao).toString();
    if (estacao.isEmpty()) {
        std::array<quint32, 4> acaso{};
        QRandomGenerator::system()->fillRange(acaso.data(), static_cast<qsizetype>(acaso.size()));
        estacao = QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(acaso.data()), sizeof(acaso)).toHex());
        Grava(mesa::Estacao, estacao);
    }
    return S(estacao);
}

std::int32_t Preferencias::MinutosAteTravar() const
{
    bool numero = false;
    const std::int32_t minutos = m_Guardadas.value(AteTravar, MinutosDeInicio).toInt(&numero);
    return numero ? std::clamp(minutos, 0, MaisMinutos) : MinutosDeInicio;
}

void Preferencias::DefineMinutosAteTravar(std::int32_t minutos)
{
    Grava(AteTravar, QString::number(std::clamp(minutos, 0, MaisMinutos)));
}

Aspecto Preferencias::Aspecto() const
{
    mesa::Aspecto aspecto;
    const auto tema = std::ranges::find(Temas, m_Guardadas.value(OTema).toString());
    if (tema != Temas.end()) {
        aspecto.Cores = static_cast<Tema>(tema - Temas.begin());
    }
    bool numero = false;
    const std::int32_t tamanho = m_Guardadas.value(OTamanhoDoTexto).toInt(&numero);
    if (numero) {
        aspecto.TamanhoDoTexto = std::clamp(tamanho, mesa::Aspecto::MenorTexto, mesa::Aspecto::MaiorTexto);
    }
    aspecto.Impressora = S(m_Guardadas.value(AImpressora).toString());
    return aspecto;
}

void Preferencias::DefineAspecto(const mesa::Aspecto &valor)
{
    Grava(OTema, Temas.at(static_cast<std::size_t>(valor.Cores)));
    Grava(OTamanhoDoTexto, QString::number(valor.TamanhoDoTexto));
    Grava(AImpressora, Q(valor.Impressora));
    m_MudouAspecto.dispara();
}

bool Preferencias::LembraUsuario() const
{
    return Texto(LembrarUsuario) != NaoLembra;
}

void Preferencias::DefineLembraUsuario(bool valor)
{
    GuardaTexto(LembrarUsuario, valor ? "" : NaoLembra);
    if (!valor) {
        EsqueceUsuarios();
    }
}

void Preferencias::EsqueceUsuarios()
{
    EsqueceTextos(Ultimos);
}

std::string Preferencias::UltimoUsuario(const std::string &identificador) const
{
    return Texto(Ultimos + Q(identificador));
}

void Preferencias::LembraUltimoUsuario(const std::string &identificador, const std::string &usuario)
{
    if (LembraUsuario()) {
        GuardaTexto(Ultimos + Q(identificador), usuario);
    }
}

std::string Preferencias::UltimaConferencia(const std::string &identificador) const
{
    return S(m_Guardadas.value("conferencias/" + Q(identificador)).toString());
}

void Preferencias::LembraConferencia(const std::string &identificador, const std::string &resultado)
{
    Grava("conferencias/" + Q(identificador), Q(resultado));
}

std::int32_t Preferencias::DiaConferido(const std::string &identificador) const
{
    return m_Guardadas.value("conferidos/" + Q(identificador)).toInt();
}

void Preferencias::LembraDiaConferido(const std::string &identificador, std::int32_t dia)
{
    Grava("conferidos/" + Q(identificador), QString::number(dia));
}

bool Preferencias::CopiaDiaria() const
{
    return m_Guardadas.value(ACopiaDiaria, true).toBool();
}

void Preferencias::DefineCopiaDiaria(bool valor)
{
    Grava(ACopiaDiaria, valor ? "true" : "false");
}

std::string Preferencias::PastaDasCabecas() const
{
    return S(m_Guardadas.value(APastaDasCabecas).toString());
}

void Preferencias::DefinePastaDasCabecas(const std::string &pasta)
{
    Grava(APastaDasCabecas, Q(pasta));
}

std::string Preferencias::Texto(const QString &chave) const
{
    return S(m_Guardadas.value(chave).toString());
}

void Preferencias::GuardaTexto(const QString &chave, const std::string &texto)
{
    if (texto.empty()) {
        m_Guardadas.remove(chave);
    } else {
        m_Guardadas.setValue(chave, Q(texto));
    }
}

void Preferencias::EsqueceTextos(const QString &comeco)
{
    for (const QString &chave : m_Guardadas.allKeys()) {
        if (chave.startsWith(comeco)) {
            m_Guardadas.remove(chave);
        }
    }
}

} // namespace mesa
