#pragma once

#include "host/HostServices.h"
#include "tests/host_contract/AdaptadorHost.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/FormFalso.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// What any host must do for the module, asked of a host that an adapter brings. Written against the contract alone.
class ContratoHost : public testing::TestWithParam<FabricaAdaptador> {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Number of the fault that the command raises.
    template <class Comando> static std::int32_t NumeroDaFalha(Comando &&comando)
    {
        return FalhaLancada(comando).Numero;
    }

    // Shows the form, not modal, with the controls that it has by now.
    void Mostra();

    // Piece of a control with that name.
    template <class Ajustes> static Peca Com(const std::string &nome, Ajustes ajustes = {})
    {
        return {.Ajustes = std::move(ajustes), .Nome = nome, .Width = 1000, .Height = 300};
    }
    // A control of the host's, put on the form.
    template <class Contrato> Ref<Contrato> Poe(const Peca &peca, const Ref<IControle> &container = nullptr)
    {
        return form->Guarda(ComoTipo<Contrato>(Host().Controles()->Cria(form, peca, container, -1)));
    }

    // How often the event was raised from now on.
    const int &Conta(Evento<> &evento);

    // The domain-data and message services, created on first use.
    Ref<IDadosVor> Dados();
    Ref<IMensagem> Mensagem();

    // The local database, opened as the shell opens it.
    Ref<IMDB> Banco();
    Ref<ICursor> Consulta(const std::string &sql);
    // All values of a column, as text, and the cursor closed.
    std::vector<std::string> Coluna(const std::string &coluna, const std::string &sql);

    // Remote calls; a refusal gives false, and its message was closed.
    Ref<IGateway> Gateway();
    bool Comanda(const std::string &metodo, const Ref<Registro> &pedido);
    template <class R> Ref<R> Pede(const std::string &metodo, const Ref<Registro> &pedido)
    {
        Valor retorno;
        return Executa("EquiptoRN", metodo, pedido, &retorno) ? retorno.Como<R>() : nullptr;
    }
    bool Executa(const std::string &classe, const std::string &metodo, const Ref<Registro> &pedido, Valor *retorno);

    // An equipment that a service can take as new.
    Ref<EquiptoED> EquipamentoNovo(const std::string &codigo);
    // The equipment saved; its number.
    std::int32_t Incluido(const std::string &codigo);
    static Ref<EquiptoED> SoNumero(std::int32_t nroIntEquip);
    // The change of a saved equipment, which is active.
    Ref<EquiptoED> Alteracao(std::int32_t nroIntEquip);
    // As the service answers it, with the service's mark.
    Ref<EquiptoED> Lido(std::int32_t nroIntEquip);
    // The equipment "CTR_1" saved, with limits; its number.
    std::int32_t ComLimites();
    // A document that a store takes and a viewer can open: one empty page.
    static Bytes PdfMinimo();

    std::unique_ptr<AdaptadorHost> adaptador;
    Ref<FormFalso> form = Novo<FormFalso>(); // closed at the end

  private:
    std::deque<int> m_Contagens;
    std::vector<Conexao> m_Conexoes;
    Ref<IDadosVor> m_Dados;
    Ref<IMensagem> m_Mensagem;
};
