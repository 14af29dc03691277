#include "equipment/clsEquipto.h"

#include "shell/ModGeral.h"
#include "tests/support/HostTeste.h"
#include "tests/support/MemoriaEscassa.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Random histories of editing, against plain values: what the window shows after each step, and what travels.

namespace {

// The values that a calibration and a sensor should hold.

struct AfericaoModelo {
    std::string Chave;
    bool Alterado = false;
    double NroInt = 0;
    std::string Numero;
    std::string Marca;
    Data Verificacao;
    Data Vencimento;
    bool Ativo = true;
    double NroImg = 0;
    std::uint8_t Tipo = 0;
    std::string Port;
};

struct SensorModelo {
    std::string Chave;
    bool Alterado = false;
    std::int32_t NroInt = 0;
    std::int16_t Nro = 0;
    std::string Local;
    std::int32_t CodLograd = 0;
    std::int32_t Cep = 0;
    std::int32_t NroEnd = 0;
    std::string Compl;
    std::string Descr;
    std::string Sentido;
    bool Ativo = true;
    std::vector<AfericaoModelo> Afericoes;
    int UltimaChave = 0; // of its calibrations
};

struct ListaModelo {
    std::vector<SensorModelo> Sensores;
    int UltimaChave = 0;
};

void NumeraAfericoes(SensorModelo &sensor)
{
    sensor.UltimaChave = 0;
    for (AfericaoModelo &afericao : sensor.Afericoes) {
        afericao.Chave = "A" + std::to_string(++sensor.UltimaChave);
    }
}

// What the two records show of themselves, equal to the model.

bool Igual(const clsAfericao &afericao, const AfericaoModelo &modelo, const clsSensor &sensor)
{
    return afericao.Sensor().Ponteiro() == &sensor && afericao.Chave() == modelo.Chave &&
           afericao.Alterado == modelo.Alterado && afericao.NroIntAfericao == modelo.NroInt &&
           afericao.Numero == modelo.Numero && afericao.Marca == modelo.Marca &&
           afericao.DataVerificacao == modelo.Verificacao && afericao.DataVencimento == modelo.Vencimento &&
           afericao.Ativo == modelo.Ativo && afericao.NroIntImgCertif == modelo.NroImg &&
           afericao.TipoAfer == modelo.Tipo && afericao.PortDimel == modelo.Port;
}

bool Igual(clsSensor &sensor, const SensorModelo &modelo, const clsEquipto &equipto)
{
    const auto lista = sensor.ListaAfericoes();
    if (sensor.Equipto().Ponteiro() != &equipto || sensor.Chave() != modelo.Chave ||
        sensor.Alterado != modelo.Alterado || sensor.NroIntSensor != modelo.NroInt || sensor.NroSensor != modelo.Nro ||
        sensor.LocalInfr != modelo.Local || sensor.CodLograd != modelo.CodLograd || sensor.EndCep != modelo.Cep ||
        sensor.EndNro != modelo.NroEnd || sensor.EndCompl != modelo.Compl || sensor.EndDescr != modelo.Descr ||
        sensor.SentidoVia != modelo.Sentido || sensor.Ativo != modelo.Ativo ||
        lista->Count() != std::ssize(modelo.Afericoes)) {
        return false;
    }
    std::int32_t posicao = 0;
    return std::ranges::all_of(modelo.Afericoes, [&](const AfericaoModelo &afericao) {
        const auto registro = lista->Item(++posicao);
        return Igual(*registro, afericao, sensor) && lista->Item(afericao.Chave) == registro;
    });
}

bool Igual(clsEquipto &equipto, const ListaModelo &modelo)
{
    const auto lista = equipto.ListaSensores();
    std::int32_t posicao = 0;
    return lista->Count() == std::ssize(modelo.Sensores) &&
           std::ranges::all_of(modelo.Sensores, [&](const SensorModelo &sensor) {
               const auto registro = lista->Item(++posicao);
               return Igual(*registro, sensor, equipto) && lista->Item(sensor.Chave) == registro;
           });
}

// A member of a record sent: written with the value, or, without a value, never written.
template <class T> bool Enviado(const Campo<T> &campo, const std::optional<T> &esperado)
{
    return campo.Escrito() == esperado.has_value() && campo.Valor() == esperado.value_or(T{});
}

template <class T> std::optional<T> Se(bool condicao, T valor)
{
    return condicao ? std::optional<T>(std::move(valor)) : std::nullopt;
}

bool Enviado(const AfericaoED &ED, const AfericaoModelo &modelo)
{
    return Enviado(ED.NroIntAfericao, Se(modelo.NroInt > 0, modelo.NroInt)) &&
           Enviado(ED.Numero, Se(true, modelo.Numero)) && Enviado(ED.Marca, Se(true, modelo.Marca)) &&
           Enviado(ED.DataVerificacao, Se(true, modelo.Verificacao)) &&
           Enviado(ED.DataVencimento, Se(true, modelo.Vencimento)) &&
           Enviado(ED.Ativo, Se<std::uint8_t>(true, modelo.Ativo ? 1 : 2)) &&
           Enviado(ED.NroIntImgCertif, Se(true, modelo.NroImg)) && Enviado(ED.TipoAfer, Se(true, modelo.Tipo)) &&
           Enviado(ED.PortDimel, Se(true, modelo.Port));
}

// The records in a list that travels are exactly those of the model that changed; the list is absent without any.
template <class ED, class Modelo> bool Enviados(const Campo<ListaDe<ED>> &campo, const std::vector<Modelo> &modelos);

bool Enviado(const SensorED &ED, const SensorModelo &modelo)
{
    const bool endereco = modelo.CodLograd > 0;
    return Enviado(ED.NroIntSensor, Se(modelo.NroInt > 0, modelo.NroInt)) &&
           Enviado(ED.NroSensor, Se(true, modelo.Nro)) && Enviado(ED.LocalInfr, Se(true, modelo.Local)) &&
           Enviado(ED.CodLograd, Se(endereco, modelo.CodLograd)) && Enviado(ED.EndCep, Se(endereco, modelo.Cep)) &&
           Enviado(ED.EndNro, Se(endereco, modelo.NroEnd)) && Enviado(ED.EndCompl, Se(endereco, modelo.Compl)) &&
           Enviado(ED.EndDescr, Se(endereco, modelo.Descr)) &&
           Enviado(ED.SentidoVia, Se(!modelo.Sentido.empty(), modelo.Sentido)) &&
           Enviado(ED.Ativo, Se<std::uint8_t>(true, modelo.Ativo ? 1 : 2)) && Enviados(ED.Afericoes, modelo.Afericoes);
}

template <class ED, class Modelo> bool Enviados(const Campo<ListaDe<ED>> &campo, const std::vector<Modelo> &modelos)
{
    std::int32_t posicao = 0;
    for (const Modelo &modelo : modelos) {
        if (modelo.Alterado && (campo.Valor().Nada() || ++posicao > campo.Valor()->Count() ||
                                !Enviado(*campo.Valor()->Item(posicao), modelo))) {
            return false;
        }
    }
    return posicao == 0 ? !campo.Escrito() : campo.Valor()->Count() == posicao;
}

// The service's side: takes in what was sent, and answers what it holds.
class Servico {
  public:
    explicit Servico(bool devolveInativos) : m_DevolveInativos(devolveInativos) {}

