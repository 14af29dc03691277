// Many desks on one server, against the same statements said to the engine without it. Ends with 0 when every limit
// holds, with 1 when one does not, with 2 when it could not be measured.
#include "bench/Medida.h"
#include "bench/servidor/Carga.h"
#include "bench/servidor/Instrucoes.h"
#include "bench/servidor/Ligacao.h"
#include "bench/servidor/Processos.h"
#include "bench/servidor/Recheio.h"
#include "tests/services/Motor.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <numeric>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr const char *Papel = "registro_servidor";
constexpr int Conexoes = 4;
constexpr int MesasDaGravacao = Recheio::Clientes;
constexpr std::chrono::seconds PrazoDoInicio{60};
constexpr double LimiteDaRazao = 2.0;
constexpr double LimiteDoCrescimento = 1.5;
constexpr double LimiteDaMemoria = 1.05;   // of its last fifth to its second
constexpr std::size_t MenosAmostras = 100; // seconds below which nothing is said of it

struct Opcoes {
    std::string Servidor;
    std::vector<std::int32_t> Equipamentos{10'000, 1'000'000};
    int Mesas = 200;
    int Segundos = 60;
    int Memoria = 600;             // seconds of the last size
    std::size_t Gravadas = 20'000; // operations whose statements are taken down
    std::string Pasta;             // for the cluster
    std::string Figuras;           // file for the figures, as JSON
    bool Fumaca = false;           // the work, without the limits that are about time
};

int Ajuda()
{
    std::cerr << "usage: bancada_servidor PROGRAM [--equipamentos N,N] [--mesas N] [--segundos N] [--memoria N] "
                 "[--gravadas N] [--pasta DIR] [--figuras FILE] [--fumaca]\n";
    return 2;
}

// What was measured of one way to do the operations.
struct Medida {
    std::array<std::vector<double>, Carga::Tipos> Segundos;
    double Tempo = 0;
    double Motor = 0;   // processor seconds of the engine
    double Falante = 0; // of the program that says the statements: the server, or the one that says them again
    double Mesas = 0;   // of the desks

    double Operacoes() const
    {
        return std::accumulate(Segundos.begin(), Segundos.end(), 0.0, [](double soma, const auto &tempos) {
            return soma + static_cast<double>(tempos.size());
        });
    }
    double PorSegundoDeProcessador() const { return Operacoes() / (Motor + Falante); }
};

struct DeUmTamanho {
    std::int32_t Equipamentos = 0;
    Medida Sem = {};       // the statements alone
    Medida Com = {};       // the server, with as many desks as there are connections
    Medida Cheio = {};     // the server, with all desks
    Medida Perguntas = {}; // the server, with all desks asking which calibration was in force
    double Octetos = 0;    // of the registry in the engine
    std::size_t InstrucoesPorOperacao = 0;
};

double Percentil(std::vector<double> tempos, double parte)
{
    if (tempos.empty()) {
        return 0;
    }
    const auto qual = static_cast<std::size_t>(parte * static_cast<double>(tempos.size() - 1));
    std::ranges::nth_element(tempos, tempos.begin() + static_cast<std::ptrdiff_t>(qual));
    return tempos[qual];
}

class Falhas {
  public:
    void Confere(bool certo, const std::string &frase)
    {
        std::cout << (certo ? "ok      " : "FAILED  ") << frase << std::endl;
        m_Algum = m_Algum || !certo;
    }
    int Saida() const { return m_Algum ? 1 : 0; }

