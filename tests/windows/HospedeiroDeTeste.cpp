#include "tests/windows/HospedeiroDeTeste.h"

#include "windows/automation/Embrulho.h"

#include <string_view>

namespace nativo {
namespace {

class CoisaDeTeste : public Objeto {
  public:
    std::string_view NomeTipo() const override { return "Coisa"; }
};

class AplicacaoDeTeste : public IoAppEXE {
  public:
    std::string_view NomeTipo() const override { return "App"; }
    std::string Title() override { return "Hospedeiro"; }
    std::string Path() override { return "C:\\Hospedeiro"; }
    std::string ProductName() override { return "Produto"; }
};

class AcessoDeTeste : public IobjSCA {
  public:
    explicit AcessoDeTeste(HospedeiroDeTeste &hospedeiro) : m_Hospedeiro(hospedeiro) {}
    std::string_view NomeTipo() const override { return "SCA"; }
    bool Logado() override
    {
        if (m_Hospedeiro.AoPerguntarLogado) {
            m_Hospedeiro.AoPerguntarLogado();
        }
        return m_Hospedeiro.Logado;
    }
    bool PossuiPerm2(const std::string &sistema, const std::string &objeto, const std::string &acao) override
    {
        m_Hospedeiro.Permissoes.push_back(sistema + "/" + objeto + "/" + acao);
        return true;
    }

  private:
    HospedeiroDeTeste &m_Hospedeiro;
};

template <class T> Com<IDispatch> Alheio(const Ref<T> &objeto)
{
    return Embrulha(objeto, Lado::Hospedeiro);
}

} // namespace

HospedeiroDeTeste::HospedeiroDeTeste()
{
    OfereceMembros<IoAppEXE>([](Membros<IoAppEXE> &m) {
        m.Leitura("Title", &IoAppEXE::Title);
        m.Leitura("Path", &IoAppEXE::Path);
        m.Leitura("ProductName", &IoAppEXE::ProductName);
    });
    OfereceMembros<IobjSCA>([](Membros<IobjSCA> &m) {
        m.Leitura("Logado", &IobjSCA::Logado);
        m.Metodo("PossuiPerm2", &IobjSCA::PossuiPerm2);
    });
    oAppEXE = Alheio(Novo<AplicacaoDeTeste>());
    objSCA = Alheio(Novo<AcessoDeTeste>(*this));
}

Com<IDispatch> HospedeiroDeTeste::Coisa()
{
    OfereceMembros<CoisaDeTeste>([](Membros<CoisaDeTeste> &) {});
    return Alheio(Novo<CoisaDeTeste>());
}

HRESULT HospedeiroDeTeste::Configura(_Geral &geral) const
{
    IDispatch *formMDI = nullptr;
    IDispatch *objetos[] = {MenuDestino.Ponteiro(), Relatorios.Ponteiro(), Ajuda.Ponteiro(), MDB.Ponteiro(),
                            oAppEXE.Ponteiro()};
    return geral.Parametros(&formMDI, &objetos[0], &objetos[1], &objetos[2], &objetos[3], &objetos[4]);
}

HRESULT HospedeiroDeTeste::Entra(_Geral &geral) const
{
    IDispatch *objetos[] = {objMTM.Ponteiro(), objSCA.Ponteiro()};
    Variante municipio;
    V_VT(&municipio.Bruta()) = VT_BSTR;
    V_BSTR(&municipio.Bruta()) = NovoBstr("8801");
    return geral.Logon(&objetos[0], &objetos[1], municipio.Bruta());
}

} // namespace nativo
