#include "shell/Geral.h"

#include "shell/Especifica.h"
#include "shell/ModGeral.h"

#include <vector>

namespace {

// Margin that centres what is `ocupado` wide in what is `total` wide, before rounding.
double Margem(std::int32_t total, std::int32_t ocupado)
{
    return (static_cast<double>(total) - static_cast<double>(ocupado)) / 2;
}

// Adds the fields themselves, each under its name.
void AdicionaCampos(Colecao<Ref<CampoTransacao>> &destino, const Colecao<Ref<CampoTransacao>> &campos)
{
    for (std::int32_t posicao = 1; posicao <= campos.Count(); ++posicao) {
        const Ref<CampoTransacao> &campo = campos.Item(posicao);
        destino.Add(campo, campo->Nome);
    }
}

} // namespace

Geral::Geral() : Menus(*this), Transacoes(*this), Impressao(*this) {}

Geral::~Geral()
{
    Encerra();
}

Ref<IMDB> Geral::MDB()
{
    if (m_MDB.Nada() && m_Especifica->ModuloQMRAuxiliar().Nada()) {
        m_MDB = TrataBD()->AbreZTBanco(99);
    }
    return m_MDB;
}

void Geral::DefineMDB(const Ref<IMDB> &valor)
{
    m_MDB = valor;
}

Ref<IAplicacao> Geral::Modulo() const
{
    return Plataforma()->Aplicacao();
}

void Geral::RegistraAM(const Valor &NomeAPP) noexcept
{
    IgnoraErro([&] {
        const std::string nome = Modulo()->Nome();
        Host().CriaAMRegistro()->RegistraAM(nome, nome + ".Geral", NomeAPP);
    });
}

void Geral::DesregistraAM(const Valor &NomeAPP) noexcept
{
    IgnoraErro([&] { Host().CriaAMRegistro()->DesregistraAM(Modulo()->Nome(), NomeAPP); });
}

void Geral::Parametros(const Ref<IFormMDI> &FormMDI, const Ref<IActBar> &MenuDestino,
                       const Ref<IRelatorios> &Relatorios, const Ref<IAjuda> &Ajuda, const Ref<IMDB> &MDB,
                       const Ref<IoAppEXE> &oAppEXE)
try {
    ObjInterface = nullptr;
    m_Especifica = CriaEspecifica();
    m_oAppEXE = oAppEXE;

    Menus.aMenu.assign(1, nullptr);
    Menus.aMenuAux.assign(1, nullptr);
    m_Especifica->Menu(Menus.aMenu);
    m_Especifica->MenuAuxiliar(Menus.aMenuAux);
    ActBar = MenuDestino;

    // The read alone tells whether this is a main form; its value does not matter.
    m_FormMDI = nullptr;
    IgnoraErro([&] {
        FormMDI->AutoShowChildren();
        m_FormMDI = FormMDI;
    });
    IgnoraErro([&] { m_objZTP = m_FormMDI->objZTP(); });
    IgnoraErro([&] { PossuiJanelaEnviaRecebe = m_FormMDI->PossuiJanelaEnviaRecebe(); });

    m_Relatorios = Relatorios;
    if (m_Relatorios.Nada()) {
        m_Relatorios = Host().CriaRelatorios();
        m_Relatorios->DefinePathRPT(oAppEXE->Path());
    }
    m_Ajuda = Ajuda.Nada() ? Host().CriaAjuda() : Ajuda;

    m_MDB = MDB;
    m_Especifica->Inicializa(Eu(*this));
    Menus.DesabilitarMenu();
} catch (...) {
    PassaFalha(" < Geral.Parametros");
}

void Geral::Logon(const Ref<IobjMTM> &objMTM, const Ref<IobjSCA> &objSCA, const std::string &sMunicCreden)
try {
    m_objMTM = objMTM;
    m_objSCA = objSCA;
    m_sMunicCreden = sMunicCreden;
    if (!m_objMTM.Nada() && !m_objSCA.Nada()) {
        IgnoraErro([&] { AtualizaMenu(); });
    }
} catch (...) {
    PassaFalha(" < Geral.Logon");
}

void Geral::AtualizaMenu()
{
    if (m_objSCA->Logado()) {
        m_Especifica->HabilitarMenu();
    } else {
        Menus.DesabilitarMenu();
    }
}

