#pragma once

#include "host/HostServices.h"
#include "search/IModulo.h"
#include "shell/Assinante.h"
#include "shell/clsListaParametros.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

class frmLista;

// The equipment list: what the search window works with. It searches, pages and fills the window's list, carries out
// the commands of the list's menu, and answers a selection for another module. It lives as long as its window.
class COEquipamentos : public IModulo, public Assinante {
  public:
    std::string_view NomeTipo() const override { return "COEquipamentos"; }

    std::string Modulo() override { return "Equipamentos"; }
    void Localizar(const Ref<clsListaParametros> &parametros) override;
    void LimpaPesquisa() override;
    bool ExigeCampo(const std::string &sNome) override;
    std::string GetValorCampo(const std::string &sNome) override;
    void SetValorCampo(const std::string &sNome, const std::string &sValor) override;
    void CarregaJanela(const Ref<clsListaParametros> &parametros) override;

    // Result of a selection that answered true. The calibration may be Nothing.
    const Ref<EquiptoED> &pEquiptoED() const { return m_pEquiptoED; }
    const Ref<AfericaoED> &pAfericaoED() const { return m_pAfericaoED; }
    // Opens the search window modally, searching at once; true when the person picked a row.
    bool CarregaSelecao(const Ref<clsListaParametros> &parametros);

  private:
    std::int32_t m_ProxNroIntEquip = 0; // where the next page starts; below 1: no further page
    std::uint8_t m_Criterio = 0;
    std::string m_Cliente;
    std::string m_Setor;
    std::uint8_t m_TipoAgente = 0;
    std::string m_TipoEquip;
    std::string m_CodEquip;
    std::string m_SubCodEquip;
    std::uint8_t m_Ativo = 0;
    bool m_TrabFoto = false;
    Data m_DtInfracao;
    std::string m_Titulo;
    bool m_Selecao = false;                              // in a selection; nothing reads it
    std::map<std::int32_t, std::int64_t> m_VersoesLidas; // the service's marks of the rows, by their numbers
    Ref<EquiptoED> m_pEquiptoED;
    Ref<AfericaoED> m_pAfericaoED;
    Ref<frmLista> m_frmLista;
    Ref<IztList> m_ZtList;

    void CriaJanela();
    void MontaTitulo();
    bool LocalizarEquipamentos(bool continua);
    Ref<ListaEquiptoED> Criterios(bool continua) const;
    void GuardaVersoes(const Colecao<Ref<EquiptoED>> &pagina);
    void Atualizar();

    void MenuInicial();
    void HabilitaMenu();
    void Novo();
    void Editar();
    void Detalhes();
    void Inativar();
    void LimitesDiferenciados(std::int16_t tipo);
    void DiasEspecificos();
    void AbreLimites(std::int16_t tipo);
    std::int32_t NroIntEquipAtual() const;

    void m_frmLista_FormAtivado();
    void m_frmLista_FormCarregado(const Ref<IztList> &lista);
    void m_ZtList_BotaoClick();
    void m_ZtList_ItemMenuClicado(const std::string &chave);
};
