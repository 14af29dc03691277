#pragma once

#include "sensors/clsAfericao.h"
#include "sensors/clsSensor.h"
#include "tests/support/FalhaLancada.h"
#include "tests/support/MemoriaEscassa.h"

#include <cstdint>
#include <string>
#include <vector>

using Textos = std::vector<std::string>;

// All that a record holds besides its owner: "S1{900, 3, ...} inativo alterado".
std::string Retrato(const clsSensor &sensor);
std::string Retrato(const clsAfericao &afericao);
// Of all records of a list.
template <class Lista> Textos Retratos(const Lista &lista)
{
    Textos retratos;
    for (std::int32_t posicao = 1; posicao <= lista.Count(); ++posicao) {
        retratos.push_back(Retrato(*lista.Item(posicao)));
    }
    return retratos;
}

// A sensor with a value in each field, the same as it travels, but inactive, and the fields in its portrait.
Ref<clsSensor> SensorCompleto();
Ref<SensorED> SensorCompletoED();
const std::string CamposDoSensor =
    "{900, 3, Av. São João, 1500, sentido centro, 4711, 1310100, 1500, Km 2, Av. São João, C}";
// A calibration as it travels, inactive.
Ref<AfericaoED> AfericaoCompletaED();
const std::string CamposDaAfericao = "{77, 12345678, 00012345678901, 01/03/2025, 28/02/2026, 555, 2, 123/15}";

// One calibration more, of the year 2025, and its fields in the portrait.
Ref<clsAfericao> Acrescenta(const Ref<clsListaAfericoes> &lista, const std::string &numero);
std::string CamposDe(const std::string &numero);

// Runs an operation once for every request of memory in it, refusing that one, until it is left in peace; each time on
// what `prepara` makes. Faults must be those for lack of memory and end with the tail. `confere` is told after each
// time whether a request was refused, and all memory is given back.
template <class Prepara, class Operacao, class Confere>
void ComCadaRecusa(const std::string &cauda, Prepara &&prepara, Operacao &&operacao, Confere &&confere)
{
    const std::int64_t antes = BlocosOcupados();
    bool recusou = true;
    std::int64_t n = 0;
    while (recusou) {
        ASSERT_LT(++n, 1000);
        auto preparado = prepara();
        {
            MemoriaEscassa escassa(n);
            try {
                operacao(preparado);
            } catch (const Falha &falha) {
                EXPECT_TRUE(FalhaIgual(falha, 7, "*" + cauda));
            }
            recusou = escassa.Recusou();
        }
        confere(preparado, recusou);
    }
    EXPECT_GT(n, 2);
    EXPECT_EQ(BlocosOcupados(), antes);
}