    void Recebe(const EquiptoED &ED)
    {
        Guarda(m_Sensores, ED.Sensores, &SensorED::NroIntSensor,
               [this](SensorModelo &sensor, const SensorED &recebido) {
                   Copia(sensor.Nro, recebido.NroSensor);
                   Copia(sensor.Local, recebido.LocalInfr);
                   Copia(sensor.CodLograd, recebido.CodLograd);
                   Copia(sensor.Cep, recebido.EndCep);
                   Copia(sensor.NroEnd, recebido.EndNro);
                   Copia(sensor.Compl, recebido.EndCompl);
                   Copia(sensor.Descr, recebido.EndDescr);
                   Copia(sensor.Sentido, recebido.SentidoVia);
                   sensor.Ativo = recebido.Ativo != 2;
                   Guarda(sensor.Afericoes, recebido.Afericoes, &AfericaoED::NroIntAfericao,
                          [](AfericaoModelo &afericao, const AfericaoED &recebida) {
                              Copia(afericao.Numero, recebida.Numero);
                              Copia(afericao.Marca, recebida.Marca);
                              Copia(afericao.Verificacao, recebida.DataVerificacao);
                              Copia(afericao.Vencimento, recebida.DataVencimento);
                              afericao.Ativo = recebida.Ativo != 2;
                              Copia(afericao.NroImg, recebida.NroIntImgCertif);
                              Copia(afericao.Tipo, recebida.TipoAfer);
                              Copia(afericao.Port, recebida.PortDimel);
                          });
               });
    }

