#include "services/ServicoLogradouros.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/Referencias.h"
#include "services/RegrasDeTabela.h"
#include "services/TabelaDeTexto.h"
#include "services/TextoBusca.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace mesa {

namespace {

constexpr std::size_t DigitosDoCep = 8;
constexpr std::size_t MenorCepSemMunicipio = 5; // digits; fewer would be streets of half a state
constexpr std::int32_t MaisDados = 1000;        // streets given at once, and rows refused that are told
constexpr const char *PorTabela = "importação de tabela";

bool SoDigitos(const std::string &texto)
{
    return !texto.empty() && std::ranges::all_of(texto, [](char c) { return c >= '0' && c <= '9'; });
}

std::string DigitosDe(const std::string &cep)
{
    return Substitui(Trim(cep), "-", "");
}

std::string CepConferido(const std::string &pedido)
{
    const std::string cep = DigitosDe(pedido);
    if (SoDigitos(cep) && cep.size() == DigitosDoCep) {
        return cep;
    }
    if (SoDigitos(cep) && cep.size() + 1 == DigitosDoCep) {
        throw Recusa("O CEP " + cep + " tem sete dígitos: falta um, talvez o zero do começo.");
    }
    throw Recusa("O CEP \"" + Trim(pedido) + "\" não tem oito dígitos.");
}

std::string NomeDoMunicipio(std::int32_t codMunic)
{
    const Municipio *municipio = Referencias::Tabelas().AchaMunicipio(codMunic);
    return municipio == nullptr ? "município " + CStr(codMunic) : municipio->Nome + "/" + municipio->UF;
}

// As the refusals name it.
std::string Nome(const LogradouroED &logradouro)
{
    return "O logradouro " + logradouro.NomeLograd.Valor() + " de " + NomeDoMunicipio(logradouro.CodMunic) +
           " (código " + CStr(logradouro.CodLograd.Valor()) + ")";
}

// The parts that tell a street, each as it is stored.
void Confere(LogradouroED &logradouro)
{
    if (!Referencias::Tabelas().TemMunicipio(logradouro.CodMunic)) {
        throw Recusa("Não existe o município de código " + CStr(logradouro.CodMunic.Valor()) + ".");
    }
    logradouro.NomeLograd = RegrasDeTabela::TextoLimpo("LOGRADOURO", "Nome", logradouro.NomeLograd);
    logradouro.Bairro = RegrasDeTabela::TextoLimpo("LOGRADOURO", "Bairro", logradouro.Bairro);
    logradouro.Cep = CepConferido(logradouro.Cep);
}

Celulas Derivados(const LogradouroED &logradouro)
{
    return {{"NomeBusca", Q(TextoBusca(logradouro.NomeLograd))}};
}

// A text that LIKE takes letter by letter.
QString Literal(const std::string &texto)
{
    std::string literal = texto;
    for (const char *especial : {"\\", "%", "_"}) {
        literal = Substitui(literal, especial, std::string("\\") + especial);
    }
    return Q(literal);
}

// What is looked for, as a condition with its values.
struct Criterio {
    QString Condicao = "1 = 1";
    QVariantList Valores;

    void E(const QString &condicao, const QVariantList &valores)
    {
        Condicao += " AND " + condicao;
        Valores += valores;
    }
};

Criterio CriterioDasPalavras(const std::string &procurado)
{
    Criterio criterio;
    for (const std::string &palavra : Divide(TextoBusca(procurado), " ")) {
        if (!palavra.empty()) {
            criterio.E("NomeBusca LIKE ? ESCAPE '\\'", {"%" + Literal(palavra) + "%"});
        }
    }
    return criterio;
}

Criterio CriterioDe(const ListaLogradourosED &pedido)
{
    Criterio criterio;
    if (pedido.CodLograd.Escrito()) {
        criterio.E("CodLograd = ?", {pedido.CodLograd.Valor()});
        return criterio;
    }
    const std::string cep = DigitosDe(pedido.Procurado);
    const QVariantList faixaDoCep{Q(cep), Q(FimDaFaixa(cep))};
    if (pedido.CodMunic.Valor() == 0) {
        if (!SoDigitos(cep) || cep.size() < MenorCepSemMunicipio) {
            throw Recusa("Escolha o município, ou informe ao menos cinco dígitos do CEP.");
        }
        criterio.E("Cep >= ? AND Cep < ?", faixaDoCep);
    } else {
        criterio.E("CodMunic = ?", {pedido.CodMunic.Valor()});
        Criterio palavras = CriterioDasPalavras(pedido.Procurado);
        if (SoDigitos(cep)) {
            criterio.E("((Cep >= ? AND Cep < ?) OR (" + palavras.Condicao + "))", faixaDoCep + palavras.Valores);
        } else {
            criterio.E(palavras.Condicao, palavras.Valores);
        }
    }
    // Both told, so that an index on it is still one on the name behind it.
    criterio.E(pedido.Ativo.Escrito() ? "Ativo = ?" : "Ativo IN (1, 2)",
               pedido.Ativo.Escrito() ? QVariantList{pedido.Ativo.Valor()} : QVariantList{});
    return criterio;
}

// Where each part of a street stands in the rows of a table.
struct Colunas {
    std::array<std::optional<std::size_t>, 4> Onde = {0, 1, 2, 3}; // municipality, name, district, postal code

