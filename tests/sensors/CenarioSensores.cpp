#include "tests/sensors/CenarioSensores.h"

#include "host/Conversoes.h"

#include <utility>

void CenarioSensores::SetUp()
{
    HostTeste::SetUp();
    LogaGeral();
    equipto = Novo<clsEquipto>();
    equipto->NroIntEquip = 10;
    equipto->Codigo = "EQ-10";
    equipto->TipoEquip = "R";
    equipto->CodMunic = 8801;
}

void CenarioSensores::TearDown()
{
    equipto = nullptr;
    HostTeste::TearDown();
}

Ref<clsSensor> CenarioSensores::PoeSensor(std::int32_t nroInt, std::int16_t numero, const std::string &local)
{
    Ref<clsSensor> sensor = equipto->ListaSensores()->Add(numero, local);
    sensor->NroIntSensor = nroInt;
    return sensor;
}

Ref<clsAfericao> CenarioSensores::PoeAfericao(const Ref<clsSensor> &sensor, double nroInt,
                                              const std::string &verificacao, const std::string &vencimento)
{
    Ref<clsAfericao> afericao = sensor->ListaAfericoes()->Add("1234", "99", Dia(verificacao), Dia(vencimento), 500);
    afericao->NroIntAfericao = nroInt;
    afericao->TipoAfer = 1;
    return afericao;
}

void CenarioSensores::NaJanela(const std::string &classe, std::function<void(Pessoa &)> gestos)
{
    Ref<IPlataforma> tela = host->Tela;
    host->AoMostrarModal(classe, [tela, gestos = std::move(gestos)](const Ref<IForm> &form) {
        Pessoa pessoa(form, tela);
        gestos(pessoa);
        if (form->Visible()) {
            FAZ(pessoa, Clica("cmdCancelar"));
        }
    });
}

void CenarioSensores::PreencheAfericao(Pessoa &p, const std::string &numero, const std::string &verificacao,
                                       const std::string &vencimento)
{
    FAZ(p, Preenche("txtNroINMETRO", numero));
    FAZ(p, Preenche("txtDtVerifINMETRO", verificacao));
    FAZ(p, Preenche("txtDtVencINMETRO", vencimento));
}

void CenarioSensores::EnviaDocumento(Pessoa &p)
{
    const std::string arquivo = "C:\\DOC\\enviado.pdf";
    host->Tela->Arquivos.Poe(arquivo, {'%', 'P', 'D', 'F'});
    host->EscolheArquivo(arquivo);
    FAZ(p, Clica("cmdProcurar"));
    FAZ(p, Clica("cmdUpload"));
}

Ref<IForm> CenarioSensores::Aberta(const std::string &classe)
{
    const auto abertas = host->Tela->FormsAbertos(classe);
    EXPECT_EQ(abertas.size(), 1U) << classe;
    return abertas.empty() ? nullptr : abertas.front();
}

std::set<std::string> CenarioSensores::RodapesAoChamar(const std::string &classe, const std::function<void()> &acao)
{
    std::set<std::string> rodapes;
    host->ObservaChamadas([&] {
        for (const auto &form : host->Tela->FormsAbertos(classe)) {
            const Pessoa pessoa(form);
            rodapes.insert(Caption(pessoa, "cmdCancelar") + (Visivel(pessoa, "cmdOK") ? " OK" : ""));
        }
    });
    acao();
    host->ObservaChamadas({});
    return rodapes;
}

Data Dia(const std::string &texto)
{
    return CDate(texto);
}

namespace {

Ref<IControle> Exige(const Pessoa &pessoa, const std::string &nome)
{
    Ref<IControle> controle = pessoa.Acha(nome);
    EXPECT_TRUE(controle) << nome;
    return controle;
}

} // namespace

std::string Caption(const Pessoa &pessoa, const std::string &nome)
{
    return Exige(pessoa, nome)->Caption();
}

std::string Texto(const Pessoa &pessoa, const std::string &nome)
{
    if (auto campo = pessoa.Acha<ITextBox>(nome)) {
        return campo->Text();
    }
    if (auto campo = pessoa.Acha<IztMask>(nome)) {
        return campo->Text();
    }
    if (auto campo = pessoa.Acha<IztData>(nome)) {
        return campo->Text();
    }
    if (auto combo = pessoa.Acha<IztCombo>(nome)) {
        return combo->Valor();
    }
    ADD_FAILURE() << nome << " has no text";
    return {};
}

Textos Mostrado(const Pessoa &pessoa, const Textos &nomes)
{
    Textos mostrado;
    for (const std::string &nome : nomes) {
        const bool campo = nome.starts_with("txt") || nome.starts_with("cbo");
        mostrado.push_back(campo ? Texto(pessoa, nome) : Caption(pessoa, nome));
    }
    return mostrado;
}

bool Habilitado(const Pessoa &pessoa, const std::string &nome)
{
    return Exige(pessoa, nome)->Enabled();
}

bool Visivel(const Pessoa &pessoa, const std::string &nome)
{
    return Exige(pessoa, nome)->Visible();
}

namespace {

Textos Aqueles(const Pessoa &pessoa, const Textos &nomes, bool (*como)(const Pessoa &, const std::string &))
{
    Textos aqueles;
    for (const std::string &nome : nomes) {
        if (como(pessoa, nome)) {
            aqueles.push_back(nome);
        }
    }
    return aqueles;
}

} // namespace

Textos Habilitados(const Pessoa &pessoa, const Textos &nomes)
{
    return Aqueles(pessoa, nomes, Habilitado);
}

Textos Visiveis(const Pessoa &pessoa, const Textos &nomes)
{
    return Aqueles(pessoa, nomes, Visivel);
}
