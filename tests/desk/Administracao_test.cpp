#include "desk/host/Administracao.h"

#include "desk/host/PaginaClientes.h"
#include "desk/host/PaginaEntradas.h"
#include "desk/host/PaginaLayouts.h"
#include "desk/host/PaginaLogradouros.h"
#include "desk/host/PaginaUsuarios.h"
#include "desk/tour/Telas.h"
#include "desk/windows/JanelaAdministracao.h"
#include "tests/desk/MesaTeste.h"
#include "tests/desk/Retrato.h"
#include "tests/desk/Teclado.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QTableWidget>

#include <gtest/gtest.h>

#include <algorithm>

using namespace mesa;

namespace {

using Linha = std::vector<std::string>;
constexpr const char *Segura = "cavalo grampeador azul";

// The pages over real services, in the hands of marta, who administers everything.
class PaginasTeste : public testing::Test {
  protected:
    template <class Pagina> std::unique_ptr<Pagina> Abre()
    {
        auto pagina = std::make_unique<Pagina>(registro.Sessao("marta"));
        Le(*pagina);
        return pagina;
    }
    static void Le(PaginaAdministracao &pagina)
    {
        std::string recusa;
        EXPECT_TRUE(pagina.Carrega(recusa)) << recusa;
    }
    static std::optional<std::size_t> LinhaCom(const PaginaAdministracao &pagina, const std::string &texto)
    {
        const auto linhas = pagina.Linhas();
        for (std::size_t linha = 0; linha < linhas.size(); ++linha) {
            if (std::ranges::find(linhas[linha], texto) != linhas[linha].end()) {
                return linha;
            }
        }
        return std::nullopt;
    }
    static Linha CelulasDe(const PaginaAdministracao &pagina, const std::string &texto)
    {
        const auto linha = LinhaCom(pagina, texto);
        return linha ? pagina.Linhas()[*linha] : Linha{};
    }
    static Ficha Formulario(PaginaAdministracao &pagina, const std::string &comando, const std::string &texto = "")
    {
        std::string recusa;
        auto ficha = pagina.Abre(comando, LinhaCom(pagina, texto), recusa);
        if (!ficha) {
            throw std::runtime_error("no form: " + recusa);
        }
        return std::move(*ficha);
    }
    // "" when it was taken.
    static std::string Salva(Ficha &ficha)
    {
        const auto problema = ficha.Salva(ficha);
        return problema ? problema->Campo + ": " + problema->Frase : "";
    }
    static std::string Faz(PaginaAdministracao &pagina, const std::string &comando, const std::string &texto)
    {
        std::string recusa;
        return pagina.Faz(comando, LinhaCom(pagina, texto), recusa) ? "" : recusa;
    }
    static std::string Habilitados(const PaginaAdministracao &pagina, std::optional<std::size_t> linha)
    {
        std::string habilitados;
        for (const ComandoDaPagina &comando : pagina.Comandos()) {
            habilitados += pagina.Habilitado(comando.Nome, linha) ? comando.Nome + " " : "";
        }
        return habilitados;
    }

