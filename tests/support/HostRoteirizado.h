#pragma once

#include "controls/FabricaControles.h"
#include "tela/Pessoa.h"
#include "tests/support/AplicacaoRoteirizada.h"
#include "tests/support/BancoLocal.h"
#include "tests/support/DominioRoteirizado.h"
#include "tests/support/GatewayRoteirizado.h"
#include "tests/support/Oferta.h"
#include "tests/support/PlataformaRoteirizada.h"
#include "tests/support/RegistroChamadas.h"
#include "tests/support/ServicosGerais.h"
#include "tests/support/SessaoRoteirizada.h"

#include <concepts>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

class CommonDialog;
class ztClienteSetor;

// The scripted host: every host object of the contract, under the control of a test. In ten lines:
//
//   class clsEquipto_test : public HostTeste {};                  // tests/support/HostTeste.h: creates and installs it
//   LogaGeral();                                                  // a logged-on shell, when the class needs one
//   host->Atende<EquiptoED>("EquiptoRN", "consulta", [](const Ref<EquiptoED> &pedido) -> Resposta {...});
//   host->RecusaOperacao("altera", "Código já usado");            // the next "altera" answers false
//   host->Responde("Confirma a alteração?", true);                // in the order of the questions
//   host->AoMostrarModal("frmEquipSensores", [](Pessoa &p) { p.Clica("cmdOK"); });  // what the person does in it
//   host->FalhaEm("goDadosVor.EnviaDocumento");                   // or FalhaNaChamada(n), n from 1, for a sweep
//   EXPECT_TRUE(RegistroIgual(host->Registro(), {"Plataforma.Ponteiro := 11", "EquiptoRN.ExecutaMetodo(\"alt*"}));
//   EXPECT_EQ(host->Erros().at(0).Fonte, "EquiptoRN.ExecutaMetodo < clsEquipto.Salva < ...");
//   EXPECT_EQ(host->Avisos().at(0).Texto, "Informe o código do equipamento!");
//
// Each call of the module is one line of the log, in the order in which the calls begin: `object.Operation(arguments)`,
// `object.Property := value`, `object.Property` when it is read; then ` -> result` for a truth value, number, text or
// answer, and ` !! number` when the call was made to fail. Arguments are as they were when the call began.
//
// Not logged: Plataforma() and Controles(); the creation of controls, which fails by the name Controles.Cria; of the
// platform the reads that PlataformaRoteirizada names; the reads of a cursor, of a tool and of the menu holder; and
// everything that the module does to controls and to its own forms, apart from `frmX.SetFocus()` and `frmX.ZOrder(0)`,
// and of a control what goes on to the host: the file dialog (`cdAbreArquivos.ShowOpen(...)`), the client's number and
// the notice of the client picker. The person who closes a window with Pessoa::Fecha does so through the platform, so
// that it is logged; Tela->FechaPelaPessoa is not. Registry in memory: RegistroEmMemoria; sweeps: Varredura.
//
// Whatever the test did not provide for is a problem, which HostTeste reports at the end: a question, operation, modal
// window or file dialog without a script, a script that was not used, an error box at which the test never looked, an
// object that still lives.
class HostRoteirizado : public HostServices {
    RefRegistro m_Registro = std::make_shared<RegistroChamadas>(); // first: all objects share it

  public:
    HostRoteirizado();
    std::string_view NomeTipo() const override { return "Host"; }

