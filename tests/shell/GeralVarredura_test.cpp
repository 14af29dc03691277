#include "shell/Geral.h"

#include "shell/Especifica.h"
#include "shell/Generico.h"
#include "shell/ModGeral.h"
#include "tests/shell/FormDeTeste.h"
#include "tests/shell/GeralDeTeste.h"
#include "tests/support/HostTeste.h"
#include "tests/support/UmControle.h"
#include "tests/support/VarreduraRegistro.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

// The whole life of a shell, with a window open at the logoff.
class JornadaDaVida : public Jornada {
  public:
    explicit JornadaDaVida(HostRoteirizado &host) : Jornada(host) {}

    void Percorre() override
    {
        m_Habilitados = 0;
        Ref<Geral> geral = Novo<Geral>();
        Passo([&] { geral->RegistraAM("Autuação"); });
        Passo([&] {
            geral->cGlobal = m_Host.cGlobal;
            geral->Parametros(m_Host.FormMDI, m_Host.ActBar, nullptr, nullptr, nullptr, m_Host.oAppEXE);
            geral->ObjInterface = m_Host.ObjInterface;
        });
        Passo([&] { geral->Logon(m_Host.objMTM, m_Host.objSCA, ""); });
        for (const char *ferramenta : {"mnuModVOREquiptos", "mnuModNABEquiptos", "mnuOutra"}) {
            Passo([&] { m_Habilitados += geral->HabilitarItem(ferramenta) ? 1 : 0; });
        }
        Passo([&] { EXPECT_FALSE(geral->ClickMenu("mnumodvorequiptos")); });
        Passo([&] { m_Abriu = geral->ClickMenu("mnuModVOREquiptos"); });
        Passo([&] { geral->Logoff(); });
        m_JanelasDepois = m_Host.Tela->FormsAbertos("frmLista").size();
        Passo([&] { geral->Logon(m_Host.objMTM, m_Host.objSCA, ""); });
        Passo([&] { geral->Encerra(); });
        Passo([&] { geral->DesregistraAM("Autuação"); });
        EXPECT_TRUE(geral->CEspecifica().Nada() || Parou());
        Passo([&] { geral = nullptr; });
        geral = nullptr;
    }

    void ConfereSucesso() override
    {
        EXPECT_TRUE(m_Abriu);
        if (!FalhouNesta()) { // whose failure is ignored, but leaves its step undone
            EXPECT_EQ(m_Habilitados, 2);
            EXPECT_EQ(m_JanelasDepois, 0U);
            EXPECT_EQ(glCredencial, 4711);
        }
    }

  private:
    std::int32_t m_Habilitados = 0;
    std::size_t m_JanelasDepois = 0;
    bool m_Abriu = false;
};

TEST(GeralVarredura, Shell_FromTheRegistrationToTheEnd_SurvivesEveryFault)
{
    const std::string logon = R"(
        - ObjGlobalVor.InicializaSessao
        - Host.CriaMensagem
        - oAppEXE.ProductName
        - goMensagem.Titulo := "Sistema de Autuações"
        - oAppEXE.Title
        - goMensagem.Titulo := "Autuação Eletrônica"
        - ObjGlobalVor.ObtemCredencial
        - Credencial.Credencial
        - Credencial.CodMunic
)";
    auto varredura = VarreduraDe<JornadaDaVida>(R"(
pessoa
  Geral.RegistraAM
    - Plataforma.Aplicacao
    - Host.CriaAMRegistro
    - AMRegistro.RegistraAM("ZTAVOREQUIP", "ZTAVOREQUIP.Geral", "Autuação")
pessoa
  Geral.Parametros
    Geral.Sondagem
      - FormMDI.AutoShowChildren
      - FormMDI.objZTP
      - FormMDI.PossuiJanelaEnviaRecebe
    - Host.CriaRelatorios
    - oAppEXE.Path
    - Relatorios.PathRPT := "C:\HOST"
    - Host.CriaAjuda
pessoa
  Geral.Logon
    Geral.AtualizaMenu
      - objSCA.Logado
      Especifica.EfetuaLogon
        - Host.CriaObjGlobalVor
)" + logon + R"(
pessoa
  Geral.HabilitarItem
    - objSCA.Logado
    - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "")
    - Plataforma.Aplicacao
    - cGlobal.MontaEstruturaMenus("mnuModVOREquiptos", "ZTAVOREQUIP")
    - objSCA.Logado
    - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "")
    - Plataforma.Aplicacao
    - cGlobal.MontaEstruturaMenus("mnuModNABEquiptos", "ZTAVOREQUIP")
    - objSCA.Logado
    - Plataforma.Aplicacao
    - cGlobal.MontaEstruturaMenus("mnuOutra", "ZTAVOREQUIP")
