#include "desk/host/AplicacaoMesa.h"

#include "desk/host/Caminhos.h"
#include "host/Texto.h"

#include <algorithm>
#include <fstream>

namespace mesa {

namespace {

template <class T> const Ref<T> &NaPosicao(const std::vector<Ref<T>> &itens, std::int32_t posicao)
{
    if (posicao < 0 || posicao >= static_cast<std::int32_t>(itens.size())) {
        throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
    }
    return itens[static_cast<std::size_t>(posicao)];
}

class BandsMesa : public IBands {
  public:
    std::string_view NomeTipo() const override { return "Bands"; }

    std::int32_t Count() const override { return static_cast<std::int32_t>(m_Bandas.size()); }
    Ref<IBand> ItemPosicao(std::int32_t posicao) override { return NaPosicao(m_Bandas, posicao); }
    Ref<IBand> ItemNome(const std::string &nome) override
    {
        const Ref<BandMesa> banda = Procura(nome);
        if (banda.Nada()) {
            throw Falha(NumeroFalha::ArgumentoInvalido);
        }
        return banda;
    }

    Ref<BandMesa> Procura(const std::string &nome) const
    {
        const auto achada = std::find_if(m_Bandas.begin(), m_Bandas.end(),
                                         [&](const auto &banda) { return IgualSemCaixa(banda->Name(), nome); });
        return achada == m_Bandas.end() ? Ref<BandMesa>() : *achada;
    }

