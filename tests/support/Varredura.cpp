#include "tests/support/Varredura.h"

#include "shell/ModGeral.h"

#include <algorithm>

namespace {

bool Sobra(const std::string &problema)
{
    return problema.starts_with("Pergunta esperada que não foi feita") ||
           problema.starts_with("Janela modal esperada que não foi mostrada");
}

} // namespace

Rodada::Rodada()
{
    InstalaHost(Host);
    Shell = LogaGeral(*Host);
}

Rodada::~Rodada()
{
    const bool falhou = Host->FalhasDisparadas() > 0;
    Host->Tela->FechaTudo();
    Shell = nullptr;
    DescarregaModulo();
    InstalaHost(nullptr);
    Host->Erros(); // which ConfereFalha has looked at
    for (const std::string &problema : Host->VerificaFim()) {
        if (!falhou || !Sobra(problema)) {
            ADD_FAILURE() << problema;
        }
    }
}

void Rodada::Tenta(const std::function<void()> &acao)
{
    try {
        acao();
    } catch (...) {
        Escapadas.push_back(FalhaCorrente());
    }
    EsqueceSobras();
}

void Rodada::TentaPerguntado(const std::string &pergunta, bool sim, const std::function<void()> &acao)
{
    Host->Responde(pergunta, sim);
    Tenta(acao);
}

void Rodada::TentaModal(const std::string &classe, const std::function<void(Pessoa &)> &roteiro,
                        const std::function<void()> &acao)
{
    Host->AoMostrarModal(classe, [this, roteiro](const Ref<IForm> &form) {
        Pessoa pessoa(form, Host->Tela);
        roteiro(pessoa);
        if (form->Visible()) {
            Tenta([&] { pessoa.Fecha(); });
        }
    });
    Tenta(acao);
}

// What an action that failed did not come to. Without a failure it stays, for the end of the round to tell.
void Rodada::EsqueceSobras()
{
    if (Host->FalhasDisparadas() > 0) {
        Host->Tela->ConfereSobras();
    }
}

std::string Rodada::ChamadaQueFalhou()
{
    for (const std::string &linha : Host->Registro()) {
        if (linha.find(" !! ") != std::string::npos) {
            return linha;
        }
    }
    return {};
}

void ConfereFalha(Rodada &rodada, const Jornada &jornada)
{
    const std::string linha = rodada.ChamadaQueFalhou();
    ASSERT_FALSE(linha.empty());
    const std::string nome = linha.substr(0, linha.find_first_of("( "));
    const auto ignoradas = jornada.Ignoradas();
    const bool ignorada =
        std::ranges::any_of(ignoradas, [&](const std::string &inicio) { return linha.starts_with(inicio); });
    const auto &erros = rodada.Host->Erros();
    EXPECT_EQ(erros.size() + rodada.Escapadas.size(), ignorada ? 0U : 1U);
    for (const auto &erro : erros) {
        EXPECT_EQ(erro.Numero, 70);
        EXPECT_EQ(erro.Descricao, "Falha da varredura");
        EXPECT_TRUE(erro.Fonte == nome || erro.Fonte.starts_with(nome + " < ")) << erro.Fonte;
        EXPECT_FALSE(erro.Contexto.empty());
    }
    bool ampulheta = false;
    for (const Falha &falha : rodada.Escapadas) {
        EXPECT_EQ(falha.Numero, 70);
        EXPECT_TRUE(falha.Fonte == nome || falha.Fonte.starts_with(nome + " < ")) << falha.Fonte;
        ampulheta = ampulheta || jornada.DeixaAmpulheta(falha);
    }
    if (!ampulheta) {
        EXPECT_EQ(rodada.Host->Tela->Ponteiro(), PonteiroNormal);
    }
}