pessoa
  Geral.ClickMenu
    Especifica.ClickMenu
      COEquipamentos.CarregaJanela
        frmLista.CarregaForm
          @janelaDaLista
          frmLista.AtualizaFrame
            @dadosVor
            - goDadosVor.ObtemOrgao
            - Orgao.CodCliente
            - ztCliente.CodCliente := 2
            @tiposDaLista
          @FormShow frmLista
          - Plataforma.ProcessaMensagens
          @ativa
pessoa
  Geral.Logoff
    Geral.FecharJanelasAtivas
      - Plataforma.NroForms
      - Plataforma.FormAberto
      - Plataforma.Descarrega(frmLista)
    Especifica.LiberaServicos
      - goDadosVor.Finaliza
pessoa
  Geral.Logon
    Geral.AtualizaMenu
      - objSCA.Logado
      Especifica.EfetuaLogon
)" + logon + R"(
pessoa
  Geral.Encerra
    - Plataforma.NroForms
pessoa
  Geral.DesregistraAM
    - Host.CriaAMRegistro
    - Plataforma.Aplicacao
    - AMRegistro.DesregistraAM("ZTAVOREQUIP", "Autuação")
pessoa
  Geral.Encerra
    - Plataforma.NroForms
)");
    EXPECT_GE(varredura.Roda(), 85);
}

// The windows of a module: shown, shown once, centred and titled, with the host's own window around them.
class JornadaDasJanelas : public JornadaComRegistro {
  public:
    explicit JornadaDasJanelas(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Tela->EmbrulhaForms = true;
        NoModal("frmModal", [this](PessoaNaTela &) { Passo([&] { m_Modal->Descarregar(); }); });
        LogaGeral();
    }

    void Percorre() override
    {
        const Ref<FormDeTeste> form = Novo<FormDeTeste>("frmTeste");
        const Ref<FormDeTeste> outra = Novo<FormDeTeste>("FRMTESTE");
        m_Modal = Novo<FormDeTeste>("frmModal");
        Passo([&] { form->Carregar(); });
        Passo([&] { m_Geral->ShowForm(form, false); });
        Passo([&] { m_Geral->AbreEnviaRecebe("Aguarde"); });
        Passo([&] {
            m_Modal->Carregar();
            m_Geral->FormShow(m_Modal, true, form);
        });
        Passo([&] { m_Geral->ShowFormNoInstance(outra); });
        Passo([&] { m_Geral->CentralizaForm(form, false); });
        Passo([&] {
            form->Filha = true;
            m_Geral->CentralizaForm(form, false);
        });
        Passo([&] { m_Geral->DefineTitulo(form, "Título"); });
        m_Texto = m_Host.Tela->TextoJanela(form);
        m_Left = form->Left();
        m_Modal = nullptr;
        if (m_Host.Tela->EstaAberto(form)) {
            FechaJanela(form);
        }
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Left, (12000 - 6000) / 2);
        if (!FalhouNesta()) {
            EXPECT_EQ(m_Texto, "Título");
        }
        EXPECT_TRUE(m_Host.Tela->FormsAbertos("FRMTESTE").empty());
        EXPECT_TRUE(m_Host.Tela->FormsAbertos("frmModal").empty());
    }

  private:
    Ref<FormDeTeste> m_Modal;
    std::string m_Texto;
    std::int32_t m_Left = 0;
};

