#include "tests/windows/travessia/Excecoes.h"

#include <array>
#include <ostream>

namespace nativo {
namespace {

struct Excecao {
    const char *Teste;
    bool Roda;
    const char *Motivo;
};

constexpr std::array<Excecao, 5> Todas{{
    {"TransacoesGeralTeste.Send_EachOperationThatFailsWithNumberZero_RaisesNothing", false,
     "automation has no failure of the number 0: that is success"},
    {"ChamadaRemota.Parameters_AfterTheCall_AreReleasedBeforeTheAnswerAndTheRecordAfterIt", true,
     "looks at the caller's own array, so its gateway is on the caller's side"},
    {"HostServices.InstalaHost_OfAHost_GivesItAndItsPlatformUntilItIsTakenAwayAndNoneIsFault91", true,
     "compares the host installed with the one given, so that one is given as it is"},
    {"HostRoteirizadoTeste.*, BancoLocalTeste.*, RegistroEmMemoriaTeste.*", true,
     "are tests of the scripted host itself, on its own side"},
    {"every test with Tela->EmbrulhaForms", true,
     "the window around a form is made by the scripted platform, which is the component's own side; it has no real "
     "handle, as a foreign one must"},
}};

} // namespace

std::string Excecoes::SemElas(const std::string &filtro)
{
    std::string sem = filtro;
    char separador = filtro.find('-') == std::string::npos ? '-' : ':';
    for (const Excecao &excecao : Todas) {
        if (!excecao.Roda) {
            sem += separador;
            sem += excecao.Teste;
            separador = ':';
        }
    }
    return sem;
}

void Excecoes::Conta(std::ostream &saida)
{
    for (const Excecao &excecao : Todas) {
        saida << (excecao.Roda ? "on one side: " : "left out: ") << excecao.Teste << ": " << excecao.Motivo << '\n';
    }
}

} // namespace nativo
