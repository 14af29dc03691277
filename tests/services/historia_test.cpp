// What the history tells of earlier moments, against copies that were taken at the time, and the calibration in force
// against a count of every change.
#include "services/Dialetos.h"
#include "services/MapaRegistro.h"
#include "services/ServicoAfericoes.h"
#include "services/ServicoDocumentos.h"
#include "services/ServicoEquipamentos.h"
#include "services/ServicoHistoria.h"
#include "services/ServicoLimites.h"
#include "tests/services/ServicosTeste.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace mesa;

namespace {

// The equipment with all its rows as the tables have them.
template <class R>
ListaDe<R> Linhas(Banco &banco, const QString &tabela, const QString &dono, std::int64_t numero, const QString &ordem)
{
    ListaDe<R> lista = Novo<Colecao<Ref<R>>>();
    Consulta linhas(
        banco, "SELECT " + MapaRegistro::Lista<R>() + " FROM " + tabela + " WHERE " + dono + " = ? ORDER BY " + ordem,
        {qlonglong(numero)});
    while (linhas.Proxima()) {
        auto linha = Novo<R>();
        MapaRegistro::Preenche(*linha, linhas);
        lista->Add(linha);
    }
    return lista;
}

Ref<EquiptoED> Retrato(Banco &banco, std::int32_t numero)
{
    const auto equipto = Linhas<EquiptoED>(banco, "EQUIPAMENTO", "NroIntEquip", numero, "1")->Item(1);
    equipto->Sensores = Linhas<SensorED>(banco, "SENSOR", "NroIntEquip", numero, "NroIntSensor");
    for (std::int32_t n = 1; n <= equipto->Sensores.Valor()->Count(); ++n) {
        SensorED &sensor = *equipto->Sensores.Valor()->Item(n);
        const auto afericoes =
            Linhas<AfericaoED>(banco, "AFERICAO", "NroIntSensor", sensor.NroIntSensor.Valor(), "NroIntAfericao");
        if (afericoes->Count() > 0) {
            sensor.Afericoes = afericoes;
        }
    }
    equipto->ListaLimiteDif =
        Linhas<LimiteDifED>(banco, "LIMITE", "NroIntEquip", numero, "Dia, HoraInicio, HoraFim, NroInt");
    equipto->ListaDiaEspecifico =
        Linhas<DiaEspecificoED>(banco, "DIA", "NroIntEquip", numero, "Data, HoraInicio, HoraFim, NroInt");
    return equipto;
}

// Only the active rows.
template <class R> ListaDe<R> Ativas(const ListaDe<R> &lista)
{
    ListaDe<R> ativas = Novo<Colecao<Ref<R>>>();
    for (std::int32_t n = 1; n <= lista->Count(); ++n) {
        if (lista->Item(n)->Ativo.Valor() != 2) {
            ativas->Add(lista->Item(n));
        }
    }
    return ativas;
}

std::string TextoDosAtivos(const EquiptoED &lida)
{
    const auto equipto = ComoTipo<EquiptoED>(lida.Copia());
    const ListaDe<SensorED> ativos = Ativas(equipto->Sensores.Valor());
    ListaDe<SensorED> sensores = Novo<Colecao<Ref<SensorED>>>();
    for (std::int32_t n = 1; n <= ativos->Count(); ++n) {
        auto sensor = Novo<SensorED>();
        MapaRegistro::Sobrepoe(*sensor, *ativos->Item(n));
        const ListaDe<AfericaoED> todas = ativos->Item(n)->Afericoes;
        const ListaDe<AfericaoED> ativas = todas.Nada() ? todas : Ativas(todas);
        if (!ativas.Nada() && ativas->Count() > 0) {
            sensor->Afericoes = ativas;
        }
        sensores->Add(sensor);
    }
    equipto->Sensores = sensores;
    equipto->ListaLimiteDif = Ativas(equipto->ListaLimiteDif.Valor());
    equipto->ListaDiaEspecifico = Ativas(equipto->ListaDiaEspecifico.Valor());
    return equipto->Texto();
}

class ServicosHistoria : public ServicosDeAfericoes {
  protected:
    static EquipamentoConhecido Conhecido(const Ref<SessaoServico> &sessao, std::int32_t numero, const Instante &quando)
    {
        EquipamentoConhecido conhecido;
        std::string recusa;
        EXPECT_TRUE(sessao->ComoConhecido(numero, quando, conhecido, recusa)) << recusa;
        return conhecido;
    }
    std::string TextoEm(std::int32_t numero, const Instante &quando)
    {
        return Conhecido(m_Ana, numero, quando).Registro->Texto();
    }
    std::string RecusaDaHistoria(const Ref<SessaoServico> &sessao, std::int32_t numero, const Instante &quando)
    {
        EquipamentoConhecido conhecido;
        std::string recusa;
        EXPECT_FALSE(sessao->ComoConhecido(numero, quando, conhecido, recusa));
        EXPECT_TRUE(conhecido.Registro.Nada());
        return recusa;
    }
    Ref<EquiptoED> Agora(std::int32_t numero)
    {
        Banco banco(DialetoPara(m_Registro.Caminho()), m_Registro.Caminho(), Instante(m_Registro.Relogio));
        return Retrato(banco, numero);
    }
};

TEST_F(ServicosHistoria, ComoConhecido_IsTheWholeTreeAsItWas)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun), AfericaoDe("2", Jul, Dez)}, {}});
    std::vector<std::pair<Data, std::string>> copias;
    const auto depois = [&](const auto &faz) {
        m_Registro.PassaSegundos(1);
        faz();
        copias.push_back({m_Registro.Relogio, Agora(numero)->Texto()});
    };
    depois([] {});
    depois([&] { Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "Outra \"descrição\" çã")); });
    depois([&] {
        Faz(m_Ana, "altera",
            Poe(SoNumero(numero), Poe(Poe(SoSensor(1), Com(SoAfericao(1), &AfericaoED::Ativo, 2)),
                                      Com(SoAfericao(2), &AfericaoED::DataVerificacao, Jan))));
    });
    depois([&] { Faz(m_Ana, "altera", Poe(SoNumero(numero), Com(SoSensor(2), &SensorED::Ativo, 2))); });
    depois([&] {
        Faz(m_Ana, "alteraListaLimitesDif",
            ListaDeLimites({LimiteDe(numero, 3, 700, 800), LimiteDe(numero, 2, 700, 800)}));
    });
    depois([&] { Faz(m_Ana, "adicionaDiaEspecifico", DiaDe(numero, Dez, 700, 800)); });
    depois([&] {
        Faz(m_Ana, "consultaSimplesLimiteDif", SoLimite(1));
        Faz(m_Ana, "desativaLimiteDif", SoLimite(1));
    });
    depois([&] {
        Faz(m_Ana, "consultaSimplesDiaEspecifico", SoDia(1));
        Faz(m_Ana, "alteraDiaEspecifico", Com(SoDia(1), &DiaEspecificoED::Data, Jul));
    });
    depois([&] { Faz(m_Ana, "desativa", SoNumero(numero)); });
    const std::string agora = Agora(numero)->Texto();
    EXPECT_NE(agora.find("ListaDiaEspecifico=[DiaEspecificoED{NroInt=1"), std::string::npos);
    for (const auto &[quando, texto] : copias) {
        EXPECT_EQ(TextoEm(numero, quando), texto);
        EXPECT_EQ(Conhecido(m_Ana, numero, quando).Ressalva, "");
    }
    EXPECT_EQ(TextoEm(numero, DataDe(1, 1, 2100)), agora);
    EXPECT_EQ(copias[1].second.find("Ativo=2"), std::string::npos);
    EXPECT_NE(copias[2].second, copias[1].second);
}

