#include "tests/support/CenarioDeLista.h"

#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "tests/support/MemoriaEscassa.h"

Textos MenuHabilitado(const Ref<IztList> &lista)
{
    Textos habilitados;
    for (const std::string &item : MenuCheio) {
        if (lista->ItemMenu("mnuZTLObj" + item)->Enabled()) {
            habilitados.push_back(item);
        }
    }
    return habilitados;
}

void EstragaMenu(const Ref<IztList> &lista)
{
    for (const std::string &item : MenuCheio) {
        lista->ItemMenu("mnuZTLObj" + item)->DefineEnabled(item.starts_with('E'));
    }
}

Textos Linha(const Ref<IztList> &lista, std::int32_t linha)
{
    auto controle = ComoTipo<ztList>(lista);
    Textos celulas;
    for (std::int32_t coluna = 1; coluna <= static_cast<std::int32_t>(controle->Colunas().size()); ++coluna) {
        celulas.push_back(controle->TextoCelula(linha, coluna));
    }
    return celulas;
}

Textos Coluna(const Ref<IztList> &lista, std::int32_t coluna)
{
    auto controle = ComoTipo<ztList>(lista);
    Textos celulas;
    for (std::int32_t linha = 1; linha <= controle->NroItens(); ++linha) {
        celulas.push_back(controle->TextoCelula(linha, coluna));
    }
    return celulas;
}

Textos RetratosDaLista(const Ref<IztList> &lista, const std::function<void()> &acao)
{
    Textos retratos;
    auto controle = ComoTipo<ztList>(lista);
    const auto mudou = controle->Mudou().liga([&] {
        const std::string retrato = std::to_string(controle->Colunas().size()) + "/" +
                                    std::to_string(controle->NroItens()) + "/" +
                                    std::to_string(MenuHabilitado(lista).size());
        if (retratos.empty() || retratos.back() != retrato) {
            retratos.push_back(retrato);
        }
    });
    acao();
    return retratos;
}

Conexao FalhaAoMudar(const Ref<IztList> &lista)
{
    return ComoTipo<ztList>(lista)->Mudou().liga([] { throw Falha(70, "Fora", "negado"); });
}

std::set<std::string> FontesSemMemoria(const std::function<void()> &comando)
{
    std::set<std::string> fontes;
    for (std::int64_t n = 1;; ++n) {
        MemoriaEscassa escassa(n);
        try {
            comando();
        } catch (...) {
            const Falha falha = FalhaCorrente();
            EXPECT_EQ(falha.Numero, NumeroFalha::SemMemoria);
            fontes.insert(falha.Fonte);
        }
        if (!escassa.Recusou()) {
            return fontes;
        }
    }
}

void frmComLista::Abre()
{
    Carregar();
    goGeral->FormShow(EsteForm(), false, nullptr);
}

Desenho frmComLista::Desenho() const
{
    return {.Caption = "Lista",
            .Raiz = EmColuna({{.Ajustes = AjustesZtList{}, .Nome = "ztLista"},
                              {.Ajustes = AjustesCommandButton{}, .Nome = "cmdFora"}})};
}
