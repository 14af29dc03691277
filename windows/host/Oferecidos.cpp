#include "windows/host/Oferecidos.h"

#include "host/HostServices.h"
#include "host/Transacao.h"
#include "windows/automation/Embrulho.h"
#include "windows/automation/Tardio.h"
#include "windows/host/ControlesDoForm.h"
#include "windows/host/HostWindows.h"
#include "windows/host/TabelaDaVariante.h"

namespace nativo {
namespace {

template <class C> std::vector<Variante> Um_a_um(const std::vector<Ref<C>> &objetos, Lado lado)
{
    std::vector<Variante> elementos;
    for (const Ref<C> &objeto : objetos) {
        elementos.push_back(ParaVariante(objeto, lado));
    }
    return elementos;
}

// Shown by a host that was handed the form: modal unless 0, in front of a window of its own or of another form.
void MostraForm(IForm &form, Chamada &chamada)
{
    const bool modal = chamada.Le<std::optional<std::int32_t>>(0).value_or(0) != 0;
    const Ref<IForm> dono = chamada.Le<std::optional<Ref<IForm>>>(1).value_or(nullptr);
    HostWindows::Instalado().Mostra(Eu(form), modal, dono);
}

void OfereceForm()
{
    OfereceMembros<IForm>([](Membros<IForm> &m) {
        m.Leitura("Name", [](IForm &form) { return std::string(form.NomeTipo()); });
        m.Propriedade("Caption", &IForm::Caption, &IForm::DefineCaption);
        m.Leitura("hWnd", [](IForm &form) { return HostWindows::Instalado().Manipulador(Eu(form)); });
        m.Propriedade("Left", &IForm::Left, &IForm::DefineLeft);
        m.Propriedade("Top", &IForm::Top, &IForm::DefineTop);
        m.Propriedade("Width", &IForm::Width, &IForm::DefineWidth);
        m.Propriedade("Height", &IForm::Height, &IForm::DefineHeight);
        m.Propriedade(
            "Visible", &IForm::Visible, +[](IForm &form, bool visivel) {
                // A form that is made visible is shown, as the platform does it.
                if (visivel && !form.Visible()) {
                    HostWindows::Instalado().Mostra(Eu(form), false, nullptr);
                } else {
                    form.DefineVisible(visivel);
                }
            });
        m.Propriedade("Enabled", &IForm::Enabled, &IForm::DefineEnabled);
        m.Propriedade("WindowState", &IForm::WindowState, &IForm::DefineWindowState);
        m.Leitura("MDIChild", &IForm::MDIChild);
        m.Propriedade("frmParent", &IForm::frmParent, &IForm::DefinefrmParent);
        m.Metodo("Show", 0, {"Modal", "OwnerForm"}, MostraForm);
        m.Metodo("Hide", 0, {}, [](IForm &form, Chamada &) { form.DefineVisible(false); });
        m.Metodo("Unload", 0, {}, [](IForm &form, Chamada &) { Plataforma()->Descarrega(Eu(form)); });
        m.Metodo("SetFocus", &IForm::SetFocus);
        m.Metodo("ZOrder", 0, {"Position"}, [](IForm &form, Chamada &chamada) {
            form.ZOrder(chamada.Le<std::optional<std::int16_t>>(0).value_or(0));
        });
        m.Leitura("ActiveControl", &IForm::ControleAtivo);
        m.Metodo("Controls", 0, {"Index"}, [](IForm &form, Chamada &chamada) {
            const auto controles = Novo<ControlesDoForm>(Eu(form));
            if (chamada.Quantos() == 0) {
                chamada.Responde(controles);
            } else {
                chamada.Responde(controles->Item(chamada.Le<Valor>(0)));
            }
        });
        m.Outros([](IForm &form, const std::string &nome) { return ControlesDoForm::Chamado(Eu(form), nome); });
    });
    OfereceMembros<ControlesDoForm>([](Membros<ControlesDoForm> &m) {
        m.Leitura("Count", &ControlesDoForm::Count);
        m.Metodo("Item", &ControlesDoForm::Item, {"Index"});
        m.Padrao("Item");
        m.Enumera([](ControlesDoForm &controles, Lado lado) { return Um_a_um(controles.Todos(), lado); });
    });
    OfereceMembros<ArranjoDeControles>([](Membros<ArranjoDeControles> &m) {
        m.Leitura("Count", &ArranjoDeControles::Count);
        m.Metodo("Item", &ArranjoDeControles::Item, {"Index"});
        m.Padrao("Item");
        m.Enumera([](ArranjoDeControles &controles, Lado lado) { return Um_a_um(controles.Todos(), lado); });
    });
}

void OfereceControles()
{
    OfereceMembros<IControle>([](Membros<IControle> &m) {
        m.Leitura("Name", &IControle::Nome);
        m.Leitura("Index", &IControle::Indice);
        m.Propriedade("Caption", &IControle::Caption, &IControle::DefineCaption);
        m.Propriedade("Enabled", &IControle::Enabled, &IControle::DefineEnabled);
        m.Propriedade("Visible", &IControle::Visible, &IControle::DefineVisible);
        m.Propriedade("Left", &IControle::Left, &IControle::DefineLeft);
        m.Propriedade("Top", &IControle::Top, &IControle::DefineTop);
        m.Propriedade("Width", &IControle::Width, &IControle::DefineWidth);
        m.Propriedade("Height", &IControle::Height, &IControle::DefineHeight);
        m.Propriedade("TabIndex", &IControle::TabIndex, &IControle::DefineTabIndex);
        m.Leitura("Container", &IControle::Container);
        m.Metodo("SetFocus", &IControle::SetFocus);
    });
    OfereceMembros<ITextBox>([](Membros<ITextBox> &m) {
        m.Herda<IControle>();
        m.Propriedade("Text", &ITextBox::Text, &ITextBox::DefineText);
        m.Padrao("Text");
        m.Propriedade("Locked", &ITextBox::Locked, &ITextBox::DefineLocked);
        m.Leitura("MaxLength", &ITextBox::MaxLength);
    });
    OfereceMembros<ICheckBox>([](Membros<ICheckBox> &m) {
        m.Herda<IControle>();
        m.Propriedade("Value", &ICheckBox::Value, &ICheckBox::DefineValue);
        m.Padrao("Value");
    });
    OfereceMembros<IOptionButton>([](Membros<IOptionButton> &m) {
        m.Herda<IControle>();
        m.Propriedade("Value", &IOptionButton::Value, &IOptionButton::DefineValue);
        m.Padrao("Value");
    });
    OfereceMembros<ICommandButton>([](Membros<ICommandButton> &m) {
        m.Herda<IControle>();
        m.Propriedade("Default", &ICommandButton::Default, &ICommandButton::DefineDefault);
        m.Leitura("Cancel", &ICommandButton::Cancel);
    });
    OfereceMembros<IztCommand>([](Membros<IztCommand> &m) {
        m.Herda<IControle>();
        m.Propriedade("Default", &IztCommand::Default, &IztCommand::DefineDefault);
    });
    OfereceMembros<ISSTab>([](Membros<ISSTab> &m) {
        m.Herda<IControle>();
        m.Leitura("Tabs", &ISSTab::Tabs);
        m.Propriedade("Tab", &ISSTab::Tab, &ISSTab::DefineTab);
        m.Padrao("Tab");
        m.Metodo("TabCaption", &ISSTab::TabCaption, {"Tab"});
        m.Metodo("TabEnabled", &ISSTab::TabEnabled, {"Tab"});
        m.Metodo("TabVisible", &ISSTab::TabVisible, {"Tab"});
        m.EscritaComIndice("TabEnabled", &ISSTab::DefineTabEnabled);
        m.EscritaComIndice("TabVisible", &ISSTab::DefineTabVisible);
    });
    OfereceMembros<ICommonDialog>([](Membros<ICommonDialog> &m) {
        m.Herda<IControle>();
        m.Escrita("Filter", &ICommonDialog::DefineFilter);
        m.Escrita("DefaultExt", &ICommonDialog::DefineDefaultExt);
        m.Escrita("DialogTitle", &ICommonDialog::DefineDialogTitle);
        m.Propriedade("FileName", &ICommonDialog::FileName, &ICommonDialog::DefineFileName);
        m.Metodo("ShowOpen", &ICommonDialog::ShowOpen);
    });
    OfereceMembros<IztCombo>([](Membros<IztCombo> &m) {
        m.Herda<IControle>();
        m.Metodo("Limpa", &IztCombo::Limpa);
        m.Metodo("AdicionaItem", &IztCombo::AdicionaItem, {"sItem"});
        m.Propriedade("Valor", &IztCombo::Valor, &IztCombo::DefineValor);
        m.Padrao("Valor");
        m.Leitura("Texto", &IztCombo::Texto);
        m.Propriedade("IndiceAtual", &IztCombo::IndiceAtual, &IztCombo::DefineIndiceAtual);
        m.Leitura("NroItens", &IztCombo::NroItens);
        m.Propriedade("ComboSomenteLeitura", &IztCombo::ComboSomenteLeitura, &IztCombo::DefineComboSomenteLeitura);
    });
    OfereceMembros<IztMask>([](Membros<IztMask> &m) {
        m.Herda<IControle>();
        m.Propriedade("Text", &IztMask::Text, &IztMask::DefineText);
        m.Padrao("Text");
        m.Leitura("Valor", &IztMask::Valor);
        m.Leitura("ValorNumerico", &IztMask::ValorNumerico);
        m.Propriedade("ReadOnly", &IztMask::ReadOnly, &IztMask::DefineReadOnly);
    });
    OfereceMembros<IztData>([](Membros<IztData> &m) {
        m.Herda<IControle>();
        m.Leitura("Valor", &IztData::Valor);
        m.Propriedade("Text", &IztData::Text, &IztData::DefineText);
        m.Padrao("Text");
        m.Leitura("DataValida", &IztData::DataValida);
        m.Propriedade("ReadOnly", &IztData::ReadOnly, &IztData::DefineReadOnly);
    });
    OfereceMembros<IztVeiObservacao>([](Membros<IztVeiObservacao> &m) {
        m.Herda<IControle>();
        m.Propriedade("Text", &IztVeiObservacao::Text, &IztVeiObservacao::DefineText);
        m.Padrao("Text");
        m.Propriedade("Locked", &IztVeiObservacao::Locked, &IztVeiObservacao::DefineLocked);
    });
    OfereceMembros<IEndereco>([](Membros<IEndereco> &m) {
        m.Metodo("SetaEndereco", &IEndereco::SetaEndereco,
                 {"CodMunic", "CodLogradouro", "Numero", "Complemento", "Cep", "Reservado1", "Reservado2"});
        m.Leitura("CodLogradouro", &IEndereco::CodLogradouro);
        m.Leitura("Numero", &IEndereco::Numero);
        m.Leitura("Complemento", &IEndereco::Complemento);
        m.Leitura("Cep", &IEndereco::Cep);
        m.Leitura("DescricaoEndereco", &IEndereco::DescricaoEndereco);
    });
    OfereceMembros<IztEndereco>([](Membros<IztEndereco> &m) {
        m.Herda<IControle>();
        m.Leitura("Endereco", &IztEndereco::Endereco);
        m.Padrao("Endereco");
        m.Propriedade("ReadOnly", &IztEndereco::ReadOnly, &IztEndereco::DefineReadOnly);
    });
    OfereceMembros<IztClienteSetor>([](Membros<IztClienteSetor> &m) {
        m.Herda<IControle>();
        m.Leitura("Cliente", &IztClienteSetor::Cliente);
        m.Leitura("Setor", &IztClienteSetor::Setor);
        m.Escrita("CodCliente", &IztClienteSetor::DefineCodCliente);
        m.Metodo("Valida", &IztClienteSetor::Valida);
    });
}

// The items that somebody adds to a list's menu: objects with the members of one.
std::vector<ItemMenuLista> ItensDe(const VARIANT &arranjo, Lado lado)
{
    std::vector<ItemMenuLista> itens;
    for (const Variante &elemento : detalhe::LeArranjo(arranjo)) {
        const Tardio item(LeObjeto(elemento.Bruta()), lado);
        itens.push_back({item.Chama<std::string>("Chave"), item.Chama<std::string>("Texto"),
                         item.Chama<std::string>("TextoBotao"), item.Chama<std::string>("Dica"),
                         item.Chama<bool>("IniciaGrupo")});
    }
    return itens;
}

// A column, whose key alone may be left out in between.
template <auto Poe> void PoeColuna(IztList &lista, Chamada &chamada)
{
    (lista.*Poe)(chamada.Le<std::int16_t>(0), chamada.Le<std::optional<std::string>>(1), chamada.Le<std::string>(2),
                 chamada.Le<std::int16_t>(3), chamada.Le<std::int16_t>(4), chamada.Le<std::string>(5),
                 chamada.Le<bool>(6));
}

void OfereceLista()
{
    OfereceMembros<IItemMenu>([](Membros<IItemMenu> &m) {
        m.Leitura("Chave", &IItemMenu::Chave);
        m.Propriedade("Enabled", &IItemMenu::Enabled, &IItemMenu::DefineEnabled);
    });
    OfereceMembros<IztList>([](Membros<IztList> &m) {
        const std::vector<std::string> coluna{"Numero",      "Chave", "Titulo", "Largura",
                                              "Alinhamento", "Marca", "Visivel"};
        m.Herda<IControle>();
        m.Metodo("Limpa", &IztList::Limpa, {"LimpaTitulo"}, 1);
        m.Metodo("AdicionaColuna", 1, coluna, PoeColuna<&IztList::AdicionaColuna>);
        m.Metodo("AlteraPrimeiraColuna", 1, coluna, PoeColuna<&IztList::AlteraPrimeiraColuna>);
        m.Metodo("CarregaItens", 1, {"aItens"}, [](IztList &lista, Chamada &chamada) {
            TabelaTexto tabela = TabelaDaVariante(chamada.Argumento(0));
            lista.CarregaItens(tabela);
        });
        m.Metodo("AtualizaLista", &IztList::AtualizaLista);
        m.Leitura("NroItens", &IztList::NroItens);
        m.Propriedade("ItemAtual", &IztList::ItemAtual, &IztList::DefineItemAtual);
        m.Metodo("Celula", &IztList::Celula, {"Linha", "Coluna"});
        m.Metodo("ValorAtual", &IztList::ValorAtual, {"Coluna"});
        m.Metodo("ColunaAtual", &IztList::ColunaAtual, {"Coluna"});
        m.Propriedade("Titulo", &IztList::Titulo, &IztList::DefineTitulo);
        m.Escrita("TemMais", &IztList::DefineTemMais);
        m.Metodo("IncluiItensMenu", 1, {"aItens"}, [](IztList &lista, Chamada &chamada) {
            lista.IncluiItensMenu(ItensDe(chamada.Argumento(0), chamada.DeQueLado()));
        });
        m.Metodo("ItemMenu", &IztList::ItemMenu, {"Chave"});
        m.Metodo("MenuVisivel", &IztList::MenuVisivel, {"Chave", "Valor"});
        m.Metodo("MenuBloqueado", &IztList::MenuBloqueado, {"Chave", "Valor"});
        m.Metodo("MenuHabilitado", &IztList::MenuHabilitado, {"Chave", "Valor"});
        m.Metodo("MenuTexto", &IztList::MenuTexto, {"Chave", "Valor"});
        m.EscritaComIndice("MenuVisivel", &IztList::MenuVisivel);
        m.EscritaComIndice("MenuBloqueado", &IztList::MenuBloqueado);
        m.EscritaComIndice("MenuHabilitado", &IztList::MenuHabilitado);
        m.EscritaComIndice("MenuTexto", &IztList::MenuTexto);
        m.Escrita("EstiloMenu1", &IztList::EstiloMenu1);
        m.Escrita("EstiloMenu2", &IztList::EstiloMenu2);
        m.Escrita("BarraCriteriosAtiva", &IztList::BarraCriteriosAtiva);
        m.Propriedade("BarraCriteriosAltura", &IztList::BarraCriteriosAltura, &IztList::DefineBarraCriteriosAltura);
        m.Escrita("BotoesFecharAjuda", &IztList::BotoesFecharAjuda);
    });
}

void OfereceAplicacao()
{
    OfereceMembros<IAplicacao>([](Membros<IAplicacao> &m) {
        m.Leitura("EXEName", &IAplicacao::Nome);
        m.Leitura("Title", &IAplicacao::Titulo);
        m.Leitura("FileDescription", &IAplicacao::Descricao);
    });
    OfereceMembros<ItemMenuModulo>([](Membros<ItemMenuModulo> &m) {
        m.Campo("Name", &ItemMenuModulo::Name);
        m.Campo("Band", &ItemMenuModulo::Band);
        m.Campo("SubBand", &ItemMenuModulo::SubBand);
        m.Campo("NeverDisabled", &ItemMenuModulo::NeverDisabled);
        m.Campo("HideWhenDisable", &ItemMenuModulo::HideWhenDisable);
    });
    OfereceMembros<CampoTransacao>([](Membros<CampoTransacao> &m) {
        m.Campo("Nome", &CampoTransacao::Nome);
        m.Campo("Valor", &CampoTransacao::Valor);
    });
}

} // namespace

void OfereceObjetos()
{
    static const bool oferecidos = [] {
        OfereceForm();
        OfereceControles();
        OfereceLista();
        OfereceAplicacao();
        return true;
    }();
    static_cast<void>(oferecidos);
}

} // namespace nativo
