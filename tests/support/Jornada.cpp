#include "tests/support/Jornada.h"

#include "controls/ztList.h"

PessoaVarrida::PessoaVarrida(Jornada &jornada, const Ref<IForm> &form)
    : m_Jornada(jornada),
      m_Form(form),
      m_Pessoa(form)
{
}

void PessoaVarrida::Tenta(const std::function<bool()> &acao)
{
    bool feita = false;
    m_Jornada.Passo([&] { feita = acao(); });
    EXPECT_TRUE(feita || m_Jornada.Parou()) << m_Pessoa.Motivo();
    if (const Ref<IForm> form = m_Form.Alvo(); form && form->Visible()) {
        EXPECT_TRUE(form->Enabled()) << form->NomeTipo();
    }
}

void PessoaVarrida::Fecha()
{
    if (const Ref<IForm> form = m_Form.Alvo(); form && !m_Jornada.Parou()) {
        m_Jornada.FechaJanela(form);
    }
}

std::int32_t PessoaVarrida::Linhas(const std::string &nome)
{
    return m_Pessoa.Acha<ztList>(nome)->NroItens();
}

std::string PessoaVarrida::Celula(const std::string &nome, std::int32_t linha, const std::string &coluna)
{
    const Ref<ztList> lista = m_Pessoa.Acha<ztList>(nome);
    return m_Jornada.Parou() && lista->NroItens() < linha ? "" : lista->Celula(linha, coluna);
}

void Jornada::Comeca(std::function<bool()> parou, bool segue)
{
    m_Parou = std::move(parou);
    m_Segue = segue;
    m_Escapadas.clear();
    m_FalhasAntes = m_Host.FalhasDisparadas();
    for (const auto &[pergunta, sim] : m_Respostas) {
        m_Host.RespondeSempre(pergunta, sim);
    }
}

void Jornada::Passo(const std::function<void()> &acao)
{
    if (Parou() && !m_Segue) {
        return;
    }
    try {
        acao();
    } catch (...) {
        m_Escapadas.push_back({FalhaCorrente(), m_Host.Tela->Ponteiro()});
    }
}

void Jornada::Responde(const std::string &pergunta, bool sim)
{
    m_Respostas[pergunta] = sim;
}

void Jornada::Aceita(const Percurso &percurso, const std::string &comeco)
{
    for (const auto &[pergunta, sim] : percurso.Respostas) {
        Responde(pergunta, sim);
    }
    for (const auto &[classe, roteiro] : percurso.Janelas) {
        if (classe != comeco) {
            NoModal(classe, roteiro);
        }
    }
}

void Jornada::Desiste()
{
    for (const auto &[pergunta, sim] : m_Respostas) {
        m_Host.RespondeSempre(pergunta, false);
    }
}

void Jornada::NoModal(const std::string &classe, const std::function<void(PessoaNaTela &)> &roteiro)
{
    m_Host.AoMostrarModalSempre(classe, [this, classe, roteiro](const Ref<IForm> &form) {
        PessoaVarrida pessoa(*this, form);
        roteiro(pessoa);
        if (form->Visible()) {
            EXPECT_TRUE(Parou()) << "ficou aberta: " << classe;
            FechaJanela(form);
        }
    });
}

void Jornada::NaJanela(const std::string &classe, const std::function<void(PessoaNaTela &)> &roteiro)
{
    const auto janelas = m_Host.Tela->FormsAbertos(classe);
    EXPECT_TRUE(Parou() || !janelas.empty()) << "não abriu: " << classe;
    if (!janelas.empty()) {
        PessoaVarrida pessoa(*this, janelas.back());
        roteiro(pessoa);
    }
}

void Jornada::FechaJanela(const Ref<IForm> &form)
{
    m_Host.Tela->FechaPelaPessoa(form);
}
