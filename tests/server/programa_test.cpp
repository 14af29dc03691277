#include "server/Certificado.h"
#include "server/Configuracao.h"
#include "server/Programa.h"
#include "services/Banco.h"
#include "services/DialetoPostgres.h"
#include "services/LayoutED.h"
#include "tests/server/CertificadoDeTeste.h"
#include "tests/services/Motor.h"
#include "tests/services/PapelDeTrabalho.h"
#include "tests/services/PastaDeTeste.h"
#include "tests/services/RegistroDeTeste.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

using namespace servidor;

namespace {

class ProgramaTeste : public testing::Test {
  protected:
    ProgramaTeste() { Escreve("registro = \"" + Caminho("registro.db") + "\"\n" + Resto()); }

    std::string Caminho(const char *nome) const { return m_Pasta.filePath(nome).toStdString(); }
    std::string Resto(const std::string &porta = "0") const
    {
        return "escuta = \"127.0.0.1:" + porta + "\"\nsem_tls = true\ndiario = \"" + Caminho("diario") +
               "\"\npasta_do_certificado = \"" + m_Pasta.path().toStdString() + "\"\n";
    }
    void Escreve(const std::string &configuracao) const { std::ofstream(Caminho("c.toml")) << configuracao; }

    int Roda(const QStringList &opcoes, const std::string &entrada = "")
    {
        std::istringstream dela(entrada);
        std::ostringstream saida;
        std::ostringstream erros;
        const int codigo = Programa(
            LinhaDeComando::Le(
                QStringList{"registro-servidor", "--configuracao", QString::fromStdString(Caminho("c.toml"))} + opcoes),
            {dela, saida, erros}, [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, [this] { ++Esperou; },
            CustoDeTeste);
        Saida = saida.str();
        Erros = erros.str();
        return codigo;
    }
    // Only the registry of the settings differs.
    void EscreveCom(const std::string &registro, const std::string &porta = "0") const
    {
        Escreve("registro = \"" + registro + "\"\n" + Resto(porta));
    }
    int CriaNovo(const std::string &senha = "vinte ovelhas no telhado\n")
    {
        return Roda({"--novo", "--cliente", "1", "--nome-cliente", "Autoridade Estadual de Trânsito", "--uf", "rs",
                     "--setor", "Fiscalização", "--usuario", "ana", "--nome", "Ana Souza"},
                    senha);
    }

    std::string Saida;
    std::string Erros;
    int Esperou = 0;

  private:
    QTemporaryDir m_Pasta;
};

// The same over the networked engine: as the owner of what is made there, and as the role that works on it.
class ProgramaPostgres : public ProgramaTeste {
  protected:
    void Copia()
    {
        ASSERT_EQ(Roda({"--copia", QString::fromStdString(Caminho("copias"))}), 0) << Erros;
        EXPECT_TRUE(Saida.starts_with("A cópia foi feita e conferida: ")) << Saida;
    }
    QString ACopia() const
    {
        return QString::fromStdString(std::filesystem::directory_iterator(Caminho("copias"))->path().string());
    }

    motor::RegistroVazio Lugar;
};

} // namespace

TEST_F(ProgramaPostgres, ConfereConfiguracao_UntilThereIsARegistry_SaysWhatIsMissing)
{
    EscreveCom(papel::ComTrabalho(Lugar.Onde()), "50443");
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_EQ(Saida, "No banco de dados informado não há um registro de equipamentos.\n");
    EscreveCom("postgresql://ninguem@127.0.0.1:1/nada", "50443");
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_TRUE(Saida.starts_with("Não foi possível conectar ao banco de dados do registro")) << Saida;
    EscreveCom(papel::ComTrabalho(Lugar.Onde()), "50443");
    ASSERT_EQ(CriaNovo(), 0) << Erros;
    EXPECT_EQ(CriaNovo(), 1);
    EXPECT_EQ(Erros, "Já há um registro no lugar que \"registro\" nomeia. Nada foi criado.\n");
    EscreveCom(papel::DeTrabalho(Lugar.Onde()), "50443");
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0);
    EXPECT_TRUE(Saida.starts_with("A configuração está em ordem.\nAviso: O banco não espera ")) << Saida;
    EscreveCom(papel::DeTrabalho(Lugar.Onde()));
    EXPECT_EQ(Roda({}), 0) << Erros;
    EXPECT_EQ(Esperou, 1);
}