    // What a window shows that has just loaded this.
    ListaModelo Conteudo() const
    {
        ListaModelo lista;
        for (const SensorModelo &guardado : m_Sensores) {
            if (guardado.Ativo || m_DevolveInativos) {
                SensorModelo &sensor = lista.Sensores.emplace_back(guardado);
                sensor.Chave = "S" + std::to_string(++lista.UltimaChave);
                std::erase_if(sensor.Afericoes,
                              [this](const AfericaoModelo &afericao) { return !afericao.Ativo && !m_DevolveInativos; });
                NumeraAfericoes(sensor);
            }
        }
        return lista;
    }

    Ref<EquiptoED> Responde(std::mt19937 &sorte) const
    {
        auto ED = Novo<EquiptoED>();
        ED->NroIntEquip = 12;
        const ListaModelo lista = Conteudo();
        if (!lista.Sensores.empty() || sorte() % 2 == 0) {
            ED->Sensores = Novo<Colecao<Ref<SensorED>>>();
        }
        for (const SensorModelo &sensor : lista.Sensores) {
            auto sensorED = Novo<SensorED>();
            sensorED->NroIntSensor = sensor.NroInt;
            sensorED->NroSensor = sensor.Nro;
            sensorED->LocalInfr = sensor.Local;
            sensorED->CodLograd = sensor.CodLograd;
            sensorED->EndCep = sensor.Cep;
            sensorED->EndNro = sensor.NroEnd;
            sensorED->EndCompl = sensor.Compl;
            sensorED->EndDescr = sensor.Descr;
            sensorED->SentidoVia = sensor.Sentido;
            DefineAtivo(sensorED->Ativo, sensor.Ativo, sorte);
            if (!sensor.Afericoes.empty()) {
                sensorED->Afericoes = Novo<Colecao<Ref<AfericaoED>>>();
            }
            for (const AfericaoModelo &afericao : sensor.Afericoes) {
                auto afericaoED = Novo<AfericaoED>();
                afericaoED->NroIntAfericao = afericao.NroInt;
                afericaoED->Numero = afericao.Numero;
                afericaoED->Marca = afericao.Marca;
                afericaoED->DataVerificacao = afericao.Verificacao;
                afericaoED->DataVencimento = afericao.Vencimento;
                DefineAtivo(afericaoED->Ativo, afericao.Ativo, sorte);
                afericaoED->NroIntImgCertif = afericao.NroImg;
                afericaoED->TipoAfer = afericao.Tipo;
                afericaoED->PortDimel = afericao.Port;
                sensorED->Afericoes.Valor()->Add(afericaoED);
            }
            ED->Sensores.Valor()->Add(sensorED);
        }
        return ED;
    }

  private:
    // An active record may come with its byte unset.
    static void DefineAtivo(Campo<std::uint8_t> &campo, bool ativo, std::mt19937 &sorte)
    {
        if (!ativo) {
            campo = 2;
        } else if (sorte() % 2 == 0) {
            campo = 1;
        }
    }

    template <class T> static void Copia(T &destino, const Campo<T> &campo)
    {
        if (campo.Escrito()) {
            destino = campo;
        }
    }

    // A record without a number is new and gets one; the others are found by theirs.
    template <class ED, class T, class Modelo, class Toma>
    void Guarda(std::vector<Modelo> &guardados, const Campo<ListaDe<ED>> &recebidos, Campo<T> ED::*numero, Toma &&toma)
    {
        for (std::int32_t posicao = 1; recebidos.Escrito() && posicao <= recebidos.Valor()->Count(); ++posicao) {
            const ED &recebido = *recebidos.Valor()->Item(posicao);
            auto achado = guardados.end();
            if ((recebido.*numero).Escrito()) {
                achado = std::ranges::find_if(
                    guardados, [&](const Modelo &guardado) { return guardado.NroInt == (recebido.*numero).Valor(); });
                ASSERT_NE(achado, guardados.end());
            } else {
                achado = guardados.insert(guardados.end(), Modelo{});
                achado->NroInt = ++m_UltimoNumero;
            }
            toma(*achado, recebido);
        }
    }

