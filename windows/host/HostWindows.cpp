#include "windows/host/HostWindows.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "windows/host/Classes.h"
#include "windows/host/ClientesWindows.h"
#include "windows/host/FormRemoto.h"

#include <utility>

namespace nativo {
namespace {

constexpr const char *TituloDeAviso = "Registro de Equipamentos";
constexpr std::int32_t ObjetoDescarregado = 364;

HWND JanelaPrincipal()
{
    HWND janela = nullptr;
    IgnoraErro([&] {
        const Ref<IFormMDI> principal = goGeral->FormMDI();
        if (const auto *alheio = dynamic_cast<const ObjetoRemoto *>(principal.Ponteiro())) {
            janela = ManipuladorDe(*alheio);
        }
    });
    return janela;
}

} // namespace

HostWindows::HostWindows(const Ref<ICamada> &camada, Ref<ILogradouros> logradouros,
                         std::function<HWND(const Ref<IForm> &)> manipuladorDoForm)
    : m_Janelas(Novo<Janelas>(camada)),
      m_ManipuladorDoForm(std::move(manipuladorDoForm)),
      m_Plataforma(Novo<PlataformaWindows>(m_Janelas, JanelaPrincipal)),
      m_AtendeControles(*m_Controles, m_Janelas, std::move(logradouros), ClientesWindows::NomeDo, TituloDeAviso)
{
    m_Janelas->Descarrega = [this](const Ref<IForm> &form) {
        // What the form asks the person may take so long that the shell ends meanwhile.
        const Ref<PlataformaWindows> viva = m_Plataforma;
        viva->Descarrega(form);
    };
    m_Janelas->MostraFalha = [] { gSubMostraErro(NomeComponente); };
}

HostWindows::~HostWindows()
{
    m_Janelas->TiraTodas();
}

HostWindows &HostWindows::Instalado()
{
    auto *instalado = dynamic_cast<HostWindows *>(&::Host());
    if (instalado == nullptr) {
        throw Falha(NumeroFalha::ObjetoNaoDefinido);
    }
    return *instalado;
}

void HostWindows::Mostra(const Ref<IForm> &form, bool modal, const Ref<IForm> &dono)
{
    if (!m_Plataforma->Aberto(form)) { // its window could not be closed
        throw Falha(ObjetoDescarregado, std::string(NomeComponente), "O objeto foi descarregado");
    }
    const Ref<HostWindows> eu = Eu(*this); // the shell may end while the form is shown
    const auto *alheio = dynamic_cast<const FormRemoto *>(dono.Ponteiro());
    const HWND pedido = alheio != nullptr ? alheio->Manipulador() : dono ? m_ManipuladorDoForm(dono) : nullptr;
    // Windows that are opened while a modal one is up stand in front of that, whoever owned it.
    struct Devolve {
        HWND &Onde;
        HWND Antes;
        ~Devolve() { Onde = Antes; }
    } const devolve{m_DonoPedido, std::exchange(m_DonoPedido, pedido)};
    m_Janelas->MostraForm(form, modal);
}

std::int32_t HostWindows::Manipulador(const Ref<IForm> &form) const
{
    if (m_Plataforma->Aberto(form)) {
        m_Janelas->Prepara(form);
    }
    // Handles have 32 significant bits.
    return static_cast<std::int32_t>(reinterpret_cast<LONG_PTR>(m_ManipuladorDoForm(form)));
}

HWND HostWindows::Dono() const
{
    return m_DonoPedido != nullptr ? m_DonoPedido : JanelaPrincipal();
}

Ref<IAMRegistro> HostWindows::CriaAMRegistro()
{
    return Classes::Cria<IAMRegistro>(Classes::AMRegistro);
}

Ref<IAMEditMenu> HostWindows::CriaAMEditMenu()
{
    return Classes::Cria<IAMEditMenu>(Classes::AMEditMenu);
}

Ref<IRelatorios> HostWindows::CriaRelatorios()
{
    return Classes::Cria<IRelatorios>(Classes::Relatorios);
}

Ref<IAjuda> HostWindows::CriaAjuda()
{
    return Classes::Cria<IAjuda>(Classes::Ajuda);
}

Ref<ICFunGen> HostWindows::CriaCFunGen()
{
    return Classes::Cria<ICFunGen>(Classes::CFunGen);
}

Ref<IMensagem> HostWindows::CriaMensagem()
{
    return Classes::Cria<IMensagem>(Classes::Mensagem);
}

Ref<IDadosVor> HostWindows::CriaDadosVor()
{
    return Classes::Cria<IDadosVor>(Classes::DadosVor);
}

Ref<IDiretorios> HostWindows::CriaDiretorios()
{
    return Classes::Cria<IDiretorios>(Classes::Diretorios);
}

Ref<IObjGlobalVor> HostWindows::CriaObjGlobalVor()
{
    return Classes::Cria<IObjGlobalVor>(Classes::ObjGlobalVor);
}

Ref<IDocumentoPDF> HostWindows::CriaDocumentoPDF()
{
    return Classes::Cria<IDocumentoPDF>(Classes::DocumentoPDF);
}

} // namespace nativo