    RegistroDeTeste registro;
};

TEST_F(PaginasTeste, Offered_FollowTheRights)
{
    const auto nomes = [&](const std::string &usuario) {
        Linha oferecidas;
        for (const auto &pagina : Administracao(registro.Sessao(usuario)).Paginas()) {
            oferecidas.emplace_back(pagina->Nome());
        }
        return oferecidas;
    };
    EXPECT_EQ(nomes("marta"), (Linha{"usuarios", "clientes", "entradas", "logradouros", "layouts"}));
    EXPECT_EQ(nomes("tadeu"), (Linha{"logradouros", "layouts"}));
    EXPECT_EQ(nomes("ana"), Linha{});
}

TEST_F(PaginasTeste, Users_AreShownWithTheirStateAndOfferWhatFitsIt)
{
    registro.Cadastra("bruno");
    const auto pagina = Abre<PaginaUsuarios>();
    EXPECT_EQ(CelulasDe(*pagina, "bruno"),
              (Linha{"bruno", "Bruno Lima", "Autoridade Estadual de Trânsito", "Fiscalização", "Ativo"}));
    EXPECT_EQ(Habilitados(*pagina, std::nullopt), "incluir ");
    EXPECT_EQ(Habilitados(*pagina, LinhaCom(*pagina, "bruno")), "incluir editar senha desativar ");
    EXPECT_EQ(pagina->Pergunta("desativar", LinhaCom(*pagina, "bruno")),
              "Desativar o usuário bruno (Bruno Lima)? Ele não poderá mais entrar; o que fez continua no histórico.");
    EXPECT_EQ(Faz(*pagina, "desativar", "bruno"), "");
    EXPECT_EQ(CelulasDe(*pagina, "bruno").back(), "Desativado");
    EXPECT_EQ(Habilitados(*pagina, LinhaCom(*pagina, "bruno")), "incluir editar reativar ");
    EXPECT_EQ(Faz(*pagina, "reativar", "bruno"), "");
    EXPECT_EQ(CelulasDe(*pagina, "bruno").back(), "Ativo");
}

TEST_F(PaginasTeste, User_Included_HasTheRightsInWordsAndTheSectorsOfItsClient)
{
    const auto pagina = Abre<PaginaUsuarios>();
    Ficha ficha = Formulario(*pagina, "incluir");
    EXPECT_EQ(Salva(ficha), "usuario: Informe o usuário com que a pessoa entra.");
    ficha.Campo("usuario").Valor = "nair";
    EXPECT_EQ(Salva(ficha), "nome: Informe o nome da pessoa.");
    ficha.Campo("nome").Valor = "Nair Campos";
    EXPECT_EQ(Salva(ficha), "senha: Informe a senha.");
    ficha.Campo("senha").Senha = Segura;
    EXPECT_EQ(Salva(ficha), "senha: As duas senhas não são iguais. Digite-as de novo.");
    ficha.Campo("repetida").Senha = Segura;

    ficha.Campo("cliente").Valor = "2";
    ficha.Mudou(ficha, "cliente");
    ASSERT_EQ(ficha.Campo("setor").Opcoes.size(), 2U);
    EXPECT_EQ(ficha.Campo("setor").Opcoes[1].Texto, "Operações");
    ficha.Campo("setor").Valor = "Operações";
    const auto &direito = ficha.Campo("direito_VOR-EQP-CS_I");
    EXPECT_EQ(direito.Rotulo, "Incluir equipamentos e limites");
    EXPECT_EQ(direito.Valor, "2");
    ficha.Campo("direito_VOR-EQP-CS_I").Valor = "1";
    EXPECT_EQ(Salva(ficha), "");

    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "nair"),
              (Linha{"nair", "Nair Campos", "Autoridade Municipal de Trânsito", "Operações", "Ativo"}));
    EXPECT_EQ(registro.Sql("SELECT TrocaSenha FROM USUARIO WHERE Usuario = 'nair'"), "1");
    Ficha editada = Formulario(*pagina, "editar", "nair");
    EXPECT_TRUE(editada.Marcado("direito_VOR-EQP-CS_I"));
    EXPECT_FALSE(editada.Marcado("direito_VOR-EQP-CS_E"));
    EXPECT_TRUE(editada.Campo("usuario").Travado);
    EXPECT_EQ(editada.Valor("setor"), "Operações");
}

TEST_F(PaginasTeste, User_EditedByTwo_IsRefusedToTheSecond)
{
    registro.Cadastra("bruno");
    const auto pagina = Abre<PaginaUsuarios>();
    Ficha primeira = Formulario(*pagina, "editar", "bruno");
    Ficha segunda = Formulario(*pagina, "editar", "bruno");
    primeira.Campo("nome").Valor = "Bruno de Lima";
    segunda.Campo("nome").Valor = "B. Lima";
    EXPECT_EQ(Salva(primeira), "");
    EXPECT_NE(Salva(segunda), "");
    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "bruno")[1], "Bruno de Lima");
}

TEST_F(PaginasTeste, User_WithoutAMunicipalityOfTheList_IsNotTakenForAll)
{
    registro.Cadastra("davi");
    const auto pagina = Abre<PaginaUsuarios>();
    Ficha ficha = Formulario(*pagina, "editar", "davi");
    EXPECT_EQ(ficha.Valor("municipio"), "4314902");
    ficha.Campo("municipio").Valor = "";
    EXPECT_EQ(Salva(ficha), "municipio: Escolha na lista o município, ou todos eles.");
}

