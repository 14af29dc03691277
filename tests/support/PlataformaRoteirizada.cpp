#include "tests/support/PlataformaRoteirizada.h"

#include "host/Conversoes.h"

#include <algorithm>
#include <utility>

PlataformaRoteirizada::PlataformaRoteirizada(RefRegistro registro)
    : App(Novo<AplicacaoComponente>()),
      m_Registro(std::move(registro))
{
    Arquivos.CriaDiretorio(DiretorioModulo);
}

void PlataformaRoteirizada::Responde(std::string texto, std::optional<bool> sim)
{
    m_Respostas.emplace_back(std::move(texto), sim);
}

void PlataformaRoteirizada::AoMostrarModal(std::string classe, Roteiro roteiro)
{
    m_Roteiros.emplace_back(std::move(classe), std::move(roteiro));
}

void PlataformaRoteirizada::Posta(std::function<void()> mensagem)
{
    m_Mensagens.push_back(std::move(mensagem));
}

void PlataformaRoteirizada::RodaMensagens()
{
    while (!m_Mensagens.empty()) {
        auto mensagem = std::move(m_Mensagens.front());
        m_Mensagens.pop_front();
        try {
            mensagem();
        } catch (...) {
            const Falha falha = FalhaCorrente();
            m_Registro->Problema("Falha sem tratamento numa mensagem: " + std::to_string(falha.Numero) + " " +
                                 falha.Descricao + " (" + falha.Fonte + ")");
        }
    }
}

std::string PlataformaRoteirizada::TextoJanela(const Ref<IForm> &form) const
{
    const auto texto = m_Textos.find(form->hwnd());
    return texto == m_Textos.end() ? form->Caption() : texto->second;
}

std::vector<Ref<IForm>> PlataformaRoteirizada::FormsAbertos(const std::string &classe) const
{
    std::vector<Ref<IForm>> forms;
    for (const auto &janela : m_Janelas) {
        if (janela->Form->NomeTipo() == classe) {
            forms.push_back(janela->Form);
        }
    }
    return forms;
}

bool PlataformaRoteirizada::EstaAberto(const Ref<IForm> &form) const
{
    return Acha(form) != nullptr;
}

void PlataformaRoteirizada::Ativa(const Ref<IForm> &form)
{
    Ref<IForm> anterior = m_Ativo.Alvo();
    if (anterior == form) {
        return;
    }
    m_Ativo = form;
    if (anterior && EstaAberto(anterior)) {
        anterior->Desativada();
    }
    form->Ativada();
}

void PlataformaRoteirizada::FechaPelaPessoa(const Ref<IForm> &form)
{
    if (RefJanela janela = Acha(form)) {
        Fecha(janela);
    }
}

void PlataformaRoteirizada::FechaTudo()
{
    while (!m_Janelas.empty()) {
        RefJanela janela = m_Janelas.back();
        IgnoraErro([&] { Fecha(janela); });
        Retira(janela);
    }
    m_Mensagens.clear();
}

void PlataformaRoteirizada::ConfereSobras() const
{
    for (const auto &[texto, sim] : m_Respostas) {
        m_Registro->Problema("Pergunta esperada que não foi feita: " + texto);
    }
    for (const auto &[classe, roteiro] : m_Roteiros) {
        m_Registro->Problema("Janela modal esperada que não foi mostrada: " + classe);
    }
}

void PlataformaRoteirizada::EsqueceRoteiros()
{
    m_Respostas.clear();
    m_RespostasFixas.clear();
    m_RespostaQualquer = nullptr;
    m_Roteiros.clear();
    m_RoteirosFixos.clear();
    m_Mensagens.clear();
}

