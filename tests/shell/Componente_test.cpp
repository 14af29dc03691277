#include "shell/Componente.h"

#include "shell/ModGeral.h"
#include "tests/shell/FormDeTeste.h"
#include "tests/support/HostTeste.h"

namespace {

using ComponenteTeste = HostTeste;

TEST_F(ComponenteTeste, DescarregaModulo_OfAComponentInUse_LeavesTheHostAndTheHandlesCount)
{
    LogaGeral();
    goMensagem();
    goDadosVor();
    goDiretorios();
    goGateway();
    ObjGlobalVor();
    const auto form = FormCompartilhado<FormDeTeste>();
    form->Carregar();
    const std::int64_t hwnd = form->hwnd();
    HostServices *const instalado = &Host();

    DescarregaModulo();

    const Componente &componente = EsteComponente();
    EXPECT_EQ(componente.Host.Ponteiro(), instalado);
    EXPECT_EQ(componente.UltimoHwnd, hwnd);
    EXPECT_TRUE(componente.Shell.Nada());
    EXPECT_TRUE(componente.Mensagem.Nada());
    EXPECT_TRUE(componente.DadosVor.Nada());
    EXPECT_TRUE(componente.Diretorios.Nada());
    EXPECT_TRUE(componente.Gateway.Nada());
    EXPECT_TRUE(componente.ObjGlobalVor.Nada());
    EXPECT_TRUE(componente.Forms.empty());
    EXPECT_EQ(componente.CodMunicLogon, 0);
}

} // namespace