    bool m_DevolveInativos;
    std::vector<SensorModelo> m_Sensores;
    int m_UltimoNumero = 100;
};

// One history. Each step does to the records what the windows do, and to the model the same in plain values.
class Historia {
  public:
    explicit Historia(unsigned semente) : m_Sorte(semente), m_Servico(semente % 3 == 0) { Recarrega(); }

    // False when the records and the model fell apart.
    bool Vive()
    {
        for (int passos = 1 + Sorteia(24); passos > 0; --passos) {
            Passo();
            if (!m_Inteira || !Igual(*m_Equipto, m_Modelo)) {
                return false;
            }
        }
        Salva(true);
        return m_Inteira && Igual(*m_Equipto, m_Modelo);
    }

    // A last step that runs out of memory somewhere; false when it was over before.
    bool Fraqueja()
    {
        MemoriaEscassa escassa(1 + Sorteia(60));
        IgnoraErro([&] { Passo(); });
        return escassa.Recusou();
    }

    const std::map<std::string, int> &Feitos() const { return m_Feitos; }

  private:
    int Sorteia(int quantos) { return static_cast<int>(m_Sorte() % static_cast<unsigned>(quantos)); }
    bool Moeda() { return Sorteia(2) == 0; }
    std::string Texto(int quantos) { return Sorteia(4) == 0 ? "" : "t" + std::to_string(Sorteia(quantos)); }
    void Fez(const std::string &passo) { ++m_Feitos[passo]; }

    void Passo()
    {
        switch (Sorteia(12)) {
        case 0:
        case 1:
        case 2:
            NovoSensor();
            break;
        case 3:
        case 4:
        case 5:
        case 6:
            EditaSensor();
            break;
        case 7:
            ExcluiSensor();
            break;
        case 8:
        case 9:
            AfericoesDoPrimeiro();
            break;
        case 10:
            Salva(Sorteia(4) != 0);
            break;
        default:
            Sorteia(3) == 0 ? Recarrega() : Salva(true);
        }
    }

    std::vector<std::size_t> Ativos() const
    {
        std::vector<std::size_t> ativos;
        for (std::size_t i = 0; i < m_Modelo.Sensores.size(); ++i) {
            if (m_Modelo.Sensores[i].Ativo) {
                ativos.push_back(i);
            }
        }
        return ativos;
    }

    // What OK of the sensor form writes.
    void ConfirmaSensor(clsSensor &sensor, SensorModelo &modelo)
    {
        sensor.CodLograd = modelo.CodLograd = Sorteia(3) == 0 ? 0 : 1 + Sorteia(9);
        sensor.EndNro = modelo.NroEnd = Sorteia(2000);
        sensor.EndCompl = modelo.Compl = Texto(5);
        sensor.EndCep = modelo.Cep = Sorteia(99999999);
        sensor.LocalInfr = modelo.Local = "Rua " + Texto(50);
        sensor.Alterado = modelo.Alterado = true;
    }

    void NovoSensor()
    {
        auto sensor = Novo<clsSensor>();
        sensor->DefineEquipto(m_Equipto);
        SensorModelo modelo;
        sensor->NroSensor = modelo.Nro = static_cast<std::int16_t>(Ativos().size() + 1);
        EditaAfericoes(sensor, modelo);
        if (Sorteia(4) == 0) {
            Fez("sensor novo abandonado");
            return;
        }
        ConfirmaSensor(*sensor, modelo);
        if (Moeda()) { // which no window writes, but the records carry
            sensor->EndDescr = modelo.Descr = Texto(5);
            sensor->SentidoVia = modelo.Sentido = Texto(5);
        }
        m_Equipto->ListaSensores()->AddSensor(sensor);
        modelo.Chave = "S" + std::to_string(++m_Modelo.UltimaChave);
        NumeraAfericoes(modelo);
        m_Modelo.Sensores.push_back(modelo);
        Fez("sensor novo");
    }

