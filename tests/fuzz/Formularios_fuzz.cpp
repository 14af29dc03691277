#include "tests/fuzz/Alvo.h"

#include "controls/CheckBox.h"
#include "controls/Digitavel.h"
#include "controls/OptionButton.h"
#include "controls/SSTab.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztCombo.h"
#include "controls/ztEndereco.h"
#include "controls/ztList.h"
#include "host/IztData.h"
#include "host/IztMask.h"
#include "search/CVorEquip.h"
#include "shell/Especifica.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/fuzz/SessaoFuzz.h"
#include "tests/support/RegistroEmMemoria.h"
#include "tests/support/RetratoForm.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A person who does anything in all windows of the module: any control, any action, any answer, while the service
// refuses and calls of the host fail now and then. Every action comes to an end, with the hourglass away and each
// failure told once; who may not use a control changes nothing; at the end nothing is left.

namespace {

constexpr int MaximoAcoes = 150;
constexpr int MaximoFundo = 6; // of windows above one another

const std::vector<std::string> Palavras{"",       "0",          "1",       "2",     "60",         "80",   "999",
                                        "R100",   "A1",         "Rua A",   "12/26", "01/01/2026", "é'",   "05/03/2026",
                                        "0730",   "1900",       "2359",    "2460",  "31/12/2026", "/",    "a?|b",
                                        "999999", "29/02/2025", "Agudo|1", "32767", "99999999",   "00:00"};

std::string Palavra(Octetos &octetos)
{
    const int qual = octetos.Ate(static_cast<int>(Palavras.size()));
    return qual < static_cast<int>(Palavras.size()) ? Palavras[static_cast<std::size_t>(qual)] : octetos.Texto(12);
}

// All that a control shows and holds.
std::string Conteudo(const Ref<IControle> &controle)
{
    std::string texto = RetratoControle(controle);
    const IControle *visto = controle.Ponteiro();
    if (const auto *campo = dynamic_cast<const IztMask *>(visto)) {
        texto += "=" + campo->Text();
    } else if (const auto *data = dynamic_cast<const IztData *>(visto)) {
        texto += "=" + data->Text();
    } else if (const auto *caixa = dynamic_cast<const ITextBox *>(visto)) {
        texto += "=" + caixa->Text();
    } else if (const auto *combo = dynamic_cast<const IztCombo *>(visto)) {
        texto += "=" + std::to_string(combo->IndiceAtual());
    } else if (const auto *abas = dynamic_cast<const ISSTab *>(visto)) {
        texto += "=" + std::to_string(abas->Tab());
    } else if (const auto *lista = dynamic_cast<const ztList *>(visto)) {
        texto += "=" + std::to_string(lista->ItemAtual()) + " de " + std::to_string(lista->NroItens());
    } else if (const auto *cliente = dynamic_cast<const ztClienteSetor *>(visto)) {
        texto += "=" + cliente->Cliente() + "/" + cliente->Setor();
    } else if (const auto *observacao = dynamic_cast<const IztVeiObservacao *>(visto)) {
        texto += "=" + observacao->Text();
    }
    return texto;
}

std::string Conteudo(const Ref<IForm> &form)
{
    std::string texto;
    for (const Ref<IControle> &controle : form->Controles()) {
        texto += Conteudo(controle) + "\n";
    }
    return texto;
}

class Passeio {
  public:
    explicit Passeio(Octetos &octetos) : m_Octetos(octetos), m_Cadastro(*m_Sessao.host)
    {
        HostRoteirizado &host = Host();
        host.Dominio->Documentos[9] = Bytes{0x25, 0x50, 0x44, 0x46};
        host.Tela->Arquivos.Poe("C:\\CERT.PDF", Bytes{0x25, 0x50, 0x44, 0x46});
        host.Tela->Arquivos.Poe(host.Dominio->DirLayouts + "PADRAO.LAY", {});
        host.EscolheArquivoSempre("C:\\CERT.PDF");
        host.Dominio->AceitaEnvio = octetos.Ate(3) > 0;
        host.Dominio->AceitaRecebimento = octetos.Ate(3) > 0;
        host.Tela->EmbrulhaForms = octetos.Sim();
        m_Cadastro.TamanhoPagina = 1 + octetos.Ate(2);
        host.Tela->RespondeQualquer([this] { return m_Octetos.Acabou() || m_Octetos.Ate(3) > 0; });
        for (const char *classe : {"frmLista", "frmEquipDetalhes", "frmEquipSensores", "frmEquipAfericoes",
                                   "frmLimitesDif", "frmLimitesDifDetalhes"}) {
            host.Tela->AoMostrarModalSempre(classe, [this](const Ref<IForm> &form) { NoModal(form); });
        }
        // What is asked to be done with an equipment of a list that is neither of active nor of inactive ones.
        host.Servico("EquiptoRN", "", [](const Ref<Registro> &) { return Resposta::Recusa("Operação desconhecida."); });
        m_Cadastro.Poe(Radar());
        for (int quantos = octetos.Ate(2); quantos > 0; --quantos) {
            m_Cadastro.Poe(Equipamento());
        }
        for (int quantos = octetos.Ate(2); quantos > 0; --quantos) {
            PoeLimites();
        }
    }

