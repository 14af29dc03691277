#include "sensors/frmEquipAfericoes.h"

#include "host/Conversoes.h"
#include "tests/sensors/CenarioSensores.h"

#include <array>
#include <optional>
#include <set>

// The periods of one sensor kept apart: every small case, through the form, against the rules said over sets of days.

namespace {

constexpr int Dias = 8;

Data DiaDoMes(int dia)
{
    return DataDe(dia, 3, 2026);
}

std::string TextoDoDia(int dia)
{
    return "0" + std::to_string(dia) + "/03/2026";
}

// A period by its first and last day; the last may come first in a record that somebody else wrote.
struct Periodo {
    int Primeiro;
    int Ultimo;

    std::set<int> DiasDele() const
    {
        std::set<int> dias;
        for (int dia = Primeiro; dia <= Ultimo; ++dia) {
            dias.insert(dia);
        }
        return dias;
    }
};

// What became of a press on OK. Numbers of others are positions in the list, from 0.
struct Desfecho {
    bool DatasRecusadas = false;               // the due date is not behind the verification date
    std::optional<std::size_t> ComecaDentro;   // box: that one starts inside the new period
    std::optional<std::size_t> BoxVerificacao; // box: the new period starts inside that one
    std::optional<std::size_t> Perguntou;      // the same as a question
    std::optional<std::size_t> Encurtou;
    bool FaltouDocumento = false; // all the rules of the dates were content

    bool operator==(const Desfecho &) const = default;
};

// The rules, said over the days that the periods hold.
Desfecho Esperado(Periodo novo, const std::vector<Periodo> &outros, bool inclusao, bool sim)
{
    Desfecho desfecho;
    const std::set<int> dias = novo.DiasDele();
    if (dias.size() < 2) {
        desfecho.DatasRecusadas = true;
        return desfecho;
    }
    for (std::size_t i = 0; i < outros.size(); ++i) {
        if (dias.contains(outros[i].Primeiro)) {
            desfecho.ComecaDentro = i;
            return desfecho;
        }
    }
    for (std::size_t i = 0; i < outros.size(); ++i) {
        if (outros[i].DiasDele().contains(novo.Primeiro)) {
            (inclusao ? desfecho.Perguntou : desfecho.BoxVerificacao) = i;
            if (!inclusao || !sim) {
                return desfecho;
            }
            desfecho.Encurtou = i;
            break;
        }
    }
    desfecho.FaltouDocumento = true;
    return desfecho;
}

class frmEquipAfericoesConflito_test : public ComForm<frmEquipAfericoes, clsAfericao> {
  protected:
    void TearDown() override
    {
        outras.clear();
        ComForm::TearDown();
    }

    // Runs the checks in one inclusion, or in the edition of a listed record, in which only the dates are typed anew.
    // Without a document OK never closes the form.
    void NoForm(bool inclusao, const std::function<void(Pessoa &)> &casos)
    {
        Ref<clsAfericao> registro = Novo<clsAfericao>();
        if (inclusao) {
            registro->DefineSensor(sensor);
        } else {
            registro = PoeAfericao(sensor, 50, "01/03/2026", "08/03/2026");
            registro->NroIntImgCertif = 0;
        }
        const auto gestos = [&](Pessoa &p) {
            FAZ(p, Preenche("txtNroINMETRO", "1"));
            casos(p);
        };
        EXPECT_FALSE(inclusao ? Inclui(registro, gestos) : Edita(registro, gestos));
        EXPECT_FALSE(registro->Alterado);
    }

    void PoeOutras(std::size_t quantas)
    {
        while (outras.size() < quantas) {
            outras.push_back(PoeAfericao(sensor, static_cast<double>(outras.size() + 1), "01/03/2026", "01/03/2026"));
        }
    }
    void Arruma(const std::vector<Periodo> &periodos, bool ativas)
    {
        for (std::size_t i = 0; i < periodos.size(); ++i) {
            outras[i]->DataVerificacao = DiaDoMes(periodos[i].Primeiro);
            outras[i]->DataVencimento = DiaDoMes(periodos[i].Ultimo);
            outras[i]->Ativo = ativas;
            outras[i]->Alterado = false;
        }
    }

