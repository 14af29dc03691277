// The services on registries of 10,000 to 1,000,000 equipment: whatever is asked for, the answer must not take longer
// for the size of the registry or the number of the page. And one equipment with thousands of calibrations, opened and
// saved, against the plain statements on the same file.
#include "bench/Medida.h"
#include "host/ConsultaAfericaoED.h"
#include "services/PrazosED.h"
#include "tests/services/RegistroDeTeste.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include <chrono>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <vector>

using namespace mesa;

namespace {

constexpr std::size_t DezMil = 10'000;
constexpr std::size_t CemMil = 100'000;
constexpr std::size_t UmMilhao = 1'000'000;
constexpr std::int32_t Pagina1000 = 999 * 50 + 1;
constexpr int PorVez = 20;

// A registry with so many equipment, copies of one with codes of seven digits spread over the numbers.
class RegistroCheio : public RegistroDeTeste {
  public:
    explicit RegistroCheio(int quantos)
    {
        Ana = Sessao("ana");
        Inclui(Ana, EquipamentoDe("0000001"));
        Sql("CREATE TEMP TABLE modelo AS SELECT * FROM EQUIPAMENTO WHERE NroIntEquip = 1; "
            "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < " +
            std::to_string(quantos) +
            ") INSERT INTO EQUIPAMENTO SELECT i, ClienteInc, SetorInc, printf('%07d', i), SubCodigo, Descricao, "
            "CodMunic, TipoVia, TipoEquip, VelocPermitida, ArquivoLayout, TemImagemEntrelacada, Modelo, TemLimiteDif, "
            "TemPerfilMag, NroIntRejLimDif, Ativo, ClienteTrans, OperadorTrans, DataTrans, HoraTrans, TipoAgente, "
            "txtObsNotif, printf('%07d', i), printf('%07d', i), SubCodigoBusca, TrabFoto, 1 FROM n, modelo");
    }
    // One sensor each, with a calibration; their last days are spread over three years.
    void Afere()
    {
        const std::string documento = std::to_string(static_cast<std::int64_t>(GuardaPdf(Ana, "um")));
        Sql("INSERT INTO SENSOR SELECT NroIntEquip, NroIntEquip, 1, 0, 0, 0, '', '', '', 1, '' FROM EQUIPAMENTO; "
            "INSERT INTO AFERICAO SELECT NroIntSensor, NroIntSensor, 'N', 'M', 20250101, "
            "(2026 + NroIntSensor % 3) * 10000 + (1 + NroIntSensor % 12) * 100 + 1 + NroIntSensor % 28, 1, " +
            documento + ", 1, '', 1 FROM SENSOR");
    }

    Ref<SessaoServico> Ana;
};

std::function<void()> ContaPrazos(const RegistroCheio &registro, std::size_t vezes)
{
    return [&registro, vezes] {
        for (std::size_t vez = 0; vez < vezes; ++vez) {
            const Retorno retorno = Pede(registro.Ana, "consultaPainel", Novo<PainelPrazosED>(), "PrazosRN");
            if (!retorno.Feita || retorno.Como<PainelPrazosED>()->Equipamentos.Valor() == 0) {
                throw Falha(NumeroFalha::ErroInterno);
            }
        }
    };
}

std::function<void()> Busca(const RegistroCheio &registro, std::int32_t desde, const std::string &codigo)
{
    return [&registro, desde, codigo] {
        for (int vez = 0; vez < PorVez; ++vez) {
            auto pedido = Novo<ListaEquiptoED>();
            pedido->ClienteInc = "Autoridade Estadual de Trânsito";
            pedido->IndTrabFoto = std::uint8_t{1};
            pedido->Ativo = std::uint8_t{1};
            pedido->ProxNroIntEquip = desde;
            if (!codigo.empty()) {
                pedido->Codigo = codigo;
            }
            const Retorno retorno = Pede(registro.Ana, "lista2", pedido);
            if (!retorno.Feita || !retorno.Como<ListaEquiptoED>()->Equipamentos.Escrito()) {
                throw Falha(NumeroFalha::ErroInterno);
            }
        }
    };
}

// An equipment of ten sensors and one of a hundred, each sensor with a hundred calibrations.
class DoisEquipamentos : public RegistroDeTeste {
  public:
    DoisEquipamentos()
    {
        Ana = Sessao("ana");
        for (const std::int16_t sensores : {std::int16_t{10}, std::int16_t{100}}) {
            auto equipto = EquipamentoDe("E" + std::to_string(sensores));
            for (std::int16_t s = 1; s <= sensores; ++s) {
                auto sensor = SensorDe(s);
                for (std::int32_t a = 0; a < 100; ++a) {
                    const Data de = DataDe(1, 1, 2000).MaisDias(a * 10);
                    Poe(sensor, AfericaoDe(std::to_string(a), de, de.MaisDias(9)));
                }
                Poe(equipto, sensor);
            }
            Numero[static_cast<std::size_t>(sensores)] = Inclui(Ana, equipto);
        }
        Simples = QSqlDatabase::addDatabase("QSQLITE", "simples");
        Simples.setDatabaseName(QString::fromStdString(Caminho()));
        if (!Simples.open()) {
            throw Falha(NumeroFalha::ErroInterno);
        }
        Executa("PRAGMA synchronous = FULL");
        Executa("CREATE TABLE SIMPLES (Marca TEXT NOT NULL)");
        Executa("INSERT INTO SIMPLES VALUES ('')");
    }
    void Executa(const QString &comando)
    {
        QSqlQuery consulta(Simples);
        if (!consulta.exec(comando)) {
            throw Falha(NumeroFalha::ErroInterno);
        }
    }

