#include "desk/host/Inicio.h"
#include "equipment/clsEquipto.h"
#include "equipment/frmEquipDetalhes.h"
#include "host/Falha.h"
#include "limits/frmLimitesDifDetalhes.h"
#include "search/CVorEquip.h"
#include "sensors/clsAfericao.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "sensors/clsSensor.h"
#include "sensors/frmEquipAfericoes.h"
#include "tela/Pessoa.h"
#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/services/DiscoDeTeste.h"
#include "tests/services/SemPrivilegio.h"
#include "tests/support/FalhaLancada.h"

#include <functional>
#include <string>
#include <vector>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

const std::string Cheio =
    "O disco em que está o registro ficou cheio. Nada foi gravado: libere espaço e tente de novo.";

const std::string LocalCheio = "O disco em que está o banco de dados local ficou cheio: libere espaço e tente de novo.";

// The module's windows over a disk that is full: the person reads so, keeps what was typed, and saves it once there is
// room.
class DiscoCheioTeste : public HospedeiroTeste {
  protected:
    static void SetUpTestSuite() { DiscoDeTeste::Instala(); }
    ~DiscoCheioTeste() override
    {
        EXPECT_EQ(mesa.Janelas->Pendencias(), Textos{});
        geral->Encerra();
    }
    // While the form of that class is shown, its person at work.
    void NaModal(const std::string &classe, const std::function<void(Pessoa &, const IForm &)> &acoes)
    {
        mesa.Janelas->NaProximaModal(classe, [=, this](const Ref<IForm> &form) {
            Pessoa pessoa(form, mesa.Host->Plataforma());
            acoes(pessoa, *form);
        });
    }
    std::string Sql(const std::string &comando) { return mesa.Registro.Sql(comando); }
    // Rows of a query of the local database.
    static std::int32_t Linhas(BancoLocalMesa &banco, const std::string &sql)
    {
        return banco.Abre()->OpenRecordset(sql, InstantaneoSomenteLeitura, Valor(), Valor())->RecordCount();
    }

    Ref<Geral> geral = Loga("ana");
    std::int32_t numero = Inclui(mesa.Host->Servico(), EquipamentoDe("R001"));
};

TEST_F(DiscoCheioTeste, frmEquipDetalhes_OK_KeepsTheFormAndWhatWasTyped)
{
    NaModal("frmEquipDetalhes", [&](Pessoa &pessoa, const IForm &form) {
        ASSERT_TRUE(pessoa.Preenche("txtDescricao", "Digitada com cuidado")) << pessoa.Motivo();
        {
            const DiscoDeTeste disco(0);
            mesa.Janelas->RespondePergunta("Confirma a alteração?", true);
            ASSERT_TRUE(pessoa.Clica("ztCmdOK")) << pessoa.Motivo();
            EXPECT_TRUE(disco.Recusou());
        }
        EXPECT_EQ(mesa.Janelas->FrasesDeErro, Textos{Cheio});
        EXPECT_TRUE(form.Visible());
        EXPECT_EQ(pessoa.Acha<ITextBox>("txtDescricao")->Text(), "Digitada com cuidado");
        EXPECT_EQ(Sql("SELECT Descricao || Versao FROM EQUIPAMENTO"), "Av. Ipiranga, sentido centro1");
        EXPECT_FALSE(mesa.Janelas->Esperas.back()); // the pointer waits no longer
        mesa.Janelas->RespondePergunta("Confirma a alteração?", true);
        ASSERT_TRUE(pessoa.Clica("ztCmdOK")) << pessoa.Motivo();
    });
    EXPECT_TRUE(FormCompartilhado<frmEquipDetalhes>()->CarregaEdicao(numero, true));
    EXPECT_EQ(mesa.Janelas->Avisos, Textos{});
    EXPECT_EQ(Sql("SELECT Descricao || Versao FROM EQUIPAMENTO"), "Digitada com cuidado2");
    EXPECT_EQ(mesa.Janelas->Erros.size(), 1U);
}