    // Presses OK with what is on the screen, answers as told, and finds out what happened. Whatever nobody may touch is
    // checked here.
    Desfecho AoApertarOK(Pessoa &p, Periodo novo, const std::vector<Periodo> &periodos, bool ativas,
                         const std::optional<bool> &resposta)
    {
        Desfecho desfecho;
        if (resposta) {
            const auto &outra = periodos[*Esperado(novo, periodos, true, *resposta).Perguntou];
            host->Responde(
                "Data de verificação do INMETRO (" + TextoDoDia(novo.Primeiro) +
                    ") em conflito com a \r\naferição dos dias " + TextoDoDia(outra.Primeiro) + " e " +
                    TextoDoDia(outra.Ultimo) +
                    ".\r\n\r\nDeseja continuar ?\r\n\r\nOBS: Caso continue, a data de vencimento da aferição "
                    "em conflito será\r\nrecalculada automaticamente (um dia antes da nova data de "
                    "verificação).",
                *resposta);
        }
        const std::size_t avisos = host->Avisos().size();
        const std::size_t caixas = host->Tela->Caixas().size();
        const std::size_t perguntas = host->Tela->Perguntas().size();
        FAZ(p, Clica("cmdOK"));

        const auto qual = [&](const std::string &texto, const std::string &antes, const std::string &entre) {
            std::optional<std::size_t> achada;
            for (std::size_t i = 0; i < periodos.size() && !achada; ++i) {
                if (texto.find(antes + TextoDoDia(periodos[i].Primeiro) + entre + TextoDoDia(periodos[i].Ultimo)) !=
                    std::string::npos) {
                    achada = i;
                }
            }
            EXPECT_TRUE(achada) << texto;
            return achada;
        };
        if (host->Tela->Perguntas().size() > perguntas) {
            EXPECT_EQ(host->Tela->Perguntas().size(), perguntas + 1);
            desfecho.Perguntou = qual(host->Tela->Perguntas().back().Texto, "dos dias ", " e ");
        }
        if (host->Tela->Caixas().size() > caixas) {
            EXPECT_EQ(host->Tela->Caixas().size(), caixas + 1);
            const std::string &texto = host->Tela->Caixas().back().Texto;
            if (texto.starts_with("Período da nova aferição")) {
                desfecho.ComecaDentro = qual(texto, "dos dias ", " a ");
            } else {
                EXPECT_TRUE(texto.starts_with("Data de verificação do INMETRO (" + TextoDoDia(novo.Primeiro) + ")"));
                EXPECT_TRUE(texto.ends_with(".")); // nothing is offered
                desfecho.BoxVerificacao = qual(texto, "dos dias ", " e ");
            }
        }
        if (host->Avisos().size() > avisos) {
            EXPECT_EQ(host->Avisos().size(), avisos + 1);
            const std::string &texto = host->Avisos().back().Texto;
            desfecho.DatasRecusadas = texto == "A data de Vencimento deve ser maior que a data de Verificação!";
            desfecho.FaltouDocumento = texto == "É obrigatório fazer Upload do Documento em PDF!";
        }
        for (std::size_t i = 0; i < periodos.size(); ++i) {
            const clsAfericao &outra = *outras[i];
            EXPECT_EQ(outra.DataVerificacao, DiaDoMes(periodos[i].Primeiro));
            EXPECT_EQ(outra.Ativo, ativas);
            if (outra.Alterado) {
                EXPECT_FALSE(desfecho.Encurtou);
                desfecho.Encurtou = i;
                EXPECT_EQ(outra.DataVencimento, DataDe(novo.Primeiro, 3, 2026).MaisDias(-1));
            } else {
                EXPECT_EQ(outra.DataVencimento, DiaDoMes(periodos[i].Ultimo));
            }
        }
        EXPECT_FALSE(sensor->Alterado);
        host->LimpaRegistro();
        return desfecho;
    }

    // One case, with yes and with no where there is a question.
    void Confere(Pessoa &p, Periodo novo, const std::vector<Periodo> &periodos, bool ativas, bool inclusao)
    {
        const bool pergunta = Esperado(novo, periodos, inclusao, false).Perguntou.has_value();
        for (const bool sim : {false, true}) {
            if (sim && !pergunta) {
                break;
            }
            Arruma(periodos, ativas);
            const Desfecho obtido =
                AoApertarOK(p, novo, periodos, ativas, pergunta ? std::optional(sim) : std::nullopt);
            ASSERT_TRUE(obtido == Esperado(novo, periodos, inclusao, sim))
                << "new " << novo.Primeiro << " to " << novo.Ultimo << ", first other " << periodos[0].Primeiro
                << " to " << periodos[0].Ultimo << (inclusao ? ", inclusion" : ", edition")
                << (ativas ? ", active" : ", inactive") << (sim ? ", yes" : ", no");
            ++conferidos;
        }
    }

    void Digita(Pessoa &p, Periodo novo)
    {
        FAZ(p, Preenche("txtDtVerifINMETRO", TextoDoDia(novo.Primeiro)));
        FAZ(p, Preenche("txtDtVencINMETRO", TextoDoDia(novo.Ultimo)));
    }

