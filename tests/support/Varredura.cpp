#include "tests/support/Varredura.h"

#include "shell/ModGeral.h"
#include "tests/support/MemoriaEscassa.h"
#include "tests/support/VarreduraCaminho.h"

#include <algorithm>
#include <iostream>
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

// The undisturbed way.
struct Varredura::Base {
    std::vector<std::string> Trilha;
    std::vector<VarreduraCaminho::Destino> Destinos;
    std::vector<std::string> Estados; // before each call, and at the end
};

// One host and the journey on it.
struct Varredura::Ensaio {
    explicit Ensaio(const Fabrica &fabrica)
    {
        InstalaHost(Host);
        Via = fabrica(*Host);
        Host->LimpaRegistro();
    }
    void Encerra()
    {
        Host->Tela->FechaTudo();
        Via.reset();
        DescarregaModulo();
        InstalaHost(nullptr);
        for (const std::string &problema : Host->VerificaFim()) {
            ADD_FAILURE() << problema;
        }
    }

    // The first way, until what `parou` tells.
    void Percorre(std::function<bool()> parou, bool segue = false)
    {
        Via->Comeca(std::move(parou), segue);
        Host->ObservaChamadas([this, segue] {
            if (!segue && Via->Parou()) {
                Via->Desiste();
            }
        });
        Via->Percorre();
        Host->ObservaChamadas(nullptr);
    }

    Ref<HostRoteirizado> Host = Novo<HostRoteirizado>();
    std::unique_ptr<Jornada> Via;
};

// What has to hold after the first way.
struct Varredura::Esperado {
    std::int32_t Numero = 0; // 0: no fault
    std::string Descricao;
    std::string Fonte;
    std::string Contexto;                   // empty: the fault reaches the caller
    bool Sucesso = false;                   // the way went to its end
    std::int16_t Ponteiro = PonteiroNormal; // when the fault reaches the caller
    std::optional<std::string> Estado;      // no value: whatever the person made of it
};

// A way with something that fails.
struct Varredura::Caso {
    const char *Nome = "";
    std::function<void(HostRoteirizado &)> Prepara; // makes it fail
    std::function<bool(HostRoteirizado &)> Parou;   // whether the one who goes the way has been told
    // Afterwards: that it failed, and once. Tells what else has to hold.
    std::function<Esperado(HostRoteirizado &)> Confere;
    bool Segue = false; // the person goes on
};

Varredura::Varredura(Fabrica fabrica, const std::string &arvore) : m_Fabrica(std::move(fabrica)), m_Arvore(arvore) {}

void Varredura::RecusaEmFalha(std::int32_t n, const std::string &fonte, const std::string &contexto)
{
    m_RecusasEmFalha[n] = {fonte, contexto};
}

std::int32_t Varredura::Roda()
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
    std::cout << "faults survived: " << m_Falhas + m_Recusas << '\n';
    return m_Falhas + m_Recusas;
}

bool Varredura::RodaBase(Base &base) const
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "sem falha");
    const VarreduraCaminho caminho(m_Arvore);
    for (const std::string &defeito : caminho.Defeitos()) {
        ADD_FAILURE() << defeito;
    }
    Ensaio ensaio(m_Fabrica);
    ensaio.Host->ObservaChamadas([&] { base.Estados.push_back(ensaio.Via->Estado()); });
    ensaio.Via->Comeca(nullptr);
    ensaio.Via->Percorre();
    base.Trilha = ensaio.Host->Trilha();
    base.Estados.push_back(ensaio.Via->Estado());
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

void Varredura::RodaCaso(const Caso &caso) const
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, caso.Nome);
    const auto sobram = [&] {
        const std::int64_t antes = BlocosOcupados();
        Ensaia(caso);
        return BlocosOcupados() - antes;
    };
    // What lives as long as the program is made once. What a failure has to tell is kept.
    if (sobram() != 0 && !testing::Test::HasFailure()) {
        EXPECT_EQ(sobram(), 0) << "memória que ficou";
    }
}

void Varredura::Ensaia(const Caso &caso) const
{
    Ensaio ensaio(m_Fabrica);
    HostRoteirizado &host = *ensaio.Host;
    caso.Prepara(host);
    ensaio.Percorre([&caso, &host] { return caso.Parou(host); }, caso.Segue);
    Confere(ensaio, caso.Confere(host));
    TentaDeNovo(ensaio);
    ensaio.Encerra();
}

