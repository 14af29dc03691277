#include "services/Conferidor.h"
#include "services/LayoutED.h"
#include "services/LogradouroED.h"
#include "services/RegistrosAdministracao.h"
#include "tests/mortes/Cenario.h"
#include "tests/services/RegistroDeTeste.h"

#include <google/protobuf/descriptor.h>
#include <registro.pb.h>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <set>
#include <string>

using namespace mortes;
using namespace mesa;

namespace {

using Sentido = Ponte::Sentido;

const std::string Senha = "tigela vidro moinho ";

Ref<UsuarioED> SoUsuario(std::int32_t numero)
{
    return Com(Novo<UsuarioED>(), &UsuarioED::Numero, numero, &UsuarioED::Versao, 1);
}

// One operator, whose connections are cut on the way to the server, and the server's on the way to the engine; and
// another one next to him, who makes what he then changes.
class Cortes : public testing::Test {
  protected:
    Cortes()
        : m_Cenario({.Clientes = 2, .ComReserva = false, .Duravel = false}),
          m_Cortado(m_Cenario.SessaoPor(m_Cenario.PonteDoCliente(0).Porta(), 0)),
          m_Outro(m_Cenario.Sessao(1, 1)),
          m_Direta(Cenario::Direto(m_Cenario.Primario()))
    {
    }

    std::int64_t Conta(const std::string &sql) { return std::stoll(m_Direta.Pergunta("SELECT " + sql).at(0).at(0)); }

    // By the other one; what is answered.
    Valor Antes(const std::string &metodo, Ref<Objeto> pedido, const std::string &classe = "EquiptoRN") const
    {
        Valor retorno;
        std::string recusa;
        EXPECT_TRUE(m_Outro->Executa(classe, metodo, pedido, retorno, recusa)) << metodo << ": " << recusa;
        return retorno;
    }
    // As it was just included.
    Ref<EquiptoED> Equipamento(int n) const
    {
        return Antes("inclui", EquipamentoDe("E" + std::to_string(n))).Como<EquiptoED>();
    }
    template <class R> static Ref<R> Lido(const Ref<R> &registro, std::int32_t versao = 1)
    {
        registro->VersaoLida = versao;
        return registro;
    }
    Ref<EquiptoED> Limites(int n) const { return ListaDeLimites({LimiteDe(Equipamento(n)->NroIntEquip, 1, 0, 2359)}); }
    Ref<DiaEspecificoED> Dia(int n) const { return DiaDe(Equipamento(n)->NroIntEquip, DataDe(25, 12, 2026), 0, 2359); }
    std::int32_t DiaGravado(int n)
    {
        Antes("adicionaDiaEspecifico", Dia(n));
        return static_cast<std::int32_t>(Conta("MAX(NroInt) FROM DIA"));
    }
    static Ref<UsuarioED> Usuario(int n)
    {
        auto usuario = Novo<UsuarioED>();
        usuario->Usuario = "pessoa" + std::to_string(n);
        usuario->NomePessoa = "Pessoa " + std::to_string(n);
        usuario->CodCliente = 1;
        usuario->Senha = Senha + "1";
        return usuario;
    }
    Ref<UsuarioED> UsuarioGravado(int n) const
    {
        return SoUsuario(Antes("incluiUsuario", Usuario(n), "AdministracaoRN").Como<UsuarioED>()->Numero);
    }
    static Ref<ClienteED> ClienteNovo(int n)
    {
        auto cliente = Com(Novo<ClienteED>(), &ClienteED::CodCliente, 100 + n, &ClienteED::NomeCliente,
                           "Autoridade " + std::to_string(n));
        return Com(cliente, &ClienteED::UF, "SC");
    }
    static Ref<LogradouroED> Rua(int n)
    {
        auto rua = Com(Novo<LogradouroED>(), &LogradouroED::CodMunic, 4314902, &LogradouroED::NomeLograd,
                       "Rua " + std::to_string(n));
        return Com(rua, &LogradouroED::Bairro, "Centro", &LogradouroED::Cep, "90010000");
    }
    static Ref<LayoutED> Layout(int n)
    {
        return Com(Novo<LayoutED>(), &LayoutED::NomeLayout, "LAYOUT " + std::to_string(n));
    }

