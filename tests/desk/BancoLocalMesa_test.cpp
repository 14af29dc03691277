#include "tests/desk/HospedeiroDeTeste.h"

#include "controls/OrdemPortuguesa.h"
#include "host/Falha.h"
#include "tests/services/PastaDeTeste.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

// A session of which only the replica is asked.
class SessaoDeReplica : public SessaoServico {
  public:
    std::string_view NomeTipo() const override { return "SessaoDeReplica"; }

    std::vector<LinhaReplica> Linhas;
    bool Falha = false; // behind the last row
    std::vector<ClienteCadastrado> Cadastrados;
    ::Operador Quem;

    const ::Operador &Operador() const override { return Quem; }
    bool DeveTrocarSenha() override { return false; }
    std::string AvisoDeRelogio() const override { return ""; }
    bool TemPermissao(const std::string &, const std::string &, const std::string &) override { return true; }
    bool Executa(const std::string &, const std::string &, Ref<Objeto> &, Valor &, std::string &) override
    {
        return false;
    }
    void PerguntaMotivo(PerguntaDeMotivo) override {}
    void Acompanha(Segue segue) override { m_Segue = std::move(segue); }
    bool GuardaDocumento(const Bytes &, double &, std::string &) override { return false; }
    bool LeDocumento(double, Bytes &, std::string &) override { return false; }
    std::vector<AfericaoComDocumento> AfericoesDoDocumento(double) override { return {}; }
    std::vector<AfericaoComDocumento> AfericoesDoDocumentoDa(double) override { return {}; }
    bool VersoesDaAfericao(double, std::vector<VersaoAfericao> &, std::string &) override { return false; }
    bool ComoConhecido(std::int32_t, const Instante &, EquipamentoConhecido &, std::string &) override { return false; }
    std::vector<ClienteCadastrado> Clientes() override { return Cadastrados; }
    Replicado LeReplica(std::int64_t, const std::function<void(const LinhaReplica &)> &cadaLinha) override
    {
        for (const LinhaReplica &linha : Linhas) {
            if (m_Segue && !m_Segue(0.5, linha.Codigo)) {
                return {};
            }
            cadaLinha(linha);
        }
        if (Falha) {
            throw std::runtime_error("the connection went away");
        }
        return {DataDe(20, 11, 2026)};
    }

  private:
    Segue m_Segue;
};

class BancoLocalMesaTeste : public testing::Test {
  protected:
    Textos Coluna(const std::string &coluna, const std::string &sql)
    {
        Textos valores;
        const Ref<ICursor> cursor =
            mesa.Host->BancoLocal->Abre()->OpenRecordset(sql, InstantaneoSomenteLeitura, Valor(), Valor());
        for (; !cursor->EOF_(); cursor->MoveNext()) {
            valores.push_back(cursor->Fields(coluna)->Value().Texto());
        }
        return valores;
    }
    // A directory of its own.
    std::filesystem::path Pasta(const std::string &nome)
    {
        std::filesystem::create_directories(mesa.Diretorio() / nome);
        return mesa.Diretorio() / nome;
    }
    void Replica(const std::vector<LinhaReplica> &linhas, bool falha = false)
    {
        SessaoDeReplica sessao;
        sessao.Linhas = linhas;
        sessao.Falha = falha;
        mesa.Host->BancoLocal->AtualizaReplica(sessao);
    }

    // Somebody of a client of the state has signed in, perhaps tied to a municipality.
    void EntraAlguemDe(const std::string &uf, std::int32_t codMunic = 0)
    {
        SessaoDeReplica sessao;
        sessao.Quem.CodMunic = codMunic;
        sessao.Cadastrados = {{0, "Autoridade Municipal de Trânsito", {}, uf}};
        mesa.Host->BancoLocal->AtualizaReplica(sessao);
    }

    HospedeiroDeTeste mesa;
};

const std::string DoEstado =
    "SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO";

