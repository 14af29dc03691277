#include "equipment/frmEquipDetalhes.h"

#include "host/AfericaoED.h"
#include "host/SensorED.h"
#include "tests/support/VarreduraRegistro.h"

#include <cstdint>
#include <string>

namespace {

constexpr const char *Certificado = "C:\\CERT.PDF";
constexpr const char *Temporario = "C:\\HOST\\MODULOS\\VORTemp.pdf";
// The question whether a calibration that starts on 01/06/2026 shortens another one.
std::string Conflito(const std::string &de, const std::string &ate)
{
    return "Data de verificação do INMETRO (01/06/2026) em conflito com a \r\naferição dos dias " + de + " e " + ate +
           ".\r\n\r\nDeseja continuar ?\r\n\r\n"
           "OBS: Caso continue, a data de vencimento da aferição em conflito será\r\n"
           "recalculada automaticamente (um dia antes da nova data de verificação).";
}

// A person at the list, with what the forms of an equipment need.
class JornadaDeFormularios : public JornadaComRegistro {
  public:
    explicit JornadaDeFormularios(HostRoteirizado &host) : JornadaComRegistro(host)
    {
        host.Clientes = {{1, "Autoridade das Estradas de Rodagem"}};
        host.Tela->Arquivos.Poe("C:\\HOST\\LAYOUTS\\PADRAO.LAY", {});
        host.Tela->Arquivos.Poe(Certificado, Bytes{'%', 'P', 'D', 'F'});
        host.EscolheArquivoSempre(Certificado);
        for (const char *pergunta :
             {"Confirma a inclusão?", "Confirma a alteração?", "Confirma a exclusão deste sensor?",
              "Confirma a exclusão desta aferição?", "Foram feitas alterações neste sensor. Deseja descartá-las?",
              "Foram feitas alterações neste equipamento. Deseja descartá-las?"}) {
            Responde(pergunta, true);
        }
        NoModal("frmEquipDetalhes", [this](PessoaNaTela &p) { NoEquipamento(p); });
        NoModal("frmEquipSensores", [this](PessoaNaTela &p) { NoSensor(p); });
        NoModal("frmEquipAfericoes", [this](PessoaNaTela &p) { NaAfericao(p); });
        LogaComServicos();
    }

    // A person reads a certificate in a window that is not modal, so many times, and closes it.
    void VeCertificado(int vezes)
    {
        if (!Parou()) {
            NaJanela("frmEquipAfericoes", [vezes](PessoaNaTela &p) {
                for (int i = 0; i < vezes; ++i) {
                    p.Clica("cmdVisualizar");
                }
                p.Clica("cmdCancelar");
            });
        }
    }

    // Opens the list and does one command on its last row.
    void Comanda(const std::string &comando)
    {
        m_Sensores = 0;
        m_Afericoes = 0;
        Passo([&] { EXPECT_TRUE(m_Geral->ClickMenu("mnuModNABEquiptos") || Parou()); });
        NaJanela("frmLista", [&](PessoaNaTela &p) {
            if (comando != "mnuZTLObjNovo") {
                p.Localiza("ztlLista");
                p.ClicaLinha("ztlLista", p.Linhas("ztlLista"));
            }
            p.EscolheMenu("ztlLista", comando);
            p.Fecha();
        });
    }

  protected:
    virtual void NoEquipamento(PessoaNaTela &p) = 0;
    virtual void NoSensor(PessoaNaTela &) {}
    virtual void NaAfericao(PessoaNaTela &) {}

    static void Periodo(PessoaNaTela &p, const std::string &verificacao, const std::string &vencimento)
    {
        p.Preenche("txtDtVerifINMETRO", verificacao);
        p.Preenche("txtDtVencINMETRO", vencimento);
    }
    static void Documento(PessoaNaTela &p)
    {
        p.Clica("cmdProcurar");
        p.Clica("cmdUpload");
    }

    std::int32_t m_Sensores = 0;  // sensor forms seen on this way
    std::int32_t m_Afericoes = 0; // calibration forms
};

// A new equipment with its options, a sensor with an address, and two calibrations in conflict.
class JornadaNova : public JornadaDeFormularios {
  public:
    explicit JornadaNova(HostRoteirizado &host) : JornadaDeFormularios(host)
    {
        Responde(Conflito("01/02/2026", "31/01/2027"), true);
    }

    void Percorre() override
    {
        m_Antes = m_Registro.Equipamentos().size();
        Comanda("mnuZTLObjNovo");
    }