    void EditaSensor()
    {
        const auto ativos = Ativos();
        if (ativos.empty()) {
            return;
        }
        SensorModelo &listado =
            m_Modelo.Sensores[ativos[static_cast<std::size_t>(Sorteia(static_cast<int>(ativos.size())))]];
        auto sensor = m_Equipto->ListaSensores()->Item(listado.Chave);
        auto clone = sensor->getClone();
        SensorModelo modelo = listado;
        modelo.Alterado = false;
        NumeraAfericoes(modelo);
        EditaAfericoes(clone, modelo);
        m_Inteira = m_Inteira && Igual(*clone, modelo, *m_Equipto);
        if (Sorteia(3) == 0) {
            Fez("sensor editado e abandonado");
            return;
        }
        ConfirmaSensor(*clone, modelo);
        sensor->Atualiza(clone);
        NumeraAfericoes(modelo);
        listado = modelo;
        Fez("sensor editado");
    }

    void ExcluiSensor()
    {
        const auto ativos = Ativos();
        if (ativos.empty()) {
            return;
        }
        const auto ultimo = m_Modelo.Sensores.begin() + static_cast<std::ptrdiff_t>(ativos.back());
        auto sensor = m_Equipto->ListaSensores()->Item(ultimo->Chave);
        if (sensor->NroIntSensor < 1) {
            m_Equipto->ListaSensores()->Remove(ultimo->Chave);
            m_Modelo.Sensores.erase(ultimo);
            Fez("sensor retirado");
        } else {
            sensor->Ativo = ultimo->Ativo = false;
            sensor->Alterado = ultimo->Alterado = true;
            Fez("sensor desativado");
        }
    }

    // The page of an equipment that has no sensors of its own.
    void AfericoesDoPrimeiro()
    {
        if (m_Modelo.Sensores.empty()) {
            m_Equipto->ListaSensores()->Add(1, "");
            SensorModelo modelo;
            modelo.Nro = 1;
            modelo.Chave = "S" + std::to_string(++m_Modelo.UltimaChave);
            m_Modelo.Sensores.push_back(modelo);
        }
        EditaAfericoes(m_Equipto->ListaSensores()->Item(1), m_Modelo.Sensores.front());
        Fez("aferições na página do equipamento");
    }

    void EditaAfericoes(const Ref<clsSensor> &sensor, SensorModelo &modelo)
    {
        for (int vezes = Sorteia(4); vezes > 0; --vezes) {
            if (modelo.Afericoes.empty() || Sorteia(3) == 0) {
                NovaAfericao(sensor, modelo);
                continue;
            }
            const auto escolhida = modelo.Afericoes.begin() + Sorteia(static_cast<int>(modelo.Afericoes.size()));
            auto afericao = sensor->ListaAfericoes()->Item(escolhida->Chave);
            if (!escolhida->Ativo || Sorteia(4) == 0) { // removed ones are not shown, but are recalculated
                afericao->DataVencimento = escolhida->Vencimento = Data{45000.0 + Sorteia(300)};
                afericao->Alterado = escolhida->Alterado = true;
                Fez("vencimento recalculado");
            } else if (Moeda()) {
                ConfirmaAfericao(*afericao, *escolhida);
                sensor->Alterado = modelo.Alterado = true;
                Fez("aferição editada");
            } else if (!(afericao->NroIntAfericao > 0)) {
                sensor->ListaAfericoes()->Remove(escolhida->Chave);
                modelo.Afericoes.erase(escolhida);
                sensor->Alterado = modelo.Alterado = true;
                Fez("aferição retirada");
            } else {
                afericao->Ativo = escolhida->Ativo = false;
                afericao->Alterado = escolhida->Alterado = true;
                sensor->Alterado = modelo.Alterado = true;
                Fez("aferição desativada");
            }
        }
    }

