#include "tela/Pessoa.h"

#include "controls/Acionavel.h"
#include "controls/CheckBox.h"
#include "controls/Digitavel.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztEndereco.h"
#include "controls/ztList.h"
#include "host/Texto.h"
#include "tela/ComandosDeLista.h"
#include "tela/Mnemonicas.h"
#include "tela/OrdemDeTab.h"
#include "tela/PaginasDeAbas.h"
#include "tela/Partes.h"

#include <algorithm>
#include <array>

namespace {

constexpr const char *NaoAceita = "não aceita isso agora";
constexpr const char *NaoDigita = "não aceita o que se digita";
constexpr const char *NaoOferece = "não oferece isso";

constexpr std::array Botoes = {Parte::Usar, Parte::Limpar, Parte::Localizar, Parte::MaisRegistros};

std::string Utf8(char32_t codigo)
{
    std::string texto;
    if (codigo < 0x80) {
        texto += static_cast<char>(codigo);
    } else if (codigo < 0x800) {
        texto += static_cast<char>(0xC0 | (codigo >> 6));
        texto += static_cast<char>(0x80 | (codigo & 0x3F));
    }
    return texto;
}

bool TemFoco(const Ref<IControle> &controle)
{
    const ControleBase *base = ComoBase(controle);
    return base != nullptr && base->TemFoco();
}

bool RecebeFoco(const Ref<IControle> &controle)
{
    ControleBase *base = ComoBase(controle);
    return base != nullptr && base->Foco();
}

} // namespace

Pessoa::Pessoa(const Ref<IForm> &form, const Ref<IPlataforma> &plataforma) : m_Form(form)
{
    if (plataforma) {
        m_Fecha = [plataforma, fraco = m_Form] { plataforma->Descarrega(fraco.Alvo()); };
    }
}

Pessoa::Pessoa(const Ref<IForm> &form, const PedidosDaJanela &pedidos)
    : m_Form(form),
      m_Fecha(pedidos.Fecha),
      m_Ajuda(pedidos.Ajuda)
{
}

void Pessoa::Ocupa(const Ref<IControle> &controle, Parte parte)
{
    Ref<IForm> form = m_Form.Alvo();
    m_Parado = controle;
    m_AtivoEntao = form ? form->ControleAtivo() : nullptr;
    m_Parte = parte;
}

void Pessoa::Conhece(const Ref<IControle> &controle, EscolhaDeEndereco &escolha)
{
    m_Escolhas[controle.Ponteiro()] = &escolha;
}

bool Pessoa::Recusa(const std::string &motivo)
{
    m_Motivo = motivo;
    return false;
}

Ref<IControle> Pessoa::Acha(const std::string &nome, std::int16_t indice) const
{
    if (Ref<IForm> form = m_Form.Alvo()) {
        for (const Ref<IControle> &controle : form->Controles()) {
            if (controle->Indice() == indice && IgualSemCaixa(controle->Nome(), nome)) {
                return controle;
            }
        }
    }
    return {};
}

template <class C, class Acao>
bool Pessoa::Com(const std::string &nome, std::int16_t indice, const char *recusado, Acao &&acao)
{
    m_Motivo.clear();
    m_Parado = nullptr;
    const std::string quem = indice < 0 ? nome : nome + "(" + std::to_string(indice) + ")";
    Ref<IControle> controle = Acha(nome, indice);
    if (!controle) {
        return Recusa(quem + ": não existe");
    }
    auto *face = dynamic_cast<C *>(controle.Ponteiro());
    const ControleBase *base = ComoBase(controle);
    if (!face || !base) {
        return Recusa(quem + ": não é controle para isso");
    }
    const std::string impedimento = base->Impedimento();
    if (acao(*face)) {
        return true;
    }
    return Recusa(quem + ": " + (impedimento.empty() ? recusado : impedimento));
}

bool Pessoa::Foco(const std::string &nome, std::int16_t indice)
{
    return Com<ControleBase>(nome, indice, "não recebe o foco", [](ControleBase &base) { return base.Foco(); });
}