    // What the services created by the module answer.
    std::shared_ptr<DominioRoteirizado> Dominio = std::make_shared<DominioRoteirizado>();
    std::shared_ptr<ServicosRemotos> Servicos = std::make_shared<ServicosRemotos>();
    std::shared_ptr<DocumentosVistos> Visor = std::make_shared<DocumentosVistos>();
    // The host's objects, to be given to the module and to be set.
    Ref<PlataformaRoteirizada> Tela;
    Oferta<BancoLocal> MDB;
    Oferta<SessaoRoteirizada> objMTM;
    Oferta<AcessoRoteirizado> objSCA;
    Oferta<AppEXERoteirizado> oAppEXE;
    Oferta<FormMDIRoteirizado> FormMDI;
    Oferta<GlobalRoteirizado> cGlobal;
    Oferta<InterfaceRoteirizada> ObjInterface;
    Oferta<ActBarRoteirizada> ActBar;
    Oferta<RelatoriosRoteirizados> Relatorios;
    Oferta<AjudaRoteirizada> Ajuda;
    // Clients by the number that presets the client picker.
    std::map<std::int32_t, std::string> Clientes{{1, "PREFEITURA"}, {2, "Autoridade das Estradas de Rodagem"}};

    // The log.
    std::vector<std::string> Registro();
    // Only the lines that begin with one of the prefixes, such as "EquiptoRN.".
    std::vector<std::string> RegistroDe(const std::vector<std::string> &prefixos);
    // The same and, in between, the names of the calls that are not logged.
    std::vector<std::string> Trilha() const { return m_Registro->Trilha(); }
    // Runs before each call of the module, logged or not.
    void ObservaChamadas(std::function<void()> observa) { m_Registro->AntesDaChamada = std::move(observa); }
    // A line of the test's own in it.
    void Nota(const std::string &linha) { m_Registro->Nota(linha); }
    void LimpaRegistro();
    bool Contem(const std::string &prefixo) { return Conta(prefixo) > 0; }
    // Lines that begin so.
    std::int32_t Conta(const std::string &prefixo);
    // Logged calls so far, forgotten ones included.
    std::int32_t Chamadas() const { return m_Registro->Chamadas(); }

    // Remote operations. Without a script an operation is refused and reported.
    void Servico(const std::string &classe, const std::string &metodo, ServicosRemotos::Operacao operacao);
    // The same for requests of one type; another type is fault 13.
    template <class Pedido, class Operacao>
    void Atende(const std::string &classe, const std::string &metodo, Operacao operacao)
    {
        Servico(classe, metodo,
                [operacao](const Ref<::Registro> &pedido) -> Resposta { return operacao(ComoTipo<Pedido>(pedido)); });
    }
    // The next call of that operation answers false, with a message that MostraErro shows.
    void RecusaOperacao(const std::string &metodo, const std::string &mensagem);
    // The same for the n-th remote call from now on, of whatever operation.
    void RecusaNaExecucao(std::int32_t n, const std::string &mensagem);

    // Failures, each raised once. The source of the fault is the call's name. The n-th logged call from now on:
    void FalhaNaChamada(std::int32_t n, std::int32_t numero = 51, const std::string &descricao = "Falha de teste");
    // The n-th call from now on, logged or not.
    void FalhaNoPasso(std::int32_t n, std::int32_t numero = 51, const std::string &descricao = "Falha de teste");
    // The n-th call of that name, which need not be a logged one.
    void FalhaEm(const std::string &nome, std::int32_t n = 1, std::int32_t numero = 51,
                 const std::string &descricao = "Falha de teste");
    std::int32_t FalhasDisparadas() const { return m_Registro->FalhasDisparadas(); }
    // Name of the call that was made to fail last.
    const std::string &ChamadaQueFalhou() const { return m_Registro->ChamadaQueFalhou(); }
    // The module was interrupted by a failure: scripts that were not used and error boxes are no problem any more.
    void PerdoaSobras() { m_PerdoaSobras = true; }

