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

TabelaColunas COSensores::Colunas()
try {
    return {{}, {"Nº Sensor", 1005, "", 0}, {"Endereço", 4905, "", 0}, {"Chave", 0, "", 0}};
} catch (...) {
    PassaFalha(" < COSensores.Colunas (Property Get)");
}

bool COSensores::Carrega(const Ref<clsEquipto> &cEquipto, const Ref<IztList> &oLista, bool bReadOnly)
try {
    m_Equipto = cEquipto;
    m_ZtList = oLista;
    m_SomenteLeitura = bReadOnly;
    LigaEventos();
    gsubConfigLista(Colunas(), oLista);
    MenuInicial();
    return CarregaSensores();
} catch (...) {
    PassaFalha(" < COSensores.Carrega");
}

void COSensores::LigaEventos()
{
    Desliga();
    if (Ref<IztList> lista = m_ZtList.Alvo()) { // Nothing has no events; configuring it raises the fault
        Liga(lista->GotFocus(), &COSensores::HabilitaMenu, "m_ZtList_GotFocus");
        Liga(lista->ItemClick(), &COSensores::HabilitaMenu, "m_ZtList_ItemClick");
        Liga(lista->AntesDeRemoverItem(), &COSensores::m_ZtList_AntesDeRemoverItem, "m_ZtList_AntesDeRemoverItem");
        Liga(lista->DepoisDeRemoverItem(), &COSensores::m_ZtList_DepoisDeRemoverItem);
        Liga(lista->ItemMenuClicado(), &COSensores::ItemMenuClicado, "ItemMenuClicado");
    }
}

void COSensores::MenuInicial()
try {
    HabilitaMenu();
} catch (...) {
    PassaFalha(" < COSensores.MenuInicial");
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

void COSensores::HabilitaMenu()
try {
    const std::int32_t itens = m_ZtList->NroItens();
    const bool temItens = itens > 0;
    // Only the last sensor may go, so that the numbers stay a run without gaps.
    const bool ehUltimo = Val(m_ZtList->ColunaAtual(ColNroSensor)) == itens;
    const bool altera = !m_SomenteLeitura;
    m_ZtList->ItemMenu("mnuZTLObjDetalhes")->DefineEnabled(temItens);
    m_ZtList->ItemMenu("mnuZTLObjNovo")->DefineEnabled(altera);
    m_ZtList->ItemMenu("mnuZTLObjEditar")->DefineEnabled(altera && temItens);
    m_ZtList->ItemMenu("mnuZTLObjExcluir")->DefineEnabled(altera && ehUltimo && temItens);
} catch (...) {
    PassaFalha(" < COSensores.HabilitaMenu");
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

void COSensores::m_ZtList_AntesDeRemoverItem(std::int32_t &lLinha)
{
    if (!Excluir(lLinha)) {
        lLinha = 0;
    }
}

void COSensores::m_ZtList_DepoisDeRemoverItem()
try {
    HabilitaMenu();
} catch (...) {
    PassaFalha(" < COSensores.m_ZtList_DepoisDeRemoverItem");
}

void COSensores::ItemMenuClicado(std::string sChave)
{
    if (sChave == "mnuZTLObjNovo") {
        Novo();
    } else if (sChave == "mnuZTLObjEditar") {
        Editar();
    } else if (sChave == "mnuZTLObjDetalhes") {
        Detalhes();
    }
}
