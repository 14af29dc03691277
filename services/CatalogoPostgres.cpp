#include "services/CatalogoPostgres.h"

#include "services/DialetoPostgres.h"
#include "services/Esquema.h"
#include "services/PalavrasDaConferencia.h"
#include "services/TextoQt.h"
#include "services/Transporte.h"

#include <map>
#include <utility>

namespace mesa {

namespace {

constexpr const char *EsquemaDoRegistro = "public";
constexpr const char *EsquemaDaConferencia = "registro_em_conferencia";

// What an item is, its name, how it was made, and whether it is switched on.
struct Item {
    std::string Feito;
    std::string Ligado;
};
using Itens = std::map<std::pair<std::string, std::string>, Item>; // by kind and name

// What belongs to an extension is not looked at: it is the distribution's.
constexpr const char *PedeItens = R"(
WITH e AS (SELECT oid FROM pg_namespace WHERE nspname = $1),
c AS (SELECT * FROM pg_class WHERE relnamespace = (SELECT oid FROM e) AND NOT EXISTS (
      SELECT 1 FROM pg_depend d WHERE d.classid = 'pg_class'::regclass AND d.objid = pg_class.oid AND d.deptype = 'e'))
SELECT CASE relkind WHEN 'r' THEN 'tabela' WHEN 'v' THEN 'visao' WHEN 'S' THEN 'sequencia' ELSE 'objeto' END, relname,
       concat_ws(' ', relkind, relpersistence, relrowsecurity, relforcerowsecurity, reloptions, relispartition,
                 (SELECT count(*) FROM pg_inherits i WHERE i.inhparent = c.oid OR i.inhrelid = c.oid)), ''
  FROM c WHERE relkind NOT IN ('i', 'I', 't', 'c')
UNION ALL
SELECT 'coluna', relname || '.' || attname,
       concat_ws(' ', format_type(atttypid, atttypmod), attnotnull, attidentity, attgenerated,
                 (SELECT l.collname FROM pg_collation l WHERE l.oid = attcollation),
                 (SELECT pg_get_expr(d.adbin, d.adrelid, true) FROM pg_attrdef d
                   WHERE d.adrelid = attrelid AND d.adnum = attnum)), ''
  FROM pg_attribute JOIN c ON c.oid = attrelid WHERE relkind = 'r' AND attnum > 0 AND NOT attisdropped
UNION ALL
SELECT 'restricao', conname, relname || ' ' || pg_get_constraintdef(o.oid, true) || ' ' || convalidated,
       COALESCE((SELECT string_agg(DISTINCT tgenabled::text, '') FROM pg_trigger t WHERE t.tgconstraint = o.oid), '')
  FROM pg_constraint o JOIN c ON c.oid = conrelid
UNION ALL
SELECT 'indice', c.relname, concat_ws(' ', pg_get_indexdef(c.oid, 0, true), indisunique, indisvalid, indisready), ''
  FROM pg_index JOIN c ON c.oid = indexrelid JOIN c t ON t.oid = indrelid
 WHERE t.relkind = 'r' AND NOT EXISTS (SELECT 1 FROM pg_constraint o WHERE o.conindid = c.oid AND o.contype <> 'f')
UNION ALL
SELECT 'guarda', tgname, pg_get_triggerdef(g.oid, true), tgenabled::text
  FROM pg_trigger g JOIN c ON c.oid = tgrelid WHERE NOT tgisinternal
UNION ALL
SELECT 'funcao', proname || '(' || pg_get_function_identity_arguments(p.oid) || ')',
       concat_ws(' ', (SELECT lanname FROM pg_language l WHERE l.oid = prolang), pg_get_function_result(p.oid), prokind,
                 provolatile, prosecdef, proisstrict, proconfig, probin, prosrc, pg_get_function_sqlbody(p.oid)), ''
  FROM pg_proc p WHERE pronamespace = (SELECT oid FROM e) AND NOT EXISTS (
       SELECT 1 FROM pg_depend d WHERE d.classid = 'pg_proc'::regclass AND d.objid = p.oid AND d.deptype = 'e')
UNION ALL
SELECT 'regra', rulename, pg_get_ruledef(r.oid, true), ev_enabled::text
  FROM pg_rewrite r JOIN c ON c.oid = ev_class WHERE relkind = 'r'
UNION ALL
SELECT 'politica', polname, relname, '' FROM pg_policy JOIN c ON c.oid = polrelid
UNION ALL
SELECT 'operador', oprname, concat_ws(' ', oprleft::regtype, oprright::regtype, oprcode), ''
  FROM pg_operator o WHERE oprnamespace = (SELECT oid FROM e) AND NOT EXISTS (
       SELECT 1 FROM pg_depend d WHERE d.classid = 'pg_operator'::regclass AND d.objid = o.oid AND d.deptype = 'e')
UNION ALL
SELECT 'direito', CASE grantee WHEN 0 THEN 'todos' ELSE grantee::regrole::text END || ' ' || privilege_type || ' ' ||
       objeto, is_grantable::text, ''
  FROM (SELECT relname AS objeto, relowner AS dono, (aclexplode(COALESCE(relacl, acldefault('r', relowner)))).* FROM c
         WHERE relkind <> 'S'
        UNION ALL
        SELECT relname || '.' || attname, relowner, (aclexplode(attacl)).* FROM pg_attribute JOIN c ON c.oid = attrelid
        UNION ALL
        SELECT proname, proowner, (aclexplode(COALESCE(proacl, acldefault('f', proowner)))).* FROM pg_proc p
         WHERE pronamespace = (SELECT oid FROM e) AND NOT EXISTS (
               SELECT 1 FROM pg_depend d
                WHERE d.classid = 'pg_proc'::regclass AND d.objid = p.oid AND d.deptype = 'e')) a
 WHERE grantee <> dono
)";

// What a new registry has nothing to be held against with: sentences already.
constexpr const char *PedeAbusos = R"(
WITH t AS (SELECT c.*, n.nspowner, n.nspacl FROM pg_class c JOIN pg_namespace n ON n.oid = relnamespace
            WHERE nspname = $1 AND relkind = 'r'),
dono AS (SELECT relowner AS oid FROM t WHERE relname = 'esquema'),
quem AS (SELECT DISTINCT grantee AS oid FROM t, aclexplode(relacl) WHERE grantee <> 0 AND grantee <> relowner)
SELECT 'A tabela ' || upper(relname) || ' é de outro dono (' || relowner::regrole || ').' FROM t
 WHERE relowner <> (SELECT oid FROM dono)
UNION ALL
SELECT 'O usuário ' || rolname || ' do banco de dados passa por cima das guardas: é superusuário.'
  FROM quem JOIN pg_roles USING (oid) WHERE rolsuper
UNION ALL
SELECT 'O usuário ' || rolname || ' do banco de dados pode agir como o dono do registro, e desfazer as guardas.'
  FROM quem JOIN pg_roles USING (oid) WHERE NOT rolsuper AND pg_has_role(oid, (SELECT oid FROM dono), 'MEMBER')
UNION ALL
SELECT 'O usuário ' || rolname || ' do banco de dados pode pôr outras coisas entre as do registro.'
  FROM quem JOIN pg_roles USING (oid)
 WHERE NOT rolsuper AND NOT pg_has_role(oid, (SELECT oid FROM dono), 'MEMBER') AND has_schema_privilege(oid, $1, 'CREATE')
UNION ALL
SELECT 'O banco de dados não tem a marca dos registros de equipamentos.'
 WHERE obj_description(to_regclass($1 || '.esquema'), 'pg_class') IS DISTINCT FROM 'registro de equipamentos'
UNION ALL
SELECT 'O banco de dados tem o gatilho de comandos ' || evtname || ', que não é do programa.' FROM pg_event_trigger
UNION ALL
SELECT 'O banco de dados está ajustado para passar por cima das guardas (' || ajuste || ').'
  FROM (SELECT unnest(setconfig) AS ajuste FROM pg_db_role_setting
         WHERE setdatabase IN (0, (SELECT oid FROM pg_database WHERE datname = current_database()))) a
 WHERE ajuste LIKE 'session\_replication\_role=%' AND ajuste <> 'session_replication_role=origin'
)";