    void Percorre()
    {
        Confere([&] { Host().Tela->RodaMensagens(); });
        Confere([&] { m_Sessao.Shell()->ClickMenu("mnuModVOREquiptos"); });
        Confere([&] {
            Pessoa pessoa(Host().Tela->FormAberto(0));
            pessoa.Localiza("ztlLista");
            if (m_Octetos.Sim()) { // most of the windows are behind this one
                pessoa.ClicaLinha("ztlLista", 1);
                pessoa.EscolheMenu("ztlLista", "mnuZTLObjEditar");
            }
        });
        while (Continua()) {
            ++m_Acoes;
            Confere([&] { NaMesa(); });
        }
        // What was to go wrong later goes wrong no more; error boxes were looked at after each action.
        Host().PerdoaSobras();
        Host().Tela->FechaTudo();
    }

  private:
    HostRoteirizado &Host() { return *m_Sessao.host; }
    bool Continua() const { return m_Acoes < MaximoAcoes && !m_Octetos.Acabou(); }

    template <class T> T Um(std::initializer_list<T> valores)
    {
        return *(valores.begin() + m_Octetos.Ate(static_cast<int>(valores.size()) - 1));
    }

    // An equipment with which every window opens.
    Ref<EquiptoED> Radar()
    {
        auto equipto = Novo<EquiptoED>();
        EquiptoED &ed = *equipto;
        ed.ClienteInc = "Autoridade das Estradas de Rodagem";
        ed.SetorInc = "Norte";
        ed.Codigo = "R100";
        ed.Descricao = "Radar da entrada";
        ed.CodMunic = 120;
        ed.TipoAgente = 1;
        ed.TipoEquip = "R";
        ed.TipoVia = "R";
        ed.VelocPermitida = 60;
        ed.Modelo = "RF-3";
        ed.ArquivoLayout = "PADRAO";
        ed.TemLimiteDif = 1;
        ed.Sensores = Novo<Colecao<Ref<SensorED>>>();
        ed.Sensores.Valor()->Add(Sensor());
        return equipto;
    }

    // A limit, or a prohibited hour, and a day of that equipment.
    void PoeLimites()
    {
        auto limite = Novo<LimiteDifED>();
        limite->NroIntEquip = 1;
        limite->Dia = static_cast<std::uint8_t>(1 + m_Octetos.Ate(7));
        limite->HoraInicio = Um({730, 0, 2359, 9999});
        limite->HoraFim = Um({1900, 2400, 60});
        limite->VelocPerm = 60;
        limite->VelocMin = static_cast<std::int16_t>(m_Octetos.Ate(80));
        limite->Ativo = 1;
        limite->TipoLimite = static_cast<std::uint8_t>(1 + m_Octetos.Ate(1));
        m_Cadastro.PoeLimite(limite);
        auto dia = Novo<DiaEspecificoED>();
        dia->NroIntEquip = 1;
        dia->Data = DataDe(1, 1, 2026).MaisDias(m_Octetos.Octeto());
        dia->HoraInicio = limite->HoraInicio.Valor();
        dia->HoraFim = limite->HoraFim.Valor();
        dia->VelocPerm = 40;
        dia->Ativo = 1;
        m_Cadastro.PoeDia(dia);
    }