    std::string Celula(const LinhaDeTexto &linha, std::size_t parte) const
    {
        const auto &onde = Onde[parte];
        return onde && *onde < linha.Celulas.size() ? linha.Celulas[*onde] : std::string();
    }
};

constexpr std::array<const char *, 4> Partes = {"município", "nome", "bairro", "CEP"};

std::optional<std::size_t> ParteDoTitulo(const std::string &titulo)
{
    static const std::array<std::vector<std::string>, 4> titulos = {
        std::vector<std::string>{"municipio", "codigo do municipio", "cod municipio", "codmunic", "cod munic", "ibge",
                                 "codigo ibge"},
        {"nome", "logradouro", "nome do logradouro", "rua", "endereco"},
        {"bairro"},
        {"cep"}};
    const std::string procurado = Trim(Substitui(TextoBusca(titulo), "_", " "));
    for (std::size_t parte = 0; parte < titulos.size(); ++parte) {
        if (std::ranges::find(titulos[parte], procurado) != titulos[parte].end()) {
            return parte;
        }
    }
    return std::nullopt;
}

// Spreadsheets write cells behind the last column.
void TiraSobras(LinhaDeTexto &linha)
{
    while (linha.Celulas.size() > Partes.size() && Trim(linha.Celulas.back()).empty()) {
        linha.Celulas.pop_back();
    }
}

// The first row is a heading unless its first cell is a number.
bool EhCabecalho(const LinhaDeTexto &linha)
{
    return !SoDigitos(Trim(linha.Celulas.front()));
}

Colunas ColunasDoCabecalho(const LinhaDeTexto &linha)
{
    Colunas colunas;
    colunas.Onde.fill(std::nullopt);
    for (std::size_t coluna = 0; coluna < linha.Celulas.size(); ++coluna) {
        const std::string titulo = Trim(linha.Celulas[coluna]);
        const auto parte = ParteDoTitulo(titulo);
        if (!parte) {
            throw Recusa("A coluna \"" + titulo +
                         "\" do cabeçalho não é conhecida: a tabela tem as colunas município "
                         "(código do IBGE), nome, bairro e CEP.");
        }
        if (colunas.Onde[*parte]) {
            throw Recusa("O cabeçalho tem duas colunas para " + std::string(Partes[*parte]) + ".");
        }
        colunas.Onde[*parte] = coluna;
    }
    for (std::size_t parte = 0; parte < Partes.size(); ++parte) {
        if (!colunas.Onde[parte]) {
            throw Recusa("Falta no cabeçalho a coluna " + std::string(Partes[parte]) + ".");
        }
    }
    return colunas;
}

Ref<LogradouroED> DaLinha(const LinhaDeTexto &linha, const Colunas &colunas)
{
    if (linha.Celulas.size() != Partes.size()) {
        throw Recusa("A linha tem " + CStr(linha.Celulas.size()) +
                     (linha.Celulas.size() == 1 ? " coluna" : " colunas") + ", e não quatro.");
    }
    const std::string municipio = Trim(colunas.Celula(linha, 0));
    if (!SoDigitos(municipio) || municipio.size() > 7) {
        throw Recusa("O código do município \"" + municipio + "\" não é um código do IBGE, de sete dígitos.");
    }
    auto logradouro = Novo<LogradouroED>();
    logradouro->CodMunic = CLng(municipio);
    logradouro->NomeLograd = colunas.Celula(linha, 1);
    logradouro->Bairro = colunas.Celula(linha, 2);
    logradouro->Cep = colunas.Celula(linha, 3);
    Confere(*logradouro);
    return logradouro;
}

} // namespace

