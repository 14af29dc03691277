#include "services/LigacaoPostgres.h"

#include "services/DialetoPostgres.h"
#include "services/Promocoes.h"

#include <libpq-fe.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace mesa {

namespace {

using Opcoes = std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption *)>;

Opcoes OpcoesDe(const std::string &onde)
{
    return {PQconninfoParse(DialetoPostgres::TextoDaBiblioteca(onde).c_str(), nullptr), PQconninfoFree};
}

std::string Opcao(const PQconninfoOption *opcoes, std::string_view nome)
{
    for (; opcoes != nullptr && opcoes->keyword != nullptr; ++opcoes) {
        if (nome == opcoes->keyword && opcoes->val != nullptr) {
            return opcoes->val;
        }
    }
    return "";
}

std::string SemFimDeLinha(std::string texto)
{
    while (!texto.empty() && (texto.back() == '\n' || texto.back() == ' ')) {
        texto.pop_back();
    }
    for (char &letra : texto) {
        letra = letra == '\n' ? ' ' : letra;
    }
    return texto;
}

std::string FraseDo(const std::string &estado, const std::string &nome, const std::string &detalhe, bool caiu)
{
    if (estado == "53100") {
        return "O disco da máquina em que está o " + nome + " ficou cheio (" + detalhe + ").";
    }
    if (caiu) {
        return "A ligação com o " + nome + " caiu (" + detalhe + ").";
    }
    if (estado == "42501") {
        return "O usuário com que se ligou ao " + nome + " não tem direito a isso (" + detalhe + ").";
    }
    if (estado == "55P03") {
        return "No " + nome + " alguém segura há muito tempo o que é preciso (" + detalhe + "). Tente de novo.";
    }
    return "Não foi possível trabalhar com o " + nome + " (" + detalhe + ").";
}

// Integers of the binary form, the most significant byte first.
template <class Numero> Numero DaRede(const char *octetos)
{
    std::uint64_t numero = 0;
    for (std::size_t n = 0; n < sizeof(Numero); ++n) {
        numero = numero << 8 | static_cast<unsigned char>(octetos[n]);
    }
    return static_cast<Numero>(numero);
}

constexpr std::string_view Assinatura("PGCOPY\n\377\r\n\0", 11);

// One row as it came; nothing at the end of all.
bool Separa(std::string_view linha, LigacaoPostgres::Campos &campos)
{
    campos.clear();
    const auto pega = [&](std::size_t quantos) {
        if (linha.size() < quantos) {
            throw ErroDoServidor("O servidor do banco de dados mandou uma linha que não se entende.", "", "", true);
        }
        const std::string_view pedaco = linha.substr(0, quantos);
        linha.remove_prefix(quantos);
        return pedaco;
    };
    if (linha.starts_with(Assinatura)) {
        pega(Assinatura.size() + 4);
        pega(static_cast<std::size_t>(DaRede<std::uint32_t>(pega(4).data())));
    }
    const auto quantos = DaRede<std::int16_t>(pega(2).data());
    if (quantos < 0) {
        return false;
    }
    for (int n = 0; n < quantos; ++n) {
        const auto tamanho = DaRede<std::int32_t>(pega(4).data());
        campos.push_back(tamanho < 0 ? std::nullopt : std::optional(pega(static_cast<std::size_t>(tamanho))));
    }
    return true;
}

} // namespace

bool EhDeServidor(const std::string &onde)
{
    return DialetoPostgres::Reconhece(onde);
}

std::string NomeDoServidor(const std::string &onde)
{
    const Opcoes opcoes = OpcoesDe(onde);
    const std::string maquina = Opcao(opcoes.get(), "host");
    const std::string porta = Opcao(opcoes.get(), "port");
    std::string nome = "banco de dados " + Opcao(opcoes.get(), "dbname");
    if (!maquina.empty()) {
        nome += " em " + maquina + (porta.empty() ? "" : ":" + porta);
    }
    return nome;
}

ErroDoServidor::ErroDoServidor(const std::string &frase, std::string estado, std::string detalhe, bool caiu)
    : Falha(NumeroFalha::ErroDeAcesso, "Servicos", frase),
      Estado(std::move(estado)),
      Detalhe(std::move(detalhe)),
      Caiu(caiu)
{
}

