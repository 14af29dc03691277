#include "tests/fuzz/Alvo.h"

#include "equipment/clsEquipto.h"
#include "host/Conversoes.h"
#include "host/LimiteDifED.h"
#include "shell/ModGeral.h"
#include "shell/clsListaParametros.h"
#include "tests/fuzz/Octetos.h"
#include "tests/fuzz/Propriedade.h"
#include "tests/fuzz/SessaoFuzz.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// The records from remote records of any contents, and back; the lists against plain vectors.

namespace {

template <class T> struct EhLista : std::false_type {
};
template <class T> struct EhLista<ListaDe<T>> : std::true_type {
};

// Small numbers and flags as well as any.
template <class T> T Numero(Octetos &octetos)
{
    return octetos.Sim() ? static_cast<T>(octetos.Ate(3)) : static_cast<T>(octetos.Longo());
}

// A remote record with about three in four of its plain members written.
template <class R> Ref<R> Sorteado(Octetos &octetos)
{
    auto ED = Novo<R>();
    ED->CadaMembro([&]<class T>(std::string_view, Campo<T> &campo) {
        if constexpr (!EhLista<T>::value) {
            if (octetos.Ate(3) == 0) {
                return;
            }
            if constexpr (std::is_same_v<T, std::string>) {
                campo = octetos.Texto(5);
            } else if constexpr (std::is_same_v<T, double>) {
                campo = octetos.Sim() ? Numero<std::int32_t>(octetos) : octetos.Real();
            } else if constexpr (std::is_same_v<T, Data>) {
                campo = Data{octetos.Sim() ? Numero<std::int32_t>(octetos) : octetos.Real()};
            } else {
                campo = Numero<T>(octetos);
            }
        }
    });
    return ED;
}

Ref<SensorED> SensorSorteado(Octetos &octetos)
{
    Ref<SensorED> ED = Sorteado<SensorED>(octetos);
    if (octetos.Sim()) {
        ED->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
        for (int quantas = octetos.Ate(3); quantas > 0; --quantas) {
            ED->Afericoes.Valor()->Add(Sorteado<AfericaoED>(octetos));
        }
    }
    return ED;
}

Ref<EquiptoED> EquiptoSorteado(Octetos &octetos)
{
    Ref<EquiptoED> ED = Sorteado<EquiptoED>(octetos);
    if (octetos.Ate(3) > 0) { // dates that the message service can show, and others
        ED->DataTrans = octetos.Sim() ? 0 : 20260000 + octetos.Ate(12) * 100 + octetos.Ate(28);
    }
    if (octetos.Ate(3) > 0) {
        ED->Sensores = Novo<Colecao<Ref<SensorED>>>();
        for (int quantos = octetos.Ate(3); quantos > 0; --quantos) {
            ED->Sensores.Valor()->Add(SensorSorteado(octetos));
        }
    }
    return ED;
}

// The member travelled with the value, or was left out.
template <class T> void ExigeCampo(const Campo<T> &campo, const T &valor, bool vai, std::string_view nome)
{
    Exige(campo.Escrito() == vai, vai ? "a member travels" : "a member does not travel", nome);
    if constexpr (std::is_same_v<T, double>) {
        Exige(!vai || campo.Valor() == valor || (std::isnan(valor) && std::isnan(campo.Valor())), "a member", nome);
    } else if constexpr (std::is_same_v<T, Data>) {
        Exige(!vai || campo.Valor() == valor || (std::isnan(valor.Valor) && std::isnan(campo.Valor().Valor)),
              "a member", nome);
    } else {
        Exige(!vai || campo.Valor() == valor, "a member", nome);
    }
}

constexpr std::uint8_t Um(bool valor)
{
    return valor ? 1 : 2;
}

// A record whose members that are no lists are all written, with what was received, but for those that do not travel.
template <class R> Ref<R> Inteiro(const R &recebido, const std::vector<std::string_view> &fora)
{
    auto inteiro = Novo<R>();
    const auto membro = [&]<class T>(const Membro<R, T> &qual) {
        if constexpr (!EhLista<T>::value) {
            if (std::ranges::count(fora, qual.Nome) == 0) {
                (*inteiro).*qual.Onde = (recebido.*qual.Onde).Valor();
            }
        }
    };
    std::apply([&](const auto &...qual) { (membro(qual), ...); }, R::Membros());
    return inteiro;
}

// The members that are no lists have travelled as expected.
template <class R> void ExigeMembros(const R &enviado, const R &esperado)
{
    const auto confere = [&]<class T>(const Membro<R, T> &qual) {
        if constexpr (!EhLista<T>::value) {
            const Campo<T> &campo = esperado.*qual.Onde;
            ExigeCampo(enviado.*qual.Onde, campo.Valor(), campo.Escrito(), qual.Nome);
        }
    };
    std::apply([&](const auto &...qual) { (confere(qual), ...); }, R::Membros());
}

constexpr std::string_view Se(bool fica, std::string_view nome)
{
    return fica ? nome : std::string_view();
}

// What is sent of a calibration that was received.
void ExigeAfericao(const AfericaoED &enviada, const AfericaoED &recebida)
{
    const auto esperada = Inteiro(recebida, {Se(!(recebida.NroIntAfericao > 0), "NroIntAfericao")});
    esperada->Ativo = Um(recebida.Ativo != 2);
    ExigeMembros(enviada, *esperada);
}

// What is sent of a sensor that was received, apart from its calibrations.
void ExigeSensor(const SensorED &enviado, const SensorED &recebido)
{
    std::vector<std::string_view> fora{Se(recebido.NroIntSensor <= 0, "NroIntSensor"),
                                       Se(recebido.SentidoVia.Valor().empty(), "SentidoVia")};
    if (recebido.CodLograd <= 0) { // no address
        fora.insert(fora.end(), {"CodLograd", "EndCep", "EndNro", "EndCompl", "EndDescr"});
    }
    const auto esperado = Inteiro(recebido, fora);
    esperado->Ativo = Um(recebido.Ativo != 2);
    ExigeMembros(enviado, *esperado);
}

void ExigeEquipto(const EquiptoED &enviado, const EquiptoED &recebido)
{
    const auto esperado = Inteiro(
        recebido, {"ClienteTrans", "OperadorTrans", "DataTrans", "HoraTrans",
                   Se(recebido.NroIntEquip <= 0, "NroIntEquip"), Se(recebido.SetorInc.Valor().empty(), "SetorInc"),
                   Se(recebido.TipoAgente == 2, "VelocPermitida"), Se(recebido.NroIntRejLimDif <= 0, "NroIntRejLimDif"),
                   Se(recebido.txtObsNotif.Valor().empty(), "txtObsNotif")});
    esperado->TemImagemEntrelacada = Um(recebido.TemImagemEntrelacada == 1);
    esperado->TemLimiteDif = Um(recebido.TemLimiteDif == 1);
    esperado->TemPerfilMag = Um(recebido.TemPerfilMag == 1);
    esperado->Ativo = Um(recebido.Ativo != 2);
    ExigeMembros(enviado, *esperado);
    Exige(!enviado.ListaLimiteDif.Escrito() && !enviado.ListaDiaEspecifico.Escrito(), "limits do not travel");
}

template <class T> std::int32_t Quantos(const Campo<ListaDe<T>> &lista)
{
    return lista.Valor().Nada() ? 0 : lista.Valor()->Count();
}

// Marks some sensors and calibrations as changed; exactly these are sent, in their order.
void ExigeAlterados(Octetos &octetos, clsEquipto &equipto, const EquiptoED &recebido)
{
    const Ref<clsListaSensores> sensores = equipto.ListaSensores();
    Exige(sensores->Count() == Quantos(recebido.Sensores), "every sensor is read");
    std::vector<std::pair<std::int32_t, std::vector<std::int32_t>>> alterados;
    for (std::int32_t i = 1; i <= sensores->Count(); ++i) {
        const Ref<clsSensor> sensor = sensores->Item(i);
        Exige(!sensor->Alterado && sensor->Chave() == "S" + std::to_string(i), "a sensor as it is read");
        Exige(sensor->Equipto().Ponteiro() == &equipto, "the sensor's equipment");
        const Ref<SensorED> sensorED = recebido.Sensores.Valor()->Item(i);
        const Ref<clsListaAfericoes> afericoes = sensor->ListaAfericoes();
        Exige(afericoes->Count() == Quantos(sensorED->Afericoes), "every calibration is read");
        std::vector<std::int32_t> quais;
        for (std::int32_t j = 1; j <= afericoes->Count(); ++j) {
            Exige(!afericoes->Item(j)->Alterado && afericoes->Item(j)->Chave() == "A" + std::to_string(j),
                  "a calibration as it is read");
            Exige(afericoes->Item(j)->Sensor() == sensor, "the calibration's sensor");
            if (octetos.Sim()) {
                afericoes->Item(j)->Alterado = true;
                quais.push_back(j);
            }
        }
        if (octetos.Ate(3) > 0) {
            sensor->Alterado = true;
            alterados.emplace_back(i, quais);
        }
    }
    const Ref<EquiptoED> enviado = equipto.ToEquiptoED();
    ExigeEquipto(*enviado, recebido);
    if (recebido.NroIntEquip <= 0) {
        alterados.clear();
    }
    Exige(enviado->Sensores.Escrito() == !alterados.empty(), "sensors travel when one was changed");
    Exige(Quantos(enviado->Sensores) == static_cast<std::int32_t>(alterados.size()), "the changed sensors travel");
    for (std::size_t i = 0; i < alterados.size(); ++i) {
        const auto &[qual, quais] = alterados[i];
        const Ref<SensorED> sensorED = enviado->Sensores.Valor()->Item(static_cast<std::int32_t>(i) + 1);
        const Ref<SensorED> original = recebido.Sensores.Valor()->Item(qual);
        ExigeSensor(*sensorED, *original);
        Exige(sensorED->Afericoes.Escrito() == !quais.empty(), "calibrations travel when one was changed");
        Exige(Quantos(sensorED->Afericoes) == static_cast<std::int32_t>(quais.size()), "the changed ones travel");
        for (std::size_t j = 0; j < quais.size(); ++j) {
            ExigeAfericao(*sensorED->Afericoes.Valor()->Item(static_cast<std::int32_t>(j) + 1),
                          *original->Afericoes.Valor()->Item(quais[j]));
        }
    }
}

void Equipamento(Octetos &octetos)
{
    const SessaoFuzz sessao;
    const Ref<EquiptoED> recebido = EquiptoSorteado(octetos);
    const bool nada = recebido->Sensores.Escrito() && octetos.Ate(15) == 15;
    if (nada) {
        recebido->Sensores.Valor()->Add(nullptr);
    }
    // The text of the operator and of the date come first and have faults of their own.
    std::int32_t esperada = NumeroDaFalha([&] { CStr(recebido->OperadorTrans); });
    if (esperada == 0) {
        esperada = NumeroDaFalha([&] { goMensagem()->FormataData(recebido->DataTrans, 0); });
    }
    if (esperada == 0 && nada) {
        esperada = NumeroFalha::ObjetoNaoDefinido;
    }
    auto equipto = Novo<clsEquipto>();
    equipto->Alterado = true;
    ExigeFalha(esperada, "fault of CarregaED", {}, [&] { equipto->CarregaED(recebido); });
    if (esperada != 0) {
        return;
    }
    Exige(!equipto->Alterado && equipto->ClienteTrans() == recebido->ClienteTrans.Valor(), "what CarregaED sets");
    ExigeAlterados(octetos, *equipto, *recebido);

    // What is sent reads the same again.
    const Ref<EquiptoED> enviado = equipto->ToEquiptoED();
    auto outro = Novo<clsEquipto>();
    outro->CarregaED(enviado);
    ExigeEquipto(*outro->ToEquiptoED(), *recebido);
    equipto->Finaliza();
    equipto->Finaliza();
}

// A list of sensors against a vector of keys and numbers.
void Sensores(Octetos &octetos)
{
    const SessaoFuzz sessao;
    auto equipto = Novo<clsEquipto>();
    const Ref<clsListaSensores> lista = equipto->ListaSensores();
    struct Linha {
        std::string Chave;
        std::int16_t Numero;
        std::string Marcas;
    };
    std::vector<Linha> modelo;
    int contador = 0;
    std::int16_t numero = 0;
    const auto conta = [](const Ref<clsSensor> &sensor) {
        std::string marcas;
        for (std::int32_t i = 1; i <= sensor->ListaAfericoes()->Count(); ++i) {
            marcas +=
                sensor->ListaAfericoes()->Item(i)->Marca + (sensor->ListaAfericoes()->Item(i)->Alterado ? "!" : ",");
        }
        return marcas;
    };
    for (int passo = 0; passo < 40 && !octetos.Acabou(); ++passo) {
        const std::int32_t posicao = octetos.Ate(7);
        const bool existe = posicao >= 1 && posicao <= static_cast<std::int32_t>(modelo.size());
        const auto onde = modelo.begin() + (existe ? posicao - 1 : 0);
        switch (octetos.Ate(7)) {
        case 0: {
            const Ref<clsSensor> novo = lista->Add(++numero, "L");
            modelo.push_back({"S" + std::to_string(++contador), numero, ""});
            Exige(novo->Ativo && !novo->Alterado, "a new sensor");
            break;
        }
        case 1: {
            const Ref<SensorED> ED = SensorSorteado(octetos);
            const Ref<clsSensor> novo = lista->AddSensorED(ED);
            modelo.push_back({"S" + std::to_string(++contador), ED->NroSensor, conta(novo)});
            break;
        }
        case 2:
            ExigeFalha(existe ? 0 : 9, "fault of Remove by position", {}, [&] { lista->Remove(posicao); });
            if (existe) {
                modelo.erase(onde);
            }
            break;
        case 3: {
            const std::string chave = "s" + std::to_string(posicao);
            const auto achado = std::ranges::find(modelo, "S" + std::to_string(posicao), &Linha::Chave);
            ExigeFalha(achado == modelo.end() ? 5 : 0, "fault of Remove by key", chave, [&] { lista->Remove(chave); });
            if (achado != modelo.end()) {
                modelo.erase(achado);
            }
            break;
        }
        case 4: // a clone, edited and confirmed or dropped
            if (existe) {
                const Ref<clsSensor> sensor = lista->Item(posicao);
                const Ref<clsSensor> clone = sensor->getClone();
                Exige(!clone->Alterado && clone->Chave() == onde->Chave && conta(clone) == onde->Marcas, "a clone");
                const Ref<clsAfericao> nova =
                    clone->ListaAfericoes()->Add("1", std::to_string(octetos.Ate(99)), {}, {}, 0);
                nova->Alterado = octetos.Sim();
                Exige(conta(sensor) == onde->Marcas, "the clone's calibrations are its own");
                if (octetos.Sim()) {
                    sensor->Atualiza(clone);
                    onde->Marcas = conta(clone);
                    Exige(sensor->ListaAfericoes()->Item(1)->Chave() == "A1", "the keys restart");
                }
            }
            break;
        case 5: // a copy into the list
            if (existe) {
                const Ref<clsSensor> copia = lista->AddSensor(lista->Item(posicao));
                Linha linha = *onde;
                linha.Chave = "S" + std::to_string(++contador);
                Exige(copia->Chave() == linha.Chave, "a copy's key");
                modelo.push_back(linha);
            }
            break;
        case 6:
            if (octetos.Ate(7) == 0) {
                lista->Clear();
                modelo.clear();
                contador = 0;
            }
            break;
        default:
            if (existe && octetos.Sim()) {
                const Ref<clsSensor> sensor = lista->Item(posicao);
                const std::int32_t quantas = sensor->ListaAfericoes()->Count();
                const std::int32_t qual = octetos.Ate(3);
                ExigeFalha(qual >= 1 && qual <= quantas ? 0 : 9, "fault of Remove of a calibration", {},
                           [&] { sensor->ListaAfericoes()->Remove(qual); });
                onde->Marcas = conta(sensor);
            }
            break;
        }
        Exige(lista->Count() == static_cast<std::int32_t>(modelo.size()), "Count");
        for (std::size_t i = 0; i < modelo.size(); ++i) {
            const Ref<clsSensor> sensor = lista->Item(static_cast<std::int32_t>(i) + 1);
            Exige(sensor->Chave() == modelo[i].Chave && sensor->NroSensor == modelo[i].Numero, "a sensor in its place");
            Exige(conta(sensor) == modelo[i].Marcas, "a sensor's calibrations");
            Exige(lista->Item(modelo[i].Chave) == sensor, "a sensor by its key");
            Exige(sensor->Equipto() == equipto, "a sensor's equipment");
        }
    }
    lista->Finaliza();
    Exige(NumeroDaFalha([&] { lista->Count(); }) == 91, "fault of Count at the end");
    lista->Clear();
}

// The list of parameters against a vector; keys ignore case, Existe does not.
void Parametros(Octetos &octetos)
{
    clsListaParametros lista;
    std::vector<std::pair<std::string, std::string>> modelo;
    constexpr std::string_view Nomes[] = {"NroIntEquip", "NROINTEQUIP", "Tipo", "tipo", "", "É", "é", "x"};
    constexpr int Chaves[] = {0, 0, 1, 1, 2, 3, 3, 4}; // the same for names that are one key
    const auto chaveDe = [&](const std::string &nome) {
        return Chaves[std::ranges::find(Nomes, std::string_view(nome)) - std::begin(Nomes)];
    };
    for (int passo = 0; passo < 40 && !octetos.Acabou(); ++passo) {
        const std::string nome(Nomes[octetos.Ate(7)]);
        const auto achado =
            std::ranges::find(modelo, chaveDe(nome), [&](const auto &par) { return chaveDe(par.first); });
        const bool existe = achado != modelo.end();
        switch (octetos.Ate(3)) {
        case 0:
        case 1: {
            const std::string valor = octetos.Texto(4);
            ExigeFalha(existe ? 457 : 0, "fault of Add", nome, [&] { lista.Add(nome, valor); });
            if (!existe) {
                modelo.emplace_back(nome, valor);
            }
            break;
        }
        case 2:
            ExigeFalha(existe ? 0 : 5, "fault of Remove", nome, [&] { lista.Remove(nome); });
            if (existe) {
                modelo.erase(achado);
            }
            break;
        default: {
            std::string valor;
            ExigeFalha(existe ? 0 : 5, "fault of Item", nome, [&] { valor = lista.Item(nome)->Valor; });
            Exige(!existe || valor == achado->second, "a value", nome);
            Exige(lista.Existe(nome) == (existe && achado->first == nome), "Existe", nome);
            break;
        }
        }
        Exige(lista.Count() == static_cast<std::int32_t>(modelo.size()), "Count of the parameters");
    }
}

// Any remote record: its copy has the same members written, and is another object all through.
template <class R> void Copia(const Ref<R> &ED)
{
    const Ref<R> copia = ComoTipo<R>(ED->Copia());
    std::string texto;
    const std::int32_t falha = NumeroDaFalha([&] { texto = ED->Texto(); });
    Exige(falha == 0 || falha == NumeroFalha::Estouro, "fault of a record's text");
    std::string outro;
    Exige(NumeroDaFalha([&] { outro = copia->Texto(); }) == falha && outro == texto, "a copy's text", texto);
    std::vector<bool> escritos;
    ED->CadaMembro([&](std::string_view, const auto &campo) { escritos.push_back(campo.Escrito()); });
    std::size_t membro = 0;
    copia->CadaMembro([&](std::string_view nome, const auto &campo) {
        Exige(campo.Escrito() == escritos[membro++], "a copy's member", nome);
    });
}

void Copias(Octetos &octetos)
{
    switch (octetos.Ate(3)) {
    case 0: {
        const Ref<EquiptoED> ED = EquiptoSorteado(octetos);
        ED->ListaLimiteDif = Novo<Colecao<Ref<LimiteDifED>>>();
        ED->ListaLimiteDif.Valor()->Add(Sorteado<LimiteDifED>(octetos));
        Copia(ED);
        const Ref<EquiptoED> copia = ComoTipo<EquiptoED>(ED->Copia());
        Exige(copia->ListaLimiteDif.Valor()->Item(1) != ED->ListaLimiteDif.Valor()->Item(1), "a copy has its own rows");
        break;
    }
    case 1:
        Copia(Sorteado<LimiteDifED>(octetos));
        break;
    case 2:
        Copia(Sorteado<DiaEspecificoED>(octetos));
        break;
    default:
        Copia(SensorSorteado(octetos));
        break;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *dados, std::size_t tamanho)
{
    return Despacha(dados, tamanho, {Equipamento, Equipamento, Sensores, Sensores, Parametros, Copias});
}
