#pragma once

#include "equipment/clsEquipto.h"
#include "sensors/clsAfericao.h"
#include "sensors/clsListaAfericoes.h"
#include "sensors/clsListaSensores.h"
#include "sensors/clsSensor.h"
#include "shell/ModGeral.h"
#include "tests/support/CenarioDeLista.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// A saved equipment "EQ-10" of municipality 8801, without sensors, in a shell on which the host has logged on.
class CenarioSensores : public HostTeste {
  protected:
    void SetUp() override;
    void TearDown() override;

    Ref<clsSensor> PoeSensor(std::int32_t nroInt, std::int16_t numero, const std::string &local);
    static Ref<clsAfericao> PoeAfericao(const Ref<clsSensor> &sensor, double nroInt, const std::string &verificacao,
                                        const std::string &vencimento);
    // What the person does in the next modal window of the class, before it is cancelled if it is still open.
    void NaJanela(const std::string &classe, std::function<void(Pessoa &)> gestos);
    // Fills a calibration in, and sends it a document.
    void PreencheAfericao(Pessoa &p, const std::string &numero, const std::string &verificacao,
                          const std::string &vencimento);
    void EnviaDocumento(Pessoa &p);
    // The one open window of the class.
    Ref<IForm> Aberta(const std::string &classe);
    // The buttons at the foot of the class's windows as they are at each call of the host while something is done:
    // what cmdCancelar reads, and "OK" while cmdOK shows.
    std::set<std::string> RodapesAoChamar(const std::string &classe, const std::function<void()> &acao);

    Ref<clsEquipto> equipto;
};

// The same with sensor 3, for the forms.
template <class Form, class Registro> class ComForm : public CenarioSensores {
  protected:
    void SetUp() override
    {
        CenarioSensores::SetUp();
        sensor = PoeSensor(103, 3, "Rua Três, 33");
    }
    void TearDown() override
    {
        sensor = nullptr;
        CenarioSensores::TearDown();
    }

    static Ref<Form> Compartilhado() { return FormCompartilhado<Form>(); }
    // What the person does with a record in the form; whether it was confirmed.
    bool Inclui(const Ref<Registro> &novo, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaInclusao(novo);
    }
    bool Edita(const Ref<Registro> &registro, std::function<void(Pessoa &)> gestos)
    {
        NaJanela(Janela, std::move(gestos));
        return Compartilhado()->CarregaEdicao(registro);
    }
    // That a form which cannot be loaded tells so and keeps no record, in any mode.
    void ConfereSemCarga(const std::function<Ref<Registro>()> &faz)
    {
        const auto confere = [&](std::size_t quantos, const std::string &modo, auto carrega) {
            Ref<Registro> registro = faz();
            const RefFraca<Registro> fraca = registro;
            host->FalhaEm("Plataforma.Carrega");
            carrega(std::exchange(registro, nullptr));
            EXPECT_TRUE(MostrouErro(quantos, Janela + "." + modo, 51, "Plataforma.Carrega"));
            EXPECT_TRUE(fraca.Nada()) << modo;
        };
        confere(1, "CarregaInclusao", [](auto r) { EXPECT_FALSE(Compartilhado()->CarregaInclusao(r)); });
        confere(2, "CarregaEdicao", [](auto r) { EXPECT_FALSE(Compartilhado()->CarregaEdicao(r)); });
        confere(3, "CarregaDetalhes", [](auto r) { Compartilhado()->CarregaDetalhes(r); });
    }

    const std::string Janela = std::string(Form().NomeTipo());
    Ref<clsSensor> sensor;
};

// A day as it is typed.
Data Dia(const std::string &texto);

// What a control shows of itself, or several do; the test fails when there is no such control.
std::string Caption(const Pessoa &pessoa, const std::string &nome);
std::string Texto(const Pessoa &pessoa, const std::string &nome);
Textos Mostrado(const Pessoa &pessoa, const Textos &nomes);
bool Habilitado(const Pessoa &pessoa, const std::string &nome);
bool Visivel(const Pessoa &pessoa, const std::string &nome);
// Those of the controls that are enabled, or visible.
Textos Habilitados(const Pessoa &pessoa, const Textos &nomes);
Textos Visiveis(const Pessoa &pessoa, const Textos &nomes);