void Geral::Logoff()
try {
    if (m_Especifica->ModuloQMRAuxiliar().Nada()) {
        m_MDB = nullptr;
    }
    m_CFisJur = nullptr;
    m_CEndereco = nullptr;
    m_CVeiGen = nullptr;
    FecharJanelasAtivas();
    Menus.DesabilitarMenu();
    m_Especifica->LiberaServicos();
    if (UsandoModuloQMRauxiliar()) {
        m_TrataBD = nullptr;
    }
} catch (...) {
    PassaFalha(" < Geral.Logoff");
}

void Geral::FecharJanelasAtivas() noexcept
{
    // The open forms change while they are unloaded, so they are gathered first.
    std::vector<Ref<IForm>> abertos;
    std::int32_t quantos = 0;
    IgnoraErro([&] { quantos = Plataforma()->NroForms(); });
    for (std::int32_t posicao = 0; posicao < quantos; ++posicao) {
        IgnoraErro([&] { abertos.push_back(Plataforma()->FormAberto(posicao)); });
    }
    Ref<IForm> parent; // keeps the value of the previous pass when a form has no such member
    for (const Ref<IForm> &frm : abertos) {
        IgnoraErro([&] { parent = frm->frmParent(); });
        IgnoraErro([&] { Plataforma()->Descarrega(frm); });
        if (!parent.Nada()) {
            IgnoraErro([&] { Plataforma()->Descarrega(parent); });
        }
    }
}

bool Geral::ClickMenu(const std::string &sTool)
try {
    // Both live through the click, even if the host ends the shell meanwhile.
    const Ref<Geral> eu = Eu(*this);
    const Ref<Especifica> especifica = m_Especifica;
    m_FormClick = nullptr;
    ClickTratado = false;
    const Ref<IForm> frm = especifica->ClickMenu(sTool);
    if (frm.Nada()) {
        return ClickTratado;
    }
    if (InstanciarFormsClickMenu) {
        ShowForm(frm, false);
    } else {
        ShowFormNoInstance(frm);
    }
    return true;
} catch (...) {
    PassaFalha(" < Geral.ClickMenu");
}

void Geral::Encerra() noexcept
{
    FecharJanelasAtivas();
    IgnoraErro([&] { m_Especifica->Finaliza(); });
    m_Especifica = nullptr;
    LiberaFormsCompartilhados();

    cGlobal = nullptr;
    ActBar = nullptr;
    m_objMTM = nullptr;
    m_objSCA = nullptr;
    m_FormMDI = nullptr;
    m_FormAtivo = nullptr;
    m_oAppEXE = nullptr;
    m_objZTP = nullptr;
    m_Relatorios = nullptr;
    m_Ajuda = nullptr;
    m_FormClick = nullptr;
    ObjInterface = nullptr;
    m_TrataBD = nullptr;
    m_CFunGen = nullptr;
    m_CFisJur = nullptr;
    m_CEndereco = nullptr;
    m_CVeiGen = nullptr;
    m_MDB = nullptr;
    Menus.aMenu.clear();
    Menus.aMenuAux.clear();
}

Ref<Especifica> Geral::CEspecifica() const
{
    return m_Especifica;
}

Ref<Especifica> Geral::CriaEspecifica()
{
    return Novo<Especifica>();
}

bool Geral::HabilitarItem(const std::string &sTool) noexcept
{
    bool logado = false;
    IgnoraErro([&] { logado = !m_objSCA.Nada() && m_objSCA->Logado(); });
    if (!logado) {
        return false;
    }
    bool habilitado = false;
    IgnoraErro([&] { habilitado = m_Especifica->HabilitarItem(sTool); });
    IgnoraErro([&] {
        std::string tool = sTool;
        cGlobal->MontaEstruturaMenus(tool, Modulo()->Nome());
    });
    return habilitado;
}

Ref<ITrataBD> Geral::TrataBD()
{
    if (m_TrataBD.Nada()) {
        Ref<ITrataBD> trataBD = m_objMTM->CreateQMR()->CreateNewTrataBD();
        trataBD->InicializaInfoSistema(QMRModuloID(), QMRVersaoModulo());
        m_TrataBD = trataBD;
    }
    return m_TrataBD;
}

bool Geral::UsandoModuloQMRauxiliar() const
{
    return m_Especifica->UsandoModuloQMRauxiliar();
}

std::string Geral::SistemaQMR() const
{
    return m_Especifica->SistemaQMR();
}

std::int16_t Geral::VersaoSistemaQMR() const
{
    return m_Especifica->VersaoSistemaQMR();
}

std::string Geral::QMRModuloID() const
{
    return m_Especifica->QMRModuloID();
}

std::int16_t Geral::QMRVersaoModulo() const
{
    return m_Especifica->QMRVersaoModulo();
}

