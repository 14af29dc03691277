#include "sensors/clsListaSensores.h"

#include "equipment/clsEquipto.h"
#include "host/Conversoes.h"
#include "sensors/ChaveDeLista.h"

clsListaSensores::~clsListaSensores()
{
    IgnoraErro([&] { Finaliza(); });
}

void clsListaSensores::Finaliza()
{
    Clear();
    m_Colecao = nullptr;
    m_Equipto = nullptr;
}

std::int32_t clsListaSensores::Count() const
{
    return m_Colecao->Count();
}

Ref<clsSensor> clsListaSensores::Item(std::int32_t Index) const
try {
    return m_Colecao->Item(Index);
} catch (...) {
    PassaFalha(" < clsListaSensores.Item (Property Get)");
}

Ref<clsSensor> clsListaSensores::Item(const std::string &Index) const
try {
    return m_Colecao->Item(Index);
} catch (...) {
    PassaFalha(" < clsListaSensores.Item (Property Get)");
}

Ref<clsSensor> clsListaSensores::Add(std::int16_t iNroSensor, const std::string &sLocalInfr)
try {
    m_Contador = CInt(m_Contador + 1);
    auto novo = Novo<clsSensor>();
    novo->DefineEquipto(m_Equipto);
    novo->DefineChave(ChaveDeLista('S', m_Contador));
    novo->NroSensor = iNroSensor;
    novo->LocalInfr = sLocalInfr;
    m_Colecao->Add(novo, novo->Chave());
    return novo;
} catch (...) {
    PassaFalha(" < clsListaSensores.Add");
}

Ref<clsSensor> clsListaSensores::AddSensorED(const Ref<SensorED> &cSensorED)
try {
    const SensorED &ed = *cSensorED;
    auto novo = Add(ed.NroSensor, ed.LocalInfr);
    novo->DefineDados(ed);
    if (const ListaDe<AfericaoED> &afericoes = ed.Afericoes) {
        novo->ListaAfericoes()->AddAllED(*afericoes);
    }
    return novo;
} catch (...) {
    PassaFalha(" < clsListaSensores.AddSensorED");
}

Ref<clsSensor> clsListaSensores::AddSensor(const Ref<clsSensor> &cSensor)
try {
    auto copia = Add(cSensor->NroSensor, cSensor->LocalInfr);
    copia->Alterado = cSensor->Alterado;
    copia->DefineDados(*cSensor);
    copia->ListaAfericoes()->AddAll(cSensor->ListaAfericoes());
    return copia;
} catch (...) {
    PassaFalha(" < clsListaSensores.AddSensor");
}

void clsListaSensores::Remove(std::int32_t Index)
try {
    Retira(Index);
} catch (...) {
    PassaFalha(" < clsListaSensores.Remove");
}

void clsListaSensores::Remove(const std::string &Index)
try {
    Retira(Index);
} catch (...) {
    PassaFalha(" < clsListaSensores.Remove");
}

void clsListaSensores::Clear()
try {
    m_Contador = 0;
    if (m_Colecao) {
        const std::int32_t quantos = m_Colecao->Count();
        for (std::int32_t vez = 1; vez <= quantos; ++vez) {
            Remove(1);
        }
    }
} catch (...) {
    PassaFalha(" < clsListaSensores.Clear");
}

template <class Indice> void clsListaSensores::Retira(const Indice &indice)
{
    m_Colecao->Item(indice)->Finaliza();
    m_Colecao->Remove(indice);
}
