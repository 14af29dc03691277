#include "desk/host/HostMesa.h"

#include "controls/CommonDialog.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztEndereco.h"
#include "desk/host/ServicosMesa.h"
#include "desk/services/Disco.h"

#include <algorithm>

namespace mesa {

namespace {

constexpr const char *TituloDeRecusa = "Registro de Equipamentos";

} // namespace

HostMesa::HostMesa(Ref<IJanelas> janelas, std::filesystem::path diretorio, std::function<Data()> agora)
    : m_Janelas(std::move(janelas)),
      m_Diretorio(std::move(diretorio))
{
    FazPastaPrivada(m_Diretorio);
    m_Plataforma = Novo<PlataformaMesa>(m_Janelas, m_Diretorio / "modulo", std::move(agora));
    m_Plataforma->PoePasta(PastaDosLayouts(), [this] { return DadosVorMesa::ArquivosDeLayout(*Servico()); });
    m_Controles = Novo<FabricaControles>();
    m_CriouControle =
        m_Controles->CriouControle().liga([this](const Ref<IControle> &controle) { ConectaControle(controle); });
    oAppEXE = Novo<AppEXEMesa>(m_Diretorio);
    FormMDI = Novo<FormMDIMesa>();
    ActBar = Novo<ActBarMesa>();
    cGlobal = Novo<GlobalMesa>();
    BancoLocal = Novo<BancoLocalMesa>(m_Diretorio);
    Logradouros = Novo<LogradourosMesa>(SessaoAtual());
    ObjInterface =
        Novo<InterfaceMesa>(m_Janelas, [this]() -> Ref<ITrataBD> { return m_objMTM->CreateQMR()->CreateNewTrataBD(); });
}

void HostMesa::Entra(const Ref<SessaoServico> &servico)
{
    BancoLocal->AtualizaReplica(*servico);
    m_objMTM = Novo<SessaoMesa>(servico, BancoLocal, [this](const std::string &recusa) { MostraRecusa(recusa); });
    m_objSCA = Novo<AcessoMesa>(servico);
}

void HostMesa::Sai()
{
    if (m_objSCA) {
        m_objSCA->Sai();
    }
    m_objMTM = nullptr;
}

Ref<SessaoServico> HostMesa::Servico() const
{
    return m_objMTM->Servico();
}

std::filesystem::path HostMesa::PastaDosLayouts() const
{
    return m_Diretorio / "layouts";
}

std::function<Ref<SessaoServico>()> HostMesa::SessaoAtual() const
{
    return [this] { return Servico(); };
}

template <class... Args>
void HostMesa::Mantem(const Ref<IControle> &controle, Evento<Args...> &evento, std::function<void(Args...)> tratador)
{
    m_Conectados.emplace_back(controle, evento.liga(std::move(tratador)));
}

void HostMesa::ConectaControle(const Ref<IControle> &controle)
{
    std::erase_if(m_Conectados, [](const auto &conectado) { return conectado.first.Nada(); });
    if (auto *dialogo = dynamic_cast<CommonDialog *>(controle.Ponteiro())) {
        Mantem(controle, dialogo->AoMostrar(), std::function<void()>([this, dialogo] {
                   if (const auto escolhido = m_Janelas->EscolheArquivo(dialogo->Filter(), dialogo->DialogTitle())) {
                       dialogo->Escolhe(*escolhido);
                   }
               }));
    } else if (auto *cliente = dynamic_cast<ztClienteSetor *>(controle.Ponteiro())) {
        Mantem(controle, cliente->AoAvisar(), std::function<void(std::string)>([this](const std::string &texto) {
                   m_Janelas->Avisa(texto, TituloDeRecusa);
               }));
        Mantem(controle, cliente->AoDefinirCodCliente(), std::function<void()>([this, cliente] {
                   // A client that the operator may not choose gives way to their own.
                   const std::vector<ClienteCadastrado> clientes = Servico()->Clientes();
                   const auto achado = std::find_if(clientes.begin(), clientes.end(), [&](const auto &cadastrado) {
                       return cadastrado.CodCliente == cliente->CodCliente();
                   });
                   const Operador &operador = Servico()->Operador();
                   cliente->PresetaCliente(achado == clientes.end() ? operador.Cliente : achado->Nome, "");
               }));
    } else if (auto *endereco = dynamic_cast<ztEndereco *>(controle.Ponteiro())) {
        const Ref<Endereco> dados = endereco->EnderecoProprio();
        Mantem(controle, dados->AoSetar(), std::function<void()>([this, fraco = RefFraca<Endereco>(dados)] {
                   const Ref<Endereco> preenchido = fraco.Alvo();
                   if (const auto logradouro = Logradouros->PorCodigo(preenchido->CodLogradouro())) {
                       preenchido->DefineDescricao(
                           logradouro->Descricao(preenchido->Numero(), preenchido->Complemento()));
                   }
               }));
    }
}

void HostMesa::MostraRecusa(const std::string &recusa) const
{
    m_Janelas->Avisa(recusa, TituloDeRecusa);
}

Ref<IAMRegistro> HostMesa::CriaAMRegistro()
{
    return Novo<AMRegistroMesa>(m_Diretorio / "modulos.tsv");
}

Ref<IAMEditMenu> HostMesa::CriaAMEditMenu()
{
    return Novo<AMEditMenuMesa>();
}

Ref<IRelatorios> HostMesa::CriaRelatorios()
{
    return Novo<RelatoriosMesa>(m_Janelas, m_Diretorio / "temporarios");
}

Ref<IAjuda> HostMesa::CriaAjuda()
{
    return Novo<AjudaMesa>(m_Janelas);
}

Ref<ICFunGen> HostMesa::CriaCFunGen()
{
    return Novo<CFunGenMesa>();
}

Ref<IMensagem> HostMesa::CriaMensagem()
{
    return Novo<MensagemMesa>(m_Janelas);
}

Ref<IDadosVor> HostMesa::CriaDadosVor()
{
    return Novo<DadosVorMesa>(
        SessaoAtual(), [this](const std::string &recusa) { MostraRecusa(recusa); }, PastaDosLayouts());
}

Ref<IDiretorios> HostMesa::CriaDiretorios()
{
    return Novo<DiretoriosMesa>(m_Diretorio / "temporarios");
}

Ref<IObjGlobalVor> HostMesa::CriaObjGlobalVor()
{
    return Novo<ObjGlobalVorMesa>(SessaoAtual());
}

Ref<IDocumentoPDF> HostMesa::CriaDocumentoPDF()
{
    return Novo<DocumentoPDFMesa>(m_Janelas);
}

} // namespace mesa
