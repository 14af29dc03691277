#include "limits/frmLimitesDif.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"

Desenho frmLimitesDif::Desenho() const
{
    const Peca lista = {
        .Ajustes = AjustesZtList{.TipoMenu = 2,
                                 .AncorarAoForm = true,
                                 .BotoesLaterais = true,
                                 .BotaoEliminar = false,
                                 .BotaoVisivel = false,
                                 .BotaoEnabled = false},
        .Nome = "ztLista",
        .NomeAcessivel = "Limites",
        .Elastica = true,
    };
    return {.Caption = "Limites Diferenciados", .Largura = 7200, .Altura = 4800, .Raiz = EmColuna({lista})};
}

void frmLimitesDif::LigaControles()
{
    Toma(ztLista, "ztLista");
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
