#include "controls/ztCombo.h"

#include "host/Texto.h"

#include <algorithm>

namespace {

constexpr std::string_view FimDeItem = "??";

} // namespace

ztCombo::ztCombo(const Origem &origem) : Controle(origem), m_AjustesCombo(origem.Ajustes<AjustesZtCombo>())
{
    std::vector<std::string> itens = Divide(m_AjustesCombo.Conteudo, FimDeItem);
    if (!itens.empty() && itens.back().empty()) { // behind the last end
        itens.pop_back();
    }
    for (const std::string &item : itens) {
        Acrescenta(item);
    }
}

void ztCombo::Limpa()
{
    Ref<IControle> vivo = Vivo();
    m_Itens.clear();
    m_IndiceAtual = -1;
    Mudou().dispara();
}

void ztCombo::AdicionaItem(const std::string &item)
{
    Ref<IControle> vivo = Vivo();
    Acrescenta(item);
    Mudou().dispara();
}

void ztCombo::Acrescenta(const std::string &item)
{
    const std::vector<std::string> colunas = Divide(item, m_AjustesCombo.DelimitadorColuna);
    const auto coluna = static_cast<std::size_t>(m_AjustesCombo.ColunaValor);
    if (m_AjustesCombo.ColunaValor < 0) {
        m_Itens.push_back({item, item});
    } else if (colunas.empty()) {
        m_Itens.push_back({});
    } else {
        m_Itens.push_back({colunas.front(), coluna < colunas.size() ? colunas[coluna] : colunas.front()});
    }
}

std::string ztCombo::Valor() const
{
    return m_IndiceAtual < 0 ? std::string() : m_Itens[static_cast<std::size_t>(m_IndiceAtual)].Valor;
}

void ztCombo::DefineValor(const std::string &valor)
{
    const auto achado = std::ranges::find(m_Itens, valor, &Item::Valor);
    Muda(achado == m_Itens.end() ? -1 : static_cast<std::int32_t>(achado - m_Itens.begin()));
}

std::string ztCombo::Texto() const
{
    return m_IndiceAtual < 0 ? std::string() : m_Itens[static_cast<std::size_t>(m_IndiceAtual)].Texto;
}

void ztCombo::DefineIndiceAtual(std::int16_t indice)
{
    if (indice < -1 || indice >= NroItens()) {
        throw Falha(NumeroFalha::ArgumentoInvalido);
    }
    Muda(indice);
}

void ztCombo::Muda(std::int32_t indice)
{
    if (indice == m_IndiceAtual) {
        return;
    }
    Ref<IControle> vivo = Vivo();
    m_IndiceAtual = static_cast<std::int16_t>(indice);
    Mudou().dispara();
    m_Click.dispara();
    m_Change.dispara();
}

bool ztCombo::VaiEscolher()
{
    return PodeEscolher() && Foco() && PodeEscolher();
}

bool ztCombo::Escolhe(std::int32_t indice)
{
    Ref<IControle> vivo = Vivo();
    if (!VaiEscolher() || indice < 0 || indice >= NroItens()) {
        return false;
    }
    m_Pesquisa.Encerra();
    Muda(indice);
    return true;
}

bool ztCombo::EscolheTexto(const std::string &texto)
{
    Ref<IControle> vivo = Vivo();
    const auto achado = std::ranges::find(m_Itens, texto, &Item::Texto);
    return achado != m_Itens.end() && Escolhe(static_cast<std::int32_t>(achado - m_Itens.begin()));
}

ItensPesquisados ztCombo::ItensParaPesquisa()
{
    return {[this] { return NroItens(); },
            [this](std::int32_t item) { return m_Itens[static_cast<std::size_t>(item)].Texto; },
            [this] { return static_cast<std::int32_t>(m_IndiceAtual); }, [this] { return VaiEscolher(); },
            [this](std::int32_t item) { Muda(item); }};
}

bool ztCombo::Digita(const std::string &texto)
{
    Ref<IControle> vivo = Vivo();
    return VaiEscolher() && m_Pesquisa.Digita(texto);
}

bool ztCombo::Apaga()
{
    Ref<IControle> vivo = Vivo();
    if (!VaiEscolher()) {
        return false;
    }
    m_Pesquisa.Encerra();
    return true;
}

void ztCombo::Conclui()
{
    m_Pesquisa.Encerra();
}
