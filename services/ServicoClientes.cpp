#include "services/ServicoClientes.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Historico.h"
#include "services/Recusa.h"
#include "services/RegrasDeCadastro.h"
#include "services/ServicoUsuarios.h"
#include "services/TextoBusca.h"
#include "services/Usuarios.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace mesa {

namespace {

const QString Colunas = "SELECT CodCliente, Versao, Nome, UF, Ativo FROM CLIENTE ";

Ref<ClienteED> Lido(const Consulta &linha)
{
    auto cliente = Novo<ClienteED>();
    cliente->CodCliente = CLng(linha.Inteiro(0));
    cliente->Versao = CLng(linha.Inteiro(1));
    cliente->NomeCliente = linha.Texto(2);
    cliente->UF = linha.Texto(3);
    cliente->Ativo = CByte(linha.Inteiro(4));
    return cliente;
}

ListaDe<SetorED> SetoresDe(Banco &banco, std::int32_t codCliente)
{
    auto setores = Novo<Colecao<Ref<SetorED>>>();
    Consulta linhas(banco, "SELECT NroSetor, Nome, Ativo FROM SETOR WHERE CodCliente = ? ORDER BY Nome", {codCliente});
    while (linhas.Proxima()) {
        auto setor = Novo<SetorED>();
        setor->NroSetor = CLng(linhas.Inteiro(0));
        setor->NomeSetor = linhas.Texto(1);
        setor->Ativo = CByte(linhas.Inteiro(2));
        setores->Add(setor);
    }
    return setores;
}

std::string NomeDo(const ClienteED &cliente)
{
    return "O cliente " + cliente.NomeCliente.Valor();
}

std::uint8_t SimOuNao(std::uint8_t indicador)
{
    return indicador == Indicador::Nao ? Indicador::Nao : Indicador::Sim;
}

// What a request changes in the sectors of a client.
struct MudancaDeSetores {
    struct Setor {
        std::string Nome;
        std::uint8_t Ativo = Indicador::Sim;
    };

    std::map<std::int32_t, Setor> Ativos; // by number: those that become active or not
    std::vector<std::string> Novos;
};

void AcrescentaNovo(MudancaDeSetores &mudanca, const ClienteED &cliente, const std::string &pedido)
{
    const std::string nome = RegrasDeCadastro::NomeDoSetor(pedido);
    const Colecao<Ref<SetorED>> &existentes = *cliente.Setores.Valor();
    for (std::int32_t qual = 1; qual <= existentes.Count(); ++qual) {
        const SetorED &setor = *existentes.Item(qual);
        if (TextoBusca(setor.NomeSetor) == TextoBusca(nome)) {
            throw Recusa(NomeDo(cliente) + " já tem o setor " + setor.NomeSetor.Valor() +
                         (setor.Ativo.Valor() == Indicador::Sim ? "." : ", desativado: reative-o."));
        }
    }
    for (const std::string &outro : mudanca.Novos) {
        if (TextoBusca(outro) == TextoBusca(nome)) {
            throw Recusa("O setor " + nome + " foi informado mais de uma vez.");
        }
    }
    mudanca.Novos.push_back(nome);
}

void AcrescentaExistente(MudancaDeSetores &mudanca, const ClienteED &cliente, const SetorED &pedido)
{
    const Colecao<Ref<SetorED>> &existentes = *cliente.Setores.Valor();
    for (std::int32_t qual = 1; qual <= existentes.Count(); ++qual) {
        const SetorED &setor = *existentes.Item(qual);
        if (setor.NroSetor.Valor() != pedido.NroSetor.Valor()) {
            continue;
        }
        if (pedido.NomeSetor.Escrito() && pedido.NomeSetor.Valor() != setor.NomeSetor.Valor()) {
            throw Recusa("O setor " + setor.NomeSetor.Valor() +
                         " não pode mudar de nome: os registros de equipamentos o têm.");
        }
        if (pedido.Ativo.Escrito() && SimOuNao(pedido.Ativo) != setor.Ativo.Valor()) {
            mudanca.Ativos[setor.NroSetor] = {setor.NomeSetor, SimOuNao(pedido.Ativo)};
        }
        return;
    }
    throw Recusa("O setor de número " + CStr(pedido.NroSetor.Valor()) + " não é do cliente " +
                 cliente.NomeCliente.Valor() + ".");
}

MudancaDeSetores Mudancas(const ClienteED &cliente, const ListaDe<SetorED> &pedidos)
{
    MudancaDeSetores mudanca;
    for (std::int32_t qual = 1; !pedidos.Nada() && qual <= pedidos->Count(); ++qual) {
        const SetorED &pedido = *pedidos->Item(qual);
        if (pedido.NroSetor.Valor() == 0) {
            AcrescentaNovo(mudanca, cliente, pedido.NomeSetor);
        } else {
            AcrescentaExistente(mudanca, cliente, pedido);
        }
    }
    return mudanca;
}

} // namespace

