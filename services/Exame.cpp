#include "services/Exame.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/Codigos.h"
#include "services/DialetoSQLite.h"
#include "services/ErroSql.h"
#include "services/Referencias.h"
#include "services/Repeticao.h"
#include "services/Resumo.h"
#include "services/Tentativas.h"
#include "services/TextoBusca.h"
#include "services/TextoQt.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <vector>

namespace mesa {

namespace {

constexpr std::size_t MaisFrases = 1000;
constexpr int MaisPedacos = 1000; // in which a damaged table is read
constexpr int LinhasEntrePerguntas = 100;
constexpr std::size_t MaisTocadas = 1000; // rows that the quick check looks at

// Of an entry of version 1: what the services of that time wrote by themselves, after what they wrote down.
constexpr std::array<std::string_view, 5> DoServicoAntigo = {"ClienteTrans", "OperadorTrans", "DataTrans", "HoraTrans",
                                                             "Versao"};

struct ItemDoEsquema {
    std::string Tabela;
    std::string Sql;
    std::string Tipos; // in which they are stored

    bool operator==(const ItemDoEsquema &) const = default;
};
using ItensDoEsquema = std::map<std::pair<std::string, std::string>, ItemDoEsquema>; // by type and name

// A text that has become bytes reads the same.
constexpr const char *PedeEsquema =
    "SELECT type, name, tbl_name, sql, typeof(type) || typeof(name) || typeof(tbl_name) || typeof(sql) FROM "
    "sqlite_master";

// That of a registry that was made in that version.
ItensDoEsquema EsquemaNovo(std::int64_t versao)
{
    sqlite3 *aberto = nullptr;
    sqlite3_open(":memory:", &aberto);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> banco(aberto, sqlite3_close);
    for (const QString &comando : DialetoSQLite::EsquemaDaVersao(versao)) {
        sqlite3_exec(aberto, comando.toUtf8().constData(), nullptr, nullptr, nullptr);
    }
    ItensDoEsquema novos;
    const auto guarda = [](void *destino, int, char **valores, char **) {
        const auto texto = [&](int n) { return std::string(valores[n] == nullptr ? "" : valores[n]); };
        (*static_cast<ItensDoEsquema *>(destino))[{texto(0), texto(1)}] = {texto(2), texto(3), texto(4)};
        return 0;
    };
    sqlite3_exec(aberto, PedeEsquema, guarda, &novos, nullptr);
    return novos;
}

std::string EmPalavras(const std::pair<std::string, std::string> &item)
{
    static const std::map<std::string_view, std::string_view> tipos = {
        {"table", "a tabela "}, {"index", "o índice "}, {"trigger", "a guarda "}, {"view", "a visão "}};
    const auto tipo = tipos.find(item.first);
    return (tipo == tipos.end() ? "o item " : std::string(tipo->second)) + item.second;
}

QString Tx(std::string_view texto)
{
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

QString ColunasDe(const Esquema::Tabela &tabela)
{
    QStringList nomes;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        nomes.push_back(Tx(coluna.Nome));
    }
    return nomes.join(", ");
}

QVariantList Valores(const LinhasLidas &linha, int primeira, std::size_t quantos)
{
    QVariantList valores;
    for (std::size_t n = 0; n < quantos; ++n) {
        valores.push_back(linha.Valor(primeira + static_cast<int>(n)));
    }
    return valores;
}

// Why the value is not of the column's kind; empty when it is.
std::string RecusaDoTipo(const Esquema::Coluna &coluna, const QVariant &valor)
{
    if (valor.isNull()) {
        return coluna.Nula ? "" : "está sem valor";
    }
    switch (coluna.Tipo) {
    case Esquema::Forma::Texto:
        return valor.typeId() == QMetaType::QString && !valor.toString().contains(QChar()) ? "" : "não tem um texto";
    case Esquema::Forma::Octetos:
        return valor.typeId() == QMetaType::QByteArray ? "" : "não tem octetos";
    default:
        return valor.typeId() == QMetaType::LongLong ? "" : "não tem um número inteiro";
    }
}

// The members that both have are the same, but for those that the services of version 1 wrote by themselves.
bool ConcordamNoComum(const QJsonObject &um, const QJsonObject &outro)
{
    for (auto membro = um.begin(); membro != um.end(); ++membro) {
        const bool doServico = std::ranges::find(DoServicoAntigo, S(membro.key())) != DoServicoAntigo.end();
        if (!doServico && outro.contains(membro.key()) && outro.value(membro.key()) != membro.value()) {
            return false;
        }
    }
    return true;
}

std::string Contados(std::int64_t quantos, const std::string &um, const std::string &varios)
{
    return CStr(quantos) + " " + (quantos == 1 ? um : varios);
}

} // namespace

Exame::Exame(LeitorSQLite &leitor, const SegueConferencia &segue) : m_Leitor(leitor), m_Palavras(leitor)
{
    if (segue) {
        leitor.PerguntaSeContinua([this, &segue] { return segue(m_Parte, m_OQue); });
    }
}

std::string Exame::FraseDeMaisNova(std::int64_t versao)
{
    return "O registro é da versão " + CStr(versao) + ", mais nova que a deste programa (versão " +
           CStr(Esquema::Versao) + "). Atualize o programa.";
}

void Exame::Acha(const std::string &frase)
{
    if (++Achados <= static_cast<std::int64_t>(MaisFrases)) {
        Resultado.Achados.push_back(frase);
    }
}

template <class Parte> void Exame::Tenta(double ate, const std::string &oQue, Parte &&parte)
{
    m_OQue = ComecoDeFrase(oQue);
    m_Leitor.Pergunta();
    try {
        parte();
    } catch (const ErroDeLeitura &erro) {
        Acha("Não foi possível conferir " + oQue + " até o fim: o arquivo está danificado (" + erro.what() + ").");
    }
    m_Parte = std::max(m_Parte, ate);
}

bool Exame::CadaLinha(const Esquema::Tabela &tabela, std::int64_t depoisDe,
                      const std::function<void(std::int64_t, const QVariantList *)> &faz)
{
    const QString chave = Tx(tabela.Chave().Nome);
    const QString de = " FROM " + Tx(tabela.Nome) + " NOT INDEXED WHERE " + chave + " > ? ORDER BY " + chave;
    const std::string nome(tabela.Nome);
    std::int64_t ultima = depoisDe;
    for (int pedaco = 1;; ++pedaco) {
        try {
            LinhasLidas linhas(m_Leitor, "SELECT " + ColunasDe(tabela) + de, {qlonglong(ultima)});
            for (int n = 1; linhas.Proxima(); ++n) {
                if (linhas.Inteiro(0) <= ultima) {
                    throw ErroDeLeitura("as linhas não estão em ordem", true);
                }
                const QVariantList valores = Valores(linhas, 0, tabela.Colunas.size());
                faz(linhas.Inteiro(0), &valores);
                ultima = linhas.Inteiro(0);
                if (n % LinhasEntrePerguntas == 0) {
                    m_Leitor.Pergunta();
                }
            }
            return true;
        } catch (const ErroDeLeitura &erro) {
            QVariant seguinte;
            try { // the key stands apart from the rest of the row
                seguinte = m_Leitor.Unico("SELECT " + chave + de + " LIMIT 1", {qlonglong(ultima)});
            } catch (const ErroDeLeitura &) {
            }
            if (seguinte.isNull() || seguinte.toLongLong() <= ultima || pedaco == MaisPedacos) {
                Acha("A tabela " + nome + " não pôde ser lida depois da linha " + CStr(ultima) +
                     ": o arquivo está danificado (" + erro.what() + ").");
                return false;
            }
            ultima = seguinte.toLongLong();
            Acha("A linha " + CStr(ultima) + " da tabela " + nome + " não pôde ser lida: o arquivo está danificado (" +
                 erro.what() + ").");
            faz(ultima, nullptr);
        }
    }
}

bool Exame::TemTabelas(const QStringList &nomes)
{
    QStringList lugares;
    QVariantList valores;
    for (const QString &nome : nomes) {
        lugares.push_back("?");
        valores.push_back(nome);
    }
    return m_Leitor
               .Unico("SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN (" + lugares.join(", ") +
                          ")",
                      valores)
               .toLongLong() == nomes.size();
}

bool Exame::MesmoEsquema()
{
    ItensDoEsquema achados;
    LinhasLidas linhas(m_Leitor, PedeEsquema);
    while (linhas.Proxima()) {
        achados[{linhas.Texto(0), linhas.Texto(1)}] = {linhas.Texto(2), linhas.Texto(3), linhas.Texto(4)};
    }
    return achados == EsquemaNovo(Esquema::Versao);
}

bool Exame::Reconhece()
{
    const auto recusa = [&](const std::string &frase) {
        Resultado.Como = ResultadoDaConferencia::Desfecho::NaoConferida;
        Resultado.Frase = frase;
        return false;
    };
    const bool marcado = m_Leitor.Unico("PRAGMA application_id").toLongLong() == Esquema::Aplicacao;
    const bool deAgora = TemTabelas({"ESQUEMA", "REGISTRO", "HISTORICO"});
    if (!deAgora && !TemTabelas({"ESQUEMA", "EQUIPAMENTO", "AFERICAO", "HISTORICO"})) {
        return recusa(ErroSql(MotivoSql::Estranho, "").Descricao);
    }
    if (deAgora && !marcado) {
        Acha("O arquivo não tem a marca dos registros de equipamentos.");
    }
    QVariant versao;
    try {
        versao = m_Leitor.Unico("SELECT MAX(Versao) FROM ESQUEMA");
    } catch (const ErroDeLeitura &) { // told by the table itself
    }
    m_Versao = versao.toLongLong();
    // By what it says of itself a registry would be looked through less.
    if (m_Versao == Esquema::Versao || (deAgora && (versao.isNull() || marcado) && MesmoEsquema())) {
        m_Versao = Esquema::Versao;
        return true;
    }
    if (m_Versao > Esquema::Versao) {
        return recusa(FraseDeMaisNova(m_Versao));
    }
    if (deAgora) { // from version 2 on everything is proved, by the tables of its own version
        m_Versao = m_Versao >= 2 ? m_Versao : Esquema::Versao;
        return true;
    }
    Tenta(1, "o registro da versão anterior", [&] { ConfereAntigo(); });
    return false;
}

void Exame::ConfereAntigo()
{
    ConfereArquivo(false);
    Tenta(0.9, "os documentos", [&] {
        LinhasLidas linhas(m_Leitor, "SELECT NroDocumento, Tamanho, Sha256, Conteudo FROM DOCUMENTO");
        while (linhas.Proxima()) {
            ConfereDocumento("O documento " + CStr(linhas.Inteiro(0)), linhas.Inteiro(1), linhas.Valor(2).toString(),
                             linhas.Valor(3).toByteArray(), "");
        }
    });
    Resultado.Como =
        Achados == 0 ? ResultadoDaConferencia::Desfecho::Inteira : ResultadoDaConferencia::Desfecho::ComAchados;
    Resultado.Frase = (Achados == 0 ? "Nada foi encontrado no arquivo, nas referências nem nos documentos"
                                    : "A conferência encontrou " + Contados(Achados, "problema", "problemas")) +
                      ". O registro é da versão " + CStr(m_Versao) +
                      ", cujo histórico não prova nada: abra-o com este programa, que o atualiza, e confira de novo.";
}

// A registry without an identity is not the one of any head, whatever else is found in it.
void Exame::RecusaCabeca()
{
    Resultado.Achados.push_back("A cabeça do histórico não é deste arquivo: ela é de um registro que tem identidade, e "
                                "este não tem.");
    if (Resultado.Como == ResultadoDaConferencia::Desfecho::Inteira) {
        Resultado.Como = ResultadoDaConferencia::Desfecho::ComAchados;
    }
}

void Exame::ConfereArquivo(bool rapido)
{
    Tenta(0.25, "a estrutura do arquivo", [&] {
        LinhasLidas linhas(m_Leitor, rapido ? "PRAGMA quick_check(100)" : "PRAGMA integrity_check(100)");
        while (linhas.Proxima()) {
            if (linhas.Texto(0) != "ok") {
                Acha("O banco de dados acusa um dano no arquivo: " + linhas.Texto(0) + ".");
            }
        }
    });
    Tenta(0.3, "as referências entre as tabelas", [&] {
        LinhasLidas linhas(m_Leitor, "SELECT \"table\", rowid, parent FROM pragma_foreign_key_check");
        while (linhas.Proxima()) {
            AchaSolta(linhas.Texto(0), linhas.Inteiro(1), linhas.Texto(2));
        }
    });
}

void Exame::AchaSolta(const std::string &tabela, std::int64_t chave, const std::string &para)
{
    Acha(ComecoDeFrase(m_Palavras.Linha(tabela, chave)) + " se refere a uma linha de " + para + " que não existe.");
}

void Exame::ConfereEsquema()
{
    Tenta(m_Parte, "as tabelas e as suas guardas", [&] {
        ItensDoEsquema faltam = EsquemaNovo(m_Versao);
        LinhasLidas linhas(m_Leitor, PedeEsquema);
        while (linhas.Proxima()) {
            const std::pair<std::string, std::string> item{linhas.Texto(0), linhas.Texto(1)};
            const auto esperado = faltam.find(item);
            if (esperado == faltam.end()) {
                Acha(ComecoDeFrase(EmPalavras(item)) + " não é do programa: foi posta no registro por outro meio.");
                continue;
            }
            if (esperado->second != ItemDoEsquema{linhas.Texto(2), linhas.Texto(3), linhas.Texto(4)}) {
                Acha(ComecoDeFrase(EmPalavras(item)) + " não é a do programa: foi mudada por outro meio.");
            }
            faltam.erase(esperado);
        }
        for (const auto &[item, esperado] : faltam) {
            Acha(ComecoDeFrase(EmPalavras(item)) + " falta no registro: foi tirada por outro meio.");
        }
    });
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        if (tabela.Desde > m_Versao) {
            continue;
        }
        Tenta(m_Parte, "a tabela " + std::string(tabela.Nome), [&] {
            if (!PodeSerLida(tabela)) {
                m_Ilegiveis.insert(std::string(tabela.Nome));
                Acha("A tabela " + std::string(tabela.Nome) + " não tem as colunas do programa e não foi conferida.");
            }
        });
    }
    ConfereVersoes();
}

