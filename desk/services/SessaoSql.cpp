#include "desk/services/SessaoSql.h"

#include "desk/services/ConteudoPdf.h"
#include "desk/services/Permissoes.h"
#include "desk/services/PesquisaEquipamentos.h"
#include "desk/services/Recusa.h"
#include "desk/services/ServicoAfericoes.h"
#include "desk/services/ServicoDocumentos.h"
#include "desk/services/ServicoEquipamentos.h"
#include "desk/services/ServicoLimites.h"
#include "desk/services/Usuarios.h"

#include <map>
#include <type_traits>
#include <utility>

namespace mesa {

namespace {

// A remote operation: whether it writes, and what does it.
struct Atendimento {
    bool Escreve = false;
    std::function<Valor(Operacao &, const Ref<Objeto> &)> Atende;
};

// An operation that changes what it is sent takes the record to mark it afterwards; the others do not touch it.
template <class Servico, class Pedido, class Resposta>
Atendimento Atende(bool escreve, Resposta (Servico::*operacao)(Pedido &))
{
    return {escreve, [operacao](Operacao &contexto, const Ref<Objeto> &objeto) -> Valor {
                auto *pedido = dynamic_cast<Pedido *>(objeto.Ponteiro());
                if (pedido == nullptr) {
                    throw Recusa("A operação pede um registro " + std::string(Pedido::Nome) + " e recebeu " +
                                 (objeto.Nada() ? "nenhum" : std::string(objeto->NomeTipo())) + ".");
                }
                Servico servico(contexto);
                if constexpr (std::is_void_v<Resposta>) {
                    (servico.*operacao)(*pedido);
                    return {};
                } else {
                    return (servico.*operacao)(*pedido);
                }
            }};
}

using ChaveOperacao = std::pair<std::string, std::string>;

const std::map<ChaveOperacao, Atendimento> &Atendimentos()
{
    constexpr bool le = false;
    constexpr bool escreve = true;
    static const std::map<ChaveOperacao, Atendimento> tabela = {
        {{"EquiptoRN", "consulta"}, Atende(le, &ServicoEquipamentos::Consulta)},
        {{"EquiptoRN", "consultaSimples"}, Atende(le, &ServicoEquipamentos::ConsultaSimples)},
        {{"EquiptoRN", "inclui"}, Atende(escreve, &ServicoEquipamentos::Inclui)},
        {{"EquiptoRN", "altera"}, Atende(escreve, &ServicoEquipamentos::Altera)},
        {{"EquiptoRN", "desativa"}, Atende(escreve, &ServicoEquipamentos::Desativa)},
        {{"EquiptoRN", "reativa"}, Atende(escreve, &ServicoEquipamentos::Reativa)},
        {{"EquiptoRN", "lista2"}, Atende(le, &PesquisaEquipamentos::Lista)},
        {{"EquiptoRN", "consultaSimplesAfericaoVigente"}, Atende(le, &ServicoAfericoes::Vigente)},
        {{"EquiptoRN", "listaLimiteDif"}, Atende(le, &ServicoLimites::ListaLimites)},
        {{"EquiptoRN", "listaDiaEspecifico"}, Atende(le, &ServicoLimites::ListaDias)},
        {{"EquiptoRN", "consultaSimplesLimiteDif"}, Atende(le, &ServicoLimites::ConsultaLimite)},
        {{"EquiptoRN", "consultaSimplesDiaEspecifico"}, Atende(le, &ServicoLimites::ConsultaDia)},
        {{"EquiptoRN", "alteraListaLimitesDif"}, Atende(escreve, &ServicoLimites::AlteraLimites)},
        {{"EquiptoRN", "adicionaDiaEspecifico"}, Atende(escreve, &ServicoLimites::AdicionaDia)},
        {{"EquiptoRN", "alteraDiaEspecifico"}, Atende(escreve, &ServicoLimites::AlteraDia)},
        {{"EquiptoRN", "desativaLimiteDif"}, Atende(escreve, &ServicoLimites::DesativaLimite)},
        {{"EquiptoRN", "desativaDiaEspecifico"}, Atende(escreve, &ServicoLimites::DesativaDia)},
        {{"RelatorioRN", "consultaRelatorioRVOR011"}, Atende(le, &ServicoAfericoes::Certificado)},
    };
    return tabela;
}

} // namespace

SessaoSql::SessaoSql(std::shared_ptr<Banco> banco, Relogio agora, mesa::Operador operador)
    : m_Banco(std::move(banco)),
      m_Agora(std::move(agora)),
      m_Operador(std::move(operador))
{
}

bool SessaoSql::Opera(bool escreve, const std::function<void(Operacao &)> &trabalho, std::string &recusa)
{
    recusa.clear();
    const Instante agora = m_Agora();
    const auto roda = [&] {
        Operacao operacao(*m_Banco, m_Operador, agora);
        trabalho(operacao);
        return operacao;
    };
    try {
        const Operacao feita = escreve ? m_Banco->Escreve(roda) : m_Banco->Le(roda);
        feita.Entrega();
        return true;
    } catch (const Recusa &motivo) {
        recusa = motivo.what();
        return false;
    }
}

bool SessaoSql::TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao)
try {
    return m_Banco->Le([&] { return Permissoes::Tem(*m_Banco, m_Operador.Numero, sistema, objeto, acao); });
} catch (...) {
    PassaFalha(" < SessaoServico.TemPermissao");
}

