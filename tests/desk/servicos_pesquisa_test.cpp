#include "desk/services/TextoBusca.h"
#include "host/Conversoes.h"
#include "tests/desk/RegistroDeTeste.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace mesa;

namespace {

class ServicosPesquisa : public testing::Test {
  protected:
    void Poe(const std::string &codigo, const std::function<void(EquiptoED &)> &mudanca = {})
    {
        auto e = EquipamentoDe(codigo);
        if (mudanca) {
            mudanca(*e);
        }
        Inclui(m_Ana, e);
    }
    Ref<ListaEquiptoED> Lista(const std::function<void(ListaEquiptoED &)> &filtro = {})
    {
        auto pedido = Novo<ListaEquiptoED>();
        if (filtro) {
            filtro(*pedido);
        }
        const Retorno retorno = Pede(m_Ana, "lista2", pedido);
        EXPECT_TRUE(retorno.Feita) << retorno.Recusa;
        return retorno.Como<ListaEquiptoED>();
    }
    // Codes found, in their order.
    std::string Codigos(const std::function<void(ListaEquiptoED &)> &filtro = {})
    {
        const auto lista = Lista(filtro);
        if (!lista->Equipamentos.Escrito()) {
            return "absent";
        }
        std::string texto;
        for (std::int32_t n = 1; n <= lista->Equipamentos.Valor()->Count(); ++n) {
            texto += (n > 1 ? " " : "") + lista->Equipamentos.Valor()->Item(n)->Codigo.Valor();
        }
        return texto;
    }
    // Copies of the first equipment with codes of six digits, straight into the file.
    void Multiplica(int quantos)
    {
        m_Registro.Sql(
            "CREATE TEMP TABLE modelo AS SELECT * FROM EQUIPAMENTO WHERE NroIntEquip = 1; "
            "WITH RECURSIVE n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i <= " +
            std::to_string(quantos) +
            ") INSERT INTO EQUIPAMENTO SELECT i, ClienteInc, SetorInc, printf('%06d', i), SubCodigo, Descricao, "
            "CodMunic, "
            "TipoVia, TipoEquip, VelocPermitida, ArquivoLayout, TemImagemEntrelacada, Modelo, TemLimiteDif, "
            "TemPerfilMag, "
            "NroIntRejLimDif, Ativo, ClienteTrans, OperadorTrans, DataTrans, HoraTrans, TipoAgente, txtObsNotif, "
            "printf('%06d', i), printf('%06d', i), SubCodigoBusca, TrabFoto, 1 FROM n, modelo");
    }

    RegistroDeTeste m_Registro;
    Ref<SessaoServico> m_Ana = m_Registro.Sessao("ana");
};

TEST_F(ServicosPesquisa, NothingFound_ListIsAbsent)
{
    const auto lista = Lista();
    EXPECT_FALSE(lista->Equipamentos.Escrito());
    EXPECT_EQ(lista->ProxNroIntEquip.Valor(), 0);
}

TEST_F(ServicosPesquisa, Rows_CarryWhatTheListShows)
{
    Poe("R-001");
    const auto lista = Lista();
    ASSERT_EQ(lista->Equipamentos.Valor()->Count(), 1);
    const EquiptoED &e = *lista->Equipamentos.Valor()->Item(1);
    EXPECT_EQ(e.NroIntEquip.Valor(), 1);
    EXPECT_EQ(e.Descricao.Valor(), "Av. Ipiranga, sentido centro");
    EXPECT_EQ(e.CodMunic.Valor(), 4314902);
    EXPECT_EQ(e.TipoEquip.Valor(), "P");
    EXPECT_EQ(e.Modelo.Valor(), "Fictício 300");
    EXPECT_EQ(e.TemLimiteDif.Valor(), 1);
    EXPECT_EQ(e.VelocPermitida.Valor(), 60);
    EXPECT_FALSE(e.Sensores.Escrito());
}

TEST_F(ServicosPesquisa, Codes_MatchFromTheirBeginningWithoutCaseAndAccents)
{
    Poe("São-1", [](EquiptoED &e) { e.SubCodigo = "Çá_9"; });
    Poe("SAO-2");
    Poe("x-são", [](EquiptoED &e) { e.SubCodigo = "ca_1"; });
    Poe("SA");
    const auto codigo = [&](const std::string &texto) { return Codigos([&](ListaEquiptoED &l) { l.Codigo = texto; }); };
    const auto subcodigo = [&](const std::string &texto) {
        return Codigos([&](ListaEquiptoED &l) { l.SubCodigo = texto; });
    };
    EXPECT_EQ(codigo("sao"), "São-1 SAO-2");
    EXPECT_EQ(codigo("SÃO"), "São-1 SAO-2");
    EXPECT_EQ(codigo("são-2"), "SAO-2");
    EXPECT_EQ(codigo("s"), "São-1 SAO-2 SA");
    EXPECT_EQ(codigo("o"), "absent");
    EXPECT_EQ(codigo("%"), "absent");
    EXPECT_EQ(codigo("S_O"), "absent");
    EXPECT_EQ(codigo("'"), "absent");
    EXPECT_EQ(codigo(""), "São-1 SAO-2 x-são SA");
    EXPECT_EQ(subcodigo("CÃ"), "São-1 x-são");
    EXPECT_EQ(subcodigo("ca_9"), "São-1");
}

TEST_F(ServicosPesquisa, Filters_NarrowByWhatIsSent)
{
    Poe("P1", [](EquiptoED &e) { e.SetorInc = "Metrologia"; });
    Poe("R1", [](EquiptoED &e) {
        e.TipoEquip = "R";
        e.TipoAgente = std::uint8_t{2};
    });
    Poe("E1", [](EquiptoED &e) {
        e.TipoEquip = "E";
        e.TipoAgente = std::uint8_t{3};
    });
    Poe("P2");
    ASSERT_TRUE(Pede(m_Ana, "desativa", SoNumero(4)).Feita);
    EXPECT_EQ(Codigos(), "P1 R1 E1 P2");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.Ativo = std::uint8_t{1}; }), "P1 R1 E1");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.Ativo = std::uint8_t{2}; }), "P2");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.IndTrabFoto = std::uint8_t{1}; }), "P1 R1 P2");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.IndTrabFoto = std::uint8_t{2}; }), "E1");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.SetorInc = "Metrologia"; }), "P1");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.TipoEquip = "R"; }), "R1");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.TipoAgente = std::uint8_t{3}; }), "E1");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) {
                  l.ClienteInc = "DETRAN/RS";
                  l.Ativo = std::uint8_t{1};
                  l.IndTrabFoto = std::uint8_t{1};
                  l.TipoEquip = "P";
                  l.Codigo = "p";
              }),
              "P1");
}