TEST(GeralVarredura, Windows_ShownCentredAndTitled_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDasJanelas>(R"(
pessoa
  @controles frmTeste
  Geral.ShowForm
    - ObjInterface.MostraJanela(frmTeste, modal=False)
pessoa
  Geral.AbreEnviaRecebe
    - FormMDI.MsgEnviaRecebe("Aguarde")
    - FormMDI.AbrirEnviaRecebe
pessoa
  @controles frmModal
  Geral.FormShow
    Geral.FechaEnviaRecebe
      - FormMDI.FecharEnviaRecebe(True)
    - Plataforma.Ponteiro := 0
    - Plataforma.ProcessaMensagens
    @ativa
    - ObjInterface.MostraJanela(frmModal, modal=True, dono=frmTeste)
  @ativa
pessoa
  - Plataforma.Descarrega(frmModal)
  @ativa
pessoa
  Geral.ShowFormNoInstance
    - Plataforma.NroForms
    - Plataforma.FormAberto
pessoa
  Geral.CentralizaForm
    - FormMDI.Left
    - FormMDI.Width
    - FormMDI.Top
    - FormMDI.Height
    - FormMDI.ScaleWidth
    - FormMDI.ScaleHeight
pessoa
  Geral.DefineTitulo
    - Plataforma.DefineTextoJanela(frmTeste, "Título")
    - Plataforma.DefineTextoJanela(
)");
    EXPECT_GE(varredura.Roda(), 30);
}

// The menus of a module that has items of its own.
class JornadaDosMenus : public Jornada {
  public:
    explicit JornadaDosMenus(HostRoteirizado &host) : Jornada(host)
    {
        host.ActBar->PoeFerramenta("bndArquivo", "mnuNovo");
        host.ActBar->PoeFerramenta("popEquip", "mnuLimites");
        m_Geral->Particular->Itens = {ItemDeMenu("mnuNovo", "bndArquivo", false, true)};
        m_Geral->Particular->Auxiliares = {ItemDeMenu("popEquip", "bndArquivo", false, false, "sub")};
        m_Geral->Parametros(host.FormMDI, host.ActBar, host.Relatorios, host.Ajuda, nullptr, host.oAppEXE);
    }

    void Percorre() override
    {
        MenusGeral &menus = m_Geral->Menus;
        m_Habilitada = false;
        Passo([&] { menus.AdicionaMenu(menus.aMenu); });
        Passo([&] { menus.AdicionaMenuAuxiliar(); });
        Passo([&] { menus.DesabilitarMenu(); });
        Passo([&] { EXPECT_TRUE(!menus.HabilitarBand("bndArquivo") || FalhouNesta()); });
        Passo([&] { menus.HabilitarFerramenta(menus.Item(1), true); });
        Passo([&] { m_Habilitada = menus.HabilitarBand("bndArquivo"); });
        Passo([&] { menus.PopupBand(1.9, 2.9, "popEquip"); });
        Passo([&] { menus.PopupBand16("popEquip", 3, 4); });
        Passo([&] { menus.PopupAuxiliar(5, 6); });
        Passo([&] { menus.PopupAuxiliar(7, 8, Valor("POPEQUIP")); });
        Passo([&] { menus.RemoveMenuAuxiliar(); });
    }

    void ConfereSucesso() override { EXPECT_TRUE(m_Habilitada || FalhouNesta()); }

  private:
    Ref<GeralDeTeste> m_Geral = Novo<GeralDeTeste>();
    bool m_Habilitada = false;
};

TEST(GeralVarredura, Menus_MergedEnabledShownAndRemoved_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDosMenus>(R"(
pessoa
  Geral.AdicionaMenu
    - Host.CriaAMEditMenu
    - AMEditMenu.IncorporaMenu(ActBar, [Nothing, mnuNovo], False)
pessoa
  Geral.AdicionaMenuAuxiliar
    Geral.AdicionaMenu
      - Host.CriaAMEditMenu
      - AMEditMenu.IncorporaMenu(ActBar, [Nothing, popEquip], False)
pessoa
  Geral.DesabilitarMenu
    - ActBar.Bands
    - Tool(mnuNovo).Visible := False
    - ActBar.Bands
    - Tool(mnuNovo).Enabled := False
pessoa
  Geral.HabilitarBand
    - ActBar.Bands
    - Tool.Visible
pessoa
  Geral.HabilitarFerramenta
    - ActBar.Bands
    - Tool(mnuNovo).Visible := True
    - ActBar.Bands
    - Tool(mnuNovo).Enabled := True
pessoa
  Geral.HabilitarBand
    - ActBar.Bands
    - Tool.Visible
    - Tool.Enabled
pessoa
  Geral.Popup
    - Plataforma.ProcessaMensagens
    - ActBar.Bands
    - Band(popEquip).TrackPopup(1, 2)
    - Plataforma.ProcessaMensagens
    - ActBar.Bands
    - Band(popEquip).TrackPopup(3, 4)
    - Plataforma.ProcessaMensagens
    - ActBar.Bands
    - Band(popEquip).TrackPopup(5, 6)
    - ActBar.Bands
    - Plataforma.ProcessaMensagens
    - ActBar.Bands
    - Band(popEquip).TrackPopup(7, 8)
pessoa
  Geral.RemoveMenuAuxiliar
    - Host.CriaAMEditMenu
    - AMEditMenu.RemoveMenu(ActBar, [Nothing, popEquip])
)");
    EXPECT_GE(varredura.Roda(), 32);
}

// The older road to the central system: the form that waits is enabled again, whatever happened.
class JornadaDasTransacoes : public JornadaComRegistro {
  public:
    explicit JornadaDasTransacoes(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        LogaGeral();
        m_Form->Carregar();
        host.objMTM->ResultadoRajada = 3;
        host.objMTM->AoEnviar = [this](EnvioTransacao &) {
            EXPECT_FALSE(m_Form->Enabled());
            ++m_Enviadas;
        };
    }

    void Percorre() override
    {
        const TransacoesGeral &envia = m_Geral->Transacoes;
        m_Enviadas = 0;
        m_Somadas = 0;
        Envia([&] { return envia.EnviaTransacao(m_Form, m_Transacao, true, false) ? 1 : 0; });
        Envia([&] { return envia.EnviaTransacao2(m_Form, m_Transacao, true, false) ? 1 : 0; });
        Envia([&] { return envia.EnviaTransacaoH90(m_Form, m_Transacao, true, false, true) ? 1 : 0; });
        Envia([&] { return envia.EnviaRajada(m_Form, m_Transacao, true, false); });
        Envia([&] { return envia.EnviaRajada2(m_Form, m_Transacao, m_Dados, false); });
        Envia([&] { return envia.EnviaRajadaH90(m_Form, m_Transacao, m_Dados, false) ? 1 : 0; });
        Passo([&] { EXPECT_TRUE(m_Geral->ObtemTransacao("ab-c").Nada()); });
        Passo([&] { m_Geral->ObtemTransacao3("ab-c", m_Transacao); });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Enviadas, 6);
        EXPECT_EQ(m_Somadas, 10);
    }

  private:
    void Envia(const std::function<std::int32_t()> &acao)
    {
        Passo([&] { m_Somadas += acao(); });
        EXPECT_TRUE(m_Form->Enabled());
    }

    Ref<FormDeTeste> m_Form = Novo<FormDeTeste>();
    Ref<ITransacao> m_Transacao = ParaOModulo(Novo<TransacaoRoteirizada>());
    std::vector<std::string> m_Dados{"A", "B"};
    std::int32_t m_Enviadas = 0;
    std::int32_t m_Somadas = 0;
};

