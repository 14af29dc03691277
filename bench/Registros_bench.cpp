#include "bench/Medida.h"
#include "equipment/clsEquipto.h"
#include "host/HostServices.h"
#include "shell/Geral.h"
#include "shell/ModGeral.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// The equipment's tree of records against plain structs in vectors that hold the values that travel, and none of the
// keys, flags and back references of the records.

namespace {

// As much of a host as loading a record needs: its message service, and a name for it.

class Mensagem : public IMensagem {
  public:
    std::string_view NomeTipo() const override { return "Mensagem"; }
    void DefineTitulo(const std::string &) override {}
    std::string FormataData(std::int32_t, std::int16_t) override { return ""; }
    std::string FormataHora(std::int32_t, std::int16_t) override { return ""; }
    void ExibeMensagem(const std::string &, const Ref<IFocavel> &) override {}
    void PreparaDetalhes(const Ref<IForm> &) override {}
    void ExibeErro(const std::string &, std::int32_t, const std::string &, const std::string &,
                   const std::string &) override
    {
    }
    Bytes TextoParaBytes(const std::string &) override { return {}; }
};

class AppEXE : public IoAppEXE {
  public:
    std::string_view NomeTipo() const override { return "AppEXE"; }
    std::string Title() override { return ""; }
    std::string Path() override { return ""; }
    std::string ProductName() override { return ""; }
};

class Relatorios : public IRelatorios {
  public:
    std::string_view NomeTipo() const override { return "Relatorios"; }
    void DefinePathRPT(const std::string &) override {}
    void DefinePathMDB(const std::string &) override {}
    void DefineCurrentRecordSet(const Ref<ICursor> &) override {}
    bool Imprimir(ParametrosRelatorio &) override { return false; }
    bool ImprimirDesigner(ParametrosRelatorio &) override { return false; }
};

class Ajuda : public IAjuda {
  public:
    std::string_view NomeTipo() const override { return "Ajuda"; }
    void TrataAjuda2(const Ref<IAplicacao> &, std::string &) override {}
};

class HostMinimo : public HostServices {
  public:
    std::string_view NomeTipo() const override { return "Host"; }
    Ref<IPlataforma> Plataforma() override { return {}; }
    Ref<IFabricaControles> Controles() override { return {}; }
    Ref<IAMRegistro> CriaAMRegistro() override { return {}; }
    Ref<IAMEditMenu> CriaAMEditMenu() override { return {}; }
    Ref<IRelatorios> CriaRelatorios() override { return {}; }
    Ref<IAjuda> CriaAjuda() override { return {}; }
    Ref<ICFunGen> CriaCFunGen() override { return {}; }
    Ref<IMensagem> CriaMensagem() override { return Novo<Mensagem>(); }
    Ref<IDadosVor> CriaDadosVor() override { return {}; }
    Ref<IDiretorios> CriaDiretorios() override { return {}; }
    Ref<IObjGlobalVor> CriaObjGlobalVor() override { return {}; }
    Ref<IDocumentoPDF> CriaDocumentoPDF() override { return {}; }
};

struct AfericaoPura {
    double NroIntAfericao = 0;
    std::string Numero;
    std::string Marca;
    double DataVerificacao = 0;
    double DataVencimento = 0;
    bool Ativo = true;
    double NroIntImgCertif = 0;
    std::uint8_t TipoAfer = 0;
    std::string PortDimel;
};

struct SensorPuro {
    std::int32_t NroIntSensor = 0;
    std::int16_t NroSensor = 0;
    std::string LocalInfr;
    std::int32_t CodLograd = 0;
    std::int32_t EndCep = 0;
    std::int32_t EndNro = 0;
    std::string EndCompl;
    std::string EndDescr;
    std::string SentidoVia;
    bool Ativo = true;
    std::vector<AfericaoPura> Afericoes;
};

using EquiptoPuro = std::vector<SensorPuro>;

const std::string Numero = "12345678";
const std::string Marca = "00012345678901";
const std::string PortDimel = "123/15";
const std::string LocalInfr = "Av. Sete de Setembro, 1500, sentido centro-bairro, Vila Nova";
const std::string EndCompl = "Km 2";

SensorPuro NovoSensorPuro(std::size_t afericoes)
{
    SensorPuro sensor;
    sensor.NroIntSensor = 900;
    sensor.NroSensor = 1;
    sensor.LocalInfr = LocalInfr;
    sensor.CodLograd = 4711;
    sensor.EndCep = 1310100;
    sensor.EndNro = 1500;
    sensor.EndCompl = EndCompl;
    sensor.Afericoes.reserve(afericoes);
    for (std::size_t i = 0; i < afericoes; ++i) {
        sensor.Afericoes.push_back(
            {1000.0 + static_cast<double>(i), Numero, Marca, 45000, 45365, true, 555, 2, PortDimel});
    }
    return sensor;
}

Ref<SensorED> NovoSensorED(std::size_t afericoes)
{
    auto sensor = Novo<SensorED>();
    sensor->NroIntSensor = 900;
    sensor->NroSensor = 1;
    sensor->LocalInfr = LocalInfr;
    sensor->CodLograd = 4711;
    sensor->EndCep = 1310100;
    sensor->EndNro = 1500;
    sensor->EndCompl = EndCompl;
    sensor->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
    for (std::size_t i = 0; i < afericoes; ++i) {
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = 1000.0 + static_cast<double>(i);
        afericao->Numero = Numero;
        afericao->Marca = Marca;
        afericao->DataVerificacao = Data{45000};
        afericao->DataVencimento = Data{45365};
        afericao->Ativo = 1;
        afericao->NroIntImgCertif = 555;
        afericao->TipoAfer = 2;
        afericao->PortDimel = PortDimel;
        sensor->Afericoes.Valor()->Add(afericao);
    }
    return sensor;
}

// The procedure as it is from its third run on: what it reads has been read, and what it replaces is the result of an
// earlier run, in memory that is used again.
Preparo Aquecido(Preparo preparo)
{
    return [preparo = std::move(preparo)](std::size_t trabalho) {
        auto procedimento = preparo(trabalho);
        procedimento();
        procedimento();
        return procedimento;
    };
}

// Loading a record from one that travelled. What it held before ends.
Preparo CarregaED(std::size_t afericoesPorSensor)
{
    return [afericoesPorSensor](std::size_t sensores) {
        auto ED = Novo<EquiptoED>();
        ED->Sensores = Novo<Colecao<Ref<SensorED>>>();
        for (std::size_t i = 0; i < sensores; ++i) {
            ED->Sensores.Valor()->Add(NovoSensorED(afericoesPorSensor));
        }
        return [ED, equipto = Novo<clsEquipto>()] { equipto->CarregaED(ED); };
    };
}

// A deep copy of the plain structs, which already hold the values that CarregaED reads from the travelled record. It
// takes the place of the copy before, which ends.
Preparo CopiaEquipto(std::size_t afericoesPorSensor)
{
    return [afericoesPorSensor](std::size_t sensores) {
        auto origem = std::make_shared<EquiptoPuro>(sensores, NovoSensorPuro(afericoesPorSensor));
        return [origem, copia = std::make_shared<EquiptoPuro>()] {
            *copia = EquiptoPuro(*origem);
            Usa(*copia);
        };
    };
}

// An edit that is confirmed. The clone of the edit before ends, as do the calibrations listed before.
std::function<void()> EditaSensor(std::size_t afericoes)
{
    auto lista = Novo<clsListaSensores>();
    auto sensor = lista->AddSensorED(NovoSensorED(afericoes));
    auto clone = std::make_shared<Ref<clsSensor>>();
    return [lista, sensor, clone] {
        *clone = sensor->getClone();
        sensor->Atualiza(*clone);
    };
}

// The same with plain structs: a deep copy to work on, and a second one that takes the place of what was listed before.
std::function<void()> EditaSensorPuro(std::size_t afericoes)
{
    auto sensor = std::make_shared<SensorPuro>(NovoSensorPuro(afericoes));
    auto clone = std::make_shared<SensorPuro>();
    return [sensor, clone] {
        *clone = SensorPuro(*sensor);
        *sensor = SensorPuro(*clone);
        Usa(*sensor);
    };
}

} // namespace

int main()
{
    InstalaHost(Novo<HostMinimo>());
    const auto geral = Novo<Geral>();
    geral->Parametros(nullptr, nullptr, Novo<Relatorios>(), Novo<Ajuda>(), nullptr, Novo<AppEXE>());
    goMensagem();

    Tabela tabela;
    tabela.MedeTempo({"CarregaED, 100 calibrations a sensor / copy", 30, Aquecido(CarregaED(100)),
                      Aquecido(CopiaEquipto(100)), 3, 1.5});
    tabela.MedeTempo({"getClone and Atualiza of a sensor / two copies", 3000, Aquecido(EditaSensor),
                      Aquecido(EditaSensorPuro), 2.5, 1.5});
    tabela.MedeMemoria(
        {"records, 100 calibrations a sensor / structs", 100, CarregaED(100), CopiaEquipto(100), 2, 1.2});
    tabela.MedeMemoria(
        {"records, 10000 calibrations a sensor / structs", 1, CarregaED(10'000), CopiaEquipto(10'000), 2, 1.2});
    return tabela.Saida();
}
