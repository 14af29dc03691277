#include "desk/host/HostMesa.h"

#include "desk/host/ServicosMesa.h"
#include "desk/host/Titulo.h"
#include "services/Disco.h"

#include <algorithm>

namespace mesa {

HostMesa::HostMesa(Ref<IJanelas> janelas, std::filesystem::path diretorio, std::function<Data()> agora)
    : m_Janelas(std::move(janelas)),
      m_Diretorio(std::move(diretorio))
{
    FazPastaPrivada(m_Diretorio);
    m_Plataforma = Novo<PlataformaMesa>(m_Janelas, m_Diretorio / "modulo", std::move(agora));
    m_Plataforma->PoePasta(PastaDosLayouts(), [this] { return DadosVorMesa::ArquivosDeLayout(*Servico()); });
    oAppEXE = Novo<AppEXEMesa>(m_Diretorio);
    FormMDI = Novo<FormMDIMesa>();
    ActBar = Novo<ActBarMesa>();
    cGlobal = Novo<GlobalMesa>();
    BancoLocal = Novo<BancoLocalMesa>(m_Diretorio);
    BancoLocal->Acompanha = ComAndamento();
    Logradouros = Novo<LogradourosMesa>(SessaoAtual());
    m_Controles = Novo<FabricaControles>();
    m_NomesDeDocumentos = Novo<NomesDeDocumentos>(SessaoAtual(), m_Plataforma->CaminhoModulo(),
                                                  CriaDiretorios()->ObtemDiretorio(CodigoTemporarios, ""));
    m_AtendeControles.emplace(
        *m_Controles, m_Janelas, Logradouros, [this](std::int32_t codCliente) { return ClienteDe(codCliente); },
        TituloDosAvisos);
    ObjInterface =
        Novo<InterfaceMesa>(m_Janelas, [this]() -> Ref<ITrataBD> { return m_objMTM->CreateQMR()->CreateNewTrataBD(); });
}

void HostMesa::Entra(const Ref<SessaoServico> &servico)
{
    BancoLocal->AtualizaReplica(*servico);
    m_objMTM = Novo<SessaoMesa>(
        servico, BancoLocal, [this](const std::string &recusa) { MostraRecusa(recusa); },
        [this](std::int32_t nroIntEquip) {
            if (ViuEquipamento) {
                ViuEquipamento(nroIntEquip);
            }
        });
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

// As it is when the work begins.
FazComAndamento HostMesa::ComAndamento() const
{
    return [this](const std::string &frase, bool cancelavel, const std::function<void(const Segue &)> &trabalho) {
        Acompanha(frase, cancelavel, trabalho);
    };
}

// A client that the operator may not choose gives way to their own.
std::string HostMesa::ClienteDe(std::int32_t codCliente) const
{
    const std::vector<ClienteCadastrado> clientes = Servico()->Clientes();
    const auto achado = std::ranges::find(clientes, codCliente, &ClienteCadastrado::CodCliente);
    return achado == clientes.end() ? Servico()->Operador().Cliente : achado->Nome;
}

void HostMesa::MostraRecusa(const std::string &recusa) const
{
    m_Janelas->Avisa(recusa, TituloDosAvisos);
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
        SessaoAtual(), [this](const std::string &recusa) { MostraRecusa(recusa); }, PastaDosLayouts(),
        m_NomesDeDocumentos, ComAndamento());
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
    return Novo<DocumentoPDFMesa>(m_Janelas, m_NomesDeDocumentos);
}

} // namespace mesa