void PlataformaRoteirizada::MostraJanela(const Ref<IForm> &form, bool modal)
{
    const Ref<IForm> viva = form; // whatever becomes of the caller's variable
    RefJanela janela = Acha(form);
    if (!janela) {
        janela = Abre(form);
    }
    if (Janelas) {
        Janelas->MostraForm(viva, modal);
        return;
    }
    if (EmbrulhaForms && janela->Hospedeiro.Nada()) {
        janela->Hospedeiro = m_Registro->Vigia(Novo<FormHospedeiro>(m_Registro, ++m_UltimoHwnd));
        janela->Hospedeiro->DefineVisible(true);
        IgnoraErro([&] { form->DefinefrmParent(janela->Hospedeiro); });
    }
    form->DefineVisible(true);
    RefFraca<IForm> fraca = form;
    Posta([this, fraca] {
        if (Ref<IForm> ativado = fraca.Alvo(); ativado && EstaAberto(ativado)) {
            Ativa(ativado);
        }
    });
    if (modal) {
        const std::int32_t falhasAntes = m_Registro->FalhasDisparadas();
        RodaMensagens();
        if (!janela->Fechada) {
            RodaRoteiro(viva);
        }
        RodaMensagens();
        EncerraModal(janela, falhasAntes);
    }
}

PlataformaRoteirizada::Roteiro PlataformaRoteirizada::TiraRoteiro(const std::string &classe)
{
    const auto vez = std::find_if(m_Roteiros.begin(), m_Roteiros.end(),
                                  [&](const auto &roteiro) { return roteiro.first == classe; });
    if (vez != m_Roteiros.end()) {
        Roteiro roteiro = std::move(vez->second);
        m_Roteiros.erase(vez);
        return roteiro;
    }
    const auto fixo = m_RoteirosFixos.find(classe);
    return fixo == m_RoteirosFixos.end() ? Roteiro() : fixo->second;
}

void PlataformaRoteirizada::RodaRoteiro(const Ref<IForm> &form)
{
    const std::string classe(form->NomeTipo());
    const Roteiro roteiro = TiraRoteiro(classe);
    if (!roteiro) {
        m_Registro->Problema("INESPERADA: janela modal " + classe);
        return;
    }
    try {
        roteiro(form);
    } catch (...) {
        const Falha falha = FalhaCorrente();
        m_Registro->Problema("Falha que saiu do roteiro de " + classe + ": " + std::to_string(falha.Numero) + " " +
                             falha.Descricao + " (" + falha.Fonte + ")");
    }
}

// A form that is still open keeps its caller waiting for ever. After a programmed failure that is to be expected, since
// what would have closed it may have failed.
void PlataformaRoteirizada::EncerraModal(const RefJanela &janela, std::int32_t falhasAntes)
{
    if (janela->Fechada) {
        return;
    }
    if (m_Registro->FalhasDisparadas() == falhasAntes) {
        m_Registro->Problema("O roteiro deixou aberta a janela modal " + std::string(janela->Form->NomeTipo()));
    }
    IgnoraErro([&] { Fecha(janela); });
    Retira(janela);
}

Ref<IAplicacao> PlataformaRoteirizada::Aplicacao()
{
    m_Registro->Passa("Plataforma.Aplicacao");
    return App;
}

void PlataformaRoteirizada::DefinePonteiro(std::int16_t valor)
{
    m_Registro->Escreve("Plataforma.Ponteiro", valor);
    m_Ponteiro = valor;
    if (Janelas) {
        Janelas->DefineEspera(valor == PonteiroAmpulheta);
    }
}

void PlataformaRoteirizada::ProcessaMensagens()
{
    m_Registro->Chama("Plataforma.ProcessaMensagens");
    RodaMensagens();
    if (Janelas) {
        Janelas->ProcessaMensagens();
    }
}

bool PlataformaRoteirizada::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim)
{
    const auto linha = m_Registro->ChamaTexto("Plataforma.PerguntaSimNao",
                                              ArgumentosLog(texto, titulo) + ", padrao=" + (padraoSim ? "Sim" : "Não"));
    Pergunta pergunta{texto, titulo, padraoSim, padraoSim};
    if (!m_Respostas.empty() && m_Respostas.front().first == texto) {
        pergunta.Resposta = m_Respostas.front().second.value_or(padraoSim);
        m_Respostas.pop_front();
    } else if (const auto fixa = m_RespostasFixas.find(texto); fixa != m_RespostasFixas.end()) {
        pergunta.Resposta = fixa->second;
    } else if (Janelas) {
        pergunta.Resposta = Janelas->PerguntaSimNao(texto, titulo, padraoSim);
    } else if (m_RespostaQualquer) {
        pergunta.Resposta = m_RespostaQualquer();
    } else {
        m_Registro->Problema("INESPERADA: pergunta " + TextoLog(texto));
    }
    m_Perguntas.push_back(pergunta);
    linha.Acrescenta(pergunta.Resposta ? " -> Sim" : " -> Não");
    return pergunta.Resposta;
}