    Ref<SessaoServico> Ana;
    std::map<std::size_t, std::int32_t> Numero; // by sensors
    QSqlDatabase Simples;
};

// The same rows by plain statements.
std::function<void()> LeSimples(DoisEquipamentos &registro, std::size_t sensores)
{
    return [&registro, sensores] {
        QSqlQuery consulta(registro.Simples);
        consulta.setForwardOnly(true);
        consulta.prepare("SELECT * FROM SENSOR S JOIN AFERICAO A ON A.NroIntSensor = S.NroIntSensor "
                         "WHERE S.NroIntEquip = ? ORDER BY S.NroIntSensor, A.NroIntAfericao");
        consulta.addBindValue(registro.Numero.at(sensores));
        consulta.exec();
        std::vector<std::vector<QVariant>> linhas;
        while (consulta.next()) {
            std::vector<QVariant> linha;
            for (int coluna = 0; coluna < 21; ++coluna) {
                linha.push_back(consulta.value(coluna));
            }
            linhas.push_back(std::move(linha));
        }
        if (linhas.size() != sensores * 100) {
            throw Falha(NumeroFalha::ErroInterno);
        }
        Usa(linhas);
    };
}

std::function<void()> AbreTodo(DoisEquipamentos &registro, std::size_t sensores)
{
    return [&registro, sensores] { Usa(Abre(registro.Ana, registro.Numero.at(sensores))); };
}

// One calibration in the middle gets another mark, each time a new one.
std::function<void()> SalvaUma(DoisEquipamentos &registro, std::size_t sensores)
{
    static int vez = 0;
    const auto equipto = Abre(registro.Ana, registro.Numero.at(sensores));
    const auto lido = equipto->Sensores.Valor()->Item(5);
    auto mudanca = SoNumero(registro.Numero.at(sensores));
    auto sensor = Novo<SensorED>();
    sensor->NroIntSensor = lido->NroIntSensor.Valor();
    auto afericao = Novo<AfericaoED>();
    afericao->NroIntAfericao = lido->Afericoes.Valor()->Item(50)->NroIntAfericao.Valor();
    afericao->Marca = std::to_string(++vez);
    Poe(sensor, afericao);
    Poe(mudanca, sensor);
    return [&registro, mudanca] {
        if (!Pede(registro.Ana, "altera", mudanca).Feita) {
            throw Falha(NumeroFalha::ErroInterno);
        }
    };
}

// One row changed by one statement, and on the disk.
std::function<void()> SalvaSimples(DoisEquipamentos &registro, std::size_t)
{
    static int vez = 0;
    return
        [&registro, marca = ++vez] { registro.Executa("UPDATE SIMPLES SET Marca = '" + QString::number(marca) + "'"); };
}

// Equipment of one sensor with a calibration in force, which were saved so many times.
class SalvosMuitasVezes : public RegistroDeTeste {
  public:
    SalvosMuitasVezes()
    {
        Ana = Sessao("ana");
        for (const std::size_t vezes : {std::size_t{10}, std::size_t{1000}, DezMil}) {
            const std::string codigo = "E" + std::to_string(vezes);
            const double documento = GuardaPdf(Ana, codigo);
            const Data de = DataDe(1, 1, 2026);
            Numero[vezes] = Inclui(
                Ana, Poe(EquipamentoDe(codigo), Poe(SensorDe(1), AfericaoDe("1", de, de.MaisDias(99), documento))));
            Sql("CREATE TEMP TABLE modelo AS SELECT * FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO' AND NroEntidade "
                "= " +
                std::to_string(Numero[vezes]) +
                "; CREATE TEMP TABLE ultima AS SELECT MAX(Nro) AS Nro FROM HISTORICO; WITH RECURSIVE n(i) AS (SELECT 1 "
                "UNION ALL SELECT i + 1 FROM n WHERE i < " +
                std::to_string(vezes) +
                ") INSERT INTO HISTORICO SELECT ultima.Nro + i, Quando, Fuso, Operador, Raiz, NroRaiz, i, Entidade, "
                "NroEntidade, 'altera', Motivo, Depois, Depois, Elo FROM n, modelo, ultima");
        }
    }

