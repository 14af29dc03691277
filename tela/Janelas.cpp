#include "tela/Janelas.h"

#include "host/Texto.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::string_view TituloDaPergunta = "Atenção";

} // namespace

void Janelas::NaBorda(const std::function<void()> &acao) const
{
    try {
        acao();
    } catch (...) {
        MostraFalha();
    }
}

Janelas::Aberta *Janelas::Acha(const Ref<IForm> &form)
{
    const auto achada = std::ranges::find(m_Abertas, form, &Aberta::Form);
    return achada == m_Abertas.end() ? nullptr : &*achada;
}

std::function<void()> Janelas::Pedido(const Ref<IForm> &form, std::function<void(const Ref<IForm> &)> acao)
{
    return [fracas = RefFraca<Janelas>(Eu(*this)), fraco = RefFraca<IForm>(form), acao = std::move(acao)] {
        const Ref<Janelas> janelas = fracas.Alvo();
        const Ref<IForm> vivo = fraco.Alvo();
        if (janelas && vivo && janelas->Acha(vivo) != nullptr) {
            janelas->NaBorda([&] { acao(vivo); });
        }
    };
}

PedidosDaJanela Janelas::Pedidos(const Ref<IForm> &form)
{
    using Quem = const Ref<IForm> &;
    PedidosDaJanela pedidos;
    // What a layer makes of a window may outlive the window, and these too.
    pedidos.NaBorda = [fracas = RefFraca<Janelas>(Eu(*this))](const std::function<void()> &acao) {
        if (const Ref<Janelas> janelas = fracas.Alvo()) {
            janelas->NaBorda(acao);
        }
    };
    pedidos.Fecha = Pedido(form, [this](Quem aberto) {
        if (aberto->Enabled()) {
            Descarrega(aberto);
        }
    });
    pedidos.Ajuda = Pedido(form, [this](Quem aberto) { MostraAjuda(std::string(aberto->NomeTipo())); });
    pedidos.Redimensionou = Pedido(form, [](Quem aberto) { aberto->Redimensionada(); });
    pedidos.Ativou = Pedido(form, [](Quem aberto) { aberto->Ativada(); });
    pedidos.Desativou = Pedido(form, [](Quem aberto) { aberto->Desativada(); });
    pedidos.Pergunta = [fracas = RefFraca<Janelas>(Eu(*this))](const std::string &texto) {
        const Ref<Janelas> janelas = fracas.Alvo();
        return janelas && janelas->PerguntaSimNao(texto, std::string(TituloDaPergunta), false);
    };
    return pedidos;
}

void Janelas::SegueOrdem(IForm &quem, Aberta &aberta)
{
    const auto paraFrente = [janela = aberta.Janela] { janela->ParaFrente(); };
    aberta.Conexoes.push_back(quem.PediuFoco().liga(paraFrente));
    aberta.Conexoes.push_back(quem.PediuOrdem().liga([paraFrente](std::int16_t posicao) {
        if (posicao == 0) { // to the back is no wish of the module's
            paraFrente();
        }
    }));
}

// What is not modal goes in front of a modal window: as a child of the main window it would be blocked with it.
TipoDeJanela Janelas::TipoDaNova(bool modal) const
{
    return modal ? TipoDeJanela::Modal : Frente() ? TipoDeJanela::Solta : TipoDeJanela::Filha;
}

void Janelas::Distingue(const DistincaoDeJanela &qual, const std::function<void()> &abre)
{
    const DistincaoDeJanela antes = std::exchange(m_Qual, qual);
    NaBorda(abre);
    m_Qual = antes;
}

void Janelas::DaDistincao(Aberta &nova) const
{
    if (nova.Tipo != TipoDeJanela::Filha || m_Qual.Chave.empty()) {
        return;
    }
    nova.Qual = m_Qual;
    const auto tomado = [&](const Aberta &outra) {
        return outra.Qual.Chave == nova.Qual.Chave && outra.Numero == nova.Numero;
    };
    do {
        ++nova.Numero;
    } while (std::ranges::any_of(m_Abertas, tomado));
    if (nova.Numero > 1) {
        nova.Qual.Texto += " (" + std::to_string(nova.Numero) + ")";
    }
}

Janelas::Aberta &Janelas::Abre(const Ref<IForm> &form, bool modal)
{
    Aberta nova;
    nova.Form = form;
    nova.Dono = Frente();
    nova.Tipo = TipoDaNova(modal);
    DaDistincao(nova);
    nova.Janela = m_Camada->FazJanela(form, nova.Tipo, nova.Dono, Pedidos(form), nova.Qual);
    SegueOrdem(*form, nova);
    return m_Abertas.emplace_back(std::move(nova));
}

void Janelas::Prepara(const Ref<IForm> &form)
{
    if (Acha(form) == nullptr) {
        Abre(form, false);
    }
}

