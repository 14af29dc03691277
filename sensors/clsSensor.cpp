#include "sensors/clsSensor.h"

#include "equipment/clsEquipto.h"
#include "host/Indicador.h"

clsSensor::~clsSensor()
{
    IgnoraErro([&] { Finaliza(); });
}

void clsSensor::Finaliza()
{
    if (m_ListaAfericoes) {
        m_ListaAfericoes->Finaliza();
        m_ListaAfericoes = nullptr;
    }
    m_Equipto = nullptr;
}

Ref<clsEquipto> clsSensor::Equipto() const
{
    return m_Equipto.Alvo();
}

Ref<clsListaAfericoes> clsSensor::ListaAfericoes()
{
    if (m_ListaAfericoes.Nada()) {
        m_ListaAfericoes = Novo<clsListaAfericoes>();
        m_ListaAfericoes->DefineSensor(Eu(*this));
    }
    return m_ListaAfericoes;
}

Ref<SensorED> clsSensor::ToSensorED()
try {
    auto ED = Novo<SensorED>();
    SensorED &ed = *ED;
    if (NroIntSensor > 0) {
        ed.NroIntSensor = NroIntSensor;
    }
    ed.NroSensor = NroSensor;
    ed.LocalInfr = LocalInfr;
    if (CodLograd > 0) {
        ed.CodLograd = CodLograd;
        ed.EndCep = EndCep;
        ed.EndNro = EndNro;
        ed.EndCompl = EndCompl;
        ed.EndDescr = EndDescr;
    }
    if (!SentidoVia.empty()) {
        ed.SentidoVia = SentidoVia;
    }
    ed.Ativo = Ativo ? Indicador::Sim : Indicador::Nao;

    const Ref<clsListaAfericoes> lista = ListaAfericoes();
    const std::int32_t quantas = lista->Count();
    for (std::int32_t posicao = 1; posicao <= quantas; ++posicao) {
        const Ref<clsAfericao> afericao = lista->Item(posicao);
        if (afericao->Alterado) {
            if (ed.Afericoes.Valor().Nada()) {
                ed.Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
            }
            ed.Afericoes.Valor()->Add(afericao->ToAfericaoED());
        }
    }
    return ED;
} catch (...) {
    PassaFalha(" < clsSensor.ToSensorED");
}

Ref<clsSensor> clsSensor::getClone()
try {
    auto clone = Novo<clsSensor>();
    clone->DefineEquipto(m_Equipto);
    clone->DefineChave(m_Chave);
    clone->NroIntSensor = NroIntSensor;
    clone->NroSensor = NroSensor;
    clone->LocalInfr = LocalInfr;
    clone->CodLograd = CodLograd;
    clone->EndCep = EndCep;
    clone->EndNro = EndNro;
    clone->EndCompl = EndCompl;
    clone->EndDescr = EndDescr;
    clone->SentidoVia = SentidoVia;
    clone->Ativo = Ativo;
    clone->ListaAfericoes()->AddAll(ListaAfericoes());
    return clone;
} catch (...) {
    PassaFalha(" < clsSensor.getClone");
}

void clsSensor::Atualiza(const Ref<clsSensor> &cSensor)
try {
    Alterado = cSensor->Alterado;
    LocalInfr = cSensor->LocalInfr;
    CodLograd = cSensor->CodLograd;
    EndCep = cSensor->EndCep;
    EndNro = cSensor->EndNro;
    EndCompl = cSensor->EndCompl;
    EndDescr = cSensor->EndDescr;
    SentidoVia = cSensor->SentidoVia;
    ListaAfericoes()->Clear();
    ListaAfericoes()->AddAll(cSensor->ListaAfericoes());
} catch (...) {
    PassaFalha(" < clsSensor.Atualiza");
}
