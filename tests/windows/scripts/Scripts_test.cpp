#include "tests/windows/externo/CasoExterno.h"
#include "tests/windows/externo/ComponenteExterno.h"
#include "tests/windows/scripts/Roteiro.h"

#include <algorithm>
#include <cstdlib>

namespace nativo {
namespace {

struct Esperado {
    std::string Caso;
    FalhaExterna Falha;
};

// The same faults that the other clients are told, in the order of the scripts.
const std::vector<Esperado> &Faltas()
{
    const auto depreciado = [](const std::string &metodo) {
        return Esperado{metodo, {-1, "ZTAVOREQUIP.CVORPesqEquip", "AVISO: Método " + metodo + " depreciado"}};
    };
    static const std::vector<Esperado> faltas = {
        {"Logoff", {91, "ZTAVOREQUIP < Geral.Logoff", "Variável de objeto não definida"}},
        {"ClickMenu", {91, "ZTAVOREQUIP < Geral.ClickMenu", "Variável de objeto não definida"}},
        {"SistemaQMR", {91, "ZTAVOREQUIP", "Variável de objeto não definida"}},
        {"Parametros", {}},
        {"Logon", {}},
        {"ObtemTransacao2", {-1, "ZTAVOREQUIP.Geral.ObtemTransacao2", "Método depreciado. Não utilizar."}},
        {"ImprimeAfericaoVigenteEquipto",
         {-1, "ZTAVOREQUIP.Especifica", "AVISO: Método ImprimeAfericaoVigenteEquipto depreciado"}},
        depreciado("CarregaPesqEquip"),
        depreciado("CarregaPesqEquip2"),
        depreciado("CarregaPesqEquip3"),
        depreciado("BuscaEquipto"),
        depreciado("ConsultaAfericaoVigente"),
        {"Encerra", {}},
    };
    return faltas;
}

// Answers that are no faults, and the refusals of the calls themselves, which each language words by itself.
const std::vector<std::string> Respostas = {"HabilitarItem|0", "SistemaQMR|VOR|1|-1", "Variaveis|5|RF-01||60"};

class ScriptsTeste : public CasoExterno {
  protected:
    void SetUp() override { ASSERT_EQ(componente.Registra(), S_OK); }
    void TearDown() override { EXPECT_EQ(componente.Desregistra(), S_OK); }

    static std::string LinhaDe(const std::vector<std::string> &linhas, const std::string &caso)
    {
        for (const std::string &linha : linhas) {
            if (linha.rfind(caso + "|", 0) == 0) {
                return linha;
            }
        }
        return "";
    }
    // Of a call that is refused on the way each language has words of its own: its number alone is compared.
    static std::int32_t NumeroDe(const std::string &linha)
    {
        const std::size_t inicio = linha.find('|');
        return inicio == std::string::npos
                   ? 0
                   : NumeroDaResposta(static_cast<HRESULT>(std::strtol(linha.c_str() + inicio + 1, nullptr, 10)));
    }
    static void ConfereRecusas(const std::vector<std::string> &linhas)
    {
        EXPECT_EQ(NumeroDe(LinhaDe(linhas, "NaoHa")), 438);
        EXPECT_EQ(NumeroDe(LinhaDe(linhas, "Depurar")), 13);
        EXPECT_EQ(NumeroDe(LinhaDe(linhas, "Estouro")), 6);
    }
    static void ConfereRespostas(const std::vector<std::string> &linhas)
    {
        for (const std::string &resposta : Respostas) {
            EXPECT_NE(std::find(linhas.begin(), linhas.end(), resposta), linhas.end()) << resposta;
        }
        ASSERT_FALSE(linhas.empty());
        EXPECT_EQ(linhas.back(), "FIM") << "the script did not come to its end";
    }

    ComponenteExterno componente;
};

TEST_F(ScriptsTeste, VBScript_IsToldNumberSourceAndDescription)
{
    Roteiro roteiro("tests/windows/scripts/falhas.vbs");
    roteiro.Espera();
    const std::vector<std::string> linhas = roteiro.Linhas();
    ConfereRespostas(linhas);
    for (const Esperado &esperado : Faltas()) {
        EXPECT_EQ(LinhaDe(linhas, esperado.Caso), esperado.Caso + "|" + std::to_string(esperado.Falha.Numero) + "|" +
                                                      esperado.Falha.Fonte + "|" + esperado.Falha.Descricao);
    }
    ConfereRecusas(linhas);
}

TEST_F(ScriptsTeste, JScript_IsToldNumberAndDescription)
{
    Roteiro roteiro("tests/windows/scripts/falhas.js");
    roteiro.Espera();
    const std::vector<std::string> linhas = roteiro.Linhas();
    ConfereRespostas(linhas);
    for (const Esperado &esperado : Faltas()) {
        EXPECT_EQ(LinhaDe(linhas, esperado.Caso),
                  esperado.Caso + "|" + std::to_string(esperado.Falha.Numero) + "|" + esperado.Falha.Descricao);
    }
    ConfereRecusas(linhas);
}

} // namespace
} // namespace nativo
