#include "services/SessaoSql.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Conferencia.h"
#include "services/ConteudoPdf.h"
#include "services/ErroSql.h"
#include "services/Historico.h"
#include "services/MotivoCorrecao.h"
#include "services/Permissoes.h"
#include "services/PesquisaEquipamentos.h"
#include "services/RegistrosAdministracao.h"
#include "services/ReplicaDoCliente.h"
#include "services/ServicoAfericoes.h"
#include "services/ServicoClientes.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/ServicoHistoria.h"
#include "services/ServicoLayouts.h"
#include "services/ServicoLimites.h"
#include "services/ServicoLogradouros.h"
#include "services/ServicoPrazos.h"
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
        {{"PrazosRN", "consultaPainel"}, Atende(le, &ServicoPrazos::Painel)},
        {{"PrazosRN", "listaPrazos"}, Atende(le, &ServicoPrazos::Lista)},
        {{"PrazosRN", "confereDocumentos"}, Atende(le, &ServicoPrazos::ConfereDocumentos)},
    };
    return tabela;
}

// Whether the request has a password in it.
bool TemSenha(const Ref<Objeto> &pedido)
{
    const auto *usuario = dynamic_cast<const UsuarioED *>(pedido.Ponteiro());
    return usuario != nullptr && !usuario->Senha.Valor().Vazio();
}

// Somebody who was told how far it is has given it up.
struct Desistencia {};

// Gets back what it was unless that was confirmed.
template <class T> class Devolvido {
  public:
    explicit Devolvido(T &onde) : m_Onde(onde), m_Antes(onde) {}
    Devolvido(const Devolvido &) = delete;
    Devolvido &operator=(const Devolvido &) = delete;
    ~Devolvido()
    {
        if (!m_Confirmado) {
            m_Onde = std::move(m_Antes);
        }
    }
    void Confirma() { m_Confirmado = true; }

  private:
    T &m_Onde;
    T m_Antes;
    bool m_Confirmado = false;
};

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
                     Portaria::Entrada entrada, bool exigeMotivo, SemEntrada semEntrada)
    : m_Banco(std::move(banco)),
      m_Agora(std::move(agora)),
      m_Portaria(std::move(portaria)),
      m_Entrada(std::move(entrada)),
      m_ExigeMotivo(exigeMotivo),
      m_SemEntrada(semEntrada)
{
}

void SessaoSql::Recolhe(const Recusa &motivo, std::string &recusa) const
{
    if (m_SemEntrada == SemEntrada::Lanca && dynamic_cast<const RecusaDeEntrada *>(&motivo) != nullptr) {
        throw; // the one that is being handled
    }
    recusa = motivo.what();
}

bool SessaoSql::EntradaVale() const
try {
    m_Portaria->ExigeEntrada(m_Entrada);
    return true;
} catch (const Recusa &motivo) {
    std::string recusa;
    Recolhe(motivo, recusa);
    return false;
}

std::optional<Repeticao> SessaoSql::TomaNumero(bool comSenha)
{
    m_Repetida.reset();
    std::optional<Numerada> numerada = std::exchange(m_Numerada, std::nullopt);
    if (!numerada) {
        return std::nullopt;
    }
    return Repeticao(*m_Banco, std::move(*numerada), m_Entrada.Quem.Numero, m_Portaria->Custo(), comSenha);
}

void SessaoSql::ExigeEscrita() const
{
    if (!m_Banco->SomenteLeitura().empty()) {
        throw Recusa(m_Banco->SomenteLeitura() + " Nada foi gravado.");
    }
}

