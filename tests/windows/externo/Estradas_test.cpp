#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/externo/PessoaExterna.h"

#include <cstdio>

namespace nativo {
namespace {

// The component in a host that knows it by its identifiers: registered, used through its windows with keys and mouse,
// ended, and gone without a trace.
class EstradasTeste : public CasoExterno {
  protected:
    explicit EstradasTeste(bool semBiblioteca = false) : hospedeiro(semBiblioteca) {}

    void SetUp() override
    {
        ASSERT_EQ(componente.Registra(), S_OK);
        geral = ComponenteExterno::Cria();
        hospedeiro.Entra(geral);
    }
    void TearDown() override
    {
        EXPECT_EQ(componente.PodeDescarregar(), S_FALSE);
        geral.Chama("Logoff");
        geral.Chama("Encerra");
        geral = ObjetoTardio();
        hospedeiro.EsqueceJanela();
        EXPECT_EQ(componente.PodeDescarregar(), S_OK);
        EXPECT_EQ(componente.Desregistra(), S_OK);
        componente.Solta();
        CoFreeUnusedLibrariesEx(0, 0);
        EXPECT_FALSE(ComponenteExterno::Carregado());
        CLSID classe;
        EXPECT_NE(CLSIDFromProgID(L"ZTAVOREQUIP.Geral", &classe), S_OK);
    }

    void Percorre(const std::function<void()> &acao, const std::function<void(PessoaExterna &)> &jornada)
    {
        EXPECT_EQ(PessoaExterna::Percorre(acao, jornada), "") << hospedeiro.Livro.Tudo();
    }
    ObjetoTardio Consulta() const
    {
        return ObjetoTardio(ObjetoTardio(geral.Chama("CEspecifica")).Chama("CreateCVorEquip"));
    }
    // A document for the person to choose; where it is.
    std::wstring PoeCertificado() const
    {
        const std::wstring caminho = hospedeiro.Pasta() + L"novo.pdf";
        std::FILE *arquivo = _wfopen(caminho.c_str(), L"wb");
        std::fputs("%PDF-1.4 novo", arquivo);
        std::fclose(arquivo);
        return caminho;
    }
    // From the menu's click to the save, with a new calibration and its document on the way.
    void PercorreUmEquipamento();
    std::string UltimoPedido(const std::string &operacao) const
    {
        return hospedeiro.Livro.Ultima("EquiptoRN." + operacao + " ");
    }

