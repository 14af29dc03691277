#include "services/MigracaoVersao2.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "services/Esquema.h"
#include "services/Fundacao.h"
#include "services/Historico.h"
#include "services/LogradourosAntigos.h"
#include "services/MapaRegistro.h"
#include "services/NomesCampos.h"
#include "services/Permissoes.h"
#include "services/ServicoLayouts.h"
#include "services/TextoBusca.h"

#include <QStringList>

#include <utility>
#include <vector>

namespace mesa {

namespace {

constexpr const char *Tabelas[] = {"CLIENTE",     "SETOR",     "USUARIO",   "PERMISSAO", "ENTRADA_RECUSADA",
                                   "EQUIPAMENTO", "SENSOR",    "DOCUMENTO", "AFERICAO",  "LIMITE",
                                   "DIA",         "HISTORICO", "ESQUEMA"};
constexpr const char *SemErasao[] = {"CLIENTE",  "SETOR",     "USUARIO", "PERMISSAO", "EQUIPAMENTO", "SENSOR",
                                     "AFERICAO", "DOCUMENTO", "LIMITE",  "DIA",       "HISTORICO"};
constexpr const char *OutrasGuardas[] = {"AFERICAO_SEM_SOBREPOSICAO_NOVA", "AFERICAO_SEM_SOBREPOSICAO",
                                         "DOCUMENTO_SEM_UPDATE", "HISTORICO_SEM_UPDATE"};
constexpr const char *Indices[] = {
    "EQUIPAMENTO_Codigo", "EQUIPAMENTO_Busca", "EQUIPAMENTO_SubBusca", "EQUIPAMENTO_Foto", "EQUIPAMENTO_Setor",
    "EQUIPAMENTO_Agente", "EQUIPAMENTO_Tipo",  "SENSOR_Equip",         "AFERICAO_Sensor",  "LIMITE_Equip",
    "DIA_Equip",          "HISTORICO_Raiz",    "HISTORICO_Entidade"};

// A version for each entry of its history, and one for the entry that the migration writes.
constexpr const char *VersaoDaAfericao = "1 + (SELECT COUNT(*) FROM V1_HISTORICO h WHERE h.Entidade = 'AFERICAO' "
                                         "AND h.NroEntidade = NroIntAfericao)";

// A column of the new table and where it comes from: a column of the old one, or an expression over it.
struct Origem {
    const char *Coluna;
    const char *Expressao;
};

class Passagem {
  public:
    Passagem(Banco &banco, const Instante &agora) : m_Banco(banco), m_Agora(agora) {}

    void Passa()
    {
        Fundacao::EscreveIdentidade(
            m_Banco, ComUsuariosDaAmostra() ? TipoDeRegistro::Amostra : TipoDeRegistro::Registro, m_Agora);
        m_Banco.Insere("ESQUEMA", {{"Versao", 1}});
        Copia("CLIENTE", {{"UF", "'RS'"}, {"Ativo", "1"}, {"Versao", "1"}}); // the one state that version 1 knew
        Copia("SETOR", {{"NroSetor", "rowid"}, {"Ativo", "1"}});
        Copia("USUARIO", {{"TrocaSenha", "2"}, {"Versao", "1"}});
        Copia("PERMISSAO", {{"NroPermissao", "rowid"}, {"Ativo", "1"}});
        NomeiaAdministrador();
        Copia("EQUIPAMENTO", {});
        Copia("SENSOR", {});
        CriaLogradouros();
        CriaLayouts();
        Copia("DOCUMENTO", {{"Fuso", "NULL"}});
        Copia("AFERICAO", {{"Versao", VersaoDaAfericao}});
        Copia("LIMITE", {});
        Copia("DIA", {});
        CopiaHistorico();
        for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
            if (tabela.ComHistorico) {
                RegistraLinhas(tabela);
            }
        }
        for (const char *tabela : Tabelas) {
            m_Banco.Comanda(QString("DROP TABLE V1_%1").arg(tabela));
        }
    }

  private:
    // Version 1 made every registry with the same users, whose password is known to all.
    bool ComUsuariosDaAmostra()
    {
        Consulta achados(m_Banco, "SELECT COUNT(*) FROM V1_USUARIO WHERE (Numero = 101 AND Chave = 'ana') "
                                  "OR (Numero = 202 AND Chave = 'fabio') OR (Numero = 301 AND Chave = 'gilda')");
        achados.Proxima();
        return achados.Inteiro(0) == 3;
    }

    void Copia(const std::string &tabela, const std::vector<Origem> &origens)
    {
        const Esquema::Tabela &nova = *Esquema::Acha(tabela);
        QStringList expressoes;
        for (const Esquema::Coluna &coluna : nova.Colunas) {
            QString expressao = QString::fromUtf8(coluna.Nome.data(), static_cast<qsizetype>(coluna.Nome.size()));
            for (const Origem &origem : origens) {
                if (coluna.Nome == origem.Coluna) {
                    expressao = origem.Expressao;
                }
            }
            expressoes.push_back(expressao);
        }
        Consulta linhas(m_Banco, "SELECT " + expressoes.join(", ") + " FROM V1_" + Q(tabela) + " ORDER BY rowid");
        while (linhas.Proxima()) {
            Celulas celulas;
            for (const Esquema::Coluna &coluna : nova.Colunas) {
                celulas.push_back({coluna.Nome, linhas.Valor(static_cast<int>(celulas.size()))});
                Confere(tabela, coluna, celulas);
            }
            m_Banco.Insere(tabela, celulas);
        }
    }

