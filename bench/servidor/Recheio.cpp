#include "bench/servidor/Recheio.h"

#include "bench/servidor/Ligacao.h"
#include "services/Esquema.h"
#include "services/Historico.h"
#include "services/Resumo.h"
#include "services/Servicos.h"
#include "services/TextoBusca.h"
#include "services/TextoQt.h"
#include "tests/services/RegistroDeTeste.h"

#include <QVariant>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

constexpr qlonglong Quando = 20260105131500; // UTC
constexpr qlonglong Fuso = -180;
constexpr qlonglong PortoAlegre = 4314902;
constexpr std::size_t Remessa = 1 << 20; // octets that go to the engine at once
constexpr std::array<std::pair<qlonglong, qlonglong>, Recheio::AfericoesPorEquipamento> Periodos{
    {{20240110, 20250109}, {20250110, 20260109}, {20260110, 20270109}}};

std::string NomeDoCliente(int cliente)
{
    return "Autoridade de Trânsito " + std::to_string(cliente + 1);
}

std::string SeteDigitos(std::int32_t numero)
{
    std::array<char, 16> texto{};
    std::snprintf(texto.data(), texto.size(), "%07d", numero);
    return texto.data();
}

// A cell as the engine's copy takes it.
void Escreve(std::string &linhas, const QVariant &valor)
{
    if (valor.isNull()) {
        linhas += "\\N";
        return;
    }
    if (valor.typeId() == QMetaType::QByteArray) {
        linhas += "\\\\x" + valor.toByteArray().toHex().toStdString();
        return;
    }
    for (const char letra : valor.toString().toStdString()) {
        switch (letra) {
        case '\\':
            linhas += "\\\\";
            break;
        case '\n':
            linhas += "\\n";
            break;
        case '\t':
            linhas += "\\t";
            break;
        default:
            linhas += letra;
        }
    }
}

// Rows of one table on their way into it, over a connection of its own.
class Tabela {
  public:
    Tabela(const std::string &onde, const std::string &nome) : m_Ligacao(onde), m_Nome(nome)
    {
        std::string colunas;
        for (const Esquema::Coluna &coluna : Esquema::Acha(nome)->Colunas) {
            colunas += (colunas.empty() ? "" : ", ") + std::string(coluna.Nome);
        }
        m_Ligacao.Executa("SET session_replication_role = replica; SET synchronous_commit = off");
        m_Ligacao.ComecaCopia(nome + " (" + colunas + ")");
    }
    void Poe(const QVariantList &valores)
    {
        for (qsizetype coluna = 0; coluna < valores.size(); ++coluna) {
            m_Linhas += coluna > 0 ? "\t" : "";
            Escreve(m_Linhas, valores[coluna]);
        }
        m_Linhas += '\n';
        if (m_Linhas.size() > Remessa) {
            Manda();
        }
    }
    void Termina()
    {
        Manda();
        m_Ligacao.TerminaCopia();
    }

  private:
    void Manda()
    {
        m_Ligacao.Copia(m_Linhas);
        m_Linhas.clear();
    }

    Ligacao m_Ligacao;
    std::string m_Nome;
    std::string m_Linhas;
};

// Everything that is filled, with the history of it.
class Enchimento {
  public:
    Enchimento(const std::string &onde, std::vector<qlonglong> operadores)
        : m_Documentos(onde, "DOCUMENTO"),
          m_Equipamentos(onde, "EQUIPAMENTO"),
          m_Sensores(onde, "SENSOR"),
          m_Afericoes(onde, "AFERICAO"),
          m_Historico(onde, "HISTORICO"),
          m_Operadores(std::move(operadores))
    {
        Ligacao ligacao(onde);
        const auto ultima = ligacao.Linhas("SELECT Nro, Elo FROM HISTORICO ORDER BY Nro DESC LIMIT 1");
        m_Nro = std::stoll(ultima.at(0).at(0));
        m_Elo = ultima.at(0).at(1);
    }
    void Enche(std::int32_t equipamentos)
    {
        for (std::int32_t numero = 1; numero <= equipamentos; ++numero) {
            Documento(numero);
            Equipamento(numero);
        }
        for (Tabela *tabela : {&m_Documentos, &m_Equipamentos, &m_Sensores, &m_Afericoes, &m_Historico}) {
            tabela->Termina();
        }
    }

