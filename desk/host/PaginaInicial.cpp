#include "desk/host/PaginaInicial.h"

#include "desk/host/Administracao.h"
#include "desk/host/Ferramentas.h"
#include "host/Conversoes.h"
#include "services/Permissoes.h"
#include "shell/ModGeral.h"

namespace mesa {

namespace {

std::string QuemE(const Operador &operador)
{
    return operador.Nome + ", " + operador.Cliente + (operador.Setor.empty() ? "" : ", " + operador.Setor);
}

std::string SemPermissao(bool administra)
{
    const std::string falta = "O seu usuário não tem a permissão \"" + Permissoes::EmPalavras(Permissoes::Objeto, "") +
                              "\", e por isso não há equipamentos para mostrar. ";
    return falta + (administra ? "Quem administra os usuários, como você, pode dá-la em Administração."
                               : "Peça-a ao administrador do registro.");
}

} // namespace

const std::vector<std::string> &PaginaInicial::Colunas()
{
    static const std::vector<std::string> colunas = {"Código", "Tipo", "Cliente", "Aberto em"};
    return colunas;
}

PaginaInicial::PaginaInicial(SessaoServico &sessao, std::vector<EquipamentoRecente> recentes, const std::string &onde)
    : m_Quem(QuemE(sessao.Operador()) + (onde.empty() ? "" : " - " + onde))
{
    const auto administra = [&](const std::string &acao) {
        return sessao.TemPermissao(Permissoes::Sistema, Permissoes::ObjetoAdministracao, acao);
    };
    if (sessao.TemPermissao(Permissoes::Sistema, Permissoes::Objeto, "")) {
        for (const Ferramenta &ferramenta : Ferramentas()) {
            m_Acoes.push_back({ferramenta.Nome, ferramenta.NaPagina, ferramenta.Explicacao, ferramenta.Atalho});
        }
        m_Acoes.push_back({"consultaAutuacao", "&Consulta para autuação",
                           "O equipamento e a aferição que valiam na data de uma infração.", "Ctrl+3"});
        for (EquipamentoRecente &recente : recentes) {
            m_Recentes.push_back(
                {{recente.Codigo, gFunDescrEquipto(recente.TipoEquip) + (recente.Ativo ? "" : " (desativado)"),
                  recente.Cliente, Format(recente.Quando, "dd/mm/yyyy") + " " + Format(recente.Quando, "hh:nn")},
                 std::move(recente)});
        }
    } else {
        m_Impedimento = SemPermissao(administra(Permissoes::Usuarios));
    }
    if (administra(Permissoes::Usuarios)) {
        m_Acoes.push_back(
            {"administracao", "Usuários e &permissões", "Quem entra no registro, e o que cada um pode.", ""});
    }
}

} // namespace mesa