TEST_F(ProgramaPostgres, CopiaRestauraConfere_ByTheirRoles_DoneOnceAndRefusedInWordsOtherwise)
{
    EscreveCom(papel::ComTrabalho(Lugar.Onde()));
    ASSERT_EQ(CriaNovo(), 0) << Erros;
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    EscreveCom(papel::DeTrabalho(Lugar.Onde()));
    EXPECT_EQ(Roda({"--copia"}), 2);
    EXPECT_NE(Erros.find("--copia DIR"), std::string::npos) << Erros;
    Copia();
    // Where there is one already, and by who may not make one.
    EXPECT_EQ(Roda({"--restaura", ACopia()}), 1);
    EXPECT_TRUE(Erros.starts_with("Nada foi restaurado. ")) << Erros;
    const motor::RegistroVazio outro;
    EscreveCom(papel::DeTrabalho(outro.Onde()));
    EXPECT_EQ(Roda({"--restaura", ACopia()}), 1);
    EXPECT_TRUE(Erros.starts_with("Nada foi restaurado. ")) << Erros;
    EscreveCom(papel::ComTrabalho(outro.Onde()));
    ASSERT_EQ(Roda({"--restaura", ACopia()}), 0) << Erros;
    EXPECT_TRUE(Saida.starts_with("O registro foi restaurado da cópia ")) << Saida;
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    EscreveCom(papel::DeTrabalho(outro.Onde()));
    EXPECT_EQ(Roda({}), 0) << Erros;
    // Who works there has the rights that the work takes.
    const auto servicos = mesa::Servicos::Abre(
        papel::DeTrabalho(outro.Onde()), [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, CustoDeTeste);
    std::string recusa;
    std::int32_t espera = 0;
    const auto sessao = servicos->Entra("ana", "vinte ovelhas no telhado", "aqui", recusa, espera);
    ASSERT_FALSE(sessao.Nada()) << recusa;
    const auto layout = Com(Novo<mesa::LayoutED>(), &mesa::LayoutED::NomeLayout, "LAYOUT 1");
    EXPECT_TRUE(Pede(sessao, "incluiLayout", layout, "AdministracaoRN").Feita);
    // And into a file.
    EscreveCom(Caminho("registro.db"));
    ASSERT_EQ(Roda({"--restaura", ACopia()}), 0) << Erros;
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
}

TEST_F(ProgramaPostgres, Confere_ByTheWorkingRole_LooksAtAllRowsAndSaysWhatItCouldNot)
{
    EscreveCom(papel::ComTrabalho(Lugar.Onde()));
    ASSERT_EQ(CriaNovo(), 0) << Erros;
    EscreveCom(papel::DeTrabalho(Lugar.Onde()));
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    EXPECT_NE(Saida.find("não foram conferid"), std::string::npos) << Saida;
    EXPECT_EQ(Erros, "");
}

TEST_F(ProgramaPostgres, Amostra_EmptyDatabase_RegistryThatIsSoundAndServes)
{
    EscreveCom(papel::ComTrabalho(Lugar.Onde()));
    ASSERT_EQ(Roda({"--amostra"}), 0) << Erros;
    EXPECT_EQ(Saida, "A amostra foi criada.\n");
    EXPECT_EQ(Roda({"--amostra"}), 1);
    EXPECT_EQ(Erros, "Já há um registro no lugar que \"registro\" nomeia. Nada foi criado.\n");
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    EscreveCom(papel::DeTrabalho(Lugar.Onde()));
    EXPECT_EQ(Roda({}), 0) << Erros;
}

TEST_F(ProgramaTeste, Novo_EmptyPlace_RegistryWithItsAdministratorOnce)
{
    ASSERT_EQ(CriaNovo(), 0) << Erros;
    EXPECT_EQ(Saida, "O registro foi criado.\n");
    std::string recusa;
    std::int32_t espera = 0;
    const auto servicos = mesa::Servicos::Abre(
        Caminho("registro.db"), [] { return mesa::Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, CustoDeTeste);
    EXPECT_FALSE(servicos->Entra("ana", "vinte ovelhas no telhado", "aqui", recusa, espera).Nada()) << recusa;
    EXPECT_EQ(CriaNovo(), 1);
    EXPECT_EQ(Erros, "Já há um registro no lugar que \"registro\" nomeia. Nada foi criado.\n");
}

TEST_F(ProgramaTeste, Novo_BadPassword_RefusedAndTheNextTryWorks)
{
    EXPECT_EQ(CriaNovo(""), 1);
    EXPECT_FALSE(std::filesystem::exists(Caminho("registro.db")));
    EXPECT_EQ(CriaNovo("curta\n"), 1);
    EXPECT_NE(Erros, "");
    EXPECT_EQ(CriaNovo(), 0) << Erros;
}

TEST_F(ProgramaTeste, ConfereConfiguracao_CertificateNearItsEnd_IsAWarning)
{
    ASSERT_EQ(CriaNovo(), 0);
    const std::string pasta = std::filesystem::path(Caminho("registro.db")).parent_path().string();
    ParDeChaves::Proprio(pasta);
    constexpr long dia = 24 * 60 * 60;
    const std::string comum = "registro = \"" + Caminho("registro.db") +
                              "\"\nescuta = \"127.0.0.1:50443\"\ndiario = \"" + Caminho("diario") +
                              "\"\npasta_do_certificado = \"" + pasta + "\"\n";
    const std::string osArquivos =
        "certificado = \"" + pasta + "/servidor.crt\"\nchave = \"" + pasta + "/servidor.key\"\n";
    for (const std::string &arquivos : {std::string(), osArquivos}) {
        Escreve(comum + arquivos);
        certificado_de_teste::ValeEntre(pasta, -dia, 61 * dia);
        EXPECT_EQ(Roda({"--confere-configuracao"}), 0);
        EXPECT_EQ(Saida, "A configuração está em ordem.\n");
        certificado_de_teste::ValeEntre(pasta, -dia, 59 * dia);
        EXPECT_EQ(Roda({"--confere-configuracao"}), 0);
        EXPECT_TRUE(Saida.starts_with("A configuração está em ordem.\nAviso: O certificado do servidor vence em "))
            << Saida;
    }
}

TEST_F(ProgramaTeste, ConfereConfiguracao_RightAndWrong_SaysSoWithItsCode)
{
    Escreve("registro = \"" + Caminho("registro.db") + "\"\n" + Resto("50443"));
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_NE(Saida.find("registro.db"), std::string::npos);
    ASSERT_EQ(CriaNovo(), 0);
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0) << Saida;
    EXPECT_EQ(Saida, "A configuração está em ordem.\n");
    std::ofstream(Caminho("outro.db")) << "isto não é um registro";
    Escreve("registro = \"" + Caminho("outro.db") + "\"\n" + Resto());
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_NE(Saida, "");
    Escreve("registro = \"" + Caminho("registro.db") + "\"\n" + Resto());
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_EQ(Saida, "\"escuta\" tem a porta 0, que a cada começo seria outra: escolha uma.\n");
    Escreve("registro = 3\nnada = 1\n");
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_NE(Saida.find("linha 1: \"registro\" é um texto, entre aspas."), std::string::npos) << Saida;
    EXPECT_NE(Saida.find("linha 2: não há configuração com o nome \"nada\"."), std::string::npos) << Saida;
}

TEST_F(ProgramaTeste, Atualiza_RegistryOfAnEarlierVersion_CopiedAndBroughtUpToDate)
{
    ASSERT_EQ(Roda({"--atualiza"}), 1);
    EXPECT_EQ(Erros, "O registro não foi encontrado em " + Caminho("registro.db") + ".\n");
    CriaRegistroVersao1(Caminho("registro.db"));
    const std::string antes = BytesDe(Caminho("registro.db"));
    Escreve("registro = \"" + Caminho("registro.db") + "\"\n" + Resto("50443"));
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0);
    EXPECT_TRUE(Saida.starts_with("A configuração está em ordem.\nAviso: O registro é da versão 1, ")) << Saida;
    EXPECT_EQ(BytesDe(Caminho("registro.db")), antes);
    EXPECT_FALSE(std::filesystem::exists(Caminho("copias")));
    ASSERT_EQ(Roda({"--atualiza"}), 0) << Erros;
    EXPECT_EQ(Saida, "O registro está na versão 3, que é a deste programa.\n");
    EXPECT_FALSE(std::filesystem::is_empty(Caminho("copias")));
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0) << Saida;
    EXPECT_EQ(Roda({"--atualiza"}), 0) << Erros;
}