TEST_F(ServicosHistoria, ComoConhecido_OfAMomentOfAnotherOffset_IsOfTheSameMoment)
{
    const std::int32_t numero = ComSensores({}); // 10:00:00 UTC
    const std::string antes = TextoEm(numero, m_Registro.Relogio);
    m_Registro.PassaSegundos(60);
    Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, "Outra"));
    EXPECT_EQ(TextoEm(numero, {DataDe(20, 11, 2026, 7, 0, 59), -180}), antes);
    EXPECT_NE(TextoEm(numero, {DataDe(20, 11, 2026, 7, 1, 0), -180}), antes);
    EXPECT_EQ(TextoEm(numero, {DataDe(20, 11, 2026, 12, 0, 59), 120}), antes);
    EXPECT_EQ(TextoEm(numero, DataDe(20, 11, 2026, 10, 0, 59)), antes);
}

TEST_F(ServicosHistoria, ComoConhecido_BeforeItWasRegistered_IsRefused)
{
    const std::int32_t numero = ComSensores({});
    EXPECT_EQ(RecusaDaHistoria(m_Ana, numero, DataDe(20, 11, 2026, 9, 59, 59)),
              "O equipamento R-001 não está no histórico em 20/11/2026 às 09:59:59; a sua primeira entrada é de "
              "20/11/2026 às 10:00:00.");
    EXPECT_EQ(RecusaDaHistoria(m_Ana, numero, Data{1e12}), "O momento de que se pergunta não está no calendário.");
}