bool Pessoa::Clica(const std::string &nome, std::int16_t indice)
{
    return Com<Clicavel>(nome, indice, NaoAceita, [](Clicavel &clicavel) { return clicavel.Clica(); });
}

bool Pessoa::Marca(const std::string &nome, std::int16_t indice)
{
    Ref<CheckBox> caixa = Acha<CheckBox>(nome, indice);
    return caixa && caixa->Value() != 0 ? Foco(nome, indice) : Clica(nome, indice);
}

bool Pessoa::Desmarca(const std::string &nome, std::int16_t indice)
{
    return Com<CheckBox>(nome, indice, NaoAceita,
                         [](CheckBox &caixa) { return caixa.Value() == 0 ? caixa.Foco() : caixa.Clica(); });
}

bool Pessoa::Digita(const std::string &nome, const std::string &texto, std::int16_t indice)
{
    return Com<Digitavel>(nome, indice, NaoDigita, [&](Digitavel &campo) { return campo.Digita(texto); });
}

bool Pessoa::Apaga(const std::string &nome, std::int16_t indice)
{
    return Com<Digitavel>(nome, indice, NaoDigita, [](Digitavel &campo) { return campo.Apaga(); });
}

bool Pessoa::Preenche(const std::string &nome, const std::string &texto, std::int16_t indice)
{
    return Com<Digitavel>(nome, indice, NaoDigita, [&](Digitavel &campo) { return campo.Preenche(texto); });
}

bool Pessoa::Escolhe(const std::string &nome, const std::string &texto, std::int16_t indice)
{
    return Com<ztCombo>(nome, indice, NaoOferece, [&](ztCombo &combo) { return combo.EscolheTexto(texto); });
}

bool Pessoa::EscolheIndice(const std::string &nome, std::int32_t posicao, std::int16_t indice)
{
    return Com<ztCombo>(nome, indice, NaoOferece, [&](ztCombo &combo) { return combo.Escolhe(posicao); });
}

bool Pessoa::Abre(const std::string &nome, std::int16_t pagina)
{
    return Com<SSTab>(nome, -1, NaoOferece, [&](SSTab &abas) { return abas.Abre(pagina); });
}

bool Pessoa::ClicaLinha(const std::string &nome, std::int32_t linha)
{
    return Com<ztList>(nome, -1, NaoOferece, [&](ztList &lista) { return lista.ClicaLinha(linha); });
}

bool Pessoa::TeclaSetas(const std::string &nome, std::int32_t passos)
{
    return Com<ztList>(nome, -1, NaoAceita, [&](ztList &lista) { return lista.TeclaSetas(passos); });
}

bool Pessoa::EscolheMenu(const std::string &nome, const std::string &chave)
{
    return Com<ztList>(nome, -1, NaoOferece, [&](ztList &lista) { return lista.EscolheMenu(chave); });
}

bool Pessoa::PedeMais(const std::string &nome)
{
    return Com<ztList>(nome, -1, NaoOferece, [](ztList &lista) { return lista.PedeMais(); });
}

bool Pessoa::Localiza(const std::string &nome)
{
    return Com<ztList>(nome, -1, NaoAceita, [](ztList &lista) { return lista.Localiza(); });
}

bool Pessoa::OrdenaPor(const std::string &nome, std::int32_t coluna)
{
    return Com<ztList>(nome, -1, NaoOferece, [&](ztList &lista) { return lista.OrdenaPor(coluna); });
}

bool Pessoa::InformaEndereco(const std::string &nome, std::int32_t codLogradouro, std::int32_t numero,
                             const std::string &complemento, const std::string &cep, const std::string &descricao)
{
    return Com<ztEndereco>(nome, -1, NaoAceita, [&](ztEndereco &endereco) {
        return endereco.InformaEndereco(codLogradouro, numero, complemento, cep, descricao);
    });
}

bool Pessoa::LimpaEndereco(const std::string &nome)
{
    return Com<ztEndereco>(nome, -1, NaoAceita, [](ztEndereco &endereco) { return endereco.LimpaEndereco(); });
}

