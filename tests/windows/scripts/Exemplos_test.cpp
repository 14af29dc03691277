#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/externo/PessoaExterna.h"
#include "tests/windows/scripts/Roteiro.h"

namespace nativo {
namespace {

// The examples of the documentation, as they stand there, with the host's classes in this process.
TEST_F(CasoExterno, ExampleInScript_PicksAnEquipmentAndPrintsACertificate)
{
    const ComponenteExterno componente;
    ASSERT_EQ(componente.Registra(), S_OK);
    {
        HospedeiroExterno hospedeiro;
        hospedeiro.Classes.Oferece("Fiscaliza.Sessao", [&hospedeiro] {
            auto sessao = ObjetoExterno::Novo("Sessao", hospedeiro.Livro);
            sessao->Tem("objMTM", Var(hospedeiro.objMTM)).Tem("objSCA", Var(hospedeiro.objSCA));
            sessao->Tem("Banco", Var(hospedeiro.MDB));
            return Contado<IDispatch>(sessao.Ponteiro());
        });
        Roteiro roteiro("docs/exemplos/windows/selecao.vbs");
        const std::string diferenca = PessoaExterna::Percorre([&] { roteiro.Espera(); },
                                                              [](PessoaExterna &p) {
                                                                  p.EsperaJanelaAlheia("Equipamentos")
                                                                      .EsperaUsavel("OK", true)
                                                                      .Alt('O')
                                                                      .EsperaCaixa("Aferição Vigente");
                                                                  p.Tecla(VK_RETURN)
                                                                      .EsperaJanelaAlheia("Equipamentos")
                                                                      .TabAteLista()
                                                                      .Tecla(VK_UP)
                                                                      .Alt('O');
                                                              });
        EXPECT_EQ(diferenca, "") << hospedeiro.Livro.Tudo();
        EXPECT_EQ(roteiro.Linhas(), (std::vector<std::string>{"ET-04 2002", "certificado", "FIM"}));
        EXPECT_EQ(hospedeiro.Livro.Ultima("documento mostrado"), "documento mostrado: %PDF-1.4 Aferição 12/A1 Fulano");
    }
    EXPECT_EQ(componente.Desregistra(), S_OK);
}

} // namespace
} // namespace nativo
