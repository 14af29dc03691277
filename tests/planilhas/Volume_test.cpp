#include "bench/Memoria.h"
#include "planilhas/Formatos.h"
#include "tests/planilhas/Arquivos.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

using namespace planilhas;

// Many rows: the memory does not grow with them.

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool ComSanitizadores = true;
#else
constexpr bool ComSanitizadores = false;
#endif

constexpr int Poucas = 2000;
constexpr int Muitas = 20000;
constexpr std::size_t Folga = 1000000; // bytes, of the several that the rows in between would take

class VolumeTeste : public testing::TestWithParam<Formato> {
  protected:
    void Escreve(int linhas)
    {
        const auto escritor = FazEscritor(m_Pasta / "tabela", GetParam());
        escritor->Folha("Dados");
        escritor->Cabecalho({"Nome", "Velocidade", "Data"});
        for (int i = 0; i < linhas; ++i) {
            escritor->Escreve(LinhaDe(i));
        }
        Mede();
        escritor->Conclui();
        Mede();
    }

    static Linha LinhaDe(int i)
    {
        return {CelulaDeTexto("Equipamento número " + std::to_string(i)), CelulaDeNumero(i * 0.5),
                CelulaDeData(1 + i % 28, 1 + i % 12, 2000 + i % 25)};
    }

    void Le(int linhas)
    {
        const auto leitor = AbreLeitor(m_Pasta / "tabela");
        LinhaLida linha;
        ASSERT_TRUE(leitor->Le(linha));
        int lidas = 0;
        for (; leitor->Le(linha); ++lidas) {
            ASSERT_EQ(linha.Celulas.size(), 3U);
            const Linha escrita = LinhaDe(lidas);
            if (GetParam() == Formato::Csv) {
                ASSERT_EQ(linha.Celulas[2].Texto, TextoDaCelula(escrita[2]));
            } else {
                ASSERT_TRUE(linha.Celulas == escrita) << lidas;
            }
        }
        EXPECT_EQ(lidas, linhas);
        Mede();
    }

    // What the libraries hold, which have memory of their own.
    void Mede()
    {
        const struct mallinfo2 agora = mallinfo2();
        m_Ocupados = std::max(m_Ocupados, agora.uordblks + agora.hblkhd);
    }

    Pasta m_Pasta;
    std::size_t m_Ocupados = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Formatos, VolumeTeste, testing::Values(Formato::Csv, Formato::Xlsx, Formato::Ods),
                         [](const testing::TestParamInfo<Formato> &caso) {
                             return caso.param == Formato::Csv ? "Csv" : caso.param == Formato::Xlsx ? "Xlsx" : "Ods";
                         });

TEST_P(VolumeTeste, write_ManyRows_AllComeBackAndMemoryIsFlat)
{
    const std::size_t aEscreverPoucas = PicoDeMemoria([&] { Escreve(Poucas); });
    const std::size_t aLerPoucas = PicoDeMemoria([&] { Le(Poucas); });
    const std::size_t ocupadosComPoucas = std::exchange(m_Ocupados, 0);
    const std::size_t aEscrever = PicoDeMemoria([&] { Escreve(Muitas); });
    const std::size_t aLer = PicoDeMemoria([&] { Le(Muitas); });
    if (ComSanitizadores) {
        GTEST_SKIP() << "all rows came back; the memory is not measured under sanitizers, which hold freed blocks";
    }
    EXPECT_LT(aEscrever, aEscreverPoucas + Folga);
    EXPECT_LT(aLer, aLerPoucas + Folga);
    EXPECT_LT(m_Ocupados, ocupadosComPoucas + Folga);
}