    Ref<EquiptoED> Equipamento()
    {
        auto equipto = Novo<EquiptoED>();
        EquiptoED &ed = *equipto;
        ed.ClienteInc = Um({"Autoridade das Estradas de Rodagem", "PREFEITURA", ""});
        ed.Codigo = Palavra(m_Octetos);
        ed.Descricao = "Radar";
        ed.CodMunic = Um({120, 8801, 0});
        ed.TipoVia = Um({"R", "U", "I", ""});
        ed.TipoEquip = Um({"R", "A", "M", "E", "L", "V", "?"});
        ed.TipoAgente = static_cast<std::uint8_t>(m_Octetos.Ate(3));
        ed.VelocPermitida = 60;
        ed.ArquivoLayout = Um({"NENHUM", "PADRAO", "OUTRO", ""});
        ed.TemLimiteDif = static_cast<std::uint8_t>(m_Octetos.Ate(2));
        ed.TemPerfilMag = static_cast<std::uint8_t>(m_Octetos.Ate(2));
        ed.NroIntRejLimDif = Um({0, 31, 77});
        ed.txtObsNotif = Palavra(m_Octetos);
        if (m_Octetos.Ate(3) > 0) {
            ed.Sensores = Novo<Colecao<Ref<SensorED>>>();
            for (int quantos = m_Octetos.Ate(2); quantos > 0; --quantos) {
                ed.Sensores.Valor()->Add(Sensor());
            }
        }
        return equipto;
    }

    Ref<SensorED> Sensor()
    {
        auto sensor = Novo<SensorED>();
        sensor->NroSensor = static_cast<std::int16_t>(m_Octetos.Ate(3));
        sensor->LocalInfr = Palavra(m_Octetos);
        sensor->CodLograd = m_Octetos.Ate(2);
        sensor->EndNro = m_Octetos.Longo();
        sensor->Ativo = static_cast<std::uint8_t>(m_Octetos.Ate(2));
        sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        for (int quantas = m_Octetos.Ate(3); quantas > 0; --quantas) {
            auto afericao = Novo<AfericaoED>();
            afericao->Numero = Palavra(m_Octetos);
            afericao->Marca = Palavra(m_Octetos);
            afericao->DataVerificacao = DataDe(1, 1, 2026).MaisDias(m_Octetos.Octeto() * 3 - 300);
            afericao->DataVencimento = afericao->DataVerificacao.Valor().MaisDias(m_Octetos.Octeto() - 20);
            afericao->Ativo = static_cast<std::uint8_t>(m_Octetos.Ate(2));
            afericao->NroIntImgCertif = Um({0.0, 9.0, 10.0});
            afericao->TipoAfer = static_cast<std::uint8_t>(m_Octetos.Ate(3));
            afericao->PortDimel = Um({"12/26", "123456/2026", "/", "1/2/3", "é/"});
            sensor->Afericoes.Valor()->Add(afericao);
        }
        return sensor;
    }

    // What the person does in a window that keeps all others waiting, until they close it. Once the input is spent they
    // only close it, and answer yes.
    void NoModal(const Ref<IForm> &form)
    {
        ++m_Fundo;
        while (Continua() && form->Visible() && m_Fundo < MaximoFundo) {
            ++m_Acoes;
            Confere([&] { Age(form); });
        }
        for (int vez = 0; vez < 3 && form->Visible(); ++vez) {
            Confere([&] { Pessoa(form, Host().Tela).Fecha(); });
        }
        --m_Fundo;
    }

