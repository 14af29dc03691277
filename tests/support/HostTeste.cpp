#include "tests/support/HostTeste.h"

#include "shell/ModGeral.h"

void HostTeste::SetUp()
{
    m_AvisosVistos = 0;
    m_ErrosVistos = 0;
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

std::vector<std::string> HostTeste::Avisos()
{
    std::vector<std::string> textos;
    for (; m_AvisosVistos < host->Avisos().size(); ++m_AvisosVistos) {
        textos.push_back(host->Avisos()[m_AvisosVistos].Texto);
    }
    return textos;
}

std::vector<std::string> HostTeste::Erros()
{
    std::vector<std::string> textos;
    const auto &erros = host->Erros();
    for (; m_ErrosVistos < erros.size(); ++m_ErrosVistos) {
        const auto &erro = erros[m_ErrosVistos];
        textos.push_back(erro.Contexto + ": " + std::to_string(erro.Numero) + " (" + erro.Fonte + ")");
    }
    return textos;
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
