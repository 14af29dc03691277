#pragma once

#include "controls/ztList.h"
#include "equipment/clsEquipto.h"
#include "sensors/clsAfericao.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "sensors/clsSensor.h"
#include "shell/Formulario.h"
#include "shell/ModGeral.h"
#include "tela/Pessoa.h"
#include "tests/support/HostTeste.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

// A window with one list and a button, in which a list's controller works as on a page of the equipment's form.
class frmComLista : public Formulario {
  public:
    std::string_view NomeTipo() const override { return "frmComLista"; }
    ::Desenho Desenho() const override;
    void Abre();

    Ref<IztList> ztLista;

  protected:
    void LigaControles() override { Toma(ztLista, "ztLista"); }
};

// A saved equipment "EQ-10" of municipality 8801, without sensors, in a shell on which the host has logged on.
class CenarioSensores : public HostTeste {
  protected:
    void SetUp() override;
    void TearDown() override;

    Ref<clsSensor> PoeSensor(std::int32_t nroInt, std::int16_t numero, const std::string &local);
    static Ref<clsAfericao> PoeAfericao(const Ref<clsSensor> &sensor, double nroInt, const std::string &verificacao,
                                        const std::string &vencimento);
    // What the person does in the next modal window of the class.
    void NaJanela(const std::string &classe, std::function<void(Pessoa &)> gestos);
    // The one open window of the class.
    Ref<IForm> Aberta(const std::string &classe);
    // The buttons at the foot of the class's windows as they are at each call of the host while something is done:
    // what cmdCancelar reads, and "OK" while cmdOK shows.
    std::set<std::string> RodapesAoChamar(const std::string &classe, const std::function<void()> &acao);

    Ref<clsEquipto> equipto;
};

using Textos = std::vector<std::string>;

// A day as it is typed.
Data Dia(const std::string &texto);

// What a control shows of itself; the test fails when there is no such control.
std::string Caption(const Pessoa &pessoa, const std::string &nome);
std::string Texto(const Pessoa &pessoa, const std::string &nome);
bool Habilitado(const Pessoa &pessoa, const std::string &nome);
bool Visivel(const Pessoa &pessoa, const std::string &nome);

// The keys of the standard items that are enabled, without their common beginning.
Textos MenuHabilitado(const Ref<IztList> &lista);
// The cells of a row, or of a column.
Textos Linha(const Ref<IztList> &lista, std::int32_t linha);
Textos Coluna(const Ref<IztList> &lista, std::int32_t coluna);

// What the list consists of at each of its notices while something is done, the same only once in a row: its columns,
// its rows and how many standard items are enabled, "3/0/4".
Textos RetratosDaLista(const Ref<IztList> &lista, const std::function<void()> &acao);

// The sources of the faults that a command raises when its first request for memory is refused, then its second, and so
// on up to the first attempt that asks for less. Every fault must be the platform's for lack of memory.
std::set<std::string> FontesSemMemoria(const std::function<void()> &comando);

// A person's action that must work.
#define FAZ(pessoa, gesto) EXPECT_TRUE((pessoa).gesto) << (pessoa).Motivo()
#define NAO_FAZ(pessoa, gesto) EXPECT_FALSE((pessoa).gesto)
