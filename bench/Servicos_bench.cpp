// The services on registries of 10,000 and of 1,000,000 equipment: whatever is asked for, the answer must not take
// longer for the size of the registry or the number of the page.
#include "bench/Medida.h"
#include "tests/desk/RegistroDeTeste.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

constexpr double Limite = 1.5;
constexpr int Repeticoes = 41;
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
    Ref<SessaoServico> Ana;
};

std::function<void()> Busca(const RegistroCheio &registro, std::int32_t desde, const std::string &codigo)
{
    return [&registro, desde, codigo] {
        for (int vez = 0; vez < PorVez; ++vez) {
            auto pedido = Novo<ListaEquiptoED>();
            pedido->ClienteInc = "DETRAN/RS";
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

double Milissegundos(const std::function<void()> &trabalho)
{
    const auto inicio = std::chrono::steady_clock::now();
    trabalho();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - inicio).count();
}

// Whether the subject is within the limit of the baseline; the two are measured in turns.
bool Compara(const char *nome, const std::function<void()> &medido, const std::function<void()> &referencia)
{
    std::vector<double> doMedido;
    std::vector<double> daReferencia;
    for (int vez = 0; vez < Repeticoes; ++vez) {
        doMedido.push_back(Milissegundos(medido) / PorVez);
        daReferencia.push_back(Milissegundos(referencia) / PorVez);
    }
    const double razao = Mediana(doMedido) / Mediana(daReferencia);
    std::printf("%-60s %9.3f ms %9.3f ms %6.2f (limit %.1f)%s\n", nome, Mediana(doMedido), Mediana(daReferencia), razao,
                Limite, razao <= Limite ? "" : "  BEYOND");
    return razao <= Limite;
}

void MedeUmaAfericao()
{
    RegistroDeTeste registro;
    const auto ana = registro.Sessao("ana");
    auto e = EquipamentoDe("grande");
    const Data inicio = DataDe(1, 1, 2000);
    for (std::int16_t s = 1; s <= 100; ++s) {
        auto sensor = SensorDe(s);
        for (std::int32_t a = 0; a < 100; ++a) {
            Poe(sensor, AfericaoDe(std::to_string(a), inicio.MaisDias(a * 10), inicio.MaisDias(a * 10 + 9)));
        }
        Poe(e, sensor);
    }
    const std::int32_t numero = Inclui(ana, e);
    std::vector<double> abrir;
    std::vector<double> salvar;
    for (int vez = 0; vez < Repeticoes; ++vez) {
        abrir.push_back(Milissegundos([&] { Abre(ana, numero); }));
        auto mudanca = SoNumero(numero);
        auto sensor = Novo<SensorED>();
        sensor->NroIntSensor = 50;
        auto afericao = Novo<AfericaoED>();
        afericao->NroIntAfericao = 4950;
        afericao->Marca = std::to_string(vez);
        Poe(sensor, afericao);
        Poe(mudanca, sensor);
        salvar.push_back(Milissegundos([&] {
            if (!Pede(ana, "altera", mudanca).Feita) {
                throw Falha(NumeroFalha::ErroInterno);
            }
        }));
    }
    std::printf("%-60s %9.3f ms\n", "opening 100 sensors of 100 calibrations", Mediana(abrir));
    std::printf("%-60s %9.3f ms\n", "saving one changed calibration among them, on the disk", Mediana(salvar));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication aplicacao(argc, argv);
    const RegistroCheio pequeno(10000);
    const RegistroCheio grande(1000000);
    constexpr std::int32_t pagina1000 = 999 * 50 + 1;
    bool dentro = Compara("first page, of 1,000,000 / of 10,000", Busca(grande, 0, ""), Busca(pequeno, 0, ""));
    dentro = Compara("page 1000 / page 1, of 1,000,000", Busca(grande, pagina1000, ""), Busca(grande, 0, "")) && dentro;
    dentro = Compara("one code, of 1,000,000 / of 10,000", Busca(grande, 0, "0007777"), Busca(pequeno, 0, "0007777")) &&
             dentro;
    dentro = Compara("beginning of 100 codes, of 1,000,000 / of 10,000", Busca(grande, 0, "00077"),
                     Busca(pequeno, 0, "00077")) &&
             dentro;
    MedeUmaAfericao();
    return dentro ? 0 : 1;
}
