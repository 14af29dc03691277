#include "server/Diario.h"

#include "host/Falha.h"
#include "services/Disco.h"
#include "services/TextoQt.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <utility>

namespace servidor {

namespace {

constexpr std::chrono::minutes EntreAvisos(1);
constexpr std::size_t MaisAvisados = 1000; // sentences that are kept, to know the same again
// Lines that come meanwhile are written together: waking somebody for each costs more than the line.
constexpr std::chrono::milliseconds EntreEscritas(50);

std::string Milissegundos(std::chrono::microseconds tempo)
{
    std::array<char, 32> texto{};
    const double valor = static_cast<double>(tempo.count()) / 1000;
    return {texto.data(),
            std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::fixed).ptr};
}

// The text as JSON has it. Nearly all of them need nothing, and the toolkit's way there is a long one.
std::string EntreAspas(const std::string &texto)
{
    const auto simples = [](char letra) { return letra >= ' ' && letra <= '~' && letra != '"' && letra != '\\'; };
    if (std::ranges::all_of(texto, simples)) {
        return '"' + texto + '"';
    }
    const QByteArray lista = QJsonDocument(QJsonArray{mesa::Q(texto)}).toJson(QJsonDocument::Compact);
    return lista.mid(1, lista.size() - 2).toStdString();
}

// As "2026-11-23T08:30:00.123-03:00", in the machine's zone. The toolkit asks for the zone anew each time.
std::string Local(std::chrono::system_clock::time_point quando)
{
    const auto desde = quando.time_since_epoch();
    const auto segundos = std::chrono::floor<std::chrono::seconds>(desde);
    const std::time_t relogio = segundos.count();
    std::tm momento{};
    ::localtime_r(&relogio, &momento);
    std::array<char, 32> dia{};
    std::strftime(dia.data(), dia.size(), "%FT%T", &momento);
    const long minutos = std::abs(momento.tm_gmtoff) / 60;
    std::array<char, 16> resto{};
    std::snprintf(resto.data(), resto.size(), ".%03d%c%02ld:%02ld",
                  static_cast<int>(std::chrono::floor<std::chrono::milliseconds>(desde - segundos).count()),
                  momento.tm_gmtoff < 0 ? '-' : '+', minutos / 60 % 100, minutos % 60);
    return std::string(dia.data()) + resto.data();
}

std::string Linha(const QJsonObject &objeto)
{
    return QJsonDocument(objeto).toJson(QJsonDocument::Compact).toStdString() + "\n";
}

} // namespace

std::string LinhaDoDiario::Json(std::chrono::system_clock::time_point quando) const
{
    std::string linha;
    const auto poe = [&](const char *nome, const std::string &valor) {
        linha.append(linha.empty() ? "{\"" : ",\"").append(nome).append("\":").append(valor);
    };
    poe("endereco", EntreAspas(Endereco));
    poe("espera_ms", Milissegundos(Espera));
    poe("fim", EntreAspas(Fim));
    poe("momento", EntreAspas(Local(quando)));
    if (!Motivo.empty()) {
        poe("motivo", EntreAspas(Motivo));
    }
    poe("ms", Milissegundos(Duracao));
    if (!Numero.empty()) {
        poe("numero", EntreAspas(Numero));
    }
    poe("octetos", std::to_string(Octetos));
    poe("operacao", EntreAspas(Operacao));
    poe("usuario", std::to_string(Usuario));
    return linha + "}\n";
}

Diario::Diario(const std::string &onde, std::size_t lugares) : m_Lugares(lugares)
{
    m_Arquivo = onde == "-"
                    ? ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)
                    : ::open(onde.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR | S_IRGRP);
    if (m_Arquivo < 0) {
        throw Falha(NumeroFalha::ErroDeAcesso, "Servidor",
                    "O diário " + onde + " não pôde ser aberto: " + mesa::MotivoDoSistema(errno) + ".");
    }
    m_Fio = std::thread([this] { Grava(); });
}

Diario::~Diario()
{
    {
        const std::lock_guard trava(m_Mutex);
        m_Fim = true;
    }
    m_Mudou.notify_one();
    m_Acaba.notify_one();
    m_Fio.join();
    ::close(m_Arquivo);
}

void Diario::Escreve(const LinhaDoDiario &linha)
{
    std::string texto = linha.Json(std::chrono::system_clock::now());
    bool primeira = false;
    {
        const std::lock_guard trava(m_Mutex);
        if (m_Linhas.size() >= m_Lugares) {
            ++m_Perdidas;
            return;
        }
        primeira = m_Linhas.empty();
        m_Linhas.push_back(std::move(texto));
    }
    if (primeira) {
        m_Mudou.notify_one();
    }
}

void Diario::Avisa(const std::string &frase)
{
    const auto agora = std::chrono::steady_clock::now();
    {
        const std::lock_guard trava(m_Mutex);
        std::erase_if(m_Avisados, [&](const auto &um) { return agora - um.second >= EntreAvisos; });
        if (m_Avisados.contains(frase)) {
            return;
        }
        if (m_Avisados.size() >= MaisAvisados) {
            m_Avisados.clear();
        }
        m_Avisados.emplace(frase, agora);
    }
    std::cerr << frase + "\n" << std::flush;
}

std::uint64_t Diario::Perdidas() const
{
    const std::lock_guard trava(m_Mutex);
    return m_Perdidas;
}

void Diario::Grava()
{
    std::uint64_t ditas = 0;
    bool inteira = true; // the last line that is in the file has its end
    std::unique_lock trava(m_Mutex);
    for (;;) {
        m_Mudou.wait(trava, [this] { return m_Fim || !m_Linhas.empty(); });
        if (m_Linhas.empty()) {
            return;
        }
        m_Acaba.wait_for(trava, EntreEscritas, [this] { return m_Fim; });
        std::string texto = inteira ? "" : "\n";
        for (const std::string &linha : std::exchange(m_Linhas, {})) {
            texto += linha;
        }
        const std::size_t fimDasLinhas = texto.size();
        const std::uint64_t perdidas = m_Perdidas;
        if (perdidas > ditas) { // which is itself no line that could be lost
            texto += Linha({{"operacao", "diario"}, {"perdidas", static_cast<qint64>(perdidas - ditas)}});
        }
        trava.unlock();
        std::size_t escritos = 0;
        while (escritos < texto.size()) {
            const ssize_t agora = ::write(m_Arquivo, texto.data() + escritos, texto.size() - escritos);
            if (agora < 0 && errno == EINTR) {
                continue;
            }
            if (agora <= 0) {
                break;
            }
            escritos += static_cast<std::size_t>(agora);
        }
        inteira = escritos == 0 ? inteira : texto[escritos - 1] == '\n';
        trava.lock();
        // What the disk did not take is lost, and counted: nothing waits for it.
        for (std::size_t n = escritos; n < fimDasLinhas; ++n) {
            m_Perdidas += texto[n] == '\n' && n > 0 ? 1 : 0;
        }
        if (escritos == texto.size()) {
            ditas = perdidas;
        }
    }
}

} // namespace servidor