    // What each operation that changes something is asked with, for the n-th time; no two are of the same.
    using Pedido = std::function<Ref<Objeto>(int n)>;
    std::map<std::string, Pedido> Pedidos()
    {
        return {
            {"EquiptoRN.inclui", [](int n) { return EquipamentoDe("E" + std::to_string(n)); }},
            {"EquiptoRN.altera",
             [this](int n) {
                 return Lido(Com(SoNumero(Equipamento(n)->NroIntEquip), &EquiptoED::Descricao, "Mudado"));
             }},
            {"EquiptoRN.desativa", [this](int n) { return Lido(SoNumero(Equipamento(n)->NroIntEquip)); }},
            {"EquiptoRN.reativa",
             [this](int n) {
                 const auto equipamento = Lido(SoNumero(Equipamento(n)->NroIntEquip));
                 Antes("desativa", equipamento);
                 return Lido(SoNumero(equipamento->NroIntEquip), 2);
             }},
            {"EquiptoRN.alteraListaLimitesDif", [this](int n) { return Limites(n); }},
            {"EquiptoRN.desativaLimiteDif",
             [this](int n) {
                 Antes("alteraListaLimitesDif", Limites(n));
                 return Lido(SoLimite(static_cast<std::int32_t>(Conta("MAX(NroInt) FROM LIMITE"))));
             }},
            {"EquiptoRN.adicionaDiaEspecifico", [this](int n) { return Dia(n); }},
            {"EquiptoRN.alteraDiaEspecifico",
             [this](int n) { return Lido(Com(SoDia(DiaGravado(n)), &DiaEspecificoED::HoraFim, 1000)); }},
            {"EquiptoRN.desativaDiaEspecifico", [this](int n) { return Lido(SoDia(DiaGravado(n))); }},
            {"AdministracaoRN.incluiUsuario", [](int n) { return Usuario(n); }},
            {"AdministracaoRN.alteraUsuario",
             [this](int n) { return Com(UsuarioGravado(n), &UsuarioED::NomePessoa, "Outro Nome"); }},
            {"AdministracaoRN.desativaUsuario", [this](int n) { return UsuarioGravado(n); }},
            {"AdministracaoRN.reativaUsuario",
             [this](int n) {
                 const auto usuario = UsuarioGravado(n);
                 Antes("desativaUsuario", usuario, "AdministracaoRN");
                 return Com(usuario, &UsuarioED::Versao, 2);
             }},
            {"AdministracaoRN.desbloqueiaUsuario", [this](int n) { return UsuarioGravado(n); }},
            {"AdministracaoRN.defineSenha",
             [this](int n) { return Com(UsuarioGravado(n), &UsuarioED::Senha, Segredo(Senha + "2")); }},
            {"AdministracaoRN.trocaMinhaSenha",
             [this](int n) {
                 const auto troca = Novo<TrocaSenhaED>();
                 troca->Atual = Segredo(m_Senha);
                 m_Senha = Senha + std::to_string(n);
                 troca->Nova = Segredo(m_Senha);
                 return troca;
             }},
            {"AdministracaoRN.incluiCliente", [](int n) { return ClienteNovo(n); }},
            {"AdministracaoRN.alteraCliente",
             [this](int n) {
                 Antes("incluiCliente", ClienteNovo(n), "AdministracaoRN");
                 return Com(Com(Novo<ClienteED>(), &ClienteED::CodCliente, 100 + n, &ClienteED::Versao, 1),
                            &ClienteED::UF, "PR");
             }},
            {"AdministracaoRN.incluiLogradouro", [](int n) { return Rua(n); }},
            {"AdministracaoRN.alteraLogradouro",
             [this](int n) {
                 const auto rua = Antes("incluiLogradouro", Rua(n), "AdministracaoRN").Como<LogradouroED>();
                 return Com(
                     Com(Novo<LogradouroED>(), &LogradouroED::CodLograd, rua->CodLograd, &LogradouroED::Versao, 1),
                     &LogradouroED::Bairro, "Outro");
             }},
            {"AdministracaoRN.importaLogradouros",
             [](int n) {
                 return Com(Novo<ImportacaoED>(), &ImportacaoED::Conteudo,
                            "4314902;Avenida " + std::to_string(n) + ";Centro;90010000\n");
             }},
            {"AdministracaoRN.incluiLayout", [](int n) { return Layout(n); }},
            {"AdministracaoRN.alteraLayout",
             [this](int n) {
                 const auto layout = Antes("incluiLayout", Layout(n), "AdministracaoRN").Como<LayoutED>();
                 return Com(Com(Novo<LayoutED>(), &LayoutED::NroLayout, layout->NroLayout, &LayoutED::Versao, 1),
                            &LayoutED::Conteudo, "outro");
             }},
            {"Documentos.Guarda", {}},
        };
    }

