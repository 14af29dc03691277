#include "tests/support/JornadaVarrida.h"

namespace {

// Calls of which nobody is told when they fail.
bool Ignorada(const std::string &chamada)
{
    return chamada == "FormMDI.FecharEnviaRecebe" || chamada == "cGlobal.gsubSetaAutoModuloAtivo";
}

bool VemDe(const std::string &fonte, const std::string &chamada)
{
    return fonte == chamada || fonte.starts_with(chamada + " < ");
}

} // namespace

void JornadaVarrida::ConfereFalha()
{
    const std::string chamada = m_Host.ChamadaQueFalhou();
    const auto &erros = m_Host.Erros();
    EXPECT_EQ(erros.size() + m_Escapadas.size(), Ignorada(chamada) ? 0U : 1U) << chamada;
    bool ampulheta = false;
    for (const auto &erro : erros) {
        EXPECT_EQ(erro.Descricao, "Falha de teste");
        EXPECT_FALSE(erro.Contexto.empty());
        EXPECT_TRUE(VemDe(erro.Fonte, chamada)) << erro.Fonte;
    }
    for (const Falha &falha : m_Escapadas) {
        EXPECT_EQ(falha.Descricao, "Falha de teste");
        EXPECT_TRUE(VemDe(falha.Fonte, chamada)) << falha.Fonte;
        ampulheta = ampulheta || DeixaAmpulheta(falha);
    }
    if (!ampulheta) {
        EXPECT_EQ(m_Host.Tela->Ponteiro(), PonteiroNormal) << chamada;
    }
    m_Escapadas.clear();
}

void JornadaVarrida::Tenta(const std::function<void()> &acao)
{
    try {
        acao();
    } catch (...) {
        m_Escapadas.push_back(FalhaCorrente());
    }
}

void JornadaVarrida::NoModal(const std::string &classe, const std::function<void(Pessoa &)> &roteiro)
{
    m_Host.AoMostrarModalSempre(classe, [this, roteiro](const Ref<IForm> &form) {
        Pessoa pessoa(form, m_Host.Tela);
        Tenta([&] { roteiro(pessoa); });
        if (form->Visible()) {
            Tenta([&] { pessoa.Fecha(); });
        }
    });
}
