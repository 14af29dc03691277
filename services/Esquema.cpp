#include "services/Esquema.h"

#include "host/Conversoes.h"
#include "host/Texto.h"
#include "services/Calendario.h"
#include "services/ConteudoPdf.h"

#include <QByteArray>
#include <QString>

#include <algorithm>

namespace mesa {

namespace {

using Esquema::Coluna;
using Esquema::Forma;
using Esquema::Tabela;

constexpr std::int64_t MaiorInteiro = 2147483647;
constexpr std::int64_t MaiorNumero = 9007199254740992; // up to here a floating number is exact
constexpr std::int64_t MaiorBusca = 1000;              // a text for searching may be longer than what it was made of
constexpr std::int64_t MaiorTexto = 1000000000;
constexpr std::int64_t MaiorFuso = 1440;
constexpr std::int64_t TamanhoSha256 = 64;
constexpr auto MaiorConteudo = static_cast<std::int64_t>(MaiorDocumento);
constexpr std::int64_t MaiorVelocidade = 999;

constexpr Coluna Numero(std::string_view nome, std::int64_t de, std::int64_t ate)
{
    return {nome, Forma::Numero, de, ate};
}
constexpr Coluna Chave(std::string_view nome, std::int64_t ate = MaiorInteiro)
{
    return Numero(nome, 1, ate);
}
constexpr Coluna Texto(std::string_view nome, std::int64_t ate)
{
    return {nome, Forma::Texto, 0, ate};
}
constexpr Coluna Obrigatorio(std::string_view nome, std::int64_t ate, std::int64_t de = 1)
{
    return {nome, Forma::Texto, de, ate};
}
constexpr Coluna Marca(std::string_view nome)
{
    return {nome, Forma::SimNao, 1, 2};
}
constexpr Coluna De(Forma forma, std::string_view nome)
{
    return {nome, forma};
}
constexpr Coluna Nula(Coluna coluna)
{
    coluna.Nula = true;
    return coluna;
}
constexpr Coluna Para(std::string_view referencia, Coluna coluna)
{
    coluna.Referencia = referencia;
    return coluna;
}

constexpr Coluna Versao = Numero("Versao", 1, MaiorNumero);
constexpr Coluna Fuso = Numero("Fuso", -MaiorFuso, MaiorFuso);
constexpr Coluna DoEquipamento = Para("EQUIPAMENTO (NroIntEquip)", Chave("NroIntEquip"));

// Active rows of one day have no minute in common; one may end at the minute in which the next begins. The number of a
// new row is not known yet, and is none that is there.
constexpr std::string_view LimiteSobreposto =
    "NEW.Ativo = 1 AND EXISTS (SELECT 1 FROM LIMITE o WHERE o.NroIntEquip = NEW.NroIntEquip AND o.Ativo = 1 "
    "AND o.TipoLimite = NEW.TipoLimite AND o.Dia = NEW.Dia AND o.NroInt IS NOT NEW.NroInt "
    "AND ((o.HoraInicio < NEW.HoraFim AND o.HoraFim > NEW.HoraInicio) "
    "OR (o.HoraInicio = NEW.HoraInicio AND o.HoraFim = NEW.HoraFim)))";
constexpr std::string_view DiaSobreposto =
    "NEW.Ativo = 1 AND EXISTS (SELECT 1 FROM DIA o WHERE o.NroIntEquip = NEW.NroIntEquip AND o.Ativo = 1 "
    "AND o.Data = NEW.Data AND o.NroInt IS NOT NEW.NroInt "
    "AND ((o.HoraInicio < NEW.HoraFim AND o.HoraFim > NEW.HoraInicio) "
    "OR (o.HoraInicio = NEW.HoraInicio AND o.HoraFim = NEW.HoraFim)))";

std::vector<Tabela> Todas()
{
    return {
        {.Nome = "ESQUEMA", .Colunas = {Chave("Versao")}, .SoInclui = true, .ComHistorico = false},
        {.Nome = "REGISTRO",
         .Colunas = {Numero("Nro", 1, 1), Obrigatorio("Identificador", 36, 36), Marca("Tipo"),
                     De(Forma::Momento, "CriadoEm"), Fuso, Obrigatorio("ChavePublica", 64, 64),
                     Obrigatorio("ChaveSecreta", 128, 128)},
         .SoInclui = true},
        {.Nome = "CLIENTE",
         .Colunas = {Chave("CodCliente"), Obrigatorio("Nome", 60), Obrigatorio("UF", 2, 2), Marca("Ativo"), Versao},
         .Unicas = {{{"Nome"}}},
         .Fixas = {"Nome"}},
        {.Nome = "SETOR",
         .Colunas = {Chave("NroSetor"), Para("CLIENTE (CodCliente)", Chave("CodCliente")), Obrigatorio("Nome", 60),
                     Marca("Ativo")},
         .Unicas = {{{"CodCliente", "Nome"}}},
         .Fixas = {"CodCliente", "Nome"}},
        {.Nome = "USUARIO",
         .Colunas = {Chave("Numero"), Obrigatorio("Usuario", 60), Obrigatorio("Chave", 120), Obrigatorio("Nome", 80),
                     Para("CLIENTE (CodCliente)", Chave("CodCliente")), Texto("Setor", 60),
                     Numero("CodMunic", 0, 9999999), Obrigatorio("Senha", 128), Marca("Ativo"), Marca("TrocaSenha"),
                     Versao},
         .Unicas = {{{"Chave"}}},
         .Fixas = {"Usuario", "Chave"}},
        {.Nome = "PERMISSAO",
         .Colunas = {Chave("NroPermissao"), Para("USUARIO (Numero)", Chave("Numero")), Obrigatorio("Sistema", 20),
                     Obrigatorio("Objeto", 40), Texto("Acao", 20), Marca("Ativo")},
         .Unicas = {{{"Numero", "Sistema", "Objeto", "Acao"}}},
         .Fixas = {"Numero", "Sistema", "Objeto", "Acao"}},
        {.Nome = "ESTACAO",
         .Colunas = {Chave("NroEstacao"), Para("USUARIO (Numero)", Chave("Numero")), Obrigatorio("Estacao", 64)},
         .Unicas = {{{"Numero", "Estacao"}}},
         .SoInclui = true},
        {.Nome = "ENTRADA_RECUSADA",
         .Colunas = {Chave("NroEntrada"), Para("USUARIO (Numero)", Chave("Numero")), Texto("Estacao", 64),
                     Numero("Vezes", 0, MaiorInteiro), Numero("EsperaAte", 0, MaiorNumero),
                     Obrigatorio("Soma", TamanhoSha256, TamanhoSha256)},
         .Unicas = {{{"Numero", "Estacao"}}},
         .Fixas = {"Numero", "Estacao"},
         .ComHistorico = false},
        {.Nome = "LOGRADOURO",
         .Colunas = {Chave("CodLograd"), Chave("CodMunic", 9999999), Obrigatorio("Nome", 80), Texto("Bairro", 80),
                     Texto("Cep", 8), Texto("NomeBusca", MaiorBusca), Marca("Ativo"), Versao},
         .Indices = {{"LOGRADOURO_Busca", "CodMunic, Ativo, NomeBusca"}, {"LOGRADOURO_Cep", "Cep"}},
         .Fixas = {"CodMunic"}},
        {.Nome = "LAYOUT",
         .Colunas = {Chave("NroLayout"), Obrigatorio("Nome", 50), Texto("Conteudo", 100000), Marca("Ativo"), Versao},
         .Unicas = {{{"Nome"}}},
         .Fixas = {"Nome"}},
        {.Nome = "EQUIPAMENTO",
         .Colunas = {Chave("NroIntEquip"),
                     Para("CLIENTE (Nome)", Obrigatorio("ClienteInc", 60)),
                     Texto("SetorInc", 60),
                     Obrigatorio("Codigo", 20),
                     Texto("SubCodigo", 20),
                     Texto("Descricao", 50),
                     Numero("CodMunic", 0, 9999999),
                     Texto("TipoVia", 1),
                     Obrigatorio("TipoEquip", 1),
                     Numero("VelocPermitida", 0, MaiorVelocidade),
                     Texto("ArquivoLayout", 50),
                     Marca("TemImagemEntrelacada"),
                     Texto("Modelo", 30),
                     Marca("TemLimiteDif"),
                     Marca("TemPerfilMag"),
                     Numero("NroIntRejLimDif", 0, MaiorInteiro),
                     Marca("Ativo"),
                     Obrigatorio("ClienteTrans", 60),
                     Para("USUARIO (Numero)", Chave("OperadorTrans")),
                     De(Forma::Dia, "DataTrans"),
                     Numero("HoraTrans", 0, 235959),
                     Numero("TipoAgente", 1, 3),
                     Texto("txtObsNotif", 70),
                     Obrigatorio("CodigoChave", MaiorBusca),
                     Texto("CodigoBusca", MaiorBusca),
                     Texto("SubCodigoBusca", MaiorBusca),
                     Marca("TrabFoto"),
                     Versao},
         .Unicas = {{{"ClienteInc", "CodigoChave"}, "Ativo = 1"}},
         .Indices = {{"EQUIPAMENTO_Busca", "ClienteInc, CodigoBusca, NroIntEquip"},
                     {"EQUIPAMENTO_SubBusca", "ClienteInc, SubCodigoBusca, NroIntEquip"},
                     {"EQUIPAMENTO_Foto", "ClienteInc, Ativo, TrabFoto, NroIntEquip"},
                     {"EQUIPAMENTO_Setor", "ClienteInc, Ativo, TrabFoto, SetorInc, NroIntEquip"},
                     {"EQUIPAMENTO_Agente", "ClienteInc, Ativo, TrabFoto, TipoAgente, NroIntEquip"},
                     {"EQUIPAMENTO_Tipo", "ClienteInc, Ativo, TrabFoto, TipoEquip, NroIntEquip"},
                     {"EQUIPAMENTO_Layout", "ClienteInc, ArquivoLayout"}},
         .Fixas = {"ClienteInc", "Codigo", "TipoAgente", "TipoEquip", "CodMunic"}},
        {.Nome = "SENSOR",
         .Colunas = {Chave("NroIntSensor"), DoEquipamento, Numero("NroSensor", 1, 999),
                     Numero("CodLograd", 0, MaiorInteiro), Numero("EndCep", 0, 99999999),
                     Numero("EndNro", 0, MaiorInteiro), Texto("EndCompl", 50), Texto("EndDescr", 80),
                     Texto("SentidoVia", 50), Marca("Ativo"), Texto("LocalInfr", 80)},
         .Indices = {{"SENSOR_Equip", "NroIntEquip, NroIntSensor"}},
         .Fixas = {"NroIntEquip"}},
        {.Nome = "DOCUMENTO",
         .Colunas = {Chave("NroDocumento", MaiorNumero), Para("CLIENTE (Nome)", Obrigatorio("ClienteInc", 60)),
                     Numero("Tamanho", 1, MaiorConteudo), Obrigatorio("Sha256", TamanhoSha256, TamanhoSha256),
                     De(Forma::Momento, "Quando"), Nula(Fuso), Para("USUARIO (Numero)", Chave("Operador")),
                     Coluna{"Conteudo", Forma::Octetos, 1, MaiorConteudo}},
         .Condicoes = {{"Tamanho_do_Conteudo", "Tamanho = length(Conteudo)"}},
         .SoInclui = true},
        {.Nome = "AFERICAO",
         .Colunas = {Chave("NroIntAfericao", MaiorNumero), Para("SENSOR (NroIntSensor)", Chave("NroIntSensor")),
                     Texto("Numero", 10), Texto("Marca", 14), De(Forma::Dia, "DataVerificacao"),
                     De(Forma::Dia, "DataVencimento"), Marca("Ativo"),
                     Nula(Para("DOCUMENTO (NroDocumento)", Chave("NroIntImgCertif", MaiorNumero))),
                     Numero("TipoAfer", 1, 2), Texto("PortDimel", 9), Versao},
         .Condicoes = {{"Verificacao_ate_Vencimento", "DataVerificacao <= DataVencimento"}},
         .Indices = {{"AFERICAO_Sensor", "NroIntSensor, Ativo, DataVerificacao, DataVencimento"}},
         .Fixas = {"NroIntSensor"},
         // The history has an entry for each version. Until the one of a change is written, the row may be written
         // again.
         .Guardas = {{"VERSAO", "UPDATE",
                      "NEW.Versao <> 1 + (SELECT COUNT(*) FROM HISTORICO h WHERE h.Entidade = 'AFERICAO' "
                      "AND h.NroEntidade = NEW.NroIntAfericao)",
                      "AFERICAO_VERSAO"},
                     {"SEM_SOBREPOSICAO_NOVA", "INSERT",
                      "NEW.Ativo = 1 AND EXISTS (SELECT 1 FROM AFERICAO o WHERE o.NroIntSensor = NEW.NroIntSensor "
                      "AND o.Ativo = 1 AND o.DataVerificacao <= NEW.DataVencimento "
                      "AND o.DataVencimento >= NEW.DataVerificacao)",
                      "AFERICAO_SOBREPOSTA"},
                     {"SEM_SOBREPOSICAO", "UPDATE",
                      "NEW.Ativo = 1 AND EXISTS (SELECT 1 FROM AFERICAO o WHERE o.NroIntSensor = NEW.NroIntSensor "
                      "AND o.Ativo = 1 AND o.DataVerificacao <= NEW.DataVencimento "
                      "AND o.DataVencimento >= NEW.DataVerificacao AND o.NroIntAfericao <> NEW.NroIntAfericao)",
                      "AFERICAO_SOBREPOSTA"}}},
        {.Nome = "LIMITE",
         .Colunas = {Chave("NroInt"), DoEquipamento, Numero("Dia", 1, 8), De(Forma::Hora, "HoraInicio"),
                     De(Forma::Hora, "HoraFim"), Numero("VelocPerm", 0, MaiorVelocidade),
                     Numero("VelocMin", 0, MaiorVelocidade), Marca("Ativo"), Numero("TipoLimite", 1, 2), Versao},
         .Condicoes = {{"Inicio_ate_Fim", "HoraInicio <= HoraFim"}},
         .Indices = {{"LIMITE_Equip", "NroIntEquip, TipoLimite, Dia, HoraInicio"}},
         .Fixas = {"NroIntEquip", "Dia", "TipoLimite"},
         .Guardas = {{"SEM_SOBREPOSICAO_NOVA", "INSERT", LimiteSobreposto, "LIMITE_SOBREPOSTO"},
                     {"SEM_SOBREPOSICAO", "UPDATE", LimiteSobreposto, "LIMITE_SOBREPOSTO"}}},
        {.Nome = "DIA",
         .Colunas = {Chave("NroInt"), DoEquipamento, De(Forma::Dia, "Data"), De(Forma::Hora, "HoraInicio"),
                     De(Forma::Hora, "HoraFim"), Numero("VelocPerm", 0, MaiorVelocidade),
                     Numero("VelocMin", 0, MaiorVelocidade), Marca("Ativo"), Versao},
         .Condicoes = {{"Inicio_ate_Fim", "HoraInicio <= HoraFim"}},
         .Indices = {{"DIA_Equip", "NroIntEquip, Data, HoraInicio"}},
         .Fixas = {"NroIntEquip"},
         .Guardas = {{"SEM_SOBREPOSICAO_NOVA", "INSERT", DiaSobreposto, "DIA_SOBREPOSTO"},
                     {"SEM_SOBREPOSICAO", "UPDATE", DiaSobreposto, "DIA_SOBREPOSTO"}}},
        // Raiz is the record that is edited as one, with its version; Entidade the row of it that changed. Quando is
        // UTC where the offset is known, and the clock of the place where it is not.
        {.Nome = "HISTORICO",
         .Colunas = {Chave("Nro", MaiorNumero), De(Forma::Momento, "Quando"), Nula(Fuso),
                     Nula(Para("USUARIO (Numero)", Chave("Operador"))), Obrigatorio("Raiz", 30),
                     Numero("NroRaiz", 0, MaiorNumero), Numero("Versao", 0, MaiorNumero), Obrigatorio("Entidade", 30),
                     Numero("NroEntidade", 0, MaiorNumero), Obrigatorio("Acao", 20), Nula(Texto("Motivo", 500)),
                     Nula(Texto("Antes", MaiorTexto)), Texto("Depois", MaiorTexto),
                     Obrigatorio("Elo", TamanhoSha256, TamanhoSha256)},
         .Indices = {{"HISTORICO_Raiz", "Raiz, NroRaiz, Versao"},
                     {"HISTORICO_Entidade", "Entidade, NroEntidade"},
                     {"HISTORICO_Atividade", "Entidade, NroEntidade", "Acao <> 'altera'"},
                     {"HISTORICO_Documento", Esquema::DocumentoDaEntrada, "Entidade = 'AFERICAO'"}},
         .SoInclui = true,
         .Guardas = {{"EM_SEQUENCIA", "INSERT", "NEW.Nro > (SELECT COALESCE(MAX(Nro), 0) + 1 FROM HISTORICO)",
                      "HISTORICO_EM_SEQUENCIA"}},
         .ComHistorico = false},
        // A changing operation that came with a number of its caller's, kept so that it is done once. Elo: hash over
        // the row.
        {.Nome = "OPERACAO",
         .Colunas = {Chave("NroOperacao", MaiorNumero), Obrigatorio("Numero", 36, 36),
                     Para("USUARIO (Numero)", Chave("Operador")), Obrigatorio("Soma", TamanhoSha256, TamanhoSha256),
                     De(Forma::Momento, "Quando"), Fuso, Coluna{"Resposta", Forma::Octetos, 0, MaiorConteudo},
                     Obrigatorio("Elo", TamanhoSha256, TamanhoSha256)},
         .Unicas = {{{"Numero"}}},
         .SoInclui = true,
         .ComHistorico = false,
         .Desde = 3},
        // Each time that it was asked for again.
        {.Nome = "REPETICAO",
         .Colunas = {Chave("NroRepeticao", MaiorNumero),
                     Para("OPERACAO (NroOperacao)", Chave("NroOperacao", MaiorNumero)), De(Forma::Momento, "Quando"),
                     Fuso, Obrigatorio("Elo", TamanhoSha256, TamanhoSha256)},
         .SoInclui = true,
         .ComHistorico = false,
         .Desde = 3},
    };
}

bool EhDia(std::int64_t dia)
{
    const std::int64_t dias = dia / 100 % 100;
    return dia >= 1000101 && dia <= 99991231 && dias >= 1 && dias <= 12 && dia % 100 >= 1 && [&] {
        try {
            return DiaCivil(DataDoDia(static_cast<std::int32_t>(dia))) == dia;
        } catch (const Falha &) {
            return false;
        }
    }();
}

bool EhHora(std::int64_t hora)
{
    return hora >= 0 && hora / 100 <= 23 && hora % 100 <= 59;
}

std::string RecusaDoNumero(std::int64_t numero, std::int64_t de, std::int64_t ate)
{
    return numero >= de && numero <= ate
               ? ""
               : "deve estar entre " + CStr(de) + " e " + CStr(ate) + "; veio " + CStr(numero);
}

std::string RecusaDoTexto(const QString &texto, std::int64_t de, std::int64_t ate)
{
    const auto tamanho = static_cast<std::int64_t>(Len(texto.toStdString()));
    if (tamanho > ate) {
        return "aceita até " + CStr(ate) + " caracteres e veio com " + CStr(tamanho);
    }
    if (tamanho < de || (de > 0 && texto.trimmed().isEmpty())) {
        return "precisa ser informado";
    }
    return "";
}

} // namespace

std::string Esquema::Coluna::Recusa(const QVariant &valor) const
{
    if (valor.isNull() && Tipo != Forma::Texto) {
        return Nula ? "" : "precisa ser informado";
    }
    bool inteiro = true;
    const std::int64_t numero = Tipo == Forma::Texto || Tipo == Forma::Octetos ? 0 : valor.toLongLong(&inteiro);
    if (!inteiro) {
        return "precisa ser um número";
    }
    switch (Tipo) {
    case Forma::Numero:
    case Forma::SimNao:
        return RecusaDoNumero(numero, De, Ate);
    case Forma::Texto:
        return valor.isNull() && Nula ? "" : RecusaDoTexto(valor.toString(), De, Ate);
    case Forma::Dia:
        return EhDia(numero) ? "" : "precisa de uma data válida";
    case Forma::Momento:
        return EhDia(numero / 1000000) && EhHora(numero / 100 % 10000) && numero % 100 <= 59
                   ? ""
                   : "precisa de um momento válido";
    case Forma::Hora:
        return EhHora(numero) ? "" : "precisa de uma hora de 00:00 a 23:59";
    default:
        return RecusaDoNumero(valor.toByteArray().size(), De, Ate);
    }
}

const Esquema::Coluna *Esquema::Tabela::Acha(std::string_view nome) const
{
    const auto achada = std::ranges::find(Colunas, nome, &mesa::Esquema::Coluna::Nome);
    return achada == Colunas.end() ? nullptr : &*achada;
}

const std::vector<Esquema::Tabela> &Esquema::Tabelas()
{
    static const std::vector<Tabela> tabelas = Todas();
    return tabelas;
}

const Esquema::Tabela *Esquema::Acha(std::string_view nome)
{
    const auto achada = std::ranges::find(Tabelas(), nome, &Tabela::Nome);
    return achada == Tabelas().end() ? nullptr : &*achada;
}

} // namespace mesa
