#include "tests/mortes/Cenario.h"

#include "rede/ServicosRemotos.h"
#include "tests/services/RegistroDeTeste.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace fs = std::filesystem;

using namespace mesa;

namespace mortes {

namespace {

constexpr const char *NomeDaReserva = "reserva";
// The role that the servers work as.
constexpr const char *Trabalho = "registro_servidor";
constexpr std::chrono::seconds Paciencia{120};

fs::path NovaPasta()
{
    std::string nome = (fs::temp_directory_path() / "mortes-XXXXXX").string();
    if (mkdtemp(nome.data()) == nullptr) {
        throw std::runtime_error("mkdtemp");
    }
    return nome;
}

motor::Pedido DeMotor(const fs::path &pasta, bool duravel)
{
    return {.Duravel = duravel, .Pasta = pasta, .Ajustes = {"max_connections = 60"}};
}

Destino SoqueteDo(const motor::Aglomerado &motor)
{
    return {.Soquete = motor.Pasta() / ".s.PGSQL.5432"};
}

std::string NomeDoUsuario(int cliente)
{
    return "operador" + std::to_string(cliente);
}

} // namespace

void Espera(const std::string &oQue, std::chrono::seconds prazo, const std::function<bool()> &chegou)
{
    const auto fim = std::chrono::steady_clock::now() + prazo;
    while (!chegou()) {
        if (std::chrono::steady_clock::now() > fim) {
            throw std::runtime_error("waited in vain: " + oQue);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

Cenario::Cenario(const Como &como) : m_Como(como), m_Pasta(NovaPasta())
{
    m_Motores[0] = std::make_unique<motor::Aglomerado>(DeMotor(como.Disco, como.Duravel));
    motor::Linhas(m_Motores[0]->Texto("postgres"), std::string("CREATE DATABASE ") + Banco);
    for (auto &ponte : m_PontesDosMotores) {
        ponte = std::make_unique<Ponte>(std::vector<Destino>{});
    }
    m_PontesDosMotores[0]->PoeDestinos({SoqueteDo(*m_Motores[0])});
    CriaRegistro();
    if (como.ComReserva) {
        RefazReserva();
    }
    for (std::size_t qual = 0; qual < m_Servidores.size(); ++qual) {
        m_PortasDosServidores[qual] = PortaLivre();
        EscreveConfiguracao(qual);
        LigaServidor(qual);
    }
    for (int n = 0; n < como.Clientes; ++n) {
        const std::size_t seu = static_cast<std::size_t>(n) % 2;
        m_PontesDosClientes.push_back(
            std::make_unique<Ponte>(NasPortas({m_PortasDosServidores[seu], m_PortasDosServidores[1 - seu]})));
        const bool desiste = n % 5 == 0;
        const rede::Endereco endereco{"127.0.0.1", m_PontesDosClientes.back()->Porta()};
        m_Clientes.push_back(
            std::make_unique<Cliente>(Cliente::Quem{n, NomeDoUsuario(n), desiste}, [endereco, desiste] {
                return rede::Conecta(endereco, {}, "mortes",
                                     {.PorConta = desiste ? std::chrono::milliseconds(0) : std::chrono::seconds(3),
                                      .Cada = std::chrono::seconds(10)});
            }));
    }
}

Cenario::~Cenario()
{
    for (const auto &cliente : m_Clientes) {
        cliente->Para(std::chrono::milliseconds(0));
    }
    m_Clientes.clear();
    for (auto &servidor : m_Servidores) {
        servidor.reset();
    }
    std::error_code erro;
    fs::remove_all(m_Pasta, erro);
}

std::string Cenario::Ligacao() const
{
    return std::string("postgresql://") + Trabalho + "@127.0.0.1:" + std::to_string(m_PontesDosMotores[0]->Porta()) +
           ",127.0.0.1:" + std::to_string(m_PontesDosMotores[1]->Porta()) + "/" + Banco +
           "?target_session_attrs=read-write&connect_timeout=3";
}

std::string Cenario::Direto(const motor::Aglomerado &motor, const std::string &banco)
{
    return motor.Texto(banco) + "?client_encoding=UTF8";
}

void Cenario::CriaRegistro()
{
    motor::Linhas(m_Motores[0]->Texto("postgres"), std::string("CREATE ROLE ") + Trabalho + " LOGIN");
    const auto servicos = Servicos::Cria(
        m_Motores[0]->Texto(Banco) + "?papel_de_trabalho=" + Trabalho, TipoDeRegistro::Registro,
        [] { return Instante(DataDe(20, 11, 2026, 10, 0, 0)); }, CustoDeTeste);
    const std::string cliente = "Autoridade Estadual de Trânsito";
    servicos->CadastraCliente({1, cliente, {"Fiscalização"}, "RS"});
    for (int n = 0; n < m_Como.Clientes; ++n) {
        servicos->CadastraUsuario(
            {n + 1, NomeDoUsuario(n), "Operador " + std::to_string(n), 1, cliente, "Fiscalização", 0},
            "senha de " + NomeDoUsuario(n), {"", "I", "A", "E"}, {"U", "T", "C"});
    }
}

fs::path Cenario::Configuracao(std::size_t qual) const
{
    return m_Pasta / ("servidor" + std::to_string(qual) + ".toml");
}

void Cenario::EscreveConfiguracao(std::size_t qual)
{
    // Those who write go one after another: with more of them each waits longer for its turn.
    const int operacao = 4 + m_Como.Clientes / 8;
    std::ofstream(Configuracao(qual)) << "registro = \"" << Ligacao()
                                      << "\"\nescuta = \"127.0.0.1:" << m_PortasDosServidores[qual]
                                      << "\"\nsem_tls = true\nprazo_da_gravacao_s = 2\nprazo_da_operacao_s = "
                                      << operacao << "\n";
}

void Cenario::LigaServidor(std::size_t qual)
{
    const fs::path dito = DitoPor(qual);
    m_Servidores[qual] = std::make_unique<Processo>(
        std::vector<std::string>{SERVIDOR, "--configuracao", Configuracao(qual).string()}, dito);
    Espera("server " + std::to_string(qual), std::chrono::seconds(60), [&] {
        if (!m_Servidores[qual]->Anda()) {
            throw std::runtime_error("the server ended: " + TextoDe(dito));
        }
        return Atende(m_PortasDosServidores[qual]);
    });
}

Ref<SessaoServico> Cenario::Sessao(std::size_t servidor, int cliente) const
{
    return SessaoPor(m_PortasDosServidores.at(servidor), cliente);
}

Ref<SessaoServico> Cenario::SessaoPor(std::uint16_t porta, int cliente) const
{
    const auto servicos = rede::Conecta({"127.0.0.1", porta}, {}, "mortes");
    std::string recusa;
    std::int32_t espera = 0;
    const std::string usuario = NomeDoUsuario(cliente);
    auto sessao = servicos->Entra(usuario, "senha de " + usuario, "estação de teste", recusa, espera);
    if (sessao.Nada()) {
        throw std::runtime_error(recusa);
    }
    return sessao;
}

void Cenario::PromoveReserva()
{
    Reserva().Promove();
    m_Primario = 1 - m_Primario;
    Primario().ExigeReserva("");
}

void Cenario::RefazReserva()
{
    const std::size_t qual = 1 - m_Primario;
    m_PontesDosMotores[qual]->PoeDestinos({});
    m_Motores[qual].reset();
    m_Motores[qual] = Primario().Reserva(NomeDaReserva, DeMotor({}, m_Como.Duravel));
    m_PontesDosMotores[qual]->PoeDestinos({SoqueteDo(*m_Motores[qual])});
    Primario().ExigeReserva(NomeDaReserva);
}

void Cenario::Comeca()
{
    for (const auto &cliente : m_Clientes) {
        cliente->Comeca();
    }
}

void Cenario::Para()
{
    std::vector<std::thread> fios; // the saves under way end at the same time
    for (const auto &cliente : m_Clientes) {
        fios.emplace_back([&cliente] { cliente->Para(Paciencia); });
    }
    for (std::thread &fio : fios) {
        fio.join();
    }
}

std::size_t Cenario::Respondidas() const
{
    std::size_t todas = 0;
    for (const auto &cliente : m_Clientes) {
        todas += cliente->Respondidas();
    }
    return todas;
}

std::string Cenario::Queixas() const
{
    std::string queixas;
    for (const auto &cliente : m_Clientes) {
        queixas += cliente->UltimaFrase() + "\n";
    }
    return queixas;
}

void Cenario::EsperaDeCada(std::size_t vezes)
{
    std::vector<std::size_t> de;
    for (const auto &cliente : m_Clientes) {
        de.push_back(cliente->Respondidas() + vezes);
    }
    try {
        Espera("an answer for each", Paciencia, [&] {
            for (std::size_t n = 0; n < m_Clientes.size(); ++n) {
                if (m_Clientes[n]->Respondidas() < de[n]) {
                    return false;
                }
            }
            return true;
        });
    } catch (const std::runtime_error &erro) {
        throw std::runtime_error(std::string(erro.what()) + "\n" + Queixas());
    }
}

void Cenario::EsperaDeTodos(std::size_t vezes)
{
    const std::size_t ate = Respondidas() + vezes;
    Espera("answers", Paciencia, [&] { return Respondidas() >= ate; });
}

fs::path Cenario::DitoPor(std::size_t qual) const
{
    return m_Pasta / ("servidor" + std::to_string(qual) + ".log");
}

std::string Cenario::FimDoDitoPor(std::size_t qual) const
{
    constexpr std::size_t mostra = 4000;
    const std::string dito = TextoDe(DitoPor(qual));
    return dito.substr(dito.size() - std::min(dito.size(), mostra));
}

Achados Cenario::Mortos() const
{
    Achados achados;
    for (std::size_t qual = 0; qual < m_Servidores.size(); ++qual) {
        if (!m_Servidores[qual]->Anda()) {
            achados.Outros.push_back("server " + std::to_string(qual) + " ended by itself: " + FimDoDitoPor(qual));
        }
    }
    return achados;
}

Achados Cenario::EncerraServidores()
{
    Achados achados;
    for (std::size_t qual = 0; qual < m_Servidores.size(); ++qual) {
        if (const int codigo = m_Servidores[qual]->Encerra(); codigo != 0) {
            achados.Outros.push_back("server " + std::to_string(qual) + " ended with " + std::to_string(codigo) + ": " +
                                     FimDoDitoPor(qual));
        }
    }
    return achados;
}

Diario Cenario::Diarios() const
{
    Diario todos;
    for (const auto &cliente : m_Clientes) {
        todos.insert(todos.end(), cliente->Feitas().begin(), cliente->Feitas().end());
    }
    return todos;
}

Achados Cenario::Confere()
{
    Direta direta(Direto(Primario()));
    return Verifica(direta, Diarios());
}

} // namespace mortes