    // The person.
    void Responde(const std::string &pergunta, bool sim) { Tela->Responde(pergunta, sim); }
    // Presses Enter, which is the default button.
    void RespondePadrao(const std::string &pergunta) { Tela->Responde(pergunta, std::nullopt); }
    // What the person does in the next modal window of that class: a procedure that gets a Pessoa in front of it, or
    // the form.
    template <class Roteiro> void AoMostrarModal(const std::string &classe, Roteiro roteiro)
    {
        Tela->AoMostrarModal(classe, DiantePessoa(std::move(roteiro)));
    }
    // The same for every question and window for which nothing is queued; they need not come at all.
    void RespondeSempre(const std::string &pergunta, bool sim) { Tela->RespondeSempre(pergunta, sim); }
    template <class Roteiro> void AoMostrarModalSempre(const std::string &classe, Roteiro roteiro)
    {
        Tela->AoMostrarModalSempre(classe, DiantePessoa(std::move(roteiro)));
    }
    // What the person does in the file dialogs: chooses a file, or cancels.
    void EscolheArquivo(const std::string &caminho) { m_Dialogos.emplace_back(caminho); }
    void CancelaDialogo() { m_Dialogos.emplace_back(std::nullopt); }
    void EscolheArquivoSempre(const std::string &caminho) { m_DialogoFixo = caminho; }

    // What the person was shown.
    const std::vector<DominioRoteirizado::Aviso> &Avisos() const { return Dominio->Avisos; }
    const std::vector<DominioRoteirizado::CaixaErro> &Erros();
    // The error boxes that the test has not looked at yet, each as `context: number (source)`.
    std::vector<std::string> ErrosNovos();
    // The same of the notices, their texts.
    std::vector<std::string> AvisosNovos();

    // The problems seen, one text each. The module has ended and the test holds no host object any more.
    std::vector<std::string> VerificaFim();

    Ref<IPlataforma> Plataforma() override { return Tela; }
    Ref<IFabricaControles> Controles() override;
    Ref<IAMRegistro> CriaAMRegistro() override;
    Ref<IAMEditMenu> CriaAMEditMenu() override;
    Ref<IRelatorios> CriaRelatorios() override;
    Ref<IAjuda> CriaAjuda() override;
    Ref<ICFunGen> CriaCFunGen() override;
    Ref<IMensagem> CriaMensagem() override;
    Ref<IDadosVor> CriaDadosVor() override;
    Ref<IDiretorios> CriaDiretorios() override;
    Ref<IObjGlobalVor> CriaObjGlobalVor() override;
    Ref<IDocumentoPDF> CriaDocumentoPDF() override;

  private:
    template <class Roteiro> PlataformaRoteirizada::Roteiro DiantePessoa(Roteiro roteiro)
    {
        if constexpr (std::is_invocable_v<Roteiro, Pessoa &>) {
            RefFraca<IPlataforma> tela = Tela;
            return [roteiro, tela](const Ref<IForm> &form) {
                Pessoa pessoa(form, tela.Alvo());
                roteiro(pessoa);
            };
        } else {
            return roteiro;
        }
    }
    // Logs the creation of a host class, and watches the new object.
    template <class Classe, class... Args> Ref<Classe> Cria(const std::string &operacao, Args &&...args)
    {
        m_Registro->Chama("Host." + operacao);
        return m_Registro->Vigia(Novo<Classe>(m_Registro, std::forward<Args>(args)...));
    }
    void ConfereSobras();
    void AoCriarControle(const Ref<IControle> &controle);
    void MostraDialogo(CommonDialog &dialogo);
    void PresetaCliente(ztClienteSetor &seletor);
    void Avisa(const ztClienteSetor &seletor, const std::string &texto);

    Ref<FabricaControles> m_Fabrica = Novo<FabricaControles>();
    Conexao m_CriouControle;
    std::vector<Conexao> m_Controles;
    std::deque<std::optional<std::string>> m_Dialogos;
    std::optional<std::string> m_DialogoFixo;
    std::size_t m_ErrosVistos = 0;
    std::size_t m_AvisosVistos = 0;
    bool m_PerdoaSobras = false;
};

// Installs it as the module gets it.
template <class Host>
requires std::derived_from<Host, HostRoteirizado>
void InstalaHost(const Ref<Host> &host)
{
    InstalaHost(ParaOModulo(host));
}
