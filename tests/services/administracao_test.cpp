#include "services/Permissoes.h"
#include "services/RegistrosAdministracao.h"
#include "tests/services/ServicosTeste.h"
#include "tests/support/FalhaLancada.h"

#include <QTemporaryDir>

#include <array>
#include <barrier>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace mesa;

// Users, clients and rights: who may, what is refused, what it leaves behind.

namespace {

const std::string Boa = "tigela vidro moinho";
const std::string Outra = "pluma cerca torta 4";
const std::string SemPermissao = " não tem permissão para administrar usuários e clientes.";

template <class R> ListaDe<R> ListaCom(const std::vector<Ref<R>> &itens)
{
    auto lista = Novo<Colecao<Ref<R>>>();
    for (const auto &item : itens) {
        lista->Add(item);
    }
    return lista;
}

Ref<DireitoED> DireitoDe(const std::string &objeto, const std::string &acao, bool tem = true)
{
    auto direito = Novo<DireitoED>();
    direito->Objeto = objeto;
    direito->Acao = acao;
    direito->Tem = static_cast<std::uint8_t>(tem ? 1 : 2);
    return direito;
}

Ref<DireitoED> Equipamentos(const std::string &acao, bool tem = true)
{
    return DireitoDe("VOR-EQP-CS", acao, tem);
}

Ref<DireitoED> Administra(const std::string &acao, bool tem = true)
{
    return DireitoDe("VOR-EQP-ADM", acao, tem);
}

Ref<UsuarioED> UsuarioDe(const std::string &usuario, const std::string &nome)
{
    auto u = Novo<UsuarioED>();
    u->Usuario = usuario;
    u->NomePessoa = nome;
    u->CodCliente = 1;
    u->Setor = "Metrologia";
    u->CodMunic = 4314902;
    u->Senha = Boa;
    u->Direitos = ListaCom<DireitoED>({Equipamentos(""), Equipamentos("I"), Equipamentos("A", false)});
    return u;
}

Ref<UsuarioED> SoUsuario(std::int32_t numero, std::int32_t versao = 1)
{
    return Com(Novo<UsuarioED>(), &UsuarioED::Numero, numero, &UsuarioED::Versao, versao);
}

Ref<SetorED> SetorDe(const std::string &nome)
{
    return Com(Novo<SetorED>(), &SetorED::NroSetor, 0, &SetorED::NomeSetor, nome);
}

Ref<SetorED> SoSetor(std::int32_t numero, bool ativo)
{
    return Com(Novo<SetorED>(), &SetorED::NroSetor, numero, &SetorED::Ativo, static_cast<std::uint8_t>(ativo ? 1 : 2));
}

Ref<ClienteED> ClienteDe(std::int32_t codigo, const std::string &nome, const std::string &uf)
{
    auto c = Novo<ClienteED>();
    c->CodCliente = codigo;
    c->NomeCliente = nome;
    c->UF = uf;
    return c;
}

Ref<ClienteED> SoCliente(std::int32_t codigo, std::int32_t versao = 1)
{
    return Com(Novo<ClienteED>(), &ClienteED::CodCliente, codigo, &ClienteED::Versao, versao);
}

class ServicosAdministracao : public testing::Test {
  protected:
    ServicosAdministracao() : m_Marta(m_Registro.Sessao("marta")), m_Historico(Historico()) {}

