#include "controls/ztList.h"
#include "search/CVorEquip.h"
#include "shell/Especifica.h"
#include "tests/support/HostTeste.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/VarreduraRegistro.h"

#include <memory>

// The two ways through the whole module, by the person's face of the controls alone, with every call that the host
// gets.

namespace {

class EstradasTeste : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        host->Clientes = {{1, "DAER"}, {2, "DAER"}};
        registro = std::make_unique<RegistroEmMemoria>(*host);
        LogaGeral();
    }

    void Poe(const std::string &tipo, std::uint8_t medidor, const std::string &codigo)
    {
        registro->Poe(EquiptoCalibrado(tipo, medidor, codigo));
    }

    Ref<IForm> Janela() { return host->Tela->FormAberto(0); }

    std::unique_ptr<RegistroEmMemoria> registro;
};

TEST_F(EstradasTeste, Equipment_FromTheMenuToTheSave)
{
    Poe("R", 2, "R100");
    EXPECT_TRUE(geral->ClickMenu("mnuModVOREquiptos"));
    Pessoa pessoa(Janela(), host->Tela);
    EXPECT_TRUE(pessoa.Localiza("ztlLista")) << pessoa.Motivo();
    host->Responde("Confirma a alteração?", true);
    host->AoMostrarModal("frmEquipDetalhes", [](Pessoa &edicao) {
        EXPECT_TRUE(edicao.Abre("sstDados", 2)) << edicao.Motivo();
        EXPECT_TRUE(edicao.ClicaLinha("ztListaSensor", 1)) << edicao.Motivo();
        EXPECT_TRUE(edicao.EscolheMenu("ztListaSensor", "mnuZTLObjEditar")) << edicao.Motivo();
        EXPECT_TRUE(edicao.Abre("sstDados", 0)) << edicao.Motivo();
        EXPECT_TRUE(edicao.Preenche("txtDescricao", "Radar da saída")) << edicao.Motivo();
        EXPECT_TRUE(edicao.Clica("ztCmdOK")) << edicao.Motivo();
    });
    host->AoMostrarModal("frmEquipSensores", [](Pessoa &sensor) {
        EXPECT_TRUE(sensor.Preenche("txtLocalInfr", "Rua B")) << sensor.Motivo();
        EXPECT_TRUE(sensor.Clica("cmdOK")) << sensor.Motivo();
    });
    EXPECT_TRUE(pessoa.EscolheMenu("ztlLista", "mnuZTLObjEditar")) << pessoa.Motivo();
    EXPECT_EQ(pessoa.Acha<ztList>("ztlLista")->Celula(1, "Descrição"), "Radar da saída");

    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {R"x(Plataforma.Carrega(frmLista))x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I") -> True)x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A") -> True)x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E") -> True)x",
         R"x(Host.CriaDadosVor())x",
         R"x(goDadosVor.Inicializa(ObjInterface))x",
         R"x(goDadosVor.ObtemOrgao())x",
         R"x(Orgao.CodCliente -> 2)x",
         R"x(ztCliente.CodCliente := 2)x",
         R"x(goDadosVor.PreencheTipoAgente(cboTipoAgente, True, True, True))x",
         R"x(goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, True, True, True))x",
         R"x(goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, True, True, True))x",
         R"x(FormMDI.FecharEnviaRecebe(True))x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.ProcessaMensagens())x",
         R"x(ObjInterface.MostraJanela(frmLista, modal=False))x",
         R"x(Plataforma.ProcessaMensagens())x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(objMTM.CreateQMR())x",
         R"x(QMR.CreateNewTrataBD())x",
         R"x(TrataBD.InicializaInfoSistema("VOR", 1))x",
         R"x(TrataBD.pQMR())x",
         R"x(QMR.Sessao())x",
         R"x(objMTM.ObtemGateway())x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("lista2", ListaEquiptoED{ClienteInc="DAER", Ativo=1, IndTrabFoto=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> ListaEquiptoED{Equipamentos=[EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="R100", Descricao="Radar da entrada", CodMunic=120, TipoVia="R", TipoEquip="R", VelocPermitida=60, ArquivoLayout="NENHUM", Modelo="RF-3", Ativo=1, ClienteTrans="DAER", OperadorTrans=77, DataTrans=20261120, HoraTrans=100000, TipoAgente=2}], ProxNroIntEquip=0})x",
         R"x(TrataBD.AbreZTBanco(99))x",
         R"x(MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120", 4, ausente, ausente) -> 1 linhas)x",
         R"x(Cursor.Close())x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("consulta", EquiptoED{NroIntEquip=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="R100", Descricao="Radar da entrada", CodMunic=120, TipoVia="R", TipoEquip="R", VelocPermitida=60, ArquivoLayout="NENHUM", Modelo="RF-3", Ativo=1, ClienteTrans="DAER", OperadorTrans=77, DataTrans=20261120, HoraTrans=100000, Sensores=[SensorED{Afericoes=[AfericaoED{NroIntAfericao=1, Numero="123", Marca="456", DataVerificacao=01/01/2026, DataVencimento=31/12/2026, NroIntImgCertif=9, TipoAfer=1}], NroIntSensor=1, NroSensor=1, LocalInfr="Rua A"}], TipoAgente=2})x",
         R"x(goMensagem.FormataData(20261120, 0) -> "20/11/2026")x",
         R"x(goMensagem.FormataHora(100000, 0) -> "10:00:00")x",
         R"x(Plataforma.Carrega(frmEquipDetalhes))x",
         R"x(goDadosVor.PreencheTipoAgente(cboTipoMedidor, True, False, False))x",
         R"x(MDB.OpenRecordset("SELECT * FROM Municipio WHERE UF_MUNIC = 'RS' AND COD_RENAVAM > 0 ORDER BY NOME_MUNICIPIO", 4, ausente, ausente) -> 4 linhas)x",
         R"x(Cursor.Close())x",
         R"x(goDadosVor.DirLayouts() -> "C:\HOST\LAYOUTS\")x",
         R"x(Plataforma.PrimeiroArquivo("C:\HOST\LAYOUTS\*.LAY") -> "")x",
         R"x(goDadosVor.PreencheTipoEquip(cboTipoEquip, 2, True, False, False))x",
         R"x(FormMDI.FecharEnviaRecebe(True))x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.ProcessaMensagens())x",
         R"x(ObjInterface.MostraJanela(frmEquipDetalhes, modal=True))x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.Carrega(frmEquipSensores))x",
         R"x(FormMDI.FecharEnviaRecebe(True))x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.ProcessaMensagens())x",
         R"x(ObjInterface.MostraJanela(frmEquipSensores, modal=True))x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(Plataforma.Descarrega(frmEquipSensores))x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.PerguntaSimNao("Confirma a alteração?", "Atenção", padrao=Sim) -> Sim)x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(goDadosVor.ObtemOrgao())x",
         R"x(Orgao.CodCliente -> 2)x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("altera", EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="R100", SubCodigo="", Descricao="Radar da saída", CodMunic=120, TipoVia="R", TipoEquip="R", ArquivoLayout="NENHUM", TemImagemEntrelacada=2, Modelo="RF-3", TemLimiteDif=2, TemPerfilMag=2, Ativo=1, Sensores=[SensorED{NroIntSensor=1, NroSensor=1, Ativo=1, LocalInfr="Rua B"}], TipoAgente=2}) -> True)x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.Descarrega(frmEquipDetalhes))x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(TrataBD.TabelaAlterada("VOREQUIPTO", True, False, ausente, ausente))x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("lista2", ListaEquiptoED{ClienteInc="DAER", Ativo=1, IndTrabFoto=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> ListaEquiptoED{Equipamentos=[EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="R100", SubCodigo="", Descricao="Radar da saída", CodMunic=120, TipoVia="R", TipoEquip="R", VelocPermitida=60, ArquivoLayout="NENHUM", TemImagemEntrelacada=2, Modelo="RF-3", TemLimiteDif=2, TemPerfilMag=2, Ativo=1, ClienteTrans="DAER", OperadorTrans=77, DataTrans=20261120, HoraTrans=100000, TipoAgente=2}], ProxNroIntEquip=0})x",
         R"x(MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120", 4, ausente, ausente) -> 1 linhas)x",
         R"x(Cursor.Close())x",
         R"x(Plataforma.Ponteiro := 0)x"}));
}