TEST_F(ServicosHistoria, ComoConhecido_OfAnotherClientOrWithoutTheRight_IsRefused)
{
    const std::int32_t numero = ComSensores({});
    EXPECT_EQ(RecusaDaHistoria(m_Registro.Sessao("elisa"), numero, m_Registro.Relogio),
              "O cliente Autoridade Municipal de Trânsito não tem equipamento de número interno 1.");
    EXPECT_EQ(RecusaDaHistoria(m_Registro.Sessao("carla"), numero, m_Registro.Relogio),
              "Carla Dias não tem permissão para consultar equipamentos.");
    EXPECT_EQ(Conhecido(m_Registro.Sessao("bruno"), numero, m_Registro.Relogio).Registro->Codigo.Valor(), "R-001");
}

TEST_F(ServicosHistoria, ComoConhecido_IsOfTheHistoryAndNotOfTheRows)
{
    const std::int32_t numero = ComSensores({{AfericaoDe("1", Jan, Jun)}});
    const std::string antes = TextoEm(numero, m_Registro.Relogio);
    m_Registro.Sql("UPDATE AFERICAO SET DataVencimento = 20261231, Versao = 2; UPDATE SENSOR SET LocalInfr = 'x'; "
                   "UPDATE EQUIPAMENTO SET Descricao = 'x'");
    EXPECT_EQ(TextoEm(numero, m_Registro.Relogio), antes);
}

