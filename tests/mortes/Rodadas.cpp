#include "tests/mortes/Rodadas.h"

#include "services/Conferidor.h"
#include "services/Copia.h"
#include "services/Restauracao.h"
#include "tests/services/RegistroDeTeste.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace mortes {

namespace {

using Sentido = Ponte::Sentido;

const mesa::Instante Agora(DataDe(20, 11, 2026, 12, 0, 0));

// They are at work, and it happens at any moment of it.
void AlgumMomento(Cenario &cenario, std::mt19937_64 &sorteio)
{
    cenario.EsperaDeCada(1);
    cenario.EsperaDeTodos(sorteio() % (1 + cenario.Clientes().size()));
}

// What the product's own check finds in the registry of that engine.
Achados Conferido(const motor::Aglomerado &motor)
{
    const mesa::ResultadoDaConferencia resultado = mesa::Conferidor(motor.Texto(Cenario::Banco)).Confere();
    Achados achados;
    if (resultado.Como != mesa::ResultadoDaConferencia::Desfecho::Inteira) {
        achados.Outros.push_back("checked: " + resultado.Frase);
        achados.Outros.insert(achados.Outros.end(), resultado.Achados.begin(), resultado.Achados.end());
    }
    return achados;
}

Achados MorreOPrimario(Cenario &cenario, std::mt19937_64 &sorteio)
{
    AlgumMomento(cenario, sorteio);
    cenario.Primario().Mata();
    cenario.PromoveReserva();
    cenario.EsperaDeCada(2);
    cenario.Para();
    Achados achados = Conferido(cenario.Primario());
    cenario.RefazReserva();
    return achados;
}

Achados MorreUmServidor(Cenario &cenario, std::mt19937_64 &sorteio)
{
    AlgumMomento(cenario, sorteio);
    const std::size_t qual = sorteio() % 2;
    cenario.Servidor(qual).Mata();
    cenario.EsperaDeCada(2);
    cenario.Para();
    cenario.LigaServidor(qual);
    return {};
}

// Each is told, in time, that its save came to no answer.
void TodosSaoAvisados(const Cenario &cenario)
{
    std::vector<std::size_t> falhas;
    for (const auto &cliente : cenario.Clientes()) {
        falhas.push_back(cliente->Falhas());
    }
    Espera("every client to be told that its save was not answered", std::chrono::seconds(60), [&] {
        for (std::size_t n = 0; n < falhas.size(); ++n) {
            if (cenario.Clientes()[n]->Falhas() == falhas[n]) {
                return false;
            }
        }
        return true;
    });
}

// Commits wait without end. Every second time the standby comes back; otherwise the engine that writes dies too, and
// what it had written alone is gone with it.
Achados SomeAReserva(Cenario &cenario, std::mt19937_64 &sorteio)
{
    AlgumMomento(cenario, sorteio);
    cenario.Reserva().Mata();
    TodosSaoAvisados(cenario);
    const bool volta = sorteio() % 2 == 0;
    if (volta) {
        cenario.Reserva().Inicia();
    } else {
        cenario.Primario().Mata();
        cenario.Reserva().Inicia();
        cenario.PromoveReserva();
    }
    cenario.EsperaDeCada(2);
    cenario.Para();
    if (!volta) {
        cenario.RefazReserva();
    }
    return {};
}

// So many connections are cut, each before another octet: of what the one side says and of what it is answered.
void Corta(const std::vector<Ponte *> &pontes, std::size_t cortes, std::size_t ateOOcteto, std::mt19937_64 &sorteio)
{
    const std::size_t passo = std::max<std::size_t>(1, 2 * ateOOcteto / cortes);
    std::size_t octeto = sorteio() % passo;
    Sentido sentido = Sentido::Ida;
    std::vector<std::size_t> feitos;
    const auto arma = [&](Ponte &ponte) {
        ponte.CortaAntesDe(sentido, octeto);
        sentido = sentido == Sentido::Ida ? Sentido::Volta : Sentido::Ida;
        octeto = (octeto + (sentido == Sentido::Ida ? passo : 0)) % ateOOcteto;
    };
    for (Ponte *ponte : pontes) {
        feitos.push_back(ponte->Cortes());
        arma(*ponte);
    }
    std::size_t todos = 0;
    Espera("connections to be cut", std::chrono::seconds(120), [&] {
        for (std::size_t n = 0; n < pontes.size(); ++n) {
            if (pontes[n]->Cortes() > feitos[n]) {
                feitos[n] = pontes[n]->Cortes();
                ++todos;
                arma(*pontes[n]);
            }
        }
        return todos >= cortes;
    });
    for (Ponte *ponte : pontes) {
        ponte->NaoCorta();
    }
}

// The disk of the engine fills up while they save, and then there is room again.
Achados EncheODisco(Cenario &cenario, std::mt19937_64 &sorteio)
{
    constexpr std::uintmax_t megabyte = 1 << 20;
    AlgumMomento(cenario, sorteio);
    const std::filesystem::path disco = cenario.Primario().Pasta().parent_path();
    // So little that it is full at once, however slowly they save.
    const std::uintmax_t sobram = sorteio() % (megabyte / 4);
    const std::uintmax_t livres = std::filesystem::space(disco).available;
    const std::vector<char> parte(megabyte);
    std::ofstream peso(disco / "peso", std::ios::binary);
    for (std::uintmax_t postos = 0; postos + sobram < livres;) {
        const std::uintmax_t mais = std::min(megabyte, livres - sobram - postos);
        peso.write(parte.data(), static_cast<std::streamsize>(mais));
        postos += mais;
    }
    peso.close();
    TodosSaoAvisados(cenario);
    std::filesystem::remove(disco / "peso");
    cenario.Primario().Mata(); // it may have ended by itself, or not
    cenario.Primario().Inicia();
    cenario.EsperaDeCada(2);
    cenario.Para();
    return {};
}

Achados CortaClientes(Cenario &cenario, std::mt19937_64 &sorteio)
{
    cenario.EsperaDeCada(1);
    std::vector<Ponte *> pontes;
    for (std::size_t n = 0; n < cenario.Clientes().size(); ++n) {
        pontes.push_back(&cenario.PonteDoCliente(n));
    }
    // A small document takes 1 to 24 KB, an equipment with its calibrations less than 2.
    Corta(pontes, 2 * pontes.size(), 6000, sorteio);
    cenario.EsperaDeCada(1);
    cenario.Para();
    return {};
}

Achados CortaMotor(Cenario &cenario, std::mt19937_64 &sorteio)
{
    cenario.EsperaDeCada(1);
    // All of a server's connections count together: what comes before the octet is any part of any operation.
    Corta({&cenario.PonteDoPrimario()}, 20, 30000, sorteio);
    cenario.EsperaDeCada(1);
    cenario.Para();
    return {};
}

// What was answered before the copy began is in what is restored from it, and its history is the beginning of this one.
Achados CopiaERestaura(Cenario &cenario, std::mt19937_64 &sorteio)
{
    AlgumMomento(cenario, sorteio);
    std::vector<std::size_t> respondidas;
    for (const auto &cliente : cenario.Clientes()) {
        respondidas.push_back(cliente->Respondidas());
    }
    const mesa::DesfechoDaCopia copia =
        mesa::Copia(cenario.Ligacao(), mesa::Conferidor::Achados).Faz(cenario.Pasta() / "copias", Agora, 1);
    cenario.EsperaDeCada(1);
    cenario.Para();
    Achados achados;
    if (!copia.Feita) {
        achados.Outros.push_back("no copy: " + copia.Frase);
        return achados;
    }

    const motor::Aglomerado novo;
    motor::Linhas(novo.Texto("postgres"), std::string("CREATE DATABASE ") + Cenario::Banco);
    const mesa::DesfechoDaCopia restauracao =
        mesa::Restauracao(novo.Texto(Cenario::Banco), mesa::Conferidor::Achados).Faz({copia.Arquivo, "", false}, Agora);
    if (!restauracao.Feita) {
        achados.Outros.push_back("not restored: " + restauracao.Frase);
        return achados;
    }
    Diario ateACopia;
    for (std::size_t n = 0; n < respondidas.size(); ++n) {
        std::size_t resposta = 0;
        for (Gravacao gravacao : cenario.Clientes()[n]->Feitas()) {
            if (gravacao.Como == Gravacao::Desfecho::Respondida && ++resposta > respondidas[n]) {
                gravacao.Como = Gravacao::Desfecho::SemResposta; // it may be in the copy
            }
            ateACopia.push_back(gravacao);
        }
    }
    Direta restaurado(Cenario::Direto(novo));
    achados += Verifica(restaurado, ateACopia);
    achados += Conferido(cenario.Primario());
    achados += Conferido(novo);
    const std::string fim = LinhasSql(copia.Arquivo, "SELECT Nro, Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1").at(0);
    const std::string nro = fim.substr(0, fim.find('|'));
    for (const motor::Aglomerado *motor :
         std::initializer_list<const motor::Aglomerado *>{&cenario.Primario(), &novo}) {
        if (motor::Linhas(motor->Texto(Cenario::Banco), "SELECT Nro, Elo FROM HISTORICO WHERE Nro = " + nro) !=
            std::vector<std::string>{fim}) {
            achados.Outros.push_back("the history of the copy is another one");
        }
    }
    return achados;
}

Medida Soma(const Diario &diario)
{
    Medida medida;
    for (const Gravacao &gravacao : diario) {
        switch (gravacao.Como) {
        case Gravacao::Desfecho::Respondida:
            ++medida.Respondidas;
            medida.Pausa = std::max(medida.Pausa, gravacao.Levou);
            break;
        case Gravacao::Desfecho::SemResposta:
            ++medida.SemResposta;
            break;
        default:
            ++medida.Outros;
            std::fprintf(stderr, "refused: %s: %s\n", gravacao.Marca.c_str(), gravacao.Frase.c_str());
        }
    }
    return medida;
}

} // namespace