    std::vector<Ref<BandMesa>> m_Bandas;
};

std::vector<std::string> LeLinhas(const std::filesystem::path &arquivo)
{
    std::vector<std::string> linhas;
    std::ifstream entrada(arquivo);
    for (std::string linha; std::getline(entrada, linha);) {
        linhas.push_back(linha);
    }
    return linhas;
}

// Replaces the file in one step, so that an interruption leaves the old one or the new one.
void GravaLinhas(const std::filesystem::path &arquivo, const std::vector<std::string> &linhas)
{
    std::filesystem::path novo = arquivo;
    novo += ".novo";
    {
        std::ofstream saida(novo, std::ios::trunc);
        for (const std::string &linha : linhas) {
            saida << linha << '\n';
        }
        if (!saida.flush()) {
            throw Falha(NumeroFalha::ErroDeAcesso);
        }
    }
    std::filesystem::rename(novo, arquivo);
}

bool EhDoComponente(const std::string &linha, const std::string &componente)
{
    return linha.compare(0, componente.size() + 1, componente + "\t") == 0;
}

Ref<ActBarMesa> MenusDaMesa(const Ref<IActBar> &actBar)
{
    return ComoTipo<ActBarMesa>(actBar);
}

} // namespace

std::string AppEXEMesa::Path()
{
    return CaminhoDoModulo(m_Diretorio);
}

void ToolMesa::DefineVisible(bool valor)
{
    m_Visible = valor;
    m_Mudou.dispara();
}

void ToolMesa::DefineEnabled(bool valor)
{
    m_Enabled = valor;
    m_Mudou.dispara();
}

Ref<ITool> ToolsMesa::ItemPosicao(std::int32_t posicao)
{
    return NaPosicao(m_Tools, posicao);
}

Ref<ITool> ToolsMesa::ItemNome(const std::string &nome)
{
    const auto achada =
        std::find_if(m_Tools.begin(), m_Tools.end(), [&](const auto &tool) { return tool->Nome() == nome; });
    if (achada == m_Tools.end()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    return *achada;
}

void ToolsMesa::Retira(const std::string &nome)
{
    std::erase_if(m_Tools, [&](const auto &tool) { return tool->Nome() == nome; });
}

ActBarMesa::ActBarMesa() : m_Bands(Novo<BandsMesa>()) {}

Ref<IBands> ActBarMesa::Bands()
{
    return m_Bands;
}

Ref<BandMesa> ActBarMesa::Banda(const std::string &nome)
{
    const auto bandas = ComoTipo<BandsMesa>(m_Bands);
    Ref<BandMesa> banda = bandas->Procura(nome);
    if (banda.Nada()) {
        banda = Novo<BandMesa>(nome);
        bandas->m_Bandas.push_back(banda);
        m_Mudou.dispara();
    }
    return banda;
}

const std::vector<Ref<BandMesa>> &ActBarMesa::Bandas() const
{
    return ComoTipo<BandsMesa>(m_Bands)->m_Bandas;
}

void FormMDIMesa::MsgEnviaRecebe(std::string &texto)
{
    MensagemEnviaRecebe = texto;
    m_Mudou.dispara();
}

void FormMDIMesa::AbrirEnviaRecebe()
{
    EnviaRecebeAberta = true;
    m_Mudou.dispara();
}

void FormMDIMesa::FecharEnviaRecebe(bool fecha)
{
    EnviaRecebeAberta = EnviaRecebeAberta && !fecha;
    m_Mudou.dispara();
}

void GlobalMesa::MontaEstruturaMenus(std::string &sTool, const std::string &)
{
    m_AoMontarMenus.dispara(sTool);
}

Ref<Objeto> GlobalMesa::PegaAutoModulo(const std::string &nome)
{
    for (const auto &[registrado, modulo] : m_Modulos) {
        if (IgualSemCaixa(registrado, nome)) {
            return modulo.Alvo();
        }
    }
    throw Falha(NumeroFalha::SubscritoForaDoIntervalo);
}

void GlobalMesa::Registra(const std::string &nome, RefFraca<Objeto> modulo)
{
    m_Modulos.emplace_back(nome, std::move(modulo));
}

InterfaceMesa::InterfaceMesa(Ref<IJanelas> janelas, std::function<Ref<ITrataBD>()> trataBD)
    : m_Janelas(std::move(janelas)),
      m_TrataBD(std::move(trataBD))
{
}

void InterfaceMesa::MostraJanela(const Ref<IForm> &form, std::int16_t modal, Ref<IForm> &dono, std::int16_t,
                                 Ref<Objeto> &formClick)
{
    formClick = form;
    m_Janelas->MostraForm(form, modal != 0, dono);
}

void AMRegistroMesa::RegistraAM(const std::string &componente, const std::string &classe, const Valor &nomeAPP)
{
    std::vector<std::string> linhas = LeLinhas(m_Arquivo);
    std::erase_if(linhas, [&](const std::string &linha) { return EhDoComponente(linha, componente); });
    linhas.push_back(componente + "\t" + classe + "\t" + nomeAPP.Texto());
    GravaLinhas(m_Arquivo, linhas);
}

void AMRegistroMesa::DesregistraAM(const std::string &componente, const Valor &)
{
    std::vector<std::string> linhas = LeLinhas(m_Arquivo);
    std::erase_if(linhas, [&](const std::string &linha) { return EhDoComponente(linha, componente); });
    GravaLinhas(m_Arquivo, linhas);
}

void AMEditMenuMesa::IncorporaMenu(Ref<IActBar> &actBar, ItensMenu &itens, bool)
{
    const Ref<ActBarMesa> menus = MenusDaMesa(actBar);
    for (const Ref<ItemMenuModulo> &item : itens) {
        if (item) {
            const Ref<ToolsMesa> &ferramentas = menus->Banda(item->Band)->Ferramentas();
            ferramentas->Retira(item->Name); // of an earlier merge
            ferramentas->Adiciona(Novo<ToolMesa>(item->Name, item->Name));
        }
    }
    menus->Mudou().dispara();
}

void AMEditMenuMesa::RemoveMenu(Ref<IActBar> &actBar, ItensMenu &itens)
{
    const Ref<ActBarMesa> menus = MenusDaMesa(actBar);
    for (const Ref<ItemMenuModulo> &item : itens) {
        if (item) {
            menus->Banda(item->Band)->Ferramentas()->Retira(item->Name);
        }
    }
    menus->Mudou().dispara();
}

} // namespace mesa