void PlataformaRoteirizada::CaixaInformacao(const std::string &texto, const std::string &titulo)
{
    m_Registro->Chama("Plataforma.CaixaInformacao", texto, titulo);
    m_Caixas.push_back({texto, titulo});
    if (Janelas) {
        Janelas->Informa(texto, titulo);
    }
}

std::int32_t PlataformaRoteirizada::NroForms() const
{
    m_Registro->Passa("Plataforma.NroForms");
    return static_cast<std::int32_t>(m_Janelas.size());
}

Ref<IForm> PlataformaRoteirizada::FormAberto(std::int32_t posicao) const
{
    m_Registro->Passa("Plataforma.FormAberto");
    if (posicao < 0 || posicao >= static_cast<std::int32_t>(m_Janelas.size())) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return m_Janelas[static_cast<std::size_t>(posicao)]->Form;
}

void PlataformaRoteirizada::Carrega(const Ref<IForm> &form)
{
    m_Registro->Chama("Plataforma.Carrega", form);
    if (!Acha(form)) {
        Abre(form);
    }
}

void PlataformaRoteirizada::Descarrega(const Ref<IForm> &form)
{
    m_Registro->Chama("Plataforma.Descarrega", form);
    if (RefJanela janela = Acha(form)) {
        Fecha(janela);
    }
}

void PlataformaRoteirizada::DefineTextoJanela(std::int64_t hwnd, const std::string &texto)
{
    m_Registro->ChamaTexto("Plataforma.DefineTextoJanela", NomeDaJanela(hwnd) + ", " + TextoLog(texto));
    m_Textos[hwnd] = texto;
    for (const auto &janela : m_Janelas) {
        if (Janelas && janela->Form->hwnd() == hwnd) {
            Janelas->DefineTextoJanela(janela->Form, texto);
        }
    }
}

bool PlataformaRoteirizada::TemIcone(const std::string &chave) const
{
    m_Registro->Passa("Plataforma.TemIcone");
    return Icones.contains(chave);
}

Data PlataformaRoteirizada::Agora() const
{
    m_Registro->Passa("Plataforma.Agora");
    return Relogio;
}

std::string PlataformaRoteirizada::DataCurta(Data data) const
{
    m_Registro->Passa("Plataforma.DataCurta");
    return Format(data, "dd/mm/yyyy");
}

std::string PlataformaRoteirizada::CaminhoModulo() const
{
    m_Registro->Passa("Plataforma.CaminhoModulo");
    return DiretorioModulo;
}

bool PlataformaRoteirizada::ExisteArquivo(const std::string &caminho) const
{
    return m_Registro->Chama("Plataforma.ExisteArquivo", caminho).Resultado(Arquivos.Existe(caminho));
}

std::int64_t PlataformaRoteirizada::TamanhoArquivo(const std::string &caminho) const
{
    const auto linha = m_Registro->Chama("Plataforma.TamanhoArquivo", caminho);
    return linha.Resultado(static_cast<std::int64_t>(Arquivos.Conteudo(caminho).size()));
}

void PlataformaRoteirizada::ApagaArquivo(const std::string &caminho)
{
    m_Registro->Chama("Plataforma.ApagaArquivo", caminho);
    Arquivos.Apaga(caminho);
}

void PlataformaRoteirizada::GravaArquivo(const std::string &caminho, const Bytes &bytes)
{
    m_Registro->ChamaTexto("Plataforma.GravaArquivo",
                           TextoLog(caminho) + ", " + std::to_string(bytes.size()) + " bytes");
    Arquivos.Grava(caminho, bytes);
}