    std::vector<Ref<clsAfericao>> outras;
    int conferidos = 0;
};

TEST_F(frmEquipAfericoesConflito_test, OneOther_EveryPairOfPeriods_AsTheDaysSay)
{
    for (const bool inclusao : {true, false}) {
        PoeOutras(1);
        NoForm(inclusao, [&](Pessoa &p) {
            for (int V = 1; V <= Dias; ++V) {
                for (int E = 1; E <= Dias; ++E) {
                    Digita(p, {V, E});
                    for (int v = 1; v <= Dias; ++v) {
                        for (int e = 1; e <= Dias; ++e) {
                            Confere(p, {V, E}, {{v, e}}, true, inclusao);
                            Confere(p, {V, E}, {{v, e}}, false, inclusao);
                        }
                    }
                }
            }
        });
    }
    // 4096 pairs, active and inactive, in both modes; and of the inclusion the cases with a question once more.
    int perguntas = 0;
    for (int V = 1; V <= Dias; ++V) {
        perguntas += (Dias - V) * (V - 1) * (Dias - V + 1); // due dates, first and last days of the old period
    }
    EXPECT_EQ(conferidos, 4 * 4096 + 2 * perguntas);
}

// The record itself is in the list, under its own key, whatever its period.
TEST_F(frmEquipAfericoesConflito_test, OwnKey_EveryPairOfPeriods_NeverInConflictWithItself)
{
    NoForm(false, [&](Pessoa &p) {
        Ref<clsAfericao> registro = sensor->ListaAfericoes()->Item(1);
        for (int V = 1; V < Dias; ++V) {
            for (int E = V + 1; E <= Dias; ++E) {
                Digita(p, {V, E});
                for (int v = 1; v <= Dias; ++v) {
                    for (int e = 1; e <= Dias; ++e) {
                        registro->DataVerificacao = DiaDoMes(v);
                        registro->DataVencimento = DiaDoMes(e);
                        Desfecho aceito;
                        aceito.FaltouDocumento = true;
                        ASSERT_TRUE(AoApertarOK(p, {V, E}, {}, true, std::nullopt) == aceito);
                        ASSERT_EQ(registro->DataVencimento, DiaDoMes(e));
                    }
                }
            }
        }
    });
    EXPECT_TRUE(host->Tela->Caixas().empty());
    EXPECT_TRUE(host->Tela->Perguntas().empty());
}

// Of several that qualify the first in the list is told of or shortened, and the others stay as they are.
TEST_F(frmEquipAfericoesConflito_test, TwoOthers_EveryTripleOfPeriods_FirstOfTheListOnly)
{
    constexpr int Poucos = 5;
    std::vector<Periodo> todos;
    for (int v = 1; v <= Poucos; ++v) {
        for (int e = v; e <= Poucos; ++e) {
            todos.push_back({v, e});
        }
    }
    for (const bool inclusao : {true, false}) {
        PoeOutras(2);
        NoForm(inclusao, [&](Pessoa &p) {
            for (const Periodo &novo : todos) {
                Digita(p, novo);
                for (const Periodo &primeiro : todos) {
                    for (const Periodo &segundo : todos) {
                        Confere(p, novo, {primeiro, segundo}, true, inclusao);
                    }
                }
            }
        });
    }
    EXPECT_GT(conferidos, 2 * 15 * 15 * 15);
}

// Once more by hand, each case with its days.
TEST_F(frmEquipAfericoesConflito_test, Borders_ByHand)
{
    struct Caso {
        Periodo Novo;
        Periodo Outro;
        bool ComecaDentro;
        bool Pergunta;
    };
    const std::array<Caso, 9> casos{{
        {{4, 6}, {2, 4}, false, true},  // begins on the exact due date
        {{5, 6}, {2, 4}, false, false}, // begins on the day after
        {{2, 4}, {4, 8}, true, false},  // ends on the exact verification date
        {{2, 3}, {4, 8}, false, false}, // lies wholly before
        {{2, 7}, {3, 5}, true, false},  // encloses
        {{3, 5}, {2, 7}, false, true},  // is enclosed
        {{3, 5}, {3, 4}, true, false},  // begins on the same day
        {{3, 5}, {2, 3}, false, true},  // the old one is left one day long
        {{3, 8}, {8, 2}, true, false},  // the other's due date plays no part
    }};
    PoeOutras(1);
    NoForm(true, [&](Pessoa &p) {
        for (const Caso &caso : casos) {
            Digita(p, caso.Novo);
            Arruma({caso.Outro}, true);
            const Desfecho obtido =
                AoApertarOK(p, caso.Novo, {caso.Outro}, true, caso.Pergunta ? std::optional(true) : std::nullopt);
            EXPECT_EQ(obtido.ComecaDentro.has_value(), caso.ComecaDentro) << caso.Novo.Primeiro << caso.Outro.Primeiro;
            EXPECT_EQ(obtido.Perguntou.has_value(), caso.Pergunta) << caso.Novo.Primeiro << caso.Outro.Primeiro;
            EXPECT_EQ(obtido.FaltouDocumento, !caso.ComecaDentro) << caso.Novo.Primeiro << caso.Outro.Primeiro;
        }
        EXPECT_EQ(outras[0]->DataVencimento, DiaDoMes(2));
        Arruma({{2, 3}}, true);
        Digita(p, {3, 5});
        AoApertarOK(p, {3, 5}, {{2, 3}}, true, true);
        EXPECT_EQ(outras[0]->DataVerificacao, outras[0]->DataVencimento); // one day long
    });
}

} // namespace