// The role that the registry is worked on as: of those that may write, the one that may most.
constexpr const char *PedePapel = R"(
SELECT r.rolname FROM pg_class c CROSS JOIN LATERAL aclexplode(c.relacl) a JOIN pg_roles r ON r.oid = a.grantee
 WHERE c.relnamespace = 'public'::regnamespace AND c.relkind = 'r' AND a.grantee <> c.relowner
 GROUP BY r.rolname HAVING bool_or(a.privilege_type = 'INSERT') ORDER BY count(*) DESC, r.rolname LIMIT 1
)";

std::string Texto(const LigacaoPostgres::Celula &celula)
{
    return celula.value_or("");
}

std::string ComPapel(const std::string &papel)
{
    return "postgresql:///?papel_de_trabalho=" + Q(papel).toUtf8().toPercentEncoding().toStdString();
}

// Texts name the schema as that of the registry, so that those of two can be held against each other.
Itens LeItens(LigacaoPostgres &ligacao, const std::string &esquema)
{
    ligacao.Linhas("SELECT set_config('search_path', quote_ident($1), true)", {esquema});
    Itens itens;
    for (const auto &linha : ligacao.Linhas(PedeItens, {esquema})) {
        itens[{Texto(linha[0]), Texto(linha[1])}] = {
            S(Q(Texto(linha[2])).replace(EsquemaDaConferencia, EsquemaDoRegistro)), Texto(linha[3])};
    }
    return itens;
}