  private:
    void Documento(std::int32_t numero)
    {
        const Bytes pdf = Pdf("documento " + std::to_string(numero));
        const QByteArray conteudo(reinterpret_cast<const char *>(pdf.data()), static_cast<qsizetype>(pdf.size()));
        QVariantList linha{qlonglong(numero),
                           Q(NomeDoCliente(Recheio::ClienteDe(numero))),
                           qlonglong(pdf.size()),
                           Q(Resumo(conteudo)),
                           Quando,
                           Fuso,
                           Operador(numero)};
        Historia("DOCUMENTO", numero, "DOCUMENTO", numero, Operador(numero), linha);
        linha.push_back(conteudo);
        m_Documentos.Poe(linha);
    }
    void Equipamento(std::int32_t numero)
    {
        const QString cliente = Q(NomeDoCliente(Recheio::ClienteDe(numero)));
        const QString codigo = Q(SeteDigitos(numero));
        const qlonglong operador = Operador(numero);
        const QVariantList equipamento{qlonglong(numero),
                                       cliente,
                                       "",
                                       codigo,
                                       "",
                                       "Av. Ipiranga, sentido centro",
                                       PortoAlegre,
                                       "U",
                                       "P",
                                       60,
                                       "",
                                       2,
                                       "Fictício 300",
                                       2,
                                       2,
                                       0,
                                       1,
                                       cliente,
                                       operador,
                                       20260105,
                                       101500,
                                       1,
                                       "",
                                       codigo,
                                       Q(TextoBusca(codigo.toStdString())),
                                       "",
                                       1,
                                       1};
        m_Equipamentos.Poe(equipamento);
        Historia("EQUIPAMENTO", numero, "EQUIPAMENTO", numero, operador, equipamento);
        const QVariantList sensor{qlonglong(numero),   qlonglong(numero), 1, 0, 0, 0, "", "", "", 1,
                                  "Av. Ipiranga, 1200"};
        m_Sensores.Poe(sensor);
        Historia("EQUIPAMENTO", numero, "SENSOR", numero, operador, sensor);
        for (const auto &[de, ate] : Periodos) {
            const QVariantList afericao{++m_Afericao,
                                        qlonglong(numero),
                                        Q(std::to_string(m_Afericao)),
                                        "987",
                                        de,
                                        ate,
                                        1,
                                        qlonglong(numero),
                                        1,
                                        "",
                                        1};
            m_Afericoes.Poe(afericao);
            Historia("EQUIPAMENTO", numero, "AFERICAO", m_Afericao, operador, afericao);
        }
    }
    void Historia(const char *raiz, qlonglong nroRaiz, const char *entidade, qlonglong nroEntidade, qlonglong operador,
                  const QVariantList &linha)
    {
        const QVariant nada(QMetaType::fromType<QString>());
        QVariantList campos{Quando,   Fuso,        operador, raiz, nroRaiz, 1,
                            entidade, nroEntidade, "inclui", nada, nada,    Q(Historico::RetratoDe(entidade, linha))};
        m_Elo = Historico::Encadeia(m_Elo, ++m_Nro, campos);
        campos.push_front(qlonglong(m_Nro));
        campos.push_back(Q(m_Elo));
        m_Historico.Poe(campos);
    }
    qlonglong Operador(std::int32_t numero) const
    {
        return m_Operadores.at(static_cast<std::size_t>(Recheio::ClienteDe(numero)));
    }

    Tabela m_Documentos;
    Tabela m_Equipamentos;
    Tabela m_Sensores;
    Tabela m_Afericoes;
    Tabela m_Historico;
    std::vector<qlonglong> m_Operadores; // the first user of each client
    qlonglong m_Afericao = 0;
    std::int64_t m_Nro = 0;
    std::string m_Elo;
};

constexpr const char *TabelasCheias =
    "('documento'::regclass, 'equipamento'::regclass, 'sensor'::regclass, 'afericao'::regclass, 'historico'::regclass)";