    void NovaAfericao(const Ref<clsSensor> &sensor, SensorModelo &modelo)
    {
        auto afericao = Novo<clsAfericao>();
        afericao->DefineSensor(sensor);
        if (Sorteia(4) == 0) {
            Fez("aferição nova abandonada");
            return;
        }
        AfericaoModelo nova;
        ConfirmaAfericao(*afericao, nova);
        sensor->ListaAfericoes()->AddAfericao(afericao);
        sensor->Alterado = modelo.Alterado = true;
        nova.Chave = "A" + std::to_string(++modelo.UltimaChave);
        modelo.Afericoes.push_back(nova);
        Fez("aferição nova");
    }

    // What OK of the calibration form writes.
    void ConfirmaAfericao(clsAfericao &afericao, AfericaoModelo &modelo)
    {
        afericao.TipoAfer = modelo.Tipo = Moeda() ? 1 : 2;
        afericao.Numero = modelo.Numero = Texto(1000);
        afericao.Marca = modelo.Marca = Texto(1000);
        afericao.DataVerificacao = modelo.Verificacao = Data{44000.0 + Sorteia(300)};
        afericao.DataVencimento = modelo.Vencimento = Data{44500.0 + Sorteia(300)};
        if (modelo.Tipo == 2) {
            afericao.PortDimel = modelo.Port = std::to_string(Sorteia(999)) + "/15";
        }
        afericao.NroIntImgCertif = modelo.NroImg = 1 + Sorteia(99);
        afericao.Alterado = modelo.Alterado = true;
    }

    void Salva(bool aceita)
    {
        auto ED = m_Equipto->ToEquiptoED();
        m_Inteira = m_Inteira && Enviados(ED->Sensores, m_Modelo.Sensores);
        if (!aceita) {
            Fez("gravação recusada");
            return;
        }
        m_Servico.Recebe(*ED);
        Recarrega();
        Fez("gravação");
    }

    void Recarrega()
    {
        m_Equipto->CarregaED(m_Servico.Responde(m_Sorte));
        m_Modelo = m_Servico.Conteudo();
        m_Inteira = m_Inteira && !m_Equipto->ToEquiptoED()->Sensores.Escrito();
    }

    std::mt19937 m_Sorte;
    Servico m_Servico;
    Ref<clsEquipto> m_Equipto = Novo<clsEquipto>();
    ListaModelo m_Modelo;
    bool m_Inteira = true;
    std::map<std::string, int> m_Feitos;
};

class HistoriasEdicao : public HostTeste {
  protected:
    void SetUp() override
    {
        HostTeste::SetUp();
        LogaGeral();
        goMensagem()->FormataData(0, 0); // so that the log has its memory
    }
};

TEST_F(HistoriasEdicao, Records_TenThousandRandomHistories_ShowAndSendWhatTheModelSays)
{
    std::map<std::string, int> feitos;
    for (unsigned semente = 1; semente <= 10'000; ++semente) {
        Historia historia(semente);
        ASSERT_TRUE(historia.Vive()) << "seed " << semente;
        for (const auto &[passo, vezes] : historia.Feitos()) {
            feitos[passo] += vezes;
        }
        host->LimpaRegistro();
    }
    for (const char *passo : {"sensor novo", "sensor novo abandonado", "sensor editado", "sensor editado e abandonado",
                              "sensor retirado", "sensor desativado", "aferições na página do equipamento",
                              "aferição nova", "aferição nova abandonada", "aferição editada", "aferição retirada",
                              "aferição desativada", "vencimento recalculado", "gravação", "gravação recusada"}) {
        EXPECT_GE(feitos[passo], 1000) << passo;
    }
}

TEST_F(HistoriasEdicao, Records_HistoriesThatRunOutOfMemory_LeaveNothingBehind)
{
    Historia(0).Vive(); // what stands for the host's objects learns their members once
    host->LimpaRegistro();
    const std::int64_t antes = BlocosOcupados();
    int recusas = 0;
    for (unsigned semente = 1; semente <= 2'500; ++semente) {
        {
            Historia historia(semente);
            ASSERT_TRUE(historia.Vive()) << "seed " << semente;
            recusas += historia.Fraqueja() ? 1 : 0;
        }
        host->LimpaRegistro();
        ASSERT_EQ(BlocosOcupados(), antes) << "seed " << semente;
    }
    EXPECT_GE(recusas, 500);
}

} // namespace
