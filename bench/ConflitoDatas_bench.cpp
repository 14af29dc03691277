#include "bench/Medida.h"
#include "equipment/clsEquipto.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "sensors/frmEquipAfericoes.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"
#include "tests/support/HostRoteirizado.h"
#include "tests/support/HostTeste.h"

#include <utility>
#include <vector>

// Both checks of the dates of a new calibration against all the calibrations of its sensor. They run when the operator
// presses OK, so the form is open, all dates are right and free, and only the document is missing: each press makes
// both checks to the end and leaves the form open. The rest of a press is in the baseline too, which presses OK in a
// form whose sensor has no calibrations and then goes through pairs of dates. It takes somewhat longer than the pairs,
// so that the limit below stands for checks of five times the time of the pairs.

namespace {

constexpr int Apertos = 20;

// Periods of two days, one after the other.
std::pair<Data, Data> Periodo(std::size_t i)
{
    const Data inicio = DataDe(1, 1, 1950).MaisDias(static_cast<std::int32_t>(2 * i));
    return {inicio, inicio.MaisDias(1)};
}

const Data Verificacao = DataDe(1, 3, 2026);
const Data Vencimento = DataDe(31, 3, 2026);

std::function<void()> PeloForm(const Ref<clsSensor> &sensor, const Pessoa &pessoa, std::size_t quantas)
{
    sensor->ListaAfericoes()->Clear();
    for (std::size_t i = 0; i < quantas; ++i) {
        const auto [inicio, fim] = Periodo(i);
        sensor->ListaAfericoes()->Add("1", "2", inicio, fim, 1);
    }
    return [ok = pessoa.Acha<ICommandButton>("cmdOK")] {
        for (int vez = 0; vez < Apertos; ++vez) {
            ok->Click().dispara();
        }
    };
}

std::function<void()> PorPares(const Pessoa &pessoa, std::size_t quantas)
{
    std::vector<std::pair<Data, Data>> periodos;
    for (std::size_t i = 0; i < quantas; ++i) {
        periodos.push_back(Periodo(i));
    }
    return [periodos = std::move(periodos), ok = pessoa.Acha<ICommandButton>("cmdOK")] {
        for (int vez = 0; vez < Apertos; ++vez) {
            ok->Click().dispara();
            bool conflito = false;
            for (const auto &[inicio, fim] : periodos) {
                if (Verificacao <= inicio && inicio <= Vencimento) {
                    conflito = true;
                    break;
                }
            }
            for (const auto &[inicio, fim] : periodos) {
                if (inicio <= Verificacao && Verificacao <= fim) {
                    conflito = true;
                    break;
                }
            }
            Usa(conflito);
        }
    };
}

} // namespace

int main()
{
    Tabela tabela;
    auto host = Novo<HostRoteirizado>();
    InstalaHost(host);
    Ref<Geral> geral = LogaGeral(*host);
    auto equipto = Novo<clsEquipto>();
    Ref<clsSensor> cheio = equipto->ListaSensores()->Add(1, "");
    Ref<clsSensor> vazio = equipto->ListaSensores()->Add(2, "");
    const auto abre = [&](const Ref<clsSensor> &sensor, const std::function<void(const Pessoa &)> &aberto) {
        auto nova = Novo<clsAfericao>();
        nova->DefineSensor(sensor);
        host->AoMostrarModal("frmEquipAfericoes", [&](Pessoa &pessoa) {
            pessoa.Preenche("txtNroINMETRO", "1");
            pessoa.Preenche("txtDtVerifINMETRO", "01/03/2026");
            pessoa.Preenche("txtDtVencINMETRO", "31/03/2026");
            aberto(pessoa);
            pessoa.Clica("cmdCancelar");
        });
        Novo<frmEquipAfericoes>()->CarregaInclusao(nova);
    };
    abre(cheio, [&](const Pessoa &medida) {
        abre(vazio, [&](const Pessoa &referencia) {
            tabela.MedeTempo({"conflict of dates, OK / loop over pairs of dates", 1000,
                              [&](std::size_t quantas) { return PeloForm(cheio, medida, quantas); },
                              [&](std::size_t quantas) { return PorPares(referencia, quantas); }, 2.7, 2});
        });
    });
    geral = nullptr;
    DescarregaModulo();
    InstalaHost(nullptr);
    return tabela.Saida();
}
