#include "desk/services/ServicoDocumentos.h"

#include "desk/services/Conferencia.h"
#include "desk/services/Historico.h"
#include "desk/services/Recusa.h"
#include "desk/services/Resumo.h"
#include "host/Conversoes.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace mesa {

namespace {

constexpr qsizetype Margem = 1024; // bytes at each end in which a PDF has its marks

void ConferePDF(const QByteArray &conteudo)
{
    if (conteudo.isEmpty()) {
        throw Recusa("O documento está vazio.");
    }
    if (static_cast<std::size_t>(conteudo.size()) > ServicoDocumentos::MaiorTamanho) {
        throw Recusa("O documento ultrapassa o tamanho máximo de 5 Mb (" + CStr(conteudo.size()) + " bytes).");
    }
    if (!conteudo.first(std::min(Margem, conteudo.size())).contains("%PDF-") ||
        !conteudo.last(std::min(Margem, conteudo.size())).contains("%%EOF")) {
        throw Recusa("O documento não é um PDF completo: confira o arquivo e envie de novo.");
    }
}

} // namespace

double ServicoDocumentos::Guarda(const Bytes &bytes)
{
    if (!m_Operacao.Possui("I")) {
        m_Operacao.Exige("A", "guardar documentos");
    }
    const auto conteudo =
        QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    ConferePDF(conteudo);
    const QString soma = Q(Resumo(conteudo));
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
    return static_cast<double>(numero);
}

Bytes ServicoDocumentos::Le(double numero)
{
    m_Operacao.Exige("", "ver documentos");
    const bool inteiro = std::fabs(numero) < 9e15 && numero == std::floor(numero);
    Consulta linha(m_Operacao.Dados(),
                   "SELECT Tamanho, Sha256, Conteudo FROM DOCUMENTO WHERE NroDocumento = ? AND ClienteInc = ?",
                   {inteiro ? qlonglong(numero) : 0, Q(m_Operacao.Quem().Cliente)});
    if (!linha.Proxima()) {
        throw Recusa("O documento de número " + Conferencia::Numero(numero) + " não existe no cliente " +
                     m_Operacao.Quem().Cliente + ".");
    }
    const QByteArray conteudo = linha.Valor(2).toByteArray();
    if (conteudo.size() != linha.Inteiro(0) || Resumo(conteudo) != linha.Texto(1)) {
        throw Recusa("O documento de número " + Conferencia::Numero(numero) +
                     " está danificado no registro: recupere-o de uma cópia de segurança.");
    }
    return Bytes(conteudo.begin(), conteudo.end());
}

} // namespace mesa