void Janelas::MostraForm(const Ref<IForm> &form, bool modal)
{
    Aberta *achada = Acha(form);
    Aberta &aberta = achada != nullptr ? *achada : Abre(form, modal);
    const Ref<IJanela> janela = aberta.Janela;
    // One that is hidden is waited for like a new one.
    if (std::exchange(aberta.Mostrada, true) && (form->Visible() || !modal)) {
        form->DefineVisible(true);
        janela->ParaFrente();
        return;
    }
    if (achada != nullptr) {
        aberta.Tipo = TipoDaNova(modal);
        aberta.Dono = Frente();
        janela->Destina(aberta.Tipo, aberta.Dono);
    }
    if (FazInvolucro && aberta.Tipo == TipoDeJanela::Filha) {
        aberta.Involucro = FazInvolucro();
        SegueOrdem(*aberta.Involucro, aberta);
    }
    if (const Ref<IForm> involucro = aberta.Involucro) {
        IgnoraErro([&] { form->DefinefrmParent(involucro); }); // a form need not have the member
    }
    form->DefineVisible(true);
    if (!modal) {
        janela->Mostra();
        return;
    }
    const Ref<Janelas> viva = Eu(*this);
    MostraEEspera(janela);
    if (Aberta *escondida = Acha(form); escondida != nullptr && escondida->Janela == janela) {
        escondida->Mostrada = false; // its next show starts afresh
    }
}

void Janelas::MostraEEspera(const Ref<IJanela> &janela)
{
    const Ref<Janelas> viva = Eu(*this);
    m_Modais.push_back(janela);
    janela->MostraEEspera();
    TiraDaFrente(janela);
}

void Janelas::FechaForm(const Ref<IForm> &form)
{
    Aberta *aberta = Acha(form);
    if (aberta == nullptr) {
        return;
    }
    const Aberta fechada = std::move(*aberta);
    m_Abertas.erase(m_Abertas.begin() + (aberta - m_Abertas.data()));

    TiraDaFrente(fechada.Janela);
    fechada.Janela->Retira();
}

void Janelas::TiraDaFrente(const Ref<IJanela> &janela)
{
    if (std::erase(m_Modais, janela) == 0) {
        return; // nothing stands in front of what is not modal, or it was taken away already
    }
    std::vector<Ref<IForm>> soltas;
    for (const Aberta &outra : m_Abertas) {
        if (outra.Tipo == TipoDeJanela::Solta && outra.Dono == janela) {
            soltas.push_back(outra.Form);
        }
    }
    for (const Ref<IForm> &solta : soltas) {
        NaBorda([&] { Descarrega(solta); }); // whatever becomes of it, the window behind it goes
    }
}

void Janelas::TiraTodas()
{
    for (const Aberta &aberta : std::exchange(m_Abertas, {})) {
        aberta.Janela->Retira();
    }
}

void Janelas::DefineTextoJanela(const Ref<IForm> &form, const std::string &texto)
{
    if (const Aberta *aberta = Acha(form)) {
        aberta->Janela->DefineTexto(texto);
    }
}

void Janelas::DefineEspera(bool espera)
{
    if (std::exchange(m_Esperando, espera) != espera) {
        m_Camada->MostraEspera(espera);
    }
}

bool Janelas::PerguntaSimNao(const std::string &texto, const std::string &titulo, bool padraoSim)
{
    return m_Camada->PerguntaSimNao(texto, titulo, padraoSim, Frente());
}

void Janelas::Informa(const std::string &texto, const std::string &titulo)
{
    m_Camada->MostraCaixa(TipoDeCaixa::Informacao, texto, titulo, {}, Frente());
}

void Janelas::Avisa(const std::string &texto, const std::string &titulo)
{
    m_Camada->MostraCaixa(TipoDeCaixa::Aviso, texto, titulo, {}, Frente());
}

void Janelas::MostraErro(const std::string &contexto, std::int32_t numero, const std::string &descricao,
                         const std::string &fonte, const std::string &titulo)
{
    DefineEspera(false);
    m_Camada->MostraCaixa(TipoDeCaixa::Erro, descricao, titulo,
                          "Erro " + std::to_string(numero) + " em " + contexto + "\nCaminho: " + fonte, Frente());
}

std::optional<std::string> Janelas::EscolheArquivo(const std::string &filtro, const std::string &titulo)
{
    const std::vector<std::string> partes = Divide(filtro, "|");
    std::vector<FiltroDeArquivo> filtros;
    for (std::size_t par = 0; par + 1 < partes.size(); par += 2) {
        filtros.push_back({partes[par], partes[par + 1]});
    }
    return m_Camada->EscolheArquivo(filtros, titulo, Frente());
}

bool Janelas::MostraPDF(const std::string &caminho, bool modal)
{
    DefineEspera(false);
    const auto fechou = [this] {
        if (FechouVisor) {
            NaBorda(FechouVisor);
        }
    };
    const Ref<IJanela> visor = m_Camada->FazVisor(caminho, Frente(), fechou);
    if (!visor) {
        Avisa("O arquivo '" + caminho + "' não é um documento PDF que possa ser aberto.", "Registro de Equipamentos");
        return false;
    }
    if (modal) {
        MostraEEspera(visor);
    } else {
        visor->Mostra();
    }
    return true;
}

void Janelas::MostraAjuda(const std::string &topico)
{
    m_Camada->MostraAjuda(topico, Frente());
}