    // With no window keeping the others waiting.
    void NaMesa()
    {
        switch (m_Octetos.Ate(15)) {
        case 0:
            m_Sessao.Shell()->ClickMenu(m_Octetos.Sim() ? "mnuModVOREquiptos" : "mnuModNABEquiptos");
            break;
        case 1: {
            const Ref<CVorEquip> consulta = m_Sessao.Shell()->CEspecifica()->CreateCVorEquip();
            std::string codigo = Palavra(m_Octetos);
            std::erase(codigo, '\''); // which breaks the query, as its callers know
            const Data dia = m_Octetos.Sim() ? DataDe(5, 3, 2026) : Data{};
            m_Octetos.Sim() ? consulta->SelecionaEquipamento(codigo, {}, dia)
                            : consulta->BuscaEquipamento(codigo, {}, dia);
            break;
        }
        default:
            if (const std::int32_t janelas = Host().Tela->NroForms(); janelas > 0) {
                const Ref<IForm> form = Host().Tela->FormAberto(m_Octetos.Ate(janelas - 1));
                Host().Tela->Ativa(form);
                Age(form);
            } else {
                m_Sessao.Shell()->ClickMenu("mnuModVOREquiptos");
            }
            break;
        }
        Host().Tela->RodaMensagens();
    }

    void Age(const Ref<IForm> &form)
    {
        Pessoa pessoa(form, Host().Tela);
        const int ato = m_Octetos.Ate(31);
        switch (ato) {
        case 0:
            pessoa.Tab();
            break;
        case 1:
            pessoa.ShiftTab();
            break;
        case 2:
        case 3:
            pessoa.Enter();
            break;
        case 4:
            pessoa.Esc();
            break;
        case 5:
            pessoa.Alt(static_cast<char32_t>(m_Octetos.Octeto()));
            break;
        case 6:
            pessoa.Fecha();
            break;
        case 7:
            Estraga();
            break;
        case 8:
            Host().Tela->RodaMensagens();
            break;
        default: // mostly on lists, pages, and what takes the keyboard; on anything now and then
            NoControle(form, pessoa, Sorteado(form, [&](const Ref<IControle> &controle) {
                           const ControleBase *base = ComoBase(controle);
                           const bool desses = ato < 15   ? controle->Especie() == EspecieControle::ztList
                                               : ato < 17 ? controle->Especie() == EspecieControle::SSTab
                                                          : base->AceitaFoco();
                           return ato == 17 || ato == 18 || (desses && base->Impedimento().empty());
                       }));
            break;
        }
    }

    // One of the controls that fulfil a condition, or Nothing.
    template <class Condicao> Ref<IControle> Sorteado(const Ref<IForm> &form, Condicao &&condicao)
    {
        std::vector<Ref<IControle>> controles = form->Controles();
        std::erase_if(controles, [&](const Ref<IControle> &controle) { return !condicao(controle); });
        return controles.empty() ? nullptr : controles[m_Octetos.Octeto() % controles.size()];
    }

    // Something that does not go as the module expects.
    void Estraga()
    {
        switch (m_Octetos.Ate(3)) {
        case 0:
            Host().Servicos->RecusaNaExecucao(1 + m_Octetos.Ate(3), "O serviço não quer.");
            break;
        case 1:
            // One at a time, so that it is plain which one was told.
            if (Host().FalhasDisparadas() == m_Programadas) {
                ++m_Programadas;
                Host().FalhaNaChamada(1 + m_Octetos.Ate(30));
            }
            break;
        case 2:
            Host().Tela->Relogio = Host().Tela->Relogio.MaisDias(m_Octetos.Octeto());
            break;
        default:
            Host().CancelaDialogo();
            break;
        }
    }

    // An action of the person's on a control. Who may not use it is refused, and nothing on the form changes.
    void NoControle(const Ref<IForm> &form, Pessoa &pessoa, const Ref<IControle> &controle)
    {
        if (controle.Nada()) {
            return;
        }
        const ControleBase *base = ComoBase(controle);
        const bool impedido = !base->Impedimento().empty();
        const std::string antes = impedido ? Conteudo(form) : std::string();
        const bool feito = AgeNoControle(pessoa, controle);
        if (impedido) {
            Exige(!feito, "who may not use a control is refused", controle->Nome());
            Exige(Conteudo(form) == antes, "who may not use a control changes nothing", controle->Nome());
        }
    }