TEST(GeralVarredura, Transactions_EachSendOperation_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<JornadaDasTransacoes>(R"(
Geral.EnviaTransacao
  - objMTM.EnviaTransacao1
Geral.EnviaTransacao2
  - objMTM.EnviaTransacao2
Geral.EnviaTransacaoH90
  - objMTM.EnviaTransacaoH90
Geral.EnviaRajada
  - objMTM.EnviaRajada1
Geral.EnviaRajada2
  - objMTM.EnviaRajada2
Geral.EnviaRajadaH90
  - objMTM.EnviaRajadaH90
)");
    EXPECT_EQ(varredura.Roda(), 6);
}

// A report by its name, one of the designer, and the age of the replica, current and unknown.
class JornadaDosRelatorios : public JornadaComRegistro {
  public:
    explicit JornadaDosRelatorios(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Relatorios->AoImprimir = [this](ParametrosRelatorio &) { ++m_Impressos; };
        LogaGeral();
    }

    void Percorre() override
    {
        m_Impressos = 0;
        std::string dadosAte = "antes";
        m_Forcar = "antes";
        bool forca = false;
        Passo([&] { Imprime("VOR011.RPT"); });
        Passo([&] { Imprime(Ref<Objeto>(m_Host.FormMDI->ZTP)); });
        m_Host.objMTM->WebResponde = true;
        Passo([&] { m_Geral->Impressao.PesquisaDataUltimaClonagem(dadosAte, m_Forcar, forca); });
        EXPECT_EQ(forca, false);
        m_Host.objMTM->WebResponde = false;
        Passo([&] { m_Geral->Impressao.PesquisaDataUltimaClonagem(dadosAte, m_Forcar, forca); });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Impressos, 2);
        EXPECT_EQ(m_Forcar, "Forçar consulta ao Servidor Principal");
    }

  private:
    void Imprime(const Valor &relatorio)
    {
        std::vector<std::string> parametros{"p1"};
        EXPECT_FALSE(m_Geral->Impressao.ImprimirRelatorio(relatorio, parametros, true, 3, false, nullptr, "texto",
                                                          nullptr, nullptr));
    }

    std::int32_t m_Impressos = 0;
    std::string m_Forcar;
};