void SessaoSql::Roda(bool escreve, const Trabalho &trabalho, const std::string &motivo, const Repeticao *repeticao)
{
    if (escreve) {
        ExigeEscrita();
    }
    std::optional<Operacao> operacao; // of a run that failed it takes back what it left in the records
    std::optional<std::string> repetida;
    const auto roda = [&] {
        operacao.reset();
        // When the right to write is held: an act that waited for others is not written down as earlier than theirs.
        const Instante agora = m_Agora();
        m_Portaria->ExigeEntrada(m_Entrada);
        repetida = repeticao != nullptr ? repeticao->DeAntes(agora) : std::nullopt;
        if (repetida) {
            return;
        }
        operacao.emplace(*m_Banco, m_Entrada.Quem, agora, m_Portaria->Custo(), motivo, m_Segue);
        trabalho(*operacao);
        operacao->ConfereMotivo();
        operacao->Entrega();
        if (repeticao != nullptr) {
            repeticao->Guarda(agora);
        }
    };
    if (escreve) {
        m_Banco->Escreve(roda);
    } else {
        m_Banco->Le(roda);
    }
    if (operacao) {
        operacao->Confirma();
    }
    m_Repetida = std::move(repetida);
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

bool SessaoSql::Opera(bool escreve, const Trabalho &trabalho, std::string &recusa, const Repeticao *repeticao)
{
    recusa.clear();
    try {
        std::vector<std::string> corrigidas;
        try {
            Roda(escreve, trabalho, m_Pergunta || m_ExigeMotivo ? "" : MotivoCorrecao::Nenhum, repeticao);
        } catch (const FaltaMotivo &falta) {
            corrigidas = falta.Corrigidas;
        }
        if (!corrigidas.empty()) {
            Roda(escreve, trabalho, MotivoPara(corrigidas), repeticao);
        }
        return true;
    } catch (const Recusa &motivo) {
        Recolhe(motivo, recusa);
        return false;
    }
}

bool SessaoSql::DeveTrocarSenha()
try {
    return m_Banco->Le([&] {
        if (m_SemEntrada == SemEntrada::Lanca) {
            m_Portaria->ConfereEntrada(m_Entrada);
        }
        Consulta linha(*m_Banco, "SELECT TrocaSenha FROM USUARIO WHERE Numero = ?", {m_Entrada.Quem.Numero});
        return linha.Proxima() && linha.Inteiro(0) == Indicador::Sim;
    });
} catch (...) {
    PassaErro(" < SessaoServico.DeveTrocarSenha");
}

// Not in one transaction: the try is counted whatever comes of it.
bool SessaoSql::TrocaMinhaSenha(const Ref<Objeto> &pedido, std::string &recusa)
try {
    const auto repeticao = TomaNumero(/*comSenha=*/true);
    const auto &troca = ComoPedido<TrocaSenhaED>(pedido);
    ExigeEscrita();
    return m_Portaria->TrocaSenha(m_Entrada, troca.Atual, troca.Nova, m_Agora, repeticao ? &*repeticao : nullptr,
                                  m_Repetida, recusa);
} catch (const Recusa &motivo) {
    Recolhe(motivo, recusa);
    return false;
}

bool SessaoSql::TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao)
try {
    return m_Banco->Le([&] {
        if (m_SemEntrada == SemEntrada::Lanca) {
            m_Portaria->ConfereEntrada(m_Entrada);
        }
        return Permissoes::Tem(*m_Banco, m_Entrada.Quem.Numero, sistema, objeto, acao);
    });
} catch (...) {
    PassaErro(" < SessaoServico.TemPermissao");
}

bool SessaoSql::Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                        std::string &recusa)
try {
    if (classeRN == "AdministracaoRN" && metodo == "trocaMinhaSenha") {
        return TrocaMinhaSenha(pedido, recusa);
    }
    const auto repeticao = TomaNumero(TemSenha(pedido));
    const auto atendimento = Atendimentos().find({classeRN, metodo});
    if (atendimento == Atendimentos().end()) {
        recusa = "O serviço " + classeRN + " não tem a operação \"" + metodo + "\".";
        return false;
    }
    const bool escreve = atendimento->second.Escreve;
    Devolvido volta(retorno);
    const bool feita = Opera(
        escreve, [&](Operacao &operacao) { retorno = atendimento->second.Atende(operacao, pedido); }, recusa,
        escreve && repeticao ? &*repeticao : nullptr);
    if (feita && !m_Repetida) {
        volta.Confirma();
    }
    return feita;
} catch (...) {
    PassaErro(" < SessaoServico.Executa");
}

bool SessaoSql::GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa)
try {
    const auto repeticao = TomaNumero(/*comSenha=*/false);
    // Opening a document takes its time, in which nobody else should have to wait: not in the transaction that writes.
    bool deAntes = false;
    const auto podeGuardar = [&](Operacao &operacao) {
        deAntes = repeticao && repeticao->HaDeAntes();
        if (deAntes) {
            return;
        }
        ServicoDocumentos(operacao).ExigeGuardar();
        operacao.Anda(0, "Conferindo o documento");
    };
    if (!Opera(false, podeGuardar, recusa)) {
        return false;
    }
    if (!deAntes) {
        recusa = DefeitoDoPdf(QByteArray::fromRawData(reinterpret_cast<const char *>(bytes.data()),
                                                      static_cast<qsizetype>(bytes.size())));
    }
    if (!recusa.empty()) {
        return false;
    }
    Devolvido volta(numero);
    const bool feita = Opera(
        true, [&](Operacao &operacao) { numero = ServicoDocumentos(operacao).Guarda(bytes); }, recusa,
        repeticao ? &*repeticao : nullptr);
    if (feita && !m_Repetida) {
        volta.Confirma();
    }
    return feita;
} catch (...) {
    PassaErro(" < SessaoServico.GuardaDocumento");
}