ClienteCadastrado ServicoClientes::Conferido(Banco &banco, const ClienteCadastrado &pedido)
{
    RegrasDeCadastro::CodigoDoCliente(pedido.CodCliente);
    ClienteCadastrado cliente{
        pedido.CodCliente, RegrasDeCadastro::NomeDoCliente(pedido.Nome), {}, RegrasDeCadastro::Estado(pedido.UF)};
    {
        Consulta outros(banco, "SELECT CodCliente, Nome FROM CLIENTE");
        while (outros.Proxima()) {
            if (outros.Inteiro(0) == cliente.CodCliente) {
                throw Recusa("O código " + CStr(cliente.CodCliente) + " já é do cliente " + outros.Texto(1) + ".");
            }
            if (TextoBusca(outros.Texto(1)) == TextoBusca(cliente.Nome)) {
                throw Recusa("Já existe o cliente " + outros.Texto(1) + ", de código " + CStr(outros.Inteiro(0)) + ".");
            }
        }
    }
    std::set<std::string> vistos;
    for (const std::string &setor : pedido.Setores) {
        const std::string nome = RegrasDeCadastro::NomeDoSetor(setor);
        if (!vistos.insert(TextoBusca(nome)).second) {
            throw Recusa("O setor " + nome + " foi informado mais de uma vez.");
        }
        cliente.Setores.push_back(nome);
    }
    return cliente;
}

Ref<ListaClientesED> ServicoClientes::Lista(const ListaClientesED &)
{
    ServicoUsuarios::Exige(m_Operacao);
    auto clientes = Novo<Colecao<Ref<ClienteED>>>();
    {
        Consulta linhas(m_Operacao.Dados(), Colunas + "ORDER BY CodCliente");
        while (linhas.Proxima()) {
            clientes->Add(Lido(linhas));
        }
    }
    for (std::int32_t qual = 1; qual <= clientes->Count(); ++qual) {
        ClienteED &cliente = *clientes->Item(qual);
        cliente.Setores = SetoresDe(m_Operacao.Dados(), cliente.CodCliente);
    }
    auto lista = Novo<ListaClientesED>();
    lista->Clientes = clientes;
    return lista;
}

Ref<ClienteED> ServicoClientes::Acha(std::int32_t codCliente) const
{
    Ref<ClienteED> cliente;
    {
        Consulta linha(m_Operacao.Dados(), Colunas + "WHERE CodCliente = ?", {codCliente});
        if (!linha.Proxima()) {
            throw Recusa("Não existe cliente de código " + CStr(codCliente) + ".");
        }
        cliente = Lido(linha);
    }
    cliente->Setores = SetoresDe(m_Operacao.Dados(), codCliente);
    return cliente;
}

Ref<ClienteED> ServicoClientes::Inclui(const ClienteED &pedido)
{
    ServicoUsuarios::Exige(m_Operacao);
    ClienteCadastrado novo{pedido.CodCliente, pedido.NomeCliente, {}, pedido.UF};
    const ListaDe<SetorED> &setores = pedido.Setores.Valor();
    for (std::int32_t qual = 1; !setores.Nada() && qual <= setores->Count(); ++qual) {
        novo.Setores.push_back(setores->Item(qual)->NomeSetor);
    }
    Usuarios(m_Operacao.Dados(), m_Operacao.Agora(), m_Operacao.Quem().Numero)
        .IncluiCliente(Conferido(m_Operacao.Dados(), novo));
    return Acha(pedido.CodCliente);
}