TEST_F(BancoLocalMesaTeste, Municipio_OfTheState_HasAll497InPortugueseOrder)
{
    const Textos nomes = Coluna("NOME_MUNICIPIO", DoEstado);
    ASSERT_EQ(nomes.size(), 497U);
    EXPECT_EQ(nomes[0], "Aceguá");
    EXPECT_EQ(nomes[1], "Água Santa");
    EXPECT_EQ(nomes[2], "Agudo");
    EXPECT_TRUE(std::is_sorted(nomes.begin(), nomes.end(),
                               [](const auto &a, const auto &b) { return ChaveOrdem(a) < ChaveOrdem(b); }));
    EXPECT_EQ(Coluna("COD_RENAVAM", "SELECT COD_RENAVAM FROM Municipio WHERE COD_MUNIC = 4314902"), Textos{"8801"});
}

TEST_F(BancoLocalMesaTeste, Municipio_OfTheCountry_HasEachUnderItsOwnState)
{
    EXPECT_EQ(Coluna("x", "SELECT COUNT(*) AS x FROM Municipio"), Textos{"5571"});
    EXPECT_EQ(Coluna("x", "SELECT COUNT(DISTINCT UF_MUNIC) AS x FROM Municipio"), Textos{"27"});
    EXPECT_EQ(Coluna("UF_MUNIC", "SELECT * FROM Municipio WHERE COD_MUNIC = 3550308"), Textos{"SP"});
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", "SELECT * FROM Municipio WHERE COD_MUNIC = 1100015"),
              Textos{"Alta Floresta D'Oeste"});
}

// The module names one state, whichever it is.
TEST_F(BancoLocalMesaTeste, Municipio_AsTheModuleAsks_IsOfTheClientsOwnState)
{
    EntraAlguemDe("SP");
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", DoEstado).size(), 645U);
    EXPECT_EQ(Coluna("UF_MUNIC", DoEstado).front(), "SP");
    EntraAlguemDe("DF");
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", DoEstado), Textos{"Brasília"});
    // A municipality of another state still has its name.
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", "SELECT * FROM Municipio WHERE COD_MUNIC = 4314902"), Textos{"Porto Alegre"});
    EntraAlguemDe("RS");
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", DoEstado).size(), 497U);
    // Whoever is tied to a municipality elsewhere registers equipment there.
    EntraAlguemDe("DF", 4314902);
    EXPECT_EQ(Coluna("NOME_MUNICIPIO", DoEstado), (Textos{"Brasília", "Porto Alegre"}));
}

TEST_F(BancoLocalMesaTeste, StatementOfAStateThatCannotBeTheClients_IsAFault)
{
    EXPECT_THROW(Coluna("x", "SELECT 1 AS x FROM Municipio WHERE UF_MUNIC = 'SC'"), Falha);
}

TEST_F(BancoLocalMesaTeste, Municipios_OfAnOlderFile_AreWrittenAnew)
{
    const std::filesystem::path pasta = Pasta("antiga");
    const std::string arquivo = (pasta / "local.db").string();
    BancoLocalMesa{pasta};
    // As the first version left them: of one state, and others than these.
    LinhasSql(arquivo, "DELETE FROM Municipio WHERE UF_MUNIC <> 'RS'; PRAGMA user_version = 0;"
                       "INSERT INTO Municipio VALUES (4399999, 'Antigo', 'RS', 9999)");
    BancoLocalMesa{pasta};
    EXPECT_EQ(LinhasSql(arquivo, "SELECT COUNT(*) FROM Municipio"), Textos{"5571"});
    EXPECT_EQ(LinhasSql(arquivo, "SELECT NOME_MUNICIPIO FROM Municipio WHERE COD_MUNIC = 4399999"), Textos{});
}

TEST_F(BancoLocalMesaTeste, Municipios_ThatAreRight_AreNotWrittenAgain)
{
    const std::filesystem::path pasta = Pasta("certa");
    const std::string arquivo = (pasta / "local.db").string();
    BancoLocalMesa{pasta};
    LinhasSql(arquivo, "UPDATE Municipio SET NOME_MUNICIPIO = 'Marcado' WHERE COD_MUNIC = 4314902");
    BancoLocalMesa{pasta};
    EXPECT_EQ(LinhasSql(arquivo, "SELECT NOME_MUNICIPIO FROM Municipio WHERE COD_MUNIC = 4314902"), Textos{"Marcado"});
}

