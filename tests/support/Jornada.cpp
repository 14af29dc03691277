#include "tests/support/Jornada.h"

#include "controls/ztList.h"

PessoaVarrida::PessoaVarrida(Jornada &jornada, const Ref<IForm> &form)
    : m_Jornada(jornada),
      m_Form(form),
      m_Pessoa(form)
{
}

void PessoaVarrida::Faz(const std::function<bool()> &acao)
{
    bool feita = false;
    m_Jornada.Passo([&] { feita = acao(); });
    EXPECT_TRUE(feita || m_Jornada.Parou()) << m_Pessoa.Motivo();
    if (const Ref<IForm> form = m_Form.Alvo(); form && form->Visible()) {
        EXPECT_TRUE(form->Enabled()) << form->NomeTipo();
    }
}

void PessoaVarrida::Clica(const std::string &nome, std::int16_t indice)
{
    Faz([&] { return m_Pessoa.Clica(nome, indice); });
}

void PessoaVarrida::Marca(const std::string &nome, std::int16_t indice)
{
    Faz([&] { return m_Pessoa.Marca(nome, indice); });
}

void PessoaVarrida::Preenche(const std::string &nome, const std::string &texto)
{
    Faz([&] { return m_Pessoa.Preenche(nome, texto); });
}

void PessoaVarrida::Escolhe(const std::string &nome, const std::string &texto)
{
    Faz([&] { return m_Pessoa.Escolhe(nome, texto); });
}

void PessoaVarrida::Abre(const std::string &nome, std::int16_t pagina)
{
    Faz([&] { return m_Pessoa.Abre(nome, pagina); });
}

void PessoaVarrida::ClicaLinha(const std::string &nome, std::int32_t linha)
{
    Faz([&] { return m_Pessoa.ClicaLinha(nome, linha); });
}

void PessoaVarrida::EscolheMenu(const std::string &nome, const std::string &chave)
{
    Faz([&] { return m_Pessoa.EscolheMenu(nome, chave); });
}

void PessoaVarrida::PedeMais(const std::string &nome)
{
    Faz([&] { return m_Pessoa.PedeMais(nome); });
}

void PessoaVarrida::Localiza(const std::string &nome)
{
    Faz([&] { return m_Pessoa.Localiza(nome); });
}

void PessoaVarrida::OrdenaPor(const std::string &nome, std::int32_t coluna)
{
    Faz([&] { return m_Pessoa.OrdenaPor(nome, coluna); });
}

void PessoaVarrida::InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                                    const std::string &complemento, const std::string &cep,
                                    const std::string &descricao)
{
    Faz([&] { return m_Pessoa.InformaEndereco(nome, codLogradouro, numero, complemento, cep, descricao); });
}

void PessoaVarrida::EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor)
{
    Faz([&] { return m_Pessoa.EscolheCliente(nome, cliente, setor); });
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
