#include "sensors/clsListaAfericoes.h"

#include "host/Conversoes.h"
#include "host/Deposito.h"
#include "host/Indicador.h"
#include "sensors/ChaveDeLista.h"
#include "sensors/clsSensor.h"

#include <algorithm>

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
    return m_Colecao->Item(Posicao(Index));
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Item (Property Get)");
}

template <class... Origem> const Ref<clsAfericao> &clsListaAfericoes::Acrescenta(const Origem &...origem)
try {
    m_Contador = CInt(m_Contador + 1);
    return m_Colecao->AddCriado([&] { return Deposito<clsAfericao>::Novo(m_Sensor, m_Contador, origem...); });
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Add");
}

Ref<clsAfericao> clsListaAfericoes::Add(const std::string &sNumero, const std::string &sMarca, Data dtVerif,
                                        Data dtVenc, double dNroCertif)
{
    return Acrescenta(sNumero, sMarca, dtVerif, dtVenc, dNroCertif);
}

Ref<clsAfericao> clsListaAfericoes::AddAfericaoED(const Ref<AfericaoED> &cAfericaoED)
{
    return AcrescentaED(cAfericaoED);
}

Ref<clsAfericao> clsListaAfericoes::AddAfericao(const Ref<clsAfericao> &cAfericao)
{
    return AcrescentaCopia(cAfericao);
}

void clsListaAfericoes::AddAll(const Ref<clsListaAfericoes> &cListaAfericoes)
try {
    const std::int32_t quantas = cListaAfericoes->Count();
    if (m_Colecao) {
        m_Colecao->Reserva(quantas);
    }
    for (std::int32_t posicao = 1; posicao <= quantas; ++posicao) {
        AcrescentaCopia(cListaAfericoes->m_Colecao->Item(posicao));
    }
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAll");
}

void clsListaAfericoes::AddAllED(const Colecao<Ref<AfericaoED>> &afericoes)
{
    const std::int32_t quantas = afericoes.Count();
    if (m_Colecao) {
        m_Colecao->Reserva(quantas);
    }
    for (std::int32_t posicao = 1; posicao <= quantas; ++posicao) {
        AcrescentaED(afericoes.Item(posicao));
    }
}

void clsListaAfericoes::Remove(std::int32_t Index)
try {
    Retira(Index);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Remove");
}

void clsListaAfericoes::Remove(const std::string &Index)
try {
    Retira(Posicao(Index));
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Remove");
}

void clsListaAfericoes::Clear()
try {
    m_Contador = 0;
    if (m_Colecao) {
        m_Colecao->RemoveTodos();
    }
} catch (...) {
    PassaFalha(" < clsListaAfericoes.Clear");
}

void clsListaAfericoes::Retira(std::int32_t posicao)
{
    m_Colecao->Item(posicao)->Finaliza();
    m_Colecao->Remove(posicao);
}

// The numbers grow along the list, so they say between which positions one of them can be; when nothing was removed
// between the first and the last, that is one position.
std::int32_t clsListaAfericoes::Posicao(const std::string &chave) const
{
    const Colecao<Ref<clsAfericao>> &colecao = *m_Colecao;
    if (const std::int16_t numero = NumeroDaChave('A', chave); numero > 0 && colecao.Count() > 0) {
        const auto numeroEm = [&](std::int32_t posicao) { return colecao.Item(posicao)->NumeroChave(); };
        std::int32_t de = std::max(1, colecao.Count() - (numeroEm(colecao.Count()) - numero));
        std::int32_t ate = std::min(colecao.Count(), 1 + (numero - numeroEm(1)));
        while (de < ate) {
            const std::int32_t meio = de + (ate - de) / 2;
            if (numeroEm(meio) < numero) {
                de = meio + 1;
            } else {
                ate = meio;
            }
        }
        if (de == ate && numeroEm(de) == numero) {
            return de;
        }
    }
    throw Falha(NumeroFalha::ArgumentoInvalido);
}

const Ref<clsAfericao> &clsListaAfericoes::AcrescentaED(const Ref<AfericaoED> &ed)
try {
    return Acrescenta(*ed);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAfericaoED");
}

const Ref<clsAfericao> &clsListaAfericoes::AcrescentaCopia(const Ref<clsAfericao> &origem)
try {
    return Acrescenta(*origem);
} catch (...) {
    PassaFalha(" < clsListaAfericoes.AddAfericao");
}