const std::vector<Tipo> &Tipos()
{
    static const std::vector<Tipo> tipos = {
        {"primario", "primary engine killed, standby promoted", MorreOPrimario, false, 4},
        {"servidor", "server killed, clients go to the other one", MorreUmServidor, false, 4},
        {"reserva", "synchronous standby gone", SomeAReserva, false, 3},
        {"corte", "connections of clients cut", CortaClientes, false, 4},
        {"corte-motor", "connections of servers to the engine cut", CortaMotor, false, 2},
        {"copia", "everything; a copy restored into a new cluster", CopiaERestaura, false, 2},
        {"disco", "disk of the engine full", EncheODisco, true, 1},
    };
    return tipos;
}

Medida &Medida::operator+=(const Medida &outra)
{
    Rodadas += outra.Rodadas;
    Respondidas += outra.Respondidas;
    SemResposta += outra.SemResposta;
    Perdidas += outra.Perdidas;
    Duplas += outra.Duplas;
    Metades += outra.Metades;
    Outros += outra.Outros;
    Pausa = std::max(Pausa, outra.Pausa);
    Durou += outra.Durou;
    return *this;
}

Medida Roda(const Tipo &tipo, Cenario &cenario, std::mt19937_64 &sorteio)
{
    const auto inicio = std::chrono::steady_clock::now();
    std::vector<std::size_t> antes;
    for (const auto &cliente : cenario.Clientes()) {
        antes.push_back(cliente->Feitas().size());
    }
    Achados achados;
    try {
        cenario.Comeca();
        achados += tipo.Faz(cenario, sorteio);
    } catch (const std::runtime_error &erro) {
        achados.Outros.push_back(erro.what());
    }
    cenario.Para();
    Diario desta;
    for (std::size_t n = 0; n < antes.size(); ++n) {
        const Diario &diario = cenario.Clientes()[n]->Feitas();
        desta.insert(desta.end(), diario.begin() + static_cast<std::ptrdiff_t>(antes[n]), diario.end());
    }
    Medida medida = Soma(desta);
    medida.Rodadas = 1;
    achados += cenario.Mortos();
    achados += cenario.Confere();
    std::fputs(achados.Texto().c_str(), stderr);
    medida.Perdidas += achados.Perdidas.size();
    medida.Duplas += achados.Duplas.size();
    medida.Metades += achados.Metades.size();
    medida.Outros += achados.Outros.size();
    medida.Durou = std::chrono::steady_clock::now() - inicio;
    return medida;
}

} // namespace mortes