bool Pessoa::EscolheCliente(const std::string &nome, const std::string &cliente, const std::string &setor)
{
    return Com<ztClienteSetor>(nome, -1, NaoAceita,
                               [&](ztClienteSetor &picker) { return picker.Escolhe(cliente, setor); });
}

std::vector<Ref<IControle>> Pessoa::EmOrdem() const
{
    std::vector<Ref<IControle>> ordem;
    if (Ref<IForm> form = m_Form.Alvo()) {
        ordem = EmOrdemDeTab(*form);
    }
    // The control behind the one that has the focus comes first, that one itself last.
    const auto ativo = std::ranges::find_if(ordem, TemFoco);
    if (ativo != ordem.end()) {
        std::ranges::rotate(ordem, ativo + 1);
    }
    return ordem;
}

std::vector<Pessoa::Parada> Pessoa::Paradas() const
{
    std::vector<Parada> paradas;
    if (Ref<IForm> form = m_Form.Alvo()) {
        for (const Ref<IControle> &controle : EmOrdemDeTab(*form)) {
            for (const Parte parte : PartesDe(controle->Especie())) {
                if (parte != Parte::Filtro) { // a screen's own
                    paradas.push_back({controle, parte});
                }
            }
        }
    }
    return paradas;
}

Pessoa::Parada Pessoa::ParadaAtual() const
{
    Ref<IForm> form = m_Form.Alvo();
    Ref<IControle> ativo = form ? form->ControleAtivo() : nullptr;
    if (Ref<IControle> parado = m_Parado.Alvo(); parado && m_AtivoEntao.Alvo() == ativo) {
        return {parado, m_Parte};
    }
    return {ativo, ativo ? ParteDoFoco(ativo->Especie()) : Parte::Todo};
}

bool Pessoa::VaiPara(const Parada &parada)
{
    const ControleBase *base = ComoBase(parada.Controle);
    if (base == nullptr) {
        return false;
    }
    if (const auto *endereco = dynamic_cast<const ztEndereco *>(parada.Controle.Ponteiro());
        parada.Qual == Parte::Municipio && !endereco->MunicipioEditavel()) {
        return false;
    }
    const bool botao = std::ranges::find(Botoes, parada.Qual) != Botoes.end();
    if (botao && (!base->Impedimento().empty() || !PodeApertar(parada))) {
        return false;
    }
    Ref<IForm> form = m_Form.Alvo();
    // A list has the focus in its rows alone: at its buttons, the control that was left.
    const bool daLista = parada.Qual == Parte::Localizar || parada.Qual == Parte::MaisRegistros;
    if (daLista) {
        if (ControleBase *deixado = ComoBase(form->ControleAtivo()); deixado != nullptr) {
            deixado->Conclui();
        }
    } else if (!RecebeFoco(parada.Controle)) {
        return false;
    }
    Ocupa(parada.Controle, parada.Qual);
    return true;
}

bool Pessoa::Anda(int passo)
{
    m_Motivo.clear();
    std::vector<Parada> paradas = Paradas();
    if (passo < 0) {
        std::ranges::reverse(paradas);
    }
    const Parada atual = ParadaAtual();
    const auto aqui = std::ranges::find_if(
        paradas, [&](const Parada &parada) { return parada.Controle == atual.Controle && parada.Qual == atual.Qual; });
    if (aqui != paradas.end()) {
        std::ranges::rotate(paradas, aqui + 1);
    }
    return std::ranges::any_of(paradas, [this](const Parada &parada) { return VaiPara(parada); }) ||
           Recusa("nenhum controle pode receber o foco");
}

EscolhaDeEndereco *Pessoa::EscolhaDe(const Ref<IControle> &controle) const
{
    const auto achada = m_Escolhas.find(controle.Ponteiro());
    return achada == m_Escolhas.end() ? nullptr : achada->second;
}