    static Retorno Faz(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido)
    {
        Retorno retorno = Pede(sessao, metodo, pedido, "AdministracaoRN");
        EXPECT_TRUE(retorno.Feita) << metodo << ": " << retorno.Recusa;
        return retorno;
    }
    static std::string RecusaDe(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido)
    {
        const Retorno retorno = Pede(sessao, metodo, pedido, "AdministracaoRN");
        EXPECT_FALSE(retorno.Feita) << metodo;
        EXPECT_TRUE(retorno.Resposta.EhVazio()) << metodo;
        return retorno.Recusa;
    }
    Ref<UsuarioED> Usuario(const std::string &metodo, const Ref<Objeto> &pedido)
    {
        return Faz(m_Marta, metodo, pedido).Como<UsuarioED>();
    }
    Ref<ClienteED> Cliente(const std::string &metodo, const Ref<Objeto> &pedido)
    {
        return Faz(m_Marta, metodo, pedido).Como<ClienteED>();
    }
    // Nothing of what was refused is anywhere.
    void NadaMudou() { EXPECT_EQ(Historico(), m_Historico); }
    std::string Historico() { return m_Registro.Sql("SELECT COUNT(*) || ' ' || MAX(Nro) FROM HISTORICO"); }
    // Who, what and of which version, of the entries since the last look.
    std::string Anotado()
    {
        const std::string linhas = m_Registro.Sql(
            "SELECT group_concat(COALESCE('' || Operador, '-') || ' ' || Raiz || NroRaiz || '.' || Versao || ' ' || "
            "Entidade "
            "|| ' ' || Acao || COALESCE(' ' || Motivo, ''), '; ') FROM (SELECT * FROM HISTORICO WHERE Nro > " +
            m_Visto + " ORDER BY Nro) h");
        m_Visto = m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO");
        return linhas;
    }
    Ref<SessaoServico> Entra(const std::string &usuario, const std::string &senha,
                             const std::string &estacao = "mesa de teste")
    {
        return m_Registro.Aberto().Entra(usuario, senha, estacao, m_Recusa, m_Espera);
    }
    std::int32_t NumeroDe(const std::string &usuario)
    {
        return std::stoi(m_Registro.Sql("SELECT Numero FROM USUARIO WHERE Usuario = '" + usuario + "'"));
    }
    static bool Tem(const UsuarioED &usuario, const std::string &objeto, const std::string &acao)
    {
        const auto &direitos = *usuario.Direitos.Valor();
        for (std::int32_t qual = 1; qual <= direitos.Count(); ++qual) {
            if (direitos.Item(qual)->Objeto.Valor() == objeto && direitos.Item(qual)->Acao.Valor() == acao) {
                return direitos.Item(qual)->Tem.Valor() == 1;
            }
        }
        throw std::runtime_error("no such right");
    }
    static Ref<TrocaSenhaED> Troca(const std::string &atual, const std::string &nova)
    {
        return Com(Novo<TrocaSenhaED>(), &TrocaSenhaED::Atual, atual, &TrocaSenhaED::Nova, nova);
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Marta;
    std::string m_Historico;
    std::string m_Visto = m_Registro.Sql("SELECT MAX(Nro) FROM HISTORICO");
    std::string m_Recusa;
    std::int32_t m_Espera = 0;
};

struct Ato {
    std::string Metodo;
    std::function<Ref<Objeto>()> Pedido;
};

const std::vector<Ato> &Atos()
{
    static const std::vector<Ato> atos = {
        {"listaUsuarios", [] { return Novo<ListaUsuariosED>(); }},
        {"consultaUsuario", [] { return SoUsuario(11); }},
        {"incluiUsuario", [] { return UsuarioDe("novo", "Nova Pessoa"); }},
        {"alteraUsuario", [] { return Com(SoUsuario(11), &UsuarioED::NomePessoa, "Outra"); }},
        {"desativaUsuario", [] { return SoUsuario(11); }},
        {"reativaUsuario", [] { return SoUsuario(11); }},
        {"desbloqueiaUsuario", [] { return SoUsuario(11); }},
        {"defineSenha", [] { return Com(SoUsuario(11), &UsuarioED::Senha, Boa); }},
        {"listaClientes", [] { return Novo<ListaClientesED>(); }},
        {"incluiCliente", [] { return ClienteDe(9, "Autoridade Nova", "SC"); }},
        {"alteraCliente", [] { return Com(SoCliente(1), &ClienteED::UF, "SC"); }},
        {"listaEntradasRecusadas", [] { return Novo<ListaEntradasED>(); }},
    };
    return atos;
}

TEST_F(ServicosAdministracao, EveryOperation_WithoutTheRight_IsRefusedAndChangesNothing)
{
    const std::map<std::string, std::string> pessoas = {
        {"ana", "Ana Souza"},  {"bruno", "Bruno Lima"},  {"carla", "Carla Dias"},
        {"davi", "Davi Reis"}, {"elisa", "Elisa Prado"}, {"tadeu", "Tadeu Vaz"},
    };
    for (const auto &[usuario, nome] : pessoas) {
        const auto sessao = m_Registro.Sessao(usuario);
        m_Historico = Historico();
        for (const Ato &ato : Atos()) {
            EXPECT_EQ(RecusaDe(sessao, ato.Metodo, ato.Pedido()), nome + SemPermissao) << ato.Metodo;
        }
        NadaMudou();
    }
}

TEST_F(ServicosAdministracao, EveryOperation_WithTheWrongRecord_IsRefused)
{
    for (const Ato &ato : Atos()) {
        EXPECT_EQ(RecusaDe(m_Marta, ato.Metodo, SoNumero(1)),
                  "A operação pede um registro " + std::string(ato.Pedido()->NomeTipo()) + " e recebeu EquiptoED.")
            << ato.Metodo;
    }
    EXPECT_EQ(RecusaDe(m_Marta, "trocaMinhaSenha", nullptr),
              "A operação pede um registro TrocaSenhaED e recebeu nenhum.");
    EXPECT_EQ(RecusaDe(m_Marta, "apagaUsuario", SoUsuario(11)),
              "O serviço AdministracaoRN não tem a operação \"apagaUsuario\".");
    NadaMudou();
}

TEST_F(ServicosAdministracao, EveryOperation_OnAUserOrClientThatThereIsNot_IsRefused)
{
    for (const std::string metodo : {"consultaUsuario", "alteraUsuario", "desativaUsuario", "reativaUsuario",
                                     "desbloqueiaUsuario", "defineSenha"}) {
        EXPECT_EQ(RecusaDe(m_Marta, metodo, SoUsuario(99)), "Não existe usuário de número 99.") << metodo;
        EXPECT_EQ(RecusaDe(m_Marta, metodo, SoUsuario(-1)), "Não existe usuário de número -1.") << metodo;
    }
    EXPECT_EQ(RecusaDe(m_Marta, "alteraCliente", SoCliente(99)), "Não existe cliente de código 99.");
    NadaMudou();
}

// The rights are told in words, in the order of the screen.
TEST_F(ServicosAdministracao, consultaUsuario_TellsEveryRightInWords)
{
    const auto eu = Usuario("consultaUsuario", SoUsuario(11));
    EXPECT_EQ(eu->Usuario.Valor(), "marta");
    EXPECT_EQ(eu->NomePessoa.Valor(), "Marta Reis");
    EXPECT_EQ(eu->Cliente.Valor(), "Autoridade Estadual de Trânsito");
    EXPECT_EQ(eu->Ativo.Valor(), 1);
    EXPECT_EQ(eu->TrocaSenha.Valor(), 2);
    EXPECT_EQ(eu->Bloqueado.Valor(), 2);
    EXPECT_FALSE(eu->Senha.Escrito());
    std::string direitos;
    for (std::int32_t qual = 1; qual <= eu->Direitos.Valor()->Count(); ++qual) {
        const DireitoED &direito = *eu->Direitos.Valor()->Item(qual);
        direitos += direito.Objeto.Valor() + " " + direito.Acao.Valor() + " " + std::to_string(direito.Tem.Valor()) +
                    " " + direito.Palavras.Valor() + "\n";
    }
    EXPECT_EQ(direitos, "VOR-EQP-CS  2 Consultar equipamentos, aferições e limites\n"
                        "VOR-EQP-CS I 2 Incluir equipamentos e limites\n"
                        "VOR-EQP-CS A 2 Alterar equipamentos, sensores, aferições e limites\n"
                        "VOR-EQP-CS E 2 Desativar e reativar equipamentos, excluir limites\n"
                        "VOR-EQP-ADM U 1 Administrar usuários, clientes e setores\n"
                        "VOR-EQP-ADM T 1 Manter logradouros e layouts\n"
                        "VOR-EQP-ADM C 1 Conferir o registro, fazer e restaurar cópias\n");
}

TEST_F(ServicosAdministracao, consultaUsuario_OfNone_IsABlankOneWithEveryRightToChoose)
{
    const auto novo = Usuario("consultaUsuario", SoUsuario(0));
    EXPECT_EQ(novo->Numero.Valor(), 0);
    EXPECT_EQ(novo->Usuario.Valor(), "");
    EXPECT_EQ(novo->Direitos.Valor()->Count(), 7);
    EXPECT_FALSE(Tem(*novo, "VOR-EQP-ADM", "U"));
}

TEST_F(ServicosAdministracao, listaUsuarios_TellsAllBySignInName)
{
    m_Registro.Cadastra("inês");
    m_Registro.Cadastra("ana");
    m_Registro.Sql("UPDATE USUARIO SET Ativo = 2 WHERE Usuario = 'ana'");
    const auto lista = Faz(m_Marta, "listaUsuarios", Novo<ListaUsuariosED>()).Como<ListaUsuariosED>();
    std::string nomes;
    for (std::int32_t qual = 1; qual <= lista->Usuarios.Valor()->Count(); ++qual) {
        const UsuarioED &usuario = *lista->Usuarios.Valor()->Item(qual);
        nomes += usuario.Usuario.Valor() + " " + std::to_string(usuario.Ativo.Valor()) + " " +
                 usuario.NomePessoa.Valor() + ", " + usuario.Setor.Valor() + "\n";
        EXPECT_FALSE(usuario.Senha.Escrito());
    }
    EXPECT_EQ(nomes, "ana 2 Ana Souza, Fiscalização\ninês 1 Inês Luz, Fiscalização\nmarta 1 Marta Reis, Metrologia\n");
}

TEST_F(ServicosAdministracao, incluiUsuario_AsAsked_StandsInTheRegistryAndItsHistory)
{
    const auto novo = Usuario("incluiUsuario", UsuarioDe("  Novo.Fiscal ", "  Ze\u0301   da Silva  "));
    EXPECT_EQ(novo->Numero.Valor(), 12);
    EXPECT_EQ(novo->Versao.Valor(), 1);
    EXPECT_EQ(novo->Usuario.Valor(), "Novo.Fiscal");
    EXPECT_EQ(novo->NomePessoa.Valor(), "Zé da Silva");
    EXPECT_EQ(novo->Cliente.Valor(), "Autoridade Estadual de Trânsito");
    EXPECT_EQ(novo->Setor.Valor(), "Metrologia");
    EXPECT_EQ(novo->CodMunic.Valor(), 4314902);
    EXPECT_EQ(novo->Ativo.Valor(), 1);
    EXPECT_EQ(novo->TrocaSenha.Valor(), 1);
    EXPECT_FALSE(novo->Senha.Escrito());
    EXPECT_TRUE(Tem(*novo, "VOR-EQP-CS", ""));
    EXPECT_TRUE(Tem(*novo, "VOR-EQP-CS", "I"));
    EXPECT_FALSE(Tem(*novo, "VOR-EQP-CS", "A"));
    EXPECT_EQ(Anotado(), "11 USUARIO12.1 USUARIO inclui; 11 USUARIO12.1 PERMISSAO inclui; 11 USUARIO12.1 PERMISSAO "
                         "inclui");
    EXPECT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM HISTORICO WHERE Depois LIKE '%argon2%' OR Depois LIKE '%tigela%'"),
              "0");
}

TEST_F(ServicosAdministracao, incluiUsuario_FirstSignIn_LeadsOnlyToAPasswordOfTheUsersOwn)
{
    Usuario("incluiUsuario", UsuarioDe("novo", "Nova Pessoa"));
    const auto sessao = Entra("novo", Boa);
    ASSERT_TRUE(sessao) << m_Recusa;
    EXPECT_TRUE(sessao->DeveTrocarSenha());
    EXPECT_FALSE(sessao->TemPermissao("NAB", "VOR-EQP-CS", "I"));
    EXPECT_TRUE(sessao->Clientes().empty());
    const std::string antes = "Nova Pessoa precisa trocar a senha antes de fazer qualquer outra coisa.";
    EXPECT_EQ(Pede(sessao, "inclui", EquipamentoDe("X-1")).Recusa, antes);
    EXPECT_EQ(Pede(sessao, "lista2", Novo<ListaEquiptoED>()).Recusa, antes);
    EXPECT_EQ(RecusaDe(sessao, "listaUsuarios", Novo<ListaUsuariosED>()), antes);
    Bytes bytes;
    double numero = 0;
    EXPECT_FALSE(sessao->LeDocumento(1, bytes, m_Recusa));
    EXPECT_EQ(m_Recusa, antes);
    EXPECT_FALSE(sessao->GuardaDocumento(Pdf("x"), numero, m_Recusa));
    EXPECT_EQ(m_Recusa, antes);

    EXPECT_EQ(RecusaDe(sessao, "trocaMinhaSenha", Troca(Boa, Boa)), "A senha nova precisa ser diferente da atual.");
    Faz(sessao, "trocaMinhaSenha", Troca(Boa, Outra));
    EXPECT_FALSE(sessao->DeveTrocarSenha());
    EXPECT_TRUE(sessao->TemPermissao("NAB", "VOR-EQP-CS", "I"));
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("X-1")).Feita);
    EXPECT_FALSE(Entra("novo", Boa));
    EXPECT_TRUE(Entra("novo", Outra)) << m_Recusa;
}

