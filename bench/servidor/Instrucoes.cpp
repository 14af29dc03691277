#include "bench/servidor/Instrucoes.h"

#include "bench/servidor/Ligacao.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <fstream>
#include <map>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace Instrucoes {

namespace {

using namespace std::string_view_literals;
using Relogio = std::chrono::steady_clock;

constexpr std::string_view Marca = "SELECT 'marca ";
constexpr std::string_view Fim = "fim";
constexpr std::chrono::seconds PrazoDoRegistro{30};

// What follows the prefix, where the text begins with it.
std::optional<std::string> Depois(const std::string &texto, std::string_view inicio)
{
    return texto.starts_with(inicio) ? std::optional(texto.substr(inicio.size())) : std::nullopt;
}

// Bytes stand in the log as hexadecimal digits; whoever speaks with the engine sends them as they are.
Ligacao::UmValor ValorDe(const std::string &texto)
{
    constexpr std::string_view inicio = "\\x";
    if (!texto.starts_with(inicio) || texto.size() % 2 != 0) {
        return {texto, Ligacao::UmValor::Texto};
    }
    return {QByteArray::fromHex(QByteArray::fromStdString(texto.substr(inicio.size()))).toStdString(),
            Ligacao::UmValor::Octetos};
}

// The values that the log tells of a prepared statement: "parameters: $1 = 'text, with '' doubled', $2 = NULL".
Ligacao::Valores ValoresDe(const std::string &detalhe)
{
    Ligacao::Valores valores;
    for (std::size_t onde = 0;;) {
        const std::string lugar = "$" + std::to_string(valores.size() + 1) + " = ";
        onde = detalhe.find(lugar, onde);
        if (onde == std::string::npos) {
            return valores;
        }
        onde += lugar.size();
        if (detalhe.compare(onde, 4, "NULL") == 0) {
            valores.emplace_back();
            continue;
        }
        std::string valor;
        for (++onde; onde < detalhe.size() && (detalhe[onde] != '\'' || detalhe[onde + 1] == '\''); ++onde) {
            onde += detalhe[onde] == '\'' ? 1 : 0;
            valor += detalhe[onde];
        }
        ++onde;
        valores.push_back(ValorDe(valor));
    }
}

// One log read from its beginning.
class Leitor {
  public:
    void Linha(const std::string &sessao, const std::string &mensagem, const std::string &detalhe)
    {
        if (const auto executa = Depois(mensagem, "execute "sv)) {
            const std::size_t fim = executa->find(": ");
            if (executa->starts_with("<unnamed>") || fim == std::string::npos) {
                throw std::runtime_error("a statement of a kind that cannot be said again: " + mensagem.substr(0, 300));
            }
            if (!m_Acabou) {
                Poe(sessao, {Preparada(executa->substr(fim + 2)), "", ValoresDe(detalhe)});
            }
        }
        const auto instrucao = Depois(mensagem, "statement: "sv);
        if (!instrucao) {
            return;
        }
        if (const auto marca = Depois(*instrucao, Marca)) {
            m_Marcador = sessao;
            m_Acabou = marca->starts_with(Fim);
            if (!m_Acabou) {
                m_Gravacao.Operacoes.push_back({static_cast<Carga::Tipo>(std::stoi(*marca)), {}});
            }
        } else if (sessao != m_Marcador && !m_Acabou) {
            Poe(sessao, {0, *instrucao, {}});
        }
    }
    Gravacao Entrega() { return std::move(m_Gravacao); }

  private:
    void Poe(const std::string &sessao, Instrucao instrucao)
    {
        if (!m_Gravacao.Operacoes.empty()) {
            m_Gravacao.Operacoes.back().Passos.push_back(std::move(instrucao));
        } else if (instrucao.Preparada == 0 && instrucao.Texto.starts_with("SET ")) {
            if (m_Primeira.empty() || m_Primeira == sessao) {
                m_Primeira = sessao;
                m_Gravacao.Inicio.push_back(instrucao.Texto);
            }
        } else {
            m_Gravacao.Antes.push_back(std::move(instrucao));
        }
    }
    std::size_t Preparada(const std::string &texto)
    {
        const auto [achada, nova] = m_Numeros.emplace(texto, m_Gravacao.Preparadas.size() + 1);
        if (nova) {
            m_Gravacao.Preparadas.push_back(texto);
        }
        return achada->second;
    }

    Gravacao m_Gravacao;
    std::map<std::string, std::size_t> m_Numeros;
    std::string m_Marcador;
    std::string m_Primeira; // of the server's connections
    bool m_Acabou = false;
};

// What changes the registry goes one after the other, in the order in which it came.
class Fila {
  public:
    void Espera(std::size_t vez)
    {
        std::unique_lock trava(m_Trava);
        m_Andou.wait(trava, [&] { return m_Vez == vez; });
    }
    void Passa()
    {
        const std::lock_guard trava(m_Trava);
        ++m_Vez;
        m_Andou.notify_all();
    }

  private:
    std::mutex m_Trava;
    std::condition_variable m_Andou;
    std::size_t m_Vez = 0;
};

// A connection that says operations.
class Falante {
  public:
    Falante(const std::string &onde, const Gravacao &gravacao) : m_Ligacao(onde), m_Gravacao(gravacao)
    {
        for (const std::string &comando : gravacao.Inicio) {
            m_Ligacao.Executa(comando);
        }
        for (std::size_t numero = 0; numero < gravacao.Preparadas.size(); ++numero) {
            m_Ligacao.Prepara(std::to_string(numero + 1), gravacao.Preparadas[numero]);
        }
    }
    void Diz(const std::vector<Instrucao> &passos)
    {
        for (const Instrucao &passo : passos) {
            if (passo.Preparada == 0) {
                m_Ligacao.Executa(passo.Texto);
            } else {
                m_Ligacao.Executa(std::to_string(passo.Preparada), passo.Valores);
            }
        }
    }

