#include "tests/support/RetratoForm.h"

#include "controls/Acionavel.h"
#include "controls/ztCombo.h"
#include "controls/ztEndereco.h"
#include "controls/ztList.h"
#include "controls/ztMask.h"
#include "controls/ztVeiObservacao.h"
#include "host/IControlesPadrao.h"
#include "tests/support/ArquivoIgual.h"
#include "tests/support/TextoLog.h"

#include <cstdint>
#include <vector>

namespace {

std::string Maximo(std::int32_t maximo)
{
    return maximo > 0 ? ", max " + std::to_string(maximo) : "";
}

std::string Trava(bool travado)
{
    return travado ? ", somente leitura" : "";
}

std::string Se(bool vale, const char *texto)
{
    return vale ? std::string(", ") + texto : "";
}

std::string Ajustes(const ztMask &campo)
{
    const AjustesZtMask &ajustes = campo.Ajustes();
    return Maximo(ajustes.MaxLength) + ", tipo " + std::to_string(static_cast<int>(ajustes.Tipo)) +
           (ajustes.Mascara.empty() ? "" : ", mascara " + TextoLog(ajustes.Mascara)) +
           (ajustes.CaracteresAceitos.empty() ? "" : ", aceita " + TextoLog(ajustes.CaracteresAceitos)) +
           (ajustes.TabelaCaracteres == 0 ? "" : ", tabela " + std::to_string(ajustes.TabelaCaracteres)) +
           Se(!ajustes.SomenteMaiusculas, "minusculas") + Trava(campo.ReadOnly());
}

std::string Ajustes(const ztList &lista)
{
    const AjustesZtList &ajustes = lista.Ajustes();
    return ", tipomenu " + std::to_string(ajustes.TipoMenu) +
           (ajustes.TipoMenuComPersonalizado == 0
                ? ""
                : ", com personalizado " + std::to_string(ajustes.TipoMenuComPersonalizado)) +
           Se(ajustes.AncorarAoForm, "ancorada") + Se(ajustes.BotoesLaterais, "botoes laterais") +
           Se(ajustes.BotaoEliminar, "botao eliminar") + Se(ajustes.BotaoVisivel, "botao visivel") +
           Se(ajustes.BotaoEnabled, "botao enabled") + Se(ajustes.BotoesFecharAjuda, "fechar e ajuda") +
           Se(ajustes.BarraCriteriosAtiva, "barra de criterios") +
           Se(ajustes.BarraCriteriosAutoOcultar, "que se oculta") +
           (ajustes.BarraCriteriosAltura == 0 ? "" : ", de altura " + std::to_string(ajustes.BarraCriteriosAltura));
}

std::string Ajustes(const ztEndereco &endereco)
{
    const AjustesZtEndereco &ajustes = endereco.Ajustes();
    return ", captura " + std::to_string(ajustes.TipoCapturaEndereco) + ", edicao " +
           std::to_string(ajustes.EstiloEdicao) + ", borda " + std::to_string(ajustes.TipoBorda) +
           Se(ajustes.ReadOnlyMunicipio, "municipio somente leitura") +
           Se(ajustes.LogradouroObrigatorio, "logradouro obrigatorio") +
           Se(ajustes.MostrarSomenteComBairro, "somente com bairro") +
           Se(ajustes.ObrigarCodigoLogradouro, "codigo obrigatorio") +
           Se(ajustes.MostrarEnderecosIncompletos, "incompletos") + Se(ajustes.MostraCepEPesquisaCep, "cep e pesquisa");
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
    if (const auto *combo = dynamic_cast<const ztCombo *>(&controle)) {
        return (combo->Estilo() == 0 ? "" : ", estilo " + std::to_string(combo->Estilo())) +
               Trava(combo->ComboSomenteLeitura());
    }
    if (const auto *caixa = dynamic_cast<const ICheckBox *>(&controle)) {
        return caixa->Value() == 1 ? ", marcada" : "";
    }
    if (const auto *opcao = dynamic_cast<const IOptionButton *>(&controle)) {
        return opcao->Value() ? ", ligada" : "";
    }
    if (const auto *botao = dynamic_cast<const Acionavel *>(&controle)) {
        return Se(botao->Padrao(), "padrao") + Se(botao->Cancelador(), "cancela");
    }
    if (const auto *abas = dynamic_cast<const ISSTab *>(&controle)) {
        return Paginas(*abas);
    }
    if (const auto *lista = dynamic_cast<const ztList *>(&controle)) {
        return Ajustes(*lista);
    }
    if (const auto *endereco = dynamic_cast<const ztEndereco *>(&controle)) {
        return Ajustes(*endereco);
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

testing::AssertionResult RetratoIgual(const Ref<IForm> &form, const std::string &pasta)
{
    std::vector<std::string> obtido{std::string(form->NomeTipo()) + " " + TextoLog(form->Caption())};
    for (const Ref<IControle> &controle : form->Controles()) {
        const auto ordem = static_cast<std::int16_t>(obtido.size() - 1);
        const std::int16_t tab = controle->TabIndex();
        obtido.push_back(RetratoControle(controle) + (tab == ordem ? "" : ", tab " + std::to_string(tab)));
    }
    return ArquivoIgual(obtido, pasta + "/" + std::string(form->NomeTipo()) + ".txt");
}
