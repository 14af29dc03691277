#include "services/SessaoSql.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/ConteudoPdf.h"
#include "services/MotivoCorrecao.h"
#include "services/Permissoes.h"
#include "services/PesquisaEquipamentos.h"
#include "services/Recusa.h"
#include "services/ServicoAfericoes.h"
#include "services/ServicoClientes.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/ServicoHistoria.h"
#include "services/ServicoLayouts.h"
#include "services/ServicoLimites.h"
#include "services/ServicoLogradouros.h"
#include "services/ServicoUsuarios.h"
#include "services/Usuarios.h"

#include <algorithm>
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
template <class Pedido> Pedido &ComoPedido(const Ref<Objeto> &objeto)
{
    auto *pedido = dynamic_cast<Pedido *>(objeto.Ponteiro());
    if (pedido == nullptr) {
        throw Recusa("A operação pede um registro " + std::string(Pedido::Nome) + " e recebeu " +
                     (objeto.Nada() ? "nenhum" : std::string(objeto->NomeTipo())) + ".");
    }
    return *pedido;
}

template <class Servico, class Pedido, class Resposta>
Atendimento Atende(bool escreve, Resposta (Servico::*operacao)(Pedido &))
{
    return {escreve, [operacao](Operacao &contexto, const Ref<Objeto> &objeto) -> Valor {
                auto &pedido = ComoPedido<Pedido>(objeto);
                Servico servico(contexto);
                if constexpr (std::is_void_v<Resposta>) {
                    (servico.*operacao)(pedido);
                    return {};
                } else {
                    return (servico.*operacao)(pedido);
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
        {{"AdministracaoRN", "listaUsuarios"}, Atende(le, &ServicoUsuarios::Lista)},
        {{"AdministracaoRN", "consultaUsuario"}, Atende(le, &ServicoUsuarios::Consulta)},
        {{"AdministracaoRN", "incluiUsuario"}, Atende(escreve, &ServicoUsuarios::Inclui)},
        {{"AdministracaoRN", "alteraUsuario"}, Atende(escreve, &ServicoUsuarios::Altera)},
        {{"AdministracaoRN", "desativaUsuario"}, Atende(escreve, &ServicoUsuarios::Desativa)},
        {{"AdministracaoRN", "reativaUsuario"}, Atende(escreve, &ServicoUsuarios::Reativa)},
        {{"AdministracaoRN", "desbloqueiaUsuario"}, Atende(escreve, &ServicoUsuarios::Desbloqueia)},
        {{"AdministracaoRN", "defineSenha"}, Atende(escreve, &ServicoUsuarios::DefineSenha)},
        {{"AdministracaoRN", "listaEntradasRecusadas"}, Atende(le, &ServicoUsuarios::EntradasRecusadas)},
        {{"AdministracaoRN", "listaClientes"}, Atende(le, &ServicoClientes::Lista)},
        {{"AdministracaoRN", "incluiCliente"}, Atende(escreve, &ServicoClientes::Inclui)},
        {{"AdministracaoRN", "alteraCliente"}, Atende(escreve, &ServicoClientes::Altera)},
        {{"AdministracaoRN", "listaLogradouros"}, Atende(le, &ServicoLogradouros::Lista)},
        {{"AdministracaoRN", "incluiLogradouro"}, Atende(escreve, &ServicoLogradouros::Inclui)},
        {{"AdministracaoRN", "alteraLogradouro"}, Atende(escreve, &ServicoLogradouros::Altera)},
        {{"AdministracaoRN", "importaLogradouros"}, Atende(escreve, &ServicoLogradouros::Importa)},
        {{"AdministracaoRN", "listaLayouts"}, Atende(le, &ServicoLayouts::Lista)},
        {{"AdministracaoRN", "incluiLayout"}, Atende(escreve, &ServicoLayouts::Inclui)},
        {{"AdministracaoRN", "alteraLayout"}, Atende(escreve, &ServicoLayouts::Altera)},
        {{"RelatorioRN", "consultaRelatorioRVOR011"}, Atende(le, &ServicoAfericoes::Certificado)},
    };
    return tabela;
}

// "a aferição 1 do sensor 1, a aferição 2 do sensor 1 e mais 3", each with what goes before it.
std::string Enumera(const std::vector<std::string> &nomes, const std::string &antes)
{
    constexpr std::size_t maisNomes = 6; // the others are counted
    const std::size_t ditos = std::min(nomes.size(), maisNomes);
    std::string texto;
    for (std::size_t n = 0; n < ditos; ++n) {
        texto += n == 0 ? "" : n + 1 == nomes.size() ? " e " : ", ";
        texto += antes + nomes[n];
    }
    return nomes.size() > ditos ? texto + " e mais " + CStr(nomes.size() - ditos) : texto;
}

} // namespace

SessaoSql::SessaoSql(std::shared_ptr<Banco> banco, Relogio agora, std::shared_ptr<Portaria> portaria,
                     Portaria::Entrada entrada, bool exigeMotivo)
    : m_Banco(std::move(banco)),
      m_Agora(std::move(agora)),
      m_Portaria(std::move(portaria)),
      m_Entrada(std::move(entrada)),
      m_ExigeMotivo(exigeMotivo)
{
}

std::string SessaoSql::RecusaDaEntrada() const
{
    const mesa::Operador &quem = m_Entrada.Quem;
    Consulta agora(*m_Banco, "SELECT TrocaSenha, CodCliente, Setor, CodMunic FROM USUARIO WHERE Numero = ?",
                   {quem.Numero});
    agora.Proxima();
    if (agora.Inteiro(0) == Indicador::Sim) {
        return quem.Nome + " precisa trocar a senha antes de fazer qualquer outra coisa.";
    }
    if (agora.Inteiro(1) != quem.CodCliente || agora.Texto(2) != quem.Setor || agora.Inteiro(3) != quem.CodMunic) {
        return "O cliente, o setor ou o município de " + quem.Nome + " mudou depois da entrada. Saia e entre de novo.";
    }
    return "";
}

void SessaoSql::ExigeEscrita() const
{
    if (!m_Banco->SomenteLeitura().empty()) {
        throw Recusa(m_Banco->SomenteLeitura() + " Nada foi gravado.");
    }
}

void SessaoSql::Roda(bool escreve, const Trabalho &trabalho, const std::string &motivo)
{
    if (escreve) {
        ExigeEscrita();
    }
    const Instante agora = m_Agora();
    const auto roda = [&] {
        const std::string semEntrada = RecusaDaEntrada();
        if (!semEntrada.empty()) {
            throw Recusa(semEntrada);
        }
        Operacao operacao(*m_Banco, m_Entrada.Quem, agora, m_Portaria->Custo(), motivo, m_Segue);
        trabalho(operacao);
        operacao.ConfereMotivo();
        return operacao;
    };
    const Operacao feita = escreve ? m_Banco->Escreve(roda) : m_Banco->Le(roda);
    feita.Entrega();
}

std::string SessaoSql::MotivoPara(const std::vector<std::string> &corrigidas) const
{
    const std::string naoGravada = "A correção " + Enumera(corrigidas, "da ") + " não foi gravada: ";
    const std::optional<std::string> dado =
        m_Pergunta ? m_Pergunta("Esta gravação corrige " + Enumera(corrigidas, "a ") + ".") : std::nullopt;
    if (!dado) {
        throw Recusa(naoGravada + "nenhum motivo foi dado.");
    }
    const std::string recusa = MotivoCorrecao::RecusaDe(*dado);
    if (!recusa.empty()) {
        throw Recusa(naoGravada + recusa + ".");
    }
    return MotivoCorrecao::Aparado(*dado);
}

bool SessaoSql::Opera(bool escreve, const Trabalho &trabalho, std::string &recusa)
{
    recusa.clear();
    try {
        if (escreve && !m_Banco->SomenteLeitura().empty()) {
            throw Recusa(m_Banco->SomenteLeitura() + " Nada foi gravado.");
        }
        std::vector<std::string> corrigidas;
        try {
            Roda(escreve, trabalho, m_Pergunta || m_ExigeMotivo ? "" : MotivoCorrecao::Nenhum);
        } catch (const FaltaMotivo &falta) {
            corrigidas = falta.Corrigidas;
        }
        if (!corrigidas.empty()) {
            Roda(escreve, trabalho, MotivoPara(corrigidas));
        }
        return true;
    } catch (const Recusa &motivo) {
        recusa = motivo.what();
        return false;
    }
}

bool SessaoSql::DeveTrocarSenha()
try {
    return m_Banco->Le([&] {
        Consulta linha(*m_Banco, "SELECT TrocaSenha FROM USUARIO WHERE Numero = ?", {m_Entrada.Quem.Numero});
        return linha.Proxima() && linha.Inteiro(0) == Indicador::Sim;
    });
} catch (...) {
    PassaFalha(" < SessaoServico.DeveTrocarSenha");
}

// Not in one transaction: the try is counted whatever comes of it.
bool SessaoSql::TrocaMinhaSenha(const Ref<Objeto> &pedido, std::string &recusa)
try {
    const auto &troca = ComoPedido<TrocaSenhaED>(pedido);
    ExigeEscrita();
    return m_Portaria->TrocaSenha(m_Entrada, troca.Atual, troca.Nova, m_Agora(), recusa);
} catch (const Recusa &motivo) {
    recusa = motivo.what();
    return false;
}

bool SessaoSql::TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao)
try {
    return m_Banco->Le([&] { return Permissoes::Tem(*m_Banco, m_Entrada.Quem.Numero, sistema, objeto, acao); });
} catch (...) {
    PassaFalha(" < SessaoServico.TemPermissao");
}

