#pragma once

#include "host/HostServices.h"
#include "shell/Assinante.h"
#include "shell/Coluna.h"

#include <cstdint>
#include <string>

// Controller of the list of differentiated limits (Tipo 1), specific days (2) or prohibited hours (3) of an equipment.
class COLimiteDif : public Objeto, public Assinante {
  public:
    std::string_view NomeTipo() const override { return "COLimiteDif"; }

    // Label of the kind; empty for a Tipo that does not exist.
    const std::string &DescrModulo() const { return m_DescrModulo; }
    // Binds the controller to the list and fills it. True when the first search succeeded.
    bool Carrega(const Ref<IztList> &lista, const std::string &CodEquip, std::int32_t NroIntEquip, std::int16_t Tipo);
    // Empties the list, if there is one.
    void LimpaPesquisa();

  private:
    std::string m_DescrModulo;
    std::int16_t m_Tipo = 0;
    std::string m_CodEquip;
    std::int32_t m_NroIntEquip = 0;
    RefFraca<IztList> m_ZtList; // the window's

    void LigaEventos();
    TabelaColunas Colunas() const;
    bool Localizar();
    bool LocalizarLimitesDif();
    bool LocalizarDiasEspecificos();

    void m_ZtList_AntesDeRemoverItem(std::int32_t &linha);
    void m_ZtList_DepoisDeRemoverItem();
    void m_ZtList_ItemMenuClicado(std::string chave);

    void MenuInicial();
    void HabilitaMenu();
    void Atualizar();
    void Novo();
    void Editar();
    void Detalhes();
    bool Excluir(std::int32_t linha);
    bool ExcluirLimiteDif(std::int32_t nroInt);
    bool ExcluirDiaEspec(std::int32_t nroInt);
    static std::string fBuscaNomeDia(std::uint8_t dia);
};
