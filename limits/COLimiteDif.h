#pragma once

#include "limits/TipoDeLimite.h"
#include "shell/ControladorLista.h"

#include <cstdint>
#include <map>
#include <string>

// Controller of the list of differentiated limits (Tipo 1), specific days (2) or prohibited hours (3) of an equipment.
class COLimiteDif : public ControladorLista {
  public:
    COLimiteDif() : ControladorLista("m_ZtList_ItemMenuClicado") {}
    std::string_view NomeTipo() const override { return "COLimiteDif"; }

    // Label of the kind; empty for a Tipo that does not exist.
    std::string DescrModulo() const { return m_Tipo.Descr; }
    // Binds the controller to the list and fills it. True when the first search succeeded.
    bool Carrega(const Ref<IztList> &lista, const std::string &CodEquip, std::int32_t NroIntEquip, std::int16_t Tipo);
    // Empties the list, if there is one.
    void LimpaPesquisa();

  private:
    TipoDeLimite m_Tipo;
    std::string m_CodEquip;
    std::int32_t m_NroIntEquip = 0;
    std::map<std::int32_t, std::int64_t> m_VersoesLidas; // the service's marks of the rows, by their numbers

    TabelaColunas Colunas() const override;
    bool Localizar();
    bool LocalizarLimitesDif();
    bool LocalizarDiasEspecificos();

    void BloqueiaMenu() override;
    void Atualizar();
    void Novo() override;
    void Editar() override;
    void Detalhes() override;
    bool Excluir(std::int32_t linha) override;
    template <class RegistroED> Ref<RegistroED> PedidoDeExclusao(std::int32_t nroInt) const;
    bool ExcluirLimiteDif(std::int32_t nroInt);
    bool ExcluirDiaEspec(std::int32_t nroInt);
    static std::string fBuscaNomeDia(std::uint8_t dia);
};
