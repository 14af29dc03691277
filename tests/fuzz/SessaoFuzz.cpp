#include "tests/fuzz/SessaoFuzz.h"

#include "shell/ModGeral.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/support/HostTeste.h"

SessaoFuzz::SessaoFuzz()
{
    InstalaHost(host);
    m_Geral = LogaGeral(*host);
}

SessaoFuzz::~SessaoFuzz()
{
    host->Tela->FechaTudo();
    m_Geral = nullptr;
    DescarregaModulo();
    InstalaHost(nullptr);
    for (const std::string &problema : host->VerificaFim()) {
        Exige(false, "the host has seen no problem", problema);
    }
}
