#include "tests/support/GatewayRoteirizado.h"

#include <algorithm>

void ServicosRemotos::Define(const std::string &classe, const std::string &metodo, Operacao operacao)
{
    m_Operacoes[{classe, metodo}] = std::move(operacao);
}

void ServicosRemotos::Recusa(std::string metodo, std::string mensagem)
{
    m_Recusas.emplace_back(std::move(metodo), std::move(mensagem));
}

void ServicosRemotos::RecusaNaExecucao(std::int32_t n, std::string mensagem)
{
    m_FaltamParaRecusar = n;
    m_MensagemNaVez = std::move(mensagem);
}

std::optional<Resposta> ServicosRemotos::Executa(const std::string &classe, const std::string &metodo,
                                                 const Ref<Registro> &pedido)
{
    if (m_FaltamParaRecusar > 0 && --m_FaltamParaRecusar == 0) {
        ++m_RecusasNaVez;
        return Resposta::Recusa(m_MensagemNaVez);
    }
    const auto recusa = std::find_if(m_Recusas.begin(), m_Recusas.end(),
                                     [&](const auto &recusada) { return recusada.first == metodo; });
    if (recusa != m_Recusas.end()) {
        std::string mensagem = std::move(recusa->second);
        m_Recusas.erase(recusa);
        return Resposta::Recusa(std::move(mensagem));
    }
    const auto operacao = m_Operacoes.find({classe, metodo});
    if (operacao == m_Operacoes.end()) {
        return std::nullopt;
    }
    const Operacao copia = operacao->second; // it may replace itself
    return copia(pedido);
}

std::vector<std::string> ServicosRemotos::RecusasPendentes() const
{
    std::vector<std::string> metodos;
    for (const auto &[metodo, mensagem] : m_Recusas) {
        metodos.push_back(metodo);
    }
    return metodos;
}

namespace {

class ProxyRoteirizado : public IProxyRN {
  public:
    ProxyRoteirizado(RefRegistro registro, std::shared_ptr<ServicosRemotos> servicos, std::string classe)
        : m_Registro(std::move(registro)),
          m_Servicos(std::move(servicos)),
          m_Classe(std::move(classe))
    {
    }

    std::string_view NomeTipo() const override { return m_Classe; }

    Valor ObtemRetorno() override
    {
        const auto linha = m_Registro->Chama(m_Classe + ".ObtemRetorno");
        if (!m_Resposta || !m_Resposta->Sucesso()) {
            m_Registro->Problema(m_Classe + ".ObtemRetorno sem operação bem sucedida");
            return {};
        }
        return linha.Resultado(m_Resposta->Retorno());
    }

    void MostraErro() override
    {
        const auto linha = m_Registro->Chama(m_Classe + ".MostraErro");
        if (!m_Resposta || m_Resposta->Sucesso()) {
            m_Registro->Problema(m_Classe + ".MostraErro sem operação recusada");
            return;
        }
        linha.Resultado(m_Resposta->Mensagem());
    }

    bool ExecutaMetodo(Ref<Objeto> &oContexto, std::string &sMetodo, std::vector<Valor> &aParam) override
    {
        m_Resposta.reset();
        std::string argumentos = TextoLog(sMetodo);
        for (const Valor &parametro : aParam) {
            argumentos += ", " + TextoLog(parametro);
        }
        const auto linha = m_Registro->ChamaTexto(m_Classe + ".ExecutaMetodo", argumentos);
        if (!oContexto.Nada() || aParam.size() != 1 ||
            !std::holds_alternative<Valor::Variavel>(aParam.front().Interno())) {
            m_Registro->Problema(m_Classe + ".ExecutaMetodo fora da convenção: " + argumentos);
            throw Falha(NumeroFalha::ArgumentoInvalido);
        }
        m_Resposta = m_Servicos->Executa(m_Classe, sMetodo, aParam.front().Como<Registro>());
        if (!m_Resposta) {
            m_Registro->Problema("INESPERADA: operação " + m_Classe + " " + TextoLog(sMetodo));
            m_Resposta = Resposta::Recusa("Operação sem roteiro: " + sMetodo);
        }
        if (m_Resposta->ObjetoTrocado()) {
            aParam.front().Substitui(*m_Resposta->ObjetoTrocado());
        }
        return linha.Resultado(m_Resposta->Sucesso());
    }

  private:
    RefRegistro m_Registro;
    std::shared_ptr<ServicosRemotos> m_Servicos;
    std::string m_Classe;
    std::optional<Resposta> m_Resposta; // of the last call
};

} // namespace

Ref<IProxyRN> GatewayRoteirizado::CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                                               const std::string &sBiblioteca, const std::string &sCanal)
{
    m_Registro->Chama("Gateway.CriaObjetoRN", sSistema, sClasseRN, sBiblioteca, sCanal);
    return m_Registro->Vigia(Ref<IProxyRN>(Novo<ProxyRoteirizado>(m_Registro, m_Servicos, sClasseRN)));
}
