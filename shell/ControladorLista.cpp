#include "shell/ControladorLista.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

void BloqueiaSemPermissao(const Ref<IztList> &lista, const std::string &chave, const std::string &acao)
{
    lista->MenuBloqueado(chave, !TemPermissao(acao));
}

void ControladorLista::Passa(std::string_view procedimento) const
{
    PassaFalha(std::string(" < ").append(NomeTipo()).append(".").append(procedimento));
}

void ControladorLista::Prepara(const Ref<IztList> &lista, bool somenteLeitura)
{
    m_ZtList = lista;
    m_SomenteLeitura = somenteLeitura;
    Desliga();
    if (lista) { // Nothing has no events; configuring it raises the fault
        Liga(lista->GotFocus(), &ControladorLista::HabilitaMenu, "m_ZtList_GotFocus");
        Liga(lista->ItemClick(), &ControladorLista::HabilitaMenu, "m_ZtList_ItemClick");
        Liga(lista->AntesDeRemoverItem(), &ControladorLista::m_ZtList_AntesDeRemoverItem,
             "m_ZtList_AntesDeRemoverItem");
        Liga(lista->DepoisDeRemoverItem(), &ControladorLista::m_ZtList_DepoisDeRemoverItem);
        Liga(lista->ItemMenuClicado(), &ControladorLista::ItemMenuClicado, m_ItemMenuClicado);
    }
    gsubConfigLista(Colunas(), lista);
    MenuInicial();
}

void ControladorLista::MenuInicial()
try {
    BloqueiaMenu();
    HabilitaMenu();
} catch (...) {
    Passa("MenuInicial");
}

void ControladorLista::HabilitaMenu()
try {
    const std::int32_t itens = m_ZtList->NroItens();
    const bool temItens = itens > 0;
    const bool podeExcluir = PodeExcluir(itens);
    const bool altera = !m_SomenteLeitura;
    m_ZtList->ItemMenu(MenuLista::Detalhes)->DefineEnabled(temItens);
    m_ZtList->ItemMenu(MenuLista::Novo)->DefineEnabled(altera);
    m_ZtList->ItemMenu(MenuLista::Editar)->DefineEnabled(altera && temItens);
    m_ZtList->ItemMenu(MenuLista::Excluir)->DefineEnabled(altera && temItens && podeExcluir);
} catch (...) {
    Passa("HabilitaMenu");
}

void ControladorLista::m_ZtList_AntesDeRemoverItem(std::int32_t &linha)
{
    if (!Excluir(linha)) {
        linha = 0;
    }
}

void ControladorLista::m_ZtList_DepoisDeRemoverItem()
try {
    HabilitaMenu();
} catch (...) {
    Passa("m_ZtList_DepoisDeRemoverItem");
}

void ControladorLista::ItemMenuClicado(const std::string &chave)
{
    if (chave == MenuLista::Novo) {
        Novo();
    } else if (chave == MenuLista::Editar) {
        Editar();
    } else if (chave == MenuLista::Detalhes) {
        Detalhes();
    }
}