Ref<ClienteED> ServicoClientes::Altera(const ClienteED &pedido)
{
    ServicoUsuarios::Exige(m_Operacao);
    const Ref<ClienteED> gravado = Acha(pedido.CodCliente);
    const std::int32_t codCliente = gravado->CodCliente;
    m_Operacao.ConfereCopia(Raiz::Cliente, codCliente, pedido.Versao, gravado->Versao, NomeDo(*gravado));
    if (pedido.NomeCliente.Escrito() && pedido.NomeCliente.Valor() != gravado->NomeCliente.Valor()) {
        throw Recusa(NomeDo(*gravado) + " não pode mudar de nome: os registros de equipamentos o têm.");
    }
    const std::string uf = pedido.UF.Escrito() ? RegrasDeCadastro::Estado(pedido.UF) : gravado->UF.Valor();
    const std::uint8_t ativo = pedido.Ativo.Escrito() ? SimOuNao(pedido.Ativo) : gravado->Ativo.Valor();
    if (ativo == Indicador::Nao && gravado->Ativo.Valor() == Indicador::Sim) {
        ConfereSemUsuarios(NomeDo(*gravado), "CodCliente = ?", {codCliente});
    }
    const MudancaDeSetores setores = Mudancas(*gravado, pedido.Setores);
    for (const auto &[numero, setor] : setores.Ativos) {
        if (setor.Ativo == Indicador::Nao) {
            ConfereSemUsuarios("O setor " + setor.Nome, "CodCliente = ? AND Setor = ?", {codCliente, Q(setor.Nome)});
        }
    }
    if (uf == gravado->UF.Valor() && ativo == gravado->Ativo.Valor() && setores.Novos.empty() &&
        setores.Ativos.empty()) {
        return gravado;
    }
    const std::int64_t versao = gravado->Versao + std::int64_t{1};
    const char *const acao = ativo == gravado->Ativo.Valor() ? "altera"
                             : ativo == Indicador::Sim       ? "reativa"
                                                             : "desativa";
    const auto registra = [&](const char *entidade, std::int64_t numero, const char *oQue) {
        Historico(m_Operacao.Dados())
            .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                      {"CLIENTE", codCliente, versao, entidade, numero, oQue});
    };
    m_Operacao.Dados().Atualiza("CLIENTE", {{"UF", Q(uf)}, {"Ativo", ativo}, {"Versao", qlonglong(versao)}},
                                {"CodCliente", codCliente});
    registra("CLIENTE", codCliente, acao);
    for (const auto &[numero, setor] : setores.Ativos) {
        m_Operacao.Dados().Atualiza("SETOR", {{"Ativo", setor.Ativo}}, {"NroSetor", numero});
        registra("SETOR", numero, setor.Ativo == Indicador::Sim ? "reativa" : "desativa");
    }
    Usuarios usuarios(m_Operacao.Dados(), m_Operacao.Agora(), m_Operacao.Quem().Numero);
    for (const std::string &nome : setores.Novos) {
        usuarios.IncluiSetor(codCliente, versao, nome);
    }
    return Acha(codCliente);
}

void ServicoClientes::ConfereSemUsuarios(const std::string &oQue, const QString &onde,
                                         const QVariantList &valores) const
{
    Consulta ativos(m_Operacao.Dados(), "SELECT COUNT(*), MIN(Nome) FROM USUARIO WHERE Ativo = 1 AND " + onde, valores);
    ativos.Proxima();
    const std::int64_t outros = ativos.Inteiro(0) - 1;
    if (outros >= 0) {
        throw Recusa(oQue + " não pode ser desativado: nele está ativo o usuário " + ativos.Texto(1) +
                     (outros == 0 ? "" : " e mais " + CStr(outros)) + ".");
    }
}

} // namespace mesa