    bool AgeNoControle(Pessoa &pessoa, const Ref<IControle> &controle)
    {
        const std::string nome = controle->Nome();
        const std::int16_t indice = controle->Indice();
        if (auto *lista = dynamic_cast<ztList *>(controle.Ponteiro())) {
            return AgeNaLista(pessoa, *lista, nome);
        }
        if (const auto *combo = dynamic_cast<const ztCombo *>(controle.Ponteiro())) {
            return m_Octetos.Ate(3) == 0
                       ? pessoa.Digita(nome, Palavra(m_Octetos), indice)
                       : pessoa.EscolheIndice(nome, combo->NroItens() == 0 ? 0 : m_Octetos.Octeto() % combo->NroItens(),
                                              indice);
        }
        if (const auto *abas = dynamic_cast<const ISSTab *>(controle.Ponteiro())) {
            return pessoa.Abre(nome, static_cast<std::int16_t>(m_Octetos.Ate(abas->Tabs())));
        }
        if (dynamic_cast<const ztEndereco *>(controle.Ponteiro()) != nullptr) {
            return m_Octetos.Ate(2) == 0
                       ? pessoa.LimpaEndereco(nome)
                       : pessoa.InformaEndereco(nome, m_Octetos.Ate(3), m_Octetos.Longo(), Palavra(m_Octetos),
                                                Palavra(m_Octetos), Palavra(m_Octetos));
        }
        if (dynamic_cast<const ztClienteSetor *>(controle.Ponteiro()) != nullptr) {
            const std::string cliente = Um({"Autoridade das Estradas de Rodagem", "PREFEITURA", ""});
            return pessoa.EscolheCliente(nome, cliente, m_Octetos.Sim() ? "Norte" : "");
        }
        if (dynamic_cast<const Digitavel *>(controle.Ponteiro()) != nullptr) {
            switch (m_Octetos.Ate(3)) {
            case 0:
                return pessoa.Apaga(nome, indice);
            case 1:
                return pessoa.Digita(nome, Palavra(m_Octetos), indice);
            default:
                return pessoa.Preenche(nome, Palavra(m_Octetos), indice);
            }
        }
        if (dynamic_cast<const Clicavel *>(controle.Ponteiro()) != nullptr) {
            return pessoa.Clica(nome, indice);
        }
        return pessoa.Foco(nome, indice);
    }

    bool AgeNaLista(Pessoa &pessoa, ztList &lista, const std::string &nome)
    {
        switch (m_Octetos.Ate(9)) {
        case 0:
            return pessoa.ClicaLinha(nome, m_Octetos.Ate(4));
        case 1:
            return pessoa.TeclaSetas(nome, m_Octetos.Ate(4) - 2);
        case 2:
            return pessoa.Localiza(nome);
        case 3:
            return m_Octetos.Sim() ? pessoa.PedeMais(nome) : pessoa.OrdenaPor(nome, m_Octetos.Ate(10));
        case 4: { // any item of the menu, whether it is offered or not
            const std::int32_t itens = lista.Menu().Count();
            return itens > 0 && pessoa.EscolheMenu(nome, lista.Menu().Item(1 + m_Octetos.Octeto() % itens)->Chave());
        }
        default: { // a row, and an item that is offered for it
            const std::int32_t linhas = lista.NroItens();
            if (linhas > 0 && !pessoa.ClicaLinha(nome, 1 + m_Octetos.Octeto() % linhas)) {
                return false;
            }
            std::vector<std::string> chaves;
            for (std::int32_t item = 1; lista.OfereceMenu() && item <= lista.Menu().Count(); ++item) {
                if (lista.Menu().Item(item)->Utilizavel()) {
                    chaves.push_back(lista.Menu().Item(item)->Chave());
                }
            }
            return !chaves.empty() && pessoa.EscolheMenu(nome, chaves[m_Octetos.Octeto() % chaves.size()]);
        }
        }
    }