TEST_F(ServicosHistoria, ComoConhecido_AfterTheClockWentBack_IsAStateThatThereWas)
{
    const std::int32_t numero = ComSensores({});
    const auto descreve = [&](std::int32_t dia, const std::string &descricao) {
        m_Registro.Relogio = DataDe(dia, 11, 2026);
        Faz(m_Ana, "altera", Com(SoNumero(numero), &EquiptoED::Descricao, descricao));
    };
    descreve(25, "de 25");
    descreve(22, "de 22");
    descreve(23, "de 23");
    const auto em = [&](std::int32_t dia) {
        return Conhecido(m_Ana, numero, DataDe(dia, 11, 2026)).Registro->Descricao.Valor();
    };
    EXPECT_EQ(em(21), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(em(22), "de 22");
    EXPECT_EQ(em(24), "de 23");
    EXPECT_EQ(em(25), "de 23");
}

// Operations of one person on the services, many in one transaction.
class Oficina {
  public:
    static constexpr std::int32_t Fuso = -180;

    Oficina() : m_Quem(m_Registro.Sessao("ana")->Operador())
    {
        m_Banco = std::make_unique<Banco>(DialetoPara(m_Registro.Caminho()), m_Registro.Caminho(), Agora());
    }

    Banco &Dados() { return *m_Banco; }
    Instante Agora() const { return {m_Agora, Fuso}; }
    void PassaSegundos(std::int32_t n) { m_Agora.Valor += n / 86400.0; }
    void PassaAte(Data quando) { m_Agora = quando; }

    // The operation of the service, as a session has it run.
    template <class Servico, class Resposta, class Pedido>
    Resposta Pede(Resposta (Servico::*operacao)(Pedido &), const Ref<std::remove_const_t<Pedido>> &pedido)
    {
        if constexpr (!std::is_const_v<Pedido>) {
            Marca(*pedido);
        }
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "motivo", {});
        Servico servico(contexto);
        if constexpr (std::is_void_v<Resposta>) {
            (servico.*operacao)(*pedido);
            contexto.Entrega();
        } else {
            const Resposta resposta = (servico.*operacao)(*pedido);
            contexto.Entrega();
            return resposta;
        }
    }
    double Documento()
    {
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "", {});
        return ServicoDocumentos(contexto).Guarda(Pdf(std::to_string(++m_Documentos)));
    }
    EquipamentoConhecido ComoConhecido(std::int32_t numero, const Instante &quando)
    {
        Operacao contexto(*m_Banco, m_Quem, Agora(), CustoDeTeste, "", {});
        return ServicoHistoria(contexto).ComoConhecido(numero, quando);
    }
    double Vigente(std::int32_t numero, Data dia)
    {
        return Pede(&ServicoAfericoes::Vigente, Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip,
                                                    numero, &ConsultaAfericaoED::DtInfracao, dia))
            ->NroIntAfericao;
    }
    // Active rows by the services.
    std::string Consultado(std::int32_t numero)
    {
        const auto equipto = Pede(&ServicoEquipamentos::Consulta, SoNumero(numero));
        equipto->ListaLimiteDif =
            Pede(&ServicoLimites::ListaLimites, Com(Novo<LimiteDifED>(), &LimiteDifED::NroIntEquip, numero))
                ->ListaLimiteDif.Valor();
        equipto->ListaDiaEspecifico =
            Pede(&ServicoLimites::ListaDias, Com(Novo<DiaEspecificoED>(), &DiaEspecificoED::NroIntEquip, numero))
                ->ListaDiaEspecifico.Valor();
        return equipto->Texto();
    }
    std::int32_t Ultimo(const QString &tabela, const QString &chave)
    {
        Consulta ultimo(*m_Banco, "SELECT MAX(" + chave + ") FROM " + tabela);
        ultimo.Proxima();
        return static_cast<std::int32_t>(ultimo.Inteiro(0));
    }

  private:
    // With the version of its row, as whoever has just read it.
    std::int64_t Versao(const QString &tabela, const QString &chave, std::int32_t numero)
    {
        Consulta linha(*m_Banco, "SELECT Versao FROM " + tabela + " WHERE " + chave + " = ?", {numero});
        return linha.Proxima() ? linha.Inteiro(0) : 0;
    }
    void Marca(EquiptoED &equipto)
    {
        equipto.VersaoLida = Versao("EQUIPAMENTO", "NroIntEquip", equipto.NroIntEquip);
        const ListaDe<LimiteDifED> &limites = equipto.ListaLimiteDif;
        for (std::int32_t n = 1; !limites.Nada() && n <= limites->Count(); ++n) {
            Marca(*limites->Item(n));
        }
    }
    void Marca(LimiteDifED &limite) { limite.VersaoLida = Versao("LIMITE", "NroInt", limite.NroInt); }
    void Marca(DiaEspecificoED &dia) { dia.VersaoLida = Versao("DIA", "NroInt", dia.NroInt); }

    RegistroDeTeste m_Registro;
    Operador m_Quem;
    std::unique_ptr<Banco> m_Banco;
    Data m_Agora = DataDe(20, 11, 2026, 10, 0, 0);
    int m_Documentos = 0;
};

class Sorte {
  public:
    explicit Sorte(unsigned semente) : m_Gerador(semente) {}
    // From 0 to n - 1.
    int Ate(int n) { return static_cast<int>(m_Gerador() % static_cast<unsigned>(n)); }
    bool UmaEm(int n) { return Ate(n) == 0; }

  private:
    std::mt19937 m_Gerador;
};

// One equipment, and what happens to it.
class Vida {
  public:
    Vida(Oficina &oficina, Sorte &sorte, int numero) : m_Oficina(oficina), m_Sorte(sorte)
    {
        m_Documento = oficina.Documento();
        const auto incluido = oficina.Pede(
            &ServicoEquipamentos::Inclui, Poe(EquipamentoDe("E" + std::to_string(numero)), NovoSensor(m_Sorte.Ate(3))));
        m_Numero = incluido->NroIntEquip;
        Anota(1);
    }

    std::int32_t Numero() const { return m_Numero; }

    void Muda()
    {
        if (!m_Ativo) {
            m_Oficina.Pede(&ServicoEquipamentos::Reativa, SoNumero(m_Numero));
            m_Ativo = true;
            return;
        }
        switch (m_Sorte.Ate(9)) {
        case 0:
            m_Oficina.Pede(&ServicoEquipamentos::Desativa, SoNumero(m_Numero));
            m_Ativo = false;
            return;
        case 1:
            return Altera(Com(SoNumero(m_Numero), &EquiptoED::Descricao, "é \"" + std::to_string(++m_Vez) + "\" \\ ç"));
        case 2:
            if (!m_Sensores.back().Ativo) { // they are numbered without a gap
                return MudaSensor();
            }
            Altera(Poe(SoNumero(m_Numero), NovoSensor(m_Sorte.Ate(3))));
            return Anota(m_Sensores.size() + 1);
        case 3:
            return MudaSensor();
        case 4:
        case 5:
            return MudaAfericao();
        case 6:
            return MudaLinha(m_Limites, "LIMITE");
        case 7:
            return MudaLinha(m_Dias, "DIA");
        default: {
            Altera(Poe(SoNumero(m_Numero), Poe(SoSensor(m_Sensores.front().Numero), NovaAfericao())));
            m_Sensores.front().Afericoes.push_back({m_Oficina.Ultimo("AFERICAO", "NroIntAfericao"), true});
        }
        }
    }

