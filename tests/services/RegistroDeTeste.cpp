#include "tests/services/RegistroDeTeste.h"

#include "services/Banco.h"
#include "services/DialetoPostgres.h"
#include "services/Dialetos.h"
#include "services/Historico.h"

#include "services/LayoutED.h"
#include "services/LogradouroED.h"
#include "tests/services/PapelDeTrabalho.h"

#include <sqlite3.h>

#include <memory>
#include <regex>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

struct Pessoa {
    Operador Quem;
    std::vector<std::string> Acoes;
    std::vector<std::string> Administra = {};
};

const std::map<std::string, Pessoa> &Pessoas()
{
    constexpr std::int32_t portoAlegre = 4314902;
    const std::vector<std::string> todas = {"", "I", "A", "E"};
    static const std::map<std::string, Pessoa> pessoas = {
        {"ana", {{1, "ana", "Ana Souza", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, todas}},
        {"bruno", {{2, "bruno", "Bruno Lima", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, {""}}},
        {"carla", {{3, "carla", "Carla Dias", 1, "Autoridade Estadual de Trânsito", "Metrologia", 0}, {}}},
        {"davi", {{4, "davi", "Davi Reis", 1, "Autoridade Estadual de Trânsito", "Fiscalização", portoAlegre}, todas}},
        {"elisa", {{5, "elisa", "Elisa Prado", 2, "Autoridade Municipal de Trânsito", "Operações", 0}, todas}},
        {"bia", {{6, "bia", "Bia Nunes", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, todas}},
        {"caio", {{7, "caio", "Caio Melo", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, todas}},
        {"inês", {{8, "inês", "Inês Luz", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, {"", "I"}}},
        {"alice", {{9, "alice", "Alice Rocha", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, {"", "A"}}},
        {"marta",
         {{11, "marta", "Marta Reis", 1, "Autoridade Estadual de Trânsito", "Metrologia", 0}, {}, {"U", "T", "C"}}},
        {"saulo",
         {{12, "saulo", "Saulo Pires", 1, "Autoridade Estadual de Trânsito", "Metrologia", 0}, todas, {"U", "T", "C"}}},
        {"tadeu", {{13, "tadeu", "Tadeu Vaz", 1, "Autoridade Estadual de Trânsito", "Metrologia", 0}, {}, {"T"}}},
        {"eva", {{10, "eva", "Eva Costa", 1, "Autoridade Estadual de Trânsito", "Fiscalização", 0}, {"", "E"}}},
    };
    return pessoas;
}

template <class R, class Item> Ref<R> Poe(const Ref<R> &registro, Campo<ListaDe<Item>> R::*lista, const Ref<Item> &item)
{
    auto &campo = (*registro).*lista;
    if (campo.Valor().Nada()) {
        campo = Novo<Colecao<Ref<Item>>>();
    }
    campo.Valor()->Add(item);
    return registro;
}

} // namespace

namespace {

// The marks of what each session has opened, by the kind of record and its number, for as long as the session lives.
using ChaveDaMarca = std::pair<std::string, std::int32_t>;
std::map<const SessaoServico *, std::map<ChaveDaMarca, std::int64_t>> Marcas;

ChaveDaMarca ChaveDe(const Registro &registro)
{
    if (const auto *equipto = dynamic_cast<const EquiptoED *>(&registro)) {
        return {"EquiptoED", equipto->NroIntEquip};
    }
    if (const auto *limite = dynamic_cast<const LimiteDifED *>(&registro)) {
        return {"LimiteDifED", limite->NroInt};
    }
    const auto *dia = dynamic_cast<const DiaEspecificoED *>(&registro);
    return {"DiaEspecificoED", dia == nullptr ? 0 : dia->NroInt.Valor()};
}

Retorno Executa(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
                const std::string &classeRN)
{
    Retorno retorno;
    Ref<Objeto> enviado = pedido;
    retorno.Feita = sessao->Executa(classeRN, metodo, enviado, retorno.Resposta, retorno.Recusa);
    return retorno;
}

// The records whose marks count in what is sent.
std::vector<Registro *> Marcados(const Ref<Objeto> &pedido)
{
    std::vector<Registro *> registros;
    if (auto *equipto = dynamic_cast<EquiptoED *>(pedido.Ponteiro()); equipto != nullptr) {
        const ListaDe<LimiteDifED> &limites = equipto->ListaLimiteDif;
        for (std::int32_t n = 1; !limites.Nada() && n <= limites->Count(); ++n) {
            registros.push_back(limites->Item(n).Ponteiro());
        }
    }
    registros.push_back(dynamic_cast<Registro *>(pedido.Ponteiro()));
    std::erase(registros, nullptr);
    return registros;
}

// Gives those that had none.
std::vector<Registro *> PoeMarcas(const Ref<SessaoServico> &sessao, const std::string &metodo,
                                  const Ref<Objeto> &pedido)
{
    std::vector<Registro *> semMarca;
    for (Registro *registro : Marcados(pedido)) {
        if (registro->VersaoLida != 0) {
            continue;
        }
        semMarca.push_back(registro);
        const ChaveDaMarca chave = ChaveDe(*registro);
        if (metodo.starts_with("altera")) {
            const auto &dela = Marcas[sessao.Ponteiro()];
            const auto lida = dela.find(chave);
            registro->VersaoLida = lida == dela.end() ? 0 : lida->second;
            continue;
        }
        const std::string leitura = chave.first == "EquiptoED"     ? "consultaSimples"
                                    : chave.first == "LimiteDifED" ? "consultaSimplesLimiteDif"
                                                                   : "consultaSimplesDiaEspecifico";
        const Retorno lido = Executa(sessao, leitura, registro->Copia(), "EquiptoRN");
        registro->VersaoLida = lido.Feita ? lido.Como<Registro>()->VersaoLida : 0;
    }
    return semMarca;
}

void GuardaMarcas(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
                  const Retorno &retorno)
{
    auto &dela = Marcas[sessao.Ponteiro()];
    if (metodo == "consulta" || metodo == "inclui" || metodo == "consultaSimplesLimiteDif" ||
        metodo == "consultaSimplesDiaEspecifico") {
        const auto lido = retorno.Como<Registro>();
        dela[ChaveDe(*lido)] = lido->VersaoLida;
    }
    const bool altera = metodo.starts_with("altera");
    for (Registro *registro : Marcados(pedido)) {
        const auto lida = dela.find(ChaveDe(*registro));
        // A deactivation of one's own leaves what one has read as it was: only somebody else's in between does not.
        if (altera || (lida != dela.end() && lida->second + 1 == registro->VersaoLida)) {
            dela[ChaveDe(*registro)] = registro->VersaoLida;
        }
    }
}

} // namespace

namespace {

// The functions of the embedded engine that they ask with, apart from what is the registry's.
constexpr const char *FuncoesDosTestes =
    "CREATE SCHEMA testes; SET search_path = testes; "
    "CREATE FUNCTION printf(text, bigint) RETURNS text LANGUAGE sql RETURN lpad(CAST($2 AS text), 6, '0'); "
    "CREATE FUNCTION json_extract(text, text) RETURNS text LANGUAGE sql RETURN CAST($1 AS json) ->> substr($2, 3); "
    "CREATE FUNCTION campo(text, text) RETURNS text LANGUAGE sql RETURN CAST($1 AS json) ->> $2; "
    "CREATE OPERATOR ->> (LEFTARG = text, RIGHTARG = text, FUNCTION = campo); "
    "CREATE FUNCTION junta(text, text, text) RETURNS text LANGUAGE sql RETURN "
    "CASE WHEN $1 IS NULL THEN $2 WHEN $2 IS NULL THEN $1 ELSE $1 || $3 || $2 END; "
    "CREATE FUNCTION junta(text, text) RETURNS text LANGUAGE sql RETURN junta($1, $2, ','); "
    "CREATE FUNCTION junta(text, bigint) RETURNS text LANGUAGE sql RETURN junta($1, CAST($2 AS text), ','); "
    "CREATE AGGREGATE group_concat(text, text) (SFUNC = junta, STYPE = text); "
    "CREATE AGGREGATE group_concat(text) (SFUNC = junta, STYPE = text); "
    "CREATE AGGREGATE group_concat(bigint) (SFUNC = junta, STYPE = text)";

} // namespace

RegistroDeTeste::RegistroDeTeste() : Relogio(DataDe(20, 11, 2026, 10, 0, 0))
{
    const auto funda = [this](const std::string &onde) {
        auto servicos = Servicos::Cria(
            onde, TipoDeRegistro::Registro, [this] { return Instante(Relogio, Fuso); }, CustoDeTeste);
        servicos->CadastraCliente({1, "Autoridade Estadual de Trânsito", {"Fiscalização", "Metrologia"}, "RS"});
        servicos->CadastraCliente({2, "Autoridade Municipal de Trânsito", {"Operações"}, "SP"});
        return servicos;
    };
    if (motor::DeTeste() == motor::Qual::SQLite) {
        m_Lugar = std::make_unique<motor::RegistroVazio>();
        m_Servicos = funda(Caminho());
    } else { // where making one takes longer than copying it
        m_Lugar = std::make_unique<motor::RegistroVazio>("de_teste", [&](const std::string &onde) {
            funda(papel::ComTrabalho(onde));
            motor::Linhas(onde, FuncoesDosTestes);
        });
        Reabre();
    }
}

void RegistroDeTeste::Fecha()
{
    m_Servicos = nullptr;
}

void RegistroDeTeste::Reabre()
{
    Fecha();
    m_Servicos = AbreOutro();
}

Ref<Servicos> RegistroDeTeste::AbreOutro()
{
    return Servicos::Abre(
        Caminho(), [this] { return Instante(Relogio, Fuso); }, CustoDeTeste);
}

void RegistroDeTeste::PassaSegundos(std::int32_t n)
{
    Relogio.Valor += n / 86400.0;
}

void RegistroDeTeste::Cadastra(const std::string &usuario)
{
    if (!m_Cadastrados[usuario]) {
        const Pessoa &pessoa = Pessoas().at(usuario);
        m_Servicos->CadastraUsuario(pessoa.Quem, "senha de " + usuario, pessoa.Acoes, pessoa.Administra);
        m_Cadastrados[usuario] = true;
    }
}

Ref<SessaoServico> RegistroDeTeste::Sessao(const std::string &usuario)
{
    Cadastra(usuario);
    std::string recusa;
    std::int32_t espera = 0;
    Ref<SessaoServico> sessao = m_Servicos->Entra(usuario, "senha de " + usuario, "estação de teste", recusa, espera);
    if (sessao.Nada()) {
        throw std::runtime_error(recusa);
    }
    Marcas.erase(sessao.Ponteiro());
    return sessao;
}

std::int32_t RegistroDeTeste::IncluiRua(const std::string &nome, const std::string &bairro, const std::string &cep,
                                        std::int32_t codMunic)
{
    auto rua = Com(Novo<LogradouroED>(), &LogradouroED::CodMunic, codMunic, &LogradouroED::NomeLograd, nome);
    Com(rua, &LogradouroED::Bairro, bairro, &LogradouroED::Cep, cep);
    return Exigido(Pede(Sessao("marta"), "incluiLogradouro", rua, "AdministracaoRN")).Como<LogradouroED>()->CodLograd;
}

void RegistroDeTeste::DesativaRua(std::int32_t codigo)
{
    auto rua = Com(Novo<LogradouroED>(), &LogradouroED::CodLograd, codigo, &LogradouroED::Ativo, 2);
    rua->Versao = std::stoi(Sql("SELECT Versao FROM LOGRADOURO WHERE CodLograd = " + std::to_string(codigo)));
    Exigido(Pede(Sessao("marta"), "alteraLogradouro", rua, "AdministracaoRN"));
}

void RegistroDeTeste::IncluiLayout(const std::string &nome)
{
    Exigido(
        Pede(Sessao("marta"), "incluiLayout", Com(Novo<LayoutED>(), &LayoutED::NomeLayout, nome), "AdministracaoRN"));
}

void RegistroDeTeste::DesativaLayout(const std::string &nome)
{
    auto layout = Com(Novo<LayoutED>(), &LayoutED::Ativo, 2, &LayoutED::NroLayout,
                      std::stoi(Sql("SELECT NroLayout FROM LAYOUT WHERE Nome = '" + nome + "'")));
    layout->Versao = std::stoi(Sql("SELECT Versao FROM LAYOUT WHERE Nome = '" + nome + "'"));
    Exigido(Pede(Sessao("marta"), "alteraLayout", layout, "AdministracaoRN"));
}

void RegistroDeTeste::Historia(const std::string &tabela, std::int64_t chave)
{
    Banco banco(DialetoPara(Caminho()), Caminho(), Relogio);
    banco.Escreve([&] { Historico(banco).Registra(Relogio, 0, {"EQUIPAMENTO", 1, 1, tabela, chave, "migra"}); });
}

std::string RegistroDeTeste::Sql(const std::string &comando)
{
    const auto linhas = LinhasSql(Caminho(), comando);
    return linhas.empty() ? "" : linhas.front();
}

namespace {

// What the tests ask in the words of the embedded engine, in those of the other one.
std::string NoServidor(const std::string &comando)
{
    static const std::vector<std::pair<std::regex, std::string>> trocas = {
        {std::regex("(INSERT|UPDATE) OR REPLACE "), "$1 "},
        {std::regex("IS NOT (?!NULL)"), "IS DISTINCT FROM "},
        {std::regex("PRAGMA ignore_check_constraints = ON"),
         "ALTER TABLE DOCUMENTO DROP CONSTRAINT \"DOCUMENTO_Tamanho_do_Conteudo\""},
        {std::regex("DROP TRIGGER (DOCUMENTO|EQUIPAMENTO)_(SEM_UPDATE|FIXA)"), "ALTER TABLE $1 DISABLE TRIGGER USER"},
        {std::regex("CREATE TRIGGER (\\w+) (BEFORE INSERT ON \\w+) BEGIN SELECT RAISE\\(ABORT, '(\\w+)'\\); END"),
         "CREATE FUNCTION $1() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN RAISE EXCEPTION ''$3''; END'; "
         "CREATE TRIGGER $1 $2 FOR EACH ROW EXECUTE FUNCTION $1()"},
    };
    std::string traduzido = comando;
    for (const auto &[de, para] : trocas) {
        traduzido = std::regex_replace(traduzido, de, para);
    }
    return traduzido;
}

} // namespace

std::vector<std::string> LinhasSql(const std::string &onde, const std::string &comando)
{
    if (DialetoPostgres::Reconhece(onde)) {
        return motor::Linhas(onde + (onde.find('?') == std::string::npos ? "?" : "&") +
                                 "options=-csearch_path%3Dpublic,testes",
                             NoServidor(comando));
    }
    sqlite3 *aberto = nullptr;
    const int abriu = sqlite3_open_v2(onde.c_str(), &aberto, SQLITE_OPEN_READWRITE, nullptr);
    const std::unique_ptr<sqlite3, int (*)(sqlite3 *)> banco(aberto, sqlite3_close);
    if (abriu != SQLITE_OK) {
        throw std::runtime_error("the file does not open");
    }
    sqlite3_busy_timeout(aberto, 5000);
    std::vector<std::string> linhas;
    const auto guarda = [](void *destino, int colunas, char **valores, char **) {
        auto &linha = static_cast<std::vector<std::string> *>(destino)->emplace_back();
        for (int coluna = 0; coluna < colunas; ++coluna) {
            linha += std::string(coluna > 0 ? "|" : "") + (valores[coluna] == nullptr ? "" : valores[coluna]);
        }
        return 0;
    };
    if (sqlite3_exec(aberto, comando.c_str(), guarda, &linhas, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(aberto));
    }
    return linhas;
}

Retorno Pede(const Ref<SessaoServico> &sessao, const std::string &metodo, const Ref<Objeto> &pedido,
             const std::string &classeRN)
{
    const bool muda = classeRN == "EquiptoRN" &&
                      (metodo.starts_with("altera") || metodo == "reativa" || metodo.starts_with("desativa"));
    const std::vector<Registro *> semMarca = muda ? PoeMarcas(sessao, metodo, pedido) : std::vector<Registro *>();
    const Retorno retorno = Executa(sessao, metodo, pedido, classeRN);
    if (retorno.Feita && classeRN == "EquiptoRN") {
        GuardaMarcas(sessao, metodo, pedido, retorno);
    }
    for (Registro *registro : semMarca) { // it is the session that remembers
        registro->VersaoLida = 0;
    }
    return retorno;
}

Ref<EquiptoED> EquipamentoDe(const std::string &codigo)
{
    auto e = Novo<EquiptoED>();
    e->Codigo = codigo;
    e->SubCodigo = "";
    e->Descricao = "Av. Ipiranga, sentido centro";
    e->TipoAgente = std::uint8_t{1};
    e->TipoEquip = "P";
    e->Modelo = "Fictício 300";
    e->CodMunic = 4314902;
    e->ArquivoLayout = "NENHUM";
    e->TipoVia = "U";
    e->Ativo = std::uint8_t{2};
    e->VelocPermitida = std::int16_t{60};
    e->TemImagemEntrelacada = std::uint8_t{2};
    e->TemLimiteDif = std::uint8_t{1};
    e->TemPerfilMag = std::uint8_t{2};
    return e;
}

Ref<LimiteDifED> LimiteDe(std::int32_t equipamento, std::uint8_t dia, std::int32_t inicio, std::int32_t fim,
                          std::int16_t velocidade)
{
    auto l = Novo<LimiteDifED>();
    l->NroIntEquip = equipamento;
    l->Dia = dia;
    l->HoraInicio = inicio;
    l->HoraFim = fim;
    l->VelocPerm = velocidade;
    l->VelocMin = std::int16_t{0};
    l->Ativo = std::uint8_t{1};
    l->TipoLimite = static_cast<std::uint8_t>(velocidade > 0 ? 1 : 2);
    return l;
}

Ref<DiaEspecificoED> DiaDe(std::int32_t equipamento, Data dia, std::int32_t inicio, std::int32_t fim)
{
    auto d = Novo<DiaEspecificoED>();
    d->NroIntEquip = equipamento;
    d->Data = dia;
    d->HoraInicio = inicio;
    d->HoraFim = fim;
    d->VelocPerm = std::int16_t{40};
    d->VelocMin = std::int16_t{0};
    d->Ativo = std::uint8_t{1};
    return d;
}

Ref<SensorED> SensorDe(std::int16_t numero)
{
    auto s = Novo<SensorED>();
    s->NroSensor = numero;
    s->LocalInfr = "Av. Ipiranga, 1200";
    s->Ativo = std::uint8_t{1};
    return s;
}

Ref<AfericaoED> AfericaoDe(const std::string &numero, Data de, Data ate, double documento)
{
    auto a = Novo<AfericaoED>();
    a->Numero = numero;
    a->Marca = "987";
    a->DataVerificacao = de;
    a->DataVencimento = ate;
    a->Ativo = std::uint8_t{1};
    a->NroIntImgCertif = documento;
    a->TipoAfer = std::uint8_t{1};
    a->PortDimel = "";
    return a;
}

Ref<EquiptoED> DoTipo(const Ref<EquiptoED> &equipto, const std::string &tipo, std::uint8_t medidor)
{
    return Com(Com(equipto, &EquiptoED::TipoEquip, tipo, &EquiptoED::TipoAgente, medidor), &EquiptoED::TemLimiteDif,
               std::uint8_t{2});
}

Ref<EquiptoED> Poe(const Ref<EquiptoED> &equipto, const Ref<SensorED> &sensor)
{
    return Poe(equipto, &EquiptoED::Sensores, sensor);
}

Ref<SensorED> Poe(const Ref<SensorED> &sensor, const Ref<AfericaoED> &afericao)
{
    return Poe(sensor, &SensorED::Afericoes, afericao);
}

Ref<EquiptoED> ListaDeLimites(const std::vector<Ref<LimiteDifED>> &limites)
{
    auto e = Com(Novo<EquiptoED>(), &EquiptoED::ListaLimiteDif, Novo<Colecao<Ref<LimiteDifED>>>());
    for (const auto &limite : limites) {
        e->ListaLimiteDif.Valor()->Add(limite);
    }
    return e;
}

Retorno Exigido(const Retorno &retorno)
{
    if (!retorno.Feita) {
        throw std::runtime_error(retorno.Recusa);
    }
    return retorno;
}

Ref<EquiptoED> Documenta(const Ref<SessaoServico> &sessao, const Ref<EquiptoED> &equipto)
{
    double documento = 0;
    const ListaDe<SensorED> &sensores = equipto->Sensores;
    for (std::int32_t s = 1; !sensores.Nada() && s <= sensores->Count(); ++s) {
        const ListaDe<AfericaoED> &afericoes = sensores->Item(s)->Afericoes;
        for (std::int32_t a = 1; !afericoes.Nada() && a <= afericoes->Count(); ++a) {
            AfericaoED &afericao = *afericoes->Item(a);
            if (afericao.NroIntAfericao.Valor() == 0 && afericao.NroIntImgCertif.Valor() == 0) {
                documento = documento == 0 ? GuardaPdf(sessao, "certificado") : documento;
                afericao.NroIntImgCertif = documento;
            }
        }
    }
    return equipto;
}

std::int32_t Inclui(const Ref<SessaoServico> &sessao, const Ref<EquiptoED> &equipto)
{
    return Exigido(Pede(sessao, "inclui", Documenta(sessao, equipto))).Como<EquiptoED>()->NroIntEquip;
}

std::int32_t IncluiComSensores(const Ref<SessaoServico> &sessao,
                               const std::vector<std::vector<Ref<AfericaoED>>> &sensores)
{
    auto equipto = EquipamentoDe("R-001");
    std::int16_t numero = 0;
    for (const auto &afericoes : sensores) {
        Poe(equipto, SensorDe(++numero));
        for (const auto &afericao : afericoes) {
            Poe(equipto->Sensores.Valor()->Item(numero), afericao);
        }
    }
    return Inclui(sessao, equipto);
}

Ref<EquiptoED> Abre(const Ref<SessaoServico> &sessao, std::int32_t nroIntEquip)
{
    return Exigido(Pede(sessao, "consulta", SoNumero(nroIntEquip))).Como<EquiptoED>();
}

Bytes Pdf(const std::string &marca, std::size_t tamanho)
{
    std::string texto = "%PDF-1.4\n% " + marca + "\n";
    std::string tabela = "0000000000 65535 f \n";
    int objetos = 0;
    for (const char *objeto : {"<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                               "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 72 72] >>"}) {
        const std::string onde = std::to_string(texto.size());
        tabela += std::string(10 - onde.size(), '0') + onde + " 00000 n \n";
        texto += std::to_string(++objetos) + " 0 obj\n" + objeto + "\nendobj\n";
    }
    const std::string fim = "\nstartxref\n" + std::to_string(texto.size()) + "\n%%EOF\n";
    texto += "xref\n0 4\n" + tabela + "trailer\n<< /Size 4 /Root 1 0 R >>\n% ";
    if (tamanho > texto.size() + fim.size()) {
        texto.append(tamanho - texto.size() - fim.size(), 'x');
    }
    texto += fim;
    return Bytes(texto.begin(), texto.end());
}

double GuardaPdf(const Ref<SessaoServico> &sessao, const std::string &marca, std::size_t tamanho)
{
    double numero = 0;
    std::string recusa;
    if (!sessao->GuardaDocumento(Pdf(marca, tamanho), numero, recusa)) {
        throw std::runtime_error(recusa);
    }
    return numero;
}
