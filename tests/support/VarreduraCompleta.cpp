#include "tests/support/VarreduraCompleta.h"

#include "shell/ModGeral.h"
#include "tests/support/Varredura.h"
#include "tests/support/VarreduraCaminho.h"

#include <algorithm>
#include <optional>

namespace {

constexpr const char *MensagemDaRecusa = "Recusa de teste";

std::string Descreve(const Falha &falha)
{
    return std::to_string(falha.Numero) + " " + falha.Descricao + " (" + falha.Fonte + ")";
}

// The operation of a remote call, from its line; empty when it is another call.
std::string OperacaoDe(const std::string &linha)
{
    const std::string inicio = "RN.ExecutaMetodo(\"";
    const std::size_t onde = linha.find(inicio);
    if (onde == std::string::npos || linha.find('(') < onde) {
        return {};
    }
    const std::size_t nome = onde + inicio.size();
    return linha.substr(nome, linha.find('"', nome) - nome);
}

// The pointer that the module had set last before a call.
std::int16_t PonteiroAntes(const std::vector<std::string> &trilha, std::size_t passo)
{
    const std::string inicio = "Plataforma.Ponteiro := ";
    for (std::size_t i = passo; i-- > 0;) {
        if (trilha[i].starts_with(inicio)) {
            return static_cast<std::int16_t>(std::stoi(trilha[i].substr(inicio.size())));
        }
    }
    return PonteiroNormal;
}

} // namespace

PessoaVarrida::PessoaVarrida(JornadaCompleta &jornada, const Ref<IForm> &form)
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

void JornadaCompleta::Comeca(std::function<bool()> parou, bool segue)
{
    m_Parou = std::move(parou);
    m_Segue = segue;
    m_Escapadas.clear();
    m_FalhasAntes = m_Host.FalhasDisparadas();
    for (const auto &[pergunta, sim] : m_Respostas) {
        m_Host.RespondeSempre(pergunta, sim);
    }
}

void JornadaCompleta::Passo(const std::function<void()> &acao)
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

void JornadaCompleta::Responde(const std::string &pergunta, bool sim)
{
    m_Respostas[pergunta] = sim;
}

void JornadaCompleta::Desiste()
{
    for (const auto &[pergunta, sim] : m_Respostas) {
        m_Host.RespondeSempre(pergunta, false);
    }
}

void JornadaCompleta::NoModal(const std::string &classe, const std::function<void(PessoaVarrida &)> &roteiro)
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

void JornadaCompleta::NaJanela(const std::string &classe, const std::function<void(PessoaVarrida &)> &roteiro)
{
    const auto janelas = m_Host.Tela->FormsAbertos(classe);
    EXPECT_TRUE(Parou() || !janelas.empty()) << "não abriu: " << classe;
    if (!janelas.empty()) {
        PessoaVarrida pessoa(*this, janelas.back());
        roteiro(pessoa);
    }
}

void JornadaCompleta::FechaJanela(const Ref<IForm> &form)
{
    m_Host.Tela->FechaPelaPessoa(form);
}

// The undisturbed way.
struct VarreduraCompleta::Base {
    std::vector<std::string> Trilha;
    std::vector<VarreduraCaminho::Destino> Destinos;
    std::vector<std::string> Estados; // before each call, and at the end
};

// One host and the journey on it.
struct VarreduraCompleta::Ensaio {
    explicit Ensaio(const Fabrica &fabrica)
    {
        InstalaHost(Host);
        Jornada = fabrica(*Host);
        Host->LimpaRegistro();
    }
    void Encerra()
    {
        Host->Tela->FechaTudo();
        Jornada.reset();
        DescarregaModulo();
        InstalaHost(nullptr);
        for (const std::string &problema : Host->VerificaFim()) {
            ADD_FAILURE() << problema;
        }
    }

    // The first way, until what `parou` tells.
    void Percorre(std::function<bool()> parou, bool segue = false)
    {
        Jornada->Comeca(std::move(parou), segue);
        Host->ObservaChamadas([this, segue] {
            if (!segue && Jornada->Parou()) {
                Jornada->Desiste();
            }
        });
        Jornada->Percorre();
        Host->ObservaChamadas(nullptr);
    }

    Ref<HostRoteirizado> Host = Novo<HostRoteirizado>();
    std::unique_ptr<JornadaCompleta> Jornada;
};

// What has to hold after the first way.
struct VarreduraCompleta::Esperado {
    std::int32_t Numero = 0; // 0: no fault
    std::string Descricao;
    std::string Fonte;
    std::string Contexto;                   // empty: the fault reaches the caller
    bool Sucesso = false;                   // the way went to its end
    std::int16_t Ponteiro = PonteiroNormal; // when the fault reaches the caller
    std::optional<std::string> Estado;      // no value: whatever the person made of it
};

