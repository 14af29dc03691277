#include "host/IGateway.h"
#include "windows/automation/Registros.h"
#include "windows/automation/Tardio.h"
#include "windows/host/Remotos.h"
#include "windows/host/RespostasRemotas.h"

namespace nativo {
namespace detalhe {

// The array of parameters goes as it stands, and its variables come back by themselves.
template <> class ArgumentoPorReferencia<ParametrosRemotos> {
  public:
    ArgumentoPorReferencia(ParametrosRemotos &parametros, Lado) : m_Parametros(parametros) {}

    VARIANT Bruto() { return m_Parametros.Arranjo(); }
    void Devolve() { m_Parametros.Devolve(); }

  private:
    ParametrosRemotos &m_Parametros;
};

} // namespace detalhe

namespace {

class ProxyRemoto : public Remoto<IProxyRN> {
  public:
    using Remoto::Remoto;

    Valor ObtemRetorno() override
    {
        const auto retorno = Tardio(*this).Chama<Variante>("ObtemRetorno");
        if (retorno.Tipo() != VT_DISPATCH && retorno.Tipo() != VT_UNKNOWN) {
            return LeValor(retorno.Bruta());
        }
        const Com<IDispatch> objeto = LeObjeto(retorno.Bruta());
        const std::string classe = m_Resposta.empty() && objeto ? ClasseDe(objeto) : m_Resposta;
        if (NovoRegistro(classe).Nada()) { // what nobody knows stands as such
            return LeValor(retorno.Bruta());
        }
        return LeRegistro(objeto, classe);
    }
    void MostraErro() override { Tardio(*this).Chama("MostraErro"); }
    bool ExecutaMetodo(Ref<::Objeto> &oContexto, std::string &sMetodo, std::vector<Valor> &aParam) override
    {
        m_Resposta = RespostaDa(sMetodo);
        ParametrosRemotos parametros(aParam);
        return Tardio(*this).Chama<bool>("ExecutaMetodo", PorRef(oContexto), PorRef(sMetodo), PorRef(parametros));
    }

  private:
    std::string m_Resposta; // class of the record that the last operation answers
};

class GatewayRemoto : public Remoto<IGateway> {
  public:
    using Remoto::Remoto;

    Ref<IProxyRN> CriaObjetoRN(const std::string &sSistema, const std::string &sClasseRN,
                               const std::string &sBiblioteca, const std::string &sCanal) override
    {
        return Tardio(*this).Chama<Ref<IProxyRN>>("CriaObjetoRN", sSistema, sClasseRN, sBiblioteca, sCanal);
    }
};

} // namespace

void RegistraGatewayRemoto()
{
    RegistraRemoto<IGateway, GatewayRemoto>();
    RegistraRemoto<IProxyRN, ProxyRemoto>();
}

} // namespace nativo
