#include "desk/host/PaginaLogradouros.h"

#include "host/Conversoes.h"
#include "host/Texto.h"

namespace mesa {

namespace {

constexpr std::size_t LetrasDoCep = 9;

Ref<LogradouroED> PedidoDo(const LogradouroED &logradouro)
{
    auto pedido = Novo<LogradouroED>();
    pedido->CodLograd = logradouro.CodLograd;
    pedido->Versao = logradouro.Versao;
    return pedido;
}

std::string CepComTraco(const std::string &cep)
{
    return cep.size() == 8 ? cep.substr(0, 5) + "-" + cep.substr(5) : cep;
}

} // namespace

PaginaLogradouros::PaginaLogradouros(Ref<SessaoServico> sessao) : PaginaDe(std::move(sessao))
{
    m_Criterios.Nome = "criterios";
    m_Criterios.Campos.push_back({.Nome = "municipio",
                                  .Rotulo = "Mu&nicípio:",
                                  .Especie = EspecieDoCampo::Procura,
                                  .Valor = "",
                                  .Opcoes = OpcoesDeMunicipio()});
    m_Criterios.Campos.push_back({.Nome = "procurado", .Rotulo = "&Parte do nome ou CEP:"});
    m_Criterios.Campos.push_back({.Nome = "desativados",
                                  .Rotulo = "&Ver também os desativados",
                                  .Especie = EspecieDoCampo::Marca,
                                  .Valor = "2"});
}

std::vector<std::string> PaginaLogradouros::Colunas() const
{
    return {"Código", "Nome", "Bairro", "CEP", "Situação"};
}

std::vector<ComandoDaPagina> PaginaLogradouros::Comandos() const
{
    using Pede = ComandoDaPagina::Pede;
    return {{"incluir", "&Incluir...", Pede::Ficha},
            {"editar", "&Editar...", Pede::Ficha},
            {"desativar", "&Desativar"},
            {"reativar", "Rea&tivar"},
            {"importar", "I&mportar...", Pede::Arquivo}};
}

std::vector<std::string> PaginaLogradouros::LinhaDe(const LogradouroED &logradouro) const
{
    return {CStr(logradouro.CodLograd.Valor()), logradouro.NomeLograd, logradouro.Bairro, CepComTraco(logradouro.Cep),
            Situacao(logradouro.Ativo)};
}

std::string PaginaLogradouros::ChaveDe(const LogradouroED &logradouro) const
{
    return CStr(logradouro.CodLograd.Valor());
}

bool PaginaLogradouros::Carrega(std::string &recusa)
{
    const std::string &municipio = m_Criterios.Valor("municipio");
    const std::string procurado = Trim(m_Criterios.Valor("procurado"));
    Mostra(nullptr);
    m_Nota = "Informe o município, ou ao menos cinco algarismos do CEP.";
    if (municipio.empty() && procurado.empty()) { // nothing has been asked for yet
        return true;
    }
    auto pedido = Novo<ListaLogradourosED>();
    pedido->CodMunic = municipio.empty() ? 0 : CLng(municipio);
    pedido->Procurado = procurado;
    if (!m_Criterios.Marcado("desativados")) {
        pedido->Ativo = Sim;
    }
    const auto lidos = Pede<ListaLogradourosED>("listaLogradouros", pedido, recusa);
    if (!lidos) {
        return false;
    }
    Mostra(lidos->Logradouros);
    m_Nota = lidos->Logradouros.Valor().Nada() ? "Nenhum logradouro foi encontrado."
             : lidos->HaMais == Sim            ? "Há mais logradouros: informe uma parte do nome ou do CEP."
                                               : "";
    return true;
}

bool PaginaLogradouros::Habilitado(const std::string &comando, std::optional<std::size_t> linha) const
{
    if (comando == "incluir" || comando == "importar") {
        return true;
    }
    const LogradouroED *logradouro = Registro(linha);
    return logradouro != nullptr && (comando == "editar" || (comando == "reativar") == (logradouro->Ativo == Nao));
}

std::string PaginaLogradouros::Pergunta(const std::string &comando, std::optional<std::size_t> linha) const
{
    const LogradouroED *logradouro = Registro(linha);
    if (logradouro == nullptr || comando != "desativar") {
        return "";
    }
    return "Desativar o logradouro " + logradouro->NomeLograd.Valor() + ", de código " +
           CStr(logradouro->CodLograd.Valor()) +
           "? Ele deixa de ser oferecido; os sensores que o têm continuam com ele.";
}

std::optional<Ficha> PaginaLogradouros::Abre(const std::string &comando, std::optional<std::size_t> linha,
                                             std::string &)
{
    const LogradouroED *escolhido = Registro(linha);
    const bool inclusao = comando == "incluir";
    if (!inclusao && escolhido == nullptr) {
        return std::nullopt;
    }
    const Ref<LogradouroED> logradouro = inclusao ? Novo<LogradouroED>() : ComoTipo<LogradouroED>(escolhido->Copia());
    Ficha ficha;
    ficha.Nome = "FichaLogradouro";
    ficha.Titulo = inclusao ? "Logradouro novo" : "Logradouro " + CStr(logradouro->CodLograd.Valor());
    CampoDaFicha municipio{.Nome = "municipio", .Rotulo = "&Município:", .Especie = EspecieDoCampo::Procura};
    municipio.Opcoes = OpcoesDeMunicipio();
    municipio.Valor = inclusao ? m_Criterios.Valor("municipio") : CStr(logradouro->CodMunic.Valor());
    municipio.Travado = !inclusao;
    ficha.Campos.push_back(municipio);
    ficha.Campos.push_back({.Nome = "nome",
                            .Rotulo = "&Nome:",
                            .Valor = logradouro->NomeLograd,
                            .Maximo = MaximoDe("LOGRADOURO", "Nome")});
    ficha.Campos.push_back({.Nome = "bairro",
                            .Rotulo = "&Bairro:",
                            .Valor = logradouro->Bairro,
                            .Maximo = MaximoDe("LOGRADOURO", "Bairro")});
    ficha.Campos.push_back(
        {.Nome = "cep", .Rotulo = "C&EP:", .Valor = CepComTraco(logradouro->Cep), .Maximo = LetrasDoCep});
    ficha.Salva = [this, logradouro, inclusao](Ficha &aberta) -> std::optional<ProblemaDaFicha> {
        if (aberta.Valor("municipio").empty()) {
            return ProblemaDaFicha{"municipio", "Informe o município."};
        }
        if (Trim(aberta.Valor("nome")).empty()) {
            return ProblemaDaFicha{"nome", "Informe o nome do logradouro, com o tipo: \"Rua Bento Gonçalves\"."};
        }
        auto pedido = inclusao ? Novo<LogradouroED>() : PedidoDo(*logradouro);
        if (inclusao) {
            pedido->CodMunic = CLng(aberta.Valor("municipio"));
            pedido->Ativo = Sim;
        }
        pedido->NomeLograd = Trim(aberta.Valor("nome"));
        pedido->Bairro = Trim(aberta.Valor("bairro"));
        pedido->Cep = Trim(aberta.Valor("cep"));
        return Salva<LogradouroED>(inclusao ? "incluiLogradouro" : "alteraLogradouro", pedido);
    };
    return ficha;
}

bool PaginaLogradouros::Faz(const std::string &comando, std::optional<std::size_t> linha, std::string &recusa)
{
    const LogradouroED *logradouro = Registro(linha);
    if (logradouro == nullptr) {
        return false;
    }
    auto pedido = PedidoDo(*logradouro);
    pedido->Ativo = comando == "desativar" ? Nao : Sim;
    return Pede<LogradouroED>("alteraLogradouro", pedido, recusa) && Carrega(recusa);
}

std::optional<RelatoDaPagina> PaginaLogradouros::FazComArquivo(const std::string &, const std::string &conteudo,
                                                               std::string &recusa)
{
    auto pedido = Novo<ImportacaoED>();
    pedido->Conteudo = conteudo;
    const auto feita = Pede<ImportacaoED>("importaLogradouros", pedido, recusa);
    if (!feita) {
        return std::nullopt;
    }
    RelatoDaPagina relato;
    const std::int32_t recusadas = feita->NroRecusadas;
    if (recusadas == 0) {
        relato.Frase = CStr(feita->Incluidos.Valor()) +
                       (feita->Incluidos == 1 ? " logradouro foi incluído" : " logradouros foram incluídos") + "; " +
                       CStr(feita->JaExistiam.Valor()) + (feita->JaExistiam == 1 ? " já existia." : " já existiam.");
        return relato;
    }
    relato.Frase = "Nada foi incluído: " + CStr(recusadas) +
                   (recusadas == 1 ? " linha da tabela foi recusada." : " linhas da tabela foram recusadas.") +
                   " Corrija a tabela e importe de novo.";
    const auto &lista = feita->Recusadas.Valor();
    for (std::int32_t n = 1; lista && n <= lista->Count(); ++n) {
        relato.Linhas.push_back("Linha " + CStr(lista->Item(n)->Linha.Valor()) + ": " + lista->Item(n)->Motivo.Valor());
    }
    if (recusadas > static_cast<std::int32_t>(relato.Linhas.size())) {
        relato.Linhas.push_back("E mais " + CStr(recusadas - static_cast<std::int32_t>(relato.Linhas.size())) + ".");
    }
    return relato;
}

} // namespace mesa