bool Pessoa::PodeApertar(const Parada &botao) const
{
    switch (botao.Qual) {
    case Parte::Usar: {
        const EscolhaDeEndereco *escolha = EscolhaDe(botao.Controle);
        return escolha != nullptr && escolha->PodeUsar();
    }
    case Parte::Limpar:
        return !ComoTipo<ztEndereco>(botao.Controle)->ReadOnly();
    case Parte::Localizar:
        return ComoTipo<ztList>(botao.Controle)->Ajustes().BarraCriteriosAtiva;
    case Parte::MaisRegistros:
        return ComoTipo<ztList>(botao.Controle)->TemMais();
    default:
        return false;
    }
}

bool Pessoa::Aperta(const Parada &botao)
{
    EscolhaDeEndereco *escolha = EscolhaDe(botao.Controle);
    switch (botao.Qual) {
    case Parte::Usar:
        return escolha->Usa();
    case Parte::Limpar:
        return escolha != nullptr ? escolha->Limpa() : ComoTipo<ztEndereco>(botao.Controle)->LimpaEndereco();
    case Parte::Localizar:
        return ComoTipo<ztList>(botao.Controle)->Localiza();
    default:
        return ComoTipo<ztList>(botao.Controle)->PedeMais();
    }
}

bool Pessoa::Tab()
{
    return Anda(1);
}

bool Pessoa::ShiftTab()
{
    return Anda(-1);
}

bool Pessoa::Enter()
{
    m_Motivo.clear();
    Ref<IForm> form = m_Form.Alvo();
    if (!form) {
        return Recusa("a janela não está aberta");
    }
    if (const Parada parada = ParadaAtual(); PodeApertar(parada)) {
        return Aperta(parada) || Recusa(parada.Controle->Nome() + ": " + NaoAceita);
    }
    Ref<IControle> ativo = form->ControleAtivo();
    if (ControleBase *base = ComoBase(ativo); base != nullptr) {
        base->Conclui();
    }
    if (auto *botao = dynamic_cast<Acionavel *>(ativo.Ponteiro()); botao != nullptr && botao->Aciona()) {
        return true;
    }
    for (const Ref<IControle> &controle : EmOrdem()) {
        auto *botao = dynamic_cast<Acionavel *>(controle.Ponteiro());
        if (botao != nullptr && botao->Padrao()) {
            return botao->Aciona() || Recusa(controle->Nome() + ": " + ComoBase(controle)->Impedimento());
        }
    }
    return Recusa("não há botão padrão");
}

bool Pessoa::Esc()
{
    m_Motivo.clear();
    for (const Ref<IControle> &controle : EmOrdem()) {
        auto *botao = dynamic_cast<Acionavel *>(controle.Ponteiro());
        if (botao != nullptr && botao->Cancelador()) {
            return botao->Aciona() || Recusa(controle->Nome() + ": " + ComoBase(controle)->Impedimento());
        }
    }
    return Recusa("não há botão de cancelar");
}

bool Pessoa::Alt(char32_t tecla)
{
    m_Motivo.clear();
    for (const Resposta &resposta : Respostas(tecla)) {
        if (resposta()) {
            return true;
        }
    }
    return Recusa("nenhum controle responde a essa tecla");
}

bool Pessoa::RespondeAlt(char32_t tecla)
{
    return !Respostas(tecla).empty();
}

std::vector<Pessoa::Resposta> Pessoa::Respostas(char32_t tecla)
{
    std::vector<Resposta> respostas;
    if (const std::string letra = LCase(Utf8(tecla)); !letra.empty()) {
        for (const Ref<IControle> &controle : EmOrdem()) {
            const ControleBase *base = ComoBase(controle);
            if (base != nullptr && base->Impedimento().empty()) {
                JuntaRespostas(controle, letra, respostas);
            }
        }
    }
    return respostas;
}