TEST_F(DiscoCheioTeste, frmLimitesDifDetalhes_OK_KeepsTheFormAndWhatWasTyped)
{
    NaModal("frmLimitesDifDetalhes", [&](Pessoa &pessoa, const IForm &form) {
        ASSERT_TRUE(pessoa.Marca("chkDia", 2)) << pessoa.Motivo();
        ASSERT_TRUE(pessoa.Marca("chkDia", 3)) << pessoa.Motivo();
        ASSERT_TRUE(pessoa.Preenche("ztmHInicial", "0730")) << pessoa.Motivo();
        ASSERT_TRUE(pessoa.Preenche("ztmHFinal", "0900")) << pessoa.Motivo();
        ASSERT_TRUE(pessoa.Preenche("txtVelocPerm", "40")) << pessoa.Motivo();
        {
            const DiscoDeTeste disco(0);
            EXPECT_EQ(FalhaLancada([&] { pessoa.Clica("ztCmdOK"); }).Descricao,
                      Cheio); // the edge of the window shows it
        }
        EXPECT_TRUE(form.Visible());
        EXPECT_EQ(pessoa.Acha<ICheckBox>("chkDia", 3)->Value(), 1);
        EXPECT_EQ(pessoa.Acha<IztMask>("txtVelocPerm")->Text(), "40");
        EXPECT_EQ(Sql("SELECT COUNT(*) FROM LIMITE"), "0");
        ASSERT_TRUE(pessoa.Clica("ztCmdOK")) << pessoa.Motivo();
    });
    EXPECT_TRUE(FormCompartilhado<frmLimitesDifDetalhes>()->CarregaInclusao(1, numero, "R001"));
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM LIMITE WHERE VelocPerm = 40"), "2");
}

TEST_F(DiscoCheioTeste, frmEquipAfericoes_Upload_KeepsTheFormAndStoresNothing)
{
    const std::string arquivo = mesa.NoModulo("certificado.pdf");
    mesa.Host->Plataforma()->GravaArquivo(arquivo, Pdf("x"));
    mesa.Janelas->ArquivoEscolhido = arquivo;
    auto equipto = Novo<clsEquipto>();
    ASSERT_TRUE(equipto->Carrega(numero));
    const Ref<clsSensor> sensor = equipto->ListaSensores()->Add(1, "Av. Ipiranga, 1200");
    const Ref<clsAfericao> afericao = sensor->ListaAfericoes()->Add("", "", Data{}, Data{}, 0);
    NaModal("frmEquipAfericoes", [&](Pessoa &pessoa, const IForm &form) {
        ASSERT_TRUE(pessoa.Preenche("txtNroINMETRO", "123456")) << pessoa.Motivo();
        ASSERT_TRUE(pessoa.Clica("cmdProcurar")) << pessoa.Motivo();
        {
            const DiscoDeTeste disco(0);
            ASSERT_TRUE(pessoa.Clica("cmdUpload")) << pessoa.Motivo();
        }
        EXPECT_EQ(mesa.Janelas->FrasesDeErro, Textos{Cheio});
        EXPECT_TRUE(form.Visible());
        EXPECT_EQ(pessoa.Acha<ITextBox>("txtNroINMETRO")->Text(), "123456");
        EXPECT_EQ(Sql("SELECT COUNT(*) FROM DOCUMENTO"), "0");
        ASSERT_TRUE(pessoa.Clica("cmdProcurar")) << pessoa.Motivo(); // a new try needs it, as after every failed one
        ASSERT_TRUE(pessoa.Clica("cmdUpload")) << pessoa.Motivo();
        EXPECT_EQ(pessoa.Acha<ILabel>("lblMsgCert")->Caption(), "Upload Concluido!");
        ASSERT_TRUE(pessoa.Clica("cmdCancelar")) << pessoa.Motivo();
    });
    EXPECT_FALSE(FormCompartilhado<frmEquipAfericoes>()->CarregaInclusao(afericao));
    EXPECT_EQ(Sql("SELECT COUNT(*) FROM DOCUMENTO"), "1");
    equipto->Finaliza();
}

// A device that is always full stands where the certificate's temporary file would.
TEST_F(DiscoCheioTeste, ImpCertificado_IntoAFullDirectory_RaisesAFaultAndShowsNothing)
{
    const auto afericao =
        AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), GuardaPdf(mesa.Host->Servico(), "x"));
    ASSERT_TRUE(Pede(mesa.Host->Servico(), "altera", Poe(SoNumero(numero), Poe(SensorDe(1), afericao))).Feita);
    const std::filesystem::path temporarios = mesa.Diretorio() / "dados" / "temporarios";
    std::filesystem::create_directories(temporarios);
    const std::filesystem::path arquivo = temporarios / "~VORAFER1-R001.pdf";
    std::filesystem::create_symlink("/dev/full", arquivo);
    auto consulta = Novo<CVorEquip>();
    EXPECT_TRUE(Lanca(61, "ZTAVOREQUIP < CVorEquip.GravaNoArquivo", "Disco cheio",
                      [&] { consulta->ImpCertificadoAfericaoEquipto(1, "R001", "AIT 1", false); }));
    EXPECT_EQ(mesa.Janelas->Mostrados, Textos{});
    std::filesystem::remove(arquivo);
    EXPECT_TRUE(consulta->ImpCertificadoAfericaoEquipto(1, "R001", "AIT 1", false));
    EXPECT_EQ(mesa.Janelas->Mostrados.size(), 1U);
}