void Exame::ConfereVersoes()
{
    Tenta(m_Parte, "as versões do registro", [&] { LeVersoes(); });
}

void Exame::Recebe(const std::vector<std::string> &achados, const std::set<std::string> &naoLidas)
{
    for (const std::string &achado : achados) {
        Acha(achado);
    }
    m_Ilegiveis.insert(naoLidas.begin(), naoLidas.end());
}

// Something else under the name of a table may answer anything, and without end.
bool Exame::PodeSerLida(const Esquema::Tabela &tabela)
{
    const QString criada =
        m_Leitor.Unico("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?", {Tx(tabela.Nome)}).toString();
    std::set<std::string> colunas;
    LinhasLidas linhas(m_Leitor, "SELECT name, hidden FROM pragma_table_xinfo(?)", {Tx(tabela.Nome)});
    while (linhas.Proxima()) {
        if (linhas.Inteiro(1) == 0) {
            colunas.insert(linhas.Texto(0));
        }
    }
    return criada.startsWith("CREATE TABLE ") && std::ranges::all_of(tabela.Colunas, [&](const auto &coluna) {
               return colunas.count(std::string(coluna.Nome)) == 1;
           });
}

void Exame::LeVersoes()
{
    std::vector<std::int64_t> versoes;
    const Esquema::Tabela &tabela = *Esquema::Acha("ESQUEMA");
    if (m_Ilegiveis.count("ESQUEMA") > 0) {
        return;
    }
    CadaLinha(tabela, std::numeric_limits<std::int64_t>::min(), [&](std::int64_t versao, const QVariantList *) {
        versoes.push_back(versao);
        if (!m_Leitor.LugarDaChaveVazio("ESQUEMA", "Versao", versao)) {
            Acha("A linha " + CStr(versao) + " de ESQUEMA não está gravada como o banco de dados a grava.");
        }
    });
    // It was made in one of them, and went from each to the next.
    const std::int64_t atual = m_Versao;
    bool seguidas = !versoes.empty() && versoes.front() >= 1 && versoes.back() == atual;
    for (std::size_t n = 1; n < versoes.size(); ++n) {
        seguidas = seguidas && versoes[n] == versoes[n - 1] + 1;
    }
    if (!seguidas) {
        std::string lidas;
        for (const std::int64_t versao : versoes) {
            lidas += (lidas.empty() ? "" : ", ") + CStr(versao);
        }
        Acha("O registro diz ter passado pelas versões " + (lidas.empty() ? "nenhuma" : lidas) +
             ", e não por aquelas que levam à versão " + CStr(atual) + ".");
    }
}

