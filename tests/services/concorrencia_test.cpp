#include "services/Conferidor.h"
#include "services/Resumo.h"
#include "services/ServicosSql.h"
#include "tests/services/ServicosTeste.h"

#include <QUuid>

#include <atomic>
#include <cstdlib>
#include <random>
#include <thread>

using namespace mesa;

namespace {

// What the sessions were told that they had done.
struct Somas {
    std::atomic<int> Equipamentos = 0;
    std::atomic<int> Afericoes = 0;
    std::atomic<int> Alteracoes = 0; // versions after the first
    std::atomic<int> Documentos = 0;
    std::atomic<int> Repetidas = 0;
    std::atomic<int> Numeradas = 0;
    std::atomic<int> Conflitos = 0; // changed by somebody else since it was opened
};

// One session at work over a connection of its own.
class Trabalhador {
  public:
    Trabalhador(Ref<ServicosSql> servicos, const Portaria::Entrada &entrada, Somas &somas, unsigned semente)
        : m_Servicos(std::move(servicos)),
          m_Sessao(m_Servicos->Retoma(entrada)),
          m_Somas(somas),
          m_Sorte(semente),
          m_Nome("T" + std::to_string(semente))
    {
    }

    void Trabalha(int vezes)
    {
        for (int vez = 0; vez < vezes; ++vez) {
            switch (m_Sorte() % 20) {
            case 0:
                Inclui(vez);
                break;
            case 1:
            case 2:
            case 3:
                Altera(vez);
                break;
            case 4:
                Guarda(vez);
                break;
            default:
                Consulta();
            }
        }
    }

  private:
    struct Feita {
        bool Sim = false;
        Valor Resposta;
        std::string Recusa;
    };

    Feita Pede(const std::string &metodo, Ref<Objeto> pedido)
    {
        Feita feita;
        feita.Sim = m_Sessao->Executa("EquiptoRN", metodo, pedido, feita.Resposta, feita.Recusa);
        return feita;
    }
    // With a number, and in one of four cases once more, as if the answer had been lost.
    Feita PedeNumerado(const std::string &metodo, const Ref<Registro> &pedido)
    {
        const std::string numero = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
        const auto numera = [&] { m_Sessao->Numera({numero, Resumo("o pedido"), [&] { return numero; }}); };
        const Ref<Objeto> repetido = pedido->Copia();
        numera();
        const Feita feita = Pede(metodo, pedido);
        m_Somas.Numeradas += feita.Sim ? 1 : 0;
        if (feita.Sim && m_Sorte() % 4 == 0) {
            numera();
            EXPECT_TRUE(Pede(metodo, repetido).Sim);
            EXPECT_EQ(m_Sessao->Repetida(), numero);
            ++m_Somas.Repetidas;
        }
        return feita;
    }

    void Inclui(int vez)
    {
        const double documento = Guarda(vez);
        auto novo = EquipamentoDe(m_Nome + "-" + std::to_string(vez));
        const auto sensor = Poe(SensorDe(1), AfericaoDe("1", DataDe(1, 1, 2026), DataDe(31, 12, 2026), documento));
        const Feita feita = PedeNumerado("inclui", Poe(novo, sensor));
        ASSERT_TRUE(feita.Sim) << feita.Recusa;
        ++m_Somas.Equipamentos;
        ++m_Somas.Afericoes;
    }
    // Any of those that all work on; between opening and saving others may come first.
    void Altera(int vez)
    {
        Feita aberta = Pede("consulta", SoNumero(1 + static_cast<std::int32_t>(m_Sorte() % 20)));
        if (!aberta.Sim) {
            return; // not there yet
        }
        const auto equipto = aberta.Resposta.Como<EquiptoED>();
        equipto->Descricao = m_Nome + " " + std::to_string(vez);
        const bool comAfericao = m_Sorte() % 3 == 0;
        if (comAfericao) {
            const double documento =
                equipto->Sensores.Valor()->Item(1)->Afericoes.Valor()->Item(1)->NroIntImgCertif.Valor();
            Poe(equipto, Poe(SensorDe(static_cast<std::int16_t>(1 + equipto->Sensores.Valor()->Count())),
                             AfericaoDe("2", DataDe(1, 1, 2025), DataDe(31, 12, 2025), documento)));
        }
        const Feita feita = PedeNumerado("altera", equipto);
        if (feita.Sim) {
            ++m_Somas.Alteracoes;
            m_Somas.Afericoes += comAfericao ? 1 : 0;
        } else {
            EXPECT_TRUE(feita.Recusa.find(" foi alterado por ") != std::string::npos) << feita.Recusa;
            ++m_Somas.Conflitos;
        }
    }
    double Guarda(int vez)
    {
        double numero = 0;
        std::string recusa;
        EXPECT_TRUE(m_Sessao->GuardaDocumento(Pdf(m_Nome + std::to_string(vez)), numero, recusa)) << recusa;
        ++m_Somas.Documentos;
        return numero;
    }
    void Consulta()
    {
        auto lista = Novo<ListaEquiptoED>();
        EXPECT_TRUE(Pede("lista2", lista).Sim);
    }