    void Copia()
    {
        const Ref<EquiptoED> retrato = Retrato(m_Oficina.Dados(), m_Numero);
        m_Copias.insert_or_assign(m_Oficina.Agora().Utc(), std::pair(m_Oficina.Agora(), retrato->Texto()));
        if (m_Sorte.UmaEm(5)) { // what the tables have is what a person would have seen
            EXPECT_EQ(TextoDosAtivos(*retrato), m_Oficina.Consultado(m_Numero));
        }
    }
    bool CopiadaAgora() const { return m_Copias.contains(m_Oficina.Agora().Utc()); }

    // How many of the copies the history gives back.
    int Confere()
    {
        for (const auto &[utc, copia] : m_Copias) {
            EXPECT_EQ(m_Oficina.ComoConhecido(m_Numero, copia.first).Registro->Texto(), copia.second) << utc;
        }
        return static_cast<int>(m_Copias.size());
    }

  private:
    struct Linha {
        std::int32_t Numero;
        bool Ativa;
    };
    struct Sensor {
        std::int32_t Numero;
        bool Ativo;
        std::vector<Linha> Afericoes;
    };

    void Altera(const Ref<EquiptoED> &pedido) { m_Oficina.Pede(&ServicoEquipamentos::Altera, pedido); }
    // In a month of its own.
    Ref<AfericaoED> NovaAfericao()
    {
        const Data mes = DataDe(1, 1, 2020).MaisDias(30 * m_Meses++);
        return AfericaoDe(std::to_string(m_Meses), mes, mes.MaisDias(29), m_Documento);
    }
    Ref<SensorED> NovoSensor(int afericoes)
    {
        auto sensor = SensorDe(++m_NroSensor);
        for (m_NovasAfericoes = 0; m_NovasAfericoes < afericoes; ++m_NovasAfericoes) {
            Poe(sensor, NovaAfericao());
        }
        return sensor;
    }
    // The numbers that the last new sensor and its calibrations have got.
    void Anota(std::size_t sensores)
    {
        m_Sensores.push_back({m_Oficina.Ultimo("SENSOR", "NroIntSensor"), true, {}});
        EXPECT_EQ(m_Sensores.size(), sensores);
        const std::int32_t ultima = m_Oficina.Ultimo("AFERICAO", "NroIntAfericao");
        for (int n = m_NovasAfericoes; n > 0; --n) {
            m_Sensores.back().Afericoes.push_back({ultima - n + 1, true});
        }
    }
    void MudaSensor()
    {
        Sensor &sensor = m_Sensores.back();
        const auto pedido = Com(SoSensor(sensor.Numero), &SensorED::LocalInfr, "Rua " + std::to_string(++m_Vez));
        if (m_Sensores.size() > 1 && m_Sorte.UmaEm(2)) {
            sensor.Ativo = !sensor.Ativo;
            Com(pedido, &SensorED::Ativo, sensor.Ativo ? 1 : 2);
        }
        Altera(Poe(SoNumero(m_Numero), pedido));
    }
    void MudaAfericao()
    {
        Sensor &sensor = m_Sensores.front();
        if (sensor.Afericoes.empty()) {
            return;
        }
        Linha &qual =
            sensor.Afericoes[static_cast<std::size_t>(m_Sorte.Ate(static_cast<int>(sensor.Afericoes.size())))];
        const auto pedida = Com(SoAfericao(qual.Numero), &AfericaoED::Marca, std::to_string(++m_Vez));
        if (m_Sorte.UmaEm(2)) {
            qual.Ativa = !qual.Ativa;
            Com(pedida, &AfericaoED::Ativo, qual.Ativa ? 1 : 2);
        }
        Altera(Poe(SoNumero(m_Numero), Poe(SoSensor(sensor.Numero), pedida)));
    }
    // A limit, or a day: a new one on a day of its own, another speed for one, or its end.
    void MudaLinha(std::vector<Linha> &linhas, const QString &tabela)
    {
        const bool limite = tabela == "LIMITE";
        const int novo = static_cast<int>(linhas.size()) + 1;
        if (linhas.empty() || !linhas.back().Ativa || (novo <= 8 && m_Sorte.UmaEm(3))) {
            if (novo > 8) {
                return;
            }
            if (limite) {
                m_Oficina.Pede(&ServicoLimites::AlteraLimites,
                               ListaDeLimites({LimiteDe(m_Numero, static_cast<std::uint8_t>(9 - novo), 700, 800)}));
            } else {
                m_Oficina.Pede(&ServicoLimites::AdicionaDia, DiaDe(m_Numero, DataDe(32 - novo, 1, 2027), 700, 800));
            }
            linhas.push_back({m_Oficina.Ultimo(tabela, "NroInt"), true});
            return;
        }
        Linha &qual = linhas.back();
        qual.Ativa = !m_Sorte.UmaEm(3);
        const std::int16_t velocidade = static_cast<std::int16_t>(10 + m_Sorte.Ate(80));
        if (limite) {
            m_Oficina.Pede(&ServicoLimites::ConsultaLimite, SoLimite(qual.Numero));
            if (qual.Ativa) {
                m_Oficina.Pede(&ServicoLimites::AlteraLimites,
                               ListaDeLimites({Com(SoLimite(qual.Numero), &LimiteDifED::VelocPerm, velocidade)}));
            } else {
                m_Oficina.Pede(&ServicoLimites::DesativaLimite, SoLimite(qual.Numero));
            }
        } else {
            m_Oficina.Pede(&ServicoLimites::ConsultaDia, SoDia(qual.Numero));
            if (qual.Ativa) {
                m_Oficina.Pede(&ServicoLimites::AlteraDia,
                               Com(SoDia(qual.Numero), &DiaEspecificoED::VelocPerm, velocidade));
            } else {
                m_Oficina.Pede(&ServicoLimites::DesativaDia, SoDia(qual.Numero));
            }
        }
    }

