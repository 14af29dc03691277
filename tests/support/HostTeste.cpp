#include "tests/support/HostTeste.h"

#include "shell/ModGeral.h"

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