void Exame::ConfereColunas(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores)
{
    for (std::size_t n = 0; n < tabela.Colunas.size(); ++n) {
        const Esquema::Coluna &coluna = tabela.Colunas[n];
        const QVariant &valor = valores[static_cast<qsizetype>(n)];
        std::string recusa = RecusaDoTipo(coluna, valor);
        if (recusa.empty()) {
            recusa = coluna.Recusa(valor);
        }
        if (!recusa.empty()) {
            Acha(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, chave)) + ": " +
                 PalavrasDaConferencia::Coluna(tabela.Nome, coluna.Nome) + " " + recusa + ".");
        }
    }
}

void Exame::ConfereCorrente()
{
    if (m_Ilegiveis.count("HISTORICO") == 0) {
        Tenta(0.5, "a corrente do histórico", [&] { ConfereCorrenteDepoisDe(0); });
    }
}

void Exame::ConfereFimDaCorrente(std::int64_t quantas, std::optional<std::int64_t> contadas)
{
    if (m_Ilegiveis.count("HISTORICO") > 0) {
        return;
    }
    Tenta(0.8, "o fim da corrente do histórico", [&] {
        const std::int64_t fim = m_Leitor.Unico("SELECT MAX(Nro) FROM HISTORICO").toLongLong();
        const std::int64_t ha = contadas ? *contadas : m_Leitor.Unico("SELECT SUM(1) FROM HISTORICO").toLongLong();
        if (ha != fim) {
            Acha("O histórico vai até a entrada " + CStr(fim) + " e tem " + Contados(ha, "entrada", "entradas") + ".");
        }
        ConfereCorrenteDepoisDe(std::max(fim, quantas) - quantas);
    });
}