TEST_F(ProgramaTeste, Serve_UntilItIsToldToEnd_SaysWhereAndEndsWell)
{
    ASSERT_EQ(CriaNovo(), 0);
    EXPECT_EQ(Roda({}), 0) << Erros;
    EXPECT_EQ(Esperou, 1);
    EXPECT_NE(Erros.find("O servidor do registro atende em 127.0.0.1:0 (porta "), std::string::npos) << Erros;
    EXPECT_NE(Erros.find("Sem TLS: só esta máquina o alcança."), std::string::npos);
    Escreve("registro = \"" + Caminho("nenhum.db") + "\"\n" + Resto());
    EXPECT_EQ(Roda({}), 1);
    EXPECT_NE(Erros.find("nenhum.db"), std::string::npos);
    EXPECT_EQ(Esperou, 1);
}

TEST_F(ProgramaTeste, Serve_WithTls_SaysTheFingerprint)
{
    ASSERT_EQ(CriaNovo(), 0);
    std::string comTls = Resto();
    comTls.replace(comTls.find("sem_tls = true"), 14, "sem_tls = false");
    Escreve("registro = \"" + Caminho("registro.db") + "\"\n" + comTls);
    EXPECT_EQ(Roda({}), 0) << Erros;
    EXPECT_NE(Erros.find("Impressão digital do certificado: "), std::string::npos) << Erros;
}

