#include "sensors/COSensores.h"

#include "equipment/clsEquipto.h"
#include "host/HostServices.h"
#include "sensors/clsListaSensores.h"
#include "sensors/clsSensor.h"
#include "sensors/frmEquipSensores.h"
#include "shell/ModGeral.h"

namespace {

enum ColunaLista : std::int32_t { ColNroSensor = 1, ColEndereco, ColChave };

} // namespace

TabelaColunas COSensores::Colunas() const
try {
    return {{}, {"Nº Sensor", 1005, "", 0}, {"Endereço", 4905, "", 0}, {"Chave", 0, "", 0}};
} catch (...) {
    PassaFalha(" < COSensores.Colunas (Property Get)");
}

bool COSensores::Carrega(const Ref<clsEquipto> &cEquipto, const Ref<IztList> &oLista, bool bReadOnly)
try {
    m_Equipto = cEquipto;
    Prepara(oLista, bReadOnly);
    return CarregaSensores();
} catch (...) {
    PassaFalha(" < COSensores.Carrega");
}

// Only the last sensor may go, so that the numbers stay a run without gaps.
bool COSensores::PodeExcluir(std::int32_t itens) const
{
    return Val(m_ZtList->ColunaAtual(ColNroSensor)) == itens;
}

bool COSensores::CarregaSensores()
try {
    Plataforma()->DefinePonteiro(PonteiroAmpulheta);
    m_ZtList->Limpa(std::nullopt);
    Ref<clsListaSensores> sensores = m_Equipto->ListaSensores();
    TabelaTexto tabela(ColChave);
    const std::int32_t total = sensores->Count();
    for (std::int32_t posicao = 1; posicao <= total; ++posicao) {
        Ref<clsSensor> sensor = sensores->Item(posicao);
        if (sensor->Ativo) {
            const std::int32_t linha = tabela.AdicionaLinha();
            tabela.Celula(ColNroSensor, linha) = CStr(sensor->NroSensor);
            tabela.Celula(ColEndereco, linha) = sensor->LocalInfr;
            tabela.Celula(ColChave, linha) = sensor->Chave();
        }
    }
    if (tabela.Linhas() > 0) {
        m_ZtList->CarregaItens(tabela);
    }
    Plataforma()->DefinePonteiro(PonteiroNormal);
    return true;
} catch (...) {
    PassaFalha(" < COSensores.CarregaSensores");
}

void COSensores::Novo()
try {
    Ref<clsSensor> sensor = ::Novo<clsSensor>();
    sensor->DefineEquipto(m_Equipto);
    sensor->NroSensor = CInt(m_ZtList->NroItens() + 1);
    if (FormCompartilhado<frmEquipSensores>()->CarregaInclusao(sensor)) {
        m_Equipto->ListaSensores()->AddSensor(sensor);
        m_Alterado.dispara();
        CarregaSensores();
    }
} catch (...) {
    PassaFalha(" < COSensores.Novo");
}

void COSensores::Editar()
try {
    Ref<clsSensor> sensor = SensorDaLinha(m_ZtList->ItemAtual());
    Ref<clsSensor> clone = sensor->getClone();
    if (FormCompartilhado<frmEquipSensores>()->CarregaEdicao(clone)) {
        sensor->Atualiza(clone);
        m_Alterado.dispara();
        CarregaSensores();
    }
} catch (...) {
    PassaFalha(" < COSensores.Editar");
}

void COSensores::Detalhes()
try {
    Ref<clsSensor> sensor = SensorDaLinha(m_ZtList->ItemAtual());
    ::Novo<frmEquipSensores>()->CarregaDetalhes(sensor);
} catch (...) {
    PassaFalha(" < COSensores.Detalhes");
}

bool COSensores::Excluir(std::int32_t lLinha)
try {
    if (!Plataforma()->PerguntaSimNao("Confirma a exclusão deste sensor?", "Atenção", false)) {
        return false;
    }
    Ref<clsSensor> sensor = SensorDaLinha(lLinha);
    if (sensor->NroIntSensor < 1) {
        m_Equipto->ListaSensores()->Remove(sensor->Chave());
    } else {
        sensor->Ativo = false;
        sensor->Alterado = true;
    }
    m_Alterado.dispara();
    return true;
} catch (...) {
    PassaFalha(" < COSensores.Excluir");
}

Ref<clsSensor> COSensores::SensorDaLinha(std::int32_t lLinha)
{
    return m_Equipto->ListaSensores()->Item(m_ZtList->Celula(lLinha, "Chave"));
}