bool SessaoSql::Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                        std::string &recusa)
try {
    if (classeRN == "AdministracaoRN" && metodo == "trocaMinhaSenha") {
        return TrocaMinhaSenha(pedido, recusa);
    }
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
    const auto podeGuardar = [](Operacao &operacao) {
        ServicoDocumentos(operacao).ExigeGuardar();
        operacao.Anda(0, "Conferindo o documento");
    };
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

std::vector<AfericaoComDocumento> SessaoSql::AfericoesCom(const QString &documento, double numero)
{
    std::vector<AfericaoComDocumento> afericoes;
    std::string recusa;
    Opera(
        false,
        [&](Operacao &operacao) {
            operacao.Exige("", "ver documentos");
            Consulta linhas(operacao.Dados(),
                            "SELECT DISTINCT e.Codigo, a.Marca, a.TipoAfer FROM AFERICAO a "
                            "JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor "
                            "JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip "
                            "WHERE a.NroIntImgCertif = " +
                                documento + " AND a.NroIntImgCertif <> 0 AND e.ClienteInc = ? ORDER BY e.Codigo",
                            {qlonglong(numero), Q(m_Entrada.Quem.Cliente)});
            while (linhas.Proxima()) {
                afericoes.push_back({linhas.Texto(0), linhas.Texto(1), static_cast<std::uint8_t>(linhas.Inteiro(2))});
            }
        },
        recusa);
    return afericoes;
}

std::vector<AfericaoComDocumento> SessaoSql::AfericoesDoDocumento(double numero)
try {
    return AfericoesCom("?", numero);
} catch (...) {
    PassaFalha(" < SessaoServico.AfericoesDoDocumento");
}

std::vector<AfericaoComDocumento> SessaoSql::AfericoesDoDocumentoDa(double nroIntAfericao)
try {
    return AfericoesCom("(SELECT NroIntImgCertif FROM AFERICAO WHERE NroIntAfericao = ?)", nroIntAfericao);
} catch (...) {
    PassaFalha(" < SessaoServico.AfericoesDoDocumentoDa");
}

bool SessaoSql::VersoesDaAfericao(double nroIntAfericao, std::vector<VersaoAfericao> &versoes, std::string &recusa)
try {
    std::vector<VersaoAfericao> lidas;
    const bool feita = Opera(
        false, [&](Operacao &operacao) { lidas = ServicoHistoria(operacao).VersoesDaAfericao(nroIntAfericao); },
        recusa);
    if (feita) {
        versoes = std::move(lidas);
    }
    return feita;
} catch (...) {
    PassaFalha(" < SessaoServico.VersoesDaAfericao");
}

bool SessaoSql::ComoConhecido(std::int32_t nroIntEquip, const Instante &quando, EquipamentoConhecido &conhecido,
                              std::string &recusa)
try {
    EquipamentoConhecido lido;
    const bool feita = Opera(
        false, [&](Operacao &operacao) { lido = ServicoHistoria(operacao).ComoConhecido(nroIntEquip, quando); },
        recusa);
    if (feita) {
        conhecido = std::move(lido);
    }
    return feita;
} catch (...) {
    PassaFalha(" < SessaoServico.ComoConhecido");
}

std::vector<ClienteCadastrado> SessaoSql::Clientes()
try {
    return m_Banco->Le([&] {
        std::vector<ClienteCadastrado> clientes;
        auto cliente = Usuarios::Cliente(*m_Banco, m_Entrada.Quem.CodCliente);
        if (cliente && RecusaDaEntrada().empty()) {
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
        if (!RecusaDaEntrada().empty() ||
            !Permissoes::Tem(*m_Banco, m_Entrada.Quem.Numero, Permissoes::Sistema, Permissoes::Objeto, "")) {
            return lidas;
        }
        Consulta achadas(*m_Banco,
                         "SELECT NroIntEquip, ClienteInc, Codigo, TipoEquip, Ativo FROM EQUIPAMENTO "
                         "WHERE ClienteInc = ? ORDER BY NroIntEquip",
                         {Q(m_Entrada.Quem.Cliente)});
        while (achadas.Proxima()) {
            lidas.push_back({static_cast<std::int32_t>(achadas.Inteiro(0)), achadas.Texto(1), achadas.Texto(2),
                             achadas.Texto(3), static_cast<std::int32_t>(achadas.Inteiro(4))});
        }
        return lidas;
    });
    std::size_t lidas = 0;
    for (const LinhaReplica &linha : linhas) {
        if (m_Segue && !m_Segue(static_cast<double>(lidas) / static_cast<double>(linhas.size()), linha.Codigo)) {
            return {};
        }
        cadaLinha(linha);
        ++lidas;
    }
    return agora;
} catch (...) {
    PassaFalha(" < SessaoServico.LeReplica");
}

} // namespace mesa