TEST_F(PaginasTeste, Password_SetBySomebodyElse_IsGoodForOneSignIn)
{
    registro.Cadastra("bruno");
    const auto pagina = Abre<PaginaUsuarios>();
    Ficha ficha = Formulario(*pagina, "senha", "bruno");
    ficha.Campo("senha").Senha = ficha.Campo("repetida").Senha = "curta";
    EXPECT_NE(Salva(ficha), "");
    ficha.Campo("senha").Senha = ficha.Campo("repetida").Senha = Segura;
    EXPECT_EQ(Salva(ficha), "");
    EXPECT_EQ(registro.Sql("SELECT TrocaSenha FROM USUARIO WHERE Usuario = 'bruno'"), "1");
}

TEST_F(PaginasTeste, Clients_AreIncludedAndTheirSectorsTakenOutOfUse)
{
    const auto pagina = Abre<PaginaClientes>();
    Ficha nova = Formulario(*pagina, "incluir");
    EXPECT_EQ(Salva(nova), "codCliente: Informe o código do cliente, um número de 1 a 999999.");
    nova.Campo("codCliente").Valor = "8";
    EXPECT_EQ(Salva(nova), "nome: Informe o nome do cliente.");
    nova.Campo("nome").Valor = "Autoridade das Estradas de Rodagem";
    EXPECT_EQ(Salva(nova), "estado: Informe o estado do cliente.");
    nova.Campo("estado").Valor = "MG";
    nova.Campo("novos").Valor = "Norte\n\n Sul \n";
    EXPECT_EQ(Salva(nova), "");
    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "8"), (Linha{"8", "Autoridade das Estradas de Rodagem", "MG", "Norte, Sul", "Ativo"}));

    Ficha editada = Formulario(*pagina, "editar", "8");
    const auto norte = std::ranges::find(editada.Campos, "Norte", &CampoDaFicha::Rotulo);
    ASSERT_NE(norte, editada.Campos.end());
    norte->Valor = "2";
    editada.Campo("novos").Valor = "Leste";
    EXPECT_EQ(Salva(editada), "");
    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "8")[3], "Leste, Sul");
    EXPECT_EQ(Habilitados(*pagina, LinhaCom(*pagina, "8")), "incluir editar desativar ");
    EXPECT_EQ(Faz(*pagina, "desativar", "8"), "");
    EXPECT_EQ(Habilitados(*pagina, LinhaCom(*pagina, "8")), "incluir editar reativar ");
}

TEST_F(PaginasTeste, RefusedSignIns_AreShownWithoutWhatWasTypedForNobody)
{
    registro.Cadastra("bruno");
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_TRUE(registro.Aberto().Entra("bruno", "errada", "estação A", recusa, espera).Nada());
    EXPECT_TRUE(registro.Aberto().Entra("minhasenha", "errada", "estação A", recusa, espera).Nada());
    const auto pagina = Abre<PaginaEntradas>();
    EXPECT_NE(LinhaCom(*pagina, "bruno"), std::nullopt);
    EXPECT_NE(LinhaCom(*pagina, "(desconhecido)"), std::nullopt);
    EXPECT_EQ(LinhaCom(*pagina, "minhasenha"), std::nullopt);
    EXPECT_EQ(Habilitados(*pagina, std::nullopt), "atualizar ");
}

TEST_F(PaginasTeste, Streets_AreSoughtIncludedEditedAndDeactivated)
{
    const auto pagina = Abre<PaginaLogradouros>();
    EXPECT_EQ(pagina->Nota(), "Informe o município, ou ao menos cinco algarismos do CEP.");
    pagina->Criterios()->Campo("municipio").Valor = "4314902";
    Ficha nova = Formulario(*pagina, "incluir");
    EXPECT_EQ(nova.Valor("municipio"), "4314902");
    EXPECT_NE(Salva(nova).find("nome: "), std::string::npos);
    nova.Campo("nome").Valor = "Rua Bento Gonçalves";
    nova.Campo("bairro").Valor = "Centro";
    nova.Campo("cep").Valor = "90010-150";
    EXPECT_EQ(Salva(nova), "");
    pagina->Criterios()->Campo("procurado").Valor = "bento goncalves";
    Le(*pagina);
    const Linha rua = CelulasDe(*pagina, "Rua Bento Gonçalves");
    ASSERT_EQ(rua.size(), 5U);
    EXPECT_EQ(Linha(rua.begin() + 1, rua.end()), (Linha{"Rua Bento Gonçalves", "Centro", "90010-150", "Ativo"}));

    Ficha editada = Formulario(*pagina, "editar", "Rua Bento Gonçalves");
    EXPECT_TRUE(editada.Campo("municipio").Travado);
    editada.Campo("bairro").Valor = "Partenon";
    EXPECT_EQ(Salva(editada), "");
    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "Rua Bento Gonçalves"),
              (Linha{rua[0], "Rua Bento Gonçalves", "Partenon", "90010-150", "Ativo"}))
        << "and the code stays";
    EXPECT_EQ(Faz(*pagina, "desativar", "Rua Bento Gonçalves"), "");
    EXPECT_EQ(LinhaCom(*pagina, "Rua Bento Gonçalves"), std::nullopt);
    EXPECT_EQ(pagina->Nota(), "Nenhum logradouro foi encontrado.");
    pagina->Criterios()->Campo("desativados").Valor = "1";
    Le(*pagina);
    EXPECT_EQ(CelulasDe(*pagina, "Rua Bento Gonçalves").back(), "Desativado");
    EXPECT_EQ(Faz(*pagina, "reativar", "Rua Bento Gonçalves"), "");
    EXPECT_EQ(CelulasDe(*pagina, "Rua Bento Gonçalves").back(), "Ativo");
}

