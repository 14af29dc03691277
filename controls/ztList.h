#pragma once

#include "controls/Controle.h"
#include "controls/FiltroDeLinhas.h"
#include "controls/ItemMenu.h"
#include "host/Colecao.h"
#include "host/IztList.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

// The list. The module's rows stay where it put them, and have its numbers; a person sees those that pass the filter,
// in the order that the person chose, and counts them as they are seen. Both stay as they are while rows come and go. A
// row that is not seen is not the current one either: nothing is done to it unseen.
class ztList : public Controle<IztList> {
  public:
    struct Coluna {
        std::string Chave;
        std::string Titulo;
        std::int16_t Largura = 0; // twips
        std::int16_t Alinhamento = 0;
        std::string Marca;
        bool Visivel = true;
    };

    explicit ztList(const Origem &origem);

    void Limpa(std::optional<bool> limpaTitulo) override;
    void AdicionaColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                        std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                        bool visivel) override;
    void AlteraPrimeiraColuna(std::int16_t numero, std::optional<std::string> chave, const std::string &titulo,
                              std::int16_t largura, std::int16_t alinhamento, const std::string &marca,
                              bool visivel) override;
    void CarregaItens(TabelaTexto &tabela) override;
    void AtualizaLista() override;
    std::int32_t NroItens() const override { return static_cast<std::int32_t>(m_Linhas.size()); }
    std::int32_t ItemAtual() const override;
    void DefineItemAtual(std::int32_t linha) override;
    std::string Celula(std::int32_t linha, const std::string &chaveColuna) const override;
    std::string ValorAtual(const std::string &chaveColuna) const override;
    std::string ColunaAtual(std::int16_t coluna) const override;
    std::string Titulo() const override { return m_Titulo; }
    void DefineTitulo(const std::string &valor) override { Redefine(m_Titulo, valor); }
    void DefineTemMais(bool valor) override { Redefine(m_TemMais, valor); }
    void IncluiItensMenu(const std::vector<ItemMenuLista> &itens) override;
    Ref<IItemMenu> ItemMenu(const std::string &chave) override { return m_Menu.Item(chave); }
    void MenuVisivel(const std::string &chave, bool valor) override;
    void MenuBloqueado(const std::string &chave, bool valor) override;
    void MenuHabilitado(const std::string &chave, bool valor) override;
    void MenuTexto(const std::string &chave, const std::string &valor) override;
    void EstiloMenu1(std::int32_t valor) override { Redefine(m_EstiloMenu1, valor); }
    void EstiloMenu2(std::int32_t valor) override { Redefine(m_EstiloMenu2, valor); }
    void BarraCriteriosAtiva(bool valor) override { Redefine(m_AjustesList.BarraCriteriosAtiva, valor); }
    std::int32_t BarraCriteriosAltura() const override { return m_AjustesList.BarraCriteriosAltura; }
    void DefineBarraCriteriosAltura(std::int32_t twips) override
    {
        Redefine(m_AjustesList.BarraCriteriosAltura, twips);
    }
    void BotoesFecharAjuda(bool valor) override { Redefine(m_AjustesList.BotoesFecharAjuda, valor); }
    void DefineJanelaExibida(bool valor) override { Redefine(m_JanelaExibida, valor); }

    Evento<> &BotaoClick() override { return m_BotaoClick; }
    Evento<> &ItemClick() override { return m_ItemClick; }
    Evento<std::string> &ItemMenuClicado() override { return m_ItemMenuClicado; }
    Evento<> &HabilitaItensMenuLista() override { return m_HabilitaItensMenuLista; }
    Evento<> &GotFocus() override { return m_GotFocus; }
    Evento<std::int32_t &> &AntesDeRemoverItem() override { return m_AntesDeRemoverItem; }
    Evento<> &DepoisDeRemoverItem() override { return m_DepoisDeRemoverItem; }
    Evento<bool &> &BotaoLocalizarValida() override { return m_BotaoLocalizarValida; }
    Evento<> &BotaoLocalizarEnvia() override { return m_BotaoLocalizarEnvia; }

    // What a screen shows.

    // Settings as they are now.
    const AjustesZtList &Ajustes() const { return m_AjustesList; }
    const std::vector<Coluna> &Colunas() const { return m_Colunas; }
    // How many rows are seen.
    std::int32_t NroVistas() const;
    // The current row among those that are seen, from 1; 0 when there is none.
    std::int32_t AtualVista() const;
    // A cell by row as it is seen and column, both from 1. Fault 9 outside the list.
    const std::string &TextoCelula(std::int32_t linha, std::int32_t coluna) const;
    // Grows whenever rows come, go or change places, or columns do: while it stays, only the rest has changed.
    std::int64_t Arranjo() const { return m_Arranjo; }
    // Column by which the person has sorted the rows, from 1; 0 when none.
    std::int32_t ColunaOrdem() const { return m_Ordens.empty() ? 0 : m_Ordens.back().Coluna; }
    bool OrdemDecrescente() const { return !m_Ordens.empty() && m_Ordens.back().Decrescente; }
    const Colecao<Ref<::ItemMenu>> &Menu() const { return m_Menu; }
    // The person can choose the item, and what it would be done to is seen.
    bool Escolhivel(const ::ItemMenu &item) const;
    // Rows pass only by the words of a filter.
    bool Filtrada() const { return !m_Filtro.Vazio(); }
    bool TemMais() const { return m_TemMais; }
    // Further rows are on their way to a person who has not pressed the button.
    bool Trazendo() const { return m_Trazendo; }
    std::int32_t EstiloMenu1() const { return m_EstiloMenu1; }
    std::int32_t EstiloMenu2() const { return m_EstiloMenu2; }
    bool JanelaExibida() const { return m_JanelaExibida; }

    // Person's face. Rows are counted as they are seen.

    bool ClicaLinha(std::int32_t linha);
    // Arrow keys: down by so many rows, up when negative, as far as there are rows. Without a current row, to the
    // first.
    bool TeclaSetas(std::int32_t passos);
    // The person opens the menu, or looks at the button bar.
    bool OfereceMenu();
    // The person chooses a menu item. True for one that could be chosen, whatever came of it.
    bool EscolheMenu(const std::string &chave);
    // The button for more rows.
    bool PedeMais();
    // Further rows without the button: as by it, but the focus and the current row stay where they are. True when some
    // came.
    bool TrazMais();
    // The person comes to the end of the rows: further ones come, unless none came the last time.
    bool RolaAteOFim();
    // The criteria bar's search button.
    bool Localiza();
    // A screen that offers to empty the criteria tells how that is done; with nothing it does so no more.
    void OfereceLimpar(std::function<void()> limpa) { m_LimpaCriterios = std::move(limpa); }
    bool PodeLimparCriterios() const { return m_AjustesList.BarraCriteriosAtiva && m_LimpaCriterios; }
    // The criteria bar's button that empties them.
    bool LimpaCriterios();
    // The person clicks a column's heading: sorts by it, and the other way round on the next click. 0: as the rows
    // came.
    bool OrdenaPor(std::int32_t coluna);
    bool PodeOrdenarPor(std::int32_t coluna) const;
    // The order that the person left the last time.
    void DefineOrdem(std::int32_t coluna, bool decrescente);
    // Shows only the rows with these words in the columns, which are counted from 1.
    void Filtra(const std::string &texto, const std::vector<std::int32_t> &colunas);
    // The person has said that the rows that are there are enough to sort; until they are thrown away.
    bool BastamEstas() const { return m_BastamEstas; }
    void DefineBastamEstas() { m_BastamEstas = true; }

  protected:
    void AoReceberFoco(bool chegou) override;

  private:
    using Linha = std::vector<std::string>;

    std::size_t IndiceColuna(const std::string &chave) const;
    const Linha &ExigeLinha(std::int32_t linha) const;
    static const std::string &Texto(const Linha &linha, std::size_t coluna);
    void IncluiItem(const ItemMenuLista &item, bool visivel);
    void TornaAtual(std::int32_t linha);
    void Exclui();
    void Rearranja();
    struct UmaOrdem {
        std::int32_t Coluna; // from 1
        bool Decrescente;
    };
    // The rows as they are seen.
    struct Vista {
        std::vector<std::int32_t> Linhas;  // the module's numbers
        std::vector<std::int32_t> Lugares; // of each of the module's rows; 0 when it is not seen
    };
    const Vista &Vistas() const;
    const std::vector<std::size_t> &EmOrdem() const;
    const std::vector<std::string> &Chaves() const;
    void MudaAVista();
    void OrdenaPela(std::vector<std::size_t> &ordem, std::size_t coluna, bool decrescente) const;

    AjustesZtList m_AjustesList;
    std::vector<Coluna> m_Colunas{1};
    std::vector<Linha> m_Linhas;
    std::int32_t m_ItemAtual = -1;
    std::int32_t m_LinhaAoEntrar = 1; // row that becomes current when the focus comes to a list without one
    // Made when they are asked for, and again when what they are made of has changed.
    mutable std::optional<Vista> m_Vista;
    mutable std::optional<std::vector<std::size_t>> m_EmOrdem;
    mutable std::optional<std::vector<std::string>> m_Chaves; // that the filter looks into
    FiltroDeLinhas m_Filtro;
    std::vector<std::int32_t> m_ColunasDoFiltro;
    std::int64_t m_Arranjo = 0;
    std::int64_t m_Retiradas = 0; // times that rows were taken away
    bool m_Trazendo = false;
    bool m_NadaVeio = false; // the last time that rows were brought
    bool m_BastamEstas = false;
    std::vector<UmaOrdem> m_Ordens; // each on top of the one before
    std::string m_Titulo;
    bool m_TemMais = false;
    bool m_JanelaExibida = false;
    std::int32_t m_EstiloMenu1 = 0;
    std::int32_t m_EstiloMenu2 = 0;
    Colecao<Ref<::ItemMenu>> m_Menu;
    std::vector<Conexao> m_MudouMenu;
    Evento<> m_BotaoClick;
    Evento<> m_ItemClick;
    Evento<std::string> m_ItemMenuClicado;
    Evento<> m_HabilitaItensMenuLista;
    Evento<> m_GotFocus;
    Evento<std::int32_t &> m_AntesDeRemoverItem;
    Evento<> m_DepoisDeRemoverItem;
    Evento<bool &> m_BotaoLocalizarValida;
    Evento<> m_BotaoLocalizarEnvia;
    std::function<void()> m_LimpaCriterios;
};
