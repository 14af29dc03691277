#include "services/ServicoDocumentos.h"

#include "host/Conversoes.h"
#include "services/Conferencia.h"
#include "services/Historico.h"
#include "services/Recusa.h"
#include "services/Resumo.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mesa {

namespace {

// Whether every entry that the history has of the document, and there is one, tells of this content.
bool ConfereComHistorico(Banco &banco, std::int64_t numero, const QString &soma)
{
    Consulta entradas(banco, "SELECT Depois FROM HISTORICO WHERE Entidade = 'DOCUMENTO' AND NroEntidade = ?",
                      {qlonglong(numero)});
    bool achou = false;
    while (entradas.Proxima()) {
        const QJsonObject depois = QJsonDocument::fromJson(QByteArray::fromStdString(entradas.Texto(0))).object();
        if (depois.value("Sha256").toString() != soma) {
            return false;
        }
        achou = true;
    }
    return achou;
}

} // namespace

void ServicoDocumentos::ExigeGuardar() const
{
    if (!m_Operacao.Possui("I")) {
        m_Operacao.Exige("A", "guardar documentos");
    }
}

double ServicoDocumentos::Guarda(const Bytes &bytes)
{
    ExigeGuardar();
    const auto conteudo =
        QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    const QString soma = Q(Resumo(conteudo));
    m_Operacao.Anda(0.5, "Gravando o documento");
    const Operador &quem = m_Operacao.Quem();
    const std::int64_t numero = m_Operacao.Dados()
                                    .Insere("DOCUMENTO", {{"ClienteInc", Q(quem.Cliente)},
                                                          {"Tamanho", conteudo.size()},
                                                          {"Sha256", soma},
                                                          {"Quando", qlonglong(m_Operacao.Agora().Utc())},
                                                          {"Fuso", m_Operacao.Agora().Fuso},
                                                          {"Operador", quem.Numero},
                                                          {"Conteudo", conteudo}})
                                    .NumeroNovo();
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), quem.Numero, {"DOCUMENTO", numero, 1, "DOCUMENTO", numero, "inclui"});
    m_Operacao.Anda(0.9, "Gravando o documento");
    return static_cast<double>(numero);
}

ServicoDocumentos::Achado ServicoDocumentos::Busca(std::int64_t numero, QByteArray &conteudo)
{
    Consulta linha(m_Operacao.Dados(),
                   "SELECT Tamanho, Sha256, Conteudo FROM DOCUMENTO WHERE NroDocumento = ? AND ClienteInc = ?",
                   {qlonglong(numero), Q(m_Operacao.Quem().Cliente)});
    if (!linha.Proxima()) {
        return Achado::Ausente;
    }
    conteudo = linha.Valor(2).toByteArray();
    return conteudo.size() == linha.Inteiro(0) && Resumo(conteudo) == linha.Texto(1) ? Achado::Inteiro
                                                                                     : Achado::Danificado;
}

Bytes ServicoDocumentos::Le(double numero)
{
    m_Operacao.Exige("", "ver documentos");
    m_Operacao.Anda(0, "Lendo o documento");
    const std::int64_t procurado = Conferencia::Chave(numero);
    const std::string nome = "O documento de número " + Conferencia::Numero(numero);
    QByteArray conteudo;
    const Achado achado = Busca(procurado, conteudo);
    if (achado == Achado::Ausente) {
        throw Recusa(nome + " não existe no cliente " + m_Operacao.Quem().Cliente + ".");
    }
    if (achado == Achado::Danificado) {
        throw Recusa(nome + " está danificado no registro: recupere-o de uma cópia de segurança.");
    }
    m_Operacao.Anda(0.7, "Conferindo o documento");
    if (!ConfereComHistorico(m_Operacao.Dados(), procurado, Q(Resumo(conteudo)))) {
        throw Recusa(nome + " não é o que foi guardado, pelo que diz o histórico: recupere-o de uma cópia de "
                            "segurança.");
    }
    return Bytes(conteudo.begin(), conteudo.end());
}

bool ServicoDocumentos::EstaInteiro(std::int64_t numero)
{
    QByteArray conteudo;
    return Busca(numero, conteudo) == Achado::Inteiro &&
           ConfereComHistorico(m_Operacao.Dados(), numero, Q(Resumo(conteudo)));
}

} // namespace mesa