    // Asked for by the one whose connections are cut.
    void Faz(const std::string &operacao, const Ref<Objeto> &pedido, int n)
    {
        std::string recusa;
        if (pedido.Nada()) {
            double numero = 0;
            EXPECT_TRUE(m_Cortado->GuardaDocumento(Pdf("documento " + std::to_string(n), 3000), numero, recusa))
                << recusa;
            return;
        }
        const std::size_t ponto = operacao.find('.');
        Ref<Objeto> enviado = pedido;
        Valor retorno;
        EXPECT_TRUE(m_Cortado->Executa(operacao.substr(0, ponto), operacao.substr(ponto + 1), enviado, retorno, recusa))
            << operacao << ": " << recusa;
    }

    Cenario m_Cenario;
    Ref<SessaoServico> m_Cortado;
    Ref<SessaoServico> m_Outro;
    Direta m_Direta;
    std::string m_Senha = "senha de operador0";
};

TEST_F(Cortes, InTheMiddleOfEachOperation_OnEachWay_ItIsDoneOnce)
{
    constexpr std::size_t partes = 3; // cut between them
    const std::map<std::string, Pedido> pedidos = Pedidos();
    std::set<std::string> mudam;
    const auto *arquivo = registro::v1::Vazio::descriptor()->file();
    for (int s = 0; s < arquivo->service_count(); ++s) {
        for (int m = 0; m < arquivo->service(s)->method_count(); ++m) {
            const auto *metodo = arquivo->service(s)->method(m);
            if (metodo->options().GetExtension(registro::v1::Muda)) {
                mudam.insert(arquivo->service(s)->name() + "." + metodo->name());
            }
        }
    }
    std::set<std::string> tentadas;
    const std::array pontes{&m_Cenario.PonteDoCliente(0), &m_Cenario.PonteDoPrimario()};
    int n = 0;
    for (const auto &[operacao, pedido] : pedidos) {
        tentadas.insert(operacao);
        std::int64_t entradas = 0; // of the history, when nothing is cut
        const auto faz = [&](const std::function<void()> &arma) {
            const Ref<Objeto> enviado = pedido ? pedido(++n) : Ref<Objeto>();
            n += pedido ? 0 : 1;
            const std::int64_t numeros = Conta("COUNT(*) FROM OPERACAO");
            const std::int64_t antes = Conta("COUNT(*) FROM HISTORICO");
            arma();
            Faz(operacao, enviado, n);
            EXPECT_EQ(Conta("COUNT(*) FROM OPERACAO"), numeros + 1) << operacao;
            return Conta("COUNT(*) FROM HISTORICO") - antes;
        };
        for (Ponte *ponte : pontes) {
            for (const Sentido sentido : {Sentido::Ida, Sentido::Volta}) {
                std::size_t octetos = 0;
                entradas = faz([&] { octetos = ponte->Passaram(sentido); });
                octetos = ponte->Passaram(sentido) - octetos;
                std::size_t cortes = 0;
                for (std::size_t parte = 1; parte < partes; ++parte) {
                    const std::size_t feitos = ponte->Cortes();
                    EXPECT_EQ(faz([&] { ponte->CortaAntesDe(sentido, octetos * parte / partes); }), entradas)
                        << operacao;
                    ponte->NaoCorta();
                    cortes += ponte->Cortes() - feitos;
                }
                EXPECT_GT(cortes, 0U) << operacao << " was not cut";
            }
        }
        EXPECT_GT(entradas, 0) << operacao;
        ASSERT_FALSE(HasFailure()) << operacao;
    }
    EXPECT_EQ(tentadas, mudam);
    EXPECT_TRUE(m_Cenario.Mortos().Nenhum()) << m_Cenario.Mortos().Texto();
    const ResultadoDaConferencia conferencia = Conferidor(m_Cenario.Primario().Texto(Cenario::Banco)).Confere();
    EXPECT_EQ(conferencia.Como, ResultadoDaConferencia::Desfecho::Inteira) << conferencia.Frase;
}

} // namespace
