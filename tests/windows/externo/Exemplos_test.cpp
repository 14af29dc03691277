#include "docs/exemplos/windows/selecao.h"
#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/externo/PessoaExterna.h"
#include "tests/windows/scripts/MotorDeScript.h"

#include <cstdio>

namespace nativo {
namespace {

// The examples of the guide for developers, run in a host as they stand there: the same questions, the same answers.
enum class Linguagem { Script, Programa };
class ExemplosTeste : public CasoExterno, public testing::WithParamInterface<Linguagem> {
  protected:
    void SetUp() override
    {
        ASSERT_EQ(componente.Registra(), S_OK);
        // So that none of the answers is what it would be without a choice.
        hospedeiro.Servicos.Equipamento(10)->Poe("VelocPermitida", std::int16_t{60});
        // Left by an earlier look at a certificate, for the example to clear away.
        std::fclose(_wfopen(Deixado().c_str(), L"wb"));
    }
    void TearDown() override
    {
        EXPECT_EQ(componente.PodeDescarregar(), S_OK) << "the example kept an object";
        EXPECT_EQ(componente.Desregistra(), S_OK);
    }

    std::wstring Deixado() const { return hospedeiro.Pasta() + L"~VORAFER99-Z9.pdf"; }
    std::wstring Mostrado() const { return hospedeiro.Pasta() + L"~VORAFER12-A1.pdf"; }
    static bool Existe(const std::wstring &caminho)
    {
        return GetFileAttributesW(caminho.c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    // What the example tells, with the person in front of the window that it opens.
    std::string Script(const std::function<void(PessoaExterna &)> &jornada)
    {
        ObjetoTardio geral = ComponenteExterno::Cria();
        hospedeiro.Entra(geral);
        std::string relato;
        {
            const MotorDeScript motor("docs/exemplos/windows/selecao.vbs", "Modulo", geral);
            EXPECT_EQ(PessoaExterna::Percorre([&] { relato = motor.Roda("Relato"); }, jornada), "")
                << hospedeiro.Livro.Tudo();
        }
        geral.Chama("Logoff");
        geral.Chama("Encerra");
        hospedeiro.EsqueceJanela();
        return relato;
    }
    std::string Programa(const std::function<void(PessoaExterna &)> &jornada)
    {
        exemplo::ObjetosDoHospedeiro objetos;
        objetos.FormMDI = hospedeiro.FormMDI.Ponteiro();
        objetos.MenuDestino = hospedeiro.MenuDestino.Ponteiro();
        objetos.oAppEXE = hospedeiro.oAppEXE.Ponteiro();
        objetos.cGlobal = hospedeiro.cGlobal.Ponteiro();
        objetos.ObjInterface = hospedeiro.ObjInterface.Ponteiro();
        objetos.objMTM = hospedeiro.objMTM.Ponteiro();
        objetos.objSCA = hospedeiro.objSCA.Ponteiro();
        objetos.sMunicCreden = L"4314902";
        std::wstring relato;
        EXPECT_EQ(PessoaExterna::Percorre([&] { relato = exemplo::Seleciona(objetos); }, jornada), "")
            << hospedeiro.Livro.Tudo();
        hospedeiro.EsqueceJanela();
        return Estreito(relato);
    }
    std::string Roda(const std::function<void(PessoaExterna &)> &jornada)
    {
        return GetParam() == Linguagem::Script ? Script(jornada) : Programa(jornada);
    }

    // The seven answers, as both examples tell them.
    static constexpr const char *Escolhido =
        "NroIntEquip: 10\r\nCodigo: ET-04\r\nModelo: Modelo E\r\nVelocPerm: 60\r\nNroInmetro: 2002\r\n"
        "MarcaInmetro: 12345678\r\nDtVerifInmetro: 10/1/2026\r\n";

    ComponenteExterno componente;
    HospedeiroExterno hospedeiro;
};

TEST_P(ExemplosTeste, ChoosesAndPrints)
{
    EXPECT_EQ(Roda([](PessoaExterna &p) {
                  p.EsperaJanela("Equipamentos").EsperaLinhas(1).EsperaCelula(1, "Código", "ET-04");
                  p.ClicaLinha(1).Alt('O').EsperaFechar("Equipamentos");
              }),
              std::string(Escolhido) + "Certificado: -1\r\nFIM: selecao\r\n");
    EXPECT_EQ(hospedeiro.Livro.Primeira("EquiptoRN.lista2 "),
              "EquiptoRN.lista2 ListaEquiptoED{ClienteInc=\"Autoridade Municipal\", Codigo=\"ET-04\", "
              "TipoEquip=\"E\", Ativo=1, IndTrabFoto=2}");
    EXPECT_EQ(hospedeiro.Livro.Ultima("EquiptoRN.consultaSimplesAfericaoVigente"),
              "EquiptoRN.consultaSimplesAfericaoVigente "
              "ConsultaAfericaoED{DtInfracao=#3/19/2026#, NroIntEquip=10, TipoConsulta=1}");
    EXPECT_EQ(hospedeiro.Livro.Que("documento mostrado"),
              std::vector<std::string>{"documento mostrado: %PDF-1.4 Aferição 12/A1 Fulano"});
    EXPECT_FALSE(Existe(Mostrado()));
    EXPECT_FALSE(Existe(Deixado()));
}

TEST_P(ExemplosTeste, IsToldThatNothingWasChosen)
{
    EXPECT_EQ(Roda([](PessoaExterna &p) {
                  p.EsperaJanela("Equipamentos").EsperaLinhas(1).Alt('C').EsperaFechar("Equipamentos");
              }),
              "Escolha: nenhuma\r\nFIM: selecao\r\n");
    EXPECT_TRUE(hospedeiro.Livro.Que("documento mostrado").empty());
    EXPECT_FALSE(Existe(Deixado()));
}

// The host fails while the certificate is on its way: the answers stand, and the fault is told as the host raised it.
TEST_P(ExemplosTeste, IsToldAFaultOfTheHost)
{
    hospedeiro.Classes.Oferece("SistemaExterno.SemPasta", [this] {
        auto diretorios = ObjetoExterno::Novo("CDiretorios", hospedeiro.Livro);
        diretorios->Faz("ObtemDiretorio", [](const ChamadaRecebida &) -> Var {
            throw FalhaExterna{31234, "Hospedeiro.Interno", "A pasta não está à disposição"};
        });
        return Contado<IDispatch>(diretorios.Ponteiro());
    });
    hospedeiro.Classes.Aponta("Diretorios", "SistemaExterno.SemPasta");
    EXPECT_EQ(Roda([](PessoaExterna &p) {
                  p.EsperaJanela("Equipamentos").EsperaLinhas(1).ClicaLinha(1).Alt('O').EsperaFechar("Equipamentos");
              }),
              std::string(Escolhido) + "Falha: 31234\r\nFonte: Hospedeiro.Interno\r\n"
                                       "Descricao: A pasta não está à disposição\r\nFIM: selecao\r\n");
    EXPECT_TRUE(hospedeiro.Livro.Que("documento mostrado").empty());
}

INSTANTIATE_TEST_SUITE_P(Exemplos, ExemplosTeste, testing::Values(Linguagem::Script, Linguagem::Programa),
                         [](const testing::TestParamInfo<Linguagem> &exemplo) {
                             return exemplo.param == Linguagem::Script ? "Script" : "Programa";
                         });

} // namespace
} // namespace nativo
