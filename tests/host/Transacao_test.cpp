#include "host/Transacao.h"

#include "tests/support/FalhaLancada.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

class TransacaoSemMembros : public ITransacao {
  public:
    std::string_view NomeTipo() const override { return "Transacao"; }
};

TEST(ITransacao, Members_OfAnObjectThatLacksThem_AreFault438)
{
    TransacaoSemMembros transacao;
    const std::vector<std::function<void()>> membros = {
        [&] { transacao.sWindow(); },    [&] { transacao.DefinesWindow("w"); },
        [&] { transacao.sTransacao(); }, [&] { transacao.DefinesTransacao("t"); },
        [&] { transacao.sSistema(); },   [&] { transacao.DefinesSistema("s"); },
        [&] { transacao.sJob(); },       [&] { transacao.DefinesJob("j"); },
        [&] { transacao.sPrograma(); },  [&] { transacao.DefinesPrograma("p"); },
        [&] { transacao.bGCI(); },       [&] { transacao.DefinebGCI(true); },
        [&] { transacao.SisJava(); },    [&] { transacao.DefineSisJava(true); },
        [&] { transacao.Cin(); },        [&] { transacao.DefineCin(nullptr); },
        [&] { transacao.Cout(); },       [&] { transacao.DefineCout(nullptr); },
    };
    for (const auto &membro : membros) {
        EXPECT_EQ(FalhaLancada(membro).Numero, 438);
    }
}

TEST(CampoTransacao, Fresh_IsEmpty)
{
    const CampoTransacao campo;
    EXPECT_EQ(campo.NomeTipo(), "CampoTransacao");
    EXPECT_EQ(campo.Nome, "");
    EXPECT_EQ(campo.Valor, "");
}

} // namespace