    // Does it, and looks at what every action has to leave behind it: no hourglass, and the person told of each failure
    // that was called for once, and of nothing else.
    void Confere(const std::function<void()> &acao)
    {
        const std::int32_t falhasAntes = Host().FalhasDisparadas();
        std::optional<Falha> escapou;
        try {
            acao();
        } catch (const Falha &falha) {
            escapou = falha;
            m_Escapadas += Chamada(falha.Descricao) ? 1 : 0;
            ExigeConhecida(falha.Numero, falha.Descricao, falha.Fonte);
        }
        for (; m_ErrosVistos < Host().Erros().size(); ++m_ErrosVistos) {
            const auto &erro = Host().Erros()[m_ErrosVistos];
            ExigeConhecida(erro.Numero, erro.Descricao, erro.Contexto + " (" + erro.Fonte + ")");
        }
        const std::string caso = "of " + Host().ChamadaQueFalhou() + ", " + (escapou ? escapou->Fonte : "none escaped");
        if (Host().FalhasDisparadas() != falhasAntes) {
            Exige(Ditas() + Caladas() == Host().FalhasDisparadas(), "each failure is told once", caso);
        }
        // A failed save of this form reaches the person as it is, with the hourglass.
        if (escapou && escapou->Fonte.find(" < frmLimitesDifDetalhes.Salva") != std::string::npos) {
            Host().Tela->DefinePonteiro(PonteiroNormal);
        }
        Exige(Host().Tela->Ponteiro() == PonteiroNormal, "the hourglass is away", caso);
    }

    // Whether it is a failure that was called for.
    static bool Chamada(const std::string &descricao) { return descricao == "Falha de teste"; }

    // How many of those the person was told of, by an error box or by the fault itself.
    std::int32_t Ditas()
    {
        const auto &erros = Host().Erros();
        return m_Escapadas + static_cast<std::int32_t>(std::ranges::count_if(
                                 erros, [](const auto &erro) { return Chamada(erro.Descricao); }));
    }

    // What else may be told. A service that refuses to tell the calibration in force leaves those who asked without an
    // object; and a form whose check was interrupted by a failure goes on with what it has not checked.
    void ExigeConhecida(std::int32_t numero, const std::string &descricao, const std::string &onde)
    {
        const bool semVigente = numero == NumeroFalha::ObjetoNaoDefinido &&
                                (onde == "frmLista.cmdOK_Click (ZTAVOREQUIP)" ||
                                 onde.ends_with(" < CVorEquip.SetaDadosEquipto < CVorEquip.BuscaEquipamento") ||
                                 onde == "ZTAVOREQUIP < CVorEquip.BuscaEquipamento");
        Exige(Chamada(descricao) || semVigente || Host().FalhasDisparadas() > 0, "nothing but failures is told",
              std::to_string(numero) + " " + onde);
    }

    // How many were failures of calls of which nobody is told, the error box itself among them.
    std::int32_t Caladas()
    {
        const std::vector<std::string> linhas = Host().RegistroDe(
            {"FormMDI.FecharEnviaRecebe(", "cGlobal.gsubSetaAutoModuloAtivo(", "goMensagem.ExibeErro("});
        return static_cast<std::int32_t>(
            std::ranges::count_if(linhas, [](const std::string &linha) { return linha.ends_with(" !! 51"); }));
    }

    Octetos &m_Octetos;
    SessaoFuzz m_Sessao;
    RegistroEmMemoria m_Cadastro;
    int m_Acoes = 0;
    int m_Fundo = 0;
    std::size_t m_ErrosVistos = 0;
    std::int32_t m_Escapadas = 0;
    std::int32_t m_Programadas = 0;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    Octetos octetos(dados, tamanho);
    Passeio(octetos).Percorre();
    return 0;
}
