#include "desk/host/FichaDasPreferencias.h"

#include "desk/host/Preferencias.h"
#include "host/Conversoes.h"
#include "host/Texto.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace mesa {

namespace {

constexpr std::array<std::int32_t, 8> Tamanhos = {80, 90, 100, 110, 125, 150, 175, 200};

std::vector<OpcaoDoCampo> Temas()
{
    return {{"0", "O do sistema"}, {"1", "Claro"}, {"2", "Escuro"}};
}

// One that the settings file tells and the list does not have stays what it is.
std::vector<OpcaoDoCampo> OpcoesDeTamanho(std::int32_t atual)
{
    std::vector<std::int32_t> tamanhos(Tamanhos.begin(), Tamanhos.end());
    if (!std::ranges::binary_search(tamanhos, atual)) {
        tamanhos.insert(std::ranges::upper_bound(tamanhos, atual), atual);
    }
    std::vector<OpcaoDoCampo> opcoes;
    for (const std::int32_t tamanho : tamanhos) {
        opcoes.push_back({CStr(tamanho), CStr(tamanho) + " %" + (tamanho == 100 ? " (o do sistema)" : "")});
    }
    return opcoes;
}

std::vector<OpcaoDoCampo> OpcoesDeImpressora(const std::vector<std::string> &impressoras, const std::string &atual)
{
    std::vector<OpcaoDoCampo> opcoes = {{"", "A padrão do sistema"}};
    for (const std::string &nome : impressoras) {
        opcoes.push_back({nome, nome});
    }
    if (!atual.empty() && std::ranges::find(impressoras, atual) == impressoras.end()) {
        opcoes.push_back({atual, atual + " (não encontrada)"});
    }
    return opcoes;
}

std::optional<ProblemaDaFicha> Salva(Ficha &aberta, Preferencias &preferencias)
{
    const std::string &minutos = aberta.Valor("minutos");
    if (minutos.empty() || CLng(minutos) > Preferencias::MaisMinutos) {
        return ProblemaDaFicha{"minutos", "Informe de 0 a 1440 minutos."};
    }
    const std::string pasta = Trim(aberta.Valor("pastaDasCabecas"));
    if (!pasta.empty() && !(std::filesystem::path(pasta).is_absolute() && std::filesystem::is_directory(pasta))) {
        return ProblemaDaFicha{"pastaDasCabecas", "Informe o caminho inteiro de uma pasta que exista, ou nada."};
    }
    preferencias.DefineCopiaDiaria(aberta.Marcado("copiaDiaria"));
    preferencias.DefinePastaDasCabecas(pasta);
    preferencias.DefineMinutosAteTravar(CLng(minutos));
    preferencias.DefineLembraUsuario(aberta.Marcado("lembraUsuario"));
    preferencias.DefineAspecto({static_cast<Tema>(CLng(aberta.Valor("tema"))), CLng(aberta.Valor("tamanhoDoTexto")),
                                aberta.Valor("impressora")});
    return std::nullopt;
}

} // namespace

Ficha FichaDasPreferencias(Preferencias &preferencias, const std::vector<std::string> &impressoras,
                           const std::function<void()> &esquece)
{
    constexpr const char *aparencia = "Aparência e impressão";
    constexpr const char *entrada = "Entrada e trava";
    constexpr const char *cuidados = "Cuidados com o registro";
    const Aspecto aspecto = preferencias.Aspecto();
    Ficha ficha;
    ficha.Nome = "Preferencias";
    ficha.Titulo = "Preferências";
    ficha.Frase =
        "Sem uso por tantos minutos, a mesa trava e pede a senha de novo; as janelas ficam como estão. Com 0, "
        "nunca trava.";
    ficha.Campos.push_back({.Nome = "minutos",
                            .Rotulo = "&Minutos até travar:",
                            .Especie = EspecieDoCampo::Inteiro,
                            .Valor = CStr(preferencias.MinutosAteTravar()),
                            .Maximo = 4,
                            .Grupo = entrada});
    ficha.Campos.push_back({.Nome = "lembraUsuario",
                            .Rotulo = "&Lembrar o usuário que entrou por último",
                            .Especie = EspecieDoCampo::Marca,
                            .Valor = preferencias.LembraUsuario() ? "1" : "2",
                            .Grupo = entrada});
    ficha.Campos.push_back({.Nome = "tema",
                            .Rotulo = "&Tema:",
                            .Especie = EspecieDoCampo::Escolha,
                            .Valor = CStr(static_cast<std::int32_t>(aspecto.Cores)),
                            .Opcoes = Temas(),
                            .Grupo = aparencia});
    ficha.Campos.push_back({.Nome = "tamanhoDoTexto",
                            .Rotulo = "Tamanho do te&xto:",
                            .Especie = EspecieDoCampo::Escolha,
                            .Valor = CStr(aspecto.TamanhoDoTexto),
                            .Opcoes = OpcoesDeTamanho(aspecto.TamanhoDoTexto),
                            .Grupo = aparencia});
    ficha.Campos.push_back({.Nome = "impressora",
                            .Rotulo = "&Impressora:",
                            .Especie = EspecieDoCampo::Escolha,
                            .Valor = aspecto.Impressora,
                            .Opcoes = OpcoesDeImpressora(impressoras, aspecto.Impressora),
                            .Grupo = aparencia});
    ficha.Campos.push_back({.Nome = "copiaDiaria",
                            .Rotulo = "&Fazer uma cópia do registro por dia",
                            .Especie = EspecieDoCampo::Marca,
                            .Valor = preferencias.CopiaDiaria() ? "1" : "2",
                            .Grupo = cuidados});
    ficha.Campos.push_back({.Nome = "pastaDasCabecas",
                            .Rotulo = "&Pasta para a cabeça do histórico de cada dia:",
                            .Valor = preferencias.PastaDasCabecas(),
                            .Grupo = cuidados});
    ficha.Comandos.push_back({.Nome = "esquecer",
                              .Rotulo = "&Esquecer o que foi lembrado...",
                              .Pergunta = "Os lugares das janelas, as colunas, os critérios, as pastas e os usuários "
                                          "que a mesa lembra serão esquecidos. Esquecer?",
                              .Feito = "O que foi lembrado foi esquecido.",
                              .Faz = [&preferencias, esquece] {
                                  preferencias.EsqueceUsuarios();
                                  if (esquece) {
                                      esquece();
                                  }
                              }});
    ficha.Salva = [&preferencias](Ficha &aberta) { return Salva(aberta, preferencias); };
    return ficha;
}

} // namespace mesa
