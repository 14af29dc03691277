#pragma once

#include "services/Banco.h"
#include "services/Cabeca.h"
#include "services/Operacao.h"
#include "services/Portaria.h"
#include "services/Recusa.h"
#include "services/Repeticao.h"
#include "services/SessaoServico.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mesa {

// A session over a registry in a database.
class SessaoSql : public SessaoServico {
  public:
    // What comes of an operation when the sign-in no longer stands: a refusal like every other, or RecusaDeEntrada.
    enum class SemEntrada { Responde, Lanca };

    // exigeMotivo: whether corrections are refused where there is nobody to ask for a reason.
    SessaoSql(std::shared_ptr<Banco> banco, Relogio agora, std::shared_ptr<Portaria> portaria,
              Portaria::Entrada entrada, bool exigeMotivo, SemEntrada semEntrada);

    // Of the sign-in on which the session stands; another one once "trocaMinhaSenha" is done.
    const Portaria::Entrada &Entrada() const { return m_Entrada; }
    // The number of the next changing operation (Executa, GuardaDocumento), with which alone it counts. What is asked
    // for its answer finds the arguments of that call as they are when it is done: the request with its marks, and what
    // is answered.
    void Numera(Numerada numerada) { m_Numerada = std::move(numerada); }
    // The octets that the last one had answered when it was done before; then it has done nothing, and what it was
    // given is as it was. Nothing when it was done now, refused, or had no number.
    const std::optional<std::string> &Repetida() const { return m_Repetida; }

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
    // The head of the registry's history, signed; false with the reason for who may not check and copy.
    bool LeCabeca(CabecaAssinada &cabeca, std::string &recusa);
    std::vector<ClienteCadastrado> Clientes() override;
    Replicado LeReplica(std::int64_t depoisDe, const std::function<void(const LinhaReplica &)> &cadaLinha) override;

  private:
    std::vector<AfericaoComDocumento> AfericoesCom(const QString &documento, double numero);

    using Trabalho = std::function<void(Operacao &)>;

    // Runs an operation in one transaction; false with the reason when it refused. When it corrects what was stored, it
    // is taken back and run again once the reason is there. repeticao: its number; null for none.
    bool Opera(bool escreve, const Trabalho &trabalho, std::string &recusa, const Repeticao *repeticao = nullptr);
    void Roda(bool escreve, const Trabalho &trabalho, const std::string &motivo, const Repeticao *repeticao);
    // The number of this operation, which no other one has.
    std::optional<Repeticao> TomaNumero(bool comSenha);
    // The reason of a refusal, unless it is one to be raised.
    void Recolhe(const Recusa &motivo, std::string &recusa) const;
    // Refused when none is given.
    std::string MotivoPara(const std::vector<std::string> &corrigidas) const;

    // Whether the operator may ask anything. Within the caller's transaction.
    bool EntradaVale() const;
    // Refuses where nothing can be written.
    void ExigeEscrita() const;
    bool TrocaMinhaSenha(const Ref<Objeto> &pedido, std::string &recusa);

    std::shared_ptr<Banco> m_Banco;
    Relogio m_Agora;
    std::shared_ptr<Portaria> m_Portaria;
    Portaria::Entrada m_Entrada;
    bool m_ExigeMotivo;
    SemEntrada m_SemEntrada;
    std::optional<Numerada> m_Numerada;
    std::optional<std::string> m_Repetida;
    PerguntaDeMotivo m_Pergunta;
    Segue m_Segue;
};

} // namespace mesa
