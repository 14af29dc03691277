#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/support/FormFalso.h"

#include "desk/host/Logradouros.h"
#include "host/Falha.h"
#include "shell/ModGeral.h"
#include "tests/support/UmControle.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

using namespace mesa;

namespace {

using Textos = std::vector<std::string>;

constexpr std::int32_t PortoAlegre = 4314902;

class ServicosMesaTeste : public HospedeiroTeste {
  protected:
    ServicosMesaTeste()
    {
        mesa.Entra("ana");
        dados = mesa.Host->CriaDadosVor();
        combo = CriadoPeloHost<IztCombo>(form, Chamado<AjustesZtCombo>("cbo"));
    }

    // "value text" of each item.
    Textos Itens() const
    {
        Textos itens;
        for (std::int32_t indice = 0; indice < combo->NroItens(); ++indice) {
            combo->DefineIndiceAtual(static_cast<std::int16_t>(indice));
            itens.push_back(combo->Valor() + " " + combo->Texto());
        }
        return itens;
    }
    std::string Valores() const
    {
        std::string valores;
        for (const std::string &item : Itens()) {
            valores += item.front();
        }
        return valores;
    }

    // Names of the files that the module finds where the layouts are, sorted.
    Textos Layouts(const std::string &padrao = "*.LAY")
    {
        const Ref<IPlataforma> plataforma = mesa.Host->Plataforma();
        Textos nomes;
        for (std::string nome = plataforma->PrimeiroArquivo(dados->DirLayouts() + padrao); !nome.empty();
             nome = plataforma->ProximoArquivo()) {
            nomes.push_back(nome);
        }
        std::ranges::sort(nomes);
        return nomes;
    }