bool SessaoSql::LeCabeca(CabecaAssinada &cabeca, std::string &recusa)
try {
    return Opera(
        false,
        [&](Operacao &operacao) {
            operacao.Exige(Permissoes::Copias, "exportar a cabeça do histórico", Permissoes::ObjetoAdministracao);
            cabeca = ExportacaoDeCabeca::Le(operacao.Dados(), operacao.Agora());
        },
        recusa);
} catch (...) {
    PassaErro(" < SessaoServico.LeCabeca");
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
    PassaErro(" < SessaoServico.LeDocumento");
}

std::vector<AfericaoComDocumento> SessaoSql::AfericoesCom(const QString &documento, double numero)
{
    std::vector<AfericaoComDocumento> afericoes;
    std::string recusa;
    Opera(
        false,
        [&](Operacao &operacao) {
            operacao.Exige("", "ver documentos");
            afericoes.clear(); // of a run whose connection was lost
            Consulta linhas(operacao.Dados(),
                            "SELECT DISTINCT e.Codigo, a.Marca, a.TipoAfer FROM AFERICAO a "
                            "JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor "
                            "JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip "
                            "WHERE a.NroIntImgCertif = " +
                                documento + " AND a.NroIntImgCertif <> 0 AND e.ClienteInc = ? ORDER BY e.Codigo",
                            {qlonglong(Conferencia::Chave(numero)), Q(m_Entrada.Quem.Cliente)});
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
    PassaErro(" < SessaoServico.AfericoesDoDocumento");
}

std::vector<AfericaoComDocumento> SessaoSql::AfericoesDoDocumentoDa(double nroIntAfericao)
try {
    return AfericoesCom("(SELECT NroIntImgCertif FROM AFERICAO WHERE NroIntAfericao = ?)", nroIntAfericao);
} catch (...) {
    PassaErro(" < SessaoServico.AfericoesDoDocumentoDa");
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
    PassaErro(" < SessaoServico.VersoesDaAfericao");
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
    PassaErro(" < SessaoServico.ComoConhecido");
}

std::vector<ClienteCadastrado> SessaoSql::Clientes()
try {
    return m_Banco->Le([&] {
        std::vector<ClienteCadastrado> clientes;
        auto cliente = Usuarios::Cliente(*m_Banco, m_Entrada.Quem.CodCliente);
        if (cliente && EntradaVale()) {
            clientes.push_back(std::move(*cliente));
        }
        return clientes;
    });
} catch (...) {
    PassaErro(" < SessaoServico.Clientes");
}

Replicado SessaoSql::LeReplica(std::int64_t depoisDe, const std::function<void(const LinhaReplica &)> &cadaLinha)
try {
    Replicado replicado;
    struct Interrompida {};
    const auto le = [&] {
        if (replicado.Quantas > 0) { // what was handed over cannot be taken back
            throw Interrompida();
        }
        replicado = {m_Agora().Local};
        if (!EntradaVale() ||
            !Permissoes::Tem(*m_Banco, m_Entrada.Quem.Numero, Permissoes::Sistema, Permissoes::Objeto, "")) {
            return;
        }
        const Historico::Cabeca fim = Historico(*m_Banco).Fim();
        replicado.Ate = fim.Tamanho;
        replicado.Elo = fim.Elo;
        const ReplicaDoCliente replica(*m_Banco, m_Entrada.Quem.Cliente, depoisDe);
        replicado.EloDeAntes = replica.EloDeAntes();
        const auto total = static_cast<double>(m_Segue ? replica.Quantas() : 0);
        replica.CadaLinha([&](const LinhaReplica &linha) {
            if (m_Segue && !m_Segue(static_cast<double>(replicado.Quantas) / total, linha.Codigo)) {
                throw Desistencia();
            }
            cadaLinha(linha);
            ++replicado.Quantas;
        });
    };
    try {
        m_Banco->Le(le);
    } catch (const Desistencia &) {
        return {};
    } catch (const Interrompida &) {
        throw ErroSql(MotivoSql::Queda, "a leitura dos equipamentos foi interrompida", LugarDoRegistro::Servidor);
    }
    return replicado;
} catch (...) {
    PassaErro(" < SessaoServico.LeReplica");
}

} // namespace mesa