VarreduraCompleta::VarreduraCompleta(Fabrica fabrica, const std::string &arvore)
    : m_Fabrica(std::move(fabrica)),
      m_Arvore(arvore)
{
}

void VarreduraCompleta::RecusaEmFalha(std::int32_t n, const std::string &fonte, const std::string &contexto)
{
    m_RecusasEmFalha[n] = {fonte, contexto};
}

std::int32_t VarreduraCompleta::Roda()
{
    Base base;
    if (RodaBase(base)) {
        std::int32_t execucoes = 0;
        std::vector<std::string> negadas;
        for (std::size_t passo = 0; passo < base.Trilha.size(); ++passo) {
            testing::ScopedTrace rastro(__FILE__, __LINE__,
                                        "chamada " + std::to_string(passo + 1) + ": " + base.Trilha[passo]);
            RodaFalha(base, passo, false);
            if (m_Segue && !base.Destinos[passo].Ignorada) {
                RodaFalha(base, passo, true);
            }
            if (!OperacaoDe(base.Trilha[passo]).empty()) {
                RodaRecusa(base, passo, ++execucoes);
            }
            for (const char *operacao :
                 {"goDadosVor.EnviaDocumento(", "goDadosVor.RecebeDocumento(", "DocumentoPDF.Mostra("}) {
                if (base.Trilha[passo].starts_with(operacao) &&
                    std::find(negadas.begin(), negadas.end(), operacao) == negadas.end()) {
                    negadas.emplace_back(operacao);
                    RodaNegativa(base, passo, operacao);
                }
            }
        }
    }
    return RelataSobrevividas(m_Falhas + m_Recusas);
}

bool VarreduraCompleta::RodaBase(Base &base) const
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "sem falha");
    const VarreduraCaminho caminho(m_Arvore);
    for (const std::string &defeito : caminho.Defeitos()) {
        ADD_FAILURE() << defeito;
    }
    Ensaio ensaio(m_Fabrica);
    ensaio.Host->ObservaChamadas([&] { base.Estados.push_back(ensaio.Jornada->Estado()); });
    ensaio.Jornada->Comeca(nullptr);
    ensaio.Jornada->Percorre();
    base.Trilha = ensaio.Host->Trilha();
    base.Estados.push_back(ensaio.Jornada->Estado());
    ensaio.Host->ObservaChamadas(nullptr);
    Esperado esperado;
    esperado.Sucesso = true;
    esperado.Estado = base.Estados.back();
    Confere(ensaio, esperado);
    ensaio.Encerra();

    std::string motivo;
    auto destinos = caminho.Confronta(base.Trilha, motivo);
    if (!destinos) {
        ADD_FAILURE() << motivo;
        return false;
    }
    base.Destinos = std::move(*destinos);
    return true;
}

void VarreduraCompleta::RodaFalha(const Base &base, std::size_t passo, bool segue)
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, segue ? "segue" : "desiste");
    const VarreduraCaminho::Destino &destino = base.Destinos[passo];
    Ensaio ensaio(m_Fabrica);
    ensaio.Host->FalhaNoPasso(static_cast<std::int32_t>(passo) + 1);
    HostRoteirizado &host = *ensaio.Host;
    ensaio.Percorre([&host, &destino] { return host.FalhasDisparadas() > 0 && !destino.Ignorada; }, segue);
    EXPECT_EQ(host.FalhasDisparadas(), 1);
    Esperado esperado;
    esperado.Sucesso = destino.Ignorada;
    if (!segue) {
        esperado.Estado = destino.Ignorada ? base.Estados.back() : base.Estados[passo];
    }
    if (!destino.Ignorada) {
        esperado.Numero = NumeroFalha::ErroInterno;
        esperado.Descricao = "Falha de teste";
        esperado.Fonte = host.ChamadaQueFalhou() + destino.Caudas;
        esperado.Contexto = destino.Contexto;
        esperado.Ponteiro = PonteiroAntes(base.Trilha, passo);
    }
    Confere(ensaio, esperado);
    TentaDeNovo(ensaio);
    ensaio.Encerra();
    ++m_Falhas;
}

