#include "tests/support/Varredura.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "tests/support/HostTeste.h"

#include <gtest/gtest.h>

#include <iostream>

namespace {

std::optional<Falha> FalhaDe(const std::function<void(HostRoteirizado &)> &jornada, HostRoteirizado &host)
{
    try {
        jornada(host);
    } catch (...) {
        return FalhaCorrente();
    }
    return std::nullopt;
}

std::string Descreve(const Falha &falha)
{
    return std::to_string(falha.Numero) + " " + falha.Descricao + " (" + falha.Fonte + ")";
}

} // namespace

std::int32_t Varredura::Roda() const
{
    for (std::int32_t n = 1;; ++n) {
        auto host = Novo<HostRoteirizado>();
        InstalaHost(host);
        Ref<Geral> geral = LogaGeral(*host);
        if (Prepara) {
            Prepara(*host);
        }
        const std::size_t errosAntes = host->Erros().size();
        Chamada.empty() ? host->FalhaNaChamada(n) : host->FalhaEm(Chamada, n);
        const std::optional<Falha> falha = FalhaDe(Jornada, *host);
        const bool falhou = host->FalhasDisparadas() > 0;
        testing::ScopedTrace rastro(__FILE__, __LINE__,
                                    "chamada " + std::to_string(n) + ": " + host->ChamadaQueFalhou());
        host->PerdoaSobras();
        if (falhou) {
            if (Confere) {
                Confere(*host, falha);
            }
            const std::size_t erros = host->Erros().size();
            if (const auto outra = FalhaDe(Jornada, *host)) {
                ADD_FAILURE() << "a jornada seguinte falhou: " << Descreve(*outra);
            }
            for (std::size_t erro = erros; erro < host->Erros().size(); ++erro) {
                const auto &caixa = host->Erros()[erro];
                ADD_FAILURE() << "a jornada seguinte mostrou um erro: " << caixa.Contexto << ": "
                              << Descreve(Falha(caixa.Numero, caixa.Fonte, caixa.Descricao));
            }
        } else if (falha) {
            ADD_FAILURE() << "a jornada sem falha falhou: " << Descreve(*falha);
        } else if (host->Erros().size() > errosAntes) {
            ADD_FAILURE() << "a jornada sem falha mostrou um erro: " << host->Erros().back().Contexto << ": "
                          << host->Erros().back().Descricao;
        }
        host->Tela->FechaTudo();
        geral = nullptr;
        DescarregaModulo();
        InstalaHost(nullptr);
        for (const std::string &problema : host->VerificaFim()) {
            ADD_FAILURE() << problema;
        }
        if (!falhou) {
            return n - 1;
        }
    }
}

std::int32_t RelataSobrevividas(std::int32_t quantas)
{
    std::cout << "faults survived: " << quantas << '\n';
    return quantas;
}