// What is kept for every row that comes in: constraints that are indexes, and indexes. Gives the statements that make
// them again.
std::vector<std::string> TiraIndices(Ligacao &ligacao)
{
    std::vector<std::string> voltam;
    for (const auto &linha : ligacao.Linhas(
             std::string(
                 "SELECT conrelid::regclass, quote_ident(conname), pg_get_constraintdef(oid) FROM pg_constraint c "
                 "WHERE contype IN ('x', 'u') AND conrelid IN ") +
             TabelasCheias +
             " AND NOT EXISTS (SELECT 1 FROM pg_constraint f WHERE f.contype = 'f' AND f.conindid = c.conindid)")) {
        ligacao.Executa("ALTER TABLE " + linha[0] + " DROP CONSTRAINT " + linha[1]);
        voltam.push_back("ALTER TABLE " + linha[0] + " ADD CONSTRAINT " + linha[1] + " " + linha[2]);
    }
    for (const auto &linha : ligacao.Linhas(
             std::string(
                 "SELECT i.indexrelid::regclass, pg_get_indexdef(i.indexrelid) FROM pg_index i WHERE i.indrelid IN ") +
             TabelasCheias + " AND NOT EXISTS (SELECT 1 FROM pg_constraint c WHERE c.conindid = i.indexrelid)")) {
        ligacao.Executa("DROP INDEX " + linha[0]);
        voltam.push_back(linha[1]);
    }
    return voltam;
}

// The guards that no setting of a session switches off. Gives the statements that put them back.
std::vector<std::string> TiraGuardas(Ligacao &ligacao)
{
    std::vector<std::string> voltam;
    for (const auto &linha :
         ligacao.Linhas(std::string("SELECT tgrelid::regclass, quote_ident(tgname) FROM pg_trigger WHERE tgenabled = "
                                    "'A' AND tgrelid IN ") +
                        TabelasCheias)) {
        ligacao.Executa("ALTER TABLE " + linha[0] + " DISABLE TRIGGER " + linha[1]);
        voltam.push_back("ALTER TABLE " + linha[0] + " ENABLE ALWAYS TRIGGER " + linha[1]);
    }
    return voltam;
}

} // namespace

std::string Recheio::Usuario(int cliente, int qual)
{
    return "mesa" + std::to_string(cliente) + "x" + std::to_string(qual);
}

int Recheio::ClienteDe(std::int32_t nroIntEquip)
{
    return (nroIntEquip - 1) % Clientes;
}

void Recheio::Enche(const std::string &onde, const std::string &papel, std::int32_t equipamentos)
{
    {
        const Data agora = DataDe(5, 1, 2026, 10, 0, 0);
        const auto servicos = Servicos::Cria(onde + "?papel_de_trabalho=" + papel, TipoDeRegistro::Registro,
                                             [=] { return Instante(agora, Fuso); });
        std::int32_t numero = 0;
        for (int cliente = 0; cliente < Clientes; ++cliente) {
            const std::string nome = NomeDoCliente(cliente);
            servicos->CadastraCliente({cliente + 1, nome, {}, "RS"});
            for (int qual = 0; qual < UsuariosPorCliente; ++qual) {
                servicos->CadastraUsuario(
                    {++numero, Usuario(cliente, qual), Usuario(cliente, qual), cliente + 1, nome, "", 0}, Senha,
                    {"", "I", "A", "E"}, {});
            }
        }
    }
    Ligacao ligacao(onde);
    std::vector<qlonglong> operadores;
    for (int cliente = 0; cliente < Clientes; ++cliente) {
        operadores.push_back(
            std::stoll(ligacao.Valor("SELECT Numero FROM USUARIO WHERE Usuario = '" + Usuario(cliente, 0) + "'")));
    }
    const std::vector<std::string> indices = TiraIndices(ligacao);
    const std::vector<std::string> guardas = TiraGuardas(ligacao);
    Enchimento(onde, operadores).Enche(equipamentos);
    ligacao.Executa("SET maintenance_work_mem = '512MB'");
    for (const std::vector<std::string> *voltam : {&indices, &guardas}) {
        for (const std::string &comando : *voltam) {
            ligacao.Executa(comando);
        }
    }
    // A table that is looked at while it has no rows is taken for one that stays so.
    for (const auto &tabela : ligacao.Linhas("SELECT relname FROM pg_class WHERE relnamespace = 'public'::regnamespace "
                                             "AND relkind = 'r' AND pg_relation_size(oid) > 0")) {
        ligacao.Executa("VACUUM ANALYZE " + tabela.front());
    }
    ligacao.Executa("CHECKPOINT");
}
