#include "tests/windows/travessia/Excecoes.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace nativo {
namespace {

// Tests that do not run here, or that run with something on one side.
struct Excecao {
    const char *Teste;
    bool Roda;
    const char *Motivo;
};

constexpr std::array<Excecao, 4> Todas{{
    {"TransacoesGeralTeste.Send_EachOperationThatFailsWithNumberZero_RaisesNothing", false,
     "automation has no failure of the number 0: that is success"},
    {"ChamadaRemota.Parameters_AfterTheCall_AreReleasedBeforeTheAnswerAndTheRecordAfterIt", true,
     "looks at the caller's own array, so its gateway is on the caller's side"},
    {"HostServices.InstalaHost_OfAHost_GivesItAndItsPlatformUntilItIsTakenAwayAndNoneIsFault91", true,
     "compares the host installed with the one given, so that one is given as it is"},
    {"every test with Tela->EmbrulhaForms", true,
     "the window around a form is the scripted platform's, which is the component's own side; a foreign one has a "
     "real handle"},
}};

// What tests ask of the scripted host by themselves, on its own side. Nothing else may reach it but across the
// boundary.
struct ChamadaPropria {
    std::string_view Conjunto;
    std::string_view Chamada; // its beginning
    const char *Motivo;
};

constexpr const char *DoProprioHost = "tests of the scripted host itself";
constexpr std::array<ChamadaPropria, 10> Proprias{{
    {"BancoLocalTeste", "", DoProprioHost},
    {"HostRoteirizadoTeste", "", DoProprioHost},
    {"PlataformaRoteirizadaTeste", "", DoProprioHost},
    {"RegistroEmMemoriaTeste", "", DoProprioHost},
    {"Varredura", "Host.CriaMensagem", "a journey with defects of its own asks the host as a test"},
    {"ChamadaRemota", "objMTM.ObtemGateway", "the gateway is what crosses"},
    {"RespostaTeste", "objMTM.ObtemGateway", "the gateway is what crosses"},
    {"RelatoriosGeralTeste", "MDB.OpenRecordset", "the cursor is what crosses"},
    {"GeralTeste", "Tool(", "the test sets the tool's first state"},
    {"MenusGeralTeste", "Tool", "the test sets and reads the tools' state"},
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

bool Excecoes::ChamaPorSi(std::string_view conjunto, std::string_view chamada)
{
    return std::any_of(Proprias.begin(), Proprias.end(), [&](const ChamadaPropria &propria) {
        return propria.Conjunto == conjunto && chamada.starts_with(propria.Chamada);
    });
}

void Excecoes::Conta(std::ostream &saida)
{
    for (const Excecao &excecao : Todas) {
        saida << (excecao.Roda ? "in part on one side: " : "left out: ") << excecao.Teste << ": " << excecao.Motivo
              << '\n';
    }
    for (const ChamadaPropria &propria : Proprias) {
        saida << "calls by itself: " << propria.Conjunto << (propria.Chamada.empty() ? "" : ", ") << propria.Chamada
              << ": " << propria.Motivo << '\n';
    }
}

} // namespace nativo