void Exame::ConfereCorrenteDepoisDe(std::int64_t inicio)
{
    const Esquema::Tabela &tabela = *Esquema::Acha("HISTORICO");
    const std::int64_t fim = m_Leitor.Unico("SELECT MAX(Nro) FROM HISTORICO").toLongLong();
    // From the start no entry is left out, not even one whose number cannot be.
    const std::int64_t lidasDepoisDe = inicio > 0 ? inicio : std::numeric_limits<std::int64_t>::min();
    const double parte = m_Parte;
    std::string anterior =
        inicio == 0 ? Historico::Origem(S(m_Leitor.Unico("SELECT Identificador FROM REGISTRO").toString()))
                    : S(m_Leitor.Unico("SELECT Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(inicio)}).toString());
    std::int64_t esperado = inicio + 1;
    bool seguro = true; // the entry before was read
    CadaLinha(tabela, lidasDepoisDe, [&](std::int64_t nro, const QVariantList *linha) {
        if (nro > esperado) {
            Acha(nro == esperado + 1
                     ? "Falta a entrada " + CStr(esperado) + " do histórico."
                     : "Faltam as entradas " + CStr(esperado) + " a " + CStr(nro - 1) + " do histórico.");
            seguro = false;
        }
        esperado = std::min(nro, std::numeric_limits<std::int64_t>::max() - 1) + 1;
        if (linha == nullptr) {
            seguro = false;
            return;
        }
        m_Parte = parte + (0.5 - parte) * static_cast<double>(nro - inicio) /
                              static_cast<double>(std::max<std::int64_t>(fim - inicio, 1));
        const QVariantList &valores = *linha;
        ConfereColunas(tabela, nro, valores);
        if (!m_Leitor.LugarDaChaveVazio("HISTORICO", "Nro", nro)) {
            Acha("A entrada " + CStr(nro) + " do histórico não está gravada como o banco de dados a grava.");
        }
        const std::string elo = S(valores.back().toString());
        const std::string entidade = S(valores[7].toString());
        const std::int64_t daEntidade = valores[8].toLongLong();
        if (seguro && Historico::Encadeia(anterior, nro, valores.mid(1, valores.size() - 2)) != elo) {
            const EntradaLida entrada{nro, valores[1], valores[2], valores[3], S(valores[9].toString()), {}, {}};
            Acha("A corrente do histórico se parte na entrada " + CStr(nro) + " (" +
                 m_Palavras.Linha(entidade, daEntidade) + ", " + m_Palavras.Autor(entrada) +
                 "): ela, ou a anterior, não é a que foi gravada.");
        }
        m_UltimasTocadas.push_back({entidade, daEntidade});
        if (m_UltimasTocadas.size() > MaisTocadas) {
            m_UltimasTocadas.pop_front();
        }
        seguro = true;
        anterior = elo;
        Resultado.Fim = {nro, elo, valores[1].toLongLong(), !valores[2].isNull()};
    });
    if (Resultado.Fim.Tamanho == 0) {
        Acha("O histórico do registro está vazio.");
    }
}

// The entries of one row.
struct Exame::Grupo {
    std::int64_t Chave = 0;
    EntradaLida Ultima;
};

// The entries of a table's rows, row by row in the order of their keys.
class Exame::Grupos {
  public:
    Grupos(Exame &exame, const Esquema::Tabela &tabela)
        : m_Exame(exame),
          m_Tabela(tabela),
          m_Entradas(exame.m_Leitor,
                     "SELECT NroEntidade, " + PalavrasDaConferencia::ColunasDaEntrada() +
                         " FROM HISTORICO WHERE Entidade = ? ORDER BY NroEntidade, Nro",
                     {Tx(tabela.Nome)}),
          m_Ha(m_Entradas.Proxima())
    {
    }

    // The next one up to that key; nothing when there is none.
    std::optional<Grupo> Ate(std::int64_t chave)
    {
        if (!m_Ha || m_Entradas.Inteiro(0) > chave) {
            return std::nullopt;
        }
        Grupo grupo{m_Entradas.Inteiro(0), {}};
        while (m_Ha && m_Entradas.Inteiro(0) == grupo.Chave) {
            EntradaLida entrada = PalavrasDaConferencia::LeEntrada(m_Entradas, 1);
            m_Exame.ConfereAntes(m_Tabela.Nome, grupo.Chave, grupo.Ultima, entrada);
            grupo.Ultima = std::move(entrada);
            m_Ha = m_Entradas.Proxima();
        }
        return grupo;
    }

  private:
    Exame &m_Exame;
    const Esquema::Tabela &m_Tabela;
    LinhasLidas m_Entradas;
    bool m_Ha;
};

// Those of version 1 wrote down less than the row has.
void Exame::ConfereAntes(std::string_view entidade, std::int64_t chave, const EntradaLida &anterior,
                         const EntradaLida &entrada)
{
    const std::string antes = S(entrada.Antes.toString());
    const auto concordam = [&](bool emParte) {
        const QJsonObject um = PalavrasDaConferencia::Objeto(antes);
        const QJsonObject outro = PalavrasDaConferencia::Objeto(anterior.Depois);
        return emParte ? ConcordamNoComum(um, outro) : um == outro;
    };
    if (antes != anterior.Depois && !concordam(entrada.Fuso.isNull())) {
        Acha("A entrada " + CStr(entrada.Nro) + " do histórico (" + m_Palavras.Linha(entidade, chave) + ", " +
             m_Palavras.Autor(entrada) + ") não parte do que a entrada " + CStr(anterior.Nro) + " deixou.");
    }
    if (entrada.Acao == "migra" && anterior.Nro > 0 &&
        !ConcordamNoComum(PalavrasDaConferencia::Objeto(antes), PalavrasDaConferencia::Objeto(entrada.Depois))) {
        Acha(ComecoDeFrase(m_Palavras.Linha(entidade, chave)) +
             " já era diferente do seu histórico quando o registro veio para a versão 2; a última mudança registrada "
             "antes é " +
             m_Palavras.Autor(anterior) + ".");
    }
}

void Exame::AchaFaltaDeLinha(std::string_view tabela, std::int64_t chave, const EntradaLida &ultima)
{
    Acha(ComecoDeFrase(m_Palavras.Linha(tabela, chave)) +
         " está no histórico e não está mais na tabela; a última mudança registrada é " + m_Palavras.Autor(ultima) +
         ".");
}

void Exame::ConfereContraHistorico(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores,
                                   const EntradaLida &ultima)
{
    if (ultima.Nro == 0) {
        Acha(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, chave)) +
             " está na tabela e não está no histórico: foi posta no registro por outro meio.");
        return;
    }
    const std::string nome(tabela.Nome);
    const std::string agora = Historico::RetratoDe(nome, valores);
    if (agora == ultima.Depois) {
        return;
    }
    const QJsonObject era = PalavrasDaConferencia::Objeto(ultima.Depois);
    const QJsonObject e = PalavrasDaConferencia::Objeto(agora);
    std::string diferencas;
    for (const Esquema::Coluna &coluna : tabela.Colunas) {
        const QString membro = Tx(coluna.Nome);
        if (coluna.Tipo == Esquema::Forma::Octetos || era.value(membro) == e.value(membro)) {
            continue;
        }
        diferencas +=
            (diferencas.empty() ? "" : ", ") + PalavrasDaConferencia::Coluna(tabela.Nome, coluna.Nome) +
            (Historico::EhSegredo(coluna.Nome) ? " não é mais o que foi registrado"
                                               : " era " + PalavrasDaConferencia::Valor(coluna, era.value(membro)) +
                                                     " e é " + PalavrasDaConferencia::Valor(coluna, e.value(membro)));
    }
    if (!diferencas.empty()) {
        Acha(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, chave)) + ": " + diferencas +
             "; a última mudança registrada é " + m_Palavras.Autor(ultima) + ".");
    }
}

