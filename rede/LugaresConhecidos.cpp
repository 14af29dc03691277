#include "rede/LugaresConhecidos.h"

#include "host/Falha.h"
#include "services/TextoQt.h"

#include <QFile>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QUrl>

#include <array>

namespace rede {

using mesa::Q;
using mesa::S;

namespace {

constexpr const char *NomeDoRegistro = "registro.db";
constexpr const char *ChaveDaEstacao = "estacao";

// The links on the way are left as they are: one that leads nowhere today is the same directory tomorrow.
QString ChaveDo(const std::filesystem::path &diretorio)
{
    std::filesystem::path inteiro = std::filesystem::absolute(diretorio).lexically_normal();
    if (!inteiro.has_filename()) {
        inteiro = inteiro.parent_path();
    }
    return "registros/" + QString::fromLatin1(QUrl::toPercentEncoding(QFile::decodeName(inteiro.c_str())));
}

QString ChaveDo(const Endereco &servidor)
{
    return "servidores/" + QString::fromLatin1(QUrl::toPercentEncoding(Q(servidor.Texto())));
}

} // namespace

LugaresConhecidos::LugaresConhecidos(const std::filesystem::path &arquivo)
    : m_Guardadas(QFile::decodeName(arquivo.c_str()), QSettings::IniFormat)
{
}

std::filesystem::path LugaresConhecidos::ArquivoDoUsuario()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QFile::encodeName(base + "/registro-de-equipamentos/preferencias.ini").toStdString();
}

std::filesystem::path LugaresConhecidos::DiretorioPadrao()
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QFile::encodeName(base + "/registro-de-equipamentos").toStdString();
}

void LugaresConhecidos::Grava(const QString &chave, const QString &valor)
{
    m_Guardadas.setValue(chave, valor);
    m_Guardadas.sync();
    if (m_Guardadas.status() != QSettings::NoError) {
        throw Falha(NumeroFalha::ErroDeAcesso, "Preferencias",
                    "As preferências do usuário não puderam ser gravadas em " + S(m_Guardadas.fileName()) +
                        ". Confira o espaço em disco e as permissões desse arquivo.");
    }
}

std::optional<RegistroConhecido> LugaresConhecidos::Registro(const std::filesystem::path &diretorio) const
{
    const QString chave = ChaveDo(diretorio);
    const QString caminho = m_Guardadas.value(chave + "/caminho").toString();
    if (caminho.isEmpty()) {
        return std::nullopt;
    }
    return RegistroConhecido{QFile::encodeName(caminho).toStdString(),
                             S(m_Guardadas.value(chave + "/identificador").toString())};
}

void LugaresConhecidos::LembraRegistro(const std::filesystem::path &diretorio, const RegistroConhecido &registro)
{
    const QString chave = ChaveDo(diretorio);
    const std::filesystem::path inteiro = std::filesystem::absolute(registro.Caminho).lexically_normal();
    Grava(chave + "/identificador", Q(registro.Identificador));
    Grava(chave + "/caminho", QFile::decodeName(inteiro.c_str()));
}

std::optional<Endereco> LugaresConhecidos::Servidor(const std::filesystem::path &diretorio) const
{
    std::string recusa;
    return Endereco::Le(Texto(ChaveDo(diretorio) + "/servidor"), recusa);
}

void LugaresConhecidos::LembraServidor(const std::filesystem::path &diretorio, const std::optional<Endereco> &servidor)
{
    if (servidor || Servidor(diretorio)) {
        Grava(ChaveDo(diretorio) + "/servidor", servidor ? Q(servidor->Texto()) : QString());
    }
}

rede::Confianca LugaresConhecidos::Confianca(const Endereco &servidor) const
{
    return {Texto(ChaveDo(servidor) + "/digital"), Texto(ChaveDo(servidor) + "/autoridade")};
}

void LugaresConhecidos::LembraConfianca(const Endereco &servidor, const rede::Confianca &confianca)
{
    Grava(ChaveDo(servidor) + "/digital", Q(confianca.Digital));
    Grava(ChaveDo(servidor) + "/autoridade", Q(confianca.Autoridade));
}

std::string LugaresConhecidos::RegistroNo(const Endereco &servidor) const
{
    return Texto(ChaveDo(servidor) + "/registro");
}

void LugaresConhecidos::LembraRegistroNo(const Endereco &servidor, const std::string &identificador)
{
    Grava(ChaveDo(servidor) + "/registro", Q(identificador));
}

std::string LugaresConhecidos::Estacao()
{
    QString estacao = m_Guardadas.value(ChaveDaEstacao).toString();
    if (estacao.isEmpty()) {
        std::array<quint32, 4> acaso{};
        QRandomGenerator::system()->fillRange(acaso.data(), static_cast<qsizetype>(acaso.size()));
        estacao = QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(acaso.data()), sizeof(acaso)).toHex());
        Grava(ChaveDaEstacao, estacao);
    }
    return S(estacao);
}

std::string LugaresConhecidos::Texto(const QString &chave) const
{
    return S(m_Guardadas.value(chave).toString());
}

std::filesystem::path CaminhoDoRegistro(const std::filesystem::path &diretorio)
{
    return diretorio / NomeDoRegistro;
}

RegistroConhecido RegistroDe(const std::filesystem::path &diretorio, const LugaresConhecidos &lugares)
{
    return lugares.Registro(diretorio).value_or(RegistroConhecido{CaminhoDoRegistro(diretorio), ""});
}

void ExigeRegistroDaqui(const std::filesystem::path &diretorio, const LugaresConhecidos &lugares)
{
    if (const auto servidor = lugares.Servidor(diretorio)) {
        throw Falha(NumeroFalha::ErroDeAcesso, "Inicio",
                    "O diretório " + diretorio.string() + " trabalha no registro do servidor " + servidor->Texto() +
                        ". O que se faz com um registro inteiro se faz na máquina em que ele está, com o "
                        "registro-servidor.");
    }
}

} // namespace rede