void Varredura::RodaFalha(const Base &base, std::size_t passo, bool segue)
{
    const VarreduraCaminho::Destino &destino = base.Destinos[passo];
    Caso caso;
    caso.Nome = segue ? "segue" : "desiste";
    caso.Segue = segue;
    caso.Prepara = [&](HostRoteirizado &host) {
        host.FalhaNoPasso(static_cast<std::int32_t>(passo) + 1, Falhando.Numero, Falhando.Descricao);
    };
    caso.Parou = [&](HostRoteirizado &host) { return host.FalhasDisparadas() > 0 && !destino.Ignorada; };
    caso.Confere = [&](HostRoteirizado &host) {
        EXPECT_EQ(host.FalhasDisparadas(), 1);
        Esperado esperado;
        esperado.Sucesso = destino.Ignorada;
        if (!segue) {
            esperado.Estado = destino.Ignorada ? base.Estados.back() : base.Estados[passo];
        }
        if (!destino.Ignorada) {
            esperado.Numero = Falhando.Numero;
            esperado.Descricao = Falhando.Descricao;
            esperado.Fonte = host.ChamadaQueFalhou() + destino.Caudas;
            esperado.Contexto = destino.Contexto;
            esperado.Ponteiro = PonteiroAntes(base.Trilha, passo);
        }
        return esperado;
    };
    RodaCaso(caso);
    ++m_Falhas;
}

void Varredura::RodaRecusa(const Base &base, std::size_t passo, std::int32_t execucao)
{
    Caso caso;
    caso.Nome = "recusada";
    caso.Prepara = [&](HostRoteirizado &host) { host.RecusaNaExecucao(execucao, MensagemDaRecusa); };
    caso.Parou = [](HostRoteirizado &host) { return host.Servicos->RecusasNaVez() > 0; };
    caso.Confere = [&](HostRoteirizado &host) {
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
        return esperado;
    };
    RodaCaso(caso);
    ++m_Recusas;
}

// An operation of the host that answers no: the document services and the viewer.
void Varredura::RodaNegativa(const Base &base, std::size_t passo, const std::string &operacao)
{
    const auto aceita = [&](HostRoteirizado &host) -> bool & {
        return operacao.find("Envia") != std::string::npos    ? host.Dominio->AceitaEnvio
               : operacao.find("Recebe") != std::string::npos ? host.Dominio->AceitaRecebimento
                                                              : host.Visor->Abre;
    };
    Caso caso;
    caso.Nome = "negada";
    caso.Prepara = [&](HostRoteirizado &host) { aceita(host) = false; };
    caso.Parou = [&](HostRoteirizado &host) { return host.Contem(operacao); };
    caso.Confere = [&](HostRoteirizado &host) {
        EXPECT_EQ(host.Conta(operacao), 1);
        aceita(host) = true;
        Esperado esperado;
        esperado.Estado = base.Estados[passo];
        return esperado;
    };
    RodaCaso(caso);
    ++m_Recusas;
}

void Varredura::Confere(Ensaio &ensaio, const Esperado &esperado)
{
    const auto &erros = ensaio.Host->Erros();
    const auto &escapadas = ensaio.Via->Escapadas();
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
        EXPECT_EQ(ensaio.Via->Estado(), *esperado.Estado);
    }
    if (esperado.Sucesso) {
        ensaio.Via->ConfereSucesso();
    }
}

void Varredura::TentaDeNovo(Ensaio &ensaio)
{
    testing::ScopedTrace rastro(__FILE__, __LINE__, "na tentativa seguinte");
    HostRoteirizado &host = *ensaio.Host;
    host.Tela->FechaTudo();
    const std::size_t antes = host.Erros().size();
    ensaio.Via->Comeca(nullptr);
    ensaio.Via->Percorre();
    for (std::size_t i = antes; i < host.Erros().size(); ++i) {
        const auto &caixa = host.Erros()[i];
        ADD_FAILURE() << caixa.Contexto << ": " << Descreve(Falha(caixa.Numero, caixa.Fonte, caixa.Descricao));
    }
    for (const auto &escapada : ensaio.Via->Escapadas()) {
        ADD_FAILURE() << Descreve(escapada.Erro);
    }
    EXPECT_EQ(host.Tela->Ponteiro(), PonteiroNormal);
    ensaio.Via->ConfereSucesso();
}