void Exame::ConfereDerivados(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores)
{
    const auto valor = [&](std::string_view coluna) {
        return valores[std::ranges::find(tabela.Colunas, coluna, &Esquema::Coluna::Nome) - tabela.Colunas.begin()];
    };
    const auto texto = [&](std::string_view coluna) { return S(valor(coluna).toString()); };
    const auto acha = [&](std::string_view coluna, const std::string &porque) {
        Acha(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, chave)) + ": " +
             PalavrasDaConferencia::Coluna(tabela.Nome, coluna) + " " + porque + ".");
    };
    const auto exige = [&](std::string_view coluna, const std::string &certo, std::string_view origem) {
        if (texto(coluna) != certo) {
            acha(coluna, "não é o que se faz de " + PalavrasDaConferencia::Coluna(tabela.Nome, origem));
        }
    };
    const auto exigeMunicipio = [&] {
        const std::int64_t municipio = valor("CodMunic").toLongLong();
        if (municipio != 0 && !Referencias::Tabelas().TemMunicipio(static_cast<std::int32_t>(municipio))) {
            acha("CodMunic", CStr(municipio) + " não existe");
        }
    };
    if (tabela.Nome == "EQUIPAMENTO") {
        for (const std::string_view codigo : {"Codigo", "SubCodigo"}) {
            const std::string ofensa = Codigos::Ofende(texto(codigo));
            if (!ofensa.empty() && Resultado.Avisos.size() < MaisFrases) {
                Resultado.Avisos.push_back(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, chave)) + ": " +
                                           PalavrasDaConferencia::Coluna(tabela.Nome, codigo) + " " + ofensa +
                                           ", o que hoje não seria aceito.");
            }
        }
        exige("CodigoChave", UCase(texto("Codigo")), "Codigo");
        exige("CodigoBusca", TextoBusca(texto("Codigo")), "Codigo");
        exige("SubCodigoBusca", TextoBusca(texto("SubCodigo")), "SubCodigo");
        const TipoOferecido *tipo = Referencias::Tabelas().Tipo(texto("TipoEquip"));
        if (tipo == nullptr) {
            acha("TipoEquip", "\"" + texto("TipoEquip") + "\" não existe");
        } else if (valor("TrabFoto").toLongLong() != (tipo->TrabFoto ? 1 : 2)) {
            acha("TrabFoto", "não é o do tipo do equipamento");
        }
        const std::int64_t rejeicao = valor("NroIntRejLimDif").toLongLong();
        if (rejeicao != 0 && !Referencias::Tabelas().TemRejeicao(static_cast<std::int32_t>(rejeicao))) {
            acha("NroIntRejLimDif", CStr(rejeicao) + " não existe");
        }
        exigeMunicipio();
    } else if (tabela.Nome == "LOGRADOURO") {
        exige("NomeBusca", TextoBusca(texto("Nome")), "Nome");
        exigeMunicipio();
    } else if (tabela.Nome == "USUARIO") {
        exige("Chave", ChaveSemCaixa(texto("Usuario")), "Usuario");
        exigeMunicipio();
    } else if (tabela.Nome == "OPERACAO" || tabela.Nome == "REPETICAO") {
        if (texto("Elo") != Repeticao::Elo(std::string(tabela.Nome), valores.first(valores.size() - 1))) {
            Acha("A linha " + CStr(chave) + " de " + std::string(tabela.Nome) +
                 " foi mudada por outro meio: a sua soma não confere.");
        }
    } else if (tabela.Nome == "ENTRADA_RECUSADA") {
        if (texto("Soma") !=
            TentativasDoUsuario::Soma(static_cast<std::int32_t>(valor("Numero").toLongLong()), texto("Estacao"),
                                      {valor("Vezes").toLongLong(), valor("EsperaAte").toLongLong()})) {
            Acha("A contagem de senhas incorretas na linha " + CStr(chave) +
                 " de ENTRADA_RECUSADA foi mudada por outro meio: a sua soma não confere.");
        }
    }
}