Ref<ListaLogradourosED> ServicoLogradouros::Lista(const ListaLogradourosED &pedido)
{
    RegrasDeTabela::ExigeConsulta(m_Operacao, "consultar logradouros");
    const Criterio criterio = CriterioDe(pedido);
    const std::int32_t maximo = pedido.Maximo.Escrito() ? std::clamp(pedido.Maximo.Valor(), 1, MaisDados) : MaisDados;
    const QString sql = "SELECT " + MapaRegistro::Lista<LogradouroED>() + " FROM LOGRADOURO WHERE " +
                        criterio.Condicao + QString(" ORDER BY NomeBusca, Nome, CodLograd LIMIT %1").arg(maximo + 1);
    auto resposta = Novo<ListaLogradourosED>();
    resposta->HaMais = Indicador::Nao;
    ListaDe<LogradouroED> achados = Novo<Colecao<Ref<LogradouroED>>>();
    Consulta linhas(m_Operacao.Dados(), sql, criterio.Valores);
    while (linhas.Proxima()) {
        if (achados->Count() == maximo) {
            resposta->HaMais = Indicador::Sim;
            break;
        }
        auto logradouro = Novo<LogradouroED>();
        MapaRegistro::Preenche(*logradouro, linhas);
        achados->Add(logradouro);
    }
    if (achados->Count() > 0) {
        resposta->Logradouros = achados;
    }
    return resposta;
}

Ref<LogradouroED> ServicoLogradouros::Inclui(const LogradouroED &pedido)
{
    RegrasDeTabela::ExigeManutencao(m_Operacao, "incluir logradouros");
    auto novo = Novo<LogradouroED>();
    MapaRegistro::Sobrepoe(*novo, pedido);
    novo->CodLograd = 0; // given by the database
    Confere(*novo);
    RecusaIgual(*novo);
    Grava(*novo, "");
    return novo;
}

Ref<LogradouroED> ServicoLogradouros::Altera(const LogradouroED &pedido)
{
    RegrasDeTabela::ExigeManutencao(m_Operacao, "alterar logradouros");
    const Ref<LogradouroED> antes = Acha(pedido.CodLograd);
    RegrasDeTabela::ConfereVersao(m_Operacao, "LOGRADOURO", antes->CodLograd, pedido.Versao, antes->Versao,
                                  Nome(*antes));
    auto depois = Novo<LogradouroED>();
    MapaRegistro::Sobrepoe(*depois, *antes);
    MapaRegistro::Sobrepoe(*depois, pedido);
    if (depois->CodMunic.Valor() != antes->CodMunic.Valor()) {
        throw Recusa(Nome(*antes) + " não pode passar para outro município: inclua um novo lá.");
    }
    depois->Ativo = depois->Ativo.Valor() == Indicador::Nao ? Indicador::Nao : Indicador::Sim;
    Confere(*depois);
    if (depois->Texto() == antes->Texto()) {
        return depois;
    }
    RecusaIgual(*depois);
    depois->Versao = antes->Versao + 1;
    MapaRegistro::Atualiza(m_Operacao.Dados(), "LOGRADOURO", *depois, Derivados(*depois));
    Registra(depois->Ativo.Valor() == antes->Ativo.Valor() ? "altera"
             : depois->Ativo.Valor() == Indicador::Nao     ? "desativa"
                                                           : "reativa",
             *depois);
    return depois;
}