    Oficina &m_Oficina;
    Sorte &m_Sorte;
    std::int32_t m_Numero = 0;
    double m_Documento = 0;
    bool m_Ativo = true;
    std::int16_t m_NroSensor = 0;
    int m_Meses = 0;
    int m_NovasAfericoes = 0;
    int m_Vez = 0;
    std::vector<Sensor> m_Sensores;
    std::vector<Linha> m_Limites;
    std::vector<Linha> m_Dias;
    std::map<std::int64_t, std::pair<Instante, std::string>> m_Copias; // by their moments, each whole
};

// Ten thousand equipment in four registries, each with a history of its own; those of a hundred at a time are written
// in turns.
class HistoriasAoAcaso : public testing::TestWithParam<unsigned> {};

TEST_P(HistoriasAoAcaso, ComoConhecido_IsTheCopyThatWasTakenAtTheTime)
{
    constexpr int historias = 2500;
    constexpr int juntas = 100;
    Sorte sorte(GetParam());
    Oficina oficina;
    int copias = 0;
    for (int feitas = 0; feitas < historias; feitas += juntas) {
        std::vector<Vida> vidas;
        oficina.Dados().Escreve([&] {
            for (int n = 0; n < juntas; ++n) {
                vidas.emplace_back(oficina, sorte, feitas + n);
                oficina.PassaSegundos(sorte.Ate(2));
            }
            for (int n = 0; n < juntas * 3; ++n) {
                Vida &vida = vidas[static_cast<std::size_t>(sorte.Ate(juntas))];
                const bool outraVez = vida.CopiadaAgora(); // a copy is of the end of its second
                vida.Muda();
                if (outraVez || sorte.UmaEm(3)) {
                    vida.Copia();
                }
                oficina.PassaSegundos(sorte.Ate(3) * sorte.Ate(40000));
            }
            for (Vida &vida : vidas) {
                if (sorte.UmaEm(4)) {
                    vida.Copia();
                }
            }
        });
        oficina.Dados().Le([&] {
            for (Vida &vida : vidas) {
                copias += vida.Confere();
            }
        });
    }
    EXPECT_EQ(oficina.Ultimo("EQUIPAMENTO", "NroIntEquip"), historias);
    EXPECT_GT(copias, historias);
}

INSTANTIATE_TEST_SUITE_P(, HistoriasAoAcaso, testing::Range(1U, 5U));