    void ConfereSucesso() override
    {
        ASSERT_EQ(m_Registro.Equipamentos().size(), m_Antes + 1);
        const EquiptoED &novo = *m_Registro.Equipamentos().rbegin()->second;
        EXPECT_EQ(novo.TipoEquip.Valor(), "L");
        EXPECT_EQ(novo.TipoVia.Valor(), "U");
        EXPECT_EQ(novo.NroIntRejLimDif.Valor(), 32);
        ASSERT_FALSE(novo.Sensores.Valor().Nada());
        ASSERT_EQ(novo.Sensores.Valor()->Count(), 1);
        const SensorED &sensor = *novo.Sensores.Valor()->Item(1);
        EXPECT_EQ(sensor.LocalInfr.Valor(), "Rua das Flores, 12");
        EXPECT_EQ(sensor.CodLograd.Valor(), 77);
        ASSERT_EQ(sensor.Afericoes.Valor()->Count(), 2);
        EXPECT_EQ(sensor.Afericoes.Valor()->Item(1)->DataVencimento.Valor(), DataDe(31, 5, 2026));
        EXPECT_EQ(sensor.Afericoes.Valor()->Item(2)->PortDimel.Valor(), "123/15");
    }

  protected:
    void NoEquipamento(PessoaNaTela &p) override
    {
        p.Preenche("txtCodEquip", "EQ_9");
        p.Preenche("txtModelo", "ACME");
        p.Escolhe("cboTipoMedidor", "Fixo");
        p.Escolhe("cboTipoEquip", "Lombada");
        p.Abre("sstDados", 1);
        p.Escolhe("cboMunic", "Agudo");
        p.Escolhe("cboArqLayout", "PADRAO");
        p.Preenche("txtVelocPerm", "60");
        p.Clica("optUrbana");
        p.Clica("ztCmdAplicar"); // without a description
        p.Preenche("txtDescricao", "Nova");
        p.Clica("ztCmdAplicar");
        p.Abre("sstDados", 4);
        p.Clica("optTrabDiasDif", 1);
        p.Marca("chkRejeicaoAuto");
        p.Escolhe("cboRejeicao", "Imagem sem nitidez");
        p.Abre("sstDados", 2);
        p.EscolheMenu("ztListaSensor", "mnuZTLObjNovo");
        p.Clica("ztCmdOK");
    }
    void NoSensor(PessoaNaTela &p) override
    {
        p.InformaEndereco("ztEndereco1", 77, 12, "", "90000000", "Rua das Flores, 12");
        p.Abre("sstDados", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo");
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo");
        p.Clica("cmdOK");
    }
    void NaAfericao(PessoaNaTela &p) override
    {
        if (++m_Afericoes == 1) {
            p.Preenche("txtNroINMETRO", "123");
            Periodo(p, "01022026", "31012027");
        } else {
            p.Escolhe("cboTipo", "Declaração de Conformidade");
            p.Preenche("txtNroPortDIMEL", "123");
            p.Preenche("txtAnoPortDIMEL", "15");
            Periodo(p, "01062026", "31052027");
        }
        Documento(p);
        p.Clica("cmdOK");
    }

  private:
    std::size_t m_Antes = 0;
};

TEST(frmEquipDetalhesVarredura, NewEquipment_WithSensorAndCalibrations_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<JornadaNova>(R"(
pessoa > @abreLista
pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjNovo) > COEquipamentos.Novo
  frmEquipDetalhes.CarregaInclusao
    @controles frmEquipDetalhes
    @combosDoEquipto
    - objMTM.ClienteLogado
    - objMTM.SetorLogado
    @FormShowModal frmEquipDetalhes
    pessoa > frmEquipDetalhes.cboTipoMedidor_Change > - goDadosVor.PreencheTipoEquip(cboTipoEquip, 1
    pessoa > frmEquipDetalhes.ztCmdAplicar_ValidaClick > frmEquipDetalhes.ValidouOk
      - goMensagem.ExibeMensagem("Informe a descrição do equipamento!", txtDescricao)
    pessoa > frmEquipDetalhes.ztCmdAplicar_Click
      frmEquipDetalhes.Aplicar
        - Plataforma.PerguntaSimNao("Confirma a inclusão?", "Atenção", padrao=Sim)
        - Plataforma.Ponteiro := 11
        - goDadosVor.ObtemOrgao
        - Orgao.CodCliente
        clsEquipto.Salva
          @remota inclui
          @carregaED
        - Plataforma.Ponteiro := 0
      clsEquipto.ReCarrega > @carregaEquipto
    pessoa > frmEquipDetalhes.chkRejeicaoAuto_Click > - goDadosVor.PreencheRejeicoes(cboRejeicao, 0, 0)
    @paginaSensores
    pessoa > COSensores.ItemMenuClicado > COSensores.Novo
      frmEquipSensores.CarregaInclusao
        @controles frmEquipSensores
        @FormShowModal frmEquipSensores
        @abaAfericoes
        pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Novo
          frmEquipAfericoes.CarregaInclusao
            @controles frmEquipAfericoes
            @FormShowModal frmEquipAfericoes
            @documento
            pessoa > frmEquipAfericoes.cmdOK_Click > - Plataforma.Descarrega(frmEquipAfericoes)
            @ativa
          @listaAfericoes
        pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Novo
          frmEquipAfericoes.CarregaInclusao
            @controles frmEquipAfericoes
            @FormShowModal frmEquipAfericoes
            @documento
            pessoa > frmEquipAfericoes.cmdOK_Click
              frmEquipAfericoes.ValidouOk > frmEquipAfericoes.DataVerificacaoEmConflito
                - Plataforma.DataCurta
                - Plataforma.PerguntaSimNao("Data de verificação do INMETRO (01/06/2026)
              - Plataforma.Descarrega(frmEquipAfericoes)
            @ativa
          @listaAfericoes
        pessoa > frmEquipSensores.cmdOK_Click > - Plataforma.Descarrega(frmEquipSensores)
        @ativa
      @listaSensores
    @okDoEquipto
  @tabelaAlterada
  @localiza
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 544);
}

// A loaded equipment that keeps its calibrations on a page of its own: one is looked at with its document; one is
// added, another changed, each after conflicts; the changed one is removed.
class JornadaDasAfericoes : public JornadaDeFormularios {
  public:
    explicit JornadaDasAfericoes(HostRoteirizado &host) : JornadaDeFormularios(host)
    {
        Responde(Conflito("01/01/2026", "31/12/2026"), false);
        host.Dominio->Documentos[9] = Bytes{'%', 'P', 'D', 'F'};
        host.Dominio->UltimoDocumento = 9;
    }

    void Percorre() override
    {
        m_NroIntEquip = m_Registro.Poe(EquiptoCalibrado("M", 2, "M100"));
        Comanda("mnuZTLObjEditar");
    }

    void ConfereSucesso() override
    {
        const SensorED &sensor = *m_Registro.Equipamento(m_NroIntEquip)->Sensores.Valor()->Item(1);
        ASSERT_EQ(sensor.Afericoes.Valor()->Count(), 2);
        const AfericaoED &antiga = *sensor.Afericoes.Valor()->Item(1);
        EXPECT_EQ(antiga.Numero.Valor(), "124");
        EXPECT_EQ(antiga.DataVencimento.Valor(), DataDe(30, 12, 2026));
        EXPECT_EQ(antiga.Ativo.Valor(), 2);
        const AfericaoED &nova = *sensor.Afericoes.Valor()->Item(2);
        EXPECT_EQ(nova.Numero.Valor(), "77");
        EXPECT_EQ(nova.DataVerificacao.Valor(), DataDe(1, 1, 2027));
        EXPECT_GE(nova.NroIntImgCertif.Valor(), 10);
    }

  protected:
    void NoEquipamento(PessoaNaTela &p) override
    {
        p.Abre("sstDados", 3);
        p.ClicaLinha("ztListaAfericao", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjDetalhes");
        VeCertificado(2);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjNovo");
        p.ClicaLinha("ztListaAfericao", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjEditar");
        p.ClicaLinha("ztListaAfericao", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir");
        p.Clica("ztCmdOK");
    }
    void NaAfericao(PessoaNaTela &p) override
    {
        if (++m_Afericoes == 1) {
            p.Clica("cmdOK"); // without a number
            p.Preenche("txtNroINMETRO", "77");
            Periodo(p, "01062026", "31052027");
            p.Clica("cmdOK"); // the answer to the question is no
            Periodo(p, "01012027", "31122027");
            p.Clica("cmdOK"); // without a document
            Documento(p);
        } else {
            p.Preenche("txtNroINMETRO", "124");
            Periodo(p, "01062027", "01062028");
            p.Clica("cmdOK"); // starts inside the new one
            Periodo(p, "01012026", "01062027");
            p.Clica("cmdOK"); // the new one starts inside
            Periodo(p, "01012026", "30122026");
        }
        p.Clica("cmdOK");
    }

  private:
    std::int32_t m_NroIntEquip = 0;
};

TEST(frmEquipDetalhesVarredura, Calibrations_ShownAddedChangedAndRemoved_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDasAfericoes>(R"(
pessoa > @abreLista
pessoa > @localiza
pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar) > COEquipamentos.Editar
  frmEquipDetalhes.CarregaEdicao
    @montaEquipto
    @FormShowModal frmEquipDetalhes
    @paginaAfericoes
    pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Detalhes > frmEquipAfericoes.CarregaDetalhes
      @controles frmEquipAfericoes
      - goMensagem.PreparaDetalhes(frmEquipAfericoes)
      @FormShow frmEquipAfericoes
    pessoa > frmEquipAfericoes.cmdVisualizar_Click
      - goDadosVor.RecebeDocumento(9, True)
      - Plataforma.CaminhoModulo
      - Plataforma.ExisteArquivo("C:\HOST\MODULOS\VORTemp.pdf") -> False
      - Plataforma.GravaArquivo("C:\HOST\MODULOS\VORTemp.pdf"
      @visualizaPDF
    pessoa > frmEquipAfericoes.cmdVisualizar_Click
      - goDadosVor.RecebeDocumento(9, True)
      - Plataforma.CaminhoModulo
      - Plataforma.ExisteArquivo("C:\HOST\MODULOS\VORTemp.pdf") -> True
      - Plataforma.ApagaArquivo("C:\HOST\MODULOS\VORTemp.pdf")
      - Plataforma.GravaArquivo("C:\HOST\MODULOS\VORTemp.pdf"
      @visualizaPDF
    pessoa > frmEquipAfericoes.cmdCancelar_Click > - Plataforma.Descarrega(frmEquipAfericoes)
    pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Novo
      frmEquipAfericoes.CarregaInclusao
        @controles frmEquipAfericoes
        @FormShowModal frmEquipAfericoes
        pessoa > frmEquipAfericoes.cmdOK_Click > frmEquipAfericoes.ValidouOk
          - goMensagem.ExibeMensagem("Informe o Número INMETRO!", txtNroINMETRO)
        pessoa > frmEquipAfericoes.cmdOK_Click > frmEquipAfericoes.ValidouOk
          frmEquipAfericoes.DataVerificacaoEmConflito
            - Plataforma.DataCurta
            - Plataforma.PerguntaSimNao("Data de verificação do INMETRO (01/06/2026)
        pessoa > frmEquipAfericoes.cmdOK_Click > frmEquipAfericoes.ValidouOk
          - goMensagem.ExibeMensagem("É obrigatório fazer Upload do Documento em PDF!", Nothing)
        @documento
        pessoa > frmEquipAfericoes.cmdOK_Click > - Plataforma.Descarrega(frmEquipAfericoes)
        @ativa
      @listaAfericoes
    pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Editar
      frmEquipAfericoes.CarregaEdicao
        @controles frmEquipAfericoes
        @FormShowModal frmEquipAfericoes
        pessoa > frmEquipAfericoes.cmdOK_Click > frmEquipAfericoes.ValidouOk
          frmEquipAfericoes.DataVerificacaoEmConflito
            - Plataforma.DataCurta
            - Plataforma.CaixaInformacao("Data de verificação do INMETRO (01/06/2027)
        pessoa > frmEquipAfericoes.cmdOK_Click > frmEquipAfericoes.ValidouOk > frmEquipAfericoes.VerificaConflitoDatas
          - Plataforma.DataCurta
          - Plataforma.DataCurta
          - Plataforma.CaixaInformacao("Período da nova aferição em conflito
        pessoa > frmEquipAfericoes.cmdOK_Click > - Plataforma.Descarrega(frmEquipAfericoes)
        @ativa
      @listaAfericoes
    pessoa > COAfericoes.m_ZtList_AntesDeRemoverItem > COAfericoes.Excluir
      - Plataforma.PerguntaSimNao("Confirma a exclusão desta aferição?", "Atenção", padrao=Não)
    @okDoEquipto
  @tabelaAlterada
  @pagina
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 587);
}

// Of an equipment that is operated by an agent: a calibration less, applied; then another description; then looked at.
class JornadaAplicada : public JornadaDeFormularios {
  public:
    explicit JornadaAplicada(HostRoteirizado &host) : JornadaDeFormularios(host) {}

    void Percorre() override
    {
        m_NroIntEquip = m_Registro.Poe(EquiptoCalibrado("A", 3, "A100"));
        m_Linhas = -1;
        m_Edita = true;
        Comanda("mnuZTLObjEditar");
        m_Edita = false;
        Comanda("mnuZTLObjDetalhes");
    }

    void ConfereSucesso() override
    {
        const EquiptoED &guardado = *m_Registro.Equipamento(m_NroIntEquip);
        EXPECT_EQ(guardado.Descricao.Valor(), "Outra");
        EXPECT_EQ(guardado.Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->Ativo.Valor(), 2);
        EXPECT_EQ(m_Linhas, 0);
    }

  protected:
    void NoEquipamento(PessoaNaTela &p) override
    {
        p.Abre("sstDados", 3);
        if (!m_Edita) {
            m_Linhas = p.Linhas("ztListaAfericao");
            p.Clica("cmdCancelar");
            return;
        }
        p.ClicaLinha("ztListaAfericao", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir");
        p.Clica("ztCmdAplicar");
        p.Abre("sstDados", 0);
        p.Preenche("txtDescricao", "Outra");
        p.Clica("ztCmdOK");
    }

  private:
    std::int32_t m_NroIntEquip = 0;
    std::int32_t m_Linhas = -1;
    bool m_Edita = false;
};

TEST(frmEquipDetalhesVarredura, Equipment_AppliedAlteredAndShown_SurvivesEveryFault)
{
    auto varredura = VarreduraDe<JornadaAplicada>(R"(
pessoa > @abreLista
pessoa > @localiza
pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar) > COEquipamentos.Editar
  frmEquipDetalhes.CarregaEdicao
    @montaEquipto
    @FormShowModal frmEquipDetalhes
    @paginaAfericoes
    pessoa > COAfericoes.m_ZtList_AntesDeRemoverItem > COAfericoes.Excluir
      - Plataforma.PerguntaSimNao("Confirma a exclusão desta aferição?", "Atenção", padrao=Não)
    pessoa > frmEquipDetalhes.ztCmdAplicar_Click
      @aplica altera
      clsEquipto.ReCarrega > @carregaEquipto
    @okDoEquipto
  @tabelaAlterada
  @pagina
pessoa > @abreLista
pessoa > @localiza
pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjDetalhes) > COEquipamentos.Detalhes
  frmEquipDetalhes.CarregaDetalhes
    @montaEquipto
    - goMensagem.PreparaDetalhes(frmEquipDetalhes)
    @FormShowModal frmEquipDetalhes
    @paginaAfericoes
    pessoa
      frmEquipDetalhes.cmdCancelar_Click > - Plataforma.Descarrega(frmEquipDetalhes)
      @ativa
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 564);
}

// Looks into a sensor and its calibration, changes it, removes it, and at each level throws the changes away.
class JornadaDesfeita : public JornadaDeFormularios {
  public:
    explicit JornadaDesfeita(HostRoteirizado &host) : JornadaDeFormularios(host)
    {
        m_Registro.Poe(EquiptoCalibrado("R", 1, "R100"));
        host.Dominio->Documentos[9] = Bytes{'%', 'P', 'D', 'F'};
    }

    void Percorre() override
    {
        if (m_Host.Tela->Arquivos.Existe(Temporario)) {
            m_Host.Tela->Arquivos.Apaga(Temporario);
        }
        Comanda("mnuZTLObjEditar");
    }

    void ConfereSucesso() override
    {
        EXPECT_EQ(m_Sensores, 1);
        EXPECT_EQ(m_LinhasDosDetalhes, 1);
        EXPECT_FALSE(m_Host.Contem("EquiptoRN.ExecutaMetodo(\"altera\""));
        EXPECT_TRUE(m_Host.Tela->FormsAbertos("frmEquipSensores").empty());
        EXPECT_TRUE(m_Host.Tela->FormsAbertos("frmEquipDetalhes").empty());
    }

  protected:
    void NoEquipamento(PessoaNaTela &p) override
    {
        p.Abre("sstDados", 2);
        p.ClicaLinha("ztListaSensor", 1);
        p.EscolheMenu("ztListaSensor", "mnuZTLObjDetalhes");
        if (!Parou()) {
            NaJanela("frmEquipSensores", [this](PessoaNaTela &detalhes) {
                detalhes.Abre("sstDados", 1);
                m_LinhasDosDetalhes = detalhes.Linhas("ztListaAfericao");
                detalhes.ClicaLinha("ztListaAfericao", 1);
                detalhes.EscolheMenu("ztListaAfericao", "mnuZTLObjDetalhes");
                VeCertificado(1);
                detalhes.Clica("cmdCancelar");
            });
        }
        p.EscolheMenu("ztListaSensor", "mnuZTLObjEditar");
        p.EscolheMenu("ztListaSensor", "mnuZTLObjExcluir");
        p.Clica("cmdCancelar");
    }
    void NoSensor(PessoaNaTela &p) override
    {
        ++m_Sensores;
        p.Preenche("txtLocalInfr", "");
        p.Clica("cmdOK"); // without an address
        p.Abre("sstDados", 1);
        p.ClicaLinha("ztListaAfericao", 1);
        p.EscolheMenu("ztListaAfericao", "mnuZTLObjExcluir");
        p.Clica("cmdCancelar");
    }

  private:
    std::int32_t m_LinhasDosDetalhes = 0;
};

TEST(frmEquipDetalhesVarredura, Changes_ThrownAwayAtEachLevel_SurviveEveryFault)
{
    auto varredura = VarreduraDe<JornadaDesfeita>(R"(
pessoa > @abreLista
pessoa > @localiza
pessoa > COEquipamentos.m_ZtList_ItemMenuClicado(mnuZTLObjEditar) > COEquipamentos.Editar
  frmEquipDetalhes.CarregaEdicao
    @montaEquipto
    @FormShowModal frmEquipDetalhes
    @paginaSensores
    pessoa > COSensores.ItemMenuClicado > COSensores.Detalhes > frmEquipSensores.CarregaDetalhes
      @controles frmEquipSensores
      - goMensagem.PreparaDetalhes(frmEquipSensores)
      @FormShow frmEquipSensores
    @abaAfericoes
    pessoa > COAfericoes.ItemMenuClicado > COAfericoes.Detalhes > frmEquipAfericoes.CarregaDetalhes
      @controles frmEquipAfericoes
      - goMensagem.PreparaDetalhes(frmEquipAfericoes)
      @FormShowDepois frmEquipAfericoes
    pessoa > frmEquipAfericoes.cmdVisualizar_Click
      - goDadosVor.RecebeDocumento(9, True)
      - Plataforma.CaminhoModulo
      - Plataforma.ExisteArquivo("C:\HOST\MODULOS\VORTemp.pdf") -> False
      - Plataforma.GravaArquivo("C:\HOST\MODULOS\VORTemp.pdf"
      @visualizaPDF
    pessoa > frmEquipAfericoes.cmdCancelar_Click > - Plataforma.Descarrega(frmEquipAfericoes)
    pessoa > frmEquipSensores.cmdCancelar_Click > - Plataforma.Descarrega(frmEquipSensores)
    pessoa > COSensores.ItemMenuClicado > COSensores.Editar > frmEquipSensores.CarregaEdicao
      @controles frmEquipSensores
      @FormShowDepois frmEquipSensores
      @ativa
      pessoa > frmEquipSensores.cmdOK_Click > frmEquipSensores.validouOk
        - goMensagem.ExibeMensagem("Informe o endereço na notificação.", txtLocalInfr)
      @abaAfericoes
      pessoa > COAfericoes.m_ZtList_AntesDeRemoverItem > COAfericoes.Excluir
        - Plataforma.PerguntaSimNao("Confirma a exclusão desta aferição?"
      pessoa > frmEquipSensores.cmdCancelar_Click
        - Plataforma.PerguntaSimNao("Foram feitas alterações neste sensor.
        - Plataforma.Descarrega(frmEquipSensores)
      @ativa
    pessoa > COSensores.m_ZtList_AntesDeRemoverItem > COSensores.Excluir
      - Plataforma.PerguntaSimNao("Confirma a exclusão deste sensor?"
    pessoa > frmEquipDetalhes.cmdCancelar_Click
      - Plataforma.PerguntaSimNao("Foram feitas alterações neste equipamento.
      - Plataforma.Descarrega(frmEquipDetalhes)
    @ativa
)");
    varredura.Segue();
    EXPECT_GE(varredura.Roda(), 458);
}

} // namespace
