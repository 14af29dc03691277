#include "tests/sensors/RegistrosCompletos.h"

#include "host/Conversoes.h"

namespace {

std::string Estado(bool ativo, bool alterado)
{
    return std::string(ativo ? "" : " inativo") + (alterado ? " alterado" : "");
}

std::string EntreChaves(const Textos &valores)
{
    std::string texto;
    for (const std::string &valor : valores) {
        texto += (texto.empty() ? "{" : ", ") + valor;
    }
    return texto + "}";
}

} // namespace

std::string Retrato(const clsSensor &sensor)
{
    return sensor.Chave() +
           EntreChaves({CStr(sensor.NroIntSensor), CStr(sensor.NroSensor), sensor.LocalInfr, CStr(sensor.CodLograd),
                        CStr(sensor.EndCep), CStr(sensor.EndNro), sensor.EndCompl, sensor.EndDescr,
                        sensor.SentidoVia}) +
           Estado(sensor.Ativo, sensor.Alterado);
}

std::string Retrato(const clsAfericao &afericao)
{
    return afericao.Chave() +
           EntreChaves({CStr(afericao.NroIntAfericao), afericao.Numero, afericao.Marca, CStr(afericao.DataVerificacao),
                        CStr(afericao.DataVencimento), CStr(afericao.NroIntImgCertif), CStr(afericao.TipoAfer),
                        afericao.PortDimel}) +
           Estado(afericao.Ativo, afericao.Alterado);
}

Ref<clsSensor> SensorCompleto()
{
    auto sensor = Novo<clsSensor>();
    sensor->NroIntSensor = 900;
    sensor->NroSensor = 3;
    sensor->LocalInfr = "Av. São João, 1500, sentido centro";
    sensor->CodLograd = 4711;
    sensor->EndCep = 1310100;
    sensor->EndNro = 1500;
    sensor->EndCompl = "Km 2";
    sensor->EndDescr = "Av. São João";
    sensor->SentidoVia = "C";
    return sensor;
}

Ref<SensorED> SensorCompletoED()
{
    auto ED = Novo<SensorED>();
    ED->NroIntSensor = 900;
    ED->NroSensor = 3;
    ED->LocalInfr = "Av. São João, 1500, sentido centro";
    ED->CodLograd = 4711;
    ED->EndCep = 1310100;
    ED->EndNro = 1500;
    ED->EndCompl = "Km 2";
    ED->EndDescr = "Av. São João";
    ED->SentidoVia = "C";
    ED->Ativo = 2;
    return ED;
}

Ref<AfericaoED> AfericaoCompletaED()
{
    auto ED = Novo<AfericaoED>();
    ED->NroIntAfericao = 77;
    ED->Numero = "12345678";
    ED->Marca = "00012345678901";
    ED->DataVerificacao = DataDe(1, 3, 2025);
    ED->DataVencimento = DataDe(28, 2, 2026);
    ED->Ativo = 2;
    ED->NroIntImgCertif = 555;
    ED->TipoAfer = 2;
    ED->PortDimel = "123/15";
    return ED;
}

Ref<clsAfericao> Acrescenta(const Ref<clsListaAfericoes> &lista, const std::string &numero)
{
    return lista->Add(numero, "M" + numero, DataDe(1, 1, 2025), DataDe(31, 12, 2025), 10);
}

std::string CamposDe(const std::string &numero)
{
    return "{0, " + numero + ", M" + numero + ", 01/01/2025, 31/12/2025, 10, 0, }";
}
