#include "tests/support/HostTeste.h"

#include "shell/ModGeral.h"
#include "tests/support/FalhaLancada.h"

void HostTeste::SetUp()
{
    InstalaHost(host);
}

void HostTeste::TearDown()
{
    host->Tela->FechaTudo();
    geral = nullptr;
    DescarregaModulo();
    InstalaHost(nullptr);
    for (const std::string &problema : host->VerificaFim()) {
        ADD_FAILURE() << problema;
    }
}

void HostTeste::LogaGeral()
{
    geral = ::LogaGeral(*host);
}

testing::AssertionResult HostTeste::MostrouErro(std::size_t quantos, const std::string &contexto, std::int32_t numero,
                                                const std::string &fonte)
{
    const auto &erros = host->Erros();
    if (erros.empty() || erros.size() != quantos) {
        return testing::AssertionFailure() << erros.size() << " error boxes";
    }
    const auto &erro = erros.back();
    if (erro.Contexto != contexto) {
        return testing::AssertionFailure() << "the context is " << erro.Contexto;
    }
    return FalhaIgual(Falha(erro.Numero, erro.Fonte, erro.Descricao), numero, fonte);
}

void HostTeste::FalhaEmCada(const std::vector<std::string> &passos, const std::string &cauda,
                            const std::function<void()> &comando)
{
    for (const std::string &passo : passos) {
        SCOPED_TRACE(passo);
        host->FalhaEm(passo, 1, 1004, "Sem rede");
        EXPECT_TRUE(Lanca(1004, passo + cauda, "Sem rede", comando));
    }
}

std::vector<std::string> HostTeste::ErrosInteiros() const
{
    std::vector<std::string> erros;
    for (const DominioRoteirizado::CaixaErro &erro : host->Erros()) {
        erros.push_back(erro.Contexto + "|" + std::to_string(erro.Numero) + "|" + erro.Descricao + "|" + erro.Fonte +
                        "|" + erro.Titulo);
    }
    return erros;
}

Ref<Geral> LogaGeral(HostRoteirizado &host)
{
    auto geral = Novo<Geral>();
    geral->cGlobal = host.cGlobal;
    geral->ObjInterface = host.ObjInterface;
    geral->Parametros(host.FormMDI, host.ActBar, host.Relatorios, host.Ajuda, nullptr, host.oAppEXE);
    geral->ObjInterface = host.ObjInterface; // which Parametros has cleared
    geral->Logon(host.objMTM, host.objSCA, "");
    host.LimpaRegistro();
    return geral;
}