TEST_F(ServicosPesquisa, EachType_IsInItsPhotoWorkMode)
{
    int numero = 0;
    for (const char *tipo : {"C", "L", "P", "F", "M", "R", "V", "A", "E", "U"}) {
        Poe(tipo, [&](EquiptoED &e) {
            e.TipoEquip = tipo;
            e.TipoAgente = static_cast<std::uint8_t>("1111223233"[numero++] - '0');
        });
    }
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.IndTrabFoto = std::uint8_t{1}; }), "C L P F M R V");
    EXPECT_EQ(Codigos([](ListaEquiptoED &l) { l.IndTrabFoto = std::uint8_t{2}; }), "A E U");
}

TEST_F(ServicosPesquisa, OtherClients_AreNotSeen)
{
    Poe("P1");
    Inclui(m_Registro.Sessao("elisa"), EquipamentoDe("X1"));
    EXPECT_EQ(Codigos(), "P1");
    auto pedido = Novo<ListaEquiptoED>();
    pedido->ClienteInc = "EPTC";
    EXPECT_EQ(Pede(m_Ana, "lista2", pedido).Recusa,
              "Ana Souza consulta equipamentos do cliente DETRAN/RS, e não de EPTC.");
}

TEST_F(ServicosPesquisa, Pages_OfFiftyByInternalNumber)
{
    Poe("000001");
    Multiplica(101);
    const auto primeira = Lista();
    EXPECT_EQ(primeira->Equipamentos.Valor()->Count(), 50);
    EXPECT_EQ(primeira->Equipamentos.Valor()->Item(50)->NroIntEquip.Valor(), 50);
    EXPECT_EQ(primeira->ProxNroIntEquip.Valor(), 51);
    const auto segunda = Lista([](ListaEquiptoED &l) { l.ProxNroIntEquip = 51; });
    EXPECT_EQ(segunda->Equipamentos.Valor()->Item(1)->NroIntEquip.Valor(), 51);
    EXPECT_EQ(segunda->ProxNroIntEquip.Valor(), 101);
    const auto ultima = Lista([](ListaEquiptoED &l) { l.ProxNroIntEquip = 101; });
    EXPECT_EQ(ultima->Equipamentos.Valor()->Count(), 2);
    EXPECT_EQ(ultima->ProxNroIntEquip.Valor(), 0);
    const auto cheia = Lista([](ListaEquiptoED &l) { l.ProxNroIntEquip = 53; });
    EXPECT_EQ(cheia->Equipamentos.Valor()->Count(), 50); // exactly the last page
    EXPECT_EQ(cheia->ProxNroIntEquip.Valor(), 0);
}

// Beyond a number of matches the search goes another way; it must find the same.
TEST_F(ServicosPesquisa, Codes_OfManyMatches_AreFoundAndPagedTheSame)
{
    Poe("000001");
    Multiplica(2500);
    for (const char *inicio : {"00", "0019", "002", "002400"}) {
        std::string achados;
        std::string esperados;
        for (int n = 1; n <= 2501; ++n) {
            const std::string codigo = Format(CDbl(n), "000000");
            esperados += codigo.rfind(inicio, 0) == 0 ? codigo + " " : "";
        }
        std::int32_t proxima = 0;
        int paginas = 0;
        do {
            const auto lista = Lista([&](ListaEquiptoED &l) {
                l.Codigo = inicio;
                l.ProxNroIntEquip = proxima;
            });
            ASSERT_TRUE(lista->Equipamentos.Escrito());
            for (std::int32_t n = 1; n <= lista->Equipamentos.Valor()->Count(); ++n) {
                achados += lista->Equipamentos.Valor()->Item(n)->Codigo.Valor() + " ";
            }
            proxima = lista->ProxNroIntEquip;
        } while (proxima > 0 && ++paginas < 100);
        EXPECT_EQ(achados, esperados) << inicio;
    }
}

TEST(TextoBusca, WithoutCaseAndAccents)
{
    EXPECT_EQ(TextoBusca("São João"), "sao joao");
    EXPECT_EQ(TextoBusca("ÁÀÂÃÄÇÉÊÍÓÔÕÚÜÑ"), "aaaaaceeiooouun");
    EXPECT_EQ(TextoBusca("A\u0303"), "a"); // the accent as a character of its own
    EXPECT_EQ(TextoBusca("R-1._x"), "r-1._x");
    EXPECT_EQ(TextoBusca(""), "");
}

} // namespace