// All rows are looked at before the first is written, so that one refusal leaves none.
Ref<ImportacaoED> ServicoLogradouros::Importa(const ImportacaoED &pedido)
{
    RegrasDeTabela::ExigeManutencao(m_Operacao, "importar logradouros");
    std::vector<LinhaDeTexto> linhas = LeTabelaDeTexto(pedido.Conteudo);
    std::ranges::for_each(linhas, TiraSobras);
    Colunas colunas;
    if (!linhas.empty() && EhCabecalho(linhas.front())) {
        colunas = ColunasDoCabecalho(linhas.front());
        linhas.erase(linhas.begin());
    }
    if (linhas.empty()) {
        throw Recusa("O arquivo não tem nenhuma linha de logradouro.");
    }
    auto resposta = Novo<ImportacaoED>();
    ListaDe<LinhaRecusadaED> recusadas = Novo<Colecao<Ref<LinhaRecusadaED>>>();
    std::vector<Ref<LogradouroED>> lidos;
    std::int32_t nroRecusadas = 0;
    const double total = 2.0 * static_cast<double>(linhas.size()); // each is looked at, and then written
    const auto anda = [&](double feitas, const LinhaDeTexto &linha) {
        m_Operacao.Anda(feitas / total, "Linha " + CStr(linha.Numero));
    };
    for (const LinhaDeTexto &linha : linhas) {
        anda(static_cast<double>(&linha - linhas.data()), linha);
        try {
            lidos.push_back(DaLinha(linha, colunas));
        } catch (const Recusa &motivo) {
            if (++nroRecusadas <= MaisDados) {
                auto recusada = Novo<LinhaRecusadaED>();
                recusada->Linha = linha.Numero;
                recusada->Motivo = motivo.what();
                recusadas->Add(recusada);
            }
        }
    }
    std::int32_t incluidos = 0;
    std::int32_t jaExistiam = 0;
    if (nroRecusadas == 0) {
        for (const Ref<LogradouroED> &lido : lidos) {
            const auto posicao = static_cast<std::size_t>(&lido - lidos.data());
            anda(static_cast<double>(linhas.size() + posicao), linhas[posicao]);
            if (Igual(*lido)) {
                ++jaExistiam;
            } else {
                Grava(*lido, PorTabela);
                ++incluidos;
            }
        }
    } else {
        resposta->Recusadas = recusadas;
    }
    resposta->Incluidos = incluidos;
    resposta->JaExistiam = jaExistiam;
    resposta->NroRecusadas = nroRecusadas;
    return resposta;
}

void ServicoLogradouros::ConfereOferecido(std::int32_t codLograd) const
{
    const Ref<LogradouroED> logradouro = Acha(codLograd);
    if (logradouro->Ativo.Valor() == Indicador::Nao) {
        throw Recusa(Nome(*logradouro) + " foi desativado " +
                     Historico(m_Operacao.Dados()).Ultima("LOGRADOURO", codLograd) + ": escolha outro.");
    }
}

Ref<LogradouroED> ServicoLogradouros::Acha(std::int32_t codLograd) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<LogradouroED>() + " FROM LOGRADOURO WHERE CodLograd = ?";
    Consulta linha(m_Operacao.Dados(), sql, {codLograd});
    if (!linha.Proxima()) {
        throw Recusa("Não existe o logradouro de código " + CStr(codLograd) + ".");
    }
    auto logradouro = Novo<LogradouroED>();
    MapaRegistro::Preenche(*logradouro, linha);
    return logradouro;
}

Ref<LogradouroED> ServicoLogradouros::Igual(const LogradouroED &logradouro) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<LogradouroED>() +
                               " FROM LOGRADOURO WHERE CodMunic = ? AND Ativo IN (1, 2) AND NomeBusca = ? AND Cep = ? "
                               "AND CodLograd <> ?";
    const std::string bairro = TextoBusca(logradouro.Bairro);
    Consulta linhas(m_Operacao.Dados(), sql,
                    {logradouro.CodMunic.Valor(), Q(TextoBusca(logradouro.NomeLograd)), Q(logradouro.Cep),
                     logradouro.CodLograd.Valor()});
    while (linhas.Proxima()) {
        auto outro = Novo<LogradouroED>();
        MapaRegistro::Preenche(*outro, linhas);
        if (TextoBusca(outro->Bairro) == bairro) {
            return outro;
        }
    }
    return nullptr;
}

void ServicoLogradouros::RecusaIgual(const LogradouroED &logradouro) const
{
    if (const Ref<LogradouroED> outro = Igual(logradouro)) {
        throw Recusa(Nome(*outro) + ", com o mesmo bairro e o mesmo CEP, já existe" +
                     (outro->Ativo.Valor() == Indicador::Nao ? ", desativado" : "") + "; foi gravado por último " +
                     Historico(m_Operacao.Dados()).Ultima("LOGRADOURO", outro->CodLograd) + ".");
    }
}

// The database numbers from the greatest code on.
void ServicoLogradouros::Grava(LogradouroED &novo, const std::string &motivo)
{
    novo.Ativo = Indicador::Sim;
    novo.Versao = 1;
    novo.CodLograd =
        static_cast<std::int32_t>(MapaRegistro::Insere(m_Operacao.Dados(), "LOGRADOURO", novo, Derivados(novo)));
    Registra("inclui", novo, motivo);
}

void ServicoLogradouros::Registra(const char *acao, const LogradouroED &depois, const std::string &motivo)
{
    const std::int32_t codigo = depois.CodLograd;
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                  {"LOGRADOURO", codigo, depois.Versao, "LOGRADOURO", codigo, acao, motivo});
}

} // namespace mesa