    Ref<SessaoServico> Ana;
    std::map<std::size_t, std::int32_t> Numero; // by times
};

std::function<void()> PerguntaVigente(SalvosMuitasVezes &registro, std::size_t vezes)
{
    return [&registro, numero = registro.Numero.at(vezes)] {
        for (int vez = 0; vez < PorVez; ++vez) {
            const Retorno retorno = Pede(registro.Ana, "consultaSimplesAfericaoVigente",
                                         Com(Novo<ConsultaAfericaoED>(), &ConsultaAfericaoED::NroIntEquip, numero,
                                             &ConsultaAfericaoED::DtInfracao, DataDe(1, 2, 2026)));
            if (!retorno.Feita || retorno.Como<AfericaoED>()->NroIntAfericao.Valor() == 0) {
                throw Falha(NumeroFalha::ErroInterno);
            }
        }
    };
}

double SegundosDoRelogio()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    Tabela leituras; // of pages that are in memory
    {
        std::map<std::size_t, RegistroCheio> registros;
        for (const std::size_t quantos : {DezMil, CemMil, UmMilhao}) {
            registros.try_emplace(quantos, static_cast<int>(quantos));
        }
        const auto compara = [&](const std::string &nome, std::int32_t desde, const std::string &codigo,
                                 const Preparo &referencia) {
            const auto busca = [&](std::size_t quantos) { return Busca(registros.at(quantos), desde, codigo); };
            const auto entrePoucos = [&](std::size_t) { return busca(DezMil); };
            leituras.MedeTempo({nome, CemMil, busca, referencia ? referencia : entrePoucos, 1.5, 1.5});
        };
        compara("first page, of a million / of 10,000", 0, "", nullptr);
        compara("page 1000 / page 1, of a million", Pagina1000, "",
                [&](std::size_t quantos) { return Busca(registros.at(quantos), 0, ""); });
        compara("one code, of a million / of 10,000", 0, "0007777", nullptr);
        compara("start of 100 codes, of a million / of 10,000", 0, "00077", nullptr);
        for (auto &[quantos, registro] : registros) {
            registro.Afere();
        }
        leituras.MedeTempo({"deadlines, of a million / of 10,000 a hundred times", CemMil,
                            [&](std::size_t quantos) { return ContaPrazos(registros.at(quantos), 1); },
                            [&](std::size_t quantos) { return ContaPrazos(registros.at(DezMil), quantos / DezMil); },
                            1.5, 1.5});
    }
    SalvosMuitasVezes salvos;
    leituras.MedeTempo({"calibration in force, after 10,000 saves / after 10", 1000,
                        [&](std::size_t vezes) { return PerguntaVigente(salvos, vezes); },
                        [&](std::size_t) { return PerguntaVigente(salvos, 10); }, 1.5, 1.5});
    DoisEquipamentos registro;
    const auto com = [&](auto preparo) -> Preparo {
        return [&registro, preparo](std::size_t sensores) { return preparo(registro, sensores); };
    };
    leituras.MedeTempo(
        {"opening 100 sensors of 100 calibrations / SELECT", 10, com(AbreTodo), com(LeSimples), 1.5, 1.5});
    Tabela gravacoes(std::cout, SegundosDoRelogio); // the disk is part of the work
    gravacoes.MedeTempo({"saving one of those calibrations / UPDATE", 10, com(SalvaUma), com(SalvaSimples), 3, 2});
    return leituras.Saida() + gravacoes.Saida();
}
