#include "sensors/clsListaAfericoes.h"

#include "host/Conversoes.h"
#include "host/Indicador.h"
#include "sensors/ChaveDeLista.h"
#include "sensors/clsSensor.h"

void clsListaAfericoes::Finaliza()
{
    m_Sensor = nullptr;
    Clear();
    m_Colecao = nullptr;
}

std::int32_t clsListaAfericoes::Count() const
{
    return m_Colecao->Count();
}

Ref<clsAfericao> clsListaAfericoes::Item(std::int32_t Index) const
try {
    return m_Colecao->Item(Index);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Item (Property Get)");
}

Ref<clsAfericao> clsListaAfericoes::Item(const std::string &Index) const
try {
    return m_Colecao->Item(Index);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Item (Property Get)");
}

Ref<clsAfericao> clsListaAfericoes::Add(const std::string &sNumero, const std::string &sMarca, Data dtVerif,
                                        Data dtVenc, double dNroCertif)
try {
    m_Contador = CInt(m_Contador + 1);
    auto nova = Novo<clsAfericao>();
    clsAfericao &afericao = *nova;
    afericao.DefineSensor(m_Sensor);
    afericao.DefineChave(ChaveDeLista('A', m_Contador));
    afericao.Numero = sNumero;
    afericao.Marca = sMarca;
    afericao.DataVerificacao = dtVerif;
    afericao.DataVencimento = dtVenc;
    afericao.NroIntImgCertif = dNroCertif;
    m_Colecao->Add(nova, afericao.Chave());
    return nova;
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Add");
}

Ref<clsAfericao> clsListaAfericoes::AddAfericaoED(const Ref<AfericaoED> &cAfericaoED)
try {
    const AfericaoED &ed = *cAfericaoED;
    auto nova = Add(ed.Numero, ed.Marca, ed.DataVerificacao, ed.DataVencimento, ed.NroIntImgCertif);
    clsAfericao &afericao = *nova;
    afericao.NroIntAfericao = ed.NroIntAfericao;
    afericao.TipoAfer = ed.TipoAfer;
    afericao.PortDimel = ed.PortDimel;
    afericao.Ativo = ed.Ativo != Indicador::Nao;
    return nova;
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAfericaoED");
}

Ref<clsAfericao> clsListaAfericoes::AddAfericao(const Ref<clsAfericao> &cAfericao)
try {
    const clsAfericao &origem = *cAfericao;
    auto nova = Add(origem.Numero, origem.Marca, origem.DataVerificacao, origem.DataVencimento, origem.NroIntImgCertif);
    clsAfericao &afericao = *nova;
    afericao.NroIntAfericao = origem.NroIntAfericao;
    afericao.Ativo = origem.Ativo;
    afericao.TipoAfer = origem.TipoAfer;
    afericao.PortDimel = origem.PortDimel;
    afericao.Alterado = origem.Alterado;
    return nova;
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAfericao");
}

void clsListaAfericoes::AddAll(const Ref<clsListaAfericoes> &cListaAfericoes)
try {
    const std::int32_t quantas = cListaAfericoes->Count();
    for (std::int32_t posicao = 1; posicao <= quantas; ++posicao) {
        AddAfericao(cListaAfericoes->Item(posicao));
    }
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAll");
}

void clsListaAfericoes::Remove(std::int32_t Index)
try {
    Retira(Index);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Remove");
}

void clsListaAfericoes::Remove(const std::string &Index)
try {
    Retira(Index);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Remove");
}

void clsListaAfericoes::Clear()
try {
    m_Contador = 0;
    if (m_Colecao) {
        const std::int32_t quantas = m_Colecao->Count();
        for (std::int32_t vez = 1; vez <= quantas; ++vez) {
            m_Colecao->Remove(1);
        }
    }
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Clear");
}

template <class Indice> void clsListaAfericoes::Retira(const Indice &indice)
{
    m_Colecao->Item(indice)->Finaliza();
    m_Colecao->Remove(indice);
}