TEST_F(ServicosAdministracao, incluiUsuario_OfWhatCannotBe_IsRefusedWithASentence)
{
    m_Registro.Sql("UPDATE SETOR SET Ativo = 2 WHERE Nome = 'Fiscalização'");
    Faz(m_Marta, "incluiCliente", ClienteDe(3, "Autoridade Parada", "PR"));
    Faz(m_Marta, "alteraCliente", Com(SoCliente(3), &ClienteED::Ativo, 2));
    m_Historico = Historico();
    const auto com = [](auto membro, const auto &valor) {
        return Com(UsuarioDe("novo", "Nova Pessoa"), membro, valor);
    };
    const std::string longo(61, 'a');
    const std::vector<std::pair<Ref<UsuarioED>, std::string>> casos = {
        {com(&UsuarioED::Numero, 11), "Este usuário já foi incluído, com o número 11."},
        {com(&UsuarioED::Usuario, ""), "O campo \"usuário\" precisa ser informado."},
        {com(&UsuarioED::Usuario, "  "), "O campo \"usuário\" precisa ser informado."},
        {com(&UsuarioED::Usuario, longo), "O campo \"usuário\" aceita até 60 caracteres e veio com 61."},
        {com(&UsuarioED::Usuario, "no vo"),
         "O nome de usuário \"no vo\" só pode ter letras, algarismos, ponto, hífen, sublinhado e arroba."},
        {com(&UsuarioED::Usuario, "n'ovo"),
         "O nome de usuário \"n'ovo\" só pode ter letras, algarismos, ponto, hífen, sublinhado e arroba."},
        {com(&UsuarioED::Usuario, "n\u043evo"),
         "O nome de usuário \"n\u043evo\" só pode ter letras, algarismos, ponto, hífen, sublinhado e arroba."},
        {com(&UsuarioED::Usuario, "no\u200bvo"), "O campo \"usuário\" tem caracteres que não se veem."},
        {com(&UsuarioED::Usuario, "MARTA"), "Já existe o usuário marta, de Marta Reis."},
        {com(&UsuarioED::NomePessoa, ""), "O campo \"nome\" precisa ser informado."},
        {com(&UsuarioED::NomePessoa, "Zé\x01"), "O campo \"nome\" tem caracteres que não se veem."},
        {com(&UsuarioED::NomePessoa, "\u202eeZ"), "O campo \"nome\" tem caracteres que não se veem."},
        {com(&UsuarioED::NomePessoa, "\xff"), "O campo \"nome\" tem caracteres que não se veem."},
        {com(&UsuarioED::NomePessoa, longo + longo), "O campo \"nome\" aceita até 80 caracteres e veio com 122."},
        {com(&UsuarioED::CodCliente, 77), "Não existe cliente de código 77."},
        {com(&UsuarioED::CodCliente, 0), "Não existe cliente de código 0."},
        {com(&UsuarioED::CodCliente, 3), "O cliente Autoridade Parada está desativado."},
        {com(&UsuarioED::Setor, "Operações"),
         "O cliente Autoridade Estadual de Trânsito não tem o setor ativo \"Operações\"."},
        {com(&UsuarioED::Setor, "Fiscalização"),
         "O cliente Autoridade Estadual de Trânsito não tem o setor ativo \"Fiscalização\"."},
        {com(&UsuarioED::CodMunic, 1234567), "Não existe o município de código 1234567."},
        {com(&UsuarioED::Senha, "curta"), "A senha precisa ter ao menos 12 caracteres; esta tem 5."},
        {com(&UsuarioED::Senha, "nova pluma cerca torta"),
         "A senha não pode conter o nome de usuário nem o nome da pessoa."},
        {com(&UsuarioED::Direitos, ListaCom<DireitoED>({Equipamentos("X")})),
         "Não existe o direito \"X\" sobre \"VOR-EQP-CS\"."},
        {com(&UsuarioED::Direitos, ListaCom<DireitoED>({DireitoDe("OUTRO", "I")})),
         "Não existe o direito \"I\" sobre \"OUTRO\"."},
    };
    for (const auto &[pedido, recusa] : casos) {
        EXPECT_EQ(RecusaDe(m_Marta, "incluiUsuario", pedido), recusa);
    }
    NadaMudou();
    EXPECT_EQ(Usuario("incluiUsuario", com(&UsuarioED::Setor, ""))->Setor.Valor(), "");
}

TEST_F(ServicosAdministracao, incluiUsuario_OfADeactivatedName_SaysThatItIs)
{
    m_Registro.Cadastra("ana");
    Usuario("desativaUsuario", SoUsuario(1));
    EXPECT_EQ(RecusaDe(m_Marta, "incluiUsuario", UsuarioDe("Ana", "Outra Ana")),
              "Já existe o usuário ana, de Ana Souza, que está desativado.");
}

TEST_F(ServicosAdministracao, alteraUsuario_ChangesWhatIsToldAndKeepsTheRest)
{
    const auto bruno = m_Registro.Sessao("bruno");
    Anotado();
    auto pedido = Com(SoUsuario(2), &UsuarioED::NomePessoa, "Bruno de Lima");
    pedido->Direitos = ListaCom<DireitoED>({Equipamentos("I"), Equipamentos("", false), Administra("T")});
    const auto mudado = Usuario("alteraUsuario", pedido);
    EXPECT_EQ(mudado->Versao.Valor(), 2);
    EXPECT_EQ(mudado->NomePessoa.Valor(), "Bruno de Lima");
    EXPECT_EQ(mudado->Setor.Valor(), "Fiscalização");
    EXPECT_FALSE(Tem(*mudado, "VOR-EQP-CS", ""));
    EXPECT_TRUE(Tem(*mudado, "VOR-EQP-CS", "I"));
    EXPECT_TRUE(Tem(*mudado, "VOR-EQP-ADM", "T"));
    EXPECT_EQ(Anotado(), "11 USUARIO2.2 USUARIO altera; 11 USUARIO2.2 PERMISSAO inclui; 11 USUARIO2.2 PERMISSAO "
                         "desativa; 11 USUARIO2.2 PERMISSAO inclui");
    // At once, in the session that is open.
    EXPECT_FALSE(bruno->TemPermissao("NAB", "VOR-EQP-CS", ""));
    EXPECT_TRUE(bruno->TemPermissao("NAB", "VOR-EQP-CS", "I"));

    auto volta = SoUsuario(2, 2);
    volta->Direitos = ListaCom<DireitoED>({Equipamentos("")});
    EXPECT_TRUE(Tem(*Usuario("alteraUsuario", volta), "VOR-EQP-CS", ""));
    EXPECT_EQ(Anotado(), "11 USUARIO2.3 USUARIO altera; 11 USUARIO2.3 PERMISSAO reativa");
    EXPECT_TRUE(bruno->TemPermissao("NAB", "VOR-EQP-CS", ""));
}