  private:
    bool m_Algum = false;
};

std::string Conteudo(const fs::path &arquivo)
{
    std::ifstream lido(arquivo);
    return {std::istreambuf_iterator<char>(lido), {}};
}

// The server under measure, on one database, from start to end.
class Servidor {
  public:
    Servidor(const Opcoes &opcoes, const fs::path &pasta, const std::string &registro)
        : m_Pasta(pasta),
          m_Porta(PortaLivre())
    {
        fs::create_directories(m_Pasta);
        std::ofstream(m_Pasta / "servidor.toml")
            << "registro = \"" << registro << "\"\nescuta = \"127.0.0.1:" << m_Porta << "\"\npasta_do_certificado = \""
            << m_Pasta.string() << "\"\ndiario = \"" << (m_Pasta / "diario").string() << "\"\nconexoes = " << Conexoes
            << "\nesperando = 1000\nsessoes_por_usuario = 100\n";
        m_Processo = std::make_unique<Processo>(
            std::vector<std::string>{opcoes.Servidor, "--configuracao", (m_Pasta / "servidor.toml").string()},
            (m_Pasta / "saida").string());
        const auto ate = std::chrono::steady_clock::now() + PrazoDoInicio;
        while (!Atende(m_Porta)) {
            if (!m_Processo->Anda() || std::chrono::steady_clock::now() > ate) {
                throw std::runtime_error("the server does not start: " + Conteudo(m_Pasta / "saida"));
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
    Carga::Alvo Alvo(std::int32_t equipamentos) const
    {
        return {"localhost:" + std::to_string(m_Porta), Certificado(), equipamentos};
    }
    pid_t Numero() const { return m_Processo->Numero(); }
    void Encerra()
    {
        if (const int saida = m_Processo->Encerra(); saida != 0) {
            throw std::runtime_error("the server ended with " + std::to_string(saida) + ": " +
                                     Conteudo(m_Pasta / "saida"));
        }
    }

  private:
    // The PEM of what it shows.
    std::string Certificado() const
    {
        for (const auto &entrada : fs::directory_iterator(m_Pasta)) {
            if (entrada.path().extension() == ".crt") {
                const std::string tudo = Conteudo(entrada.path());
                if (tudo.starts_with("-----BEGIN CERTIFICATE-----")) {
                    return tudo;
                }
            }
        }
        throw std::runtime_error("no certificate in " + m_Pasta.string());
    }

    fs::path m_Pasta;
    std::uint16_t m_Porta;
    std::unique_ptr<Processo> m_Processo;
};

class Bancada {
  public:
    explicit Bancada(const Opcoes &opcoes)
        : m_Opcoes(opcoes),
          m_Motor({.Duravel = true,
                   .Pasta = opcoes.Pasta,
                   .Ajustes = {"shared_buffers=1GB", "max_wal_size=8GB", "checkpoint_timeout=30min",
                               "max_connections=50", "logging_collector=on", "log_destination=jsonlog",
                               "log_rotation_size=0", "log_rotation_age=0", "autovacuum=on"}})
    {
        Admin().Executa(std::string("CREATE ROLE ") + Papel + " LOGIN");
    }

    int Mede()
    {
        for (const std::int32_t equipamentos : m_Opcoes.Equipamentos) {
            m_Tamanhos.push_back(MedeUm(equipamentos));
        }
        Julga();
        if (!m_Opcoes.Figuras.empty()) {
            GuardaFiguras();
        }
        return m_Falhas.Saida();
    }

  private:
    DeUmTamanho MedeUm(std::int32_t equipamentos)
    {
        DeUmTamanho tamanho{.Equipamentos = equipamentos};
        const std::string cheio = "cheio_" + std::to_string(equipamentos);
        Diz("filling a registry of " + std::to_string(equipamentos) + " equipment");
        Admin().Executa("CREATE DATABASE " + cheio);
        Recheio::Enche(m_Motor.Texto(cheio), Papel, equipamentos);
        tamanho.Octetos = std::stod(Admin().Valor("SELECT pg_database_size('" + cheio + "')"));
        Diz("it has " + std::to_string(std::llround(tamanho.Octetos / 1e6)) + " MB");

        const Instrucoes::Gravacao gravacao = Grava(cheio, equipamentos);
        tamanho.InstrucoesPorOperacao = gravacao.Instrucoes() / std::max<std::size_t>(1, gravacao.Operacoes.size());
        tamanho.Sem = MedeSem(cheio, gravacao);
        Imprime("statements alone", tamanho.Sem);

        const bool ultimo = equipamentos == m_Opcoes.Equipamentos.back();
        const int segundos = ultimo ? std::max(m_Opcoes.Segundos, m_Opcoes.Memoria) : m_Opcoes.Segundos;
        Servidor servidor(m_Opcoes, PastaDe("carga_" + cheio), m_Motor.Texto(cheio, Papel));
        tamanho.Com = MedeCom(servidor, cheio, equipamentos, Conexoes, m_Opcoes.Segundos, 1);
        Imprime("server, " + std::to_string(Conexoes) + " desks", tamanho.Com);
        tamanho.Cheio = MedeCom(servidor, cheio, equipamentos, m_Opcoes.Mesas, segundos, 2);
        Imprime("server, " + std::to_string(m_Opcoes.Mesas) + " desks", tamanho.Cheio);
        tamanho.Perguntas = MedeCom(servidor, cheio, equipamentos, m_Opcoes.Mesas, m_Opcoes.Segundos, 3, true);
        Imprime("server, questions only", tamanho.Perguntas);
        servidor.Encerra();
        Admin().Executa("DROP DATABASE " + cheio);
        return tamanho;
    }

    // The statements of so many operations, done over the server on a copy of the registry.
    Instrucoes::Gravacao Grava(const std::string &cheio, std::int32_t equipamentos)
    {
        Diz("taking down the statements of " + std::to_string(m_Opcoes.Gravadas) + " operations");
        const std::string banco = CopiaDe(cheio, "gravado");
        fs::path registro;
        {
            Instrucoes::Marcador marcador(m_Motor.Texto(banco));
            Servidor servidor(m_Opcoes, PastaDe("gravacao_" + cheio), m_Motor.Texto(banco, Papel));
            Carga::Ritmo ritmo{.Mesas = MesasDaGravacao, .UmaPorUma = m_Opcoes.Gravadas};
            ritmo.Antes = [&](Carga::Tipo tipo) { marcador.Marca(tipo); };
            const Carga::Resultado feito = Carga::Trabalha(servidor.Alvo(equipamentos), ritmo);
            registro = marcador.Termina();
            m_Gravado = Ficou(banco);
            servidor.Encerra();
            ConfereSalvos(banco, equipamentos, feito);
        }
        Instrucoes::Gravacao gravacao = Instrucoes::Le(registro, banco);
        Admin().Executa("DROP DATABASE " + banco);
        return gravacao;
    }

    Medida MedeSem(const std::string &cheio, const Instrucoes::Gravacao &gravacao)
    {
        Diz("saying them again without the server");
        const std::string banco = CopiaDe(cheio, "repetido");
        Medida medida;
        const auto conta = [&](double sinal) {
            medida.Motor += sinal * SegundosDaArvore(m_Motor.Processo());
            medida.Falante += sinal * SegundosDe(getpid());
        };
        Instrucoes::Repetidas feitas = Instrucoes::Repete(
            m_Motor.Texto(banco, Papel), gravacao, Conexoes, [&] { conta(-1); }, [&] { conta(1); });
        medida.Segundos = std::move(feitas.Segundos);
        medida.Tempo = feitas.Tempo;
        m_Falhas.Confere(feitas.Falhas.empty(), "every statement was done again as the first time" +
                                                    (feitas.Falhas.empty() ? "" : ": " + feitas.Falhas.front()));
        const std::vector<std::string> ficou = Ficou(banco);
        m_Falhas.Confere(ficou == m_Gravado, "and left what the server left: " + Junta(ficou) +
                                                 (ficou == m_Gravado ? "" : ", not " + Junta(m_Gravado)));
        Admin().Executa("DROP DATABASE " + banco);
        return medida;
    }

    // What tells a registry's content from another's: the end of its history, which every entry is part of, and the
    // rows beside it.
    std::vector<std::string> Ficou(const std::string &banco) const
    {
        return Ligacao(m_Motor.Texto(banco))
            .Linhas("SELECT (SELECT Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1), (SELECT COUNT(*) FROM HISTORICO), "
                    "(SELECT COUNT(*) FROM DOCUMENTO), (SELECT COUNT(*) FROM AFERICAO), "
                    "(SELECT SUM(Versao) FROM EQUIPAMENTO), (SELECT COUNT(*) FROM OPERACAO)")
            .at(0);
    }
    static std::string Junta(const std::vector<std::string> &partes)
    {
        std::string juntas;
        for (const std::string &parte : partes) {
            juntas += (juntas.empty() ? "" : " ") + parte;
        }
        return juntas;
    }

    Medida MedeCom(const Servidor &servidor, const std::string &banco, std::int32_t equipamentos, int mesas,
                   int segundos, std::uint32_t semente, bool soPerguntas = false)
    {
        Diz(std::to_string(mesas) + " desks for " + std::to_string(segundos) + " s");
        Medida medida;
        const auto conta = [&](double sinal) {
            medida.Motor += sinal * SegundosDaArvore(m_Motor.Processo());
            medida.Falante += sinal * SegundosDe(servidor.Numero());
            medida.Mesas += sinal * SegundosDe(getpid());
        };
        std::vector<std::size_t> memoria;
        Carga::Ritmo ritmo{.Mesas = mesas,
                           .Aquece = std::chrono::milliseconds(segundos * 100),
                           .Mede = std::chrono::seconds(segundos)};
        ritmo.NoComeco = [&] { conta(-1); };
        ritmo.NoFim = [&] { conta(1); };
        ritmo.CadaSegundo = [&] { memoria.push_back(MemoriaDe(servidor.Numero())); };
        ritmo.Semente = semente;
        ritmo.SoPerguntas = soPerguntas;
        Carga::Resultado feito = Carga::Trabalha(servidor.Alvo(equipamentos), ritmo);
        ConfereSalvos(banco, equipamentos, feito);
        ConfereMemoria(memoria);
        medida.Segundos = std::move(feito.Segundos);
        medida.Tempo = feito.Tempo;
        return medida;
    }

    // Every answered save is there once, and nothing else is.
    void ConfereSalvos(const std::string &banco, std::int32_t equipamentos, const Carga::Resultado &feito)
    {
        Ligacao ligacao(m_Motor.Texto(banco));
        std::multiset<std::string> achados;
        for (const auto &linha : ligacao.Linhas(
                 "SELECT s.NroIntEquip, a.Numero, a.NroIntImgCertif FROM AFERICAO a JOIN SENSOR s ON s.NroIntSensor = "
                 "a.NroIntSensor JOIN HISTORICO h ON h.Entidade = 'AFERICAO' AND h.NroEntidade = a.NroIntAfericao "
                 "WHERE a.NroIntAfericao > " +
                 std::to_string(Recheio::AfericoesPorEquipamento * equipamentos))) {
            achados.insert(linha[0] + " " + linha[1] + " " + linha[2]);
        }
        for (const auto &linha : ligacao.Linhas(
                 "SELECT d.Sha256, d.NroDocumento FROM DOCUMENTO d JOIN HISTORICO h ON h.Entidade = 'DOCUMENTO' AND "
                 "h.NroEntidade = d.NroDocumento WHERE d.Tamanho > 50000")) {
            achados.insert("0 " + linha[0] + " " + linha[1]);
        }
        std::set<std::string> &ja = m_Salvos[banco];
        std::size_t faltam = 0;
        for (const Carga::Salvo &salvo : feito.Salvos) {
            const std::string nome =
                std::to_string(salvo.NroIntEquip) + " " + salvo.Numero + " " + std::to_string(salvo.Documento);
            ja.insert(nome);
            faltam += achados.count(nome) == 1 ? 0 : 1;
        }
        m_Falhas.Confere(faltam == 0 && achados.size() == ja.size(),
                         std::to_string(feito.Salvos.size()) + " answered saves, " + std::to_string(faltam) +
                             " of them not there once; rows saved " + std::to_string(achados.size()) + ", answered " +
                             std::to_string(ja.size()) + "; sent twice on purpose " + std::to_string(feito.Repetidas) +
                             "; \"ocupado\" " + std::to_string(feito.Ocupado));
        m_Falhas.Confere(feito.Falhas.empty(), std::to_string(feito.Falhas.size()) + " operations failed" +
                                                   (feito.Falhas.empty() ? "" : ": " + feito.Falhas.front()));
    }

    void ConfereMemoria(const std::vector<std::size_t> &memoria)
    {
        if (memoria.size() < MenosAmostras) {
            return;
        }
        const auto media = [&](std::size_t quinto) {
            const auto de = memoria.begin() + static_cast<std::ptrdiff_t>(memoria.size() / 5 * quinto);
            const auto ate = de + static_cast<std::ptrdiff_t>(memoria.size() / 5);
            return std::accumulate(de, ate, 0.0) / static_cast<double>(ate - de) / (1 << 20);
        };
        std::ostringstream frase;
        frase << std::fixed << std::setprecision(1) << "memory of the server over " << memoria.size()
              << " s, MB by fifths:";
        for (std::size_t quinto = 0; quinto < 5; ++quinto) {
            frase << " " << media(quinto);
        }
        frase << " (limit: last / second " << LimiteDaMemoria << ")";
        m_Falhas.Confere(media(4) <= media(1) * LimiteDaMemoria, frase.str());
    }

    static void Imprime(const std::string &nome, const Medida &medida)
    {
        std::printf("%-24s %9.0f operations/s %9.0f per processor second (engine %.1f s, speaker %.1f s, desks %.1f s "
                    "in %.1f s)\n",
                    nome.c_str(), medida.Operacoes() / medida.Tempo, medida.PorSegundoDeProcessador(), medida.Motor,
                    medida.Falante, medida.Mesas, medida.Tempo);
        for (std::size_t tipo = 0; tipo < Carga::Tipos; ++tipo) {
            std::printf("    %-12s %9zu  median %8.2f ms  99th percentile %8.2f ms\n", Carga::Nomes[tipo],
                        medida.Segundos[tipo].size(), Percentil(medida.Segundos[tipo], 0.5) * 1e3,
                        Percentil(medida.Segundos[tipo], 0.99) * 1e3);
        }
        std::fflush(stdout);
    }

    void Julga()
    {
        if (m_Opcoes.Fumaca) {
            return;
        }
        const auto frase = [](double valor, double limite) {
            std::ostringstream texto;
            texto << std::fixed << std::setprecision(2) << valor << " (limit " << limite << ")";
            return texto.str();
        };
        for (const DeUmTamanho &tamanho : m_Tamanhos) {
            const double razao = tamanho.Sem.PorSegundoDeProcessador() / tamanho.Cheio.PorSegundoDeProcessador();
            m_Falhas.Confere(
                razao <= LimiteDaRazao,
                std::to_string(tamanho.Equipamentos) +
                    " equipment: statements alone / server, per processor second: " + frase(razao, LimiteDaRazao));
        }
        const DeUmTamanho &menor = m_Tamanhos.front();
        const DeUmTamanho &maior = m_Tamanhos.back();
        const double custo = menor.Cheio.PorSegundoDeProcessador() / maior.Cheio.PorSegundoDeProcessador();
        m_Falhas.Confere(custo <= LimiteDoCrescimento,
                         "growth of the cost of an operation, from the smallest registry to the largest: " +
                             frase(custo, LimiteDoCrescimento));
        for (std::size_t tipo = 0; tipo < Carga::Tipos; ++tipo) {
            const double cresce = Percentil(maior.Com.Segundos[tipo], 0.5) / Percentil(menor.Com.Segundos[tipo], 0.5);
            m_Falhas.Confere(cresce <= LimiteDoCrescimento, std::string("growth of the median of ") +
                                                                Carga::Nomes[tipo] + ": " +
                                                                frase(cresce, LimiteDoCrescimento));
        }
    }

    // For those who reckon with them.
    void GuardaFiguras() const
    {
        const auto figura = [](const Medida &medida) {
            QJsonObject tempos;
            for (std::size_t tipo = 0; tipo < Carga::Tipos; ++tipo) {
                tempos[Carga::Nomes[tipo]] = QJsonObject{{"mediana_ms", Percentil(medida.Segundos[tipo], 0.5) * 1e3},
                                                         {"p99_ms", Percentil(medida.Segundos[tipo], 0.99) * 1e3}};
            }
            const double operacoes = medida.Operacoes();
            return QJsonObject{{"operacoes_por_s", operacoes / medida.Tempo},
                               {"motor_ms", medida.Motor / operacoes * 1e3},
                               {"falante_ms", medida.Falante / operacoes * 1e3},
                               {"tempos", tempos}};
        };
        QJsonObject todas;
        for (const DeUmTamanho &tamanho : m_Tamanhos) {
            todas[QString::number(tamanho.Equipamentos)] = QJsonObject{{"octetos", tamanho.Octetos},
                                                                       {"sem", figura(tamanho.Sem)},
                                                                       {"com", figura(tamanho.Com)},
                                                                       {"cheio", figura(tamanho.Cheio)},
                                                                       {"perguntas", figura(tamanho.Perguntas)}};
        }
        std::ofstream(m_Opcoes.Figuras) << QJsonDocument(todas).toJson().toStdString();
    }

    std::string CopiaDe(const std::string &cheio, const std::string &nome)
    {
        const std::string banco = nome + "_" + cheio;
        Admin().Executa("CREATE DATABASE " + banco + " TEMPLATE " + cheio + " STRATEGY file_copy");
        return banco;
    }
    Ligacao Admin() const { return Ligacao(m_Motor.Texto("postgres")); }
    fs::path PastaDe(const std::string &nome) const { return m_Temporaria.path().toStdString() + "/" + nome; }
    static void Diz(const std::string &oQue) { std::cerr << oQue << std::endl; }

    Opcoes m_Opcoes;
    QTemporaryDir m_Temporaria;
    motor::Aglomerado m_Motor;
    std::vector<DeUmTamanho> m_Tamanhos;
    std::map<std::string, std::set<std::string>> m_Salvos; // by database
    std::vector<std::string> m_Gravado; // what stood in the registry whose statements were taken down
    Falhas m_Falhas;
};

std::vector<std::int32_t> Numeros(const std::string &texto)
{
    std::vector<std::int32_t> numeros;
    std::istringstream partes(texto);
    for (std::string parte; std::getline(partes, parte, ',');) {
        numeros.push_back(std::stoi(parte));
    }
    return numeros;
}

// False when it is not told as it must be.
bool Le(int argc, char **argv, Opcoes &opcoes)
{
    for (int n = 1; n < argc; ++n) {
        const std::string opcao = argv[n];
        if (opcao == "--fumaca") {
            opcoes.Fumaca = true;
        } else if (!opcao.starts_with("--") && opcoes.Servidor.empty()) {
            opcoes.Servidor = opcao;
        } else if (n + 1 == argc) {
            return false;
        } else if (opcao == "--equipamentos") {
            opcoes.Equipamentos = Numeros(argv[++n]);
        } else if (opcao == "--mesas") {
            opcoes.Mesas = std::stoi(argv[++n]);
        } else if (opcao == "--segundos") {
            opcoes.Segundos = std::stoi(argv[++n]);
        } else if (opcao == "--memoria") {
            opcoes.Memoria = std::stoi(argv[++n]);
        } else if (opcao == "--gravadas") {
            opcoes.Gravadas = std::stoul(argv[++n]);
        } else if (opcao == "--pasta") {
            opcoes.Pasta = argv[++n];
        } else if (opcao == "--figuras") {
            opcoes.Figuras = argv[++n];
        } else {
            return false;
        }
    }
    return !opcoes.Servidor.empty() && !opcoes.Equipamentos.empty();
}

} // namespace

int main(int argc, char **argv)
try {
    const QCoreApplication aplicacao(argc, argv);
    Opcoes opcoes;
    if (!Le(argc, argv, opcoes)) {
        return Ajuda();
    }
    return Bancada(opcoes).Mede();
} catch (const std::exception &erro) {
    std::cerr << erro.what() << std::endl;
    return 2;
}