void VarreduraCompleta::RodaRecusa(const Base &base, std::size_t passo, std::int32_t execucao)
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "recusada");
    Ensaio ensaio(m_Fabrica);
    ensaio.Host->RecusaNaExecucao(execucao, MensagemDaRecusa);
    HostRoteirizado &host = *ensaio.Host;
    ensaio.Percorre([&host] { return host.Servicos->RecusasNaVez() > 0; });
    EXPECT_EQ(host.Servicos->RecusasNaVez(), 1);
    EXPECT_EQ(host.Conta("EquiptoRN.MostraErro() -> \"" + std::string(MensagemDaRecusa)) +
                  host.Conta("RelatorioRN.MostraErro() -> \"" + std::string(MensagemDaRecusa)),
              1);
    Esperado esperado;
    esperado.Estado = base.Estados[passo];
    if (const auto falha = m_RecusasEmFalha.find(execucao); falha != m_RecusasEmFalha.end()) {
        esperado.Numero = NumeroFalha::ObjetoNaoDefinido;
        esperado.Descricao = DescricaoFalha(NumeroFalha::ObjetoNaoDefinido);
        esperado.Fonte = falha->second.first;
        esperado.Contexto = falha->second.second;
        esperado.Ponteiro = PonteiroAntes(base.Trilha, passo);
    }
    Confere(ensaio, esperado);
    TentaDeNovo(ensaio);
    ensaio.Encerra();
    ++m_Recusas;
}

// An operation of the host that answers no: the document services and the viewer.
void VarreduraCompleta::RodaNegativa(const Base &base, std::size_t passo, const std::string &operacao)
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "negada");
    Ensaio ensaio(m_Fabrica);
    HostRoteirizado &host = *ensaio.Host;
    bool &aceita = operacao.find("Envia") != std::string::npos    ? host.Dominio->AceitaEnvio
                   : operacao.find("Recebe") != std::string::npos ? host.Dominio->AceitaRecebimento
                                                                  : host.Visor->Abre;
    aceita = false;
    ensaio.Percorre([&host, &operacao] { return host.Contem(operacao); });
    EXPECT_EQ(host.Conta(operacao), 1);
    aceita = true;
    Esperado esperado;
    esperado.Estado = base.Estados[passo];
    Confere(ensaio, esperado);
    TentaDeNovo(ensaio);
    ensaio.Encerra();
    ++m_Recusas;
}

void VarreduraCompleta::Confere(Ensaio &ensaio, const Esperado &esperado) const
{
    const auto &erros = ensaio.Host->Erros();
    const auto &escapadas = ensaio.Jornada->Escapadas();
    const bool caixa = esperado.Numero != 0 && !esperado.Contexto.empty();
    const bool escapa = esperado.Numero != 0 && esperado.Contexto.empty();
    EXPECT_EQ(erros.size(), caixa ? 1U : 0U);
    for (const auto &erro : erros) {
        EXPECT_EQ(erro.Numero, esperado.Numero);
        EXPECT_EQ(erro.Descricao, esperado.Descricao);
        EXPECT_EQ(erro.Contexto, esperado.Contexto);
        EXPECT_EQ(erro.Fonte, esperado.Fonte);
        EXPECT_EQ(erro.Titulo, ensaio.Host->oAppEXE->Produto);
    }
    EXPECT_EQ(escapadas.size(), escapa ? 1U : 0U);
    for (const auto &escapada : escapadas) {
        EXPECT_EQ(escapada.Erro.Numero, esperado.Numero);
        EXPECT_EQ(escapada.Erro.Descricao, esperado.Descricao);
        EXPECT_EQ(escapada.Erro.Fonte, esperado.Fonte);
        EXPECT_EQ(escapada.Ponteiro, esperado.Ponteiro);
    }
    if (!escapa) {
        EXPECT_EQ(ensaio.Host->Tela->Ponteiro(), PonteiroNormal);
    }
    if (esperado.Estado) {
        EXPECT_EQ(ensaio.Jornada->Estado(), *esperado.Estado);
    }
    if (esperado.Sucesso) {
        ensaio.Jornada->ConfereSucesso();
    }
}

void VarreduraCompleta::TentaDeNovo(Ensaio &ensaio)
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "na tentativa seguinte");
    HostRoteirizado &host = *ensaio.Host;
    host.Tela->FechaTudo();
    const std::size_t antes = host.Erros().size();
    ensaio.Jornada->Comeca(nullptr);
    ensaio.Jornada->Percorre();
    for (std::size_t i = antes; i < host.Erros().size(); ++i) {
        const auto &caixa = host.Erros()[i];
        ADD_FAILURE() << caixa.Contexto << ": " << Descreve(Falha(caixa.Numero, caixa.Fonte, caixa.Descricao));
    }
    for (const auto &escapada : ensaio.Jornada->Escapadas()) {
        ADD_FAILURE() << Descreve(escapada.Erro);
    }
    EXPECT_EQ(host.Tela->Ponteiro(), PonteiroNormal);
    ensaio.Jornada->ConfereSucesso();
}
