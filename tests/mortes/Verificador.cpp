#include "tests/mortes/Verificador.h"

#include "services/Historico.h"

#include <libpq-fe.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <utility>

namespace mortes {

namespace {

PGconn *Conexao(void *conexao)
{
    return static_cast<PGconn *>(conexao);
}

std::string Lista(const std::string &titulo, const std::vector<std::string> &frases)
{
    constexpr std::size_t mostra = 12;
    std::string texto;
    for (std::size_t n = 0; n < std::min(frases.size(), mostra); ++n) {
        texto += titulo + ": " + frases[n] + "\n";
    }
    return frases.size() > mostra ? texto + titulo + ": and " + std::to_string(frases.size() - mostra) + " more\n"
                                  : texto;
}

using Numeros = std::multiset<std::string>;

// An equipment with all its rows.
struct Equipamento {
    std::string Nro;
    std::int64_t Versao = 0;
    std::string Descricao;
    Numeros Sensores;
    std::map<std::string, Numeros> Afericoes; // number and document of those of each sensor
    // Entries of the history, by the version that they made.
    std::map<std::int64_t, std::map<std::string, int>> Historia;
};

std::map<std::string, std::vector<Equipamento>> LeEquipamentos(Direta &direta)
{
    std::map<std::string, Equipamento> porNumero;
    std::map<std::string, std::string> codigos;
    for (const auto &linha : direta.Pergunta("SELECT NroIntEquip, Codigo, Versao, Descricao FROM EQUIPAMENTO "
                                             "WHERE Codigo LIKE 'M%'")) {
        Equipamento &equipamento = porNumero[linha[0]];
        equipamento.Nro = linha[0];
        codigos[linha[0]] = linha[1];
        equipamento.Versao = std::stoll(linha[2]);
        equipamento.Descricao = linha[3];
    }
    for (const auto &linha : direta.Pergunta("SELECT NroIntEquip, NroSensor FROM SENSOR WHERE Ativo = 1")) {
        if (const auto dele = porNumero.find(linha[0]); dele != porNumero.end()) {
            dele->second.Sensores.insert(linha[1]);
        }
    }
    for (const auto &linha : direta.Pergunta("SELECT s.NroIntEquip, s.NroSensor, a.Numero, a.NroIntImgCertif "
                                             "FROM AFERICAO a JOIN SENSOR s ON s.NroIntSensor = a.NroIntSensor "
                                             "WHERE a.Ativo = 1")) {
        if (const auto dele = porNumero.find(linha[0]); dele != porNumero.end()) {
            dele->second.Afericoes[linha[1]].insert(linha[2] + " " + linha[3]);
        }
    }
    for (const auto &linha :
         direta.Pergunta("SELECT NroRaiz, Versao, Entidade, Acao FROM HISTORICO WHERE Raiz = 'EQUIPAMENTO'")) {
        if (const auto dele = porNumero.find(linha[0]); dele != porNumero.end()) {
            ++dele->second.Historia[std::stoll(linha[1])][linha[2] + " " + linha[3]];
        }
    }
    std::map<std::string, std::vector<Equipamento>> porCodigo;
    for (auto &[numero, equipamento] : porNumero) {
        porCodigo[codigos[numero]].push_back(std::move(equipamento));
    }
    return porCodigo;
}

// What is not as one of the two saves leaves it; empty when all is.
std::string Falta(const Equipamento &e, const std::string &marca, const std::string &documento)
{
    if (e.Versao != 1 && e.Versao != 2) {
        return "version " + std::to_string(e.Versao);
    }
    const bool alterado = e.Versao == 2;
    if (e.Descricao != (alterado ? Conteudo::Alterado(marca) : Conteudo::Incluido(marca))) {
        return "version " + std::to_string(e.Versao) + " is called " + e.Descricao;
    }
    if (e.Sensores != Numeros{"1", "2"}) {
        return std::to_string(e.Sensores.size()) + " sensors";
    }
    std::map<std::string, Numeros> afericoes;
    const auto poe = [&](const std::string &sensor, int qual) {
        afericoes[sensor].insert(Conteudo::Afericao(qual, marca) + " " + documento);
    };
    poe("1", 0);
    poe("2", 1);
    if (alterado) {
        poe("1", 2);
    }
    if (e.Afericoes != afericoes) {
        return "not the calibrations of version " + std::to_string(e.Versao);
    }
    std::map<std::int64_t, std::map<std::string, int>> historia;
    historia[1] = {{"EQUIPAMENTO inclui", 1}, {"SENSOR inclui", 2}, {"AFERICAO inclui", 2}};
    if (alterado) {
        historia[2] = {{"EQUIPAMENTO altera", 1}, {"AFERICAO inclui", 1}};
    }
    return e.Historia == historia ? "" : "not the history of version " + std::to_string(e.Versao);
}

struct Documento {
    std::string Nro;
    bool Inteiro = false;
};

std::map<std::string, std::vector<Documento>> LeDocumentos(Direta &direta)
{
    std::map<std::string, std::vector<Documento>> documentos;
    for (const auto &linha : direta.Pergunta(
             "SELECT NroDocumento, Sha256, encode(sha256(Conteudo), 'hex') = Sha256 AND Tamanho = length(Conteudo) AND "
             "1 = (SELECT COUNT(*) FROM HISTORICO h WHERE h.Raiz = 'DOCUMENTO' AND h.NroRaiz = d.NroDocumento) "
             "FROM DOCUMENTO d")) {
        documentos[linha[1]].push_back({linha[0], linha[2] == "t"});
    }
    return documentos;
}

// The history is one chain without a gap, and all versions of all equipment are in it.
void ConfereHistoria(Direta &direta, Achados &achados)
{
    const std::string identificador = direta.Pergunta("SELECT Identificador FROM REGISTRO").at(0).at(0);
    std::string elo = mesa::Historico::Origem(identificador);
    std::int64_t nro = 0;
    const std::string colunas = mesa::Historico::ColunasDoElo().toStdString();
    // An absence is no empty text in the hash: before each column whether it is there.
    std::string pedidas;
    std::size_t quantas = 0;
    for (std::size_t de = 0; de < colunas.size(); ++quantas) {
        const std::size_t ate = std::min(colunas.find(", ", de), colunas.size());
        const std::string coluna = colunas.substr(de, ate - de);
        pedidas += ", " + coluna + " IS NULL, " + coluna;
        de = ate + 2;
    }
    for (const auto &linha : direta.Pergunta("SELECT Nro, Elo" + pedidas + " FROM HISTORICO ORDER BY Nro")) {
        ++nro;
        if (linha[0] != std::to_string(nro)) {
            achados.Outros.push_back("entry " + std::to_string(nro) + " of the history is missing");
            return;
        }
        QVariantList campos;
        for (std::size_t n = 0; n < quantas; ++n) {
            const bool falta = linha[2 + 2 * n] == "t";
            campos.push_back(falta ? QVariant() : QVariant(QString::fromStdString(linha[3 + 2 * n])));
        }
        elo = mesa::Historico::Encadeia(elo, nro, campos);
        if (elo != linha[1]) {
            achados.Outros.push_back("entry " + std::to_string(nro) + " of the history does not follow the one before");
            return;
        }
    }
    for (const auto &linha :
         direta.Pergunta("SELECT e.NroIntEquip, e.Versao FROM EQUIPAMENTO e WHERE e.Versao <> (SELECT "
                         "COUNT(DISTINCT h.Versao) FROM HISTORICO h WHERE h.Raiz = 'EQUIPAMENTO' AND h.NroRaiz = "
                         "e.NroIntEquip) OR e.Versao <> (SELECT MAX(h.Versao) FROM HISTORICO h WHERE h.Raiz = "
                         "'EQUIPAMENTO' AND h.NroRaiz = e.NroIntEquip)")) {
        achados.Outros.push_back("the versions of equipment " + linha[0] + " have gaps");
    }
}

std::string Nome(Gravacao::Ato ato)
{
    return ato == Gravacao::Ato::Documento ? "document" : ato == Gravacao::Ato::Inclui ? "equipment" : "change";
}

} // namespace

Direta::Direta(const std::string &conexao) : m_Conexao(PQconnectdb(conexao.c_str()))
{
    if (PQstatus(Conexao(m_Conexao)) != CONNECTION_OK) {
        const std::string palavras = PQerrorMessage(Conexao(m_Conexao));
        PQfinish(Conexao(m_Conexao));
        throw std::runtime_error(palavras);
    }
}

Direta::~Direta()
{
    PQfinish(Conexao(m_Conexao));
}

Linhas Direta::Pergunta(const std::string &sql)
{
    const std::unique_ptr<PGresult, void (*)(PGresult *)> resposta(PQexec(Conexao(m_Conexao), sql.c_str()), PQclear);
    const auto estado = PQresultStatus(resposta.get());
    if (estado != PGRES_TUPLES_OK && estado != PGRES_COMMAND_OK) {
        throw std::runtime_error(sql + ": " + PQerrorMessage(Conexao(m_Conexao)));
    }
    Linhas linhas(static_cast<std::size_t>(PQntuples(resposta.get())));
    for (int n = 0; n < PQntuples(resposta.get()); ++n) {
        for (int coluna = 0; coluna < PQnfields(resposta.get()); ++coluna) {
            linhas[static_cast<std::size_t>(n)].emplace_back(PQgetvalue(resposta.get(), n, coluna));
        }
    }
    return linhas;
}

Achados &Achados::operator+=(const Achados &outros)
{
    const auto junta = [](std::vector<std::string> &destino, const std::vector<std::string> &mais) {
        destino.insert(destino.end(), mais.begin(), mais.end());
    };
    junta(Perdidas, outros.Perdidas);
    junta(Duplas, outros.Duplas);
    junta(Metades, outros.Metades);
    junta(Outros, outros.Outros);
    return *this;
}

std::string Achados::Texto() const
{
    return Lista("lost", Perdidas) + Lista("double", Duplas) + Lista("half", Metades) + Lista("other", Outros);
}

Achados Verifica(Direta &direta, const Diario &diario)
{
    Achados achados;
    direta.Pergunta("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    const auto documentos = LeDocumentos(direta);
    const auto equipamentos = LeEquipamentos(direta);
    ConfereHistoria(direta, achados);
    const Linhas feitas = direta.Pergunta("SELECT COUNT(*) FROM OPERACAO");
    direta.Pergunta("COMMIT");

    // Numbers of the documents by mark, and what was asked.
    std::map<std::string, std::string> documentoDa;
    std::set<std::string> somas;
    std::map<std::string, std::set<Gravacao::Ato>> pedidos;
    for (const Gravacao &gravacao : diario) {
        pedidos[gravacao.Marca].insert(gravacao.Oque);
        if (gravacao.Oque == Gravacao::Ato::Documento) {
            somas.insert(gravacao.Sha256);
            const auto achado = documentos.find(gravacao.Sha256);
            documentoDa[gravacao.Marca] = achado == documentos.end() ? "" : achado->second.front().Nro;
        }
    }

    for (const Gravacao &gravacao : diario) {
        const bool respondida = gravacao.Como == Gravacao::Desfecho::Respondida;
        const std::string nome = Nome(gravacao.Oque) + " " + gravacao.Marca;
        const std::string numero = std::to_string(static_cast<std::int64_t>(gravacao.Numero));
        if (gravacao.Oque == Gravacao::Ato::Documento) {
            const auto achado = documentos.find(gravacao.Sha256);
            if (respondida && achado == documentos.end()) {
                achados.Perdidas.push_back(nome);
            } else if (respondida && achado->second.front().Nro != numero) {
                achados.Outros.push_back(nome + " was answered as " + numero + " and is " + achado->second.front().Nro);
            }
            continue;
        }
        const auto achado = equipamentos.find(Conteudo::Codigo(gravacao.Marca));
        if (!respondida) {
            continue;
        }
        if (achado == equipamentos.end()) {
            achados.Perdidas.push_back(nome);
        } else if (achado->second.front().Nro != numero) {
            achados.Outros.push_back(nome + " was answered as " + numero + " and is " + achado->second.front().Nro);
        } else if (gravacao.Oque == Gravacao::Ato::Altera && achado->second.front().Versao < 2) {
            achados.Perdidas.push_back(nome);
        }
    }

    std::int64_t mudancas = 0;
    for (const auto &[soma, iguais] : documentos) {
        mudancas += static_cast<std::int64_t>(iguais.size());
        if (!somas.contains(soma)) {
            achados.Outros.push_back("nobody kept document " + iguais.front().Nro);
        }
        if (iguais.size() > 1) {
            achados.Duplas.push_back("document " + iguais.front().Nro + " is there " + std::to_string(iguais.size()) +
                                     " times");
        }
        for (const Documento &documento : iguais) {
            if (!documento.Inteiro) {
                achados.Metades.push_back("document " + documento.Nro);
            }
        }
    }
    for (const auto &[codigo, iguais] : equipamentos) {
        const std::string marca = codigo.substr(1);
        const auto pedido = pedidos.find(marca);
        if (pedido == pedidos.end() || !pedido->second.contains(Gravacao::Ato::Inclui)) {
            achados.Outros.push_back("nobody saved equipment " + codigo);
        } else if (iguais.front().Versao > 1 && !pedido->second.contains(Gravacao::Ato::Altera)) {
            achados.Outros.push_back("nobody changed equipment " + codigo);
        }
        if (iguais.size() > 1) {
            achados.Duplas.push_back("equipment " + codigo + " is there " + std::to_string(iguais.size()) + " times");
        }
        for (const Equipamento &equipamento : iguais) {
            mudancas += equipamento.Versao;
            if (equipamento.Versao > 2) {
                achados.Duplas.push_back("equipment " + codigo + " was changed " +
                                         std::to_string(equipamento.Versao - 1) + " times");
            } else if (const std::string falta = Falta(equipamento, marca, documentoDa[marca]); !falta.empty()) {
                achados.Metades.push_back("equipment " + codigo + ": " + falta);
            }
        }
    }
    // Each change has a number, and each number one change.
    if (feitas.at(0).at(0) != std::to_string(mudancas)) {
        achados.Outros.push_back(feitas.at(0).at(0) + " numbers of operations for " + std::to_string(mudancas) +
                                 " changes");
    }
    return achados;
}

} // namespace mortes