bool SessaoSql::Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                        std::string &recusa)
try {
    const auto atendimento = Atendimentos().find({classeRN, metodo});
    if (atendimento == Atendimentos().end()) {
        recusa = "O serviço " + classeRN + " não tem a operação \"" + metodo + "\".";
        return false;
    }
    Valor resposta;
    const bool feita = Opera(
        atendimento->second.Escreve,
        [&](Operacao &operacao) { resposta = atendimento->second.Atende(operacao, pedido); }, recusa);
    if (feita) {
        retorno = resposta;
    }
    return feita;
} catch (...) {
    PassaFalha(" < SessaoServico.Executa");
}

bool SessaoSql::GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa)
try {
    // Opening a document takes its time, in which nobody else should have to wait: not in the transaction that writes.
    const auto podeGuardar = [](Operacao &operacao) { ServicoDocumentos(operacao).ExigeGuardar(); };
    if (!Opera(false, podeGuardar, recusa)) {
        return false;
    }
    recusa = DefeitoDoPdf(
        QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()), static_cast<qsizetype>(bytes.size())));
    if (!recusa.empty()) {
        return false;
    }
    double guardado = 0;
    const bool feita = Opera(
        true, [&](Operacao &operacao) { guardado = ServicoDocumentos(operacao).Guarda(bytes); }, recusa);
    if (feita) {
        numero = guardado;
    }
    return feita;
} catch (...) {
    PassaFalha(" < SessaoServico.GuardaDocumento");
}

bool SessaoSql::LeDocumento(double numero, Bytes &bytes, std::string &recusa)
try {
    Bytes lidos;
    const bool feita = Opera(
        false, [&](Operacao &operacao) { lidos = ServicoDocumentos(operacao).Le(numero); }, recusa);
    if (feita) {
        bytes = std::move(lidos);
    }
    return feita;
} catch (...) {
    PassaFalha(" < SessaoServico.LeDocumento");
}

std::vector<ClienteCadastrado> SessaoSql::Clientes()
try {
    return m_Banco->Le([&] {
        std::vector<ClienteCadastrado> clientes;
        if (auto cliente = Usuarios(*m_Banco).Cliente(m_Operador.CodCliente)) {
            clientes.push_back(std::move(*cliente));
        }
        return clientes;
    });
} catch (...) {
    PassaFalha(" < SessaoServico.Clientes");
}

Data SessaoSql::LeReplica(const std::function<void(const LinhaReplica &)> &cadaLinha)
try {
    const Data agora = m_Agora().Local;
    const std::vector<LinhaReplica> linhas = m_Banco->Le([&] {
        std::vector<LinhaReplica> lidas;
        if (!Permissoes::Tem(*m_Banco, m_Operador.Numero, Permissoes::Sistema, Permissoes::Objeto, "")) {
            return lidas;
        }
        Consulta achadas(*m_Banco,
                         "SELECT NroIntEquip, ClienteInc, Codigo, TipoEquip, Ativo FROM EQUIPAMENTO "
                         "WHERE ClienteInc = ? ORDER BY NroIntEquip",
                         {Q(m_Operador.Cliente)});
        while (achadas.Proxima()) {
            lidas.push_back({static_cast<std::int32_t>(achadas.Inteiro(0)), achadas.Texto(1), achadas.Texto(2),
                             achadas.Texto(3), static_cast<std::int32_t>(achadas.Inteiro(4))});
        }
        return lidas;
    });
    for (const LinhaReplica &linha : linhas) {
        cadaLinha(linha);
    }
    return agora;
} catch (...) {
    PassaFalha(" < SessaoServico.LeReplica");
}

} // namespace mesa