    Ref<FormFalso> form = Novo<FormFalso>();
    Ref<IDadosVor> dados;
    Ref<IztCombo> combo;
};

TEST_F(ServicosMesaTeste, PreencheTipoAgente_OfEachMode_OffersTheMetersThatHaveTypes)
{
    dados->PreencheTipoAgente(combo, true, false, false);
    EXPECT_EQ(Itens(), (Textos{"1 Fixo", "2 Estático", "3 Portátil"}));
    dados->PreencheTipoAgente(combo, false, true, false);
    EXPECT_EQ(Itens(), (Textos{"0 Todos", "2 Estático", "3 Portátil"}));
}

TEST_F(ServicosMesaTeste, PreencheTipoEquip_OfEachMeterAndMode_OffersItsTypes)
{
    const auto tipos = [&](std::int16_t medidor, bool trabFoto) {
        dados->PreencheTipoEquip(combo, medidor, trabFoto, false, false);
        return Valores();
    };
    EXPECT_EQ(tipos(0, true), "CLPFMRV");
    EXPECT_EQ(tipos(1, true), "CLPF");
    EXPECT_EQ(tipos(2, true), "MR");
    EXPECT_EQ(tipos(3, true), "RV");
    EXPECT_EQ(tipos(0, false), "AEU");
    EXPECT_EQ(tipos(1, false), "");
    EXPECT_EQ(tipos(2, false), "A");
    EXPECT_EQ(tipos(3, false), "AEU");
}

TEST_F(ServicosMesaTeste, PreencheRejeicoes_OfACombo_NumbersThemAll)
{
    dados->PreencheRejeicoes(combo, 0, 0);
    const Textos itens = Itens();
    ASSERT_EQ(itens.size(), 12U);
    EXPECT_EQ(itens.front(), "1 Placa ilegível");
    EXPECT_EQ(itens.back(), "12 Velocidade dentro da tolerância");
}

TEST_F(ServicosMesaTeste, FormataDataEHora_OfRecordNumbers_PadEveryPart)
{
    const Ref<IMensagem> mensagem = mesa.Host->CriaMensagem();
    EXPECT_EQ(mensagem->FormataData(20260305, 0), "05/03/2026");
    EXPECT_EQ(mensagem->FormataData(19991231, 0), "31/12/1999");
    EXPECT_EQ(mensagem->FormataData(0, 0), "");
    EXPECT_EQ(mensagem->FormataHora(0, 0), "00:00:00");
    EXPECT_EQ(mensagem->FormataHora(70809, 0), "07:08:09");
    EXPECT_EQ(mensagem->FormataHora(235959, 0), "23:59:59");
}

TEST_F(ServicosMesaTeste, TextoParaBytes_OfWhatIsNoBase64_IsFault13)
{
    EXPECT_THROW(mesa.Host->CriaMensagem()->TextoParaBytes("%PDF"), Falha);
}

TEST_F(ServicosMesaTeste, EnviaDocumento_OfWhatIsNoPDF_IsRefusedWithWords)
{
    mesa.Host->Plataforma()->GravaArquivo(mesa.NoModulo("texto.pdf"), {'o', 'l', 'a'});
    double numero = 0;
    EXPECT_FALSE(dados->EnviaDocumento(mesa.NoModulo("texto.pdf"), numero, 0));
    EXPECT_FALSE(dados->EnviaDocumento(mesa.NoModulo("falta.pdf"), numero, 0));
    EXPECT_EQ(numero, 0);
    EXPECT_EQ(
        mesa.Janelas->Avisos,
        (Textos{"Registro de Equipamentos: O documento não é um PDF: confira o arquivo e envie de novo.",
                "Registro de Equipamentos: O arquivo '" + mesa.NoModulo("falta.pdf") + "' não pôde ser aberto."}));
}

TEST_F(ServicosMesaTeste, Layouts_OfTheRegistry_AreTheFilesOfTheirDirectory)
{
    EXPECT_EQ(Layouts(), (Textos{"AGENTE.LAY", "ESTATICO.LAY", "LOMBADA.LAY", "PADRAO.LAY", "PARDAL.LAY"}));
    // What lies on the disk does not count.
    std::filesystem::create_directories(mesa.Diretorio() / "dados" / "layouts");
    mesa.Host->Plataforma()->GravaArquivo(dados->DirLayouts() + "MEU.LAY", Bytes(5000, 'm'));
    mesa.Registro.IncluiLayout("Ônibus");
    mesa.Registro.DesativaLayout("PADRAO");
    EXPECT_EQ(Layouts(), (Textos{"AGENTE.LAY", "ESTATICO.LAY", "LOMBADA.LAY", "PARDAL.LAY", "Ônibus.LAY"}));
    EXPECT_EQ(Layouts("*.TXT"), Textos{});
    EXPECT_EQ(Layouts("p*.LAY"), Textos{"PARDAL.LAY"});
}

TEST_F(ServicosMesaTeste, Layouts_ForWhoMayNotLook_AreAFaultWithWords)
{
    mesa.Entra("carla");
    try {
        Layouts();
        FAIL();
    } catch (const Falha &falha) {
        EXPECT_EQ(falha.Descricao, "Carla Dias não tem permissão para consultar layouts.");
    }
}

TEST_F(ServicosMesaTeste, ProcuraLogradouros_ByNameOrPostalCode_GivesTheActiveStreets)
{
    const std::int32_t bento = mesa.Registro.IncluiRua("Rua Bento Gonçalves", "Centro", "90010020");
    mesa.Registro.DesativaRua(mesa.Registro.IncluiRua("Rua Bento Velho"));
    const ILogradouros &ruas = *mesa.Host->Logradouros;
    for (const char *procurado : {"goncalves BENTO", "90010-020", "bento"}) {
        const auto achados = ruas.Procura(PortoAlegre, procurado, 20);
        ASSERT_EQ(achados.size(), 1U) << procurado;
        EXPECT_EQ(achados[0].Codigo, bento);
        EXPECT_EQ(achados[0].CodMunic, PortoAlegre);
        EXPECT_EQ(achados[0].Descricao(12, "fundos"), "Rua Bento Gonçalves, 12 - fundos - Centro");
        EXPECT_EQ(achados[0].Cep, "90010020");
    }
    EXPECT_EQ(ruas.Procura(4300034, "bento", 20).size(), 0U); // of another municipality
    EXPECT_EQ(ruas.Procura(0, "bento", 20).size(), 0U);       // none chosen yet
    mesa.Registro.IncluiRua("Rua Bento Novo");
    EXPECT_EQ(ruas.Procura(PortoAlegre, "bento", 1).size(), 1U);
}

TEST_F(ServicosMesaTeste, LogradouroPorCodigo_OfAnyNumber_IsThereWhenTheRegistryHasIt)
{
    const std::int32_t codigo = mesa.Registro.IncluiRua("Rua A");
    const ILogradouros &ruas = *mesa.Host->Logradouros;
    EXPECT_EQ(ruas.PorCodigo(codigo)->Nome, "Rua A");
    mesa.Registro.DesativaRua(codigo); // what is stored is still told
    EXPECT_EQ(ruas.PorCodigo(codigo)->Nome, "Rua A");
    for (const std::int32_t outro : {-1, 0, codigo + 1, 1001, INT32_MAX}) {
        EXPECT_FALSE(ruas.PorCodigo(outro).has_value()) << outro;
    }
}

TEST_F(ServicosMesaTeste, Municipios_OfTheCountry_BeginWithThoseOfTheClientsState)
{
    const ILogradouros &ruas = *mesa.Host->Logradouros;
    const std::vector<MunicipioDeEndereco> &municipios = ruas.Municipios();
    ASSERT_EQ(municipios.size(), 5571U);
    EXPECT_EQ(municipios[0].Nome, "Aceguá");
    EXPECT_EQ(municipios[1].Nome, "Água Santa");
    EXPECT_EQ(municipios[496].Nome, "Xangri-lá");
    EXPECT_EQ(municipios[497].Nome, "Abadia de Goiás - GO");
    EXPECT_EQ(municipios.back().Nome, "Zortéa - SC");
    std::set<std::string> nomes;
    for (const MunicipioDeEndereco &municipio : municipios) {
        EXPECT_TRUE(nomes.insert(municipio.Nome).second) << municipio.Nome; // each is told from all others
    }
    EXPECT_EQ(&ruas.Municipios(), &municipios); // not made again for each picker
    mesa.Entra("elisa");
    EXPECT_EQ(ruas.Municipios()[0].Nome, "Adamantina");
    EXPECT_EQ(municipios[0].Nome, "Aceguá"); // a picker that is still open keeps its own
}

TEST_F(ServicosMesaTeste, Municipios_InTheEquipmentForm_AreOfTheClientsState)
{
    const auto ofertas = [&](const std::string &usuario) {
        const Ref<Geral> geral = Loga(usuario);
        combo->Limpa();
        gSubCarregaMunicipios(combo);
        geral->Logoff();
        return combo->NroItens();
    };
    EXPECT_EQ(ofertas("ana"), 497);
    EXPECT_EQ(ofertas("elisa"), 645);
}

TEST_F(ServicosMesaTeste, Entrada_AndSaida_GiveAndTakeTheSession)
{
    EXPECT_TRUE(mesa.Host->objSCA()->Logado());
    const Ref<AcessoMesa> acesso = mesa.Host->objSCA();
    mesa.Host->Sai();
    EXPECT_FALSE(acesso->Logado());
    EXPECT_FALSE(acesso->PossuiPerm2("NAB", "VOR-EQP-CS", ""));
    EXPECT_TRUE(mesa.Host->objMTM().Nada());
    mesa.Entra("bruno");
    EXPECT_TRUE(mesa.Host->objSCA()->PossuiPerm2("NAB", "VOR-EQP-CS", ""));
    EXPECT_FALSE(mesa.Host->objSCA()->PossuiPerm2("NAB", "VOR-EQP-CS", "I"));
}

} // namespace