  private:
    Ligacao m_Ligacao;
    const Gravacao &m_Gravacao;
};

bool Muda(const Operacao &operacao)
{
    return operacao.Tipo == Carga::Tipo::Altera || operacao.Tipo == Carga::Tipo::Documento;
}

} // namespace

struct Marcador::Interior {
    explicit Interior(const std::string &onde) : Ligada(onde), Banco(Ligada.Valor("SELECT current_database()")) {}
    Ligacao Ligada;
    std::string Banco;
};

Marcador::Marcador(const std::string &onde)
{
    {
        Ligacao antes(onde);
        antes.Executa("ALTER DATABASE " + antes.Valor("SELECT current_database()") + " SET log_statement = 'all'");
    }
    m_Interior = std::make_unique<Interior>(onde);
}

Marcador::~Marcador() = default;

void Marcador::Marca(Carga::Tipo tipo)
{
    m_Interior->Ligada.Executa(std::string(Instrucoes::Marca) + std::to_string(static_cast<int>(tipo)) + "'");
}

std::filesystem::path Marcador::Termina()
{
    Ligacao &ligada = m_Interior->Ligada;
    const std::string ultima = std::string(Instrucoes::Marca) + std::string(Fim) + " " + m_Interior->Banco + "'";
    ligada.Executa(ultima);
    ligada.Executa("ALTER DATABASE " + m_Interior->Banco + " RESET log_statement");
    const std::filesystem::path registro = std::filesystem::path(ligada.Valor("SHOW data_directory")) /
                                           ligada.Valor("SELECT pg_current_logfile('jsonlog')");
    const auto ate = Relogio::now() + PrazoDoRegistro;
    std::ifstream arquivo(registro);
    std::string linha;
    while (linha.find(ultima) == std::string::npos) {
        if (!std::getline(arquivo, linha)) {
            if (Relogio::now() > ate) {
                throw std::runtime_error("the engine's log does not come to its end: " + registro.string());
            }
            arquivo.clear();
        }
    }
    return registro;
}

std::size_t Gravacao::Instrucoes() const
{
    std::size_t soma = 0;
    for (const Operacao &operacao : Operacoes) {
        soma += operacao.Passos.size();
    }
    return soma;
}

Gravacao Le(const std::filesystem::path &registro, const std::string &banco)
{
    Leitor leitor;
    std::ifstream arquivo(registro);
    std::string linha;
    while (std::getline(arquivo, linha)) {
        const QJsonObject dita = QJsonDocument::fromJson(QByteArray::fromStdString(linha)).object();
        if (dita.value("dbname").toString().toStdString() == banco) {
            leitor.Linha(dita.value("session_id").toString().toStdString(),
                         dita.value("message").toString().toStdString(), dita.value("detail").toString().toStdString());
        }
    }
    return leitor.Entrega();
}

std::size_t Repetidas::Operacoes() const
{
    std::size_t soma = 0;
    for (const auto &deUmTipo : Segundos) {
        soma += deUmTipo.size();
    }
    return soma;
}

Repetidas Repete(const std::string &onde, const Gravacao &gravacao, int conexoes, const std::function<void()> &noComeco,
                 const std::function<void()> &noFim)
{
    std::vector<std::size_t> vezes; // of the changes before each operation
    std::size_t mudancas = 0;
    for (const Operacao &operacao : gravacao.Operacoes) {
        vezes.push_back(mudancas);
        mudancas += Muda(operacao) ? 1 : 0;
    }
    std::vector<std::unique_ptr<Falante>> falantes;
    for (int qual = 0; qual < conexoes; ++qual) {
        falantes.push_back(std::make_unique<Falante>(onde, gravacao));
    }
    falantes.front()->Diz(gravacao.Antes);
    Repetidas todas;
    std::mutex trava;
    std::atomic<std::size_t> proxima = 0;
    Fila fila;
    const auto trabalha = [&](Falante &falante) {
        Repetidas minhas;
        for (std::size_t n = proxima++; n < gravacao.Operacoes.size(); n = proxima++) {
            const Operacao &operacao = gravacao.Operacoes[n];
            if (Muda(operacao)) {
                fila.Espera(vezes[n]);
            }
            const auto desde = Relogio::now();
            try {
                falante.Diz(operacao.Passos);
            } catch (const std::runtime_error &erro) {
                minhas.Falhas.emplace_back(erro.what());
            }
            minhas.Segundos[static_cast<std::size_t>(operacao.Tipo)].push_back(
                std::chrono::duration<double>(Relogio::now() - desde).count());
            if (Muda(operacao)) {
                fila.Passa();
            }
        }
        const std::lock_guard guarda(trava);
        for (std::size_t tipo = 0; tipo < Carga::Tipos; ++tipo) {
            todas.Segundos[tipo].insert(todas.Segundos[tipo].end(), minhas.Segundos[tipo].begin(),
                                        minhas.Segundos[tipo].end());
        }
        todas.Falhas.insert(todas.Falhas.end(), minhas.Falhas.begin(), minhas.Falhas.end());
    };
    noComeco();
    const auto desde = Relogio::now();
    {
        std::vector<std::jthread> linhas;
        for (const auto &falante : falantes) {
            linhas.emplace_back(trabalha, std::ref(*falante));
        }
    }
    todas.Tempo = std::chrono::duration<double>(Relogio::now() - desde).count();
    noFim();
    return todas;
}

} // namespace Instrucoes