TEST_F(BancoLocalMesaTeste, UCASE_OfAccentedText_RaisesEveryLetterAndKeepsNull)
{
    EXPECT_EQ(Coluna("x", "SELECT UCASE('áéíóúâêôãõçàü Ñ 1-a') AS x"), Textos{"ÁÉÍÓÚÂÊÔÃÕÇÀÜ Ñ 1-A"});
    EXPECT_EQ(Coluna("x", "SELECT UCASE(NULL) IS NULL AS x"), Textos{"1"});
}

TEST_F(BancoLocalMesaTeste, LookUpByCode_OfTheReplica_UsesItsIndex)
{
    const Textos plano = Coluna(
        "detail", "EXPLAIN QUERY PLAN         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE "
                  "ClienteInc = 'Autoridade Municipal de Trânsito'     AND UCASE(Codigo) = 'ÁB1'     AND Ativo = 1 ");
    ASSERT_EQ(plano.size(), 1U);
    EXPECT_EQ(plano[0], "SEARCH VOREQUIPTO USING INDEX VOREQUIPTO_Codigo (ClienteInc=? AND <expr>=?)");
}

TEST_F(BancoLocalMesaTeste, LookUpByCode_OfAnAccentedOne_FindsIt)
{
    Replica({{7, "Autoridade Municipal de Trânsito", "áb1", "P", 1},
             {8, "Autoridade Municipal de Trânsito", "ab1", "P", 1}});
    EXPECT_EQ(
        Coluna(
            "NroIntEquip",
            "SELECT * FROM VOREQUIPTO WHERE ClienteInc = 'Autoridade Municipal de Trânsito' AND UCASE(Codigo) = 'ÁB1'"),
        Textos{"7"});
}

TEST_F(BancoLocalMesaTeste, Abre_ForTheModule_RefusesToWrite)
{
    EXPECT_THROW(Coluna("x", "DELETE FROM Municipio"), Falha);
    EXPECT_EQ(Coluna("x", "SELECT COUNT(*) AS x FROM Municipio"), Textos{"5571"});
}

TEST_F(BancoLocalMesaTeste, AtualizaReplica_GivenUpAtAnyRow_LeavesTheOldOne)
{
    Replica({{1, "C", "A1", "R", 1}});
    const Data antes = mesa.Host->BancoLocal->DataDaReplica();
    SessaoDeReplica sessao;
    sessao.Linhas = {{2, "C", "B2", "R", 1}, {3, "C", "B3", "R", 1}};
    for (int passo = 0; passo < 2; ++passo) {
        mesa.Host->BancoLocal->Acompanha = [&](const std::string &, bool cancelavel, const auto &trabalho) {
            EXPECT_TRUE(cancelavel);
            int passos = 0;
            trabalho([&](double, const std::string &) { return passos++ < passo; });
        };
        EXPECT_FALSE(mesa.Host->BancoLocal->AtualizaReplica(sessao, /*cancelavel=*/true));
        EXPECT_EQ(Coluna("Codigo", "SELECT Codigo FROM VOREQUIPTO"), Textos{"A1"});
        EXPECT_EQ(mesa.Host->BancoLocal->DataDaReplica(), antes);
    }
    mesa.Host->BancoLocal->Acompanha = SemAndamento;
    EXPECT_TRUE(mesa.Host->BancoLocal->AtualizaReplica(sessao));
    EXPECT_EQ(Coluna("Codigo", "SELECT Codigo FROM VOREQUIPTO"), Textos({"B2", "B3"}));
}

TEST_F(BancoLocalMesaTeste, AtualizaReplica_Again_HasTheNewRowsOnly)
{
    Replica(
        {{1, "Autoridade Municipal de Trânsito", "A", "P", 1}, {2, "Autoridade Municipal de Trânsito", "B", "P", 2}});
    Replica({{3, "Autoridade Municipal de Trânsito", "C", "R", 1}});
    EXPECT_EQ(Coluna("Codigo", "SELECT * FROM VOREQUIPTO"), Textos{"C"});
    EXPECT_EQ(mesa.Host->BancoLocal->DataDaReplica(), DataDe(20, 11, 2026));
}

