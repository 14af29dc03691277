#pragma once

#include "services/Banco.h"
#include "services/Operacao.h"
#include "services/Portaria.h"
#include "services/SessaoServico.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// A session over a registry in a database.
class SessaoSql : public SessaoServico {
  public:
    // exigeMotivo: whether corrections are refused where there is nobody to ask for a reason.
    SessaoSql(std::shared_ptr<Banco> banco, Relogio agora, std::shared_ptr<Portaria> portaria,
              Portaria::Entrada entrada, bool exigeMotivo);

    const mesa::Operador &Operador() const override { return m_Entrada.Quem; }
    bool DeveTrocarSenha() override;
    std::string AvisoDeRelogio() const override { return m_Entrada.AvisoDeRelogio; }
    bool TemPermissao(const std::string &sistema, const std::string &objeto, const std::string &acao) override;
    bool Executa(const std::string &classeRN, const std::string &metodo, Ref<Objeto> &pedido, Valor &retorno,
                 std::string &recusa) override;
    void PerguntaMotivo(PerguntaDeMotivo pergunta) override { m_Pergunta = std::move(pergunta); }
    void Acompanha(Segue segue) override { m_Segue = std::move(segue); }
    bool GuardaDocumento(const Bytes &bytes, double &numero, std::string &recusa) override;
    bool LeDocumento(double numero, Bytes &bytes, std::string &recusa) override;
    std::vector<AfericaoComDocumento> AfericoesDoDocumento(double numero) override;
    std::vector<AfericaoComDocumento> AfericoesDoDocumentoDa(double nroIntAfericao) override;
    bool VersoesDaAfericao(double nroIntAfericao, std::vector<VersaoAfericao> &versoes, std::string &recusa) override;
    bool ComoConhecido(std::int32_t nroIntEquip, const Instante &quando, EquipamentoConhecido &conhecido,
                       std::string &recusa) override;
    std::vector<ClienteCadastrado> Clientes() override;
    Data LeReplica(const std::function<void(const LinhaReplica &)> &cadaLinha) override;

  private:
    std::vector<AfericaoComDocumento> AfericoesCom(const QString &documento, double numero);

    using Trabalho = std::function<void(Operacao &)>;

    // Runs an operation in one transaction; false with the reason when it refused. When it corrects what was stored, it
    // is taken back and run again once the reason is there.
    bool Opera(bool escreve, const Trabalho &trabalho, std::string &recusa);
    void Roda(bool escreve, const Trabalho &trabalho, const std::string &motivo);
    // Refused when none is given.
    std::string MotivoPara(const std::vector<std::string> &corrigidas) const;

    // Why the sign-in no longer stands: the password has to be changed, or the user was moved; empty while it does.
    std::string RecusaDaEntrada() const;
    // Refuses where nothing can be written.
    void ExigeEscrita() const;
    bool TrocaMinhaSenha(const Ref<Objeto> &pedido, std::string &recusa);

    std::shared_ptr<Banco> m_Banco;
    Relogio m_Agora;
    std::shared_ptr<Portaria> m_Portaria;
    Portaria::Entrada m_Entrada;
    bool m_ExigeMotivo;
    PerguntaDeMotivo m_Pergunta;
    Segue m_Segue;
};

} // namespace mesa