TEST_F(EstradasTeste, Query_FromAnotherModule_BySelectionAndByCode)
{
    Poe("A", 3, "A200");
    const Ref<CVorEquip> consulta = geral->CEspecifica()->CreateCVorEquip();
    host->AoMostrarModal("frmLista", [](Pessoa &selecao) {
        EXPECT_TRUE(selecao.ClicaLinha("ztlLista", 1)) << selecao.Motivo();
        EXPECT_TRUE(selecao.Clica("cmdOK")) << selecao.Motivo();
    });
    EXPECT_TRUE(consulta->SelecionaEquipamento("A200", "A", DataDe(20, 11, 2026)));
    EXPECT_EQ(consulta->Codigo(), "A200");
    EXPECT_EQ(consulta->NroInmetro(), "123");
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {R"x(Plataforma.Carrega(frmLista))x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "I") -> True)x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "A") -> True)x",
         R"x(objSCA.PossuiPerm2("NAB", "VOR-EQP-CS", "E") -> True)x",
         R"x(ztCliente.CodCliente := 1)x",
         R"x(Host.CriaDadosVor())x",
         R"x(goDadosVor.Inicializa(ObjInterface))x",
         R"x(goDadosVor.PreencheTipoAgente(cboTipoAgente, False, True, True))x",
         R"x(goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True))x",
         R"x(goDadosVor.PreencheTipoEquip(cboTipoEquipto, 0, False, True, True))x",
         R"x(Plataforma.Ponteiro := 11)x",
         R"x(objMTM.CreateQMR())x",
         R"x(QMR.CreateNewTrataBD())x",
         R"x(TrataBD.InicializaInfoSistema("VOR", 1))x",
         R"x(TrataBD.pQMR())x",
         R"x(QMR.Sessao())x",
         R"x(objMTM.ObtemGateway())x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("lista2", ListaEquiptoED{ClienteInc="DAER", Codigo="A200", TipoEquip="A", Ativo=1, IndTrabFoto=2}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> ListaEquiptoED{Equipamentos=[EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="A200", Descricao="Radar da entrada", CodMunic=120, TipoVia="R", TipoEquip="A", VelocPermitida=60, ArquivoLayout="NENHUM", Modelo="RF-3", Ativo=1, ClienteTrans="DAER", OperadorTrans=77, DataTrans=20261120, HoraTrans=100000, TipoAgente=3}], ProxNroIntEquip=0})x",
         R"x(TrataBD.AbreZTBanco(99))x",
         R"x(MDB.OpenRecordset("SELECT * FROM Municipio WHERE COD_MUNIC = 120", 4, ausente, ausente) -> 1 linhas)x",
         R"x(Cursor.Close())x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(FormMDI.FecharEnviaRecebe(True))x",
         R"x(Plataforma.Ponteiro := 0)x",
         R"x(Plataforma.ProcessaMensagens())x",
         R"x(ObjInterface.MostraJanela(frmLista, modal=True))x",
         R"x(cGlobal.gsubSetaAutoModuloAtivo("ZTAVOREQUIP"))x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("consultaSimplesAfericaoVigente", ConsultaAfericaoED{DtInfracao=20/11/2026, NroIntEquip=1, TipoConsulta=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> AfericaoED{NroIntAfericao=1, Numero="123", Marca="456", DataVerificacao=01/01/2026, DataVencimento=31/12/2026, NroIntImgCertif=9, TipoAfer=1})x",
         R"x(Plataforma.Descarrega(frmLista))x"}));

    host->LimpaRegistro();
    EXPECT_TRUE(consulta->BuscaEquipamento("a200", "", DataDe(20, 11, 2026)));
    EXPECT_EQ(consulta->MarcaInmetro(), "456");
    EXPECT_TRUE(RegistroIgual(
        host->Registro(),
        {R"x(objMTM.ClienteLogado() -> "DAER")x",
         R"x(MDB.OpenRecordset("         SELECT NroIntEquip     FROM VOREQUIPTO    WHERE ClienteInc = 'DAER'     AND UCASE(Codigo) = 'A200'     AND Ativo = 1 ", 4, ausente, ausente) -> 1 linhas)x",
         R"x(Cursor.Close())x", R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("consultaSimples", EquiptoED{NroIntEquip=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> EquiptoED{NroIntEquip=1, ClienteInc="DAER", SetorInc="Norte", Codigo="A200", Descricao="Radar da entrada", CodMunic=120, TipoVia="R", TipoEquip="A", VelocPermitida=60, ArquivoLayout="NENHUM", Modelo="RF-3", Ativo=1, ClienteTrans="DAER", OperadorTrans=77, DataTrans=20261120, HoraTrans=100000, TipoAgente=3})x",
         R"x(Gateway.CriaObjetoRN("VOR", "EquiptoRN", "ZTVORLIB", "4"))x",
         R"x(EquiptoRN.ExecutaMetodo("consultaSimplesAfericaoVigente", ConsultaAfericaoED{DtInfracao=20/11/2026, NroIntEquip=1, TipoConsulta=1}) -> True)x",
         R"x(EquiptoRN.ObtemRetorno() -> AfericaoED{NroIntAfericao=1, Numero="123", Marca="456", DataVerificacao=01/01/2026, DataVencimento=31/12/2026, NroIntImgCertif=9, TipoAfer=1})x"}));
}

} // namespace
