#include "services/ServicoLayouts.h"

#include "host/Conversoes.h"
#include "host/Falha.h"
#include "host/Indicador.h"
#include "host/Texto.h"
#include "services/Conferencia.h"
#include "services/Historico.h"
#include "services/MapaRegistro.h"
#include "services/Recusa.h"
#include "services/RegrasDeTabela.h"

#include <QFile>

#include <string_view>

namespace mesa {

namespace {

constexpr const char *SemLayout = "NENHUM";
// What would break a file name, a look-up or the item of a combo.
constexpr std::string_view Proibidos = "'\"/\\:*?<>|";

std::string Nome(const LayoutED &layout)
{
    return "O layout " + layout.NomeLayout.Valor();
}

std::string NomeConferido(const std::string &pedido)
{
    const std::string nome = RegrasDeTabela::TextoLimpo("LAYOUT", "Nome", pedido);
    if (nome.find_first_of(Proibidos) != std::string::npos) {
        throw Recusa("O nome do layout não pode ter nenhum dos caracteres " + std::string(Proibidos) + ".");
    }
    if (UCase(nome) == SemLayout) {
        throw Recusa("O nome " + std::string(SemLayout) + " quer dizer que o equipamento não tem layout.");
    }
    return nome;
}

// Lines and tabs are the only ones of its characters that are not seen.
void ConfereConteudo(const std::string &conteudo)
{
    const Esquema::Coluna &coluna = *Esquema::Acha("LAYOUT")->Acha("Conteudo");
    Conferencia::Coluna(coluna, Q(conteudo));
    std::string semQuebras = conteudo;
    std::erase_if(semQuebras, [](char c) { return c == '\r' || c == '\n' || c == '\t'; });
    Conferencia::Texto(coluna, semQuebras);
}

} // namespace

Ref<ListaLayoutsED> ServicoLayouts::Lista(const ListaLayoutsED &pedido)
{
    RegrasDeTabela::ExigeConsulta(m_Operacao, "consultar layouts");
    const bool oferecidos = pedido.Oferecidos.Valor() == Indicador::Sim;
    ListaDe<LayoutED> lista = Novo<Colecao<Ref<LayoutED>>>();
    {
        Consulta linhas(m_Operacao.Dados(), "SELECT " + MapaRegistro::Lista<LayoutED>() + " FROM LAYOUT" +
                                                (oferecidos ? " WHERE Ativo = 1" : "") + " ORDER BY Nome");
        while (linhas.Proxima()) {
            auto layout = Novo<LayoutED>();
            MapaRegistro::Preenche(*layout, linhas);
            lista->Add(layout);
        }
    }
    if (oferecidos) {
        AcrescentaDeixados(lista);
    }
    auto resposta = Novo<ListaLayoutsED>();
    if (lista->Count() > 0) {
        resposta->Layouts = lista;
    }
    return resposta;
}

Ref<LayoutED> ServicoLayouts::Inclui(const LayoutED &pedido)
{
    RegrasDeTabela::ExigeManutencao(m_Operacao, "incluir layouts");
    auto novo = Novo<LayoutED>();
    novo->NomeLayout = NomeConferido(pedido.NomeLayout);
    novo->Conteudo = pedido.Conteudo.Valor();
    novo->Ativo = Indicador::Sim;
    novo->Versao = 1;
    ConfereConteudo(novo->Conteudo);
    RecusaNomeTomado(novo->NomeLayout);
    novo->NroLayout = static_cast<std::int32_t>(MapaRegistro::Insere(m_Operacao.Dados(), "LAYOUT", *novo));
    Registra("inclui", *novo);
    return novo;
}

Ref<LayoutED> ServicoLayouts::Altera(const LayoutED &pedido)
{
    RegrasDeTabela::ExigeManutencao(m_Operacao, "alterar layouts");
    const Ref<LayoutED> antes = Acha(pedido.NroLayout);
    RegrasDeTabela::ConfereVersao(m_Operacao, "LAYOUT", antes->NroLayout, pedido.Versao, antes->Versao, Nome(*antes));
    auto depois = Novo<LayoutED>();
    MapaRegistro::Sobrepoe(*depois, *antes);
    MapaRegistro::Sobrepoe(*depois, pedido);
    if (depois->NomeLayout.Valor() != antes->NomeLayout.Valor()) {
        throw Recusa(Nome(*antes) + " não pode mudar de nome, pelo qual os equipamentos o conhecem: inclua outro.");
    }
    depois->Ativo = depois->Ativo.Valor() == Indicador::Nao ? Indicador::Nao : Indicador::Sim;
    ConfereConteudo(depois->Conteudo);
    if (depois->Texto() == antes->Texto()) {
        return depois;
    }
    depois->Versao = antes->Versao + 1;
    MapaRegistro::Atualiza(m_Operacao.Dados(), "LAYOUT", *depois);
    Registra(depois->Ativo.Valor() == antes->Ativo.Valor() ? "altera"
             : depois->Ativo.Valor() == Indicador::Nao     ? "desativa"
                                                           : "reativa",
             *depois);
    return depois;
}

void ServicoLayouts::ConfereOferecido(const std::string &nome) const
{
    if (nome.empty() || nome == SemLayout) {
        return;
    }
    Consulta linha(m_Operacao.Dados(), "SELECT NroLayout, Ativo FROM LAYOUT WHERE Nome = ?", {Q(nome)});
    if (!linha.Proxima()) {
        throw Recusa("Não existe o layout \"" + nome + "\".");
    }
    if (linha.Inteiro(1) != Indicador::Sim) {
        throw Recusa("O layout " + nome + " foi desativado " +
                     Historico(m_Operacao.Dados()).Ultima("LAYOUT", linha.Inteiro(0)) + ": escolha outro.");
    }
}

Ref<LayoutED> ServicoLayouts::Acha(std::int32_t nroLayout) const
{
    static const QString sql = "SELECT " + MapaRegistro::Lista<LayoutED>() + " FROM LAYOUT WHERE NroLayout = ?";
    Consulta linha(m_Operacao.Dados(), sql, {nroLayout});
    if (!linha.Proxima()) {
        throw Recusa("Não existe o layout de número " + CStr(nroLayout) + ".");
    }
    auto layout = Novo<LayoutED>();
    MapaRegistro::Preenche(*layout, linha);
    return layout;
}

// Names of files are the same in capitals and small letters.
void ServicoLayouts::RecusaNomeTomado(const std::string &nome) const
{
    Consulta linhas(m_Operacao.Dados(), "SELECT NroLayout, Nome, Ativo FROM LAYOUT");
    while (linhas.Proxima()) {
        if (UCase(linhas.Texto(1)) == UCase(nome)) {
            throw Recusa("Já existe o layout " + linhas.Texto(1) +
                         (linhas.Inteiro(2) == Indicador::Sim ? "" : ", desativado") + "; foi gravado por último " +
                         Historico(m_Operacao.Dados()).Ultima("LAYOUT", linhas.Inteiro(0)) + ".");
        }
    }
}

void ServicoLayouts::AcrescentaDeixados(const ListaDe<LayoutED> &lista) const
{
    Consulta nomes(m_Operacao.Dados(),
                   "SELECT DISTINCT ArquivoLayout FROM EQUIPAMENTO WHERE ClienteInc = ? AND ArquivoLayout <> '' "
                   "AND ArquivoLayout <> ? AND ArquivoLayout NOT IN (SELECT Nome FROM LAYOUT WHERE Ativo = 1) "
                   "ORDER BY ArquivoLayout",
                   {Q(m_Operacao.Quem().Cliente), SemLayout});
    while (nomes.Proxima()) {
        auto deixado = Novo<LayoutED>();
        deixado->NomeLayout = nomes.Texto(0);
        deixado->Ativo = Indicador::Nao;
        lista->Add(deixado);
    }
}

void ServicoLayouts::Registra(const char *acao, const LayoutED &depois)
{
    const std::int32_t numero = depois.NroLayout;
    Historico(m_Operacao.Dados())
        .Registra(m_Operacao.Agora(), m_Operacao.Quem().Numero,
                  {"LAYOUT", numero, depois.Versao, "LAYOUT", numero, acao});
}

std::vector<Ref<LayoutED>> LayoutsDoPrograma()
{
    std::vector<Ref<LayoutED>> layouts;
    for (const char *nome : {"PADRAO", "LOMBADA", "PARDAL", "ESTATICO", "AGENTE"}) {
        QFile arquivo(QString(":/data/layouts/%1.LAY").arg(nome));
        if (!arquivo.open(QIODevice::ReadOnly)) {
            throw Falha(NumeroFalha::ArquivoNaoEncontrado, "Servicos",
                        "Falta o layout " + std::string(nome) + " no programa.");
        }
        auto layout = Novo<LayoutED>();
        layout->NomeLayout = nome;
        layout->Conteudo = arquivo.readAll().toStdString();
        layout->Ativo = Indicador::Sim;
        layout->Versao = 1;
        layouts.push_back(layout);
    }
    return layouts;
}

} // namespace mesa