// A table or a column as it is declared: the server has its name in small letters.
std::string Declarado(const std::string &nome)
{
    static const std::map<std::string, std::string> nomes = [] {
        std::map<std::string, std::string> todos;
        const auto poe = [&](const std::string &um) { todos[S(Q(um).toLower())] = um; };
        for (const Esquema::Tabela &tabela : Esquema::Tabelas()) {
            const std::string dela(tabela.Nome);
            poe(dela);
            for (const Esquema::Coluna &coluna : tabela.Colunas) {
                poe(dela + "." + std::string(coluna.Nome));
            }
        }
        return todos;
    }();
    const auto achado = nomes.find(nome);
    return achado == nomes.end() ? nome : achado->second;
}

std::string EmPalavras(const std::pair<std::string, std::string> &item)
{
    static const std::map<std::string, std::string> tipos = {
        {"tabela", "a tabela "}, {"visao", "a visão "},       {"sequencia", "a sequência "},
        {"objeto", "o objeto "}, {"coluna", "a coluna "},     {"restricao", "a restrição "},
        {"indice", "o índice "}, {"guarda", "a guarda "},     {"funcao", "a função "},
        {"regra", "a regra "},   {"politica", "a política "}, {"operador", "o operador "}};
    return tipos.at(item.first) + Declarado(item.second);
}

// nome: "equipe DELETE historico", who, what and on what.
std::string FraseDoDireito(const std::string &nome, const std::string &verbo, const std::string &como)
{
    const std::size_t fimDeQuem = nome.find(' ');
    const std::size_t fimDoQue = nome.find(' ', fimDeQuem + 1);
    const std::string quem = nome.substr(0, fimDeQuem);
    return (quem == "todos" ? "Qualquer usuário" : "O usuário " + quem) + " do banco de dados " + verbo +
           " o direito " + nome.substr(fimDeQuem + 1, fimDoQue - fimDeQuem - 1) + " em " +
           Declarado(nome.substr(fimDoQue + 1)) + como;
}

