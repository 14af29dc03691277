#include "tests/desk/JanelasFalsas.h"

#include "desk/host/Caminhos.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

using namespace mesa;

void JanelasFalsas::DeixaPassar()
{
    for (const RefFraca<IForm> &fraca : std::exchange(m_PorAtivar, {})) {
        if (!fraca.Nada()) {
            fraca.Alvo()->Ativada();
        }
    }
}

std::string JanelasFalsas::TextoJanela(const Ref<IForm> &form) const
{
    const auto escrito = m_Textos.find(form.Ponteiro());
    return escrito == m_Textos.end() ? form->Caption() : escrito->second;
}

std::vector<std::string> JanelasFalsas::Pendencias() const
{
    std::vector<std::string> pendencias;
    for (const auto &[classe, acao] : m_Modais) {
        pendencias.push_back("no modal show of " + classe);
    }
    for (const auto &[texto, resposta] : m_Respostas) {
        pendencias.push_back("nobody asked: " + texto);
    }
    return pendencias;
}

void JanelasFalsas::MostraForm(const Ref<IForm> &form, bool modal)
{
    m_Abertos.push_back(form);
    form->DefineVisible(true);
    m_PorAtivar.emplace_back(form);
    if (!modal) {
        return;
    }
    if (m_Modais.empty() || m_Modais.front().first != form->NomeTipo()) {
        ADD_FAILURE() << "unexpected modal show of " << form->NomeTipo();
        return;
    }
    const auto acao = std::move(m_Modais.front().second);
    m_Modais.pop_front();
    acao(form);
    EXPECT_EQ(std::count(m_Abertos.begin(), m_Abertos.end(), form), 0) << "the modal form is still shown";
}

void JanelasFalsas::FechaForm(const Ref<IForm> &form)
{
    std::erase(m_Abertos, form);
    m_Textos.erase(form.Ponteiro());
}

bool JanelasFalsas::PerguntaSimNao(const std::string &texto, const std::string &, bool padraoSim)
{
    if (m_Respostas.empty() || m_Respostas.front().first != texto) {
        ADD_FAILURE() << "unexpected question: " << texto;
        return padraoSim;
    }
    const bool resposta = m_Respostas.front().second.value_or(padraoSim);
    m_Respostas.pop_front();
    return resposta;
}

void JanelasFalsas::MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                               const std::string &fonte, const std::string &)
{
    FrasesDeErro.push_back(descricao);
    Erros.push_back(std::to_string(numero) + " " + fonte + " " + contexto);
}

bool JanelasFalsas::MostraPDF(const std::string &caminho, const std::string &nome, bool)
{
    std::ifstream arquivo(CaminhoDoSistema(caminho), std::ios::binary);
    std::string inicio(5, '\0');
    arquivo.read(inicio.data(), 5);
    if (inicio != "%PDF-") {
        return false;
    }
    Mostrados.push_back(caminho);
    Nomes.push_back(nome);
    return true;
}
