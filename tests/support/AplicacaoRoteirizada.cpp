#include "tests/support/AplicacaoRoteirizada.h"

#include "host/Texto.h"
#include "tests/support/SessaoRoteirizada.h"

Ref<Objeto> GlobalRoteirizado::PegaAutoModulo(const std::string &nome)
{
    m_Registro->Chama("cGlobal.PegaAutoModulo", nome);
    return Modulo(nome);
}

Ref<Objeto> GlobalRoteirizado::gfunRetornaAutoModulo(const std::string &nome)
{
    m_Registro->Chama("cGlobal.gfunRetornaAutoModulo", nome);
    return Modulo(nome);
}

Ref<Objeto> GlobalRoteirizado::Modulo(const std::string &nome) const
{
    const auto modulo = Modulos.find(nome);
    if (modulo == Modulos.end()) {
        throw Falha(NumeroFalha::ArgumentoInvalido, "cGlobal", "Módulo não encontrado: " + nome);
    }
    return modulo->second;
}

InterfaceRoteirizada::InterfaceRoteirizada(RefRegistro registro, const Ref<PlataformaRoteirizada> &plataforma,
                                           const Ref<SessaoRoteirizada> &sessao)
    : m_Registro(std::move(registro)),
      m_Plataforma(plataforma),
      m_Sessao(sessao)
{
}

void InterfaceRoteirizada::MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono,
                                        std::int16_t depurar, Ref<Objeto> &formClick)
{
    m_Registro->ChamaTexto("ObjInterface.MostraJanela", TextoLog(form) + ", modal=" + TextoLog(modal != 0) +
                                                            (dono ? ", dono=" + TextoLog(dono) : "") +
                                                            (depurar != 0 ? ", depurar=True" : ""));
    formClick = form;
    m_Plataforma->MostraJanela(form, modal != 0);
}

Ref<ITrataBD> InterfaceRoteirizada::pTrataBD()
{
    m_Registro->Chama("ObjInterface.pTrataBD");
    return m_Sessao->NovoTrataBD();
}

class ActBarRoteirizada::Tool : public ITool {
  public:
    Tool(RefRegistro registro, std::string nome) : m_Registro(std::move(registro)), m_Nome(std::move(nome)) {}
    std::string_view NomeTipo() const override { return "Tool"; }
    const std::string &Nome() const { return m_Nome; }

    bool Visible() const override
    {
        m_Registro->Passa("Tool.Visible");
        return m_Visible;
    }
    void DefineVisible(bool valor) override
    {
        m_Registro->Escreve("Tool(" + m_Nome + ").Visible", valor);
        m_Visible = valor;
    }
    bool Enabled() const override
    {
        m_Registro->Passa("Tool.Enabled");
        return m_Enabled;
    }
    void DefineEnabled(bool valor) override
    {
        m_Registro->Escreve("Tool(" + m_Nome + ").Enabled", valor);
        m_Enabled = valor;
    }

  private:
    RefRegistro m_Registro;
    std::string m_Nome;
    bool m_Visible = true;
    bool m_Enabled = true;
};

namespace {

[[noreturn]] void Inexistente(const std::string &o_que)
{
    throw Falha(NumeroFalha::SubscritoForaDoIntervalo, "ActBar", o_que + " não existe");
}

template <class T> const Ref<T> &PorPosicao(const std::vector<Ref<T>> &itens, std::int32_t posicao)
{
    if (posicao < 0 || posicao >= static_cast<std::int32_t>(itens.size())) {
        Inexistente("A posição " + std::to_string(posicao));
    }
    return itens[static_cast<std::size_t>(posicao)];
}

} // namespace

class ActBarRoteirizada::Tools : public ITools {
  public:
    std::string_view NomeTipo() const override { return "Tools"; }
    std::int32_t Count() const override { return static_cast<std::int32_t>(Itens.size()); }
    Ref<ITool> ItemPosicao(std::int32_t posicao) override { return PorPosicao(Itens, posicao); }
    Ref<ITool> ItemNome(const std::string &nome) override
    {
        for (const auto &tool : Itens) {
            if (IgualSemCaixa(tool->Nome(), nome)) {
                return tool;
            }
        }
        Inexistente("A ferramenta " + nome);
    }

    std::vector<Ref<Tool>> Itens;
};

class ActBarRoteirizada::Band : public IBand {
  public:
    Band(RefRegistro registro, std::string nome) : m_Registro(std::move(registro)), m_Nome(std::move(nome)) {}
    std::string_view NomeTipo() const override { return "Band"; }
    std::string Name() const override { return m_Nome; }
    Ref<ITools> Tools() override { return Ferramentas; }
    void TrackPopup(std::int32_t x, std::int32_t y) override
    {
        m_Registro->Chama("Band(" + m_Nome + ").TrackPopup", x, y);
    }

    Ref<ActBarRoteirizada::Tools> Ferramentas = Novo<ActBarRoteirizada::Tools>();

  private:
    RefRegistro m_Registro;
    std::string m_Nome;
};

class ActBarRoteirizada::ListaBands : public IBands {
  public:
    std::string_view NomeTipo() const override { return "Bands"; }
    std::int32_t Count() const override { return static_cast<std::int32_t>(Itens.size()); }
    Ref<IBand> ItemPosicao(std::int32_t posicao) override { return PorPosicao(Itens, posicao); }
    Ref<IBand> ItemNome(const std::string &nome) override
    {
        for (const auto &band : Itens) {
            if (IgualSemCaixa(band->Name(), nome)) {
                return band;
            }
        }
        Inexistente("A band " + nome);
    }

    std::vector<Ref<Band>> Itens;
};

ActBarRoteirizada::ActBarRoteirizada(RefRegistro registro)
    : m_Registro(std::move(registro)),
      m_Bands(Novo<ListaBands>())
{
}

ActBarRoteirizada::~ActBarRoteirizada() = default;

void ActBarRoteirizada::PoeBand(const std::string &band)
{
    m_Bands->Itens.push_back(Novo<Band>(m_Registro, band));
}

void ActBarRoteirizada::PoeFerramenta(const std::string &band, const std::string &tool)
{
    for (const auto &existente : m_Bands->Itens) {
        if (existente->Name() == band) {
            existente->Ferramentas->Itens.push_back(Novo<Tool>(m_Registro, tool));
            return;
        }
    }
    PoeBand(band);
    m_Bands->Itens.back()->Ferramentas->Itens.push_back(Novo<Tool>(m_Registro, tool));
}

Ref<ITool> ActBarRoteirizada::Ferramenta(const std::string &band, const std::string &tool)
{
    return m_Bands->ItemNome(band)->Tools()->ItemNome(tool);
}

Ref<IBands> ActBarRoteirizada::Bands()
{
    m_Registro->Passa("ActBar.Bands");
    return m_Bands;
}