TEST_F(ProgramaTeste, ConfereCopiaRestaura_ARegistry_Done)
{
    ASSERT_EQ(CriaNovo(), 0);
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    std::filesystem::create_directory(Caminho("copias"));
    EXPECT_EQ(Roda({"--copia", QString::fromStdString(Caminho("copias"))}), 0) << Erros;
    const std::filesystem::path copia = std::filesystem::directory_iterator(Caminho("copias"))->path();
    EXPECT_EQ(Roda({"--restaura", QString::fromStdString(copia.string())}), 0) << Erros;
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
    EXPECT_EQ(Roda({"--restaura", "/nenhum/arquivo"}), 1);
}

TEST_F(ProgramaTeste, Amostra_EmptyPlace_RegistryThatIsSoundOnce)
{
    ASSERT_EQ(Roda({"--amostra"}), 0) << Erros;
    EXPECT_EQ(Saida, "A amostra foi criada.\n");
    EXPECT_EQ(Roda({"--amostra"}), 1);
    EXPECT_EQ(Roda({"--confere"}), 0) << Saida;
}

TEST_F(ProgramaTeste, Linha_NotUnderstood_SaysWhatAndHelps)
{
    for (const QStringList &opcoes :
         {QStringList{"--nada"}, QStringList{"--novo"}, QStringList{"--copia"}, QStringList{"--confere", "--novo"},
          QStringList{"--de-outro"}, QStringList{"solto"}, QStringList{"--copia", ""}}) {
        EXPECT_EQ(Roda(opcoes), 2) << opcoes.join(" ").toStdString();
        EXPECT_NE(Erros.find("uso: registro-servidor"), std::string::npos);
    }
    EXPECT_EQ(Roda({"--ajuda"}), 0);
    EXPECT_TRUE(Saida.starts_with("uso: registro-servidor"));
    EXPECT_EQ(Roda({"--versao"}), 0);
    EXPECT_TRUE(Saida.starts_with("registro-servidor 1."));
}

TEST_F(ProgramaTeste, OnADatabase_MadeByItsOwner_LookedAtWithoutWaitingForThoseWhoWrite)
{
    const motor::Aglomerado aglomerado;
    const auto escreve = [&](const std::string &papel, const std::string &mais = "") {
        Escreve("registro = \"" + aglomerado.Texto("registro", papel) + mais + "\"\n" + Resto("50443"));
    };
    motor::Linhas(aglomerado.Texto("postgres"), "CREATE ROLE registro_dono LOGIN");
    motor::Linhas(aglomerado.Texto("postgres"), "CREATE ROLE registro_servidor LOGIN");
    motor::Linhas(aglomerado.Texto("postgres"), "CREATE DATABASE registro OWNER registro_dono");
    escreve("registro_servidor");
    EXPECT_EQ(Roda({"--confere-configuracao"}), 1);
    EXPECT_EQ(Saida, "No banco de dados informado não há um registro de equipamentos.\n");

    const std::string aTrabalho = (aglomerado.Texto("registro").find('?') == std::string::npos ? "?" : "&") +
                                  std::string("papel_de_trabalho=registro_servidor");
    escreve("registro_dono", aTrabalho);
    ASSERT_EQ(CriaNovo(), 0) << Erros;
    const std::string semReserva =
        "Aviso: O banco não espera por outra máquina (synchronous_standby_names está vazio): "
        "o que se grava está num disco só.\n";
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0) << Saida;
    EXPECT_TRUE(Saida.starts_with("A configuração está em ordem.\nAviso: O papel registro_dono é o do dono ")) << Saida;
    EXPECT_TRUE(Saida.ends_with(semReserva)) << Saida;

    escreve("registro_servidor");
    {
        // Somebody writes, and does not come to an end.
        mesa::Banco outro(std::make_unique<mesa::DialetoPostgres>(), aglomerado.Texto("registro", "registro_servidor"),
                          DataDe(20, 11, 2026, 10, 0, 0));
        const mesa::Transacao aberta(outro, true);
        EXPECT_EQ(Roda({"--confere-configuracao"}), 0) << Saida;
    }
    EXPECT_EQ(Saida, "A configuração está em ordem.\n" + semReserva);
    motor::Linhas(aglomerado.Texto("postgres"), "ALTER SYSTEM SET synchronous_standby_names = 'reserva'");
    motor::Linhas(aglomerado.Texto("postgres"), "SELECT pg_reload_conf()");
    for (std::string espera; espera != "reserva";) {
        espera = motor::Linhas(aglomerado.Texto("postgres"), "SHOW synchronous_standby_names").at(0);
    }
    EXPECT_EQ(Roda({"--confere-configuracao"}), 0);
    EXPECT_EQ(Saida, "A configuração está em ordem.\n");
}