void Pessoa::JuntaRespostas(const Ref<IControle> &controle, const std::string &letra, std::vector<Resposta> &respostas)
{
    for (const auto &[parte, caption] : CaptionsDasPartes(controle->Especie())) {
        if (const Parada botao = {controle, parte}; Mnemonica(caption) == letra && PodeApertar(botao)) {
            respostas.push_back([this, botao] { return Aperta(botao); });
        }
    }
    if (auto *abas = dynamic_cast<SSTab *>(controle.Ponteiro())) {
        for (std::int16_t pagina = 0; pagina < abas->Tabs(); ++pagina) {
            if (Mnemonica(abas->TabCaption(pagina)) == letra && PodeAbrir(*abas, pagina)) {
                respostas.push_back([controle, abas, pagina] { return abas->Abre(pagina); });
            }
        }
    } else if (auto *lista = dynamic_cast<ztList *>(controle.Ponteiro())) {
        const BarraDeLista barra = BarraDaLista(*lista);
        if (barra.Visivel && barra.ComBotoesProprios) {
            if (m_Fecha && Mnemonica(barra.Fechar) == letra) {
                respostas.push_back([this] { return Fecha(); });
            }
            if (m_Ajuda && Mnemonica(barra.Ajuda) == letra) {
                respostas.push_back([this] { return Ajuda(); });
            }
        }
        for (const ComandoDeLista &comando : barra.Comandos) {
            if (comando.Letra == letra && comando.Utilizavel) {
                respostas.push_back([controle, lista, chave = comando.Chave] { return lista->EscolheMenu(chave); });
            }
        }
    } else if (Mnemonica(controle->Rotulo()) == letra) {
        respostas.push_back([controle] { return ComoBase(controle)->Foco(); });
    } else if (Mnemonica(controle->Caption()) == letra) {
        if (auto *clicavel = dynamic_cast<Clicavel *>(controle.Ponteiro())) {
            respostas.push_back([controle, clicavel] { return clicavel->Clica(); });
        } else {
            respostas.push_back([this, controle] { return FocoDepoisDe(controle); });
        }
    }
}

bool Pessoa::AndaPaginas(int passo)
{
    m_Motivo.clear();
    for (const Ref<IControle> &controle : EmOrdem()) {
        if (auto *abas = dynamic_cast<SSTab *>(controle.Ponteiro())) {
            if (const auto pagina = PaginaVizinha(*abas, passo); pagina && abas->Abre(*pagina)) {
                return true;
            }
        }
    }
    return Recusa("não há outra página que se possa abrir");
}

bool Pessoa::AndaOpcoes(int passo)
{
    m_Motivo.clear();
    std::vector<Ref<IControle>> opcoes = EmOrdem(); // the one that has the focus is the last
    const Ref<IControle> atual = opcoes.empty() ? nullptr : opcoes.back();
    if (!TemFoco(atual) || dynamic_cast<OptionButton *>(atual.Ponteiro()) == nullptr) {
        return Recusa("o foco não está em uma opção");
    }
    opcoes.pop_back();
    if (passo < 0) {
        std::ranges::reverse(opcoes);
    }
    for (const Ref<IControle> &controle : opcoes) {
        auto *opcao = dynamic_cast<OptionButton *>(controle.Ponteiro());
        if (opcao != nullptr && opcao->Container() == atual->Container() && opcao->Clica()) {
            return true;
        }
    }
    return Recusa("não há outra opção que se possa escolher");
}

bool Pessoa::FocoDepoisDe(const Ref<IControle> &controle)
{
    std::vector<Ref<IControle>> ordem = EmOrdem();
    std::ranges::rotate(ordem, std::ranges::find(ordem, controle));
    return std::ranges::any_of(ordem, RecebeFoco);
}

bool Pessoa::Fecha()
{
    m_Motivo.clear();
    Ref<IForm> form = m_Form.Alvo();
    if (!form || !form->Visible()) {
        return Recusa("a janela não está aberta");
    }
    if (!form->Enabled()) {
        return Recusa("a janela está bloqueada");
    }
    if (!m_Fecha) {
        return Recusa("não há quem feche a janela");
    }
    m_Fecha();
    return !form->Visible() || Recusa("a janela não aceitou fechar");
}

bool Pessoa::Ajuda()
{
    m_Motivo.clear();
    if (!m_Ajuda) {
        return Recusa("não há quem mostre a ajuda");
    }
    m_Ajuda();
    return true;
}