void Compara(const Itens &novos, const Itens &achados, std::vector<std::string> &frases)
{
    const auto acha = [&](const Itens::value_type &item, const std::string &frase) {
        frases.push_back(ComecoDeFrase(EmPalavras(item.first)) + frase);
    };
    for (const auto &item : achados) {
        const auto esperado = novos.find(item.first);
        const bool direito = item.first.first == "direito";
        if (esperado == novos.end()) {
            direito ? frases.push_back(
                          FraseDoDireito(item.first.second, "tem", ", que não é do programa: foi dado por outro meio."))
                    : acha(item, " não é do programa: foi posta no registro por outro meio.");
        } else if (esperado->second.Feito != item.second.Feito) {
            direito ? frases.push_back(
                          FraseDoDireito(item.first.second, "pode dar a outros", ": foi mudado por outro meio."))
                    : acha(item, " não é a do programa: foi mudada por outro meio.");
        } else if (esperado->second.Ligado != item.second.Ligado) {
            acha(item, " está desligada: foi mudada por outro meio.");
        }
    }
    for (const auto &item : novos) {
        if (achados.count(item.first) == 0) {
            item.first.first == "direito"
                ? frases.push_back(
                      FraseDoDireito(item.first.second, "não tem", ", que é do programa: foi tirado por outro meio."))
                : acha(item, " falta no registro: foi tirada por outro meio.");
        }
    }
}

void FazEsquemaNovo(LigacaoPostgres &ligacao, const std::string &papel)
{
    ligacao.Comanda(std::string("CREATE SCHEMA ") + EsquemaDaConferencia);
    // What an extension gave to the registry's schema is found there.
    ligacao.Comanda(std::string("SET LOCAL search_path = ") + EsquemaDaConferencia + ", " + EsquemaDoRegistro);
    const DialetoPostgres dialeto(papel.empty() ? ligacao.Onde() : ComPapel(papel));
    for (const auto &comandos : {dialeto.Tabelas(), dialeto.Guardas()}) {
        for (QString comando : comandos) {
            if (!comando.startsWith("DO ")) { // what is done to the whole database
                ligacao.Comanda(S(comando.replace(EsquemaDoRegistro, EsquemaDaConferencia)));
            }
        }
    }
}

} // namespace

ResultadoDoCatalogo ConfereCatalogo(LigacaoPostgres &ligacao)
{
    ResultadoDoCatalogo resultado;
    const TransacaoPostgres transacao(ligacao, "BEGIN"); // taken back in any case
    for (const auto &linha : ligacao.Linhas(PedeAbusos, {EsquemaDoRegistro})) {
        resultado.Achados.push_back(Texto(linha[0]));
    }
    const Itens achados = LeItens(ligacao, EsquemaDoRegistro);
    const std::string papel = Texto(ligacao.Unico(PedePapel));
    try {
        FazEsquemaNovo(ligacao, papel);
    } catch (const ErroDoServidor &erro) {
        if (erro.Caiu) {
            throw;
        }
        if (erro.Estado == "42501" || erro.Estado == "25006") { // no right to; a standby, which takes no writes
            resultado.Avisos.push_back("As guardas do banco de dados não foram conferidas, porque o usuário da ligação "
                                       "não pode fazer outras ao lado para comparar: confira o registro também como o "
                                       "dono dele.");
        } else {
            resultado.Achados.push_back("As guardas do banco de dados não puderam ser comparadas com as de um registro "
                                        "novo (" +
                                        erro.Detalhe + ").");
            resultado.Palavras.push_back(erro.Detalhe);
        }
        return resultado;
    }
    Compara(LeItens(ligacao, EsquemaDaConferencia), achados, resultado.Achados);
    return resultado;
}

} // namespace mesa