    static void Confere(const std::string &tabela, const Esquema::Coluna &coluna, const Celulas &celulas)
    {
        const std::string recusa = coluna.Recusa(celulas.back().Valor);
        if (!recusa.empty()) {
            throw Falha(NumeroFalha::ErroInterno, "Servicos",
                        "O registro não pôde ser atualizado: na linha " + S(celulas.front().Valor.toString()) +
                            " da tabela " + tabela + ", o campo \"" + NomeDoCampo(coluna.Nome) + "\" " + recusa +
                            ". Nada foi mudado.");
        }
    }

    // Version 1 had no rights over the registry itself; who may do everything else gets them.
    void NomeiaAdministrador()
    {
        std::int64_t numero = 0;
        {
            Consulta achado(m_Banco, "SELECT MIN(u.Numero) FROM USUARIO u WHERE u.Ativo = 1 AND 4 = (SELECT COUNT(*) "
                                     "FROM PERMISSAO p WHERE p.Numero = u.Numero AND p.Acao IN ('', 'I', 'A', 'E'))");
            achado.Proxima();
            numero = achado.Inteiro(0);
        }
        for (const char *acao : {"U", "T", "C"}) {
            if (numero > 0) {
                m_Banco.Insere("PERMISSAO", {{"Numero", qlonglong(numero)},
                                             {"Sistema", Q(Permissoes::Sistema)},
                                             {"Objeto", Q(Permissoes::ObjetoAdministracao)},
                                             {"Acao", acao},
                                             {"Ativo", Indicador::Sim}});
            }
        }
    }

    // Version 1 computed its streets; those of the sensors keep the codes by which these know them.
    void CriaLogradouros()
    {
        std::vector<Ref<LogradouroED>> usados;
        {
            Consulta codigos(m_Banco, "SELECT DISTINCT CodLograd FROM SENSOR ORDER BY CodLograd");
            while (codigos.Proxima()) {
                if (auto usado = LogradouroDoCodigoAntigo(static_cast<std::int32_t>(codigos.Inteiro(0)))) {
                    usados.push_back(std::move(usado));
                }
            }
        }
        for (const Ref<LogradouroED> &usado : usados) {
            usado->Versao = 1;
            Celulas celulas = MapaRegistro::CelulasDe(*usado);
            celulas.push_back({"NomeBusca", Q(TextoBusca(usado->NomeLograd))});
            m_Banco.Insere("LOGRADOURO", celulas);
        }
    }

    void CriaLayouts()
    {
        for (const Ref<LayoutED> &layout : LayoutsDoPrograma()) {
            MapaRegistro::Insere(m_Banco, "LAYOUT", *layout);
        }
    }

    void CopiaHistorico()
    {
        Historico historico(m_Banco);
        Consulta entradas(m_Banco, "SELECT Quando, NULL, Operador, Raiz, NroRaiz, Versao, Entidade, NroEntidade, Acao, "
                                   "NULL, Antes, Depois FROM V1_HISTORICO ORDER BY Nro");
        while (entradas.Proxima()) {
            QVariantList campos;
            for (int coluna = 0; coluna < 12; ++coluna) {
                campos.push_back(entradas.Valor(coluna));
            }
            historico.Acrescenta(campos);
        }
    }

    // Of which record the row is a part, and in which version that is.
    static QString RaizDe(std::string_view tabela)
    {
        if (tabela == "SENSOR") {
            return "SELECT t.NroIntSensor, 'EQUIPAMENTO', e.NroIntEquip, e.Versao FROM SENSOR t "
                   "JOIN EQUIPAMENTO e ON e.NroIntEquip = t.NroIntEquip ORDER BY 1";
        }
        if (tabela == "AFERICAO") {
            return "SELECT t.NroIntAfericao, 'EQUIPAMENTO', e.NroIntEquip, e.Versao FROM AFERICAO t "
                   "JOIN SENSOR s ON s.NroIntSensor = t.NroIntSensor "
                   "JOIN EQUIPAMENTO e ON e.NroIntEquip = s.NroIntEquip ORDER BY 1";
        }
        const Esquema::Tabela &propria = *Esquema::Acha(tabela);
        const QString chave = Q(std::string(propria.Chave().Nome));
        const QString versao = propria.Acha("Versao") == nullptr ? "1" : "t.Versao";
        return QString("SELECT t.%1, '%2', t.%1, %3 FROM %2 t ORDER BY 1").arg(chave, Q(std::string(tabela)), versao);
    }

    void RegistraLinhas(const Esquema::Tabela &tabela)
    {
        const std::string nome(tabela.Nome);
        Consulta linhas(m_Banco, RaizDe(tabela.Nome));
        while (linhas.Proxima()) {
            Historico(m_Banco).Registra(
                m_Agora, 0, {linhas.Texto(1), linhas.Inteiro(2), linhas.Inteiro(3), nome, linhas.Inteiro(0), "migra"});
        }
    }

    Banco &m_Banco;
    const Instante &m_Agora;
};

} // namespace

Migracao ParaVersao2(const std::vector<QString> &esquema)
{
    Migracao migracao;
    for (const char *tabela : SemErasao) {
        migracao.Comandos.push_back(QString("DROP TRIGGER %1_SEM_DELETE").arg(tabela));
    }
    for (const char *guarda : OutrasGuardas) {
        migracao.Comandos.push_back(QString("DROP TRIGGER %1").arg(guarda));
    }
    for (const char *indice : Indices) {
        migracao.Comandos.push_back(QString("DROP INDEX %1").arg(indice));
    }
    for (const char *tabela : Tabelas) {
        migracao.Comandos.push_back(QString("ALTER TABLE %1 RENAME TO V1_%1").arg(tabela));
    }
    migracao.Comandos.insert(migracao.Comandos.end(), esquema.begin(), esquema.end());
    migracao.Passo = [](Banco &banco, const Instante &agora) { Passagem(banco, agora).Passa(); };
    return migracao;
}

} // namespace mesa