TEST_F(DiscoCheioTeste, GravaArquivo_OnAFullDevice_IsFault61)
{
    EXPECT_EQ(FalhaLancada([&] { mesa.Host->Plataforma()->GravaArquivo("/dev/full", Bytes(10, 'x')); }).Numero, 61);
    EXPECT_EQ(FalhaLancada([&] { mesa.Host->Plataforma()->GravaArquivo("/dev/full", Bytes(100000, 'x')); }).Numero, 61);
}

// The copy for look-ups is renewed whole or stays as it was; it has no say in whether the save succeeded.
TEST_F(DiscoCheioTeste, LocalDatabase_ThatCannotBeRenewed_KeepsTheOldCopyAndSaysSo)
{
    mesa.Host->BancoLocal->AtualizaReplica(*mesa.Host->Servico());
    Inclui(mesa.Host->Servico(), EquipamentoDe("R-002"));
    const auto linhas = [&] { return Linhas(*mesa.Host->BancoLocal, "SELECT * FROM VOREQUIPTO"); };
    {
        const DiscoDeTeste disco(0);
        EXPECT_TRUE(Lanca(61, "*", LocalCheio, [&] { mesa.Host->BancoLocal->AtualizaReplica(*mesa.Host->Servico()); }));
        EXPECT_EQ(linhas(), 1);
    }
    mesa.Host->BancoLocal->AtualizaReplica(*mesa.Host->Servico());
    EXPECT_EQ(linhas(), 2);
}

TEST_F(DiscoCheioTeste, LocalDatabase_ThatCannotBeMade_SaysSoAndIsMadeLater)
{
    const std::filesystem::path pasta = mesa.Diretorio() / "outra";
    std::filesystem::create_directory(pasta);
    int recusas = 0;
    for (int cabem = 0;; cabem += 3) {
        std::filesystem::remove(pasta / "local.db");
        const DiscoDeTeste disco(cabem);
        try {
            const BancoLocalMesa banco(pasta);
            break;
        } catch (const Falha &falha) {
            ++recusas;
            EXPECT_EQ(falha.Descricao, LocalCheio);
        }
    }
    EXPECT_GT(recusas, 2);
    BancoLocalMesa banco(pasta);
    EXPECT_EQ(Linhas(banco, "SELECT * FROM Municipio"), 5571);
}

TEST_F(DiscoCheioTeste, LocalDatabase_ThatMayOnlyBeRead_SaysSo)
{
    const std::filesystem::path pasta = mesa.Diretorio() / "outra";
    std::filesystem::create_directory(pasta);
    {
        const BancoLocalMesa banco(pasta);
    }
    std::filesystem::permissions(pasta / "local.db", std::filesystem::perms(0444));
    std::filesystem::permissions(mesa.Diretorio(), std::filesystem::perms::all);
    std::filesystem::permissions(pasta, std::filesystem::perms::all);
    const SemPrivilegio sem;
    EXPECT_TRUE(Lanca(
        70, "*", "O banco de dados local só pode ser lido: falta permissão para gravar no arquivo ou na sua pasta.",
        [&] { BancoLocalMesa{pasta}; }));
}

// The registry is made beside its place: a disk that fills up leaves none, and the next start makes it whole.
TEST_F(DiscoCheioTeste, NewRegistry_OnAFullDisk_LeavesNoneUntilThereIsRoom)
{
    const std::filesystem::path diretorio = mesa.Diretorio() / "novo";
    Preferencias preferencias(mesa.Diretorio() / "preferencias.ini");
    RegistroNovo novo;
    novo.Cliente = {1, "Autoridade Estadual de Trânsito", {"Fiscalização"}, "RS"};
    novo.Usuario = "olga";
    novo.Nome = "Olga Reis";
    novo.Senha = "cavalo grampeador azul";
    const auto cria = [&] {
        return Inicio(diretorio, preferencias, [this] { return Instante(mesa.Registro.Relogio); }, {}, {}).Cria(novo);
    };
    for (const int cabem : {0, 20, 60, 130}) {
        SCOPED_TRACE(cabem);
        {
            const DiscoDeTeste disco(cabem);
            EXPECT_EQ(FalhaLancada(cria).Descricao, Cheio);
        }
        EXPECT_FALSE(std::filesystem::exists(CaminhoDoRegistro(diretorio)));
    }
    EXPECT_FALSE(cria()->Vazio());
}

} // namespace