    ComponenteExterno componente;
    HospedeiroExterno hospedeiro;
    ObjetoTardio geral;
};

void EstradasTeste::PercorreUmEquipamento()
{
    const std::string certificado = Estreito(PoeCertificado());
    EXPECT_TRUE(geral.Chama("HabilitarItem", {"mnuModVOREquiptos"}).Verdade());
    bool tratado = false;
    Percorre([&] { tratado = geral.Chama("ClickMenu", {"mnuModVOREquiptos"}).Verdade(); },
             [&](PessoaExterna &p) {
                 p.EsperaJanela("Equipamentos").Fotografa("01-pesquisa");
                 p.TabAte("Tipo Agente:").DesceAte("Fixo");
                 p.TabAte("Equipto:").DesceAte("Radar Fotográfico");
                 p.TabAte("Critério:").DesceAte("Código").EsperaFoco("Código").Escreve("rf-01");
                 p.Alt('L').EsperaLinhas(1).EsperaCelula(1, "Código", "RF-01");
                 p.EsperaCelula(1, "Descrição", "Radar da entrada").EsperaCelula(1, "Município", "Porto Alegre");
                 p.EsperaCelula(1, "Tipo", "Radar Fotográfico").EsperaCelula(1, "Modelo", "Modelo R");
                 p.ClicaLinha(1).Fotografa("02-achado");

                 p.Alt('D').EsperaJanela("Detalhes do Equipamento"); // Editar
                 p.EsperaTexto("Código:", "RF-01").EsperaTexto("Descrição:", "Radar da entrada");
                 p.EsperaTexto("Marca/Modelo:", "Modelo R").EsperaTexto("Cliente:", "Autoridade Municipal");
                 p.EsperaTexto("Tipo de Medidor:", "Fixo").EsperaTexto("Tipo Equip.:", "Radar Fotográfico");
                 p.EsperaTexto("Data:", "05/01/2026").EsperaTexto("Hora:", "14:15:03");
                 p.EsperaUsavel("OK", false).Fotografa("03-equipamento");
                 p.Preenche("Descrição:", "Radar da entrada norte").EsperaUsavel("OK", true);
                 p.ClicaAba("Dados").EsperaTexto("Município:", "Porto Alegre").EsperaTexto("Veloc. Permitida:", "60");
                 p.EsperaTexto("Tolerância:", "7 Km/h").Fotografa("04-dados");
                 p.Tecla(VK_NEXT, VK_CONTROL).EsperaAba("Sensores").EsperaLinhas(1);
                 p.Fotografa("05-sensores").ClicaLinha(1);

                 p.Alt('D').EsperaJanela("Detalhes do Sensor").EsperaTexto("Número:", "1");
                 p.EsperaTexto("Endereço na Notificação:", "Rua A").Fotografa("06-sensor");
                 p.Preenche("Endereço na Notificação:", "Rua B").ClicaAba("Aferições").EsperaLinhas(1);
                 p.Fotografa("07-afericoes");

                 p.Alt('N').EsperaJanela("Nova Aferição").EsperaTexto("Código Eqpto:", "RF-01");
                 p.Fotografa("08-afericao");
                 p.Preenche("Número:", "2001").Tecla(VK_TAB).Escreve("87654321");
                 p.TabAte("Dt. de Verif.:").Escreve("11012027");
                 p.TabAte("Dt. de Venc.:").Escreve("11012028");
                 p.Alt('O').EsperaCaixa("É obrigatório fazer Upload do Documento em PDF!").Fotografa("09-aviso");
                 p.Tecla(VK_RETURN).EsperaJanela("Nova Aferição");
                 p.Alt('P').EsperaJanela("Selecione o arquivo").Fotografa("10-arquivo");
                 p.EscreveNoCampo(certificado).Tecla(VK_RETURN).EsperaJanela("Nova Aferição");
                 p.EsperaUsavel("Upload", true).Alt('U').EsperaUsavel("Upload", false);
                 p.Fotografa("11-enviado");
                 p.Alt('O').EsperaJanela("Detalhes do Sensor").EsperaLinhas(2);
                 p.Alt('O').EsperaJanela("Detalhes do Equipamento");
                 p.Alt('O').EsperaCaixa("Confirma a alteração?").Fotografa("12-confirma");
                 p.Alt('S').EsperaJanela("Equipamentos");
                 p.EsperaCelula(1, "Descrição", "Radar da entrada norte").Fotografa("13-gravado");
                 p.Tecla(VK_F4, VK_MENU).EsperaFechar("Equipamentos");
             });
    EXPECT_TRUE(tratado);
}

TEST_F(EstradasTeste, OneEquipment_FromTheMenuToTheSave)
{
    PercorreUmEquipamento();
    const Diario &livro = hospedeiro.Livro;
    EXPECT_EQ(livro.Primeira("CSCA.PossuiPerm2"), "CSCA.PossuiPerm2(\"NAB\", \"VOR-EQP-CS\", \"\")");
    EXPECT_EQ(livro.Primeira("CAutoModulos.MontaEstruturaMenus"),
              "CAutoModulos.MontaEstruturaMenus(\"mnuModVOREquiptos\", \"ZTAVOREQUIP\")");
    EXPECT_EQ(livro.Primeira("EquiptoRN.lista2 "),
              "EquiptoRN.lista2 ListaEquiptoED{ClienteInc=\"Autoridade Municipal\", Codigo=\"rf-01\", "
              "TipoEquip=\"R\", Ativo=1, TipoAgente=1, IndTrabFoto=1}");
    EXPECT_EQ(livro.Primeira("EquiptoRN.consulta "), "EquiptoRN.consulta EquiptoED{NroIntEquip=7}");
    EXPECT_EQ(
        UltimoPedido("altera"),
        "EquiptoRN.altera EquiptoED{NroIntEquip=7, ClienteInc=\"Autoridade Municipal\", "
        "SetorInc=\"Fiscalização\", Codigo=\"RF-01\", SubCodigo=\"\", Descricao=\"Radar da entrada norte\", "
        "CodMunic=4314902, TipoVia=\"U\", TipoEquip=\"R\", VelocPermitida=60, ArquivoLayout=\"NENHUM\", "
        "TemImagemEntrelacada=2, Modelo=\"Modelo R\", TemLimiteDif=2, TemPerfilMag=2, Ativo=1, "
        "Sensores=[SensorED{Afericoes=[AfericaoED{Numero=\"2001\", Marca=\"87654321\", "
        "DataVerificacao=#1/11/2027#, DataVencimento=#1/11/2028#, Ativo=1, NroIntImgCertif=101, TipoAfer=1, "
        "PortDimel=\"\"}], "
        "NroIntSensor=31, NroSensor=1, CodLograd=77, EndCep=90010020, EndNro=1500, "
        "EndCompl=\"\", EndDescr=\"Rua Bento Gonçalves, 1500\", SentidoVia=\"C\", Ativo=1, LocalInfr=\"Rua B\"}], "
        "TipoAgente=1}");
    EXPECT_EQ(livro.Primeira("CTrataBD.TabelaAlterada"),
              "CTrataBD.TabelaAlterada(\"VOREQUIPTO\", True, False, ausente, ausente)");
    EXPECT_EQ(hospedeiro.Servicos.Documentos().at(101), "%PDF-1.4 novo");
    EXPECT_EQ(livro.Primeira("documento mostrado"), "documento mostrado: %PDF-1.4 novo");
    EXPECT_TRUE(livro.Que("CMensagem.ExibeErro").empty()) << livro.Tudo();
}

TEST_F(EstradasTeste, QueryOfAnotherModule_ByWindowAndByCode)
{
    const ObjetoTardio consulta = Consulta();
    bool escolheu = false;
    Percorre(
        [&] {
            escolheu = consulta.Chama("SelecionaEquipamento", {"", "", Var::Data(46100)}).Verdade();
        },
        [](PessoaExterna &p) {
            p.EsperaJanela("Equipamentos").EsperaLinhas(2).EsperaCelula(1, "Código", "ET-04");
            p.EsperaUsavel("OK", true).ClicaLinha(2).Fotografa("20-selecao");
            p.Clica("OK").EsperaCaixa("Equipamento não possui Aferição Vigente para a data de Infração.");
            p.Fotografa("21-sem-afericao").Tecla(VK_RETURN);
            p.EsperaJanela("Equipamentos").ClicaLinha(1).Alt('O').EsperaFechar("Equipamentos");
        });
    EXPECT_TRUE(escolheu);
    EXPECT_EQ(consulta.Chama("NroIntEquip").Inteiro(), 10);
    EXPECT_EQ(consulta.Chama("Codigo").Texto(), "ET-04");
    EXPECT_EQ(consulta.Chama("Modelo").Texto(), "Modelo E");
    EXPECT_EQ(consulta.Chama("VelocPerm").Inteiro(), 0);
    EXPECT_EQ(consulta.Chama("NroInmetro").Texto(), "2002");
    EXPECT_EQ(consulta.Chama("MarcaInmetro").Texto(), "12345678");
    EXPECT_EQ(consulta.Chama("DtVerifInmetro").Bruta().vt, VT_DATE);
    EXPECT_EQ(consulta.Chama("DtVerifInmetro").Numero(), 46032);
    EXPECT_EQ(hospedeiro.Livro.Ultima("EquiptoRN.consultaSimplesAfericaoVigente"),
              "EquiptoRN.consultaSimplesAfericaoVigente "
              "ConsultaAfericaoED{DtInfracao=#3/19/2026#, NroIntEquip=10, TipoConsulta=1}");

    EXPECT_TRUE(consulta.Chama("BuscaEquipamento", {"rf-01", "R", Var::Data(46100)}).Verdade());
    EXPECT_EQ(consulta.Chama("NroIntEquip").Inteiro(), 7);
    EXPECT_EQ(consulta.Chama("VelocPerm").Inteiro(), 60);
    EXPECT_EQ(consulta.Chama("NroInmetro").Texto(), "1001");
    EXPECT_FALSE(consulta.Chama("BuscaEquipamento", {"não há"}).Verdade());
    EXPECT_EQ(consulta.Chama("Codigo").Texto(), "RF-01") << "a search without success leaves the answer as it was";

    EXPECT_TRUE(consulta.Chama("ImpCertificadoAfericaoEquipto", {std::int32_t{12}, "A1", "Fulano"}).Verdade());
    EXPECT_EQ(hospedeiro.Livro.Ultima("documento mostrado"), "documento mostrado: %PDF-1.4 Aferição 12/A1 Fulano");
    EXPECT_NE(GetFileAttributesW((hospedeiro.Pasta() + L"~VORAFER12-A1.pdf").c_str()), INVALID_FILE_ATTRIBUTES);
    consulta.Chama("LimpaArqTemp");
    EXPECT_EQ(GetFileAttributesW((hospedeiro.Pasta() + L"~VORAFER12-A1.pdf").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(EstradasTeste, Selection_Cancelled_AnswersFalseAndClears)
{
    const ObjetoTardio consulta = Consulta();
    EXPECT_TRUE(consulta.Chama("BuscaEquipamento", {"rf-01"}).Verdade());
    bool escolheu = true;
    Percorre([&] { escolheu = consulta.Chama("SelecionaEquipamento", {"ET-04"}).Verdade(); },
             [this](PessoaExterna &p) {
                 p.EsperaJanela("Equipamentos").EsperaLinhas(1);
                 p.Espera("o hospedeiro está parado", [this] { return !IsWindowEnabled(hospedeiro.Janela()); });
                 p.Alt('C').EsperaFechar("Equipamentos");
             });
    EXPECT_FALSE(escolheu);
    EXPECT_TRUE(IsWindowEnabled(hospedeiro.Janela()));
    EXPECT_EQ(consulta.Chama("NroIntEquip").Inteiro(), 0);
    EXPECT_EQ(consulta.Chama("Codigo").Texto(), "");
}

TEST_F(EstradasTeste, NewEquipment_AndItsDetails)
{
    Percorre([&] { geral.Chama("ClickMenu", {"mnuModVOREquiptos"}); },
             [](PessoaExterna &p) {
                 p.EsperaJanela("Equipamentos").Alt('N').EsperaJanela("Novo Equipamento").Fotografa("30-novo");
                 p.Preenche("Código:", "NV_1").Preenche("Descrição:", "Equipamento novo");
                 p.TabAte("Tipo de Medidor:").DesceAte("Fixo").TabAte("Tipo Equip.:").DesceAte("Pardal");
                 p.Preenche("Marca/Modelo:", "Modelo N");
                 p.ClicaAba("Dados").TabAte("Município:").Escreve("caxias").EsperaTexto("Município:", "Caxias do Sul");
                 p.TabAte("Layout arquivos:").DesceAte("RADAR").Preenche("Veloc. Permitida:", "100");
                 p.EsperaTexto("Tolerância:", "7% sobre velocidade medida.").Clica("Via urbana");
                 p.Fotografa("31-novo-dados").Alt('P').EsperaCaixa("Confirma a inclusão?").Alt('S');
                 p.EsperaJanela("Novo Equipamento").EsperaUsavel("OK", true).Alt('C');
                 p.EsperaCaixa("Deseja descartá-las?").Alt('S').EsperaJanela("Equipamentos");
                 p.Alt('L').EsperaLinhas(2).ClicaLinha(1);
                 p.Alt('T').EsperaJanela("Detalhes do Equipamento").EsperaTexto("Código:", "RF-01"); // Detalhes
                 p.Fotografa("32-detalhes").Clica("Fechar").EsperaJanela("Equipamentos");
                 p.Tecla(VK_F4, VK_MENU).EsperaFechar("Equipamentos");
             });
    EXPECT_EQ(UltimoPedido("inclui"),
              "EquiptoRN.inclui EquiptoED{ClienteInc=\"Autoridade Municipal\", "
              "Codigo=\"NV_1\", SubCodigo=\"\", Descricao=\"Equipamento novo\", CodMunic=4305108, TipoVia=\"U\", "
              "TipoEquip=\"P\", VelocPermitida=100, ArquivoLayout=\"RADAR\", TemImagemEntrelacada=2, "
              "Modelo=\"Modelo N\", TemLimiteDif=2, TemPerfilMag=2, Ativo=2, TipoAgente=1}");
    EXPECT_TRUE(hospedeiro.Livro.Que("CMensagem.ExibeErro").empty()) << hospedeiro.Livro.Tudo();
}

TEST_F(EstradasTeste, Refusal_IsTheServices_AndTheWindowStays)
{
    hospedeiro.Servicos.Recusa("lista2", "Servidor em manutenção");
    Percorre([&] { geral.Chama("ClickMenu", {"mnuModNABEquiptos"}); },
             [this](PessoaExterna &p) {
                 p.EsperaJanela("Equipamentos").Alt('L').Espera("a recusa é mostrada", [this] {
                     return !hospedeiro.Livro.Que("recusa mostrada").empty();
                 });
                 p.Alt('L').EsperaLinhas(2).EsperaCelula(2, "Código", "ET-05");
                 p.Tecla(VK_F4, VK_MENU).EsperaFechar("Equipamentos");
             });
    EXPECT_EQ(hospedeiro.Livro.Primeira("recusa mostrada"), "recusa mostrada: Servidor em manutenção");
}

TEST_F(EstradasTeste, HostsFaultBelowAWindow_IsShownByTheHostsBox)
{
    Percorre([&] { geral.Chama("ClickMenu", {"mnuModVOREquiptos"}); },
             [this](PessoaExterna &p) {
                 p.EsperaJanela("Equipamentos");
                 hospedeiro.Livro.FalhaNa(1);
                 p.Alt('L').EsperaCaixa("31234").Fotografa("40-erro").EsperaCaixa("Falha ordenada no hospedeiro: ção");
                 p.EsperaCaixa("COEquipamentos.Localizar").Tecla(VK_RETURN);
                 hospedeiro.Livro.FalhaNa(0);
                 p.EsperaJanela("Equipamentos").Tecla(VK_F4, VK_MENU).EsperaFechar("Equipamentos");
             });
}

TEST_F(EstradasTeste, Logoff_ClosesTheWindows_AndASecondSessionWorks)
{
    geral.Chama("ClickMenu", {"mnuModVOREquiptos"});
    geral.Chama("ClickMenu", {"mnuModNABEquiptos"});
    EXPECT_EQ(hospedeiro.Livro.Que("janela frmLista").size(), 2U);
    geral.Chama("Logoff");
    Percorre([] {}, [](PessoaExterna &p) { p.EsperaFechar("Equipamentos"); });
    geral.Chama("Logon", {Var(hospedeiro.objMTM), Var(hospedeiro.objSCA), ""});
    hospedeiro.Livro.Limpa();
    Percorre([&] { geral.Chama("ClickMenu", {"mnuModVOREquiptos"}); },
             [](PessoaExterna &p) { p.EsperaJanela("Equipamentos").Alt('L').EsperaLinhas(2); });
}

// The library of the records is not there: they are the component's own objects.
class EstradasSemBibliotecaTeste : public EstradasTeste {
  protected:
    EstradasSemBibliotecaTeste() : EstradasTeste(true) {}
};

TEST_F(EstradasSemBibliotecaTeste, OneEquipment_TravelsInObjectsOfTheComponent_WithTheSameMembersUnset)
{
    PercorreUmEquipamento();
    const std::string pedido = UltimoPedido("altera");
    EXPECT_NE(pedido.find("Descricao=\"Radar da entrada norte\""), std::string::npos) << pedido;
    EXPECT_NE(pedido.find("AfericaoED{Numero=\"2001\", Marca=\"87654321\", DataVerificacao=#1/11/2027#"),
              std::string::npos)
        << pedido;
    EXPECT_EQ(pedido.find("NroIntRejLimDif"), std::string::npos) << pedido;
    EXPECT_EQ(hospedeiro.Livro.Primeira("EquiptoRN.consulta "), "EquiptoRN.consulta EquiptoED{NroIntEquip=7}");
}

} // namespace
} // namespace nativo