Ref<ITransacao> Geral::ObtemTransacao(const std::string &sTransID)
{
    Ref<Especifica> especifica = m_Especifica.Nada() ? CriaEspecifica() : m_Especifica;
    if (Len(sTransID) < 2) {
        return {};
    }
    const std::string codigo = Substitui(UCase(sTransID), "-", "");
    Ref<ITransacao> transacao;
    IgnoraErro([&] { transacao = especifica->ObtemTransacao(codigo); });
    if (transacao.Nada() && Left(codigo, 1) != "C") {
        IgnoraErro([&] { transacao = especifica->ObtemTransacao("C" + codigo); });
    }
    return transacao;
}

void Geral::ObtemTransacao2(const std::string &, Ref<ITransacao> &)
{
    throw Falha(-1, std::string(NomeComponente) + ".Geral.ObtemTransacao2", "Método depreciado. Não utilizar.");
}

void Geral::ObtemTransacao3(const std::string &sTransID, Ref<ITransacao> &origem)
{
    const Ref<ITransacao> transacao = ObtemTransacao(sTransID);
    IgnoraErro([&] { origem->DefinesWindow(transacao->sWindow()); });
    IgnoraErro([&] { origem->DefinesTransacao(transacao->sTransacao()); });
    IgnoraErro([&] { origem->DefinesSistema(transacao->sSistema()); });
    IgnoraErro([&] { origem->DefinesJob(transacao->sJob()); });
    IgnoraErro([&] { origem->DefinesPrograma(transacao->sPrograma()); });
    IgnoraErro([&] { origem->DefinebGCI(transacao->bGCI()); });
    IgnoraErro([&] { origem->DefineSisJava(transacao->SisJava()); });
    if (transacao.Nada()) {
        return;
    }
    if (const CamposTransacao campos = transacao->Cin()) {
        const auto novos = Novo<Colecao<Ref<CampoTransacao>>>();
        origem->DefineCin(novos);
        AdicionaCampos(*novos, *campos);
    }
    if (const CamposTransacao campos = transacao->Cout()) {
        const auto novos = Novo<Colecao<Ref<CampoTransacao>>>();
        origem->DefineCout(novos);
        AdicionaCampos(*novos, *campos);
    }
}

bool Geral::TemPermissao(const std::string &sSistema, const std::string &sObjeto, const std::string &sAcao,
                         const Ref<IControle> &ctl)
{
    const bool permitido = m_objSCA->PossuiPerm2(sSistema, sObjeto, sAcao);
    if (!ctl.Nada()) {
        ctl->DefineVisible(permitido);
    }
    return permitido;
}

void Geral::MostraJanela(const Ref<IForm> &frm, bool bModal, Ref<IForm> &oOwner)
{
    const Ref<IObjInterface> objInterface = ObjInterface; // lives through the show, whatever arrives meanwhile
    objInterface->MostraJanela(frm, CInt(bModal), oOwner, CInt(Depurar), m_FormClick);
}

void Geral::ShowForm(const Ref<IForm> &frm, bool bModal)
try {
    Ref<IForm> semDono;
    MostraJanela(frm, bModal, semDono);
    m_FormClick = nullptr;
    InstanciarFormsClickMenu = false;
} catch (...) {
    PassaFalha(" < Geral.ShowForm");
}

Ref<IForm> Geral::FormVisivelDaClasse(std::string_view classe)
{
    const std::string procurada = LCase(classe);
    const Ref<IPlataforma> plataforma = Plataforma();
    const std::int32_t quantos = plataforma->NroForms();
    for (std::int32_t posicao = 0; posicao < quantos; ++posicao) {
        Ref<IForm> aberto = plataforma->FormAberto(posicao);
        if (LCase(aberto->NomeTipo()) == procurada && aberto->Visible()) {
            return aberto;
        }
    }
    return {};
}

void Geral::ShowFormNoInstance(const Ref<IForm> &frm)
try {
    const Ref<IForm> aberto = FormVisivelDaClasse(frm->NomeTipo());
    if (aberto.Nada()) {
        ShowForm(frm, false);
        return;
    }
    if (const Ref<IForm> parent = aberto->frmParent()) {
        parent->ZOrder(0);
    }
    if (aberto->Enabled()) {
        aberto->SetFocus();
    }
    m_FormClick = nullptr;
} catch (...) {
    PassaFalha(" < Geral.ShowFormNoInstance");
}

void Geral::FormShow(const Ref<IForm> &frm, bool bModal, Ref<IForm> oOwner)
try {
    FechaEnviaRecebe();
    Plataforma()->DefinePonteiro(PonteiroNormal);
    Plataforma()->ProcessaMensagens();
    MostraJanela(frm, bModal, oOwner);
} catch (...) {
    PassaFalha(" < Geral.FormShow");
}

