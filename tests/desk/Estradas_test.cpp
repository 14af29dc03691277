#include "tests/support/Estradas.h"

#include "tests/desk/MesaTeste.h"
#include "tests/desk/OperadorDeJanelas.h"
#include "tests/desk/Teclado.h"

using namespace mesa;

namespace {

// What is told once for every kind of window, in the real windows, over a registry with one equipment.
class EstradasTeste : public MesaTeste {
  protected:
    EstradasTeste()
    {
        Inclui(registro.Sessao("ana"), Poe(EquipamentoDe("R100"), SensorDe(1)));
        Entra();
    }

    // From the search window on. Empty when all was as expected.
    std::string Percorre(const Percurso &percurso)
    {
        return Teclado::Percorre([&](Teclado &teclado) {
            teclado.Tecla(Qt::Key_1, Qt::ControlModifier);
            Condutor condutor(pasta.filePath("imagens"));
            OperadorDeJanelas::Percorre(condutor, percurso, "frmLista");
        });
    }
};

TEST_F(EstradasTeste, Equipment_InRealWindows_IsFoundEditedAndSaved)
{
    std::string naLista;
    EXPECT_EQ(Percorre(EstradaDeUmEquipamento(naLista)), "");
    EXPECT_EQ(naLista, "Radar da saída");
    EXPECT_EQ(registro.Sql("SELECT Descricao FROM EQUIPAMENTO"), "Radar da saída");
    EXPECT_EQ(registro.Sql("SELECT LocalInfr FROM SENSOR"), "Rua B");
    EXPECT_EQ(mesa.Hospedeiro()->Plataforma()->NroForms(), 0);
}

TEST_F(EstradasTeste, Search_InRealWindows_BySomeCriteriaAndOrders)
{
    Inclui(registro.Sessao("ana"), Com(EquipamentoDe("R200"), &EquiptoED::Descricao, "Antes de todos"));
    std::string descricoes;
    Percurso percurso;
    percurso.Janelas["frmLista"] = [&](PessoaNaTela &p) {
        p.EscolheCliente("ztCliente", "Autoridade Estadual de Trânsito", "");
        p.Localiza("ztlLista");
        p.OrdenaPor("ztlLista", 2);
        for (std::int32_t linha = 1; linha <= p.Linhas("ztlLista"); ++linha) {
            descricoes += p.Celula("ztlLista", linha, "Descrição") + ";";
        }
        p.Marca("chkInativos");
        p.Fecha();
    };
    EXPECT_EQ(Percorre(percurso), "");
    EXPECT_EQ(descricoes, "Antes de todos;Av. Ipiranga, sentido centro;");
}

} // namespace
