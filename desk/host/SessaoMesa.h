#pragma once

#include "desk/host/BancoLocalMesa.h"
#include "host/ISessao.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <functional>
#include <string>

namespace mesa {

// Shows the person why a service refused.
using MostraRecusa = std::function<void(const std::string &)>;

// Follows what of the equipment is opened or included, by its internal number.
using ViuEquipamento = std::function<void(std::int32_t nroIntEquip)>;

// The session of a signed-in operator. There is no central system behind the desk: sending a transaction raises a
// fault that says so.
class SessaoMesa : public IobjMTM {
  public:
    SessaoMesa(Ref<SessaoServico> servico, Ref<BancoLocalMesa> bancoLocal, MostraRecusa mostraRecusa,
               ViuEquipamento viuEquipamento);
    std::string_view NomeTipo() const override { return "SessaoMesa"; }

    Ref<IQMR> CreateQMR() override;
    std::string ClienteLogado() override { return m_Servico->Operador().Cliente; }
    std::string SetorLogado() override { return m_Servico->Operador().Setor; }
    Ref<IGateway> ObtemGateway() override;
    Ref<IWebComm> CWebComm() override;
    bool EnviaTransacao1(Ref<ITransacao> &oTrans, bool &b1) override;
    bool EnviaTransacao2(Ref<ITransacao> &oTrans, bool &b1) override;
    bool EnviaTransacaoH90(Ref<ITransacao> &oTrans, bool &b1, bool &b3) override;
    std::int16_t EnviaRajada1(Ref<ITransacao> &oTrans, bool &b1) override;
    std::int16_t EnviaRajada2(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados) override;
    bool EnviaRajadaH90(Ref<ITransacao> &oTrans, std::vector<std::string> &aDados, bool &b2) override;

    const Ref<SessaoServico> &Servico() const { return m_Servico; }
    // The local database, with a replica that is up to date as far as that can be had.
    Ref<IMDB> AbreBancoLocal();
    // Brings the replica up to date after something was stored. Where that fails the person is told, since what was
    // asked for is done, and the next look at it tries again.
    void RenovaReplica();

  private:
    Ref<SessaoServico> m_Servico;
    Ref<BancoLocalMesa> m_BancoLocal;
    MostraRecusa m_MostraRecusa;
    ViuEquipamento m_ViuEquipamento;
};

// Access control over the same session.
class AcessoMesa : public IobjSCA {
  public:
    explicit AcessoMesa(Ref<SessaoServico> servico) : m_Servico(std::move(servico)) {}
    std::string_view NomeTipo() const override { return "AcessoMesa"; }

    bool Logado() override { return static_cast<bool>(m_Servico); }
    bool PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao) override
    {
        return m_Servico && m_Servico->TemPermissao(sistema, objeto, acao);
    }
    // The operator has signed out.
    void Sai() { m_Servico = nullptr; }

  private:
    Ref<SessaoServico> m_Servico;
};

} // namespace mesa
