#include "limits/frmLimitesDif.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

void frmLimitesDif::CriaControles()
{
    DefineTamanho(7200, 4800);
    AjustesZtList lista;
    lista.Nome = "ztLista";
    lista.TipoMenu = 2;
    lista.AncorarAoForm = true;
    lista.BotoesLaterais = true;
    lista.BotaoEliminar = false;
    lista.BotaoVisivel = false;
    lista.BotaoEnabled = false;
    ztLista = Guarda(Host().Controles()->CriaZtList(EsteForm(), lista));
}

void frmLimitesDif::CarregaForm(const std::string &CodEquip, std::int32_t NroIntEquip, std::int16_t Tipo)
try {
    Carregar();
    m_COLimiteDif = Novo<COLimiteDif>();
    if (!m_COLimiteDif->Carrega(ztLista, CodEquip, NroIntEquip, Tipo)) {
        AbandonaCarga();
        return;
    }
    DefineCaption(m_COLimiteDif->DescrModulo() + " [" + CodEquip + "]");
    goGeral->FormShow(EsteForm(), true, nullptr);
} catch (...) {
    AbandonaCarga();
    throw;
}

void frmLimitesDif::Form_Unload(bool &)
{
    m_COLimiteDif = nullptr;
}
