#include "sensors/clsSensor.h"

#include "equipment/clsEquipto.h"
#include "host/Correspondencia.h"
#include "host/Indicador.h"

namespace {

// All but Ativo, which is read by a rule of its own.
constexpr std::tuple Campos{Par{&SensorED::NroIntSensor, &clsSensor::NroIntSensor, Escreve::SeHouver},
                            Par{&SensorED::NroSensor, &clsSensor::NroSensor},
                            Par{&SensorED::LocalInfr, &clsSensor::LocalInfr},
                            Par{&SensorED::SentidoVia, &clsSensor::SentidoVia, Escreve::SeHouver}};

// The structured address travels whole or not at all.
constexpr std::tuple CamposDoEndereco{
    Par{&SensorED::CodLograd, &clsSensor::CodLograd}, Par{&SensorED::EndCep, &clsSensor::EndCep},
    Par{&SensorED::EndNro, &clsSensor::EndNro}, Par{&SensorED::EndCompl, &clsSensor::EndCompl},
    Par{&SensorED::EndDescr, &clsSensor::EndDescr}};

} // namespace

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

void clsSensor::DefineDados(const SensorED &ed)
{
    LeCampos<Campos>(*this, ed);
    LeCampos<CamposDoEndereco>(*this, ed);
    Ativo = ed.Ativo != Indicador::Nao;
}

Ref<SensorED> clsSensor::ToSensorED()
try {
    auto ED = Novo<SensorED>();
    SensorED &ed = *ED;
    EscreveCampos<Campos>(*this, ed);
    if (CodLograd > 0) {
        EscreveCampos<CamposDoEndereco>(*this, ed);
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
    clone->DefineDados(*this);
    clone->ListaAfericoes()->AddAll(ListaAfericoes());
    return clone;
} catch (...) {
    PassaFalha(" < clsSensor.getClone");
}

void clsSensor::Atualiza(const Ref<clsSensor> &cSensor)
try {
    Alterado = cSensor->Alterado;
    static_cast<LocalDoSensor &>(*this) = *cSensor;
    ListaAfericoes()->Clear();
    ListaAfericoes()->AddAll(cSensor->ListaAfericoes());
} catch (...) {
    PassaFalha(" < clsSensor.Atualiza");
}
