#include "tests/support/RetratoForm.h"

#include "controls/Acionavel.h"
#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "host/IControlesPadrao.h"
#include "tests/support/TextoLog.h"

#include <cstdint>

namespace {

std::string Maximo(std::int32_t maximo)
{
    return maximo > 0 ? ", max " + std::to_string(maximo) : "";
}

std::string Trava(bool travado)
{
    return travado ? ", somente leitura" : "";
}

std::string Ajustes(const ztMask &campo)
{
    const AjustesZtMask &ajustes = campo.Ajustes();
    return Maximo(ajustes.MaxLength) + ", tipo " + std::to_string(ajustes.Tipo) +
           (ajustes.Mascara.empty() ? "" : ", mascara " + TextoLog(ajustes.Mascara)) +
           (ajustes.CaracteresAceitos.empty() ? "" : ", aceita " + TextoLog(ajustes.CaracteresAceitos)) +
           (ajustes.TabelaCaracteres == 0 ? "" : ", tabela " + std::to_string(ajustes.TabelaCaracteres)) +
           Trava(campo.ReadOnly());
}

std::string Ajustes(const ztList &lista)
{
    const AjustesZtList &ajustes = lista.Ajustes();
    return ", tipomenu " + std::to_string(ajustes.TipoMenu) + (ajustes.AncorarAoForm ? ", ancorada" : "") +
           (ajustes.BotoesLaterais ? ", botoes laterais" : "") + (ajustes.BotaoEliminar ? ", botao eliminar" : "") +
           (ajustes.BotaoVisivel ? ", botao visivel" : "") + (ajustes.BotaoEnabled ? ", botao enabled" : "");
}

std::string Paginas(const ISSTab &abas)
{
    std::string texto;
    for (std::int16_t pagina = 0; pagina < abas.Tabs(); ++pagina) {
        texto += (texto.empty() ? " [" : ", ") + TextoLog(abas.TabCaption(pagina)) +
                 (abas.TabEnabled(pagina) ? "" : " indisponivel") + (abas.TabVisible(pagina) ? "" : " oculta");
    }
    return texto + "]";
}

std::string Proprio(const IControle &controle)
{
    if (const auto *texto = dynamic_cast<const ITextBox *>(&controle)) {
        return Maximo(texto->MaxLength()) + Trava(texto->Locked());
    }
    if (const auto *observacao = dynamic_cast<const ztVeiObservacao *>(&controle)) {
        return Maximo(observacao->MaxLength()) + Trava(observacao->Locked());
    }
    if (const auto *mascara = dynamic_cast<const ztMask *>(&controle)) {
        return Ajustes(*mascara);
    }
    if (const auto *data = dynamic_cast<const IztData *>(&controle)) {
        return Trava(data->ReadOnly());
    }
    if (const auto *combo = dynamic_cast<const IztCombo *>(&controle)) {
        return Trava(combo->ComboSomenteLeitura());
    }
    if (const auto *caixa = dynamic_cast<const ICheckBox *>(&controle)) {
        return caixa->Value() == 1 ? ", marcada" : "";
    }
    if (const auto *opcao = dynamic_cast<const IOptionButton *>(&controle)) {
        return opcao->Value() ? ", ligada" : "";
    }
    if (const auto *botao = dynamic_cast<const Acionavel *>(&controle)) {
        return std::string(botao->Padrao() ? ", padrao" : "") + (botao->Cancelador() ? ", cancela" : "");
    }
    if (const auto *abas = dynamic_cast<const ISSTab *>(&controle)) {
        return Paginas(*abas);
    }
    if (const auto *lista = dynamic_cast<const ztList *>(&controle)) {
        return Ajustes(*lista);
    }
    return {};
}

} // namespace

std::string RetratoControle(const Ref<IControle> &controle)
{
    std::string linha = std::string(NomeEspecie(controle->Especie())) + " " + TextoLog(controle);
    if (const Ref<IControle> container = controle->Container()) {
        linha += " em " + TextoLog(container);
    }
    if (controle->Pagina() >= 0) {
        linha += " pagina " + std::to_string(controle->Pagina());
    }
    if (!controle->Caption().empty()) {
        linha += " " + TextoLog(controle->Caption());
    }
    if (!controle->Rotulo().empty()) {
        linha += ", rotulo " + TextoLog(controle->Rotulo());
    }
    linha += Proprio(*controle);
    return linha + (controle->Enabled() ? "" : ", desabilitado") + (controle->Visible() ? "" : ", oculto");
}

std::vector<std::string> Retrato(const Ref<IForm> &form)
{
    std::vector<std::string> linhas;
    for (const Ref<IControle> &controle : form->Controles()) {
        linhas.push_back(RetratoControle(controle));
    }
    return linhas;
}
