#include "tests/desk/HospedeiroDeTeste.h"
#include "tests/support/FormFalso.h"

#include "desk/host/Logradouros.h"
#include "desk/services/Referencias.h"
#include "host/Falha.h"
#include "tests/support/UmControle.h"

#include <gtest/gtest.h>

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

TEST_F(ServicosMesaTeste, Layouts_OfTheDesk_AreInstalledAndAUsersOwnIsKept)
{
    const Ref<IPlataforma> plataforma = mesa.Host->Plataforma();
    std::set<std::string> nomes;
    for (std::string nome = plataforma->PrimeiroArquivo(dados->DirLayouts() + "*.LAY"); !nome.empty();
         nome = plataforma->ProximoArquivo()) {
        EXPECT_TRUE(nomes.insert(nome).second) << nome;
    }
    EXPECT_EQ(nomes, (std::set<std::string>{"AGENTE.LAY", "ESTATICO.LAY", "LOMBADA.LAY", "PADRAO.LAY", "PARDAL.LAY"}));
    mesa.Host->Plataforma()->GravaArquivo(dados->DirLayouts() + "AGENTE.LAY", Bytes(5000, 'm'));
    HostMesa(mesa.Janelas, mesa.Diretorio() / "dados", [] { return DataDe(1, 1, 2026); });
    EXPECT_EQ(mesa.Host->Plataforma()->TamanhoArquivo(dados->DirLayouts() + "AGENTE.LAY"), 5000);
}

TEST_F(ServicosMesaTeste, ProcuraLogradouros_ByName_IgnoresAccentsCaseAndOrderOfWords)
{
    const auto achados = ProcuraLogradouros(PortoAlegre, "goncalves BENTO", 20);
    ASSERT_EQ(achados.size(), 1U);
    EXPECT_EQ(achados[0].Nome, "Rua Bento Gonçalves");
    EXPECT_EQ(achados[0].CodMunic, PortoAlegre);
    EXPECT_EQ(achados[0].Cep.size(), 8U);
    EXPECT_EQ(ProcuraLogradouros(PortoAlegre, "GETÚLIO", 20).size(), 1U);
    EXPECT_EQ(ProcuraLogradouros(PortoAlegre, "rua que não há", 20).size(), 0U);
    EXPECT_EQ(ProcuraLogradouros(1, "Bento", 20).size(), 0U);
}

TEST_F(ServicosMesaTeste, LogradouroPorCodigo_OfAnyNumber_IsThereWhenTheServicesKnowIt)
{
    const std::int32_t vias = static_cast<std::int32_t>(ProcuraLogradouros(PortoAlegre, "", 1000).size());
    ASSERT_GT(vias, 1);
    for (const std::int32_t codigo : {-1, 0, 1, 999, 1000, 1001, 1000 + vias, 1001 + vias, 1999, 2000, 2001, 497000,
                                      497001, 497000 + vias, 497001 + vias, 498000, 498001, INT32_MAX}) {
        EXPECT_EQ(LogradouroPorCodigo(codigo).has_value(), Referencias::Tabelas().TemLogradouro(codigo)) << codigo;
    }
    for (const Logradouro &logradouro : ProcuraLogradouros(PortoAlegre, "", 1000)) {
        EXPECT_TRUE(Referencias::Tabelas().TemLogradouro(logradouro.Codigo)) << logradouro.Nome;
    }
}

TEST_F(ServicosMesaTeste, ProcuraLogradouros_ByPostalCode_TakesItsBeginningWithOrWithoutTheDash)
{
    const Logradouro bento = ProcuraLogradouros(PortoAlegre, "Bento", 1).at(0);
    const std::string comTraco = bento.Cep.substr(0, 5) + "-" + bento.Cep.substr(5);
    for (const std::string &cep : {bento.Cep, comTraco}) {
        const auto achados = ProcuraLogradouros(PortoAlegre, cep, 20);
        ASSERT_EQ(achados.size(), 1U) << cep;
        EXPECT_EQ(achados[0].Codigo, bento.Codigo);
    }
    EXPECT_EQ(ProcuraLogradouros(PortoAlegre, bento.Cep.substr(0, 5), 7).size(), 7U);
    EXPECT_EQ(ProcuraLogradouros(4300034, bento.Cep, 20).size(), 0U); // another municipality's
}

TEST_F(ServicosMesaTeste, LogradouroPorCodigo_OfOneFound_IsThatOne)
{
    const Logradouro bento = ProcuraLogradouros(PortoAlegre, "Bento", 1).at(0);
    ASSERT_TRUE(LogradouroPorCodigo(bento.Codigo));
    EXPECT_EQ(LogradouroPorCodigo(bento.Codigo)->Nome, "Rua Bento Gonçalves");
    EXPECT_EQ(LogradouroPorCodigo(bento.Codigo)->Cep, bento.Cep);
    EXPECT_FALSE(LogradouroPorCodigo(0) || LogradouroPorCodigo(-1) || LogradouroPorCodigo(999999999));
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