TEST_F(BancoLocalMesaTeste, AtualizaReplica_ThatFailsInTheMiddle_LeavesTheOldOne)
{
    Replica(
        {{1, "Autoridade Municipal de Trânsito", "A", "P", 1}, {2, "Autoridade Municipal de Trânsito", "B", "P", 2}});
    EXPECT_THROW(Replica({{3, "Autoridade Municipal de Trânsito", "C", "R", 1}}, true), std::runtime_error);
    EXPECT_EQ(Coluna("Codigo", "SELECT * FROM VOREQUIPTO ORDER BY NroIntEquip"), (Textos{"A", "B"}));
    // The second cannot be stored.
    EXPECT_THROW(Replica({{3, "Autoridade Municipal de Trânsito", "C", "R", 1},
                          {3, "Autoridade Municipal de Trânsito", "D", "R", 1}}),
                 Falha);
    EXPECT_EQ(Coluna("Codigo", "SELECT * FROM VOREQUIPTO ORDER BY NroIntEquip"), (Textos{"A", "B"}));
}

TEST_F(BancoLocalMesaTeste, Files_OfTheDesk_AreForTheirOwnerAndCloseWhenTheyWereOpen)
{
    const std::filesystem::path dados = mesa.Diretorio() / "dados";
    const auto confere = [&] {
        EXPECT_EQ(ModoDe(dados), 0700U);
        EXPECT_EQ(ModoDe(dados / "local.db"), 0600U);
        EXPECT_EQ(ModoDe(dados / "modulo"), 0700U);
    };
    confere();
    for (const char *qual : {"", "modulo"}) {
        std::filesystem::permissions(dados / qual, std::filesystem::perms(0755));
    }
    // A second desk has files of its own.
    std::ofstream(dados / "local-2.db").close();
    std::filesystem::permissions(dados / "local-2.db", std::filesystem::perms(0644));
    Novo<HostMesa>(mesa.Janelas, dados, [] { return DataDe(20, 11, 2026); });
    confere();
    EXPECT_EQ(ModoDe(dados / "local-2.db"), 0600U);
}

TEST_F(BancoLocalMesaTeste, Arquivo_ThatIsNoDatabase_IsAFault)
{
    const std::filesystem::path pasta = Pasta("estranho");
    std::ofstream(pasta / "local.db") << std::string(4096, 'x');
    EXPECT_THROW(BancoLocalMesa{pasta}, Falha);
}

TEST_F(BancoLocalMesaTeste, Arquivo_OfTwoDesksOnOneDirectory_IsEachItsOwn)
{
    const std::filesystem::path pasta = Pasta("dois");
    const auto renova = [](const Ref<BancoLocalMesa> &banco, const std::string &codigo) {
        SessaoDeReplica sessao;
        sessao.Linhas = {{1, "Autoridade Municipal de Trânsito", codigo, "P", 1}};
        banco->AtualizaReplica(sessao);
    };
    const auto codigo = [](const Ref<BancoLocalMesa> &banco) {
        return banco->Abre()
            ->OpenRecordset("SELECT Codigo FROM VOREQUIPTO", InstantaneoSomenteLeitura, Valor(), Valor())
            ->Fields("Codigo")
            ->Value()
            .Texto();
    };
    auto um = Novo<BancoLocalMesa>(pasta);
    const auto dois = Novo<BancoLocalMesa>(pasta);
    renova(um, "DE UM");
    renova(dois, "DE DOIS");
    EXPECT_EQ(codigo(um), "DE UM");
    EXPECT_EQ(codigo(dois), "DE DOIS");
    EXPECT_TRUE(std::filesystem::exists(pasta / "local.db"));
    EXPECT_TRUE(std::filesystem::exists(pasta / "local-2.db"));

    um = nullptr;
    const auto tres = Novo<BancoLocalMesa>(pasta); // the file that is free again
    EXPECT_EQ(codigo(tres), "DE UM");
    EXPECT_FALSE(std::filesystem::exists(pasta / "local-3.db"));
}