void Exame::ConfereDocumento(const std::string &nome, std::int64_t tamanho, const QString &soma,
                             const QByteArray &conteudo, const std::string &autor)
{
    ++Documentos;
    m_Leitor.Pergunta();
    if (conteudo.size() != tamanho) {
        Acha(nome + " tem " + CStr(conteudo.size()) + " bytes e foi guardado com " + CStr(tamanho) + autor + ".");
    }
    if (Q(Resumo(conteudo)) != soma) {
        Acha(nome + " não tem mais o conteúdo com que foi guardado" + autor + ".");
    }
}

void Exame::ConfereTabela(const Esquema::Tabela &tabela)
{
    const std::string nome(tabela.Nome);
    const std::string chaveDela(tabela.Chave().Nome);
    const double parte = m_Parte;
    const double ate = parte + 0.4 / static_cast<double>(Esquema::Tabelas().size());
    const double ultima = std::max(1.0, m_Leitor.Unico("SELECT MAX(" + Q(chaveDela) + ") FROM " + Q(nome)).toDouble());
    const bool contraHistorico = tabela.ComHistorico && m_Ilegiveis.count("HISTORICO") == 0;
    std::optional<Grupos> grupos;
    if (contraHistorico) {
        grupos.emplace(*this, tabela);
    }
    // Entries that cannot be read are told once, and no row is then said to lack them.
    const auto entradasAte = [&](std::int64_t chave) -> std::optional<Grupo> {
        try {
            return grupos ? grupos->Ate(chave) : std::nullopt;
        } catch (const ErroDeLeitura &erro) {
            grupos.reset();
            Acha("As entradas do histórico sobre a tabela " + nome +
                 " não puderam ser lidas até o fim: o arquivo está danificado (" + erro.what() + ").");
            return std::nullopt;
        }
    };
    std::int64_t linhas = 0;
    const bool inteira =
        CadaLinha(tabela, std::numeric_limits<std::int64_t>::min(), [&](std::int64_t chave, const QVariantList *linha) {
            std::optional<Grupo> grupo;
            while ((grupo = entradasAte(chave)) && grupo->Chave < chave) {
                AchaFaltaDeLinha(tabela.Nome, grupo->Chave, grupo->Ultima);
            }
            ++linhas;
            if (linha == nullptr) {
                return;
            }
            m_Parte = parte + (ate - parte) * std::clamp(static_cast<double>(chave) / ultima, 0.0, 1.0);
            const QVariantList &valores = *linha;
            ConfereColunas(tabela, chave, valores);
            if (!m_Leitor.LugarDaChaveVazio(nome, chaveDela, chave)) {
                Acha(ComecoDeFrase(m_Palavras.Linha(nome, chave)) + " não está gravado como o banco de dados grava.");
            }
            if (grupos) {
                ConfereContraHistorico(tabela, chave, valores, grupo ? grupo->Ultima : EntradaLida{});
            }
            ConfereDerivados(tabela, chave, valores);
            if (nome == "DOCUMENTO") {
                ConfereDocumento("O documento " + CStr(chave), valores[2].toLongLong(), valores[3].toString(),
                                 valores[7].toByteArray(), grupo ? " " + m_Palavras.Autor(grupo->Ultima) : "");
            }
            const bool seguidas = nome == "ENTRADA_RECUSADA" || nome == "OPERACAO" || nome == "REPETICAO";
            if (seguidas && chave != linhas) {
                Acha("A linha " + CStr(chave) + " de " + nome + " deveria ser a " + CStr(linhas) +
                     ": foi posta, tirada ou mudada por outro meio.");
            }
        });
    std::optional<Grupo> grupo;
    while (inteira && (grupo = entradasAte(std::numeric_limits<std::int64_t>::max()))) {
        AchaFaltaDeLinha(tabela.Nome, grupo->Chave, grupo->Ultima);
    }
    Linhas += linhas;
    m_Parte = ate;
}