TEST_F(PaginasTeste, Streets_ImportedFromATable_AreAllOrNoneWithEachBadRow)
{
    const auto pagina = Abre<PaginaLogradouros>();
    std::string recusa;
    const auto ma = pagina->FazComArquivo(
        "importar", "4314902;Rua Um;Centro;90010150\n999;Rua Dois;Centro;90010160\n4314902;;Centro;90010170\n", recusa);
    ASSERT_TRUE(ma) << recusa;
    EXPECT_EQ(ma->Frase, "Nada foi incluído: 2 linhas da tabela foram recusadas. Corrija a tabela e importe de novo.");
    ASSERT_EQ(ma->Linhas.size(), 2U);
    EXPECT_EQ(ma->Linhas[0].substr(0, 9), "Linha 2: ");
    EXPECT_EQ(ma->Linhas[1].substr(0, 9), "Linha 3: ");
    const auto boa =
        pagina->FazComArquivo("importar", "4314902;Rua Um;Centro;90010150\n4314902;Rua Dois;Centro;90010160\n", recusa);
    ASSERT_TRUE(boa) << recusa;
    EXPECT_EQ(boa->Frase, "2 logradouros foram incluídos; 0 já existiam.");
    EXPECT_EQ(pagina->FazComArquivo("importar", "4314902;Rua Um;Centro;90010150\n", recusa)->Frase,
              "0 logradouros foram incluídos; 1 já existia.");
    EXPECT_FALSE(pagina->FazComArquivo("importar", "4314902;Rua \xFF;Centro;90010150\n", recusa));
    EXPECT_NE(recusa, "");
}

TEST_F(PaginasTeste, Layouts_AreIncludedEditedAndDeactivated)
{
    const auto pagina = Abre<PaginaLayouts>();
    Ficha novo = Formulario(*pagina, "incluir");
    EXPECT_EQ(Salva(novo), "nome: Informe o nome do layout.");
    novo.Campo("nome").Valor = "RADAR2";
    novo.Campo("conteudo").Valor = "linha um\nlinha dois\n";
    EXPECT_EQ(Salva(novo), "");
    Le(*pagina);
    Ficha editado = Formulario(*pagina, "editar", "RADAR2");
    EXPECT_TRUE(editado.Campo("nome").Travado);
    EXPECT_EQ(editado.Valor("conteudo"), "linha um\nlinha dois\n");
    editado.Campo("conteudo").Valor = "outra\n";
    EXPECT_EQ(Salva(editado), "");
    Le(*pagina);
    EXPECT_EQ(Faz(*pagina, "desativar", "RADAR2"), "");
    EXPECT_EQ(CelulasDe(*pagina, "RADAR2"), (Linha{"RADAR2", "Desativado"}));
}

// The administration on the screen, in the hands of saulo, who may do everything.
class AdministracaoTeste : public MesaTeste {
  protected:
    AdministracaoTeste()
    {
        registro.Cadastra("bruno");
        mesa.show();
        mesa.Entra(registro.Sessao("saulo"));
    }
    static void Percorre(const std::function<void(Teclado &)> &jornada) { EXPECT_EQ(Teclado::Percorre(jornada), ""); }
    static void Retrata(const QString &nome)
    {
        const QString defeitos = NaTela([&] {
            QWidget *janela = Teclado::Frente();
            Fotografa(*janela, nome);
            return DefeitosDaJanela(*janela).join("\n");
        });
        EXPECT_EQ(defeitos.toStdString(), "") << nome.toStdString();
    }
    static void AbreAdministracao(Teclado &t)
    {
        t.Alt('M').EscolheNoMenu("Usuários").EsperaJanela("Administracao").EsperaPagina("paginas", 0);
    }
};

