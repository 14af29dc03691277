#pragma once

#include "desk/services/Banco.h"
#include "desk/services/Operacao.h"
#include "desk/services/SessaoServico.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mesa {

// A session over a registry in a database.
class SessaoSql : public SessaoServico {
  public:
    SessaoSql(std::shared_ptr<Banco> banco, Relogio agora, mesa::Operador operador);

    const mesa::Operador &Operador() const override { return m_Operador; }
    bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) override;
    bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                 std::string &recusa) override;
    bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) override;
    bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) override;
    std::vector<ClienteCadastrado> Clientes() override;
    Data LeReplica(const std::function<void(const LinhaReplica &)> &cadaLinha) override;

  private:
    // Runs an operation in one transaction; false with the reason when it refused.
    bool Opera(bool escreve, const std::function<void(Operacao &)> &trabalho, std::string &recusa);

    std::shared_ptr<Banco> m_Banco;
    Relogio m_Agora;
    mesa::Operador m_Operador;
};

} // namespace mesa