TEST_F(BancoLocalMesaTeste, Arquivo_OfADeskThatDied_IsTakenOver)
{
    const std::filesystem::path pasta = Pasta("morto");
    const pid_t outro = fork();
    if (outro == 0) {
        const BancoLocalMesa banco(pasta);
        _exit(std::filesystem::exists(pasta / "local.db") ? 0 : 1); // without leaving
    }
    int fim = -1;
    ASSERT_EQ(waitpid(outro, &fim, 0), outro);
    ASSERT_EQ(fim, 0);
    const BancoLocalMesa banco(pasta);
    EXPECT_FALSE(std::filesystem::exists(pasta / "local-2.db"));
}

// The replica of one user on one registry.
class ReplicaMesaTeste : public BancoLocalMesaTeste {
  protected:
    // What the local file holds, and how many rows the services handed over for it.
    class Contada : public SessaoDeReplica {
      public:
        explicit Contada(Ref<SessaoServico> sessao) : m_Sessao(std::move(sessao)) { Quem = m_Sessao->Operador(); }
        Replicado LeReplica(std::int64_t depoisDe, const std::function<void(const LinhaReplica &)> &cadaLinha) override
        {
            const Replicado lida = m_Sessao->LeReplica(depoisDe, [&](const LinhaReplica &linha) {
                if (Lidas++ == FalhaDepoisDe) {
                    throw ::Falha(NumeroFalha::ErroDeAcesso, "Rede", "A conexão caiu.");
                }
                cadaLinha(linha);
            });
            return lida;
        }
        int Lidas = 0;
        int FalhaDepoisDe = -1;

      private:
        Ref<SessaoServico> m_Sessao;
    };

    int Renova(const Ref<SessaoServico> &sessao)
    {
        Contada contada(sessao);
        mesa.Host->BancoLocal->AtualizaReplica(contada);
        return contada.Lidas;
    }
    Textos Codigos() { return Coluna("Codigo", "SELECT Codigo FROM VOREQUIPTO ORDER BY NroIntEquip"); }
    std::string Arquivo() { return (mesa.Diretorio() / "dados" / "local.db").string(); }

    Ref<SessaoServico> m_Ana = mesa.Registro.Sessao("ana");
};

TEST_F(ReplicaMesaTeste, AtualizaReplica_AfterAChange_ReadsThatOneOnly)
{
    for (const char *codigo : {"R-1", "R-2", "R-3"}) {
        Inclui(m_Ana, EquipamentoDe(codigo));
    }
    EXPECT_EQ(Renova(m_Ana), 3);
    EXPECT_EQ(Renova(m_Ana), 0);
    Exigido(Pede(m_Ana, "desativa", SoNumero(2)));
    Inclui(m_Ana, EquipamentoDe("R-4"));
    EXPECT_EQ(Renova(m_Ana), 2);
    EXPECT_EQ(Codigos(), (Textos{"R-1", "R-2", "R-3", "R-4"}));
    EXPECT_EQ(Coluna("Ativo", "SELECT Ativo FROM VOREQUIPTO WHERE NroIntEquip = 2"), Textos{"2"});
}