TEST_F(AdministracaoTeste, User_IsIncludedEditedAndDeactivated_ByKeys)
{
    Percorre([](Teclado &t) {
        AbreAdministracao(t);
        t.EsperaLinhas("usuarios", 2);
        Retrata("administracao-usuarios");
        t.Alt('I').EsperaJanela("FichaUsuario");
        Retrata("usuario-novo");
        t.TabAte("usuario")
            .Escreve("nair\tNair Campos\t")
            .TabAte("cliente")
            .DesceAte("Autoridade Municipal de Trânsito");
        t.TabAte("setor").DesceAte("Operações");
        t.TabAte("direito_VOR-EQP-CS_I").Tecla(Qt::Key_Space);
        t.TabAte("senha").Escreve("curta\tcurta").Alt('O');
        t.EsperaFoco("senha");
        Retrata("usuario-novo-recusado");
        t.Ctrl(Qt::Key_A).Escreve("cavalo grampeador azul").TabAte("repetida").Ctrl(Qt::Key_A);
        t.Escreve("cavalo grampeador azul").Alt('O').EsperaJanela("Administracao").EsperaLinhas("usuarios", 3);
        t.TabAte("usuarios/linhas").Tecla(Qt::Key_Home).EsperaLinha("usuarios", 1, "bruno");
        t.Tecla(Qt::Key_Down).EsperaLinha("usuarios", 2, "nair");
        t.Alt('E').EsperaJanela("FichaUsuario").EsperaTexto("nome", "Nair Campos");
        t.EsperaTexto("direito_VOR-EQP-CS_I", "marcado").EsperaTexto("direito_VOR-EQP-CS_E", "desmarcado");
        t.TabAte("nome").Ctrl(Qt::Key_A).Escreve("Nair de Campos").Alt('O').EsperaJanela("Administracao");
        t.EsperaLinha("usuarios", 2, "Nair de Campos");
        t.Alt('D').EsperaCaixa("Desativar o usuário nair").Alt('N').EsperaJanela("Administracao");
        t.EsperaLinha("usuarios", 2, "Ativo");
        t.Alt('D').EsperaCaixa("Desativar o usuário nair").Alt('S').EsperaLinha("usuarios", 2, "Desativado");
        t.Alt('F').EsperaJanela("Mesa");
    });
    EXPECT_EQ(registro.Sql("SELECT Ativo FROM USUARIO WHERE Usuario = 'nair'"), "2");
}

TEST_F(AdministracaoTeste, EveryPage_IsReachedByItsLetterAndWithoutADefect)
{
    Percorre([](Teclado &t) {
        AbreAdministracao(t);
        t.Alt('C').EsperaPagina("paginas", 1).EsperaLinhas("clientes", 2);
        Retrata("administracao-clientes");
        t.Alt('E').EsperaJanela("FichaCliente");
        Retrata("cliente");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Administracao");
        t.Alt('R').EsperaPagina("paginas", 2);
        Retrata("administracao-entradas");
        t.Alt('L').EsperaPagina("paginas", 3);
        t.TabAte("municipio").Escreve("sao leopoldo/rs").Tecla(Qt::Key_Return);
        t.Alt('I').EsperaJanela("FichaLogradouro");
        Retrata("logradouro");
        t.TabAte("nome").Escreve("Rua Independência\tCentro\t93010-001").Alt('O').EsperaJanela("Administracao");
        t.Alt('O').EsperaLinhas("logradouros", 1);
        Retrata("administracao-logradouros");
        t.Alt('Y').EsperaPagina("paginas", 4);
        Retrata("administracao-layouts");
        t.Alt('I').EsperaJanela("FichaLayout");
        Retrata("layout");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Administracao").Tecla(Qt::Key_Escape).EsperaJanela("Mesa");
    });
}