void Geral::CentralizaForm(const Ref<IForm> &frm, bool bTela)
try {
    if (bTela) {
        frm->DefineLeft(CLng(Margem(Plataforma()->LarguraTela(), frm->Width())));
        frm->DefineTop(CLng(Margem(Plataforma()->AlturaTela(), frm->Height())));
    } else if (frm->MDIChild()) {
        frm->DefineLeft(CLng(Margem(m_FormMDI->ScaleWidth(), frm->Width())));
        frm->DefineTop(CLng(Margem(m_FormMDI->ScaleHeight(), frm->Height())));
    } else {
        frm->DefineLeft(CLng(m_FormMDI->Left() + Margem(m_FormMDI->Width(), frm->Width())));
        frm->DefineTop(CLng(m_FormMDI->Top() + Margem(m_FormMDI->Height(), frm->Height())));
    }
} catch (...) {
    PassaFalha(" < CentralizaForm"); // without the class, unlike the others
}

void Geral::DefineTitulo(const Ref<IForm> &frm, const std::string &sTitulo) noexcept
{
    Ref<IForm> parent;
    IgnoraErro([&] { parent = frm->frmParent(); });
    IgnoraErro([&] { Plataforma()->DefineTextoJanela(frm->hwnd(), sTitulo); });
    if (!parent.Nada()) {
        IgnoraErro([&] { Plataforma()->DefineTextoJanela(parent->hwnd(), sTitulo); });
    }
}

void Geral::FormAtivado(const Ref<IForm> &frm) noexcept
{
    // A failure of the host's global services ends the whole procedure.
    IgnoraErro([&] {
        if (!cGlobal.Nada()) {
            cGlobal->gsubSetaAutoModuloAtivo(Modulo()->Nome());
        }
        m_FormAtivo = frm;
    });
}

void Geral::AbreEnviaRecebe(const std::string &sMensagem) noexcept
{
    IgnoraErro([&] {
        std::string mensagem = sMensagem;
        m_FormMDI->MsgEnviaRecebe(mensagem);
    });
    IgnoraErro([&] { m_FormMDI->AbrirEnviaRecebe(); });
}

void Geral::FechaEnviaRecebe() noexcept
{
    IgnoraErro([&] { m_FormMDI->FecharEnviaRecebe(true); });
}

Ref<Objeto> Geral::ObtemAutoModulo(const std::string &sNome)
{
    if (UCase(cGlobal->NomeTipo()) == "CAUTOMODULOS") {
        return cGlobal->PegaAutoModulo(sNome);
    }
    return cGlobal->gfunRetornaAutoModulo(sNome);
}

Ref<ICFunGen> Geral::ObtemCFunGen()
{
    if (m_CFunGen.Nada()) {
        m_CFunGen = Host().CriaCFunGen();
    }
    const Ref<IAplicacao> modulo = Modulo();
    const std::string descricao = modulo->Descricao();
    m_CFunGen->SetaTituloAvisos((m_oAppEXE.Nada() ? modulo->Titulo() : m_oAppEXE->Title()) + " - " +
                                (descricao.empty() ? modulo->Titulo() : descricao));
    return m_CFunGen;
}

Ref<ICFunGen> Geral::ObtemCFunGenComAppTitle()
{
    const Ref<ICFunGen> funGen = ObtemCFunGen();
    const std::string titulo = Modulo()->Titulo();
    funGen->DefineAppTitle(m_oAppEXE.Nada() ? titulo : m_oAppEXE->Title() + " - " + titulo);
    return funGen;
}

Ref<ICFisJur> Geral::ObtemCFisJur()
{
    if (m_CFisJur.Nada()) {
        m_CFisJur = TrataBD()->CreateCFisJur();
    }
    return m_CFisJur;
}

Ref<ICEndereco> Geral::ObtemCEndereco()
{
    if (m_CEndereco.Nada()) {
        m_CEndereco = TrataBD()->CreateCEndereco();
    }
    return m_CEndereco;
}

Ref<ICVeiGen> Geral::ObtemCVeiGen()
{
    if (m_CVeiGen.Nada()) {
        m_CVeiGen = TrataBD()->CreateCVeiGen();
    }
    return m_CVeiGen;
}

void Geral::TrataAjuda(const std::string &sTopico)
{
    if (!m_Ajuda.Nada()) {
        std::string topico = sTopico;
        m_Ajuda->TrataAjuda2(Modulo(), topico);
    }
}