TEST(GeralVarredura, Reports_AndTheReplicasDate_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDosRelatorios>(R"(
pessoa
  Geral.ImprimirRelatorio
    - Relatorios.CurrentRecordSet := Nothing
    @trataBD
    - TrataBD.AbreZTBanco(99)
    - MDB.Name
    - Relatorios.PathMDB := 
    - Relatorios.Imprimir("VOR011.RPT"
    - Relatorios.CurrentRecordSet := Nothing
pessoa
  Geral.ImprimirRelatorio
    - Relatorios.CurrentRecordSet := Nothing
    - MDB.Name
    - Relatorios.PathMDB := 
    - Relatorios.ImprimirDesigner(objZTP
    - Relatorios.CurrentRecordSet := Nothing
pessoa
  Geral.PesquisaDataUltimaClonagem
    - objMTM.CWebComm
    - Plataforma.Aplicacao
    - WebComm.CriaObjetoSoap("ConsGen", "ZTAVOREQUIP")
    - Soap.Metodo(Nothing, "consultaDataUltimaReplica", "VOR")
    - Soap.Resultado
    - Plataforma.Agora
pessoa
  Geral.PesquisaDataUltimaClonagem
    - objMTM.CWebComm
    - Plataforma.Aplicacao
    - WebComm.CriaObjetoSoap("ConsGen", "ZTAVOREQUIP")
    - Soap.Metodo(Nothing, "consultaDataUltimaReplica", "VOR")
)");
    EXPECT_EQ(varredura.Roda(), 24);
}

// What the shell looks up, and the wrappers that add nothing to a fault.
class JornadaDasConsultas : public JornadaComRegistro {
  public:
    explicit JornadaDasConsultas(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\PADRAO.LAY", {});
        host.cGlobal->Modulos["ZTAVOUTRO"] = host.FormMDI->ZTP;
        m_Registro.Poe(EquiptoCalibrado("A", 3, "A100"));
        LogaGeral();
        m_Form->Carregar();
        m_Combo = CriadoPeloHost<IztCombo>(m_Form, Chamado<AjustesZtCombo>("cbo"));
    }

    void Percorre() override
    {
        m_Vigente = nullptr;
        m_Combo->Limpa();
        Passo([&] { EXPECT_EQ(gFunBuscaDescrMunic(0), ""); });
        Passo([&] { EXPECT_EQ(gFunBuscaDescrMunic(120), "Porto Alegre"); });
        Passo([&] { gSubCarregaMunicipios(m_Combo); });
        m_Municipios = m_Combo->NroItens();
        Passo([&] { gSubCarregaArqLayout(m_Combo); });
        m_Layouts = m_Combo->NroItens();
        Passo([&] { m_Vigente = gFunConsultaAfericaoVigente(1, DataDe(20, 11, 2026), std::int16_t{1}); });
        Passo([&] { gSubDefineFoco(m_Form); });
        Passo([&] { EXPECT_TRUE(m_Geral->TemPermissao("NAB", "VOR-EQP-CS", "I", m_Form->lblTexto)); });
        Passo([&] { EXPECT_FALSE(m_Geral->ObtemAutoModulo("ZTAVOUTRO").Nada()); });
        Passo([&] { EXPECT_FALSE(m_Geral->ObtemCFunGenComAppTitle().Nada()); });
        Passo([&] { EXPECT_FALSE(m_Geral->ObtemCFisJur().Nada()); });
        Passo([&] { EXPECT_FALSE(m_Geral->ObtemCEndereco().Nada()); });
        Passo([&] { EXPECT_FALSE(m_Geral->ObtemCVeiGen().Nada()); });
        Passo([&] { m_Geral->TrataAjuda("EQUIP"); });
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Municipios, 4);
        EXPECT_EQ(m_Layouts, 2);
        ASSERT_FALSE(m_Vigente.Nada());
        EXPECT_EQ(m_Vigente->Numero.Valor(), "123");
    }

  private:
    Ref<FormDeTeste> m_Form = Novo<FormDeTeste>();
    Ref<IztCombo> m_Combo;
    Ref<AfericaoED> m_Vigente;
    std::int32_t m_Municipios = 0;
    std::int32_t m_Layouts = 0;
};

TEST(GeralVarredura, LookUpsAndWrappers_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDasConsultas>(R"(
pessoa
  Generico.gFunBuscaDescrMunic
    @trataBD
    - TrataBD.AbreZTBanco(99)
    - MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120", 4, ausente, ausente)
    - Cursor.EOF
    - Cursor.Fields
    - Cursor.Close
pessoa
  @municipios
pessoa
  ModGeral.gSubCarregaArqLayout
    @dadosVor
    - goDadosVor.DirLayouts
    - Plataforma.PrimeiroArquivo("C:\HOST\LAYOUTS\*.LAY")
    - Plataforma.ProximoArquivo
pessoa
  ModGeral.gFunConsultaAfericaoVigente
    @gatewayDoTrataBD
    @remota consultaSimplesAfericaoVigente
pessoa
  - objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I")
  - cGlobal.gfunRetornaAutoModulo("ZTAVOUTRO")
  - Host.CriaCFunGen
  - Plataforma.Aplicacao
  - oAppEXE.Title
  - CFunGen.SetaTituloAvisos
  - Plataforma.Aplicacao
  - oAppEXE.Title
  - CFunGen.AppTitle := 
  - TrataBD.CreateCFisJur
  - TrataBD.CreateCEndereco
  - TrataBD.CreateCVeiGen
  - Plataforma.Aplicacao
  - Ajuda.TrataAjuda2
)");
    EXPECT_GE(varredura.Roda(), 53);
}

} // namespace