TEST_F(ReplicaMesaTeste, TabelaAlterada_ThatCannotBeRead_IsTold_AndReadAtTheNextLook)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    const auto contada = Novo<Contada>(m_Ana);
    mesa.Host->Entra(contada);
    Inclui(m_Ana, EquipamentoDe("R-2"));
    contada->FalhaDepoisDe = contada->Lidas;
    const Ref<ITrataBD> trataBD = mesa.Host->objMTM()->CreateQMR()->CreateNewTrataBD();
    const Ref<IObjetoSoap> web = mesa.Host->objMTM()->CWebComm()->CriaObjetoSoap("ConsGen", "");
    const auto diz = [&] { return web->Metodo(nullptr, "consultaDataUltimaReplica", "VOR"); };
    EXPECT_TRUE(diz());
    EXPECT_NO_THROW(trataBD->TabelaAlterada("VOREQUIPTO", true, false, Valor(), Valor()));
    ASSERT_EQ(mesa.Janelas->Avisos.size(), 1u);
    EXPECT_EQ(mesa.Janelas->Avisos[0],
              "Registro de Equipamentos: O que foi pedido está gravado, mas a cópia local, que as consultas leem, não "
              "pôde ser renovada; será, na próxima consulta. A conexão caiu.");
    EXPECT_EQ(Codigos(), Textos{"R-1"});
    EXPECT_FALSE(diz()); // and the module offers to renew it

    // As long as it cannot be had, the old one is read.
    contada->FalhaDepoisDe = contada->Lidas;
    EXPECT_NO_THROW(trataBD->AbreZTBanco(99));
    EXPECT_FALSE(diz());
    contada->FalhaDepoisDe = -1;
    trataBD->AbreZTBanco(99);
    EXPECT_EQ(Codigos(), (Textos{"R-1", "R-2"}));
    EXPECT_TRUE(diz());
    const int lidas = contada->Lidas;
    trataBD->AbreZTBanco(99);
    EXPECT_EQ(contada->Lidas, lidas);
    EXPECT_EQ(mesa.Janelas->Avisos.size(), 1u);
}

TEST_F(ReplicaMesaTeste, AtualizaReplica_OfAnotherUser_KeepsNothingOfTheFirstWhateverHappens)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    Renova(m_Ana);
    const auto elisa = mesa.Registro.Sessao("elisa");
    Inclui(elisa, EquipamentoDe("X-1"));
    Contada falha(elisa);
    falha.FalhaDepoisDe = 0;
    EXPECT_ANY_THROW(mesa.Host->BancoLocal->AtualizaReplica(falha));
    EXPECT_EQ(Codigos(), Textos{});
    EXPECT_EQ(Renova(elisa), 1);
    EXPECT_EQ(Codigos(), Textos{"X-1"});
    EXPECT_EQ(Renova(m_Ana), 1); // whole again
    EXPECT_EQ(Codigos(), Textos{"R-1"});
    EXPECT_EQ(Renova(mesa.Registro.Sessao("bia")), 1); // of the same client
}

TEST_F(ReplicaMesaTeste, AtualizaReplica_OfOneWhoMayLookNoMore_EmptiesIt)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    Renova(m_Ana);
    mesa.Registro.Sql("UPDATE PERMISSAO SET Ativo = 2 WHERE Numero = 1");
    EXPECT_EQ(Renova(m_Ana), 0);
    EXPECT_EQ(Codigos(), Textos{});
    mesa.Registro.Sql("UPDATE PERMISSAO SET Ativo = 1 WHERE Numero = 1");
    EXPECT_EQ(Renova(m_Ana), 1);
    EXPECT_EQ(Codigos(), Textos{"R-1"});
}

// Put back to an earlier state, it may have as many entries again as were seen, or more, and other ones.
TEST_F(ReplicaMesaTeste, AtualizaReplica_OfARegistryThatIsNotTheOneThatWasSeen_IsWhole)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    Renova(m_Ana);
    RegistroDeTeste outro;
    const auto ana = outro.Sessao("ana");
    Inclui(ana, EquipamentoDe("O-1"));
    Inclui(ana, EquipamentoDe("O-2"));
    Inclui(ana, EquipamentoDe("O-3"));
    Renova(ana);
    EXPECT_EQ(Codigos(), (Textos{"O-1", "O-2", "O-3"}));
    Renova(m_Ana); // whose history is shorter
    EXPECT_EQ(Codigos(), Textos{"R-1"});
}

TEST_F(ReplicaMesaTeste, AtualizaReplica_OfAFileOfAnotherVersion_IsWhole)
{
    Inclui(m_Ana, EquipamentoDe("R-1"));
    Renova(m_Ana);
    LinhasSql(Arquivo(), "UPDATE Replica SET Versao = 9; UPDATE VOREQUIPTO SET TipoEquip = 'velho'");
    EXPECT_EQ(Renova(m_Ana), 1);
    EXPECT_EQ(Coluna("TipoEquip", "SELECT TipoEquip FROM VOREQUIPTO"), Textos{"P"});
}

} // namespace
