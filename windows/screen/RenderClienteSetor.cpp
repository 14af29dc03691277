#include "windows/screen/RenderClienteSetor.h"

#include "tela/Partes.h"
#include "tela/Tracado.h"
#include "windows/screen/JanelaForm.h"
#include "windows/screen/Letra.h"

#include <algorithm>
#include <utility>

namespace nativo {

namespace {

constexpr Folgas AFolga{};

} // namespace

RenderClienteSetor::RenderClienteSetor(Ref<IControle> controle, const Peca &peca, JanelaForm &janela)
    : Renderizador(controle, peca, janela),
      m_Escolha(ComoTipo<ztClienteSetor>(controle), janela.AoRedor().Clientes()),
      m_RotuloCliente(FazRotulo(Partes::Cliente)),
      m_Cliente(Faz(WC_COMBOBOXW, ComboNativo::Estilo),
                {.Escolhe = [this](int posicao) { Age([&] { m_Escolha.EscolheCliente(posicao); }); },
                 .Pesquisa =
                     [this](const std::function<void(PesquisaPorLetras &)> &ato) {
                         Age([&] { ato(m_Escolha.PesquisaDeClientes()); });
                     }}),
      m_RotuloSetor(FazRotulo(Partes::Setor)),
      m_Setor(Faz(WC_COMBOBOXW, ComboNativo::Estilo),
              {.Escolhe = [this](int posicao) { Age([&] { m_Escolha.EscolheSetor(posicao); }); },
               .Pesquisa =
                   [this](const std::function<void(PesquisaPorLetras &)> &ato) {
                       Age([&] { ato(m_Escolha.PesquisaDeSetores()); });
                   }})
{
    Nomeia(m_Cliente.Janela(), "Cliente");
    Nomeia(m_Setor.Janela(), "Setor");
}

HWND RenderClienteSetor::FazRotulo(std::string_view texto)
{
    const HWND rotulo = Faz(WC_STATICW, SS_LEFTNOWORDWRAP | SS_CENTERIMAGE);
    EscreveTexto(rotulo, std::string(texto));
    return rotulo;
}

HWND RenderClienteSetor::JanelaDe(Parte parte) const
{
    return parte == Parte::Setor ? m_Setor.Janela() : m_Cliente.Janela();
}

void RenderClienteSetor::Mostra()
{
    const std::vector<ClienteOferecido> &clientes = m_Escolha.Clientes();
    m_Cliente.MostraItens(clientes.size(), [&](std::size_t i) -> const std::string & { return clientes[i].Nome; });
    m_Cliente.MostraEscolhido(m_Escolha.Cliente());
    const std::vector<std::string> setores = m_Escolha.Setores();
    m_Setor.MostraItens(setores.size(), [&](std::size_t i) -> const std::string & { return setores[i]; });
    m_Setor.MostraEscolhido(m_Escolha.Setor());
    Reparte();
}

void RenderClienteSetor::Coloca(const PecaArrumada &lugar)
{
    m_Lugar = lugar.Lugar;
    m_Rotulos = lugar.LarguraDosRotulos;
    Reparte();
}

// Each combo as wide as its items ask for; where there is less room, both give way by their parts.
void RenderClienteSetor::Reparte()
{
    if (m_Lugar.Largura == 0) { // nobody has told it yet
        return;
    }
    const int entre = Escrita().Medida(AFolga.EntrePecas);
    const int rotuloCliente = std::max(m_Rotulos, LarguraDoTexto(Partes::Cliente));
    const int rotuloSetor = LarguraDoTexto(Partes::Setor);
    const int campos = std::max(m_Lugar.Largura - rotuloCliente - rotuloSetor - 3 * entre, 2);
    const int extra = Escrita().Medida(AFolga.Campo + AFolga.Seta);
    const int menor = LarguraDoTexto(std::string(LetrasDoCombo, 'n')) + extra;
    int cliente = menor;
    for (const ClienteOferecido &oferecido : m_Escolha.Clientes()) {
        cliente = std::max(cliente, LarguraDoTexto(oferecido.Nome) + extra);
    }
    int setor = menor;
    for (const std::string &oferecido : m_Escolha.Setores()) {
        setor = std::max(setor, LarguraDoTexto(oferecido) + extra);
    }
    if (cliente + setor > campos) {
        cliente = campos * cliente / (cliente + setor);
        setor = campos - cliente;
    }
    int x = m_Lugar.X;
    const auto poe = [&](int largura) {
        const Retangulo lugar = {x, m_Lugar.Y, largura, m_Lugar.Altura};
        x += largura + entre;
        return lugar;
    };
    PoeEm(m_RotuloCliente, poe(rotuloCliente));
    m_Cliente.Posiciona(poe(cliente));
    PoeEm(m_RotuloSetor, poe(rotuloSetor));
    m_Setor.Posiciona(poe(setor));
}

int RenderClienteSetor::LarguraDoTexto(std::string_view texto) const
{
    return Escrita().Medida(Escrita().Mede(std::string(texto), 0).Largura);
}

void RenderClienteSetor::Comando(HWND janela, UINT aviso)
{
    if (!Mostrando()) {
        (janela == m_Setor.Janela() ? m_Setor : m_Cliente).Avisou(aviso);
    }
}

std::optional<LRESULT> RenderClienteSetor::Mensagem(HWND janela, UINT mensagem, WPARAM w, LPARAM)
{
    if (janela == m_Cliente.Janela() || janela == m_Setor.Janela()) {
        return (janela == m_Setor.Janela() ? m_Setor : m_Cliente).Mensagem(mensagem, w);
    }
    return std::nullopt;
}

bool RenderClienteSetor::FicaComTecla(HWND janela, WPARAM tecla) const
{
    return (janela == m_Setor.Janela() ? m_Setor : m_Cliente).FicaComTecla(tecla);
}

} // namespace nativo