    Ref<ServicosSql> m_Servicos;
    Ref<SessaoSql> m_Sessao;
    Somas &m_Somas;
    std::mt19937 m_Sorte;
    std::string m_Nome;
};

class ServicosConcorrencia : public ServicosTeste {
  protected:
    int Numero(const std::string &sql) { return std::stoi(m_Registro.Sql(sql)); }
};

// Sessions on connections of their own, each in a thread: what all were told adds up to what is there.
TEST_F(ServicosConcorrencia, MixedOperationsOfManyConnections_EndInTheirSums)
{
    const char *pedidas = std::getenv("OPERACOES_CONCORRENTES");
    const int operacoes = pedidas == nullptr ? 10000 : std::atoi(pedidas);
    constexpr int Conexoes = 4;
    Somas somas;
    std::vector<Portaria::Entrada> entradas;
    for (const char *quem : {"ana", "bia", "caio", "ana"}) {
        entradas.push_back(ComoTipo<SessaoSql>(m_Registro.Sessao(quem))->Entrada());
    }
    {
        std::vector<std::thread> fios;
        for (int n = 0; n < Conexoes; ++n) {
            fios.emplace_back([&, n] {
                Trabalhador(ComoTipo<ServicosSql>(m_Registro.AbreOutro()), entradas[static_cast<std::size_t>(n)], somas,
                            static_cast<unsigned>(n))
                    .Trabalha(operacoes / Conexoes);
            });
        }
        for (std::thread &fio : fios) {
            fio.join();
        }
    }
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM EQUIPAMENTO"), somas.Equipamentos);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM AFERICAO"), somas.Afericoes);
    EXPECT_EQ(Numero("SELECT SUM(Versao - 1) FROM EQUIPAMENTO"), somas.Alteracoes);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM DOCUMENTO"), somas.Documentos);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'EQUIPAMENTO'"),
              somas.Equipamentos + somas.Alteracoes);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'AFERICAO'"), somas.Afericoes);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM HISTORICO WHERE Entidade = 'DOCUMENTO'"), somas.Documentos);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM OPERACAO"), somas.Numeradas);
    EXPECT_EQ(Numero("SELECT COUNT(*) FROM REPETICAO"), somas.Repetidas);
    EXPECT_GT(somas.Repetidas, operacoes / 50);
    RecordProperty("conflitos", somas.Conflitos);
    EXPECT_EQ(Conferidor(m_Registro.Caminho()).Confere().Achados, std::vector<std::string>{});
}

TEST_F(ServicosConcorrencia, TwoOperatorsOnOneRecord_TheSecondIsToldWhoCameFirstAndWhen)
{
    const std::int32_t numero = Inclui(m_Ana, EquipamentoDe("R-001"));
    const auto servicos = ComoTipo<ServicosSql>(m_Registro.AbreOutro());
    const auto bia = servicos->Retoma(ComoTipo<SessaoSql>(m_Registro.Sessao("bia"))->Entrada());
    const auto deAna = Abre(m_Ana, numero);
    const auto deBia = Abre(bia, numero);
    m_Registro.PassaSegundos(60);
    EXPECT_TRUE(Pede(bia, "altera", Com(deBia, &EquiptoED::Descricao, "Da Bia")).Feita);
    const std::string quem = bia->Operador().Nome;
    EXPECT_EQ(RecusaDe(m_Ana, "altera", Com(deAna, &EquiptoED::Descricao, "Da Ana")),
              "O equipamento R-001 foi alterado por " + quem +
                  " em 20/11/2026 às 10:01:00 (descrição), depois de aberto aqui. Nada foi gravado: abra-o de novo e "
                  "repita a sua alteração.");
    EXPECT_EQ(m_Registro.Sql("SELECT Descricao FROM EQUIPAMENTO"), "Da Bia");
    EXPECT_EQ(Numero("SELECT Versao FROM EQUIPAMENTO"), 2);
}

} // namespace
