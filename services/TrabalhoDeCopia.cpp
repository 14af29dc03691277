#include "services/TrabalhoDeCopia.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "services/DialetoSQLite.h"
#include "services/Esquema.h"

#include <algorithm>
#include <memory>

namespace mesa {

namespace {

constexpr int PaginasPorVez = 64;
constexpr int PassosPorVez = 100000; // of the database's machine, between two looks at whether to go on
constexpr std::size_t MaisAchados = 100;

// Lets a long statement be given up.
class Interruptor {
  public:
    Interruptor(ArquivoSQLite &arquivo, const ParteDoAndamento &andamento) : m_Arquivo(arquivo), m_Andamento(andamento)
    {
        sqlite3_progress_handler(
            arquivo.Aberto(), PassosPorVez,
            [](void *este) { return static_cast<Interruptor *>(este)->Desiste() ? 1 : 0; }, this);
    }
    Interruptor(const Interruptor &) = delete;
    Interruptor &operator=(const Interruptor &) = delete;
    ~Interruptor() { sqlite3_progress_handler(m_Arquivo.Aberto(), 0, nullptr, nullptr); }

    bool Desistiu() const { return m_Desistiu; }

  private:
    bool Desiste()
    {
        try {
            m_Andamento.Diz(0);
        } catch (...) { // nothing passes through the database's own procedures
            m_Desistiu = true;
        }
        return m_Desistiu;
    }

    ArquivoSQLite &m_Arquivo;
    const ParteDoAndamento &m_Andamento;
    bool m_Desistiu = false;
};

} // namespace

void ParteDoAndamento::Diz(double parte) const
{
    if (m_Andamento && !m_Andamento(m_De + (m_Ate - m_De) * parte)) {
        throw Desistencia();
    }
}

FichaDoRegistro LeFicha(ArquivoSQLite &arquivo, const std::string &nome)
{
    const auto tem = [&](const char *tabela) {
        return !arquivo
                    .Coluna(std::string("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = '") + tabela + "'")
                    .empty();
    };
    try {
        FichaDoRegistro ficha;
        if (tem("ESQUEMA")) {
            ficha.Versao = arquivo.Inteiro("SELECT MAX(Versao) FROM ESQUEMA");
        }
        if (ficha.Versao > 0 && tem("EQUIPAMENTO") && tem("AFERICAO") && tem("HISTORICO")) {
            if (ficha.Versao > 1 && arquivo.Inteiro("PRAGMA application_id") == Esquema::Aplicacao && tem("REGISTRO")) {
                ficha.Identificador = arquivo.Texto("SELECT Identificador FROM REGISTRO WHERE Nro = 1");
            }
            return ficha;
        }
    } catch (const ErroSql &erro) {
        if (erro.Motivo != MotivoSql::Danificado) {
            throw;
        }
        throw Falha(NumeroFalha::ErroInterno, "Servicos",
                    nome + " está com defeito ou não é um registro (" + erro.Detalhe + ").");
    }
    throw Falha(NumeroFalha::ErroInterno, "Servicos", nome + " não é um registro de equipamentos.");
}

void CopiaPaginas(ArquivoSQLite &de, const std::filesystem::path &para, const ParteDoAndamento &andamento)
{
    ArquivoSQLite destino(para, ArquivoSQLite::Modo::Gravar);
    // Nobody sees the file before it is whole and on the disk.
    for (const char *comando :
         {"PRAGMA locking_mode = EXCLUSIVE", "PRAGMA journal_mode = OFF", "PRAGMA synchronous = OFF"}) {
        destino.Comanda(comando);
    }
    // One moment of the registry, however long it takes: what others save meanwhile is not in it and does not begin it
    // anew.
    de.Comanda("BEGIN; SELECT COUNT(*) FROM sqlite_schema");
    try {
        const std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup *)> copia(
            sqlite3_backup_init(destino.Aberto(), "main", de.Aberto(), "main"), sqlite3_backup_finish);
        if (!copia) {
            destino.Exige(sqlite3_extended_errcode(destino.Aberto()));
        }
        int codigo = SQLITE_OK;
        while (codigo == SQLITE_OK) {
            codigo = sqlite3_backup_step(copia.get(), PaginasPorVez);
            const int paginas = sqlite3_backup_pagecount(copia.get());
            if (codigo == SQLITE_OK && paginas > 0) {
                andamento.Diz(1.0 - static_cast<double>(sqlite3_backup_remaining(copia.get())) / paginas);
            }
        }
        if (codigo != SQLITE_DONE) {
            destino.Exige(codigo);
        }
    } catch (...) {
        IgnoraErro([&] { de.Comanda("ROLLBACK"); });
        throw;
    }
    de.Comanda("COMMIT");
    // The pages say that there is a log, and there shall be none.
    if (destino.Texto("PRAGMA journal_mode = DELETE") != "delete") {
        throw ErroSql(MotivoSql::Outro, "journal_mode");
    }
    andamento.Diz(1);
}

std::vector<std::string> Achados(const std::filesystem::path &arquivo, const ConfereArquivo &confere,
                                 const ParteDoAndamento &andamento)
{
    std::vector<std::string> achados;
    {
        ArquivoSQLite parado(arquivo, ArquivoSQLite::Modo::Parado);
        const Interruptor interruptor(parado, andamento);
        try {
            for (const std::string &linha :
                 parado.Coluna("PRAGMA integrity_check(" + std::to_string(MaisAchados) + ")")) {
                if (linha != "ok") {
                    achados.push_back("O banco de dados não está íntegro: " + linha + ".");
                }
            }
        } catch (const ErroSql &erro) {
            if (interruptor.Desistiu()) {
                throw Desistencia();
            }
            if (erro.Motivo != MotivoSql::Danificado) {
                throw;
            }
            achados.push_back("O banco de dados não está íntegro: " + erro.Detalhe + ".");
        }
    }
    if (achados.empty() && confere) {
        andamento.Diz(0.5);
        achados = confere(arquivo.string());
    }
    andamento.Diz(1);
    return achados;
}

std::filesystem::path NomeLivre(const std::filesystem::path &pasta, const std::string &comeco, Data quando)
{
    const std::string nome = comeco + Format(quando, "yyyymmdd-hhnnss");
    std::filesystem::path lugar = pasta / (nome + ".db");
    for (int numero = 2; std::filesystem::exists(std::filesystem::symlink_status(lugar)); ++numero) {
        lugar = pasta / (nome + "-" + std::to_string(numero) + ".db");
    }
    return lugar;
}

std::string TamanhoEmMB(const std::filesystem::path &arquivo)
{
    const double dezenas = static_cast<double>(std::filesystem::file_size(arquivo)) / (1024.0 * 1024.0) * 10;
    const auto decimos = static_cast<std::int32_t>(std::max(1.0, dezenas + 0.5));
    return CStr(decimos / 10) + "," + CStr(decimos % 10) + " MB";
}

} // namespace mesa