void Exame::ConfereTabelas()
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        if (tabela.Nome != "HISTORICO" && tabela.Nome != "ESQUEMA" && tabela.Desde <= m_Versao &&
            m_Ilegiveis.count(std::string(tabela.Nome)) == 0) {
            Tenta(m_Parte, "a tabela " + std::string(tabela.Nome), [&] { ConfereTabela(tabela); });
        }
    }
}

void Exame::ConfereTocadas()
{
    Tenta(0.9, "as linhas mudadas por último", [&] {
        for (const auto &[entidade, chave] : std::set(m_UltimasTocadas.begin(), m_UltimasTocadas.end())) {
            const Esquema::Tabela *tabela = Esquema::Acha(entidade);
            if (tabela == nullptr || !tabela->ComHistorico || m_Ilegiveis.count(entidade) > 0) {
                continue;
            }
            const EntradaLida ultima = m_Palavras.Ultima(entidade, chave);
            LinhasLidas linha(m_Leitor,
                              "SELECT " + Historico::ColunasDoRetrato(entidade) + " FROM " + Q(entidade) + " WHERE " +
                                  Tx(tabela->Chave().Nome) + " = ?",
                              {qlonglong(chave)});
            if (!linha.Proxima()) {
                AchaFaltaDeLinha(entidade, chave, ultima);
                continue;
            }
            ++Linhas;
            const auto quantas = static_cast<std::size_t>(Historico::ColunasDoRetrato(entidade).count(',')) + 1;
            ConfereContraHistorico(*tabela, chave, Valores(linha, 0, quantas), ultima);
        }
    });
}

void Exame::ConfereReferencia(const std::string &tabela, const std::string &coluna, const std::string &falta)
{
    const Esquema::Tabela &declarada = *Esquema::Acha(tabela);
    const QString chave = Tx(declarada.Chave().Nome);
    Tenta(m_Parte, "as referências de " + tabela, [&] {
        LinhasLidas linhas(m_Leitor, "SELECT t." + chave + ", t." + Q(coluna) + " FROM " + Q(tabela) +
                                         " t NOT INDEXED WHERE " + Q(falta));
        while (linhas.Proxima()) {
            Acha(ComecoDeFrase(m_Palavras.Linha(tabela, linhas.Inteiro(0))) + ": " +
                 PalavrasDaConferencia::Coluna(tabela, coluna) + " \"" + linhas.Texto(1) + "\" não existe.");
        }
    });
}

// What the database itself would demand; of a connection that only reads it does not.
void Exame::ConfereCondicoes()
{
    for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
        for (const Esquema::Condicao &condicao : tabela.Condicoes) {
            Tenta(m_Parte, "as condições de " + std::string(tabela.Nome), [&] {
                LinhasLidas linhas(m_Leitor,
                                   QString("SELECT %1 FROM %2 NOT INDEXED WHERE NOT (%3)")
                                       .arg(Tx(tabela.Chave().Nome), Tx(tabela.Nome), Tx(condicao.Expressao)));
                while (linhas.Proxima()) {
                    Acha(ComecoDeFrase(m_Palavras.Linha(tabela.Nome, linhas.Inteiro(0))) + ": não vale a condição \"" +
                         S(Tx(condicao.Nome).replace('_', ' ')) + "\".");
                }
            });
        }
    }
}

