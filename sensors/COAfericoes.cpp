#include "sensors/COAfericoes.h"

#include "host/HostServices.h"
#include "sensors/clsAfericao.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsSensor.h"
#include "sensors/frmEquipAfericoes.h"
#include "shell/ModGeral.h"

namespace {

enum ColunaLista : std::int32_t { ColTipo = 1, ColNumero, ColMarca, ColVerificacao, ColVencimento, ColChave };

} // namespace

TabelaColunas COAfericoes::Colunas() const
try {
    return {{},
            {"Tipo", 1200, "", 0},
            {"Número", 1260, "", 0},
            {"Certif./Decl.Conf.", 1800, "", 0},
            {"Dt.Verificação", 1650, "data", 0},
            {"Dt.Vencimento", 1650, "data", 0},
            {"Chave", 0, "", 0}};
} catch (...) {
    PassaFalha(" < COAfericoes.Colunas (Property Get)");
}

bool COAfericoes::Carrega(const Ref<clsSensor> &cSensor, const Ref<IztList> &oLista, bool bReadOnly)
try {
    m_Sensor = cSensor;
    Prepara(oLista, bReadOnly);
    return CarregaAfericoes();
} catch (...) {
    PassaFalha(" < COAfericoes.Carrega");
}

bool COAfericoes::CarregaAfericoes()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    m_ZtList->Limpa(std::nullopt);
    Ref<clsListaAfericoes> afericoes = m_Sensor->ListaAfericoes();
    TabelaTexto tabela(ColChave);
    const std::int32_t total = afericoes->Count();
    for (std::int32_t posicao = 1; posicao <= total; ++posicao) {
        Ref<clsAfericao> afericao = afericoes->Item(posicao);
        if (afericao->Ativo) {
            const std::int32_t linha = tabela.AdicionaLinha();
            tabela.Celula(ColTipo, linha) = afericao->TipoAfer == 2 ? "Decl.Conf." : "Aferição";
            tabela.Celula(ColNumero, linha) = afericao->Numero;
            tabela.Celula(ColMarca, linha) = afericao->Marca;
            tabela.Celula(ColVerificacao, linha) = Format(afericao->DataVerificacao, "dd/mm/yyyy");
            tabela.Celula(ColVencimento, linha) = Format(afericao->DataVencimento, "dd/mm/yyyy");
            tabela.Celula(ColChave, linha) = afericao->Chave();
        }
    }
    if (tabela.Linhas() > 0) {
        m_ZtList->CarregaItens(tabela);
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return true;
} catch (...) {
    PassaFalha(" < COAfericoes.CarregaAfericoes");
}

void COAfericoes::Novo()
try {
    Ref<clsAfericao> afericao = ::Novo<clsAfericao>();
    afericao->DefineSensor(m_Sensor);
    if (FormCompartilhado<frmEquipAfericoes>()->CarregaInclusao(afericao)) {
        m_Sensor->ListaAfericoes()->AddAfericao(afericao);
        m_Sensor->Alterado = true;
        m_Alterado.dispara();
        CarregaAfericoes();
    }
} catch (...) {
    PassaFalha(" < COAfericoes.Novo");
}

void COAfericoes::Editar()
try {
    Ref<clsAfericao> afericao = AfericaoDaLinha(m_ZtList->ItemAtual());
    if (FormCompartilhado<frmEquipAfericoes>()->CarregaEdicao(afericao)) {
        m_Sensor->Alterado = true;
        m_Alterado.dispara();
        CarregaAfericoes();
    }
} catch (...) {
    PassaFalha(" < COAfericoes.Editar");
}

void COAfericoes::Detalhes()
try {
    Ref<clsAfericao> afericao = AfericaoDaLinha(m_ZtList->ItemAtual());
    ::Novo<frmEquipAfericoes>()->CarregaDetalhes(afericao);
} catch (...) {
    PassaFalha(" < COAfericoes.Detalhes");
}

bool COAfericoes::Excluir(std::int32_t lLinha)
try {
    if (!Plataforma()->PerguntaSimNao("Confirma a exclusão desta aferição?", "Atenção", false)) {
        return false;
    }
    Ref<clsAfericao> afericao = AfericaoDaLinha(lLinha);
    if (afericao->NroIntAfericao > 0) {
        afericao->Ativo = false;
        afericao->Alterado = true;
    } else {
        m_Sensor->ListaAfericoes()->Remove(afericao->Chave());
    }
    m_Sensor->Alterado = true;
    m_Alterado.dispara();
    return true;
} catch (...) {
    PassaFalha(" < COAfericoes.Excluir");
}

Ref<clsAfericao> COAfericoes::AfericaoDaLinha(std::int32_t lLinha)
{
    return m_Sensor->ListaAfericoes()->Item(m_ZtList->Celula(lLinha, "Chave"));
}