LigacaoPostgres::LigacaoPostgres(const std::string &onde)
    : m_Onde(onde),
      m_Nome(NomeDoServidor(onde)),
      m_Aberta(nullptr, PQfinish)
{
    const Opcoes dadas = OpcoesDe(onde);
    if (!dadas) {
        throw ErroDoServidor("O endereço do banco de dados não se entende: ele tem a forma "
                             "postgresql://usuario@maquina:5432/banco.",
                             "", "", true);
    }
    std::map<std::string, std::string> lugares;
    for (const char *lista : {"host", "hostaddr", "port"}) {
        lugares[lista] = Opcao(dadas.get(), lista);
    }
    const bool comGravacao =
        lugares["host"].find(',') != std::string::npos && Opcao(dadas.get(), "target_session_attrs").empty();
    // As many tries as there are places.
    for (auto restam = std::ranges::count(lugares["host"], ',');; --restam) {
        Liga(lugares, comGravacao);
        const auto historia = Linhas(Promocoes::Pergunta);
        if (historia.empty() || Promocoes::EmDia(historia[0][0].value_or(""), historia[0][1].value_or(""))) {
            return;
        }
        if (restam == 0) {
            throw ErroDoServidor("O " + m_Nome + " ficou para trás: outro foi promovido no lugar dele.", "", "", true);
        }
        for (auto &[nome, lista] : lugares) {
            lista = Promocoes::DepoisDoPrimeiro(lista);
        }
    }
}

void LigacaoPostgres::Liga(const std::map<std::string, std::string> &lugares, bool comGravacao)
{
    // What the text says comes after and holds, but for the order of the places. A machine that is gone without a word
    // is noticed.
    std::vector<const char *> nomes = {
        "connect_timeout", "keepalives_idle", "keepalives_interval", "keepalives_count", "tcp_user_timeout",
        "client_encoding", "dbname"};
    const std::string texto = DialetoPostgres::TextoDaBiblioteca(m_Onde);
    std::vector<const char *> valores = {"10", "30", "10", "3", "60000", "UTF8", texto.c_str()};
    if (comGravacao) {
        nomes.insert(nomes.begin(), "target_session_attrs");
        valores.insert(valores.begin(), "read-write");
    }
    for (const auto &[nome, lista] : lugares) {
        if (!lista.empty()) {
            nomes.push_back(nome.c_str());
            valores.push_back(lista.c_str());
        }
    }
    nomes.push_back(nullptr);
    valores.push_back(nullptr);
    m_Aberta.reset(PQconnectdbParams(nomes.data(), valores.data(), 1));
    if (PQstatus(m_Aberta.get()) != CONNECTION_OK) {
        const std::string detalhe = SemFimDeLinha(PQerrorMessage(m_Aberta.get()));
        throw ErroDoServidor("Não foi possível ligar ao " + m_Nome + " (" + detalhe + ").", "", detalhe, true);
    }
    PQsetNoticeProcessor(
        m_Aberta.get(), [](void *, const char *) {}, nullptr);
    // What lasts is bounded by whoever watches it. Rows that a policy would hide are an error.
    for (const char *comando :
         {"SET statement_timeout = 0", "SET idle_in_transaction_session_timeout = 0",
          "SELECT set_config('lock_timeout', '10s', false) WHERE current_setting('lock_timeout') = '0'",
          "SELECT set_config('synchronous_commit', 'on', false) "
          "WHERE current_setting('synchronous_commit') NOT IN ('on', 'remote_apply')",
          "SET row_security = off", "SET search_path = public, pg_temp"}) {
        Comanda(comando);
    }
}

void LigacaoPostgres::Falha(const pg_result *resultado)
{
    const char *estado = resultado == nullptr ? nullptr : PQresultErrorField(resultado, PG_DIAG_SQLSTATE);
    const char *primeira = resultado == nullptr ? nullptr : PQresultErrorField(resultado, PG_DIAG_MESSAGE_PRIMARY);
    const std::string detalhe = SemFimDeLinha(primeira == nullptr ? PQerrorMessage(m_Aberta.get()) : primeira);
    const std::string qual = estado == nullptr ? "" : estado;
    const bool caiu = PQstatus(m_Aberta.get()) != CONNECTION_OK || qual.starts_with("57P");
    throw ErroDoServidor(FraseDo(qual, m_Nome, detalhe, caiu), qual, detalhe, caiu);
}

LigacaoPostgres::Resultado LigacaoPostgres::Executa(const std::string &sql, const std::vector<std::string> &valores)
{
    std::vector<const char *> lugares;
    for (const std::string &valor : valores) {
        lugares.push_back(valor.c_str());
    }
    Resultado resultado(PQexecParams(m_Aberta.get(), sql.c_str(), static_cast<int>(valores.size()), nullptr,
                                     lugares.data(), nullptr, nullptr, 0),
                        PQclear);
    const ExecStatusType como = PQresultStatus(resultado.get());
    if (como != PGRES_COMMAND_OK && como != PGRES_TUPLES_OK && como != PGRES_COPY_IN && como != PGRES_COPY_OUT) {
        Falha(resultado.get());
    }
    return resultado;
}