std::string PlataformaRoteirizada::PrimeiroArquivo(const std::string &padrao)
{
    const auto linha = m_Registro->Chama("Plataforma.PrimeiroArquivo", padrao);
    const auto nomes = Arquivos.Nomes(padrao);
    m_Listagem.assign(nomes.begin(), nomes.end());
    std::string nome;
    if (!m_Listagem.empty()) {
        nome = m_Listagem.front();
        m_Listagem.pop_front();
    }
    return linha.Resultado(nome);
}

std::string PlataformaRoteirizada::ProximoArquivo()
{
    const auto linha = m_Registro->Chama("Plataforma.ProximoArquivo");
    std::string nome;
    if (!m_Listagem.empty()) {
        nome = m_Listagem.front();
        m_Listagem.pop_front();
    }
    return linha.Resultado(nome);
}

PlataformaRoteirizada::RefJanela PlataformaRoteirizada::Acha(const Ref<IForm> &form) const
{
    const auto achada =
        std::find_if(m_Janelas.begin(), m_Janelas.end(), [&](const RefJanela &janela) { return janela->Form == form; });
    return achada == m_Janelas.end() ? nullptr : *achada;
}

PlataformaRoteirizada::RefJanela PlataformaRoteirizada::Abre(const Ref<IForm> &form)
{
    auto janela = std::make_shared<Janela>();
    janela->Form = form;
    const std::string nome(form->NomeTipo());
    auto registro = m_Registro;
    janela->Foco = form->PediuFoco().liga([registro, nome] { registro->Nota(nome + ".SetFocus()"); });
    janela->Ordem = form->PediuOrdem().liga(
        [registro, nome](std::int16_t posicao) { registro->Nota(nome + ".ZOrder(" + std::to_string(posicao) + ")"); });
    if (!m_Registro->Vigiado(*form)) {
        m_Registro->Vigia(form);
    }
    m_Janelas.push_back(janela);
    return janela;
}

bool PlataformaRoteirizada::Fecha(const RefJanela &janela)
{
    if (janela->Fechada || janela->Descarregando) {
        return true;
    }
    bool cancela = false;
    janela->Descarregando = true;
    try {
        janela->Form->Unload(cancela);
    } catch (...) {
        janela->Descarregando = false;
        throw;
    }
    janela->Descarregando = false;
    if (cancela) {
        return false;
    }
    Retira(janela);
    return true;
}

void PlataformaRoteirizada::Retira(const RefJanela &janela)
{
    if (janela->Fechada) {
        return;
    }
    janela->Fechada = true;
    std::erase(m_Janelas, janela);
    janela->Foco.desliga();
    janela->Ordem.desliga();
    if (Janelas) {
        Janelas->FechaForm(janela->Form);
    }
    if (janela->Hospedeiro) {
        janela->Hospedeiro->DefineVisible(false);
        janela->Hospedeiro = nullptr;
    }
    if (m_Ativo.Alvo() == janela->Form) {
        m_Ativo = nullptr;
        const auto visivel = std::find_if(m_Janelas.rbegin(), m_Janelas.rend(),
                                          [](const RefJanela &outra) { return outra->Form->Visible(); });
        if (visivel != m_Janelas.rend()) {
            RefFraca<IForm> proximo = (*visivel)->Form;
            Posta([this, proximo] {
                if (Ref<IForm> form = proximo.Alvo(); form && EstaAberto(form)) {
                    Ativa(form);
                }
            });
        }
    }
    janela->Form = nullptr;
}

std::string PlataformaRoteirizada::NomeDaJanela(std::int64_t hwnd) const
{
    for (const auto &janela : m_Janelas) {
        if (janela->Form->hwnd() == hwnd) {
            return std::string(janela->Form->NomeTipo());
        }
        if (janela->Hospedeiro && janela->Hospedeiro->hwnd() == hwnd) {
            return std::string(janela->Hospedeiro->NomeTipo());
        }
    }
    return "janela fechada";
}