// When a row was active, as who changed it remembers: seconds of the place's clock, each with what it then was.
using Memoria = std::vector<std::pair<std::int64_t, bool>>;

std::int64_t Segundos(Data data)
{
    return std::llround(data.Valor * 86400.0);
}

// In which place the row is believed for the day that begins at that second, by looking at the day second by second
// where something happened; -1 when it does not count.
std::int64_t Lugar(const Memoria &memoria, std::int64_t inicio)
{
    const std::int64_t fim = inicio + 86399;
    const auto em = [&](std::int64_t segundo) { // 0 unknown yet, 1 active, 2 not
        int estado = 0;
        for (const auto &[quando, ativa] : memoria) {
            if (quando <= segundo) {
                estado = ativa ? 1 : 2;
            }
        }
        return estado;
    };
    bool ativa = em(inicio - 1) == 1; // the day on which it ends counts, at whatever moment it does
    for (const auto &[quando, agora] : memoria) {
        ativa = ativa || (quando >= inicio && quando <= fim && agora);
    }
    if (ativa) {
        return 0;
    }
    if (memoria.front().first <= fim || !memoria.front().second) {
        return -1;
    }
    return memoria.front().first / 86400 * 2 + (memoria.back().second ? 0 : 1);
}

// HISTORIAS: how many, instead of 60.
TEST(VigenciaAoAcaso, Vigente_OfEachDay_IsAsEveryChangeTogetherSays)
{
    const char *pedidas = std::getenv("HISTORIAS");
    const int equipamentos = pedidas == nullptr ? 60 : std::atoi(pedidas);
    constexpr int dias = 70;
    Sorte sorte(4711);
    Oficina oficina;
    int vigentes = 0;
    int lacunas = 0;
    int conflitos = 0;
    int corrigidas = 0;
    for (int e = 0; e < equipamentos; ++e) {
        struct DoSensor {
            std::int32_t Numero;
            Memoria Ativo;
            std::vector<Ref<AfericaoED>> Afericoes;
        };
        std::vector<DoSensor> sensores;
        Memoria ativo;
        const Data primeiro = DataDe(1, 11, 2026).MaisDias(e % 60 * 60); // no further than the years that are taken
        oficina.PassaAte(primeiro.MaisDias(30));
        std::int32_t numero = 0;
        const auto agora = [&] { return Segundos(oficina.Agora().Local); };
        oficina.Dados().Escreve([&] {
            const double documento = oficina.Documento();
            const auto novo = [&](std::int16_t nro) {
                auto sensor = SensorDe(nro);
                DoSensor &meu = sensores.emplace_back();
                // Two periods, with or without a gap.
                Data de = primeiro.MaisDias(sorte.Ate(20) - 40);
                for (int n = 0; n < 2; ++n) {
                    const Data ate = de.MaisDias(5 + sorte.Ate(40));
                    meu.Afericoes.push_back(AfericaoDe(std::to_string(n), de, ate, documento));
                    Poe(sensor, meu.Afericoes.back());
                    de = ate.MaisDias(1 + sorte.Ate(4));
                }
                return sensor;
            };
            const auto anota = [&] {
                DoSensor &meu = sensores.back();
                meu.Numero = oficina.Ultimo("SENSOR", "NroIntSensor");
                meu.Ativo = {{agora(), true}};
                const std::int32_t ultima = oficina.Ultimo("AFERICAO", "NroIntAfericao");
                meu.Afericoes[0]->NroIntAfericao = double(ultima - 1);
                meu.Afericoes[1]->NroIntAfericao = double(ultima);
            };
            numero = oficina.Pede(&ServicoEquipamentos::Inclui, Poe(EquipamentoDe("V" + std::to_string(e)), novo(1)))
                         ->NroIntEquip;
            ativo = {{agora(), true}};
            anota();
            for (int n = 0; n < 12; ++n) {
                // Many near midnight, by the clock of the place and by that of UTC.
                static const std::int32_t passos[] = {1, 600, 7200, 10800, 36000, 50400, 86399, 86400, 200000};
                oficina.PassaSegundos(passos[sorte.Ate(9)]);
                if (!ativo.back().second || sorte.UmaEm(4)) {
                    const bool reativa = !ativo.back().second;
                    oficina.Pede(reativa ? &ServicoEquipamentos::Reativa : &ServicoEquipamentos::Desativa,
                                 SoNumero(numero));
                    ativo.push_back({agora(), reativa});
                } else if (sensores.size() < 3 && sensores.back().Ativo.back().second && sorte.UmaEm(4)) {
                    oficina.Pede(&ServicoEquipamentos::Altera,
                                 Poe(SoNumero(numero), novo(static_cast<std::int16_t>(sensores.size() + 1))));
                    anota();
                } else if (sensores.size() > 1 && sorte.UmaEm(2)) {
                    DoSensor &sensor = sensores.back();
                    const bool reativa = !sensor.Ativo.back().second;
                    oficina.Pede(
                        &ServicoEquipamentos::Altera,
                        Poe(SoNumero(numero), Com(SoSensor(sensor.Numero), &SensorED::Ativo, reativa ? 1 : 2)));
                    sensor.Ativo.push_back({agora(), reativa});
                } else {
                    DoSensor &sensor = sensores.front();
                    const auto corrige = [&](AfericaoED &qual, int dias) { // the day on which it ends
                        qual.DataVencimento = qual.DataVerificacao.Valor().MaisDias(sorte.Ate(dias));
                        oficina.Pede(
                            &ServicoEquipamentos::Altera,
                            Poe(SoNumero(numero), Poe(SoSensor(sensor.Numero),
                                                      Com(SoAfericao(qual.NroIntAfericao), &AfericaoED::DataVencimento,
                                                          qual.DataVencimento.Valor()))));
                        ++corrigidas;
                    };
                    AfericaoED &primeira = *sensor.Afericoes[0];
                    AfericaoED &segunda = *sensor.Afericoes[1];
                    if (sorte.UmaEm(2) && primeira.Ativo.Valor() == 1 && segunda.Ativo.Valor() == 1) {
                        if (sorte.UmaEm(2)) {
                            corrige(segunda, 60);
                        } else { // never into the one after it
                            corrige(primeira, static_cast<int>(segunda.DataVerificacao.Valor().Valor -
                                                               primeira.DataVerificacao.Valor().Valor));
                        }
                        continue;
                    }
                    AfericaoED &qual = sorte.UmaEm(2) ? primeira : segunda;
                    qual.Ativo = static_cast<std::uint8_t>(3 - qual.Ativo.Valor());
                    oficina.Pede(&ServicoEquipamentos::Altera,
                                 Poe(SoNumero(numero),
                                     Poe(SoSensor(sensor.Numero),
                                         Com(SoAfericao(qual.NroIntAfericao), &AfericaoED::Ativo, qual.Ativo))));
                }
            }
        });
        for (int d = 0; d < dias; ++d) {
            const Data dia = primeiro.MaisDias(d);
            std::map<std::int64_t, std::vector<double>> porLugar;
            for (const DoSensor &sensor : sensores) {
                for (const auto &afericao : sensor.Afericoes) {
                    const std::int64_t lugar = Lugar(sensor.Ativo, Segundos(dia));
                    if (afericao->Ativo.Valor() == 1 && afericao->DataVerificacao.Valor().Valor <= dia.Valor &&
                        afericao->DataVencimento.Valor().Valor >= dia.Valor && lugar >= 0) {
                        porLugar[lugar].push_back(afericao->NroIntAfericao);
                    }
                }
            }
            const bool lacuna = Lugar(ativo, Segundos(dia)) < 0 || porLugar.empty();
            const bool uma = !lacuna && porLugar.begin()->second.size() == 1;
            const double esperada = uma ? porLugar.begin()->second.front() : 0; // no guess between two
            ASSERT_EQ(oficina.Dados().Le([&] { return oficina.Vigente(numero, dia); }), esperada)
                << "equipment " << e << ", day " << d;
            (lacuna ? lacunas : uma ? vigentes : conflitos) += 1;
        }
    }
    EXPECT_GT(vigentes, equipamentos * 10); // none is rare
    EXPECT_GT(lacunas, equipamentos * 10);
    EXPECT_GT(conflitos, equipamentos / 2);
    EXPECT_GT(corrigidas, equipamentos / 2);
    RecordProperty("vigentes", vigentes);
    RecordProperty("lacunas", lacunas);
    RecordProperty("conflitos", conflitos);
    RecordProperty("corrigidas", corrigidas);
    std::printf("%d histories, %d corrections: in force on %d days, on %d a gap, on %d a conflict\n", equipamentos,
                corrigidas, vigentes, lacunas, conflitos);
}

} // namespace