void LigacaoPostgres::Comanda(const std::string &sql)
{
    const Resultado resultado(PQexec(m_Aberta.get(), sql.c_str()), PQclear);
    const ExecStatusType como = PQresultStatus(resultado.get());
    if (como != PGRES_COMMAND_OK && como != PGRES_TUPLES_OK && como != PGRES_EMPTY_QUERY) {
        Falha(resultado.get());
    }
}

std::vector<std::vector<LigacaoPostgres::Celula>> LigacaoPostgres::Linhas(const std::string &sql,
                                                                          const std::vector<std::string> &valores)
{
    const Resultado resultado = Executa(sql, valores);
    std::vector<std::vector<Celula>> linhas;
    for (int linha = 0; linha < PQntuples(resultado.get()); ++linha) {
        std::vector<Celula> &celulas = linhas.emplace_back();
        for (int coluna = 0; coluna < PQnfields(resultado.get()); ++coluna) {
            celulas.push_back(PQgetisnull(resultado.get(), linha, coluna) != 0
                                  ? std::nullopt
                                  : std::optional<std::string>(PQgetvalue(resultado.get(), linha, coluna)));
        }
    }
    return linhas;
}

LigacaoPostgres::Celula LigacaoPostgres::Unico(const std::string &sql, const std::vector<std::string> &valores)
{
    const auto linhas = Linhas(sql, valores);
    return linhas.empty() ? std::nullopt : linhas.front().front();
}

std::int64_t LigacaoPostgres::Inteiro(const std::string &sql, const std::vector<std::string> &valores)
{
    const std::string texto = Unico(sql, valores).value_or("0");
    std::int64_t numero = 0;
    std::from_chars(texto.data(), texto.data() + texto.size(), numero);
    return numero;
}

void LigacaoPostgres::CadaLinha(const std::string &sql, const std::function<void(const Campos &)> &faz)
{
    Executa("COPY (" + sql + ") TO STDOUT (FORMAT binary)", {});
    Campos campos;
    char *linha = nullptr;
    try {
        int tamanho = 0;
        while ((tamanho = PQgetCopyData(m_Aberta.get(), &linha, 0)) > 0) {
            const std::unique_ptr<char, void (*)(void *)> solta(linha, PQfreemem);
            if (Separa({linha, static_cast<std::size_t>(tamanho)}, campos)) {
                faz(campos);
            }
        }
    } catch (...) {
        m_Aberta.reset(); // nobody waits for the rest
        throw;
    }
    // The answer to the command, and then nothing.
    const Resultado resultado(PQgetResult(m_Aberta.get()), PQclear);
    if (PQresultStatus(resultado.get()) != PGRES_COMMAND_OK) {
        Resultado(PQgetResult(m_Aberta.get()), PQclear);
        Falha(resultado.get());
    }
    Resultado(PQgetResult(m_Aberta.get()), PQclear);
}

std::int64_t LigacaoPostgres::Poe(const std::string &tabela, const std::string &colunas,
                                  const std::function<bool(std::string &linha)> &proxima)
{
    Executa("COPY " + tabela + " (" + colunas + ") FROM STDIN", {});
    std::string linha;
    bool aceita = true;
    try {
        while (aceita && proxima(linha)) {
            linha += '\n';
            aceita = PQputCopyData(m_Aberta.get(), linha.data(), static_cast<int>(linha.size())) == 1;
            linha.clear();
        }
    } catch (...) {
        m_Aberta.reset();
        throw;
    }
    if (!aceita || PQputCopyEnd(m_Aberta.get(), nullptr) != 1) {
        Falha(nullptr);
    }
    const Resultado resultado(PQgetResult(m_Aberta.get()), PQclear);
    if (PQresultStatus(resultado.get()) != PGRES_COMMAND_OK) {
        Resultado(PQgetResult(m_Aberta.get()), PQclear);
        Falha(resultado.get());
    }
    Resultado(PQgetResult(m_Aberta.get()), PQclear);
    std::int64_t postas = 0;
    const std::string_view texto = PQcmdTuples(resultado.get());
    std::from_chars(texto.data(), texto.data() + texto.size(), postas);
    return postas;
}

TransacaoPostgres::TransacaoPostgres(LigacaoPostgres &ligacao, const std::string &comando) : m_Ligacao(ligacao)
{
    m_Ligacao.Comanda(comando);
}

TransacaoPostgres::~TransacaoPostgres()
{
    if (m_Aberta) {
        IgnoraErro([&] { m_Ligacao.Comanda("ROLLBACK"); });
    }
}

void TransacaoPostgres::Confirma()
{
    m_Ligacao.Comanda("COMMIT");
    m_Aberta = false;
}

} // namespace mesa