TEST_F(AdministracaoTeste, Table_IsImportedFromAFile_AndItsBadRowsAreShown)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString tabela = pasta.filePath("ruas.csv");
    QFile arquivo(tabela);
    ASSERT_TRUE(arquivo.open(QIODevice::WriteOnly));
    arquivo.write("4314902;Rua Um;Centro;90010150\n1;Rua Dois;Centro;90010160\n");
    arquivo.close();
    Percorre([&](Teclado &t) {
        AbreAdministracao(t);
        t.Alt('L').EsperaPagina("paginas", 3).Alt('M').EsperaEscolhaDeArquivo().Escreve(tabela + "\r");
        t.EsperaJanela("Relato");
        t.EsperaTexto("frase",
                      "Nada foi incluído: 1 linha da tabela foi recusada. Corrija a tabela e importe de novo.");
        Retrata("importacao-recusada");
        t.Alt('F').EsperaJanela("Administracao");
    });
}

TEST_F(AdministracaoTeste, Menus_OfTheAdministration_FollowTheRights)
{
    const auto visivel = [&](const char *nome) { return mesa.findChild<QAction *>(nome)->isVisible(); };
    AtosDoRegistro atos;
    atos.Confere = [] { return [](const Segue &) { return ResultadoDoAto{}; }; };
    mesa.DefineAtos(atos);
    EXPECT_TRUE(visivel("administracao"));
    EXPECT_TRUE(visivel("menuRegistro"));
    EXPECT_TRUE(visivel("conferirRegistro"));
    EXPECT_FALSE(visivel("fazerCopia"));
    mesa.Sai();
    EXPECT_FALSE(visivel("administracao"));
    EXPECT_FALSE(visivel("menuRegistro"));
    mesa.Entra(registro.Sessao("tadeu"));
    EXPECT_TRUE(visivel("administracao"));
    EXPECT_FALSE(visivel("menuRegistro"));
}

TEST_F(AdministracaoTeste, CheckOfTheRegistry_LeavesItsResultInTheStatusBar)
{
    AtosDoRegistro atos;
    atos.Confere = [] {
        return [](const Segue &segue) {
            segue(1, "");
            return ResultadoDoAto{true, "Tudo foi conferido.", {}};
        };
    };
    mesa.DefineAtos(atos);
    Percorre([](Teclado &t) {
        t.Alt('G').EscolheNoMenu("Conferir registro").EsperaJanela("Trabalho").EsperaTexto("fechar", "&Fechar");
        t.Alt('F').EsperaTexto("estadoConferencia", "Conferido em 20/11/2026 às 10:00: sem problemas");
    });
}

TEST_F(AdministracaoTeste, MyPassword_IsChangedByKeys)
{
    Percorre([](Teclado &t) {
        t.Alt('E').EscolheNoMenu("Trocar minha senha").EsperaJanela("MinhaSenha").EsperaFoco("atual");
        Retrata("minha-senha");
        t.Escreve("senha errada\tcavalo grampeador azul\tcavalo grampeador azul\r").EsperaFoco("atual");
        t.Ctrl(Qt::Key_A).Escreve("senha de saulo\r").EsperaJanela("Mesa");
    });
    std::string recusa;
    std::int32_t espera = 0;
    EXPECT_FALSE(registro.Aberto().Entra("saulo", Segura, "estação", recusa, espera).Nada()) << recusa;
}

// Somebody else has set the password.
TEST_F(AdministracaoTeste, PasswordThatMustBeChanged_IsChangedOrNobodyIsIn)
{
    PaginaUsuarios pagina(registro.Sessao("saulo"));
    std::string recusa;
    ASSERT_TRUE(pagina.Carrega(recusa));
    auto ficha = pagina.Abre("senha", 0, recusa);
    ficha->Campo("senha").Senha = ficha->Campo("repetida").Senha = Segura;
    ASSERT_FALSE(ficha->Salva(*ficha));
    mesa.Sai();
    bool entrou = false;
    QMetaObject::invokeMethod(
        &mesa, [&] { entrou = mesa.PedeEntrada(); }, Qt::QueuedConnection);
    Percorre([](Teclado &t) {
        t.EsperaJanela("Entrada").Escreve("bruno\tcavalo grampeador azul\r").EsperaJanela("MinhaSenha");
        Retrata("senha-obrigada");
        t.Tecla(Qt::Key_Escape).EsperaJanela("Entrada").EsperaTexto("estadoUsuario", "Ninguém entrou");
        t.EsperaFoco("senha"); // whoever was there is offered
        t.Escreve("cavalo grampeador azul\r").EsperaJanela("MinhaSenha").EsperaFoco("atual");
        t.Escreve("cavalo grampeador azul\tteclado girafa verde\tteclado girafa verde\r");
        t.EsperaTexto("estadoUsuario", "Usuário: Bruno Lima");
    });
    EXPECT_TRUE(entrou);
}

} // namespace