void Exame::ConfereReferencias()
{
    ConfereReferencia("SENSOR", "CodLograd",
                      "t.CodLograd <> 0 AND NOT EXISTS (SELECT 1 FROM LOGRADOURO l WHERE l.CodLograd = t.CodLograd)");
    ConfereReferencia("USUARIO", "Setor",
                      "t.Setor <> '' AND NOT EXISTS (SELECT 1 FROM SETOR s WHERE s.CodCliente = t.CodCliente AND "
                      "s.Nome = t.Setor)");
    ConfereReferencia("EQUIPAMENTO", "SetorInc",
                      "t.SetorInc <> '' AND NOT EXISTS (SELECT 1 FROM CLIENTE c JOIN SETOR s ON s.CodCliente = "
                      "c.CodCliente WHERE c.Nome = t.ClienteInc AND s.Nome = t.SetorInc)");
    ConfereReferencia("EQUIPAMENTO", "ClienteTrans",
                      "NOT EXISTS (SELECT 1 FROM CLIENTE c WHERE c.Nome = t.ClienteTrans)");
}

namespace {

// Active rows of which each has a stretch, in an order in which those that may meet follow each other.
struct Trechos {
    const char *Tabela;
    const char *Colunas; // key; what has to be the same for two to meet; from; to
    const char *Ordem;
    int Grupo;    // columns of that kind
    bool Fechado; // two that only touch overlap too
};

constexpr std::array<Trechos, 3> TodosOsTrechos = {{
    {"AFERICAO", "NroIntAfericao, NroIntSensor, DataVerificacao, DataVencimento",
     "NroIntSensor, Ativo, DataVerificacao, DataVencimento", 1, true},
    {"LIMITE", "NroInt, NroIntEquip, TipoLimite, Dia, HoraInicio, HoraFim",
     "NroIntEquip, TipoLimite, Dia, HoraInicio, HoraFim", 3, false},
    {"DIA", "NroInt, NroIntEquip, Data, HoraInicio, HoraFim", "NroIntEquip, Data, HoraInicio, HoraFim", 2, false},
}};

} // namespace

void Exame::ConfereSobreposicoes()
{
    for (const Trechos &trechos : TodosOsTrechos) {
        if (m_Ilegiveis.count(trechos.Tabela) > 0) {
            continue;
        }
        Tenta(m_Parte, std::string("as sobreposições em ") + trechos.Tabela, [&] {
            LinhasLidas linhas(m_Leitor, QString("SELECT %1 FROM %2 WHERE Ativo = 1 ORDER BY %3")
                                             .arg(trechos.Colunas, trechos.Tabela, trechos.Ordem));
            QVariantList grupo;
            std::int64_t dona = 0; // of the end that reaches furthest
            std::int64_t fim = 0;
            std::pair<std::int64_t, std::int64_t> anterior;
            while (linhas.Proxima()) {
                QVariantList deste;
                for (int n = 1; n <= trechos.Grupo; ++n) {
                    deste.push_back(linhas.Valor(n));
                }
                const std::pair trecho{linhas.Inteiro(trechos.Grupo + 1), linhas.Inteiro(trechos.Grupo + 2)};
                const bool mesmo = dona != 0 && deste == grupo;
                if (mesmo && (trecho.first < fim || (trechos.Fechado && trecho.first == fim) || trecho == anterior)) {
                    Acha(ComecoDeFrase(m_Palavras.Linha(trechos.Tabela, dona)) + " e " +
                         m_Palavras.Linha(trechos.Tabela, linhas.Inteiro(0)) + " se sobrepõem.");
                }
                if (!mesmo || trecho.second > fim) {
                    dona = linhas.Inteiro(0);
                    fim = trecho.second;
                }
                grupo = deste;
                anterior = trecho;
            }
        });
    }
}

void Exame::ConfereDesde(const CabecaAssinada &cabeca)
{
    Tenta(m_Parte, "a cabeça guardada fora do registro", [&] {
        const std::string quando = TextoDoMomento(cabeca.Quando) + " (UTC)";
        const std::string qual = "A cabeça de " + quando;
        if (!cabeca.AssinaturaVale()) {
            Acha(qual + " foi alterada depois de exportada: a sua assinatura não confere.");
            return;
        }
        LinhasLidas registro(m_Leitor, "SELECT Identificador, ChavePublica FROM REGISTRO");
        if (!registro.Proxima() || registro.Texto(0) != cabeca.Registro) {
            Acha(qual + " é de outro registro: o dela é o " + cabeca.Registro + ".");
            return;
        }
        if (registro.Texto(1) != cabeca.ChavePublica) {
            Acha(qual + " foi assinada com outra chave que a deste registro: um dos dois foi refeito.");
            return;
        }
        const std::int64_t tamanho = m_Leitor.Unico("SELECT MAX(Nro) FROM HISTORICO").toLongLong();
        if (tamanho < cabeca.Tamanho) {
            Acha("O histórico foi cortado: tinha " + Contados(cabeca.Tamanho, "entrada", "entradas") + " em " + quando +
                 " e tem " + CStr(tamanho) + ".");
            return;
        }
        const QVariant elo = m_Leitor.Unico("SELECT Elo FROM HISTORICO WHERE Nro = ?", {qlonglong(cabeca.Tamanho)});
        if (elo.toString() != Q(cabeca.Elo)) {
            Acha("O histórico foi refeito: até a entrada " + CStr(cabeca.Tamanho) + " não é o mesmo que em " + quando +
                 ".");
        }
    });
}

} // namespace mesa