TEST_F(ServicosAdministracao, alteraUsuario_OfNothing_LeavesNoEntry)
{
    m_Registro.Cadastra("bruno");
    m_Historico = Historico();
    auto pedido = Com(SoUsuario(2), &UsuarioED::NomePessoa, " Bruno Lima ");
    pedido->Direitos = ListaCom<DireitoED>({Equipamentos(""), Equipamentos("I", false)});
    EXPECT_EQ(Usuario("alteraUsuario", pedido)->Versao.Valor(), 1);
    NadaMudou();
}

TEST_F(ServicosAdministracao, alteraUsuario_OfWhatCannotBe_IsRefusedWithASentence)
{
    m_Registro.Cadastra("bruno");
    m_Historico = Historico();
    const auto recusa = [&](auto membro, const auto &valor) {
        return RecusaDe(m_Marta, "alteraUsuario", Com(SoUsuario(2), membro, valor));
    };
    EXPECT_EQ(recusa(&UsuarioED::Usuario, "bruno2"),
              "O usuário bruno não pode mudar de nome de entrada. Desative-o e inclua outro.");
    EXPECT_EQ(recusa(&UsuarioED::NomePessoa, " "), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(recusa(&UsuarioED::CodCliente, 2),
              "O cliente Autoridade Municipal de Trânsito não tem o setor ativo \"Fiscalização\".");
    EXPECT_EQ(recusa(&UsuarioED::CodMunic, 1), "Não existe o município de código 1.");
    EXPECT_EQ(recusa(&UsuarioED::Direitos, ListaCom<DireitoED>({Administra("X")})),
              "Não existe o direito \"X\" sobre \"VOR-EQP-ADM\".");
    NadaMudou();
    Usuario("desativaUsuario", SoUsuario(2));
    EXPECT_EQ(RecusaDe(m_Marta, "alteraUsuario", Com(SoUsuario(2, 2), &UsuarioED::NomePessoa, "X")),
              "O usuário bruno está desativado e não pode ser alterado. Reative-o antes.");
}

// Whoever has read before somebody else changed it is told who, when and what.
TEST_F(ServicosAdministracao, EveryChange_OfAStaleCopy_IsRefused)
{
    m_Registro.Cadastra("bruno");
    const auto saulo = m_Registro.Sessao("saulo");
    auto pedido = Com(SoUsuario(2), &UsuarioED::NomePessoa, "Bruno de Lima");
    pedido->Direitos = ListaCom<DireitoED>({Equipamentos("I")});
    Faz(saulo, "alteraUsuario", pedido);
    m_Historico = Historico();
    for (const std::string metodo :
         {"alteraUsuario", "desativaUsuario", "reativaUsuario", "desbloqueiaUsuario", "defineSenha"}) {
        EXPECT_EQ(RecusaDe(m_Marta, metodo, Com(SoUsuario(2, 1), &UsuarioED::Senha, Boa)),
                  "O usuário bruno foi alterado por Saulo Pires em 20/11/2026 às 10:00:00 (nome, direito dado: Incluir "
                  "equipamentos e limites), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a sua "
                  "alteração.")
            << metodo;
        EXPECT_EQ(RecusaDe(m_Marta, metodo, SoUsuario(2, 0)),
                  "O usuário bruno não foi aberto. Abra-o antes de alterá-lo.")
            << metodo;
    }
    NadaMudou();
    auto setor = Com(SoCliente(1), &ClienteED::UF, "SC");
    setor->Setores = ListaCom<SetorED>({SetorDe("Engenharia")});
    Faz(saulo, "alteraCliente", setor);
    EXPECT_EQ(RecusaDe(m_Marta, "alteraCliente", Com(SoCliente(1), &ClienteED::UF, "PR")),
              "O cliente Autoridade Estadual de Trânsito foi alterado por Saulo Pires em 20/11/2026 às 10:00:00 "
              "(estado, setor Engenharia incluído), depois de aberto aqui. Nada foi gravado: abra-o de novo e repita a "
              "sua alteração.");
}

TEST_F(ServicosAdministracao, desativaUsuario_EndsAtOnceWhatItsSessionMayDo)
{
    const std::string DesativadoDepois =
        "O usuário ana foi desativado depois da entrada. Procure quem administra os usuários.";
    const auto ana = m_Registro.Sessao("ana");
    Anotado();
    EXPECT_EQ(Usuario("desativaUsuario", SoUsuario(1))->Ativo.Valor(), 2);
    EXPECT_EQ(Anotado(), "11 USUARIO1.2 USUARIO desativa");
    EXPECT_FALSE(ana->TemPermissao("NAB", "VOR-EQP-CS", ""));
    EXPECT_EQ(Pede(ana, "inclui", EquipamentoDe("X-1")).Recusa, DesativadoDepois);
    EXPECT_EQ(RecusaDe(ana, "trocaMinhaSenha", Troca("senha de ana", Boa)), DesativadoDepois);
    EXPECT_FALSE(Entra("ana", "senha de ana"));
    EXPECT_EQ(m_Recusa, "Usuário ou senha incorretos.");
    EXPECT_EQ(RecusaDe(m_Marta, "desativaUsuario", SoUsuario(1, 2)), "O usuário ana já está desativado.");

    Anotado();
    EXPECT_EQ(Usuario("reativaUsuario", SoUsuario(1, 2))->Ativo.Valor(), 1);
    EXPECT_EQ(Anotado(), "11 USUARIO1.3 USUARIO reativa");
    EXPECT_EQ(RecusaDe(m_Marta, "reativaUsuario", SoUsuario(1, 3)), "O usuário ana já está ativo.");
    EXPECT_TRUE(Entra("ana", "senha de ana")) << m_Recusa;
}

TEST_F(ServicosAdministracao, reativaUsuario_OfAUserWithAnOpenSession_LeavesThatOneEnded)
{
    const std::string Reativado = "O usuário ana foi desativado e reativado depois da entrada. Entre de novo.";
    const auto ana = m_Registro.Sessao("ana");
    auto pedido = SoUsuario(1);
    pedido->NomePessoa = "Ana de Souza";
    Usuario("alteraUsuario", pedido);
    EXPECT_TRUE(Pede(ana, "inclui", EquipamentoDe("X-1")).Feita); // any other change of the user ends nothing
    Usuario("desativaUsuario", SoUsuario(1, 2));
    Usuario("reativaUsuario", SoUsuario(1, 3));
    EXPECT_EQ(Pede(ana, "inclui", EquipamentoDe("X-2")).Recusa, Reativado);
    EXPECT_EQ(RecusaDe(ana, "trocaMinhaSenha", Troca("senha de ana", Boa)), Reativado);
    const auto outra = m_Registro.Sessao("ana");
    EXPECT_TRUE(Pede(outra, "inclui", EquipamentoDe("X-2")).Feita);
    // The next one who is deactivated is another one.
    m_Registro.Cadastra("bia");
    Usuario("desativaUsuario", SoUsuario(m_Registro.Sessao("bia")->Operador().Numero));
    EXPECT_TRUE(Pede(outra, "inclui", EquipamentoDe("X-3")).Feita);
}

TEST_F(ServicosAdministracao, reativaUsuario_OfASectorThatIsNotActive_IsRefused)
{
    m_Registro.Cadastra("elisa");
    Usuario("desativaUsuario", SoUsuario(5));
    auto pedido = SoCliente(2);
    pedido->Setores = ListaCom<SetorED>({SoSetor(3, false)});
    Cliente("alteraCliente", pedido);
    EXPECT_EQ(RecusaDe(m_Marta, "reativaUsuario", SoUsuario(5, 2)),
              "O cliente Autoridade Municipal de Trânsito não tem o setor ativo \"Operações\".");
}

TEST_F(ServicosAdministracao, desativaUsuario_OfOneself_IsRefused)
{
    m_Registro.Cadastra("saulo");
    m_Historico = Historico();
    EXPECT_EQ(RecusaDe(m_Marta, "desativaUsuario", SoUsuario(11)),
              "Ninguém pode desativar a si mesmo: peça a outro administrador.");
    NadaMudou();
}

TEST_F(ServicosAdministracao, alteraUsuario_TakingTheLastRightToAdminister_IsRefused)
{
    auto sem = SoUsuario(11);
    sem->Direitos = ListaCom<DireitoED>({Administra("U", false)});
    const std::string recusa = "O usuário marta é o último que pode administrar usuários e clientes. Dê antes esse "
                               "direito a outro usuário ativo.";
    EXPECT_EQ(RecusaDe(m_Marta, "alteraUsuario", sem), recusa);
    m_Registro.Cadastra("saulo");
    Usuario("desativaUsuario", SoUsuario(12)); // one who is not active does not count
    m_Historico = Historico();
    EXPECT_EQ(RecusaDe(m_Marta, "alteraUsuario", sem), recusa);
    NadaMudou();
    Usuario("reativaUsuario", SoUsuario(12, 2));
    Faz(m_Marta, "alteraUsuario", sem);
    EXPECT_EQ(RecusaDe(m_Marta, "listaUsuarios", Novo<ListaUsuariosED>()), "Marta Reis" + SemPermissao);
}

TEST_F(ServicosAdministracao, TwoAdministrators_DeactivatingEachOtherAtOnce_OneGoesThrough)
{
    m_Registro.Cadastra("saulo");
    for (int vez = 0; vez < 20; ++vez) {
        SCOPED_TRACE(vez);
        const std::int32_t marta = std::stoi(m_Registro.Sql("SELECT Versao FROM USUARIO WHERE Numero = 11"));
        const std::int32_t saulo = std::stoi(m_Registro.Sql("SELECT Versao FROM USUARIO WHERE Numero = 12"));
        std::barrier largada(2);
        std::array<Retorno, 2> retornos;
        const auto desativa = [&](std::size_t qual, const std::string &quem, std::int32_t outro, std::int32_t versao) {
            const auto servicos = m_Registro.AbreOutro();
            std::string recusa;
            std::int32_t espera = 0;
            const auto sessao = servicos->Entra(quem, "senha de " + quem, "mesa de " + quem, recusa, espera);
            largada.arrive_and_wait();
            retornos[qual] = Pede(sessao, "desativaUsuario", SoUsuario(outro, versao), "AdministracaoRN");
        };
        std::thread um([&] { desativa(0, "marta", 12, saulo); });
        std::thread outro([&] { desativa(1, "saulo", 11, marta); });
        um.join();
        outro.join();
        EXPECT_NE(retornos[0].Feita, retornos[1].Feita) << retornos[0].Recusa << retornos[1].Recusa;
        EXPECT_EQ(retornos[retornos[0].Feita ? 1 : 0].Recusa,
                  std::string("O usuário ") + (retornos[0].Feita ? "saulo" : "marta") +
                      " foi desativado depois da entrada. Procure quem administra os usuários.");
        ASSERT_EQ(m_Registro.Sql("SELECT COUNT(*) FROM USUARIO WHERE Ativo = 1"), "1");
        m_Registro.Sql("UPDATE USUARIO SET Ativo = 1");
    }
}

TEST_F(ServicosAdministracao, desbloqueiaUsuario_EndsTheWaitsOfAllStations)
{
    m_Registro.Sessao("ana");
    for (const std::string estacao : {"estação de teste", "outra"}) {
        for (int vez = 0; vez < 3; ++vez) {
            Entra("ana", "x", estacao);
        }
        EXPECT_EQ(m_Espera, 5);
    }
    EXPECT_EQ(Usuario("consultaUsuario", SoUsuario(1))->Bloqueado.Valor(), 1);
    Anotado();
    EXPECT_EQ(Usuario("desbloqueiaUsuario", SoUsuario(1))->Bloqueado.Valor(), 2);
    EXPECT_EQ(Anotado(), "11 SESSAO1.0 SESSAO desbloqueia");
    EXPECT_TRUE(Entra("ana", "senha de ana", "estação de teste")) << m_Recusa;
    EXPECT_TRUE(Entra("ana", "senha de ana", "outra")) << m_Recusa;
}

TEST_F(ServicosAdministracao, consultaUsuario_WhenTheWaitIsOver_IsNotBlocked)
{
    m_Registro.Sessao("ana");
    for (int vez = 0; vez < 3; ++vez) {
        Entra("ana", "x");
    }
    m_Registro.PassaSegundos(4);
    EXPECT_EQ(Usuario("consultaUsuario", SoUsuario(1))->Bloqueado.Valor(), 1);
    m_Registro.PassaSegundos(1);
    EXPECT_EQ(Usuario("consultaUsuario", SoUsuario(1))->Bloqueado.Valor(), 2);
}

TEST_F(ServicosAdministracao, defineSenha_IsTheOnlyOneFromNowOnAndMustBeChanged)
{
    const auto ana = m_Registro.Sessao("ana");
    Anotado();
    const auto mudada = Usuario("defineSenha", Com(SoUsuario(1), &UsuarioED::Senha, Boa));
    EXPECT_EQ(mudada->TrocaSenha.Valor(), 1);
    EXPECT_EQ(mudada->Versao.Valor(), 2);
    EXPECT_EQ(Anotado(), "11 USUARIO1.2 USUARIO altera");
    EXPECT_TRUE(ana->DeveTrocarSenha()); // whoever sits at the session that is open has to know the new one
    EXPECT_EQ(Pede(ana, "lista2", Novo<ListaEquiptoED>()).Recusa,
              "A sua senha foi trocada depois da entrada. Entre de novo.");
    EXPECT_FALSE(Entra("ana", "senha de ana"));
    const auto nova = Entra("ana", Boa);
    ASSERT_TRUE(nova) << m_Recusa;
    EXPECT_TRUE(nova->DeveTrocarSenha());
}

TEST_F(ServicosAdministracao, defineSenha_OfOneselfOrAgainstTheRules_IsRefused)
{
    m_Registro.Cadastra("ana");
    m_Historico = Historico();
    EXPECT_EQ(RecusaDe(m_Marta, "defineSenha", Com(SoUsuario(11), &UsuarioED::Senha, Boa)),
              "A própria senha se troca informando também a atual, e não por aqui.");
    EXPECT_EQ(RecusaDe(m_Marta, "defineSenha", SoUsuario(1)),
              "A senha precisa ter ao menos 12 caracteres; esta tem 0.");
    EXPECT_EQ(RecusaDe(m_Marta, "defineSenha", Com(SoUsuario(1), &UsuarioED::Senha, "souza tigela vidro")),
              "A senha não pode conter o nome de usuário nem o nome da pessoa.");
    NadaMudou();
}

TEST_F(ServicosAdministracao, trocaMinhaSenha_WithThePresentOne_IsFollowedByANewVersion)
{
    const auto carla = m_Registro.Sessao("carla"); // no right at all
    Anotado();
    Faz(carla, "trocaMinhaSenha", Troca("senha de carla", Boa));
    EXPECT_EQ(Anotado(), "3 USUARIO3.2 USUARIO altera");
    EXPECT_FALSE(Entra("carla", "senha de carla"));
    EXPECT_TRUE(Entra("carla", Boa)) << m_Recusa;
}

// Whoever finds the desk unlocked does not guess the password faster there than at the sign-in.
TEST_F(ServicosAdministracao, trocaMinhaSenha_WithAWrongOne_CountsAsARefusedSignIn)
{
    const auto ana = m_Registro.Sessao("ana");
    Anotado();
    for (int vez = 0; vez < 3; ++vez) {
        EXPECT_EQ(RecusaDe(ana, "trocaMinhaSenha", Troca("errada", Boa)),
                  "A senha atual não confere. Nada foi trocado.");
    }
    const std::string espera = "Foram muitas tentativas com senha incorreta. Aguarde 5 segundos e tente de novo.";
    EXPECT_EQ(RecusaDe(ana, "trocaMinhaSenha", Troca("senha de ana", Boa)), espera);
    EXPECT_FALSE(Entra("ana", "senha de ana", "estação de teste"));
    EXPECT_EQ(m_Recusa, espera);
    EXPECT_EQ(Anotado(),
              "- SESSAO1.0 SESSAO recusa senha atual incorreta; - SESSAO1.0 SESSAO recusa senha atual "
              "incorreta; - SESSAO1.0 SESSAO recusa senha atual incorreta; - SESSAO1.0 SESSAO recusa durante "
              "a espera; - SESSAO1.0 SESSAO recusa durante a espera");
    m_Registro.PassaSegundos(5);
    Faz(ana, "trocaMinhaSenha", Troca("senha de ana", Boa));
}

// Whom the administrator moves to another client, or ties to a municipality, does not go on as before.
TEST_F(ServicosAdministracao, alteraUsuario_OfClientSectorOrMunicipality_EndsTheOpenSession)
{
    const auto ana = m_Registro.Sessao("ana");
    Faz(m_Marta, "alteraUsuario", Com(SoUsuario(1), &UsuarioED::CodMunic, 4314902));
    const std::string recusa =
        "O cliente, o setor ou o município de Ana Souza mudou depois da entrada. Saia e entre de novo.";
    EXPECT_EQ(Pede(ana, "lista2", Novo<ListaEquiptoED>()).Recusa, recusa);
    EXPECT_EQ(Pede(ana, "inclui", EquipamentoDe("X-1")).Recusa, recusa);
    EXPECT_TRUE(Pede(m_Registro.Sessao("ana"), "inclui", EquipamentoDe("X-1")).Feita);
    auto outro = Com(SoUsuario(1, 2), &UsuarioED::CodCliente, 2, &UsuarioED::Setor, "Operações");
    Faz(m_Marta, "alteraUsuario", outro);
    EXPECT_TRUE(ana->Clientes().empty());
    int linhas = 0;
    ana->LeReplica(0, [&](const LinhaReplica &) { ++linhas; });
    EXPECT_EQ(linhas, 0);
}

TEST_F(ServicosAdministracao, incluiCliente_AsAsked_StandsInTheRegistryAndItsHistory)
{
    auto pedido = ClienteDe(7, "  Autoridade   Metropolitana ", "sc");
    pedido->Setores = ListaCom<SetorED>({SetorDe("Pátio "), SetorDe("Frota")});
    const auto novo = Cliente("incluiCliente", pedido);
    EXPECT_EQ(novo->NomeCliente.Valor(), "Autoridade Metropolitana");
    EXPECT_EQ(novo->UF.Valor(), "SC");
    EXPECT_EQ(novo->Ativo.Valor(), 1);
    EXPECT_EQ(novo->Versao.Valor(), 1);
    ASSERT_EQ(novo->Setores.Valor()->Count(), 2);
    EXPECT_EQ(novo->Setores.Valor()->Item(1)->NomeSetor.Valor(), "Frota");
    EXPECT_EQ(novo->Setores.Valor()->Item(2)->NomeSetor.Valor(), "Pátio");
    EXPECT_EQ(Anotado(), "11 CLIENTE7.1 CLIENTE inclui; 11 CLIENTE7.1 SETOR inclui; 11 CLIENTE7.1 SETOR inclui");
    auto deLa = Com(UsuarioDe("novo", "Nova Pessoa"), &UsuarioED::CodCliente, 7, &UsuarioED::Setor, "Pátio");
    EXPECT_EQ(Usuario("incluiUsuario", deLa)->Cliente.Valor(), "Autoridade Metropolitana");
}

TEST_F(ServicosAdministracao, incluiCliente_OfWhatCannotBe_IsRefusedWithASentence)
{
    const auto recusa = [&](std::int32_t codigo, const std::string &nome, const std::string &uf,
                            const std::vector<std::string> &setores = {}) {
        auto pedido = ClienteDe(codigo, nome, uf);
        std::vector<Ref<SetorED>> lista;
        for (const std::string &setor : setores) {
            lista.push_back(SetorDe(setor));
        }
        pedido->Setores = ListaCom(lista);
        return RecusaDe(m_Marta, "incluiCliente", pedido);
    };
    EXPECT_EQ(recusa(0, "Autoridade Nova", "SC"),
              "O campo \"código do cliente\" deve estar entre 1 e 2147483647; veio 0.");
    EXPECT_EQ(recusa(-5, "Autoridade Nova", "SC"),
              "O campo \"código do cliente\" deve estar entre 1 e 2147483647; veio -5.");
    EXPECT_EQ(recusa(1, "Autoridade Nova", "SC"), "O código 1 já é do cliente Autoridade Estadual de Trânsito.");
    EXPECT_EQ(recusa(7, "AUTORIDADE ESTADUAL DE TRANSITO", "SC"),
              "Já existe o cliente Autoridade Estadual de Trânsito, de código 1.");
    EXPECT_EQ(recusa(7, "  ", "SC"), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(recusa(7, std::string(61, 'x'), "SC"), "O campo \"nome\" aceita até 60 caracteres e veio com 61.");
    EXPECT_EQ(recusa(7, "Autoridade d'Oeste", "SC"), "O nome \"Autoridade d'Oeste\" tem o caractere ', que não pode "
                                                     "estar no nome de um cliente ou setor.");
    EXPECT_EQ(recusa(7, "Autoridade|Nova", "SC"), "O nome \"Autoridade|Nova\" tem o caractere |, que não pode estar no "
                                                  "nome de um cliente ou setor.");
    EXPECT_EQ(recusa(7, "Autoridade\x7fNova", "SC"), "O campo \"nome\" tem caracteres que não se veem.");
    EXPECT_EQ(recusa(7, "Autoridade Nova", ""), "O estado do cliente precisa ser informado.");
    EXPECT_EQ(recusa(7, "Autoridade Nova", "XX"), "Não existe o estado \"XX\".");
    EXPECT_EQ(recusa(7, "Autoridade Nova", "SC", {""}), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(recusa(7, "Autoridade Nova", "SC", {"Pátio", "PATIO"}), "O setor PATIO foi informado mais de uma vez.");
    NadaMudou();
}

TEST_F(ServicosAdministracao, alteraCliente_StateAndSectors_EachStandsInTheHistory)
{
    auto pedido = Com(SoCliente(2), &ClienteED::UF, "pr");
    pedido->Setores = ListaCom<SetorED>({SetorDe("Frota"), SoSetor(3, false)});
    const auto mudado = Cliente("alteraCliente", pedido);
    EXPECT_EQ(mudado->UF.Valor(), "PR");
    EXPECT_EQ(mudado->Versao.Valor(), 2);
    EXPECT_EQ(mudado->Setores.Valor()->Count(), 2);
    EXPECT_EQ(mudado->Setores.Valor()->Item(2)->Ativo.Valor(), 2); // Operações
    EXPECT_EQ(Anotado(), "11 CLIENTE2.2 CLIENTE altera; 11 CLIENTE2.2 SETOR desativa; 11 CLIENTE2.2 SETOR inclui");

    auto volta = SoCliente(2, 2);
    volta->Setores = ListaCom<SetorED>({SoSetor(3, true)});
    Cliente("alteraCliente", volta);
    EXPECT_EQ(Anotado(), "11 CLIENTE2.3 CLIENTE altera; 11 CLIENTE2.3 SETOR reativa");
    Cliente("alteraCliente", Com(SoCliente(2, 3), &ClienteED::Ativo, 2));
    EXPECT_EQ(Anotado(), "11 CLIENTE2.4 CLIENTE desativa");
    EXPECT_EQ(Cliente("alteraCliente", Com(SoCliente(2, 4), &ClienteED::Ativo, 1))->Ativo.Valor(), 1);
    EXPECT_EQ(Anotado(), "11 CLIENTE2.5 CLIENTE reativa");
    m_Historico = Historico();
    Cliente("alteraCliente", Com(SoCliente(2, 5), &ClienteED::UF, "PR", &ClienteED::Ativo, 1));
    NadaMudou();
}

TEST_F(ServicosAdministracao, alteraCliente_OfWhatCannotBe_IsRefusedWithASentence)
{
    m_Registro.Cadastra("elisa");
    m_Historico = Historico();
    const auto recusa = [&](const Ref<ClienteED> &pedido) { return RecusaDe(m_Marta, "alteraCliente", pedido); };
    const auto setor = [&](std::int32_t cliente, const Ref<SetorED> &um) {
        auto pedido = SoCliente(cliente);
        pedido->Setores = ListaCom<SetorED>({um});
        return recusa(pedido);
    };
    EXPECT_EQ(recusa(Com(SoCliente(1), &ClienteED::NomeCliente, "Outro")),
              "O cliente Autoridade Estadual de Trânsito não pode mudar de nome: os registros de equipamentos o têm.");
    EXPECT_EQ(recusa(Com(SoCliente(1), &ClienteED::UF, "ZZ")), "Não existe o estado \"ZZ\".");
    EXPECT_EQ(recusa(Com(SoCliente(1), &ClienteED::Ativo, 2)),
              "O cliente Autoridade Estadual de Trânsito não pode ser desativado: nele está ativo o usuário Marta "
              "Reis.");
    EXPECT_EQ(setor(2, SoSetor(3, false)), "O setor Operações não pode ser desativado: nele está ativo o usuário Elisa "
                                           "Prado.");
    EXPECT_EQ(setor(2, SoSetor(1, false)), "O setor de número 1 não é do cliente Autoridade Municipal de Trânsito.");
    EXPECT_EQ(setor(2, SetorDe("operacoes")), "O cliente Autoridade Municipal de Trânsito já tem o setor Operações.");
    EXPECT_EQ(setor(2, Com(SoSetor(3, true), &SetorED::NomeSetor, "Outro")),
              "O setor Operações não pode mudar de nome: os registros de equipamentos o têm.");
    EXPECT_EQ(setor(2, SetorDe("a'b")),
              "O nome \"a'b\" tem o caractere ', que não pode estar no nome de um cliente ou setor.");
    auto dois = SoCliente(2);
    dois->Setores = ListaCom<SetorED>({SetorDe("Frota"), SetorDe("FROTA")});
    EXPECT_EQ(recusa(dois), "O setor FROTA foi informado mais de uma vez.");
    NadaMudou();
    Usuario("desativaUsuario", SoUsuario(5));
    auto desativado = SoCliente(2);
    desativado->Setores = ListaCom<SetorED>({SoSetor(3, false)});
    Cliente("alteraCliente", desativado);
    auto denovo = SoCliente(2, 2);
    denovo->Setores = ListaCom<SetorED>({SetorDe("Operações")});
    EXPECT_EQ(recusa(denovo), "O cliente Autoridade Municipal de Trânsito já tem o setor Operações, desativado: "
                              "reative-o.");
}

TEST_F(ServicosAdministracao, listaClientes_TellsAllWithTheirSectors)
{
    const auto lista = Faz(m_Marta, "listaClientes", Novo<ListaClientesED>()).Como<ListaClientesED>();
    EXPECT_EQ(lista->Texto(),
              "ListaClientesED{Clientes=[ClienteED{CodCliente=1, Versao=1, NomeCliente=\"Autoridade Estadual de "
              "Trânsito\", UF=\"RS\", Ativo=1, Setores=[SetorED{NroSetor=1, NomeSetor=\"Fiscalização\", Ativo=1}, "
              "SetorED{NroSetor=2, NomeSetor=\"Metrologia\", Ativo=1}]}, ClienteED{CodCliente=2, Versao=1, "
              "NomeCliente=\"Autoridade Municipal de Trânsito\", UF=\"SP\", Ativo=1, Setores=[SetorED{NroSetor=3, "
              "NomeSetor=\"Operações\", Ativo=1}]}]}");
}

TEST_F(ServicosAdministracao, listaEntradasRecusadas_TellsTheLatestFirst)
{
    m_Registro.Sessao("ana");
    Entra("ana", "x", "mesa 1");
    m_Registro.PassaSegundos(60);
    Entra("ninguém", "x", "mesa 2");
    const auto pagina = Faz(m_Marta, "listaEntradasRecusadas", Novo<ListaEntradasED>()).Como<ListaEntradasED>();
    EXPECT_EQ(pagina->Texto(),
              "ListaEntradasED{Entradas=[EntradaRecusadaED{Momento=\"20/11/2026 às 10:01:00\", Usuario=\"\", "
              "NomePessoa=\"\", Estacao=\"mesa 2\", Motivo=\"usuário inexistente\"}, "
              "EntradaRecusadaED{Momento=\"20/11/2026 às 10:00:00\", Usuario=\"ana\", NomePessoa=\"Ana Souza\", "
              "Estacao=\"mesa 1\", Motivo=\"senha incorreta\"}], Proxima=0}");
}

TEST_F(ServicosAdministracao, listaEntradasRecusadas_OfMany_GoesOnWhereThePageEnds)
{
    for (int vez = 0; vez < 230; ++vez) {
        Entra("ninguém " + std::to_string(vez), "x", "mesa " + std::to_string(vez));
    }
    std::int32_t inicio = 0;
    int esperada = 229;
    for (const std::int32_t quantas : {100, 100, 30}) {
        const auto pagina =
            Faz(m_Marta, "listaEntradasRecusadas", Com(Novo<ListaEntradasED>(), &ListaEntradasED::Proxima, inicio))
                .Como<ListaEntradasED>();
        ASSERT_EQ(pagina->Entradas.Valor()->Count(), quantas);
        for (std::int32_t qual = 1; qual <= quantas; ++qual) {
            EXPECT_EQ(pagina->Entradas.Valor()->Item(qual)->Estacao.Valor(), "mesa " + std::to_string(esperada--));
        }
        inicio = pagina->Proxima;
    }
    EXPECT_EQ(inicio, 0);
}

// The entry in the history is part of the act: where it cannot be written, nothing changes.
TEST_F(ServicosAdministracao, EveryChange_WhoseHistoryCannotBeWritten_IsUndone)
{
    m_Registro.Sessao("ana");
    for (int vez = 0; vez < 3; ++vez) {
        Entra("ana", "x");
    }
    const auto estado = [&] {
        return m_Registro.Sql(
            "SELECT (SELECT group_concat(Numero || Nome || Ativo || Versao || Senha || TrocaSenha) FROM USUARIO) || "
            "(SELECT group_concat(Numero || Acao || Ativo) FROM PERMISSAO) || (SELECT group_concat(UF || Ativo || "
            "Versao) FROM CLIENTE) || (SELECT group_concat(Nome || Ativo) FROM SETOR) || (SELECT group_concat(Vezes) "
            "FROM ENTRADA_RECUSADA)");
    };
    const std::string antes = estado();
    m_Registro.Sql("CREATE TRIGGER SEM_HISTORICO BEFORE INSERT ON HISTORICO BEGIN SELECT RAISE(ABORT, 'x'); END");
    auto setores = SoCliente(1);
    setores->Setores = ListaCom<SetorED>({SetorDe("Frota")});
    const std::vector<std::pair<std::string, Ref<Objeto>>> mudancas = {
        {"incluiUsuario", UsuarioDe("novo", "Nova Pessoa")},
        {"alteraUsuario", Com(SoUsuario(1), &UsuarioED::NomePessoa, "Outra")},
        {"desativaUsuario", SoUsuario(1)},
        {"desbloqueiaUsuario", SoUsuario(1)},
        {"defineSenha", Com(SoUsuario(1), &UsuarioED::Senha, Boa)},
        {"incluiCliente", ClienteDe(7, "Autoridade Nova", "SC")},
        {"alteraCliente", setores},
    };
    for (const auto &[metodo, pedido] : mudancas) {
        EXPECT_EQ(FalhaLancada([&, &metodo = metodo, &pedido = pedido] {
                      Pede(m_Marta, metodo, pedido, "AdministracaoRN");
                  }).Numero,
                  51)
            << metodo;
        EXPECT_EQ(estado(), antes) << metodo;
    }
}

// A registry as it is made, with nobody in it.
class ServicosPrimeiroAdministrador : public testing::Test {
  protected:
    Ref<Servicos> Abre() const
    {
        return Servicos::Abre(
            Caminho(), [] { return DataDe(20, 11, 2026, 10, 0, 0); }, CustoDeTeste);
    }
    const std::string &Caminho() const { return m_Lugar.Onde(); }
    std::string Sql(const std::string &comando) const { return LinhasSql(Caminho(), comando).at(0); }
    // Why it is refused, which leaves nothing; empty when it goes through.
    std::string Recusa(const ClienteCadastrado &cliente, const Operador &quem, const std::string &senha)
    {
        const std::string conta =
            "SELECT (SELECT COUNT(*) FROM USUARIO) || '' || (SELECT COUNT(*) FROM CLIENTE) || (SELECT "
            "COUNT(*) FROM SETOR) || (SELECT COUNT(*) FROM HISTORICO)";
        const std::string antes = Sql(conta);
        std::string recusa = "antiga";
        const bool feito = m_Servicos->PrimeiroAdministrador(cliente, quem, senha, recusa);
        EXPECT_EQ(feito, recusa.empty());
        EXPECT_EQ(Sql(conta) == antes, !feito);
        return recusa;
    }

    const ClienteCadastrado m_Cliente{5, "Autoridade Nova", {"Frota", "Metrologia"}, "sc"};
    const Operador m_Quem{0, "bento.luz", "Bento Luz", 0, "", "Metrologia", 0};
    motor::RegistroVazio m_Lugar;
    Ref<Servicos> m_Servicos = Servicos::Cria(
        Caminho(), TipoDeRegistro::Registro, [] { return DataDe(20, 11, 2026, 10, 0, 0); }, CustoDeTeste);
};

TEST_F(ServicosPrimeiroAdministrador, OfAnEmptyRegistry_MayDoEverythingAtOnce)
{
    EXPECT_EQ(Recusa(m_Cliente, m_Quem, Boa), "");
    std::string recusa;
    std::int32_t espera = 0;
    const auto sessao = m_Servicos->Entra("bento.luz", Boa, "mesa 1", recusa, espera);
    ASSERT_TRUE(sessao) << recusa;
    EXPECT_FALSE(sessao->DeveTrocarSenha());
    EXPECT_EQ(sessao->Operador().Numero, 1);
    EXPECT_EQ(sessao->Operador().Cliente, "Autoridade Nova");
    EXPECT_EQ(sessao->Operador().Setor, "Metrologia");
    for (const Direito &direito : Permissoes::Direitos()) {
        EXPECT_TRUE(sessao->TemPermissao("NAB", direito.Objeto, direito.Acao)) << direito.Palavras;
    }
    EXPECT_EQ(LinhasSql(Caminho(),
                        "SELECT COALESCE('' || Operador, '-') || Entidade || NroEntidade || Acao FROM HISTORICO "
                        "WHERE Entidade NOT IN ('SESSAO', 'ESTACAO', 'PERMISSAO', 'LAYOUT') ORDER BY Nro"),
              (std::vector<std::string>{"-REGISTRO1inclui", "-CLIENTE5inclui", "-SETOR1inclui", "-SETOR2inclui",
                                        "-USUARIO1inclui"}));
    EXPECT_EQ(Sql("SELECT UF FROM CLIENTE"), "SC");
    EXPECT_TRUE(Pede(sessao, "inclui", EquipamentoDe("X-1")).Feita);
}

TEST_F(ServicosPrimeiroAdministrador, WhereSomebodyIs_IsRefused)
{
    EXPECT_EQ(Recusa(m_Cliente, m_Quem, Boa), "");
    const std::string recusa = "O registro já tem usuários: quem os administra inclui os outros.";
    EXPECT_EQ(Recusa({6, "Outra Autoridade", {}, "PR"}, {0, "outro", "Outro", 0, "", "", 0}, Outra), recusa);
    LinhasSql(Caminho(), "UPDATE USUARIO SET Ativo = 2");
    m_Servicos = Abre();
    EXPECT_EQ(Recusa({6, "Outra Autoridade", {}, "PR"}, {0, "outro", "Outro", 0, "", "", 0}, Outra), recusa);
}

TEST_F(ServicosPrimeiroAdministrador, OfWhatCannotBe_IsRefusedAndLeavesNothing)
{
    EXPECT_EQ(Recusa(m_Cliente, m_Quem, "registro2026"),
              "Esta senha é feita de palavras e números que todos usam e seria adivinhada logo. Escolha outra: três ou "
              "quatro palavras que ninguém esperaria juntas são uma boa senha.");
    EXPECT_EQ(Recusa(m_Cliente, m_Quem, "bento rema contra"),
              "A senha não pode conter o nome de usuário nem o nome da pessoa.");
    EXPECT_EQ(Recusa({0, "Autoridade Nova", {}, "SC"}, m_Quem, Boa),
              "O campo \"código do cliente\" deve estar entre 1 e 2147483647; veio 0.");
    EXPECT_EQ(Recusa({5, "Autoridade Nova", {}, "XX"}, m_Quem, Boa), "Não existe o estado \"XX\".");
    EXPECT_EQ(Recusa({5, "Autoridade Nova", {}, "SC"}, m_Quem, Boa),
              "O cliente Autoridade Nova não tem o setor ativo \"Metrologia\".");
    EXPECT_EQ(Recusa(m_Cliente, {0, "", "Bento", 0, "", "", 0}, Boa), "O campo \"usuário\" precisa ser informado.");
    EXPECT_EQ(Recusa(m_Cliente, {0, "bento", "", 0, "", "", 0}, Boa), "O campo \"nome\" precisa ser informado.");
    EXPECT_EQ(Recusa(m_Cliente, {0, "bento", "Bento", 0, "", "", 7}, Boa), "Não existe o município de código 7.");
    EXPECT_EQ(Recusa(m_Cliente, m_Quem, Boa), "");
}

} // namespace
