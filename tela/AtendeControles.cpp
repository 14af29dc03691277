#include "tela/AtendeControles.h"

#include "controls/CommonDialog.h"
#include "controls/ztClienteSetor.h"
#include "controls/ztEndereco.h"

AtendeControles::AtendeControles(FabricaControles &fabrica, Ref<IJanelas> janelas, Ref<ILogradouros> logradouros,
                                 std::function<std::string(std::int32_t)> clienteDoCodigo, std::string titulo)
    : m_Janelas(std::move(janelas)),
      m_Logradouros(std::move(logradouros)),
      m_ClienteDoCodigo(std::move(clienteDoCodigo)),
      m_Titulo(std::move(titulo)),
      m_CriouControle(fabrica.CriouControle().liga([this](const Ref<IControle> &controle) { Conecta(controle); }))
{
}

template <class... Args>
void AtendeControles::Mantem(const Ref<IControle> &controle, Evento<Args...> &evento,
                             std::function<void(Args...)> tratador)
{
    m_Conectados.emplace_back(controle, evento.liga(std::move(tratador)));
}

void AtendeControles::Conecta(const Ref<IControle> &controle)
{
    std::erase_if(m_Conectados, [](const auto &conectado) { return conectado.first.Nada(); });
    if (auto *dialogo = dynamic_cast<CommonDialog *>(controle.Ponteiro())) {
        Mantem(controle, dialogo->AoMostrar(), std::function<void()>([this, dialogo] {
                   const Ref<IJanelas> janelas = m_Janelas; // the host may end while the person chooses
                   if (const auto escolhido = janelas->EscolheArquivo(dialogo->Filter(), dialogo->DialogTitle(),
                                                                      dialogo->DefaultExt(), dialogo->FileName())) {
                       dialogo->Escolhe(*escolhido);
                   }
               }));
    } else if (auto *cliente = dynamic_cast<ztClienteSetor *>(controle.Ponteiro())) {
        Mantem(controle, cliente->AoAvisar(), std::function<void(std::string)>([this](const std::string &texto) {
                   const Ref<IJanelas> janelas = m_Janelas;
                   janelas->Avisa(texto, m_Titulo);
               }));
        Mantem(controle, cliente->AoDefinirCodCliente(), std::function<void()>([this, cliente] {
                   cliente->PresetaCliente(m_ClienteDoCodigo(cliente->CodCliente()), "");
               }));
    } else if (auto *endereco = dynamic_cast<ztEndereco *>(controle.Ponteiro())) {
        const Ref<Endereco> dados = endereco->EnderecoProprio();
        Mantem(controle, dados->AoSetar(), std::function<void()>([this, fraco = RefFraca<Endereco>(dados)] {
                   const Ref<Endereco> preenchido = fraco.Alvo();
                   if (const auto logradouro = m_Logradouros->PorCodigo(preenchido->CodLogradouro())) {
                       preenchido->DefineDescricao(
                           logradouro->Descricao(preenchido->Numero(), preenchido->Complemento()));
                   }
               }));
    }
}
